// A channel file from JSON: the input is the text. A file that it makes comes back byte for byte.
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "chlist/exchange/json/list_json.h"
#include "harness.h"

namespace {

// Nothing when the file ends before its counts do, or is of another layout: patches may make it so.
std::string json_of(const std::string &file) {
  const auto bytes = std::as_bytes(std::span(file));
  try {
    return chlist::json_of_channel_file(chlist::channel_file("list.dat", {bytes.begin(), bytes.end()}));
  } catch (const std::runtime_error &) {
    return "";
  }
}

void make_file(std::string_view text) {
  const std::string file = chlist::channel_file_of_json(text);
  const std::string json = json_of(file);
  fuzz::require(json.empty() || chlist::channel_file_of_json(json) == file, "the file comes back byte for byte");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::run::empty();
  try {
    make_file({reinterpret_cast<const char *>(data), size});
  } catch (const std::runtime_error &) {
    // What is wrong with the text was said.
  }
  return 0;
}
