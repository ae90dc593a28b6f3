// Sections (ISO/IEC 13818-1, 2.4.4) put together from the packets of one PID: whole, with the right CRC and without
// lengths that lead beyond their end. Whatever else comes is counted and goes no further.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "chlist/scan/packets.h"

namespace chlist {

// What of the tables did not come through.
struct reading_losses {
  std::uint64_t broken_packets = 0;  // that the demodulator could not correct
  std::uint64_t gaps = 0;            // places where packets are missing
  std::uint64_t scrambled = 0;       // packets
  std::uint64_t wrong_crc = 0;       // sections
  std::uint64_t malformed = 0;       // sections, or beginnings of some, whose lengths lie
  std::uint64_t beyond_memory = 0;   // sections that there was no room to keep

  [[nodiscard]] bool is_any() const {
    return broken_packets + gaps + scrambled + wrong_crc + malformed + beyond_memory > 0;
  }
};

// A section that is whole and sound.
class section {
 public:
  explicit section(byte_view bytes) : bytes_(bytes) {}

  [[nodiscard]] byte_view bytes() const { return bytes_; }
  [[nodiscard]] std::uint8_t table_id() const { return bytes_[0]; }
  [[nodiscard]] bool is_long() const { return (bytes_[1] & 0x80U) != 0; }
  // Only long sections have these.
  [[nodiscard]] std::uint16_t extension() const { return word(3); }
  [[nodiscard]] unsigned version() const { return bytes_[5] >> 1U & 0x1FU; }
  [[nodiscard]] bool is_current() const { return (bytes_[5] & 1U) != 0; }
  [[nodiscard]] std::uint8_t number() const { return bytes_[6]; }
  // The bytes between the header and the CRC.
  [[nodiscard]] byte_view content() const { return bytes_.subspan(8, bytes_.size() - 12); }

 private:
  [[nodiscard]] std::uint16_t word(std::size_t at) const {
    return static_cast<std::uint16_t>(bytes_[at] << 8U | bytes_[at + 1]);
  }

  byte_view bytes_;
};

// The CRC of ISO/IEC 13818-1, annex A: 0 over a section with its own behind it.
std::uint32_t crc_of(byte_view bytes);

class section_assembler {
 public:
  // Hands on the sections that the packet completes.
  template <class Take>
  void take(const ts_packet &packet, reading_losses &lost, const Take &take_section) {
    if (!follows(packet, lost)) {
      return;
    }
    byte_view payload = packet.payload();
    if (packet.starts_unit() && !payload.empty()) {
      const std::size_t begin = std::size_t{1} + payload[0];
      finish_old(payload.subspan(1, std::min(begin, payload.size()) - 1), lost, take_section);
      payload = payload.subspan(std::min(begin, payload.size()));
      is_open_ = true;
    }
    gather(payload, lost, take_section);
  }

 private:
  // Whether the packet brings something that goes on where the last one ended, or begins anew.
  bool follows(const ts_packet &packet, reading_losses &lost);
  // Counts what is wrong with a section.
  static bool is_sound(byte_view bytes, reading_losses &lost);
  void drop_rest(reading_losses &lost);

  template <class Take>
  void finish_old(byte_view end, reading_losses &lost, const Take &take_section) {
    gather(end, lost, take_section);
    drop_rest(lost);
  }

  template <class Take>
  void gather(byte_view payload, reading_losses &lost, const Take &take_section) {
    if (!is_open_) {
      return;
    }
    bytes_.insert(bytes_.end(), payload.begin(), payload.end());
    std::size_t begin = 0;
    for (std::size_t size = 0; (size = size_of_first(begin)) != 0 && begin + size <= bytes_.size(); begin += size) {
      const byte_view whole = byte_view(bytes_).subspan(begin, size);
      if (is_sound(whole, lost)) {
        take_section(section(whole));
      }
    }
    keep_from(begin);
  }

  // The size of the section that begins there; 0 while that is not known, and of stuffing.
  [[nodiscard]] std::size_t size_of_first(std::size_t begin) const;
  void keep_from(std::size_t begin);

  std::vector<std::uint8_t> bytes_;  // of at most one section and a packet
  bool is_open_ = false;             // a section began, and nothing was lost since
  unsigned next_counter_ = unknown_counter;

  static constexpr unsigned unknown_counter = 16;
};

}  // namespace chlist
