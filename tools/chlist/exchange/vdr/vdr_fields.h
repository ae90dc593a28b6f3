// The single fields of a VDR service line: streams, source, frequency, parameters and CA ids. Every function throws
// bad_line, whose reason names the field, when its text cannot be read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/vdr/vdr_channels_conf.h"

namespace chlist {

// A name as it is meant: '|' stands for ':', which separates fields.
std::string readable_name(std::string_view text);

// "pid[=language][@type][,...]"; streams with PID 0 are left out.
std::vector<vdr_stream> read_streams(std::string_view text, std::string_view what);

// "0" or hexadecimal ids; ids of 0 are left out.
std::vector<std::uint16_t> read_ca_ids(std::string_view text);

// A letter, for satellites (S) followed by the position: "S19.2E". Other letters may have one too.
std::string read_source(std::string_view text);

// The same as lists have it that VDR does not take any more: "S" without a position, and in the oldest the number of
// what the DiSEqC switch is set to, "S#1", which is 0 on cable. Frequencies tell these apart.
std::string read_source_of_any_age(std::string_view text, std::string_view frequency);

// Satellite frequencies are in MHz; others in MHz, kHz or Hz, told apart by their size.
std::uint32_t read_frequency_khz(std::string_view text, bool is_satellite);

struct vdr_parameters {
  bool is_vertical = false;
  bool is_circular = false;
  std::string modulation;
};

// Letters, each with a number or without; H, V, L or R is the polarisation, which satellites cannot do without.
vdr_parameters read_parameters(std::string_view text, bool is_satellite);

}  // namespace chlist
