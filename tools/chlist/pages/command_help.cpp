// Reads commands and the texts of their details.
#include "chlist/pages/command_help.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace chlist {
namespace {

using kind = help_block::kind;

std::vector<std::string> names_in(const std::string &names) {
  std::vector<std::string> each;
  std::istringstream list(names);
  for (std::string name; std::getline(list, name, ',');) {
    each.push_back(name);
  }
  return each;
}

std::string value_of(const option &described) {
  if (described.is_flag()) {
    return "";
  }
  return !described.value.empty() ? described.value : described.is_number() ? "INT" : "TEXT";
}

option_help help_of(const option &described) {
  return {.names = names_in(described.names),
          .value = value_of(described),
          .choices = described.choices,
          .about = described.about,
          .is_required = described.is_required,
          .is_repeatable = described.takes_several()};
}

void add_options(const std::vector<option> &options, command_help &help) {
  for (const option &each : options) {
    (each.is_argument() ? help.arguments : help.options).push_back(help_of(each));
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

std::vector<help_section> sections_of(const std::string &details) {
  section_builder builder;
  std::istringstream lines(details);
  for (std::string line; std::getline(lines, line);) {
    builder.add(line);
  }
  return builder.sections();
}

command_help help_of(const command &described, const std::string &above) {
  command_help help = {
      .name = above + described.name, .summary = described.summary, .sections = sections_of(described.details)};
  help.options.push_back({.names = names_in(help_names), .about = help_about});
  if (!described.version.empty()) {
    help.options.push_back({.names = names_in(version_names), .about = version_about});
  }
  add_options(described.options, help);
  for (const option_group &group : described.groups) {
    add_options(group.options, help);
  }
  for (const command &below : described.commands) {
    help.commands.push_back(help_of(below, help.name + ' '));
  }
  return help;
}

}  // namespace chlist
