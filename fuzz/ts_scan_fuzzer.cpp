// Reading a transport stream and making a list of it. An input that begins with 'S' is sections, each with its PID and
// its size in front, which get the right length, CRC and packets; any other is the bytes of a capture. Read in two
// pieces it is the same.
#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "chlist/exchange/list_builder.h"
#include "chlist/scan/scanned_line_up.h"
#include "harness.h"

namespace {

constexpr std::size_t packet_payload = 184;

std::string packet_of(std::uint16_t pid, std::string_view payload, bool is_first, unsigned counter) {
  std::string packet = {'G', static_cast<char>((is_first ? 0x40U : 0U) | (pid >> 8U & 0x1FU)),
                        static_cast<char>(pid & 0xFFU), static_cast<char>(0x10U | (counter & 0x0FU))};
  packet += payload;
  packet.resize(chlist::packet_size, '\xFF');
  return packet;
}

chlist::byte_view view_of(std::string_view bytes) {
  return {reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size()};
}

std::string with_length_and_crc(std::string section) {
  const std::size_t length = section.size() - 3 + 4;
  section[1] = static_cast<char>((static_cast<unsigned char>(section[1]) & 0xF0U) | length >> 8U);
  section[2] = static_cast<char>(length & 0xFFU);
  const std::uint32_t crc = chlist::crc_of(view_of(section));
  for (int shift = 24; shift >= 0; shift -= 8) {
    section += static_cast<char>(crc >> static_cast<unsigned>(shift) & 0xFFU);
  }
  return section;
}

std::string stream_of_sections(std::string_view input) {
  std::string stream;
  unsigned counters[chlist::pid_count] = {};
  while (input.size() >= 4) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(input[at]); };
    const auto pid = static_cast<std::uint16_t>((byte(0) & 0x1FU) << 8U | byte(1));
    const std::size_t size = (byte(2) & 0x03U) << 8U | byte(3);
    input.remove_prefix(4);
    std::string section(input.substr(0, size));
    input.remove_prefix(section.size());
    if (section.size() < 3) {
      continue;
    }
    std::string rest = '\0' + with_length_and_crc(section);
    for (bool is_first = true; !rest.empty(); is_first = false) {
      const std::string payload = rest.substr(0, packet_payload);
      stream += packet_of(pid, payload, is_first, counters[pid]++);
      rest.erase(0, payload.size());
    }
  }
  return stream;
}

chlist::read_capture read(std::string_view stream, std::size_t first_piece) {
  chlist::capture_reader reader;
  const std::size_t done = reader.take(view_of(stream.substr(0, first_piece)), first_piece >= stream.size());
  if (first_piece < stream.size()) {
    reader.take(view_of(stream.substr(done)), true);
  }
  return reader.finish();
}

void check(const chlist::line_up &list) {
  std::set<int> numbers;
  for (const chlist::line_up_service &each : list.services) {
    fuzz::require(each.fields.name[0].name_len <= sizeof each.fields.name[0].text, "a name fits its slot");
    fuzz::require(each.fields.name[1].name_len <= sizeof each.fields.name[1].text, "a short name fits its slot");
    if (each.number) {
      fuzz::require(each.number->major > 0 && each.number->major <= chlist::largest_channel_number,
                    "numbers are shown");
      fuzz::require(numbers.insert(each.number->major).second, "no number is given twice");
    }
  }
  for (const chlist::favourite_group &group : list.favourites) {
    fuzz::require(
        std::ranges::all_of(group.entries, [&](const auto &each) { return each.service < list.services.size(); }),
        "bouquets hold services of the list");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char *>(data), size);
  const std::string stream = input.starts_with('S') ? stream_of_sections(input.substr(1)) : std::string(input);
  const chlist::read_capture whole = read(stream, stream.size());
  const chlist::read_capture halves = read(stream, stream.size() / 2);
  fuzz::require(whole.packets == halves.packets && whole.skipped_bytes == halves.skipped_bytes,
                "pieces have the same packets");
  fuzz::require(whole.tables.services.size() == halves.tables.services.size(), "pieces have the same tables");

  chlist::loss_counts lost;
  const chlist::scanned_line_up made =
      chlist::line_up_of({{"one", std::nullopt, whole}, {"two", chlist::read_tuned_place("11493H"), halves}}, {}, lost);
  check(made.list);
  const chlist::filled_list filled = chlist::fill_list(made.list, lost);
  fuzz::require(filled.counts.services <= made.list.services.size(), "no service comes from nowhere");
  return 0;
}
