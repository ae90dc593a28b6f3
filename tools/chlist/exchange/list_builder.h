// Fills the channel list with a line-up as a producer of lists does: files each service in the store, appends its entry
// to the ALL view, registers its groups, builds the TV and radio views from there, and then the favourites.
#pragma once

#include <channel/channel.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "chlist/exchange/group_names.h"
#include "chlist/exchange/loss_counts.h"
#include "chlist/exchange/network_indexes.h"
#include "chlist/exchange/service_choice.h"

namespace chlist {

// What a finished list holds.
struct list_counts {
  std::size_t services = 0;
  std::size_t tv = 0;
  std::size_t radio = 0;
  std::size_t providers = 0;
  std::size_t transponders = 0;
  std::size_t sources = 0;
  std::size_t favourite_groups = 0;
};

// A favourite group that there was no room for, or not for all of its services.
struct group_left_out {
  std::string name;
  std::size_t services = 0;
  std::size_t left_out = 0;
  bool is_cut = false;  // the group is there, without some of them
};

class list_builder {
 public:
  // Empties the channel list.
  list_builder();

  // Takes the network indexes and the group tables of another list, so that both say the same by the same numbers; in
  // front of all services.
  void follow(const line_up &model);

  // Those groups of the model that no service is in; behind all services.
  void drop_unused_groups();

  // Files a service and numbers it. Returns why it was left out, or nothing; a service left out takes no number.
  std::optional<std::string> add(const line_up_service &service);

  // Passes over a service: it keeps its position in the order of adding.
  void pass_over() { added_.push_back(nullptr); }

  // Adds a group of services that have been added, by their positions in the order of adding.
  void add(const favourite_group &group);

  // Builds the TV and radio views. One without room for all takes the first by these positions, or as they were added.
  // Returns what they had no room for, one text for each view.
  std::vector<std::string> build_views(std::span<const std::size_t> preferred = {});

  // What to say of groups and favourites that the list had no room for; nothing when it took them all.
  [[nodiscard]] std::vector<std::string> full_tables() const;

  // Those of the favourites, one by one.
  [[nodiscard]] const std::vector<group_left_out> &groups_left_out() const { return groups_left_out_; }

  // What the records of the list have no place for.
  [[nodiscard]] const loss_counts &lost() const { return lost_; }

  // The records of the services that have been added, in the order of adding; null: left out, or filed before.
  [[nodiscard]] std::vector<const channel_st *> filed_services() const;

  // The same, and of a service that was filed before the record that it led to.
  [[nodiscard]] const std::vector<channel_st *> &records() const { return added_; }

  [[nodiscard]] list_counts counts() const;

 private:
  std::optional<std::string> file(const line_up_service &service, std::uint8_t net_index, channel_number number);
  std::optional<std::uint8_t> net_index_of(const line_up_service &service);
  void set_groups(channel_st &filed, const line_up_service &service);
  void append(channel_st &filed, channel_number number);
  bool add_favourite(std::int16_t group_id, const line_up_entry &entry);
  std::unordered_set<const channel_st *> first_of_type(std::uint8_t type, std::size_t most,
                                                       std::span<const std::size_t> preferred) const;
  void check_network_name(const channel_st &filed, const std::string &source);

  channel_list_st &list_;
  int next_number_ = 1;
  std::unordered_map<std::string, std::uint8_t> net_indexes_;
  std::set<std::uint8_t> used_net_indexes_;
  std::optional<network_indexes> model_indexes_;
  std::vector<channel_st *> added_;  // by position; of a service that was there already the first, null: left out
  std::unordered_map<const channel_st *, std::size_t> lines_;  // where each filed channel comes from
  std::unordered_map<const channel_st *, channel_number> numbers_;
  group_names providers_{GROUP_PROVIDER};
  group_names genres_{GROUP_GENRE};
  group_names countries_{GROUP_COUNTRY};
  std::vector<group_left_out> groups_left_out_;
  loss_counts lost_;
};

// What filling the list with a whole line-up came to.
struct filled_list {
  std::vector<skipped_line> skipped;  // the line-up's own among them, by line
  std::vector<std::string> left_out;  // what the list had no room for
  std::vector<group_left_out> groups_left_out;
  std::vector<const channel_st *> filed;  // the records of the services; null: left out
  std::vector<const channel_st *> same;   // of a service that occurs twice as well, the record of the first
  list_counts counts;

  [[nodiscard]] bool is_whole() const { return skipped.empty() && left_out.empty(); }
};

struct fill_options {
  preference_order preferred = usual_preferences;  // which services come first when there is no room for all
  const line_up *model = nullptr;                  // whose network indexes and groups it takes
};

filled_list fill_list(const line_up &from, loss_counts &lost, const fill_options &options = {});

}  // namespace chlist
