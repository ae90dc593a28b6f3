// The generators take and give records of C.
#include "support/transport_streams.h"

// These headers need each other in this order.
#include <dvbpsi/dvbpsi.h>
//
#include <dvbpsi/descriptor.h>
#include <dvbpsi/psi.h>
//
#include <dvbpsi/demux.h>
//
#include <dvbpsi/cat.h>
#include <dvbpsi/nit.h>
#include <dvbpsi/pat.h>
#include <dvbpsi/pmt.h>
#include <dvbpsi/sdt.h>
#include <dvbpsi/tot.h>
//
#include <dvbpsi/dr.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace broadcast {
namespace {

constexpr std::size_t packet_size = 188;
constexpr int programs_in_a_section = 253;

struct handle_deleter {
  void operator()(dvbpsi_t *handle) const { dvbpsi_delete(handle); }
};

dvbpsi_t *library() {
  static const std::unique_ptr<dvbpsi_t, handle_deleter> handle(dvbpsi_new(nullptr, DVBPSI_MSG_NONE));
  return handle.get();
}

std::uint8_t *bytes_of(const std::string &text) {
  return const_cast<std::uint8_t *>(reinterpret_cast<const std::uint8_t *>(text.data()));
}

std::uint8_t size_of(const std::string &text) { return static_cast<std::uint8_t>(text.size()); }

sections taken(dvbpsi_psi_section_t *first) {
  sections all;
  for (const dvbpsi_psi_section_t *each = first; each != nullptr; each = each->p_next) {
    const std::size_t size = std::size_t{3} + each->i_length;
    all.emplace_back(reinterpret_cast<const char *>(each->p_data), size);
  }
  dvbpsi_DeletePSISections(first);
  return all;
}

descriptor taken(dvbpsi_descriptor_t *made) {
  descriptor result{made->i_tag, {reinterpret_cast<const char *>(made->p_data), made->i_length}};
  dvbpsi_DeleteDescriptors(made);
  return result;
}

template <class Add>
void add_all(const descriptors &about, const Add &add) {
  for (const descriptor &each : about) {
    add(each.tag, size_of(each.data), bytes_of(each.data));
  }
}

sections network_of(std::uint8_t table_id, std::uint16_t id, const descriptors &about,
                    const std::vector<transport> &streams, std::uint8_t version) {
  dvbpsi_nit_t *table = dvbpsi_nit_new(table_id, id, id, version, true);
  add_all(about, [&](auto... each) { dvbpsi_nit_descriptor_add(table, each...); });
  for (const transport &each : streams) {
    dvbpsi_nit_ts_t *added = dvbpsi_nit_ts_add(table, each.ts_id, each.network_id);
    add_all(each.about, [&](auto... one) { dvbpsi_nit_ts_descriptor_add(added, one...); });
  }
  sections made = taken(dvbpsi_nit_sections_generate(library(), table, table_id));
  dvbpsi_nit_delete(table);
  return made;
}

}  // namespace

sections program_association(std::uint16_t ts_id, const std::vector<program> &programs, std::uint8_t version) {
  dvbpsi_pat_t *table = dvbpsi_pat_new(ts_id, version, true);
  for (const program &each : programs) {
    dvbpsi_pat_program_add(table, each.number, each.pid);
  }
  sections made = taken(dvbpsi_pat_sections_generate(library(), table, programs_in_a_section));
  dvbpsi_pat_delete(table);
  return made;
}

sections program_map(std::uint16_t number, std::uint16_t pcr_pid, const std::vector<stream> &streams,
                     const descriptors &about, std::uint8_t version) {
  dvbpsi_pmt_t *table = dvbpsi_pmt_new(number, version, true, pcr_pid);
  add_all(about, [&](auto... each) { dvbpsi_pmt_descriptor_add(table, each...); });
  for (const stream &each : streams) {
    dvbpsi_pmt_es_t *added = dvbpsi_pmt_es_add(table, each.type, each.pid);
    add_all(each.about, [&](auto... one) { dvbpsi_pmt_es_descriptor_add(added, one...); });
  }
  sections made = taken(dvbpsi_pmt_sections_generate(library(), table));
  dvbpsi_pmt_delete(table);
  return made;
}

