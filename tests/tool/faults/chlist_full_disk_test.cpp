// chlist with every output on a disk that has too little room, down to none: the earlier output stays, and nothing
// else.
#include "support/small_disk.h"
#include "tool/faults/commands.h"

namespace {

using test_support::read_file;
using test_support::small_disk;
using test_support::write_file;
using tool_test::command;
using tool_test::file_set;
using tool_test::program_result;
using tool_test::run_program;

class ChlistFullDisk : public tool_test::commands_test {
 protected:
  // With an output of one block, and so much room behind it.
  void prepare(std::size_t room) const {
    disk.leave(room + small_disk::block);
    write_file(output(), "before");
  }

  [[nodiscard]] std::string output() const { return disk.path() + "out.dat"; }

  [[nodiscard]] program_result run_onto_disk() const {
    std::vector<std::string> arguments = GetParam().arguments;
    arguments.insert(arguments.begin(), CHLIST_PROGRAM);
    arguments.push_back(output());
    return run_program(arguments, dir.path());
  }

  const small_disk disk;
};

TEST_P(ChlistFullDisk, KeepsTheEarlierOutputUntilTheNewOneFits) {
  if (!disk.is_mounted()) {
    GTEST_SKIP() << "no disk can be mounted here";
  }
  constexpr std::size_t blocks_of_a_list = 113;
  for (const std::size_t blocks :
       {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{57}, blocks_of_a_list - 2, blocks_of_a_list - 1}) {
    prepare(blocks * small_disk::block);
    const file_set earlier = tool_test::files_in(disk.path());

    const program_result result = run_onto_disk();

    EXPECT_EQ(result.exit_code, 2) << blocks;
    EXPECT_EQ(result.err, message(GetParam().arguments, output() + ": the channel file could not be written"));
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(tool_test::files_in(disk.path()) == earlier);
    EXPECT_TRUE(folder() == before);
  }
  const bool has_companion = GetParam().name == "import";
  prepare((blocks_of_a_list + (has_companion ? 1 : 0)) * small_disk::block);
  EXPECT_EQ(run_onto_disk().exit_code, 0);
  EXPECT_GT(read_file(output()).size(), test_support::list_size);
}

// The signal that tells of it would end the program and leave what it had begun.
TEST_P(ChlistFullDisk, ALimitOfTheSizeOfFilesIsNoOtherThanAFullDisk) {
  std::string line = "ulimit -f 10; exec " CHLIST_PROGRAM;
  for (const std::string &argument : GetParam().arguments) {
    line += ' ' + argument;
  }

  const program_result result = run_program({"/bin/sh", "-c", line + " out.dat"}, dir.path());

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_TRUE(result.err.ends_with("out.dat: the channel file could not be written\n")) << result.err;
  EXPECT_EQ(result.out, "");
  EXPECT_TRUE(folder() == before);
}

INSTANTIATE_TEST_SUITE_P(Of, ChlistFullDisk,
                         ::testing::Values(command{"import", {"import", "channels.conf", "-o"}},
                                           command{"convert", {"convert", "old.dat"}},
                                           command{"merge", {"merge", "list.dat", "scan.dat", "--no-backup", "-o"}}),
                         tool_test::name_of_command);

}  // namespace
