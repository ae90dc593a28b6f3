// A file that another program edited may have lines of Latin-1 among those of UTF-8: they are known by their texts.
#include "chlist/exchange/source_bytes.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "chlist/exchange/field_reading.h"
#include "chlist/text/charset.h"

namespace chlist {
namespace {

bool is_ascii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

class latin_1_lines {
 public:
  explicit latin_1_lines(const source_file &file) {
    for (const source_piece &each : file.pieces) {
      for (const std::string_view line : split(each.text, '\n')) {
        if (!is_ascii(line) && each.is_latin_1) {
          lines_.insert(line);
        } else if (!is_ascii(line)) {
          are_all_ = false;
        }
      }
    }
  }

  // Lines that nobody has seen yet are of what all others are of.
  [[nodiscard]] std::string bytes_of(std::string_view text) const {
    if (lines_.empty()) {
      return std::string(text);
    }
    std::string bytes;
    for (const std::string_view line : split(text, '\n')) {
      const auto converted = are_all_ || lines_.contains(line) ? latin_1_of(line) : std::nullopt;
      bytes += (line.data() == text.data() ? "" : "\n") + converted.value_or(std::string(line));
    }
    return bytes;
  }

 private:
  std::set<std::string_view> lines_;
  bool are_all_ = true;
};

}  // namespace

void encode_as(const source_text &source, std::vector<made_file> &files, loss_counts &lost) {
  for (made_file &each : files) {
    const auto own = std::ranges::find(source.files, each.name, &source_file::name);
    const source_file &model = own != source.files.end() ? *own : source.files.front();
    if (model.encoding.charset.empty()) {
      each.text = latin_1_lines(model).bytes_of(with_mark_of(model.encoding, each.text));
      continue;
    }
    std::optional<converted_text> made = bytes_in(model.encoding, each.text);
    if (!made) {
      lost.leave_out(fmt::format("files in {}", model.encoding.charset), 1, "written in UTF-8: no such charset here");
      continue;
    }
    lost.leave_out(fmt::format("characters that {} has not", model.encoding.charset), made->replaced,
                   "each is written as a question mark");
    each.text = std::move(made->text);
  }
}

}  // namespace chlist
