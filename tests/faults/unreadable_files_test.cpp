// Every reader at places where there is no file to read: directories, empty files, devices, links that lead nowhere.
// They are told like a missing or a short file, and nothing is left open or changed.
#include <channel/channel.h>

#include <algorithm>
#include <filesystem>
#include <functional>

#include "faults/operations.h"
#include "faults/stand_in_door.h"
#include "support/invariants.h"
#include "support/log_capture.h"

namespace {

namespace fs = std::filesystem;

using namespace test_support;

// What stands in place of a file, and the fault that it is like.
struct place {
  std::string name;
  std::function<void(const std::string &path)> make;
  door_call failing;
};

const std::vector<place> &places() {
  static const std::vector<place> all = {
      {"Nothing", [](const std::string & /*path*/) {}, door_call::open},
      {"Directory", [](const std::string &path) { fs::create_directory(path); }, door_call::read},
      {"EmptyFile", [](const std::string &path) { write_file(path, ""); }, door_call::read},
      {"OneByte", [](const std::string &path) { write_file(path, "x"); }, door_call::read},
      {"NullDevice", [](const std::string &path) { fs::create_symlink("/dev/null", path); }, door_call::read},
      {"LinkToNothing", [](const std::string &path) { fs::create_symlink("missing", path); }, door_call::open},
      {"LinkToItself", [](const std::string &path) { fs::create_symlink(path, path); }, door_call::open},
      {"LinkBelowAFile", [](const std::string &path) { fs::create_symlink("own.dat/file", path); }, door_call::open},
  };
  return all;
}

class UnreadableFile : public file_test, public ::testing::WithParamInterface<std::tuple<operation, place>> {
 protected:
  [[nodiscard]] static const operation &tested() { return std::get<0>(GetParam()); }
  [[nodiscard]] static const place &stand_in() { return std::get<1>(GetParam()); }

  // The files that an operation opens, told by a run that opens none of them.
  [[nodiscard]] std::vector<std::string> paths() const {
    const store_state before = state_of_store();
    documented_run documented({.nth = 1, .kind = door_call::open, .lasts = true}, before, before, {});
    tested().document(documented, own);
    std::vector<std::string> found;
    for (const std::string &call : documented.calls) {
      const std::string opened = call.substr(call.find(' ') + 1, call.rfind(' ') - call.find(' ') - 1);
      found.push_back(opened == receiver::place_of_new_lists ? own.path(receiver::new_name) : opened);
    }
    return found;
  }

  const receiver own;
};

TEST_P(UnreadableFile, IsToldLikeAFault) {
  own.start();
  for (const std::string &path : paths()) {
    fs::remove(path);
    stand_in().make(path);
  }
  const store_state before = state_of_store();
  documented_run documented({.nth = 1, .kind = stand_in().failing, .lasts = true}, before, before, {});
  const int result = tested().document(documented, own);
  {
    const log_capture log(1);
    stand_in_door door;
    door.redirect(receiver::place_of_new_lists, own.path(receiver::new_name));

    EXPECT_EQ(tested().run(own), result);

    EXPECT_EQ(log.writes(), documented.log);
    EXPECT_EQ(door.events(), documented.calls);
    EXPECT_EQ(door.open_files(), 0);
  }
  EXPECT_TRUE(state_of_store() == documented.store);
  EXPECT_EQ(broken_invariant(), "");
}

std::vector<operation> reading_operations() {
  std::vector<operation> reading;
  std::ranges::copy_if(operations(), std::back_inserter(reading),
                       [](const operation &each) { return each.output.empty() && each.name != "load_channel_sorted"; });
  return reading;
}

INSTANTIATE_TEST_SUITE_P(Of, UnreadableFile,
                         ::testing::Combine(::testing::ValuesIn(reading_operations()), ::testing::ValuesIn(places())),
                         [](const auto &tested) {
                           return std::get<0>(tested.param).name + "_" + std::get<1>(tested.param).name;
                         });

}  // namespace
