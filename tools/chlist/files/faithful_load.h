// Takes a channel file into memory as it stands, to be edited and saved again. A receiver's load changes a few bytes on
// purpose: the country of every service, the settings of the current view, the position keys of a favourite group. This
// one does not, so that a save of the list as it was read gives the file as it was.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <string>
#include <vector>

#include "chlist/files/channel_file.h"

namespace chlist {

// Replaces the list in memory by the file and links its views; ALL is the view that the library's calls on the current
// one go to. Returns what of the file a save cannot write again, one text for each.
std::vector<std::string> load_faithfully(const channel_file &input);

// The bytes that a save writes.
std::string image_of(channel_list_st &list);

// The settings that the selection of a view changes. The library's calls on the current view need one to be selected;
// what the list says of the receiver's current view stays as it was.
struct view_settings {
  std::int8_t ch_type;
  std::int8_t use_group_list;
  std::int8_t service_type;
  std::int8_t net_index;
  std::int16_t sub_group_id;
  std::int16_t vch_type;

  static view_settings of(const channel_list_st &list);
  void restore() const;
};

class kept_view_settings {
 public:
  kept_view_settings();
  ~kept_view_settings() { settings_.restore(); }
  kept_view_settings(const kept_view_settings &) = delete;
  kept_view_settings &operator=(const kept_view_settings &) = delete;

 private:
  view_settings settings_;
};

}  // namespace chlist
