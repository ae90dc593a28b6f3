// Edits that are not saved yet, kept beside the list as FILE.edits: what was done is on the disk before it is shown,
// and comes back after a crash. It is a text as `chlist apply` takes it, steps with empty lines between them. The
// folder FILE.edits.files has what is too large for it: files that edits read, and the lists that they made of them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/files/descriptor.h"
#include "chlist/files/kept_in_step.h"

namespace chlist {

// Lines of edits that are done, undone and done again as one. Lines that read other files do something else when those
// are others, or gone: what they made is kept with them.
struct edit_step {
  std::string lines;
  std::string image;                         // of the list that they made; empty when they read no files
  std::vector<changed_identity> identities;  // that services got, of such lines alone

  friend bool operator==(const edit_step &a, const edit_step &b) { return a.lines == b.lines && a.image == b.image; }
};

// What somebody left, and of which list.
struct unfinished_edits {
  std::string list;   // fingerprint_of() its bytes
  std::string image;  // those bytes, when the list is not the file's: one that was saved and undone
  std::vector<edit_step> steps;
};

class edit_journal {
 public:
  // Takes up what stands beside the list, or makes it. Throws when another editor has it, and when the folder takes no
  // file: nobody would want to learn that after an hour.
  explicit edit_journal(const std::filesystem::path &list);
  ~edit_journal();
  edit_journal(const edit_journal &) = delete;
  edit_journal &operator=(const edit_journal &) = delete;

  // What was there; it stays until it is taken up, or another journal is started.
  [[nodiscard]] const unfinished_edits &left() const { return left_; }
  void take_up();

  // A journal begins with nothing in it, from the list in the file, or from another one that is kept beside it.
  void start(std::string_view image);
  void start_from(std::string_view image);
  // How many steps are in it.
  [[nodiscard]] std::size_t steps() const { return starts_.size(); }
  // Bring the step to the disk, or throw and leave everything as it was.
  void add(const edit_step &step);
  void take_back();
  // Everything is saved: nothing is left behind.
  void finish() { is_finished_ = true; }

  // Takes a file that edits are to read: its first part, or one that goes on where the last one ended. It goes with the
  // journal. Returns where it is.
  std::filesystem::path take_file(std::string_view name, std::size_t at, std::string_view bytes);

 private:
  [[nodiscard]] std::filesystem::path path_of_image() const { return path_.string() + ".list"; }
  [[nodiscard]] std::filesystem::path folder() const { return path_.string() + ".files"; }
  [[nodiscard]] std::filesystem::path path_of_made(std::string_view fingerprint) const;
  [[nodiscard]] edit_step step_in(std::string_view text) const;
  [[nodiscard]] std::filesystem::path new_file(std::string_view name) const;
  void begin(std::string_view title, std::string_view image);
  void write_at_end(std::string_view text);
  void write_behind(std::string_view text);
  void cut_to(std::size_t size);

  std::filesystem::path path_;
  std::unique_ptr<descriptor> file_;
  unfinished_edits left_;
  bool is_finished_ = false;
  std::size_t size_ = 0;
  std::vector<std::size_t> starts_;  // of the steps
  std::filesystem::path last_file_;  // that was taken, as far as it is there
};

}  // namespace chlist
