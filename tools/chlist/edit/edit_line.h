// Edits as lines of a text: the words of an edit command without FILE, `rename "News" "News 24"`.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/edit/edit_session.h"

namespace chlist {

// The words of a line, as a shell takes them apart: blanks stand between words, ' and " around a word keep them, a
// backslash outside of '' makes an ordinary character of the next one, and a # in front of a word ends the line. Throws
// std::runtime_error when a quote is not closed.
std::vector<std::string> words_of_edit(std::string_view line);

// A word as words_of_edit() reads it, in quotes when it needs them.
std::string quoted_word(std::string_view word);

std::string line_of_words(const std::vector<std::string> &words);

// What a line does, and whether files that it names have a part in it: it may do something else another time.
struct named_edit {
  list_edit apply;
  bool reads_files = false;
};

// Reads edits line by line: the rows of the edits that lines name are parsed once.
class edit_line_reader {
 public:
  edit_line_reader();
  ~edit_line_reader();

  // Does nothing for a line without words. Throws std::runtime_error when it cannot be read.
  named_edit read(std::string_view line);

 private:
  class known_edits;
  std::unique_ptr<known_edits> known_;
};

// A line and what it does.
struct read_edit : named_edit {
  std::size_t line = 0;
  std::string text;
};

// The edits of a whole text. Throws std::runtime_error that begins with the source and the number of the line that
// cannot be read.
std::vector<read_edit> edits_in(std::string_view text, const std::string &source);

// The line of an edit whose options have been parsed: `fav add Films 7`.
std::string line_of(const edit_row &row);

}  // namespace chlist
