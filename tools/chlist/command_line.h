// The road from what is typed to the command that runs. Only command_line.cpp knows the library that parses.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "chlist/command.h"

namespace chlist {

// Parses, and runs the command that is named. Gives its exit code. What is wrong, with the line or with what it asks
// for, is explained on standard error, or, when JSON is asked for, by a document on standard output. A command that
// is called without one of those below it shows its help, and the program alone a short one.
int run_command_line(const command &program, int argc, const char *const *argv);

// The help of the command that is named by words: {"fav", "new"}. Throws when there is none, and says
// where to look.
int show_help(const command &program, const std::vector<std::string> &words);

// Parses the words of one command again and again, to where its options point.
class line_parser {
 public:
  explicit line_parser(command row);
  ~line_parser();

  // Throws std::runtime_error that says what is wrong with them.
  void parse(std::vector<std::string> words);

 private:
  struct parts;
  std::unique_ptr<parts> parts_;
};

}  // namespace chlist
