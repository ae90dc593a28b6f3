// The provider, genre and country groups of a list that is being filled: names become groups as they come up.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

#include "chlist/exchange/loss_counts.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// The longest name of a group that is carried whole, in bytes.
inline constexpr std::size_t longest_group_name = sizeof(group_st::name) - 1;

// A text cut to a number of bytes, not inside a UTF-8 character.
std::string_view cut_utf8(std::string_view text, std::size_t most);

// A group with a name, which is cut to its field.
group_st group_named(std::string_view name);

class group_names {
 public:
  // kind: GROUP_PROVIDER, GROUP_GENRE or GROUP_COUNTRY of the list in memory, with the groups that it has.
  explicit group_names(std::int8_t kind);

  // The id of the group with a name, of several the first; it is added to the table when that has room. Without a name,
  // or without room, the id that no group has.
  std::int16_t id_of(std::string_view name, loss_counts &lost);

  // Takes the groups of another list, with their ids and in their order; drops those that nothing asked for.
  void follow(const line_up_groups &model);
  void drop_unused() const;

  // What to say of names that the table had no room for; nothing when it took them all.
  [[nodiscard]] std::optional<std::string> left_out() const;

 private:
  [[nodiscard]] std::int16_t add(std::string_view name) const;

  std::int8_t kind_;
  std::unordered_map<std::string, std::int16_t> ids_;
  std::set<std::int16_t> used_;
  std::set<std::string, std::less<>> left_out_;
};

}  // namespace chlist
