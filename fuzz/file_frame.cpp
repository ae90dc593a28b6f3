// An independent walk over the records of a channel file, by their counts alone.
#include "file_frame.h"

#include "support/channel_file.h"

namespace fuzz {
namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace transponder_field = test_support::transponder_field;
using test_support::bytes;

// A record of a file, from its start; nothing when the file ends before it does.
class record_walk {
 public:
  record_walk(const bytes &file, std::size_t extra) : file_(file), extra_(extra) {}

  // Steps over a record, and gives the count that it has at an offset.
  bool step(std::size_t size, std::size_t count_at, std::size_t &count) {
    const std::size_t start = next_;
    next_ += size + extra_;
    if (next_ > file_.size()) {
      return false;
    }
    count = static_cast<std::size_t>(test_support::get(file_, start + count_at, 2));
    return true;
  }

 private:
  const bytes &file_;
  std::size_t extra_;
  std::size_t next_ = 0;
};

bool holds_services(record_walk &walk, std::size_t count) {
  for (std::size_t unused = 0; count > 0; --count) {
    if (!walk.step(test_support::service_size, 0, unused)) {
      return false;
    }
  }
  return true;
}

bool holds_transponders(record_walk &walk, std::size_t count) {
  for (std::size_t services = 0; count > 0; --count) {
    if (!walk.step(test_support::transponder_size, transponder_field::rch_num, services) ||
        !holds_services(walk, services)) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool is_whole(const bytes &file, std::size_t extra) {
  record_walk walk(file, extra);
  std::size_t networks = 0;
  if (!walk.step(test_support::list_size, list_field::network_num, networks)) {
    return false;
  }
  for (std::size_t transponders = 0; networks > 0; --networks) {
    if (!walk.step(test_support::network_size, network_field::tp_num, transponders) ||
        !holds_transponders(walk, transponders)) {
      return false;
    }
  }
  return true;
}

}  // namespace fuzz
