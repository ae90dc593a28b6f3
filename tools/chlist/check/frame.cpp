// The walk over the records. The library's own stops with nothing in its hands where a file is short; this one keeps
// what it has, and remembers where everything stood.
#include "chlist/check/frame.h"

#include <base/list.h>
#include <channel/store.h>

#include <algorithm>
#include <cstdint>

#include "channel/persist/record_reader.h"
#include "channel/store/channel_list.h"
#include "channel/store/hierarchy.h"
#include "channel/store/memory.h"

namespace chlist {
namespace {

using channel::persist::current_format;
using channel::persist::layout;
using channel::persist::version_8_format;

template <class Format>
constexpr record_sizes sizes_in{layout<typename Format::list>::size, layout<typename Format::network>::size,
                                layout<typename Format::transponder>::size, layout<typename Format::service>::size};

int version_of(byte_span file) {
  std::int16_t version = 0;
  if (file.size() >= sizeof version) {
    std::memcpy(&version, file.data(), sizeof version);
  }
  return version;
}

}  // namespace

record_sizes record_sizes_of(int version) {
  return version == 7 || version == 8 ? sizes_in<version_8_format> : sizes_in<current_format>;
}

framed_list::framed_list(byte_span file)
    : file_(file), list_(channel::channel_list), version_(version_of(file)), sizes_(record_sizes_of(version_)),
      end_(std::min(file.size(), sizes_.list)) {
  reset_channel_list();
  if (!has_list()) {
    return;
  }
  read_image(file_, 0, channel::channel_list);
  channel::init_lists(channel::channel_list);
  read_networks();
}

// Releasing goes by the count of networks.
framed_list::~framed_list() {
  channel::channel_list.network_num = networks_.empty() ? 0 : 1;
  reset_channel_list();
}

template <class Record>
Record *framed_list::read_next(std::vector<framed_record<Record>> &records, std::size_t size, missing_record expected) {
  const std::size_t left = file_.size() - end_;
  if (left < size) {
    expected.offset = end_;
    expected.present = left;
    expected.size = size;
    missing_ = expected;
    return nullptr;
  }
  auto *record = channel::allocate_record<Record>();
  read_image(file_, end_, *record);
  records.push_back({record, end_, 0});
  end_ += size;
  return record;
}

bool framed_list::read_networks() {
  const std::size_t counted = list().network_num;
  for (std::size_t i = 0; i < counted; ++i) {
    network_ch_st *network = read_next(networks_, sizes_.network, {"network", 0, i, counted});
    if (network == nullptr) {
      return false;
    }
    channel::clear_link(network->tp_list);
    list_add_tail(&network->list, &channel::channel_list.network_list);
    if (!read_transponders(*network)) {
      return false;
    }
  }
  return true;
}

bool framed_list::read_transponders(network_ch_st &network) {
  const std::size_t counted = network.tp_num;
  for (std::size_t i = 0; i < counted; ++i) {
    tp_ch_st *transponder = read_next(transponders_, sizes_.transponder, {"transponder", 0, i, counted});
    if (transponder == nullptr) {
      return false;
    }
    transponders_.back().parent = networks_.size() - 1;
    channel::clear_link(transponder->rch_list);
    list_add_tail(&transponder->list, &network.tp_list);
    if (!read_services(*transponder)) {
      return false;
    }
  }
  return true;
}

bool framed_list::read_services(tp_ch_st &transponder) {
  const std::size_t counted = transponder.rch_num;
  for (std::size_t i = 0; i < counted; ++i) {
    channel_st *service = read_next(services_, sizes_.service, {"service", 0, i, counted});
    if (service == nullptr) {
      return false;
    }
    services_.back().parent = transponders_.size() - 1;
    list_add_tail(&service->list, &transponder.rch_list);
  }
  return true;
}

}  // namespace chlist
