// Options by the kinds of their targets; a choice has its meaning where the help has it.
#include "chlist/serve/edit_form.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <type_traits>
#include <variant>
#include <vector>

#include "chlist/edit/edits.h"
#include "chlist/report.h"

namespace chlist {
namespace {

std::string kind_of(const option &asked) {
  if (!asked.choices.empty()) {
    return "choice";
  }
  if (std::holds_alternative<std::filesystem::path *>(asked.target)) {
    return "file";
  }
  return asked.is_flag() ? "flag" : asked.is_number() ? "number" : asked.takes_several() ? "texts" : "text";
}

// What it is when nobody says anything.
std::string value_of(const option &asked) {
  const auto *const *text = std::get_if<std::string *>(&asked.target);
  return text != nullptr ? **text : "";
}

std::string meaning_of(const std::string &word, const edit_row &row) {
  for (const term_section &section : row.sections) {
    const auto found = std::ranges::find(section.terms, word, &term::word);
    if (found != section.terms.end()) {
      return found->meaning;
    }
  }
  return "";
}

json json_of_option(const option &asked, const edit_row &row) {
  json choices = json::array();
  for (const std::string &word : asked.choices) {
    choices.push_back(json::array({word, meaning_of(word, row)}));
  }
  return {{"name", asked.each_name().back()},
          {"kind", kind_of(asked)},
          {"stands_for", asked.is_argument() ? asked.names : asked.value_name()},
          {"about", asked.about},
          {"value", value_of(asked)},
          {"choices", std::move(choices)},
          {"is_argument", asked.is_argument()},
          {"is_required", asked.is_required}};
}

json json_of_term(const term &each) { return json::array({each.word, each.meaning}); }

json json_of_section(const term_section &section) {
  return {{"title", section.title}, {"terms", array_of(section.terms, json_of_term)}};
}

}  // namespace

json form_of_edit(const std::string &name) {
  const std::vector<edit_row> rows = every_edit();
  const auto row = std::ranges::find(rows, name, name_of_line);
  if (row == rows.end()) {
    throw std::runtime_error("there is no such edit");
  }
  json options = json::array();
  for (const option &each : row->options) {
    options.push_back(json_of_option(each, *row));
  }
  return {{"summary", row->summary},
          {"details", row->details},
          {"options", std::move(options)},
          {"sections", array_of(row->sections, json_of_section)}};
}

}  // namespace chlist
