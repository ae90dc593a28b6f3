// The table of favourite groups, through the library's calls.
#include "chlist/edit/favourite_groups.h"

#include <channel/favourites.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "channel/store/group_table.h"
#include "channel/store/view.h"
#include "chlist/edit/placement.h"
#include "chlist/exchange/group_names.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text/plain_text.h"
#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

// A rename clears 96 bytes: one byte less, and whatever stood there before, the name ends where it should.
constexpr std::size_t longest_edited_name = 95;

// The slot behind the last group, into which the library's move of a group copies the last one.
class kept_group_slot {
 public:
  kept_group_slot() : index_(static_cast<std::size_t>(channel::favourite_table().size())) {
    if (is_there()) {
      channel_list_st &list = *get_channel_list();
      record_ = list.favorite_group[index_];
      entries_.assign(std::begin(list.favorite_vch[index_]), std::end(list.favorite_vch[index_]));
      count_ = list.favorite_vnumber[index_];
    }
  }
  ~kept_group_slot() {
    if (is_there()) {
      channel_list_st &list = *get_channel_list();
      list.favorite_group[index_] = record_;
      std::ranges::copy(entries_, list.favorite_vch[index_]);
      list.favorite_vnumber[index_] = count_;
    }
  }
  kept_group_slot(const kept_group_slot &) = delete;
  kept_group_slot &operator=(const kept_group_slot &) = delete;

 private:
  [[nodiscard]] bool is_there() const { return index_ < MAX_FAV; }

  std::size_t index_;
  group_st record_ = {};
  std::vector<virtual_channel_st> entries_;
  std::int16_t count_ = 0;
};

// The entry of a service that a group takes a copy of: in ALL, as a rule. Null when no view shows the service.
const virtual_channel_st *entry_for(const channel_st &service) {
  for (const std::int8_t code : views_in_use()) {
    const channel::view view = channel::find_view(code);
    if (const int index = index_of(view, service); index >= 0) {
      return view.entries + index;
    }
  }
  return nullptr;
}

// Throws when the group's id leads to another one.
favourites group_at(std::int16_t index, std::string_view called) {
  const favourites group = {index, channel::favourite_table().groups[index].id};
  if (get_fav_index(group.id) != group.index) {
    throw std::runtime_error(
        fmt::format("favourite group {} cannot be edited: another one has its id {}", shown(called), group.id));
  }
  return group;
}

}  // namespace

favourites favourites_named(std::string_view text, edited_list &list) {
  return group_at(static_cast<std::int16_t>(list.index_of_group(text)), text);
}

std::optional<favourites> group_of_name(std::string_view name, std::int16_t except) {
  const channel::group_table groups = channel::favourite_table();
  for (std::int16_t index = 0; index < groups.size(); ++index) {
    if (index != except && is_same_name(name_in(groups.groups[index].name), name)) {
      return group_at(index, name);
    }
  }
  return std::nullopt;
}

void must_be_new_group(std::string_view name, std::int16_t own_index) {
  if (const std::optional<favourites> other = group_of_name(name, own_index)) {
    throw std::runtime_error(fmt::format("there is a favourite group {} already",
                                         shown(name_in(channel::favourite_table().groups[other->index].name))));
  }
}

std::optional<favourites> add_group(std::string_view name) {
  if (add_fav_group_info(group_named(name)) < 0) {
    return std::nullopt;
  }
  const channel::group_table groups = channel::favourite_table();
  const auto last = static_cast<std::int16_t>(groups.size() - 1);
  return favourites{last, groups.groups[last].id};
}

group_addition add_to_group(const favourites &group, const channel_st &service) {
  const virtual_channel_st *shown_entry = entry_for(service);
  if (shown_entry == nullptr) {
    return group_addition::is_in_no_view;
  }
  const virtual_channel_st entry = *shown_entry;
  const int before = get_fav_vch_number(group.index);
  if (add_fav_virtual_channel(group.id, &entry) != 0) {
    return group_addition::group_is_full;
  }
  return get_fav_vch_number(group.index) == before ? group_addition::was_there : group_addition::done;
}

std::string_view group_name_from(const std::string &text, edit_notes &notes) {
  must_be_plain(text, "the name");
  const std::string_view name = cut_utf8(text, longest_edited_name);
  if (name.empty()) {
    throw std::runtime_error("a name has one byte at least");
  }
  if (name.size() != text.size()) {
    notes.push_back(fmt::format("the name is cut to {} of its {} bytes", name.size(), text.size()));
  }
  return name;
}

current_group::current_group() : id_(-1), is_current_(false) {
  const int index = get_channel_list()->vch_type - VIEW_FAVOURITE;
  const channel::group_table groups = channel::favourite_table();
  if (index >= 0 && index < groups.size()) {
    id_ = groups.groups[index].id;
    is_current_ = true;
  }
}

void current_group::follow() const {
  if (!is_current_) {
    return;
  }
  channel_list_st &list = *get_channel_list();
  if (get_fav_group_info_by_fav_id(id_) == nullptr) {
    change_vindex_type(VIEW_ALL);
    return;
  }
  const int view = VIEW_FAVOURITE + get_fav_index(id_);
  if (list.ch_type == list.vch_type) {
    list.ch_type = static_cast<std::int8_t>(view);
  }
  list.vch_type = static_cast<std::int16_t>(view);
}

void move_group(const favourites &group, int position) {
  const kept_group_slot behind;
  const auto groups = static_cast<std::size_t>(channel::favourite_table().size());
  const std::size_t destination = index_of_position(position, groups, "among the favourite groups");
  if (move_fav_ch_group(static_cast<std::int16_t>(destination), group.index) != 0) {
    throw std::runtime_error(fmt::format("the favourite group cannot be moved to position {}", position));
  }
}

}  // namespace chlist
