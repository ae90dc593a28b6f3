// A receiver with a list in memory and one file of every kind on its disk: where faults strike. Paths are as long as
// the library takes them.
#pragma once

#include <string>

#include "support/channel_file.h"

namespace test_support {

// What a store holds, pointers left out: what a save would write, and which entries have their real channel.
struct store_state {
  bytes list;
  bytes links;  // for every entry in use of every view: '1' when its pointer is set
  bool operator==(const store_state &) const = default;
};

// The store in memory. No file is touched.
store_state state_of_store();

// The store after init_channel_list.
store_state initialised_store();

class receiver {
 public:
  // Writes the files.
  receiver();

  // Replaces the list in memory by the receiver's own.
  void start() const;

  [[nodiscard]] std::string path(const std::string &name) const { return target_dir_ + name; }
  [[nodiscard]] std::string old_path(int version) const { return path("old_" + std::to_string(version) + ".dat"); }

  // Three networks, five transponders, eight services; entries in views of every kind, groups of every kind.
  [[nodiscard]] const channel_file &own_list() const { return own_list_; }
  // The same without genres and countries: those come from files of their own.
  [[nodiscard]] const channel_file &list_without_groups() const { return list_without_groups_; }
  // A new scan: one service is gone, two are new, one of them on a network of its own.
  [[nodiscard]] const channel_file &new_list() const { return new_list_; }

  static const std::string own_name;
  static const std::string name_without_groups;
  static const std::string new_name;
  // Where a new list is looked for; a door sends whoever opens it to the file of the name.
  static constexpr char place_of_new_lists[] = "/DATA/BACKUP/all_channel.dat";
  static const std::string saved_name;
  static constexpr int genres = 3;
  static constexpr int countries = 2;

 private:
  temp_dir dir_;
  std::string target_dir_;
  channel_file own_list_;
  channel_file list_without_groups_;
  channel_file new_list_;
};

}  // namespace test_support
