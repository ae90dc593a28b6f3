// Resolves identities in about constant time for one pass over a whole list, with exactly the finder's answer: the
// first network, the first transponder in list order within the tolerance, the first service in it. Built for one call,
// since hosts write records directly; services may be filed while it lives, none may go.
#pragma once

#include <channel/records.h>
#include <optional>

#include "channel/identity.h"
#include "channel/store/first_table.h"

namespace channel {

class service_index {
 public:
  // Over the channel list in memory.
  service_index();

  // The service of an identity. A miss goes through the finder, so that its log lines appear as they always would.
  channel_st *resolve(const identity &id);
  channel_st *resolve(const virtual_channel_st &entry) { return resolve(identity_of(entry)); }

 private:
  // A transponder, by its place in list order; those of one bucket are chained.
  struct transponder_node {
    tp_ch_st *transponder;
    transponder_node *next_in_bucket;
  };
  struct record_counts {
    std::size_t networks = 0;
    std::size_t transponders = 0;
    std::size_t services = 0;
  };

  explicit service_index(const record_counts &counts);
  static record_counts count_records();
  void add_network(network_ch_st &network);
  void add_transponder(const network_ch_st &network, tp_ch_st &transponder);
  void index_by_ts_id();

  channel_st *find(const identity &id);
  [[nodiscard]] const transponder_node *find_transponder(const identity &id) const;
  [[nodiscard]] std::uint64_t service_key(const transponder_node &node, std::uint16_t service_id) const;

  record_counts counts_;
  std::size_t used_nodes_ = 0;
  transient<transponder_node> nodes_;
  first_table<network_ch_st> networks_;
  first_table<transponder_node> buckets_;
  first_table<channel_st> services_;
  std::optional<first_table<channel_st>> services_by_ts_id_;
};

}  // namespace channel
