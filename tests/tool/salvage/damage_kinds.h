// Eighty and some ways in which a channel file comes to harm: on worn flash, by a tool that writes over it, by a
// transfer that takes it for text. Each is done to a sound file, in the same way every time.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "support/channel_file.h"

namespace salvage_test {

// A sound file, and where its records stand by its own counts.
struct sound_file {
  explicit sound_file(test_support::bytes file);

  [[nodiscard]] std::size_t first_record() const { return networks.front(); }
  // A place so many hundredths of the records into them.
  [[nodiscard]] std::size_t among_records(std::size_t hundredths) const {
    return first_record() + (data.size() - first_record()) * hundredths / 100;
  }
  [[nodiscard]] std::size_t used_entries(int view) const;
  // Of a view, the entry in the middle of those that are in use.
  [[nodiscard]] std::size_t middle_entry(int view) const;

  test_support::bytes data;
  std::vector<std::size_t> networks;
  std::vector<std::size_t> transponders;
  std::vector<std::size_t> services;
};

// Every byte taken for a character of Latin-1.
test_support::bytes in_utf8(const test_support::bytes &data);

struct damage_kind {
  std::string_view group;  // "cut", "shifted" and so on
  std::string_view name;
  test_support::bytes (*damaged)(const sound_file &file, const sound_file &other);
  // Nothing in the file contradicts what is damaged: only another copy of the list tells.
  bool leaves_a_sound_file = false;
};

std::span<const damage_kind> damage_kinds();

}  // namespace salvage_test
