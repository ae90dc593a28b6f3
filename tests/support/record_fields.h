// Where fields stand in the images of a channel file's records, which hold 32-bit pointers: named here once, for tests
// that write or read single bytes of a file. docs/file-format.md has all of them.
#pragma once

#include <cstddef>

namespace test_support {
// Nothing but the records' namespaces: tests that name fields of several records use the whole of it.
inline namespace record_fields {

namespace list_field {
inline constexpr std::size_t version = 0;
inline constexpr std::size_t use_tuner = 2;
inline constexpr std::size_t ch_type = 3;
inline constexpr std::size_t bouquet_id = 4;
inline constexpr std::size_t use_group_list = 6;
inline constexpr std::size_t service_type = 7;
inline constexpr std::size_t net_index = 8;
inline constexpr std::size_t sub_group_id = 10;
inline constexpr std::size_t provider = 12;
inline constexpr std::size_t provider_num = 52'012;
inline constexpr std::size_t genre = 52'014;
inline constexpr std::size_t genre_num = 57'214;
inline constexpr std::size_t country = 57'216;
inline constexpr std::size_t country_num = 78'016;
inline constexpr std::size_t favorite_group = 78'018;
inline constexpr std::size_t favorite_group_num = 80'098;
inline constexpr std::size_t vch_type = 80'100;
inline constexpr std::size_t cur_vch = 80'104;
inline constexpr std::size_t vch = 80'112;
inline constexpr std::size_t vnumber = 200'112;
inline constexpr std::size_t tv_vch = 200'116;
inline constexpr std::size_t tv_vnumber = 296'116;
inline constexpr std::size_t radio_vch = 296'120;
inline constexpr std::size_t radio_vnumber = 320'120;
inline constexpr std::size_t favorite_vch = 320'124;
inline constexpr std::size_t favorite_vnumber = 339'324;
inline constexpr std::size_t user_vch = 339'364;
inline constexpr std::size_t user_vnumber = 459'364;
inline constexpr std::size_t promo_vch = 459'368;
inline constexpr std::size_t promo_vnumber = 459'608;
inline constexpr std::size_t network_num = 459'610;
inline constexpr std::size_t network_list = 459'616;
inline constexpr std::size_t spare_list_a = 459'696;
inline constexpr std::size_t spare_list_b = 459'720;
}  // namespace list_field

namespace network_field {
inline constexpr std::size_t net_index = 8;
inline constexpr std::size_t reserved_9 = 9;
inline constexpr std::size_t network_id = 10;
inline constexpr std::size_t network_name = 12;
inline constexpr std::size_t tp_num = 76;
inline constexpr std::size_t reserved_78 = 78;
inline constexpr std::size_t tp_list = 80;
inline constexpr std::size_t reserved_88 = 88;
}  // namespace network_field

namespace transponder_field {
inline constexpr std::size_t ts_id = 8;
inline constexpr std::size_t reserved_10 = 10;
inline constexpr std::size_t frequency = 12;
inline constexpr std::size_t polarisation = 16;
inline constexpr std::size_t rch_num = 18;
inline constexpr std::size_t rch_list = 24;
inline constexpr std::size_t reserved_32 = 32;
}  // namespace transponder_field

namespace service_field {
inline constexpr std::size_t name = 9;
inline constexpr std::size_t behind_name = 105;
inline constexpr std::size_t name_len = 106;
inline constexpr std::size_t country_id = 210;
inline constexpr std::size_t genre_id = 212;
inline constexpr std::size_t provider_id = 214;
inline constexpr std::size_t net_index = 216;
inline constexpr std::size_t frequency = 224;
inline constexpr std::size_t service_type = 232;
inline constexpr std::size_t source_type = 233;
inline constexpr std::size_t ts_id = 234;
inline constexpr std::size_t network_id = 240;
inline constexpr std::size_t service_id = 242;
inline constexpr std::size_t polarisation = 244;
inline constexpr std::size_t pmt_pid = 246;
inline constexpr std::size_t pcr_pid = 248;
inline constexpr std::size_t video_tag = 250;
inline constexpr std::size_t video_pid = 252;
inline constexpr std::size_t video_ecm_pid = 254;
inline constexpr std::size_t audio_tag = 256;
inline constexpr std::size_t audio_pid = 258;
inline constexpr std::size_t reserved_pid = 260;
inline constexpr std::size_t reserved_id = 286;
inline constexpr std::size_t flag = 288;
inline constexpr std::size_t user_order_key = 298;
}  // namespace service_field

namespace entry_field {
inline constexpr std::size_t vch_tag = 0;
inline constexpr std::size_t favorite_id = 1;
inline constexpr std::size_t major_ch_num = 2;
inline constexpr std::size_t minor_ch_num = 4;
inline constexpr std::size_t net_index = 6;
inline constexpr std::size_t frequency = 8;
inline constexpr std::size_t polarisation = 12;
inline constexpr std::size_t service_id = 14;
inline constexpr std::size_t network_id = 16;
inline constexpr std::size_t ts_id = 18;
inline constexpr std::size_t rch = 20;
}  // namespace entry_field

namespace group_field {
inline constexpr std::size_t id = 2;
inline constexpr std::size_t name_len = 4;
inline constexpr std::size_t name = 6;
}  // namespace group_field

}  // namespace record_fields
}  // namespace test_support
