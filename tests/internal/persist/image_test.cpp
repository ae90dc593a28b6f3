// Every field of every record at its documented place in the image, both ways, and pointers nowhere.
#include "image_places.h"

namespace {

using channel::persist::image;
using test_support::expect_places;
using test_support::expect_pointers_left_out;
using test_support::field_place;

TEST(Image, OfAServiceHoldsEveryFieldInItsPlace) {
  static_assert(sizeof(image<channel_st>) == 312);
  expect_places<channel_st>({
      {"name[0].reserved_0", offsetof(channel_st, name), 1, 8},
      {"name[0].text", offsetof(channel_st, name) + offsetof(name_slot_st, text), 96, 9},
      {"name[0].reserved_97", offsetof(channel_st, name) + offsetof(name_slot_st, reserved_97), 1, 105},
      {"name[0].name_len", offsetof(channel_st, name) + offsetof(name_slot_st, name_len), 2, 106},
      {"name[1].reserved_0", offsetof(channel_st, name) + 100, 1, 108},
      {"name[1].text", offsetof(channel_st, name) + 100 + offsetof(name_slot_st, text), 96, 109},
      {"name[1].reserved_97", offsetof(channel_st, name) + 100 + offsetof(name_slot_st, reserved_97), 1, 205},
      {"name[1].name_len", offsetof(channel_st, name) + 100 + offsetof(name_slot_st, name_len), 2, 206},
      FIELD(channel_st, reserved_208, 208),
      FIELD(channel_st, country_id, 210),
      FIELD(channel_st, genre_id, 212),
      FIELD(channel_st, provider_id, 214),
      FIELD(channel_st, net_index, 216),
      FIELD(channel_st, reserved_217, 217),
      FIELD(channel_st, frequency, 224),
      FIELD(channel_st, service_type, 232),
      FIELD(channel_st, source_type, 233),
      FIELD(channel_st, ts_id, 234),
      FIELD(channel_st, reserved_236, 236),
      FIELD(channel_st, network_id, 240),
      FIELD(channel_st, service_id, 242),
      FIELD(channel_st, polarisation, 244),
      FIELD(channel_st, reserved_245, 245),
      FIELD(channel_st, pmt_pid, 246),
      FIELD(channel_st, pcr_pid, 248),
      FIELD(channel_st, video_tag, 250),
      FIELD(channel_st, reserved_251, 251),
      FIELD(channel_st, video_pid, 252),
      FIELD(channel_st, video_ecm_pid, 254),
      FIELD(channel_st, audio_tag, 256),
      FIELD(channel_st, reserved_257, 257),
      FIELD(channel_st, audio_pid, 258),
      FIELD(channel_st, reserved_pid, 260),
      FIELD(channel_st, reserved_262, 262),
      FIELD(channel_st, reserved_id, 286),
      FIELD(channel_st, flag, 288),
      FIELD(channel_st, reserved_289, 289),
      FIELD(channel_st, user_order_key, 298),
      FIELD(channel_st, reserved_300, 300),
  });
  expect_pointers_left_out<channel_st>({FIELD(channel_st, list, 0)});
}

TEST(Image, OfATransponderHoldsEveryFieldInItsPlace) {
  static_assert(sizeof(image<tp_ch_st>) == 336);
  expect_places<tp_ch_st>({
      FIELD(tp_ch_st, ts_id, 8),
      FIELD(tp_ch_st, reserved_10, 10),
      FIELD(tp_ch_st, frequency, 12),
      FIELD(tp_ch_st, polarisation, 16),
      FIELD(tp_ch_st, reserved_17, 17),
      FIELD(tp_ch_st, rch_num, 18),
      FIELD(tp_ch_st, reserved_20, 20),
      FIELD(tp_ch_st, reserved_32, 32),
  });
  expect_pointers_left_out<tp_ch_st>({FIELD(tp_ch_st, list, 0), FIELD(tp_ch_st, rch_list, 24)});
}

TEST(Image, OfANetworkHoldsEveryFieldInItsPlace) {
  static_assert(sizeof(image<network_ch_st>) == 416);
  expect_places<network_ch_st>({
      FIELD(network_ch_st, net_index, 8),
      FIELD(network_ch_st, reserved_9, 9),
      FIELD(network_ch_st, network_id, 10),
      FIELD(network_ch_st, network_name, 12),
      FIELD(network_ch_st, tp_num, 76),
      FIELD(network_ch_st, reserved_78, 78),
      FIELD(network_ch_st, reserved_88, 88),
  });
  expect_pointers_left_out<network_ch_st>({FIELD(network_ch_st, list, 0), FIELD(network_ch_st, tp_list, 80)});
}

TEST(Image, OfTheListHoldsEverySettingInItsPlace) {
  static_assert(sizeof(image<channel_list_st>) == 460'032);
  expect_places<channel_list_st>({
      FIELD(channel_list_st, version, 0),
      FIELD(channel_list_st, use_tuner, 2),
      FIELD(channel_list_st, ch_type, 3),
      FIELD(channel_list_st, bouquet_id, 4),
      FIELD(channel_list_st, use_group_list, 6),
      FIELD(channel_list_st, service_type, 7),
      FIELD(channel_list_st, net_index, 8),
      FIELD(channel_list_st, reserved_9, 9),
      FIELD(channel_list_st, sub_group_id, 10),
      FIELD(channel_list_st, provider, 12),
      FIELD(channel_list_st, provider_num, 52'012),
      FIELD(channel_list_st, genre, 52'014),
      FIELD(channel_list_st, genre_num, 57'214),
      FIELD(channel_list_st, country, 57'216),
      FIELD(channel_list_st, country_num, 78'016),
      FIELD(channel_list_st, favorite_group, 78'018),
      FIELD(channel_list_st, favorite_group_num, 80'098),
      FIELD(channel_list_st, vch_type, 80'100),
      FIELD(channel_list_st, reserved_80102, 80'102),
      FIELD(channel_list_st, vnumber, 200'112),
      FIELD(channel_list_st, reserved_200114, 200'114),
      FIELD(channel_list_st, tv_vnumber, 296'116),
      FIELD(channel_list_st, reserved_296118, 296'118),
      FIELD(channel_list_st, radio_vnumber, 320'120),
      FIELD(channel_list_st, reserved_320122, 320'122),
      FIELD(channel_list_st, favorite_vnumber, 339'324),
      FIELD(channel_list_st, user_vnumber, 459'364),
      FIELD(channel_list_st, reserved_459366, 459'366),
      FIELD(channel_list_st, promo_vnumber, 459'608),
      FIELD(channel_list_st, network_num, 459'610),
      FIELD(channel_list_st, reserved_459612, 459'612),
      FIELD(channel_list_st, reserved_459624, 459'624),
      FIELD(channel_list_st, reserved_459704, 459'704),
      FIELD(channel_list_st, reserved_459728, 459'728),
  });
  expect_pointers_left_out<channel_list_st>({
      FIELD(channel_list_st, cur_vch, 80'104),
      FIELD(channel_list_st, cur_vnumber, 80'108),
      FIELD(channel_list_st, network_list, 459'616),
      FIELD(channel_list_st, spare_list_a, 459'696),
      FIELD(channel_list_st, spare_list_b, 459'720),
  });
}

std::vector<field_place> fields_of_an_entry(std::size_t in_memory, std::size_t in_image) {
  std::vector<field_place> fields = {
      FIELD(virtual_channel_st, vch_tag, 0),      FIELD(virtual_channel_st, favorite_id, 1),
      FIELD(virtual_channel_st, major_ch_num, 2), FIELD(virtual_channel_st, minor_ch_num, 4),
      FIELD(virtual_channel_st, net_index, 6),    FIELD(virtual_channel_st, reserved_7, 7),
      FIELD(virtual_channel_st, frequency, 8),    FIELD(virtual_channel_st, polarisation, 12),
      FIELD(virtual_channel_st, reserved_13, 13), FIELD(virtual_channel_st, service_id, 14),
      FIELD(virtual_channel_st, network_id, 16),  FIELD(virtual_channel_st, ts_id, 18),
  };
  for (field_place &field : fields) {
    field.in_memory += in_memory;
    field.in_image += in_image;
  }
  return fields;
}

struct view_array {
  std::size_t in_memory;
  std::size_t in_image;
  std::size_t entries;
};

// Favourite groups follow one another like the entries of one array.
constexpr view_array view_arrays[] = {
    {offsetof(channel_list_st, vch), 80'112, 5000},        {offsetof(channel_list_st, tv_vch), 200'116, 4000},
    {offsetof(channel_list_st, radio_vch), 296'120, 1000}, {offsetof(channel_list_st, favorite_vch), 320'124, 800},
    {offsetof(channel_list_st, user_vch), 339'364, 5000},  {offsetof(channel_list_st, promo_vch), 459'368, 10},
};

TEST(Image, OfTheListHoldsEveryFieldOfAnEntryInItsPlace) {
  expect_places<channel_list_st>(fields_of_an_entry(offsetof(channel_list_st, vch), 80'112));
}

TEST(Image, OfTheListHoldsTheEndsOfEveryViewInTheirPlaces) {
  for (const view_array &view : view_arrays) {
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}, view.entries - 1}) {
      const std::vector<field_place> fields =
          fields_of_an_entry(view.in_memory + i * sizeof(virtual_channel_st), view.in_image + i * 24);
      expect_places<channel_list_st>({fields.front(), fields.back()});
    }
  }
}

TEST(Image, OfTheListLeavesTheLinksOfEntriesOut) {
  for (const view_array &view : view_arrays) {
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}, view.entries - 1}) {
      expect_pointers_left_out<channel_list_st>(
          {{"rch", view.in_memory + i * sizeof(virtual_channel_st) + offsetof(virtual_channel_st, rch), sizeof(void *),
            view.in_image + i * 24 + 20}});
    }
  }
}

}  // namespace
