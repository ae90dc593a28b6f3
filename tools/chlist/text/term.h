// A word of the command line and what it means: a view, a format, an exit code.
#pragma once

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace chlist {

struct term {
  std::string word;
  std::string meaning;
};

// The words alone.
inline std::vector<std::string> words_of(const std::vector<term> &terms) {
  std::vector<std::string> words;
  std::ranges::transform(terms, std::back_inserter(words), &term::word);
  return words;
}

struct term_section {
  std::string title;  // "Views"
  std::vector<term> terms;
};

}  // namespace chlist
