// An entry is #EXTINF with what follows it up to the address; what stands between entries is nobody's. Attributes, the
// name, the address and every other line are units of it.
#include "chlist/exchange/m3u/m3u.h"

#include <algorithm>

#include "chlist/exchange/layout/text_units.h"
#include "chlist/exchange/m3u/m3u_lines.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {
namespace {

constexpr std::string_view key_of_name = ",";
constexpr std::string_view key_of_address = "address";

std::vector<std::size_t> beginnings_of_entries(std::string_view text) {
  std::vector<std::size_t> places;
  bool is_in_entry = false;
  bool is_behind_one = true;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    const m3u_line line = m3u_line_of(text.substr(at, end - at));
    if (line == m3u_line::information || is_behind_one || (line == m3u_line::address && !is_in_entry)) {
      places.push_back(at);
    }
    is_behind_one = line == m3u_line::address || line == m3u_line::header;
    is_in_entry = line == m3u_line::information || (is_in_entry && !is_behind_one);
    at = end;
  }
  return places;
}

bool is_m3u_service(std::string_view piece) { return m3u_line_of(piece) != m3u_line::header; }

// The attributes keep the blanks in front of them.
void add_information(std::vector<text_unit> &units, std::string_view line) {
  const m3u_information read = m3u_information_in(line);
  std::size_t at = 0;
  std::string key;
  for (const m3u_attribute &each : read.attributes) {
    units.push_back({key, std::string(line.substr(at, each.begin - at))});
    at = each.begin;
    key = each.name;
  }
  units.push_back({key, std::string(line.substr(at, read.name_begin - at))});
  units.push_back({std::string(key_of_name), std::string(line.substr(read.name_begin))});
}

std::vector<text_unit> units_of(std::string_view piece) {
  std::vector<text_unit> units;
  text_lines lines(piece);
  while (const auto line = lines.next()) {
    if (m3u_line_of(*line) == m3u_line::information) {
      add_information(units, *line);
    } else if (m3u_line_of(*line) == m3u_line::address) {
      units.push_back({std::string(key_of_address), "\n" + std::string(*line)});
    } else {
      units.push_back({std::string(*line), "\n" + std::string(*line)});
    }
  }
  return units;
}

bool has_unit(const std::vector<text_unit> &units, std::string_view key) {
  return std::ranges::find(units, key, &text_unit::key) != units.end();
}

// The name stands behind the comma: who did not say it twice does not want it twice.
std::vector<text_unit> units_of_written(std::string_view piece, const std::vector<text_unit> &kept) {
  std::vector<text_unit> units = units_of(piece);
  std::erase_if(units, [&kept](const text_unit &each) { return each.key == "tvg-name" && !has_unit(kept, each.key); });
  return units;
}

// An address without information has nothing that could be kept but itself.
std::string merged_entry(const piece_versions &versions) {
  if (m3u_line_of(versions.kept) != m3u_line::information) {
    return std::string(versions.now);
  }
  const std::vector<text_unit> kept = units_of(versions.kept);
  std::string entry;
  for (const text_unit &each :
       merged_units(kept, units_of_written(versions.before, kept), units_of_written(versions.now, kept))) {
    entry += each.text;
  }
  const bool has_carriage_returns = versions.kept.find("\r\n") != std::string_view::npos;
  for (std::size_t at = entry.find('\n'); has_carriage_returns && at != std::string::npos;
       at = entry.find('\n', at + 2)) {
    entry.insert(at, 1, '\r');
  }
  return entry;
}

}  // namespace

const source_layout m3u_layout = {.cut = beginnings_of_entries, .is_service = is_m3u_service, .merge = merged_entry};

}  // namespace chlist
