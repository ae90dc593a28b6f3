#include "hostile.h"

#include <base/verbosity.h>
#include <channel/channel.h>

#include <algorithm>
#include <numeric>
#include <unistd.h>
#include <utility>
#include <vector>

#include "channel/log.h"
#include "channel/store/links.h"
#include "full_store.h"
#include "tests/support/hostile_lists.h"

namespace bench {
namespace {

// What tables multiplied keys by when everybody could know it.
constexpr std::uint64_t known_multiplier = 0xD1342543DE82EF95;
constexpr std::uint8_t flag = 0x10;

std::vector<std::int16_t> sources;

channel_list_st &list() { return *get_channel_list(); }

const channel_st &last_shown() { return *list().vch[list().vnumber - 1].rch; }

int shown() { return std::min<int>(services_in_store(), MAX_CHANNEL); }

void hang(const test_support::tunings &tuned) {
  reset_channel_list();
  test_support::hang_one_on_each(tuned);
  test_support::show_last_in({VIEW_ALL});
}

}  // namespace

void hang_on_one_transponder() {
  reset_channel_list();
  test_support::hang_all_on_one(services_in_store());
  test_support::show_last_in({VIEW_ALL});
}

void flag_view() {
  require(set_channel_flag_by_bit(flag) == 0 && last_shown().flag == flag, "set_channel_flag_by_bit");
}

void hang_flagged_on_one_transponder() {
  hang_on_one_transponder();
  flag_view();
}

void clear_flags_of_view() {
  require(clear_channel_flag_by_bit(flag) == 0 && last_shown().flag == 0, "clear_channel_flag_by_bit");
}

void hang_on_a_transponder_each() { hang(test_support::far_apart(services_in_store())); }

void remove_shown() {
  require(remove_service_by_group_list_id(GROUP_FTACAS, 0, VIEW_ALL) == 0 && list().vnumber == 0,
          "remove_service_by_group_list_id");
}

void dump_view() {
  const muted_stderr muted;
  const int level = std::exchange(verbosity_map[channel::log_module], 2);
  print_virtual_channel_list(VIEW_ALL);
  verbosity_map[channel::log_module] = level;
}

void show_followed_view() {
  reset_channel_list();
  test_support::hang_all_on_one(services_in_store() * MAX_TV_CHANNEL / MAX_CHANNEL);
  test_support::show_last_in({VIEW_USER, VIEW_TV});
  require(change_vindex_type(VIEW_USER) == 0, "making the USER view current");
  list().use_group_list = GROUP_PROVIDER;
  list().service_type = VIEW_TV;
  sources.resize(static_cast<std::size_t>(list().user_vnumber));
  std::iota(sources.rbegin(), sources.rend(), std::int16_t{0});
}

void move_whole_view() {
  const std::uint16_t first = list().tv_vch[0].service_id;
  require(move_channel(0, static_cast<std::int16_t>(sources.size()), sources.data()) == 1 &&
              list().tv_vch[sources.size() - 1].service_id == first,
          "move_channel");
}

void hang_1_khz_apart() { hang(test_support::one_khz_apart(services_in_store())); }

void hang_crafted() { hang(test_support::crafted_against(known_multiplier, services_in_store())); }

void link_shown() { require(channel::link_rch_info() == 0 && list().vch[shown() - 1].rch != nullptr, "link_rch_info"); }

}  // namespace bench
