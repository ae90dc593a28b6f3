/* What the user typed, taken apart. */
#include "zapper.h"

#include <ctype.h>
#include <stdlib.h>
#include <string.h>

static const char blanks[] = " \t";

const char *behind_words(const char *line, const char *words) {
  for (; *words != '\0'; ++words) {
    const size_t matched = *words == ' ' ? strspn(line, blanks)
                                         : (size_t)(tolower((unsigned char)*line) == tolower((unsigned char)*words));
    if (matched == 0) {
      return NULL;
    }
    line += matched;
  }
  const size_t gap = strspn(line, blanks);
  return gap > 0 || *line == '\0' ? line + gap : NULL;
}

const char *read_number(const char *text, long *number) {
  const size_t digits = strspn(text, "0123456789");
  *number = strtol(text, NULL, 10);
  return digits > 0 ? behind_words(text + digits, "") : NULL;
}

size_t fitting_length(const char *name, size_t room) {
  size_t length = strlen(name);
  if (length > room) {
    for (length = room; length > 1 && ((unsigned char)name[length] & 0xC0) == 0x80; --length) {
    }
  }
  return length;
}
