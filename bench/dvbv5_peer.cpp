// libdvbv5 reads the services from the text that it writes itself: name, service id, PIDs and tuning, one section each.
// It knows no views and no groups.
#include <channel/channel.h>
#include <libdvbv5/dvb-file.h>

#include <array>
#include <cstdio>
#include <memory>

#include "channel/store/hierarchy.h"
#include "full_store.h"
#include "peers.h"

namespace bench {
namespace {

constexpr char own_text[] = "dvbv5.conf";

struct freeing_list {
  void operator()(dvb_file *list) const { dvb_file_free(list); }
};
using service_list = std::unique_ptr<dvb_file, freeing_list>;

struct closing {
  void operator()(std::FILE *file) const { static_cast<void>(std::fclose(file)); }
};

void write_section(std::FILE *text, const channel_st &service) {
  // Tuning words that the list does not keep are those of most satellite transponders.
  std::fprintf(text,
               "[%s]\n\tSERVICE_ID = %d\n\tNETWORK_ID = %d\n\tTRANSPORT_ID = %d\n\tVIDEO_PID = %d\n\tAUDIO_PID = %d\n"
               "\tDELIVERY_SYSTEM = DVBS\n\tFREQUENCY = %lld\n\tPOLARIZATION = %s\n\tSYMBOL_RATE = 27500000\n"
               "\tINNER_FEC = 3/4\n\n",
               service.name[0].text, service.service_id, service.network_id, service.ts_id, service.video_pid,
               service.audio_pid, static_cast<long long>(service.frequency),
               service.polarisation == 0 ? "HORIZONTAL" : "VERTICAL");
}

void write_sections(const std::string &path) {
  const std::unique_ptr<std::FILE, closing> text(std::fopen(path.c_str(), "w"));
  require(text != nullptr, "opening a file");
  for (const channel::filed_service &filed : channel::all_services_of(get_channel_list()->network_list)) {
    write_section(text.get(), filed.service);
  }
}

// Every service, in the list's order.
bool is_whole(const dvb_file &list) {
  int services = 0;
  for (const dvb_entry *entry = list.first_entry; entry != nullptr; entry = entry->next) {
    ++services;
    if (entry->service_id != services || entry->channel == nullptr) {
      return false;
    }
  }
  return services == services_in_store();
}

// What it has read, it writes once more: the text that is measured is its own.
std::string make_text() {
  const std::string path = scratch_path(own_text);
  write_sections(path);
  const service_list list(dvb_read_file(path.c_str()));
  require(list != nullptr && is_whole(*list), "reading the sections");
  require(dvb_write_file(path.c_str(), list.get()) == 0, "writing the list");
  return path;
}

service_list loaded;

void release() { loaded.reset(); }

void load() {
  static const std::string path = make_text();
  loaded.reset(dvb_read_file_format(path.c_str(), SYS_DVBS, FILE_DVBV5));
  require(loaded != nullptr && is_whole(*loaded), "dvb_read_file_format");
}

// The first run writes the text.
void prepare() {
  static const bool is_written = [] {
    load();
    return true;
  }();
  require(is_written, "writing the text");
  release();
}

constexpr std::array catalogue = {
    operation{"dvbv5:load", {}, prepare, load, MAX_CHANNEL, 0, true},
};

}  // namespace

std::span<const operation> dvbv5_operations() { return catalogue; }

}  // namespace bench
