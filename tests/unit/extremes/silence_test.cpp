// At level -1 nothing is written, whatever goes wrong: each of these says one ERROR line at level 0, and fails in the
// same way without it.
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class Silence : public file_test {
 protected:
  template <class Action>
  static void expect_silence(const std::string &line, const Action &provoke) {
    int loud = 0;
    int silent = 0;
    EXPECT_EQ(writes_at(0, [&] { return loud = provoke(); }), lines{line});
    EXPECT_EQ(writes_at(-1, [&] { return silent = provoke(); }), lines{});
    EXPECT_EQ(loud, silent);
  }
};

TEST_F(Silence, CoversAProviderThatNoTableHas) {
  channel_st *service = file_service({});
  service->provider_id = 33;
  append_entry(VIEW_ALL, entry_of(*service, 1));
  std::int16_t ids[MAX_PROVIDER];

  expect_silence("ERROR: get_provider_id_by_service_type:# provider id 33 unknown\n",
                 [&] { return get_provider_id_by_service_type(VIEW_ALL, ids); });
}

TEST_F(Silence, CoversASideFileThatCountsTooMany) {
  write_file(path("country.dat"), side_file(MAX_COUNTRY, 1, "country").replace(0, 2, "\xC9", 2));

  expect_silence("ERROR: load_group_list:# group list 4 counts 201, taken as 200\n",
                 [] { return load_group_list(GROUP_COUNTRY); });
  EXPECT_EQ(list.country_num, 200);
}

TEST_F(Silence, CoversAChannelFileThatEndsBeforeARecord) {
  write_file(path("genre.dat"), side_file(MAX_GENRE, 1, "genre"));
  write_file(path("country.dat"), side_file(MAX_COUNTRY, 1, "country"));
  const channel_file whole = channel_file().service({});
  for (const auto &[kind, what] : {std::pair(1U, "the channel_list to "), {2U, "the channel_list to "}, {3U, ""}}) {
    write_file(path(), whole.data.substr(0, whole.records.at(kind).offset));

    expect_silence("ERROR: load_channel_internal:# Fail to read " + (what + ("'" + path())) + "'\n",
                   [] { return load_named("list.dat"); });
  }
}

TEST_F(Silence, CoversAListThatCountsTheMostNetworks) {
  list.network_num = 0xFFFF;

  expect_silence("ERROR: alloc_network_ch_info:# list is full, 65535 records\n",
                 [] { return alloc_network_ch_info(1, 1, nullptr) == nullptr ? -1 : 0; });
  list.network_num = 0;
}

TEST_F(Silence, CoversAFullUserView) {
  append_entry(VIEW_ALL, entry_of(*file_service({}), 1));
  list.user_vnumber = MAX_CHANNEL;

  expect_silence("ERROR: insert_user_vch_vindex:# view is full, 5000 entries\n",
                 [] { return insert_user_vch_vindex(0); });
}

}  // namespace
