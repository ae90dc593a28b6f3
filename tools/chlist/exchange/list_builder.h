// Fills the channel list with imported services as a producer of lists does: files each one in the store, appends its
// entry to the ALL view, registers its provider, and builds the TV and radio views from there.
#pragma once

#include <channel/channel.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "chlist/exchange/vdr_channels_conf.h"

namespace chlist {

// What a finished list holds.
struct list_counts {
  std::size_t services = 0;
  std::size_t tv = 0;
  std::size_t radio = 0;
  std::size_t providers = 0;
  std::size_t transponders = 0;
  std::size_t sources = 0;
};

class list_builder {
 public:
  // Empties the channel list.
  list_builder();

  // Files a service and numbers it. Returns why it was left out, or nothing; a service left out takes no number.
  std::optional<std::string> add(const vdr_service &service);

  // Builds the TV and radio views. Returns what they had no room for, one text for each view.
  std::vector<std::string> build_views();

  // What to say of provider names that the list had no room for; nothing when it took them all.
  [[nodiscard]] std::optional<std::string> providers_left_out() const;

  [[nodiscard]] list_counts counts() const;

 private:
  std::optional<std::string> file(const vdr_service &service, std::uint8_t net_index);
  std::optional<std::uint8_t> net_index_of(const std::string &source);
  std::int16_t provider_id_of(std::string_view provider);
  void append(channel_st &filed, int number);

  channel_list_st &list_;
  int next_number_ = 1;
  std::unordered_map<std::string, std::uint8_t> net_indexes_;
  std::unordered_map<const channel_st *, std::size_t> lines_;  // where each filed channel comes from
  std::set<std::string, std::less<>> providers_left_out_;
};

// The longest provider name that is carried whole, in bytes.
inline constexpr std::size_t longest_provider_name = sizeof(group_st::name) - 1;

// A text cut to a number of bytes, not inside a UTF-8 character.
std::string_view cut_utf8(std::string_view text, std::size_t most);

}  // namespace chlist
