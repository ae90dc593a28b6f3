#include "hostile_lists.h"

#include <algorithm>

#include "full_list.h"
#include "records_by_hand.h"

namespace test_support {
namespace {

constexpr std::uint32_t lowest_frequency = 10'700'000;

tunings in_steps(int n, std::uint64_t step) {
  tunings tuned;
  std::uint64_t key = lowest_frequency;
  for (int i = 0; i < n; ++i, key += step) {
    tuned.push_back({static_cast<std::uint32_t>(key), static_cast<std::uint8_t>(key >> 32U)});
  }
  return tuned;
}

network_ch_st &hang_network() {
  static const char name[64] = "Network";
  return *alloc_network_ch_info(1, 1, name);
}

std::vector<channel_st *> all_services() {
  std::vector<channel_st *> services;
  for_each_linked<network_ch_st>(get_channel_list()->network_list, [&](network_ch_st &network) {
    for_each_linked<tp_ch_st>(network.tp_list, [&](tp_ch_st &transponder) {
      for_each_linked<channel_st>(transponder.rch_list, [&](channel_st &service) { services.push_back(&service); });
    });
  });
  return services;
}

int capacity_of(std::int8_t view_type) {
  switch (view_type) {
    case VIEW_TV:
      return MAX_TV_CHANNEL;
    case VIEW_RADIO:
      return MAX_RADIO_CHANNEL;
    default:
      return MAX_CHANNEL;
  }
}

}  // namespace

tunings far_apart(int n) { return in_steps(n, 20'000); }

tunings one_khz_apart(int n) { return in_steps(n, 1); }

tunings crafted_against(std::uint64_t multiplier, int n) {
  const auto step_of_product = [multiplier](std::uint64_t step) {
    const std::uint64_t product = step * multiplier;
    return std::min(product, -product);
  };
  // The last key of the longest list still has a polarisation of eight bits.
  constexpr std::uint64_t longest = (std::uint64_t{1} << 40U) / most_records - 1;
  std::uint64_t best = 2'500;
  for (std::uint64_t step = best; step <= longest; ++step) {
    best = step_of_product(step) < step_of_product(best) ? step : best;
  }
  return in_steps(n, best);
}

void hang_one_on_each(const tunings &tuned) {
  network_ch_st &network = hang_network();
  service_data data;
  for (const tuning &each : tuned) {
    data.frequency = each.frequency;
    data.polarisation = each.polarisation;
    append_service(*append_transponder(network, data.ts_id, each.frequency, each.polarisation), data);
  }
}

void hang_all_on_one(int n) {
  service_data data;
  tp_ch_st &transponder =
      *append_transponder(hang_network(), data.ts_id, static_cast<std::uint32_t>(data.frequency), data.polarisation);
  for (int id = 1; id <= n; ++id) {
    data.service_id = static_cast<std::uint16_t>(id);
    append_service(transponder, data);
  }
}

void show_last_in(std::initializer_list<std::int8_t> view_types) {
  const std::vector<channel_st *> services = all_services();
  for (const std::int8_t view_type : view_types) {
    const std::size_t shown = std::min<std::size_t>(services.size(), static_cast<std::size_t>(capacity_of(view_type)));
    for (std::size_t i = services.size() - shown; i < services.size(); ++i) {
      append_entry(view_type, entry_of(*services[i], *get_virtual_channel_vnumber(view_type)));
    }
  }
}

}  // namespace test_support
