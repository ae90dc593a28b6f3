/*
 * The parts of the zapper: what it shows, what a receiver does with the channel list, and what the user can type. All
 * of them print what the user is to see.
 */
#ifndef ZAPPER_H
#define ZAPPER_H

#include <channel/channel.h>

#include <stdbool.h>
#include <stddef.h>

typedef struct receiver {
  const char *file;         /* the channel file's name below the target directory */
  int16_t vindex;           /* where the channel on the screen stands in the current view, or -1 */
  virtual_channel_st tuned; /* its entry, to find it again when the view changes */
  int16_t favourite;        /* id of the favourite group that was shown, made or added to last, or -1 */
} receiver;

typedef struct short_text {
  char text[98]; /* room for every name in the list */
} short_text;

/* display.c */
short_text view_name(int8_t view);
/* A field of a record, which may lack a terminator and hold anything, fit for a terminal. */
short_text readable(const char *field, size_t size);
short_text channel_name(const virtual_channel_st *entry);
short_text network_name(uint8_t net_index, uint16_t network_id);
/* A name in so many columns at least. */
void print_name(const char *name, int columns);
/* One line: number, name, network, transponder, PIDs and marks; '>' before the channel on the screen. */
void print_entry(const virtual_channel_st *entry, bool on_screen);
void print_banner(int16_t vindex, bool on_screen);
void print_details(int16_t vindex);

/* receiver.c */
bool load_list(receiver *host);
bool save_list(const receiver *host);
/* The real channel of an entry, or null. */
channel_st *service_of(const virtual_channel_st *entry);
/* Where an entry's channel stands in the current view, or -1. */
int16_t place_of(const virtual_channel_st *entry);
/* Stays on the channel if the view has it; refuses an empty view. */
void switch_view(receiver *host, int8_t view);
/* What follows once another view is current: stays on the channel if the view has it, or else zaps to its first. */
void stay_or_zap(receiver *host);
/* What follows when entries went from the current view: stays, or zaps to the channel that took the place. */
void close_ranks(receiver *host);
void zap_to(receiver *host, int16_t vindex);
void zap_to_number(receiver *host, long number);
/* The next channel up (1) or down (-1), around the ends of the view, passing over skipped ones. */
void zap_by(receiver *host, int direction);
/* Looks the channel on the screen up again after the view's entries moved. */
void find_again(receiver *host);

/* input.c */
/* The argument behind the words of a command, or null when the line is another command. */
const char *behind_words(const char *line, const char *words);
/* Reads a number and the blanks behind it. Returns what follows, or null when there is no number. */
const char *read_number(const char *text, long *number);
/* How much of a name fits into a field, cut before a UTF-8 character, never inside. */
size_t fitting_length(const char *name, size_t room);

/* choices.c: what the user picks from, by its number in the list or by name */
typedef struct choice {
  int16_t id;
  int channels;
  short_text name;
} choice;
typedef struct choices {
  int count;
  choice at[MAX_PROVIDER]; /* the longest list */
} choices;
void add_choice(choices *offered, int16_t id, short_text name);
/* With a mark before the one that is chosen. */
void print_choices(const choices *offered, int16_t chosen_id);
/* The choice that was typed, or null. */
const choice *pick(const choices *offered, const char *typed);

/* edits.c */
void sort_view(receiver *host, const char *key);
void toggle_lock(receiver *host);
void toggle_skip(receiver *host);
void rename_channel(receiver *host, const char *name);
void delete_channel(receiver *host);
void merge_scan(receiver *host);
void move_in_view(receiver *host, const char *place);

/* favourites.c: a group is typed by its number or name */
void show_favourites(receiver *host, const char *group);
void new_favourites(receiver *host, const char *name);
void add_favourite(receiver *host, const char *group);
void delete_favourite(receiver *host);
void move_favourites(receiver *host, const char *places);
void rename_favourites(receiver *host, const char *name);
void drop_favourites(receiver *host, const char *group);

/* groups.c: a group is typed by its number or name; without one the groups are listed */
void choose_satellite(receiver *host, const char *group);
void choose_genre(receiver *host, const char *group);
void choose_provider(receiver *host, const char *group);
void choose_free(receiver *host);
void choose_scrambled(receiver *host);
/* Makes the list of a group's services current. Returns false, and changes nothing, when there are none. */
bool show_group(int8_t kind, int16_t id, int8_t source);

/* history.c */
void show_history(receiver *host);
void go_back(receiver *host);

/* commands.c */
void print_prompt(const receiver *host);
/* Runs one line, which loses its trailing blanks on the way. Returns false when the user is done. */
bool run_command(receiver *host, char *line);

/* session.c: plays a session that edits the list, saves it, loads it again and looks for the edits. */
bool play_session(receiver *host);

#endif
