// From a line-up to the text of a lamedb, and the bouquets with it.
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/enigma2/bouquets.h"
#include "chlist/exchange/enigma2/lamedb.h"
#include "chlist/exchange/enigma2/lamedb_fields.h"
#include "chlist/exchange/enigma2/lamedb_tuning.h"
#include "chlist/exchange/reception.h"
#include "chlist/exchange/streams.h"
#include "chlist/fields/pids.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

constexpr std::uint32_t cable_namespace = 0xFFFF0000;
constexpr std::uint32_t terrestrial_namespace = 0xEEEE0000;

std::int64_t lamedb_units_per_khz(delivery by) { return by == delivery::terrestrial ? 1000 : 1; }

bool is_lamedb_frequency(const line_up_service &service) {
  constexpr std::int64_t largest = std::numeric_limits<std::uint32_t>::max();
  const std::int64_t khz = service.fields.frequency;
  return khz >= 0 && khz <= largest / lamedb_units_per_khz(reception_of(service).by);
}

// A comma ends a provider's name.
std::string provider_text(std::string_view provider) {
  std::string made = in_one_line(provider);
  std::ranges::replace(made, ',', ' ');
  return made;
}

std::string quoted_name(std::string_view name) {
  std::string made = in_one_line(name);
  std::ranges::replace(made, '"', '\'');
  return made;
}

// Positions of the sources: those that have none get the lowest that are free.
class positions {
 public:
  explicit positions(const line_up &list) {
    for (const line_up_service &service : list.services) {
      if (const auto position = reception_of(service).position) {
        used_.insert(*position);
      }
    }
  }

  int of(const line_up_service &service) {
    if (const auto position = reception_of(service).position) {
      return *position;
    }
    const auto [known, is_new] = given_.try_emplace({service.source, service.fields.net_index}, 0);
    if (is_new) {
      known->second = free_position();
    }
    return known->second;
  }

 private:
  int free_position() {
    while (used_.contains(last_) && last_ < positions_around_the_earth - 1) {
      ++last_;
    }
    used_.insert(last_);
    return last_;
  }

  std::set<int> used_;
  std::map<std::pair<std::string, std::uint8_t>, int> given_;
  int last_ = 1;
};

class lamedb_writer {
 public:
  lamedb_writer(const line_up &list, int version) : version_(version), positions_(list) {}

  void write(const line_up_service &service) {
    const delivery by = reception_of(service).by;
    const place from = {by, by == delivery::satellite ? positions_.of(service) : 0};
    references_.push_back({transponder_of(service, from), service.fields.service_id});
    write_service(service, references_.back());
  }

  [[nodiscard]] std::string text() const {
    if (version_ == 5) {
      return "eDVB services /5/\n" + transponders_ + services_;
    }
    return fmt::format("eDVB services /{}/\ntransponders\n{}end\nservices\n{}end\n", version_, transponders_,
                       services_);
  }

  [[nodiscard]] const std::vector<service_reference> &references() const { return references_; }

 private:
  // Where a service is received from; the position of a satellite alone.
  struct place {
    delivery by;
    int position;
  };

  // All that tells transponders apart: to a lamedb, the references alone do.
  using identity = std::tuple<std::string, std::uint8_t, std::uint16_t, std::uint16_t, std::int64_t, bool>;

  transponder_reference transponder_of(const line_up_service &service, const place &from) {
    const channel_st &fields = service.fields;
    const auto [known, is_new] = known_.try_emplace({service.source, fields.net_index, fields.ts_id, fields.network_id,
                                                     fields.frequency, fields.polarisation != 0});
    if (is_new) {
      known->second = free_reference({namespace_of(from), fields.ts_id, fields.network_id}, fields);
      write_transponder(known->second, service, from);
    }
    return known->second;
  }

  static std::uint32_t namespace_of(const place &from) {
    if (from.by == delivery::satellite) {
      return static_cast<std::uint32_t>(from.position) << 16U;
    }
    return from.by == delivery::cable ? cable_namespace : terrestrial_namespace;
  }

