// The single fields of a lamedb. Functions throw bad_line, whose reason names the field, when its text cannot be
// read.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "chlist/exchange/enigma2/service_reference.h"
#include "chlist/exchange/loss_counts.h"
#include "chlist/exchange/reception.h"

namespace chlist {

struct lamedb_transponder {
  reception from{};
  std::uint32_t frequency_khz = 0;
  std::uint8_t polarisation = 0;  // 0 horizontal, 1 vertical, 2 left, 3 right
  bool has_parts_of_a_khz = false;
  tuning tuned{};
};

// "NAMESPACE:TSID:ONID" in hexadecimal digits.
transponder_reference read_transponder_reference(std::string_view text);

// "s 11306000:27500000:0:...", and c, t or a; a separator of any kind may stand behind the letter.
lamedb_transponder read_transponder(std::string_view text);

struct lamedb_service {
  service_reference reference;
  std::uint8_t service_type = 0;
  int number = 0;
};

// "SID:NAMESPACE:TSID:ONID:TYPE:NUMBER[:SOURCE]": the first four hexadecimal, the others decimal.
lamedb_service read_service_line(std::string_view text);

// Whether a line begins as service lines do: so a lost line throws the reader off for no longer than it must.
bool is_like_service_line(std::string_view text);

// "p:provider,c:000191,C:0000,f:40": what they say goes into a service, what it has no place for is counted. Throws for
// none: what is wrong with the first that cannot be read is returned.
std::optional<std::string> read_options(std::string_view text, line_up_service &service, loss_counts &lost);

}  // namespace chlist
