// The hierarchy in the model: filing, finding, releasing and removing, and what a save and a load leave of it.
#include "model.h"
#include "slots.h"

namespace model_tests {

const std::vector<int> &view_codes() {
  static const std::vector<int> codes = [] {
    std::vector<int> made = {0, 1, 2, 3, 4, 5};
    for (int code = 10; code <= 29; ++code) {
      made.push_back(code);
    }
    return made;
  }();
  return codes;
}

int capacity_of(int code) {
  static const std::map<int, int> plain = {{0, 5000}, {1, 4000}, {2, 1000}, {3, 5000}, {4, 5000}, {5, 10}};
  return code < 10 ? plain.at(code) : 40;
}

model::model() {
  for (const int code : view_codes()) {
    views[code] = {};
  }
}

view *model::find_view(int code) {
  const auto found = views.find(code);
  return found != views.end() ? &found->second : nullptr;
}

network *model::find_network(int net_index, int network_id) {
  for (network &each : networks) {
    if (each.net_index == net_index && each.network_id == network_id) {
      return &each;
    }
  }
  return nullptr;
}

namespace {

transponder *find_transponder(network &searched, const identity &id) {
  for (transponder &each : searched.transponders) {
    if (id.frequency == 0 ? each.ts_id == id.ts_id
                          : same_frequency(each.frequency, id.frequency) && each.polarisation == id.polarisation) {
      return &each;
    }
  }
  return nullptr;
}

service *find_service(transponder &searched, int service_id) {
  for (service &each : searched.services) {
    if (each.id.service_id == service_id) {
      return &each;
    }
  }
  return nullptr;
}

}  // namespace

service *model::resolve(const identity &id, transponder **holder) {
  network *named = find_network(id.net_index, id.network_id);
  if (named == nullptr) {
    return nullptr;
  }
  for (transponder &each : named->transponders) {
    const bool searched = id.frequency == 0 ? each.ts_id == id.ts_id : &each == find_transponder(*named, id);
    if (service *found = searched ? find_service(each, id.service_id) : nullptr; found != nullptr) {
      if (holder != nullptr) {
        *holder = &each;
      }
      return found;
    }
  }
  return nullptr;
}

service *model::service_of(int serial) {
  for (network &each : networks) {
    for (transponder &below : each.transponders) {
      for (service &filed : below.services) {
        if (filed.serial == serial) {
          return &filed;
        }
      }
    }
  }
  return nullptr;
}

bool model::counts_match() const {
  return std::ranges::all_of(networks, [](const network &each) {
    return each.count == static_cast<int>(each.transponders.size()) &&
           std::ranges::all_of(each.transponders, [](const transponder &below) {
             return below.count == static_cast<int>(below.services.size());
           });
  });
}

int model::file_service(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                        int service_type) {
  const identity id = make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation);
  const int serial = ++last_serial_;
  network *named = find_network(net_index, network_id);
  if (named == nullptr) {
    add_network(net_index, network_id);
    named = &networks.back();
  }
  transponder *holder = find_transponder(*named, id);
  if (holder == nullptr) {
    holder = &named->transponders.emplace_back(transponder{id.ts_id, id.frequency, id.polarisation, 0, {}});
    ++named->count;
  }
  if (find_service(*holder, service_id) != nullptr) {
    return 0;
  }
  service filed;
  filed.serial = serial;
  filed.id = id;
  filed.service_type = service_type;
  holder->services.push_back(filed);
  ++holder->count;
  return 1;
}

int model::add_network(int net_index, int network_id) {
  networks.push_back({net_index, network_id, 0, {}});
  ++network_count;
  return 0;
}

void model::forget(int serial) {
  for (auto &[code, each] : views) {
    for (entry &pointing : each.slots) {
      pointing.rch = pointing.rch == serial ? 0 : pointing.rch;
    }
  }
  for (watched &pointing : history) {
    pointing.vch.rch = pointing.vch.rch == serial ? 0 : pointing.vch.rch;
  }
}

void model::forget_all(const transponder &released) {
  for (const service &gone : released.services) {
    forget(gone.serial);
  }
}

// Where no transponder matches the channel, as after it was filed on one with another transport stream id, the one that
// holds it is counted down.
void model::release(int serial) {
  const service released = *service_of(serial);
  bool any_matches = false;
  for (network &each : networks) {
    if (each.net_index != released.id.net_index || each.network_id != released.id.network_id) {
      continue;
    }
    const auto first = std::ranges::find_if(each.transponders, [&](const transponder &below) {
      return below.ts_id == released.id.ts_id && same_frequency(below.frequency, released.id.frequency) &&
             below.polarisation == released.id.polarisation;
    });
    if (first != each.transponders.end()) {
      any_matches = true;
      first->count = std::max(first->count - 1, 0);
    }
  }
  for (network &each : networks) {
    for (transponder &below : each.transponders) {
      const bool held =
          std::erase_if(below.services, [serial](const service &filed) { return filed.serial == serial; }) > 0;
      below.count -= held && !any_matches && below.count > 0 ? 1 : 0;
    }
  }
  forget(serial);
  kept.counts = kept.counts && counts_match();
}

int model::release_service(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation) {
  const service *found = resolve(make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation));
  if (found == nullptr) {
    return -1;
  }
  release(found->serial);
  return 0;
}

int model::release_transponder(int net_index, int network_id, int ts_id, int frequency, int polarisation) {
  network *named = find_network(net_index, network_id);
  const identity id = make_identity(net_index, network_id, ts_id, frequency, 0, polarisation);
  transponder *found = named != nullptr ? find_transponder(*named, id) : nullptr;
  if (found == nullptr) {
    return -1;
  }
  forget_all(*found);
  named->transponders.erase(named->transponders.begin() + (found - named->transponders.data()));
  --named->count;
  return 0;
}

int model::release_network(int net_index, int network_id) {
  network *named = find_network(net_index, network_id);
  if (named == nullptr) {
    return -1;
  }
  for (const transponder &below : named->transponders) {
    forget_all(below);
  }
  networks.erase(networks.begin() + (named - networks.data()));
  --network_count;
  return 0;
}

void model::initialise() {
  networks.clear();
  network_count = 0;
  for (auto &[code, each] : views) {
    if (code != 4) {
      each = {};
    }
  }
  providers = {};
  favourites = {};
  selected = {};
}

int model::reset_channel_list() {
  for (const network &each : networks) {
    for (const transponder &below : each.transponders) {
      forget_all(below);
    }
  }
  initialise();
  // The history and the work view outlive the list.
  kept = {.zeros_behind_counts = kept.zeros_behind_counts, .distinct_history = kept.distinct_history};
  return -4;
}

void model::link() {
  for (auto &[code, each] : views) {
    if (code <= 10 + favourites.count) {
      for (int i = 0; i < each.count; ++i) {
        const service *found = resolve(slot(each, i).id);
        slot(each, i).rch = found != nullptr ? found->serial : 0;
      }
    }
  }
}

// A list whose counts are not the lengths of its lists makes no file that can be loaded: the host does not try.
int model::save_and_load() {
  if (!counts_match()) {
    return 0;
  }
  for (network &each : networks) {
    for (transponder &below : each.transponders) {
      forget_all(below);
      for (service &filed : below.services) {
        filed.country_id = 0;
      }
    }
  }
  selected.current = 0;
  const int type = static_cast<std::int8_t>(selected.vch_type);
  change_vindex_type(type);
  const view *named = find_view(type);
  if ((named != nullptr ? *named : current()).count == 0) {
    change_vindex_type(0);
  }
  link();
  return 10;
}

}  // namespace model_tests
