// What an operation is documented to do, step by step, while some of its calls fail: the same plan of faults that
// strikes the operation strikes the description.
#pragma once

#include <string>
#include <vector>

#include "faults/fault.h"
#include "faults/receiver.h"

namespace test_support {

class documented_run {
 public:
  using lines = std::vector<std::string>;

  // before: the store when the operation begins; whole: as a run without faults leaves it, or what it was where
  // none is whole; it must outlive this.
  documented_run(const fault &planned, const store_state &before, const store_state &whole, const bytes &earlier)
      : store(before), file(earlier), whole_(whole), plan_(planned) {}

  // The calls; false when the call fails.
  bool open_to_read(const std::string &path) { return call(door_call::open, open_event(path, "r")); }
  bool open_to_write(const std::string &path) {
    const bool opened = call(door_call::open, open_event(path, "w+"));
    if (opened) {
      file.clear();
    }
    return opened;
  }
  bool read(std::size_t size) { return call(door_call::read, read_event(size)); }
  bool write(const bytes &record) {
    const bool written = call(door_call::write, write_event(record.size()));
    file += written ? record : record.substr(0, plan_.is_short() ? record.size() / 2 : 0);
    return written;
  }
  bool flush() { return call(door_call::flush, "flush"); }
  bool close() { return call(door_call::close, "close"); }
  void sync() { call(door_call::sync, "sync"); }

  void say(const std::string &line) { log.push_back(line); }
  void is_done() { store = whole_; }

  [[nodiscard]] bool has_struck() const { return plan_.has_struck(); }

  lines calls;
  lines log;
  store_state store;
  bytes file;  // the one that is written

 private:
  bool call(door_call kind, const std::string &event) {
    calls.push_back(event);
    return !plan_.fails(kind);
  }

  const store_state &whole_;
  fault_plan plan_;
};

}  // namespace test_support
