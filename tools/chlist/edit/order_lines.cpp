// The fewest entries are moved. Edits name entries by their services: an entry without one, and the second entry of a
// service, stay where they are, and the others move past them.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "chlist/compare/moved.h"
#include "chlist/edit/compared_lists.h"
#include "chlist/edit/edit_line.h"
#include "chlist/line_up/selection.h"
#include "chlist/position.h"

namespace chlist {
namespace {

// Entries of a view as numbers that both lists share: the first entry of a service is the place of the service, and
// what has no name for edits gets a number above all places.
class shared_entries {
 public:
  explicit shared_entries(const compared_lists &lists) : lists_(lists) {}

  using row = std::vector<std::size_t>;

  row of_list(const std::vector<line_up_entry> &entries) {
    return numbered(entries, [](std::size_t service) { return service; });
  }
  row of_wanted(const std::vector<line_up_entry> &entries) {
    return numbered(entries, [this](std::size_t service) { return lists_.place_of_wanted(service); });
  }

  [[nodiscard]] bool has_name(std::size_t entry) const { return entry < lists_.is().services.size(); }
  [[nodiscard]] std::string name_of(std::size_t entry) const { return lists_.name_of(entry); }

 private:
  // Services that the list does not have are left out.
  template <class PlaceOf>
  row numbered(const std::vector<line_up_entry> &entries, const PlaceOf &place_of) {
    row made;
    std::map<std::string, std::size_t> counts;
    for (const line_up_entry &entry : entries) {
      const std::size_t place = entry.service != nowhere ? place_of(entry.service) : nowhere;
      if (entry.service != nowhere && place == nowhere) {
        continue;
      }
      const std::string text = place != nowhere ? std::to_string(place) : identity_text(entry.id);
      const std::size_t before = counts[text]++;
      made.push_back(place != nowhere && before == 0 ? place : nameless(fmt::format("{} {}", text, before)));
    }
    return made;
  }

  std::size_t nameless(const std::string &text) {
    return numbers_.try_emplace(text, lists_.is().services.size() + numbers_.size()).first->second;
  }

  const compared_lists &lists_;
  std::unordered_map<std::string, std::size_t> numbers_;
};

using entry_row = shared_entries::row;

entry_row common_to(const entry_row &row, const entry_row &other) {
  const std::unordered_set<std::size_t> known(other.begin(), other.end());
  entry_row common;
  std::ranges::copy_if(row, std::back_inserter(common), [&known](std::size_t each) { return known.contains(each); });
  return common;
}

// The stretches of a row between entries that stay.
std::unordered_map<std::size_t, std::size_t> stretches_of(const entry_row &row,
                                                          const std::unordered_set<std::size_t> &fixed) {
  std::unordered_map<std::size_t, std::size_t> stretches;
  std::size_t stretch = 0;
  for (const std::size_t entry : row) {
    stretch += fixed.contains(entry) ? 1 : 0;
    stretches[entry] = stretch;
  }
  return stretches;
}

class view_order {
 public:
  view_order(shared_entries &entries, const wanted_view &view)
      : entries_(entries), view_(view), now_(entries.of_list(view.is)), wanted_(entries.of_wanted(view.wanted)) {
    wanted_ = common_to(wanted_, now_);
    find_moved();
  }

  std::vector<std::string> lines() {
    std::vector<std::string> made;
    for (std::size_t i = 0; i < wanted_.size(); ++i) {
      if (moved_.contains(wanted_[i])) {
        const std::size_t count = moved_together(i);
        made.push_back(line_for(i, count));
        i += count - 1;
      }
    }
    return made;
  }

