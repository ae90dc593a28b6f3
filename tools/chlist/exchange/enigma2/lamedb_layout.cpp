// A service is three lines, or one; its first line holds its reference.
#include "chlist/exchange/enigma2/lamedb_layout.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>

#include "chlist/exchange/enigma2/bouquets_layout.h"
#include "chlist/exchange/enigma2/lamedb_fields.h"
#include "chlist/exchange/enigma2/lamedb_transponders.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/layout/folder_layout.h"
#include "chlist/exchange/layout/text_units.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {
namespace {

constexpr std::string_view line_of_version_5 = "s:";

std::size_t end_of_line(std::string_view text, std::size_t at) {
  return at < text.size() ? std::min(text.find('\n', at), text.size() - 1) + 1 : at;
}

std::string_view line_at(std::string_view text, std::size_t at) {
  return without_trailing_blanks(text.substr(at, std::min(text.find('\n', at), text.size()) - at));
}

bool is_lamedb_service(std::string_view piece) {
  return piece.starts_with(line_of_version_5) || is_like_service_line(line_at(piece, 0));
}

// As the reader takes them: the name always, the options unless another service or the end stands there.
std::size_t end_of_service(std::string_view text, std::size_t at) {
  at = end_of_line(text, end_of_line(text, at));
  const std::string_view options = line_at(text, at);
  return options == "end" || is_like_service_line(options) ? at : end_of_line(text, at);
}

std::vector<std::size_t> beginnings_in_lamedb(std::string_view text) {
  std::vector<std::size_t> places;
  bool is_within_services = false;
  for (std::size_t at = 0; at < text.size();) {
    const std::string_view line = line_at(text, at);
    places.push_back(at);
    is_within_services = line == "services" || (is_within_services && line != "end");
    at = is_within_services && is_like_service_line(line) ? end_of_service(text, at) : end_of_line(text, at);
  }
  return places;
}

std::string_view without_trailing_ends(std::string_view line) {
  return line.substr(0, line.find_last_not_of("\r\n") + 1);
}

// The parts of a service: its numbers, its name and its options.
struct service_parts {
  std::string numbers;
  std::string name;
  std::string options;
  std::string end_of_lines;  // between them, of the three lines
};

service_parts parts_of_lines(std::string_view piece) {
  const std::size_t name = end_of_line(piece, 0);
  const std::size_t options = end_of_line(piece, name);
  const bool has_carriage_return = piece.substr(0, name).ends_with("\r\n");
  return {std::string(line_at(piece, 0)), std::string(without_trailing_ends(piece.substr(name, options - name))),
          std::string(piece.substr(options)), has_carriage_return ? "\r\n" : "\n"};
}

// The options begin behind the last quotation mark that a comma and a colon follow.
service_parts parts_of_line(std::string_view piece) {
  const std::size_t name = piece.find(",\"");
  const std::size_t options = piece.rfind("\",p:");
  if (name == std::string_view::npos || options == std::string_view::npos || options < name + 2) {
    return {std::string(piece), {}, {}, {}};
  }
  return {std::string(piece.substr(0, name)),
          std::string(piece.substr(name + 2, options - name - 2)),
          std::string(piece.substr(options + 2)),
          {}};
}

service_parts parts_of_service(std::string_view piece) {
  return piece.starts_with(line_of_version_5) ? parts_of_line(piece) : parts_of_lines(piece);
}

// "p:Provider, Inc", "c:000065", "C:1702": by their letter, cached PIDs by their kind, those that repeat by their
// order. A part without a letter belongs to the one in front of it.
std::vector<text_unit> options_in(std::string_view options) {
  std::vector<text_unit> units;
  std::map<std::string, int> seen;
  for (const std::string_view part : split(options, ',')) {
    if ((part.size() < 2 || part[1] != ':') && !units.empty()) {
      units.back().text += "," + std::string(part);
      continue;
    }
    constexpr std::size_t letter_and_kind = 4;
    const std::string key(part.starts_with("c:") ? part.substr(0, letter_and_kind) : part.substr(0, 2));
    units.push_back({fmt::format("{}#{}", key, seen[key]++), std::string(part)});
  }
  return units;
}

std::string merged_service(const piece_versions &versions) {
  const service_parts kept = parts_of_service(versions.kept);
  const service_parts before = parts_of_service(versions.before);
  const service_parts now = parts_of_service(versions.now);
  const std::string numbers =
      joined_units(merged_units(units_by_place(kept.numbers, ':'), units_by_place(before.numbers, ':'),
                                units_by_place(now.numbers, ':')),
                   ":");
  const std::string name = before.name == now.name ? kept.name : now.name;
  const std::string options =
      joined_units(merged_units(options_in(kept.options), options_in(before.options), options_in(now.options)), ",");
  return kept.end_of_lines.empty() ? fmt::format("{},\"{}\",{}", numbers, name, options)
                                   : fmt::format("{0}{1}{2}{1}{3}", numbers, kept.end_of_lines, name, options);
}

// "eDVB services /4/"
std::string format_of_lamedb(std::string_view text) {
  const std::size_t slash = text.find('/');
  return "lamedb" + std::string(slash != std::string_view::npos ? text.substr(slash + 1, 1) : "");
}

std::string name_of_lamedb(std::string_view text) { return format_of_lamedb(text) == "lamedb5" ? "lamedb5" : "lamedb"; }

constexpr folder_layout bouquet_layout = {.name_of_first = name_of_lamedb,
                                          .pieces = pieces_of_bouquet,
                                          .in_terms_of = lamedb_in_terms_of,
                                          .changed = lamedb_transponders_changed,
                                          .missing = lamedb_transponders_missing,
                                          .is_behind_missing = is_behind_lamedb_transponders,
                                          .woven = woven_bouquets};

}  // namespace

std::optional<lamedb_service> service_in_piece(std::string_view piece) {
  try {
    std::string_view line = line_at(piece, 0);
    line.remove_prefix(piece.starts_with(line_of_version_5) ? line_of_version_5.size() : 0);
    return read_service_line(line.substr(0, line.find(',')));
  } catch (const bad_line &) {
    return std::nullopt;
  }
}

const source_layout lamedb_layout = {.cut = beginnings_in_lamedb,
                                     .is_service = is_lamedb_service,
                                     .merge = merged_service,
                                     .format_of = format_of_lamedb,
                                     .folder = &bouquet_layout};

}  // namespace chlist
