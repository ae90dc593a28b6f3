// Parsed services become records, view entries and numbers of the channel list; every limit of the list is met.
#include "chlist/exchange/list_builder.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tool/exchange/built_list.h"

namespace {

using chlist::cut_utf8;
using chlist::list_builder;
using chlist::list_counts;
using chlist::vdr_service;
using test_support::majors;
using test_support::service_ids;
using tool_test::kind;
using tool_test::service_at;

// Adds services first..last-1, which all must be taken.
void add_all(list_builder &builder, int first, int last, kind what) {
  for (int n = first; n < last; ++n) {
    const auto refused = builder.add(chlist::line_up_service_of(service_at(n, what)));
    ASSERT_FALSE(refused) << n << ": " << *refused;
  }
}

using ListBuilder = tool_test::list_builder_test;

TEST_F(ListBuilder, EmptiesTheList) {
  add(service_at(1));

  const list_builder another;

  EXPECT_EQ(list.vnumber, 0);
  EXPECT_EQ(list.network_num, 0);
  EXPECT_EQ(another.counts().services, 0U);
}

TEST_F(ListBuilder, FillsTheRecordOfATelevisionService) {
  vdr_service service = service_at(7);
  service.name = "Name";
  service.short_name = "Short";
  service.is_vertical = true;
  service.transport_id = 2010;
  service.pcr_pid = 400;
  service.audio.push_back({103, "eng", 3});

  const channel_st &record = add(service);

  EXPECT_STREQ(record.name[0].text, "Name");
  EXPECT_EQ(record.name[0].name_len, 4);
  EXPECT_STREQ(record.name[1].text, "Short");
  EXPECT_EQ(record.name[1].name_len, 5);
  EXPECT_EQ(record.net_index, 1);
  EXPECT_EQ(record.network_id, 158);
  EXPECT_EQ(record.ts_id, 2010);
  EXPECT_EQ(record.frequency, 10'700'000);
  EXPECT_EQ(record.polarisation, 1);
  EXPECT_EQ(record.service_id, 7);
  EXPECT_EQ(record.service_type, SERVICE_TYPE_TV);
  EXPECT_EQ(record.source_type, 1);
  EXPECT_EQ(record.video_pid, 101);
  EXPECT_EQ(record.pcr_pid, 400);
  EXPECT_EQ(record.audio_pid, 102);
  EXPECT_EQ(record.pmt_pid, 0xFFFF);
  EXPECT_EQ(record.video_ecm_pid, 0xFFFF);
  EXPECT_EQ(record.flag, 0);
}

TEST_F(ListBuilder, TheVideoPidCarriesTheClockWhenNoPcrPidIsGiven) { EXPECT_EQ(add(service_at(1)).pcr_pid, 101); }

TEST_F(ListBuilder, RadioHasNoVideoPidAndNoClockUnlessGiven) {
  vdr_service with_clock = service_at(2, kind::radio);
  with_clock.pcr_pid = 820;

  const channel_st &record = add(service_at(1, kind::radio));
  const channel_st &clocked = add(with_clock);

  EXPECT_EQ(record.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(record.video_pid, 0xFFFF);
  EXPECT_EQ(record.pcr_pid, 0xFFFF);
  EXPECT_EQ(record.audio_pid, 102);
  EXPECT_EQ(clocked.pcr_pid, 820);
}

TEST_F(ListBuilder, AServiceWithDolbyAloneIsHeardThroughIt) {
  vdr_service service = service_at(1, kind::data);
  service.dolby = {{404, "eng", 106}, {405, "fra", 106}};

  const channel_st &record = add(service);

  EXPECT_EQ(record.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(record.audio_pid, 404);
}

TEST_F(ListBuilder, AServiceWithoutVideoAndAudioIsData) {
  const channel_st &record = add(service_at(1, kind::data));

  EXPECT_EQ(record.service_type, 12);
  EXPECT_EQ(record.audio_pid, 0xFFFF);
}

TEST_F(ListBuilder, ScrambledServicesAreMarked) {
  vdr_service service = service_at(1);
  service.ca_ids = {0x98C};

  EXPECT_EQ(add(service).flag, CHANNEL_FLAG_FTA);
}

TEST_F(ListBuilder, AnEntryOfTheAllViewShowsTheService) {
  const channel_st &record = add(service_at(7));
  const virtual_channel_st &entry = list.vch[0];

  EXPECT_EQ(entry.rch, &record);
  EXPECT_EQ(entry.major_ch_num, 1);
  EXPECT_EQ(entry.minor_ch_num, 0);
  EXPECT_EQ(entry.vch_tag, 0);
  EXPECT_EQ(get_channel(0), &record);
  EXPECT_EQ(check_available_channel(0), 1);
}

TEST_F(ListBuilder, EverySourceHasItsIndexAndItsNetworks) {
  vdr_service second = service_at(2);
  second.source = "S31.0E";
  vdr_service again = service_at(3);
  vdr_service other_network = service_at(4);
  other_network.network_id = 171;

  EXPECT_EQ(add(service_at(1)).net_index, 1);
  EXPECT_EQ(add(second).net_index, 2);
  EXPECT_EQ(add(again).net_index, 1);
  EXPECT_EQ(add(other_network).net_index, 1);

  EXPECT_EQ(list.network_num, 3);
  EXPECT_STREQ(get_network_ch_info(1, 158)->network_name, "S13.5E");
  EXPECT_STREQ(get_network_ch_info(2, 158)->network_name, "S31.0E");
  EXPECT_STREQ(get_network_ch_info(1, 171)->network_name, "S13.5E");
}

TEST_F(ListBuilder, NumbersRunOnAndRise) {
  vdr_service raised = service_at(2);
  raised.lowest_number = 100;
  vdr_service not_lowered = service_at(3);
  not_lowered.lowest_number = 50;

  add(service_at(0));
  add(service_at(1));
  add(raised);
  add(not_lowered);

  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 2, 100, 101}));
}

