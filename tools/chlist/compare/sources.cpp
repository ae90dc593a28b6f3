// Names first, positions next, the original network ids that both have last.
#include "chlist/compare/sources.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>

#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::uint8_t largest_net_index = 254;  // 255 stands for all
constexpr int half_circle = 1800;                // tenths of a degree

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_point(char c) { return c == '.' || c == ','; }
bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// The tenths of a degree that a text begins with, "19.2", "19,2" or "5"; what follows is left in it.
std::optional<int> take_tenths(std::string_view &text) {
  std::uint16_t degrees = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), degrees);
  if (error != std::errc()) {
    return std::nullopt;
  }
  text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
  int tenths = degrees * 10;
  if (text.size() > 1 && is_point(text[0]) && is_digit(text[1])) {
    tenths += text[1] - '0';
    text.remove_prefix(2);
  }
  return tenths <= half_circle ? std::optional(tenths) : std::nullopt;
}

// East or west, behind a degree sign or blanks: a letter alone, or the word.
std::optional<char> direction_at(std::string_view text) {
  constexpr std::string_view degree = "\u00B0";
  while (text.starts_with(' ') || text.starts_with(degree)) {
    text.remove_prefix(text.starts_with(' ') ? 1 : degree.size());
  }
  const auto end = std::ranges::find_if_not(text, is_letter);
  const std::string word = folded(text.substr(0, static_cast<std::size_t>(end - text.begin())));
  if (word == "e" || word == "east" || word == "ost" || word == "est") {
    return 'E';
  }
  return word == "w" || word == "west" || word == "ouest" ? std::optional('W') : std::nullopt;
}

// "S19.2E", "Astra 19.2\u00B0 E": the position that a name tells, as "192E".
std::optional<std::string> position_in(std::string_view name) {
  for (std::size_t at = 0; at < name.size(); ++at) {
    if (!is_digit(name[at]) || (at > 0 && (is_digit(name[at - 1]) || is_point(name[at - 1])))) {
      continue;
    }
    std::string_view rest = name.substr(at);
    const std::optional<int> tenths = take_tenths(rest);
    const std::optional<char> direction = direction_at(rest);
    if (tenths && direction) {
      return fmt::format("{}{}", *tenths, *direction);
    }
  }
  return std::nullopt;
}

// What is known of a source: the names of its networks, the positions that they tell, and original network ids.
struct source {
  std::uint8_t net_index = 0;
  std::string name;  // the first of them
  std::set<std::string> names = {};
  std::set<std::string> positions = {};
  std::set<std::uint16_t> network_ids = {};

  void add(const line_up_network &network) {
    network_ids.insert(network.network_id);
    if (network.name.empty()) {
      return;
    }
    name = name.empty() ? network.name : name;
    names.insert(folded(network.name));
    if (const auto position = position_in(network.name)) {
      positions.insert(*position);
    }
  }
};

template <class Element>
std::size_t in_common(const std::set<Element> &a, const std::set<Element> &b) {
  return static_cast<std::size_t>(std::ranges::count_if(a, [&](const Element &each) { return b.contains(each); }));
}

// How much speaks for two being one; 0: nothing.
using likeness = std::size_t (*)(const source &a, const source &b);

std::size_t by_names(const source &a, const source &b) { return in_common(a.names, b.names); }
std::size_t by_positions(const source &a, const source &b) { return in_common(a.positions, b.positions); }

// Satellites at different positions may have the same ids.
std::size_t by_network_ids(const source &a, const source &b) {
  const bool are_apart = !a.positions.empty() && !b.positions.empty() && by_positions(a, b) == 0;
  return are_apart ? 0 : in_common(a.network_ids, b.network_ids);
}

// In the order in which they come up.
std::vector<source> sources_of(const line_up &list) {
  std::vector<source> made;
  for (const line_up_network &network : list.networks) {
    auto found = std::ranges::find(made, network.net_index, &source::net_index);
    if (found == made.end()) {
      found = made.insert(made.end(), source{network.net_index, {}});
    }
    found->add(network);
  }
  return made;
}

