// Two lines for each service: what it is, and its address.
#include "chlist/exchange/m3u/m3u.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "chlist/exchange/m3u/m3u_address.h"
#include "chlist/text/plain_text.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

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

// A provider has an attribute of its own: the title is that of the group.
std::string provider_text(const line_up_service &service) {
  return service.provider.empty() ? "" : fmt::format(" provider=\"{}\"", harmless_value(service.provider));
}

std::string entry_of(const line_up_service &service, const std::string &group) {
  const std::string name = harmless_value(service.name);
  std::string text = "#EXTINF:-1";
  text += service.number ? number_text(*service.number) : "";
  text += fmt::format(" tvg-name=\"{}\"", name);
  text += provider_text(service);
  text += group.empty() ? "" : fmt::format(" group-title=\"{}\"", harmless_value(group));
  text += service.fields.service_type == SERVICE_TYPE_RADIO ? " radio=\"true\"" : "";
  return text + ',' + name + '\n';
}

// The entry's own, and the address's.
std::vector<const field *> fields_carried(const address_template &addresses, const write_options &options) {
  std::vector<const field *> carried =
      fields_named(options.is_by_favourites ? "number,minor,name,provider,favourites" : "number,minor,name,provider");
  std::ranges::copy(addresses.fields(), std::back_inserter(carried));
  return carried;
}

}  // namespace

written_list write_m3u(const line_up &list, const write_options &options) {
  const address_template addresses(options.url.empty() ? default_m3u_url : std::string_view(options.url));
  const std::vector<std::string> groups = group_titles(list, options.is_by_favourites);
  written_list result;
  result.carried = fields_carried(addresses, options);
  std::string text = "#EXTM3U\n";
  for (std::size_t at = 0; at < list.services.size(); ++at) {
    result.services.push_back(at);
    text += entry_of(list.services[at], groups[at]) + addresses.filled_in(list, list.services[at]) + '\n';
  }
  result.files = {{"", std::move(text)}};
  return result;
}

bool is_like_m3u(const std::filesystem::path &path, std::string_view beginning) {
  return without_byte_order_mark(beginning).starts_with("#EXTM3U") || path.extension() == ".m3u" ||
         path.extension() == ".m3u8";
}

}  // namespace chlist
