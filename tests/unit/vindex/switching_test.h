// A list whose settings hold values that no switch writes, so that every write shows, and what a switch to a favourite
// group says of each entry that it looks at.
#pragma once

#include <channel/channel.h>

#include <string>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace test_support {

class switching_test : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    list.use_group_list = 3;
    list.ch_type = 77;
    list.net_index = 9;
    list.service_type = 8;
    list.sub_group_id = 42;
  }
};

inline std::string visit(int favourite_id, int service_id) {
  return "WARNING: change_vindex_type:# channel_list.vch[i]->favorite_id : " + std::to_string(favourite_id) +
         ", channel_list.vch[i]->service_id : " + std::to_string(service_id) + "\n";
}

}  // namespace test_support
