// The DVBv5 format between the tool and libdvbv5 itself, both ways. Left out where the library is not installed.
#include <gtest/gtest.h>
#include <libdvbv5/dvb-file.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "chlist/exchange/dvbv5/dvbv5.h"
#include "support/temp_dir.h"
#include "tool/exchange/random_line_up.h"

namespace {

using chlist::line_up;
using chlist::line_up_service;
using chlist::loss_counts;

struct free_file {
  void operator()(dvb_file *file) const { dvb_file_free(file); }
};
using library_list = std::unique_ptr<dvb_file, free_file>;

class Dvbv5Library : public testing::Test {
 protected:
  library_list read_by_library(const line_up &list) const {
    test_support::write_file(path, chlist::write_dvbv5(list, {}).files.at(0).text);
    return library_list(dvb_read_file_format(path.c_str(), SYS_DVBS, FILE_DVBV5));
  }

  test_support::temp_dir dir;
  std::string path = dir.path() + "channels.conf";
};

std::vector<const dvb_entry *> entries_of(const library_list &list) {
  std::vector<const dvb_entry *> entries;
  for (const dvb_entry *entry = list ? list->first_entry : nullptr; entry != nullptr; entry = entry->next) {
    entries.push_back(entry);
  }
  return entries;
}

std::uint32_t property(const dvb_entry &entry, unsigned command) {
  std::uint32_t value = 0;
  EXPECT_EQ(dvb_retrieve_entry_prop(const_cast<dvb_entry *>(&entry), command, &value), 0) << command;
  return value;
}

std::uint16_t first_of(const std::uint16_t *pids, unsigned count) { return count == 0 ? 0xFFFF : pids[0]; }

std::string text_of(const char *text) { return text == nullptr ? "" : text; }

// Satellite services in every polarisation, with every kind of name.
line_up list_of(int services) {
  constexpr std::array names = {"Plain",          "Two words", "\xC3\x98st",
                                "\xC3\xA4 Latin", "A = B; #c", "with, comma: colon"};
  line_up list = tool_test::random_line_up(11).make(services, 0);
  for (std::size_t i = 0; i < list.services.size(); ++i) {
    line_up_service &service = list.services[i];
    service.name = names[i % names.size()];
    service.fields.service_id = static_cast<std::uint16_t>(i + 1);
  }
  return list;
}

TEST_F(Dvbv5Library, ItReadsEveryServiceThatIsWritten) {
  const line_up list = list_of(1000);

  const library_list read = read_by_library(list);

  const std::vector<const dvb_entry *> entries = entries_of(read);
  ASSERT_EQ(entries.size(), list.services.size());
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const line_up_service &service = list.services[i];
    const dvb_entry &entry = *entries[i];
    const bool is_satellite = property(entry, DTV_DELIVERY_SYSTEM) == SYS_DVBS;
    EXPECT_EQ(text_of(entry.channel), service.name);
    EXPECT_EQ(entry.service_id, service.fields.service_id);
    EXPECT_EQ(entry.network_id, service.fields.network_id);
    EXPECT_EQ(entry.transport_id, service.fields.ts_id);
    EXPECT_EQ(first_of(entry.video_pid, entry.video_pid_len), service.fields.video_pid);
    EXPECT_EQ(first_of(entry.audio_pid, entry.audio_pid_len), service.fields.audio_pid);
    EXPECT_EQ(property(entry, DTV_FREQUENCY), service.fields.frequency * (is_satellite ? 1 : 1000));
    EXPECT_EQ(entry.vchannel != nullptr, service.number.has_value());
    if (is_satellite) {
      EXPECT_EQ(property(entry, DTV_POLARIZATION), service.fields.polarisation == 0 ? POLARIZATION_H : POLARIZATION_V);
    }
  }
}

TEST_F(Dvbv5Library, NamesOfAnyKindAreReadAsTheyAreWritten) {
  line_up list = list_of(6);
  const std::array names = {"[a] b", "]]", "", "  blanks  ", "two\nlines", "\t[CHANNEL]"};
  const std::array read_names = {"(a) b", "))", "", "blanks  ", "two lines", "(CHANNEL)"};
  for (std::size_t i = 0; i < names.size(); ++i) {
    list.services[i].name = names[i];
  }

  const library_list read = read_by_library(list);

  const std::vector<const dvb_entry *> entries = entries_of(read);
  ASSERT_EQ(entries.size(), names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(text_of(entries[i]->channel), read_names[i]);
  }
}

TEST_F(Dvbv5Library, WhatItWritesIsRead) {
  const line_up list = list_of(1000);
  ASSERT_EQ(dvb_write_file(path.c_str(), read_by_library(list).get()), 0);

  loss_counts lost;
  const line_up read = chlist::read_dvbv5(chlist::source_at(path), lost);

  ASSERT_TRUE(read.skipped.empty()) << read.skipped.front().line << ": " << read.skipped.front().reason;
  ASSERT_EQ(read.services.size(), list.services.size());
  for (std::size_t i = 0; i < read.services.size(); ++i) {
    const line_up_service &service = read.services[i];
    const line_up_service &original = list.services[i];
    const bool is_satellite = service.source.starts_with('S');
    EXPECT_EQ(service.name, original.name);
    EXPECT_EQ(service.number, original.number);
    EXPECT_EQ(service.fields.service_id, original.fields.service_id);
    EXPECT_EQ(service.fields.network_id, original.fields.network_id);
    EXPECT_EQ(service.fields.ts_id, original.fields.ts_id);
    EXPECT_EQ(service.fields.video_pid, original.fields.video_pid);
    EXPECT_EQ(service.fields.audio_pid, original.fields.audio_pid);
    EXPECT_EQ(service.fields.frequency, original.fields.frequency);
    EXPECT_EQ(service.fields.polarisation, is_satellite ? original.fields.polarisation : 0);
  }
}

}  // namespace
