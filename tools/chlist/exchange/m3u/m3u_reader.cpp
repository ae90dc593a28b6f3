// An entry is what comes between two addresses: #EXTINF with attributes and a name, and other lines that begin with #.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/m3u/m3u.h"
#include "chlist/exchange/m3u/m3u_address.h"
#include "chlist/exchange/m3u/m3u_lines.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/fields/values.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

// How players and receivers write the ids of a service: the default of exports, a service reference of Enigma2, a
// channel id of VDR.
constexpr std::string_view usual_addresses[] = {default_m3u_url,
                                                "{}/1:0:{service_type:x}:{service_id:x}:{ts_id:x}:{network_id:x}:{}",
                                                "{}-{network_id}-{ts_id}-{service_id}"};

constexpr std::array<std::string_view, 3> needed_ids = {"network_id", "ts_id", "service_id"};

constexpr std::string_view group_line = "#EXTGRP:";
constexpr char group_separator = ';';

// Attributes that become something of a service.
constexpr std::string_view known_attributes[] = {"tvg-chno", "tvg-name", "group-title", "provider", "radio"};

std::vector<address_template> templates_for(const std::string &url) {
  std::vector<address_template> templates;
  if (url.empty()) {
    std::ranges::transform(usual_addresses, std::back_inserter(templates), address_template::of_any_host);
    return templates;
  }
  templates.push_back(address_template::of_any_host(url));
  const std::vector<const field *> fields = templates.front().fields();
  for (const std::string_view id : needed_ids) {
    if (std::ranges::find(fields, id, &field::name) == fields.end()) {
      throw std::runtime_error(
          fmt::format("--url: says no {}: a service is known by network_id, ts_id and service_id", id));
    }
  }
  return templates;
}

struct m3u_entry {
  std::size_t line = 0;
  std::string name = {};  // behind the comma
  std::map<std::string, std::string, std::less<>> attributes = {};
  std::size_t other_lines = 0;

  [[nodiscard]] std::string_view attribute(std::string_view wanted) const {
    const auto found = attributes.find(wanted);
    return found != attributes.end() ? std::string_view(found->second) : std::string_view();
  }
};

// "7" or "7.2"; what is no number is none.
std::optional<channel_number> number_in(std::string_view text) {
  const auto [major, minor] = split_at_first(text, '.');
  try {
    return channel_number{read_number<int>(major, "number", 0, largest_channel_number),
                          minor ? read_number<int>(*minor, "number", 0, largest_channel_number) : 0};
  } catch (const bad_line &) {
    return std::nullopt;
  }
}

class playlist_reader {
 public:
  playlist_reader(const list_source &from, loss_counts &lost)
      : lines_(from.text), templates_(templates_for(from.url)), lost_(lost) {}

  line_up read() {
    while (const auto line = lines_.next()) {
      const std::string_view text = without_blanks_around(*line);
      switch (m3u_line_of(text)) {
        case m3u_line::information:
          take_information(text);
          break;
        case m3u_line::address:
          take_address(text);
          entry_ = {};
          break;
        case m3u_line::comment:
          take_other(text);
          break;
        case m3u_line::header:
        case m3u_line::blank:
          break;
      }
    }
    return std::move(list_);
  }

 private:
  void take_information(std::string_view text) {
    entry_ = {.line = lines_.number()};
    const m3u_information information = m3u_information_in(text);
    entry_.name = information.name;
    for (const m3u_attribute &each : information.attributes) {
      entry_.attributes[each.name] = each.value;
    }
  }

  void take_other(std::string_view text) {
    if (text.starts_with(group_line)) {
      entry_.attributes.try_emplace("group-title", without_blanks_around(text.substr(group_line.size())));
    } else {
      ++entry_.other_lines;
    }
  }

  void take_address(std::string_view address) {
    const std::size_t line = entry_.line != 0 ? entry_.line : lines_.number();
    line_up_service service = broadcast_service(line);
    service.fields.service_type = is_radio() ? SERVICE_TYPE_RADIO : SERVICE_TYPE_TV;
    if (std::ranges::none_of(templates_, [&](const auto &each) { return each.read(address, service); })) {
      list_.skipped.push_back({line, fmt::format("its address says no ids: {}", quoted(address))});
      return;
    }
    service.name = entry_.name.empty() ? entry_.attribute("tvg-name") : std::string_view(entry_.name);
    service.provider = entry_.attribute("provider");
    service.number = number_in(entry_.attribute("tvg-chno"));
    count_losses();
    list_.services.push_back(std::move(service));
    add_to_groups();
  }

  [[nodiscard]] bool is_radio() const { return is_same_name(entry_.attribute("radio"), "true"); }

  void count_losses() {
    for (const auto &[name, value] : entry_.attributes) {
      if (!value.empty() && std::ranges::find(known_attributes, name) == std::end(known_attributes)) {
        lost_.add(fmt::format("attribute {}", name));
      }
    }
    if (const std::string_view number = entry_.attribute("tvg-chno"); !number.empty() && !number_in(number)) {
      lost_.add("channel numbers that are none", 1, fmt::format("such as {}", quoted(number)));
    }
    lost_.add("lines of players", entry_.other_lines);
  }

  // A title that is the provider's name groups by providers.
  void add_to_groups() {
    for (const std::string_view title : split(entry_.attribute("group-title"), group_separator)) {
      const std::string name(without_blanks_around(title));
      if (name.empty() || name == list_.services.back().provider) {
        continue;
      }
      const auto [known, is_new] = groups_.try_emplace(name, list_.favourites.size());
      if (is_new) {
        list_.favourites.push_back({.name = name, .entries = {}});
      }
      list_.favourites[known->second].entries.push_back({.service = list_.services.size() - 1, .number = {}});
    }
  }

  text_lines lines_;
  std::vector<address_template> templates_;
  loss_counts &lost_;
  m3u_entry entry_;
  line_up list_;
  std::unordered_map<std::string, std::size_t> groups_;
};

}  // namespace

line_up read_m3u(const list_source &from, loss_counts &lost) { return playlist_reader(from, lost).read(); }

}  // namespace chlist
