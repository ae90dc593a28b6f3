// The first line that a service fits has it. All numbers are found, and held against each other, before one is set.
#include "chlist/edit/number_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <span>
#include <stdexcept>
#include <utility>

#include "chlist/edit/edit_line.h"
#include "chlist/edit/renumbering.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr std::string_view favourites_word = "fav:";

// Words as they stand in the line, quotes included: a condition is read as it was written.
using plan_words = std::vector<std::string_view>;

// Where the word at the front of a text ends: at a blank that is not in quotes.
std::size_t end_of_word(std::string_view text) {
  char quote = '\0';
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (quote == '\0' && blanks.find(text[i]) != std::string_view::npos) {
      return i;
    }
    if (text[i] == quote) {
      quote = '\0';
    } else if (quote == '\0' && (text[i] == '"' || text[i] == '\'')) {
      quote = text[i];
    }
  }
  return text.size();
}

// Up to a comment, which a word that begins with # begins.
plan_words words_in(std::string_view line) {
  plan_words words;
  for (line = without_leading_blanks(line); !line.empty() && line.front() != '#'; line = without_leading_blanks(line)) {
    words.push_back(line.substr(0, end_of_word(line)));
    line.remove_prefix(words.back().size());
  }
  return words;
}

int major_number_from(std::string_view text) {
  const channel_number number = number_from(text);
  if (number.minor != 0) {
    throw std::runtime_error(shown(text) + ": numbers of a plan have no minor number");
  }
  return number.major;
}

// Takes words from the front of a line.
class plan_reader {
 public:
  explicit plan_reader(plan_words words) : words_(std::move(words)) {}

  [[nodiscard]] bool is_at_end() const { return next_ == words_.size(); }
  [[nodiscard]] bool is_at(std::string_view word) const { return !is_at_end() && words_[next_] == word; }
  bool take(std::string_view word) {
    const bool is_there = is_at(word);
    next_ += is_there ? 1 : 0;
    return is_there;
  }
  std::string_view next(std::string_view what) {
    if (is_at_end()) {
      throw std::runtime_error(fmt::format("{} is missing", what));
    }
    return words_[next_++];
  }
  // What stands in front of a word, or of the end.
  std::string_view up_to(std::string_view word) {
    const std::string_view first = next("which services: all, fav:GROUP or a condition");
    std::string_view last = first;
    while (!is_at_end() && !is_at(word)) {
      last = words_[next_++];
    }
    return {first.data(), static_cast<std::size_t>(last.data() + last.size() - first.data())};
  }
  void must_be_at_end() const {
    if (!is_at_end()) {
      throw std::runtime_error(fmt::format("{} is not expected here", shown(words_[next_])));
    }
  }

 private:
  plan_words words_;
  std::size_t next_ = 0;
};

plan_selection selection_from(plan_reader &words) {
  const std::string_view text = words.up_to("from");
  if (text == "all") {
    return {};
  }
  const std::vector<std::string> unquoted = words_of_edit(text);
  if (unquoted.size() == 1 && unquoted.front().starts_with(favourites_word)) {
    return {.condition = {}, .favourites = unquoted.front().substr(favourites_word.size())};
  }
  return {.condition = where(text, "the condition"), .favourites = {}};
}

plan_line line_from(plan_reader &words) {
  plan_line line{.services = selection_from(words)};
  if (!words.take("from")) {
    throw std::runtime_error("\"from NUMBER\" is missing");
  }
  line.from = major_number_from(words.next("the number behind from"));
  if (words.take("gaps")) {
    line.keeps_gaps = true;
  } else if (words.take("step")) {
    line.step = major_number_from(words.next("the number behind step"));
  }
  words.must_be_at_end();
  return line;
}

plan_lock lock_from(plan_reader &words) {
  plan_lock lock;
  if (words.take("number")) {
    lock.first = major_number_from(words.next("the number behind number"));
    lock.last = words.take("to") ? major_number_from(words.next("the number behind to")) : lock.first;
  } else {
    lock.services = selection_from(words);
  }
  words.must_be_at_end();
  return lock;
}

// The entries of ALL, and what becomes of their numbers.
class planned_numbers {
 public:
  explicit planned_numbers(edited_list &edited)
      : edited_(edited), list_(line_up_in_memory()), rows_(rows_of(list_, VIEW_ALL)) {
    for (const service_row &row : rows_) {
      numbers_.push_back(row.entry->number);
    }
    lines_.assign(rows_.size(), 0);
    is_locked_.assign(rows_.size(), false);
  }

  void keep(const plan_lock &lock) {
    for (const std::size_t place : lock.services ? chosen(*lock.services) : std::vector<std::size_t>()) {
      locked_.insert(numbers_[place].major);
      is_locked_[place] = true;
    }
    for (int number = lock.first; !lock.services && number <= lock.last; ++number) {
      locked_.insert(number);
    }
    for (std::size_t place = 0; !lock.services && place < rows_.size(); ++place) {
      is_locked_[place] = is_locked_[place] || locked_.contains(numbers_[place].major);
    }
  }

  void apply(const plan_line &line) {
    std::vector<std::size_t> places = chosen(line.services);
    std::erase_if(places, [&](std::size_t place) { return is_locked_[place] || lines_[place] != 0; });
    if (places.empty()) {
      edited_.notes.push_back(fmt::format("line {} of the plan: no service is left for it", line.line));
      return;
    }
    if (line.keeps_gaps) {
      move(line, places);
    } else {
      count(line, places);
    }
    edited_.count_as_chosen(places.size());
    for (const std::size_t place : places) {
      lines_[place] = line.line;
    }
  }

