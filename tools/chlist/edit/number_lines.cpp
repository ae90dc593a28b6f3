// Whole views that are numbered one after another first, then a greedy search: a line is taken when more entries have
// the number that is wanted after it than before. So it comes to an end, and of the numbers that one entry of a view
// alone is to have it finds every one: whatever holds such a number without being meant to is wrong itself, and gets
// the former number of the entry that is set right.
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

#include "chlist/edit/compared_lists.h"
#include "chlist/edit/edit_line.h"
#include "chlist/line_up/selection.h"

namespace chlist {
namespace {

struct numbered_entry {
  std::size_t service = nowhere;
  channel_number now;
  std::optional<channel_number> wanted;  // none: the wanted list does not have it

  [[nodiscard]] bool is_wrong() const { return wanted && *wanted != now; }
};

// What a line does to a view.
struct number_change {
  std::vector<std::size_t> own;
  std::vector<std::size_t> displaced;
  int gain = 0;          // entries that get the wanted number, less those that lose it
  bool is_meant = true;  // the service's entries are right afterwards
};

class numbered_view {
 public:
  numbered_view(const compared_lists &lists, const wanted_view &view)
      : name_(view.name), shows_the_same_(view.is.size() == view.wanted.size()) {
    std::unordered_map<std::size_t, std::vector<channel_number>> wanted;  // of each service, the last entry first
    for (std::size_t i = view.wanted.size(); i-- > 0;) {
      const std::size_t service = view.wanted[i].service;
      const std::size_t place = service != nowhere ? lists.place_of_wanted(service) : nowhere;
      wanted[place].push_back(view.wanted[i].number);
      shows_the_same_ = shows_the_same_ && view.is[i].service == place;
    }
    for (const line_up_entry &entry : view.is) {
      add(entry, wanted[entry.service]);
    }
  }

  [[nodiscard]] const std::string &name() const { return name_; }
  [[nodiscard]] const std::vector<numbered_entry> &entries() const { return entries_; }

  [[nodiscard]] const numbered_entry *first_of(std::size_t service) const {
    const auto found = by_service_.find(service);
    return found != by_service_.end() ? &entries_[found->second.front()] : nullptr;
  }

  [[nodiscard]] std::size_t count_wrong() const {
    return static_cast<std::size_t>(std::ranges::count_if(entries_, &numbered_entry::is_wrong));
  }

  // Whether one service's number does not set it right.
  [[nodiscard]] bool is_wrong_as_a_whole() const {
    return count_wrong() > 1 || std::ranges::any_of(entries_, [](const numbered_entry &entry) {
             return entry.is_wrong() && entry.service == nowhere;
           });
  }

  // The first of the wanted numbers, when they are one after another and those of all entries.
  [[nodiscard]] std::optional<int> wanted_from() const {
    if (!shows_the_same_ || entries_.empty()) {
      return std::nullopt;
    }
    int number = entries_.front().wanted->major;
    const int from = number;
    const auto follows = [&number](const numbered_entry &entry) {
      return *entry.wanted == channel_number{number++, 0};
    };
    return std::ranges::all_of(entries_, follows) ? std::optional(from) : std::nullopt;
  }

  void number_from(int from) {
    for (std::size_t index = 0; index < entries_.size(); ++index) {
      set({index}, entries_[index].now, {from++, 0});
    }
  }

  // Entries whose service and number another view showed show what it shows now.
  void follow(const numbered_view &before, const numbered_view &after) {
    std::map<std::pair<std::size_t, std::pair<int, int>>, channel_number> renumbered;
    for (std::size_t index = 0; index < before.entries_.size(); ++index) {
      const numbered_entry &entry = before.entries_[index];
      renumbered.try_emplace({entry.service, key_of(entry.now)}, after.entries_[index].now);
    }
    for (std::size_t index = 0; index < entries_.size(); ++index) {
      const numbered_entry &entry = entries_[index];
      const auto found = renumbered.find({entry.service, key_of(entry.now)});
      if (entry.service != nowhere && found != renumbered.end()) {
        set({index}, entry.now, found->second);
      }
    }
  }

  // The change is of those of a service's entries that have the former number.
  [[nodiscard]] number_change change_for(std::size_t service, const channel_number &former,
                                         const channel_number &to) const {
    number_change change;
    if (const auto found = by_service_.find(service); found != by_service_.end()) {
      std::ranges::copy_if(found->second, std::back_inserter(change.own),
                           [&](std::size_t index) { return entries_[index].now == former; });
    }
    if (change.own.empty() || former == to) {
      return {};
    }
    if (const auto holders = by_number_.find(key_of(to)); holders != by_number_.end()) {
      change.displaced = holders->second;
    }
    change.gain = gain_of(change.own, to) + gain_of(change.displaced, former);
    change.is_meant = std::ranges::all_of(
        change.own, [&](std::size_t index) { return !entries_[index].wanted || *entries_[index].wanted == to; });
    return change;
  }

  void make(const number_change &change, const channel_number &former, const channel_number &to) {
    set(change.own, former, to);
    set(change.displaced, to, former);
  }

 private:
  static std::pair<int, int> key_of(const channel_number &number) { return {number.major, number.minor}; }

  void add(const line_up_entry &entry, std::vector<channel_number> &wanted) {
    const std::size_t index = entries_.size();
    entries_.push_back({entry.service, entry.number, {}});
    by_number_[key_of(entry.number)].push_back(index);
    if (entry.service != nowhere) {
      by_service_[entry.service].push_back(index);
    }
    if (!wanted.empty()) {
      entries_.back().wanted = wanted.back();
      wanted.pop_back();
    }
  }

