// Comparison of names.
#include "chlist/service/names.h"

#include <algorithm>

namespace chlist {
namespace {

constexpr char first_visible = ' ';

constexpr char lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

constexpr bool is_same_letter(char a, char b) { return lower(a) == lower(b); }

}  // namespace

std::string visible(std::string_view broadcast_text) {
  const bool has_selector =
      !broadcast_text.empty() && static_cast<unsigned char>(broadcast_text.front()) < first_visible;
  return std::string(broadcast_text.substr(has_selector ? 1 : 0));
}

bool is_same_name(std::string_view a, std::string_view b) { return std::ranges::equal(a, b, is_same_letter); }

bool contains_name(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(), is_same_letter) != text.end() || part.empty();
}

}  // namespace chlist
