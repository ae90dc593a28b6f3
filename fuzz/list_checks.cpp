#include "list_checks.h"

#include <channel/channel.h>

#include <cstring>

#include "support/channel_file.h"

namespace fuzz {
namespace {

void put_side_file(run &run, const char *path, int capacity) {
  const std::uint8_t kind = run.options.byte();
  const std::uint8_t count = run.options.byte();
  if (kind % 2 == 1) {
    run.files.at(path) = test_support::side_file(capacity, std::min<int>(count, capacity), "Group");
  }
}

channel_list_st kept_list;

const std::string &saved(run &run, const char *name) {
  require(save_channel(name) == 1, "the list is saved");
  return run.files.at(std::string("/") + name);
}

}  // namespace

void put_side_files(run &run) {
  put_side_file(run, "/genre.dat", MAX_GENRE);
  put_side_file(run, "/country.dat", MAX_COUNTRY);
}

list_snapshot::list_snapshot() { std::memcpy(&kept_list, get_channel_list(), sizeof kept_list); }

bool list_snapshot::is_still_true() const { return std::memcmp(&kept_list, get_channel_list(), sizeof kept_list) == 0; }

void reload(run &run) {
  saved(run, "reloaded.dat");
  const int version = get_channel_list()->version;
  reset_channel_list();
  require(load_channel("reloaded.dat", 255) == version, "a saved list is loaded");
  require_invariants(of_any_file, "after loading a saved list");
}

void require_same_when_saved_again(run &run) {
  reload(run);
  require(saved(run, "again.dat") == run.files.at("/reloaded.dat"), "a list is saved as it was loaded");
  reset_channel_list();
}

}  // namespace fuzz
