// A parser by recursive descent, which makes functions of what it reads.
#include "chlist/fields/where.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

#include "chlist/closest.h"
#include "chlist/text/pattern.h"
#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

using condition = std::function<bool(const service_row &)>;

constexpr std::string_view blanks_between = " \t\r\n";
constexpr std::string_view ends_of_words = " \t\r\n()";
constexpr std::string_view ends_of_fields = " \t\r\n()=!~<>\"'";
constexpr std::size_t deepest_nesting = 100;

bool is_text(const field &which) {
  return which.values.kind == value_kind::text || which.values.kind == value_kind::texts;
}

// Each element of several texts, the one text otherwise; a text that is not set is an empty one.
bool has_text(const json &value, const std::function<bool(const std::string &)> &is_meant) {
  if (value.is_array() && !value.elements().empty()) {
    return std::ranges::any_of(value.elements(), [&](const json &each) { return is_meant(text_of_value(each)); });
  }
  return is_meant(text_of_value(value));
}

condition same_text(const field &which, const std::string &value) {
  const std::string wanted = spells_unset(which.values, value) ? "" : folded(value);
  return [&which, wanted](const service_row &shown_row) {
    return has_text(which.get(shown_row), [&wanted](const std::string &text) {
      return folded(text) == wanted || (text.empty() && wanted == "none");
    });
  };
}

condition same_value(const field &which, const std::string &value) {
  const json wanted = value.empty() ? json() : shown_value(which.values, number_for(which, value));
  return [&which, wanted](const service_row &shown_row) { return which.get(shown_row) == wanted; };
}

condition equal(const field &which, const std::string &value) {
  return is_text(which) ? same_text(which, value) : same_value(which, value);
}

condition matching(const field &which, const std::string &value) {
  return [&which, searched = pattern(value)](const service_row &shown_row) {
    return has_text(which.get(shown_row), [&searched](const std::string &text) { return searched.is_in(text); });
  };
}

void must_be_number(const field &which, char sign) {
  if (!which.is_number()) {
    throw std::runtime_error(fmt::format("{} is no number: {} compares numbers", which.name, sign));
  }
}

// The bound may lie outside the range of the field: "number<1" finds the entries whose numbers are wrong.
std::int64_t bound_for(const field &which, const std::string &text) {
  std::int64_t bound = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bound);
  const bool is_whole = error == std::errc() && end == text.data() + text.size();
  return is_whole ? bound : number_for(which, text);
}

condition less(const field &which, const std::string &value) {
  must_be_number(which, '<');
  return [&which, bound = bound_for(which, value)](const service_row &shown_row) {
    const json number = which.get(shown_row);
    return number.is_integer() && number.as_integer() < bound;
  };
}

condition greater(const field &which, const std::string &value) {
  must_be_number(which, '>');
  return [&which, bound = bound_for(which, value)](const service_row &shown_row) {
    const json number = which.get(shown_row);
    return number.is_integer() && number.as_integer() > bound;
  };
}

condition opposite(condition of) {
  return [of = std::move(of)](const service_row &shown_row) { return !of(shown_row); };
}

struct comparison_sign {
  std::string_view sign;
  condition (*make)(const field &which, const std::string &value);
  bool is_negated;
  std::string_view about;
};

constexpr comparison_sign signs[] = {
    {"!=", equal, true, "another value"},
    {"!~", matching, true, "a regular expression that is not found in the value"},
    {"=", equal, false, "the whole value, as `chlist set` spells it; none when it is not set"},
    {"~", matching, false, "a regular expression that is found in the value"},
    {"<", less, false, "a smaller number"},
    {">", greater, false, "a greater number"},
};

class parser {
 public:
  parser(std::string_view text, std::string_view called) : text_(text), called_(called) {}

  condition whole() {
    condition read = any_of_several();
    if (next() != '\0') {
      refuse(at_, "this bracket closes none");
    }
    return read;
  }

 private:
  condition any_of_several() {
    condition read = all_of_several();
    while (takes_word("or")) {
      read = [one = std::move(read), other = all_of_several()](const service_row &shown_row) {
        return one(shown_row) || other(shown_row);
      };
    }
    return read;
  }

  condition all_of_several() {
    condition read = one();
    while (takes_word("and") || (next() != '\0' && next() != ')' && !is_word("or"))) {
      read = [first = std::move(read), other = one()](const service_row &shown_row) {
        return first(shown_row) && other(shown_row);
      };
    }
    return read;
  }

  condition one() {
    if (depth_ == deepest_nesting) {
      refuse(at_, "it is nested too deeply");
    }
    ++depth_;
    condition read = takes_word("not") ? opposite(one()) : next() == '(' ? in_brackets() : comparison();
    --depth_;
    return read;
  }

  condition in_brackets() {
    const std::size_t open = at_++;
    condition read = any_of_several();
    if (next() != ')') {
      refuse(open, "this bracket is not closed");
    }
    ++at_;
    return read;
  }

