// Two lines for each service: what it is, and its address, from a template that is read once.
#include "chlist/exchange/m3u/m3u_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

#include "chlist/report.h"
#include "chlist/text/plain_text.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

std::string percent_encoded(std::string_view text) {
  constexpr std::string_view kept = "-._~";
  std::string encoded;
  for (const char c : text) {
    const bool is_plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    encoded += is_plain || kept.find(c) != std::string_view::npos
                   ? std::string(1, c)
                   : fmt::format("%{:02X}", static_cast<unsigned>(static_cast<unsigned char>(c)));
  }
  return encoded;
}

// Text, and what follows it.
struct url_part {
  std::string text;
  const field *which = nullptr;
  bool is_hexadecimal = false;
};

// All fields but those that only an entry of a view has.
bool is_of_service(const field &each) {
  return each.owner != field_owner::entry || each.name == "number" || each.name == "minor";
}

std::string names_of_fields() {
  std::string names;
  for (const field &each : service_fields()) {
    names += is_of_service(each) ? fmt::format("{}{}", names.empty() ? "" : ", ", each.name) : "";
  }
  return names;
}

url_part part_of(std::string text, std::string_view named) {
  constexpr std::string_view hexadecimal = ":x";
  url_part part;
  part.text = std::move(text);
  part.is_hexadecimal = named.ends_with(hexadecimal);
  part.which = find_field(named.substr(0, named.size() - (part.is_hexadecimal ? hexadecimal.size() : 0)));
  const bool is_known = part.which != nullptr && is_of_service(*part.which);
  if (!is_known || (part.is_hexadecimal && !part.which->is_number())) {
    throw std::runtime_error(fmt::format("--url: no field {}: there are {}, and numbers with :x in hexadecimal digits",
                                         shown(named), names_of_fields()));
  }
  return part;
}

// "http://host/{network_id}:{service_id:x}"
std::vector<url_part> parts_of(std::string_view text) {
  std::vector<url_part> parts;
  for (;;) {
    const std::size_t open = text.find('{');
    if (open == std::string_view::npos) {
      parts.push_back({std::string(text)});
      return parts;
    }
    const std::size_t close = text.find('}', open);
    if (close == std::string_view::npos) {
      throw std::runtime_error(fmt::format("--url: {} is not closed", shown(text.substr(open))));
    }
    parts.push_back(part_of(std::string(text.substr(0, open)), text.substr(open + 1, close - open - 1)));
    text.remove_prefix(close + 1);
  }
}

json value_of(const line_up &list, const line_up_service &service, const field &which) {
  const channel_number number = service.number.value_or(channel_number{});
  if (which.name == "number" || which.name == "minor") {
    return which.name == "number" ? number.major : number.minor;
  }
  return which.get({&list, &service});
}

std::string url_of(const line_up &list, const line_up_service &service, const std::vector<url_part> &parts) {
  std::string url;
  for (const url_part &part : parts) {
    url += part.text;
    const json value = part.which != nullptr ? value_of(list, service, *part.which) : json();
    if (value.is_integer()) {
      url += fmt::format(fmt::runtime(part.is_hexadecimal ? "{:x}" : "{}"), value.as_integer());
    } else {
      url += percent_encoded(text_of_value(value));
    }
  }
  return url;
}

// Quotes end a value and lines end an entry; there are no escapes.
std::string harmless_value(std::string_view text) {
  std::string value = in_one_line(text);
  std::ranges::replace(value, '"', '\'');
  return value;
}

std::vector<std::string> group_titles(const line_up &list, bool is_by_favourites) {
  std::vector<std::string> groups;
  std::ranges::transform(list.services, std::back_inserter(groups),
                         [=](const line_up_service &s) { return is_by_favourites ? "" : s.provider; });
  for (const favourite_group &group : list.favourites) {
    for (const line_up_entry &entry : group.entries) {
      if (is_by_favourites) {
        std::string &names = groups[entry.service];
        names += (names.empty() ? "" : ";") + group.name;
      }
    }
  }
  return groups;
}

std::string number_text(channel_number number) {
  return fmt::format(" tvg-chno=\"{}{}\"", number.major, number.minor != 0 ? fmt::format(".{}", number.minor) : "");
}

std::string entry_of(const line_up_service &service, const std::string &group) {
  const std::string name = harmless_value(service.name);
  std::string text = "#EXTINF:-1";
  text += service.number ? number_text(*service.number) : "";
  text += fmt::format(" tvg-name=\"{}\"", name);
  text += group.empty() ? "" : fmt::format(" group-title=\"{}\"", harmless_value(group));
  text += service.fields.service_type == SERVICE_TYPE_RADIO ? " radio=\"true\"" : "";
  return text + ',' + name + '\n';
}

// The entry's own, and the address's.
std::vector<const field *> fields_carried(const std::vector<url_part> &parts, const write_options &options) {
  std::vector<const field *> carried = fields_named("number,minor,name");
  carried.push_back(&field_named(options.is_by_favourites ? "favourites" : "provider"));
  for (const url_part &part : parts) {
    if (part.which != nullptr) {
      carried.push_back(part.which);
    }
  }
  return carried;
}

}  // namespace

written_list write_m3u(const line_up &list, const write_options &options) {
  const std::vector<url_part> parts = parts_of(options.url.empty() ? default_m3u_url : std::string_view(options.url));
  const std::vector<std::string> groups = group_titles(list, options.is_by_favourites);
  written_list result;
  result.carried = fields_carried(parts, options);
  std::string text = "#EXTM3U\n";
  for (std::size_t at = 0; at < list.services.size(); ++at) {
    result.services.push_back(at);
    text += entry_of(list.services[at], groups[at]) + url_of(list, list.services[at], parts) + '\n';
  }
  result.files = {{"", std::move(text)}};
  return result;
}

bool is_like_m3u(const std::filesystem::path &path, std::string_view beginning) {
  return without_byte_order_mark(beginning).starts_with("#EXTM3U") || path.extension() == ".m3u" ||
         path.extension() == ".m3u8";
}

}  // namespace chlist
