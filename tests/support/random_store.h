// Hierarchies, services and view entries as damaged or doubled lists may have them: values from small ranges, so that
// everything occurs twice, tolerances overlap and identities contradict the records they hang from. The same seed gives
// the same store.
#pragma once

#include <base/list.h>

#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "channel/identity.h"
#include "hierarchy_walk.h"
#include "store_builder.h"

namespace test_support {

class random_store {
 public:
  explicit random_store(unsigned seed) : random_(seed) {}

  int pick(int values) { return std::uniform_int_distribution<int>(0, values - 1)(random_); }

  std::uint32_t some_frequency() {
    static constexpr std::uint32_t edges[] = {0,     1,         2'499,      2'500,      4'999,       5'000,
                                              7'499, 9'999'999, 10'002'498, 10'002'499, 0xFFFF'F63C, 0xFFFF'FFFF};
    return edges[static_cast<std::size_t>(pick(std::size(edges)))];
  }

  channel::identity some_identity() {
    return {static_cast<std::uint8_t>(pick(3)),  static_cast<std::uint16_t>(pick(3)),
            static_cast<std::uint16_t>(pick(4)), some_frequency(),
            static_cast<std::uint16_t>(pick(6)), static_cast<std::uint8_t>(pick(2))};
  }

  // An unfiled service that no view lists: free() it or file it.
  channel_st *make_service() {
    const channel::identity id = some_identity();
    service_data data;
    data.net_index = id.net_index;
    data.network_id = id.network_id;
    data.ts_id = id.ts_id;
    data.frequency = id.frequency;
    data.service_id = id.service_id;
    data.polarisation = id.polarisation;
    data.service_type = 0x0C;
    channel_st *service = test_support::make_service(data);
    service->country_id = pick(4) == 0 ? 1 : 0;
    return service;
  }

  // Hangs records below each other; filing would refuse most of it.
  void build_hierarchy() {
    for (int networks = pick(5); networks > 0; --networks) {
      const channel::identity at = some_identity();
      network_ch_st *network = alloc_network_ch_info(at.net_index, at.network_id, network_name);
      for (int transponders = pick(8); transponders > 0; --transponders) {
        add_transponder(*network);
      }
    }
  }

  // Entries of which some resolve, in views of every kind.
  void fill_views() {
    for (const std::int8_t view : {VIEW_ALL, VIEW_TV, VIEW_USER, VIEW_WORK, VIEW_PROMOTION, VIEW_FAVOURITE}) {
      for (int entries = pick(8); entries > 0; --entries) {
        channel_st *service = make_service();
        append_entry(view, entry_of(*service, 1)).rch = nullptr;
        std::free(service);
      }
    }
  }

  static constexpr char network_name[64] = "Network";

 private:
  void add_transponder(network_ch_st &network) {
    const channel::identity at = some_identity();
    tp_ch_st *transponder = alloc_tp_ch_info(at.ts_id, at.frequency, at.polarisation);
    list_add_tail(&transponder->list, &network.tp_list);
    ++network.tp_num;
    for (int services = pick(6); services > 0; --services) {
      list_add_tail(&make_service()->list, &transponder->rch_list);
      ++transponder->rch_num;
    }
  }

  std::mt19937 random_;
};

inline std::string text_of(const channel_st &service) {
  std::ostringstream text;
  text << "service " << int{service.net_index} << ' ' << service.network_id << ' ' << service.ts_id << ' '
       << service.frequency << ' ' << service.service_id << ' ' << int{service.polarisation} << " mark "
       << service.country_id;
  return text.str();
}

// A line for each record, in list order.
inline std::vector<std::string> hierarchy_listing() {
  std::vector<std::string> listing;
  for (const network_ch_st *network : networks()) {
    std::ostringstream text;
    text << "network " << int{network->net_index} << ' ' << network->network_id << ' ' << network->network_name
         << " counts " << network->tp_num;
    listing.push_back(text.str());
    for (const tp_ch_st *transponder : transponders(*network)) {
      std::ostringstream below;
      below << "transponder " << transponder->ts_id << ' ' << transponder->frequency << ' '
            << int{transponder->polarisation} << " counts " << transponder->rch_num;
      listing.push_back(below.str());
      for (const channel_st *service : services(*transponder)) {
        listing.push_back(text_of(*service));
      }
    }
  }
  return listing;
}

// A line for each entry of each view: its identity, and the channel that it is linked to.
inline std::vector<std::string> entry_listing() {
  std::vector<std::string> listing;
  for (int view = VIEW_ALL; view <= VIEW_FAVOURITE_LAST; ++view) {
    if (view > VIEW_PROMOTION && view < VIEW_FAVOURITE) {
      continue;
    }
    const auto type = static_cast<std::int8_t>(view);
    for (int i = 0; i < *get_virtual_channel_vnumber(type); ++i) {
      const virtual_channel_st &entry = get_virtual_channel_st(type)[i];
      std::ostringstream text;
      text << "view " << view << ": " << int{entry.net_index} << ' ' << entry.network_id << ' ' << entry.ts_id << ' '
           << entry.frequency << ' ' << entry.service_id << ' ' << int{entry.polarisation} << " -> "
           << (entry.rch != nullptr ? text_of(*entry.rch) : "nothing");
      listing.push_back(text.str());
    }
  }
  return listing;
}

}  // namespace test_support
