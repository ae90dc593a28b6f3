// Every file is a row of lines. A line of a service follows it wherever the lamedb calls it otherwise; favourite
// groups, the bouquet of all channels and the indexes then bring their rows into the order of the list.
#include "chlist/exchange/enigma2/bouquets_layout.h"

#include <fmt/format.h>

#include <algorithm>
#include <list>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "chlist/exchange/enigma2/bouquets.h"
#include "chlist/exchange/enigma2/lamedb_layout.h"
#include "chlist/exchange/layout/row_order.h"
#include "chlist/exchange/layout/text_units.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/line_up/selection.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

struct bouquet_line_of_row {
  std::string text;           // with the end of the line
  std::size_t key = nowhere;  // the service, or in an index the group; what is there again has none
  bool is_of_one_gone = false;
};

using bouquet_row = std::list<bouquet_line_of_row>;

std::string_view end_of_lines(const bouquet_row &row) {
  return !row.empty() && line_end_of(row.front().text) == "\r\n" ? "\r\n" : "\n";
}

// Only the last line may have no end.
std::string text_of_row(const bouquet_row &row) {
  std::string text;
  for (const bouquet_line_of_row &each : row) {
    const bool has_end = &each == &row.back() || !line_end_of(each.text).empty();
    text += each.text + std::string(has_end ? std::string_view() : end_of_lines(row));
  }
  return text;
}

std::string_view line_in(std::string_view text) { return without_trailing_blanks(without_line_end(text)); }

bool is_hidden_marker(const bouquet_line_of_row &line) { return line_in(line.text) == hidden_numbered_marker; }

// All of a bouquet takes a number but its name, descriptions and markers without one; the reader counts so, too.
bool takes_number(const bouquet_line_of_row &line) {
  const auto read = line.text.starts_with("#SERVICE") ? reference_in_line(line_in(line.text)) : std::nullopt;
  return read && (read->is_marker() ? (read->flags & bouquet_reference::numbered_marker) != 0
                                    : (read->flags & bouquet_reference::directory) == 0);
}

void put_markers(bouquet_row &row, bouquet_row::iterator in_front_of, int count) {
  const std::string marker = std::string(hidden_numbered_marker) + std::string(end_of_lines(row));
  for (; count > 0; --count) {
    row.insert(in_front_of, {marker});
  }
}

// Takes out hidden markers of a range as long as there are too many. Returns how many.
int take_markers(bouquet_row &row, bouquet_row::iterator first, bouquet_row::iterator last, int count) {
  int taken = 0;
  while (first != last && taken < count) {
    const bool is_taken = is_hidden_marker(*first);
    first = is_taken ? row.erase(first) : std::next(first);
    taken += is_taken ? 1 : 0;
  }
  return taken;
}

// The list's services as lines refer to them.
class reference_lines {
 public:
  explicit reference_lines(const kept_folder &kept) : kept_(kept) {
    for (std::size_t at = 0; at < kept.services.size(); ++at) {
      places_.emplace(identity_text(kept.services[at].service->id()), at);
    }
  }

  [[nodiscard]] const line_up_service &service_at(std::size_t place) const { return *kept_.services[place].service; }

  // The service that a piece is of; nowhere when it is gone, or is not written.
  [[nodiscard]] std::size_t place_of(const source_piece &piece) const {
    const auto found = piece.service ? places_.find(identity_text(*piece.service)) : places_.end();
    return found != places_.end() && !kept_.services[found->second].text.empty() ? found->second : nowhere;
  }

  [[nodiscard]] std::string line_of(std::size_t place) const {
    const auto read = service_in_piece(kept_.services[place].text);
    return bouquet_line(read ? read->reference : service_reference(), service_at(place).fields.service_type);
  }

  // A reference that is another one now is written anew.
  [[nodiscard]] std::string followed(const source_piece &piece, std::size_t place, std::string_view keyword) const {
    const auto wanted = service_in_piece(kept_.services[place].text);
    const auto is = reference_in_line(line_in(piece.text));
    const bool is_same = !wanted || (is && is->service == wanted->reference);
    return is_same ? piece.text : std::string(keyword) + line_of(place) + std::string(line_end_of(piece.text));
  }

