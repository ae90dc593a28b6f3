// The single fields of a VDR service line: numbers, PIDs and streams, source, frequency, parameters and CA ids. Every
// function throws bad_line, whose reason names the field, when its text cannot be read.
#pragma once

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "chlist/exchange/vdr_channels_conf.h"

namespace chlist {

struct bad_line {
  explicit bad_line(std::string why) : reason(std::move(why)) {}
  std::string reason;
};

// What stands before the first separator, and what stands behind it if there is one.
std::pair<std::string_view, std::optional<std::string_view>> split_at_first(std::string_view text, char separator);

// Text of the file for a message: in quotes, short, and harmless on a terminal.
std::string quoted(std::string_view text);

// A name as it is meant: '|' stands for ':', which separates fields.
std::string readable_name(std::string_view text);

// A number that is all of a text, without sign, from least to most.
template <class Number>
Number read_number(std::string_view text, std::string_view what, Number least = 0,
                   Number most = std::numeric_limits<Number>::max(), int base = 10) {
  Number value{};
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  if (stop != end || error == std::errc::invalid_argument || text.front() == '-') {
    throw bad_line(std::string(what) + " " + quoted(text) + " is not a number");
  }
  if (error != std::errc() || value < least || value > most) {
    throw bad_line(std::string(what) + " " + quoted(text) + " is not within " + std::to_string(least) + ".." +
                   std::to_string(most));
  }
  return value;
}

std::uint16_t read_pid(std::string_view text, std::string_view what);

// "pid[=language][@type][,...]"; streams with PID 0 are left out.
std::vector<vdr_stream> read_streams(std::string_view text, std::string_view what);

// "0" or hexadecimal ids; ids of 0 are left out.
std::vector<std::uint16_t> read_ca_ids(std::string_view text);

// A letter, for satellites (S) followed by the position: "S19.2E". Other letters may have one too.
std::string read_source(std::string_view text);

// Satellite frequencies are in MHz; others in MHz, kHz or Hz, told apart by their size.
std::uint32_t read_frequency_khz(std::string_view text, bool is_satellite);

struct vdr_parameters {
  bool is_vertical = false;
  std::string modulation;
};

// Letters, each with a number or without; H, V, L or R is the polarisation, which satellites cannot do without.
vdr_parameters read_parameters(std::string_view text, bool is_satellite);

}  // namespace chlist
