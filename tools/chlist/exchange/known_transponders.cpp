// What the format says of a service itself stays.
#include "chlist/exchange/known_transponders.h"

#include <cstdint>
#include <map>
#include <tuple>

#include "chlist/compare/quality.h"
#include "chlist/fields/pids.h"

namespace chlist {
namespace {

using dvb_ids = std::tuple<std::uint16_t, std::uint16_t, std::uint16_t>;

dvb_ids ids_of(const line_up_service &service) {
  return {service.fields.network_id, service.fields.ts_id, service.fields.service_id};
}

void take_pids(channel_st &fields, const channel_st &known) {
  constexpr std::uint16_t channel_st::*pids[] = {&channel_st::pmt_pid, &channel_st::pcr_pid, &channel_st::video_pid,
                                                 &channel_st::audio_pid, &channel_st::video_ecm_pid};
  for (const auto pid : pids) {
    fields.*pid = fields.*pid == unset_pid ? known.*pid : fields.*pid;
  }
}

void take_transponder(line_up_service &service, const line_up_service &known) {
  service.fields.frequency = known.fields.frequency;
  service.fields.polarisation = known.fields.polarisation;
  service.source = service.source.empty() ? known.source : service.source;
  take_pids(service.fields, known.fields);
  // Playlists tell radio from everything else, and no more.
  if (is_radio(service) == is_radio(known)) {
    service.fields.service_type = known.fields.service_type;
  }
}

}  // namespace

void take_transponders(line_up &list, const line_up *known, loss_counts &lost) {
  std::map<dvb_ids, const line_up_service *> known_services;
  if (known != nullptr) {
    for (const line_up_service &service : known->services) {
      known_services.try_emplace(ids_of(service), &service);
    }
  }
  std::size_t unknown = 0;
  for (line_up_service &service : list.services) {
    const auto found = known_services.find(ids_of(service));
    if (service.fields.frequency == 0 && found != known_services.end()) {
      take_transponder(service, *found->second);
    }
    unknown += service.fields.frequency == 0 ? 1 : 0;
  }
  lost.leave_out("frequencies", unknown, "nobody can tune to the service; --like takes them from a list that has them");
}

}  // namespace chlist
