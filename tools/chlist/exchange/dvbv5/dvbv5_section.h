// One section of the DVBv5 format while its lines are read, and the service that it comes to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/exchange/reception.h"

namespace chlist {

class dvbv5_section {
 public:
  dvbv5_section(std::size_t line, std::string_view name);

  // Takes a line KEY = value. Throws bad_line when the value cannot be read, or there is none.
  void take(std::string_view line);

  // Whether a service is nothing without what the key of a line says.
  static bool is_essential(std::string_view line);

  // Throws bad_line when something that a service needs was not said.
  [[nodiscard]] line_up_service service() const;

  // What it says and the channel list has no place for.
  void count_losses(loss_counts &lost) const;

 private:
  struct key;
  static const key *find(std::string_view name);

  void take_frequency(std::string_view value);
  void take_delivery_system(std::string_view value);
  void take_polarisation(std::string_view value);
  void take_number(std::string_view value);

  void take_other_pids(std::string_view type, std::string_view value);

  [[nodiscard]] reception received() const;
  [[nodiscard]] further_facts further() const;

  std::size_t line_;
  std::string name_;
  std::optional<channel_number> number_;
  std::optional<std::uint16_t> service_id_;
  std::uint16_t network_id_ = 0;
  std::uint16_t transport_id_ = 0;
  std::optional<std::uint32_t> frequency_;  // in the format's unit
  std::optional<delivery> delivery_;
  std::optional<std::uint8_t> satellite_number_;
  char polarisation_ = 0;  // H, V, L or R
  std::vector<std::uint16_t> video_pids_;
  std::vector<std::uint16_t> audio_pids_;
  further_facts further_;
  std::vector<elementary_stream> other_streams_;
  bool has_other_pids_ = false;
  bool has_antenna_ = false;
  bool has_other_settings_ = false;
};

}  // namespace chlist
