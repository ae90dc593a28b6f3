/* Whether operations stay within a stack: each runs once in a thread whose stack was painted before. */
#define _XOPEN_SOURCE 600
#include <channel/channel.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { stack_size = 1024 * 1024, paint = 0xA5 };

static void load(void) { load_channel("channels.dat", 255); }
static void load_nothing(void) { load_channel("missing.dat", 255); }
static void save(void) { save_channel("channels.dat"); }
static void reset(void) { reset_channel_list(); }
static void repair(void) { repair_channel(8, "old.dat"); }
static void sort_by_name(void) { sort_vch_type(SORT_CH_NAME, VIEW_ALL); }
static void sort_by_flag(void) { sort_vindex_by_flag(VIEW_ALL, SORT_FTA); }
static void sweep(void) { remove_invalid_virtual_channel(); }
static void zap(void) { get_channel(get_channel_index(1)); }

static void *run(void *operation) {
  (*(void (**)(void))operation)();
  return NULL;
}

static void measure(const char *name, size_t kibibytes, void (*operation)(void)) {
  unsigned char *stack = aligned_alloc(4096, stack_size);
  pthread_attr_t attributes;
  pthread_t thread;
  if (stack == NULL) {
    exit(1);
  }
  memset(stack, paint, stack_size);
  pthread_attr_init(&attributes);
  pthread_attr_setstack(&attributes, stack, stack_size);
  if (pthread_create(&thread, &attributes, run, &operation) == 0) {
    pthread_join(thread, NULL);
  }
  size_t untouched = 0;
  while (untouched < stack_size && stack[untouched] == paint) {
    ++untouched;
  }
  size_t used = (stack_size - untouched + 1023) / 1024;
  printf("%-32s %s %zu KiB\n", name, used <= kibibytes ? "within" : "MORE THAN", kibibytes);
  pthread_attr_destroy(&attributes);
  free(stack);
}

int main(void) {
  set_target_dir("./");
  init_channel_list();
  measure("load_channel", 128, load);
  measure("save_channel", 128, save);
  measure("get_channel", 32, zap);
  measure("remove_invalid_virtual_channel", 32, sweep);
  measure("sort_vch_type by name", 64, sort_by_name);
  measure("sort_vindex_by_flag", 192, sort_by_flag);
  measure("reset_channel_list", 64, reset);
  measure("repair_channel", 128, repair);
  measure("load_channel and side files", 192, load_nothing);
  reset_channel_list();
  return 0;
}
