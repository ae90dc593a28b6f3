// Goes through the file once: services where they were found, and between them whatever agrees with what is known.
#include "chlist/salvage/salvaged_records.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "chlist/salvage/record_bytes.h"

namespace chlist {
namespace {

using channel::identity;

enum class record_kind { none, transponder, network };

std::string_view network_name_at(byte_span file, std::size_t network) {
  const std::size_t at = network + image_place<network_ch_st>(offsetof(network_ch_st, network_name));
  return {reinterpret_cast<const char *>(file.data()) + at, sizeof(network_ch_st::network_name)};
}

// A name that an empty transponder does not have: where a network has its name stand the frequency, the polarisation, a
// byte of no meaning and the count, which is zero.
bool has_name_of_its_own(byte_span file, std::size_t network) {
  constexpr std::size_t up_to_polarisation = 5;
  constexpr std::size_t up_to_count = 6;
  const std::string_view field = network_name_at(file, network);
  const std::size_t length = std::min(field.find('\0'), field.size());
  const bool is_zero_behind = field.find_first_not_of('\0', length) == std::string_view::npos;
  return length > up_to_count || (length >= up_to_polarisation && is_zero_behind);
}

class hierarchy_builder {
 public:
  hierarchy_builder(byte_span file, const record_sizes &sizes, const record_area &area, const witnesses &known)
      : file_(file), sizes_(sizes), area_(area), known_(known) {}

  salvaged_records arrange(const std::vector<found_service> &services) {
    std::size_t at = area_.begin;
    for (const found_service &service : services) {
      take_up_to(at, service.offset, &service);
      take(service);
      at = service.offset + sizes_.service;
    }
    take_up_to(at, file_.size(), nullptr);
    forsake_pending();
    forsake_networks();
    return std::move(records_);
  }

 private:
  // A record that stands between services. Empty ones, which nothing confirms, count when what follows fits.
  struct between {
    record_kind kind = record_kind::none;
    bool is_known = false;
  };

  [[nodiscard]] bool is_known_transponder(std::size_t at, std::size_t end, const found_service *next) const {
    constexpr std::size_t counted_up_to =
        image_place<tp_ch_st>(offsetof(tp_ch_st, rch_num)) + sizeof(tp_ch_st::rch_num);
    if (!fits(file_, at, sizes_.transponder) || at + counted_up_to > end) {
      return false;
    }
    const identity id = transponder_at(file_, at);
    return known_.know_transponder(id.ts_id, id.frequency, id.polarisation) ||
           (next != nullptr && at + sizes_.transponder == end && id.frequency != 0 && same_transponder(id, next->id));
  }

  [[nodiscard]] bool is_known_network(std::size_t at, std::size_t end, const found_service *next, bool in_frame) const {
    if (at + sizes_.network > end) {
      return false;
    }
    const identity id = network_at(file_, at);
    return known_.know_network(id.net_index, id.network_id) &&
           ((in_frame && has_name(file_, at)) || is_known_transponder(at + sizes_.network, end, next));
  }

  [[nodiscard]] between look_at(std::size_t at, std::size_t end, const found_service *next, bool in_frame) const {
    if (is_known_transponder(at, end, next)) {
      return {record_kind::transponder, true};
    }
    if (is_known_network(at, end, next, in_frame)) {
      return {record_kind::network, true};
    }
    if (!in_frame) {
      return {};
    }
    if (at + sizes_.network <= end && has_name_of_its_own(file_, at)) {
      return {record_kind::network, false};
    }
    if (at + sizes_.transponder <= end && is_empty_transponder(file_, at)) {
      return {record_kind::transponder, false};
    }
    return {};
  }

  // Whatever looks like a record within another list's own is none.
  void take_up_to(std::size_t begin, std::size_t end, const found_service *next) {
    for (const std::size_t list : area_.other_lists) {
      if (list >= begin && list < end) {
        take_between(begin, list, nullptr);
        begin = std::min(list + sizes_.list, end);
      }
    }
    take_between(begin, end, next);
  }

  using tentative = std::vector<std::pair<record_kind, std::size_t>>;

  void take_between(std::size_t begin, std::size_t end, const found_service *next) {
    bool in_frame = true;
    tentative unconfirmed;
    for (std::size_t at = begin; at < end;) {
      const between found = look_at(at, end, next, in_frame);
      if (found.kind == record_kind::none) {
        give_up(unconfirmed);
        in_frame = false;
        note_unexplained(at, 1);
        ++at;
        continue;
      }
      unconfirmed.emplace_back(found.kind, at);
      if (found.is_known) {
        confirm(unconfirmed);
      }
      in_frame = true;
      at += size_of(found.kind);
    }
    confirm(unconfirmed);
  }

