// The road of the commands that make a channel file of one that no receiver reads as it stands: the output is not the
// input, the list is made in memory and saved, and only then it is reported.
#pragma once

#include <filesystem>

#include "chlist/exit_codes.h"
#include "chlist/files/distinct_files.h"
#include "chlist/files/list_file.h"
#include "chlist/report.h"

namespace chlist {

struct new_list_options {
  std::filesystem::path input;
  std::filesystem::path output;
  bool shows_all = false;  // every finding, not only the first ten of each kind
  bool as_json = false;
};

template <class Result>
struct new_list_road {
  Result (*make)(const std::filesystem::path &input);
  json (*to_json)(const new_list_options &options, const Result &result);
  void (*print)(const new_list_options &options, const Result &result);
};

// Gives the exit code.
template <class Result>
int make_new_list(const new_list_options &options, const new_list_road<Result> &road) {
  must_differ(options.input, options.output);
  const Result result = road.make(options.input);
  save_list_as(options.output);
  print_report([&] {
    if (options.as_json) {
      print_json(road.to_json(options, result));
    } else {
      road.print(options, result);
    }
  });
  return result.has_findings() ? exit_findings : exit_done;
}

}  // namespace chlist
