// A channel list of its own, read from a file beside the one in memory: a new scan's list, or one of an earlier
// version.
#pragma once

#include <channel/records.h>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>
#include <utility>

#include "channel/log.h"
#include "channel/persist/byte_source.h"
#include "channel/persist/file.h"
#include "channel/persist/record_reader.h"
#include "channel/store/dumps.h"
#include "channel/store/hierarchy.h"
#include "channel/store/release.h"
#include "channel/text.h"

namespace channel::persist {

// Releases a detached list: whatever still hangs from it, and the header.
struct releasing {
  template <class List>
  void operator()(List *list) const {
    free_hierarchy(base_of(*list).network_list);
    std::free(list);
  }
};

template <class Format>
using detached_list = std::unique_ptr<typename Format::list, releasing>;

// The log lines of one reader: the operation's name, and what it calls the list that it reads.
class detached_reader {
 public:
  detached_reader(const char *operation, const char *list_name, const char *path)
      : operation_(operation), list_name_(list_name), path_(path != nullptr ? path : "(null)") {}

  void opening() const { LOG_TRACE_AS(operation_, 2, "(%s)\n", path_); }
  void unopened() const { LOG_ERROR_AS(operation_, "Fail to open '%s'\n", path_); }
  void short_header(int size) const {
    LOG_ERROR_AS(operation_, "Fail to read the %s to '%s' size %d \n", list_name_, path_, size);
  }
  void on_header(const channel_list_st &list) const {
    LOG_TRACE_AS(operation_, 2, "%s->network_num %d\n", list_name_, list.network_num);
  }
  void short_network() const { LOG_ERROR_AS(operation_, "Fail to read the %s to '%s'\n", list_name_, path_); }
  void on_network(const network_ch_st &network) const {
    LOG_TRACE_AS(operation_, 3, "net_index %d tp_num %d , network_name : %s \n", network.net_index, network.tp_num,
                 name_of(network).c_str());
  }
  void short_transponder() const { LOG_ERROR_AS(operation_, "Fail to read the %s->to '%s'\n", list_name_, path_); }
  void on_transponder(const tp_ch_st &transponder) const {
    LOG_TRACE_AS(operation_, 3, "tp_ch_info->rch_num %d\n", transponder.rch_num);
  }
  void short_service() const { LOG_ERROR_AS(operation_, "Fail to read '%s'\n", path_); }
  template <class Service>
  static void on_service(const Service &service) {
    print_read_service(service);
  }

 private:
  const char *operation_;
  const char *list_name_;
  const char *path_;
};

// Says nothing: for lists that are looked at where no receiver waits for its log lines.
struct silent_reader {
  static void short_header(int /*size*/) {}
  static void on_header(const channel_list_st & /*list*/) {}
  static void short_network() {}
  static void on_network(const network_ch_st & /*network*/) {}
  static void short_transponder() {}
  static void on_transponder(const tp_ch_st & /*transponder*/) {}
  static void short_service() {}
  template <class Service>
  static void on_service(const Service & /*service*/) {}
};

// What an operation says of a list that it has read whole: "new" or "old".
inline void print_list_read(const char *operation, const char *which, const channel_list_st &list) {
  static constexpr char rule[] = "######################################################\n";
  LOG_TRACE_AS(operation, 2, "%s", rule);
  LOG_PLAIN(2, " %s channel list version : %d\n", which, list.version);
  print_load_settings(list);
  LOG_TRACE_AS(operation, 2, "%s", rule);
}

// Reads a whole file into a header and records of a storage; none when it cannot be opened or is short. What the header
// is read into becomes a list only when the header is whole.
template <class Format, class Storage>
transient<typename Format::list> read_whole(const char *path, const detached_reader &reader, Storage &storage) {
  using list_type = typename Format::list;
  reader.opening();
  transient<list_type> header(static_cast<list_type *>(std::calloc(1, sizeof(list_type))));
  if (header == nullptr) {
    reader.unopened();
    return nullptr;
  }
  file source(path, "r");
  if (!source.is_open()) {
    reader.unopened();
    return nullptr;
  }
  return read_list<Format>(source, *header, reader, storage) ? std::move(header) : nullptr;
}

// Reads a whole file into a list that releases its records with itself.
template <class Format>
detached_list<Format> read_detached(const char *path, const detached_reader &reader) {
  record_heap storage;
  return detached_list<Format>(read_whole<Format>(path, reader, storage).release());
}

// The same from bytes in memory, without a word; none when they are too few.
template <class Format>
detached_list<Format> read_detached(std::span<const std::byte> bytes) {
  byte_source source(bytes);
  silent_reader reader;
  record_heap storage;
  transient<typename Format::list> header(allocate_record<typename Format::list>());
  const bool is_whole = read_list<Format>(source, *header, reader, storage);
  return detached_list<Format>(is_whole ? header.release() : nullptr);
}

}  // namespace channel::persist
