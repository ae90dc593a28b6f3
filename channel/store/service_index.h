// Resolves identities in about constant time for one pass over a whole list, with exactly the finder's answer and log
// lines: the first network, the first transponder in list order within the tolerance, the first service in it. Built
// for one call, since hosts write records directly; records may be filed while it lives, and services doomed.
#pragma once

#include <channel/records.h>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "channel/identity.h"
#include "channel/store/channel_list.h"
#include "channel/store/first_table.h"
#include "channel/store/transponder_table.h"

namespace channel {

// A network's identity in one number of 24 bits.
constexpr std::uint32_t network_key(std::uint8_t net_index, std::uint16_t network_id) {
  return std::uint32_t{net_index} << 16U | network_id;
}

struct record_counts {
  std::size_t networks = 0;
  std::size_t transponders = 0;
  std::size_t services = 0;
};

// The records that hang from a list, whatever the counts in them say.
record_counts count_records(list_head &network_list);

class service_index {
 public:
  // Over the channel list in memory. So many services may be filed while it lives, each on a transponder of its own.
  explicit service_index(std::size_t filed_later = 0) : service_index(channel_list, filed_later) {}
  // Over any list, which must outlive it.
  explicit service_index(channel_list_st &list, std::size_t filed_later = 0);

  // The service of an identity, as get_channel_st finds it. Part of every loop that asks for many: what is rare gets
  // copies, and an identity whose address goes nowhere else stays in registers.
  [[gnu::always_inline]] channel_st *resolve(const identity &id) {
    channel_st *found = look_up(id);
    return found != nullptr ? found : miss(identity{id});
  }
  // The same without a word: null for a miss.
  [[gnu::always_inline]] channel_st *look_up(const identity &id) {
    channel_st *found = id.frequency != 0 ? find(id) : find_without_frequency(identity{id});
    return list_->network_num != 0 ? found : nullptr;
  }
  [[gnu::always_inline]] channel_st *resolve(const virtual_channel_st &entry) { return resolve(identity_of(entry)); }

  using place = transponder_table::place;

  // The steps of filing (see filing.h).
  [[nodiscard]] network_ch_st *find_network(std::uint8_t net_index, std::uint16_t network_id) const;
  const place *find_transponder(const network_ch_st &network, const identity &id);
  [[nodiscard]] channel_st *find_service(const place &on, std::uint16_t service_id) const {
    return services_.find(service_key(on, service_id));
  }
  static tp_ch_st &record_of(const place &filed) { return *filed.transponder; }
  // What was appended to the hierarchy.
  void add(network_ch_st &network);
  const place *add(const network_ch_st &network, tp_ch_st &transponder);
  void add(const place &on, channel_st &service);

  // Services that were doomed, and are not freed yet, are found no more.
  void forget_doomed();

 private:
  // For identities without a frequency, which are few: made when the first is asked for. Places are those of the first
  // transponder with a transport stream id, and of the first of them that carries a service.
  struct ts_id_tables {
    explicit ts_id_tables(const record_counts &counts) : transponders(counts.transponders), services(counts.services) {}

    first_table<const place> transponders;
    first_table<const place> services;
  };

  struct transponder_query {
    std::uint32_t scope;
    std::uint32_t frequency;

    friend bool operator==(const transponder_query &, const transponder_query &) = default;
  };

  service_index(channel_list_st &list, const record_counts &counts, std::size_t filed_later);
  void add_with_services(network_ch_st &network);
  ts_id_tables &by_ts_id();
  void add_by_ts_id(const place &at);
  void add_by_ts_id(const place &on, const channel_st &service);

  // Services of one transponder stand together in most lists, so that it is found once for all of them. What was found
  // stays the answer: transponders are only added behind it.
  channel_st *find(const identity &id) {
    const transponder_query wanted = {scope_of(network_key(id.net_index, id.network_id), id.polarisation),
                                      id.frequency};
    if (wanted != last_found_) {
      const place *on = transponders_.find(wanted.scope, wanted.frequency);
      if (on == nullptr) {
        return nullptr;
      }
      last_found_ = wanted;
      last_place_ = on;
    }
    return find_service(*last_place_, id.service_id);
  }
  channel_st *find_without_frequency(const identity &id);
  channel_st *miss(const identity &id);
  // Transponders are told apart by frequency within a network and a polarisation.
  static std::uint32_t scope_of(std::uint32_t network, std::uint8_t polarisation) {
    return network << 8U | polarisation;
  }
  static std::uint32_t network_of(const place &at) { return at.scope >> 8U; }
  static std::uint64_t service_key(const place &on, std::uint16_t service_id) {
    return std::uint64_t{on.number} << 16U | service_id;
  }

  channel_list_st *list_;
  record_counts counts_;
  first_table<network_ch_st> networks_;
  transponder_table transponders_;
  first_table<channel_st> services_;
  std::size_t services_met_ = 0;
  std::optional<ts_id_tables> by_ts_id_;
  transponder_query last_found_ = {};  // none yet: frequency 0 is not looked up here
  const place *last_place_ = nullptr;
};

}  // namespace channel
