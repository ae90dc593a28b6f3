// Files of folders are read when somebody asks for them.
#include "chlist/exchange/list_source.h"

#include <algorithm>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "chlist/files/input_file.h"
#include "chlist/files/standard_streams.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

// Lists name files as they like: a name that the file system cannot have is that of no file. What else keeps the
// program from looking is a failure, or a list would come without what is in the file.
bool is_file(const fs::path &path) {
  std::error_code error;
  const fs::file_status found = fs::status(path, error);
  if (found.type() == fs::file_type::none && error != std::errc::filename_too_long &&
      error != std::errc::too_many_symbolic_link_levels) {
    throw std::system_error(error, path.string());
  }
  return fs::is_regular_file(found);
}

// Reads files, and keeps what they are of.
struct text_reader {
  std::string charset;
  std::shared_ptr<charset_note> note = std::make_shared<charset_note>();

  [[nodiscard]] std::string read(const fs::path &path) const {
    std::string bytes = read_input_file(path);
    try {
      return utf8_of_file(std::move(bytes), charset, *note);
    } catch (const std::runtime_error &error) {
      throw std::runtime_error(name_of_input(path) + ": " + error.what());
    }
  }

  [[nodiscard]] folder_files files_in(const fs::path &folder) const {
    return [folder, reader = *this](const std::string &name) {
      const fs::path path = folder / name;
      return is_file(path) ? std::optional(reader.read(path)) : std::nullopt;
    };
  }
};

std::optional<std::string> no_file(const std::string & /*name*/) { return std::nullopt; }

}  // namespace

list_source source_at(const fs::path &path, const std::string &charset) {
  const text_reader reader{.charset = charset};
  list_source source = {
      .path = name_of_input(path), .text = {}, .encoding = {}, .files = no_file, .read_as = reader.note};
  source.is_folder = !is_standard_stream(path) && fs::is_directory(path);
  if (!is_standard_stream(path)) {
    source.files = reader.files_in(source.is_folder ? path : path.parent_path());
  }
  if (!source.is_folder) {
    source.text = reader.read(path);
    source.encoding = reader.note->last;
  }
  return source;
}

list_source source_of(const std::vector<made_file> &files, bool is_folder) {
  const auto find = [files](const std::string &name) {
    const auto found = std::ranges::find(files, name, &made_file::name);
    return found != files.end() ? std::optional(found->text) : std::nullopt;
  };
  return {.path = {},
          .is_folder = is_folder,
          .text = is_folder ? "" : files.front().text,
          .encoding = {},
          .files = find,
          .read_as = std::make_shared<charset_note>()};
}

}  // namespace chlist
