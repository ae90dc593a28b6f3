// What a piece says is what the format's reader reads in it; whether the list says the same is told by what the
// format's writer makes of both.
#include "chlist/exchange/layout/weave.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/group_choice.h"
#include "chlist/exchange/layout/folder_layout.h"
#include "chlist/exchange/layout/group_edits.h"
#include "chlist/exchange/layout/made_contents.h"
#include "chlist/exchange/layout/row_order.h"
#include "chlist/exchange/layout/separators.h"
#include "chlist/exchange/layout/source_layout.h"
#include "chlist/exchange/layout/text_units.h"
#include "chlist/exchange/layout/woven_row.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/order_of_all.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/places.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

std::size_t lines_in(std::string_view text) { return static_cast<std::size_t>(std::ranges::count(text, '\n')); }

// What a writer makes of each service of a list, by its place; empty of those that it leaves out.
std::vector<std::string> texts_of_services(const written_list &written, std::size_t services, const format &to) {
  std::vector<std::string> texts(services);
  const std::string_view text = written.files.front().text;
  const std::vector<std::size_t> beginnings = to.layout->cut(text);
  std::size_t service = 0;
  for (std::size_t at = 0; at < beginnings.size() && service < written.services.size(); ++at) {
    const std::size_t end = at + 1 < beginnings.size() ? beginnings[at + 1] : text.size();
    const std::string_view piece = text.substr(beginnings[at], end - beginnings[at]);
    if (to.layout->is_service(piece)) {
      texts[written.services[service++]] = without_line_end(piece);
    }
  }
  return texts;
}

class weaver {
 public:
  weaver(const line_up &list, const companion &kept, const format &to, const write_options &options)
      : now_(list), kept_(kept), to_(to), options_(options), pieces_(kept.source.files.front().pieces) {}

  written_list woven() {
    read_pieces();
    if (is_folder() || to_.layout->separators != nullptr) {
      find_group_edits();
    }
    call_sources_as_the_text_does();
    const written_list written = written_in_terms_of_text(now_);
    take_in_order(is_folder() ? kept_order_of(written.services) : written.services);
    if (!is_folder()) {
      number();
    }
    const written_list before = written_in_terms_of_text(before_);
    const written_list now = written_in_terms_of_text(now_);
    write_services(before, now);
    if (is_folder()) {
      change_lines({first_text_, before.files.front().text, now.files.front().text});
      add_missing(now.files.front().text);
    }
    written_list made = joined(written);
    return is_folder() ? with_other_files(std::move(made)) : made;
  }

 private:
  [[nodiscard]] bool is_folder() const { return to_.layout->folder != nullptr; }

  [[nodiscard]] written_list written_in_terms_of_text(const line_up &list) const {
    written_list written = to_.write(list, options_);
    if (is_folder()) {
      written.files.front().text = to_.layout->folder->in_terms_of(written.files.front().text, first_text_);
    }
    return written;
  }

  // What services stand on that is received otherwise now.
  void change_lines(const piece_versions &files) {
    const std::map<std::size_t, std::string> changed = to_.layout->folder->changed(files);
    for (woven_piece &each : row_) {
      const auto found = each.kept != nullptr ? changed.find(line_of(*each.kept)) : changed.end();
      if (found != changed.end()) {
        each.change_to(found->second);
      }
    }
  }

  [[nodiscard]] std::size_t line_of(const source_piece &piece) const {
    return lines_of_pieces_[static_cast<std::size_t>(&piece - pieces_.data())];
  }

  // Adds the lines that new services stand on and that the folder lacks.
  void add_missing(const std::string &written) {
    const folder_layout &folder = *to_.layout->folder;
    const auto behind =
        std::ranges::find_if(row_, [&](const woven_piece &each) { return folder.is_behind_missing(each.current()); });
    for (std::string &line : folder.missing(written, first_text_)) {
      row_.insert(behind, {.text = std::move(line)});
    }
  }

  // Services have their order elsewhere: new ones stand at the end.
  [[nodiscard]] std::vector<std::size_t> kept_order_of(const std::vector<std::size_t> &written) const {
    const places_by_identity places(now_);
    const std::unordered_set<std::size_t> are_written(written.begin(), written.end());
    std::unordered_set<std::size_t> are_taken;
    std::vector<std::size_t> order;
    const auto take = [&](std::size_t service) {
      if (are_written.contains(service) && are_taken.insert(service).second) {
        order.push_back(service);
      }
    };
    for (const source_piece &each : pieces_) {
      take(each.service ? places.of(*each.service) : nowhere);
    }
    std::ranges::for_each(written, take);
    return order;
  }

