// Both ways meet in one: the patches are what differs between the file and what its JSON gives without them.
#include "chlist/exchange/list_json.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "channel/persist/detached_list.h"
#include "chlist/exchange/list_json_codec.h"
#include "chlist/exchange/list_json_fields.h"
#include "chlist/files/input_file.h"
#include "chlist/files/record_image.h"

namespace chlist {
namespace {

namespace persist = channel::persist;

constexpr std::string_view mark_key = "format";
constexpr std::string_view mark = "channel file";
constexpr std::string_view favourites_key = "favorite_vch";
constexpr std::string_view favourite_counts_key = "favorite_vnumber";
constexpr std::string_view networks_key = "networks";
constexpr std::string_view transponders_key = "transponders";
constexpr std::string_view services_key = "services";
constexpr std::string_view patches_key = "patches";

template <class Record>
const_record_bytes bytes_of(const Record &record) {
  return std::as_bytes(std::span(&record, 1));
}

template <class Record>
record_bytes bytes_of(Record &record) {
  return std::as_writable_bytes(std::span(&record, 1));
}

std::string element(const std::string &path, std::size_t at) { return fmt::format("{}[{}]", path, at); }

// ---- The file as JSON.

constexpr json_field count_field(std::size_t offset) {
  return {"", field_kind::number, offset, sizeof(std::int16_t), true};
}

// As many records as are counted; bytes behind them are no records.
json json_of_array(const_record_bytes array, std::int64_t count, std::size_t stride,
                   std::span<const json_field> fields) {
  const auto capacity = static_cast<std::int64_t>(array.size() / stride);
  const auto used = static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, capacity));
  json records = json::array();
  for (std::size_t at = 0; at < used; ++at) {
    records.push_back(json_of_record(array.subspan(at * stride, stride), fields));
  }
  return records;
}

void put_array(json &object, const_record_bytes list, const json_array &array) {
  const std::int64_t count = number_in(list, count_field(array.count_offset));
  json records =
      json_of_array(list.subspan(array.offset, array.capacity * array.stride), count, array.stride, array.fields());
  const bool is_counted = count == static_cast<std::int64_t>(records.size());
  object.push_back({std::string(array.name), std::move(records)});
  if (!is_counted) {
    object.push_back({std::string(array.count_name), count});
  }
}

void put_favourites(json &object, const channel_list_st &list) {
  json groups = json::array();
  json counts = json::array();
  bool are_counted = true;
  for (std::size_t group = 0; group < MAX_FAV; ++group) {
    const std::int16_t count = list.favorite_vnumber[group];
    groups.push_back(json_of_array(std::as_bytes(std::span(list.favorite_vch[group])), count,
                                   sizeof(virtual_channel_st), fields_of_entry()));
    are_counted = are_counted && count == static_cast<std::int64_t>(groups.back().size());
    counts.push_back(count);
  }
  while (!groups.empty() && groups.back().empty()) {
    groups.erase(groups.size() - 1);
  }
  object.push_back({std::string(favourites_key), std::move(groups)});
  if (!are_counted) {
    object.push_back({std::string(favourite_counts_key), std::move(counts)});
  }
}

json json_of_network(network_ch_st &network) {
  json transponders = json::array();
  for (tp_ch_st &transponder : channel::transponders_of(network)) {
    json services = json::array();
    for (const channel_st &service : channel::services_of(transponder)) {
      services.push_back(json_of_record(bytes_of(service), fields_of_service()));
    }
    json object = json_of_record(bytes_of(std::as_const(transponder)), fields_of_transponder());
    object.push_back({std::string(services_key), std::move(services)});
    transponders.push_back(std::move(object));
  }
  json object = json_of_record(bytes_of(std::as_const(network)), fields_of_network());
  object.push_back({std::string(transponders_key), std::move(transponders)});
  return object;
}

json json_of_list(channel_list_st &list) {
  const const_record_bytes bytes = bytes_of(std::as_const(list));
  json object = {{mark_key, mark}};
  object.update(json_of_record(bytes, fields_of_list()));
  for (const json_array &groups : groups_of_list()) {
    put_array(object, bytes, groups);
  }
  for (const json_array &view : views_of_list()) {
    put_array(object, bytes, view);
  }
  put_favourites(object, list);
  json networks = json::array();
  for (network_ch_st &network : channel::networks_of(list.network_list)) {
    networks.push_back(json_of_network(network));
  }
  object.push_back({std::string(networks_key), std::move(networks)});
  return object;
}

// ---- JSON as the file.

