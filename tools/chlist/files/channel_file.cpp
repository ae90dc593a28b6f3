// Channel files as bytes, and their versions.
#include "chlist/files/channel_file.h"

#include <channel/records.h>
#include <fmt/format.h>

#include <cstdint>
#include <cstring>
#include <span>
#include <system_error>
#include <utility>

#include "chlist/files/distinct_files.h"

namespace chlist {
namespace {

// A folder can be a list of another format.
std::vector<std::byte> bytes_of_list(const std::filesystem::path &path) {
  if (std::error_code error; std::filesystem::is_directory(path, error)) {
    throw foreign_file(path, "not a regular file");
  }
  return bytes_of_file(path);
}

}  // namespace

int version_in(byte_span file) {
  std::int16_t version = 0;
  if (file.size() >= sizeof version) {
    std::memcpy(&version, file.data(), sizeof version);
  }
  return version;
}

bool is_known_version(int version) { return version >= first_known_version && version <= CHANNEL_LIST_VERSION; }

bool is_channel_file(std::string_view beginning) {
  return is_known_version(version_in(std::as_bytes(std::span(beginning))));
}

foreign_file::foreign_file(std::filesystem::path path, const std::string &why)
    : std::runtime_error(path.string() + ": " + why), path_(std::move(path)) {}

// The stamp comes first: a file that is written while it is read does not pass for unchanged.
channel_file::channel_file(const std::filesystem::path &path)
    : path_(path), stamp_(path), bytes_(bytes_of_list(path)), version_(version_in(bytes_)) {
  must_have_version();
}

channel_file::channel_file(std::filesystem::path path, std::vector<std::byte> bytes)
    : path_(std::move(path)), bytes_(std::move(bytes)), version_(version_in(bytes_)) {
  must_have_version();
}

void channel_file::must_have_version() const {
  if (bytes_.size() < sizeof(std::int16_t)) {
    throw foreign_file(path_, "too short for a channel file");
  }
}

void channel_file::refuse(const std::string &why) const { throw std::runtime_error(path_.string() + ": " + why); }

void channel_file::refuse_as_short() const {
  refuse(fmt::format("ends too early for a channel file of version {}", version_));
}

void channel_file::refuse_version(const std::string &why) const {
  const std::string what = fmt::format("is of version {}{}", version_, why);
  if (!is_known_version(version_)) {
    throw foreign_file(path_, what);
  }
  refuse(what);
}

void channel_file::must_be_current() const {
  if (version_ == CHANNEL_LIST_VERSION) {
    return;
  }
  refuse_version(fmt::format(", not {}{}", +CHANNEL_LIST_VERSION,
                             is_known_version(version_) ? ": `chlist convert` makes one of it" : ""));
}

void channel_file::must_be_unchanged() const {
  if (stamp_ && file_stamp(path_) != *stamp_) {
    refuse("somebody else wrote it meanwhile: nothing was changed; try again");
  }
}

void channel_file::must_not_be(const std::filesystem::path &target) const { must_differ(path_, target); }

}  // namespace chlist
