// page.html with page.css, page.js and the data in their places.
#include "chlist/page/page.h"

#include <stdexcept>
#include <utility>

namespace chlist {
namespace {

// Takes the template up to a mark, and the mark, away from its front.
std::string_view up_to(std::string_view mark, std::string_view &rest) {
  const std::size_t end = rest.find(mark);
  if (end == std::string_view::npos) {
    throw std::logic_error("page.html lacks " + std::string(mark));
  }
  const std::string_view before = rest.substr(0, end);
  rest.remove_prefix(end + mark.size());
  return before;
}

}  // namespace

// Outside of strings JSON has no "<"; what is not ASCII is escaped, line separators among it.
std::string script_safe(const json &data) {
  const std::string text = data.dump_ascii();
  std::string safe;
  safe.reserve(text.size());
  for (const char c : text) {
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

std::string page_of(const json &data) {
  const std::pair<std::string_view, std::string> parts[] = {{"{{page.css}}", std::string(page_css())},
                                                            {"{{data}}", script_safe(data)},
                                                            {"{{page.js}}", std::string(page_js())}};
  std::string_view rest = page_html();
  std::string page;
  for (const auto &[mark, text] : parts) {
    page += up_to(mark, rest);
    page += text;
  }
  return page.append(rest);
}

}  // namespace chlist
