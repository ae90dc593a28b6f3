// Both ways meet in one: the patches are what differs between the file and what its JSON gives without them.
#include "chlist/exchange/json/list_json.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "channel/persist/detached_list.h"
#include "chlist/exchange/json/list_json_records.h"
#include "chlist/files/file_records.h"

namespace chlist {
namespace {

namespace persist = channel::persist;

// Differences that are closer than this are one patch.
constexpr std::size_t closest = 8;

json patches_between(std::string_view built, std::string_view file) {
  json patches = json::array();
  std::size_t begin = 0;
  std::size_t end = 0;
  const auto put = [&] {
    if (end > begin) {
      patches.push_back(json::array({begin, hex_of(std::as_bytes(std::span(file.substr(begin, end - begin))))}));
    }
  };
  for (std::size_t at = 0; at < file.size(); ++at) {
    if (at < built.size() && built[at] == file[at]) {
      continue;
    }
    if (at >= end + closest || end == 0) {
      put();
      begin = at;
    }
    end = at + 1;
  }
  put();
  return patches;
}

void apply(std::string &bytes, const json &patch, const std::string &path) {
  if (!patch.is_array() || patch.size() != 2) {
    refuse_json(path, "is no pair of an offset and hexadecimal bytes");
  }
  const auto offset =
      static_cast<std::size_t>(integer_of(patch[0], sizeof(std::uint32_t), false, path_of_element(path, 0)));
  const std::string patched = bytes_of_hex(patch[1], path_of_element(path, 1));
  if (offset > bytes.size()) {
    refuse_json(path, fmt::format("begins at {}, behind the file's end at {}", offset, bytes.size()));
  }
  bytes.replace(offset, std::min(patched.size(), bytes.size() - offset), patched);
}

bool is_a_line(const json &value) { return !value.is_array() && (!value.is_object() || value.contains("hex")); }

bool is_flat(const json &value) {
  return std::ranges::all_of(value.elements(), is_a_line) &&
         std::ranges::all_of(value.members(), is_a_line, &json::member::value);
}

// A line for each record that holds no others.
void append_text(std::string &text, const json &value, const std::string &indent) {
  if (value.empty() || (is_flat(value) && !indent.empty())) {
    text += value.dump();
    return;
  }
  const std::string deeper = indent + ' ';
  const char *separator = "\n";
  const auto append = [&](const std::string &key, const json &each) {
    text += separator + deeper + key;
    append_text(text, each, deeper);
    separator = ",\n";
  };
  text += value.is_array() ? '[' : '{';
  for (const json &element : value.elements()) {
    append("", element);
  }
  for (const auto &[key, member] : value.members()) {
    append(json(key).dump() + ": ", member);
  }
  text += '\n' + indent + (value.is_array() ? ']' : '}');
}

std::string_view text_of(byte_span bytes) { return {reinterpret_cast<const char *>(bytes.data()), bytes.size()}; }

}  // namespace

std::string json_of_channel_file(const channel_file &input) {
  if (has_long_records(input.version())) {
    input.must_be_current();
  }
  const auto list = persist::read_detached<persist::current_format>(input.bytes());
  if (list == nullptr) {
    input.refuse_as_short();
  }
  json object = json_of_list(*list);
  json patches = patches_between(file_of_records(object), text_of(input.bytes()));
  if (!patches.empty()) {
    object.put(std::string(patches_key), std::move(patches));
  }
  std::string text;
  append_text(text, object, "");
  return text + '\n';
}

std::string channel_file_of_json(std::string_view text) {
  json object;
  try {
    object = json::parse(text);
  } catch (const json_error &error) {
    throw std::runtime_error(std::string("is no JSON: ") + error.what());
  }
  std::string bytes = file_of_records(object);
  if (object.contains(patches_key)) {
    const json &patches = array_in(object, patches_key, "$", bytes.max_size());
    for (std::size_t at = 0; at < patches.size(); ++at) {
      apply(bytes, patches[at], path_of_element(fmt::format("$.{}", patches_key), at));
    }
  }
  return bytes;
}

bool is_like_json(const std::filesystem::path &path, std::string_view beginning) {
  const std::size_t first = beginning.find_first_not_of(" \t\r\n");
  return first == std::string_view::npos ? path.extension() == ".json" : beginning[first] == '{';
}

}  // namespace chlist
