// Merging a new scan's file into a list: the list's own file comes first, the scan's behind the step that ends it.
#include <channel/channel.h>

#include "channel/persist/merge.h"
#include "file_frame.h"
#include "file_script.h"
#include "list_checks.h"

namespace {

void merge(fuzz::run &run) {
  const fuzz::bytes scan = contents(fuzz::read_script(run.input));
  run.files.at("/scan.dat") = scan;
  const fuzz::list_snapshot before;

  const int changed = channel::persist::merge_new_list("/scan.dat");

  fuzz::require_invariants(fuzz::of_any_file, "after the merge");
  if (!fuzz::is_whole(scan)) {
    fuzz::require(changed == 0, "a short scan changes nothing");
    fuzz::require(before.is_still_true(), "a short scan leaves the list as it is");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::run run(data, size);
  run.files.at("/list.dat") = contents(fuzz::read_script(run.input));
  load_channel("list.dat", 255);
  run.log();
  merge(run);
  fuzz::reload(run);
  fuzz::require_same_when_saved_again(run);
  return 0;
}
