#include "chlist/text/names.h"

#include "chlist/text/utf8.h"

namespace chlist {

bool is_same_name(std::string_view a, std::string_view b) { return folded(a) == folded(b); }

bool contains_name(std::string_view text, std::string_view part) {
  return folded(text).find(folded(part)) != std::string::npos;
}

}  // namespace chlist
