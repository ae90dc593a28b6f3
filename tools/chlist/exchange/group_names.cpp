// Providers are added by the library, which sorts them; it knows no way to add one genre or country, so these are
// appended as hosts do it.
#include "chlist/exchange/group_names.h"

#include <channel/providers.h>
#include <fmt/format.h>

#include <algorithm>

#include "channel/store/group_table.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

const group_facts &about(std::int8_t code) {
  const auto kinds = all_group_kinds();
  return *std::ranges::find(kinds, code, &group_facts::code);
}

}  // namespace

std::string_view cut_utf8(std::string_view text, std::size_t most) {
  constexpr std::size_t longest_tail = 3;
  if (text.size() <= most) {
    return text;
  }
  const auto continues = [&](std::size_t at) { return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U; };
  std::size_t end = most;
  while (end > 0 && most - end < longest_tail && continues(end)) {
    --end;
  }
  // More continuation bytes than a character has: not UTF-8, so any place is as good.
  return text.substr(0, continues(end) ? most : end);
}

group_st group_named(std::string_view name) {
  const std::string plain = in_one_line(name);
  const std::string_view cut = cut_utf8(plain, longest_group_name);
  group_st group = {};
  group.name_len = static_cast<std::int16_t>(cut.size());
  std::ranges::copy(cut, group.name);
  return group;
}

group_names::group_names(std::int8_t kind) : kind_(kind) {
  for (const group_st &group : channel::table_of_kind(kind)) {
    ids_.try_emplace(name_in(group.name), group.id);
  }
}

std::int16_t group_names::id_of(std::string_view name, loss_counts &lost) {
  const group_facts &kind = about(kind_);
  lost.add(fmt::format("{} names beyond {} bytes", kind.one, longest_group_name),
           name.size() > longest_group_name ? 1 : 0);
  const std::string cut(cut_utf8(name, longest_group_name));
  if (cut.empty()) {
    return kind.none;
  }
  if (const auto known = ids_.find(cut); known != ids_.end()) {
    used_.insert(known->second);
    return known->second;
  }
  const std::int16_t id = add(cut);
  if (id < 0) {
    left_out_.insert(cut);
    return kind.none;
  }
  used_.insert(id);
  return ids_[cut] = id;
}

void group_names::follow(const line_up_groups &model) {
  const channel::group_table table = channel::table_of_kind(kind_);
  for (const line_up_group &each : model.groups) {
    if (table.size() < table.capacity && ids_.try_emplace(each.name, static_cast<std::int16_t>(each.id)).second) {
      group_st taken = group_named(each.name);
      taken.id = static_cast<std::int16_t>(each.id);
      table.groups[table.size()] = taken;
      ++*table.count;
    }
  }
}

void group_names::drop_unused() const {
  const channel::group_table table = channel::table_of_kind(kind_);
  const auto unused =
      std::remove_if(table.begin(), table.end(), [this](const group_st &group) { return !used_.contains(group.id); });
  std::fill(unused, table.end(), group_st{});
  *table.count = static_cast<std::int16_t>(unused - table.begin());
}

std::int16_t group_names::add(std::string_view name) const {
  group_st added = group_named(name);
  if (kind_ == GROUP_PROVIDER) {
    return static_cast<std::int16_t>(add_provider_info(added));
  }
  const channel::group_table table = channel::table_of_kind(kind_);
  if (table.size() >= table.capacity) {
    return -1;
  }
  // From 1 on: a service without genre or country has the id 0.
  added.id = static_cast<std::int16_t>(table.size() + 1);
  while (table.find(added.id) != nullptr) {
    added.id = static_cast<std::int16_t>(added.id % table.capacity + 1);
  }
  table.groups[table.size()] = added;
  ++*table.count;
  return added.id;
}

std::optional<std::string> group_names::left_out() const {
  if (left_out_.empty()) {
    return std::nullopt;
  }
  return fmt::format("the list of {} is full: it holds {}, {} more are left out", about(kind_).many,
                     channel::table_of_kind(kind_).capacity, left_out_.size());
}

}  // namespace chlist
