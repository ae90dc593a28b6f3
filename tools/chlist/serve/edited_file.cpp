// The road of every edit, but that the file stays open for hours: it is locked while it is written alone. A list of
// another format goes through a channel list and what stands beside one, so that only the lines that somebody edited
// differ when it is written.
#include "chlist/serve/edited_file.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <span>
#include <stdexcept>
#include <utility>

#include "chlist/exchange/beside.h"
#include "chlist/exchange/formats.h"
#include "chlist/exchange/group_choice.h"
#include "chlist/exchange/known_transponders.h"
#include "chlist/exchange/round_trip.h"
#include "chlist/files/backup.h"
#include "chlist/files/edit_lock.h"
#include "chlist/files/faithful_load.h"
#include "chlist/files/file_line_up.h"
#include "chlist/files/file_stamp.h"
#include "chlist/files/input_file.h"
#include "chlist/files/replacement.h"
#include "chlist/line_up/list_line_up.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

channel_file file_of_bytes(const fs::path &path, std::string_view text) {
  const auto bytes = std::as_bytes(std::span(text));
  return {path, {bytes.begin(), bytes.end()}};
}

channel_file read_to_edit(const fs::path &path) {
  channel_file input(path);
  input.must_be_current();
  return input;
}

class edited_channel_file : public edited_file {
 public:
  explicit edited_channel_file(fs::path path)
      : path_(std::move(path)), input_(read_to_edit(path_)), beside_(path_), first_beside_(beside_.kept()) {}

  std::vector<std::string> load() override {
    std::vector<std::string> notes = load_what_can_be_read();
    if (!beside_.note().empty()) {
      notes.push_back(beside_.note());
    }
    return notes;
  }

  [[nodiscard]] bool is_changed() const override {
    try {
      input_.must_be_unchanged();
      return false;
    } catch (const std::runtime_error &) {
      return true;
    }
  }

  void save(const saved_edits &edits) override {
    const edit_lock lock(path_);
    must_not_be_changed(path_, *this);
    companion beside = in_step(first_beside_, edits.identities, line_up_in_memory());
    save_edited_list(path_, path_, false, {beside_.to_write(path_, std::move(beside)), edits.lines});
    damage_.clear();
  }

  void look_again() override {
    input_ = read_to_edit(path_);
    beside_ = edited_companion(path_);
  }

  [[nodiscard]] std::string damage() const override { return damage_; }

 private:
  std::vector<std::string> load_what_can_be_read() {
    try {
      return load_faithfully(input_);
    } catch (const std::runtime_error &error) {
      damage_ = error.what();
      return {};
    }
  }

  fs::path path_;
  channel_file input_;
  edited_companion beside_;  // as it stands on the disk
  companion first_beside_;   // as it was before all changes
  std::string damage_;
};

// Every file of a folder, or the one.
std::map<fs::path, file_stamp> stamps_of(const fs::path &path) {
  std::map<fs::path, file_stamp> stamps;
  if (!fs::is_directory(path)) {
    stamps.emplace(path, file_stamp(path));
    return stamps;
  }
  for (const fs::directory_entry &each : fs::directory_iterator(path)) {
    if (each.is_regular_file()) {
      stamps.emplace(each.path(), file_stamp(each.path()));
    }
  }
  return stamps;
}

// Puts the list in memory back when it goes.
class kept_list {
 public:
  explicit kept_list(const fs::path &path) : image_(file_of_bytes(path, image_of(*get_channel_list()))) {}
  ~kept_list() { load_faithfully(image_); }
  kept_list(const kept_list &) = delete;
  kept_list &operator=(const kept_list &) = delete;
  [[nodiscard]] const channel_file &image() const { return image_; }

 private:
  channel_file image_;
};

class edited_foreign_list : public edited_file {
 public:
  explicit edited_foreign_list(fs::path path)
      : path_(std::move(path)), stamps_(stamps_of(path_)), source_(source_at(path_)),
        format_(format_to_read({}, source_)) {
    if (!format_.can_write()) {
      throw std::runtime_error(
          fmt::format("{}: is a list of {}, which cannot be written again", path_.string(), format_.name));
    }
  }

