// Writes the same lists on every target, and reads those that another target wrote: a file that is saved again must
// come out byte for byte as it was. Links the shared library, as receivers do.
//
// interchange_host write FOLDER    makes every list through the interface and saves it there
// interchange_host read FOLDER     loads every file of a folder and saves it again beside it, under another name
#include <base/verbosity.h>
#include <channel/channel.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "support/full_list.h"
#include "support/invariants.h"
#include "support/temp_dir.h"

namespace {

constexpr int succeeded = 0;
constexpr int failed = 1;
constexpr int wrong_usage = 2;
constexpr int channel_module = 7;
constexpr int silent = -1;
constexpr std::uint8_t keep_order = 255;
constexpr const char *golden_folder = CHANNEL_TESTS_DIR "/golden/";

bool complain(const std::string &file, const std::string &what) {
  std::fprintf(stderr, "%s: %s\n", file.c_str(), what.c_str());
  return false;
}

void empty_list() {
  reset_channel_list();
  init_return_channel();
}

group_st group_named(const std::string &name) {
  group_st group = {};
  group.name_len = static_cast<std::int16_t>(name.copy(group.name, sizeof group.name - 1));
  return group;
}

// Two networks with values at the ends of their ranges, renamed, sorted, moved, flagged and removed from.
void make_edited_list() {
  for (int i = 1; i <= 40; ++i) {
    const auto number = static_cast<std::uint16_t>(i);
    const bool second = i > 25;
    channel_st *service = test_support::file_service(
        {.net_index = static_cast<std::uint8_t>(second ? 254 : 1),
         .network_id = static_cast<std::uint16_t>(second ? 65'535 : 1),
         .ts_id = static_cast<std::uint16_t>(65'535 - i / 5),
         .frequency = second ? 4'294'967'295 - i / 5 * 100'000 : 10'700'000 + i / 5 * 20'000,
         .service_id = static_cast<std::uint16_t>(65'535 - i * 7 % 41),
         .polarisation = static_cast<std::uint8_t>(i / 5 % 2),
         .service_type = static_cast<std::uint8_t>(i % 3 == 0 ? SERVICE_TYPE_RADIO : SERVICE_TYPE_TV),
         .name = "Service \xC3\xA9 " + std::to_string(number * 7919 % 1000)});
    test_support::append_entry(VIEW_ALL, test_support::entry_of(*service, static_cast<std::int16_t>(i)));
  }
  create_vindex_type(VIEW_ALL, -1);
  change_vindex_type(VIEW_ALL);
  sort_vch_type(SORT_CH_NAME, VIEW_ALL);
  constexpr std::array<std::int16_t, 3> moved = {30, 2, 7};
  move_channel(11, static_cast<std::int16_t>(moved.size()), moved.data());
  set_channel_flag_by_vindex(5, CHANNEL_FLAG_LOCKED, 1);
  vtype_rename_channel_info(6, 1, "Renamed", 7, VIEW_ALL);
  add_provider_info(group_named("Zweiter Anbieter"));
  add_provider_info(group_named("First provider"));
  add_fav_group_info(group_named("Favourites"));
  for (std::int16_t i = 0; i < 10; ++i) {
    add_fav_virtual_channel(0, get_vchannel_by_vindex(static_cast<std::int16_t>(39 - i * 3)));
  }
  vtype_remove_by_vindex(3, VIEW_ALL);
}

bool save_as(const char *name) { return save_channel(name) == 1 || complain(name, "not saved"); }

// As hosts take an old file over: repaired, saved, and loaded to be used, which forgets the countries of the channels.
bool save_repaired(int version, const char *name) {
  empty_list();
  const std::string source = std::string(golden_folder) + "channel_v" + std::to_string(version) + ".dat";
  if (repair_channel(version, source.c_str()) != 0) {
    return complain(source, "not repaired");
  }
  if (!save_as(name)) {
    return false;
  }
  empty_list();
  return (load_channel(name, keep_order) == CHANNEL_LIST_VERSION || complain(name, "not loaded")) && save_as(name);
}

// The tables of genres and countries have files of their own, in a folder of their own here, since a load fills empty
// tables from them. The file of genres is saved under another name than it is read.
bool save_side_files() {
  set_target_dir("./groups/");
  const bool saved = save_group_list(GROUP_GENRE) == 1 && std::rename("groups/genre.dat\n", "groups/genre.dat") == 0 &&
                     save_group_list(GROUP_COUNTRY) == 1;
  set_target_dir("./");
  return saved || complain("genres and countries", "not saved");
}

bool write_lists() {
  static_cast<void>(mkdir("groups", 0777));
  empty_list();
  make_edited_list();
  bool all = save_as("edited.dat");
  empty_list();
  test_support::fill_everything();
  all = save_as("full.dat") && save_side_files() && all;
  all = save_repaired(7, "from_7.dat") && all;
  all = save_repaired(8, "from_8.dat") && all;
  return save_repaired(9, "from_9.dat") && all;
}

bool read_list(const char *name) {
  empty_list();
  if (load_channel(name, keep_order) != CHANNEL_LIST_VERSION) {
    return complain(name, "not loaded");
  }
  // Old files bring favourite groups whose ids are not unique, and keep them.
  const bool is_repaired = std::string_view(name).starts_with("from_");
  const std::string broken = test_support::broken_invariant({.well_kept_groups = !is_repaired});
  if (!broken.empty()) {
    return complain(name, broken);
  }
  if (!save_as("again.dat")) {
    return false;
  }
  const bool same = test_support::read_file("again.dat") == test_support::read_file(name);
  return same || complain(name, "saved again, it is another file");
}

test_support::bytes side_files() {
  return test_support::read_file("groups/genre.dat") + test_support::read_file("groups/country.dat");
}

bool read_side_files() {
  const test_support::bytes before = side_files();
  empty_list();
  set_target_dir("./groups/");
  load_group_list(GROUP_GENRE);
  load_group_list(GROUP_COUNTRY);
  return save_side_files() && (side_files() == before || complain("genres and countries", "saved again, they differ"));
}

bool read_lists() {
  constexpr std::array names = {"edited.dat", "full.dat", "from_7.dat", "from_8.dat", "from_9.dat"};
  const auto read = std::ranges::count_if(names, read_list);
  static_cast<void>(std::remove("again.dat"));
  return read_side_files() && read == std::ssize(names);
}

}  // namespace

int main(int argc, char **argv) {
  const std::string_view command = argc == 3 ? argv[1] : "";
  // The library takes short directories only, so that the folder becomes the current one.
  if ((command != "write" && command != "read") || chdir(argv[2]) != 0) {
    std::fprintf(stderr, "usage: interchange_host write|read FOLDER\n");
    return wrong_usage;
  }
  set_target_dir("./");
  verbosity_map[channel_module] = silent;
  return (command == "write" ? write_lists() : read_lists()) ? succeeded : failed;
}