  // A description belongs to the service in front of it.
  [[nodiscard]] bouquet_row row_of(const source_file &file) const {
    bouquet_row row;
    std::unordered_set<std::size_t> are_there;
    bool is_behind_service = false;
    for (const source_piece &each : file.pieces) {
      if (is_behind_service && each.text.starts_with("#DESCRIPTION")) {
        row.back().text += each.text;
        continue;
      }
      const std::size_t place = place_of(each);
      const bool is_of_one_gone = each.service && place == nowhere;
      row.push_back({place != nowhere ? followed(each, place, "#SERVICE ") : each.text,
                     place != nowhere && are_there.insert(place).second ? place : nowhere, is_of_one_gone});
      is_behind_service = each.service.has_value();
    }
    return row;
  }

 private:
  const kept_folder &kept_;
  std::unordered_map<std::string, std::size_t> places_;
};

class bouquet_weaver {
 public:
  bouquet_weaver(const kept_folder &kept, std::vector<std::string> &notes) : kept_(kept), notes_(notes), lines_(kept) {}

  std::vector<made_file> woven() {
    call_new_groups();
    for (std::size_t at = 1; at < kept_.files.size(); ++at) {
      weave_file(kept_.files[at]);
    }
    for (const auto &[edit, file] : new_files_) {
      bouquet_row row;
      row.push_back({fmt::format("#NAME {}\n", in_one_line(edit->name))});
      follow_group(row, *edit);
      made_.push_back({file, text_of_row(row)});
    }
    add_missing_files();
    return std::move(made_);
  }

 private:
  [[nodiscard]] bool is_kept(std::string_view file) const {
    return std::ranges::find(kept_.files, file, &source_file::name) != kept_.files.end();
  }

  [[nodiscard]] bool makes_file_of_all() const { return kept_.by == numbered_by::file_of_all && !is_kept(file_of_all); }

  [[nodiscard]] bool is_radio(const group_edit &group) const {
    return !group.now.empty() && std::ranges::all_of(group.now, [&](std::size_t place) {
      return lines_.service_at(place).fields.service_type == SERVICE_TYPE_RADIO;
    });
  }

  void call_new_groups() {
    int number = 0;
    for (const group_edit &each : kept_.groups) {
      if (each.origin.empty()) {
        const bouquet_index &index = index_for(is_radio(each));
        std::string name = file_of_group(++number, index);
        while (is_kept(name)) {
          name = file_of_group(++number, index);
        }
        new_files_.emplace_back(&each, std::move(name));
      }
    }
  }

  void weave_file(const source_file &file) {
    const auto index = std::ranges::find(bouquet_indexes, file.name, &bouquet_index::file);
    const auto group = std::ranges::find(kept_.groups, file.name, &group_edit::origin);
    if (file.name == "blacklist") {
      made_.push_back({file.name, blacklist(file)});
    } else if (index != bouquet_indexes.end()) {
      made_.push_back({file.name, text_of_index(file, *index)});
    } else if (group != kept_.groups.end() && group->is_gone) {
      notes_.push_back(fmt::format("{} is left out: its favourite group is gone", file.name));
    } else {
      made_.push_back({file.name, text_of_bouquet(file, group != kept_.groups.end() ? &*group : nullptr)});
    }
  }

  [[nodiscard]] std::string text_of_bouquet(const source_file &file, const group_edit *group) const {
    bouquet_row row = lines_.row_of(file);
    if (group != nullptr) {
      take_removed(row, *group);
      follow_group(row, *group);
    }
    if (file.name == file_of_all) {
      follow_all(row);
    } else {
      take_lines(row, [](const bouquet_line_of_row &each) { return each.is_of_one_gone; });
    }
    return text_of_row(row);
  }

