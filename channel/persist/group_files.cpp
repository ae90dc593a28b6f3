// The genre and country tables in files of their own, so that they outlive a channel file: a 16-bit count and the whole
// table, unused slots included. Groups hold no pointers, so the table is its own image.
#include <algorithm>
#include <channel/groups.h>
#include <cstdint>

#include "channel/log.h"
#include "channel/persist/data_path.h"
#include "channel/persist/file.h"
#include "channel/store/group_table.h"
#include "channel/store/image_sizes.h"

static_assert(sizeof(group_st) == channel::group_image_size);

namespace channel::persist {
namespace {

// How one table is filed, and the words of its log lines.
struct group_file {
  int kind;
  const char *name;
  const char *saved_name;
  const char *table_name;
};

// Compatibility: the genre table is saved under a name that ends in a newline character, and so is never read back;
// receivers in the field have that file, and an edited genre table lasts until the next start.
constexpr group_file genre_file = {GROUP_GENRE, "genre.dat", "genre.dat\n", "genre"};
constexpr group_file country_file = {GROUP_COUNTRY, "country.dat", "country.dat", "country"};

const group_file *file_of_kind(int kind, const char *operation) {
  switch (kind) {
    case GROUP_GENRE:
      return &genre_file;
    case GROUP_COUNTRY:
      return &country_file;
    default:
      LOG_ERROR_AS(operation, " unknown group list( %d )!!\n", kind);
      return nullptr;
  }
}

void announce_saving(const group_file &filed, const char *operation) {
  if (filed.kind == GROUP_GENRE) {
    LOG_TRACE_AS(operation, 2, "          SAVE GENRE       \n");
  } else {
    LOG_TRACE_AS(operation, 2, "          SAVE COUNTRY       \n");
  }
}

void report_empty(const group_file &filed, int count, const char *operation) {
  if (filed.kind == GROUP_GENRE) {
    LOG_ERROR_AS(operation, " group number %d  !!\n", count);
  } else {
    LOG_ERROR_AS(operation, " country number %d !!\n", count);
  }
}

bool read_part(file &source, void *data, std::size_t size, const group_file &filed, const data_path &path) {
  if (source.read(data, size)) {
    return true;
  }
  LOG_ERROR_AS("load_group_list", "Fail to read the %s to '%s' size %d \n", filed.table_name, path.c_str(),
               static_cast<int>(size));
  return false;
}

// Compatibility: the country table's failure names the genre list as well.
bool written(bool went_out, const data_path &path) {
  if (!went_out) {
    LOG_ERROR_AS("save_group_list", "Fail to write the genre list to '%s'\n", path.c_str());
  }
  return went_out;
}

}  // namespace
}  // namespace channel::persist

using channel::group_table;
using channel::persist::data_path;
using channel::persist::file;
using channel::persist::group_file;

extern "C" {

int load_group_list(int8_t kind) {
  const group_file *filed = channel::persist::file_of_kind(kind, __func__);
  if (filed == nullptr) {
    return 0;
  }
  const data_path path(filed->name);
  file source(path.to_open(), "r");
  if (!source.is_open()) {
    LOG_ERROR("Fail to open '%s'\n", filed->name);
    return 0;
  }
  const group_table table = channel::table_of_kind(kind);
  const bool count_read = channel::persist::read_part(source, table.count, sizeof *table.count, *filed, path);
  const bool table_read = channel::persist::read_part(source, table.groups, table.array().size_bytes(), *filed, path);
  if (!count_read || !table_read) {
    *table.count = 0;
    std::ranges::fill(table.array(), group_st{});
    return -1;
  }
  if (*table.count != table.size()) {
    LOG_ERROR("group list %d counts %d, taken as %d\n", kind, *table.count, table.size());
    *table.count = table.size();
  }
  return 0;
}

int save_group_list(int8_t kind) {
  const group_file *filed = channel::persist::file_of_kind(kind, __func__);
  if (filed == nullptr) {
    return 0;
  }
  channel::persist::announce_saving(*filed, __func__);
  const group_table table = channel::table_of_kind(kind);
  if (*table.count == 0) {
    channel::persist::report_empty(*filed, *table.count, __func__);
    return 1;
  }
  const data_path path(filed->saved_name);
  file target(path.to_open(), "w+");
  if (!target.is_open()) {
    LOG_ERROR("Fail to open '%s'\n", path.c_str());
    return 0;
  }
  const bool count_written = channel::persist::written(target.write(table.count, sizeof *table.count), path);
  const bool table_written = channel::persist::written(target.write(table.groups, table.array().size_bytes()), path);
  const bool closed = channel::persist::written(target.close(), path);
  channel::persist::door->sync();
  LOG_TRACE(2, "\n");
  return count_written && table_written && closed ? 1 : 0;
}
}
