// Reading a folder of Enigma2: the input is the texts of its files, one behind the other, with form feeds between them.
// What is read is written, and what is written is read back.
#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "chlist/exchange/enigma2/lamedb.h"
#include "harness.h"

namespace {

constexpr std::array names = {"lamedb", "bouquets.tv", "bouquets.radio", "userbouquet.all_channels.tv",
                              "u.tv",   "u.radio",     "blacklist"};

using folder = std::map<std::string, std::string>;

folder folder_of(std::string_view input) {
  folder files;
  for (const char *name : names) {
    const std::size_t end = std::min(input.find('\f'), input.size());
    files[name] = input.substr(0, end);
    input.remove_prefix(std::min(end + 1, input.size()));
  }
  return files;
}

folder written(const chlist::line_up &list) {
  folder files;
  for (const chlist::made_file &file : chlist::write_lamedb(list, 4).files) {
    files[file.name] = file.text;
  }
  return files;
}

chlist::line_up read(const folder &files) {
  chlist::loss_counts lost;
  const auto file = [&](const std::string &name) {
    const auto found = files.find(name);
    return found == files.end() ? std::nullopt : std::optional(found->second);
  };
  return chlist::parse_lamedb_folder(files.at("lamedb"), file, lost);
}

// Transponders that differ in their namespace alone become one, and services on them the same.
bool is_same_service(const chlist::skipped_line &skipped) {
  return skipped.reason.find("is the same service as line ") != std::string::npos;
}

void read_and_write(std::string_view input) {
  const chlist::line_up list = read(folder_of(input));
  const chlist::line_up again = read(written(list));

  fuzz::require(std::ranges::all_of(again.skipped, is_same_service), "what is written can be read");
  fuzz::require(again.services.size() + again.skipped.size() == list.services.size(), "every service comes back");
  fuzz::require(again.favourites.size() == list.favourites.size(), "every favourite group comes back");
  fuzz::require(written(read(written(again))) == written(again), "what was read once comes back whole");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  try {
    read_and_write({reinterpret_cast<const char *>(data), size});
  } catch (const std::runtime_error &) {
    // No lamedb, or one of another version.
  }
  return 0;
}
