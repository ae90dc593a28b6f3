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
} receiver;

typedef struct short_text {
  char text[97];
} short_text;

/* display.c */
short_text view_name(int8_t view);
/* A field of a record, which may lack a terminator and hold anything, fit for a terminal. */
short_text readable(const char *field, size_t size);
/* One line: number, name, network, transponder, PIDs and marks; '>' before the channel on the screen. */
void print_banner(int16_t vindex, bool on_screen);
void print_details(int16_t vindex);

/* receiver.c */
bool load_list(receiver *host);
bool save_list(const receiver *host);
/* Stays on the channel if the view has it; refuses an empty view. */
void switch_view(receiver *host, int8_t view);
void zap_to_number(receiver *host, long number);
/* The next channel up (1) or down (-1), around the ends of the view, passing over skipped ones. */
void zap_by(receiver *host, int direction);
/* Looks the channel on the screen up again after the view's entries moved. */
void find_again(receiver *host);

/* commands.c */
void print_prompt(const receiver *host);
/* Runs one line, which is changed on the way. Returns false when the user is done. */
bool run_command(receiver *host, char *line);

#endif
