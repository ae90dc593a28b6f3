// Whether two channels or two entries are the same, and what a channel is received from.
#include "channel/identity.h"

#include <channel/transport.h>

#include "channel/log.h"

namespace channel {
namespace {

// Sets of source types, a bit for each.
constexpr unsigned broadcast_sources = 0xf4e;
constexpr unsigned ip_sources = 0x1030;
constexpr unsigned source_types = 13;

constexpr bool is_in(unsigned set, unsigned source_type) {
  return source_type < source_types && (set >> source_type & 1U) != 0;
}

}  // namespace
}  // namespace channel

extern "C" {

// Compatibility: these lines are gated by the entry of the module that brings the sources, not by this library's own.
int is_ip_channel(const channel_st *rch) {
  if (rch == nullptr) {
    CHANNEL_LOG_ENTRY(channel::log_module_source, 2, "ChannelAPI %s:%d Can't find channel\n", __func__, __LINE__);
    return 0;
  }
  if (channel::is_in(channel::broadcast_sources, rch->source_type)) {
    return 0;
  }
  if (channel::is_in(channel::ip_sources, rch->source_type)) {
    return 1;
  }
  CHANNEL_LOG_ENTRY(channel::log_module_source, 0, "ERROR: %s:%d unknown source type=%d ch type=0x%04x\n", __func__,
                    __LINE__, rch->source_type, static_cast<unsigned>(channel::type_of(*rch)));
  return 0;
}

int is_same_channel(const channel_st *ch1, const channel_st *ch2) {
  if (ch1 == nullptr) {
    LOG_ERROR("ch1 NULL !!!\n");
    return 0;
  }
  if (ch2 == nullptr) {
    LOG_ERROR("ch2 NULL !!!\n");
    return 0;
  }
  return channel::same_service(*ch1, *ch2) ? 1 : 0;
}

int is_same_vchannel(const virtual_channel_st *x, const virtual_channel_st *y) {
  if (x == nullptr) {
    LOG_ERROR("x NULL !!!\n");
    return 0;
  }
  if (y == nullptr) {
    LOG_ERROR("y NULL !!!\n");
    return 0;
  }
  return channel::same_entry(*x, channel::tagged_identity_of(*y)) ? 1 : 0;
}
}
