// The reader of VDR's channels.conf. A field that cannot be read throws bad_line, which ends the line and no more.
#include "chlist/exchange/vdr/vdr_channels_conf.h"

#include <algorithm>
#include <array>
#include <utility>

#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/exchange/vdr/vdr_fields.h"

namespace chlist {
namespace {

constexpr std::size_t field_count = 13;
constexpr std::size_t fewest_fields = 9;
constexpr std::size_t place_of_teletext = 7;
using field_array = std::array<std::string_view, field_count>;

// What an older form has not is 0.
field_array fields_of(std::vector<std::string_view> parts) {
  if (parts.size() < fewest_fields) {
    throw bad_line("has " + std::to_string(parts.size()) + (parts.size() == 1 ? " field" : " fields") +
                   " instead of 9 to 13");
  }
  if (parts.size() == fewest_fields) {
    parts.insert(parts.begin() + place_of_teletext, "0");
  }
  parts.resize(field_count, "0");
  field_array fields;
  std::ranges::copy(parts, fields.begin());
  return fields;
}

// "name[,short name][;provider]": names may hold commas, so the last one parts them.
void read_names(std::string_view field, vdr_service &service) {
  const auto [names, provider] = split_at_first(field, ';');
  service.provider = readable_name(provider.value_or(std::string_view()));
  const std::size_t comma = names.rfind(',');
  service.name = readable_name(names.substr(0, comma));
  if (comma != std::string_view::npos) {
    service.short_name = readable_name(names.substr(comma + 1));
  }
}

// "vpid[+pcrpid][=type]". Old line-ups mark encrypted radio with a video PID of 1, which never carries video.
void read_video(std::string_view field, vdr_service &service) {
  const auto [pids, type] = split_at_first(field, '=');
  const auto [video, pcr] = split_at_first(pids, '+');
  const std::uint16_t pid = read_pid(video, "video PID");
  service.video_pid = pid == 1 ? std::uint16_t{0} : pid;
  service.pcr_pid = pcr ? read_pid(*pcr, "PCR PID") : std::uint16_t{0};
  service.video_type = type ? read_number<std::uint8_t>(*type, "video type") : std::uint8_t{0};
}

// "apid[,apid...][;dolby[,dolby...]]"
void read_audio(std::string_view field, vdr_service &service) {
  const auto [audio, dolby] = split_at_first(field, ';');
  service.audio = read_streams(audio, "audio PID");
  if (dolby) {
    service.dolby = read_streams(*dolby, "Dolby PID");
  }
}

// "tpid[;subtitles[,subtitles...]]"
void read_teletext(std::string_view field, vdr_service &service) {
  const auto [teletext, subtitles] = split_at_first(field, ';');
  service.teletext_pid = read_pid(teletext, "teletext PID");
  if (subtitles) {
    service.subtitles = read_streams(*subtitles, "subtitle PID");
  }
}

vdr_service read_service(std::string_view line) {
  const auto [names, frequency, parameters, source, symbol_rate, video, audio, teletext, ca_ids, service_id, network_id,
              transport_id, radio_id] = fields_of(split(line, ':'));
  vdr_service service;
  service.has_more_fields = std::ranges::count(line, ':') >= std::ssize(field_array());
  read_names(names, service);
  service.source = read_source_of_any_age(source, frequency);
  const bool is_satellite = service.source.front() == 'S';
  service.frequency_khz = read_frequency_khz(frequency, is_satellite);
  const vdr_parameters read = read_parameters(parameters, is_satellite);
  service.is_vertical = read.is_vertical;
  service.is_circular = read.is_circular;
  service.modulation = read.modulation;
  service.symbol_rate = read_number<std::uint32_t>(symbol_rate, "symbol rate");
  read_video(video, service);
  read_audio(audio, service);
  read_teletext(teletext, service);
  service.ca_ids = read_ca_ids(ca_ids);
  service.service_id = read_number<std::uint16_t>(service_id, "SID", 1);  // VDR refuses 0 as well
  service.network_id = read_number<std::uint16_t>(network_id, "NID");
  service.transport_id = read_number<std::uint16_t>(transport_id, "TID");
  service.radio_id = read_number<std::uint16_t>(radio_id, "RID");
  return service;
}

// Collects the lines of one file.
class line_reader {
 public:
  void read_line(std::size_t number, std::string_view line) {
    if (line.empty()) {
      return;
    }
    try {
      if (line.find('\0') != std::string_view::npos) {
        throw bad_line("holds a NUL byte");
      }
      if (line.front() == ':') {
        read_separator(line.substr(1));
      } else {
        line_up_.services.push_back(read_service(line));
        line_up_.services.back().line = number;
        line_up_.services.back().lowest_number = lowest_number_;
      }
    } catch (const bad_line &bad) {
      line_up_.skipped.push_back({number, bad.reason});
    }
  }

  vdr_line_up take() { return std::move(line_up_); }

 private:
  // N raises the numbers of the services that follow and never lowers them.
  void read_separator(std::string_view text) {
    const vdr_separator read = read_vdr_separator(text);
    lowest_number_ = std::max(lowest_number_, read.number.value_or(0));
    if (!read.group.empty()) {
      line_up_.groups.push_back({read.group, line_up_.services.size()});
    }
  }

  vdr_line_up line_up_;
  int lowest_number_ = 1;
};

}  // namespace

vdr_separator read_vdr_separator(std::string_view text) {
  vdr_separator made;
  if (text.size() > 1 && text.front() == '@') {
    text.remove_prefix(1);
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits > 0) {
      made.number = read_number<int>(text.substr(0, digits), "channel number", 0, largest_channel_number);
    }
    text.remove_prefix(digits);
  }
  made.group = readable_name(without_leading_blanks(text));
  return made;
}

vdr_line_up parse_vdr_channels_conf(std::string_view text) {
  line_reader made;
  text_lines lines(text);
  while (const auto line = lines.next()) {
    made.read_line(lines.number(), without_trailing_blanks(*line));
  }
  return made.take();
}

}  // namespace chlist
