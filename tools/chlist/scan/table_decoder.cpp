// The library decodes packets of one PID, and knows a table by its id and extension. It follows lengths beyond the end
// of a section, and takes services of two networks with one transport stream id for one table. So each table has a
// decoder of its own here, and gets whole sections that were found sound, in packets made for it.
#include "chlist/scan/table_decoder.h"

// These headers need each other in this order.
#include <dvbpsi/dvbpsi.h>
//
#include <dvbpsi/descriptor.h>
#include <dvbpsi/psi.h>
//
#include <dvbpsi/demux.h>
//
#include <dvbpsi/bat.h>
#include <dvbpsi/cat.h>
#include <dvbpsi/nit.h>
#include <dvbpsi/pat.h>
#include <dvbpsi/pmt.h>
#include <dvbpsi/sdt.h>
#include <dvbpsi/tot.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <new>
#include <utility>

namespace chlist {
namespace {

// What the library keeps of tables that are not whole is bounded: a section takes as much as the largest one.
constexpr std::size_t most_sections = 4096;

struct decoder_deleter {
  void operator()(dvbpsi_t *decoder) const { dvbpsi_delete(decoder); }
};
using decoder_handle = std::unique_ptr<dvbpsi_t, decoder_deleter>;

decoder_handle new_decoder() {
  decoder_handle made(dvbpsi_new(nullptr, DVBPSI_MSG_NONE));
  if (made == nullptr) {
    throw std::bad_alloc();
  }
  return made;
}

descriptor_loop loop_of(const dvbpsi_descriptor_t *first) {
  descriptor_loop loop;
  for (const dvbpsi_descriptor_t *each = first; each != nullptr; each = each->p_next) {
    loop.push_back({each->i_tag, {each->p_data, each->p_data + each->i_length}});
  }
  return loop;
}

program_association taken(const dvbpsi_pat_t &table) {
  program_association made{table.i_ts_id, {}};
  for (const dvbpsi_pat_program_t *each = table.p_first_program; each != nullptr; each = each->p_next) {
    made.programs.push_back({each->i_number, each->i_pid});
  }
  return made;
}

program_map taken(const dvbpsi_pmt_t &table) {
  program_map made{table.i_pcr_pid, loop_of(table.p_first_descriptor), {}};
  for (const dvbpsi_pmt_es_t *each = table.p_first_es; each != nullptr; each = each->p_next) {
    made.streams.push_back({each->i_type, each->i_pid, loop_of(each->p_first_descriptor)});
  }
  return made;
}

service_description taken(const dvbpsi_sdt_t &table) {
  service_description made{table.i_extension, table.i_network_id, table.i_table_id == table_id::services_actual, {}};
  for (const dvbpsi_sdt_service_t *each = table.p_first_service; each != nullptr; each = each->p_next) {
    made.services.push_back({each->i_service_id, each->b_free_ca, loop_of(each->p_first_descriptor)});
  }
  return made;
}

// Networks and bouquets are of one form.
template <class Table>
network_or_bouquet network_taken(const Table &table, bool is_actual) {
  network_or_bouquet made{table.i_extension, is_actual, loop_of(table.p_first_descriptor), {}};
  for (const auto *each = table.p_first_ts; each != nullptr; each = each->p_next) {
    made.streams.push_back({each->i_ts_id, each->i_orig_network_id, loop_of(each->p_first_descriptor)});
  }
  return made;
}

// What tells one table from another. The services of a transport stream tell its network behind the header.
struct table_key {
  std::uint8_t id = 0;
  std::uint16_t extension = 0;
  std::uint16_t original_network_id = 0;

