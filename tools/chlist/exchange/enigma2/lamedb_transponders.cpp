// A transponder is the same when its ids, where it is received from, its frequency and its polarisation are: namespaces
// are whatever a receiver made them.
#include "chlist/exchange/enigma2/lamedb_transponders.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "chlist/exchange/enigma2/lamedb_fields.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/layout/text_units.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {
namespace {

constexpr std::string_view transponder_of_version_5 = "t:";
constexpr std::string_view service_of_version_5 = "s:";

struct transponder_lines {
  transponder_reference reference;
  lamedb_transponder transponder;
  std::vector<std::string> lines;
  std::size_t number = 0;  // of the line with the parameters

  [[nodiscard]] const std::string &parameters() const { return lines[lines.size() > 1 ? 1 : 0]; }
};

bool is_same(const transponder_lines &a, const transponder_lines &b) {
  const auto key = [](const transponder_lines &each) {
    const lamedb_transponder &transponder = each.transponder;
    return std::tuple(each.reference.transport_id, each.reference.network_id, transponder.from.by,
                      transponder.from.position, transponder.frequency_khz, transponder.polarisation & 1U);
  };
  return key(a) == key(b);
}

std::optional<transponder_lines> transponder_of(std::string_view reference, std::string_view parameters) {
  try {
    return transponder_lines{read_transponder_reference(reference), read_transponder(parameters), {}, 0};
  } catch (const bad_line &) {
    return std::nullopt;
  }
}

// Three lines, or one.
std::optional<transponder_lines> next_transponder(std::string_view line, text_lines &behind) {
  if (line.starts_with(transponder_of_version_5)) {
    const auto [reference, parameters] = split_at_first(line.substr(transponder_of_version_5.size()), ',');
    auto made = transponder_of(reference, parameters.value_or(std::string_view()));
    if (made) {
      made->lines = {std::string(line)};
      made->number = behind.number();
    }
    return made;
  }
  const auto parameters = behind.peek();
  auto made = parameters && parameters->starts_with('\t') ? transponder_of(line, *parameters) : std::nullopt;
  if (made) {
    made->lines = {std::string(line), std::string(*parameters), "/"};
    behind.next();
    made->number = behind.number();
  }
  return made;
}

std::vector<transponder_lines> transponders_in(std::string_view text) {
  std::vector<transponder_lines> all;
  text_lines lines(text);
  while (const auto line = lines.next()) {
    if (*line == "services") {
      break;
    }
    if (auto made = next_transponder(*line, lines)) {
      all.push_back(std::move(*made));
    }
  }
  return all;
}

// Of transponders that are there again, a reader knows the first.
std::map<transponder_reference, transponder_lines> transponders_by_reference(std::string_view text) {
  std::map<transponder_reference, transponder_lines> all;
  for (transponder_lines &each : transponders_in(text)) {
    all.try_emplace(each.reference, std::move(each));
  }
  return all;
}

std::string merged_parameters(const transponder_lines &kept, const transponder_lines &before,
                              const transponder_lines &now) {
  return joined_units(merged_units(units_by_place(kept.parameters(), ':'), units_by_place(before.parameters(), ':'),
                                   units_by_place(now.parameters(), ':')),
                      ":");
}

// What each transponder of a text is called in another one.
class other_names {
 public:
  other_names(const std::string &written, const std::string &kept) : kept_(transponders_in(kept)) {
    for (const transponder_lines &each : kept_) {
      used_.insert(each.reference);
    }
    for (const transponder_lines &each : transponders_in(written)) {
      names_.emplace(each.reference, name_of(each));
    }
  }

  // "NAMESPACE:TSID:ONID" at the beginning of a text, where one stands.
  [[nodiscard]] std::string renamed(std::string_view text) const {
    constexpr std::size_t length = std::string_view("00c00000:0001:0001").size();
    const auto found = names_.find(reference_in(text.substr(0, length)));
    if (found == names_.end()) {
      return std::string(text);
    }
    return fmt::format("{:08x}{}", found->second.name_space, text.substr(text.find(':')));
  }

 private:
  transponder_reference name_of(const transponder_lines &wanted) {
    const auto same = std::ranges::find_if(kept_, [&](const auto &each) { return is_same(each, wanted); });
    if (same != kept_.end()) {
      return same->reference;
    }
    transponder_reference free = wanted.reference;
    for (constexpr std::uint32_t lower_half = 0xFFFF; !used_.insert(free).second;) {
      free.name_space = (free.name_space & ~lower_half) | ((free.name_space + 1) & lower_half);
    }
    return free;
  }

  static transponder_reference reference_in(std::string_view text) {
    try {
      return read_transponder_reference(text);
    } catch (const bad_line &) {
      return {};
    }
  }

  std::vector<transponder_lines> kept_;
  std::set<transponder_reference> used_;
  std::map<transponder_reference, transponder_reference> names_;
};

// What stands in front of the reference in a line.
std::size_t beginning_of_reference(std::string_view line, bool is_within_services) {
  if (line.starts_with(transponder_of_version_5)) {
    return transponder_of_version_5.size();
  }
  const bool is_of_version_5 = line.starts_with(service_of_version_5);
  const bool is_service = is_of_version_5 || (is_within_services && is_like_service_line(line));
  return is_service ? line.find(':', is_of_version_5 ? service_of_version_5.size() : 0) + 1 : 0;
}

}  // namespace

std::string lamedb_in_terms_of(const std::string &written, const std::string &kept) {
  const other_names names(written, kept);
  std::string made;
  bool is_within_services = false;
  int lines_of_text = 0;  // of a service: its name and its options may look like anything
  text_lines lines(written);
  while (const auto line = lines.next()) {
    const bool is_text = lines_of_text > 0;
    lines_of_text -= is_text ? 1 : 0;
    const std::size_t begin = is_text ? 0 : beginning_of_reference(*line, is_within_services);
    made += is_text ? std::string(*line) : std::string(line->substr(0, begin)) + names.renamed(line->substr(begin));
    made += '\n';
    if (!is_text && is_within_services && begin > 0 && !line->starts_with(service_of_version_5)) {
      lines_of_text = 2;
    }
    is_within_services = is_within_services || *line == "services";
  }
  return made;
}

std::map<std::size_t, std::string> lamedb_transponders_changed(const piece_versions &files) {
  const auto kept = transponders_by_reference(files.kept);
  const auto now = transponders_by_reference(files.now);
  std::map<std::size_t, std::string> changed;
  for (const auto &[reference, before] : transponders_by_reference(files.before)) {
    const auto own = kept.find(reference);
    const auto newer = now.find(reference);
    if (own != kept.end() && newer != now.end() && newer->second.parameters() != before.parameters()) {
      changed.emplace(own->second.number, merged_parameters(own->second, before, newer->second));
    }
  }
  return changed;
}

std::vector<std::string> lamedb_transponders_missing(const std::string &written, const std::string &kept) {
  const auto known = transponders_by_reference(kept);
  std::vector<std::string> missing;
  for (const transponder_lines &each : transponders_in(written)) {
    if (!known.contains(each.reference)) {
      missing.insert(missing.end(), each.lines.begin(), each.lines.end());
    }
  }
  return missing;
}

bool is_behind_lamedb_transponders(std::string_view piece) {
  return piece.starts_with(service_of_version_5) || without_trailing_blanks(piece.substr(0, piece.find('\n'))) == "end";
}

}  // namespace chlist
