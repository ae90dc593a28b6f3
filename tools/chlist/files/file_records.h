// A channel file record by record, as far as its counts lead: a list beside the one in memory, as it stands in the
// file, where every record keeps its place. Damaged files stop early, and what was read of them stays; nothing is
// refused.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "channel/persist/image.h"
#include "channel/persist/record_pool.h"
#include "channel/store/memory.h"
#include "chlist/files/file_bytes.h"

namespace chlist {

struct record_sizes {
  std::size_t list = 0;
  std::size_t network = 0;
  std::size_t transponder = 0;
  std::size_t service = 0;
};

// Versions 7 and 8 have longer records; every other version, known or not, is read with those of today.
record_sizes record_sizes_of(int version);
constexpr bool has_long_records(int version) { return version == 7 || version == 8; }

// Reads the record whose image stands at a place; what earlier versions put behind it is left out.
template <class Record>
void read_image(byte_span file, std::size_t at, Record &record) {
  const byte_span image = file.subspan(at, channel::persist::layout<Record>::size);
  std::memcpy(channel::persist::image_within(record), image.data(), image.size());
  channel::persist::settle_image(record);
}

// Where a byte of a record in memory stands in the record's image.
template <class Record>
constexpr std::size_t image_place(std::size_t in_memory) {
  for (const channel::persist::run &part : channel::persist::layout<Record>::runs) {
    const std::size_t stride = part.repeats > 1 ? part.memory_stride : part.size;
    if (in_memory >= part.in_memory && in_memory < part.in_memory + part.repeats * stride) {
      const std::size_t repeat = (in_memory - part.in_memory) / stride;
      return part.in_image + repeat * part.image_stride + (in_memory - part.in_memory) % stride;
    }
  }
  return 0;
}

template <class Record>
std::size_t place_in_image(const Record &record, const void *field) {
  return image_place<Record>(
      static_cast<std::size_t>(static_cast<const char *>(field) - reinterpret_cast<const char *>(&record)));
}

// A record of the list, its place in the file, and the position of the record that it stands below.
template <class Record>
struct framed_record {
  Record *record = nullptr;
  std::size_t offset = 0;
  std::size_t parent = 0;

  [[nodiscard]] std::size_t offset_of(const void *field) const { return offset + place_in_image(*record, field); }
};

// A record that is counted and not there, or not as a whole.
struct missing_record {
  std::string_view kind;  // "network", "transponder" or "service"
  std::size_t offset = 0;
  std::size_t position = 0;  // among those that one record counts, from 0
  std::size_t counted = 0;
  std::size_t present = 0;  // bytes
  std::size_t size = 0;
};

// In the order of the file.
struct placed_records {
  std::vector<framed_record<network_ch_st>> networks;
  std::vector<framed_record<tp_ch_st>> transponders;
  std::vector<framed_record<channel_st>> services;
  std::optional<missing_record> missing;
};

class file_records {
 public:
  // The bytes must outlive it.
  explicit file_records(byte_span file);
  file_records(const file_records &) = delete;
  file_records &operator=(const file_records &) = delete;

  [[nodiscard]] byte_span file() const { return file_; }
  [[nodiscard]] int version() const { return version_; }
  [[nodiscard]] const record_sizes &sizes() const { return sizes_; }
  // False when the file ends before the list's own record does; there is nothing else then, and the list is zero.
  [[nodiscard]] bool has_list() const { return file_.size() >= sizes_.list; }
  [[nodiscard]] bool is_whole() const { return has_list() && !placed_.missing; }
  // With everything that hangs from it; pointers of entries are null.
  [[nodiscard]] channel_list_st &list() const { return *list_; }
  [[nodiscard]] std::size_t offset_of(const void *field_of_list) const { return place_in_image(list(), field_of_list); }

  [[nodiscard]] const std::vector<framed_record<network_ch_st>> &networks() const { return placed_.networks; }
  [[nodiscard]] const std::vector<framed_record<tp_ch_st>> &transponders() const { return placed_.transponders; }
  [[nodiscard]] const std::vector<framed_record<channel_st>> &services() const { return placed_.services; }
  [[nodiscard]] const std::optional<missing_record> &missing() const { return placed_.missing; }
  // Where the last record that was read ends.
  [[nodiscard]] std::size_t end() const { return end_; }

 private:
  template <class Format>
  void read();

  byte_span file_;
  int version_;
  record_sizes sizes_;
  channel::persist::record_pool records_;
  channel::transient<void> list_memory_;
  channel_list_st *list_ = nullptr;
  placed_records placed_;
  std::size_t end_ = 0;
};

}  // namespace chlist
