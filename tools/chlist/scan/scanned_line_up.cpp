// Which capture is of which transponder, and how the facts of a service become its record.
#include "chlist/scan/scanned_line_up.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <numeric>
#include <utility>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/fields/described.h"
#include "chlist/fields/pids.h"
#include "chlist/fields/service_types.h"
#include "chlist/scan/found_services.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

std::string shown_text(const std::string &encoded) { return decode_text(encoded).text; }

const service_description *own_services(const broadcast_tables &tables) {
  const service_description *own = nullptr;
  for (const service_description &each : tables.services) {
    const bool is_of_programs = tables.programs && tables.programs->ts_id == each.ts_id;
    own = each.is_actual && (own == nullptr || is_of_programs) ? &each : own;
  }
  return own;
}

const described_stream *find_stream_in(const network_or_bouquet &network, std::uint16_t ts_id,
                                       std::optional<std::uint16_t> network_id) {
  const auto found = std::ranges::find_if(network.streams, [&](const described_stream &each) {
    return each.ts_id == ts_id && (!network_id || each.original_network_id == *network_id);
  });
  return found != network.streams.end() ? &*found : nullptr;
}

// Its own network first, then the others.
std::vector<const network_or_bouquet *> networks_in_order(const broadcast_tables &tables) {
  std::vector<const network_or_bouquet *> order;
  std::ranges::transform(tables.networks, std::back_inserter(order), [](const auto &each) { return &each; });
  std::stable_partition(order.begin(), order.end(), [](const auto *each) { return each->is_actual; });
  return order;
}

// The delivery of a transport stream; when no network id is asked for, that of the first network that has one.
std::optional<delivery_facts> delivery_of(const broadcast_tables &tables, std::optional<std::uint16_t> network_id,
                                          std::uint16_t ts_id) {
  for (const network_or_bouquet *network : networks_in_order(tables)) {
    if (const described_stream *stream = find_stream_in(*network, ts_id, network_id); stream != nullptr) {
      if (auto made = delivery_in(stream->descriptors)) {
        return made;
      }
    }
  }
  return std::nullopt;
}

// Where the other transponders of the own network are.
std::optional<reception> reception_of_network(const broadcast_tables &tables) {
  for (const network_or_bouquet *network : networks_in_order(tables)) {
    for (const described_stream &stream : network->streams) {
      if (const auto made = delivery_in(stream.descriptors); made && network->is_actual) {
        return made->from;
      }
    }
  }
  return std::nullopt;
}

// Below it a frequency is that of a cable or an antenna.
constexpr std::uint32_t lowest_frequency_of_satellites = 950'000;

reception reception_tuned(const tuned_place &tuned) {
  const bool is_satellite = tuned.polarisation || tuned.frequency_khz >= lowest_frequency_of_satellites;
  return {is_satellite ? delivery::satellite : delivery::terrestrial};
}

void tune(delivery_facts &where, const tuned_place &tuned) {
  where.frequency_khz = tuned.frequency_khz;
  if (tuned.polarisation) {
    where.is_vertical = (*tuned.polarisation & 1U) != 0;
    where.tuned[tuning_parameter::polarisation] = polarisation_word(*tuned.polarisation);
  }
}

// The transport stream that a capture is of.
struct own_stream {
  scanned_stream stream;
  bool has_network_id = false;
};

std::optional<std::uint16_t> network_id_in_networks(const broadcast_tables &tables, std::uint16_t ts_id) {
  for (const network_or_bouquet *network : networks_in_order(tables)) {
    if (const described_stream *described = find_stream_in(*network, ts_id, std::nullopt); described != nullptr) {
      return described->original_network_id;
    }
  }
  return std::nullopt;
}

// Its ids. Without the services' own table the programs still tell the stream, and the networks where it comes from.
own_stream own_ids_in(const broadcast_tables &tables) {
  own_stream own;
  if (const service_description *services = own_services(tables); services != nullptr) {
    own.stream.ts_id = services->ts_id;
    own.stream.network_id = services->original_network_id;
    own.has_network_id = true;
  } else if (tables.programs) {
    const auto network_id = network_id_in_networks(tables, tables.programs->ts_id);
    own.stream.ts_id = tables.programs->ts_id;
    own.stream.network_id = network_id.value_or(0);
    own.has_network_id = network_id.has_value();
  }
  return own;
}

