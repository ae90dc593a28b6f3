// Every field of the records of versions 7 and 8 at its documented place in the image, both ways, and pointers nowhere.
#include "image_places.h"

namespace {

using channel::persist::image;
using test_support::expect_places;
using test_support::expect_pointers_left_out;

TEST(OldImage, OfAServiceHoldsEveryFieldInItsPlace) {
  static_assert(sizeof(image<v8_channel_st>) == 480);
  expect_places<v8_channel_st>({
      FIELD(v8_channel_st, name, 8),           FIELD(v8_channel_st, reserved_208, 208),
      FIELD(v8_channel_st, country_id, 210),   FIELD(v8_channel_st, genre_id, 212),
      FIELD(v8_channel_st, provider_id, 214),  FIELD(v8_channel_st, net_index, 216),
      FIELD(v8_channel_st, reserved_217, 217), FIELD(v8_channel_st, frequency, 224),
      FIELD(v8_channel_st, service_type, 232), FIELD(v8_channel_st, source_type, 233),
      FIELD(v8_channel_st, ts_id, 234),        FIELD(v8_channel_st, reserved_236, 236),
      FIELD(v8_channel_st, network_id, 240),   FIELD(v8_channel_st, service_id, 242),
      FIELD(v8_channel_st, polarisation, 244), FIELD(v8_channel_st, reserved_245, 245),
      FIELD(v8_channel_st, pmt_pid, 246),      FIELD(v8_channel_st, pcr_pid, 248),
      FIELD(v8_channel_st, video_tag, 250),    FIELD(v8_channel_st, reserved_251, 251),
      FIELD(v8_channel_st, video_pid, 252),    FIELD(v8_channel_st, video_ecm_pid, 254),
      FIELD(v8_channel_st, audio_tag, 256),    FIELD(v8_channel_st, reserved_257, 257),
      FIELD(v8_channel_st, audio_pid, 258),    FIELD(v8_channel_st, reserved_pid, 260),
      FIELD(v8_channel_st, reserved_262, 262), FIELD(v8_channel_st, reserved_id, 460),
      FIELD(v8_channel_st, flag, 462),         FIELD(v8_channel_st, reserved_463, 463),
      FIELD(v8_channel_st, reserved_464, 464),
  });
  expect_pointers_left_out<v8_channel_st>({FIELD(v8_channel_st, list, 0)});
}

TEST(OldImage, OfATransponderHoldsEveryFieldInItsPlace) {
  static_assert(sizeof(image<v8_tp_ch_st>) == 504);
  expect_places<v8_tp_ch_st>({
      FIELD(v8_tp_ch_st, base.ts_id, 8),
      FIELD(v8_tp_ch_st, base.reserved_10, 10),
      FIELD(v8_tp_ch_st, base.frequency, 12),
      FIELD(v8_tp_ch_st, base.polarisation, 16),
      FIELD(v8_tp_ch_st, base.reserved_17, 17),
      FIELD(v8_tp_ch_st, base.rch_num, 18),
      FIELD(v8_tp_ch_st, base.reserved_20, 20),
      FIELD(v8_tp_ch_st, base.reserved_32, 32),
      FIELD(v8_tp_ch_st, extra, 336),
  });
  expect_pointers_left_out<v8_tp_ch_st>({FIELD(v8_tp_ch_st, base.list, 0), FIELD(v8_tp_ch_st, base.rch_list, 24)});
}

TEST(OldImage, OfANetworkHoldsEveryFieldInItsPlace) {
  static_assert(sizeof(image<v8_network_ch_st>) == 584);
  expect_places<v8_network_ch_st>({
      FIELD(v8_network_ch_st, base.net_index, 8),
      FIELD(v8_network_ch_st, base.reserved_9, 9),
      FIELD(v8_network_ch_st, base.network_id, 10),
      FIELD(v8_network_ch_st, base.network_name, 12),
      FIELD(v8_network_ch_st, base.tp_num, 76),
      FIELD(v8_network_ch_st, base.reserved_78, 78),
      FIELD(v8_network_ch_st, base.reserved_88, 88),
      FIELD(v8_network_ch_st, extra, 416),
  });
  expect_pointers_left_out<v8_network_ch_st>(
      {FIELD(v8_network_ch_st, base.list, 0), FIELD(v8_network_ch_st, base.tp_list, 80)});
}

TEST(OldImage, OfTheListHoldsItsSettingsWhereTheyAreToday) {
  static_assert(sizeof(image<v8_channel_list_st>) == 460'200);
  expect_places<v8_channel_list_st>({
      FIELD(v8_channel_list_st, base.version, 0),
      FIELD(v8_channel_list_st, base.use_tuner, 2),
      FIELD(v8_channel_list_st, base.bouquet_id, 4),
      FIELD(v8_channel_list_st, base.use_group_list, 6),
      FIELD(v8_channel_list_st, base.service_type, 7),
      FIELD(v8_channel_list_st, base.net_index, 8),
      FIELD(v8_channel_list_st, base.sub_group_id, 10),
      FIELD(v8_channel_list_st, base.provider, 12),
      FIELD(v8_channel_list_st, base.favorite_group_num, 80'098),
      FIELD(v8_channel_list_st, base.vch_type, 80'100),
      FIELD(v8_channel_list_st, base.vnumber, 200'112),
      FIELD(v8_channel_list_st, base.tv_vnumber, 296'116),
      FIELD(v8_channel_list_st, base.radio_vnumber, 320'120),
      FIELD(v8_channel_list_st, base.favorite_vnumber, 339'324),
      FIELD(v8_channel_list_st, base.user_vnumber, 459'364),
      FIELD(v8_channel_list_st, base.promo_vnumber, 459'608),
      FIELD(v8_channel_list_st, base.network_num, 459'610),
      FIELD(v8_channel_list_st, base.reserved_459728, 459'728),
      FIELD(v8_channel_list_st, extra, 460'032),
  });
  expect_pointers_left_out<v8_channel_list_st>({
      FIELD(v8_channel_list_st, base.cur_vch, 80'104),
      FIELD(v8_channel_list_st, base.cur_vnumber, 80'108),
      FIELD(v8_channel_list_st, base.network_list, 459'616),
      FIELD(v8_channel_list_st, base.spare_list_a, 459'696),
      FIELD(v8_channel_list_st, base.spare_list_b, 459'720),
  });
}

TEST(OldImage, OfTheListHoldsTheEndsOfEveryViewWhereTheyAreToday) {
  expect_places<v8_channel_list_st>({
      FIELD(v8_channel_list_st, base.vch[0].major_ch_num, 80'114),
      FIELD(v8_channel_list_st, base.vch[4999].ts_id, 80'112 + 4999 * 24 + 18),
      FIELD(v8_channel_list_st, base.tv_vch[3999].ts_id, 200'116 + 3999 * 24 + 18),
      FIELD(v8_channel_list_st, base.radio_vch[999].ts_id, 296'120 + 999 * 24 + 18),
      FIELD(v8_channel_list_st, base.favorite_vch[19][39].ts_id, 320'124 + 799 * 24 + 18),
      FIELD(v8_channel_list_st, base.user_vch[4999].ts_id, 339'364 + 4999 * 24 + 18),
      FIELD(v8_channel_list_st, base.promo_vch[9].ts_id, 459'368 + 9 * 24 + 18),
  });
}

}  // namespace
