// Lays out the texts of a command's row.
#include "chlist/help.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"
#include "chlist/text/wrapping.h"

namespace chlist {
namespace {

constexpr std::size_t widest_word = 22;  // whose meaning stands on the same line
constexpr std::size_t indentation = 2;

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
    text += beside(std::string(indentation, ' ') + row.word, row.meaning, meanings, width) + '\n';
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

// In the order of the table.
std::vector<term_section> commands_by_topic(const command &row) {
  std::vector<term_section> topics;
  for (const command &each : row.commands) {
    if (topics.empty() || topics.back().title != each.topic) {
      topics.push_back({each.topic, {}});
    }
    topics.back().terms.push_back({each.name, each.summary});
  }
  return topics;
}

std::string commands_below(const command &row, std::size_t width) {
  std::string text;
  for (const term_section &each : commands_by_topic(row)) {
    text += section(each.title.empty() ? "Commands" : each.title, each.terms, width);
  }
  return text;
}

std::string examples_of(const command &row, std::size_t width) {
  std::string text = row.examples.empty() ? "" : "\nExamples:\n";
  for (const std::string &each : row.examples) {
    text += wrapped_command(each, indentation, width) + '\n';
  }
  return text;
}

// What every help begins with.
std::string usage_and_summary(const called_command &shown, std::size_t width) {
  const std::string usage = fmt::format("Usage: {} {}", shown.line, usage_of(*shown.row));
  return wrapped(usage, indentation, width) + "\n\n" + paragraph(shown.row->summary + '.', width);
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
  std::string text = usage_and_summary(shown, width);
  for (const std::string &each : row.details) {
    text += '\n' + paragraph(each, width);
  }
  text += commands_below(row, width);
  text += section("Arguments", terms_of(row, true), width) + section("Options", terms_of(row, false), width);
  for (const term_section &each : row.sections) {
    text += section(each.title, each.terms, width);
  }
  return text + section("Exit codes", row.exit_codes, width) + examples_of(row, width);
}

std::string short_help(const command &program, std::size_t width) {
  std::string text = usage_and_summary({program.name, &program}, width) + '\n';
  for (const term_section &each : commands_by_topic(program)) {
    const std::string names = joined(words_of(each.terms), ", ");
    text += paragraph(each.title + ':', width) + beside("", names, indentation, width) + '\n';
  }
  return text + '\n' +
         paragraph(fmt::format("`{0} help` tells what each of them does, and `{0} help COMMAND` what it takes.",
                               program.name),
                   width);
}

}  // namespace chlist
