/*
 * The layout of every record as a host's C compiler sees it. With 32-bit pointers a record is its image in the channel
 * file, byte for byte; with 64-bit pointers the same fields follow one another behind native pointers.
 */
#include <channel/channel.h>

#include <stddef.h>
#include <stdio.h>

#if UINTPTR_MAX == UINT32_MAX
#define EITHER(pointers_32, pointers_64) (pointers_32)
#else
#define EITHER(pointers_32, pointers_64) (pointers_64)
#endif

#define SIZE(record, pointers_32, pointers_64) \
  _Static_assert(sizeof(record) == EITHER(pointers_32, pointers_64), "size of " #record)
#define OFFSET(record, field, pointers_32, pointers_64) \
  _Static_assert(offsetof(record, field) == EITHER(pointers_32, pointers_64), "offset of " #record "." #field)
#define FIELD(record, field, pointers_32, pointers_64, bytes) \
  OFFSET(record, field, pointers_32, pointers_64);            \
  _Static_assert(sizeof(((record *)NULL)->field) == (bytes), "width of " #record "." #field)

SIZE(list_head, 8, 16);
OFFSET(list_head, next, 0, 0);
OFFSET(list_head, prev, 4, 8);

SIZE(virtual_channel_st, 24, 32);
FIELD(virtual_channel_st, vch_tag, 0, 0, 1);
FIELD(virtual_channel_st, favorite_id, 1, 1, 1);
FIELD(virtual_channel_st, major_ch_num, 2, 2, 2);
FIELD(virtual_channel_st, minor_ch_num, 4, 4, 2);
FIELD(virtual_channel_st, net_index, 6, 6, 1);
FIELD(virtual_channel_st, reserved_7, 7, 7, 1);
FIELD(virtual_channel_st, frequency, 8, 8, 4);
FIELD(virtual_channel_st, polarisation, 12, 12, 1);
FIELD(virtual_channel_st, reserved_13, 13, 13, 1);
FIELD(virtual_channel_st, service_id, 14, 14, 2);
FIELD(virtual_channel_st, network_id, 16, 16, 2);
FIELD(virtual_channel_st, ts_id, 18, 18, 2);
OFFSET(virtual_channel_st, rch, 20, 24);

SIZE(name_slot_st, 100, 100);
FIELD(name_slot_st, reserved_0, 0, 0, 1);
FIELD(name_slot_st, text, 1, 1, 96);
FIELD(name_slot_st, reserved_97, 97, 97, 1);
FIELD(name_slot_st, name_len, 98, 98, 2);

SIZE(channel_st, 312, 320);
OFFSET(channel_st, list, 0, 0);
FIELD(channel_st, name, 8, 16, 200);
FIELD(channel_st, reserved_208, 208, 216, 2);
FIELD(channel_st, country_id, 210, 218, 2);
FIELD(channel_st, genre_id, 212, 220, 2);
FIELD(channel_st, provider_id, 214, 222, 2);
FIELD(channel_st, net_index, 216, 224, 1);
FIELD(channel_st, reserved_217, 217, 225, 7);
FIELD(channel_st, frequency, 224, 232, 8);
FIELD(channel_st, service_type, 232, 240, 1);
FIELD(channel_st, source_type, 233, 241, 1);
FIELD(channel_st, ts_id, 234, 242, 2);
FIELD(channel_st, reserved_236, 236, 244, 4);
FIELD(channel_st, network_id, 240, 248, 2);
FIELD(channel_st, service_id, 242, 250, 2);
FIELD(channel_st, polarisation, 244, 252, 1);
FIELD(channel_st, reserved_245, 245, 253, 1);
FIELD(channel_st, pmt_pid, 246, 254, 2);
FIELD(channel_st, pcr_pid, 248, 256, 2);
FIELD(channel_st, video_tag, 250, 258, 1);
FIELD(channel_st, reserved_251, 251, 259, 1);
FIELD(channel_st, video_pid, 252, 260, 2);
FIELD(channel_st, video_ecm_pid, 254, 262, 2);
FIELD(channel_st, audio_tag, 256, 264, 1);
FIELD(channel_st, reserved_257, 257, 265, 1);
FIELD(channel_st, audio_pid, 258, 266, 2);
FIELD(channel_st, reserved_pid, 260, 268, 2);
FIELD(channel_st, reserved_262, 262, 270, 24);
FIELD(channel_st, reserved_id, 286, 294, 2);
FIELD(channel_st, flag, 288, 296, 1);
FIELD(channel_st, reserved_289, 289, 297, 9);
FIELD(channel_st, user_order_key, 298, 306, 2);
FIELD(channel_st, reserved_300, 300, 308, 12);

SIZE(tp_ch_st, 336, 352);
OFFSET(tp_ch_st, list, 0, 0);
FIELD(tp_ch_st, ts_id, 8, 16, 2);
FIELD(tp_ch_st, reserved_10, 10, 18, 2);
FIELD(tp_ch_st, frequency, 12, 20, 4);
FIELD(tp_ch_st, polarisation, 16, 24, 1);
FIELD(tp_ch_st, reserved_17, 17, 25, 1);
FIELD(tp_ch_st, rch_num, 18, 26, 2);
FIELD(tp_ch_st, reserved_20, 20, 28, 4);
OFFSET(tp_ch_st, rch_list, 24, 32);
FIELD(tp_ch_st, reserved_32, 32, 48, 304);

SIZE(network_ch_st, 416, 432);
OFFSET(network_ch_st, list, 0, 0);
FIELD(network_ch_st, net_index, 8, 16, 1);
FIELD(network_ch_st, reserved_9, 9, 17, 1);
FIELD(network_ch_st, network_id, 10, 18, 2);
FIELD(network_ch_st, network_name, 12, 20, 64);
FIELD(network_ch_st, tp_num, 76, 84, 2);
FIELD(network_ch_st, reserved_78, 78, 86, 2);
OFFSET(network_ch_st, tp_list, 80, 88);
FIELD(network_ch_st, reserved_88, 88, 104, 328);

SIZE(group_st, 104, 104);
FIELD(group_st, reserved_0, 0, 0, 2);
FIELD(group_st, id, 2, 2, 2);
FIELD(group_st, name_len, 4, 4, 2);
FIELD(group_st, name, 6, 6, 98);

SIZE(channel_list_st, 460032, 586560);
FIELD(channel_list_st, version, 0, 0, 2);
FIELD(channel_list_st, use_tuner, 2, 2, 1);
FIELD(channel_list_st, ch_type, 3, 3, 1);
FIELD(channel_list_st, bouquet_id, 4, 4, 2);
FIELD(channel_list_st, use_group_list, 6, 6, 1);
FIELD(channel_list_st, service_type, 7, 7, 1);
FIELD(channel_list_st, net_index, 8, 8, 1);
FIELD(channel_list_st, reserved_9, 9, 9, 1);
FIELD(channel_list_st, sub_group_id, 10, 10, 2);
FIELD(channel_list_st, provider, 12, 12, 52000);
FIELD(channel_list_st, provider_num, 52012, 52012, 2);
FIELD(channel_list_st, genre, 52014, 52014, 5200);
FIELD(channel_list_st, genre_num, 57214, 57214, 2);
FIELD(channel_list_st, country, 57216, 57216, 20800);
FIELD(channel_list_st, country_num, 78016, 78016, 2);
FIELD(channel_list_st, favorite_group, 78018, 78018, 2080);
FIELD(channel_list_st, favorite_group_num, 80098, 80098, 2);
FIELD(channel_list_st, vch_type, 80100, 80100, 2);
FIELD(channel_list_st, reserved_80102, 80102, 80102, 2);
OFFSET(channel_list_st, cur_vch, 80104, 80104);
OFFSET(channel_list_st, cur_vnumber, 80108, 80112);
OFFSET(channel_list_st, vch, 80112, 80120);
FIELD(channel_list_st, vnumber, 200112, 240120, 2);
FIELD(channel_list_st, reserved_200114, 200114, 240122, 2);
OFFSET(channel_list_st, tv_vch, 200116, 240128);
FIELD(channel_list_st, tv_vnumber, 296116, 368128, 2);
FIELD(channel_list_st, reserved_296118, 296118, 368130, 2);
OFFSET(channel_list_st, radio_vch, 296120, 368136);
FIELD(channel_list_st, radio_vnumber, 320120, 400136, 2);
FIELD(channel_list_st, reserved_320122, 320122, 400138, 2);
OFFSET(channel_list_st, favorite_vch, 320124, 400144);
FIELD(channel_list_st, favorite_vnumber, 339324, 425744, 40);
OFFSET(channel_list_st, user_vch, 339364, 425784);
FIELD(channel_list_st, user_vnumber, 459364, 585784, 2);
FIELD(channel_list_st, reserved_459366, 459366, 585786, 2);
OFFSET(channel_list_st, promo_vch, 459368, 585792);
FIELD(channel_list_st, promo_vnumber, 459608, 586112, 2);
FIELD(channel_list_st, network_num, 459610, 586114, 2);
FIELD(channel_list_st, reserved_459612, 459612, 586116, 4);
OFFSET(channel_list_st, network_list, 459616, 586120);
FIELD(channel_list_st, reserved_459624, 459624, 586136, 72);
OFFSET(channel_list_st, spare_list_a, 459696, 586208);
FIELD(channel_list_st, reserved_459704, 459704, 586224, 16);
OFFSET(channel_list_st, spare_list_b, 459720, 586240);
FIELD(channel_list_st, reserved_459728, 459728, 586256, 304);

SIZE(return_channel_st, 32, 40);
FIELD(return_channel_st, group, 0, 0, 1);
FIELD(return_channel_st, service_type, 1, 1, 1);
FIELD(return_channel_st, sub_group, 2, 2, 2);
FIELD(return_channel_st, vindex, 4, 4, 2);
FIELD(return_channel_st, tag, 6, 6, 1);
FIELD(return_channel_st, net_index, 7, 7, 1);
OFFSET(return_channel_st, vch, 8, 8);

SIZE(v8_channel_st, 480, 488);
OFFSET(v8_channel_st, list, 0, 0);
FIELD(v8_channel_st, name, 8, 16, 200);
FIELD(v8_channel_st, reserved_208, 208, 216, 2);
FIELD(v8_channel_st, country_id, 210, 218, 2);
FIELD(v8_channel_st, genre_id, 212, 220, 2);
FIELD(v8_channel_st, provider_id, 214, 222, 2);
FIELD(v8_channel_st, net_index, 216, 224, 1);
FIELD(v8_channel_st, reserved_217, 217, 225, 7);
FIELD(v8_channel_st, frequency, 224, 232, 8);
FIELD(v8_channel_st, service_type, 232, 240, 1);
FIELD(v8_channel_st, source_type, 233, 241, 1);
FIELD(v8_channel_st, ts_id, 234, 242, 2);
FIELD(v8_channel_st, reserved_236, 236, 244, 4);
FIELD(v8_channel_st, network_id, 240, 248, 2);
FIELD(v8_channel_st, service_id, 242, 250, 2);
FIELD(v8_channel_st, polarisation, 244, 252, 1);
FIELD(v8_channel_st, reserved_245, 245, 253, 1);
FIELD(v8_channel_st, pmt_pid, 246, 254, 2);
FIELD(v8_channel_st, pcr_pid, 248, 256, 2);
FIELD(v8_channel_st, video_tag, 250, 258, 1);
FIELD(v8_channel_st, reserved_251, 251, 259, 1);
FIELD(v8_channel_st, video_pid, 252, 260, 2);
FIELD(v8_channel_st, video_ecm_pid, 254, 262, 2);
FIELD(v8_channel_st, audio_tag, 256, 264, 1);
FIELD(v8_channel_st, reserved_257, 257, 265, 1);
FIELD(v8_channel_st, audio_pid, 258, 266, 2);
FIELD(v8_channel_st, reserved_pid, 260, 268, 2);
FIELD(v8_channel_st, reserved_262, 262, 270, 198);
FIELD(v8_channel_st, reserved_id, 460, 468, 2);
FIELD(v8_channel_st, flag, 462, 470, 1);
FIELD(v8_channel_st, reserved_463, 463, 471, 1);
FIELD(v8_channel_st, reserved_464, 464, 472, 16);

SIZE(v8_tp_ch_st, 504, 520);
OFFSET(v8_tp_ch_st, base, 0, 0);
FIELD(v8_tp_ch_st, extra, 336, 352, 168);

SIZE(v8_network_ch_st, 584, 600);
OFFSET(v8_network_ch_st, base, 0, 0);
FIELD(v8_network_ch_st, extra, 416, 432, 168);

SIZE(v8_channel_list_st, 460200, 586728);
OFFSET(v8_channel_list_st, base, 0, 0);
FIELD(v8_channel_list_st, extra, 460032, 586560, 168);

SIZE(SID_TYPE, 4, 4);

/* The order of bytes is what the compiler cannot prove. */
int main(void) {
  const uint32_t word = 0x04030201u;
  if (*(const unsigned char *)&word != 0x01) {
    puts("records are images of little-endian files");
    return 1;
  }
  return 0;
}
