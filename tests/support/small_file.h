// A small channel file for tests of loading.
#pragma once

#include "support/channel_file.h"

namespace test_support {

class small_file_test : public file_test {
 protected:
  // One network, one transponder, two services in the ALL view, and a group in each table with a side file.
  static channel_file small_file() {
    channel_file file;
    file.network(1, 0x102, "Astra").transponder(0x203, 11'000'000, 1).service(first).service(second);
    file.entry(VIEW_ALL, first, 1).entry(VIEW_ALL, second, 2);
    return file.group(GROUP_GENRE, 1, "News").group(GROUP_COUNTRY, 1, "Malta");
  }

  static inline const service_data first = {.network_id = 0x102, .ts_id = 0x203, .service_id = 7, .polarisation = 1};
  static inline const service_data second = {.network_id = 0x102, .ts_id = 0x203, .service_id = 8, .polarisation = 1};
};

}  // namespace test_support