// What it is received from, as somebody says it, or else as the tables have it; without either, as it was tuned to.
std::string own_source(const capture &from, const scan_options &options, const std::optional<delivery_facts> &where) {
  if (!options.source.empty()) {
    return options.source;
  }
  if (where) {
    return source_of(where->from);
  }
  if (const auto around = reception_of_network(from.read.tables)) {
    return source_of(*around);
  }
  return from.tuned ? source_of(reception_tuned(*from.tuned)) : "";
}

own_stream own_stream_of(const capture &from, const scan_options &options) {
  const broadcast_tables &tables = from.read.tables;
  own_stream own = own_ids_in(tables);
  scanned_stream &stream = own.stream;
  // The tables of a cable network may call the stream's origin differently.
  const auto exactly = delivery_of(tables, stream.network_id, stream.ts_id);
  const auto found = exactly ? exactly : delivery_of(tables, std::nullopt, stream.ts_id);
  stream.where = found.value_or(delivery_facts{});
  stream.source = own_source(from, options, found);
  if (from.tuned) {
    tune(stream.where, *from.tuned);
  }
  return own;
}

std::string name_of_network(const broadcast_tables &tables) {
  for (const network_or_bouquet &network : tables.networks) {
    if (network.is_actual) {
      return shown_text(network_name_in(network.descriptors));
    }
  }
  return {};
}

// A name as it is on the air, cut to its slot.
bool set_encoded(name_slot_st &slot, std::string_view encoded) {
  const std::string_view cut = cut_text(encoded, sizeof slot.text);
  std::ranges::copy(cut, slot.text);
  slot.name_len = static_cast<std::uint16_t>(cut.size());
  return cut.size() == encoded.size();
}

void set_names(line_up_service &made, const service_facts &facts, loss_counts &lost) {
  const std::string &second = !facts.short_name.empty() ? facts.short_name : facts.name_elsewise;
  made.name = shown_text(facts.name);
  made.short_name = shown_text(second);
  made.provider = shown_text(facts.provider);
  const bool is_whole = set_encoded(made.fields.name[0], facts.name);
  lost.add("names beyond 96 bytes", set_encoded(made.fields.name[1], second) && is_whole ? 0 : 1);
  lost.add("names in further languages beside a short one",
           !facts.short_name.empty() && !facts.name_elsewise.empty() ? 1 : 0);
}

bool is_heard(const elementary_stream &stream) {
  return stream.kind == stream_kind::audio || stream.kind == stream_kind::dolby;
}

std::uint16_t pid_or_unset(std::uint16_t pid) { return is_stream_pid(pid) && pid != null_packet_pid ? pid : unset_pid; }

void add_system(std::vector<std::uint16_t> &ids, std::uint16_t id) {
  if (std::ranges::count(ids, id) == 0) {
    ids.push_back(id);
  }
}

// The streams of a program: the first video and the first audio are the record's, all of them what lies beyond it.
class map_reader {
 public:
  explicit map_reader(line_up_service &made) : made_(made) {}

  void read(const program_map &map) {
    made_.fields.pcr_pid = pid_or_unset(map.pcr_pid);
    const std::vector<conditional_access> of_program = conditional_access_in(map.descriptors);
    for (const conditional_access &each : of_program) {
      add_system(made_.further.ca_ids, each.system_id);
    }
    for (const program_stream &each : map.streams) {
      read(each);
    }
    if (made_.fields.video_ecm_pid == unset_pid && !of_program.empty()) {
      made_.fields.video_ecm_pid = pid_or_unset(of_program.front().pid);
    }
  }

 private:
  void read(const program_stream &each) {
    const elementary_stream stream = stream_of(each);
    const std::vector<conditional_access> access = conditional_access_in(each.descriptors);
    channel_st &fields = made_.fields;
    if (stream.kind == stream_kind::video && fields.video_pid == unset_pid) {
      fields.video_pid = pid_or_unset(stream.pid);
      fields.video_tag = component_tag_in(each.descriptors).value_or(unset_tag);
      fields.video_ecm_pid = access.empty() ? unset_pid : pid_or_unset(access.front().pid);
    } else if (is_heard(stream) && fields.audio_pid == unset_pid) {
      fields.audio_pid = pid_or_unset(stream.pid);
      fields.audio_tag = component_tag_in(each.descriptors).value_or(unset_tag);
    }
    made_.further.streams.push_back(stream);
    for (const conditional_access &system : access) {
      add_system(made_.further.ca_ids, system.system_id);
    }
  }

  line_up_service &made_;
};

