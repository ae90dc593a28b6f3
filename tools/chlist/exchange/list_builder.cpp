// Turns services of a line-up into records of the channel list, through the library's own calls.
#include "chlist/exchange/list_builder.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>

#include "channel/store/memory.h"
#include "chlist/exchange/broadcast_service.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

// One network index for each source; 255 stands for all of them.
constexpr std::size_t max_sources = 254;

using owned_channel = channel::transient<channel_st>;

// A name that is there already stands as it was broadcast.
void set_name(name_slot_st &slot, std::string_view name) {
  if (slot.name_len > 0) {
    return;
  }
  const std::string plain = in_one_line(name);
  const std::string_view cut = cut_utf8(plain, sizeof slot.text);
  std::ranges::copy(cut, slot.text);
  slot.name_len = static_cast<std::uint16_t>(cut.size());
}

owned_channel make_record(const line_up_service &service, std::uint8_t net_index) {
  owned_channel record(alloc_channel_info());
  const list_head link = record->list;
  *record = service.fields;
  record->list = link;
  record->net_index = net_index;
  set_name(record->name[0], service.name);
  set_name(record->name[1], service.short_name);
  return record;
}

bool is_too_long(const name_slot_st &slot, std::string_view name) {
  return slot.name_len == 0 && name.size() > sizeof slot.text;
}

std::size_t too_long_names(const line_up_service &service) {
  const auto &slots = service.fields.name;
  return is_too_long(slots[0], service.name) || is_too_long(slots[1], service.short_name) ? 1 : 0;
}

// add_rch_info() tells a service that it refused by leaving the record in no list.
bool is_filed(const channel_st &record) { return record.list.next != &record.list; }

channel_st *find_same(const channel_st &record) {
  return get_channel_st(record.net_index, record.network_id, record.ts_id, static_cast<std::uint32_t>(record.frequency),
                        record.service_id, record.polarisation);
}

// The entries of the ALL view with a service type.
std::size_t count_type(const channel_list_st &list, std::uint8_t type) {
  return static_cast<std::size_t>(
      std::count_if(list.vch, list.vch + list.vnumber,
                    [type](const virtual_channel_st &entry) { return entry.rch->service_type == type; }));
}

// The ALL view shows some of its services while this lives: the library builds the other views of it.
class all_of_some {
 public:
  template <class Predicate>
  all_of_some(channel_list_st &list, const Predicate &shows) : list_(list), all_(list.vch, list.vch + list.vnumber) {
    const auto *const end = std::copy_if(all_.begin(), all_.end(), list.vch,
                                         [&](const virtual_channel_st &entry) { return shows(*entry.rch); });
    list.vnumber = static_cast<std::int16_t>(end - list.vch);
  }
  ~all_of_some() {
    std::ranges::copy(all_, list_.vch);
    list_.vnumber = static_cast<std::int16_t>(all_.size());
  }
  all_of_some(const all_of_some &) = delete;
  all_of_some &operator=(const all_of_some &) = delete;

 private:
  channel_list_st &list_;
  std::vector<virtual_channel_st> all_;
};

bool is_number(int number) {
  return number >= std::numeric_limits<std::int16_t>::min() && number <= std::numeric_limits<std::int16_t>::max();
}

channel_list_st &empty_list() {
  reset_channel_list();
  return *get_channel_list();
}

}  // namespace

// The groups that are there are looked up in the empty list.
list_builder::list_builder() : list_(empty_list()) {}

std::optional<std::string> list_builder::add(const line_up_service &service) {
  added_.push_back(nullptr);
  const channel_number number = service.number.value_or(channel_number{std::max(next_number_, service.lowest_number)});
  if (service.is_listed && list_.vnumber >= MAX_CHANNEL) {
    return fmt::format("the list is full: it holds {} services", +MAX_CHANNEL);
  }
  if (service.is_listed && !service.number && number.major > largest_channel_number) {
    return fmt::format("no channel number is left: the largest is {}", largest_channel_number);
  }
  if (service.is_listed && (!is_number(number.major) || !is_number(number.minor))) {
    return fmt::format("channel number {}-{} is beyond {}", number.major, number.minor, largest_channel_number);
  }
  const std::optional<std::uint8_t> net_index = net_index_of(service);
  if (!net_index) {
    return fmt::format("source {} is one too many: a list holds {}", service.source, max_sources);
  }
  return file(service, *net_index, number);
}

std::optional<std::string> list_builder::file(const line_up_service &service, std::uint8_t net_index,
                                              channel_number number) {
  std::array<char, sizeof(network_ch_st::network_name)> network_name{};
  std::ranges::copy(cut_utf8(service.source, network_name.size()), network_name.begin());
  owned_channel record = make_record(service, net_index);
  if (add_rch_info(record.get(), network_name.data()) != 0) {
    return "the store refuses it";
  }
  if (!is_filed(*record)) {
    added_.back() = find_same(*record);
    const std::size_t line = lines_.at(added_.back());
    return line != 0 ? fmt::format("is the same service as line {}", line) : "is the same service as an earlier one";
  }
  channel_st &filed = *record.release();
  added_.back() = &filed;
  lines_[&filed] = service.line;
  set_groups(filed, service);
  check_network_name(filed, service.source);
  lost_.add("names beyond 96 bytes", too_long_names(service));
  lost_.add("names with control characters", in_one_line(service.name) != service.name ? 1 : 0);
  if (service.is_listed) {
    append(filed, number);
    next_number_ = std::max(next_number_, number.major + 1);
  }
  return std::nullopt;
}

