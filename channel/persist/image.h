// The one conversion between records in memory and their images in files, run by run of bytes. An image keeps 4-byte
// slots where a record has pointers: written as zero, never read. Every other byte is carried, reserved ones included.
#pragma once

#include <algorithm>
#include <array>
#include <channel/records.h>
#include <cstddef>
#include <cstring>
#include <utility>

#include "channel/store/image_sizes.h"
#include "channel/store/view.h"

namespace channel::persist {

// Bytes that stand together in the record and in its image; repeated for arrays of records.
struct run {
  std::size_t in_memory;
  std::size_t in_image;
  std::size_t size;
  std::size_t repeats = 1;
  std::size_t memory_stride = 0;
  std::size_t image_stride = 0;
};

// What an image is made of: its size and its runs. One specialisation for each record that stands in files.
template <class Record>
struct layout;

template <class Record>
using image = std::array<std::byte, layout<Record>::size>;

namespace detail {

constexpr std::size_t end_in_memory(const run &part) {
  return part.repeats > 1 ? part.in_memory + part.repeats * part.memory_stride : part.in_memory + part.size;
}

// Moves a run of an image that stands in the last bytes of its record to its place, and clears the pointers before and
// in it. Runs lie at or behind their places, in order: none is overwritten before it is moved.
template <class Record, std::size_t Index>
void settle_run(std::byte *memory) {
  constexpr run part = layout<Record>::runs[Index];
  constexpr std::size_t now_at = sizeof(Record) - layout<Record>::size + part.in_image;
  constexpr std::size_t gap = Index == 0 ? 0 : end_in_memory(layout<Record>::runs[Index - 1]);
  static_assert(gap <= part.in_memory && part.in_memory <= now_at);
  static_assert(end_in_memory(part) <= now_at + (part.repeats > 1 ? part.repeats * part.image_stride : part.size));
  std::memset(memory + gap, 0, part.in_memory - gap);
  if constexpr (part.repeats > 1) {
    for (std::size_t i = 0; i < part.repeats; ++i) {
      std::byte *entry = memory + part.in_memory + i * part.memory_stride;
      std::array<std::byte, part.size> carried;
      std::memcpy(carried.data(), memory + now_at + i * part.image_stride, carried.size());
      std::memcpy(entry, carried.data(), carried.size());
      std::memset(entry + part.size, 0, part.memory_stride - part.size);
    }
  } else if constexpr (now_at != part.in_memory) {
    std::memmove(memory + part.in_memory, memory + now_at, part.size);
  }
}

template <class Record, std::size_t Index>
void write_run(const std::byte *memory, std::byte *bytes) {
  constexpr run part = layout<Record>::runs[Index];
  for (std::size_t i = 0; i < part.repeats; ++i) {
    std::memcpy(bytes + part.in_image + i * part.image_stride, memory + part.in_memory + i * part.memory_stride,
                part.size);
  }
}

template <class Record, std::size_t... Index>
void settle_runs(std::byte *memory, std::index_sequence<Index...> /*runs*/) {
  (settle_run<Record, Index>(memory), ...);
}

template <class Record, std::size_t... Index>
void write_runs(const std::byte *memory, std::byte *bytes, std::index_sequence<Index...> /*runs*/) {
  (write_run<Record, Index>(memory, bytes), ...);
}

}  // namespace detail

// Where a record's image is read to, to become the record in place: its last bytes.
template <class Record>
std::byte *image_within(Record &record) {
  return reinterpret_cast<std::byte *>(&record) + sizeof(Record) - layout<Record>::size;
}

// Makes a record of the image within it. The record's pointers are null afterwards.
template <class Record>
void settle_image(Record &record) {
  detail::settle_runs<Record>(reinterpret_cast<std::byte *>(&record),
                              std::make_index_sequence<layout<Record>::runs.size()>{});
}

// Fills an image, zero before, from a record. The slots of pointers stay zero.
template <class Record>
void to_image(const Record &record, image<Record> &bytes) {
  detail::write_runs<Record>(reinterpret_cast<const std::byte *>(&record), bytes.data(),
                             std::make_index_sequence<layout<Record>::runs.size()>{});
}

inline constexpr std::size_t pointer_slot_size = 4;
inline constexpr std::size_t entry_image_size = 24;
inline constexpr std::size_t extra_bytes = sizeof(v8_tp_ch_st::extra);

constexpr run bytes_between(std::size_t begin, std::size_t end, std::size_t in_image) {
  return {begin, in_image, end - begin};
}

// The entries of a view: everything but the pointer to the real channel.
constexpr run entries_at(std::size_t begin, std::size_t size, std::size_t in_image) {
  return {begin,           in_image, entry_bytes, size / sizeof(virtual_channel_st), sizeof(virtual_channel_st),
          entry_image_size};
}

// From one field to the end of another; the bytes stand together in the image.
#define CHANNEL_RUN(record, first, in_image, last) \
  bytes_between(offsetof(record, first), offsetof(record, last) + sizeof(record::last), in_image)
#define CHANNEL_VIEW_RUN(array, in_image) \
  entries_at(offsetof(channel_list_st, array), sizeof(channel_list_st::array), in_image)

template <>
struct layout<channel_st> {
  static constexpr std::size_t size = service_image_size;
  static constexpr std::array runs = {CHANNEL_RUN(channel_st, name, 8, reserved_300)};
};

template <>
struct layout<tp_ch_st> {
  static constexpr std::size_t size = transponder_image_size;
  static constexpr std::array runs = {CHANNEL_RUN(tp_ch_st, ts_id, 8, reserved_20),
                                      CHANNEL_RUN(tp_ch_st, reserved_32, 32, reserved_32)};
};

template <>
struct layout<network_ch_st> {
  static constexpr std::size_t size = network_image_size;
  static constexpr std::array runs = {CHANNEL_RUN(network_ch_st, net_index, 8, reserved_78),
                                      CHANNEL_RUN(network_ch_st, reserved_88, 88, reserved_88)};
};

template <>
struct layout<channel_list_st> {
  static constexpr std::size_t size = list_image_size;
  static constexpr std::array runs = {
      CHANNEL_RUN(channel_list_st, version, 0, reserved_80102),
      CHANNEL_VIEW_RUN(vch, 80112),
      CHANNEL_RUN(channel_list_st, vnumber, 200112, reserved_200114),
      CHANNEL_VIEW_RUN(tv_vch, 200116),
      CHANNEL_RUN(channel_list_st, tv_vnumber, 296116, reserved_296118),
      CHANNEL_VIEW_RUN(radio_vch, 296120),
      CHANNEL_RUN(channel_list_st, radio_vnumber, 320120, reserved_320122),
      CHANNEL_VIEW_RUN(favorite_vch, 320124),
      CHANNEL_RUN(channel_list_st, favorite_vnumber, 339324, favorite_vnumber),
      CHANNEL_VIEW_RUN(user_vch, 339364),
      CHANNEL_RUN(channel_list_st, user_vnumber, 459364, reserved_459366),
      CHANNEL_VIEW_RUN(promo_vch, 459368),
      CHANNEL_RUN(channel_list_st, promo_vnumber, 459608, reserved_459612),
      CHANNEL_RUN(channel_list_st, reserved_459624, 459624, reserved_459624),
      CHANNEL_RUN(channel_list_st, reserved_459704, 459704, reserved_459704),
      CHANNEL_RUN(channel_list_st, reserved_459728, 459728, reserved_459728),
  };
};

// Records of versions 7 and 8: today's runs, and what those versions put behind the record.
template <class Base, class Extended>
constexpr auto runs_with_extra_bytes() {
  constexpr std::size_t count = layout<Base>::runs.size();
  std::array<run, count + 1> runs{};
  std::copy(layout<Base>::runs.begin(), layout<Base>::runs.end(), runs.begin());
  runs[count] = {offsetof(Extended, extra), layout<Base>::size, extra_bytes};
  return runs;
}

template <>
struct layout<v8_channel_st> {
  static constexpr std::size_t size = layout<channel_st>::size + extra_bytes;
  static constexpr std::array runs = {CHANNEL_RUN(v8_channel_st, name, 8, reserved_464)};
};

template <>
struct layout<v8_tp_ch_st> {
  static constexpr std::size_t size = layout<tp_ch_st>::size + extra_bytes;
  static constexpr auto runs = runs_with_extra_bytes<tp_ch_st, v8_tp_ch_st>();
};

template <>
struct layout<v8_network_ch_st> {
  static constexpr std::size_t size = layout<network_ch_st>::size + extra_bytes;
  static constexpr auto runs = runs_with_extra_bytes<network_ch_st, v8_network_ch_st>();
};

template <>
struct layout<v8_channel_list_st> {
  static constexpr std::size_t size = layout<channel_list_st>::size + extra_bytes;
  static constexpr auto runs = runs_with_extra_bytes<channel_list_st, v8_channel_list_st>();
};

template <class Record>
constexpr std::size_t bytes_carried() {
  std::size_t sum = 0;
  for (const run &part : layout<Record>::runs) {
    sum += part.size * part.repeats;
  }
  return sum;
}

// Every byte of an image is carried but for the slots of pointers.
inline constexpr std::size_t link_slots = 2 * pointer_slot_size;
static_assert(bytes_carried<channel_st>() + link_slots == service_image_size);
static_assert(bytes_carried<v8_channel_st>() + link_slots == layout<v8_channel_st>::size);
static_assert(bytes_carried<tp_ch_st>() + 2 * link_slots == transponder_image_size);
static_assert(bytes_carried<network_ch_st>() + 2 * link_slots == network_image_size);
inline constexpr std::size_t entries_of_all_views = MAX_CHANNEL + MAX_TV_CHANNEL + MAX_RADIO_CHANNEL +
                                                    std::size_t{MAX_FAV} * MAX_FAV_NUM + MAX_CHANNEL +
                                                    MAX_PROMO_CHANNEL;
static_assert(bytes_carried<channel_list_st>() + 4 * link_slots + pointer_slot_size * entries_of_all_views ==
              list_image_size);

#undef CHANNEL_RUN
#undef CHANNEL_VIEW_RUN

}  // namespace channel::persist
