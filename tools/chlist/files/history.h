// What a file was before each edit, and what it can be again: states of it in a file beside it, FILE.history. The file
// alone stays complete, and is known by its bytes: whatever wrote it, it is found among the states, or is none of them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/files/companion.h"

namespace chlist {

// Files that are written together, by what is appended to the path of the first: a channel file, and its companion.
using file_contents = std::map<std::string, std::string>;

// What is on the disk; files that are not there are left out.
file_contents contents_on_disk(const std::filesystem::path &file);

// Brings them to the disk, both or neither.
void write_contents(const std::filesystem::path &file, const file_contents &contents);

// How much a history holds at most: the oldest states go first.
struct history_bounds {
  std::size_t states = 100;
  std::size_t bytes = std::size_t{64} << 20U;
};

class history {
 public:
  struct state {
    int number = 0;                 // of those that were ever taken
    std::string when;               // "2026-11-22T15:04:05Z"
    std::vector<std::string> what;  // the lines of the edits that made it; none: something else did

    // How many lines they were: of many the first are kept, and behind them how many more there were.
    [[nodiscard]] std::size_t lines() const;
  };

  // Of a file, whether there is one or not. Throws std::runtime_error when it is damaged, or something else.
  explicit history(const std::filesystem::path &file, const history_bounds &bounds = {});

  [[nodiscard]] std::size_t size() const { return states_.size(); }
  [[nodiscard]] const state &at(std::size_t index) const { return states_[index].about; }

  // The state that the file is in. A file that is in none is taken for one that was made by something else: false then.
  [[nodiscard]] std::size_t place() const { return place_; }
  bool find_place(const file_contents &now);

  // The state comes behind the one that the file is in: those that came after that are gone.
  void append(const file_contents &contents, std::string when, std::vector<std::string> what);

  // Throws std::runtime_error when they cannot be put together.
  [[nodiscard]] file_contents contents_of(std::size_t index) const;
  void go_to(std::size_t index) { place_ = index; }

  [[nodiscard]] std::size_t bytes() const;
  void write() const;

 private:
  struct kept_file {
    std::string bytes;  // of the last state; a delta from the next one otherwise
    bool is_whole = true;
    std::size_t size = 0;
    std::string sum;
  };
  struct kept_state {
    state about;
    std::map<std::string, kept_file> files;
  };

  static kept_state whole(state about, const file_contents &contents);
  static kept_file delta_from(const file_contents &next, const std::string &name, const std::string &bytes);
  void read(std::string_view text);
  void keep_bounds();
  [[nodiscard]] bool is_in(std::size_t index, const file_contents &now) const;
  [[noreturn]] void refuse() const;

  std::filesystem::path file_;
  history_bounds bounds_;
  std::vector<kept_state> states_;
  std::size_t place_ = 0;
};

// "list.dat.history", beside the file that a link leads to.
std::filesystem::path history_of(const std::filesystem::path &file);

// The time as histories have it; no later than SOURCE_DATE_EPOCH where that is set.
std::string time_now();

// Before a file is replaced: what it is, and what it will be. A file that is not there has none.
void keep_history(const std::filesystem::path &file, const file_contents &next, const std::vector<std::string> &what);

}  // namespace chlist
