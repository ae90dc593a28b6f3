// Lays out the texts of a command's row.
#include "chlist/help.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>
#include <utility>

#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::size_t widest_word = 22;  // whose meaning stands on the same line
constexpr std::size_t indentation = 2;

// A text in lines; all but the first one are indented.
std::string wrapped(const std::string &text, std::size_t indent, std::size_t width) {
  std::string lines;
  std::size_t column = indent;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const std::size_t needed = width_of(word) + 1;
    if (column > indent && column + needed > width + 1) {
      lines.back() = '\n';
      lines += std::string(indent, ' ');
      column = indent;
    }
    lines += word + ' ';
    column += needed;
  }
  return lines.substr(0, lines.size() - std::min<std::size_t>(lines.size(), 1));
}

std::string paragraph(const std::string &text, std::size_t width) { return wrapped(text, 0, width) + '\n'; }

using terms = std::vector<term>;

// Words with what they mean beside them, all at the same column.
std::string table_of(const terms &rows, std::size_t width) {
  std::size_t widest = 0;
  for (const term &row : rows) {
    const std::size_t needed = width_of(row.word);
    widest = needed <= widest_word ? std::max(widest, needed) : widest;
  }
  const std::size_t meanings = indentation + widest + 2;
  std::string text;
  for (const term &row : rows) {
    const std::size_t used = indentation + width_of(row.word);
    text += std::string(indentation, ' ') + row.word;
    text += used + 2 > meanings ? '\n' + std::string(meanings, ' ') : std::string(meanings - used, ' ');
    text += wrapped(row.meaning, meanings, width) + '\n';
  }
  return text;
}

std::string section(const std::string &title, const terms &rows, std::size_t width) {
  return rows.empty() ? "" : fmt::format("\n{}:\n{}", title, table_of(rows, width));
}

// "-o, --output OUT".
std::string word_of(const option &shown) {
  const std::string names = joined(shown.each_name(), ", ");
  return shown.is_flag() || shown.is_argument() ? names : fmt::format("{} {}", names, shown.value_name());
}

terms terms_of(const command &row, bool of_arguments) {
  terms rows;
  for (const option &each : row.all_options()) {
    if (each.is_argument() == of_arguments) {
      rows.push_back({word_of(each), each.explanation()});
    }
  }
  return rows;
}

// In the order of the table, a section for each topic.
std::string commands_below(const command &row, std::size_t width) {
  std::string text;
  for (auto first = row.commands.begin(); first != row.commands.end();) {
    const std::string topic = first->topic;
    terms listed;
    for (; first != row.commands.end() && first->topic == topic; ++first) {
      listed.push_back({first->name, first->summary});
    }
    text += section(topic.empty() ? "Commands" : topic, listed, width);
  }
  return text;
}

std::string examples_of(const command &row) {
  return row.examples.empty() ? "" : fmt::format("\nExamples:\n  {}\n", joined(row.examples, "\n  "));
}

}  // namespace

std::string usage_of(const command &row) {
  std::string usage = "[OPTIONS]";
  for (const option &each : row.all_options()) {
    const std::string several = each.takes_several() ? "..." : "";
    if (each.is_argument()) {
      usage += each.is_required ? ' ' + each.names + several : fmt::format(" [{}]{}", each.names, several);
    } else if (each.is_required) {
      usage += fmt::format(" {} {}", each.each_name().front(), each.value_name());
    }
  }
  return row.commands.empty() ? usage : usage + " COMMAND ...";
}

std::string help_text(const called_command &shown, std::size_t width) {
  const command &row = *shown.row;
  const std::string usage = fmt::format("Usage: {} {}", shown.line, usage_of(row));
  std::string text = wrapped(usage, indentation, width) + "\n\n" + paragraph(row.summary + '.', width);
  for (const std::string &each : row.details) {
    text += '\n' + paragraph(each, width);
  }
  text += commands_below(row, width);
  text += section("Arguments", terms_of(row, true), width) + section("Options", terms_of(row, false), width);
  for (const term_section &each : row.sections) {
    text += section(each.title, each.terms, width);
  }
  return text + section("Exit codes", row.exit_codes, width) + examples_of(row);
}

}  // namespace chlist
