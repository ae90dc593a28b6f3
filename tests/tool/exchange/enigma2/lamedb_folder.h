// A folder of Enigma2 in memory, for tests of its reader and its writer.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "chlist/exchange/enigma2/lamedb.h"
#include "tool/exchange/random_line_up.h"

namespace tool_test {

using folder = std::map<std::string, std::string>;

inline folder folder_of(const std::vector<chlist::made_file> &files) {
  folder made;
  for (const chlist::made_file &file : files) {
    made[file.name] = file.text;
  }
  return made;
}

inline folder written_folder(const chlist::line_up &list, int version = 4) {
  return folder_of(chlist::write_lamedb(list, version).files);
}

inline chlist::line_up read_folder(const folder &files, chlist::loss_counts &lost) {
  const auto file = [&](const std::string &name) {
    const auto found = files.find(name);
    return found == files.end() ? std::nullopt : std::optional(found->second);
  };
  return chlist::parse_lamedb_folder(file("lamedb").value_or(file("lamedb5").value_or("")), file, lost);
}

inline chlist::line_up read_folder(const folder &files) {
  chlist::loss_counts lost;
  return read_folder(files, lost);
}

// "line: reason" of all that is skipped.
inline std::vector<std::string> skipped_in(const chlist::line_up &list) {
  std::vector<std::string> texts;
  for (const chlist::skipped_line &skipped : list.skipped) {
    texts.push_back(std::to_string(skipped.line) + ": " + skipped.reason);
  }
  return texts;
}

// A service that the format holds whole.
inline chlist::line_up_service plain_service(int service_id) {
  chlist::line_up_service service;
  service.name = "A" + std::to_string(service_id);
  service.source = "S19.2E";
  service.fields.source_type = 1;
  service.fields.service_type = SERVICE_TYPE_TV;
  service.fields.service_id = static_cast<std::uint16_t>(service_id);
  service.fields.network_id = 0x9E;
  service.fields.ts_id = 0x7DA;
  service.fields.frequency = 11'306'000;
  return service;
}

inline chlist::line_up list_of(std::vector<chlist::line_up_service> services) {
  chlist::line_up list;
  list.services = std::move(services);
  return list;
}

}  // namespace tool_test

// What the tests of the lamedb and of its bouquets call by short names.
namespace tool_test::enigma2 {

using chlist::line_up;
using chlist::line_up_service;
using chlist::loss_counts;
using tool_test::count_of;
using tool_test::folder;
using tool_test::list_of;
using tool_test::plain_service;
using tool_test::read_folder;
using tool_test::skipped_in;
using tool_test::written_folder;
using texts = std::vector<std::string>;

}  // namespace tool_test::enigma2
