// Favourite groups as edits name them.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "chlist/edit/edited_list.h"

namespace chlist {

// A group that there is. The library finds groups by id, views by index.
struct favourites {
  std::int16_t index;
  std::int16_t id;

  [[nodiscard]] std::int8_t view() const { return static_cast<std::int8_t>(VIEW_FAVOURITE + index); }
};

// A group is named by its name or its position. Throws when there is none, or when its id leads to another group.
favourites favourites_named(std::string_view text, edited_list &list);

// Groups are told apart without regard to case. The first one of a name, but for one of them; throws as
// favourites_named().
constexpr std::int16_t no_group_index = -1;
std::optional<favourites> group_of_name(std::string_view name, std::int16_t except = no_group_index);

// Throws when there is another group of that name.
void must_be_new_group(std::string_view name, std::int16_t own_index = no_group_index);

// A group behind the others; nothing when there are as many as a list holds.
std::optional<favourites> add_group(std::string_view name);

// A service at the end of a group, as ALL shows it, or else the first view that does.
enum class group_addition : std::uint8_t { done, was_there, is_in_no_view, group_is_full };
group_addition add_to_group(const favourites &group, const channel_st &service);

// A name for a group, cut to what a list holds, with a note. Throws when it is empty.
std::string_view group_name_from(const std::string &text, edit_notes &notes);

// Groups change their places: when the receiver's current view is a group, it is the same group afterwards, or ALL when
// that group is gone.
class current_group {
 public:
  current_group();
  void follow() const;

 private:
  std::int16_t id_;
  bool is_current_;
};

// Moves a whole group to a position among the groups.
void move_group(const favourites &group, int position);

}  // namespace chlist
