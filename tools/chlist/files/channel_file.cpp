// Channel files as bytes, and their versions.
#include "chlist/files/channel_file.h"

#include <channel/records.h>
#include <fmt/format.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "chlist/files/distinct_files.h"

namespace chlist {

int version_in(byte_span file) {
  std::int16_t version = 0;
  if (file.size() >= sizeof version) {
    std::memcpy(&version, file.data(), sizeof version);
  }
  return version;
}

channel_file::channel_file(const std::filesystem::path &path) : channel_file(path, bytes_of_file(path)) {}

channel_file::channel_file(std::filesystem::path path, std::vector<std::byte> bytes)
    : path_(std::move(path)), bytes_(std::move(bytes)), version_(version_in(bytes_)) {
  if (bytes_.size() < sizeof(std::int16_t)) {
    refuse("too short for a channel file");
  }
}

void channel_file::refuse(const std::string &why) const { throw std::runtime_error(path_.string() + ": " + why); }

void channel_file::refuse_as_short() const {
  refuse(fmt::format("ends too early for a channel file of version {}", version_));
}

void channel_file::must_be_current() const {
  if (version_ == CHANNEL_LIST_VERSION) {
    return;
  }
  const bool is_convertible = version_ >= 7 && version_ < CHANNEL_LIST_VERSION;
  refuse(fmt::format("is of version {}, not {}{}", version_, +CHANNEL_LIST_VERSION,
                     is_convertible ? ": `chlist convert` makes one of it" : ""));
}

void channel_file::must_not_be(const std::filesystem::path &target) const { must_differ(path_, target); }

}  // namespace chlist
