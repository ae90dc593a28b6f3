// What a service says and a format can hold in part only: a table of such losses for each format. What it has no place
// for at all is told by the traits that it does not carry (service_traits.h).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/fields/pids.h"

namespace chlist {

struct service_loss {
  std::string_view what;
  bool (*is_in)(const line_up_service &service);
};

// Formats tell four polarisations apart, a channel list two.
inline constexpr std::string_view circular_polarisations =
    "circular polarisations (left as horizontal, right as vertical)";

// A service as readers begin with it: nothing known but that it is broadcast.
line_up_service broadcast_service(std::size_t line);

void count_losses(const line_up &list, std::span<const service_loss> losses, loss_counts &lost);

// Sources of which reading gives another text back, and network indexes that reading numbers anew: sources_read holds
// what reading gives for each service.
void count_source_losses(const line_up &list, std::span<const std::string> sources_read, loss_counts &lost);

// Television with video, radio with audio alone, data with neither.
std::uint8_t service_type_by_streams(const channel_st &fields);

}  // namespace chlist