  // The lower half of the namespace is that of Enigma2's own: MHz and the polarisation, and on from there.
  transponder_reference free_reference(transponder_reference wanted, const channel_st &fields) {
    const std::uint32_t base = wanted.name_space;
    auto low = static_cast<std::uint16_t>((fields.frequency / 1000) & 0x7FFF);
    low = static_cast<std::uint16_t>(low | (fields.polarisation != 0 ? 0x8000U : 0U));
    for (int tried = 0; !used_.insert(wanted).second && tried <= 0xFFFF; ++tried) {
      wanted.name_space = base | low++;
    }
    return wanted;
  }

  void write_transponder(const transponder_reference &reference, const line_up_service &service, const place &from) {
    const std::string parameters = parameters_of(service, from);
    const char letter = from.by == delivery::satellite ? 's' : from.by == delivery::cable ? 'c' : 't';
    const char *form = version_ == 5 ? "t:{:08x}:{:04x}:{:04x},{}:{}\n" : "{:08x}:{:04x}:{:04x}\n\t{} {}\n/\n";
    transponders_ += fmt::format(fmt::runtime(form), reference.name_space, reference.transport_id, reference.network_id,
                                 letter, parameters);
  }

  [[nodiscard]] std::string parameters_of(const line_up_service &service, const place &from) const {
    const std::int64_t frequency =
        is_lamedb_frequency(service) ? service.fields.frequency * lamedb_units_per_khz(from.by) : 0;
    return fmt::format("{}:{}", frequency,
                       lamedb_parameters(service, from.by, signed_position(from.position), version_));
  }

  static int signed_position(int position) {
    return position > positions_around_the_earth / 2 ? position - positions_around_the_earth : position;
  }

  void write_service(const line_up_service &service, const service_reference &reference) {
    const transponder_reference &transponder = reference.transponder;
    const std::string ids =
        fmt::format("{:04x}:{:08x}:{:04x}:{:04x}:{}:0", reference.service_id, transponder.name_space,
                    transponder.transport_id, transponder.network_id, service.fields.service_type);
    if (version_ == 5) {
      services_ += fmt::format("s:{}:0,\"{}\",{}\n", ids, quoted_name(service.name), options_of(service));
    } else {
      services_ += fmt::format("{}\n{}\n{}\n", ids, in_one_line(service.name), options_of(service));
    }
  }

  static std::string options_of(const line_up_service &service) {
    std::string options = "p:" + provider_text(service.provider);
    const std::vector<elementary_stream> streams = streams_of(service);
    const auto add = [&](int kind, std::uint16_t pid) {
      options += is_stream_pid(pid) ? fmt::format(",c:{:02}{:04x}", kind, pid) : "";
    };
    const auto first = [&](stream_kind kind) {
      const auto found = std::ranges::find(streams, kind, &elementary_stream::kind);
      return found != streams.end() ? found->pid : std::uint16_t{0};
    };
    add(0, service.fields.video_pid);
    add(1, first(stream_kind::audio));
    add(2, first(stream_kind::teletext));
    add(3, service.fields.pcr_pid);
    add(4, first(stream_kind::dolby));
    return options + ca_ids_of(service);
  }

  // A CA id of 0 marks a scrambled service when nobody knows by what.
  static std::string ca_ids_of(const line_up_service &service) {
    if (!service.has_flag(CHANNEL_FLAG_FTA)) {
      return "";
    }
    std::string ids;
    for (const std::uint16_t id : service.further.ca_ids) {
      ids += fmt::format(",C:{:04x}", id);
    }
    return ids.empty() ? ",C:0000" : ids;
  }

  int version_;
  positions positions_;
  std::map<identity, transponder_reference> known_;
  std::set<transponder_reference> used_;
  std::vector<service_reference> references_;
  std::string transponders_;
  std::string services_;
};

}  // namespace

written_list write_lamedb(const line_up &list, int version) {
  lamedb_writer made(list, version);
  written_list result;
  for (const line_up_service &service : list.services) {
    result.services.push_back(result.services.size());
    made.write(service);
  }
  result.files = write_bouquets(list, made.references());
  result.files.insert(result.files.begin(), {version == 5 ? "lamedb5" : "lamedb", made.text()});
  return result;
}

}  // namespace chlist
