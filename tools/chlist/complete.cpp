// Follows the words to the command, the option or the argument that the last one belongs to.
#include "chlist/complete.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

#include "chlist/exit_codes.h"
#include "chlist/fields/service_fields.h"
#include "chlist/fields/service_types.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/file_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

// The line up to the word that is being typed.
struct typed_line {
  const command *program = nullptr;
  const command *row = nullptr;
  const option *takes = nullptr;  // the option whose value the word is
  std::vector<std::string> arguments;
  bool takes_options = true;
  std::string word;
};

const option *option_named(const std::vector<option> &options, std::string_view name) {
  const auto found = std::ranges::find_if(options, [name](const option &each) {
    const std::vector<std::string> names = each.each_name();
    return !each.is_argument() && std::ranges::find(names, name) != names.end();
  });
  return found != options.end() ? &*found : nullptr;
}

void take(typed_line &line, const std::vector<option> &options, const std::string &word) {
  if (line.takes != nullptr) {
    line.takes = nullptr;
  } else if (line.takes_options && word == "--") {
    line.takes_options = false;
  } else if (line.takes_options && word.starts_with('-')) {
    const option *found = option_named(options, word);
    line.takes = found != nullptr && !found->is_flag() ? found : nullptr;
  } else {
    line.arguments.push_back(word);
  }
}

// A file that a command reads is its first argument.
std::optional<line_up> list_on(const typed_line &line) {
  try {
    return line.arguments.empty() ? std::nullopt : std::optional(line_up_in(channel_file(line.arguments.front())));
  } catch (const std::exception &) {
    return std::nullopt;
  }
}

std::vector<term> section_of(const command &row, std::string_view title) {
  const auto found = std::ranges::find(row.sections, title, &term_section::title);
  return found != row.sections.end() ? found->terms : std::vector<term>();
}

std::vector<term> groups_offered(const typed_line &line, std::string_view prefix = "") {
  std::vector<term> groups;
  if (const std::optional<line_up> list = list_on(line)) {
    for (const favourite_group &each : list->favourites) {
      if (each.is_counted && !each.name.empty()) {
        groups.push_back({std::string(prefix) + each.name, counted(each.entries.size(), "service")});
      }
    }
  }
  return groups;
}

std::vector<term> groups_on(const typed_line &line) { return groups_offered(line); }

// The positions of favourite groups go without saying.
std::vector<term> views_on(const typed_line &line) {
  std::vector<term> views = terms_of_views();
  std::erase_if(views, [](const term &each) { return each.word.starts_with("fav:"); });
  std::ranges::move(groups_offered(line, "fav:"), std::back_inserter(views));
  return views;
}

// Each name once; a name that several services have does not name one.
std::vector<term> services_on(const typed_line &line) {
  std::vector<term> services;
  if (const std::optional<line_up> list = list_on(line)) {
    for (const line_up_service &each : list->services) {
      services.push_back(
          {each.name, fmt::format("{}, {}", service_type_name(each.fields.service_type), identity_text(each.id()))});
    }
  }
  return services;
}

std::vector<term> commands_of(const command &row) {
  std::vector<term> commands;
  for (const command &each : row.commands) {
    commands.push_back({each.name, each.summary});
  }
  return commands;
}

// The arguments name one already, or the words in front of one.
std::vector<term> commands_on(const typed_line &line) {
  const command *row = line.program;
  for (const std::string &word : line.arguments) {
    row = row != nullptr ? row->find(word) : nullptr;
  }
  return row != nullptr ? commands_of(*row) : std::vector<term>();
}

std::vector<term> sorts_on(const typed_line &line) { return section_of(*line.row, "Sorts"); }
std::vector<term> formats_on(const typed_line &line) { return section_of(*line.row, "Formats"); }

std::vector<term> columns_on(const typed_line & /*line*/) {
  std::vector<term> columns;
  for (const field &each : service_fields()) {
    columns.push_back({std::string(each.name), std::string(each.about)});
  }
  return columns;
}

