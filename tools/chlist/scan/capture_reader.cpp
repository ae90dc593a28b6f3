// PIDs of tables are known from the standard and from the table of programs.
#include "chlist/scan/capture_reader.h"

#include <algorithm>
#include <cstring>

namespace chlist {
namespace {

constexpr std::uint16_t known_pids[] = {
    table_pid::program_association, table_pid::conditional_access, table_pid::network_information,
    table_pid::service_description, table_pid::time_and_date,      table_pid::atsc,
};

// ATSC A/65, table of table ids: the master guide and the virtual channels, of antennas and of cables.
bool is_atsc(std::uint8_t table_id) { return table_id >= 0xC7 && table_id <= 0xC9; }

bool is_of_program_map(std::uint16_t pid) { return pid > table_pid::largest_reserved && pid != null_packet_pid; }

// Programs may name another PID for the network information than the usual one; never that of another table.
bool is_of_network(std::uint16_t pid) { return pid == table_pid::network_information || is_of_program_map(pid); }

}  // namespace

capture_reader::capture_reader() {
  std::ranges::for_each(known_pids, [this](std::uint16_t pid) { follow(pid); });
}

void capture_reader::follow(std::uint16_t pid) {
  if (assemblers_[pid] == nullptr) {
    assemblers_[pid] = std::make_unique<section_assembler>();
  }
}

std::size_t capture_reader::take(byte_view bytes, bool is_end) {
  const std::size_t done = walk_.over(bytes, is_end, [this](const ts_packet &packet) {
    if (assemblers_[packet.pid()] != nullptr) {
      take(packet);
    }
  });
  bytes_ += done;
  return done;
}

void capture_reader::take(const ts_packet &packet) {
  const std::uint16_t pid = packet.pid();
  if (packet.has_error()) {
    ++lost_.broken_packets;
    return;
  }
  assemblers_[pid]->take(packet, lost_, [&](const section &sound) { take(sound, pid); });
}

bool capture_reader::is_program_on(std::uint16_t number, std::uint16_t pid) const {
  return programs_.contains({number, pid});
}

// A table counts on its own PID alone.
void capture_reader::take(const section &sound, std::uint16_t pid) {
  const std::uint8_t id = sound.table_id();
  const bool is_network = id == table_id::network_actual || id == table_id::network_other;
  const bool is_at_home = id == table_id::program_association  ? pid == table_pid::program_association
                          : id == table_id::conditional_access ? pid == table_pid::conditional_access
                          : id == table_id::program_map        ? is_program_on(sound.extension(), pid)
                          : id == table_id::time_and_date      ? pid == table_pid::time_and_date
                          : is_network ? pid == table_pid::network_information || is_program_on(0, pid)
                                       : pid == table_pid::service_description;
  has_atsc_ = has_atsc_ || (pid == table_pid::atsc && is_atsc(id));
  if (!is_at_home) {
    return;
  }
  lost_.beyond_memory += decoder_.take(sound) ? 0 : 1;
  if (id == table_id::program_association) {
    note_programs_of_itself(sound);
    follow_programs();
  }
}

// The library leaves programs out that the table has on its own PID.
void capture_reader::note_programs_of_itself(const section &sound) {
  constexpr std::size_t record_size = 4;
  for (byte_view rest = sound.content(); rest.size() >= record_size; rest = rest.subspan(record_size)) {
    if ((rest[2] & 0x1FU) == 0 && rest[3] == table_pid::program_association) {
      on_itself_.insert(static_cast<std::uint16_t>(rest[0] << 8U | rest[1]));
    }
  }
}

void capture_reader::follow_programs() {
  const auto &programs = decoder_.tables().programs;
  if (!programs) {
    return;
  }
  programs_.clear();
  misplaced_.clear();
  for (const program &each : programs->programs) {
    if (each.number == 0 ? is_of_network(each.pid) : is_of_program_map(each.pid)) {
      programs_.insert({each.number, each.pid});
      follow(each.pid);
    } else {
      misplaced_.push_back(each);
    }
  }
}

read_capture capture_reader::finish() {
  std::vector<program> misplaced = misplaced_;
  for (const std::uint16_t number : on_itself_) {
    misplaced.push_back({number, table_pid::program_association});
  }
  read_capture made{.tables = decoder_.take_tables(),
                    .lost = lost_,
                    .bytes = bytes_,
                    .packets = walk_.packets(),
                    .skipped_bytes = walk_.skipped_bytes(),
                    .misplaced = std::move(misplaced),
                    .missing_maps = {},
                    .has_atsc = has_atsc_,
                    .incomplete = decoder_.incomplete()};
  std::erase_if(made.tables.maps, [this](const auto &map) {
    return std::ranges::none_of(programs_, [&](const auto &each) { return each.first == map.first; });
  });
  for (const auto &[number, pid] : programs_) {
    if (number != 0 && !made.tables.maps.contains(number)) {
      made.missing_maps.push_back(number);
    }
  }
  return made;
}

read_capture read_whole(capture_input &input) {
  constexpr std::size_t buffer_size = std::size_t{1} << 20U;
  std::vector<std::uint8_t> buffer(buffer_size);
  capture_reader reader;
  std::size_t held = 0;
  for (bool is_end = false; !is_end;) {
    const std::size_t came = input.read(std::span(buffer).subspan(held));
    is_end = came == 0;
    held += came;
    const std::size_t done = reader.take(byte_view(buffer).first(held), is_end);
    std::memmove(buffer.data(), buffer.data() + done, held - done);
    held -= done;
  }
  return reader.finish();
}

}  // namespace chlist
