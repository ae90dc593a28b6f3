#include "chlist/exchange/beside.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

#include "chlist/exchange/layout/folder_layout.h"
#include "chlist/exchange/layout/source_layout.h"
#include "chlist/line_up/places.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

std::optional<shortened_text> if_shortened(const std::string &whole, const std::string &kept) {
  return whole != kept ? std::optional(shortened_text{whole, kept}) : std::nullopt;
}

companion_service beside_service(const line_up_service &read, const line_up_service &filed) {
  return {.id = filed.id(),
          .further = read.further,
          .name = if_shortened(read.name, filed.name),
          .short_name = if_shortened(read.short_name, filed.short_name),
          .provider = if_shortened(read.provider, filed.provider),
          .source = if_shortened(read.source, filed.source)};
}

// services: as they were read, those of the records.
std::vector<companion_service> beside_services(const std::vector<const line_up_service *> &services,
                                               const std::vector<const channel_st *> &filed, const line_up &list) {
  const places_by_identity places(list);
  std::vector<companion_service> made;
  for (std::size_t at = 0; at < services.size(); ++at) {
    if (filed[at] == nullptr) {
      continue;
    }
    const std::size_t place = places.of(channel::identity_of(*filed[at]));
    companion_service beside = beside_service(*services[at], list.services[place]);
    if (!beside.is_empty()) {
      made.push_back(std::move(beside));
    }
  }
  return made;
}

// What became of the service that stands at a line.
struct filed_line {
  const channel_st *record = nullptr;
  bool is_again = false;
  bool is_chosen = true;
};

// Which services became which records; of those that nobody asked for no line is kept.
class source_capture {
 public:
  source_capture(const read_list &read, const std::vector<line_up_service> &chosen, const filled_list &filled)
      : read_(read) {
    for (const line_up_service &each : read.services) {
      records_[each.line] = {.is_chosen = false};
    }
    for (std::size_t at = 0; at < chosen.size(); ++at) {
      records_[chosen[at].line] = {filled.same[at], filled.filed[at] == nullptr};
    }
  }

  // The services of a folder stand in the file that was read first.
  source_text captured() {
    const source_layout &layout = *read_.from.layout;
    std::vector<read_files::file> files = read_.files.files;
    if (!read_.source.is_folder) {
      files.insert(files.begin(), {name_of_first(), read_.source.text, read_.source.encoding});
    }
    source_text made{.format = layout.format_of != nullptr ? layout.format_of(files.front().text)
                                                           : std::string(read_.from.name),
                     .url = read_.source.url,
                     .files = {}};
    for (read_files::file &each : files) {
      std::vector<source_piece> pieces =
          made.files.empty() ? pieces_of_first(each) : layout.folder->pieces(each.text, made.files.front());
      if (!made.files.empty()) {
        mark_latin_1(pieces, each.encoding);
      }
      made.files.push_back({each.name, std::move(pieces), without_lines(std::move(each.encoding))});
    }
    return made;
  }

 private:
  [[nodiscard]] std::string name_of_first() const {
    const folder_layout *folder = read_.from.layout->folder;
    return folder != nullptr ? folder->name_of_first(read_.source.text) : std::string();
  }

  // The mark of UTF-8 is in the text.
  static text_encoding without_lines(text_encoding encoding) {
    encoding.latin_1_lines.clear();
    encoding.has_mark = encoding.has_mark && !encoding.charset.empty();
    return encoding;
  }

  static void mark_latin_1(std::vector<source_piece> &pieces, const text_encoding &encoding) {
    std::size_t line = 1;
    for (source_piece &each : pieces) {
      const auto lines = static_cast<std::size_t>(std::ranges::count(each.text, '\n'));
      each.is_latin_1 = is_any_latin_1(encoding, line, lines);
      line += lines;
    }
  }