  condition comparison() {
    const std::size_t begin = skip_blanks();
    const std::string_view name = word_up_to(ends_of_fields);
    if (name.empty()) {
      refuse(begin, "a field is missing here");
    }
    const field *which = find_field(name);
    if (which == nullptr) {
      refuse(begin, unknown_name("field", name, names_of_fields()));
    }
    const comparison_sign &sign = read_sign(name);
    const std::size_t value_at = skip_blanks();
    const std::string value = read_value();
    try {
      condition read = sign.make(*which, value);
      return sign.is_negated ? opposite(std::move(read)) : read;
    } catch (const std::runtime_error &error) {
      refuse(value_at, error.what());
    }
  }

  const comparison_sign &read_sign(std::string_view name) {
    const std::size_t begin = skip_blanks();
    const auto *const found = std::ranges::find_if(
        signs, [this](const comparison_sign &each) { return text_.substr(at_).starts_with(each.sign); });
    if (found == std::end(signs)) {
      refuse(begin, fmt::format("behind {} one of = != ~ !~ < > is missing", name));
    }
    at_ += found->sign.size();
    return *found;
  }

  // In quotes a backslash makes an ordinary character of the quote, and is one itself otherwise: patterns have many.
  std::string read_value() {
    const std::size_t begin = at_;
    const char quote = next();
    if (quote != '"' && quote != '\'') {
      const std::string_view word = word_up_to(ends_of_words);
      if (word.empty()) {
        refuse(begin, "a value is missing here");
      }
      return std::string(word);
    }
    std::string value;
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == quote) {
        ++at_;
        return value;
      }
      at_ += text_.substr(at_).starts_with('\\') && text_.substr(at_ + 1).starts_with(quote) ? 1U : 0U;
      value += text_[at_];
    }
    refuse(begin, "this quote is not closed");
  }

  std::size_t skip_blanks() {
    at_ = std::min(text_.find_first_not_of(blanks_between, at_), text_.size());
    return at_;
  }

  // The next character that is no blank; NUL at the end.
  char next() { return skip_blanks() < text_.size() ? text_[at_] : '\0'; }

  std::string_view word_up_to(std::string_view ends) {
    const std::size_t begin = at_;
    at_ = std::min(text_.find_first_of(ends, at_), text_.size());
    return text_.substr(begin, at_ - begin);
  }

  bool is_word(std::string_view word) {
    const std::size_t begin = skip_blanks();
    const std::string_view read = word_up_to(ends_of_fields);
    return is_same_name(std::exchange(at_, begin) == begin ? "" : read, word);
  }

  bool takes_word(std::string_view word) {
    const bool is_there = is_word(word);
    at_ += is_there ? word.size() : 0;
    return is_there;
  }

  [[noreturn]] void refuse(std::size_t place, const std::string &why) const {
    throw std::runtime_error(
        fmt::format("{}, character {}: {}", called_, characters_of(text_.substr(0, place)).size() + 1, why));
  }

  std::string_view text_;
  std::string_view called_;
  std::size_t at_ = 0;
  std::size_t depth_ = 0;
};

bool is_part(const field &which, const service_row &shown_row, std::string_view text) {
  return contains_name(text_of_value(which.get(shown_row)), text);
}

condition found_by(const std::string &text) {
  return [text](const service_row &shown_row) {
    return is_same_name(text_of_value(field_named("number").get(shown_row)), text) ||
           (shown_row.service != nullptr &&
            (is_part(field_named("name"), shown_row, text) || is_part(field_named("provider"), shown_row, text)));
  };
}

// A part of one of the names will do.
void must_name_a_value(const field &which, std::string_view text) {
  const auto has_part = [text](const word &each) { return contains_name(each.text, text); };
  if (which.values.kind == value_kind::named && std::ranges::none_of(which.values.words, has_part)) {
    number_for(which, text);
  }
}

bool is_digits(std::string_view text) { return text.find_first_not_of("0123456789") == std::string_view::npos; }

// Texts and names are found by a part of what is shown, and names by their other spellings, too. A number is the value
// itself: 2 is radio, and no part of "MPEG-2 HD TV".
condition having(const field &which, const std::string &text) {
  const bool has_names = which.values.kind == value_kind::named;
  if (spells_unset(which.values, text)) {
    return equal(which, text);
  }
  if (!is_text(which) && (!has_names || (!text.empty() && is_digits(text)))) {
    return same_value(which, text);
  }
  must_name_a_value(which, text);
  const auto spelled = has_names ? number_from(which.values, text) : std::nullopt;
  return [&which, text, wanted = spelled ? shown_value(which.values, *spelled) : json()](const service_row &shown_row) {
    return is_part(which, shown_row, text) || (!wanted.is_null() && which.get(shown_row) == wanted);
  };
}

}  // namespace

where::where(std::string_view text, std::string_view called) : takes_(parser(text, called).whole()) {}

where where::has(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) {
    return where(found_by(std::string(text)));
  }
  return where(having(field_named(text.substr(0, equals)), std::string(text.substr(equals + 1))));
}

std::vector<term> terms_of_conditions() {
  std::vector<term> terms;
  for (const comparison_sign &each : signs) {
    terms.push_back({fmt::format("FIELD{}VALUE", each.sign), std::string(each.about)});
  }
  std::ranges::stable_sort(terms, {}, [](const term &each) { return each.word.find('!') != std::string::npos; });
  terms.push_back({"and, or, not, ( )", "of several; those side by side must all be met"});
  return terms;
}

}  // namespace chlist
