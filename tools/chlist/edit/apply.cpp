// `chlist apply`: many edits of a list, as one.
#include <fmt/format.h>

#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <utility>

#include "chlist/edit/edit_line.h"
#include "chlist/edit/edits.h"
#include "chlist/files/input_file.h"
#include "chlist/messages.h"

namespace chlist {
namespace {

struct apply_options {
  std::string edits;
};

std::string text_of_edits(const std::string &path) {
  if (path != "-") {
    return read_input_file(path);
  }
  return {std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
}

// What the edit has to say is told with its line.
void apply_one(const read_edit &edit, const std::string &source, edited_list &list) {
  const std::size_t noted = list.notes.size();
  try {
    edit.apply(list);
  } catch (const std::runtime_error &error) {
    throw std::runtime_error(fmt::format("{}:{}: {}", source, edit.line, reason_of(error)));
  }
  if (!edit.text.empty()) {
    list.lines.push_back(edit.text);
  }
  for (std::size_t i = noted; i < list.notes.size(); ++i) {
    list.notes[i] = fmt::format("{}:{}: {}", source, edit.line, list.notes[i]);
  }
}

// An edit may read a list of its own, as `order` does: all of them are read before FILE is.
list_edit all_edits(const std::string &path) {
  const std::string source = path == "-" ? "standard input" : path;
  return [source, edits = edits_in(text_of_edits(path), source)](edited_list &list) {
    for (const read_edit &edit : edits) {
      apply_one(edit, source, list);
    }
  };
}

}  // namespace

edit_row apply_edit() {
  auto options = std::make_shared<apply_options>();
  return {.name = "apply",
          .summary = "Apply the edits of a text, all or none",
          .details = {"EDITS has one edit a line: the words of an edit command as this program takes them, without "
                      "`chlist` and without FILE. They are done in their order, each on what those before it left; "
                      "FILE is read once and written once. When a line cannot be read or done, nothing is written, "
                      "and its number is told.",
                      "Blanks stand between words; '' and \"\" keep them in one, a backslash outside of '' takes the "
                      "next character as it is, and # begins a comment."},
          .sections = {{"Edits", terms_of_edits()}},
          .examples = {"chlist apply channels.dat evening.edits --dry-run",
                       "echo 'rename News \"News 24\"' | chlist apply channels.dat -"},
          .options = {{.names = "EDITS",
                       .target = &options->edits,
                       .about = "the text; - for standard input",
                       .is_required = true}},
          .take = [options] { return all_edits(std::exchange(*options, {}).edits); },
          .is_line = false};
}

}  // namespace chlist
