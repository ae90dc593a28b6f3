/* The table of commands and what each of them does. */
#include "zapper.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <strings.h>

/* From INFO on, an action needs a channel on the screen. */
typedef enum { ZAP, VIEW, FAVOURITES, LIST, SORT, HELP, LOAD, SAVE, INFO, TOGGLE, RENAME } action;

/* value is what tells commands with the same action apart. */
static const struct command {
  const char *word, *argument, *help;
  action action;
  int value;
} commands[] = {
    {"+", "", "channel up; skipped channels are passed over", ZAP, 1},
    {"-", "", "channel down", ZAP, -1},
    {"all", "", "every channel", VIEW, VIEW_ALL},
    {"tv", "", "television", VIEW, VIEW_TV},
    {"radio", "", "radio", VIEW, VIEW_RADIO},
    {"user", "", "your own list", VIEW, VIEW_USER},
    {"fav", "GROUP", "a favourite group, 1 to 20", FAVOURITES, 0},
    {"list", "[COUNT]", "the view, or so many channels from this one", LIST, 0},
    {"info", "", "more about this channel", INFO, 0},
    {"sort", "KEY", "the view by name, number or transponder", SORT, 0},
    {"lock", "", "lock this channel, or unlock it", TOGGLE, CHANNEL_FLAG_LOCKED},
    {"skip", "", "let + and - pass over this channel, or no longer", TOGGLE, CHANNEL_FLAG_SKIP},
    {"rename", "NAME", "rename this channel", RENAME, 0},
    {"save", "", "write the list to its file", SAVE, 0},
    {"load", "", "read it again; unsaved edits are lost", LOAD, 0},
    {"help", "", "this list", HELP, 0},
};
static const size_t command_count = sizeof commands / sizeof commands[0];

static void show_help(void) {
  puts("  NUMBER           zap to a channel");
  for (size_t i = 0; i < command_count; ++i) {
    printf("  %-6s %-9s %s\n", commands[i].word, commands[i].argument, commands[i].help);
  }
  puts("  quit             leave; unsaved edits are lost");
}

static void show_favourites(receiver *host, const char *argument) {
  const long group = strtol(argument, NULL, 10);
  if (group < 1 || group > MAX_FAV) {
    printf("Which group? fav 1 to fav %d\n", MAX_FAV);
    return;
  }
  switch_view(host, (int8_t)(VIEW_FAVOURITE + group - 1));
}

static void show_list(const receiver *host, const char *argument) {
  const int count = get_channel_list_number();
  const long wanted = strtol(argument, NULL, 10);
  const int first = wanted > 0 && host->vindex > 0 ? host->vindex : 0;
  const int end = wanted > 0 && wanted < count - first ? first + (int)wanted : count;
  for (int vindex = first; vindex < end; ++vindex) {
    print_banner((int16_t)vindex, vindex == host->vindex);
  }
}

static void sort_view(receiver *host, const char *argument) {
  const int sort_type = strcasecmp(argument, "name") == 0          ? SORT_CH_NAME
                        : strcasecmp(argument, "number") == 0      ? SORT_NUMBER
                        : strcasecmp(argument, "transponder") == 0 ? SORT_TRANSPONDER
                                                                   : -1;
  if (sort_type < 0) {
    puts("By what? sort name, sort number or sort transponder");
    return;
  }
  sort_vch_type((int8_t)sort_type, get_vindex_type());
  find_again(host);
  printf("The %s view is sorted by %s.\n", view_name(get_vindex_type()).text, argument);
}

static void toggle_flag(const receiver *host, uint8_t bit) {
  const bool is_set = (get_channel_flag_by_vindex(host->vindex) & bit) != 0;
  set_channel_flag_by_vindex(host->vindex, bit, !is_set);
  print_banner(host->vindex, true);
}

/* By identity, because a rename by position would leave the stored length of the name as it was. */
static void rename_channel(const receiver *host, const char *name) {
  const virtual_channel_st *on = &host->tuned;
  const size_t room = sizeof((channel_st *)0)->name[0].text;
  size_t length = strlen(name);
  if (length == 0) {
    puts("To what? rename NAME");
    return;
  }
  if (length > room) { /* cut before a UTF-8 character, never inside */
    for (length = room; length > 1 && ((unsigned char)name[length] & 0xC0) == 0x80; --length) {
    }
  }
  rename_channel_info(on->net_index, on->network_id, on->ts_id, on->frequency, on->service_id, on->polarisation, 0,
                      name, (int16_t)length);
  print_banner(host->vindex, true);
}

static void run(receiver *host, const struct command *command, const char *argument) {
  if (command->action >= INFO && host->vindex < 0) {
    puts("There is no channel on the screen.");
    return;
  }
  switch (command->action) {
    case ZAP:
      zap_by(host, command->value);
      break;
    case VIEW:
      switch_view(host, (int8_t)command->value);
      break;
    case FAVOURITES:
      show_favourites(host, argument);
      break;
    case LIST:
      show_list(host, argument);
      break;
    case SORT:
      sort_view(host, argument);
      break;
    case HELP:
      show_help();
      break;
    case LOAD:
      load_list(host);
      break;
    case SAVE:
      save_list(host);
      break;
    case INFO:
      print_details(host->vindex);
      break;
    case TOGGLE:
      toggle_flag(host, (uint8_t)command->value);
      break;
    case RENAME:
      rename_channel(host, argument);
      break;
  }
}

static void run_word(receiver *host, const char *word, const char *argument) {
  if (word[strspn(word, "0123456789")] == '\0') {
    zap_to_number(host, strtol(word, NULL, 10));
    return;
  }
  for (size_t i = 0; i < command_count; ++i) {
    if (strcasecmp(word, commands[i].word) == 0) {
      run(host, &commands[i], argument);
      return;
    }
  }
  printf("Unknown command '%s'. Type help for the commands.\n", readable(word, strlen(word)).text);
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
  char *word = line + strspn(line, blanks);
  char *argument = word + strcspn(word, blanks);
  if (*argument != '\0') {
    *argument++ = '\0';
    argument += strspn(argument, blanks);
  }
  if (*word != '\0' && strcasecmp(word, "quit") != 0) {
    run_word(host, word, argument);
  }
  return strcasecmp(word, "quit") != 0;
}
