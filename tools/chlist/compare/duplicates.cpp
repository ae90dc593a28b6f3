// Services without a name are the same by their ids alone.
#include "chlist/compare/duplicates.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>

#include "chlist/closest.h"
#include "chlist/compare/quality.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

template <class Value>
struct explained_word {
  std::string_view word;
  Value value;
  std::string_view about;
};

constexpr std::array<explained_word<sameness>, 3> samenesses = {
    {{"ids", sameness::ids, "original network id, service id and name, whatever the source and the transponder"},
     {"name", sameness::name, "the name, without SD, HD, FHD, UHD, 4K or 8K at its end"},
     {"name+quality", sameness::name_and_quality, "the same, and what these words or the type tell of the picture"}}};

constexpr std::array<explained_word<merit>, 3> merits_by_word = {
    {{"hd", merit::high_definition, "the better picture"},
     {"free", merit::free_to_air, "what is not scrambled"},
     {"lower-number", merit::lower_number, "the lower number in ALL"}}};

template <class Table>
std::vector<term> terms_of(const Table &table) {
  std::vector<term> made;
  for (const auto &each : table) {
    made.push_back({std::string(each.word), std::string(each.about)});
  }
  return made;
}

// What services that are the same have in common.
using common_key = std::tuple<int, int, std::string>;

common_key key_of(const line_up_service &service, sameness by) {
  if (by == sameness::ids) {
    return {service.fields.network_id, service.fields.service_id, folded(service.name)};
  }
  const int quality = by == sameness::name_and_quality ? static_cast<int>(picture_of(service)) : 0;
  return {static_cast<int>(is_radio(service)), quality, plain_name(service.name)};
}

// Where ALL shows services first, and under which number; behind everything when it does not.
struct shown_place {
  int number = std::numeric_limits<int>::max();
  int minor = 0;
  std::size_t index = nowhere;
};

std::vector<shown_place> places_in_all(const line_up &list) {
  std::vector<shown_place> places(list.services.size());
  std::size_t index = 0;
  for (const line_up_entry &entry : list.view(view_kind::all).entries) {
    if (entry.service != nowhere && places[entry.service].index == nowhere) {
      places[entry.service] = {entry.number.major, entry.number.minor, index};
    }
    ++index;
  }
  return places;
}

class judge_of_services {
 public:
  judge_of_services(const line_up &list, const std::vector<merit> &merits)
      : list_(list), merits_(merits), places_(places_in_all(list)) {}

  [[nodiscard]] bool is_better(std::size_t a, std::size_t b) const {
    for (const merit each : merits_) {
      const auto mark_of_a = mark_of(a, each);
      const auto mark_of_b = mark_of(b, each);
      if (mark_of_a != mark_of_b) {
        return mark_of_a < mark_of_b;
      }
    }
    return places_[a].index < places_[b].index;
  }

 private:
  // The lower, the better.
  [[nodiscard]] std::pair<int, int> mark_of(std::size_t place, merit by) const {
    switch (by) {
      case merit::high_definition:
        return {-static_cast<int>(picture_of(list_.services[place])), 0};
      case merit::free_to_air:
        return {list_.services[place].has_flag(CHANNEL_FLAG_FTA) ? 1 : 0, 0};
      case merit::lower_number:
        return {places_[place].number, places_[place].minor};
    }
    return {0, 0};
  }

  const line_up &list_;
  const std::vector<merit> &merits_;
  std::vector<shown_place> places_;
};

template <class Table>
auto value_named(const Table &table, std::string_view what, std::string_view word) {
  const auto *const found = std::ranges::find(table, word, &Table::value_type::word);
  if (found == table.end()) {
    throw std::runtime_error(unknown_name(what, word, words_of(terms_of(table))));
  }
  return found->value;
}

}  // namespace

sameness sameness_named(std::string_view word) { return value_named(samenesses, "sameness", word); }

std::vector<term> kinds_of_sameness() { return terms_of(samenesses); }

std::vector<merit> merits_named(std::string_view words) {
  std::vector<merit> made;
  while (true) {
    const std::size_t comma = std::min(words.find(','), words.size());
    made.push_back(value_named(merits_by_word, "preference", words.substr(0, comma)));
    if (comma == words.size()) {
      return made;
    }
    words.remove_prefix(comma + 1);
  }
}

std::vector<term> kinds_of_merit() { return terms_of(merits_by_word); }

std::vector<duplicate_group> find_duplicates(const line_up &list, sameness by, const std::vector<merit> &merits,
                                             const std::vector<bool> &is_candidate) {
  std::map<common_key, duplicate_group> same;
  for (std::size_t place = 0; place < list.services.size(); ++place) {
    if (is_candidate[place] && (by == sameness::ids || !list.services[place].name.empty())) {
      same[key_of(list.services[place], by)].push_back(place);
    }
  }
  const judge_of_services judge(list, merits);
  const auto is_better = [&judge](std::size_t a, std::size_t b) { return judge.is_better(a, b); };
  std::vector<duplicate_group> groups;
  for (auto &[key, group] : same) {
    if (group.size() > 1) {
      std::ranges::stable_sort(group, is_better);
      groups.push_back(std::move(group));
    }
  }
  std::ranges::sort(groups, {}, [](const duplicate_group &group) { return group.front(); });
  return groups;
}

}  // namespace chlist
