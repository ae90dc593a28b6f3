// Moving entries of the current view, and mirroring the move in the TV or radio view while a group list is in use.
#include "channel/vindex/moving.h"

#include <algorithm>
#include <channel/moving.h>
#include <memory>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/memory.h"
#include "channel/vindex/entry_positions.h"
#include "channel/vindex/lookups.h"

namespace channel {

void move_entry(const view &moved, int destination, int source) {
  const virtual_channel_st last = moved.end()[-1];
  virtual_channel_st *from = moved.entries + source;
  virtual_channel_st *to = moved.entries + destination;
  if (from < to) {
    std::rotate(from, from + 1, to + 1);
  } else {
    std::rotate(to, from, from + 1);
  }
  // Compatibility: the slot behind the count is written as the gap opens; it is not counted.
  if (!moved.is_full()) {
    *moved.end() = last;
  }
}

void insert_block(const view &moved, int destination, std::span<const virtual_channel_st> block) {
  const virtual_channel_st last = moved.end()[-1];
  virtual_channel_st *kept_end = moved.entries;
  for (const virtual_channel_st &entry : moved) {
    if (entry.rch != nullptr) {
      *kept_end++ = entry;
    } else if (kept_end < moved.entries + destination) {
      --destination;
    }
  }
  std::fill(kept_end, moved.end(), last);
  block = block.first(std::min(block.size(), static_cast<std::size_t>(moved.end() - kept_end)));
  // A destination that went itself, with everything behind it, must not push the block out of the view.
  virtual_channel_st *after = std::min(moved.entries + destination + 1, moved.end() - block.size());
  std::move_backward(std::min(after, kept_end), kept_end, kept_end + block.size());
  std::copy(block.begin(), block.end(), after);
}

namespace {

// The service-type view, and where the destination's channel stands in it; -1 when it lacks that channel.
struct mirror {
  view services;
  bool is_current;
  int destination;

  // A service-type view that is itself the current one has made the move already.
  [[nodiscard]] bool is_rearranged() const {
    return channel_list.use_group_list != GROUP_ALL && !is_current && destination >= 0;
  }
};

// Compatibility: the gap opens at the current view's destination, is as long as the tail behind the service-type view's
// own, and the entry goes to that one. Receivers show the order that this gives.
void mirror_single(const mirror &mirrored, const virtual_channel_st &entry, int source, int destination) {
  const view &services = mirrored.services;
  std::move(services.begin() + source + 1, services.end(), services.begin() + source);
  const int length = std::min(services.size() - mirrored.destination, services.capacity - destination - 1);
  if (length > 0) {
    virtual_channel_st *gap = services.entries + destination;
    std::move_backward(gap, gap + length, gap + length + 1);
  }
  services.entries[mirrored.destination] = entry;
}

void move_single(const view &current, const mirror &mirrored, int destination, int source, const char *operation) {
  const virtual_channel_st entry = current.entries[source];
  const int service_source = find_in_view(mirrored.services, tagged_identity_of(entry));
  move_entry(current, destination, source);
  LOG_TRACE_AS(operation, 2, "\n");
  if (mirrored.is_rearranged() && service_source >= 0) {
    mirror_single(mirrored, entry, service_source, destination);
  }
  LOG_TRACE_AS(operation, 2, "\n");
}

// Copies of the moved entries, as they stood in each view.
struct moved_blocks {
  std::span<virtual_channel_st> current;
  std::span<virtual_channel_st> services;
  std::size_t mirrored = 0;
  std::bitset<MAX_CHANNEL> taken;

  // A slot of the service-type view is taken once: when it is empty, an entry that is empty itself finds it again.
  void take_mirrored(const view &from, int position) {
    const auto slot = static_cast<std::size_t>(position);
    if (!taken[slot]) {
      taken[slot] = true;
      services[mirrored++] = from.entries[position];
    }
  }
};

// Takes the moved entries out of both views, leaving empty slots.
void lift_entries(const view &current, const mirror &mirrored, int destination, std::span<const std::int16_t> sources,
                  moved_blocks &blocks, const char *operation) {
  // Compatibility: without a group list in use the slots are cleared all the same, and stay empty.
  const bool clears = channel_list.use_group_list == GROUP_ALL || mirrored.is_current || mirrored.is_rearranged();
  entry_positions positions(mirrored.services);
  for (std::size_t i = 0; i < sources.size(); ++i) {
    virtual_channel_st &entry = current.entries[sources[i]];
    blocks.current[i] = entry;
    LOG_TRACE_AS(operation, 2, "des_index %d src_index ------------------------------------------------ %d \n",
                 destination, sources[i]);
    const int service_source = positions.find(tagged_identity_of(entry));
    LOG_TRACE_AS(operation, 2, "des_index %d src_index ------------------------------------------------ %d \n",
                 mirrored.destination, service_source);
    LOG_TRACE_AS(operation, 2, "\n");
    if (service_source >= 0) {
      blocks.take_mirrored(mirrored.services, service_source);
    }
    positions.clear(entry);
    LOG_TRACE_AS(operation, 2, "\n");
    if (service_source >= 0 && clears) {
      positions.clear(mirrored.services.entries[service_source]);
    }
  }
}

void move_several(const view &current, const mirror &mirrored, int destination, std::span<const std::int16_t> sources,
                  const char *operation) {
  const std::size_t count = sources.size();
  const transient<virtual_channel_st> work(allocate_array<virtual_channel_st>(2 * std::max<std::size_t>(count, 1)));
  moved_blocks blocks = {{work.get(), count}, {work.get() + count, count}, 0, {}};
  lift_entries(current, mirrored, destination, sources, blocks, operation);
  LOG_TRACE_AS(operation, 2, "\n");
  insert_block(current, destination, blocks.current);
  if (mirrored.is_rearranged()) {
    insert_block(mirrored.services, mirrored.destination, blocks.services.first(blocks.mirrored));
  }
}

}  // namespace
}  // namespace channel

extern "C" {

int move_channel(int16_t des_index, int16_t count, const int16_t *src_indices) {
  const channel::view current = channel::current_view();
  const channel::view services = channel::fetch_view(channel::channel_list.service_type);
  if (!current || !services) {
    return -1;
  }
  if (src_indices == nullptr && count > 0) {
    LOG_ERROR("src_indices is null\n");
    return -1;
  }
  const std::span sources(src_indices, static_cast<std::size_t>(std::max<int16_t>(count, 0)));
  if (!channel::is_position(current, des_index) || !channel::are_distinct_positions(current, sources)) {
    LOG_ERROR("positions outside the view or given twice\n");
    return -1;
  }
  const channel::mirror mirrored = {
      services, services.entries == current.entries,
      channel::find_in_view(services, channel::tagged_identity_of(current.entries[des_index]))};
  if (count == 1) {
    channel::move_single(current, mirrored, des_index, sources[0], __func__);
  } else {
    channel::move_several(current, mirrored, des_index, sources, __func__);
  }
  return 1;
}
}
