// A copy, not a link: the disk has to have room for both files anyway while one is replaced.
#include "chlist/files/backup.h"

#include <channel/views.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

#include "chlist/files/distinct_files.h"
#include "chlist/files/faithful_load.h"
#include "chlist/files/history.h"
#include "chlist/files/replacement.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t copied_at_once = 65'536;

void copy_contents(const descriptor &from, const std::string &from_name, replacement &to) {
  std::array<char, copied_at_once> bytes;
  for (;;) {
    const ssize_t length = ::read(from.get(), bytes.data(), bytes.size());
    if (length < 0) {
      fail(from_name);
    }
    if (length == 0) {
      return;
    }
    to.write({bytes.data(), static_cast<std::size_t>(length)});
  }
}

// What the target and its companion are when the list in memory is saved.
file_contents contents_to_be(const fs::path &target, const companion_to_write &beside) {
  file_contents contents = contents_on_disk(target);
  contents[""] = image_of(*get_channel_list());
  if (beside) {
    contents.erase(companion_ending);
  }
  if (beside && !beside->is_empty()) {
    contents[companion_ending] = text_beside(*beside, contents[""]);
  }
  return contents;
}

}  // namespace

fs::path backup_of(const fs::path &file) { return fs::weakly_canonical(fs::absolute(file)).string() + ".bak"; }

void keep_backup(const fs::path &file) {
  const fs::path kept = fs::weakly_canonical(fs::absolute(file));
  if (!fs::exists(kept)) {
    return;
  }
  const descriptor source(::open(kept.c_str(), O_RDONLY | O_CLOEXEC), kept.string());
  struct stat found = {};
  if (::fstat(source.get(), &found) != 0) {
    fail(kept.string());
  }
  replacement copy(backup_of(kept));
  copy_contents(source, kept.string(), copy);
  copy.take_after(found);
  copy.take_place();
}

void keep_backups(const fs::path &file) {
  keep_backup(file);
  keep_backup(companion_of(file));
}

void save_edited_list(const fs::path &input, const fs::path &target, bool leaves_no_backup, const edited_files &files) {
  must_be_replaceable(target);
  if (!leaves_no_backup) {
    must_differ(input, backup_of(target));
    must_differ(target, backup_of(target));
    must_differ(input, history_of(target));
    keep_backups(target);
    keep_history(target, contents_to_be(target, files.beside), files.lines);
  }
  save_list_with(target, files.beside);
}

}  // namespace chlist
