// What differs between two states of a channel list: services added, removed and changed, and everything around them.
// Two files are compared by loading one after the other; a dry run compares the list before an edit and after it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "channel/identity.h"
#include "chlist/list_contents.h"
#include "chlist/report.h"

namespace chlist {

// A copy of everything that is compared. It stays as it is whatever becomes of the list.
struct list_snapshot {
  struct entry {
    std::size_t view = 0;  // among the views
    int number = 0;
    int minor = 0;
    int tag = 0;
    int favourite_key = 0;
  };
  struct service {
    known_service known;
    std::vector<json> values;  // of the compared columns, in their order
    std::vector<entry> entries;
  };
  struct transponder {
    channel::identity id = {};  // without a service id
  };
  struct network {
    channel::identity id = {};  // its network index and its id
    std::string name;
  };
  struct view {
    view_name name;
    std::vector<std::size_t> row;  // places of services in the snapshot; behind all of them, places in unresolved
    std::vector<std::string> unresolved;  // entries without a service
  };
  struct group {
    std::string_view table;
    int number = 0;  // its id; of a favourite group its place
    int id = 0;
    std::string name;
  };

  std::vector<service> services;
  std::vector<transponder> transponders;
  std::vector<network> networks;
  std::vector<view> views;
  std::vector<group> groups;
  std::vector<json> settings;
};

// Of the list in memory, whose views are linked.
list_snapshot take_snapshot();

enum class change_kind { added, removed, changed };

// One value that differs.
struct field_change {
  std::string_view name;          // in JSON: "video_pid", "number"
  std::string_view title;         // in text: "video PID"
  std::optional<view_name> view;  // of what an entry shows: where
  json before;
  json after;
};

struct change {
  change_kind kind = change_kind::changed;
  std::string_view what;  // "service", "transponder", "network", "view", "group" or "setting"
  std::string name;       // in text, harmless
  json subject;           // in JSON: an object that says which
  std::vector<field_change> fields;
};

// Services, transponders and networks are found again by the library's finders, with its tolerance: those of a snapshot
// in the list in memory, of which the second snapshot has just been taken. In list order, services first.
std::vector<change> differences(const list_snapshot &before, const list_snapshot &after);

// {"services": {"added": [...], "removed": [...], "changed": [...]}, "others": [...]}
json json_of_differences(const std::vector<change> &changes);

// The same as text on standard output: "no differences", or what there is, line by line.
void print_differences(const std::vector<change> &changes);

}  // namespace chlist
