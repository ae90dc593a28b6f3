#include "chlist/exchange/m3u/m3u_lines.h"

#include <algorithm>

#include "chlist/exchange/text_lines.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::string_view header_mark = "#EXTM3U";
constexpr std::string_view information_mark = "#EXTINF:";
constexpr std::string_view blanks_between = " \t";

// In quotes, or up to a blank or a comma. Returns where it ends.
std::size_t read_value(std::string_view line, std::size_t at, std::string_view &value) {
  const bool is_quoted = line.substr(at).starts_with('"');
  const std::size_t begin = at + (is_quoted ? 1 : 0);
  const std::size_t end = std::min(is_quoted ? line.find('"', begin) : line.find_first_of(" \t,", begin), line.size());
  value = line.substr(begin, end - begin);
  return std::min(end + (is_quoted ? 1 : 0), line.size());
}

}  // namespace

m3u_line m3u_line_of(std::string_view text) {
  const std::string_view line =
      without_blanks_around(without_byte_order_mark(text.substr(0, std::min(text.find('\n'), text.size()))));
  if (line.empty()) {
    return m3u_line::blank;
  }
  if (line.front() != '#') {
    return m3u_line::address;
  }
  if (line.starts_with(information_mark)) {
    return m3u_line::information;
  }
  return line.starts_with(header_mark) ? m3u_line::header : m3u_line::comment;
}

m3u_information m3u_information_in(std::string_view line) {
  m3u_information read;
  std::size_t at = std::min(line.find(information_mark), line.size());
  at = std::min(at + information_mark.size(), line.size());
  while (at < line.size() && line[at] != ',') {
    const std::size_t begin = at;
    at = std::min(line.find_first_not_of(blanks_between, at), line.size());
    const std::size_t end = std::min(line.find_first_of(" \t,=", at), line.size());
    const std::string_view name = line.substr(at, end - at);
    at = end;
    if (line.substr(at).starts_with('=')) {
      m3u_attribute &made = read.attributes.emplace_back(m3u_attribute{begin, std::string(name), std::string_view()});
      at = read_value(line, at + 1, made.value);
    }
  }
  read.name_begin = at;
  read.name = without_blanks_around(line.substr(std::min(at + 1, line.size())));
  return read;
}

}  // namespace chlist