  std::vector<source_piece> pieces_of_first(const read_files::file &file) {
    const std::string_view text = file.text;
    std::vector<source_piece> pieces;
    const std::vector<std::size_t> beginnings = read_.from.layout->cut(text);
    std::size_t line = 1;
    for (std::size_t at = 0; at < beginnings.size(); ++at) {
      const std::size_t end = at + 1 < beginnings.size() ? beginnings[at + 1] : text.size();
      const std::string_view piece = text.substr(beginnings[at], end - beginnings[at]);
      const auto lines = static_cast<std::size_t>(std::ranges::count(piece, '\n'));
      take_piece(piece, line, is_any_latin_1(file.encoding, line, lines), pieces);
      line += lines;
    }
    return pieces;
  }

  void take_piece(std::string_view text, std::size_t line, bool is_latin_1, std::vector<source_piece> &pieces) {
    if (text.starts_with(byte_order_mark)) {
      pieces.push_back({.text = std::string(byte_order_mark)});
      text.remove_prefix(byte_order_mark.size());
    }
    const auto found = records_.find(line);
    const filed_line filed = found != records_.end() ? found->second : filed_line();
    if (filed.is_chosen) {
      const auto id = filed.record != nullptr ? std::optional(channel::identity_of(*filed.record)) : std::nullopt;
      pieces.push_back({std::string(text), is_latin_1, id, id && filed.is_again});
    }
  }

  static bool is_any_latin_1(const text_encoding &encoding, std::size_t first_line, std::size_t lines) {
    const auto &found = encoding.latin_1_lines;
    const auto first = std::ranges::lower_bound(found, first_line);
    return first != found.end() && *first < first_line + std::max<std::size_t>(lines, 1);
  }

  const read_list &read_;
  std::unordered_map<std::size_t, filed_line> records_;
};

// A text that is not kept line by line is written in one encoding.
text_encoding encoding_as_a_whole(text_encoding encoding) {
  if (!encoding.latin_1_lines.empty()) {
    encoding = {.charset = latin_1, .has_mark = false, .latin_1_lines = {}};
  }
  return encoding;
}

void put_back(std::string &text, const std::optional<shortened_text> &shortened) {
  if (shortened && text == shortened->kept) {
    text = shortened->whole;
  }
}

}  // namespace

list_source recorded(const list_source &source, read_files &read) {
  list_source made = source;
  made.files = [&read, files = source.files, note = source.read_as](const std::string &name) {
    std::optional<std::string> text = files(name);
    if (text && std::ranges::find(read.files, name, &read_files::file::name) == read.files.end()) {
      read.files.push_back({name, *text, note->last});
    }
    return text;
  };
  return made;
}

companion companion_of_import(const read_list &read, const std::vector<line_up_service> &chosen,
                              const filled_list &filled, const line_up &list) {
  std::unordered_map<std::size_t, const line_up_service *> by_line;
  for (const line_up_service &each : read.services) {
    by_line.emplace(each.line, &each);
  }
  std::vector<const line_up_service *> services;
  for (const line_up_service &each : chosen) {
    services.push_back(by_line.at(each.line));
  }
  companion made{.services = beside_services(services, filled.filed, list), .source = {}};
  if (read.from.layout != nullptr) {
    made.source = source_capture(read, chosen, filled).captured();
  } else if (const text_encoding encoding = encoding_as_a_whole(read.source.encoding); !encoding.is_plain()) {
    made.source = {.format = std::string(read.from.name), .files = {{.name = {}, .encoding = encoding}}};
  }
  return made;
}

companion companion_of_services(const std::vector<line_up_service> &made, const std::vector<const channel_st *> &filed,
                                const line_up &list) {
  std::vector<const line_up_service *> services;
  for (const line_up_service &each : made) {
    services.push_back(&each);
  }
  return {.services = beside_services(services, filed, list), .source = {}};
}

std::size_t put_back(line_up &list, const companion &kept) {
  const places_by_identity places(list);
  std::size_t unknown = 0;
  for (const companion_service &each : kept.services) {
    const std::size_t place = places.of(each.id);
    if (place == nowhere) {
      ++unknown;
      continue;
    }
    line_up_service &service = list.services[place];
    service.further = each.further;
    put_back(service.name, each.name);
    put_back(service.short_name, each.short_name);
    put_back(service.provider, each.provider);
  }
  return unknown;
}

}  // namespace chlist
