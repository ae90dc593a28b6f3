#include "state.h"

#include <sstream>

namespace model_tests {
namespace {

template <class Table, class Slot>
void trim(Table &table, const Slot &zero) {
  while (static_cast<int>(table.slots.size()) > table.count && table.slots.back() == zero) {
    table.slots.pop_back();
  }
}

std::ostream &operator<<(std::ostream &out, const identity &id) {
  return out << id.net_index << '/' << id.network_id << '/' << id.ts_id << '/' << id.frequency << '/' << id.service_id
             << '/' << id.polarisation;
}

std::ostream &operator<<(std::ostream &out, const service &shown) {
  return out << "channel #" << shown.serial << ' ' << shown.id << " type " << shown.service_type << " flag "
             << shown.flag << " genre " << shown.genre_id << " provider " << shown.provider_id << " country "
             << shown.country_id << " key " << shown.user_order_key << " '" << shown.names[0] << "'("
             << shown.name_lengths[0] << ") '" << shown.names[1] << "'(" << shown.name_lengths[1] << ')';
}

std::ostream &operator<<(std::ostream &out, const entry &shown) {
  return out << shown.id << " tag " << shown.tag << " fav " << shown.favorite_id << " number " << shown.major << '-'
             << shown.minor << " rch #" << shown.rch;
}

std::ostream &operator<<(std::ostream &out, const group &shown) {
  return out << shown.id << " '" << shown.name << "'(" << shown.name_length << ')';
}

std::ostream &operator<<(std::ostream &out, const watched &shown) {
  return out << shown.vch << " at " << shown.vindex << " tag " << shown.tag << " net " << shown.net_index << " group "
             << shown.group << ' ' << shown.service_type << ' ' << shown.sub_group;
}

std::ostream &operator<<(std::ostream &out, const selection &shown) {
  return out << "current " << shown.current << " vch_type " << shown.vch_type << " ch_type " << shown.ch_type
             << " use_group_list " << shown.use_group_list << " service_type " << shown.service_type << " net_index "
             << shown.net_index << " sub_group_id " << shown.sub_group_id << '\n';
}

template <class Table>
std::ostream &print_slots(std::ostream &out, const Table &table) {
  out << "count " << table.count << '\n';
  for (std::size_t i = 0; i < table.slots.size(); ++i) {
    out << "  [" << i << "] " << table.slots[i] << '\n';
  }
  return out;
}

std::ostream &operator<<(std::ostream &out, const view &shown) { return print_slots(out, shown); }
std::ostream &operator<<(std::ostream &out, const group_table &shown) { return print_slots(out, shown); }

std::ostream &operator<<(std::ostream &out, const std::vector<network> &networks) {
  for (const network &each : networks) {
    out << "  network " << each.net_index << '/' << each.network_id << " count " << each.count << '\n';
    for (const transponder &below : each.transponders) {
      out << "    transponder " << below.ts_id << '/' << below.frequency << '/' << below.polarisation << " count "
          << below.count << '\n';
      for (const service &filed : below.services) {
        out << "      " << filed << '\n';
      }
    }
  }
  return out;
}

template <class Part>
void compare(std::ostream &out, const std::string &what, const Part &expected, const Part &found) {
  if (!(expected == found)) {
    out << what << ", expected:\n" << expected << what << ", found:\n" << found;
  }
}

}  // namespace

void normalise(state &normalised) {
  for (auto &[code, each] : normalised.views) {
    trim(each, entry{});
  }
  trim(normalised.providers, group{});
  trim(normalised.favourites, group{});
}

std::string difference(const state &expected, const state &found) {
  std::ostringstream out;
  compare(out, "hierarchy", expected.networks, found.networks);
  compare(out, "network count ", expected.network_count, found.network_count);
  for (const auto &[code, each] : expected.views) {
    compare(out, "view " + std::to_string(code), each, found.views.at(code));
  }
  compare(out, "selection", expected.selected, found.selected);
  compare(out, "providers", expected.providers, found.providers);
  compare(out, "favourite groups", expected.favourites, found.favourites);
  compare(out, "history count ", expected.history_count, found.history_count);
  for (std::size_t i = 0; i < expected.history.size(); ++i) {
    compare(out, "history " + std::to_string(i) + ' ', expected.history[i], found.history[i]);
  }
  return out.str();
}

}  // namespace model_tests