  [[nodiscard]] std::size_t size_of(record_kind kind) const {
    return kind == record_kind::network ? sizes_.network : sizes_.transponder;
  }

  void give_up(tentative &unconfirmed) {
    for (const auto &[kind, at] : unconfirmed) {
      note_unexplained(at, size_of(kind));
    }
    unconfirmed.clear();
  }

  void confirm(tentative &unconfirmed) {
    for (const auto &[kind, at] : unconfirmed) {
      kind == record_kind::network ? take_network(at) : take_transponder(at);
    }
    unconfirmed.clear();
  }

  void note_unexplained(std::size_t at, std::size_t size) {
    auto &ranges = records_.unexplained;
    if (!ranges.empty() && ranges.back().offset + ranges.back().size == at) {
      ranges.back().size += size;
    } else {
      ranges.push_back({at, size});
    }
  }

  void take_network(std::size_t at) {
    forsake_pending();
    salvaged_network &network = records_.networks[network_of(network_at(file_, at))];
    records_.network_records.push_back(at);
    network.offset = network.offset.value_or(at);
    network.counted += CHLIST_FIELD(file_, at, network_ch_st, tp_num);
    current_network_ = &network - records_.networks.data();
  }

  // To which network it belongs, its first service says.
  void take_transponder(std::size_t at) {
    forsake_pending();
    pending_ = at;
    current_transponder_.reset();
  }

  void take(const found_service &service) {
    current_network_ = network_of(service.id);
    const std::size_t parent = transponder_of(service.id, *current_network_);
    if (const auto first = find_service(service.id); first) {
      drop_one(records_.services[*first], service);
      ++records_.transponders[parent].repeated;
      return;
    }
    services_.try_emplace(key_of(service.id), records_.services.size());
    records_.transponders[parent].services.push_back(records_.services.size());
    records_.services.push_back(service);
  }

  // The first stays, unless it is the damaged one.
  void drop_one(found_service &first, const found_service &again) {
    const bool is_better = first.is_doubtful && !again.is_doubtful;
    records_.repeated.push_back(is_better ? first : again);
    first = is_better ? again : first;
  }

  struct service_key {
    std::uint64_t ids;
    std::uint32_t band;
    bool operator==(const service_key &) const = default;
  };
  struct hash_of_service {
    std::size_t operator()(const service_key &of) const {
      return static_cast<std::size_t>((of.ids ^ std::uint64_t{of.band} << 32U) * 0x9E3779B97F4A7C15U >> 8U);
    }
  };

  static service_key key_of(const identity &id) {
    return {std::uint64_t{id.net_index} << 56U | std::uint64_t{id.network_id} << 40U | std::uint64_t{id.ts_id} << 24U |
                std::uint64_t{id.service_id} << 8U | id.polarisation,
            id.frequency / channel::frequency_tolerance};
  }

  [[nodiscard]] std::optional<std::size_t> find_service(const identity &id) const {
    service_key at = key_of(id);
    const std::uint32_t band = at.band;
    for (const std::uint32_t nearby : {band, band + 1, band - 1}) {
      at.band = nearby;
      if (const auto found = services_.find(at);
          found != services_.end() &&
          channel::same_frequency(records_.services[found->second].id.frequency, id.frequency)) {
        return found->second;
      }
    }
    return std::nullopt;
  }

  static std::uint32_t network_key(const identity &id) { return std::uint32_t{id.network_id} << 8U | id.net_index; }

  std::size_t network_of(const identity &id) {
    const auto [found, is_new] = networks_.emplace(network_key(id), records_.networks.size());
    if (is_new) {
      records_.networks.push_back({std::nullopt, id});
    }
    return found->second;
  }

  [[nodiscard]] bool agrees(std::size_t transponder, const identity &id, std::size_t network) const {
    const salvaged_transponder &record = records_.transponders[transponder];
    return record.network == network && same_transponder(record.id, id);
  }

