// The example host on a list of its own: the sample line-up, imported into a scratch directory.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/temp_dir.h"
#include "tool/program.h"

namespace tool_test {

// A user in front of the host, once the first channel is on the screen.
class viewer : public terminal {
 public:
  explicit viewer(const std::vector<std::string> &command, const std::string &prompt = "ALL 1> ") : terminal(command) {
    wait_for(prompt);
  }

  // Types lines whose answers do not matter.
  void type_all(const std::vector<std::string> &lines) {
    for (const std::string &line : lines) {
      answer(line);
    }
  }
};

inline ::testing::AssertionResult begins_with(const std::string &text, const std::string &start) {
  return text.starts_with(start) ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << "it is " << text;
}

class zapper_test : public test_support::store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    ASSERT_EQ(
        run_program({CHLIST_PROGRAM, "import", CHANNEL_SAMPLES_DIR "/channels.conf", "-o", file, "--groups", "none"})
            .exit_code,
        0);
  }

  [[nodiscard]] program_result play(const std::string &name = "list.dat") const {
    return run_program({ZAPPER_PROGRAM, dir.path(), name});
  }

  [[nodiscard]] std::vector<std::string> interactive() const { return {ZAPPER_PROGRAM, dir.path(), "list.dat"}; }

  // The file as the library reads it.
  void load() const {
    const test_support::log_capture quiet(-1);
    const test_support::fd_capture out(STDOUT_FILENO);
    reset_channel_list();
    set_target_dir(dir.path().c_str());
    ASSERT_EQ(load_channel("list.dat", 255), CHANNEL_LIST_VERSION);
  }

  // Writes the list in memory to the file.
  void save() const {
    const test_support::log_capture quiet(-1);
    ASSERT_EQ(save_channel("list.dat"), 1);
  }

  test_support::temp_dir dir;
  std::string file = dir.path() + "list.dat";
};

}  // namespace tool_test
