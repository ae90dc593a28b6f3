// From a line-up to the text of the DVBv5 format. libdvbv5 wants " = " between key and value.
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>
#include <string>
#include <unordered_map>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/dvbv5/dvbv5.h"
#include "chlist/exchange/reception.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/fields/pids.h"
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

// What the list does not hold.
std::string_view assumed_settings(delivery by) {
  switch (by) {
    case delivery::satellite:
      return "\tSYMBOL_RATE = 27500000\n\tINNER_FEC = AUTO\n\tMODULATION = QPSK\n\tINVERSION = AUTO\n"
             "\tDELIVERY_SYSTEM = DVBS\n";
    case delivery::cable:
      return "\tSYMBOL_RATE = 6900000\n\tINNER_FEC = AUTO\n\tMODULATION = QAM/AUTO\n\tINVERSION = AUTO\n"
             "\tDELIVERY_SYSTEM = DVBC/ANNEX_A\n";
    case delivery::terrestrial:
      break;
  }
  return "\tBANDWIDTH_HZ = 8000000\n\tMODULATION = QAM/AUTO\n\tINVERSION = AUTO\n\tDELIVERY_SYSTEM = DVBT\n";
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
    write_pid("VIDEO_PID", fields.video_pid);
    write_pid("AUDIO_PID", fields.audio_pid);
    write_tuning(service);
  }

  std::string take_text() { return std::move(text_); }

 private:
  template <class... Arguments>
  void line(fmt::format_string<Arguments...> form, Arguments &&...arguments) {
    fmt::format_to(std::back_inserter(text_), form, std::forward<Arguments>(arguments)...);
  }

  static std::string minor_of(const channel_number &number) {
    return number.minor != 0 ? "." + std::to_string(number.minor) : "";
  }

  void write_pid(std::string_view key, std::uint16_t pid) {
    if (is_stream_pid(pid)) {
      line("\t{} = {}\n", key, pid);
    }
  }

  void write_tuning(const line_up_service &service) {
    reception from{reception_of(service).by};
    line("\tFREQUENCY = {}\n",
         is_section_frequency(service) ? service.fields.frequency * section_units_per_khz(from.by) : 0);
    if (from.by == delivery::satellite) {
      line("\tPOLARIZATION = {}\n", service.fields.polarisation == 0 ? "HORIZONTAL" : "VERTICAL");
      from.satellite_number = satellites_.of(service.source);
    }
    if (from.satellite_number) {
      line("\tSAT_NUMBER = {}\n", *from.satellite_number);
    }
    line("{}\n", assumed_settings(from.by));
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
