// What a piece says is what the format's reader reads in it; whether the list says the same is told by what the
// format's writer makes of both.
#include "chlist/exchange/layout/weave.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "chlist/exchange/layout/source_layout.h"
#include "chlist/line_up/moved.h"
#include "chlist/line_up/places.h"
#include "chlist/text/charset.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

std::string_view line_end_of(std::string_view text) {
  if (text.ends_with("\r\n")) {
    return "\r\n";
  }
  return text.ends_with('\n') ? "\n" : "";
}

std::string_view without_line_end(std::string_view text) {
  return text.substr(0, text.size() - line_end_of(text).size());
}

std::size_t lines_in(std::string_view text) { return static_cast<std::size_t>(std::ranges::count(text, '\n')); }

// What a writer makes of each service of a list, by its place; empty of those that it leaves out.
std::vector<std::string> texts_of_services(const line_up &list, const format &to, const write_options &options) {
  std::vector<std::string> texts(list.services.size());
  const written_list written = to.write(list, options);
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

struct woven_piece {
  const source_piece *kept = nullptr;  // none of a new service
  std::size_t read = nowhere;          // the service that the kept piece is read as
  std::size_t service = nowhere;       // the one of the list
  std::string text{};                  // without the end of its last line
};

class weaver {
 public:
  weaver(const line_up &list, const companion &kept, const format &to, const write_options &options)
      : now_(list), kept_(kept), to_(to), options_(options), pieces_(kept.source.files.front().pieces) {}

  written_list woven() {
    read_pieces();
    call_sources_as_the_text_does();
    const written_list written = to_.write(now_, options_);
    take_in_order(written.services);
    number();
    write_services();
    return joined(written.left_out);
  }

 private:
  using row = std::list<woven_piece>;

  // The reader tells by its lines which piece a service is of.
  void read_pieces() {
    std::string text;
    std::unordered_map<std::size_t, std::size_t> piece_of_line;
    std::size_t line = 1;
    for (std::size_t at = 0; at < pieces_.size(); ++at) {
      piece_of_line[line] = at;
      text += pieces_[at].text;
      line += lines_in(pieces_[at].text);
    }
    loss_counts unsaid;
    before_ = to_.read(source_of({{"", std::move(text)}}, false), unsaid);
    services_of_pieces_.assign(pieces_.size(), nowhere);
    for (std::size_t place = 0; place < before_.services.size(); ++place) {
      if (const auto found = piece_of_line.find(before_.services[place].line); found != piece_of_line.end()) {
        services_of_pieces_[found->second] = place;
      }
    }
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
    std::vector<std::size_t> before;
    for (std::size_t at = 0; at < pieces_.size(); ++at) {
      const source_piece &piece = pieces_[at];
      const std::size_t service = piece.service ? places.of(*piece.service) : nowhere;
      const bool is_kept_again = piece.is_again && are_written.contains(service);
      if (!piece.service || is_kept_again) {
        row_.push_back({&piece});
      } else if (are_written.contains(service) && !known_.contains(service)) {
        row_.push_back({&piece, services_of_pieces_[at], service});
        known_[service] = std::prev(row_.end());
        before.push_back(service);
      }
    }
    bring_into_order(before, order);
  }

  void bring_into_order(const std::vector<std::size_t> &before, const std::vector<std::size_t> &order) {
    const std::vector<std::size_t> moved = moved_between(before, order);
    const std::unordered_set<std::size_t> are_moved(moved.begin(), moved.end());
    auto behind = std::ranges::find_if(row_, [](const woven_piece &each) { return each.service != nowhere; });
    for (const std::size_t service : order) {
      const auto known = known_.find(service);
      if (known == known_.end()) {
        behind = std::next(row_.insert(behind, {.service = service}));
      } else if (are_moved.contains(service)) {
        behind = behind == known->second ? std::next(behind) : behind;
        row_.splice(behind, row_, known->second);
      } else {
        behind = std::next(known->second);
      }
    }
  }

  // Numbers follow each other unless a piece says another one; the reader numbers them so.
  void number() {
    int next = 1;
    for (auto at = row_.begin(); at != row_.end(); ++at) {
      if (at->service != nowhere) {
        next = number_service(at, next);
      } else if (const auto raised = number_raised_by(*at)) {
        next = keep_number(at, std::max(next, *raised), next);
      }
    }
  }

  [[nodiscard]] std::optional<int> number_raised_by(const woven_piece &piece) const {
    return to_.layout->number_in != nullptr ? to_.layout->number_in(piece.kept->text) : std::nullopt;
  }

  // One beyond what the service behind it has now is taken out.
  int keep_number(row::iterator at, int raised, int next) {
    const auto follower = std::find_if(at, row_.end(), [](const woven_piece &each) { return each.service != nowhere; });
    if (follower == row_.end() || number_of(*follower).value_or(raised) >= raised) {
      return raised;
    }
    at->text = to_.layout->without_number(without_line_end(at->kept->text));
    is_changed_.insert(&*at);
    return next;
  }

  [[nodiscard]] std::optional<int> number_of(const woven_piece &piece) const {
    const auto &number = now_.services[piece.service].number;
    return number ? std::optional(number->major) : std::nullopt;
  }

  // Returns the number that follows.
  int number_service(row::iterator at, int next) {
    const int wanted = number_of(*at).value_or(next);
    line_up_service &service = now_.services[at->service];
    if (to_.layout->raising_to == nullptr) {
      const bool has_own = at->read != nowhere && before_.services[at->read].number.has_value();
      const bool is_implied = service.number == channel_number{next};
      if (!has_own && is_implied && at->kept != nullptr) {
        service.number.reset();
      }
    } else if (wanted > next) {
      row_.insert(at, {.text = to_.layout->raising_to(wanted)});
    }
    return std::max(next, wanted + 1);
  }

  void write_services() {
    const std::vector<std::string> before = texts_of_services(before_, to_, options_);
    const std::vector<std::string> now = texts_of_services(now_, to_, options_);
    for (woven_piece &each : row_) {
      if (each.service == nowhere) {
        continue;
      }
      each.text = now[each.service];
      is_changed_.insert(&each);
      if (each.read != nowhere) {
        merge(each, before[each.read]);
      }
    }
  }

  void merge(woven_piece &piece, const std::string &before) {
    if (piece.text == before) {
      is_changed_.erase(&piece);
    } else {
      piece.text = to_.layout->merge({without_line_end(piece.kept->text), before, piece.text});
    }
  }

  written_list joined(const loss_counts &left_out) {
    const std::string_view line_end = usual_line_end();
    written_list made;
    made.left_out = left_out;
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
    made.files = {{"", std::move(text)}};
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
    if (!is_new && !is_changed_.contains(&piece)) {
      const std::string text = piece.kept->is_latin_1 ? latin_1_of(piece.kept->text) : piece.kept->text;
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
  line_up before_;  // what the pieces say
  std::vector<std::size_t> services_of_pieces_;
  row row_;
  std::unordered_map<std::size_t, row::iterator> known_;  // by the service
  std::unordered_set<const woven_piece *> is_changed_;
};

}  // namespace

bool can_be_woven(const companion &kept, const format &to) {
  return to.layout != nullptr && kept.source.format == to.name && kept.source.files.size() == 1;
}

written_list woven_text(const line_up &list, const companion &kept, const format &to, const write_options &options) {
  return weaver(list, kept, to, options).woven();
}

}  // namespace chlist
