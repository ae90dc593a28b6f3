// Two lines for each service: what it is, and its address, from a template that is read once.
#include "chlist/exchange/m3u/m3u_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

#include "chlist/exchange/service_traits.h"
#include "chlist/report.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

using number_of = std::int64_t (*)(const line_up_service &service);

struct url_number {
  std::string_view name;
  trait which;
  number_of value;
};

constexpr url_number url_numbers[] = {
    {"number", trait::number,
     [](const line_up_service &s) { return std::int64_t{s.number.value_or(channel_number{}).major}; }},
    {"minor", trait::minor_number,
     [](const line_up_service &s) { return std::int64_t{s.number.value_or(channel_number{}).minor}; }},
    {"net_index", trait::net_index, [](const line_up_service &s) { return std::int64_t{s.fields.net_index}; }},
    {"network_id", trait::network_id, [](const line_up_service &s) { return std::int64_t{s.fields.network_id}; }},
    {"ts_id", trait::transport_id, [](const line_up_service &s) { return std::int64_t{s.fields.ts_id}; }},
    {"frequency", trait::frequency, [](const line_up_service &s) { return s.fields.frequency; }},
    {"service_id", trait::service_id, [](const line_up_service &s) { return std::int64_t{s.fields.service_id}; }},
};

struct url_text {
  std::string_view name;
  trait which;
  std::string (*value)(const line_up_service &service);
};

constexpr url_text url_texts[] = {
    {"polarisation", trait::polarisation,
     [](const line_up_service &s) { return std::string(s.fields.polarisation != 0 ? "V" : "H"); }},
    {"name", trait::name, [](const line_up_service &s) { return s.name; }},
};

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
  const url_number *number = nullptr;
  bool is_hexadecimal = false;
  const url_text *named_text = nullptr;
};

std::string names_of_fields() {
  std::string names;
  for (const url_number &each : url_numbers) {
    names += std::string(each.name) + ", ";
  }
  for (const url_text &each : url_texts) {
    names += std::string(each.name) + (&each == std::end(url_texts) - 1 ? "" : ", ");
  }
  return names;
}

url_part part_of(std::string text, std::string_view field) {
  constexpr std::string_view hexadecimal = ":x";
  url_part part;
  part.text = std::move(text);
  part.is_hexadecimal = field.ends_with(hexadecimal);
  const std::string_view name = field.substr(0, field.size() - (part.is_hexadecimal ? hexadecimal.size() : 0));
  const auto *const number = std::ranges::find(url_numbers, name, &url_number::name);
  const auto *const named_text = std::ranges::find(url_texts, name, &url_text::name);
  part.number = number != std::end(url_numbers) ? number : nullptr;
  part.named_text = named_text != std::end(url_texts) && !part.is_hexadecimal ? named_text : nullptr;
  if (part.number == nullptr && part.named_text == nullptr) {
    throw std::runtime_error(fmt::format("--url: no field {}: there are {}, and numbers with :x in hexadecimal digits",
                                         shown(field), names_of_fields()));
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

std::string url_of(const line_up_service &service, const std::vector<url_part> &parts) {
  std::string url;
  for (const url_part &part : parts) {
    url += part.text;
    if (part.number != nullptr) {
      url += fmt::format(fmt::runtime(part.is_hexadecimal ? "{:x}" : "{}"), part.number->value(service));
    } else if (part.named_text != nullptr) {
      url += percent_encoded(part.named_text->value(service));
    }
  }
  return url;
}

// Quotes end a value and lines end an entry; there are no escapes.
std::string harmless_value(std::string_view text, loss_counts &lost) {
  std::string value(text);
  bool is_changed = false;
  for (char &c : value) {
    if (c == '"' || static_cast<unsigned char>(c) < ' ') {
      c = c == '"' ? '\'' : ' ';
      is_changed = true;
    }
  }
  lost.add("quotes and controls in names", is_changed ? 1 : 0);
  return value;
}

std::vector<std::string> groups_of(const line_up &list, bool is_by_favourites) {
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

std::string entry_of(const line_up_service &service, std::string_view group, loss_counts &lost) {
  const std::string name = harmless_value(service.name, lost);
  std::string text = "#EXTINF:-1";
  text += service.number ? number_text(*service.number) : "";
  text += fmt::format(" tvg-name=\"{}\"", name);
  text += group.empty() ? "" : fmt::format(" group-title=\"{}\"", harmless_value(group, lost));
  text += service.fields.service_type == SERVICE_TYPE_RADIO ? " radio=\"true\"" : "";
  return text + ',' + name + '\n';
}

// The entry's own, and the address's.
std::vector<trait> traits_carried(const std::vector<url_part> &parts, const write_options &options) {
  std::vector<trait> carried = {trait::number, trait::minor_number, trait::name,
                                options.is_by_favourites ? trait::favourites : trait::provider};
  for (const url_part &part : parts) {
    if (part.number != nullptr) {
      carried.push_back(part.number->which);
    } else if (part.named_text != nullptr) {
      carried.push_back(part.named_text->which);
    }
  }
  return carried;
}

}  // namespace

std::vector<made_file> write_m3u(const line_up &list, const write_options &options, loss_counts &lost) {
  const std::vector<url_part> parts = parts_of(options.url.empty() ? default_m3u_url : std::string_view(options.url));
  count_uncarried(list, traits_carried(parts, options), lost);
  const std::vector<std::string> groups = groups_of(list, options.is_by_favourites);
  std::string text = "#EXTM3U\n";
  for (std::size_t at = 0; at < list.services.size(); ++at) {
    text += entry_of(list.services[at], groups[at], lost) + url_of(list.services[at], parts) + '\n';
  }
  return {{"", text}};
}

bool is_like_m3u(const std::filesystem::path &path, std::string_view beginning) {
  return without_byte_order_mark(beginning).starts_with("#EXTM3U") || path.extension() == ".m3u" ||
         path.extension() == ".m3u8";
}

}  // namespace chlist
