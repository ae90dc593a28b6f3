// Sync bytes in a row.
#include "chlist/scan/packets.h"

#include <array>
#include <cstring>

namespace chlist {
namespace {

constexpr std::size_t stride_with_times = 192;
constexpr std::array<std::size_t, 3> strides = {packet_size, stride_with_times, 204};
constexpr std::size_t wanted_syncs = 5;
// At the end of the bytes fewer do, but one alone is chance.
constexpr std::size_t wanted_syncs_at_end = 2;

bool is_row(byte_view bytes, std::size_t at, std::size_t stride) {
  std::size_t syncs = 0;
  while (syncs < wanted_syncs && at + packet_size <= bytes.size() && bytes[at] == packet_sync) {
    ++syncs;
    at += stride;
  }
  const bool is_behind = at + packet_size > bytes.size();
  return syncs == wanted_syncs || (is_behind && syncs >= wanted_syncs_at_end);
}

// The distance of the packets that begin here; 0 when none do.
std::size_t stride_at(byte_view bytes, std::size_t at) {
  for (const std::size_t stride : strides) {
    if (is_row(bytes, at, stride)) {
      return stride;
    }
  }
  return 0;
}

std::size_t next_sync(byte_view bytes, std::size_t at) {
  const void *found = at < bytes.size() ? std::memchr(bytes.data() + at, packet_sync, bytes.size() - at) : nullptr;
  return found != nullptr ? static_cast<std::size_t>(static_cast<const std::uint8_t *>(found) - bytes.data())
                          : bytes.size();
}

}  // namespace

byte_view ts_packet::payload() const {
  constexpr unsigned payload_bit = 0x10;
  const std::size_t begin = has_adaptation() ? std::size_t{5} + bytes_[4] : 4;
  return (bytes_[3] & payload_bit) != 0 && begin < packet_size ? byte_view(bytes_ + begin, packet_size - begin)
                                                               : byte_view();
}

bool packet_walk::find_packets(byte_view bytes, std::size_t &at, bool is_end) {
  constexpr std::size_t needed = strides.back() * wanted_syncs;
  const std::size_t begin = at;
  while (stride_ == 0 && (at = next_sync(bytes, at)) < bytes.size() && (is_end || at + needed <= bytes.size())) {
    stride_ = stride_at(bytes, at);
    at += stride_ == 0 ? 1 : 0;
  }
  skipped_here_ += at - begin;
  if (stride_ != 0) {
    const std::size_t time = stride_ == stride_with_times ? stride_with_times - packet_size : 0;
    skipped_bytes_ += skipped_here_ - std::min<std::uint64_t>(skipped_here_, time);
    skipped_here_ = 0;
  }
  return stride_ != 0;
}

std::size_t packet_walk::finish(byte_view bytes, std::size_t at, bool is_end) {
  if (at > bytes.size()) {
    ahead_ = at - bytes.size();
    return bytes.size();
  }
  skipped_bytes_ += is_end ? bytes.size() - at : 0;
  return is_end ? bytes.size() : at;
}

}  // namespace chlist