  std::vector<std::string> load() override {
    if (format_.to_channel_file != nullptr) {
      return load_faithfully(
          file_of_bytes(path_, reading(source_, [&] { return format_.to_channel_file(source_.text); })));
    }
    const filled_list filled = fill();
    if (filled.counts.services == 0) {
      throw std::runtime_error(path_.string() + ": there is no service in it");
    }
    std::vector<std::string> notes = filled.left_out;
    std::ranges::transform(filled.skipped, std::back_inserter(notes), [](const skipped_line &line) {
      return fmt::format("line {} stays as it is: {}", line.line, line.reason);
    });
    add_losses(written({}).lost, notes);
    if (format_.layout == nullptr) {
      add_losses(lost_in_reading_, notes);
    }
    return notes;
  }

  [[nodiscard]] bool is_changed() const override { return stamps_of(path_) != stamps_; }

  void save(const saved_edits &edits) override {
    const edit_lock lock(path_);
    must_not_be_changed(path_, *this);
    if (format_.from_channel_file != nullptr) {
      write("", format_.from_channel_file(file_of_bytes(path_, image_of(*get_channel_list()))));
    } else {
      const exported_list made = written(edits.identities);
      for (const made_file &each : made.files) {
        write(each.name, each.text);
      }
      remove_others(made.files);
    }
  }

  void look_again() override { stamps_ = stamps_of(path_); }

 private:
  static void add_losses(const loss_counts &lost, std::vector<std::string> &notes) {
    for (const loss_counts::row &row : lost.rows()) {
      notes.push_back(fmt::format("not written again, {}: {}", row.what, row.count));
    }
  }

  filled_list fill() {
    read_files files;
    line_up list = reading(source_, [&] { return format_.read(recorded(source_, files), lost_in_reading_); });
    const std::vector<line_up_service> services_read = list.services;
    loss_counts lost;
    take_transponders(list, nullptr, lost);
    choose_groups(list, {}, lost);
    filled_list filled = fill_list(list, lost);
    first_beside_ =
        companion_of_import({source_, format_, services_read, files}, list.services, filled, line_up_in_memory());
    return filled;
  }

  // What the list in memory is in the format.
  exported_list written(const std::vector<changed_identity> &changes) {
    const kept_list kept(path_);
    const file_records records(kept.image().bytes());
    line_up list = line_up_of(records.list());
    const companion beside = in_step(first_beside_, changes, list);
    put_back(list, beside);
    return export_list({records.list(), list}, beside, format_, {});
  }

  // A file that does not differ is not written.
  void write(const std::string &name, const std::string &text) const {
    const fs::path target = name.empty() ? path_ : path_ / name;
    if (fs::exists(target) && read_input_file(target) == text) {
      return;
    }
    keep_backup(target);
    write_text_file(target, text);
  }

  // Files that were read and are no part of the list any more.
  void remove_others(const std::vector<made_file> &made) const {
    for (const source_file &each : first_beside_.source.files) {
      const fs::path target = path_ / each.name;
      if (!each.name.empty() && std::ranges::find(made, each.name, &made_file::name) == made.end() &&
          fs::exists(target)) {
        keep_backup(target);
        fs::remove(target);
      }
    }
  }

  fs::path path_;
  std::map<fs::path, file_stamp> stamps_;
  list_source source_;
  const format &format_;
  loss_counts lost_in_reading_;
  companion first_beside_;  // as it was before all changes
};

}  // namespace

std::unique_ptr<edited_file> open_to_edit(const fs::path &path) {
  const bool is_folder = fs::is_directory(path);
  if (!is_folder && (!fs::is_regular_file(path) || is_channel_file(read_beginning(path, 2)))) {
    return std::make_unique<edited_channel_file>(path);
  }
  return std::make_unique<edited_foreign_list>(path);
}

void must_not_be_changed(const fs::path &path, const edited_file &file) {
  if (file.is_changed()) {
    throw std::runtime_error(path.string() + ": somebody else wrote it meanwhile: nothing was changed");
  }
}

}  // namespace chlist
