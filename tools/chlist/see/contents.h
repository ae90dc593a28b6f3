// What a channel file of any version holds, counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/files/channel_file.h"
#include "chlist/list_contents.h"
#include "chlist/report.h"

namespace chlist {

struct file_contents {
  struct view {
    view_name name;
    int count = 0;  // as the list has it
    std::size_t capacity = 0;
  };
  struct group {
    int id = 0;
    std::string name;
  };
  struct groups {
    std::string_view table;
    int count = 0;  // as the list has it
    std::size_t capacity = 0;
    std::vector<group> used;
  };
  struct transponder {
    int ts_id = 0;
    std::uint32_t frequency = 0;
    int polarisation = 0;
    std::size_t services = 0;
  };
  struct network {
    int net_index = 0;
    int network_id = 0;
    std::string name;
    std::vector<transponder> transponders;

    [[nodiscard]] std::size_t services() const;
  };
  struct flag_count {
    std::string_view name;
    std::size_t services = 0;
  };

  int version = 0;
  std::uintmax_t bytes = 0;
  std::vector<json> settings;  // in the order of all_settings()
  std::vector<view> views;
  std::vector<groups> tables;
  std::vector<network> networks;
  std::map<std::uint8_t, std::size_t> services_by_type;
  std::vector<flag_count> flags;

  [[nodiscard]] std::size_t services() const;
  [[nodiscard]] std::size_t transponders() const;
};

// Reads the file with the library's reader of its version. Refuses a version that has none, and a short file.
file_contents read_contents(const channel_file &input);

}  // namespace chlist
