// The reader leaves the list in memory alone; the repair replaces it.
#include "earlier_version.h"

#include <channel/channel.h>

#include "file_frame.h"
#include "file_script.h"
#include "list_checks.h"
#include "support/extreme_lists.h"

namespace fuzz {
namespace {

constexpr char old_path[] = "/old.dat";

void read(const test_support::old_version &version, bool is_whole_file) {
  const list_snapshot before;

  const test_support::owned_list list = test_support::read_old(version, old_path);

  require((list != nullptr) == is_whole_file, "a reader gives the list of a whole file");
  require(before.is_still_true(), "a reader leaves the list in memory");
  require_invariants({}, "after reading beside the list");
}

void repair(const test_support::old_version &version, bool is_whole_file) {
  reset_channel_list();
  require(repair_channel(version.number, old_path) == (is_whole_file ? 0 : -1),
          "a repair returns 0, or -1 of a short file");
  require_invariants(of_any_file, "after the repair");
}

}  // namespace

void read_and_repair(int number, const std::uint8_t *data, std::size_t size) {
  const test_support::old_version &version = test_support::old_version_of(number);
  run run(data, size);
  put_side_files(run);
  run.files.at(old_path) = contents(read_script(run.input), version);
  const bool is_whole_file = is_whole(run.files.at(old_path), version.extra);

  extremes::make_small();
  run.log();
  read(version, is_whole_file);
  repair(version, is_whole_file);
  reload(run);
  require_same_when_saved_again(run);
}

}  // namespace fuzz
