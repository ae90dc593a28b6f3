// Only this file knows the library of regular expressions.
#include "chlist/text/pattern.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <fmt/format.h>
#include <pcre2.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

// Far above what an honest pattern needs for a name; some patterns would take years.
constexpr std::uint32_t most_steps = 1'000'000;

std::string utf8_of(char32_t character) {
  std::string utf8;
  append_utf8(utf8, character);
  return utf8;
}

std::string folded_character(char32_t character) { return folded(utf8_of(character)); }

// A text as patterns see it, and where each of its bytes stands in the text itself.
struct folded_text {
  explicit folded_text(std::string_view utf8) : characters(characters_of(utf8)) {
    for (std::size_t i = 0; i < characters.size(); ++i) {
      searched += folded_character(characters[i]);
      places.resize(searched.size(), i);
    }
    places.push_back(characters.size());
  }

  // What stands there in the text itself, accents and all.
  [[nodiscard]] std::string between(std::size_t begin, std::size_t end) const {
    std::string text;
    for (std::size_t i = places[begin]; i < places[end]; ++i) {
      append_utf8(text, characters[i]);
    }
    return text;
  }

  std::u32string characters;
  std::string searched;
  std::vector<std::size_t> places;
};

// What follows a backslash is a command, whose case counts: \D is not \d.
std::string folded_pattern(std::string_view text) {
  std::string pattern;
  bool is_escaped = false;
  for (const char32_t character : characters_of(text)) {
    pattern += is_escaped ? utf8_of(character) : folded_character(character);
    is_escaped = character == U'\\' && !is_escaped;
  }
  return pattern;
}

using code_pointer = std::unique_ptr<pcre2_code, decltype(&pcre2_code_free)>;

PCRE2_SPTR units_of(std::string_view text) { return reinterpret_cast<PCRE2_SPTR>(text.data()); }

code_pointer compile(std::string_view text) {
  const std::string pattern = folded_pattern(text);
  constexpr std::uint32_t options = PCRE2_UTF | PCRE2_UCP | PCRE2_DOLLAR_ENDONLY | PCRE2_NEVER_BACKSLASH_C;
  int error = 0;
  PCRE2_SIZE offset = 0;
  code_pointer code(pcre2_compile(units_of(pattern), pattern.size(), options, &error, &offset, nullptr),
                    pcre2_code_free);
  if (code == nullptr) {
    throw std::runtime_error(fmt::format("{} is not a regular expression", shown(text)));
  }
  return code;
}

// The searches of a compiled expression in one text.
class search {
 public:
  search(const pcre2_code &code, std::string_view searched)
      : code_(code), searched_(searched), limits_(pcre2_match_context_create(nullptr)),
        found_(pcre2_match_data_create_from_pattern(&code, nullptr)) {
    pcre2_set_match_limit(limits_.get(), most_steps);
  }

  // The next place from there; after a place without a character, one that is not again such a place.
  bool finds(std::size_t from, bool is_behind_empty = false) {
    const std::uint32_t options = is_behind_empty ? PCRE2_NOTEMPTY_ATSTART : 0;
    const int result =
        pcre2_match(&code_, units_of(searched_), searched_.size(), from, options, found_.get(), limits_.get());
    if (result < 0 && result != PCRE2_ERROR_NOMATCH) {
      throw std::runtime_error(fmt::format("a regular expression takes too long for {}", shown(searched_)));
    }
    return result >= 0;
  }

  [[nodiscard]] std::size_t begin(std::size_t group = 0) const {
    return pcre2_get_ovector_pointer(found_.get())[2 * group];
  }
  [[nodiscard]] std::size_t end(std::size_t group = 0) const {
    return pcre2_get_ovector_pointer(found_.get())[2 * group + 1];
  }
  [[nodiscard]] bool has(std::size_t group) const {
    return group < pcre2_get_ovector_count(found_.get()) && begin(group) != PCRE2_UNSET;
  }

 private:
  struct deleter {
    void operator()(pcre2_match_context *context) const { pcre2_match_context_free(context); }
    void operator()(pcre2_match_data *data) const { pcre2_match_data_free(data); }
  };

  const pcre2_code &code_;
  std::string_view searched_;
  std::unique_ptr<pcre2_match_context, deleter> limits_;
  std::unique_ptr<pcre2_match_data, deleter> found_;
};

std::string filled_in(std::string_view replacement, const search &found, const folded_text &text) {
  std::string filled;
  for (std::size_t i = 0; i < replacement.size(); ++i) {
    const bool is_escape = replacement[i] == '\\' && i + 1 < replacement.size();
    const char character = is_escape ? replacement[++i] : replacement[i];
    const bool is_group = is_escape && character >= '0' && character <= '9';
    const auto group = static_cast<std::size_t>(character - '0');
    if (!is_group) {
      filled += character;
    } else if (found.has(group)) {
      filled += text.between(found.begin(group), found.end(group));
    }
  }
  return filled;
}

// Up to the delimiter, which a backslash makes an ordinary character; none when it does not come.
std::optional<std::string> part_up_to(char delimiter, std::string_view &rest) {
  std::string part;
  for (std::size_t i = 0; i < rest.size(); ++i) {
    if (rest[i] == delimiter) {
      rest.remove_prefix(i + 1);
      return part;
    }
    if (rest[i] == '\\' && i + 1 < rest.size() && rest[++i] != delimiter) {
      part += '\\';
    }
    part += rest[i];
  }
  return std::nullopt;
}

}  // namespace

struct pattern::compiled {
  code_pointer code;
};

pattern::pattern(std::string_view text) : compiled_(std::make_shared<compiled>(compiled{compile(text)})) {}

bool pattern::is_in(std::string_view text) const { return search(*compiled_->code, valid_utf8(folded(text))).finds(0); }

std::string pattern::replace(std::string_view text, std::string_view replacement, bool replaces_all) const {
  const folded_text original(text);
  search found(*compiled_->code, original.searched);
  std::string replaced;
  std::size_t behind = 0;
  bool is_behind_empty = false;
  while (found.finds(behind, is_behind_empty)) {
    replaced += original.between(behind, found.begin()) + filled_in(replacement, found, original);
    behind = found.end();
    is_behind_empty = found.begin() == found.end();
    if (!replaces_all) {
      break;
    }
  }
  return replaced + original.between(behind, original.searched.size());
}

struct replacing::parts {
  explicit parts(std::string_view text) {
    std::string_view rest = text.substr(text.empty() ? 0 : 1);
    const char delimiter = text.empty() ? '/' : text.front();
    const std::optional<std::string> first = part_up_to(delimiter, rest);
    const std::optional<std::string> second = first ? part_up_to(delimiter, rest) : std::nullopt;
    if (!second || first->empty() || (!rest.empty() && rest != "g")) {
      throw std::runtime_error(
          fmt::format("{} does not say what is replaced: it takes /PATTERN/TEXT/ or /PATTERN/TEXT/g", shown(text)));
    }
    searched = *first;
    replacement = *second;
    replaces_all = rest == "g";
  }

  std::string searched;
  std::string replacement;
  bool replaces_all = false;
};

replacing::replacing(std::string_view text) : replacing(parts(text)) {}

replacing::replacing(const parts &of)
    : pattern_(of.searched), replacement_(of.replacement), replaces_all_(of.replaces_all) {}

std::string replacing::apply(std::string_view text) const {
  return pattern_.replace(text, replacement_, replaces_all_);
}

}  // namespace chlist
