/* Lists that the user picks from: favourite groups, and the groups of services. */
#include "zapper.h"

#include <stdio.h>
#include <string.h>
#include <strings.h>

void add_choice(choices *offered, int16_t id, short_text name) {
  offered->at[offered->count++] = (choice){.id = id, .name = name};
}

void print_choices(const choices *offered, int16_t chosen_id) {
  for (int i = 0; i < offered->count; ++i) {
    const choice *shown = &offered->at[i];
    printf("%c %5d  ", shown->id == chosen_id ? '>' : ' ', i + 1);
    print_name(shown->name.text, 26);
    printf("  %4d channel%s\n", shown->channels, shown->channels == 1 ? "" : "s");
  }
}

/* Names may differ in case alone, so that the exact one goes before the others. */
const choice *pick(const choices *offered, const char *typed) {
  long number;
  const char *rest = read_number(typed, &number);
  if (rest != NULL && *rest == '\0') {
    return number >= 1 && number <= offered->count ? &offered->at[number - 1] : NULL;
  }
  const short_text name = readable(typed, strlen(typed));
  const choice *found = NULL;
  for (int i = offered->count - 1; i >= 0; --i) {
    const choice *other = &offered->at[i];
    if (strcmp(other->name.text, name.text) == 0) {
      return other;
    }
    found = strcasecmp(other->name.text, name.text) == 0 ? other : found;
  }
  return found;
}
