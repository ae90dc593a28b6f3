// First every service is given the section that it is to stand in, then the lines are brought in front of the sections.
#include "chlist/exchange/layout/separators.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "chlist/exchange/layout/text_units.h"

namespace chlist {
namespace {

// A section is called as the source calls its group, or a new group; empty: none has begun.
class section_lines {
 public:
  section_lines(woven_row &row, const std::vector<source_piece> &pieces, const std::vector<group_edit> &groups,
                const separator_layout &layout)
      : row_(row), layout_(layout) {
    for (const group_edit &each : groups) {
      take_edit(each);
    }
    take_sections_of_text(pieces);
  }

  void follow() {
    if (!is_edited_) {
      note_moved_services();
    }
    if (is_edited_) {
      choose_sections();
      place_lines();
    }
  }

 private:
  struct services_of_group {
    std::string name;
    bool is_renamed = false;
    bool is_gone = false;
    std::set<std::size_t> before;
    std::set<std::size_t> now;
  };

  void take_edit(const group_edit &edit) {
    const std::string section = edit.origin.empty() ? edit.name : edit.origin;
    order_.push_back(section);
    services_of_group &group = groups_[section];
    group = {edit.name,
             edit.is_renamed,
             edit.is_gone,
             {edit.before.begin(), edit.before.end()},
             {edit.now.begin(), edit.now.end()}};
    is_edited_ = is_edited_ || edit.origin.empty() || edit.is_renamed || edit.is_gone || group.before != group.now;
  }

  void take_sections_of_text(const std::vector<source_piece> &pieces) {
    std::string section;
    for (const source_piece &each : pieces) {
      section = section_of_line(each.text).value_or(section);
      sections_of_text_[&each] = section;
    }
  }

  // That a line begins; nothing of other lines.
  [[nodiscard]] std::optional<std::string> section_of_line(std::string_view text) const {
    const auto read = layout_.read(without_line_end(text));
    return read && !read->group.empty() ? std::optional(read->group) : std::nullopt;
  }

  [[nodiscard]] bool is_gone(const std::string &section) const {
    const auto found = groups_.find(section);
    return found != groups_.end() && found->second.is_gone;
  }

  template <class Function>
  void for_each_service(Function function) {
    std::string section;
    for (const woven_piece &each : row_) {
      if (each.is_service()) {
        function(each, section);
      } else {
        section = section_of_line(each.current()).value_or(section);
      }
    }
  }

  // Whether one stands in another section than it did.
  void note_moved_services() {
    for_each_service([this](const woven_piece &each, const std::string &section) {
      is_edited_ = is_edited_ || (each.kept != nullptr && sections_of_text_[each.kept] != section);
    });
  }

  // The text alone tells of groups that the list has no room for, or not for this service.
  [[nodiscard]] std::vector<std::string> sections_of_service(const woven_piece &piece) {
    std::vector<std::string> sections;
    for (const std::string &each : order_) {
      if (groups_[each].now.contains(piece.service)) {
        sections.push_back(each);
      }
    }
    const std::string own = piece.kept != nullptr ? sections_of_text_[piece.kept] : std::string();
    const auto known = groups_.find(own);
    const bool is_own =
        known == groups_.end() || (!known->second.is_gone && !known->second.before.contains(piece.service));
    if (!own.empty() && is_own && std::ranges::find(sections, own) == sections.end()) {
      sections.push_back(own);
    }
    return sections;
  }

  [[nodiscard]] bool is_left_alone(const woven_piece &piece, const std::string &section) {
    return piece.kept != nullptr && sections_of_text_[piece.kept] == section && !is_gone(section) &&
           std::ranges::all_of(groups_, [&](const auto &each) {
             return each.second.before.contains(piece.service) == each.second.now.contains(piece.service);
           });
  }

  [[nodiscard]] std::string chosen_section(const woven_piece &piece, const std::string &section,
                                           const std::string &before) {
    const std::vector<std::string> own = sections_of_service(piece);
    const auto is_own = [&](const std::string &each) { return std::ranges::find(own, each) != own.end(); };
    if (is_own(section) || is_left_alone(piece, section)) {
      return section;
    }
    if (!own.empty()) {
      return is_own(before) ? before : own.front();
    }
    return before.empty() || is_gone(section) ? before : section;
  }

  // What stands in no group stands in front of all of them.
  void choose_sections() {
    std::string before;
    std::vector<std::size_t> order;
    std::size_t in_none = 0;
    for_each_service([&](const woven_piece &each, const std::string &section) {
      before = chosen_section(each, section, before);
      chosen_[each.service] = before;
      order.push_back(each.service);
      in_none = before.empty() || (section.empty() && sections_of_service(each).empty()) ? order.size() : in_none;
    });
    for (std::size_t at = 0; at < in_none; ++at) {
      chosen_[order[at]].clear();
    }
  }

  // The line of a group that comes next, or the service in front of it.
  [[nodiscard]] woven_row::iterator next_service_or_line(woven_row::iterator at) const {
    return std::find_if(at, row_.end(), [this](const woven_piece &each) {
      const auto section = each.is_service() ? std::nullopt : section_of_line(each.current());
      return each.is_service() || (section && !is_gone(*section));
    });
  }

  void place_lines() {
    std::string section;
    for (auto at = row_.begin(); at != row_.end();) {
      const auto here = at++;
      if (here->is_service()) {
        begin_section(here, section);
        section = chosen_[here->service];
      } else if (const auto begun = section_of_line(here->current())) {
        section = place_line(here, *begun) ? *begun : section;
      }
    }
  }