  auto operator<=>(const table_key &) const = default;
};

table_key key_of(const section &sound) {
  const std::uint8_t id = sound.table_id();
  if (id == table_id::time_and_date) {
    return {id};
  }
  const bool is_of_services = id == table_id::services_actual || id == table_id::services_other;
  const byte_view content = sound.content();
  const auto network = static_cast<std::uint16_t>(is_of_services ? content[0] << 8U | content[1] : 0);
  // The extension of the other two says nothing, or is the transport stream id, which may change.
  const bool is_one = id == table_id::program_association || id == table_id::conditional_access;
  return {id, is_one ? std::uint16_t{0} : sound.extension(), network};
}

template <class Record, class IsSame>
void replace(std::vector<Record> &records, Record made, const IsSame &is_same) {
  if (const auto old = std::ranges::find_if(records, is_same); old != records.end()) {
    *old = std::move(made);
  } else {
    records.push_back(std::move(made));
  }
}

// A decoder of the library that is fed with the sections of one table.
class fed_decoder {
 public:
  fed_decoder(const table_key &key, broadcast_tables &into) : key_(key), into_(into), decoder_(new_decoder()) {
    attach();
  }
  ~fed_decoder() { detach(); }
  fed_decoder(const fed_decoder &) = delete;
  fed_decoder &operator=(const fed_decoder &) = delete;

  void push(byte_view bytes) {
    bool is_first = true;
    while (!bytes.empty()) {
      std::array<std::uint8_t, packet_size> packet;
      packet.fill(0xFF);
      const std::size_t header = is_first ? 5 : 4;
      const std::size_t size = std::min(bytes.size(), packet.size() - header);
      counter_ = (counter_ + 1) & 0x0FU;
      packet[0] = packet_sync;
      packet[1] = is_first ? 0x40 : 0;
      packet[2] = 0;
      packet[3] = static_cast<std::uint8_t>(0x10U | counter_);
      packet[4] = 0;  // the section begins at once
      std::ranges::copy(bytes.first(size), packet.begin() + static_cast<std::ptrdiff_t>(header));
      dvbpsi_packet_push(decoder_.get(), packet.data());
      bytes = bytes.subspan(size);
      is_first = false;
    }
  }

  // Whether a section is there already; counts those that are kept. One that says that there are more, or fewer, begins
  // the table anew, as one of another version does.
  bool has(const section &sound, std::size_t &kept) {
    const unsigned edition = sound.version() << 8U | sound.bytes()[7];
    if (edition_ != edition) {
      kept -= seen_.count();
      seen_.reset();
      edition_ = edition;
    }
    return seen_.test(sound.number());
  }
  void keep(const section &sound, std::size_t &kept) {
    seen_.set(sound.number());
    ++kept;
    push(sound.bytes());
  }
  [[nodiscard]] bool is_decoded() const { return is_decoded_; }

 private:
  void attach() {
    switch (key_.id) {
      case table_id::program_association:
        dvbpsi_pat_attach(decoder_.get(), on_programs, this);
        break;
      case table_id::conditional_access:
        dvbpsi_cat_attach(decoder_.get(), on_conditional_access, this);
        break;
      case table_id::program_map:
        dvbpsi_pmt_attach(decoder_.get(), key_.extension, on_map, this);
        break;
      default:
        dvbpsi_AttachDemux(decoder_.get(), on_table, this);
    }
  }

  void detach() {
    switch (key_.id) {
      case table_id::program_association:
        dvbpsi_pat_detach(decoder_.get());
        break;
      case table_id::conditional_access:
        dvbpsi_cat_detach(decoder_.get());
        break;
      case table_id::program_map:
        dvbpsi_pmt_detach(decoder_.get());
        break;
      default:
        dvbpsi_DetachDemux(decoder_.get());
    }
  }

  static void on_table(dvbpsi_t *decoder, std::uint8_t id, std::uint16_t extension, void *self) {
    switch (id) {
      case table_id::network_actual:
      case table_id::network_other:
        dvbpsi_nit_attach(decoder, id, extension, on_network, self);
        break;
      case table_id::services_actual:
      case table_id::services_other:
        dvbpsi_sdt_attach(decoder, id, extension, on_services, self);
        break;
      case table_id::bouquet:
        dvbpsi_bat_attach(decoder, id, extension, on_bouquet, self);
        break;
      default:
        dvbpsi_tot_attach(decoder, id, extension, on_time, self);
    }
  }

  // The library hands a table over: it is the callback's to delete.
  broadcast_tables &change() {
    into_.changes += is_decoded_ && key_.id != table_id::time_and_date ? 1 : 0;
    is_decoded_ = true;
    return into_;
  }
  static fed_decoder &of(void *self) { return *static_cast<fed_decoder *>(self); }