  // What goes leaves its place to a marker as long as places are numbers.
  template <class Predicate>
  void take_lines(bouquet_row &row, const Predicate &is_taken) const {
    for (auto at = row.begin(); at != row.end();) {
      if (!is_taken(*at)) {
        ++at;
      } else if (kept_.by == numbered_by::places_kept && !is_kept(file_of_all)) {
        *at = {std::string(hidden_numbered_marker) + std::string(line_end_of(at->text))};
      } else {
        at = row.erase(at);
      }
    }
  }

  void take_removed(bouquet_row &row, const group_edit &group) const {
    std::unordered_set<std::size_t> removed(group.before.begin(), group.before.end());
    for (const std::size_t each : group.now) {
      removed.erase(each);
    }
    take_lines(row, [&](const bouquet_line_of_row &each) { return removed.contains(each.key); });
  }

  void follow_group(bouquet_row &row, const group_edit &group) const {
    if (group.is_renamed) {
      call(row, in_one_line(group.name));
    }
    bring_into_order(row, &bouquet_line_of_row::key, group.now, [&](std::size_t place) {
      return bouquet_line_of_row{fmt::format("#SERVICE {}{}", lines_.line_of(place), end_of_lines(row)), place};
    });
  }

  static void call(bouquet_row &row, const std::string &name) {
    const auto line = std::ranges::find_if(row, [](const auto &each) { return each.text.starts_with("#NAME"); });
    const std::string_view end = line != row.end() ? line_end_of(line->text) : end_of_lines(row);
    bouquet_line_of_row named{fmt::format("#NAME {}{}", name, end)};
    if (line != row.end()) {
      *line = std::move(named);
    } else {
      row.push_front(std::move(named));
    }
  }

  void follow_all(bouquet_row &row) const {
    std::vector<std::size_t> order;
    std::unordered_set<std::size_t> are_listed;
    for (std::size_t place = 0; place < kept_.services.size(); ++place) {
      if (lines_.service_at(place).is_listed && !kept_.services[place].text.empty()) {
        order.push_back(place);
        are_listed.insert(place);
      }
    }
    std::erase_if(row, [&](const bouquet_line_of_row &each) {
      return each.is_of_one_gone || (each.key != nowhere && !are_listed.contains(each.key));
    });
    bring_into_order(row, &bouquet_line_of_row::key, order, [&](std::size_t place) {
      return bouquet_line_of_row{fmt::format("#SERVICE {}{}", lines_.line_of(place), end_of_lines(row)), place};
    });
    put_numbers(row);
  }

  // Hidden markers in front of a service make up for what is missing to its number.
  void put_numbers(bouquet_row &row) const {
    int next = 1;
    auto behind_last = row.begin();
    for (auto at = row.begin(); at != row.end(); ++at) {
      if (at->key == nowhere) {
        next += takes_number(*at) ? 1 : 0;
        continue;
      }
      const auto &own = lines_.service_at(at->key).number;
      const int wanted = own && own->major <= largest_channel_number ? own->major : next;
      put_markers(row, at, wanted - next);
      const int taken = take_markers(row, behind_last, at, next - wanted);
      next = std::max(wanted, next - taken) + 1;
      behind_last = std::next(at);
    }
  }

  // Groups as an index has them: their files in it, and those that are new in the order of the list.
  std::string text_of_index(const source_file &file, const bouquet_index &index) {
    bouquet_row row;
    std::unordered_set<std::size_t> are_there;
    for (const source_piece &each : file.pieces) {
      const auto named = bouquet_named_in(line_in(each.text));
      const std::size_t group = named ? place_of_group(*named) : nowhere;
      if (group == nowhere || !kept_.groups[group].is_gone) {
        row.push_back({each.text, group != nowhere && are_there.insert(group).second ? group : nowhere});
      }
    }
    return completed_index(std::move(row), are_there, index);
  }

  [[nodiscard]] std::size_t place_of_group(std::string_view file) const {
    const auto found = std::ranges::find(kept_.groups, file, &group_edit::origin);
    return found != kept_.groups.end() ? static_cast<std::size_t>(found - kept_.groups.begin()) : nowhere;
  }