TEST_F(ListBuilder, TheLargestNumberIsTheLast) {
  vdr_service last = service_at(1);
  last.lowest_number = 32767;

  add(last);

  EXPECT_EQ(refusal(service_at(2)), "no channel number is left: the largest is 32767");
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{32767}));
}

TEST_F(ListBuilder, TheSameServiceIsLeftOutAndTakesNoNumber) {
  vdr_service same = service_at(5);
  same.line = 12;
  same.frequency_khz += 2499;
  add(service_at(5));

  EXPECT_EQ(refusal(same), "is the same service as line 6");
  add(service_at(6));

  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 2}));
  EXPECT_EQ(builder.counts().services, 2U);
}

TEST_F(ListBuilder, AServiceOnAnotherTransponderIsAnother) {
  vdr_service other = service_at(5);
  other.frequency_khz += 2500;
  add(service_at(5));

  EXPECT_FALSE(refusal(other));

  EXPECT_EQ(builder.counts().transponders, 2U);
}

TEST_F(ListBuilder, ViewsTakeTheirKindWithNumbersAndOrder) {
  add(service_at(1, kind::tv));
  add(service_at(2, kind::radio));
  add(service_at(3, kind::data));
  add(service_at(4, kind::tv));

  EXPECT_TRUE(builder.build_views().empty());

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 4}));
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{1, 4}));
  EXPECT_EQ(service_ids(VIEW_RADIO), (std::vector<int>{2}));
  EXPECT_EQ(majors(VIEW_RADIO), (std::vector<int>{2}));
}

TEST_F(ListBuilder, AKindThatIsMissingLeavesItsViewEmptyWithoutComplaint) {
  add(service_at(1, kind::data));

  EXPECT_TRUE(builder.build_views().empty());

  EXPECT_EQ(list.tv_vnumber, 0);
  EXPECT_EQ(list.radio_vnumber, 0);
  EXPECT_TRUE(quiet.writes().empty());
}

TEST_F(ListBuilder, CountsWhatTheListHolds) {
  vdr_service elsewhere = service_at(300, kind::radio);
  elsewhere.source = "C";
  add(service_at(1, kind::tv));
  add(service_at(101, kind::tv));
  add(service_at(102, kind::data));
  add(elsewhere);

  const list_counts counts = builder.counts();

  EXPECT_EQ(counts.services, 4U);
  EXPECT_EQ(counts.tv, 2U);
  EXPECT_EQ(counts.radio, 1U);
  EXPECT_EQ(counts.transponders, 3U);
  EXPECT_EQ(counts.sources, 2U);
}

