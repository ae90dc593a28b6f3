// Runs the programs under test: to their end with their output caught, or on a pseudo terminal, line by line.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tool_test {

struct program_result {
  int exit_code = -1;  // -1 when a signal ended the program
  std::string out;
  std::string err;

  friend bool operator==(const program_result &, const program_result &) = default;
};

// Standard input is empty and no terminal. directory: where the program runs; empty for the test's own.
program_result run_program(const std::vector<std::string> &command, const std::string &directory = "");

// What gives an exit code, in a fork of the test: a run costs a fraction of what loading a program takes.
program_result run_in_fork(const std::function<int()> &program, const std::string &directory);

// A program whose standard input, output and error are a terminal.
class terminal {
 public:
  explicit terminal(const std::vector<std::string> &command);
  // With so many rows and columns.
  terminal(const std::vector<std::string> &command, std::uint16_t rows, std::uint16_t columns);
  ~terminal();
  terminal(const terminal &) = delete;
  terminal &operator=(const terminal &) = delete;

  // Waits for a text and returns what came up to its end; fails the test when it does not come within ten seconds.
  std::string wait_for(const std::string &text);
  void type(const std::string &text) const;
  // Types a line and waits for the next prompt. Returns what came after the line's echo, with plain line ends.
  std::string answer(const std::string &line);
  // Waits for the program's end.
  int exit_code();
  // What came that nobody waited for.
  [[nodiscard]] const std::string &unread() const { return unread_; }

 private:
  bool read_more();

  int fd_ = -1;
  pid_t pid_ = -1;
  std::string unread_;
};

std::vector<std::string> lines_of(const std::string &text);
bool has_line(const std::string &text, const std::string &line);

}  // namespace tool_test