  // Where services would not come back from the first file as it is kept, it is written anew, and told. The other files
  // follow either one: what they say of services that the list does not have stays.
  written_list with_other_files(written_list made) {
    const written_list anew = to_.write(now_, options_);
    const made_contents wanted(anew, now_, to_);
    if (weave_others(made, texts_in_row(), wanted)) {
      return made;
    }
    written_list instead = anew;
    instead.files.resize(1);
    tell_lines_lost(instead);
    weave_others(instead, texts_of_services(anew, now_.services.size(), to_), wanted);
    return instead;
  }

  // In the first way in which the services keep their numbers. texts: of services in the first file, which is made.
  // Returns whether they come back.
  bool weave_others(written_list &made, const std::vector<std::string> &texts, const made_contents &wanted) const {
    std::vector<referred_service> services;
    for (std::size_t place = 0; place < texts.size(); ++place) {
      services.push_back({&now_.services[place], texts[place]});
    }
    for (const numbered_by way : ways_to_number) {
      made.files.resize(1);
      made.notes.clear();
      std::ranges::move(to_.layout->folder->woven({kept_.source.files, services, groups_, way}, made.notes),
                        std::back_inserter(made.files));
      const made_contents contents(made, now_, to_);
      if (!contents.has_services_of(wanted)) {
        return false;
      }
      if (contents.has_same_numbers()) {
        break;
      }
    }
    return true;
  }

  [[nodiscard]] std::vector<std::string> texts_in_row() const {
    std::vector<std::string> texts(now_.services.size());
    for (const woven_piece &each : row_) {
      if (each.service != nowhere) {
        texts[each.service] = each.current();
      }
    }
    return texts;
  }

  void tell_lines_lost(written_list &anew) const {
    const made_file &first = anew.files.front();
    const std::vector<std::string_view> written = split(first.text, '\n');
    const std::unordered_set<std::string_view> are_written(written.begin(), written.end());
    const auto lost = std::ranges::count_if(split(first_text_, '\n'), [&](std::string_view line) {
      return !are_written.contains(line) && !are_written.contains(without_trailing_blanks(line));
    });
    anew.left_out.leave_out(fmt::format("lines of {} as they were", first.name), static_cast<std::size_t>(lost),
                            "written anew: services would not come back from it otherwise");
  }

  // The reader tells by its lines which piece a service is of.
  void read_pieces() {
    std::unordered_map<std::size_t, std::size_t> piece_of_line;
    std::size_t line = 1;
    for (std::size_t at = 0; at < pieces_.size(); ++at) {
      piece_of_line[line] = at;
      lines_of_pieces_.push_back(line);
      line += lines_in(pieces_[at].text);
    }
    loss_counts unsaid;
    const std::vector<made_file> files = kept_files();
    first_text_ = files.front().text;
    list_source source = source_of(files, false);
    source.url = kept_.source.url;
    before_ = to_.read(source, unsaid);
    choose_groups_again(before_, kept_.source.groups);
    services_of_pieces_.assign(pieces_.size(), nowhere);
    for (std::size_t place = 0; place < before_.services.size(); ++place) {
      if (const auto found = piece_of_line.find(before_.services[place].line); found != piece_of_line.end()) {
        services_of_pieces_[found->second] = place;
      }
    }
  }

  [[nodiscard]] std::vector<made_file> kept_files() const {
    std::vector<made_file> files;
    for (const source_file &each : kept_.source.files) {
      files.push_back({files.empty() ? std::string() : each.name, text_of(each)});
    }
    return files;
  }

  // A list has no room for some groups and services: what it was filled with tells what is an edit.
  void find_group_edits() {
    loss_counts unsaid;
    line_up ordered = before_;
    order_groups(ordered, kept_.source.groups.order);
    const filled_list filled = fill_list(ordered, unsaid);
    const line_up list = in_order_of_all(line_up_in_memory()).list;
    const places_by_identity now(now_);
    const places_by_identity after(list);
    std::vector<std::size_t> places_of_read(before_.services.size(), nowhere);
    std::vector<std::size_t> places_of_filled(list.services.size(), nowhere);
    for (std::size_t at = 0; at < pieces_.size(); ++at) {
      const std::size_t read = services_of_pieces_[at];
      if (read != nowhere && pieces_[at].service && filled.same[read] != nullptr) {
        places_of_read[read] = now.of(*pieces_[at].service);
        places_of_filled[after.of(channel::identity_of(*filled.same[read]))] = places_of_read[read];
      }
    }
    groups_ = group_edits({before_, list, places_of_read, places_of_filled}, now_.favourites);
  }

  // Somebody may have named a source in the list alone.
  void call_sources_as_the_text_does() {
    const places_by_identity places(now_);
    for (const companion_service &each : kept_.services) {
      const std::size_t place = places.of(each.id);
      if (place != nowhere && each.source && now_.services[place].source == each.source->kept) {
        now_.services[place].source = each.source->whole;
      }
    }
  }