  // Returns whether the line stays where it is.
  bool place_line(woven_row::iterator line, const std::string &section) {
    if (is_gone(section)) {
      line->change_to(layout_.written({layout_.read(without_line_end(line->current()))->number, {}}));
      return false;
    }
    const auto next = next_service_or_line(std::next(line));
    if (next != row_.end() && next->is_service() && chosen_[next->service] != section) {
      spare_[section].splice(spare_[section].end(), row_, line);
      return false;
    }
    rename(*line, section);
    return true;
  }

  void rename(woven_piece &line, const std::string &section) {
    if (groups_[section].is_renamed) {
      line.change_to(layout_.written({layout_.read(without_line_end(line.current()))->number, name_of(section)}));
    }
  }

  [[nodiscard]] std::string name_of(const std::string &section) {
    const std::string &name = groups_[section].name;
    return name.empty() ? section : name;
  }

  void begin_section(woven_row::iterator service, const std::string &section) {
    const std::string &wanted = chosen_[service->service];
    if (wanted == section) {
      return;
    }
    // Its number stays behind: it was that of the place.
    if (woven_row &spare = spare_[wanted]; !spare.empty()) {
      spare.front().change_to(layout_.written({{}, name_of(wanted)}));
      row_.splice(service, spare, spare.begin());
      return;
    } else if (const auto ahead = line_ahead(service, wanted); ahead != row_.end()) {
      row_.splice(service, row_, ahead);
      rename(*ahead, wanted);
    } else {
      row_.insert(service, {.text = layout_.written({{}, name_of(wanted)})});
    }
  }

  // The next line of all, when it begins the section: but not when its own services are not to stand in it.
  [[nodiscard]] woven_row::iterator line_ahead(woven_row::iterator service, const std::string &section) const {
    const auto ahead = std::find_if(service, row_.end(), [&](const woven_piece &each) {
      return !each.is_service() && section_of_line(each.current());
    });
    return ahead != row_.end() && section_of_line(ahead->current()) == section ? ahead : row_.end();
  }

  woven_row &row_;
  const separator_layout &layout_;
  std::vector<std::string> order_;
  std::map<std::string, services_of_group> groups_;
  std::unordered_map<const source_piece *, std::string> sections_of_text_;
  std::unordered_map<std::size_t, std::string> chosen_;  // of the services
  std::map<std::string, woven_row> spare_;               // lines that wait for their place
  bool is_edited_ = false;
};

class number_lines {
 public:
  number_lines(woven_row &row, const std::vector<source_piece> &pieces, const line_up &now,
               const separator_layout &layout)
      : row_(row), now_(now), layout_(layout) {
    int next = 1;
    for (const source_piece &each : pieces) {
      const int number = each.service ? 0 : number_in(each.text).value_or(0);
      next += each.service && !each.is_again ? 1 : 0;
      if (number > next) {
        raising_.insert(&each);
        next = number;
      }
    }
  }

  void follow() {
    int next = 1;
    for (auto at = row_.begin(); at != row_.end(); ++at) {
      next = at->is_service() ? number_service(at, next) : number_line(at, next);
    }
  }

 private:
  [[nodiscard]] std::optional<int> number_in(std::string_view text) const {
    const auto read = layout_.read(without_line_end(text));
    return read ? read->number : std::nullopt;
  }

  [[nodiscard]] std::optional<int> number_of(const woven_piece &piece) const {
    const auto &own = now_.services[piece.service].number;
    return own ? std::optional(own->major) : std::nullopt;
  }

  // Returns the number that follows, here and below. A line is changed where it raises the next service too far, or
  // where that was its own and has another number now.
  int number_service(woven_row::iterator at, int next) {
    const int wanted = number_of(*at).value_or(next);
    if (wanted > next) {
      row_.insert(at, {.text = layout_.written({wanted, {}})});
    }
    return std::max(next, wanted + 1);
  }

  int number_line(woven_row::iterator at, int next) const {
    const auto number = number_in(at->current());
    if (!number) {
      return next;
    }
    const auto follower = std::find_if(at, row_.end(), [](const woven_piece &each) { return each.is_service(); });
    const int raised = std::max(next, *number);
    const int wanted = follower != row_.end() ? number_of(*follower).value_or(raised) : raised;
    if (wanted >= *number && (wanted <= raised || !is_own_number(at, follower))) {
      return raised;
    }
    const separator line = *layout_.read(without_line_end(at->current()));
    at->change_to(layout_.written({wanted > next ? std::optional(wanted) : std::nullopt, line.group}));
    return std::max(next, wanted);
  }

  // Whether the service that follows has its number from this line.
  [[nodiscard]] bool is_own_number(woven_row::iterator line, woven_row::iterator follower) const {
    return raising_.contains(line->kept) && std::none_of(std::next(line), follower, [this](const woven_piece &each) {
             return number_in(each.current()).has_value();
           });
  }

  woven_row &row_;
  const line_up &now_;
  const separator_layout &layout_;
  std::set<const source_piece *> raising_;  // the lines that the text has its numbers from
};

}  // namespace

void follow_groups(woven_row &row, const std::vector<source_piece> &pieces, const std::vector<group_edit> &groups,
                   const separator_layout &layout) {
  section_lines(row, pieces, groups, layout).follow();
}

void follow_numbers(woven_row &row, const std::vector<source_piece> &pieces, const line_up &now,
                    const separator_layout &layout) {
  number_lines(row, pieces, now, layout).follow();
}

}  // namespace chlist
