// The library writes the replacement of a channel file; the one of the companion waits for it.
#include "chlist/files/list_file.h"

#include <channel/files.h>

#include <stdexcept>
#include <utility>

#include "chlist/files/file_bytes.h"
#include "chlist/files/replacement.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

// A file that is to take its place, or to go.
class replaced_companion {
 public:
  replaced_companion(fs::path path, std::string_view text) : path_(std::move(path)) {
    if (!text.empty()) {
      file_.emplace(path_);
      file_->write(text);
    }
  }

  void take_place() {
    if (file_) {
      file_->take_place();
    } else {
      fs::remove(path_);
    }
  }

 private:
  fs::path path_;
  std::optional<replacement> file_;
};

void write_both(replacement &file, replaced_companion &beside) {
  file.take_place_for_now();
  try {
    beside.take_place();
  } catch (...) {
    file.put_back();
    throw;
  }
}

}  // namespace

void write_with(const fs::path &target, const companion_to_write &beside,
                const std::function<void(replacement &file)> &write) {
  const fs::path companion_path = companion_of(target);  // before the program works in the target's folder
  replacement file(target);
  write(file);
  if (beside) {
    const std::vector<std::byte> bytes = beside->is_empty() ? std::vector<std::byte>() : bytes_of_file(file.name());
    const std::string_view written(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    replaced_companion companion_file(companion_path,
                                      beside->is_empty() ? std::string() : text_beside(*beside, written));
    write_both(file, companion_file);
  } else {
    file.take_place();
  }
}

void write_both_files(const fs::path &target, std::string_view bytes, std::string_view companion_text) {
  replacement file(target);
  file.write(bytes);
  replaced_companion companion_file(companion_of(target), companion_text);
  write_both(file, companion_file);
}

void save_list_with(const fs::path &target, const companion_to_write &beside) {
  write_with(target, beside, [&](replacement &file) {
    set_target_dir("./");
    if (save_channel(file.name()) != 1) {
      throw std::runtime_error(target.string() + ": the channel file could not be written");
    }
  });
}

}  // namespace chlist
