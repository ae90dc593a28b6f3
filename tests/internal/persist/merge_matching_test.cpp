// Services that both lists hold: who is the same, what stays, and the mark of presence.
#include "merge_test.h"

#include <array>

namespace {

namespace list_field = test_support::list_field;
namespace service_field = test_support::service_field;
using test_support::append_entry;
using test_support::bytes;
using test_support::channel_file;
using test_support::entries_of;
using test_support::entry_of;
using test_support::file_service;
using test_support::lines;
using test_support::log_capture;
using test_support::record_kind;
using test_support::service_data;

class MergeMatching : public test_support::merge_test {
 protected:
  // One service in the list; whether the merge takes a service of the new list for the same.
  bool is_same(const service_data &old, const service_data &found) {
    reset_channel_list();
    channel_st *service = file_service(old);
    append_entry(VIEW_ALL, entry_of(*service, 77));
    append_entry(VIEW_FAVOURITE, entry_of(*service, 78));
    const int changes = merge(channel_file().service(found));
    EXPECT_TRUE(changes == 0 || changes == 2) << changes;
    EXPECT_EQ(test_support::majors(VIEW_FAVOURITE), changes == 0 ? std::vector{78} : std::vector<int>{});
    return changes == 0;
  }
};

TEST_F(MergeMatching, ChangesNothingInAnIdenticalList) {
  channel_file file;
  file.service({.service_id = 1}).service({.service_id = 200, .service_type = 2}).transponder(9, 9, 0);
  file.service({.net_index = 2, .frequency = 0, .service_id = 3}).entry(VIEW_ALL, {.service_id = 1}, 11);
  file.entry(VIEW_TV, {.service_id = 1}, 12).entry(VIEW_USER, {.service_id = 200}, 13, 1);
  file.group(GROUP_COUNTRY, 1, "Malta").group(GROUP_GENRE, 1, "News");
  load(file.data);
  bytes expected = save();
  for (const auto &record : file.records) {
    if (record.kind == record_kind::service) {
      test_support::put(expected, record.offset + service_field::country_id, 2, 1);
    }
  }
  const log_capture log(1);

  EXPECT_EQ(merge(file), 0);

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_TRUE(save() == expected) << "all but the marks is as it was";
}

TEST_F(MergeMatching, KeepsEverythingOfAServiceButItsCountry) {
  channel_file file;
  file.service({.service_id = 5});
  for (const unsigned at :
       {210U, 212U, 214U, 246U, 248U, 250U, 252U, 254U, 256U, 258U, 260U, 262U, 286U, 288U, 298U, 300U}) {
    file.set_last(record_kind::service, at, 2, 0x1100 + at);
  }
  load(file.data);
  bytes expected = saved_records();
  test_support::put(expected, test_support::network_size + test_support::transponder_size + service_field::country_id,
                    2, 1);
  service_data other = {.service_id = 5, .service_type = 2, .source_type = 9, .name = "Another name", .flag = 0xFF};

  EXPECT_EQ(merge(channel_file().network(1, 1, "Another").service(other)), 0);

  EXPECT_EQ(saved_records(), expected);
}

TEST_F(MergeMatching, KeepsEveryEntry) {
  channel_st *service = file_service({.service_id = 200});
  for (const std::int8_t view : std::to_array<std::int8_t>({0, 1, 2, 3, 4, 5, 10, 29})) {
    virtual_channel_st entry = entry_of(*service, static_cast<std::int16_t>(500 + view), 3, -4);
    entry.favorite_id = 9;
    append_entry(view, entry);
    append_entry(view, entry);
  }
  std::vector<std::vector<bytes>> before;
  for (const std::int8_t view : std::to_array<std::int8_t>({0, 1, 2, 3, 4, 5, 10, 29})) {
    before.push_back(entries_of(view));
  }

  EXPECT_EQ(merge(channel_file().service({.service_id = 200, .service_type = 2})), 0);

  std::size_t i = 0;
  for (const std::int8_t view : std::to_array<std::int8_t>({0, 1, 2, 3, 4, 5, 10, 29})) {
    EXPECT_EQ(entries_of(view), before[i++]) << int{view};
    EXPECT_EQ(get_virtual_channel_st(view)[1].rch, service);
  }
}

TEST_F(MergeMatching, DoesNotListAServiceThatNoViewShowed) {
  file_service({.service_id = 1});

  EXPECT_EQ(merge(channel_file().service({.service_id = 1})), 0);

  EXPECT_EQ(list.vnumber, 0);
  EXPECT_EQ(list.tv_vnumber, 0);
}

TEST_F(MergeMatching, FollowsATransponderThatMovedALittle) {
  for (const std::int64_t shift : std::to_array<std::int64_t>({-2499, -1, 1, 2499})) {
    EXPECT_TRUE(is_same({}, {.frequency = 11'000'000 + shift})) << shift;
    EXPECT_NE(find({.frequency = 11'000'000}), nullptr);
    EXPECT_EQ(list.vch[0].major_ch_num, 77);
    EXPECT_EQ(list.vch[0].frequency, 11'000'000U);
    EXPECT_EQ(find({})->frequency, 11'000'000);
  }
}

TEST_F(MergeMatching, DoesNotFollowATransponderThatMovedFar) {
  for (const std::int64_t shift : std::to_array<std::int64_t>({-2500, 2500})) {
    EXPECT_FALSE(is_same({}, {.frequency = 11'000'000 + shift})) << shift;
    ASSERT_EQ(list.vnumber, 1);
    EXPECT_EQ(list.vch[0].major_ch_num, 1);
    EXPECT_EQ(list.vch[0].frequency, static_cast<std::uint32_t>(11'000'000 + shift));
  }
}

TEST_F(MergeMatching, DoesNotMindAnotherTransportStreamId) {
  EXPECT_TRUE(is_same({.ts_id = 100}, {.ts_id = 101}));
  EXPECT_TRUE(is_same({.ts_id = 100}, {.ts_id = 0xFFFF, .frequency = 11'002'499}));
  EXPECT_EQ(find({})->ts_id, 100);
  EXPECT_EQ(list.vch[0].ts_id, 100);
}

TEST_F(MergeMatching, ComparesNetworkPolarisationAndServiceId) {
  EXPECT_FALSE(is_same({}, {.net_index = 2}));
  EXPECT_FALSE(is_same({}, {.network_id = 2}));
  EXPECT_FALSE(is_same({}, {.service_id = 2}));
  EXPECT_FALSE(is_same({}, {.polarisation = 1}));
  EXPECT_FALSE(is_same({.service_id = 5}, {.service_id = 0xC005}));
}

TEST_F(MergeMatching, GoesByTransportStreamIdWithoutFrequency) {
  EXPECT_TRUE(is_same({.frequency = 11'000'000}, {.frequency = 0}));
  EXPECT_TRUE(is_same({.frequency = 11'000'000, .polarisation = 1}, {.frequency = 0, .polarisation = 0}));
  EXPECT_FALSE(is_same({.ts_id = 100}, {.ts_id = 101, .frequency = 0}));
  EXPECT_TRUE(is_same({.frequency = 0}, {.frequency = 2499}));
}

// The service is another, but an entry without frequency finds it by its ids.
TEST_F(MergeMatching, LeavesAnEntryWithoutFrequencyToWhatItFinds) {
  append_entry(VIEW_FAVOURITE, entry_of(*file_service({.frequency = 0}), 78));

  EXPECT_EQ(merge(channel_file().service({.frequency = 2500})), 2);

  EXPECT_EQ(test_support::majors(VIEW_FAVOURITE), std::vector{78});
  EXPECT_EQ(list.favorite_vch[0][0].frequency, 0U);
  EXPECT_EQ(list.favorite_vch[0][0].rch, find({.frequency = 2500}));
}

TEST_F(MergeMatching, ComparesTheLowHalfOfAFrequency) {
  EXPECT_TRUE(is_same({.frequency = 11'000'000}, {.frequency = 11'000'000 + (std::int64_t{1} << 32)}));
}

TEST_F(MergeMatching, OverwritesTheCountryGroupByTheMark) {
  channel_st *service = file_service({.service_id = 1});
  for (const std::int16_t country : std::to_array<std::int16_t>({0, 1, 7, -1, 32767})) {
    service->country_id = country;
    merge(channel_file().service({.service_id = 1}));
    EXPECT_EQ(service->country_id, 1) << country;
  }
}

TEST_F(MergeMatching, LeavesTheGroupTables) {
  list.country_num = 1;
  list.country[0].id = 7;

  merge(channel_file().group(GROUP_COUNTRY, 8, "Malta").group(GROUP_GENRE, 1, "News").service({}));

  EXPECT_EQ(list.country_num, 1);
  EXPECT_EQ(list.country[0].id, 7);
  EXPECT_EQ(list.genre_num, 0);
}

TEST_F(MergeMatching, LeavesTheSettings) {
  const bytes before = test_support::list_in_memory();

  merge(channel_file()
            .set(list_field::version, 2, 9)
            .set(list_field::use_tuner, 8, 0x0102030405060708)
            .set(list_field::sub_group_id, 2, 9)
            .set(list_field::vch_type, 2, VIEW_TV));

  EXPECT_TRUE(test_support::list_in_memory() == before);
}

}  // namespace