  static void on_programs(void *self, dvbpsi_pat_t *table) {
    of(self).change().programs = taken(*table);
    dvbpsi_pat_delete(table);
  }
  static void on_conditional_access(void *self, dvbpsi_cat_t *table) {
    of(self).change().conditional_access = loop_of(table->p_first_descriptor);
    dvbpsi_cat_delete(table);
  }
  static void on_map(void *self, dvbpsi_pmt_t *table) {
    of(self).change().maps[table->i_program_number] = taken(*table);
    dvbpsi_pmt_delete(table);
  }
  static void on_network(void *self, dvbpsi_nit_t *table) {
    const bool is_actual = table->i_table_id == table_id::network_actual;
    replace(of(self).change().networks, network_taken(*table, is_actual), [&](const network_or_bouquet &each) {
      return each.id == table->i_extension && each.is_actual == is_actual;
    });
    dvbpsi_nit_delete(table);
  }
  static void on_services(void *self, dvbpsi_sdt_t *table) {
    service_description made = taken(*table);
    replace(of(self).change().services, made, [&](const service_description &each) {
      return each.ts_id == made.ts_id && each.original_network_id == made.original_network_id &&
             each.is_actual == made.is_actual;
    });
    dvbpsi_sdt_delete(table);
  }
  static void on_bouquet(void *self, dvbpsi_bat_t *table) {
    replace(of(self).change().bouquets, network_taken(*table, true),
            [&](const network_or_bouquet &each) { return each.id == table->i_extension; });
    dvbpsi_bat_delete(table);
  }
  static void on_time(void *self, dvbpsi_tot_t *table) {
    of(self).change().time = std::uint64_t{table->i_utc_time};
    dvbpsi_tot_delete(table);
  }

  table_key key_;
  broadcast_tables &into_;
  decoder_handle decoder_;
  unsigned counter_ = 0;
  bool is_decoded_ = false;
  unsigned edition_ = ~0U;  // no version has this one
  std::bitset<256> seen_;   // sections of it
};

constexpr std::uint8_t tables_read[] = {
    table_id::program_association, table_id::conditional_access, table_id::program_map,    table_id::network_actual,
    table_id::network_other,       table_id::services_actual,    table_id::services_other, table_id::bouquet,
};

}  // namespace

class table_decoder::state {
 public:
  bool take(const section &sound) {
    if (sound.table_id() == table_id::time_and_date) {
      decoder_of(sound).push(sound.bytes());
      return true;
    }
    // What is not in force yet comes again when it is.
    if (std::ranges::count(tables_read, sound.table_id()) == 0 || !sound.is_current()) {
      return true;
    }
    const auto known = decoders_.find(key_of(sound));
    if (kept_ >= most_sections && (known == decoders_.end() || !known->second.has(sound, kept_))) {
      return false;
    }
    fed_decoder &decoder = decoder_of(sound);
    if (!decoder.has(sound, kept_)) {
      decoder.keep(sound, kept_);
    }
    return true;
  }

  [[nodiscard]] broadcast_tables &tables() { return tables_; }

  [[nodiscard]] std::vector<incomplete_table> incomplete() const {
    std::vector<incomplete_table> found;
    for (const auto &[key, decoder] : decoders_) {
      if (!decoder.is_decoded()) {
        found.push_back({key.id, key.extension});
      }
    }
    return found;
  }

 private:
  fed_decoder &decoder_of(const section &sound) {
    const table_key key = key_of(sound);
    const auto found = decoders_.find(key);
    return found != decoders_.end() ? found->second : decoders_.try_emplace(key, key, tables_).first->second;
  }

  broadcast_tables tables_;
  std::size_t kept_ = 0;  // sections
  std::map<table_key, fed_decoder> decoders_;
};

table_decoder::table_decoder() : state_(std::make_unique<state>()) {}
table_decoder::~table_decoder() = default;
bool table_decoder::take(const section &sound) { return state_->take(sound); }
const broadcast_tables &table_decoder::tables() const { return state_->tables(); }
broadcast_tables table_decoder::take_tables() { return std::exchange(state_->tables(), {}); }
std::vector<incomplete_table> table_decoder::incomplete() const { return state_->incomplete(); }

}  // namespace chlist
