/*
 * A host of the channel list in C: it loads a channel file and does what a receiver does with it. On a terminal it is
 * interactive; otherwise it plays a session of its own, which edits the list, saves it and loads it again.
 */
#include "zapper.h"

#include <base/verbosity.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static int usage(void) {
  fputs("Usage: zapper [--verbose LEVEL] DIR FILE\n"
        "Zaps through the channel file FILE in the directory DIR (at most 31 characters with its final '/').\n"
        "LEVEL lets log lines of the library through: 0 errors to 5 everything; without it there are none.\n",
        stderr);
  return EXIT_FAILURE;
}

/* The library joins directory and file name as they are, and keeps its directory when the new one is too long. */
static bool use_directory(const char *dir) {
  char with_slash[64];
  const size_t length = strlen(dir);
  const bool has_slash = length > 0 && dir[length - 1] == '/';
  const int needed = snprintf(with_slash, sizeof with_slash, has_slash ? "%s" : "%s/", dir);
  return (size_t)needed < sizeof with_slash && strcmp(set_target_dir(with_slash), with_slash) == 0;
}

/* A line of input, of which only what fits is kept. */
static bool read_line(char *line, int size) {
  if (fgets(line, size, stdin) == NULL) {
    return false;
  }
  for (int c = strchr(line, '\n') == NULL ? getchar() : '\n'; c != '\n' && c != EOF;) {
    c = getchar();
  }
  return true;
}

static bool converse(receiver *host) {
  char line[256];
  puts("Type help for the commands.");
  print_prompt(host);
  while (read_line(line, sizeof line) && run_command(host, line)) {
    print_prompt(host);
  }
  puts("");
  return true;
}

int main(int argc, char **argv) {
  int *log_level = &verbosity_map[7]; /* the channel list's: without it a mistyped number would be an ERROR line */
  *log_level = -1;
  if (argc == 5 && strcmp(argv[1], "--verbose") == 0) {
    *log_level = (int)strtol(argv[2], NULL, 10);
    argv += 2;
    argc -= 2;
  }
  if (argc != 3) {
    return usage();
  }
  if (!use_directory(argv[1])) {
    fputs("zapper: the directory's name is too long; change into it and give ./\n", stderr);
    return EXIT_FAILURE;
  }
  receiver host = {.file = argv[2], .vindex = -1, .favourite = -1};
  const bool done = load_list(&host) && (isatty(STDIN_FILENO) ? converse(&host) : play_session(&host));
  destroy_channel_list();
  return done ? EXIT_SUCCESS : EXIT_FAILURE;
}
