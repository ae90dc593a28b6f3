// Reads command lines and the texts of their footers.
#include "chlist/pages/command_help.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace chlist {
namespace {

using kind = help_block::kind;

// CLI11 writes a set of values behind the type: "TEXT:{tv,radio}".
std::vector<std::string> choices_in(const std::string &type) {
  const std::size_t open = type.find('{');
  const std::size_t close = type.rfind('}');
  std::vector<std::string> choices;
  if (open == std::string::npos || close == std::string::npos || close < open) {
    return choices;
  }
  std::istringstream list(type.substr(open + 1, close - open - 1));
  for (std::string choice; std::getline(list, choice, ',');) {
    choices.push_back(choice);
  }
  return choices;
}

std::string value_of(const CLI::Option &option) {
  if (option.get_expected_max() == 0 || option.get_type_size() == 0) {
    return "";
  }
  const std::string type = option.get_type_name();
  return type.substr(0, type.find_first_of(":{ "));
}

option_help help_of(const CLI::Option &option) {
  option_help help;
  if (option.get_positional()) {
    help.names.push_back(option.get_name(true, false));
  }
  for (const std::string &name : option.get_snames()) {
    help.names.push_back("-" + name);
  }
  for (const std::string &name : option.get_lnames()) {
    help.names.push_back("--" + name);
  }
  help.value = value_of(option);
  help.choices = choices_in(option.get_type_name());
  help.about = option.get_description();
  help.is_required = option.get_required();
  help.is_repeatable = option.get_expected_max() > 1;
  return help;
}

std::vector<const CLI::App *> subcommands_of(const CLI::App &app) {
  return app.get_subcommands([](const CLI::App *) { return true; });
}

// CLI11 has groups of options as subcommands without a name.
bool is_option_group(const CLI::App &app) { return app.get_name().empty(); }

void add_options(const CLI::App &app, command_help &help) {
  for (const CLI::Option *option : app.get_options()) {
    (option->get_positional() ? help.arguments : help.options).push_back(help_of(*option));
  }
  for (const CLI::App *group : subcommands_of(app)) {
    if (is_option_group(*group)) {
      add_options(*group, help);
    }
  }
}

bool is_indented(std::string_view line) { return line.starts_with("  "); }
// A line that is all title, not the end of a paragraph.
bool is_title(std::string_view line) {
  return !line.empty() && line.back() == ':' && !is_indented(line) && line.find('.') == std::string_view::npos;
}

std::string_view trimmed(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  return line;
}

// Adds lines, one after another, to the sections that they make.
class section_builder {
 public:
  void add(std::string_view line) {
    if (is_title(line)) {
      sections_.push_back({std::string(line.substr(0, line.size() - 1)), {}});
      is_open_ = false;
    } else if (line.empty()) {
      is_open_ = false;
    } else if (is_indented(line)) {
      add_indented(line);
    } else {
      add_to(kind::paragraph, " ", line);
    }
  }

  std::vector<help_section> sections() {
    std::erase_if(sections_, [](const help_section &section) { return section.blocks.empty(); });
    return std::move(sections_);
  }

 private:
  std::vector<help_block> &blocks() { return sections_.back().blocks; }

  void add_indented(std::string_view line) {
    const std::string_view text = trimmed(line);
    const std::size_t indentation = line.size() - text.size();
    const std::size_t gap = text.find("  ");
    if (indentation > term_indentation && is_open_) {
      add_to(blocks().back().what, blocks().back().what == kind::literal ? "\n" : " ", text);
    } else if (gap != std::string_view::npos) {
      blocks().push_back({kind::term, std::string(text.substr(0, gap)), std::string(trimmed(text.substr(gap)))});
      is_open_ = true;
    } else {
      add_to(kind::literal, "\n", text);
    }
  }

  void add_to(kind what, std::string_view separator, std::string_view text) {
    if (is_open_ && blocks().back().what == what) {
      blocks().back().text.append(separator).append(text);
    } else {
      blocks().push_back({what, "", std::string(text)});
      is_open_ = true;
    }
  }

  static constexpr std::size_t term_indentation = 2;
  std::vector<help_section> sections_{1};
  bool is_open_ = false;  // the last block goes on
};

}  // namespace

std::string command_help::page_name() const {
  std::string page = name;
  std::ranges::replace(page, ' ', '-');
  return page;
}

std::vector<help_section> sections_of(const std::string &footer) {
  section_builder builder;
  std::istringstream lines(footer);
  for (std::string line; std::getline(lines, line);) {
    builder.add(line);
  }
  return builder.sections();
}

command_help help_of(const CLI::App &app) {
  command_help help;
  add_options(app, help);
  for (const CLI::App *each = &app; each != nullptr; each = each->get_parent()) {
    help.name = each->get_name() + (help.name.empty() ? "" : " ") + help.name;
  }
  help.summary = app.get_description();
  help.sections = sections_of(app.get_footer());
  for (const CLI::App *command : subcommands_of(app)) {
    if (!is_option_group(*command)) {
      help.commands.push_back(help_of(*command));
    }
  }
  return help;
}

}  // namespace chlist
