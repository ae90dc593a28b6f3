// Providers and service lists of groups in the model.
#include <strings.h>

#include <cstring>
#include <set>

#include "model.h"
#include "slots.h"

namespace model_tests {
namespace {

constexpr int max_providers = 500;
constexpr int favourites_kind = 6;
constexpr int user_view = 3;
constexpr int work_view = 4;

// Names that differ by case, by a leading selector byte, or not at all; and enough others to fill a table.
const std::vector<std::string> &names() {
  static const std::vector<std::string> made = [] {
    std::vector<std::string> all = {"",
                                    "Ant",
                                    "ant",
                                    "Bee",
                                    "bEE",
                                    "Cat",
                                    "\x05"
                                    "Ant",
                                    "dog",
                                    "Zed"};
    for (int number = static_cast<int>(all.size()); number < max_providers; ++number) {
      all.push_back("Name " + std::to_string(number * 7919 % max_providers));
    }
    return all;
  }();
  return made;
}

int smallest_free_id(const group_table &table) {
  std::set<int> used;
  for (int i = 0; i < table.count; ++i) {
    used.insert(table.slots[static_cast<std::size_t>(i)].id);
  }
  int id = 0;
  while (used.contains(id)) {
    ++id;
  }
  return id;
}

const group *find_group(const group_table &table, int id) {
  for (int i = 0; i < table.count; ++i) {
    if (const group &each = table.slots[static_cast<std::size_t>(i)]; each.id == id) {
      return &each;
    }
  }
  return nullptr;
}

}  // namespace

const char *name_number(int number) { return names()[static_cast<std::size_t>(number)].c_str(); }

int model::add_provider(int name) {
  if (providers.count >= max_providers) {
    return -1;
  }
  const group added = {smallest_free_id(providers), static_cast<int>(std::strlen(name_number(name))),
                       name_number(name)};
  int place = 0;
  while (place < providers.count && strcasecmp(slot(providers, place).name.c_str(), added.name.c_str()) <= 0) {
    ++place;
  }
  shift(providers, place + 1, place, providers.count - place);
  slot(providers, place) = added;
  ++providers.count;
  return added.id;
}

int model::remove_provider_index(int index) {
  if (index < 0 || index >= providers.count) {
    return -1;
  }
  remove_at(providers, index);
  return 0;
}

// The marks stay at their places while the records move up: the first provider without a mark takes all behind it
// along.
int model::remove_invalid_provider_info() {
  if (network_count == 0) {
    return 0;
  }
  std::set<int> used;
  for (const network &each : networks) {
    for (const transponder &below : each.transponders) {
      for (const service &filed : below.services) {
        used.insert(filed.provider_id);
      }
    }
  }
  int first_unused = 0;
  while (first_unused < providers.count && used.contains(slot(providers, first_unused).id)) {
    ++first_unused;
  }
  while (providers.count > first_unused) {
    remove_at(providers, first_unused);
  }
  return 0;
}

// The host folds the list into one number: the ids in order, to the base 1000.
int model::list_providers(int view_type) {
  view *listed = find_view(view_type);
  std::vector<const group *> found;
  for (int i = 0; listed != nullptr && i < listed->count; ++i) {
    const service *shown = service_of(slot(*listed, i).rch);
    const group *provider = shown != nullptr ? find_group(providers, shown->provider_id) : nullptr;
    if (provider != nullptr && std::ranges::find(found, provider) == found.end()) {
      const auto behind = std::ranges::find_if(found, [provider](const group *other) {
        return strcasecmp(other->name.c_str(), provider->name.c_str()) > 0;
      });
      found.insert(behind, provider);
    }
  }
  unsigned folded = 0;
  for (const group *provider : found) {
    folded = folded * 1000 + static_cast<unsigned>(provider->id) + 1;
  }
  return static_cast<int>(folded & 0x7FFFFFFF);
}

bool model::belongs(const entry &listed, int kind, int id) {
  const service *shown = service_of(listed.rch);
  switch (kind) {
    case 1:
      return listed.id.net_index == id;
    case 2:
      return shown->genre_id == id;
    case 3:
      return shown->provider_id == id;
    case 4:
      return shown->country_id == id;
    case 5:
      return (id == 0 && (shown->flag & 0x04) == 0) || (id == 1 && (shown->flag & 0x04) != 0) ||
             (id == 2 && (shown->flag & 0x40) != 0);
    default:
      return false;
  }
}

int model::create_service_by_group_list_id(int kind, int id, int source_type, int make_current) {
  view *source = find_view(source_type);
  if (source == nullptr || source->count == 0) {
    return -1;
  }
  view &built = views.at(make_current != 0 ? user_view : work_view);
  built = {};
  for (int i = 0; i < source->count; ++i) {
    const entry listed = slot(*source, i);
    if (listed.rch != 0 && belongs(listed, kind, id)) {
      push(built, listed);
    }
  }
  if (const int group = favourite_index(id); kind == favourites_kind && group >= 0) {
    view &copied = views.at(10 + group);
    for (int i = 0; i < copied.count; ++i) {
      slot(built, i) = slot(copied, i);
    }
    built.count = copied.count;
  }
  if (make_current != 0) {
    selected.use_group_list = kind;
    (kind == 1 ? selected.net_index : selected.sub_group_id) = kind == 1 ? static_cast<std::int8_t>(id) : id;
    selected.service_type = source_type;
    change_vindex_type(user_view);
  }
  return 0;
}

int model::remove_service_by_group_list_id(int kind, int id, int view_type) {
  view *listed = find_view(view_type);
  if (listed == nullptr || listed->count == 0) {
    return -1;
  }
  std::vector<int> doomed;
  for (int i = 0; i < listed->count; ++i) {
    const entry &shown = slot(*listed, i);
    if (shown.rch != 0 && belongs(shown, kind, id) && std::ranges::find(doomed, shown.rch) == doomed.end()) {
      doomed.push_back(shown.rch);
    }
  }
  for (const int serial : doomed) {
    release(serial);
  }
  sweep();
  return 0;
}

int model::add_fav_ch_group(int fav_id, int source_type, int kind, int kind_id) {
  const bool built = create_service_by_group_list_id(kind, kind_id, source_type, 0) != -1;
  if (views.at(work_view).count == 0) {
    return -2;
  }
  for (int i = 0; i < views.at(work_view).count; ++i) {
    if (add_favourite(fav_id, work_view, i) == -1) {
      break;
    }
  }
  return built ? 1 : 0;
}

}  // namespace model_tests
