// What is saved is loaded, and what is loaded is saved, byte for byte; the slots of pointers alone hold nothing.
#include <algorithm>
#include <memory>

#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace service_field = test_support::service_field;
namespace transponder_field = test_support::transponder_field;
using test_support::bytes;
using test_support::channel_file;
using test_support::expect_same_bytes;
using test_support::file_test;
using test_support::log_capture;

class RoundTrip : public file_test {};

// Every byte is non-zero and differs from those around it.
void fill_with_pattern(bytes &file) {
  for (std::size_t i = 0; i < file.size(); ++i) {
    file[i] = static_cast<char>(1 + (i * 11 + i / 255) % 255);
  }
}

// A file whose every byte is in use: reserved bytes, slots behind the counts, texts behind their ends. Only counts, the
// current view, the country that a load resets and the slots of pointers are what a reader expects them to be.
channel_file file_full_of_bytes() {
  channel_file file;
  file.network(1, 1, "").transponder(1, 11'000'000, 0).service({}).service({}).transponder(2, 2, 0).network(2, 2, "");
  fill_with_pattern(file.data);
  for (const auto &places : {test_support::view_places(), test_support::group_places()}) {
    for (const auto &place : places) {
      file.set(place.count, 2, 1);
    }
  }
  file.set(list_field::vch_type, 2, VIEW_USER).set(list_field::network_num, 2, 2);
  file.set(file.records[1].offset + network_field::tp_num, 2, 2)
      .set(file.records[2].offset + transponder_field::rch_num, 2, 2);
  file.set(file.records[5].offset + transponder_field::rch_num, 2, 0)
      .set(file.records[6].offset + network_field::tp_num, 2, 0);
  file.set(file.records[3].offset + service_field::country_id, 2, 0)
      .set(file.records[4].offset + service_field::country_id, 2, 0);
  return file;
}

TEST_F(RoundTrip, CarriesEveryByteOfAFile) {
  channel_file file = file_full_of_bytes();
  test_support::fill_pointer_slots(file.data, file.records, '\0');

  ASSERT_EQ(load(file.data), static_cast<std::int16_t>(test_support::get(file.data, list_field::version, 2)));

  expect_same_bytes(save(), file.data);
}

TEST_F(RoundTrip, WritesPointersAsZeroWhateverWasRead) {
  channel_file file = file_full_of_bytes();
  load(file.data);

  test_support::fill_pointer_slots(file.data, file.records, '\0');
  expect_same_bytes(save(), file.data);
}

// Counts frame the records: one that stayed too high would hide those behind it.
TEST_F(RoundTrip, BringsBackWhatIsLeftWhenAServiceOfAnotherTransportStreamWasReleased) {
  test_support::file_service({.ts_id = 100, .service_id = 1});
  channel_st *moved = test_support::file_service({.ts_id = 200, .service_id = 2});
  test_support::file_service({.frequency = 12'000'000, .service_id = 3});
  test_support::file_service({.net_index = 2, .service_id = 4});
  release_rch_info(moved);

  const bytes saved = save();
  reset_channel_list();

  ASSERT_EQ(load(saved), CHANNEL_LIST_VERSION);
  EXPECT_NE(get_channel_st(1, 1, 100, 11'000'000, 1, 0), nullptr);
  EXPECT_NE(get_channel_st(1, 1, 100, 12'000'000, 3, 0), nullptr);
  EXPECT_NE(get_channel_st(2, 1, 100, 11'000'000, 4, 0), nullptr);
  expect_same_bytes(save(), saved);
}

TEST_F(RoundTrip, ChangesNothingTheSecondTime) {
  load(file_full_of_bytes().data);
  const bytes first = save();
  reset_channel_list();

  load(first);

  expect_same_bytes(save(), first);
}

// The records of the hierarchy in list order, without their links.
template <class Record>
void add_record(std::vector<bytes> &all, const Record &record) {
  all.emplace_back(reinterpret_cast<const char *>(&record) + sizeof(list_head), sizeof record - sizeof(list_head));
}

