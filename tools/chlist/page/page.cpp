// page.html with page.css, page.js and the data in their places.
#include "chlist/page/page.h"

#include <stdexcept>
#include <string_view>
#include <utility>

#include "chlist/page/browser_files.h"

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

// All files of a kind, one behind the other.
std::string files_of_kind(std::string_view ending) {
  std::string text;
  for (const browser_file &file : report_files()) {
    text += file.name.ends_with(ending) ? file.contents : std::string_view();
  }
  return text;
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
  const std::pair<std::string_view, std::string> parts[] = {
      {"{{page.css}}", files_of_kind(".css")}, {"{{data}}", script_safe(data)}, {"{{page.js}}", files_of_kind(".js")}};
  const std::string html = files_of_kind(".html");
  std::string_view rest = html;
  std::string page;
  for (const auto &[place, text] : parts) {
    page += up_to(place, rest);
    page += text;
  }
  return page.append(rest);
}

}  // namespace chlist