  void must_not_collide() const {
    std::map<std::pair<int, int>, std::size_t> holders;
    std::vector<std::string> collisions;
    for (std::size_t place = 0; place < rows_.size(); ++place) {
      const auto [holder, is_first] = holders.try_emplace({numbers_[place].major, numbers_[place].minor}, place);
      if (!is_first && (lines_[place] != 0 || lines_[holder->second] != 0)) {
        collisions.push_back(fmt::format("\n  {}  {} and {}", text_of(numbers_[place]), text_of_holder(holder->second),
                                         text_of_holder(place)));
      }
    }
    if (!collisions.empty()) {
      const std::size_t shown_count = std::min(collisions.size(), most_shown);
      throw std::runtime_error(fmt::format(
          "{} would belong to two services:{}{}", counted(collisions.size(), "number"),
          joined(std::span(collisions).first(shown_count), ""),
          shown_count < collisions.size() ? fmt::format("\n  and {} more", collisions.size() - shown_count) : ""));
    }
  }

  [[nodiscard]] const std::vector<channel_number> &numbers() const { return numbers_; }

 private:
  static constexpr std::size_t most_shown = 20;

  [[nodiscard]] std::vector<std::size_t> chosen(const plan_selection &selection) const {
    if (selection.favourites) {
      return in_group(favourite_group_named(list_, *selection.favourites));
    }
    std::vector<std::size_t> places;
    for (const service_row &row : rows_) {
      if (!selection.condition || selection.condition->takes(row)) {
        places.push_back(row.index);
      }
    }
    return places;
  }

  // The entries of ALL that show the services of a group, service by service.
  [[nodiscard]] std::vector<std::size_t> in_group(std::size_t group) const {
    std::vector<std::size_t> places;
    for (const line_up_entry &entry : list_.favourites[group].entries) {
      for (const service_row &row : rows_) {
        const bool is_shown = entry.service != nowhere && row.entry->service == entry.service;
        if (is_shown && std::ranges::find(places, row.index) == places.end()) {
          places.push_back(row.index);
        }
      }
    }
    return places;
  }

  // One after another, past numbers that are locked.
  void count(const plan_line &line, const std::vector<std::size_t> &places) {
    int number = line.from;
    for (const std::size_t place : places) {
      while (locked_.contains(number)) {
        number += line.step;
      }
      set(line, place, {number, 0});
      number += line.step;
    }
  }

  // All by the same distance, so that the lowest one gets the number that the line begins with.
  void move(const plan_line &line, const std::vector<std::size_t> &places) {
    int lowest = largest_channel_number;
    for (const std::size_t place : places) {
      lowest = std::min(lowest, numbers_[place].major);
    }
    for (const std::size_t place : places) {
      set(line, place, {numbers_[place].major - lowest + line.from, numbers_[place].minor});
    }
  }

  void set(const plan_line &line, std::size_t place, const channel_number &number) {
    if (number.major > largest_channel_number) {
      throw std::runtime_error(
          fmt::format("line {} of the plan: its numbers would pass {}", line.line, largest_channel_number));
    }
    numbers_[place] = number;
  }

  [[nodiscard]] std::string text_of_holder(std::size_t place) const {
    const service_row &row = rows_[place];
    const std::string name = row.service != nullptr ? shown(row.service->name) : "an entry without a service";
    return lines_[place] != 0 ? fmt::format("{} by line {}", name, lines_[place]) : name + ", which has it";
  }

  edited_list &edited_;
  line_up list_;
  std::vector<service_row> rows_;
  std::vector<channel_number> numbers_;  // of the entries
  std::vector<std::size_t> lines_;       // that numbered them, 0: none
  std::vector<bool> is_locked_;
  std::set<int> locked_;
};

}  // namespace

number_plan read_number_plan(std::string_view text) {
  number_plan plan;
  text_lines lines(text);
  while (const std::optional<std::string_view> line = lines.next()) {
    try {
      plan_reader words(words_in(*line));
      if (words.is_at_end()) {
        continue;
      }
      if (words.take("lock")) {
        plan.locks.push_back(lock_from(words));
      } else {
        plan.lines.push_back(line_from(words));
        plan.lines.back().line = lines.number();
      }
    } catch (const std::runtime_error &error) {
      throw std::runtime_error(fmt::format("line {}: {}", lines.number(), error.what()));
    }
  }
  return plan;
}

void renumber_by_plan(const number_plan &plan, edited_list &list) {
  planned_numbers numbers(list);
  for (const plan_lock &lock : plan.locks) {
    numbers.keep(lock);
  }
  for (const plan_line &line : plan.lines) {
    numbers.apply(line);
  }
  numbers.must_not_collide();
  renumber_all_with_followers(numbers.numbers(), list.notes);
}

std::vector<term> forms_of_plan_lines() {
  return {{"SERVICES from N", "number these services N, N+1 and so on"},
          {"SERVICES from N step S", "N, N+S and so on"},
          {"SERVICES from N gaps", "the lowest number becomes N, and the gaps between the others stay"},
          {"lock number N to M", "whatever has these numbers keeps them, and nothing else gets them; N alone will do"},
          {"lock SERVICES", "the same with the numbers that these services have"},
          {"# text", "a comment, also behind a line"}};
}

}  // namespace chlist
