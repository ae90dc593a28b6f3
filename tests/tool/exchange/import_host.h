// `chlist import` in a scratch directory, and the library to look at what it wrote.
#pragma once

#include <unistd.h>

#include <string>
#include <vector>

#include "support/log_capture.h"
#include "tool/chlist_host.h"

namespace tool_test {

inline const std::string sample = CHANNEL_SAMPLES_DIR "/channels.conf";

class import_test : public chlist_test {
 protected:
  program_result import(const std::string &text, const std::string &output = "list.dat") {
    write_file(path("channels.conf"), text);
    return run({"import", "channels.conf", "-o", output});
  }

  void load(const std::string &name = "list.dat") const {
    const test_support::log_capture quiet(-1);
    const test_support::fd_capture out(STDOUT_FILENO);
    set_target_dir(dir.path().c_str());
    reset_channel_list();
    ASSERT_EQ(load_channel(name.c_str(), 255), CHANNEL_LIST_VERSION);
  }

  // The table of providers, in its order.
  std::vector<std::string> provider_names() const {
    std::vector<std::string> names;
    for (std::int16_t index = 0; index < get_provider_number(); ++index) {
      names.emplace_back(get_provider_info_by_index(index)->name);
    }
    return names;
  }

  // By the channel's number.
  static std::string provider_of(std::int16_t major) {
    const group_st *provider = find_provider_id(get_channel(get_channel_index(major))->provider_id);
    return provider != nullptr ? provider->name : "";
  }
};

}  // namespace tool_test
