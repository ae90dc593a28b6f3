// A side file is a count and a whole table. Its steps set the count, a group or any bytes, and cut the file.
#include "group_file.h"

#include <channel/channel.h>

#include <algorithm>
#include <string>

#include "harness.h"
#include "support/channel_file.h"

namespace fuzz {
namespace {

namespace group_field = test_support::group_field;
using test_support::bytes;
using test_support::group_size;
using test_support::put;

constexpr std::size_t count_size = 2;

void set_bytes(bytes &file, std::size_t at, const std::string &text) {
  for (std::size_t i = 0; i < text.size() && at + i < file.size(); ++i) {
    file[at + i] = text[i];
  }
}

// An id, the length of the name and its beginning; a group is filled with the name's last byte when it claims more.
void set_group(bytes &file, const filed_groups &table, byte_reader &operands) {
  const std::size_t at = count_size + operands.byte() % static_cast<std::size_t>(table.capacity) * group_size;
  const std::uint32_t id = operands.number(2);
  const std::uint32_t length = operands.number(2);
  std::string name = operands.rest();
  name.resize(std::clamp<std::size_t>(length, name.size(), sizeof group_st::name), name.empty() ? 'x' : name.back());
  put(file, at + group_field::id, 2, id);
  put(file, at + group_field::name_len, 2, length);
  set_bytes(file, at + group_field::name, name);
}

bytes read_steps(const filed_groups &table, byte_reader &input) {
  bytes file(count_size + static_cast<std::size_t>(table.capacity) * group_size, '\0');
  std::size_t cut = 0;
  while (!input.is_at_end()) {
    byte_reader operands = input.part(step_size);
    switch (operands.byte() % 4) {
      case 0:
        put(file, 0, count_size, operands.number(2));
        break;
      case 1:
        set_group(file, table, operands);
        break;
      case 2: {
        const std::size_t at = operands.number(2);
        set_bytes(file, at, operands.rest());
        break;
      }
      default:
        cut = operands.number(2);
    }
  }
  file.resize(file.size() - std::min(cut, file.size()));
  return file;
}

// Everything that looks into the table.
void look_up(const filed_groups &table) {
  for (const int id : {-1, 0, 1, 2, 32767}) {
    get_group_st_by_id(table.kind, static_cast<std::int16_t>(id));
  }
  std::uint16_t count = 0;
  print_group_info(get_group_list(table.kind, &count), static_cast<std::int16_t>(count));
}

}  // namespace

void load_and_save(const filed_groups &table, const std::uint8_t *data, std::size_t size) {
  run run(data, size);
  const bytes file = read_steps(table, run.input);
  const bool is_whole = file.size() == count_size + static_cast<std::size_t>(table.capacity) * group_size;
  const int claimed = is_whole ? static_cast<std::int16_t>(test_support::get(file, 0, count_size)) : 0;
  run.files.at(table.loaded_from) = file;

  run.log();
  require(load_group_list(table.kind) == (is_whole ? 0 : -1), "a load returns 0, or -1 of a short file");

  std::uint16_t count = 0;
  const group_st *groups = get_group_list(table.kind, &count);
  require(count == static_cast<unsigned>(std::clamp(claimed, 0, table.capacity)), "the count lies in the table");
  look_up(table);
  require(save_group_list(table.kind) == 1, "a table is saved");
  if (count > 0) {
    const bytes &saved = run.files.at(table.saved_to);
    require(saved.substr(count_size) == file.substr(count_size), "a table is saved as it was loaded");
    require(saved.substr(count_size) == bytes(reinterpret_cast<const char *>(groups), saved.size() - count_size),
            "a table is what its file holds");
  }
}

}  // namespace fuzz