TEST_F(ListBuilder, AFullListRefusesTheNextService) {
  add_all(builder, 0, MAX_TV_CHANNEL, kind::tv);
  add_all(builder, MAX_TV_CHANNEL, MAX_CHANNEL, kind::radio);

  EXPECT_EQ(refusal(service_at(MAX_CHANNEL)), "the list is full: it holds 5000 services");

  EXPECT_TRUE(builder.build_views().empty());
  EXPECT_EQ(list.vnumber, MAX_CHANNEL);
  EXPECT_EQ(list.tv_vnumber, MAX_TV_CHANNEL);
  EXPECT_EQ(list.radio_vnumber, MAX_RADIO_CHANNEL);
}

TEST_F(ListBuilder, ServicesThatTheTvViewCannotTakeAreReported) {
  add_all(builder, 0, MAX_TV_CHANNEL + 1, kind::tv);

  EXPECT_EQ(builder.build_views(),
            (std::vector<std::string>{"the TV view is full: it holds 4000, 1 more services are in the ALL view only"}));

  EXPECT_EQ(list.vnumber, MAX_TV_CHANNEL + 1);
  EXPECT_EQ(list.tv_vnumber, MAX_TV_CHANNEL);
}

TEST_F(ListBuilder, ServicesThatTheRadioViewCannotTakeAreReported) {
  add_all(builder, 0, MAX_RADIO_CHANNEL + 2, kind::radio);

  EXPECT_EQ(
      builder.build_views(),
      (std::vector<std::string>{"the radio view is full: it holds 1000, 2 more services are in the ALL view only"}));

  EXPECT_EQ(list.radio_vnumber, MAX_RADIO_CHANNEL);
}

TEST_F(ListBuilder, SourcesEndBeforeTheIndexThatStandsForAll) {
  for (int n = 0; n < 254; ++n) {
    vdr_service service = service_at(n);
    service.source = "S" + std::to_string(n) + "E";
    ASSERT_EQ(add(service).net_index, n + 1);
  }
  vdr_service one_more = service_at(254);
  one_more.source = "S254E";

  EXPECT_EQ(refusal(one_more), "source S254E is one too many: a list holds 254");
}

TEST_F(ListBuilder, NamesEndAtTheirSlot) {
  for (const std::size_t length : {0U, 1U, 95U, 96U, 97U}) {
    vdr_service service = service_at(static_cast<int>(length));
    service.name = std::string(length, 'n');

    const channel_st &record = add(service);

    const std::size_t kept = std::min<std::size_t>(length, 96);
    EXPECT_EQ(record.name[0].name_len, kept);
    EXPECT_EQ(std::string(record.name[0].text, kept), std::string(kept, 'n'));
    EXPECT_EQ(record.name[0].reserved_97, 0);
    EXPECT_TRUE(kept == 96 || record.name[0].text[kept] == '\0');
  }
}

TEST(CutUtf8, KeepsWhatFits) {
  EXPECT_EQ(cut_utf8("", 0), "");
  EXPECT_EQ(cut_utf8("abc", 3), "abc");
  EXPECT_EQ(cut_utf8("abc", 2), "ab");
  EXPECT_EQ(cut_utf8("abc", 0), "");
  EXPECT_EQ(cut_utf8("ab\xC3\xA9", 4), "ab\xC3\xA9");
}

TEST(CutUtf8, NeverEndsInsideACharacter) {
  EXPECT_EQ(cut_utf8("ab\xC3\xA9", 3), "ab");
  EXPECT_EQ(cut_utf8("a\xE2\x82\xAC", 3), "a");
  EXPECT_EQ(cut_utf8("a\xE2\x82\xAC", 2), "a");
  EXPECT_EQ(cut_utf8("a\xF0\x9F\x93\xBA", 4), "a");
  EXPECT_EQ(cut_utf8("a\xF0\x9F\x93\xBA!", 5), "a\xF0\x9F\x93\xBA");
}

TEST(CutUtf8, TextThatIsNotUtf8IsCutAnywhere) {
  EXPECT_EQ(cut_utf8("\x80\x80\x80\x80\x80\x80\x80\x80", 6), "\x80\x80\x80\x80\x80\x80");
}

}  // namespace