 private:
  // Past an entry that cannot move, all others move that stood on its other side; between two of them, the fewest.
  void find_moved() {
    const entry_row now = common_to(now_, wanted_);
    const std::unordered_set<std::size_t> fixed = fixed_in(now);
    const auto stretches_now = stretches_of(now, fixed);
    const auto stretches_wanted = stretches_of(wanted_, fixed);
    const auto leaves_stretch = [&](std::size_t entry) {
      return stretches_now.at(entry) != stretches_wanted.at(entry);
    };
    entry_row staying = now;
    entry_row staying_wanted = wanted_;
    std::ranges::copy_if(now, std::inserter(moved_, moved_.end()), leaves_stretch);
    std::erase_if(staying, leaves_stretch);
    std::erase_if(staying_wanted, leaves_stretch);
    for (const std::size_t entry : moved_within_stretches(staying, staying_wanted, stretches_now)) {
      moved_.insert(entry);
    }
    std::erase_if(moved_, [this](std::size_t entry) { return !entries_.has_name(entry); });
  }

  [[nodiscard]] std::unordered_set<std::size_t> fixed_in(const entry_row &now) const {
    const auto has_name = [this](std::size_t entry) { return entries_.has_name(entry); };
    entry_row nameless_now = now;
    entry_row nameless_wanted = wanted_;
    std::erase_if(nameless_now, has_name);
    std::erase_if(nameless_wanted, has_name);
    std::unordered_set<std::size_t> fixed(nameless_now.begin(), nameless_now.end());
    for (const std::size_t entry : moved_between(nameless_now, nameless_wanted)) {
      fixed.erase(entry);
    }
    return fixed;
  }

  static entry_row moved_within_stretches(const entry_row &now, const entry_row &wanted,
                                          const std::unordered_map<std::size_t, std::size_t> &stretches) {
    std::map<std::size_t, std::pair<entry_row, entry_row>> rows;
    for (const std::size_t entry : now) {
      rows[stretches.at(entry)].first.push_back(entry);
    }
    for (const std::size_t entry : wanted) {
      rows[stretches.at(entry)].second.push_back(entry);
    }
    entry_row moved;
    for (const auto &[stretch, both] : rows) {
      std::ranges::copy(moved_between(both.first, both.second), std::back_inserter(moved));
    }
    return moved;
  }

  [[nodiscard]] std::size_t moved_together(std::size_t first) const {
    std::size_t count = 1;
    while (count < most_services_on_a_line && first + count < wanted_.size() &&
           moved_.contains(wanted_[first + count])) {
      ++count;
    }
    return count;
  }

  std::string line_for(std::size_t first, std::size_t count) {
    const auto begin = wanted_.begin() + static_cast<std::ptrdiff_t>(first);
    const entry_row group(begin, begin + static_cast<std::ptrdiff_t>(count));
    std::vector<std::string> words = {"move"};
    std::ranges::transform(group, std::back_inserter(words),
                           [this](std::size_t each) { return entries_.name_of(each); });
    const std::size_t place = move_now(group, first);
    words.insert(words.end(), {"--view", view_.name});
    if (first > 0 && entries_.has_name(wanted_[first - 1])) {
      words.insert(words.end(), {"--after", entries_.name_of(wanted_[first - 1])});
    } else {
      words.insert(words.end(), {"--to", std::to_string(position_of(place))});
    }
    return line_of_words(words);
  }

  // They go behind what stands in front of them in the wanted order. Returns how many come in front of them.
  std::size_t move_now(const entry_row &group, std::size_t first) {
    const std::unordered_set<std::size_t> leaving(group.begin(), group.end());
    std::erase_if(now_, [&leaving](std::size_t each) { return leaving.contains(each); });
    const auto place = first == 0 ? now_.begin() : std::ranges::find(now_, wanted_[first - 1]) + 1;
    const auto in_front = static_cast<std::size_t>(place - now_.begin());
    now_.insert(place, group.begin(), group.end());
    return in_front;
  }

  shared_entries &entries_;
  const wanted_view &view_;
  entry_row now_;
  entry_row wanted_;  // those of the view as it is
  std::unordered_set<std::size_t> moved_;
};

}  // namespace

std::vector<std::string> lines_of_order(const compared_lists &lists) {
  std::vector<std::string> made;
  shared_entries entries(lists);
  for (const wanted_view &view : views_of(lists)) {
    std::ranges::move(view_order(entries, view).lines(), std::back_inserter(made));
  }
  return made;
}

}  // namespace chlist
