// Proves the layout of every record: with 32-bit pointers records are the images of the channel file, with 64-bit
// pointers the same fields stand in the same order behind native pointers. Nothing here is compiled into code.
#include <bit>
#include <channel/records.h>
#include <cstddef>

static_assert(std::endian::native == std::endian::little, "records are little-endian images");
static_assert(sizeof(void *) == 4 || sizeof(void *) == 8);

namespace {

constexpr std::size_t at(std::size_t pointers_of_32_bits, std::size_t pointers_of_64_bits) {
  return sizeof(void *) == 4 ? pointers_of_32_bits : pointers_of_64_bits;
}

#define FIELD(record, field, offset_32, offset_64) static_assert(offsetof(record, field) == at(offset_32, offset_64))
#define RECORD(record, size_32, size_64) static_assert(sizeof(record) == at(size_32, size_64))

RECORD(list_head, 8, 16);
FIELD(list_head, next, 0, 0);
FIELD(list_head, prev, 4, 8);

RECORD(name_slot_st, 100, 100);
FIELD(name_slot_st, text, 1, 1);
FIELD(name_slot_st, reserved_97, 97, 97);
FIELD(name_slot_st, name_len, 98, 98);

RECORD(group_st, 104, 104);
FIELD(group_st, id, 2, 2);
FIELD(group_st, name_len, 4, 4);
FIELD(group_st, name, 6, 6);

RECORD(virtual_channel_st, 24, 32);
FIELD(virtual_channel_st, vch_tag, 0, 0);
FIELD(virtual_channel_st, favorite_id, 1, 1);
FIELD(virtual_channel_st, major_ch_num, 2, 2);
FIELD(virtual_channel_st, minor_ch_num, 4, 4);
FIELD(virtual_channel_st, net_index, 6, 6);
FIELD(virtual_channel_st, reserved_7, 7, 7);
FIELD(virtual_channel_st, frequency, 8, 8);
FIELD(virtual_channel_st, polarisation, 12, 12);
FIELD(virtual_channel_st, reserved_13, 13, 13);
FIELD(virtual_channel_st, service_id, 14, 14);
FIELD(virtual_channel_st, network_id, 16, 16);
FIELD(virtual_channel_st, ts_id, 18, 18);
FIELD(virtual_channel_st, rch, 20, 24);

RECORD(channel_st, 312, 320);
FIELD(channel_st, list, 0, 0);
FIELD(channel_st, name, 8, 16);
FIELD(channel_st, reserved_208, 208, 216);
FIELD(channel_st, country_id, 210, 218);
FIELD(channel_st, genre_id, 212, 220);
FIELD(channel_st, provider_id, 214, 222);
FIELD(channel_st, net_index, 216, 224);
FIELD(channel_st, reserved_217, 217, 225);
FIELD(channel_st, frequency, 224, 232);
FIELD(channel_st, service_type, 232, 240);
FIELD(channel_st, source_type, 233, 241);
FIELD(channel_st, ts_id, 234, 242);
FIELD(channel_st, reserved_236, 236, 244);
FIELD(channel_st, network_id, 240, 248);
FIELD(channel_st, service_id, 242, 250);
FIELD(channel_st, polarisation, 244, 252);
FIELD(channel_st, reserved_245, 245, 253);
FIELD(channel_st, pmt_pid, 246, 254);
FIELD(channel_st, pcr_pid, 248, 256);
FIELD(channel_st, video_tag, 250, 258);
FIELD(channel_st, reserved_251, 251, 259);
FIELD(channel_st, video_pid, 252, 260);
FIELD(channel_st, video_ecm_pid, 254, 262);
FIELD(channel_st, audio_tag, 256, 264);
FIELD(channel_st, reserved_257, 257, 265);
FIELD(channel_st, audio_pid, 258, 266);
FIELD(channel_st, reserved_pid, 260, 268);
FIELD(channel_st, reserved_262, 262, 270);
FIELD(channel_st, reserved_id, 286, 294);
FIELD(channel_st, flag, 288, 296);
FIELD(channel_st, reserved_289, 289, 297);
FIELD(channel_st, user_order_key, 298, 306);
FIELD(channel_st, reserved_300, 300, 308);

RECORD(tp_ch_st, 336, 352);
FIELD(tp_ch_st, list, 0, 0);
FIELD(tp_ch_st, ts_id, 8, 16);
FIELD(tp_ch_st, reserved_10, 10, 18);
FIELD(tp_ch_st, frequency, 12, 20);
FIELD(tp_ch_st, polarisation, 16, 24);
FIELD(tp_ch_st, reserved_17, 17, 25);
FIELD(tp_ch_st, rch_num, 18, 26);
FIELD(tp_ch_st, reserved_20, 20, 28);
FIELD(tp_ch_st, rch_list, 24, 32);
FIELD(tp_ch_st, reserved_32, 32, 48);

RECORD(network_ch_st, 416, 432);
FIELD(network_ch_st, list, 0, 0);
FIELD(network_ch_st, net_index, 8, 16);
FIELD(network_ch_st, reserved_9, 9, 17);
FIELD(network_ch_st, network_id, 10, 18);
FIELD(network_ch_st, network_name, 12, 20);
FIELD(network_ch_st, tp_num, 76, 84);
FIELD(network_ch_st, reserved_78, 78, 86);
FIELD(network_ch_st, tp_list, 80, 88);
FIELD(network_ch_st, reserved_88, 88, 104);

RECORD(channel_list_st, 460032, 586560);
FIELD(channel_list_st, version, 0, 0);
FIELD(channel_list_st, use_tuner, 2, 2);
FIELD(channel_list_st, ch_type, 3, 3);
FIELD(channel_list_st, bouquet_id, 4, 4);
FIELD(channel_list_st, use_group_list, 6, 6);
FIELD(channel_list_st, service_type, 7, 7);
FIELD(channel_list_st, net_index, 8, 8);
FIELD(channel_list_st, reserved_9, 9, 9);
FIELD(channel_list_st, sub_group_id, 10, 10);
FIELD(channel_list_st, provider, 12, 12);
FIELD(channel_list_st, provider_num, 52012, 52012);
FIELD(channel_list_st, genre, 52014, 52014);
FIELD(channel_list_st, genre_num, 57214, 57214);
FIELD(channel_list_st, country, 57216, 57216);
FIELD(channel_list_st, country_num, 78016, 78016);
FIELD(channel_list_st, favorite_group, 78018, 78018);
FIELD(channel_list_st, favorite_group_num, 80098, 80098);
FIELD(channel_list_st, vch_type, 80100, 80100);
FIELD(channel_list_st, reserved_80102, 80102, 80102);
FIELD(channel_list_st, cur_vch, 80104, 80104);
FIELD(channel_list_st, cur_vnumber, 80108, 80112);
FIELD(channel_list_st, vch, 80112, 80120);
FIELD(channel_list_st, vnumber, 200112, 240120);
FIELD(channel_list_st, reserved_200114, 200114, 240122);
FIELD(channel_list_st, tv_vch, 200116, 240128);
FIELD(channel_list_st, tv_vnumber, 296116, 368128);
FIELD(channel_list_st, reserved_296118, 296118, 368130);
FIELD(channel_list_st, radio_vch, 296120, 368136);
FIELD(channel_list_st, radio_vnumber, 320120, 400136);
FIELD(channel_list_st, reserved_320122, 320122, 400138);
FIELD(channel_list_st, favorite_vch, 320124, 400144);
FIELD(channel_list_st, favorite_vnumber, 339324, 425744);
FIELD(channel_list_st, user_vch, 339364, 425784);
FIELD(channel_list_st, user_vnumber, 459364, 585784);
FIELD(channel_list_st, reserved_459366, 459366, 585786);
FIELD(channel_list_st, promo_vch, 459368, 585792);
FIELD(channel_list_st, promo_vnumber, 459608, 586112);
FIELD(channel_list_st, network_num, 459610, 586114);
FIELD(channel_list_st, reserved_459612, 459612, 586116);
FIELD(channel_list_st, network_list, 459616, 586120);
FIELD(channel_list_st, reserved_459624, 459624, 586136);
FIELD(channel_list_st, spare_list_a, 459696, 586208);
FIELD(channel_list_st, reserved_459704, 459704, 586224);
FIELD(channel_list_st, spare_list_b, 459720, 586240);
FIELD(channel_list_st, reserved_459728, 459728, 586256);

RECORD(return_channel_st, 32, 40);
FIELD(return_channel_st, group, 0, 0);
FIELD(return_channel_st, service_type, 1, 1);
FIELD(return_channel_st, sub_group, 2, 2);
FIELD(return_channel_st, vindex, 4, 4);
FIELD(return_channel_st, tag, 6, 6);
FIELD(return_channel_st, net_index, 7, 7);
FIELD(return_channel_st, vch, 8, 8);

RECORD(v8_channel_st, 480, 488);
FIELD(v8_channel_st, frequency, 224, 232);
FIELD(v8_channel_st, audio_pid, 258, 266);
FIELD(v8_channel_st, reserved_262, 262, 270);
FIELD(v8_channel_st, reserved_id, 460, 468);
FIELD(v8_channel_st, flag, 462, 470);
FIELD(v8_channel_st, reserved_463, 463, 471);
FIELD(v8_channel_st, reserved_464, 464, 472);

RECORD(v8_tp_ch_st, 504, 520);
FIELD(v8_tp_ch_st, extra, 336, 352);

RECORD(v8_network_ch_st, 584, 600);
FIELD(v8_network_ch_st, extra, 416, 432);

RECORD(v8_channel_list_st, 460200, 586728);
FIELD(v8_channel_list_st, extra, 460032, 586560);

#undef FIELD
#undef RECORD

}  // namespace
