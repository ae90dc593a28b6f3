// Both lists number their sources for themselves: those are paired first, and the services then.
#include "chlist/exchange/other_tuning.h"

#include <map>
#include <tuple>
#include <utility>

#include "chlist/compare/pairing.h"
#include "chlist/compare/sources.h"
#include "chlist/exchange/any_list.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

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
  line_up other = read_any_list(path).list;
  renumber_sources(other, pair_sources(list, other));
  for (const auto &[theirs, known] : pair_services(other, list).both) {
    take_further(list.services[known].further, other.services[theirs].further);
  }
  take_of_transponders(other, list);
}

}  // namespace chlist
