// What is wrong with a channel file, as data: where, how grave, what, and what a receiver makes of it. Serves the
// command and reports.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/check/finding_place.h"
#include "chlist/files/file_bytes.h"

namespace chlist {

enum class severity {
  error,    // the load fails, or something is lost on the receiver
  warning,  // something is not reached, or not shown as it was meant
  note      // unusual; a receiver works with it
};

struct finding {
  std::size_t offset = 0;  // in the file
  severity level = severity::note;
  std::string_view kind;    // a short name, for programs: "unresolved-entry"
  std::string what;         // one line; harmless on a terminal
  std::string consequence;  // what a receiver does with it
  finding_place place = {};
};

struct file_findings {
  std::size_t size = 0;  // of the file
  int version = 0;
  std::size_t networks = 0;  // that the file holds, as far as its counts lead
  std::size_t transponders = 0;
  std::size_t services = 0;
  std::vector<finding> findings;  // the gravest first, then in the file's order

  [[nodiscard]] std::size_t count(severity level) const;
  // Notes do not count.
  [[nodiscard]] bool is_sound() const { return count(severity::error) + count(severity::warning) == 0; }
};

// "error", "warning" or "note".
std::string_view name_of(severity level);

// Any bytes are looked at, damaged files too.
file_findings findings_in(byte_span file);

}  // namespace chlist
