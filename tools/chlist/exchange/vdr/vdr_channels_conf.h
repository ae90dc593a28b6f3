// Reads the text of a VDR channels.conf: one service a line, 13 fields separated by ':', and group separators. Knows
// nothing of the channel list: text goes in, services and the lines that could not be read come out.
//
// Older lists end their lines earlier, as VDR reads them still: at the service id, and those of 9 fields have no
// teletext PID in front of the CA id. What stands behind the 13th field VDR passes over, and so does this reader.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/loss_counts.h"

namespace chlist {

// One elementary stream as "pid[=language][@type]" gives it.
struct vdr_stream {
  std::uint16_t pid = 0;
  std::string language;
  std::uint8_t type = 0;  // stream type, 0 when not given
};

// One service line. A PID of 0 means that there is none; lists hold no such PIDs.
struct vdr_service {
  std::size_t line = 0;
  int lowest_number = 1;  // the largest ":@N" so far: the service's channel number is not below it
  std::string name;
  std::string short_name;
  std::string provider;
  std::uint32_t frequency_khz = 0;
  bool is_vertical = false;  // V, or R of circular polarisation
  bool is_circular = false;  // L or R
  std::string modulation;    // the parameters without the polarisation
  std::string source;        // e.g. "S19.2E", "C", "T"
  std::uint32_t symbol_rate = 0;
  std::uint16_t video_pid = 0;
  std::uint16_t pcr_pid = 0;  // 0 when not given apart from the video PID
  std::uint8_t video_type = 0;
  std::vector<vdr_stream> audio;
  std::vector<vdr_stream> dolby;
  std::uint16_t teletext_pid = 0;
  std::vector<vdr_stream> subtitles;
  std::vector<std::uint16_t> ca_ids;  // without 0, which is free to air
  std::uint16_t service_id = 0;
  std::uint16_t network_id = 0;
  std::uint16_t transport_id = 0;
  std::uint16_t radio_id = 0;
  bool has_more_fields = false;

  [[nodiscard]] bool has_video() const { return video_pid != 0; }
  [[nodiscard]] bool has_audio() const { return !audio.empty() || !dolby.empty(); }
  // Smaller ids than those that are broadcast choose a device: 1 to F by its number, 10 to FF by the user's own.
  static constexpr std::uint16_t least_broadcast_ca_id = 0x100;
  [[nodiscard]] bool is_scrambled() const {
    return std::ranges::any_of(ca_ids, [](std::uint16_t id) { return id >= least_broadcast_ca_id; });
  }
  [[nodiscard]] bool has_devices() const {
    return std::ranges::any_of(ca_ids, [](std::uint16_t id) { return id < least_broadcast_ca_id; });
  }
};

// A separator with a name, ":Name" or ":@100 Name": the services behind it, up to the next one, are a group.
struct vdr_group {
  std::string name;
  std::size_t first_service = 0;
};

// What stands behind the colon of a separator, "[@N][ name]".
struct vdr_separator {
  std::optional<int> number;
  std::string group;  // empty: the line begins none
};

// Throws bad_line when the number is none of a channel.
vdr_separator read_vdr_separator(std::string_view text);

struct vdr_line_up {
  std::vector<vdr_service> services;
  std::vector<skipped_line> skipped;
  std::vector<vdr_group> groups;
};

// Reads a whole file. Lines may end in LF or CRLF, be blank and be of any length; a byte order mark is passed over. A
// line that cannot be read is listed in `skipped` and ends nothing.
vdr_line_up parse_vdr_channels_conf(std::string_view text);

}  // namespace chlist