sections conditional_access(const descriptors &about) {
  dvbpsi_cat_t *table = dvbpsi_cat_new(0, true);
  add_all(about, [&](auto... each) { dvbpsi_cat_descriptor_add(table, each...); });
  sections made = taken(dvbpsi_cat_sections_generate(library(), table));
  dvbpsi_cat_delete(table);
  return made;
}

// The generator makes the table of the actual transport stream only.
sections services(std::uint16_t ts_id, std::uint16_t network_id, const std::vector<service> &all, bool is_actual,
                  std::uint8_t version) {
  dvbpsi_sdt_t *table = dvbpsi_sdt_new(0x42, ts_id, version, true, network_id);
  for (const service &each : all) {
    dvbpsi_sdt_service_t *added = dvbpsi_sdt_service_add(table, each.id, false, false, 4, each.is_scrambled);
    add_all(each.about, [&](auto... one) { dvbpsi_sdt_service_descriptor_add(added, one...); });
  }
  sections made = taken(dvbpsi_sdt_sections_generate(library(), table));
  dvbpsi_sdt_delete(table);
  for (std::string &each : made) {
    each[0] = is_actual ? '\x42' : '\x46';
    each = with_crc(each);
  }
  return made;
}

sections network(std::uint16_t id, const descriptors &about, const std::vector<transport> &streams, bool is_actual,
                 std::uint8_t version) {
  return network_of(is_actual ? 0x40 : 0x41, id, about, streams, version);
}

// A bouquet has the form of a network. Its own generator tells lengths that are one byte too long.
sections bouquet(std::uint16_t id, const descriptors &about, const std::vector<transport> &streams) {
  return network_of(0x4A, id, about, streams, 0);
}

sections time_and_date(std::uint64_t bits) {
  std::string made = "\x70\x70\x05";
  for (int shift = 32; shift >= 0; shift -= 8) {
    made += static_cast<char>(bits >> static_cast<unsigned>(shift) & 0xFFU);
  }
  return {made};
}

std::string section(std::uint8_t table_id, std::uint16_t extension, const std::string &content, std::uint8_t version,
                    std::uint8_t number, std::uint8_t last) {
  const std::size_t length = 5 + content.size() + 4;
  const auto byte = [](std::size_t value) { return static_cast<char>(value & 0xFFU); };
  std::string made = {byte(table_id),  byte(0xF0U | length >> 8U),
                      byte(length),    byte(extension >> 8U),
                      byte(extension), byte(0xC1U | static_cast<unsigned>(version) << 1U),
                      byte(number),    byte(last)};
  return with_crc(made + content + std::string(4, '\0'));
}

std::string with_crc(std::string section) {
  dvbpsi_psi_section_t made = {};
  made.p_data = bytes_of(section);
  made.p_payload_end = made.p_data + section.size() - 4;
  dvbpsi_CalculateCRC32(&made);
  return section;
}

descriptor service_name(std::uint8_t type, const std::string &provider, const std::string &name) {
  dvbpsi_service_dr_t made = {};
  made.i_service_type = type;
  made.i_service_provider_name_length = size_of(provider);
  std::ranges::copy(provider, made.i_service_provider_name);
  made.i_service_name_length = size_of(name);
  std::ranges::copy(name, made.i_service_name);
  return taken(dvbpsi_GenServiceDr(&made, false));
}

descriptor network_name(const std::string &name) { return {0x40, name}; }
descriptor bouquet_name(const std::string &name) { return {0x47, name}; }

// The generator gives it the tag of another one.
descriptor service_list(const std::vector<std::pair<std::uint16_t, std::uint8_t>> &services) {
  descriptor made{0x41, ""};
  for (const auto &[id, type] : services) {
    made.data += {static_cast<char>(id >> 8U), static_cast<char>(id & 0xFFU), static_cast<char>(type)};
  }
  return made;
}

descriptor channel_numbers(const std::vector<std::pair<std::uint16_t, std::uint16_t>> &numbers) {
  dvbpsi_lcn_dr_t made = {};
  for (const auto &[id, number] : numbers) {
    made.p_entries[made.i_number_of_entries++] = {id, 1, number};
  }
  return taken(dvbpsi_GenLCNDr(&made, false));
}

