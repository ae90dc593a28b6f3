// Reading a channel file from memory: the list that the file's own reader gives, beside the one in memory, which nobody
// notices.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <span>
#include <string>

#include "channel/persist/detached_list.h"
#include "merge_test.h"
#include "support/channel_file.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using channel::persist::byte_source;
using channel::persist::current_format;
using channel::persist::read_detached;
using test_support::bytes;
using test_support::lines;
using test_support::log_capture;
using test_support::three_networks;

using ReadingBytes = test_support::store_test;

std::span<const std::byte> bytes_of(const bytes &file) { return std::as_bytes(std::span(file)); }

TEST_F(ReadingBytes, TakesWholeRecordsOnly) {
  const bytes file{1, 2, 3, 4, 5};
  byte_source source(bytes_of(file));
  char read[4] = {};
  EXPECT_TRUE(source.read(read, 0));
  EXPECT_EQ(source.position(), 0U);
  EXPECT_TRUE(source.read(read, 4));
  EXPECT_EQ(read[3], 4);
  EXPECT_EQ(source.position(), 4U);
  EXPECT_EQ(source.left(), 1U);
  EXPECT_FALSE(source.read(read, 2));
  EXPECT_EQ(source.left(), 1U);
  EXPECT_TRUE(source.read(read, 1));
  EXPECT_FALSE(source.read(read, 1));
}

TEST_F(ReadingBytes, GivesTheRecordsOfTheFileInItsOrder) {
  const bytes file = three_networks().data;
  const auto read = read_detached<current_format>(bytes_of(file));
  ASSERT_NE(read, nullptr);
  const channel::record_counts counts = channel::count_records(read->network_list);
  EXPECT_EQ(counts.networks, 3U);
  EXPECT_EQ(counts.networks, read->network_num);
  std::size_t services = 0;
  for (const channel::filed_service &filed : channel::all_services_of(read->network_list)) {
    EXPECT_EQ(filed.service.network_id, filed.network.network_id);
    ++services;
  }
  EXPECT_EQ(services, counts.services);
}

TEST_F(ReadingBytes, SaysNothingAndLeavesTheListInMemoryAsItIs) {
  test_support::append_entry(VIEW_ALL, test_support::entry_of(*test_support::file_service({.service_id = 1}), 7));
  const bytes before = test_support::list_in_memory();
  const log_capture log(5);
  EXPECT_NE(read_detached<current_format>(bytes_of(three_networks().data)), nullptr);
  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(test_support::list_in_memory(), before);
}

TEST_F(ReadingBytes, GivesNothingOfAFileThatEndsEarlyWhereverThatIs) {
  const bytes file = three_networks().data;
  const std::span<const std::byte> whole = bytes_of(file);
  EXPECT_EQ(read_detached<current_format>(whole.first(0)), nullptr);
  EXPECT_EQ(read_detached<current_format>(whole.first(1)), nullptr);
  for (std::size_t length = channel::list_image_size - 700; length < whole.size(); length += 7) {
    ASSERT_EQ(read_detached<current_format>(whole.first(length)), nullptr) << length;
  }
  EXPECT_EQ(read_detached<current_format>(whole.first(whole.size() - 1)), nullptr);
  EXPECT_NE(read_detached<current_format>(whole), nullptr);
}

}  // namespace
