// The open file behind the door: whole records only, closed once, and failures told.
#include "channel/persist/file.h"

#include <gtest/gtest.h>
#include <stdio_ext.h>
#include <unistd.h>

#include <array>

#include "faults/stand_in_door.h"
#include "support/temp_dir.h"

namespace {

using channel::persist::file;
using test_support::door_call;
using test_support::stand_in_door;
using events = std::vector<std::string>;

class FileDoor : public ::testing::Test {
 protected:
  [[nodiscard]] std::string path() const { return dir.path() + "file"; }

  test_support::temp_dir dir;
  stand_in_door door;
};

TEST(SystemDoor, IsTheOneThatOperationsGoThrough) { EXPECT_EQ(channel::persist::door, &channel::persist::system_door); }

TEST(SystemDoor, ReadsWritesFlushesAndClosesByTheStandardLibraryAndSyncsByTheSystem) {
  EXPECT_EQ(channel::persist::system_door.read, &std::fread);
  EXPECT_EQ(channel::persist::system_door.write, &std::fwrite);
  EXPECT_EQ(channel::persist::system_door.flush, &std::fflush);
  EXPECT_EQ(channel::persist::system_door.close, &std::fclose);
  EXPECT_EQ(channel::persist::system_door.sync, &::sync);
}

TEST_F(FileDoor, OpensInTheModeThatIsAskedFor) {
  std::array<char, 1024> buffer = {};
  test_support::write_file(path(), "filed before");

  std::FILE *read_only = channel::persist::system_door.open(path().c_str(), "r", buffer);
  ASSERT_NE(read_only, nullptr);
  EXPECT_EQ(std::fputs("more", read_only), EOF);
  EXPECT_EQ(std::fclose(read_only), 0);
  EXPECT_EQ(test_support::read_file(path()), "filed before");

  std::FILE *anew = channel::persist::system_door.open(path().c_str(), "w+", buffer);
  ASSERT_NE(anew, nullptr);
  EXPECT_EQ(std::fclose(anew), 0);
  EXPECT_EQ(test_support::read_file(path()), "");
}

TEST_F(FileDoor, OpensNothingAtAPathWithoutAFile) {
  std::array<char, 1024> buffer = {};

  EXPECT_EQ(channel::persist::system_door.open(path().c_str(), "r", buffer), nullptr);
}

TEST_F(FileDoor, OpensAStreamThatWorksInTheBufferThatItIsLent) {
  std::array<char, 1024> buffer = {};
  std::FILE *stream = channel::persist::system_door.open(path().c_str(), "w+", buffer);
  ASSERT_NE(stream, nullptr);

  std::fputs("filed", stream);

  EXPECT_STREQ(buffer.data(), "filed");
  EXPECT_EQ(std::fclose(stream), 0);
  EXPECT_EQ(test_support::read_file(path()), "filed");
}

TEST_F(FileDoor, OpensAStreamThatTakesNoLockForEachCall) {
  std::array<char, 1024> buffer = {};
  std::FILE *stream = channel::persist::system_door.open(path().c_str(), "w+", buffer);
  ASSERT_NE(stream, nullptr);

  EXPECT_EQ(::__fsetlocking(stream, FSETLOCKING_QUERY), FSETLOCKING_BYCALLER);

  EXPECT_EQ(std::fclose(stream), 0);
}

TEST_F(FileDoor, IsNotKnockedAtForANullPath) {
  const file nothing(nullptr, "r");

  EXPECT_FALSE(nothing.is_open());
  EXPECT_EQ(door.events(), events{});
}

TEST_F(FileDoor, OpensNothingThatIsMissing) {
  const file missing(path().c_str(), "r");

  EXPECT_FALSE(missing.is_open());
}

TEST_F(FileDoor, ClosesAnOpenFileWhenItGoes) {
  { const file target(path().c_str(), "w+"); }

  EXPECT_EQ(door.events(), (events{"open " + path() + " w+", "close"}));
}

TEST_F(FileDoor, ClosesAFileOnce) {
  {
    file target(path().c_str(), "w+");
    EXPECT_TRUE(target.close());
    EXPECT_FALSE(target.is_open());
    EXPECT_TRUE(target.close());
  }

  EXPECT_EQ(door.calls(door_call::close), 1);
}

TEST_F(FileDoor, ClosesNothingThatIsNotOpen) {
  {
    file missing(path().c_str(), "r");
    EXPECT_TRUE(missing.close());
  }

  EXPECT_EQ(door.calls(door_call::close), 0);
}

TEST_F(FileDoor, ReadsWholeRecordsOnly) {
  test_support::write_file(path(), "12345");
  file source(path().c_str(), "r");
  char record[3] = {};

  EXPECT_TRUE(source.read(record, 3));
  EXPECT_EQ(std::string(record, 3), "123");
  EXPECT_FALSE(source.read(record, 3));
}

TEST_F(FileDoor, WritesARecordInOneCall) {
  {
    file target(path().c_str(), "w+");
    EXPECT_TRUE(target.write("record", 6));
    EXPECT_TRUE(target.flush());
  }

  EXPECT_EQ(test_support::read_file(path()), "record");
  EXPECT_EQ(door.events().at(1), "write 6");
}

TEST_F(FileDoor, TellsOfAShortWrite) {
  file target(path().c_str(), "w+");
  door.write_short_at(1);

  EXPECT_FALSE(target.write("record", 6));
}

TEST_F(FileDoor, TellsOfBytesThatDidNotGoOut) {
  file target("/dev/full", "w+");

  EXPECT_TRUE(target.write("record", 6));
  EXPECT_FALSE(target.flush());
}

TEST_F(FileDoor, TellsOfAFailedClose) {
  file target(path().c_str(), "w+");
  door.fail_at(door_call::close, 1);

  EXPECT_FALSE(target.close());
  EXPECT_FALSE(target.is_open());
}

}  // namespace
