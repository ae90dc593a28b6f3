// Widths and alignment of tables.
#include "chlist/text_table.h"

#include <algorithm>
#include <cstdint>
#include <span>

#include "chlist/terminal.h"

namespace chlist {
namespace {

constexpr std::string_view gap = "  ";

struct code_range {
  std::uint32_t first;
  std::uint32_t last;
};

bool is_in(std::span<const code_range> ranges, std::uint32_t code) {
  return std::ranges::any_of(ranges,
                             [code](const code_range &range) { return code >= range.first && code <= range.last; });
}

// Unicode's East Asian wide and full-width characters, in whole blocks.
constexpr code_range wide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},  {0xAC00, 0xD7A3},
                               {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},  {0xFFE0, 0xFFE6},
                               {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
constexpr code_range combining[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x064B, 0x065F},
                                    {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x20D0, 0x20FF},
                                    {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};

std::size_t width_of(std::uint32_t code) { return is_in(combining, code) ? 0 : is_in(wide, code) ? 2 : 1; }

// The character that begins at a place of valid UTF-8; the place moves behind it.
std::uint32_t next_code(std::string_view text, std::size_t &at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  const int tail = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  std::uint32_t code = tail == 0 ? lead : lead & (0x3FU >> static_cast<unsigned>(tail));
  for (int i = 0; i < tail && at < text.size(); ++i) {
    code = code << 6U | (static_cast<unsigned char>(text[at++]) & 0x3FU);
  }
  return code;
}

}  // namespace

std::size_t display_width(std::string_view utf8) {
  std::size_t width = 0;
  for (std::size_t at = 0; at < utf8.size();) {
    width += width_of(next_code(utf8, at));
  }
  return width;
}

std::string text_table::text() const {
  std::vector<std::size_t> widths;
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    std::size_t width = display_width(columns_[c].title);
    for (const auto &row : rows_) {
      width = std::max(width, display_width(row[c]));
    }
    widths.push_back(width);
  }
  const auto line_of = [&](const auto &cell_at) {
    std::string line;
    for (std::size_t c = 0; c < columns_.size(); ++c) {
      const std::string &cell = cell_at(c);
      const std::string padding(widths[c] - display_width(cell), ' ');
      line += (c == 0 ? "" : std::string(gap)) + (columns_[c].is_number ? padding + cell : cell + padding);
    }
    return line.erase(line.find_last_not_of(' ') + 1);
  };
  std::string text =
      painted(line_of([&](std::size_t c) -> const std::string & { return columns_[c].title; }), style::bold) + '\n';
  for (const auto &row : rows_) {
    text += line_of([&](std::size_t c) -> const std::string & { return row[c]; }) + '\n';
  }
  return text;
}

}  // namespace chlist
