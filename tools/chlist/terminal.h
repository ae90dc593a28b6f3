// What a terminal gets and a file does not: lines that fit it, colours, and how far a long command has come.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace chlist {

// Of standard output as the program began, whatever it is put through afterwards: none when it is no terminal, or when
// that does not say how large it is.
std::optional<std::size_t> columns_of_screen();
std::optional<std::size_t> rows_of_screen();

// The width for texts that are read line after line: of the terminal that standard output is, in bounds.
std::size_t width_of_prose();

enum class style { bold, dim, red, yellow, green };

// The text in a style when the stream is a terminal that takes colours (NO_COLOR is not set), else the text alone.
std::string painted(std::string_view text, style look, std::FILE *stream = stdout);

// Tells on standard error how far a command has come, from one second after its start on, when that is a terminal. What
// it told is gone again when it ends.
class progress {
 public:
  explicit progress(std::string what);
  ~progress();
  progress(const progress &) = delete;
  progress &operator=(const progress &) = delete;

  void reached(std::size_t done, std::size_t total);

 private:
  using clock = std::chrono::steady_clock;

  std::string what_;
  clock::time_point next_;
  bool is_terminal_;
  bool is_shown_ = false;
};

}  // namespace chlist