std::vector<bytes> hierarchy_in_memory() {
  std::vector<bytes> all;
  list_head *networks = &get_channel_list()->network_list;
  for (list_head *n = networks->next; n != networks; n = n->next) {
    auto network = *reinterpret_cast<network_ch_st *>(n);
    list_head *transponders = &reinterpret_cast<network_ch_st *>(n)->tp_list;
    network.tp_list = {};
    add_record(all, network);
    for (list_head *t = transponders->next; t != transponders; t = t->next) {
      auto transponder = *reinterpret_cast<tp_ch_st *>(t);
      list_head *services = &reinterpret_cast<tp_ch_st *>(t)->rch_list;
      transponder.rch_list = {};
      add_record(all, transponder);
      for (list_head *s = services->next; s != services; s = s->next) {
        add_record(all, *reinterpret_cast<channel_st *>(s));
      }
    }
  }
  return all;
}

// The list in memory with every cached channel pointer null.
bytes list_without_links() {
  auto copy = std::make_unique<channel_list_st>(*get_channel_list());
  const auto forget = [](virtual_channel_st &entry) { entry.rch = nullptr; };
  std::ranges::for_each(copy->vch, forget);
  std::ranges::for_each(copy->tv_vch, forget);
  std::ranges::for_each(copy->radio_vch, forget);
  std::ranges::for_each(copy->user_vch, forget);
  std::ranges::for_each(copy->promo_vch, forget);
  for (auto &group : copy->favorite_vch) {
    std::ranges::for_each(group, forget);
  }
  copy->network_list = {};
  return {reinterpret_cast<const char *>(copy.get()), sizeof *copy};
}

TEST_F(RoundTrip, GivesTheLargestListBack) {
  test_support::fill_everything();
  const bytes list_before = list_without_links();
  const std::vector<bytes> hierarchy_before = hierarchy_in_memory();
  const bytes file = save();
  reset_channel_list();
  const log_capture log(0);

  ASSERT_EQ(load_named("saved.dat"), 10);

  EXPECT_EQ(log.writes(), std::vector<std::string>{});
  EXPECT_EQ(file.size(), 460'032U + 2 * 416 + 500 * 336 + 5000 * 312);
  EXPECT_TRUE(list_without_links() == list_before);
  EXPECT_TRUE(hierarchy_in_memory() == hierarchy_before);
}

TEST_F(RoundTrip, GivesTheLargestListBackLinked) {
  test_support::fill_everything();
  save();
  reset_channel_list();

  load_named("saved.dat");

  for (int code = 0; code <= 29; code = code == 3 ? 5 : code == 5 ? 10 : code + 1) {
    const auto view = static_cast<std::int8_t>(code);
    for (int i = 0; i < *get_virtual_channel_vnumber(view); ++i) {
      const virtual_channel_st &entry = get_virtual_channel_st(view)[i];
      ASSERT_NE(entry.rch, nullptr) << code << ' ' << i;
      ASSERT_EQ(entry.rch->service_id, entry.service_id) << code << ' ' << i;
    }
  }
}

TEST_F(RoundTrip, GivesAnEmptyListBack) {
  const auto before = test_support::list_in_memory();

  save();
  EXPECT_EQ(load_named("saved.dat"), 10);

  EXPECT_EQ(list.network_num, 0);
  EXPECT_TRUE(test_support::list_in_memory() == before);
}

// The longer list runs out of frame: the third service is read as the next transponder's first bytes.
TEST_F(RoundTrip, IsOutOfFrameWhenATransponderCountedTooFew) {
  test_support::fill_view(VIEW_ALL, 3);
  test_support::file_service({.ts_id = 200, .frequency = 12'000'000, .service_id = 9});
  network_ch_st *network = get_network_ch_info(1, 1);
  get_tp_ch_info_by_network_ch(network, 100, 0, 0)->rch_num = 2;
  save();
  get_tp_ch_info_by_network_ch(network, 100, 0, 0)->rch_num = 3;
  reset_channel_list();

  ASSERT_EQ(load_named("saved.dat"), 10);

  EXPECT_EQ(get_channel_st(1, 1, 200, 12'000'000, 9, 0), nullptr);
}

}  // namespace
