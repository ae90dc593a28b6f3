// Files of folders are read when somebody asks for them.
#include "chlist/exchange/list_source.h"

#include <algorithm>

#include "chlist/files/input_file.h"
#include "chlist/files/standard_streams.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

folder_files files_in(const fs::path &folder) {
  return [folder](const std::string &name) {
    const fs::path path = folder / name;
    std::error_code unseen;
    return fs::is_regular_file(path, unseen) ? std::optional(read_input_file(path)) : std::nullopt;
  };
}

std::optional<std::string> no_file(const std::string & /*name*/) { return std::nullopt; }

}  // namespace

list_source source_at(const fs::path &path) {
  if (is_standard_stream(path)) {
    return {.path = name_of_input(path), .is_folder = false, .text = read_input_file(path), .files = no_file};
  }
  if (std::error_code unseen; fs::is_directory(path, unseen)) {
    return {.path = path, .is_folder = true, .text = {}, .files = files_in(path)};
  }
  return {.path = path, .is_folder = false, .text = read_input_file(path), .files = files_in(path.parent_path())};
}

list_source source_of(const std::vector<made_file> &files, bool is_folder) {
  const auto find = [files](const std::string &name) {
    const auto found = std::ranges::find(files, name, &made_file::name);
    return found != files.end() ? std::optional(found->text) : std::nullopt;
  };
  return {.path = {}, .is_folder = is_folder, .text = is_folder ? "" : files.front().text, .files = find};
}

}  // namespace chlist