descriptor language(const std::string &code) {
  dvbpsi_iso639_dr_t made = {};
  made.i_code_count = 1;
  std::memcpy(made.code[0].iso_639_code, code.data(), 3);
  return taken(dvbpsi_GenISO639Dr(&made, false));
}

descriptor component_tag(std::uint8_t tag) { return {0x52, std::string(1, static_cast<char>(tag))}; }

descriptor ca_system(std::uint16_t system, std::uint16_t pid) {
  dvbpsi_ca_dr_t made = {};
  made.i_ca_system_id = system;
  made.i_ca_pid = pid;
  return taken(dvbpsi_GenCADr(&made, false));
}

descriptor teletext(const std::string &language) {
  dvbpsi_teletext_dr_t made = {};
  made.i_pages_number = 1;
  std::memcpy(made.p_pages[0].i_iso6392_language_code, language.data(), 3);
  made.p_pages[0].i_teletext_type = 1;
  return taken(dvbpsi_GenTeletextDr(&made, false));
}

descriptor subtitling(const std::string &language) {
  dvbpsi_subtitling_dr_t made = {};
  made.i_subtitles_number = 1;
  std::memcpy(made.p_subtitle[0].i_iso6392_language_code, language.data(), 3);
  made.p_subtitle[0].i_subtitling_type = 0x10;
  return taken(dvbpsi_GenSubtitlingDr(&made, false));
}

descriptor delivery(const satellite &by) {
  dvbpsi_sat_deliv_sys_dr_t made = {};
  made.i_frequency = by.frequency;
  made.i_orbital_position = by.position;
  made.i_west_east_flag = by.is_east ? 1 : 0;
  made.i_polarization = by.polarisation;
  made.i_roll_off = by.roll_off;
  made.i_modulation_system = by.is_s2 ? 1 : 0;
  made.i_modulation_type = by.modulation;
  made.i_symbol_rate = by.symbol_rate;
  made.i_fec_inner = by.fec;
  return taken(dvbpsi_GenSatDelivSysDr(&made, false));
}

descriptor delivery(const cable &by) {
  dvbpsi_cable_deliv_sys_dr_t made = {};
  made.i_frequency = by.frequency;
  made.i_modulation = by.modulation;
  made.i_symbol_rate = by.symbol_rate;
  return taken(dvbpsi_GenCableDelivSysDr(&made, false));
}

descriptor delivery(const terrestrial &by) {
  dvbpsi_terr_deliv_sys_dr_t made = {};
  made.i_centre_frequency = by.frequency;
  made.i_bandwidth = by.bandwidth;
  made.i_constellation = by.constellation;
  made.i_transmission_mode = 1;
  return taken(dvbpsi_GenTerrDelivSysDr(&made, false));
}

transport_stream &transport_stream::add(std::uint16_t pid, const sections &all) {
  for (const std::string &each : all) {
    std::string rest = '\0' + each;  // the section begins at once
    for (bool is_first = true; !rest.empty(); is_first = false) {
      add_packet(pid, rest.substr(0, packet_size - 4), is_first);
      rest.erase(0, packet_size - 4);
    }
  }
  return *this;
}

transport_stream &transport_stream::add_pictures(std::uint16_t pid, std::size_t packets) {
  for (; packets > 0; --packets) {
    add_packet(pid, std::string(packet_size - 4, 'G'), false);
  }
  return *this;
}

transport_stream &transport_stream::add_packet(std::uint16_t pid, const std::string &payload, bool starts_unit) {
  std::string packet = {'G', static_cast<char>((starts_unit ? 0x40U : 0U) | pid >> 8U), static_cast<char>(pid & 0xFFU),
                        static_cast<char>(0x10U | (counters_[pid]++ & 0x0FU))};
  packet += payload;
  packet.resize(packet_size, '\xFF');
  packets_.push_back(packet);
  return *this;
}

std::string transport_stream::bytes(std::size_t in_front, std::size_t behind) const {
  std::string all;
  for (const std::string &each : packets_) {
    all += std::string(in_front, '\x01') + each + std::string(behind, '\x02');
  }
  return all;
}

}  // namespace broadcast
