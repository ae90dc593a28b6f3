#include "chosen_values.h"

#include <array>
#include <cstring>
#include <iterator>
#include <string_view>

namespace extremes {
namespace {

using test_support::byte_reader;

// The record of a list at a place, counted from 0; what is left of the place goes on to the next list.
template <class Record>
Record *record_at(const list_head &head, int &place) {
  for (list_head *node = head.next; node != nullptr && node != &head; node = node->next) {
    if (place-- == 0) {
      return reinterpret_cast<Record *>(node);
    }
  }
  return nullptr;
}

network_ch_st *network_at(int place) { return record_at<network_ch_st>(get_channel_list()->network_list, place); }

tp_ch_st *transponder_at(int place) {
  network_ch_st *network = nullptr;
  for (int n = 0; (network = network_at(n)) != nullptr; ++n) {
    if (auto *found = record_at<tp_ch_st>(network->tp_list, place); found != nullptr) {
      return found;
    }
  }
  return nullptr;
}

channel_st *service_at(int place) {
  tp_ch_st *transponder = nullptr;
  for (int n = 0; (transponder = transponder_at(n)) != nullptr; ++n) {
    if (auto *found = record_at<channel_st>(transponder->rch_list, place); found != nullptr) {
      return found;
    }
  }
  return nullptr;
}

// Any slot of any view, in use or not.
virtual_channel_st *entry_at(std::uint8_t view_type, std::uint8_t slot) {
  constexpr int plain_views = VIEW_PROMOTION + 1;
  const int code = view_type % (plain_views + MAX_FAV);
  const int shown = code < plain_views ? code : VIEW_FAVOURITE + code - plain_views;
  const int capacity = shown == VIEW_PROMOTION ? MAX_PROMO_CHANNEL : MAX_FAV_NUM;
  return get_virtual_channel_st(static_cast<std::int8_t>(shown)) + slot % capacity;
}

// An extreme for the first few numbers, else a record by number.
template <class Value, class Find>
Value extreme_or(byte_reader &from, const Find &find) {
  const std::uint8_t byte = from.byte();
  const std::vector<Value> values = values_of<Value>();
  return byte < values.size() ? values[byte] : find(static_cast<std::uint8_t>(byte - values.size()));
}

group_st group_called(std::string_view name) {
  group_st group = {};
  group.name_len = static_cast<std::int16_t>(name.size());
  std::memcpy(group.name, name.data(), name.size());
  return group;
}

// Names have 64 readable bytes.
struct name_buffer {
  explicit constexpr name_buffer(std::string_view name) { std::copy(name.begin(), name.end(), text.begin()); }
  std::array<char, 64> text{};
};

}  // namespace

template <>
channel_st *chosen(byte_reader &from) {
  return service_at(from.byte() - 1);
}

template <>
tp_ch_st *chosen(byte_reader &from) {
  return transponder_at(from.byte() - 1);
}

template <>
network_ch_st *chosen(byte_reader &from) {
  return network_at(from.byte() - 1);
}

template <>
virtual_channel_st *chosen(byte_reader &from) {
  const std::uint8_t view_type = from.byte();
  return view_type == 0 ? nullptr : entry_at(static_cast<std::uint8_t>(view_type - 1), from.byte());
}

template <>
const channel_st *chosen(byte_reader &from) {
  return extreme_or<const channel_st *>(from, service_at);
}

template <>
const virtual_channel_st *chosen(byte_reader &from) {
  return extreme_or<const virtual_channel_st *>(
      from, [&from](std::uint8_t view_type) { return entry_at(view_type, from.byte()); });
}

template <>
group_st chosen(byte_reader &from) {
  return extreme_or<group_st>(from, [](std::uint8_t byte) {
    const std::string_view letters = "abAByz";
    return group_called(letters.substr(byte % letters.size(), 1 + byte / letters.size() % 2));
  });
}

template <>
const char *chosen(byte_reader &from) {
  static constexpr std::array names = {name_buffer("list.dat"),
                                       name_buffer("/list.dat"),
                                       name_buffer("DATA/BACKUP/all_channel.dat"),
                                       name_buffer("/"),
                                       name_buffer("Ant"),
                                       name_buffer("a"),
                                       name_buffer("Network"),
                                       name_buffer("\x05\xE4\xF6\xFC%s%n")};
  return extreme_or<const char *>(from, [](std::uint8_t byte) { return names[byte % names.size()].text.data(); });
}

template <>
const std::int16_t *chosen(byte_reader &from) {
  static std::vector<std::int16_t> positions;
  return extreme_or<const std::int16_t *>(from, [&from](std::uint8_t /*byte*/) {
    constexpr std::size_t chosen_positions = 5;
    const std::int16_t *consecutive = values_of<const std::int16_t *>().back();
    positions.assign(consecutive, consecutive + std::numeric_limits<std::int16_t>::max());
    for (std::size_t i = 0; i < chosen_positions; ++i) {
      positions[i] = chosen<std::int16_t>(from);
    }
    return positions.data();
  });
}

}  // namespace extremes
