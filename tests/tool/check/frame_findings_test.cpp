// Findings in the frame of a file: its version, records that are missing or cut, and bytes behind the last one. Each
// with its place, its severity, its text and what it leads to.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "tool/check/findings_host.h"

namespace {

using namespace findings_test;

constexpr const char *load_fails =
    "a load fails with -1: the receiver starts with an empty list and the group names of its side files";

using CheckFrame = test_support::store_test;

TEST_F(CheckFrame, NothingIsFoundInASoundFile) {
  const file_findings result = check(sound_file().data);

  EXPECT_EQ(result.findings, findings{});
  EXPECT_EQ(result.version, 10);
  EXPECT_EQ(result.networks, 1U);
  EXPECT_EQ(result.transponders, 1U);
  EXPECT_EQ(result.services, 2U);
  EXPECT_TRUE(result.is_sound());
}

TEST_F(CheckFrame, TheListInMemoryIsEmptyAfterwards) {
  check(sound_file().data);

  EXPECT_EQ(get_channel_list()->network_num, 0);
  EXPECT_EQ(get_channel_list_number(), 0);
}

TEST_F(CheckFrame, AFileShorterThanTheListEndsThere) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{2}, test_support::list_size - 1}) {
    const bytes file = sound_file().data.substr(0, size);
    const finding expected = {
        size, severity::error, "short-file",
        "the file ends after " + std::to_string(size) + " of the 460032 bytes of the list's own record", load_fails};

    const findings found = check(file).findings;

    EXPECT_TRUE(std::ranges::find(found, expected) != found.end()) << size;
  }
}

TEST_F(CheckFrame, AFileWithoutRecordsIsSound) {
  const file_findings result = check(channel_file().data);

  EXPECT_EQ(result.findings, (findings{{list_field::vch_type, severity::note, "empty-list", "the ALL view is empty",
                                        "the receiver shows no service"}}));
  EXPECT_TRUE(result.is_sound());
}

TEST_F(CheckFrame, ARecordThatIsMissingOrCutIsNamed) {
  const bytes file = sound_file().data;
  struct cut {
    std::size_t size;
    std::size_t offset;
    std::string what;
  };
  const cut cuts[] = {
      {first_network, first_network, "network 1 of 1 is not there: the file ends in front of it"},
      {first_network + 1, first_network, "network 1 of 1 is not there: the file ends after 1 of its 416 bytes"},
      {first_transponder, first_transponder, "transponder 1 of 1 is not there: the file ends in front of it"},
      {first_service - 1, first_transponder,
       "transponder 1 of 1 is not there: the file ends after 335 of its 336 bytes"},
      {second_service, second_service, "service 2 of 2 is not there: the file ends in front of it"},
      {second_service + 311, second_service, "service 2 of 2 is not there: the file ends after 311 of its 312 bytes"},
  };
  for (const cut &each : cuts) {
    const finding expected = {each.offset, severity::error, "missing-record", each.what,
                              std::string(load_fails) + "; `chlist salvage` finds what is left"};

    const findings found = check(file.substr(0, each.size)).findings;

    EXPECT_TRUE(std::ranges::find(found, expected) != found.end()) << each.what;
  }
}

TEST_F(CheckFrame, BytesBehindTheLastRecordAreFound) {
  channel_file file = sound_file();
  const std::size_t end = file.data.size();
  file.data += bytes(5, 'x');

  EXPECT_EQ(found_in(file),
            (findings{{end, severity::warning, "bytes-behind-end", "5 bytes behind the last record that is counted",
                       "a load ignores them, the next save drops them; services among them are not on "
                       "the receiver"}}));
}

TEST_F(CheckFrame, EarlierVersionsAreToldToBeConverted) {
  const finding expected = {list_field::version, severity::error, "earlier-version", "the file is of version 9",
                            "a receiver of today has to convert it first, as `chlist convert` does; read as it stands, "
                            "records of versions 7 and 8 are out of place"};

  EXPECT_EQ(found_in(sound_file().set(list_field::version, 2, 9)), findings{expected});
}

TEST_F(CheckFrame, OtherVersionsAreUnknown) {
  for (const int version : {-1, 0, 6, 11}) {
    const findings found = found_in(sound_file().set(list_field::version, 2, static_cast<std::uint64_t>(version)));

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].kind, "unknown-version");
    EXPECT_EQ(found[0].what, "the version is " + std::to_string(version) + ", not 10");
  }
}

}  // namespace
