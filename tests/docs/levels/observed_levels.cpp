// Writes into a file, for each exported function, the log levels at which it was seen to write: with every argument at
// its extremes, on an empty list, a small one and a destroyed one. interface_docs.py compares them with the headers.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <span>
#include <string>

#include "support/exported_calls.h"
#include "support/extreme_lists.h"
#include "support/log_capture.h"
#include "support/temp_dir.h"

namespace {

constexpr std::array every_base = {extremes::base::one, extremes::base::zero, extremes::base::lowest,
                                   extremes::base::highest};
constexpr std::array every_list = {extremes::make_nothing, extremes::make_small, extremes::make_destroyed};

// Every entry, since a few lines are gated by those of other modules.
void set_levels(int level) { std::fill(std::begin(verbosity_map), std::end(verbosity_map), level); }

void make_fresh(void (*make)()) {
  set_levels(-1);
  reset_channel_list();
  init_vindex(VIEW_WORK);
  init_return_channel();
  set_limited_channel_flag(0);
  make();
}

// A stand-in of a host empties the list before it is replaced; what that says is not the function's.
bool is_of_host(const extremes::exported_call &called, const std::string &line) {
  return called.name != "reset_channel_list" && line.find(" reset_channel_list:") != std::string::npos;
}

std::size_t lines_written(const extremes::exported_call &called, void (*make)(), int level) {
  make_fresh(make);
  const test_support::fd_capture output(STDOUT_FILENO);
  const test_support::log_capture log;
  set_levels(level);
  called.run(every_base);
  const std::string text = log.raw();
  const std::string colour = "\033[32m";
  std::size_t lines = 0;
  for (std::size_t at = text.find(colour), next = 0; at != std::string::npos; at = next) {
    next = text.find(colour, at + 1);
    lines += is_of_host(called, text.substr(at, next - at)) ? 0 : 1;
  }
  return lines;
}

std::string levels_of(const extremes::exported_call &called) {
  constexpr int highest = 5;
  std::string levels;
  for (int level = 0; level <= highest; ++level) {
    const bool writes = std::ranges::any_of(every_list, [&](void (*make)()) {
      return lines_written(called, make, level) > lines_written(called, make, level - 1);
    });
    levels += writes ? " " + std::to_string(level) : "";
  }
  return levels;
}

}  // namespace

int main(int argc, char **argv) {
  const test_support::temp_dir folder;
  set_target_dir(folder.path().c_str());
  std::FILE *out = argc == 2 ? std::fopen(argv[1], "w") : nullptr;
  if (out == nullptr) {
    return 2;
  }
  for (const extremes::exported_call &called : extremes::exported_calls()) {
    std::fprintf(out, "%s%s\n", called.name.c_str(), levels_of(called).c_str());
  }
  make_fresh(extremes::make_nothing);
  return std::fclose(out) == 0 ? 0 : 1;
}