  [[nodiscard]] int gain_of(const std::vector<std::size_t> &indexes, const channel_number &to) const {
    int gain = 0;
    for (const std::size_t index : indexes) {
      const numbered_entry &entry = entries_[index];
      gain += (entry.is_wrong() ? 1 : 0) - (entry.wanted && *entry.wanted != to ? 1 : 0);
    }
    return gain;
  }

  void set(const std::vector<std::size_t> &indexes, channel_number from, channel_number to) {
    for (const std::size_t index : indexes) {
      std::erase(by_number_[key_of(from)], index);
      by_number_[key_of(to)].push_back(index);
      entries_[index].now = to;
    }
  }

  std::string name_;
  bool shows_the_same_;
  std::vector<numbered_entry> entries_;
  std::map<std::pair<int, int>, std::vector<std::size_t>> by_number_;
  std::unordered_map<std::size_t, std::vector<std::size_t>> by_service_;
};

bool can_be_given(const channel_number &number) {
  return number.major >= 1 && number.major <= largest_channel_number && number.minor >= 0;
}

class number_search {
 public:
  explicit number_search(const compared_lists &lists) : lists_(lists) {
    for (const wanted_view &view : views_of(lists)) {
      views_.emplace_back(lists, view);
    }
  }

  // In all views at once first: other views follow ALL, as a rule.
  std::vector<std::string> lines() {
    number_whole(0);
    for (const bool is_meant : {true, false}) {
      while (
          takes_lines(views_.front(), [&](const numbered_entry &wrong) { return takes_everywhere(wrong, is_meant); })) {
      }
    }
    for (std::size_t view = 0; view < views_.size(); ++view) {
      number_whole(view);
      while (takes_lines(views_[view], [&](const numbered_entry &wrong) { return takes_in(views_[view], wrong); })) {
      }
    }
    return std::move(lines_);
  }

 private:
  template <class Takes>
  static bool takes_lines(const numbered_view &view, const Takes &takes) {
    bool takes_any = false;
    for (std::size_t index = 0; index < view.entries().size(); ++index) {
      const numbered_entry entry = view.entries()[index];
      if (entry.is_wrong() && entry.service != nowhere && can_be_given(*entry.wanted) &&
          view.first_of(entry.service)->now == entry.now) {
        takes_any = takes(entry) || takes_any;
      }
    }
    return takes_any;
  }

  static std::size_t count_wrong(const std::vector<numbered_view> &views) {
    std::size_t count = 0;
    for (const numbered_view &view : views) {
      count += view.count_wrong();
    }
    return count;
  }

  // ALL takes the other views with it where that is nearer to what is wanted.
  void number_whole(std::size_t view) {
    const std::optional<int> from = views_[view].wanted_from();
    if (!from || !views_[view].is_wrong_as_a_whole()) {
      return;
    }
    std::vector<numbered_view> alone = views_;
    alone[view].number_from(*from);
    std::vector<numbered_view> followed = alone;
    for (std::size_t other = 1; view == 0 && other < views_.size(); ++other) {
      followed[other].follow(views_.front(), alone.front());
    }
    std::vector<std::string> words = {"renumber", "--from", std::to_string(*from)};
    const bool is_followed = view == 0 && count_wrong(followed) <= count_wrong(alone);
    if (!is_followed) {
      words.insert(words.end(), {"--view", views_[view].name()});
    }
    lines_.push_back(line_of_words(words));
    views_ = std::move(is_followed ? followed : alone);
  }

  // is_meant: a change is taken only when it sets all entries right that it is for.
  bool takes_everywhere(const numbered_entry &wrong, bool is_meant) {
    std::vector<number_change> changes;
    int gain = 0;
    for (const numbered_view &view : views_) {
      changes.push_back(view.change_for(wrong.service, wrong.now, *wrong.wanted));
      gain += changes.back().gain;
    }
    if (gain <= 0 || (is_meant && !std::ranges::all_of(changes, &number_change::is_meant))) {
      return false;
    }
    bool displaces = false;
    for (std::size_t view = 0; view < views_.size(); ++view) {
      views_[view].make(changes[view], wrong.now, *wrong.wanted);
      displaces = displaces || !changes[view].displaced.empty();
    }
    add_line(wrong, displaces, {});
    return true;
  }

  bool takes_in(numbered_view &view, const numbered_entry &wrong) {
    const number_change change = view.change_for(wrong.service, wrong.now, *wrong.wanted);
    if (change.gain <= 0) {
      return false;
    }
    view.make(change, wrong.now, *wrong.wanted);
    add_line(wrong, !change.displaced.empty(), {"--view", view.name()});
    return true;
  }

  void add_line(const numbered_entry &wrong, bool displaces, const std::vector<std::string> &more) {
    std::vector<std::string> words = {"renumber", lists_.name_of(wrong.service), text_of(*wrong.wanted)};
    if (displaces) {
      words.emplace_back("--swap");
    }
    words.insert(words.end(), more.begin(), more.end());
    lines_.push_back(line_of_words(words));
  }

  const compared_lists &lists_;
  std::vector<numbered_view> views_;
  std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> lines_of_numbers(const compared_lists &lists) { return number_search(lists).lines(); }

}  // namespace chlist
