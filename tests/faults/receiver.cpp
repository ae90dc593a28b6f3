// The lists are put together without the library; what the store holds is read back through a door to memory.
#include "receiver.h"

#include <channel/channel.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "channel/persist/file.h"
#include "support/log_capture.h"
#include "support/old_channel_file.h"

namespace test_support {
namespace {

constexpr std::size_t longest_directory = 31;
constexpr std::size_t longest_path = 63;

const std::array<service_data, 8> own_services = {{
    {.service_id = 1, .name = "One"},
    {.service_id = 2, .service_type = SERVICE_TYPE_RADIO, .name = "Two"},
    {.ts_id = 101, .frequency = 11'100'000, .service_id = 3, .name = "Three"},
    {.net_index = 2, .network_id = 2, .frequency = 12'000'000, .service_id = 4, .name = "Four"},
    {.net_index = 2, .network_id = 2, .frequency = 12'000'000, .service_id = 5, .name = "Five"},
    {.net_index = 2, .network_id = 2, .frequency = 12'100'000, .service_id = 6, .polarisation = 1, .name = "Six"},
    {.net_index = 3, .network_id = 3, .frequency = 13'000'000, .service_id = 7, .name = "Seven"},
    {.net_index = 3, .network_id = 3, .frequency = 13'000'000, .service_id = 8, .service_type = SERVICE_TYPE_RADIO},
}};

channel_file services_and_views() {
  channel_file file;
  int number = 0;
  for (const service_data &service : own_services) {
    ++number;
    file.service(service).entry(VIEW_ALL, service, number);
    file.entry(service.service_type == SERVICE_TYPE_TV ? VIEW_TV : VIEW_RADIO, service, number);
  }
  file.entry(VIEW_USER, own_services[7], 1).entry(VIEW_USER, own_services[0], 2);
  file.entry(VIEW_PROMOTION, own_services[3], 200);
  file.group(GROUP_FAV, 0, "Films").entry(VIEW_FAVOURITE, own_services[2], 3);
  file.group(GROUP_FAV, 1, "Music").entry(VIEW_FAVOURITE + 1, own_services[1], 2);
  file.entry(VIEW_FAVOURITE + 1, own_services[7], 8, 1).group(GROUP_PROVIDER, 0, "Provider");
  return file.set(list_field::vch_type, 2, VIEW_TV);
}

channel_file with_groups(channel_file file) {
  return file.group(GROUP_GENRE, 1, "News").group(GROUP_COUNTRY, 1, "Malta").group(GROUP_COUNTRY, 2, "Norway");
}

channel_file scan() {
  channel_file file;
  std::for_each(own_services.begin(), own_services.end() - 1, [&](const auto &service) { file.service(service); });
  file.service({.net_index = 3, .network_id = 3, .frequency = 13'000'000, .service_id = 200, .name = "New"});
  return file.service({.net_index = 4, .network_id = 4, .frequency = 14'000'000, .service_id = 9, .name = "Newer"});
}

// A door behind which there is one file, in memory that stays: a block for each save would cost more than the save.
std::array<char, std::size_t{1} << 20U> memory = {};
bytes written_to_memory = {};

std::FILE *open_memory(const char * /*path*/, const char *mode, std::span<char> /*buffer*/) {
  return ::fmemopen(memory.data(), memory.size(), mode);
}

int close_memory(std::FILE *file) {
  const long size = std::ftell(file);
  const int result = std::fclose(file);
  written_to_memory.assign(memory.data(), static_cast<std::size_t>(size));
  return result;
}

void no_sync() {}

constexpr channel::persist::file_door door_to_memory = {open_memory, std::fread,   std::fwrite,
                                                        std::fflush, close_memory, no_sync};

bytes saved_to_memory() {
  const log_capture silence(-1);
  const auto *door = std::exchange(channel::persist::door, &door_to_memory);
  EXPECT_EQ(save_channel("memory"), 1);
  channel::persist::door = door;
  return std::move(written_to_memory);
}

// A name that makes the longest path.
std::string longest_name(const std::string &name) {
  return name + std::string(longest_path - longest_directory - name.size(), '_');
}

}  // namespace

const std::string receiver::own_name = "own.dat";
const std::string receiver::name_without_groups = longest_name("list");
const std::string receiver::new_name = "new.dat";
const std::string receiver::saved_name = longest_name("saved");

store_state state_of_store() {
  store_state state = {saved_to_memory(), {}};
  for (const array_place &place : view_places()) {
    const auto view = static_cast<std::int8_t>(place.code);
    const virtual_channel_st *entries = get_virtual_channel_st(view);
    std::transform(entries, entries + *get_virtual_channel_vnumber(view), std::back_inserter(state.links),
                   [](const virtual_channel_st &entry) { return entry.rch != nullptr ? '1' : '0'; });
  }
  return state;
}

store_state initialised_store() { return {channel_file().data, {}}; }

receiver::receiver()
    : target_dir_(dir_.path() + std::string(longest_directory - dir_.path().size() - 1, 'd') + '/'),
      own_list_(with_groups(services_and_views())), list_without_groups_(services_and_views()), new_list_(scan()) {
  std::filesystem::create_directory(target_dir_);
  write_file(path(own_name), own_list_.data);
  write_file(path(name_without_groups), list_without_groups_.data);
  write_file(path(new_name), new_list_.data);
  write_file(path("genre.dat"), side_file(MAX_GENRE, genres, "Genre"));
  write_file(path("country.dat"), side_file(MAX_COUNTRY, countries, "Country"));
  for (const old_version &version : old_versions()) {
    write_file(old_path(version.number), in_version(version, own_list_).data);
  }
}

void receiver::start() const {
  const log_capture silence(-1);
  const fd_capture standard_output(STDOUT_FILENO);
  reset_channel_list();
  set_target_dir(target_dir_.c_str());
  ASSERT_EQ(load_channel(own_name.c_str(), 255), CHANNEL_LIST_VERSION);
}

}  // namespace test_support