class source_pairing {
 public:
  source_pairing(const line_up &first, const line_up &second) : first_(sources_of(first)), second_(sources_of(second)) {
    for (const source &each : first_) {
      in_first_.insert(each.net_index);
    }
  }

  std::vector<paired_source> made() {
    for (const likeness way : {by_names, by_positions, by_network_ids}) {
      pair(way);
    }
    number_the_others();
    std::vector<paired_source> pairs;
    std::ranges::transform(second_, std::back_inserter(pairs), [this](const source &each) { return paired(each); });
    return pairs;
  }

 private:
  // The likest first; of several that are as like, one with the same index.
  void pair(likeness way) {
    for (;;) {
      std::tuple<std::size_t, bool> best = {0, true};  // what has nothing alike is no better
      const source *first = nullptr;
      const source *second = nullptr;
      for (const source &b : second_) {
        for (const source &a : first_) {
          const std::tuple<std::size_t, bool> here = {way(a, b), a.net_index == b.net_index};
          const bool is_open = !partners_.contains(b.net_index) && !taken_.contains(a.net_index);
          if (is_open && here > best) {
            best = here;
            first = &a;
            second = &b;
          }
        }
      }
      if (first == nullptr) {
        return;
      }
      give(*second, first->net_index);
    }
  }

  // Those that the first list lacks. When no index is left, which no receiver has, it stays.
  void number_the_others() {
    for (const source &each : second_) {
      if (!partners_.contains(each.net_index)) {
        give(each, is_free(each.net_index) ? each.net_index : free_index().value_or(each.net_index));
      }
    }
  }

  [[nodiscard]] paired_source paired(const source &each) const {
    const std::uint8_t index = partners_.at(each.net_index);
    const auto partner = std::ranges::find(first_, index, &source::net_index);
    const bool is_new = partner == first_.end();
    const bool is_renamed =
        !is_new && by_names(each, *partner) + by_positions(each, *partner) == 0 && each.name != partner->name;
    return {each.name, each.net_index, index, is_new, is_renamed};
  }

  [[nodiscard]] bool is_free(std::uint8_t index) const { return !in_first_.contains(index) && !taken_.contains(index); }

  [[nodiscard]] std::optional<std::uint8_t> free_index() const {
    for (std::uint8_t index = 1; index <= largest_net_index; ++index) {
      if (is_free(index)) {
        return index;
      }
    }
    return std::nullopt;
  }

  void give(const source &each, std::uint8_t index) {
    partners_[each.net_index] = index;
    taken_.insert(index);
  }

  std::vector<source> first_;
  std::vector<source> second_;
  std::set<std::uint8_t> in_first_;
  std::set<std::uint8_t> taken_;
  std::map<std::uint8_t, std::uint8_t> partners_;
};

}  // namespace

std::vector<paired_source> pair_sources(const line_up &first, const line_up &second) {
  return source_pairing(first, second).made();
}

bool is_any_renumbered(const std::vector<paired_source> &sources) {
  return std::ranges::any_of(sources, &paired_source::is_renumbered);
}

std::uint8_t renumbered(std::uint8_t net_index, const std::vector<paired_source> &sources) {
  const auto found = std::ranges::find(sources, net_index, &paired_source::net_index);
  return found != sources.end() ? found->other : net_index;
}

void renumber_sources(line_up &list, const std::vector<paired_source> &sources) {
  for (line_up_network &network : list.networks) {
    network.net_index = renumbered(network.net_index, sources);
  }
  for (line_up_service &service : list.services) {
    service.fields.net_index = renumbered(service.fields.net_index, sources);
  }
  const auto renumber_entries = [&](std::vector<line_up_entry> &entries) {
    for (line_up_entry &entry : entries) {
      entry.id.net_index = renumbered(entry.id.net_index, sources);
    }
  };
  for (line_up_view &view : list.views) {
    renumber_entries(view.entries);
  }
  for (favourite_group &group : list.favourites) {
    renumber_entries(group.entries);
  }
}

std::string text_of(const paired_source &source) {
  return fmt::format("{} ({}) is {} in the other list{}", source.net_index, shown(source.name), source.other,
                     source.is_new ? ", which does not have it" : "");
}

}  // namespace chlist
