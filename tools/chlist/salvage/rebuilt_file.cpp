// Writes records one behind the other, as a save does.
#include "chlist/salvage/rebuilt_file.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include "chlist/salvage/record_bytes.h"

namespace chlist {
namespace {

class writer {
 public:
  writer(byte_span damaged, const record_sizes &sizes, const list_image &list)
      : damaged_(damaged), sizes_(sizes), bytes_(list.bytes) {}

  template <class Value>
  void set(std::size_t at, const Value &value) {
    std::memcpy(bytes_.data() + at, &value, sizeof value);
  }

  std::size_t append(std::optional<std::size_t> offset, std::size_t size) {
    const std::size_t at = bytes_.size();
    bytes_.resize(at + size);
    if (offset) {
      const byte_span record = damaged_.subspan(*offset, size);
      std::ranges::copy(record, bytes_.begin() + static_cast<std::ptrdiff_t>(at));
    }
    return at;
  }

#define CHLIST_SET(at, record, field, value) \
  set((at) + image_place<record>(offsetof(record, field)), static_cast<decltype(record::field)>(value))

  void append(const salvaged_records &records, const salvaged_transponder &transponder) {
    const std::size_t at = append(transponder.offset, sizes_.transponder);
    CHLIST_SET(at, tp_ch_st, ts_id, transponder.id.ts_id);
    CHLIST_SET(at, tp_ch_st, frequency, transponder.id.frequency);
    CHLIST_SET(at, tp_ch_st, polarisation, transponder.id.polarisation);
    CHLIST_SET(at, tp_ch_st, rch_num, transponder.services.size());
    for (const std::size_t service : transponder.services) {
      append(records.services[service].offset, sizes_.service);
    }
  }

  void append(const salvaged_records &records, const salvaged_network &network) {
    const std::size_t at = append(network.offset, sizes_.network);
    CHLIST_SET(at, network_ch_st, net_index, network.id.net_index);
    CHLIST_SET(at, network_ch_st, network_id, network.id.network_id);
    std::size_t count = 0;
    for (const std::size_t number : network.transponders) {
      if (const salvaged_transponder &transponder = records.transponders[number]; is_kept(transponder)) {
        append(records, transponder);
        ++count;
      }
    }
    CHLIST_SET(at, network_ch_st, tp_num, count);
  }

  std::vector<std::byte> write(int version, const salvaged_records &records) {
    std::size_t count = 0;
    for (const salvaged_network &network : records.networks) {
      if (is_kept(records, network)) {
        append(records, network);
        ++count;
      }
    }
    CHLIST_SET(0, channel_list_st, version, version);
    CHLIST_SET(0, channel_list_st, network_num, count);
    return std::move(bytes_);
  }

 private:
  byte_span damaged_;
  record_sizes sizes_;
  std::vector<std::byte> bytes_;
};

void must_be_countable(std::size_t count) {
  if (count > std::numeric_limits<std::uint16_t>::max()) {
    throw std::runtime_error("the file holds more records than a channel file can count");
  }
}

void must_be_countable(const salvaged_records &records) {
  must_be_countable(records.networks.size());
  for (const salvaged_network &network : records.networks) {
    must_be_countable(network.transponders.size());
  }
  for (const salvaged_transponder &transponder : records.transponders) {
    must_be_countable(transponder.services.size());
  }
}

}  // namespace

bool is_kept(const salvaged_transponder &transponder) {
  return !transponder.services.empty() || (transponder.offset && transponder.counted == 0);
}

bool is_kept(const salvaged_records &records, const salvaged_network &network) {
  return (network.offset && network.counted == 0) || std::ranges::any_of(network.transponders, [&](std::size_t number) {
           return is_kept(records.transponders[number]);
         });
}

std::vector<std::byte> rebuilt_bytes(byte_span damaged, const record_sizes &sizes, int version, const list_image &list,
                                     const salvaged_records &records) {
  must_be_countable(records);
  return writer(damaged, sizes, list).write(version, records);
}

}  // namespace chlist
