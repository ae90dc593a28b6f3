// Every place is looked at: after bytes were inserted or cut out, records stand anywhere.
#include "chlist/salvage/service_search.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <span>

#include "chlist/salvage/record_bytes.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

using channel::identity;

enum class name_state { broken, empty, sound };

name_state name_at(byte_span file, std::size_t service, std::size_t slot) {
  const std::size_t at = service + image_place<channel_st>(offsetof(channel_st, name)) + slot * sizeof(name_slot_st);
  const std::span<const char> field(reinterpret_cast<const char *>(file.data()) + at + offsetof(name_slot_st, text),
                                    sizeof(name_slot_st::text));
  const std::size_t says = value_at<std::uint16_t>(file, at + offsetof(name_slot_st, name_len));
  if (says != strnlen(field.data(), field.size()) && says != encoded_text(field).size()) {
    return name_state::broken;
  }
  return says == 0 ? name_state::empty : name_state::sound;
}

// What most of a file is: nothing there names a service, and no table needs to be asked.
bool names_no_service(byte_span file, std::size_t at) {
  return (CHLIST_FIELD(file, at, channel_st, ts_id) | CHLIST_FIELD(file, at, channel_st, network_id) |
          CHLIST_FIELD(file, at, channel_st, service_id)) == 0;
}

// A service id that no service has: of records that were never filled, or were wiped.
bool is_unset(const identity &id) { return id.service_id == 0 || id.service_id == 0xFFFF; }

class service_search {
 public:
  service_search(byte_span file, const record_sizes &sizes, const witnesses &known)
      : file_(file), sizes_(sizes), known_(known) {}

  [[nodiscard]] found_service look_at(std::size_t at) const {
    found_service found = {at, service_at(file_, at), 0, false};
    const int evidence = weigh(found);
    if (evidence == 0) {
      return found;
    }
    const name_state name = name_at(file_, at, 0);
    const name_state second = name_at(file_, at, 1);
    found.is_doubtful = name == name_state::broken || second == name_state::broken || has_wide_frequency(file_, at);
    if (evidence == neighbour_only && name != name_state::sound) {
      return found;
    }
    found.score = evidence + points(name, 3) + points(second, 1);
    return found;
  }

 private:
  static constexpr int listed = 8;
  static constexpr int below_its_transponder = 6;
  static constexpr int on_known_transponder = 5;
  static constexpr int neighbour_only = 4;

  static int points(name_state name, int most) {
    return name == name_state::sound ? most : name == name_state::empty ? 0 : -1;
  }

  [[nodiscard]] int weigh(const found_service &found) const {
    if (known_.list(found.id)) {
      return listed;
    }
    if (is_unset(found.id) || is_pattern(found.id) || has_wide_frequency(file_, found.offset)) {
      return 0;
    }
    if (stands_below_its_transponder(found)) {
      return below_its_transponder;
    }
    if (known_.know_transponder(found.id)) {
      return on_known_transponder;
    }
    return has_neighbour(found) ? neighbour_only : 0;
  }

  [[nodiscard]] bool stands_below_its_transponder(const found_service &found) const {
    if (found.offset < sizes_.transponder || found.id.frequency == 0) {
      return false;
    }
    const std::size_t above = found.offset - sizes_.transponder;
    const identity transponder = transponder_at(file_, above);
    if (transponder.ts_id != found.id.ts_id || !same_transponder(transponder, found.id)) {
      return false;
    }
    return known_.know_network(found.id.net_index, found.id.network_id) ||
           (above >= sizes_.network && same_network(network_at(file_, above - sizes_.network), found.id));
  }

  [[nodiscard]] bool has_neighbour(const found_service &found) const {
    return (found.offset >= sizes_.service && is_neighbour(found.id, found.offset - sizes_.service)) ||
           (fits(file_, found.offset + sizes_.service, sizes_.service) &&
            is_neighbour(found.id, found.offset + sizes_.service));
  }

  [[nodiscard]] bool is_neighbour(const identity &id, std::size_t at) const {
    const identity other = service_at(file_, at);
    return id.frequency != 0 && other.service_id != id.service_id && other.ts_id == id.ts_id &&
           same_network(other, id) && same_transponder(other, id);
  }

  byte_span file_;
  record_sizes sizes_;
  const witnesses &known_;
};

// Which of the services do not overlap and score most together. Of what ends up to a place only the best is kept, and
// only when it is better than all that ends before: a record's score is at most 12, so that there is a link for every
// 26 bytes at most, whatever the bytes are.
class best_together {
 public:
  explicit best_together(std::size_t record_size) : size_(record_size) {}

  void add(std::size_t offset, int score) {
    while (states_.size() > 1 && states_[1].end <= offset) {
      states_.pop_front();
    }
    const long long together = states_.front().score + score;
    if (together > states_.back().score) {
      links_.push_back({offset, states_.front().last});
      states_.push_back({offset + size_, together, links_.size()});
    }
  }

  [[nodiscard]] std::vector<std::size_t> offsets() const {
    std::vector<std::size_t> chosen;
    for (std::size_t last = states_.back().last; last != none; last = links_[last - 1].before) {
      chosen.push_back(links_[last - 1].offset);
    }
    std::ranges::reverse(chosen);
    return chosen;
  }

 private:
  static constexpr std::size_t none = 0;

  // A service and the one in front of it, by their numbers, from 1.
  struct link {
    std::size_t offset;
    std::size_t before;
  };
  struct state {
    std::size_t end;
    long long score;
    std::size_t last;
  };

  std::size_t size_;
  std::vector<link> links_;
  std::deque<state> states_ = {{0, 0, none}};
};

constexpr std::size_t progress_interval = 65536;

}  // namespace

witnesses witnesses_of(const std::vector<found_service> &services) {
  witnesses found;
  for (const found_service &service : services) {
    found.add_entry(service.id);
  }
  return found;
}

std::vector<found_service> find_services(byte_span file, const record_sizes &sizes, std::size_t begin,
                                         const witnesses &known, const search_progress &progress) {
  const service_search search(file, sizes, known);
  best_together best(sizes.service);
  for (std::size_t at = begin; fits(file, at, sizes.service); ++at) {
    if (at % progress_interval == 0) {
      progress(at);
    }
    if (names_no_service(file, at)) {
      continue;
    }
    if (const found_service found = search.look_at(at); found.score > 0) {
      best.add(at, found.score);
    }
  }
  std::vector<found_service> chosen;
  for (const std::size_t at : best.offsets()) {
    chosen.push_back(search.look_at(at));
  }
  return chosen;
}

}  // namespace chlist
