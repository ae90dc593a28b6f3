// Only this file knows the library of regular expressions.
#include "chlist/text/pattern.h"

#include <fmt/format.h>

#include <cstddef>
#include <optional>
#include <regex>
#include <stdexcept>
#include <vector>

#include "chlist/report.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

std::wstring wide(std::u32string_view characters) { return {characters.begin(), characters.end()}; }

std::string folded_character(char32_t character) {
  std::string utf8;
  append_utf8(utf8, character);
  return folded(utf8);
}

// A text as patterns see it, and where each of its characters stands in the text itself.
struct folded_text {
  explicit folded_text(std::string_view utf8) : characters(characters_of(utf8)) {
    for (std::size_t i = 0; i < characters.size(); ++i) {
      for (const char32_t character : characters_of(folded_character(characters[i]))) {
        searched += static_cast<wchar_t>(character);
        places.push_back(i);
      }
    }
    places.push_back(characters.size());
  }

  // Of the text itself, accents and all.
  [[nodiscard]] std::string between(std::size_t begin, std::size_t end) const {
    std::string text;
    for (std::size_t i = places[begin]; i < places[end]; ++i) {
      append_utf8(text, characters[i]);
    }
    return text;
  }

  std::u32string characters;
  std::wstring searched;
  std::vector<std::size_t> places;
};

// What follows a backslash is a command, whose case counts: \D is not \d.
std::wstring folded_pattern(std::string_view text) {
  std::wstring pattern;
  bool is_escaped = false;
  for (const char32_t character : characters_of(text)) {
    const std::u32string each = is_escaped ? std::u32string(1, character) : characters_of(folded_character(character));
    pattern += wide(each);
    is_escaped = character == U'\\' && !is_escaped;
  }
  return pattern;
}

std::wregex compile(std::string_view text) {
  try {
    return std::wregex(folded_pattern(text));
  } catch (const std::regex_error &) {
    throw std::runtime_error(fmt::format("{} is not a regular expression", shown(text)));
  }
}

std::string group_of(const std::wcmatch &found, std::size_t group, const folded_text &text) {
  if (group >= found.size() || !found[group].matched) {
    return "";
  }
  const auto begin = static_cast<std::size_t>(found.position(group));
  return text.between(begin, begin + static_cast<std::size_t>(found.length(group)));
}

std::string filled_in(std::string_view replacement, const std::wcmatch &found, const folded_text &text) {
  std::string filled;
  for (std::size_t i = 0; i < replacement.size(); ++i) {
    const bool is_escape = replacement[i] == '\\' && i + 1 < replacement.size();
    const char character = is_escape ? replacement[++i] : replacement[i];
    if (is_escape && character >= '0' && character <= '9') {
      filled += group_of(found, static_cast<std::size_t>(character - '0'), text);
    } else {
      filled += character;
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
  std::wregex expression;
};

pattern::pattern(std::string_view text) : compiled_(std::make_shared<compiled>(compiled{compile(text)})) {}

bool pattern::is_in(std::string_view text) const {
  return std::regex_search(wide(characters_of(folded(text))), compiled_->expression);
}

std::string pattern::replace(std::string_view text, std::string_view replacement, bool replaces_all) const {
  const folded_text original(text);
  const wchar_t *begin = original.searched.data();
  const wchar_t *end = begin + original.searched.size();
  std::string replaced;
  std::size_t behind = 0;
  for (std::wcregex_iterator found(begin, end, compiled_->expression), none; found != none; ++found) {
    const auto at = static_cast<std::size_t>(found->position());
    replaced += original.between(behind, at) + filled_in(replacement, *found, original);
    behind = at + static_cast<std::size_t>(found->length());
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