  std::string completed_index(bouquet_row row, const std::unordered_set<std::size_t> &are_there,
                              const bouquet_index &index) {
    std::map<std::size_t, std::string> new_ones;
    for (const auto &[edit, file] : new_files_) {
      if (file.ends_with(index.ending)) {
        new_ones[static_cast<std::size_t>(edit - kept_.groups.data())] = file;
      }
    }
    std::vector<std::size_t> order;
    for (std::size_t at = 0; at < kept_.groups.size(); ++at) {
      if (are_there.contains(at) || new_ones.contains(at)) {
        order.push_back(at);
      }
    }
    bring_into_order(row, &bouquet_line_of_row::key, order, [&](std::size_t group) {
      return bouquet_line_of_row{line_of_index(index, new_ones[group]) + std::string(end_of_lines(row)), group};
    });
    if (makes_file_of_all() && index.file == index_for(false).file) {
      const auto first = std::ranges::find_if(row, [](const auto &each) { return each.text.starts_with("#SERVICE"); });
      row.insert(first, {line_of_index(index, file_of_all) + std::string(end_of_lines(row))});
    }
    return text_of_row(row);
  }

  // Locks that went are left out, those that came stand at the end.
  [[nodiscard]] std::string blacklist(const source_file &file) const {
    bouquet_row row;
    std::unordered_set<std::size_t> are_listed;
    const auto is_locked = [&](std::size_t place) {
      return lines_.service_at(place).has_flag(CHANNEL_FLAG_LOCKED) && !kept_.services[place].text.empty();
    };
    for (const source_piece &each : file.pieces) {
      const std::size_t place = lines_.place_of(each);
      if (!each.service || (place != nowhere && is_locked(place))) {
        row.push_back({place != nowhere ? lines_.followed(each, place, "") : each.text});
        are_listed.insert(place);
      }
    }
    for (std::size_t place = 0; place < kept_.services.size(); ++place) {
      if (is_locked(place) && !are_listed.contains(place)) {
        row.push_back({lines_.line_of(place) + std::string(end_of_lines(row))});
      }
    }
    return text_of_row(row);
  }

  // Files that the folder has not, and needs now.
  void add_missing_files() {
    if (makes_file_of_all()) {
      bouquet_row row;
      row.push_back({"#NAME All channels\n"});
      follow_all(row);
      made_.push_back({std::string(file_of_all), text_of_row(row)});
    }
    for (const bouquet_index &index : bouquet_indexes) {
      const bool is_needed =
          (makes_file_of_all() && index.type == 1) ||
          std::ranges::any_of(new_files_, [&](const auto &each) { return each.second.ends_with(index.ending); });
      if (is_needed && !is_kept(index.file)) {
        bouquet_row row;
        row.push_back({std::string(index.beginning)});
        made_.push_back({std::string(index.file), completed_index(std::move(row), {}, index)});
      }
    }
    if (const std::string text = is_kept("blacklist") ? "" : blacklist({}); !text.empty()) {
      made_.push_back({"blacklist", text});
    }
  }

  const kept_folder &kept_;
  std::vector<std::string> &notes_;
  reference_lines lines_;
  std::vector<std::pair<const group_edit *, std::string>> new_files_;  // of new groups
  std::vector<made_file> made_;
};

}  // namespace

std::vector<source_piece> pieces_of_bouquet(const std::string &text, const source_file &first) {
  std::unordered_map<service_reference, channel::identity, service_reference::hash> services;
  for (const source_piece &each : first.pieces) {
    if (const auto read = each.service && !each.is_again ? service_in_piece(each.text) : std::nullopt) {
      services.emplace(read->reference, *each.service);
    }
  }
  std::vector<source_piece> pieces;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    source_piece &piece = pieces.emplace_back(source_piece{.text = text.substr(at, end - at)});
    const auto reference = reference_in_line(line_in(piece.text));
    const auto found = reference && reference->is_service() ? services.find(reference->service) : services.end();
    piece.service = found != services.end() ? std::optional(found->second) : std::nullopt;
    at = end;
  }
  return pieces;
}

std::vector<made_file> woven_bouquets(const kept_folder &kept, std::vector<std::string> &notes) {
  return bouquet_weaver(kept, notes).woven();
}

}  // namespace chlist
