// The library's own walk over the records, with a reader that remembers where everything stood and a storage that keeps
// what was read when the file is short.
#include "chlist/files/file_records.h"

#include <cstring>
#include <new>

#include "channel/persist/byte_source.h"
#include "channel/persist/record_reader.h"
#include "chlist/files/channel_file.h"

namespace chlist {
namespace {

namespace persist = channel::persist;

template <class Format>
constexpr record_sizes sizes_in{
    persist::layout<typename Format::list>::size, persist::layout<typename Format::network>::size,
    persist::layout<typename Format::transponder>::size, persist::layout<typename Format::service>::size};

struct kept_records {
  persist::record_pool &records;

  template <class Record>
  Record *allocate() {
    return records.allocate<Record>();
  }
  static void give_back(void * /*record*/) {}
  static void release(list_head & /*network_list*/) {}
};

// A service of versions 7 and 8 begins like one of today, and has its flags at its end.
channel_st &as_of_today(v8_channel_st &old) {
  static_assert(sizeof(v8_channel_st) >= sizeof(channel_st) && alignof(v8_channel_st) >= alignof(channel_st));
  channel_st service = {};
  std::memcpy(static_cast<void *>(&service), &old, sizeof service);
  service.reserved_id = old.reserved_id;
  service.flag = old.flag;
  service.user_order_key = 0;
  return *new (&old) channel_st(service);
}

// Notes where records stand.
class placing_reader {
 public:
  placing_reader(placed_records &placed, const record_sizes &sizes, const persist::byte_source &source)
      : placed_(placed), sizes_(sizes), source_(source) {}

  static void short_header(int /*size*/) {}
  void on_header(const channel_list_st &list) { counted_networks_ = list.network_num; }
  void on_network(network_ch_st &network) {
    placed_.networks.push_back({&network, source_.position() - sizes_.network, 0});
    first_transponder_ = placed_.transponders.size();
  }
  void on_transponder(tp_ch_st &transponder) {
    placed_.transponders.push_back(
        {&transponder, source_.position() - sizes_.transponder, placed_.networks.size() - 1});
    first_service_ = placed_.services.size();
  }
  void on_service(channel_st &service) {
    placed_.services.push_back({&service, source_.position() - sizes_.service, placed_.transponders.size() - 1});
  }
  void on_service(v8_channel_st &service) { on_service(as_of_today(service)); }
  void short_network() { note_missing("network", placed_.networks.size(), counted_networks_, sizes_.network); }
  void short_transponder() {
    note_missing("transponder", placed_.transponders.size() - first_transponder_,
                 placed_.networks.back().record->tp_num, sizes_.transponder);
  }
  void short_service() {
    note_missing("service", placed_.services.size() - first_service_, placed_.transponders.back().record->rch_num,
                 sizes_.service);
  }

 private:
  void note_missing(std::string_view kind, std::size_t position, std::size_t counted, std::size_t size) {
    placed_.missing = {kind, source_.position(), position, counted, source_.left(), size};
  }

  placed_records &placed_;
  const record_sizes &sizes_;
  const persist::byte_source &source_;
  std::size_t counted_networks_ = 0;
  std::size_t first_transponder_ = 0;  // of the network that was read last
  std::size_t first_service_ = 0;      // of the transponder that was read last
};

}  // namespace

record_sizes record_sizes_of(int version) {
  return has_long_records(version) ? sizes_in<persist::version_8_format> : sizes_in<persist::current_format>;
}

template <class Format>
void file_records::read() {
  auto *header = channel::allocate_record<typename Format::list>();
  list_memory_.reset(header);
  list_ = &persist::base_of(*header);
  channel::init_lists(*list_);
  if (!has_list()) {
    end_ = file_.size();
    return;
  }
  persist::byte_source source(file_);
  placing_reader reader(placed_, sizes_, source);
  kept_records storage{records_};
  static_cast<void>(persist::read_list<Format>(source, *header, reader, storage));
  end_ = source.position();
}

file_records::file_records(byte_span file)
    : file_(file), version_(version_in(file)), sizes_(record_sizes_of(version_)) {
  if (has_long_records(version_)) {
    read<persist::version_8_format>();
  } else {
    read<persist::current_format>();
  }
}

}  // namespace chlist