std::vector<term> behind(std::string_view before, std::vector<term> words) {
  for (term &each : words) {
    each.word.insert(0, before);
  }
  return words;
}

// In "number,name" the last name is the one that is being typed.
std::vector<term> lists_of_columns_on(const typed_line &line) {
  return behind(line.word.substr(0, line.word.rfind(',') + 1), columns_on(line));
}

// The words of a field's values, each number by the one that is shown; and "none" where there may be none.
std::vector<term> values_of_field(const field &which) {
  std::vector<term> values;
  std::set<std::int64_t> seen;
  for (const word &each : which.values.words) {
    if (seen.insert(each.value).second) {
      values.push_back({std::string(each.text), std::string(which.about)});
    }
  }
  if (which.values.unset) {
    values.push_back({"none", std::string(which.about)});
  }
  return values;
}

// "loc" is a field that is being typed, "locked=" one whose value is.
std::vector<term> fields_or_values(std::string_view typed, std::vector<term> fields) {
  const std::size_t sign = typed.find('=');
  if (sign == std::string_view::npos) {
    for (term &each : fields) {
      each.word += '=';
    }
    return fields;
  }
  const std::string_view before = typed.substr(0, sign);
  const field *which = find_field(before.substr(0, before.find_last_not_of('!') + 1));
  return which != nullptr ? behind(typed.substr(0, sign + 1), values_of_field(*which)) : std::vector<term>();
}

std::vector<term> filters_on(const typed_line &line) { return fields_or_values(line.word, columns_on(line)); }
std::vector<term> assignments_on(const typed_line &line) {
  return fields_or_values(line.word, section_of(*line.row, "Fields and their values"));
}

// Where the last of several conditions begins: behind a blank or a bracket that stands in no quotes.
std::size_t begin_of_last_condition(std::string_view typed) {
  std::size_t begin = 0;
  char quote = 0;
  for (std::size_t i = 0; i < typed.size(); ++i) {
    if (quote != 0) {
      quote = typed[i] == quote ? '\0' : quote;
    } else if (typed[i] == '"' || typed[i] == '\'') {
      quote = typed[i];
    } else if (typed[i] == ' ' || typed[i] == '(') {
      begin = i + 1;
    }
  }
  return begin;
}

// A value with blanks stands in quotes, and any value in those that are typed already.
void put_into_quotes(term &condition, std::string_view typed) {
  const std::size_t value = condition.word.find('=') + 1;
  const bool is_quoted = typed.size() > value && (typed[value] == '"' || typed[value] == '\'');
  if (is_quoted || condition.word.find(' ') != std::string::npos) {
    const char quote = is_quoted ? typed[value] : '"';
    condition.word.insert(value, 1, quote).push_back(quote);
  }
}

std::vector<term> conditions_on(const typed_line &line) {
  const std::string_view all = line.word;
  const std::size_t begin = begin_of_last_condition(all);
  const std::string_view typed = all.substr(begin);
  std::vector<term> conditions = fields_or_values(typed, columns_on(line));
  if (typed.find('=') != std::string_view::npos) {
    std::ranges::for_each(conditions, [typed](term &each) { put_into_quotes(each, typed); });
  }
  return behind(all.substr(0, begin), std::move(conditions));
}

// What is offered for a value, by the name that the help has for it.
struct value_words {
  std::string_view value;
  std::vector<term> (*offered)(const typed_line &line);
};

constexpr value_words words_of_values[] = {
    {"COMMAND", commands_on},       {"VIEW", views_on},          {"SORT", sorts_on},
    {"FORMAT", formats_on},         {"SERVICE", services_on},    {"GROUP", groups_on},
    {"NAMES", lists_of_columns_on}, {"COLUMN=TEXT", filters_on}, {"FIELD=VALUE", assignments_on},
    {"CONDITION", conditions_on}};

