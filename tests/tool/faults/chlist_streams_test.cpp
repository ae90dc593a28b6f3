// chlist with standard streams that its caller closed, or that are full: no file takes in what is meant for a stream,
// and the exit code says what was done.
#include "tool/faults/commands.h"

namespace {

namespace fs = std::filesystem;

using test_support::channel_file;
using tool_test::command;
using tool_test::file_set;
using tool_test::program_result;
using tool_test::run_program;

class ChlistStreams : public tool_test::commands_test {
 protected:
  [[nodiscard]] program_result run_with(const std::string &redirections) const {
    std::string line = "exec " CHLIST_PROGRAM " --log-level 5";
    for (const std::string &argument : GetParam().arguments) {
      line += ' ' + argument;
    }
    return run_program({"/bin/sh", "-c", line + redirections}, dir.path());
  }
};

TEST_P(ChlistStreams, NeverMeetAFile) {
  ASSERT_EQ(run().exit_code, 0);
  const file_set after = folder();
  for (const std::string in : {"", " <&-"}) {
    for (const std::string out : {"", " >&-", " >/dev/full"}) {
      for (const std::string err : {"", " 2>&-", " 2>/dev/full"}) {
        put(before, folder());

        const program_result result = run_with(in + out + err);

        SCOPED_TRACE(in + out + err);
        EXPECT_TRUE(folder() == after);
        EXPECT_EQ(result.exit_code, out.empty() ? 0 : 2);
        EXPECT_TRUE(out.empty() || result.out.empty());
      }
    }
  }
}

TEST_P(ChlistStreams, MayBeFullWhenAFailureIsTold) {
  for (const char *name : {"list.dat", "old.dat", "channels.conf"}) {
    fs::remove(path(name));
  }
  const file_set left = folder();

  for (const std::string err : {" 2>&-", " 2>/dev/full"}) {
    EXPECT_EQ(run_with(err).exit_code, 2);
    EXPECT_TRUE(folder() == left);
  }
}

INSTANTIATE_TEST_SUITE_P(Of, ChlistStreams,
                         ::testing::Values(command{"import", {"import", "channels.conf", "-o", "out.dat"}},
                                           command{"convert", {"convert", "old.dat", "out.dat"}},
                                           command{"merge", {"merge", "list.dat", "scan.dat", "-o", "list.dat"}}),
                         tool_test::name_of_command);

INSTANTIATE_TEST_SUITE_P(OfReading, ChlistStreams,
                         ::testing::Values(command{"info", {"info", "list.dat"}}, command{"list", {"list", "list.dat"}},
                                           command{"show", {"show", "list.dat", "News"}},
                                           command{"diff", {"diff", "list.dat", "list.dat"}}),
                         tool_test::name_of_command);

TEST(ChlistHelp, ThatCannotBeWrittenIsAFailure) {
  for (const std::string command : {" --help", " merge --help", " fav --help"}) {
    const program_result result = run_program({"/bin/sh", "-c", "exec " CHLIST_PROGRAM + command + " >/dev/full"});

    EXPECT_EQ(result.exit_code, 2) << command;
    EXPECT_EQ(result.err, "chlist: standard output: No space left on device\n") << command;
  }
}

TEST(ChlistVersion, IsThatOfTheProject) {
  const program_result result = run_program({CHLIST_PROGRAM, "--version"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.out, "chlist " CHANNEL_VERSION "\n");
}

// A report that is longer than what the stream keeps fails while it is printed, not when it ends.
using ChlistReport = test_support::file_test;

TEST_F(ChlistReport, OfAnyLengthThatCannotBeWrittenIsAFailure) {
  channel_file scan;
  for (std::uint16_t id = 1; id <= 500; ++id) {
    scan.service({.service_id = id});
  }
  test_support::write_file(path("scan.dat"), scan.data);
  test_support::write_file(path("list.dat"), channel_file().data);
  for (const std::string format : {"", " --json"}) {
    const std::string line = "exec " CHLIST_PROGRAM " merge list.dat scan.dat --dry-run" + format + " >/dev/full";

    const program_result result = run_program({"/bin/sh", "-c", line}, dir.path());

    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: merge: standard output: No space left on device\n");
  }
}

}  // namespace
