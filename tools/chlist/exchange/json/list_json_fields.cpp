// The tables follow the records' order.
#include "chlist/exchange/json/list_json_fields.h"

#include <type_traits>

#include "chlist/fields/pids.h"

namespace chlist {
namespace {

template <class Number>
constexpr json_field number(std::string_view name, std::size_t offset, bool is_needed, std::int64_t absent) {
  return {name, field_kind::number, offset, sizeof(Number), std::is_signed_v<Number>, is_needed, absent};
}

// A number that is always there; one with a value that it has when it is left out; reserved bytes; text with its
// length.
#define NEEDED(record, field) number<decltype(record::field)>(#field, offsetof(record, field), true, 0)
#define OPTIONAL(record, field, absent) number<decltype(record::field)>(#field, offsetof(record, field), false, absent)
#define RESERVED(record, field) \
  json_field { #field, field_kind::reserved, offsetof(record, field), sizeof(record::field) }
#define TEXT(record, name, field, is_needed) \
  json_field { name, field_kind::text, offsetof(record, field), sizeof(record::field), false, is_needed }
#define LENGTH(record, name, field, is_signed) \
  json_field { name, field_kind::length, offsetof(record, field), sizeof(record::field), is_signed }
#define NAMED_RESERVED(record, name, field) \
  json_field { name, field_kind::reserved, offsetof(record, field), sizeof(record::field) }

constexpr json_field list_fields[] = {
    NEEDED(channel_list_st, version),           NEEDED(channel_list_st, use_tuner),
    NEEDED(channel_list_st, ch_type),           NEEDED(channel_list_st, bouquet_id),
    NEEDED(channel_list_st, use_group_list),    NEEDED(channel_list_st, service_type),
    NEEDED(channel_list_st, net_index),         RESERVED(channel_list_st, reserved_9),
    NEEDED(channel_list_st, sub_group_id),      NEEDED(channel_list_st, vch_type),
    RESERVED(channel_list_st, reserved_80102),  RESERVED(channel_list_st, reserved_200114),
    RESERVED(channel_list_st, reserved_296118), RESERVED(channel_list_st, reserved_320122),
    RESERVED(channel_list_st, reserved_459366), RESERVED(channel_list_st, reserved_459612),
    RESERVED(channel_list_st, reserved_459624), RESERVED(channel_list_st, reserved_459704),
    RESERVED(channel_list_st, reserved_459728),
};

constexpr json_field group_fields[] = {
    NEEDED(group_st, id),
    TEXT(group_st, "name", name, true),
    LENGTH(group_st, "name_len", name_len, true),
    RESERVED(group_st, reserved_0),
};

constexpr json_field entry_fields[] = {
    NEEDED(virtual_channel_st, major_ch_num), OPTIONAL(virtual_channel_st, minor_ch_num, 0),
    NEEDED(virtual_channel_st, net_index),    NEEDED(virtual_channel_st, network_id),
    NEEDED(virtual_channel_st, ts_id),        NEEDED(virtual_channel_st, frequency),
    NEEDED(virtual_channel_st, polarisation), NEEDED(virtual_channel_st, service_id),
    OPTIONAL(virtual_channel_st, vch_tag, 0), OPTIONAL(virtual_channel_st, favorite_id, 0),
    RESERVED(virtual_channel_st, reserved_7), RESERVED(virtual_channel_st, reserved_13),
};

constexpr json_field network_fields[] = {
    NEEDED(network_ch_st, net_index),
    NEEDED(network_ch_st, network_id),
    TEXT(network_ch_st, "network_name", network_name, true),
    RESERVED(network_ch_st, reserved_9),
    RESERVED(network_ch_st, reserved_78),
    RESERVED(network_ch_st, reserved_88),
};

constexpr json_field transponder_fields[] = {
    NEEDED(tp_ch_st, ts_id),         NEEDED(tp_ch_st, frequency),     NEEDED(tp_ch_st, polarisation),
    RESERVED(tp_ch_st, reserved_10), RESERVED(tp_ch_st, reserved_17), RESERVED(tp_ch_st, reserved_20),
    RESERVED(tp_ch_st, reserved_32),
};

constexpr json_field keys_of_service[] = {
    TEXT(channel_st, "name", name[0].text, true),
    LENGTH(channel_st, "name_len", name[0].name_len, false),
    NAMED_RESERVED(channel_st, "reserved_8", name[0].reserved_0),
    NAMED_RESERVED(channel_st, "reserved_105", name[0].reserved_97),
    TEXT(channel_st, "short_name", name[1].text, false),
    LENGTH(channel_st, "short_name_len", name[1].name_len, false),
    NAMED_RESERVED(channel_st, "reserved_108", name[1].reserved_0),
    NAMED_RESERVED(channel_st, "reserved_205", name[1].reserved_97),
    RESERVED(channel_st, reserved_208),
    NEEDED(channel_st, net_index),
    NEEDED(channel_st, network_id),
    NEEDED(channel_st, ts_id),
    NEEDED(channel_st, frequency),
    NEEDED(channel_st, polarisation),
    NEEDED(channel_st, service_id),
    NEEDED(channel_st, service_type),
    OPTIONAL(channel_st, source_type, 0),
    OPTIONAL(channel_st, flag, 0),
    OPTIONAL(channel_st, provider_id, 0),
    OPTIONAL(channel_st, genre_id, 0),
    OPTIONAL(channel_st, country_id, 0),
    OPTIONAL(channel_st, pmt_pid, unset_pid),
    OPTIONAL(channel_st, pcr_pid, unset_pid),
    OPTIONAL(channel_st, video_pid, unset_pid),
    OPTIONAL(channel_st, video_tag, unset_tag),
    OPTIONAL(channel_st, video_ecm_pid, unset_pid),
    OPTIONAL(channel_st, audio_pid, unset_pid),
    OPTIONAL(channel_st, audio_tag, unset_tag),
    OPTIONAL(channel_st, user_order_key, 0),
    OPTIONAL(channel_st, reserved_pid, unset_pid),
    OPTIONAL(channel_st, reserved_id, unset_pid),
    RESERVED(channel_st, reserved_217),
    RESERVED(channel_st, reserved_236),
    RESERVED(channel_st, reserved_245),
    RESERVED(channel_st, reserved_251),
    RESERVED(channel_st, reserved_257),
    RESERVED(channel_st, reserved_262),
    RESERVED(channel_st, reserved_289),
    RESERVED(channel_st, reserved_300),
};

#define GROUPS(array, count)                                                                 \
  json_array {                                                                               \
#array, #count, offsetof(channel_list_st, array), offsetof(channel_list_st, count),      \
        sizeof(channel_list_st::array) / sizeof(group_st), sizeof(group_st), fields_of_group \
  }
#define VIEW(array, count)                                                                                       \
  json_array {                                                                                                   \
#array, #count, offsetof(channel_list_st, array), offsetof(channel_list_st, count),                          \
        sizeof(channel_list_st::array) / sizeof(virtual_channel_st), sizeof(virtual_channel_st), fields_of_entry \
  }

constexpr json_array group_arrays[] = {
    GROUPS(provider, provider_num),
    GROUPS(genre, genre_num),
    GROUPS(country, country_num),
    GROUPS(favorite_group, favorite_group_num),
};

constexpr json_array keys_of_views[] = {
    VIEW(vch, vnumber),           VIEW(tv_vch, tv_vnumber),       VIEW(radio_vch, radio_vnumber),
    VIEW(user_vch, user_vnumber), VIEW(promo_vch, promo_vnumber),
};

#undef NEEDED
#undef OPTIONAL
#undef RESERVED
#undef TEXT
#undef LENGTH
#undef NAMED_RESERVED
#undef GROUPS
#undef VIEW

}  // namespace

std::span<const json_field> fields_of_list() { return list_fields; }
std::span<const json_field> fields_of_group() { return group_fields; }
std::span<const json_field> fields_of_entry() { return entry_fields; }
std::span<const json_field> fields_of_network() { return network_fields; }
std::span<const json_field> fields_of_transponder() { return transponder_fields; }
std::span<const json_field> fields_of_service() { return keys_of_service; }
std::span<const json_array> groups_of_list() { return group_arrays; }
std::span<const json_array> views_of_list() { return keys_of_views; }

}  // namespace chlist
