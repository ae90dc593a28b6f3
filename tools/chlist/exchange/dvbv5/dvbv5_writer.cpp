// From a line-up to the text of the DVBv5 format. libdvbv5 wants " = " between key and value.
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <unordered_map>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/dvbv5/dvbv5.h"
#include "chlist/exchange/dvbv5/dvbv5_tuning.h"
#include "chlist/exchange/reception.h"
#include "chlist/exchange/streams.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

// One less than what stands for no frequency.
constexpr std::int64_t largest_frequency = std::numeric_limits<std::uint32_t>::max() - 1;

std::int64_t section_units_per_khz(delivery by) { return by == delivery::satellite ? 1 : 1000; }

bool is_section_frequency(const line_up_service &service) {
  const std::int64_t khz = service.fields.frequency;
  return khz >= 0 && khz <= largest_frequency / section_units_per_khz(reception_of(service).by);
}

bool is_satellite(const line_up_service &service) { return reception_of(service).by == delivery::satellite; }

// Names end at a bracket, and blanks in front of them are passed over. A section [CHANNEL] has no name.
std::string section_name(std::string_view name) {
  std::string made = in_one_line(name);
  std::ranges::replace(made, '[', '(');
  std::ranges::replace(made, ']', ')');
  made.erase(0, made.size() - without_leading_blanks(made).size());
  return made.empty() ? " " : made;
}

bool is_number(const channel_number &number) {
  const auto is_within = [](int part) { return part >= 0 && part <= largest_channel_number; };
  return is_within(number.major) && is_within(number.minor);
}

bool has_number(const line_up_service &service) { return service.number && service.is_listed; }

// Satellites that no number tells apart get the smallest that is free, when there are several.
class satellite_numbers {
 public:
  explicit satellite_numbers(const line_up &list) {
    for (const line_up_service &service : list.services) {
      if (is_satellite(service) && !numbers_.contains(service.source)) {
        add(service.source, reception_of(service).satellite_number);
      }
    }
    number_the_others();
  }

  // None of the only one, and of those for which none is left.
  [[nodiscard]] std::optional<int> of(const std::string &source) const { return numbers_.at(source); }

 private:
  void add(const std::string &source, std::optional<int> number) {
    numbers_[source] = number;
    if (number) {
      used_.insert(*number);
    } else {
      unnumbered_.push_back(source);
    }
  }

  void number_the_others() {
    if (numbers_.size() < 2) {
      return;
    }
    int free = 0;
    for (const std::string &source : unnumbered_) {
      while (used_.contains(free)) {
        ++free;
      }
      if (free > largest_satellite_number) {
        return;
      }
      numbers_[source] = free++;
    }
  }

  std::unordered_map<std::string, std::optional<int>> numbers_;
  std::set<int> used_;
  std::vector<std::string> unnumbered_;
};

std::string_view polarisation_word(const line_up_service &service) {
  const bool is_vertical = service.fields.polarisation != 0;
  if (value_of(service.further, tuning_parameter::polarisation) == (is_vertical ? "right" : "left")) {
    return is_vertical ? "RIGHT" : "LEFT";
  }
  return is_vertical ? "VERTICAL" : "HORIZONTAL";
}

class section_writer {
 public:
  explicit section_writer(const line_up &list) : satellites_(list) {}

  void write(const line_up_service &service) {
    const channel_st &fields = service.fields;
    line("[{}]\n", section_name(service.name));
    if (has_number(service) && is_number(*service.number)) {
      line("\tVCHANNEL = {}{}\n", service.number->major, minor_of(*service.number));
    }
    line("\tSERVICE_ID = {}\n\tNETWORK_ID = {}\n\tTRANSPORT_ID = {}\n", fields.service_id, fields.network_id,
         fields.ts_id);
    const std::vector<elementary_stream> streams = streams_of(service);
    write_pids("VIDEO_PID", streams, {stream_kind::video});
    write_pids("AUDIO_PID", streams, {stream_kind::audio, stream_kind::dolby});
    write_other_pids(streams);
    write_tuning(service);
  }

  std::string take_text() { return std::move(text_); }

 private:
  template <class... Arguments>
  void line(fmt::format_string<Arguments...> form, Arguments &&...arguments) {
    text_ += fmt::format(form, std::forward<Arguments>(arguments)...);
  }

  static std::string minor_of(const channel_number &number) {
    return number.minor != 0 ? "." + std::to_string(number.minor) : "";
  }

  void write_pids(std::string_view key, const std::vector<elementary_stream> &streams,
                  std::initializer_list<stream_kind> of_kinds) {
    std::string pids;
    for (const elementary_stream &each : streams) {
      const bool is_one = std::ranges::find(of_kinds, each.kind) != of_kinds.end();
      pids += is_one ? fmt::format(" {}", each.pid) : "";
    }
    if (!pids.empty()) {
      line("\t{} ={}\n", key, pids);
    }
  }

  // Teletext and subtitles are private streams: ISO/IEC 13818-1, stream type 6.
  void write_other_pids(const std::vector<elementary_stream> &streams) {
    constexpr int private_streams = 6;
    std::map<int, std::string> pids;
    for (const elementary_stream &each : streams) {
      if (each.kind == stream_kind::teletext || each.kind == stream_kind::subtitles) {
        pids[private_streams] += fmt::format(" {}", each.pid);
      } else if (each.kind == stream_kind::other) {
        pids[each.type] += fmt::format(" {}", each.pid);
      }
    }
    for (const auto &[type, of_type] : pids) {
      line("\tPID_{:02x} ={}\n", type, of_type);
    }
  }

  void write_tuning(const line_up_service &service) {
    reception from{reception_of(service).by};
    line("\tFREQUENCY = {}\n",
         is_section_frequency(service) ? service.fields.frequency * section_units_per_khz(from.by) : 0);
    if (from.by == delivery::satellite) {
      line("\tPOLARIZATION = {}\n", polarisation_word(service));
      from.satellite_number = satellites_.of(service.source);
    }
    if (from.satellite_number) {
      line("\tSAT_NUMBER = {}\n", *from.satellite_number);
    }
    line("{}\n", tuning_lines(service));
  }

  satellite_numbers satellites_;
  std::string text_;
};

}  // namespace

written_list write_dvbv5(const line_up &list, const write_options & /*options*/) {
  section_writer made(list);
  written_list result;
  for (const line_up_service &service : list.services) {
    result.services.push_back(result.services.size());
    made.write(service);
  }
  result.files = {{"", made.take_text()}};
  return result;
}

}  // namespace chlist
