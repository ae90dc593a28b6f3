// The formats that channel lists are exchanged in. One table: a new format is a row and a file with its reader and
// writer.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/line_up.h"

namespace chlist {

// A file that a writer makes, by its name within the output folder; a format of one file leaves the name empty.
struct made_file {
  std::string name;
  std::string text;
};

struct format {
  std::string_view name;   // of --from and --to: "vdr", "dvbv5", "lamedb4", "m3u", "csv"
  std::string_view about;  // for the help
  bool is_folder = false;  // several files: the path is a folder
  // Throws std::runtime_error when nothing can be read; lines that cannot are skipped and say so. Null: cannot be read.
  line_up (*read)(const std::filesystem::path &path, loss_counts &lost) = nullptr;
  // Null: cannot be written.
  std::vector<made_file> (*write)(const line_up &list, loss_counts &lost) = nullptr;
  // By the name and the beginning of what is to be read; --from decides against it.
  bool (*is_like)(const std::filesystem::path &path, std::string_view beginning) = nullptr;
};

std::span<const format> all_formats();

}  // namespace chlist
