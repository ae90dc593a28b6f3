// Positions first, names next, equal indexes last.
#include "chlist/line_up/sources.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <set>
#include <string_view>

#include "chlist/report.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::uint8_t largest_net_index = 254;  // 255 stands for all

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The tenths of a degree that a text begins with, "19.2" or "5"; what follows is left in it.
std::optional<int> take_tenths(std::string_view &text) {
  int degrees = 0;
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, degrees);
  if (error != std::errc() || degrees < 0 || degrees > 180) {
    return std::nullopt;
  }
  text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
  int tenths = degrees * 10;
  if (text.size() > 1 && text[0] == '.' && is_digit(text[1])) {
    tenths += text[1] - '0';
    text.remove_prefix(2);
  }
  return tenths;
}

// East or west, behind a degree sign or blanks, and no letter of a word.
std::optional<char> direction_at(std::string_view text) {
  constexpr std::string_view degree = "\u00B0";
  while (text.starts_with(' ') || text.starts_with(degree)) {
    text.remove_prefix(text.starts_with(' ') ? 1 : degree.size());
  }
  const bool is_direction = text.starts_with('E') || text.starts_with('W');
  const bool ends = text.size() < 2 || !((text[1] >= 'a' && text[1] <= 'z') || (text[1] >= 'A' && text[1] <= 'Z'));
  return is_direction && ends ? std::optional(text.front()) : std::nullopt;
}

// "S19.2E", "Astra 19.2\u00B0 E": the position that a name tells, as "192E".
std::optional<std::string> position_in(std::string_view name) {
  for (std::size_t at = 0; at < name.size(); ++at) {
    if (!is_digit(name[at]) || (at > 0 && (is_digit(name[at - 1]) || name[at - 1] == '.'))) {
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

struct source {
  std::uint8_t net_index = 0;
  std::string name;
  std::optional<std::string> position = position_in(name);

  [[nodiscard]] bool is_same(const source &other) const {
    return position || other.position ? position == other.position
                                      : !name.empty() && folded(name) == folded(other.name);
  }
  // Names that do not tell satellites apart.
  [[nodiscard]] bool may_be(const source &other) const { return !position || !other.position; }
};

// In the order in which they come up, each with the first name of its networks.
std::vector<source> sources_of(const line_up &list) {
  std::vector<std::uint8_t> order;
  std::map<std::uint8_t, std::string> names;
  for (const line_up_network &network : list.networks) {
    const auto [known, is_new] = names.try_emplace(network.net_index, network.name);
    if (is_new) {
      order.push_back(network.net_index);
    } else if (known->second.empty()) {
      known->second = network.name;
    }
  }
  std::vector<source> made;
  std::ranges::transform(order, std::back_inserter(made), [&](std::uint8_t index) {
    return source{index, names.at(index)};
  });
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
    pair([](const source &a, const source &b) { return a.is_same(b); });
    pair([](const source &a, const source &b) { return a.net_index == b.net_index && a.may_be(b); });
    number_the_others();
    std::vector<paired_source> pairs;
    for (const source &each : second_) {
      const std::uint8_t other = partners_.at(each.net_index);
      const auto partner = std::ranges::find(first_, other, &source::net_index);
      const bool is_renamed = partner != first_.end() && !each.is_same(*partner) && each.name != partner->name;
      pairs.push_back({each.name, each.net_index, other, is_renamed});
    }
    return pairs;
  }

 private:
  template <class Same>
  void pair(const Same &is_same) {
    for (const source &each : second_) {
      if (partners_.contains(each.net_index)) {
        continue;
      }
      const auto found = std::ranges::find_if(
          first_, [&](const source &other) { return !taken_.contains(other.net_index) && is_same(each, other); });
      if (found != first_.end()) {
        give(each, found->net_index);
      }
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
  return fmt::format("network index {} ({}) is {}", source.net_index, shown(source.name), source.other);
}

}  // namespace chlist
