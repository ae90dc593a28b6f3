// The formats that channel lists are exchanged in. One table: a new format is a row, and a folder with its reader and
// its writer, which know nothing of the table.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/list_source.h"
#include "chlist/exchange/loss_counts.h"
#include "chlist/files/channel_file.h"
#include "chlist/text/term.h"

namespace chlist {

struct source_layout;

struct format {
  std::string_view name;   // of --from and --to: "vdr", "dvbv5", "lamedb4", "m3u", "csv"
  std::string_view about;  // for the help
  bool is_folder = false;  // several files: the path is a folder
  // Throws std::runtime_error when nothing can be read; lines that cannot are skipped and say so. Null: cannot be read.
  line_up (*read)(const list_source &from, loss_counts &lost) = nullptr;
  // Null: cannot be written.
  written_list (*write)(const line_up &list, const write_options &options) = nullptr;
  // By the name and the beginning of what is to be read; --from decides against it. Without a beginning it is a file to
  // be written, which the name alone decides.
  bool (*is_like)(const std::filesystem::path &path, std::string_view beginning) = nullptr;
  // How what was read is kept for the way back. Null: it is not.
  const source_layout *layout = nullptr;
  // What it tells of every service and a channel list does not know, and what comes of that.
  std::string_view lacks = {};
  std::string_view without_it = {};
  // Formats that carry a channel file byte for byte do not go by the line-up: they turn one into the other. Both throw
  // std::runtime_error.
  std::string (*from_channel_file)(const channel_file &file) = nullptr;
  std::string (*to_channel_file)(std::string_view text) = nullptr;

  [[nodiscard]] bool can_read() const { return read != nullptr || to_channel_file != nullptr; }
  [[nodiscard]] bool can_write() const { return write != nullptr || from_channel_file != nullptr; }
};

// The format with a name, or else the one that a file is like. Throw std::runtime_error that names the formats that
// there are.
const format &format_to_read(std::string_view name, const list_source &input);
const format &format_to_write(std::string_view name, const std::filesystem::path &output);

// Throws when a file or folder is like one of these: what it is, and how a channel file is made of it.
void must_be_no_other_list(const std::filesystem::path &input);

// For the help: the formats that can be read, or written.
std::vector<term> formats_to_read();
std::vector<term> formats_to_write();

}  // namespace chlist
