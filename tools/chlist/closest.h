// What somebody meant who mistyped a word.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace chlist {

// Damerau-Levenshtein distance in its restricted form (optimal string alignment): how many characters are added, left
// out, replaced, or swapped with their neighbour.
std::size_t edit_distance(std::string_view a, std::string_view b);

// The nearest of the words, without regard to case and accents; the first of several. None when none is near: about
// every fourth character may be wrong, and one of a short word.
std::optional<std::string> closest(std::string_view word, const std::vector<std::string> &words);

// `: did you mean "list"?`, or nothing.
std::string did_you_mean(std::string_view word, const std::vector<std::string> &words);

// `no column "nmae": did you mean "name"? There are number, name`.
std::string unknown_name(std::string_view what, std::string_view name, const std::vector<std::string> &names);

}  // namespace chlist
