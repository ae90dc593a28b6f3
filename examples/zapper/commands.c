/* The table of commands, and the line that the user typed. */
#include "zapper.h"

#include <stdio.h>
#include <string.h>
#include <strings.h>

static void zap_up(receiver *host) { zap_by(host, 1); }
static void zap_down(receiver *host) { zap_by(host, -1); }
static void show_all(receiver *host) { switch_view(host, VIEW_ALL); }
static void show_tv(receiver *host) { switch_view(host, VIEW_TV); }
static void show_radio(receiver *host) { switch_view(host, VIEW_RADIO); }
static void show_user(receiver *host) { switch_view(host, VIEW_USER); }
static void show_info(receiver *host) { print_details(host->vindex); }
static void save(receiver *host) { save_list(host); }
static void load(receiver *host) { load_list(host); }

static void show_list(receiver *host, const char *typed_count) {
  const int count = get_channel_list_number();
  long wanted;
  const bool is_part = read_number(typed_count, &wanted) != NULL && wanted > 0;
  const int first = is_part && host->vindex > 0 ? host->vindex : 0;
  const int end = is_part && wanted < count - first ? first + (int)wanted : count;
  for (int vindex = first; vindex < end; ++vindex) {
    print_banner((int16_t)vindex, vindex == host->vindex);
  }
}

static void show_help(receiver *host);

/* The first row whose words begin the line counts. A row has a run with or without the argument. */
static const struct command {
  const char *words, *argument, *help;
  void (*run)(receiver *host);
  void (*run_with)(receiver *host, const char *argument);
  bool needs_channel;
} commands[] = {
    {"+", "", "channel up; skipped channels are passed over", zap_up, NULL, false},
    {"-", "", "channel down", zap_down, NULL, false},
    {"back", "", "to the channel before this one, and to its list", go_back, NULL, false},
    {"history", "", "the channels that were watched", show_history, NULL, false},
    {"all", "", "every channel", show_all, NULL, false},
    {"tv", "", "television", show_tv, NULL, false},
    {"radio", "", "radio", show_radio, NULL, false},
    {"user", "", "your own list, or the group that was shown last", show_user, NULL, false},
    {"satellite", "[GROUP]", "the satellites, or the list of one", NULL, choose_satellite, false},
    {"provider", "[GROUP]", "the providers, or the list of one", NULL, choose_provider, false},
    {"genre", "[GROUP]", "the genres, or the list of one", NULL, choose_genre, false},
    {"free", "", "the list of the free channels", choose_free, NULL, false},
    {"scrambled", "", "the list of the scrambled channels", choose_scrambled, NULL, false},
    {"fav new", "NAME", "make a favourite group", NULL, new_favourites, false},
    {"fav add", "[GROUP]", "put this channel into a favourite group", NULL, add_favourite, true},
    {"fav del", "", "take this channel out of its favourite group", delete_favourite, NULL, true},
    {"fav move", "FROM TO", "give a favourite group another number", NULL, move_favourites, false},
    {"fav rename", "NAME", "rename the favourite group", NULL, rename_favourites, false},
    {"fav drop", "GROUP", "dissolve a favourite group", NULL, drop_favourites, false},
    {"fav", "[GROUP]", "the favourite groups, or one of them, by number or name", NULL, show_favourites, false},
    {"list", "[COUNT]", "the view, or so many channels from this one", NULL, show_list, false},
    {"info", "", "more about this channel", show_info, NULL, true},
    {"sort", "KEY", "the view by name, number or transponder", NULL, sort_view, false},
    {"move", "TO", "move this channel to a place in the view", NULL, move_in_view, true},
    {"lock", "", "lock this channel, or unlock it", toggle_lock, NULL, true},
    {"skip", "", "let + and - pass over this channel, or no longer", toggle_skip, NULL, true},
    {"rename", "NAME", "rename this channel", NULL, rename_channel, true},
    {"delete", "", "delete this channel from the whole list", delete_channel, NULL, true},
    {"scan", "", "take over the new channel list that a search has left", merge_scan, NULL, false},
    {"save", "", "write the list to its file", save, NULL, false},
    {"load", "", "read it again; unsaved edits are lost", load, NULL, false},
    {"help", "", "this list", show_help, NULL, false},
};
static const size_t command_count = sizeof commands / sizeof commands[0];

static void show_help(receiver *host) {
  (void)host;
  puts("  NUMBER               zap to a channel");
  for (size_t i = 0; i < command_count; ++i) {
    printf("  %-10s %-9s %s\n", commands[i].words, commands[i].argument, commands[i].help);
  }
  puts("  quit                 leave; unsaved edits are lost");
}

static void run(receiver *host, const struct command *command, const char *argument) {
  if (command->needs_channel && host->vindex < 0) {
    puts("There is no channel on the screen.");
  } else if (command->run != NULL) {
    command->run(host);
  } else {
    command->run_with(host, argument);
  }
}

static void run_line(receiver *host, const char *line) {
  long number;
  if (read_number(line, &number) != NULL) {
    zap_to_number(host, number);
    return;
  }
  for (size_t i = 0; i < command_count; ++i) {
    const char *argument = behind_words(line, commands[i].words);
    if (argument != NULL) {
      run(host, &commands[i], argument);
      return;
    }
  }
  printf("Unknown command '%s'. Type help for the commands.\n", readable(line, strcspn(line, " \t")).text);
}

void print_prompt(const receiver *host) {
  printf("%s", view_name(get_vindex_type()).text);
  if (host->vindex >= 0) {
    printf(" %d", host->tuned.major_ch_num);
  }
  printf("> ");
  fflush(stdout);
}

bool run_command(receiver *host, char *line) {
  static const char blanks[] = " \t\r\n";
  size_t length = strlen(line);
  while (length > 0 && strchr(blanks, line[length - 1]) != NULL) {
    line[--length] = '\0';
  }
  line += strspn(line, blanks);
  if (behind_words(line, "quit") != NULL) {
    return false;
  }
  if (*line != '\0') {
    run_line(host, line);
  }
  return true;
}
