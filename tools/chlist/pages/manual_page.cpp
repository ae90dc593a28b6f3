// Writes roff.
#include "chlist/pages/manual_page.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <span>
#include <string_view>

namespace chlist {
namespace {

// Hyphens are to be copied from a page as they are typed; a line must not begin with what roff takes for a request.
std::string escaped(std::string_view text) {
  std::string roff;
  for (const char c : text) {
    if ((c == '.' || c == '\'') && (roff.empty() || roff.back() == '\n')) {
      roff += "\\&";
    }
    if (c == '\\') {
      roff += "\\e";
    } else {
      roff += c == '-' ? std::string("\\-") : std::string(1, c);
    }
  }
  return roff;
}

std::string upper(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

// By the custom of manual pages.
std::string heading_of(const std::string &title) {
  if (title.empty()) {
    return "DESCRIPTION";
  }
  return title == "Exit codes" ? "EXIT STATUS" : upper(title);
}

std::string text_of(const help_block &block) {
  switch (block.what) {
    case help_block::kind::paragraph:
      return fmt::format(".PP\n{}\n", escaped(block.text));
    case help_block::kind::term:
      return fmt::format(".TP\n.B {}\n{}\n", escaped(block.term), escaped(block.text));
    case help_block::kind::literal:
      return fmt::format(".PP\n.RS 4\n.nf\n{}\n.fi\n.RE\n", escaped(block.text));
  }
  return "";
}

std::string text_of(const help_section &section) {
  std::string text = fmt::format(".SH {}\n", escaped(heading_of(section.title)));
  for (const help_block &block : section.blocks) {
    text += text_of(block);
  }
  return text;
}

std::string text_of(const option_help &option) {
  std::string tag;
  for (const std::string &name : option.names) {
    tag += fmt::format("{}\\fB{}\\fR", tag.empty() ? "" : ", ", escaped(name));
  }
  if (!option.value.empty() && option.names.front() != option.value && option.names.front().starts_with('-')) {
    tag += fmt::format(" \\fI{}\\fR", escaped(option.value));
  }
  std::string choices;
  for (const std::string &choice : option.choices) {
    choices += fmt::format("{}{}", choices.empty() ? "; one of " : ", ", choice);
  }
  return fmt::format(".TP\n{}\n{}\n", tag, escaped(option.about + choices));
}

std::string synopsis_of(const command_help &command) {
  std::string text = fmt::format(".SH SYNOPSIS\n.B {}\n[\\fIoptions\\fR]", escaped(command.name));
  for (const option_help &option : command.options) {
    if (option.is_required) {
      text += fmt::format(" \\fB{}\\fR \\fI{}\\fR", escaped(option.names.front()), escaped(option.value));
    }
  }
  for (const option_help &argument : command.arguments) {
    const std::string name = fmt::format("\\fI{}\\fR", escaped(argument.names.front()));
    text += ' ' + (argument.is_required ? name : '[' + name + ']') + (argument.is_repeatable ? "..." : "");
  }
  return text + (command.commands.empty() ? "\n" : " \\fIcommand\\fR ...\n");
}

std::string commands_of(const command_help &command) {
  if (command.commands.empty()) {
    return "";
  }
  std::string text = ".SH COMMANDS\n";
  for (const command_help &each : command.commands) {
    text += fmt::format(".TP\n\\fB{}\\fR(1)\n{}\n", escaped(each.page_name()), escaped(each.summary));
  }
  return text;
}

std::string options_of(const command_help &command) {
  std::string text = ".SH OPTIONS\n";
  for (const auto *list : {&command.arguments, &command.options}) {
    for (const option_help &option : *list) {
      text += text_of(option);
    }
  }
  return text;
}

std::string see_also(const command_help &command) {
  const std::size_t last = command.name.rfind(' ');
  if (last == std::string::npos) {
    return "";
  }
  std::string parent = command.name.substr(0, last);
  std::ranges::replace(parent, ' ', '-');
  return fmt::format(".SH SEE ALSO\n.BR {} (1)\n", escaped(parent));
}

}  // namespace

std::string manual_page(const command_help &command, const std::string &version) {
  const bool is_described = !command.sections.empty() && command.sections.front().title.empty();
  std::string page =
      fmt::format(".TH {} 1 \"\" \"channel {}\" \"Channel lists\"\n.SH NAME\n{} \\- {}\n",
                  escaped(upper(command.page_name())), version, escaped(command.page_name()), escaped(command.summary));
  page += synopsis_of(command);
  if (is_described) {
    page += text_of(command.sections.front());
  }
  page += commands_of(command) + options_of(command);
  for (const help_section &section : std::span(command.sections).subspan(is_described ? 1 : 0)) {
    page += text_of(section);
  }
  return page + see_also(command);
}

}  // namespace chlist