// Where the tables say nothing of it, the streams do.
std::uint8_t type_of(const scanned_service &found, const service_facts &facts, const channel_st &fields) {
  if (facts.type || found.listed_type) {
    return basic_service_type(facts.type ? *facts.type : *found.listed_type);
  }
  return service_type_by_streams(fields);
}

line_up_service service_of(const scanned_service &found, const scanned_stream &stream, loss_counts &lost) {
  line_up_service made = broadcast_service(0);
  made.source = stream.source;
  made.fields.network_id = stream.network_id;
  made.fields.ts_id = stream.ts_id;
  made.fields.frequency = stream.where.frequency_khz;
  made.fields.polarisation = stream.where.is_vertical ? 1 : 0;
  made.fields.service_id = found.service_id;
  made.further.tuned = stream.where.tuned;
  const service_facts facts = found.described ? service_in(found.described->descriptors) : service_facts{};
  set_names(made, facts, lost);
  made.fields.pmt_pid = found.map_pid.value_or(unset_pid);
  if (found.map) {
    map_reader(made).read(*found.map);
  }
  made.fields.service_type = type_of(found, facts, made.fields);
  made.set_flag(CHANNEL_FLAG_FTA, (found.described && found.described->is_scrambled) || !made.further.ca_ids.empty());
  made.set_flag(CHANNEL_FLAG_SKIP, found.is_hidden);
  return made;
}

// Television keeps a number before radio does, and radio before everything else.
int rank_of(const line_up_service &service) {
  return service.fields.service_type == SERVICE_TYPE_TV ? 0 : service.fields.service_type == SERVICE_TYPE_RADIO ? 1 : 2;
}

class line_up_maker {
 public:
  line_up_maker(const std::vector<capture> &captures, const scan_options &options, loss_counts &lost)
      : captures_(captures), options_(options), lost_(lost) {}

  scanned_line_up made() {
    for (const capture &each : captures_) {
      add_own(each);
    }
    for (std::size_t at = 0; at < captures_.size(); ++at) {
      add_others(captures_[at], at);
    }
    for (std::size_t at = 0; at < captures_.size(); ++at) {
      add_networks(captures_[at], at);
    }
    make_services();
    return std::move(made_);
  }

 private:
  void add_own(const capture &from) {
    const own_stream own = own_stream_of(from, options_);
    capture_summary &summary = made_.captures.emplace_back();
    const broadcast_tables &tables = from.read.tables;
    tell_reading(from.read, summary);
    if (from.read.packets == 0) {
      summary.findings.emplace_back("no transport stream is in it");
      own_streams_.push_back(nowhere);
      return;
    }
    const std::size_t stream = found_.stream(own.stream);
    own_streams_.push_back(stream);
    const scanned_stream &known = found_.streams()[stream];
    summary.network_id = known.network_id;
    summary.ts_id = known.ts_id;
    summary.frequency_khz = known.where.frequency_khz;
    summary.is_vertical = known.where.is_vertical;
    summary.source = known.source;
    summary.network_name = name_of_network(tables);
    tell_missing(from, own, summary);
    if (const service_description *services = own_services(tables); services != nullptr) {
      found_.describe(stream, *services);
    }
    add_programs(stream, from.read);
  }

  void add_programs(std::size_t stream, const read_capture &read) {
    if (!read.tables.programs) {
      return;
    }
    for (const program &each : read.tables.programs->programs) {
      const bool is_misplaced =
          std::ranges::any_of(read.misplaced, [&](const program &other) { return other.number == each.number; });
      if (each.number == 0 || is_misplaced) {
        continue;
      }
      scanned_service &service = found_.service(stream, each.number);
      service.map_pid = each.pid;
      if (const auto map = read.tables.maps.find(each.number); map != read.tables.maps.end()) {
        service.map = map->second;
      }
    }
  }

  // Services that only the tables of another transponder tell of.
  void add_others(const capture &from, std::size_t at) {
    std::size_t unplaced = 0;
    for (const service_description &table : from.read.tables.services) {
      if (&table == own_services(from.read.tables)) {
        continue;
      }
      const auto where = delivery_of(from.read.tables, table.original_network_id, table.ts_id);
      const std::string source = !options_.source.empty() ? options_.source : where ? source_of(where->from) : "";
      const auto known = found_.find_stream(source, table.original_network_id, table.ts_id);
      const bool is_captured = known && std::ranges::count(own_streams_, *known) > 0;
      if (options_.leaves_others && !is_captured) {
        lost_.add("services of transponders of which there is no capture", table.services.size());
      } else if (is_captured) {
        found_.describe(*known, table);
      } else if (where && where->frequency_khz != 0) {
        found_.describe(found_.stream({table.original_network_id, table.ts_id, source, *where}), table);
      } else {
        unplaced += table.services.size();
      }
    }
    if (unplaced > 0) {
      made_.captures[at].findings.push_back(
          fmt::format("left out: {} of other transponders, whose frequency the network does not tell",
                      counted(unplaced, "service")));
    }
  }

