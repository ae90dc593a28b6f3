// Which calls to the file system fail. The door that stands in and the description of what then has to happen count the
// calls by the same plan.
#pragma once

#include <optional>
#include <ostream>
#include <string>

namespace test_support {

enum class door_call { open, read, write, flush, close, sync };

// The nth call of a kind, counted from 1; of all kinds together when none is named. 0: none fails.
struct fault {
  int nth = 0;
  std::optional<door_call> kind = {};
  bool lasts = false;     // every such call from there on fails as well
  bool is_short = false;  // a read or write moves half of its bytes, not none
};

inline void PrintTo(const fault &planned, std::ostream *out) {
  static constexpr const char *names[] = {"open", "read", "write", "flush", "close", "sync"};
  *out << (planned.lasts ? "from on " : "") << (planned.is_short ? "short " : "")
       << (planned.kind ? names[static_cast<int>(*planned.kind)] : "call") << ' ' << planned.nth;
}

// Counts calls. Syncing has no result, so it cannot fail.
class fault_plan {
 public:
  explicit fault_plan(const fault &planned = {}) : planned_(planned) {}

  // True when the call that is made now fails.
  bool fails(door_call call) {
    if (call == door_call::sync || planned_.kind.value_or(call) != call) {
      return false;
    }
    ++calls_;
    const bool strikes = planned_.nth > 0 && (planned_.lasts ? calls_ >= planned_.nth : calls_ == planned_.nth);
    has_struck_ = has_struck_ || strikes;
    return strikes;
  }

  [[nodiscard]] bool has_struck() const { return has_struck_; }
  [[nodiscard]] bool is_short() const { return planned_.is_short; }

 private:
  fault planned_;
  int calls_ = 0;
  bool has_struck_ = false;
};

// The calls as the door tells them.
inline std::string open_event(const std::string &path, const std::string &mode) { return "open " + path + ' ' + mode; }
inline std::string read_event(std::size_t size) { return "read " + std::to_string(size); }
inline std::string write_event(std::size_t size) { return "write " + std::to_string(size); }

}  // namespace test_support
