// Lines are parsed by the rows of the commands that they name.
#include "chlist/edit/edit_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <type_traits>
#include <variant>

#include "chlist/closest.h"
#include "chlist/command_line.h"
#include "chlist/edit/edits.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/messages.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr std::string_view blanks_of_words = " \t\r";

// One word from the front of a line.
class word_reader {
 public:
  explicit word_reader(std::string_view line) : rest_(line) {}

  // The next word; none at the end of the line and in front of a comment.
  std::optional<std::string> next() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(blanks_of_words), rest_.size()));
    if (rest_.empty() || rest_.front() == '#') {
      return std::nullopt;
    }
    std::string word;
    while (!rest_.empty() && blanks_of_words.find(rest_.front()) == std::string_view::npos) {
      take_part(word);
    }
    return word;
  }

 private:
  void take_part(std::string &word) {
    const char first = take();
    if (first == '\'' || first == '"') {
      take_quoted(word, first);
    } else {
      word += first == '\\' && !rest_.empty() ? take() : first;
    }
  }

  void take_quoted(std::string &word, char quote) {
    while (!rest_.empty()) {
      const char each = take();
      if (each == quote) {
        return;
      }
      const bool is_escape = each == '\\' && quote == '"' && !rest_.empty() && is_special(rest_.front());
      word += is_escape ? take() : each;
    }
    throw std::runtime_error(fmt::format("a {} is not closed", quote));
  }

  static bool is_special(char each) { return each == '"' || each == '\\'; }

  char take() {
    const char first = rest_.front();
    rest_.remove_prefix(1);
    return first;
  }

  std::string_view rest_;
};

bool names_a_file(const option &given) {
  const auto *const *path = std::get_if<std::filesystem::path *>(&given.target);
  return path != nullptr && !(*path)->empty();
}

bool is_plain(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("-_.:,=/+@%").find(c) != std::string_view::npos || static_cast<unsigned char>(c) >= 0x80;
}

}  // namespace

class edit_line_reader::known_edits {
 public:
  known_edits() {
    for (const edit_row &row : every_edit()) {
      rows_.emplace(name_of_line(row), row);
    }
  }

  named_edit read(std::vector<std::string> words) {
    readable_edit &edit = named(words);
    edit.parser.parse(std::move(words));
    const bool reads_files = std::ranges::any_of(edit.row.options, names_a_file);
    return {edit.row.take(), reads_files};
  }

 private:
  // An edit's row, and the parser that fills its options.
  struct readable_edit {
    explicit readable_edit(const edit_row &of) : row(of), parser(command_of(row)) {}

    static command command_of(const edit_row &row) {
      return {.name = name_of_line(row), .summary = row.summary, .options = row.options, .groups = row.groups};
    }

    edit_row row;
    line_parser parser;
  };

  // Takes the words that name the edit away; there are one or two.
  readable_edit &named(std::vector<std::string> &words) {
    const std::size_t count = words.front() == "fav" && words.size() > 1 ? 2 : 1;
    const std::string name = joined(std::span(words).first(count), " ");
    words.erase(words.begin(), words.begin() + static_cast<long>(count));
    const auto row = rows_.find(name);
    if (row == rows_.end()) {
      throw std::runtime_error(unknown_name("edit", name, names()));
    }
    std::unique_ptr<readable_edit> &edit = edits_[name];
    if (edit == nullptr) {
      edit = std::make_unique<readable_edit>(row->second);
    }
    return *edit;
  }

  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> names;
    std::ranges::transform(rows_, std::back_inserter(names), [](const auto &row) { return row.first; });
    return names;
  }

  std::map<std::string, edit_row> rows_;
  std::map<std::string, std::unique_ptr<readable_edit>> edits_;
};

edit_line_reader::edit_line_reader() : known_(std::make_unique<known_edits>()) {}
edit_line_reader::~edit_line_reader() = default;

named_edit edit_line_reader::read(std::string_view line) {
  std::vector<std::string> words = words_of_edit(line);
  return words.empty() ? named_edit{[](edited_list & /*list*/) {}} : known_->read(std::move(words));
}

namespace {

// What an option was given, as words; none when it was not.
std::vector<std::string> values_of(const option &given) {
  return std::visit(
      [](auto value) -> std::vector<std::string> {
        using value_type = std::remove_pointer_t<decltype(value)>;
        if constexpr (std::is_same_v<value_type, std::optional<int>>) {
          return *value ? std::vector{std::to_string(**value)} : std::vector<std::string>();
        } else if constexpr (std::is_same_v<value_type, std::optional<std::string>>) {
          return *value ? std::vector{**value} : std::vector<std::string>();
        } else if constexpr (std::is_same_v<value_type, std::string>) {
          return {*value};
        } else if constexpr (std::is_same_v<value_type, std::filesystem::path>) {
          return value->empty() ? std::vector<std::string>() : std::vector{value->string()};
        } else if constexpr (std::is_same_v<value_type, std::vector<std::string>>) {
          return *value;
        } else if constexpr (std::is_same_v<value_type, bool>) {
          return *value ? std::vector<std::string>{""} : std::vector<std::string>();
        } else {
          return {};
        }
      },
      given.target);
}

// An argument's values, or the option's name in front of each.
void add_words(const option &given, std::vector<std::string> &arguments, std::vector<std::string> &options) {
  for (const std::string &value : values_of(given)) {
    if (given.is_argument()) {
      arguments.push_back(value);
      continue;
    }
    options.push_back(given.each_name().back());
    if (!given.is_flag()) {
      options.push_back(value);
    }
  }
}

}  // namespace

std::vector<std::string> words_of_edit(std::string_view line) {
  std::vector<std::string> words;
  word_reader reader(line);
  for (std::optional<std::string> word = reader.next(); word; word = reader.next()) {
    words.push_back(std::move(*word));
  }
  return words;
}

std::string quoted_word(std::string_view word) {
  if (!word.empty() && std::ranges::all_of(word, is_plain)) {
    return std::string(word);
  }
  std::string quoted = "\"";
  for (const char each : word) {
    quoted.append(each == '"' || each == '\\' ? "\\" : "").push_back(each);
  }
  return quoted + '"';
}

std::string line_of_words(const std::vector<std::string> &words) {
  std::string line;
  for (const std::string &word : words) {
    line.append(line.empty() ? "" : " ").append(quoted_word(word));
  }
  return line;
}

// Arguments that begin with a dash are none unless they stand behind "--", and so behind all options.
std::string line_of(const edit_row &row) {
  std::vector<std::string> arguments;
  std::vector<std::string> options;
  for (const option &each : command{.name = row.name, .options = row.options, .groups = row.groups}.all_options()) {
    add_words(each, arguments, options);
  }
  if (std::ranges::any_of(arguments, [](const std::string &each) { return each.starts_with('-'); })) {
    options.emplace_back("--");
    std::swap(arguments, options);
  }
  std::ranges::move(options, std::back_inserter(arguments));
  return name_of_line(row) + ' ' + line_of_words(arguments);
}

std::vector<read_edit> edits_in(std::string_view text, const std::string &source) {
  std::vector<read_edit> edits;
  edit_line_reader reader;
  text_lines lines(text);
  while (const std::optional<std::string_view> line = lines.next()) {
    try {
      edits.push_back({reader.read(*line), lines.number(), std::string(without_blanks_around(*line))});
    } catch (const std::runtime_error &error) {
      throw std::runtime_error(fmt::format("{}:{}: {}", source, lines.number(), reason_of(error)));
    }
  }
  return edits;
}

}  // namespace chlist
