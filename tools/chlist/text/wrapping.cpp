// Lines are broken as they are filled, word by word.
#include "chlist/text/wrapping.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

// A word in quotes keeps them, and its blanks.
std::vector<std::string> words_as_typed(std::string_view line) {
  std::vector<std::string> words(1);
  char quote = 0;
  for (const char c : line) {
    if (c == ' ' && quote == 0) {
      words.emplace_back();
      continue;
    }
    if (quote == 0 ? c == '"' || c == '\'' : c == quote) {
      quote = quote == 0 ? c : '\0';
    }
    words.back() += c;
  }
  return words;
}

}  // namespace

std::string wrapped(const std::string &text, std::size_t indent, std::size_t width) {
  std::string lines;
  std::size_t column = indent;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const std::size_t needed = width_of(word) + 1;
    if (column > indent && column + needed > width + 1) {
      lines.back() = '\n';
      lines += std::string(indent, ' ');
      column = indent;
    }
    lines += word + ' ';
    column += needed;
  }
  return lines.substr(0, lines.size() - std::min<std::size_t>(lines.size(), 1));
}

std::string beside(std::string_view word, const std::string &text, std::size_t column, std::size_t width) {
  constexpr std::size_t gap = 2;
  const std::size_t used = width_of(word);
  std::string lines(word);
  lines += used + gap > column ? '\n' + std::string(column, ' ') : std::string(column - used, ' ');
  return lines + wrapped(text, column, width);
}

std::string wrapped_command(std::string_view line, std::size_t indent, std::size_t width) {
  constexpr std::string_view goes_on = " \\";
  const std::vector<std::string> words = words_as_typed(line);
  std::string lines = std::string(indent, ' ') + words.front();
  std::size_t column = width_of(lines);
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::size_t needed = 1 + width_of(words[i]);
    if (column + needed + (i + 1 < words.size() ? goes_on.size() : 0) > width) {
      lines.append(goes_on).append("\n").append(2 * indent - 1, ' ');
      column = 2 * indent - 1;
    }
    lines += ' ' + words[i];
    column += needed;
  }
  return lines;
}

}  // namespace chlist
