// The road of every edit, but that the file stays open for hours: it is locked while it is written alone.
#include "chlist/serve/edited_file.h"

#include <stdexcept>

#include "chlist/files/backup.h"
#include "chlist/files/edit_lock.h"
#include "chlist/files/faithful_load.h"
#include "chlist/files/file_line_up.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

channel_file read_to_edit(const fs::path &path) {
  channel_file input(path);
  input.must_be_current();
  return input;
}

}  // namespace

// Absolute: saving changes the working directory for a moment.
edited_file::edited_file(const fs::path &path) : path_(fs::absolute(path)), input_(read_to_edit(path_)) {}

std::vector<std::string> edited_file::load() const { return load_faithfully(input_); }

bool edited_file::is_changed() const {
  try {
    input_.must_be_unchanged();
    return false;
  } catch (const std::runtime_error &) {
    return true;
  }
}

line_up edited_file::read_beside() const { return line_up_in(channel_file(path_)); }

void edited_file::read_again() { input_ = read_to_edit(path_); }

void edited_file::save() {
  const edit_lock lock(path_);
  input_.must_be_unchanged();
  save_edited_list(path_, path_, false);
  read_again();
}

}  // namespace chlist
