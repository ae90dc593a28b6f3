// A list while it is edited: steps of edit lines, done in memory by the library, undone and done again. It knows
// nothing of pages and requests.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/compare/difference.h"
#include "chlist/line_up/line_up.h"
#include "chlist/serve/edit_journal.h"
#include "chlist/serve/edited_file.h"
#include "chlist/serve/list_states.h"

namespace chlist {

// What a step did, or would do.
struct step_outcome {
  std::vector<std::string> notes;
  std::vector<std::string> tables;    // what edits tell beside their changes
  std::optional<std::size_t> chosen;  // services, when a condition chose them
  std::vector<change> changes;        // of a preview
  std::vector<changed_identity> identities;
  bool reads_files = false;  // that the lines name
};

// Every call that changes something throws std::runtime_error when it cannot be done, and everything is as it was.
class list_session {
 public:
  explicit list_session(const std::filesystem::path &file);
  ~list_session();
  list_session(const list_session &) = delete;
  list_session &operator=(const list_session &) = delete;

  [[nodiscard]] const std::filesystem::path &file() const { return path_; }
  [[nodiscard]] const std::vector<std::string> &notes() const { return notes_; }  // of the file
  // Why nothing of the file could be read; empty when it was, and when it is saved. The list is empty until somebody
  // salvages what is left.
  [[nodiscard]] const std::string &damage() const { return damage_; }

  // The list as it is now, and a number that is another one whenever it is another list.
  [[nodiscard]] const line_up &list() const { return list_; }
  [[nodiscard]] std::size_t revision() const { return revision_; }

  // Steps that the last time left undone in the journal: nothing else is done before they are taken or dropped. Taking
  // them returns what could not be done any more, one text for each.
  [[nodiscard]] const unfinished_edits *left() const;
  [[nodiscard]] bool is_left_of_this_list() const;
  std::vector<std::string> take_left();
  void drop_left();

  // All lines of a text, or none.
  step_outcome apply(std::string_view lines);
  [[nodiscard]] step_outcome preview(std::string_view lines);
  void undo();
  void redo();
  [[nodiscard]] bool can_undo() const { return done_ > 0; }
  [[nodiscard]] bool can_redo() const { return done_ < steps_.size(); }

  // A file that edits are to read, part by part; returns where it is.
  std::filesystem::path take_file(std::string_view name, std::size_t at, std::string_view bytes) {
    return journal_.take_file(name, at, bytes);
  }

  // Steps since the list was opened, those that are done.
  [[nodiscard]] std::size_t done() const { return done_; }
  [[nodiscard]] bool is_saved() const { return image_ == saved_image_; }
  // What differs from the file, and the lines that make it so; of what was saved and undone there are none.
  [[nodiscard]] std::vector<change> changes() const;
  [[nodiscard]] std::string unsaved_lines() const;

  // Services that FILE.bak does not have, by their places: those that a merge brought, when it wrote the file last.
  [[nodiscard]] std::vector<std::size_t> services_since_backup();

  void save();
  [[nodiscard]] bool is_file_changed() const { return file_->is_changed(); }
  // What somebody else changed of the file meanwhile; and the file as it is now, with the unsaved steps done again.
  [[nodiscard]] std::vector<change> changes_of_file();
  std::vector<std::string> read_again();

 private:
  void must_be_answered() const;
  step_outcome do_lines(const std::string &lines);
  void add_step(const edit_step &step, const std::vector<changed_identity> &identities);
  std::vector<std::string> do_as_many(const std::vector<edit_step> &steps, bool is_same_list);
  void do_again(const edit_step &step, bool is_same_list);
  [[nodiscard]] list_states::state state_in_front_of(std::size_t step) const;
  void load_image(const std::string &image) const;
  line_up list_in(const std::filesystem::path &path);
  void go_to(std::size_t step);
  void begin_at(std::string image);
  [[nodiscard]] saved_edits edits_to_save() const;
  void begin_journal_in_front_of(std::size_t step);
  [[nodiscard]] bool is_journal_whole() const;
  void add_to_journal(const edit_step &step);
  void list_changed();
  void file_was_read();

  std::filesystem::path path_;
  std::unique_ptr<edited_file> file_;
  edit_journal journal_;
  std::vector<std::string> notes_;
  std::string damage_;
  std::string image_;  // of the list
  std::string saved_image_;
  line_up list_;
  line_up saved_list_;
  list_states states_{""};
  std::vector<edit_step> steps_;
  std::vector<std::vector<changed_identity>> identities_;  // by step
  std::size_t done_ = 0;
  std::size_t journal_begin_ = 0;   // the step that the journal begins with
  bool is_journal_of_file_ = true;  // or of what was saved and undone
  std::size_t revision_ = 0;
};

}  // namespace chlist
