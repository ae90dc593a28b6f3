// Channel files from few bytes. A channel file begins with 460,032 bytes, nearly all of them zero, and goes on with
// records that only their counts frame: changing bytes of such a file hardly ever reaches anything. Here every step of
// an input adds a record, an entry or a group, or damages what there is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "harness.h"
#include "support/channel_file.h"
#include "support/old_channel_file.h"

namespace fuzz {

using test_support::bytes;

// What the first byte of a step does. The others are its operands, numbers with the low byte first.
enum class file_step : std::uint8_t {
  end,             // what follows is no part of the file
  network,         // net_index 1, network_id 2, name
  transponder,     // ts_id 2, frequency 2 in units of 1,250, polarisation 1
  service,         // service_id 2, type 1, source 1, flag 1, genre 1, provider 1, name: on the last transponder
  services,        // how many 1, first service_id 2, type 1
  entry,           // view 1, service 1, number 2, favorite_id 1, tag 1
  entries,         // view 1, how many 2: one service after the other, over and over
  group,           // table 1, id 2, name
  groups,          // table 1, how many 2
  setting,         // which count or setting of the list 1, value 2
  list_bytes,      // offset in the list 3, how many 1, bytes
  record_bytes,    // record from the end 1, offset 2, how many 1, bytes
  record_filling,  // record from the end 1, offset 2, how many 2, byte
  cut,             // bytes to take off the end 3, of the file, or when 1 is not 0 of its header
  tail,            // how many bytes to put behind the file 1, byte
  count
};

struct scripted_file {
  test_support::channel_file file;
  std::size_t cut = 0;
  bool cuts_header = false;
  bytes tail;
};

// Reads steps to the end of a script, or of the input.
scripted_file read_script(byte_reader &input);

// The file as it is written today, and as an earlier version has it.
bytes contents(scripted_file scripted);
bytes contents(const scripted_file &scripted, const test_support::old_version &version);

}  // namespace fuzz
