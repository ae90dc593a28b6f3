// The lines of a channels.conf. What a line cannot say is counted against what the reader would make of it.
#include "chlist/exchange/vdr/vdr_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/service_traits.h"
#include "chlist/exchange/vdr/vdr_fields.h"
#include "chlist/exchange/vdr/vdr_line_up.h"
#include "chlist/fields/pids.h"

namespace chlist {
namespace {

constexpr std::string_view unknown_source = "S0.0E";

// Below 100 they name a device; VDR replaces this one by those that it receives.
constexpr std::string_view some_ca_id = "100";

// Of some of these a line says less than the list; that is counted line by line.
constexpr trait carried[] = {
    trait::network_id, trait::transport_id, trait::frequency,    trait::service_id, trait::place_outside_views,
    trait::number,     trait::name,         trait::short_name,   trait::provider,   trait::source,
    trait::scrambling, trait::service_type, trait::polarisation, trait::video_pid,  trait::audio_pid,
    trait::pcr_pid,    trait::net_index};

bool is_source(std::string_view text) {
  try {
    return read_source(text) == text;
  } catch (const bad_line &) {
    return false;
  }
}

// Characters that part fields or lines become others, but for ':', which VDR writes as '|'.
class name_writer {
 public:
  explicit name_writer(loss_counts &lost) : lost_(lost) {}

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

 private:
  std::string written(std::string text, std::string_view separators) {
    bool is_changed = false;
    for (char &c : text) {
      if (separators.find(c) != std::string_view::npos || static_cast<unsigned char>(c) < ' ') {
        c = separators.find(c) != std::string_view::npos ? '.' : ' ';
        is_changed = true;
      }
      is_changed = is_changed || c == '|';
      c = c == ':' ? '|' : c;
    }
    lost_.add("characters of names that part fields, or are controls", is_changed ? 1 : 0);
    return text;
  }

  loss_counts &lost_;
};

std::optional<std::string> frequency_of(const line_up_service &service, bool is_satellite, loss_counts &lost) {
  constexpr std::int64_t most_mhz = 20'000;
  constexpr std::int64_t khz_end = 1'000'000;
  constexpr std::int64_t most_khz = 4'294'967;
  const std::int64_t khz = service.fields.frequency;
  if (is_satellite) {
    const std::int64_t mhz = khz / 1000;
    lost.add("parts of a MHz of satellite frequencies", khz % 1000 != 0 ? 1 : 0);
    return mhz >= 1 && mhz <= most_mhz ? std::optional(std::to_string(mhz)) : std::nullopt;
  }
  // The reader tells units by size.
  if (khz < 1000 || khz > most_khz) {
    return std::nullopt;
  }
  return std::to_string(khz < khz_end ? khz : khz * 1000);
}

std::string pid_text(std::uint16_t pid, loss_counts &lost) {
  lost.add("PIDs beyond 1..8191", is_odd_pid(pid) ? 1 : 0);
  return is_stream_pid(pid) ? std::to_string(pid) : "0";
}

std::string video_text(const channel_st &fields, loss_counts &lost) {
  std::string text = pid_text(fields.video_pid, lost);
  if (fields.pcr_pid != unset_pid && fields.pcr_pid != fields.video_pid) {
    text += '+' + pid_text(fields.pcr_pid, lost);
  }
  return text;
}

// What the line says otherwise than the service does, by reading it back.
void count_changes(const line_up_service &service, const std::string &line, loss_counts &lost) {
  const vdr_line_up parsed = parse_vdr_channels_conf(line);
  if (parsed.services.size() != 1) {
    return;
  }
  const channel_st read = line_up_service_of(parsed.services.front()).fields;
  lost.add("service types", read.service_type != service.fields.service_type ? 1 : 0);
  lost.add("PCR PIDs that are not set", read.pcr_pid != unset_pid && service.fields.pcr_pid == unset_pid ? 1 : 0);
  lost.add("video PIDs of 1", service.fields.video_pid == 1 ? 1 : 0);
  lost.add("polarisations other than 0 and 1", read.polarisation != service.fields.polarisation ? 1 : 0);
}

class writer {
 public:
  explicit writer(loss_counts &lost) : lost_(lost) {}

  std::string write(const std::vector<const line_up_service *> &services) {
    for (const line_up_service *service : services) {
      if (const auto line = line_of(*service)) {
        raise_number(service->number ? service->number->major : 0);
        count_changes(*service, *line, lost_);
        count_net_index(*service);
        text_ += *line;
        ++next_number_;
      }
    }
    return std::move(text_);
  }

 private:
  std::optional<std::string> line_of(const line_up_service &service) {
    const channel_st &fields = service.fields;
    const std::string_view source = is_source(service.source) ? std::string_view(service.source) : unknown_source;
    const bool is_satellite = source.front() == 'S';
    if (fields.service_id == 0) {
      lost_.leave_out("services with the service id 0, which VDR refuses");
      return std::nullopt;
    }
    const auto frequency = frequency_of(service, is_satellite, lost_);
    if (!frequency) {
      lost_.leave_out("services whose frequency VDR cannot read");
      return std::nullopt;
    }
    lost_.add("symbol rates and modulation (not written: the list has none)");
    lost_.add("network names that are no source, written as S0.0E (see --source)", source == service.source ? 0 : 1);
    // No field of VDR's may be empty: without a polarisation it is told to find the inversion.
    const char *parameters = fields.polarisation != 0 ? "V" : (is_satellite ? "H" : "I999");
    return fmt::format("{}:{}:{}:{}:0:{}:{}:0:{}:{}:{}:{}:0\n", names_.names_of(service), *frequency, parameters,
                       source, video_text(fields, lost_), pid_text(fields.audio_pid, lost_),
                       service.has_flag(CHANNEL_FLAG_FTA) ? some_ca_id : std::string_view("0"), fields.service_id,
                       fields.network_id, fields.ts_id);
  }

  void raise_number(int number) {
    if (number > next_number_) {
      text_ += fmt::format(":@{}\n", number);
      next_number_ = number;
    }
    lost_.add("channel numbers that come out larger, since one is shown twice or below 1",
              number != next_number_ ? 1 : 0);
  }

  // An import numbers sources in the order of their appearance.
  void count_net_index(const line_up_service &service) {
    const auto index = sources_.emplace(service.source, sources_.size() + 1).first->second;
    lost_.add("network indexes", index != service.fields.net_index ? 1 : 0);
  }

  loss_counts &lost_;
  name_writer names_{lost_};
  std::map<std::string, std::size_t> sources_;
  std::string text_;
  int next_number_ = 1;
};

bool has_lower_number(const line_up_service *a, const line_up_service *b) {
  return a->number.value_or(channel_number{}).major < b->number.value_or(channel_number{}).major;
}

}  // namespace

std::vector<made_file> write_vdr(const line_up &list, loss_counts &lost) {
  count_uncarried(list, carried, lost);
  std::vector<const line_up_service *> services;
  for (const line_up_service &service : list.services) {
    if (service.is_listed) {
      services.push_back(&service);
    }
  }
  lost.leave_out("services that the ALL view does not show", list.services.size() - services.size());
  if (!std::ranges::is_sorted(services, has_lower_number)) {
    lost.add("positions in the ALL view other than by number", services.size());
    std::ranges::stable_sort(services, has_lower_number);
  }
  return {{"", writer(lost).write(services)}};
}

}  // namespace chlist
