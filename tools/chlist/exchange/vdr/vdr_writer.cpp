// The lines of a channels.conf.
#include "chlist/exchange/vdr/vdr.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/vdr/vdr_fields.h"
#include "chlist/exchange/vdr/vdr_tuning.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

constexpr std::string_view unknown_source = "S0.0E";

bool is_source(std::string_view text) {
  try {
    return read_source(text) == text;
  } catch (const bad_line &) {
    return false;
  }
}

// Characters that part fields or lines become others, ':' as VDR writes it.
std::string written(std::string_view given, std::string_view separators) {
  std::string text = in_one_line(given);
  for (char &c : text) {
    const bool parts_fields = separators.find(c) != std::string_view::npos;
    c = parts_fields ? '.' : c == ':' ? '|' : c;
  }
  return text;
}

std::string names_of(const line_up_service &service) {
  std::string text = written(service.name, ";");
  const std::string short_name = written(service.short_name, ";,");
  // The last comma parts the names.
  if (!short_name.empty() || text.find(',') != std::string::npos || text.empty()) {
    text += ',' + short_name;
  }
  if (!service.provider.empty()) {
    text += ';' + written(service.provider, "");
  }
  return text;
}

std::optional<std::string> frequency_of(const line_up_service &service, bool is_satellite) {
  constexpr std::int64_t most_mhz = 20'000;
  constexpr std::int64_t khz_end = 1'000'000;
  constexpr std::int64_t most_khz = 4'294'967;
  const std::int64_t khz = service.fields.frequency;
  if (is_satellite) {
    const std::int64_t mhz = khz / 1000;
    return mhz >= 1 && mhz <= most_mhz ? std::optional(std::to_string(mhz)) : std::nullopt;
  }
  // The reader tells units by size.
  if (khz < 1000 || khz > most_khz) {
    return std::nullopt;
  }
  return std::to_string(khz < khz_end ? khz : khz * 1000);
}

class line_writer {
 public:
  explicit line_writer(const line_up &list) : list_(list) {}

  written_list write() {
    for (const std::size_t place : listed_by_number()) {
      const line_up_service &service = list_.services[place];
      if (const auto line = line_of(service)) {
        raise_number(service.number ? service.number->major : 0);
        text_ += *line;
        ++next_number_;
        made_.services.push_back(place);
      }
    }
    made_.files = {{"", std::move(text_)}};
    return std::move(made_);
  }

 private:
  // Numbers rise in a channels.conf.
  std::vector<std::size_t> listed_by_number() {
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < list_.services.size(); ++place) {
      if (list_.services[place].is_listed) {
        places.push_back(place);
      }
    }
    made_.left_out.leave_out("services that the ALL view does not show", list_.services.size() - places.size());
    std::ranges::stable_sort(
        places, {}, [&](std::size_t place) { return list_.services[place].number.value_or(channel_number{}).major; });
    return places;
  }

  std::optional<std::string> line_of(const line_up_service &service) {
    const channel_st &fields = service.fields;
    const std::string_view source = is_source(service.source) ? std::string_view(service.source) : unknown_source;
    const bool is_satellite = source.front() == 'S';
    if (fields.service_id == 0) {
      made_.left_out.leave_out("services with the service id 0, which VDR refuses");
      return std::nullopt;
    }
    const auto frequency = frequency_of(service, is_satellite);
    if (!frequency) {
      made_.left_out.leave_out("services whose frequency VDR cannot read");
      return std::nullopt;
    }
    return fmt::format("{}:{}:{}:{}:{}:{}:{}:{}:{}:{}:{}:{}:0\n", names_of(service), *frequency,
                       parameters_text(service, is_satellite), source, symbol_rate_text(service), video_text(service),
                       audio_text(service), teletext_text(service), ca_ids_text(service), fields.service_id,
                       fields.network_id, fields.ts_id);
  }

  void raise_number(int number) {
    if (number > next_number_) {
      text_ += fmt::format(":@{}\n", number);
      next_number_ = number;
    }
  }

  const line_up &list_;
  written_list made_;
  std::string text_;
  int next_number_ = 1;
};

}  // namespace

written_list write_vdr(const line_up &list, const write_options & /*options*/) { return line_writer(list).write(); }

}  // namespace chlist
