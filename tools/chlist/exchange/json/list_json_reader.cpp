// JSON as the records of a list. Whatever the text says wrong ends in an error that tells where.
#include <fmt/format.h>

#include <limits>
#include <utility>
#include <vector>

#include "channel/store/memory.h"
#include "chlist/exchange/json/list_json_records.h"
#include "chlist/files/record_image.h"

namespace chlist {
namespace {

void fill_array(record_bytes array, const json &records, std::size_t stride, std::span<const json_field> fields,
                const std::string &path) {
  for (std::size_t at = 0; at < records.size(); ++at) {
    fill_record(array.subspan(at * stride, stride), records[at], fields, path_of_element(path, at));
  }
}

void fill_array(record_bytes list, const json &object, const json_array &array, const std::string &path) {
  const json &records = array_in(object, array.name, path, array.capacity);
  fill_array(list.subspan(array.offset, array.capacity * array.stride), records, array.stride, array.fields(),
             fmt::format("{}.{}", path, array.name));
  const json *count = object.find(array.count_name);
  put_number(list, count_field(array.count_offset),
             count == nullptr
                 ? static_cast<std::int64_t>(records.size())
                 : integer_of(*count, sizeof(std::int16_t), true, fmt::format("{}.{}", path, array.count_name)));
}

void fill_favourites(channel_list_st &list, const json &object, const std::string &path) {
  const json &groups = array_in(object, favourites_key, path, MAX_FAV);
  const std::string groups_path = fmt::format("{}.{}", path, favourites_key);
  for (std::size_t group = 0; group < groups.size(); ++group) {
    const std::string place = path_of_element(groups_path, group);
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
    list.favorite_vnumber[group] =
        static_cast<std::int16_t>(integer_of(counts[group], sizeof(std::int16_t), true,
                                             path_of_element(fmt::format("{}.{}", path, favourite_counts_key), group)));
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
      write_network(networks[at], path_of_element(fmt::format("{}.{}", path, networks_key), at));
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
      write_transponder(transponders[at], path_of_element(fmt::format("{}.{}", path, transponders_key), at));
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
                  path_of_element(fmt::format("{}.{}", path, services_key), at));
      append_image(bytes_, service);
    }
  }

  std::string bytes_;
};

}  // namespace

std::string path_of_element(const std::string &path, std::size_t at) { return fmt::format("{}[{}]", path, at); }

const json &array_in(const json &object, std::string_view key, const std::string &path, std::size_t most) {
  const json *found = object.find(key);
  const std::string place = fmt::format("{}.{}", path, key);
  if (found == nullptr) {
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

std::string file_of_records(const json &object) { return file_writer().write(object); }

}  // namespace chlist