const json &array_in(const json &object, std::string_view key, const std::string &path, std::size_t most) {
  const auto found = object.find(key);
  const std::string place = fmt::format("{}.{}", path, key);
  if (found == object.end()) {
    refuse_json(path, fmt::format("has no {}", key));
  }
  if (!found->is_array()) {
    refuse_json(place, "is no array");
  }
  if (found->size() > most) {
    refuse_json(place, fmt::format("has {} elements; the file holds {}", found->size(), most));
  }
  return *found;
}

void fill_array(record_bytes array, const json &records, std::size_t stride, std::span<const json_field> fields,
                const std::string &path) {
  for (std::size_t at = 0; at < records.size(); ++at) {
    fill_record(array.subspan(at * stride, stride), records[at], fields, element(path, at));
  }
}

void fill_array(record_bytes list, const json &object, const json_array &array, const std::string &path) {
  const json &records = array_in(object, array.name, path, array.capacity);
  fill_array(list.subspan(array.offset, array.capacity * array.stride), records, array.stride, array.fields(),
             fmt::format("{}.{}", path, array.name));
  const auto count = object.find(array.count_name);
  put_number(list, count_field(array.count_offset),
             count == object.end()
                 ? static_cast<std::int64_t>(records.size())
                 : integer_of(*count, sizeof(std::int16_t), true, fmt::format("{}.{}", path, array.count_name)));
}

void fill_favourites(channel_list_st &list, const json &object, const std::string &path) {
  const json &groups = array_in(object, favourites_key, path, MAX_FAV);
  const std::string groups_path = fmt::format("{}.{}", path, favourites_key);
  for (std::size_t group = 0; group < groups.size(); ++group) {
    const std::string place = element(groups_path, group);
    if (!groups[group].is_array() || groups[group].size() > MAX_FAV_NUM) {
      refuse_json(place, fmt::format("is no array of at most {} elements", +MAX_FAV_NUM));
    }
    fill_array(std::as_writable_bytes(std::span(list.favorite_vch[group])), groups[group], sizeof(virtual_channel_st),
               fields_of_entry(), place);
    list.favorite_vnumber[group] = static_cast<std::int16_t>(groups[group].size());
  }
  if (!object.contains(favourite_counts_key)) {
    return;
  }
  const json &counts = array_in(object, favourite_counts_key, path, MAX_FAV);
  for (std::size_t group = 0; group < counts.size(); ++group) {
    list.favorite_vnumber[group] = static_cast<std::int16_t>(integer_of(
        counts[group], sizeof(std::int16_t), true, element(fmt::format("{}.{}", path, favourite_counts_key), group)));
  }
}

std::vector<std::string_view> keys_of_list() {
  std::vector<std::string_view> keys = {mark_key, favourites_key, favourite_counts_key, networks_key, patches_key};
  for (const auto &arrays : {groups_of_list(), views_of_list()}) {
    for (const json_array &array : arrays) {
      keys.push_back(array.name);
      keys.push_back(array.count_name);
    }
  }
  return keys;
}

// Puts the records of a file together, one after the other.
class file_writer {
 public:
  std::string write(const json &object) {
    const std::string path = "$";
    if (!object.is_object() || !object.contains(mark_key) || object[mark_key] != mark) {
      refuse_json(path, fmt::format("is no object with \"{}\": \"{}\"", mark_key, mark));
    }
    write_list(object, path);
    const json &networks = array_in(object, networks_key, path, most_counted);
    for (std::size_t at = 0; at < networks.size(); ++at) {
      write_network(networks[at], element(fmt::format("{}.{}", path, networks_key), at));
    }
    return std::move(bytes_);
  }

 private:
  static constexpr std::size_t most_counted = std::numeric_limits<std::uint16_t>::max();

  void write_list(const json &object, const std::string &path) {
    const channel::transient<channel_list_st> list(channel::allocate_record<channel_list_st>());
    const record_bytes bytes = bytes_of(*list);
    fill_record(bytes, object, fields_of_list(), path, keys_of_list());
    for (const json_array &groups : groups_of_list()) {
      fill_array(bytes, object, groups, path);
    }
    for (const json_array &view : views_of_list()) {
      fill_array(bytes, object, view, path);
    }
    fill_favourites(*list, object, path);
    list->network_num = static_cast<std::uint16_t>(array_in(object, networks_key, path, most_counted).size());
    append_image(bytes_, *list);
  }

