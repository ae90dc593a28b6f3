// Where a list of another format is read from: a file or a folder of files, on disk or just made. A file is read once,
// so that it may be a pipe.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "chlist/exchange/written_list.h"
#include "chlist/text/charset.h"

namespace chlist {

// A file of a folder by its name; nothing when it is not there.
using folder_files = std::function<std::optional<std::string>(const std::string &name)>;

struct list_source {
  std::filesystem::path path;  // as messages name it
  bool is_folder = false;
  std::string text;                       // of a file
  text_encoding encoding;                 // of that
  folder_files files;                     // of the folder, or of the one that the file stands in
  std::shared_ptr<charset_note> read_as;  // of all that was read so far
  std::string url = {};                   // of M3U: how addresses hold ids, as write_options have it
};

// "-" is standard input; charset: what texts are of, empty when that is to be told by them. Throws std::runtime_error
// when the path cannot be read.
list_source source_at(const std::filesystem::path &path, const std::string &charset = {});

// Readers know nothing of paths: what they throw begins with the source's here.
template <class Read>
auto reading(const list_source &source, const Read &read) {
  try {
    return read();
  } catch (const std::runtime_error &error) {
    throw std::runtime_error(source.path.string() + ": " + error.what());
  }
}

// What a writer made, of a folder its files.
list_source source_of(const std::vector<made_file> &files, bool is_folder);

}  // namespace chlist
