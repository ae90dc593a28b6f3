// Inputs that are made by hand: each reaches, or comes close to, something that chance alone would take long to find.
#pragma once

#include <string>
#include <vector>

namespace fuzz {

struct seed {
  std::string harness;
  std::string name;
  std::string input;
};

// Channel files, for the harnesses that read one: the list's own, and those of earlier versions.
std::vector<seed> file_seeds();
// Pairs of a list and a new scan.
std::vector<seed> scan_seeds();
// Side files of the two group tables.
std::vector<seed> group_seeds();
// Sequences of calls.
std::vector<seed> call_seeds();
// Lines of a channels.conf.
std::vector<seed> text_seeds();
// Captures of transport streams.
std::vector<seed> stream_seeds();

}  // namespace fuzz
