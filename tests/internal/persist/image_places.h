// Fields of records in memory and the places that their images have for them, checked both ways.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "channel/persist/image.h"

namespace test_support {

using channel::persist::image;
using channel::persist::to_image;

// A field in memory, and where the file has it.
struct field_place {
  const char *name;
  std::size_t in_memory;
  std::size_t size;
  std::size_t in_image;
};

#define FIELD(record, field, in_image) \
  ::test_support::field_place { #record "." #field, offsetof(record, field), sizeof(record::field), in_image }

// A record as bytes.
template <class Record>
std::unique_ptr<Record> record_of(char byte) {
  auto record = std::make_unique<Record>();
  std::memset(static_cast<void *>(record.get()), byte, sizeof(Record));
  return record;
}

template <class Record>
std::string bytes_of(const Record &record) {
  return {reinterpret_cast<const char *>(&record), sizeof record};
}

template <class Record>
std::unique_ptr<image<Record>> image_of(std::byte byte) {
  auto filled = std::make_unique<image<Record>>();
  filled->fill(byte);
  return filled;
}

// The record whose image was read into its own last bytes; before, every bit was set.
template <class Record>
std::unique_ptr<Record> settled(const image<Record> &read) {
  auto record = record_of<Record>('\xFF');
  std::ranges::copy(read, channel::persist::image_within(*record));
  channel::persist::settle_image(*record);
  return record;
}

template <class Record>
void expect_written_to_its_place(const field_place &field) {
  const auto record = record_of<Record>('\0');
  std::memset(reinterpret_cast<char *>(record.get()) + field.in_memory, 0xFF, field.size);
  const auto written = image_of<Record>(std::byte{0});
  const auto expected = image_of<Record>(std::byte{0});
  std::fill_n(expected->begin() + static_cast<std::ptrdiff_t>(field.in_image), field.size, std::byte{0xFF});

  to_image(*record, *written);

  EXPECT_TRUE(*written == *expected) << field.name;
}

template <class Record>
void expect_read_from_its_place(const field_place &field) {
  const auto read = image_of<Record>(std::byte{0});
  std::fill_n(read->begin() + static_cast<std::ptrdiff_t>(field.in_image), field.size, std::byte{0xFF});
  const auto expected = record_of<Record>('\0');
  std::memset(reinterpret_cast<char *>(expected.get()) + field.in_memory, 0xFF, field.size);

  EXPECT_TRUE(bytes_of(*settled<Record>(*read)) == bytes_of(*expected)) << field.name;
}

template <class Record>
void expect_places(const std::vector<field_place> &fields) {
  for (const field_place &field : fields) {
    expect_written_to_its_place<Record>(field);
    expect_read_from_its_place<Record>(field);
  }
}

// Pointers are not written, and null when a record was read; every other byte is carried.
template <class Record>
void expect_pointers_left_out(const std::vector<field_place> &pointers) {
  const auto record = record_of<Record>('\0');
  for (const field_place &pointer : pointers) {
    std::memset(reinterpret_cast<char *>(record.get()) + pointer.in_memory, 0xEE, pointer.size);
  }
  const auto written = image_of<Record>(std::byte{0});
  to_image(*record, *written);
  EXPECT_TRUE(std::ranges::all_of(*written, [](std::byte byte) { return byte == std::byte{0}; }));

  // Ones in the slots of pointers, zeros everywhere else.
  const auto read = image_of<Record>(std::byte{0});
  for (const field_place &pointer : pointers) {
    const std::size_t slots = pointer.size / sizeof(void *);
    std::fill_n(read->begin() + static_cast<std::ptrdiff_t>(pointer.in_image), 4 * slots, std::byte{0xFF});
  }
  EXPECT_TRUE(bytes_of(*settled<Record>(*read)) == bytes_of(*record_of<Record>('\0')));
}

}  // namespace test_support
