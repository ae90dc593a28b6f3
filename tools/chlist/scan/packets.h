// Transport stream packets (ISO/IEC 13818-1, 2.4.3) in bytes that come in pieces of any size: of 188 bytes, of 192 with
// the time of their arrival in front, of 204 with check bytes behind. Where the sync bytes stop the walk goes on where
// five of them stand in a row again, and what lies between is counted.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace chlist {

using byte_view = std::span<const std::uint8_t>;

inline constexpr std::size_t packet_size = 188;
inline constexpr std::uint8_t packet_sync = 0x47;
inline constexpr std::uint16_t null_packet_pid = 0x1FFF;
inline constexpr std::size_t pid_count = 0x2000;

class ts_packet {
 public:
  // The bytes are the 188 of one packet.
  explicit ts_packet(const std::uint8_t *bytes) : bytes_(bytes) {}

  [[nodiscard]] std::uint16_t pid() const { return static_cast<std::uint16_t>((bytes_[1] & 0x1FU) << 8U | bytes_[2]); }
  // A demodulator says that it could not correct the packet.
  [[nodiscard]] bool has_error() const { return (bytes_[1] & 0x80U) != 0; }
  [[nodiscard]] bool starts_unit() const { return (bytes_[1] & 0x40U) != 0; }
  [[nodiscard]] bool is_scrambled() const { return (bytes_[3] & 0xC0U) != 0; }
  [[nodiscard]] unsigned counter() const { return bytes_[3] & 0x0FU; }
  // The counter may begin anew here.
  [[nodiscard]] bool is_discontinuous() const { return has_adaptation() && bytes_[4] > 0 && (bytes_[5] & 0x80U) != 0; }
  // Empty without one, and when the adaptation field leaves none.
  [[nodiscard]] byte_view payload() const;

 private:
  [[nodiscard]] bool has_adaptation() const { return (bytes_[3] & 0x20U) != 0; }

  const std::uint8_t *bytes_;
};

class packet_walk {
 public:
  // Hands every whole packet on. Gives how many bytes are done with: those behind come again, with more behind them.
  template <class Take>
  std::size_t over(byte_view bytes, bool is_end, const Take &take) {
    std::size_t at = std::min(ahead_, bytes.size());
    ahead_ -= at;
    while (ahead_ == 0 && (stride_ != 0 || find_packets(bytes, at, is_end))) {
      for (; at + packet_size <= bytes.size() && bytes[at] == packet_sync; at += stride_) {
        take(ts_packet(bytes.data() + at));
        ++packets_;
      }
      if (at + packet_size > bytes.size() && (at >= bytes.size() || bytes[at] == packet_sync)) {
        break;
      }
      stride_ = 0;
    }
    return finish(bytes, at, is_end);
  }

  [[nodiscard]] std::uint64_t packets() const { return packets_; }
  // Those that belong to no packet.
  [[nodiscard]] std::uint64_t skipped_bytes() const { return skipped_bytes_ + skipped_here_; }

 private:
  // Moves to where packets begin; at the end of what can be told without more bytes when there are none.
  bool find_packets(byte_view bytes, std::size_t &at, bool is_end);
  std::size_t finish(byte_view bytes, std::size_t at, bool is_end);

  std::size_t stride_ = 0;  // from packet to packet; 0: not known
  std::size_t ahead_ = 0;   // bytes between packets that have yet to come
  std::uint64_t packets_ = 0;
  std::uint64_t skipped_bytes_ = 0;
  std::uint64_t skipped_here_ = 0;  // since the last packet, the time in front of the next one among them
};

}  // namespace chlist