  void add_networks(const capture &from, std::size_t at) {
    const std::string &source = made_.captures[at].source;
    for (const network_or_bouquet &network : from.read.tables.networks) {
      if (network.is_actual) {
        found_.add_network(source, network);
      }
    }
    for (const network_or_bouquet &bouquet : from.read.tables.bouquets) {
      found_.add_bouquet(source, bouquet);
    }
  }

  void make_services() {
    std::vector<line_up_service> services;
    std::vector<number_claim> claims;
    for (const scanned_service &each : found_.services()) {
      services.push_back(service_of(each, found_.streams()[each.stream], lost_));
      claims.push_back(each.claim);
      claims.back().rank = rank_of(services.back());
      unnamed_ += services.back().name.empty() ? 1 : 0;
    }
    const settled_numbers settled = settle(claims);
    lost_.leave_out("numbers that another service has, so that they are others now", settled.moved);
    lost_.leave_out("names, which the tables do not tell", unnamed_);
    put_in_order(std::move(services), settled.numbers);
  }

  // Services come by number, and then those without one as they were found.
  void put_in_order(std::vector<line_up_service> services, const std::vector<std::optional<int>> &given) {
    std::vector<std::size_t> order(services.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t at) { return given[at].value_or(largest_channel_number + 1); });
    std::vector<std::size_t> places(services.size());
    for (const std::size_t at : order) {
      places[at] = made_.list.services.size();
      line_up_service &service = made_.list.services.emplace_back(std::move(services[at]));
      if (given[at]) {
        service.number = channel_number{*given[at]};
      }
    }
    for (const scanned_bouquet &bouquet : found_.bouquets()) {
      favourite_group &group = made_.list.favourites.emplace_back();
      group.name = shown_text(bouquet.name);
      std::ranges::transform(bouquet.services, std::back_inserter(group.entries), [&](std::size_t at) {
        return line_up_entry{places[at], {}};
      });
    }
  }

  static void tell_missing(const capture &from, const own_stream &own, capture_summary &summary) {
    const broadcast_tables &tables = from.read.tables;
    if (!tables.programs) {
      summary.findings.emplace_back("the table of programs (PAT) did not come");
    }
    if (own_services(tables) == nullptr) {
      summary.findings.emplace_back("the table of services (SDT) did not come");
    }
    if (!own.has_network_id) {
      summary.findings.emplace_back("no table tells the original network id: it is 0");
    }
    if (own.stream.where.frequency_khz == 0) {
      summary.findings.emplace_back(
          "the network does not tell the frequency: its services have none (--tuned tells it)");
    }
  }

  const std::vector<capture> &captures_;
  const scan_options &options_;
  loss_counts &lost_;
  found_services found_;
  std::vector<std::size_t> own_streams_;  // by capture
  std::size_t unnamed_ = 0;
  scanned_line_up made_;
};

constexpr std::string_view polarisation_letters = "HVLR";
constexpr double khz_per_mhz = 1000;

}  // namespace

std::optional<tuned_place> read_tuned_place(std::string_view text) {
  tuned_place made;
  if (const std::size_t letter = text.empty() ? std::string_view::npos : polarisation_letters.find(text.back());
      letter != std::string_view::npos) {
    made.polarisation = static_cast<unsigned>(letter);
    text.remove_suffix(1);
  }
  double mhz = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), mhz, std::chars_format::fixed);
  constexpr double largest_mhz = 100'000;
  if (error != std::errc() || end != text.data() + text.size() || !(mhz >= 1 && mhz <= largest_mhz)) {
    return std::nullopt;
  }
  made.frequency_khz = static_cast<std::uint32_t>(std::lround(mhz * khz_per_mhz));
  return made;
}

scanned_line_up line_up_of(const std::vector<capture> &captures, const scan_options &options, loss_counts &lost) {
  return line_up_maker(captures, options, lost).made();
}

}  // namespace chlist
