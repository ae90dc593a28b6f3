// The road of the commands that make a channel file of one that no receiver reads as it stands: the output is not the
// input, the list is made in memory and saved, and only then it is reported.
#pragma once

#include <filesystem>

#include "chlist/exit_codes.h"
#include "chlist/files/distinct_files.h"
#include "chlist/files/edit_lock.h"
#include "chlist/files/kept_in_step.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/messages.h"
#include "chlist/report.h"

namespace chlist {

struct new_list_options {
  std::filesystem::path input;
  std::filesystem::path output;
  bool shows_all = false;  // every finding, not only the first ten of each kind
  bool as_json = false;
};

template <class Options, class Result>
struct new_list_road {
  Result (*make)(const Options &options);
  json (*to_json)(const Options &options, const Result &result);
  void (*print)(const Options &options, const Result &result);
};

// Gives the exit code.
template <class Options, class Result>
int make_new_list(const Options &options, const new_list_road<Options, Result> &road) {
  must_differ(options.input, options.output);
  const edit_lock lock(options.output);
  const edited_companion beside(options.input);
  const Result result = road.make(options);
  save_list_with(options.output, beside.beside(options.output, {}, line_up_in_memory()));
  // A damaged file is another one than its companion was written with: that is no news.
  if (!beside.is_readable()) {
    print_message(beside.note());
  }
  print_report([&] {
    if (options.as_json) {
      print_json(road.to_json(options, result));
    } else {
      road.print(options, result);
    }
  });
  return result.has_findings() || !beside.is_readable() ? exit_findings : exit_done;
}

}  // namespace chlist
