// The table of what records are known by.
#include "chlist/fields/identity_fields.h"

#include <fmt/format.h>

namespace chlist {
namespace {

template <auto Member, const field_words &Words>
json part_of(const channel::identity &id) {
  return shown_value(Words.values, static_cast<std::int64_t>(id.*Member));
}

using id = channel::identity;

constexpr record_field<channel::identity> table_of_identities[] = {
    {net_index_words, field_role::key, part_of<&id::net_index, net_index_words>},
    {network_id_words, field_role::key, part_of<&id::network_id, network_id_words>},
    {ts_id_words, field_role::key, part_of<&id::ts_id, ts_id_words>},
    {frequency_words, field_role::key, part_of<&id::frequency, frequency_words>},
    {polarisation_words, field_role::key, part_of<&id::polarisation, polarisation_words>},
    {service_id_words, field_role::key, part_of<&id::service_id, service_id_words>},
};

}  // namespace

std::string_view name_of(identity_part what) {
  constexpr std::string_view names[] = {"network", "transponder", "service"};
  return names[static_cast<std::size_t>(what)];
}

std::span<const record_field<channel::identity>> identity_fields(identity_part what) {
  constexpr std::size_t parts[] = {2, 5, 6};
  return std::span(table_of_identities).first(parts[static_cast<std::size_t>(what)]);
}

std::string polarisation_text(std::uint8_t polarisation) {
  return text_of_value(shown_value(ranges::letters_of_polarisation, polarisation));
}

std::string text_of(const channel::identity &id, identity_part what) {
  std::string text = fmt::format("net {}, network {}", id.net_index, id.network_id);
  if (what != identity_part::network) {
    text += fmt::format(", ts {}, {} {}", id.ts_id, id.frequency, polarisation_text(id.polarisation));
  }
  return what == identity_part::service ? fmt::format("{}, service {}", text, id.service_id) : text;
}

}  // namespace chlist
