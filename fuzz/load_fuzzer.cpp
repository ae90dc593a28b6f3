// Loading a channel file, in the file's order or sorted.
#include <channel/channel.h>

#include "file_frame.h"
#include "file_script.h"
#include "list_checks.h"

namespace {

int version_of(const fuzz::bytes &file) {
  return static_cast<std::int16_t>(test_support::get(file, test_support::list_field::version, 2));
}

void load(fuzz::run &run) {
  // 0 keeps the file's order.
  const auto sort_mode = static_cast<std::uint8_t>(run.options.byte() - 1);
  fuzz::put_side_files(run);
  const fuzz::bytes file = contents(fuzz::read_script(run.input));
  const int expected = fuzz::is_whole(file) ? version_of(file) : -1;
  run.files.at("/list.dat") = file;

  run.log();
  fuzz::require(load_channel("list.dat", sort_mode) == expected, "a load returns the version, or -1 of a short file");
  fuzz::require_invariants(fuzz::is_whole(file) ? fuzz::of_any_file : fuzz::promises{}, "after the load");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::run run(data, size);
  load(run);
  fuzz::require_same_when_saved_again(run);
  return 0;
}
