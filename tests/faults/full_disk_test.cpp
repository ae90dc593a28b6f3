// Saving to a disk with every amount of room, from none until the file fits: a failure is told, and the list in memory
// stays as it is.
#include <channel/channel.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "faults/receiver.h"
#include "faults/stand_in_door.h"
#include "support/log_capture.h"
#include "support/small_disk.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

// An operation that writes a file: what it may say when there is no room, depending on how much goes out at a time.
struct saving {
  std::string name;
  int (*save)();
  std::string file;
  std::size_t size;
  std::string prefix;
  std::set<std::string> complaints;
  bool goes_on;  // writes what is left after a failure, which may then fail as well
};

constexpr std::size_t services = 200;
constexpr std::size_t networks = 2;

std::vector<saving> savings() {
  const std::size_t records = networks * (network_size + transponder_size) + services * service_size;
  return {{"List",
           [] { return save_channel("list.dat"); },
           "list.dat",
           list_size + records,
           "ERROR: save_channel_internal:# Fail to ",
           {"write the channel_list to ", "write the tp_ch_info to ", "write the rch_info to "},
           false},
          {"Genres",
           [] { return save_group_list(GROUP_GENRE); },
           "genre.dat\n",
           2 + MAX_GENRE * group_size,
           "ERROR: save_group_list:# Fail to ",
           {"write the genre list to "},
           true},
          {"Countries",
           [] { return save_group_list(GROUP_COUNTRY); },
           "country.dat",
           2 + MAX_COUNTRY * group_size,
           "ERROR: save_group_list:# Fail to ",
           {"write the genre list to "},
           true}};
}

class FullDisk : public file_test, public ::testing::WithParamInterface<saving> {
 protected:
  void SetUp() override {
    file_test::SetUp();
    channel_file file;
    for (std::size_t i = 0; i < services; ++i) {
      const auto network = static_cast<std::uint8_t>(i < services / networks ? 1 : 2);
      const service_data service = {
          .net_index = network, .network_id = network, .service_id = static_cast<std::uint16_t>(i + 1)};
      file.service(service).entry(VIEW_ALL, service, static_cast<int>(i) + 1);
    }
    load(file.group(GROUP_GENRE, 1, "News").group(GROUP_COUNTRY, 1, "Malta").data);
    whole = GetParam().name == "List" ? file.data : bytes();
  }

  // Saves below a directory; true when it is told to have succeeded.
  bool save_in(const std::string &directory) {
    set_target_dir(directory.c_str());
    const bytes before = list_in_memory();
    const log_capture log(1);
    const stand_in_door without_sync;

    const int result = GetParam().save();

    EXPECT_TRUE(list_in_memory() == before);
    EXPECT_EQ(without_sync.events().back(), "sync");
    EXPECT_EQ(without_sync.open_files(), 0);
    expect_lines(log.writes(), directory + GetParam().file, result == 0);
    return result == 1;
  }

  static void expect_lines(const lines &said, const std::string &path, bool failed) {
    EXPECT_EQ(!said.empty(), failed);
    EXPECT_TRUE(said.size() <= 1 || GetParam().goes_on);
    for (const std::string &line : said) {
      EXPECT_TRUE(std::ranges::any_of(GetParam().complaints, [&](const std::string &complaint) {
        return line == GetParam().prefix + complaint + "'" + path + "'\n";
      })) << line;
    }
  }

  bytes whole;
};

TEST_P(FullDisk, IsToldUntilTheFileFits) {
  const small_disk disk;
  if (!disk.is_mounted()) {
    GTEST_SKIP() << "no disk can be mounted here";
  }
  std::size_t room = 0;
  for (disk.leave(room); !save_in(disk.path()); disk.leave(room)) {
    room += small_disk::block;
    ASSERT_LE(room, small_disk::size);
  }

  EXPECT_EQ(room, (GetParam().size + small_disk::block - 1) / small_disk::block * small_disk::block);
  const bytes saved = read_file(disk.path() + GetParam().file);
  EXPECT_EQ(saved.size(), GetParam().size);
  EXPECT_TRUE(whole.empty() || saved == whole);
}

// A save in place gives up the earlier file for room.
TEST_P(FullDisk, HasTheRoomOfTheFileThatIsReplaced) {
  const small_disk disk;
  if (!disk.is_mounted()) {
    GTEST_SKIP() << "no disk can be mounted here";
  }
  disk.leave((GetParam().size + small_disk::block - 1) / small_disk::block * small_disk::block);

  EXPECT_TRUE(save_in(disk.path()));
  EXPECT_TRUE(save_in(disk.path()));
}

TEST_P(FullDisk, WithoutANameLeftOpensNoFile) {
  const small_disk disk(1);
  if (!disk.is_mounted()) {
    GTEST_SKIP() << "no disk can be mounted here";
  }
  set_target_dir(disk.path().c_str());
  const log_capture log(1);

  EXPECT_EQ(GetParam().save(), 0);

  EXPECT_EQ(log.writes(), lines{GetParam().prefix + "open '" + disk.path() + GetParam().file + "'\n"});
}

TEST_P(FullDisk, InPlaceOfTheFileIsTold) {
  std::filesystem::create_symlink("/dev/full", path(GetParam().file + "link"));
  std::filesystem::rename(path(GetParam().file + "link"), path(GetParam().file));

  EXPECT_FALSE(save_in(dir.path()));
}

INSTANTIATE_TEST_SUITE_P(With, FullDisk, ::testing::ValuesIn(savings()),
                         [](const auto &tested) { return tested.param.name; });

}  // namespace
