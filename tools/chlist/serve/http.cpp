// Names of headers are compared without regard to case.
#include "chlist/serve/http.h"

#include <algorithm>

namespace chlist {
namespace {

char lower_letter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool is_same_header(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, lower_letter, lower_letter);
}

}  // namespace

std::size_t http_request::count(std::string_view name) const {
  return static_cast<std::size_t>(
      std::ranges::count_if(headers, [name](const auto &each) { return is_same_header(each.first, name); }));
}

std::string_view http_request::header(std::string_view name) const {
  std::string_view value;
  for (const auto &[each, its_value] : headers) {
    value = is_same_header(each, name) ? std::string_view(its_value) : value;
  }
  return value;
}

}  // namespace chlist
