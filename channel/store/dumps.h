// The blocks of text that more than one operation prints.
#pragma once

#include <channel/records.h>

#include "channel/log.h"

namespace channel {

// The settings and the counts of the views that a reader found, as lines that begin with "load".
void print_load_settings(const channel_list_st &list);

// The settings as print_channel_status() and the loader print them; the first and the last line carry the operation's
// name.
void print_load_status(const char *operation, const channel_list_st &list);

// The fields of a list that head the dump of it. The version is given apart: an old list's is printed with the field
// behind it.
void print_list_header(const channel_list_st &list, long version);

void print_network(const network_ch_st &network);

// One service as a reader found it; the records of every version have these fields.
template <class Service>
void print_read_service(const Service &service) {
  LOG_PLAIN(3, "tp %lld, ts_id 0x%04x, sid 0x%04x, vtag 0x%04x, vpid 0x%04x, vecm 0x%04x, atag 0x%04x, apid 0x%04x]\n",
            static_cast<long long>(service.frequency), service.ts_id, service.service_id, service.video_tag,
            service.video_pid, service.video_ecm_pid, service.audio_tag, service.audio_pid);
}

}  // namespace channel
