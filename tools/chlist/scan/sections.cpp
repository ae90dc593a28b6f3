// Counters, CRCs, and the loops within the tables that are read.
#include "chlist/scan/sections.h"

#include <algorithm>
#include <array>

#include "chlist/scan/tables.h"

namespace chlist {
namespace {

constexpr std::uint8_t stuffing = 0xFF;
constexpr std::size_t header_size = 3;
constexpr std::size_t long_header_size = 8;
constexpr std::size_t crc_size = 4;
constexpr std::size_t largest_table_section = 1024;

constexpr std::array<std::uint32_t, 256> make_crc_table() {
  constexpr std::uint32_t polynomial = 0x04C11DB7;
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
    std::uint32_t value = byte << 24U;
    for (int bit = 0; bit < 8; ++bit) {
      value = value << 1U ^ ((value & 0x80000000U) != 0 ? polynomial : 0);
    }
    table[byte] = value;
  }
  return table;
}

constexpr std::array<std::uint32_t, 256> crc_table = make_crc_table();

// Twelve bits, as every loop of the tables has them in front.
std::size_t length_at(byte_view bytes, std::size_t at) { return (bytes[at] & 0x0FU) << 8U | bytes[at + 1]; }

// Takes a loop with its length in front; false when it is longer than what is there.
bool take_loop(byte_view &rest, byte_view &taken) {
  if (rest.size() < 2 || length_at(rest, 0) > rest.size() - 2) {
    return false;
  }
  taken = rest.subspan(2, length_at(rest, 0));
  rest = rest.subspan(2 + taken.size());
  return true;
}

bool are_descriptors(byte_view loop) {
  std::size_t at = 0;
  while (loop.size() - at >= 2 && loop[at + 1] <= loop.size() - at - 2U) {
    at += std::size_t{2} + loop[at + 1];
  }
  return at == loop.size();
}

// A loop of records: some bytes, and descriptors with their length in front.
bool are_records(byte_view rest, std::size_t bytes_in_front) {
  byte_view descriptors;
  while (rest.size() > bytes_in_front) {
    rest = rest.subspan(bytes_in_front);
    if (!take_loop(rest, descriptors) || !are_descriptors(descriptors)) {
      return false;
    }
  }
  return rest.empty();
}

// Descriptors, and a loop of transport streams.
bool is_network(byte_view content) {
  byte_view descriptors;
  byte_view streams;
  return take_loop(content, descriptors) && are_descriptors(descriptors) && take_loop(content, streams) &&
         are_records(streams, 4) && content.empty();
}

bool is_program_map(byte_view content) {
  byte_view descriptors;
  if (content.size() < 2) {
    return false;
  }
  content = content.subspan(2);
  return take_loop(content, descriptors) && are_descriptors(descriptors) && are_records(content, 3);
}

bool is_program_association(byte_view content) { return content.size() % 4 == 0; }
bool is_service_description(byte_view content) { return content.size() >= 3 && are_records(content.subspan(3), 3); }

struct table_form {
  std::uint8_t table_id;
  bool (*is_sound)(byte_view content);
};

constexpr table_form forms[] = {
    {table_id::program_association, is_program_association},
    {table_id::conditional_access, are_descriptors},
    {table_id::program_map, is_program_map},
    {table_id::network_actual, is_network},
    {table_id::network_other, is_network},
    {table_id::services_actual, is_service_description},
    {table_id::services_other, is_service_description},
    {table_id::bouquet, is_network},
};

bool has_form(const section &whole) {
  const auto *const form = std::ranges::find(forms, whole.table_id(), &table_form::table_id);
  if (form == std::end(forms)) {
    return true;
  }
  const byte_view bytes = whole.bytes();
  return whole.is_long() && bytes.size() <= largest_table_section && whole.number() <= bytes[7] &&
         form->is_sound(whole.content());
}

// A time offset section is short, and has a CRC all the same.
bool has_crc(const section &whole) { return whole.is_long() || whole.table_id() == table_id::time_offset; }

}  // namespace

std::uint32_t crc_of(byte_view bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    crc = crc << 8U ^ crc_table[crc >> 24U ^ byte];
  }
  return crc;
}

bool section_assembler::is_sound(byte_view bytes, reading_losses &lost) {
  const section whole(bytes);
  const bool has_header = bytes.size() >= (whole.is_long() ? long_header_size + crc_size : header_size);
  if (has_header && has_crc(whole) && crc_of(bytes) != 0) {
    ++lost.wrong_crc;
    return false;
  }
  const bool is_well_formed = has_header && has_form(whole);
  lost.malformed += is_well_formed ? 0 : 1;
  return is_well_formed;
}

bool section_assembler::follows(const ts_packet &packet, reading_losses &lost) {
  if (packet.is_scrambled()) {
    ++lost.scrambled;
    return false;
  }
  if (packet.payload().empty()) {
    return false;  // the counter stands still
  }
  const unsigned counter = packet.counter();
  const bool is_known = next_counter_ != unknown_counter && !packet.is_discontinuous();
  if (is_known && (counter + 1) % unknown_counter == next_counter_) {
    return false;  // sent twice
  }
  if (is_known && counter != next_counter_) {
    ++lost.gaps;
  }
  if (!is_known || counter != next_counter_) {
    bytes_.clear();
    is_open_ = false;
  }
  next_counter_ = (counter + 1) % unknown_counter;
  return true;
}

std::size_t section_assembler::size_of_first(std::size_t begin) const {
  const byte_view rest = byte_view(bytes_).subspan(begin);
  return rest.size() < header_size || rest[0] == stuffing ? 0 : header_size + length_at(rest, 1);
}

// Behind stuffing a section begins where the next packet says that one does.
void section_assembler::keep_from(std::size_t begin) {
  if (begin < bytes_.size() && bytes_[begin] == stuffing) {
    bytes_.clear();
    is_open_ = false;
  } else {
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(begin));
  }
}

// A section goes on although another one begins.
void section_assembler::drop_rest(reading_losses &lost) {
  lost.malformed += bytes_.empty() ? 0 : 1;
  bytes_.clear();
}

}  // namespace chlist
