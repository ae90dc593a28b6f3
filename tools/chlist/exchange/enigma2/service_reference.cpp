// Reading and writing references.
#include "chlist/exchange/enigma2/service_reference.h"

#include <fmt/format.h>

#include <array>

#include "chlist/exchange/field_reading.h"

namespace chlist {
namespace {

constexpr std::size_t fields_of_a_reference = 10;

}  // namespace

bouquet_reference read_bouquet_reference(std::string_view text) {
  std::array<std::string_view, fields_of_a_reference> fields;
  std::optional<std::string_view> rest = text;
  for (std::string_view &field : fields) {
    if (!rest) {
      throw bad_line("reference " + quoted(text) + " has fewer than 10 fields");
    }
    const auto [first, others] = split_at_first(*rest, ':');
    field = first;
    rest = others;
  }
  bouquet_reference made;
  made.kind = read_number<unsigned>(fields[0], "kind");
  made.flags = read_number<unsigned>(fields[1], "flags");
  if (made.is_service()) {
    static_cast<void>(read_hexadecimal<std::uint32_t>(fields[2], "service type"));
    made.service.service_id = read_hexadecimal<std::uint16_t>(fields[3], "SID");
    made.service.transponder.transport_id = read_hexadecimal<std::uint16_t>(fields[4], "TSID");
    made.service.transponder.network_id = read_hexadecimal<std::uint16_t>(fields[5], "ONID");
    made.service.transponder.name_space = read_hexadecimal<std::uint32_t>(fields[6], "namespace");
  }
  const auto [path, name] = split_at_first(rest.value_or(std::string_view()), ':');
  made.path = path;
  made.has_name = name && !name->empty();
  return made;
}

std::string bouquet_line(const service_reference &service, std::uint8_t service_type) {
  const transponder_reference &transponder = service.transponder;
  return fmt::format("1:0:{:X}:{:X}:{:X}:{:X}:{:X}:0:0:0:", service_type, service.service_id, transponder.transport_id,
                     transponder.network_id, transponder.name_space);
}

}  // namespace chlist
