// Writes roff.
#include "chlist/manual/manual_page.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

#include "chlist/text/shown.h"


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

std::string section(const std::string &title, const std::string &text) {
  return text.empty() ? "" : fmt::format(".SH {}\n{}", escaped(upper(title)), text);
}

std::string text_of(const std::vector<term> &terms) {
  std::string text;
  for (const term &each : terms) {
    text += fmt::format(".TP\n.B {}\n{}\n", escaped(each.word), escaped(each.meaning));
  }
  return text;
}

std::string text_of(const std::vector<std::string> &paragraphs) {
  std::string text;
  for (const std::string &each : paragraphs) {
    text += fmt::format(".PP\n{}\n", escaped(each));
  }
  return text;
}

std::string text_of(const option &shown) {
  std::string tag;
  for (const std::string &name : shown.each_name()) {
    tag += fmt::format("{}\\fB{}\\fR", tag.empty() ? "" : ", ", escaped(name));
  }
  if (!shown.is_flag() && !shown.is_argument()) {
    tag += fmt::format(" \\fI{}\\fR", escaped(shown.value_name()));
  }
  return fmt::format(".TP\n{}\n{}\n", tag, escaped(shown.explanation()));
}

// Names of what is typed as it stands are bold, those of what it stands for slanted.
std::string synopsis_of(const called_command &called) {
  std::string text = fmt::format(".SH SYNOPSIS\n.B {}\n[\\fIoptions\\fR]", escaped(called.line));
  for (const option &each : called.row->all_options()) {
    const std::string value = fmt::format("\\fI{}\\fR", escaped(each.value_name()));
    if (each.is_argument()) {
      text += ' ' + (each.is_required ? value : '[' + value + ']') + (each.takes_several() ? "..." : "");
    } else if (each.is_required) {
      text += fmt::format(" \\fB{}\\fR {}", escaped(each.each_name().front()), value);
    }
  }
  return text + (called.row->commands.empty() ? "\n" : " \\fIcommand\\fR ...\n");
}

std::string commands_below(const called_command &called) {
  std::string text;
  std::string topic;
  for (const command &each : called.row->commands) {
    if (each.topic != std::exchange(topic, each.topic)) {
      text += fmt::format(".SS {}\n", escaped(each.topic));
    }
    text += fmt::format(".TP\n\\fB{}\\fR(1)\n{}\n", escaped(page_name(called.line + ' ' + each.name)),
                        escaped(each.summary));
  }
  return text;
}

// Arguments come first.
std::string options_of(const command &row) {
  std::string arguments;
  std::string options;
  for (const option &each : row.all_options()) {
    (each.is_argument() ? arguments : options) += text_of(each);
  }
  return arguments + options;
}

std::string examples_of(const command &row) {
  return row.examples.empty() ? ""
                              : fmt::format(".PP\n.RS 4\n.nf\n{}\n.fi\n.RE\n", escaped(joined(row.examples, "\n")));
}

std::string see_also(const std::string &line) {
  const std::size_t last = line.rfind(' ');
  return last == std::string::npos ? "" : fmt::format(".BR {} (1)\n", escaped(page_name(line.substr(0, last))));
}

}  // namespace

std::string page_name(std::string line) {
  std::ranges::replace(line, ' ', '-');
  return line;
}

std::string manual_page(const called_command &called, const std::string &version) {
  const command &row = *called.row;
  const std::string name = page_name(called.line);
  std::string page = fmt::format(".TH {} 1 \"\" \"channel {}\" \"Channel lists\"\n", escaped(upper(name)), version);
  page += section("Name", fmt::format("{} \\- {}\n", escaped(name), escaped(row.summary)));
  page += synopsis_of(called) + section("Description", text_of(row.details));
  page += section("Commands", commands_below(called)) + section("Options", options_of(row));
  for (const term_section &each : row.sections) {
    page += section(each.title, text_of(each.terms));
  }
  return page + section("Exit status", text_of(row.exit_codes)) + section("Examples", examples_of(row)) +
         section("See also", see_also(called.line));
}

}  // namespace chlist