void list_builder::follow(const line_up &model) {
  model_indexes_.emplace(model);
  providers_.follow(model.groups_of(group_kind::provider));
  genres_.follow(model.groups_of(group_kind::genre));
  countries_.follow(model.groups_of(group_kind::country));
}

void list_builder::drop_unused_groups() {
  providers_.drop_unused();
  genres_.drop_unused();
  countries_.drop_unused();
}

// An index that comes with its source is the source's, so that others are not numbered the same; unless the list
// follows a model, which has indexes of its own.
std::optional<std::uint8_t> list_builder::net_index_of(const line_up_service &service) {
  if (model_indexes_) {
    if (const auto index = model_indexes_->of(service.source)) {
      used_net_indexes_.insert(*index);
      return index;
    }
  } else if (service.fields.net_index != 0) {
    used_net_indexes_.insert(service.fields.net_index);
    net_indexes_.emplace(service.source, service.fields.net_index);
    return service.fields.net_index;
  }
  if (const auto known = net_indexes_.find(service.source); known != net_indexes_.end()) {
    return known->second;
  }
  std::size_t free = 1;
  const auto is_taken = [this](std::uint8_t index) {
    return used_net_indexes_.contains(index) || (model_indexes_ && model_indexes_->has(index));
  };
  while (free <= max_sources && is_taken(static_cast<std::uint8_t>(free))) {
    ++free;
  }
  if (free > max_sources) {
    return std::nullopt;
  }
  const auto index = static_cast<std::uint8_t>(free);
  used_net_indexes_.insert(index);
  return net_indexes_[service.source] = index;
}

void list_builder::set_groups(channel_st &filed, const line_up_service &service) {
  filed.provider_id = providers_.id_of(service.provider, lost_);
  filed.genre_id = genres_.id_of(service.genre, lost_);
  filed.country_id = countries_.id_of(service.country, lost_);
}

// A network has one name, that of the service which brought it.
void list_builder::check_network_name(const channel_st &filed, const std::string &source) {
  const network_ch_st *network = get_network_ch_info(filed.net_index, filed.network_id);
  if (network != nullptr && name_in(network->network_name) != source) {
    lost_.add("names of networks, which are too long or differ within one network");
  }
}

void list_builder::append(channel_st &filed, channel_number number) {
  list_.vch[list_.vnumber] = entry_of(filed, number.major, number.minor);
  ++list_.vnumber;
  numbers_[&filed] = number;
}

// Whether the group had room for it. A service that was left out wants none.
bool list_builder::add_favourite(std::int16_t group_id, const line_up_entry &entry) {
  channel_st *filed = added_.at(entry.service);
  if (filed == nullptr) {
    lost_.add("favourites whose service is left out");
    return true;
  }
  const channel_number number = entry.number == channel_number{} ? numbers_[filed] : entry.number;
  const virtual_channel_st added = entry_of(*filed, number.major, number.minor);
  const std::int16_t held = get_fav_vch_number(get_fav_index(group_id));
  const bool has_room = add_fav_virtual_channel(group_id, &added) == 0;
  if (has_room && get_fav_vch_number(get_fav_index(group_id)) == held) {
    lost_.add("services that are twice in a favourite group");
  }
  return has_room;
}

void list_builder::add(const favourite_group &group) {
  constexpr std::string_view long_names = "favourite group names beyond 97 bytes";
  lost_.add(long_names, group.name.size() > longest_group_name ? 1 : 0);
  const int before = get_fav_group_number();
  const int id = add_fav_group_info(group_named(group.name));
  if (id < 0) {
    groups_left_out_.push_back({group.name, group.entries.size(), group.entries.size(), false});
    return;
  }
  lost_.add("favourite groups that are joined to one of the same name", get_fav_group_number() == before ? 1 : 0);
  std::size_t left_out = 0;
  for (const line_up_entry &entry : group.entries) {
    left_out += add_favourite(static_cast<std::int16_t>(id), entry) ? 0 : 1;
  }
  if (left_out > 0) {
    groups_left_out_.push_back({group.name, group.entries.size(), left_out, true});
  }
}

std::unordered_set<const channel_st *> list_builder::first_of_type(std::uint8_t type, std::size_t most,
                                                                   std::span<const std::size_t> preferred) const {
  std::unordered_set<const channel_st *> first;
  for (const std::size_t position : preferred) {
    const channel_st *filed = added_[position];
    if (filed != nullptr && filed->service_type == type && numbers_.contains(filed) && first.size() < most) {
      first.insert(filed);
    }
  }
  return first;
}

