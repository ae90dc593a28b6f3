// Validity by a library for it, letters and widths by the C library's tables, accents by our own.
#include "chlist/text/utf8.h"

#include <locale.h>
#include <utf8cpp/utf8.h>
#include <wchar.h>
#include <wctype.h>

#include <algorithm>
#include <iterator>

#include "chlist/text/accents.h"

namespace chlist {
namespace {

// The C library's tables of Unicode, whatever the language of the one who calls.
class unicode_locale {
 public:
  unicode_locale() : locale_(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {}
  ~unicode_locale() {
    if (locale_ != nullptr) {
      ::freelocale(locale_);
    }
  }
  unicode_locale(const unicode_locale &) = delete;
  unicode_locale &operator=(const unicode_locale &) = delete;

  [[nodiscard]] char32_t lower(char32_t character) const {
    const auto wide = static_cast<wint_t>(character);
    return static_cast<char32_t>(locale_ != nullptr ? ::towlower_l(wide, locale_) : ::towlower(wide));
  }

  // There is no call that takes the locale.
  [[nodiscard]] std::size_t columns(std::u32string_view characters) const {
    const locale_t before = ::uselocale(locale_);
    std::size_t width = 0;
    for (const char32_t character : characters) {
      const int each = ::wcwidth(static_cast<wchar_t>(character));
      width += each < 0 ? 1 : static_cast<std::size_t>(each);
    }
    ::uselocale(before);
    return width;
  }

 private:
  locale_t locale_;
};

const unicode_locale &unicode() {
  static const unicode_locale only;
  return only;
}

bool is_ascii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool is_lead(char c) { return static_cast<unsigned char>(c) >= 0xC2 && static_cast<unsigned char>(c) <= 0xF4; }

// How many bytes of what is no character are replaced as one: those that could have become a character, as the Unicode
// standard recommends and other programs do.
std::size_t size_of_broken(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t whole = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  for (std::size_t size = std::min(whole - 1, text.size()); size > 1; --size) {
    const std::string begun(text.substr(0, size));
    if (is_utf8(begun + std::string(whole - size, '\x80')) || is_utf8(begun + std::string(whole - size, '\xBF'))) {
      return size;
    }
  }
  return 1;
}

}  // namespace

std::string_view without_byte_order_mark(std::string_view text) {
  return text.starts_with(byte_order_mark) ? text.substr(byte_order_mark.size()) : text;
}

bool is_utf8(std::string_view text) { return utf8::is_valid(text.begin(), text.end()); }

std::string valid_utf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  while (!text.empty()) {
    const auto bad = utf8::find_invalid(text.begin(), text.end());
    valid.append(text.begin(), bad);
    text.remove_prefix(static_cast<std::size_t>(bad - text.begin()));
    if (!text.empty()) {
      append_utf8(valid, U'\uFFFD');
      text.remove_prefix(size_of_broken(text));
    }
  }
  return valid;
}

bool is_printable_ascii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return is_printable_ascii(c); });
}

std::size_t incomplete_at_end(std::string_view text) {
  const auto bad = static_cast<std::size_t>(utf8::find_invalid(text.begin(), text.end()) - text.begin());
  return bad < text.size() && bad + size_of_broken(text.substr(bad)) == text.size() && is_lead(text[bad])
             ? text.size() - bad
             : 0;
}

void append_utf8(std::string &text, char32_t character) { utf8::append(character, std::back_inserter(text)); }

std::u32string characters_of(std::string_view utf8) {
  const std::string valid = valid_utf8(utf8);
  std::u32string characters;
  utf8::utf8to32(valid.begin(), valid.end(), std::back_inserter(characters));
  return characters;
}

std::size_t width_of(std::string_view utf8) {
  return is_ascii(utf8) ? utf8.size() : unicode().columns(characters_of(utf8));
}

std::string shortened(std::string_view utf8, std::size_t columns) {
  if (width_of(utf8) <= columns) {
    return std::string(utf8);
  }
  std::string text;
  std::string longer;
  for (const char32_t character : characters_of(utf8)) {
    append_utf8(longer, character);
    if (width_of(longer) >= columns) {
      break;
    }
    text = longer;
  }
  return columns == 0 ? "" : text + "\u2026";
}

std::string folded(std::string_view utf8) {
  std::string text;
  text.reserve(utf8.size());
  for (const char32_t character : characters_of(utf8)) {
    if (!is_mark(character)) {
      append_utf8(text, unicode().lower(without_accents(character)));
    }
  }
  return text;
}

bool is_same_name(std::string_view a, std::string_view b) { return folded(a) == folded(b); }

bool contains_name(std::string_view text, std::string_view part) {
  return folded(text).find(folded(part)) != std::string::npos;
}

}  // namespace chlist
