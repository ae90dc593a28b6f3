// Values are those of the tool's columns; texts come whole from the line-up.
#include <channel/channel.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>

#include "chlist/exchange/csv/csv.h"
#include "chlist/exchange/csv/csv_columns.h"
#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exchange/service_traits.h"
#include "chlist/service/columns.h"

namespace chlist {
namespace {

struct text_column {
  std::string_view name;
  std::string line_up_service::*text;
};

constexpr text_column text_columns[] = {
    {"name", &line_up_service::name},         {"short_name", &line_up_service::short_name},
    {"provider", &line_up_service::provider}, {"genre", &line_up_service::genre},
    {"country", &line_up_service::country},   {"network_name", &line_up_service::source},
};

// What carries what, for the columns that are chosen.
struct carrying_column {
  std::string_view name;
  trait which;
};

constexpr carrying_column carrying[] = {
    {"network_id", trait::network_id},
    {"ts_id", trait::transport_id},
    {"frequency", trait::frequency},
    {"service_id", trait::service_id},
    {"number", trait::place_outside_views},
    {"number", trait::number},
    {"minor", trait::minor_number},
    {"name", trait::name},
    {"short_name", trait::short_name},
    {"provider", trait::provider},
    {"genre", trait::genre},
    {"country", trait::country},
    {"network_name", trait::source},
    {"locked", trait::lock},
    {"skipped", trait::skip},
    {"scrambled", trait::scrambling},
    {"data", trait::data_mark},
    {"flags", trait::lock},
    {"flags", trait::skip},
    {"flags", trait::scrambling},
    {"flags", trait::data_mark},
    {"flags", trait::other_flags},
    {"type", trait::service_type},
    {"service_type", trait::service_type},
    {"source_type", trait::source_type},
    {"polarisation", trait::polarisation},
    {"video_pid", trait::video_pid},
    {"audio_pid", trait::audio_pid},
    {"pcr_pid", trait::pcr_pid},
    {"pmt_pid", trait::pmt_pid},
    {"video_ecm_pid", trait::ecm_pid},
    {"video_tag", trait::video_tag},
    {"audio_tag", trait::audio_tag},
    {"order_key", trait::order_key},
    {"net_index", trait::net_index},
    {favourites_column, trait::favourites},
};

using columns = std::vector<const column *>;

bool is_among(const columns &written, std::string_view name) {
  return std::ranges::find(written, name, &column::name) != written.end();
}

// All that an import takes, unless some are named.
columns chosen(const std::string &names) {
  if (!names.empty()) {
    return columns_named(names);
  }
  columns all;
  for (const column &each : all_columns()) {
    if (std::ranges::find(csv_columns(), each.name, &csv_column::name) != csv_columns().end()) {
      all.push_back(&each);
    }
  }
  return all;
}

// The services of the list in memory in the order of the line-up.
std::vector<listed_service> services_in_order() {
  std::vector<listed_service> services;
  std::unordered_set<const channel_st *> seen;
  for (const listed_service &listed : listed_in(VIEW_ALL)) {
    if (listed.service != nullptr && seen.insert(listed.service).second) {
      services.push_back(listed);
    }
  }
  for (const channel_st *service : services_of(*get_channel_list())) {
    if (seen.insert(service).second) {
      services.push_back({nullptr, service, 0});
    }
  }
  return services;
}

class writer {
 public:
  explicit writer(const line_up &list) : list_(list), groups_(list.services.size()) {
    for (const favourite_group &group : list.favourites) {
      for (const favourite_group::entry &entry : group.entries) {
        std::string &names = groups_[entry.service];
        names += (names.empty() ? "" : std::string(1, csv_group_separator)) + group.name;
      }
    }
  }

  std::string write(const columns &shown) {
    std::vector<std::string> cells;
    std::ranges::transform(shown, std::back_inserter(cells),
                           [](const column *each) { return std::string(each->name); });
    std::string text = csv_line(cells);
    const std::vector<listed_service> services = services_in_order();
    for (std::size_t i = 0; i < services.size(); ++i) {
      cells.clear();
      for (const column *each : shown) {
        cells.push_back(cell_of(*each, services[i], i));
      }
      text += csv_line(cells);
    }
    return text;
  }

 private:
  [[nodiscard]] std::string cell_of(const column &shown, const listed_service &listed, std::size_t at) const {
    if (shown.name == favourites_column) {
      return groups_[at];
    }
    if (shown.name == "number" && listed.entry == nullptr) {
      return std::string(csv_unlisted);
    }
    const auto *const text = std::ranges::find(text_columns, shown.name, &text_column::name);
    return text != std::end(text_columns) ? list_.services[at].*text->text : text_of_value(shown.value(listed));
  }

  const line_up &list_;
  std::vector<std::string> groups_;
};

// A minor number is read behind its major one only.
std::vector<trait> traits_carried(const columns &written) {
  std::vector<trait> carried;
  for (const carrying_column &each : carrying) {
    if (is_among(written, each.name) && (each.which != trait::minor_number || is_among(written, "number"))) {
      carried.push_back(each.which);
    }
  }
  return carried;
}

void count_services(const line_up &list, loss_counts &lost) {
  constexpr std::int64_t largest_frequency = std::numeric_limits<std::uint32_t>::max();
  for (const line_up_service &service : list.services) {
    const std::int64_t frequency = service.fields.frequency;
    lost.add("frequencies outside 0..4294967295", frequency < 0 || frequency > largest_frequency ? 1 : 0);
    lost.add("polarisations other than 0 and 1", service.fields.polarisation > 1 ? 1 : 0);
    lost.add("network indexes of 0", service.fields.net_index == 0 ? 1 : 0);
  }
}

// Groups come up, and their entries follow each other, in the order of the services.
void count_favourites(const line_up &list, loss_counts &lost) {
  std::unordered_set<std::string_view> names;
  for (const favourite_group &group : list.favourites) {
    lost.add("favourite groups of one name, which become one", names.insert(group.name).second ? 0 : 1);
    lost.add("favourite groups without services", group.entries.empty() ? 1 : 0);
    lost.add("favourite groups without a name, or with ';' in it",
             group.name.empty() || group.name.find(csv_group_separator) != std::string::npos ? 1 : 0);
    lost.add("favourite groups in an order of their own",
             std::ranges::is_sorted(group.entries, {}, &favourite_group::entry::service) ? 0 : 1);
  }
  const auto first = [](const favourite_group &group) {
    return group.entries.empty() ? std::size_t{0} : group.entries.front().service;
  };
  lost.add("places of favourite groups among each other",
           std::ranges::is_sorted(list.favourites, {}, first) ? 0 : list.favourites.size());
}

}  // namespace

std::vector<made_file> write_csv(const line_up &list, const write_options &options, loss_counts &lost) {
  const columns written = chosen(options.columns);
  count_uncarried(list, traits_carried(written), lost);
  count_services(list, lost);
  if (is_among(written, favourites_column)) {
    count_favourites(list, lost);
  }
  return {{"", writer(list).write(written)}};
}

}  // namespace chlist
