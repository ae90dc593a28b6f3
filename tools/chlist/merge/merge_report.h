// The report of a merge as text for people.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "chlist/merge/merge_outcome.h"

namespace chlist {

struct merge_inputs {
  std::filesystem::path list;
  std::filesystem::path scan;
};

// What somebody is to look at, a message for each; of a kind the first ten unless all are asked for.
std::vector<std::string> findings_of(const merge_outcome &outcome, const merge_inputs &inputs, bool shows_all);

// made: what the merged list came into, or would.
void print_changes(std::FILE *to, const std::string &made, const merge_outcome &outcome);

}  // namespace chlist
