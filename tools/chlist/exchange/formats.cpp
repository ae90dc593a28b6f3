// The table of formats, and the choice among them.
#include "chlist/exchange/formats.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <system_error>

#include "chlist/closest.h"
#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exchange/dvbv5/dvbv5.h"
#include "chlist/exchange/enigma2/lamedb.h"
#include "chlist/exchange/enigma2/lamedb_layout.h"
#include "chlist/exchange/json/list_json.h"
#include "chlist/exchange/m3u/m3u.h"
#include "chlist/exchange/vdr/vdr.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/input_file.h"
#include "chlist/files/standard_streams.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t enough_to_tell = 4096;

constexpr std::string_view lacked_tuning = "symbol rate and modulation";
constexpr std::string_view usual_tuning = "the usual ones are assumed: transponders with others are not received";

// Those that the contents decide stand before those that go by the name.
constexpr format formats[] = {
    {.name = "json",
     .about = "every byte of a channel file, by the names of its fields",
     .is_like = is_like_json,
     .from_channel_file = json_of_channel_file,
     .to_channel_file = channel_file_of_json},
    {.name = "lamedb4",
     .about = "folder of Enigma2: lamedb (version 4) and bouquets; any version is read",
     .is_folder = true,
     .read = read_lamedb,
     .write = write_lamedb<4>,
     .is_like = is_like_lamedb4,
     .layout = &lamedb_layout,
     .lacks = lacked_tuning,
     .without_it = usual_tuning},
    {.name = "lamedb5",
     .about = "the same with lamedb5 (version 5)",
     .is_folder = true,
     .read = read_lamedb5,
     .write = write_lamedb<5>,
     .is_like = is_like_lamedb5,
     .layout = &lamedb_layout,
     .lacks = lacked_tuning,
     .without_it = usual_tuning},
    {.name = "lamedb3",
     .about = "the same with lamedb (version 3)",
     .is_folder = true,
     .read = read_lamedb,
     .write = write_lamedb<3>,
     .is_like = is_like_lamedb3,
     .layout = &lamedb_layout,
     .lacks = lacked_tuning,
     .without_it = usual_tuning},
    {.name = "dvbv5",
     .about = "sections of libdvbv5 and its tools",
     .read = read_dvbv5,
     .write = write_dvbv5,
     .is_like = is_like_dvbv5,
     .layout = &dvbv5_layout,
     .lacks = lacked_tuning,
     .without_it = usual_tuning},
    {.name = "csv",
     .about = "comma-separated values with a header line that names the columns",
     .read = read_csv,
     .write = write_csv,
     .is_like = is_like_csv},
    {.name = "m3u",
     .about = "extended M3U playlist",
     .read = read_m3u,
     .write = write_m3u,
     .is_like = is_like_m3u,
     .layout = &m3u_layout},
    {.name = "vdr",
     .about = "channels.conf of VDR",
     .read = read_vdr,
     .write = write_vdr,
     .is_like = is_like_vdr,
     .layout = &vdr_layout,
     .lacks = lacked_tuning,
     .without_it = "VDR cannot tune without them, until a scan or somebody fills them in"},
};

using choice = bool (*)(const format &each);

bool can_read(const format &each) { return each.can_read(); }
bool can_write(const format &each) { return each.can_write(); }

std::vector<term> terms_of(choice is_able) {
  std::vector<term> terms;
  for (const format &each : formats) {
    if (is_able(each)) {
      terms.push_back({std::string(each.name), std::string(each.about)});
    }
  }
  return terms;
}

std::string names(choice is_able) { return joined(words_of(terms_of(is_able)), ", "); }

const format &named(std::string_view name, choice is_able, std::string_view what_for) {
  const format *const found = std::ranges::find(formats, name, &format::name);
  if (found == std::end(formats) || !is_able(*found)) {
    throw std::runtime_error(unknown_name(fmt::format("format to {}", what_for), name, words_of(terms_of(is_able))));
  }
  return *found;
}

// By what it begins with, and its name. Of a folder, the file that stands for it may be named as well.
const format *format_like(const fs::path &input, bool is_folder, std::string_view beginning, choice is_able) {
  const auto *const found = std::ranges::find_if(formats, [&](const format &each) {
    return is_able(each) && (each.is_folder || !is_folder) && each.is_like(input, beginning);
  });
  return found != std::end(formats) ? found : nullptr;
}

// Whoever does what a message says replaces no other list.
fs::path free_name_beside(const fs::path &input) {
  fs::path name = fs::path(input).replace_extension(".dat");
  std::error_code none;
  for (int number = 2; fs::exists(name, none); ++number) {
    name.replace_filename(fmt::format("{}-{}.dat", input.stem().string(), number));
  }
  return name;
}

}  // namespace

const format &format_to_read(std::string_view name, const list_source &input) {
  if (!name.empty()) {
    return named(name, can_read, "read");
  }
  const std::string path = input.path.string();
  const std::string_view beginning = std::string_view(input.text).substr(0, enough_to_tell);
  const format *like = format_like(input.path, input.is_folder, beginning, can_read);
  if (like == nullptr && input.is_folder) {
    throw std::runtime_error(path + ": is a folder without a lamedb or a lamedb5, no list");
  }
  if (like == nullptr && beginning.empty()) {
    throw std::runtime_error(path + ": is empty");
  }
  if (like == nullptr && is_channel_file(beginning)) {
    throw std::runtime_error(path + ": is a channel file already; `chlist export` makes other lists of it");
  }
  if (like == nullptr) {
    throw std::runtime_error(fmt::format("{}: is of no known format; --from names it: {}", path, names(can_read)));
  }
  return *like;
}

void must_be_no_other_list(const fs::path &input) {
  const bool is_folder = fs::is_directory(input);
  const std::string beginning = is_folder ? "" : read_beginning(input, enough_to_tell);
  const format *like = format_like(input, is_folder, beginning, can_read);
  if (like == nullptr) {
    return;
  }
  throw std::runtime_error(fmt::format("{}: is no channel file but {} ({}): `chlist import {} -o {}` makes one of it",
                                       input.string(), like->name, like->about, shell_word(input.string()),
                                       shell_word(free_name_beside(input).string())));
}

const format &format_to_write(std::string_view name, const fs::path &output) {
  if (!name.empty()) {
    return named(name, can_write, "write");
  }
  for (const format &each : formats) {
    if (each.can_write() && each.is_like != nullptr && each.is_like(output, "")) {
      return each;
    }
  }
  throw std::runtime_error(
      fmt::format("{}: its name tells no format; --to names it: {}", name_of_output(output), names(can_write)));
}

std::vector<term> formats_to_read() { return terms_of(can_read); }
std::vector<term> formats_to_write() { return terms_of(can_write); }

}  // namespace chlist
