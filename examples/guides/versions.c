/* What a host does with any channel file it finds: today's as it is, an earlier one converted, no other. */
#include <channel/channel.h>
#include <stdio.h>

/* The version is the file's first two bytes, low byte first. */
static int version_of(const char *path) {
  unsigned char bytes[2] = {0, 0};
  FILE *file = fopen(path, "rb");
  if (file == NULL) {
    return -1;
  }
  size_t read = fread(bytes, 1, sizeof bytes, file);
  fclose(file);
  return read == sizeof bytes ? bytes[0] | bytes[1] << 8 : -1;
}

static int load_any(const char *name) {
  int version = version_of(name);
  reset_channel_list();
  if (version >= 7 && version <= 9 && repair_channel(version, name) == 0 && save_channel("converted.dat") == 1) {
    reset_channel_list();
    return load_channel("converted.dat", 255);
  }
  return version == CHANNEL_LIST_VERSION ? load_channel(name, 255) : -1;
}

int main(int argc, char **argv) {
  set_target_dir("./");
  for (int i = 1; i < argc; ++i) {
    int before = version_of(argv[i]);
    int loaded = load_any(argv[i]);
    const channel_list_st *list = get_channel_list();
    if (loaded == CHANNEL_LIST_VERSION) {
      printf("%s: version %d, %d in ALL, %d favourite groups\n", argv[i], before, list->vnumber,
             list->favorite_group_num);
    } else {
      printf("%s: version %d, not a channel file, or damaged\n", argv[i], before);
    }
  }
  reset_channel_list();
  return 0;
}