  void write_network(const json &object, const std::string &path) {
    network_ch_st network = {};
    fill_record(bytes_of(network), object, fields_of_network(), path, std::span(&transponders_key, 1));
    const json &transponders = array_in(object, transponders_key, path, most_counted);
    network.tp_num = static_cast<std::uint16_t>(transponders.size());
    append_image(bytes_, network);
    for (std::size_t at = 0; at < transponders.size(); ++at) {
      write_transponder(transponders[at], element(fmt::format("{}.{}", path, transponders_key), at));
    }
  }

  void write_transponder(const json &object, const std::string &path) {
    tp_ch_st transponder = {};
    fill_record(bytes_of(transponder), object, fields_of_transponder(), path, std::span(&services_key, 1));
    const json &services = array_in(object, services_key, path, most_counted);
    transponder.rch_num = static_cast<std::uint16_t>(services.size());
    append_image(bytes_, transponder);
    for (std::size_t at = 0; at < services.size(); ++at) {
      channel_st service = {};
      fill_record(bytes_of(service), services[at], fields_of_service(),
                  element(fmt::format("{}.{}", path, services_key), at));
      append_image(bytes_, service);
    }
  }

  std::string bytes_;
};

// ---- What the fields do not say.

// Differences that are closer than this are one patch.
constexpr std::size_t closest = 8;

json patches_between(std::string_view built, std::string_view file) {
  json patches = json::array();
  std::size_t begin = 0;
  std::size_t end = 0;
  const auto put = [&] {
    if (end > begin) {
      patches.push_back({begin, hex_of(std::as_bytes(std::span(file.substr(begin, end - begin))))});
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
  const auto offset = static_cast<std::size_t>(integer_of(patch[0], sizeof(std::uint32_t), false, element(path, 0)));
  const std::string patched = bytes_of_hex(patch[1], element(path, 1));
  if (offset > bytes.size()) {
    refuse_json(path, fmt::format("begins at {}, behind the file's end at {}", offset, bytes.size()));
  }
  bytes.replace(offset, std::min(patched.size(), bytes.size() - offset), patched);
}

// ---- Text.

bool is_flat(const json &value) {
  return std::ranges::none_of(
      value, [](const json &each) { return each.is_array() || (each.is_object() && !each.contains("hex")); });
}

// A line for each record that holds no others.
void append_text(std::string &text, const json &value, const std::string &indent) {
  if (!value.is_structured() || (is_flat(value) && !indent.empty()) || value.empty()) {
    text += value.dump();
    return;
  }
  const std::string deeper = indent + ' ';
  text += value.is_array() ? '[' : '{';
  const char *separator = "\n";
  for (const auto &[key, member] : value.items()) {
    text += separator + deeper + (value.is_object() ? json(key).dump() + ": " : "");
    append_text(text, member, deeper);
    separator = ",\n";
  }
  text += '\n' + indent + (value.is_array() ? ']' : '}');
}

bool has_longer_records(std::string_view file) {
  return file.size() > 1 && (file[0] == 7 || file[0] == 8) && file[1] == 0;
}

}  // namespace

std::string json_of_channel_file(const std::filesystem::path &path) {
  const std::string file = read_input_file(path);
  if (has_longer_records(file)) {
    throw std::runtime_error(fmt::format("is of version {}: convert it first", int{file[0]}));
  }
  const std::string name = path.string();
  const auto list = persist::read_detached<persist::current_format>(
      name.c_str(), persist::detached_reader("export", "channel list", name.c_str()));
  if (list == nullptr) {
    throw std::runtime_error("ends too early for a channel file of its version");
  }
  json object = json_of_list(*list);
  json patches = patches_between(file_writer().write(object), file);
  if (!patches.empty()) {
    object.push_back({std::string(patches_key), std::move(patches)});
  }
  std::string text;
  append_text(text, object, "");
  return text + '\n';
}

std::string channel_file_of_json(std::string_view text) {
  json object;
  try {
    object = json::parse(text);
  } catch (const json::parse_error &error) {
    const std::string_view what = error.what();
    throw std::runtime_error("is no JSON: " + std::string(what.substr(std::min(what.find("] ") + 2, what.size()))));
  }
  std::string bytes = file_writer().write(object);
  if (object.contains(patches_key)) {
    const json &patches = array_in(object, patches_key, "$", bytes.max_size());
    for (std::size_t at = 0; at < patches.size(); ++at) {
      apply(bytes, patches[at], element(fmt::format("$.{}", patches_key), at));
    }
  }
  return bytes;
}

bool is_like_json(const std::filesystem::path &path, std::string_view beginning) {
  const std::size_t first = beginning.find_first_not_of(" \t\r\n");
  return first == std::string_view::npos ? path.extension() == ".json" : beginning[first] == '{';
}

}  // namespace chlist