std::vector<term> values_of(const typed_line &line, const option &taken) {
  const auto *const words = std::ranges::find(words_of_values, taken.value_name(), &value_words::value);
  if (taken.choices.empty()) {
    return words != std::end(words_of_values) ? words->offered(line) : std::vector<term>();
  }
  std::vector<term> choices;
  std::ranges::transform(taken.choices, std::back_inserter(choices), [](const std::string &choice) {
    return term{choice, ""};
  });
  return choices;
}

std::vector<term> options_of(const std::vector<option> &options) {
  std::vector<term> offered;
  for (const option &each : options) {
    if (!each.is_argument()) {
      offered.push_back({each.each_name().back(), each.about});
    }
  }
  return offered;
}

// The argument that the word is: the last one when it takes several.
const option *argument_at(const std::vector<option> &options, std::size_t place) {
  const option *last = nullptr;
  for (const option &each : options) {
    if (each.is_argument() && place-- == 0) {
      return &each;
    }
    last = each.is_argument() ? &each : last;
  }
  return last != nullptr && last->takes_several() ? last : nullptr;
}

std::vector<term> offered_for(const typed_line &line, const std::vector<option> &options) {
  if (line.takes != nullptr) {
    return values_of(line, *line.takes);
  }
  if (line.takes_options && line.word.starts_with('-')) {
    return options_of(options);
  }
  if (!line.row->commands.empty()) {
    return line.arguments.empty() ? commands_of(*line.row) : std::vector<term>();
  }
  const option *argument = argument_at(options, line.arguments.size());
  return argument != nullptr ? values_of(line, *argument) : std::vector<term>();
}

// A shell reads a line for each word, and no word twice.
void keep_what_fits(std::vector<term> &offered, const std::string &word) {
  std::set<std::string> seen;
  std::erase_if(offered, [&](const term &each) {
    return !each.word.starts_with(word) || each.word.empty() || harmless(each.word) != each.word ||
           !seen.insert(each.word).second;
  });
}

}  // namespace

std::vector<term> completions(const command &program, std::span<const std::string> words) {
  if (words.empty()) {
    return {};
  }
  typed_line line = {.program = &program, .row = &program, .arguments = {}, .word = words.back()};
  std::vector<option> options = program.all_options();
  const std::vector<option> of_program = program.options;
  for (const std::string &word : words.first(words.size() - 1)) {
    const command *below = line.takes == nullptr && line.arguments.empty() ? line.row->find(word) : nullptr;
    if (below == nullptr) {
      take(line, options, word);
      continue;
    }
    line.row = below;
    options = below->all_options();
    options.insert(options.end(), of_program.begin(), of_program.end());
  }
  std::vector<term> offered = offered_for(line, options);
  keep_what_fits(offered, line.word);
  return offered;
}

std::vector<std::string> words_of_line(std::string_view line) {
  std::vector<std::string> words(1);
  bool is_begun = false;
  char quote = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (quote == 0 && c == ' ') {
      if (is_begun) {
        words.emplace_back();
      }
      is_begun = false;
      continue;
    }
    is_begun = true;
    if (quote == 0 ? c == '"' || c == '\'' : c == quote) {
      quote = quote == 0 ? c : '\0';
    } else if (c == '\\' && quote != '\'' && i + 1 < line.size()) {
      words.back() += line[++i];
    } else {
      words.back() += c;
    }
  }
  return words;
}

int print_completions(const command &program, std::span<const std::string> arguments) {
  std::vector<std::string> words(arguments.begin(), arguments.end());
  if (words.size() == 2 && words.front() == "--line") {
    words = words_of_line(words.back());
    words.erase(words.begin());
  }
  print_report([&] {
    for (const term &each : completions(program, words)) {
      fmt::print("{}\t{}\n", each.word, harmless(each.meaning));
    }
  });
  return exit_done;
}

}  // namespace chlist
