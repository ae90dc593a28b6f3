// The depth-first walk over the records of a channel file: a network, its first transponder, that transponder's
// channels, its next transponder, and so on. The counts inside the records are the only framing. Written once for every
// format; a format brings its record types, and a reader the words of its log lines.
#pragma once

#include <base/list.h>
#include <channel/records.h>

#include "channel/persist/file.h"
#include "channel/persist/image.h"
#include "channel/persist/record_pool.h"
#include "channel/store/hierarchy.h"

namespace channel::persist {

// The records of the current file version, and of version 9.
struct current_format {
  using list = channel_list_st;
  using network = network_ch_st;
  using transponder = tp_ch_st;
  using service = channel_st;
};

// The records of versions 7 and 8.
struct version_8_format {
  using list = v8_channel_list_st;
  using network = v8_network_ch_st;
  using transponder = v8_tp_ch_st;
  using service = v8_channel_st;
};

// What a record of any format has in common with today's.
template <class Record>
Record &base_of(Record &record) {
  return record;
}
inline channel_list_st &base_of(v8_channel_list_st &list) { return list.base; }
inline network_ch_st &base_of(v8_network_ch_st &network) { return network.base; }
inline tp_ch_st &base_of(v8_tp_ch_st &transponder) { return transponder.base; }

// Makes a record of the next image of a source: a file, or bytes in memory. False when the source is short: then bytes
// of it stand in the memory where a record has its pointers, and it must go as memory, without a look at what it holds.
template <class Record, class Source>
bool read_image(Source &source, Record &record) {
  if (!source.read(image_within(record), layout<Record>::size)) {
    return false;
  }
  settle_image(record);
  return true;
}

// One record, allocated and read in place; null when the source is short.
template <class Record, class Source, class Storage>
Record *read_record(Source &source, Storage &storage) {
  auto *record = storage.template allocate<Record>();
  if (!read_image(source, *record)) {
    storage.give_back(record);
    return nullptr;
  }
  return record;
}

// Reads the services of one transponder. Reader: on_service(service) after each, short_service() on a short source.
template <class Format, class Source, class Reader, class Storage>
bool read_services(Source &source, tp_ch_st &transponder, Reader &reader, Storage &storage) {
  for (int left = transponder.rch_num; left > 0; --left) {
    auto *service = read_record<typename Format::service>(source, storage);
    if (service == nullptr) {
      reader.short_service();
      return false;
    }
    reader.on_service(*service);
    list_add_tail(&service->list, &transponder.rch_list);
  }
  return true;
}

// Reads the transponders of one network. Reader: on_transponder(transponder), short_transponder().
template <class Format, class Source, class Reader, class Storage>
bool read_transponders(Source &source, network_ch_st &network, Reader &reader, Storage &storage) {
  for (int left = network.tp_num; left > 0; --left) {
    auto *record = read_record<typename Format::transponder>(source, storage);
    if (record == nullptr) {
      reader.short_transponder();
      return false;
    }
    tp_ch_st &transponder = base_of(*record);
    clear_link(transponder.rch_list);
    list_add_tail(&transponder.list, &network.tp_list);
    reader.on_transponder(transponder);
    if (!read_services<Format>(source, transponder, reader, storage)) {
      return false;
    }
  }
  return true;
}

// Reads as many networks as the header counts, appending each to a list that is empty before. Reader:
// on_network(network), short_network(). When the source is short the records read so far are released.
template <class Format, class Source, class Reader, class Storage>
bool read_networks(Source &source, int network_num, list_head &network_list, Reader &reader, Storage &storage) {
  for (int left = network_num; left > 0; --left) {
    auto *record = read_record<typename Format::network>(source, storage);
    if (record == nullptr) {
      reader.short_network();
      storage.release(network_list);
      return false;
    }
    network_ch_st &network = base_of(*record);
    reader.on_network(network);
    clear_link(network.tp_list);
    list_add_tail(&network.list, &network_list);
    if (!read_transponders<Format>(source, network, reader, storage)) {
      storage.release(network_list);
      return false;
    }
  }
  return true;
}

// Reads a whole list: its own record in place, then everything that hangs from it. Reader: short_header(size), and
// on_header(list) before the first network is read, which may bring the counts of the list into their arrays. What the
// header is read into is a list only once on_header() was called.
template <class Format, class Source, class Reader, class Storage>
bool read_list(Source &source, typename Format::list &header, Reader &reader, Storage &storage) {
  if (!read_image(source, header)) {
    reader.short_header(static_cast<int>(layout<typename Format::list>::size));
    return false;
  }
  channel_list_st &list = base_of(header);
  init_lists(list);
  reader.on_header(list);
  return read_networks<Format>(source, list.network_num, list.network_list, reader, storage);
}

}  // namespace channel::persist
