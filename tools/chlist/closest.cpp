// Distances between words.
#include "chlist/closest.h"

#include <fmt/format.h>

#include <algorithm>

#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::size_t characters_of_a_mistake = 4;

// Rows of the table of distances: how far each beginning of b is from the first characters of a.
using distances = std::vector<std::size_t>;

std::size_t tolerance(std::string_view word) {
  return std::max<std::size_t>(1, (characters_of(word).size() + 1) / characters_of_a_mistake);
}

}  // namespace

std::size_t edit_distance(std::string_view a_text, std::string_view b_text) {
  const std::u32string a = characters_of(a_text);
  const std::u32string b = characters_of(b_text);
  distances two_before(b.size() + 1);
  distances before(b.size() + 1);
  distances now(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) {
    now[j] = j;
  }
  for (std::size_t i = 1; i <= a.size(); ++i) {
    two_before.swap(before);
    before.swap(now);
    now[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      now[j] = std::min({before[j] + 1, now[j - 1] + 1, before[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        now[j] = std::min(now[j], two_before[j - 2] + 1);
      }
    }
  }
  return now[b.size()];
}

std::optional<std::string> closest(std::string_view word, const std::vector<std::string> &words) {
  const std::string wanted = folded(word);
  std::optional<std::string> nearest;
  std::size_t least = tolerance(word) + 1;
  for (const std::string &each : words) {
    const std::size_t distance = edit_distance(wanted, folded(each));
    // A word of which every character is replaced is another word.
    if (distance < least && distance < characters_of(each).size()) {
      least = distance;
      nearest = each;
    }
  }
  return nearest;
}

std::string did_you_mean(std::string_view word, const std::vector<std::string> &words) {
  const std::optional<std::string> meant = closest(word, words);
  return meant ? fmt::format(": did you mean {}?", shown(*meant)) : "";
}

std::string unknown_name(std::string_view what, std::string_view name, const std::vector<std::string> &names) {
  const std::string meant = did_you_mean(name, names);
  return fmt::format("no {} {}{}{} are {}", what, shown(name), meant, meant.empty() ? ": there" : " There",
                     harmless(joined(names, ", ")));
}

}  // namespace chlist
