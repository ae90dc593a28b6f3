// Files that a transfer took for text.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "chlist/salvage/transfer_damage.h"
#include "tool/salvage/damage_kinds.h"
#include "tool/salvage/salvaging_host.h"

namespace {

using chlist::salvage_outcome;
using salvage_test::damage;
using salvage_test::in_utf8;
using salvage_test::Salvaging;
using test_support::bytes;
using test_support::channel_file;

bytes with_crlf(const bytes &file) {
  bytes made;
  for (const char c : file) {
    made += c == '\n' ? "\r\n" : bytes(1, c);
  }
  return made;
}

class Transfers : public Salvaging {
 protected:
  // Line feeds, carriage returns and bytes above 0x7F everywhere.
  void SetUp() override {
    Salvaging::SetUp();
    for (int i = 0; i < 40; ++i) {
      original.entry(VIEW_USER, services[static_cast<std::size_t>(i) % services.size()], 10 + i * 256);
    }
  }
};

TEST_F(Transfers, WhatTheyDidIsUndoneWhole) {
  const std::pair<bytes, std::string_view> sent[] = {
      {with_crlf(original.data), "LF to CRLF"},
      {in_utf8(original.data), "Latin-1 to UTF-8"},
      {with_crlf(in_utf8(original.data)), "Latin-1 to UTF-8, and LF to CRLF"}};
  for (const auto &[file, what] : sent) {
    const salvage_outcome outcome = expect_salvaged({std::string(what), file, {}});

    EXPECT_EQ(outcome.transfer, what);
    EXPECT_EQ(outcome.size, file.size());
    EXPECT_EQ(outcome.recovered.services, 12U);
    EXPECT_TRUE(outcome.unexplained.empty());
    EXPECT_TRUE(outcome.torn.empty());
    EXPECT_TRUE(outcome.has_findings());
  }
}

TEST_F(Transfers, WhatElseIsLostIsToldOfTheFileBeforeThem) {
  const std::size_t cut = original.records.back().offset + 100;
  const salvage_outcome outcome = salvage(in_utf8(original.data.substr(0, cut)));

  EXPECT_EQ(outcome.transfer, "Latin-1 to UTF-8");
  EXPECT_EQ(outcome.recovered.services, 11U);
  ASSERT_EQ(outcome.unexplained.size(), 1U);
  EXPECT_EQ(outcome.unexplained[0].offset, original.records.back().offset);
}

TEST_F(Transfers, AFileThatOnlyLooksLikeOneOfThemStaysAsItIs) {
  channel_file file;
  for (std::size_t i = 0; i < services.size(); ++i) {
    file.service(services[i]).entry(VIEW_ALL, services[i], 0x0A0D);
  }
  // But for the version, every line feed stands behind a carriage return.
  for (std::size_t i = 0; i < 1000; ++i) {
    file.entry(VIEW_USER, services[i % services.size()], 0x0A0D);
  }
  ASSERT_TRUE(chlist::undo_transfer(std::as_bytes(std::span(file.data))).has_value());

  EXPECT_EQ(salvage(file.data).transfer, "");
}

}  // namespace