  // The record that it stands below; another of its identity; one that is made for it.
  std::size_t transponder_of(const identity &id, std::size_t network) {
    if (pending_ && same_transponder(transponder_at(file_, *pending_), id)) {
      current_transponder_ = take_record(*pending_, network);
      pending_.reset();
    }
    if (current_transponder_ && agrees(*current_transponder_, id, network)) {
      return *current_transponder_;
    }
    if (const auto found = find_transponder(id, network); found) {
      return *found;
    }
    return add({.offset = std::nullopt, .id = id, .network = network});
  }

  // A record may come behind services of its own, which have had one made for them, or come again.
  std::size_t take_record(std::size_t at, std::size_t network) {
    const identity id = transponder_at(file_, at);
    const auto first = find_transponder(id, network);
    if (!first || (records_.transponders[*first].offset && records_.transponders[*first].id.ts_id != id.ts_id)) {
      return add_transponder(at, network);
    }
    salvaged_transponder &transponder = records_.transponders[*first];
    transponder.counted += CHLIST_FIELD(file_, at, tp_ch_st, rch_num);
    if (transponder.offset) {
      ++records_.networks[network].repeated;
    } else {
      transponder.offset = at;
      transponder.id = id;
    }
    return *first;
  }

  std::size_t add_transponder(std::size_t at, std::size_t network) {
    return add({.offset = at,
                .id = transponder_at(file_, at),
                .counted = CHLIST_FIELD(file_, at, tp_ch_st, rch_num),
                .network = network});
  }

  struct place {
    std::size_t network;
    std::uint32_t band;
    std::uint32_t rest;  // the polarisation, or without a frequency the transport stream id
    bool operator==(const place &) const = default;
  };
  struct hash {
    std::size_t operator()(const place &of) const {
      const std::uint64_t mixed = std::uint64_t{of.network} << 40U ^ std::uint64_t{of.rest} << 32U ^ of.band;
      return static_cast<std::size_t>(mixed * 0x9E3779B97F4A7C15U >> 24U);
    }
  };

  static place place_of(const identity &id, std::size_t network) {
    const std::uint32_t rest = id.frequency != 0 ? std::uint32_t{id.polarisation} : std::uint32_t{id.ts_id};
    return {network, id.frequency / channel::frequency_tolerance, rest};
  }

  std::size_t add(salvaged_transponder transponder) {
    const std::size_t number = records_.transponders.size();
    transponders_.emplace(place_of(transponder.id, transponder.network), number);
    records_.networks[transponder.network].transponders.push_back(number);
    records_.transponders.push_back(std::move(transponder));
    return number;
  }

  [[nodiscard]] std::optional<std::size_t> find_transponder(const identity &id, std::size_t network) const {
    std::optional<std::size_t> first;
    place at = place_of(id, network);
    const std::uint32_t band = at.band;
    for (const std::uint32_t nearby : {band, band + 1, band - 1}) {
      at.band = nearby;
      if (const auto found = transponders_.find(at);
          found != transponders_.end() && agrees(found->second, id, network)) {
        first = std::min(first.value_or(found->second), found->second);
      }
    }
    return first;
  }

  // A transponder below which no service of its own is left; an empty one is kept as it is.
  void forsake_pending() {
    if (!pending_) {
      return;
    }
    const std::size_t counted = CHLIST_FIELD(file_, *pending_, tp_ch_st, rch_num);
    if (counted == 0 && current_network_) {
      current_transponder_ = take_record(*pending_, *current_network_);
    } else {
      records_.without_services.push_back({"transponder", *pending_, counted});
    }
    pending_.reset();
  }

  void forsake_networks() {
    for (salvaged_network &network : records_.networks) {
      if (network.transponders.empty() && network.counted > 0 && network.offset) {
        records_.without_services.push_back({"network", *network.offset, network.counted});
      }
    }
  }

  byte_span file_;
  record_sizes sizes_;
  const record_area &area_;
  const witnesses &known_;
  salvaged_records records_;
  std::unordered_map<service_key, std::size_t, hash_of_service> services_;
  std::unordered_map<std::uint32_t, std::size_t> networks_;
  std::unordered_map<place, std::size_t, hash> transponders_;
  std::optional<std::size_t> current_network_;
  std::optional<std::size_t> current_transponder_;
  std::optional<std::size_t> pending_;  // a transponder's record whose network is not known yet
};

}  // namespace

salvaged_records arrange(byte_span file, const record_sizes &sizes, const record_area &area, const witnesses &known,
                         const std::vector<found_service> &services) {
  return hierarchy_builder(file, sizes, area, known).arrange(services);
}

}  // namespace chlist
