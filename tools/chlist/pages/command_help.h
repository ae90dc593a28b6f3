// The help of a command as data, taken from the command: what the manual pages and the completions are made of.
#pragma once

#include <string>
#include <vector>

#include "chlist/command_line.h"

namespace chlist {

struct option_help {
  std::vector<std::string> names = {};    // "-o", "--output"; of an argument its name alone, "LIST"
  std::string value = {};                 // what it takes, "OUT"; empty for a flag
  std::vector<std::string> choices = {};  // the values that it takes, when they are few
  std::string about = {};
  bool is_required = false;
  bool is_repeatable = false;
};

// A piece of the explanations: a paragraph, a term and what it means, or lines to type as they stand.
struct help_block {
  enum class kind { paragraph, term, literal };
  kind what = kind::paragraph;
  std::string term = {};
  std::string text = {};  // lines of a literal are separated by line ends
};

struct help_section {
  std::string title = {};  // "Examples"; the first one, the description, has none
  std::vector<help_block> blocks = {};
};

struct command_help {
  std::string name = {};     // "chlist merge"
  std::string summary = {};  // in one line
  std::vector<option_help> arguments = {};
  std::vector<option_help> options = {};
  std::vector<help_section> sections = {};
  std::vector<command_help> commands = {};

  // "chlist-merge", the name of its manual page.
  [[nodiscard]] std::string page_name() const;
};

// above: what stands in front of its name, "chlist " of a command below.
command_help help_of(const command &described, const std::string &above = "");

// Text in the form of the commands' footers: paragraphs; a line that ends in ':' begins a section; indented lines are
// terms, which two blanks divide from their meaning, or literal.
std::vector<help_section> sections_of(const std::string &footer);

}  // namespace chlist
