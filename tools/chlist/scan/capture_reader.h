// Reads a capture: of all packets only those of tables go further, so that pictures cost nothing.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <set>
#include <vector>

#include "chlist/scan/capture_input.h"
#include "chlist/scan/packets.h"
#include "chlist/scan/sections.h"
#include "chlist/scan/table_decoder.h"

namespace chlist {

// What came of reading a capture.
struct read_capture {
  broadcast_tables tables;
  reading_losses lost;
  std::uint64_t bytes = 0;
  std::uint64_t packets = 0;
  std::uint64_t skipped_bytes = 0;          // that belong to no packet
  std::vector<program> misplaced;           // programs whose map would be where other tables are
  std::vector<std::uint16_t> missing_maps;  // programs whose map did not come
  bool has_atsc = false;
  std::vector<incomplete_table> incomplete;
};

class capture_reader {
 public:
  capture_reader();

  // Gives how many bytes are done with, as packet_walk does.
  std::size_t take(byte_view bytes, bool is_end);
  // Hands over what was read when the capture has ended.
  read_capture finish();

 private:
  void take(const ts_packet &packet);
  void take(const section &sound, std::uint16_t pid);
  void follow(std::uint16_t pid);
  void note_programs_of_itself(const section &sound);
  void follow_programs();
  [[nodiscard]] bool is_program_on(std::uint16_t number, std::uint16_t pid) const;

  packet_walk walk_;
  std::array<std::unique_ptr<section_assembler>, pid_count> assemblers_;  // of the PIDs that are followed
  table_decoder decoder_;
  std::set<std::pair<std::uint16_t, std::uint16_t>> programs_;  // numbers and PIDs
  std::vector<program> misplaced_;
  std::set<std::uint16_t> on_itself_;  // numbers of programs
  reading_losses lost_;
  std::uint64_t bytes_ = 0;
  bool has_atsc_ = false;
};

// Reads to the end of the input. Throws std::system_error.
read_capture read_whole(capture_input &input);

}  // namespace chlist
