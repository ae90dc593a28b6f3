// The parts that inputs are made of.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "file_script.h"
#include "harness.h"

namespace fuzz {

inline std::string number(std::size_t width, std::int64_t value) {
  bytes low_first(width, '\0');
  for (std::size_t i = 0; i < width; ++i) {
    low_first[i] = static_cast<char>(value >> 8 * i & 0xFF);
  }
  return low_first;
}

inline std::string u8(std::int64_t value) { return number(1, value); }
inline std::string u16(std::int64_t value) { return number(2, value); }
inline std::string u24(std::int64_t value) { return number(3, value); }

// A whole step: what is left of it is zero.
inline std::string step(std::string made) {
  made.resize(step_size, '\0');
  return made;
}

inline std::string step(file_step kind, const std::string &operands) {
  return step(u8(static_cast<std::int64_t>(kind)) + operands);
}

// The first step of an input; log levels are chosen from -1, 0, 1, 2, 3, 5.
inline std::string options(int log_level, const std::string &others = {}) { return step(u8(log_level) + others); }

}  // namespace fuzz
