// Both lists number their sources for themselves: those are paired first, and the services then.
#include "chlist/exchange/other_tuning.h"

#include <map>
#include <tuple>
#include <utility>

#include "chlist/exchange/beside.h"
#include "chlist/exchange/formats.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/file_line_up.h"
#include "chlist/files/input_file.h"
#include "chlist/files/standard_streams.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/pairing.h"
#include "chlist/line_up/places.h"
#include "chlist/line_up/sources.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

bool is_channel_file_at(const fs::path &path) {
  std::error_code unseen;
  return !is_standard_stream(path) && fs::is_regular_file(path, unseen) && is_channel_file(read_beginning(path, 2));
}

line_up list_of_channel_file(const fs::path &path) {
  line_up list = line_up_in(channel_file(path));
  put_back(list, companion_beside(path).value_or(companion()));
  return list;
}

// As a channel list files it, so that its sources have indexes.
line_up list_of_format(const fs::path &path) {
  const list_source source = source_at(path);
  loss_counts unsaid;
  const line_up read = format_to_read({}, source).read(source, unsaid);
  const filled_list filled = fill_list(read, unsaid);
  line_up list = line_up_in_memory();
  const places_by_identity places(list);
  for (std::size_t at = 0; at < filled.filed.size(); ++at) {
    if (filled.filed[at] != nullptr) {
      list.services[places.of(channel::identity_of(*filled.filed[at]))].further = read.services[at].further;
    }
  }
  return list;
}

using transponder_key = std::tuple<std::uint8_t, std::uint16_t, std::uint16_t, std::uint8_t>;

transponder_key transponder_of(const line_up_service &service) {
  const channel::identity id = service.id();
  return {id.net_index, id.network_id, id.ts_id, id.polarisation};
}

void take_of_transponders(const line_up &other, line_up &list) {
  std::map<transponder_key, const line_up_service *> known;
  for (const line_up_service &each : other.services) {
    if (!each.further.tuned.empty()) {
      known.emplace(transponder_of(each), &each);
    }
  }
  for (line_up_service &each : list.services) {
    const auto found = known.find(transponder_of(each));
    if (each.further.tuned.empty() && found != known.end() &&
        channel::same_frequency(each.fields.frequency, found->second->fields.frequency)) {
      each.further.tuned = found->second->further.tuned;
    }
  }
}

}  // namespace

void take_tuning_of(const fs::path &path, line_up &list) {
  line_up other = is_channel_file_at(path) ? list_of_channel_file(path) : list_of_format(path);
  renumber_sources(other, pair_sources(list, other));
  for (const auto &[told, known] : pair_services(other, list).both) {
    take_further(list.services[known].further, other.services[told].further);
  }
  take_of_transponders(other, list);
}

}  // namespace chlist