std::vector<std::string> list_builder::build_views(std::span<const std::size_t> preferred) {
  constexpr std::pair<view_kind, std::uint8_t> views_by_type[] = {{view_kind::tv, SERVICE_TYPE_TV},
                                                                  {view_kind::radio, SERVICE_TYPE_RADIO}};
  std::vector<std::string> left_out;
  for (const auto &[kind, type] : views_by_type) {
    const view_facts &view = facts_of(kind);
    const std::size_t wanted = count_type(list_, type);
    if (wanted == 0) {
      continue;
    }
    if (wanted <= view.capacity) {
      create_vindex_type(view.code, -1);
      continue;
    }
    left_out.push_back(fmt::format("the {} view is full: it holds {}, {} more services are in the ALL view only",
                                   view.name, view.capacity, wanted - view.capacity));
    const auto first = first_of_type(type, view.capacity, preferred);
    const all_of_some some(list_, [&](const channel_st &service) { return first.empty() || first.contains(&service); });
    create_vindex_type(view.code, -1);
  }
  return left_out;
}

std::vector<std::string> list_builder::full_tables() const {
  std::vector<std::string> texts;
  for (const group_names *names : {&providers_, &genres_, &countries_}) {
    if (auto text = names->left_out()) {
      texts.push_back(std::move(*text));
    }
  }
  const auto groups = std::ranges::count(groups_left_out_, false, &group_left_out::is_cut);
  if (groups > 0) {
    texts.push_back(
        fmt::format("the list of favourite groups is full: it holds {}, {} more are left out", +MAX_FAV, groups));
  }
  std::size_t services = 0;
  for (const group_left_out &each : groups_left_out_) {
    services += each.is_cut ? each.left_out : 0;
  }
  if (services > 0) {
    texts.push_back(fmt::format("favourite groups are full: each holds {}, {} more favourites are left out",
                                +MAX_FAV_NUM, services));
  }
  return texts;
}

std::vector<const channel_st *> list_builder::filed_services() const {
  std::unordered_set<const channel_st *> taken;
  std::vector<const channel_st *> filed;
  for (const channel_st *record : added_) {
    filed.push_back(record != nullptr && taken.insert(record).second ? record : nullptr);
  }
  return filed;
}

list_counts list_builder::counts() const {
  const hierarchy_counts filed = count_hierarchy(list_);
  list_counts counts;
  counts.services = filed.services;
  counts.tv = count_type(list_, SERVICE_TYPE_TV);
  counts.radio = count_type(list_, SERVICE_TYPE_RADIO);
  counts.providers = static_cast<std::size_t>(get_provider_number());
  counts.sources = used_net_indexes_.size();
  counts.transponders = filed.transponders;
  counts.favourite_groups = static_cast<std::size_t>(get_fav_group_number());
  return counts;
}

namespace {

// Each takes its place in the order of adding, also one that does not fit or is refused.
std::vector<skipped_line> add_services(list_builder &builder, const line_up &from, const std::vector<bool> &fits) {
  std::vector<skipped_line> skipped = from.skipped;
  for (std::size_t place = 0; place < from.services.size(); ++place) {
    if (!fits[place]) {
      builder.pass_over();
    } else if (auto reason = builder.add(from.services[place])) {
      skipped.push_back({from.services[place].line, std::move(*reason)});
    }
  }
  builder.drop_unused_groups();
  std::ranges::stable_sort(skipped, {}, &skipped_line::line);
  return skipped;
}

// What the list and its views had no room for.
std::vector<std::string> build_views(list_builder &builder, std::span<const std::size_t> preferred,
                                     const std::vector<bool> &fits, const preference_order &order) {
  std::vector<std::string> left_out;
  if (const auto beyond = std::ranges::count(fits, false); beyond > 0) {
    left_out.push_back(
        fmt::format("the list is full: it holds {} services, {} more are left out", +MAX_CHANNEL, beyond));
  }
  std::ranges::move(builder.build_views(preferred), std::back_inserter(left_out));
  if (!left_out.empty()) {
    left_out.push_back(fmt::format("first come {} (--prefer)", text_of(order)));
  }
  return left_out;
}

}  // namespace

filled_list fill_list(const line_up &from, loss_counts &lost, const fill_options &options) {
  filled_list result;
  list_builder builder;
  if (options.model != nullptr) {
    builder.follow(*options.model);
  }
  const std::vector<std::size_t> preferred = preferred_first(from, options.preferred);
  const std::vector<bool> fits = that_fit(from, preferred);
  result.skipped = add_services(builder, from, fits);
  result.left_out = build_views(builder, preferred, fits, options.preferred);
  for (const favourite_group &group : from.favourites) {
    builder.add(group);
  }
  std::ranges::move(builder.full_tables(), std::back_inserter(result.left_out));
  result.groups_left_out = builder.groups_left_out();
  lost.add(builder.lost());
  result.filed = builder.filed_services();
  result.same.assign(builder.records().begin(), builder.records().end());
  result.counts = builder.counts();
  return result;
}

}  // namespace chlist
