// The framing of a channel file is nothing but its counts: they are held against what the file has.
#include <fmt/format.h>

#include "chlist/check/rules.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr const char *load_fails =
    "a load fails with -1: the receiver starts with an empty list and the group names of its side files";

bool is_known_earlier(int version) { return version >= 7 && version <= 9; }

void check_version(const file_records &framed, finding_list &findings) {
  const int version = framed.version();
  if (version == CHANNEL_LIST_VERSION) {
    return;
  }
  if (is_known_earlier(version)) {
    findings.push_back({0, severity::error, "earlier-version", fmt::format("the file is of version {}", version),
                        "a receiver of today has to convert it first, as `chlist convert` does; read as it stands, "
                        "records of versions 7 and 8 are out of place"});
    return;
  }
  findings.push_back({0, severity::error, "unknown-version",
                      fmt::format("the version is {}, not {}", version, +CHANNEL_LIST_VERSION),
                      "a load reads it like version 10 and returns the number; the host finds nothing to convert it "
                      "with, and as a rule drops the list"});
}

void check_list_record(const file_records &framed, finding_list &findings) {
  if (!framed.has_list()) {
    findings.push_back({framed.file().size(), severity::error, "short-file",
                        fmt::format("the file ends after {} of the {} bytes of the list's own record",
                                    framed.file().size(), framed.sizes().list),
                        load_fails});
  }
}

void check_missing(const file_records &framed, finding_list &findings) {
  if (!framed.missing()) {
    return;
  }
  const missing_record &missing = *framed.missing();
  const std::string where = missing.present == 0
                                ? std::string("the file ends in front of it")
                                : fmt::format("the file ends after {} of its {} bytes", missing.present, missing.size);
  findings.push_back(
      {missing.offset, severity::error, "missing-record",
       fmt::format("{} {} of {} is not there: {}", missing.kind, missing.position + 1, missing.counted, where),
       std::string(load_fails) + "; `chlist salvage` finds what is left"});
}

void check_end(const file_records &framed, finding_list &findings) {
  if (const std::size_t behind = framed.file().size() - framed.end(); behind > 0 && !framed.missing()) {
    findings.push_back({framed.end(), severity::warning, "bytes-behind-end",
                        fmt::format("{} behind the last record that is counted", counted(behind, "byte")),
                        "a load ignores them, the next save drops them; services among them are not on the receiver"});
  }
}

}  // namespace

void check_frame(const file_records &framed, finding_list &findings) {
  check_version(framed, findings);
  check_list_record(framed, findings);
  if (framed.has_list()) {
    check_missing(framed, findings);
    check_end(framed, findings);
  }
}

}  // namespace chlist