  // order: the services that are written, as the format has them.
  void take_in_order(const std::vector<std::size_t> &order) {
    const places_by_identity places(now_);
    const std::unordered_set<std::size_t> are_written(order.begin(), order.end());
    std::unordered_set<std::size_t> known;
    for (std::size_t at = 0; at < pieces_.size(); ++at) {
      const source_piece &piece = pieces_[at];
      const std::size_t service = piece.service ? places.of(*piece.service) : nowhere;
      const bool is_kept_again = piece.is_again && are_written.contains(service);
      if (!piece.service || is_kept_again) {
        row_.push_back({&piece});
      } else if (are_written.contains(service) && known.insert(service).second) {
        row_.push_back({&piece, services_of_pieces_[at], service});
      }
    }
    bring_into_order(row_, &woven_piece::service, order,
                     [](std::size_t service) { return woven_piece{.service = service}; });
  }

  void number() {
    if (to_.layout->separators != nullptr) {
      follow_groups(row_, pieces_, groups_, *to_.layout->separators);
      follow_numbers(row_, pieces_, now_, *to_.layout->separators);
    } else {
      forget_implied_numbers();
    }
  }

  // A service whose number is the next one needs not say so, unless it did.
  void forget_implied_numbers() {
    int next = 1;
    for (const woven_piece &each : row_) {
      if (each.is_service()) {
        line_up_service &service = now_.services[each.service];
        const bool has_own = each.read != nowhere && before_.services[each.read].number.has_value();
        const int wanted = service.number ? service.number->major : next;
        if (!has_own && each.kept != nullptr && service.number == channel_number{next}) {
          service.number.reset();
        }
        next = std::max(next, wanted + 1);
      }
    }
  }

  void write_services(const written_list &written_before, const written_list &written_now) {
    const std::vector<std::string> before = texts_of_services(written_before, before_.services.size(), to_);
    const std::vector<std::string> now = texts_of_services(written_now, now_.services.size(), to_);
    for (woven_piece &each : row_) {
      if (!each.is_service()) {
        continue;
      }
      if (each.read == nowhere) {
        each.change_to(now[each.service]);
      } else if (const std::string &is = now[each.service]; is != before[each.read]) {
        each.change_to(to_.layout->merge({without_line_end(each.kept->text), before[each.read], is}));
      }
    }
  }

  written_list joined(const written_list &written) {
    const std::string_view line_end = usual_line_end();
    written_list made;
    made.left_out = written.left_out;
    made.carried = written.carried;
    std::string text;
    std::size_t line = 1;
    for (const woven_piece &each : row_) {
      const std::string piece = text_of_piece(each, line_end, &each == &row_.back());
      if (each.service != nowhere) {
        made.services.push_back(each.service);
        made.lines.push_back(line);
      }
      text += piece;
      line += lines_in(piece);
    }
    made.files = {{kept_.source.files.front().name, std::move(text)}};
    return made;
  }

  [[nodiscard]] std::string_view usual_line_end() const {
    for (const source_piece &each : pieces_) {
      if (const std::string_view end = line_end_of(each.text); !end.empty()) {
        return end;
      }
    }
    return "\n";
  }

  [[nodiscard]] std::string text_of_piece(const woven_piece &piece, std::string_view usual_end, bool is_last) const {
    const bool is_new = piece.kept == nullptr;
    if (!is_new && !piece.is_changed) {
      const std::string &text = piece.kept->text;
      const bool ends = is_last || !line_end_of(text).empty() || text == byte_order_mark;
      return ends ? text : text + std::string(usual_end);
    }
    if (piece.text.empty()) {
      return "";
    }
    const std::string_view own_end = is_new ? std::string_view() : line_end_of(piece.kept->text);
    const bool has_none = !is_new && own_end.empty() && is_last;
    return piece.text + std::string(has_none ? "" : own_end.empty() ? usual_end : own_end);
  }

  line_up now_;
  const companion &kept_;
  const format &to_;
  const write_options &options_;
  const std::vector<source_piece> &pieces_;
  std::string first_text_;  // of the first file, as it is kept
  line_up before_;          // what the pieces say
  std::vector<group_edit> groups_;
  std::vector<std::size_t> services_of_pieces_;
  std::vector<std::size_t> lines_of_pieces_;  // where each begins
  woven_row row_;
};

}  // namespace

bool can_be_woven(const companion &kept, const format &to) {
  return to.layout != nullptr && kept.source.format == to.name && kept.source.has_text();
}

written_list woven_text(const line_up &list, const companion &kept, const format &to, const write_options &options) {
  return weaver(list, kept, to, options).woven();
}

}  // namespace chlist
