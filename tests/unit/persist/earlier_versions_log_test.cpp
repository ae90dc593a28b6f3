// What the readers of earlier versions say, and what they do to the list in memory: it is linked again, and else left
// alone.
#include "support/channel_file.h"
#include "support/log_capture.h"
#include "support/old_channel_file.h"

namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace service_field = test_support::service_field;
using test_support::bytes;
using test_support::channel_file;
using test_support::in_version;
using test_support::joined;
using test_support::list_in_memory;
using test_support::log_capture;
using test_support::name_of_version;
using test_support::old_version;
using test_support::owned_list;
using test_support::read_old;
using test_support::record_kind;
using test_support::service_data;
using test_support::write_file;
using lines = std::vector<std::string>;

class EarlierVersionLog : public test_support::file_test, public ::testing::WithParamInterface<old_version> {
 protected:
  static channel_file small_file() {
    channel_file file;
    file.network(240, 0x102, "First").transponder(0x203, 11'000'000, 1).service(first);
    struct {
      std::size_t at, width;
      std::uint64_t value;
    } const fields[] = {{service_field::video_tag, 1, 0x1A},       {service_field::video_pid, 2, 0x2B},
                        {service_field::video_ecm_pid, 2, 0x3C3C}, {service_field::audio_tag, 1, 0x4D},
                        {service_field::audio_pid, 2, 0x5E},       {service_field::frequency, 8, 0x1'0000'0000}};
    for (const auto &[at, width, value] : fields) {
      file.set_last(record_kind::service, at, width, value);
    }
    file.transponder(0x304, 12'000'000, 0).network(2, 0x102, "Second");
    file.set(list_field::bouquet_id, 2, 0xFFFE)
        .set(list_field::use_group_list, 1, 3)
        .set(list_field::service_type, 1, 0xFF)
        .set(list_field::net_index, 1, 0xFE)
        .set(list_field::vch_type, 2, 12);
    return file.set(list_field::vnumber, 2, 11)
        .set(list_field::tv_vnumber, 2, 22)
        .set(list_field::radio_vnumber, 2, 33)
        .set(list_field::user_vnumber, 2, 44)
        .set(list_field::promo_vnumber, 2, 55);
  }

  owned_list read(const channel_file &file) {
    write_file(path(), in_version(GetParam(), file).data);
    return read_old(GetParam(), path());
  }

  [[nodiscard]] std::string trace(const std::string &text) const {
    return "ChannelAPI " + GetParam().reader + ":# " + text + "\n";
  }

  [[nodiscard]] lines opening() const {
    const std::string file = path();
    return {trace("(" + file + ")"), trace("old_channel_list->network_num 2")};
  }

  [[nodiscard]] lines records() const {
    return {trace("net_index 240 tp_num 2 , network_name : First "), trace("tp_ch_info->rch_num 1"),
            "tp 4294967296, ts_id 0x0203, sid 0x0007, vtag 0x001a, vpid 0x002b, vecm 0x3c3c, atag 0x004d, "
            "apid 0x005e]\n",
            trace("tp_ch_info->rch_num 0"), trace("net_index 2 tp_num 0 , network_name : Second ")};
  }

  [[nodiscard]] lines settings() const {
    const std::string hashes(54, '#');
    return {"ChannelAPI link_rch_info:# \n",
            trace(hashes),
            " old channel list version : " + std::to_string(GetParam().number) + "\n",
            "load \tservice_type : -1\n",
            "load \tuse_group_list : 'PROVIDER'\n",
            "load \tbouquet : 65534\n",
            "load \tnet_index : -2\n",
            "load \toriginal channel number : 11\n",
            "load \ttv channel number : 22\n",
            "load \tradio channel number : 33\n",
            "load \tuser channel number : 44\n",
            "load \tvch_type : 'FAV CH'\n",
            "load \tpromotion channel number : 55\n",
            trace(hashes)};
  }

  static inline const service_data first = {
      .net_index = 240, .network_id = 0x102, .ts_id = 0x203, .service_id = 7, .polarisation = 1};
};

TEST_P(EarlierVersionLog, TellsEveryRecordAtLevelThree) {
  const log_capture log(3);

  const owned_list read_list = read(small_file());

  EXPECT_EQ(log.writes(), joined({opening(), records(), settings()}));
}

TEST_P(EarlierVersionLog, TellsTheSettingsAtLevelTwo) {
  const log_capture log(2);

  const owned_list read_list = read(small_file());

  EXPECT_EQ(log.writes(), joined({opening(), settings()}));
}

TEST_P(EarlierVersionLog, IsSilentBelowLevelTwo) {
  const log_capture log(1);

  const owned_list read_list = read(small_file());

  EXPECT_NE(read_list, nullptr);
  EXPECT_EQ(log.writes(), lines{});
}

TEST_P(EarlierVersionLog, NamesGroupKindsAndViews) {
  const std::pair<int, const char *> kinds[] = {{-1, "NONE"},  {0, "ALL"},      {1, "SATELLITE"},
                                                {2, "GENRE"},  {3, "PROVIDER"}, {4, "COUNTRY"},
                                                {5, "FTACAS"}, {6, "FAV"},      {7, "NONE"}};
  const std::pair<int, const char *> views[] = {{-1, "NONE"},   {0, "ALL CH"}, {1, "TV CH"}, {2, "RADIO CH"},
                                                {3, "USER CH"}, {4, "NONE"},   {9, "NONE"},  {10, "FAV CH"},
                                                {29, "FAV CH"}, {30, "NONE"}};
  channel_file file;
  const log_capture log(2);
  lines expected;

  for (const auto &[code, name] : kinds) {
    owned_list(read(file.set(list_field::use_group_list, 1, static_cast<std::uint64_t>(code)))).reset();
    expected.push_back("load \tuse_group_list : '" + std::string(name) + "'\n");
  }
  EXPECT_EQ(log.writes_with("load \tuse_group_list"), expected);

  expected.assign(std::size(kinds), "load \tvch_type : 'ALL CH'\n");
  for (const auto &[code, name] : views) {
    owned_list(read(file.set(list_field::vch_type, 2, static_cast<std::uint64_t>(code)))).reset();
    expected.push_back("load \tvch_type : '" + std::string(name) + "'\n");
  }
  EXPECT_EQ(log.writes_with("load \tvch_type"), expected);
}

TEST_P(EarlierVersionLog, PrintsANameThatFillsItsField) {
  const std::string name(64, 'n');
  channel_file file;
  file.network(1, 1, name).set_last(record_kind::network, network_field::tp_num, 2, 0);
  const log_capture log(3);

  const owned_list read_list = read(file);

  EXPECT_EQ(log.writes_with("network_name"), lines{trace("net_index 1 tp_num 0 , network_name : " + name + " ")});
}

TEST_P(EarlierVersionLog, RefusesANullPath) {
  for (const int level : {-1, 0}) {
    const log_capture log(level);

    EXPECT_EQ(GetParam().read(nullptr), nullptr);

    EXPECT_EQ(log.writes(), level < 0 ? lines{} : lines{"ERROR: " + GetParam().reader + ":# path is null\n"});
  }
}

// The list in memory, with an entry in every saved view, the work view and a favourite group behind the counted ones.
class EarlierVersionAndTheList : public EarlierVersionLog {
 protected:
  void SetUp() override {
    file_test::SetUp();
    channel_st *service = test_support::file_service({});
    for (const std::int8_t view : linked_views) {
      test_support::append_entry(view, test_support::entry_of(*service, 1));
    }
    list.favorite_group_num = 2;
  }
  static constexpr std::int8_t linked_views[] = {0, 1, 2, 3, 4, 5, 10, 11, 12};
};

TEST_P(EarlierVersionAndTheList, LeavesEveryByteOfTheListAlone) {
  const bytes before = list_in_memory();

  const owned_list read_list = read(small_file());

  EXPECT_EQ(list_in_memory(), before);
}

TEST_P(EarlierVersionAndTheList, LinksItsViews) {
  for (const std::int8_t view : linked_views) {
    get_virtual_channel_st(view)->rch = nullptr;
  }

  const owned_list read_list = read(small_file());

  for (const std::int8_t view : linked_views) {
    EXPECT_EQ(get_virtual_channel_st(view)->rch, get_channel_st(1, 1, 100, 11'000'000, 1, 0)) << int{view};
  }
}

TEST_P(EarlierVersionAndTheList, TellsItsLostEntries) {
  list.tv_vch[0].service_id = 2;
  const log_capture log(0);

  const owned_list read_list = read(small_file());

  EXPECT_NE(read_list, nullptr);
  EXPECT_EQ(list.tv_vch[0].rch, nullptr);
  EXPECT_EQ(log.writes(), lines{"ERROR: link...[1][0]-n_in 1, on 1, ts 100, freq 11000000, sid 2, polr 0\n"});
}

TEST_P(EarlierVersionAndTheList, DoesNotLinkItWhenAFileCannotBeRead) {
  list.vch[0].rch = nullptr;
  const log_capture log(2);

  EXPECT_EQ(read_old(GetParam(), path("missing.dat")), nullptr);

  EXPECT_EQ(list.vch[0].rch, nullptr);
  EXPECT_EQ(log.writes_with("link_rch_info"), lines{});
}

TEST_P(EarlierVersionAndTheList, IsReadBesideADestroyedList) {
  destroy_channel_list();
  const log_capture log(0);

  const owned_list read_list = read(small_file());

  EXPECT_NE(read_list, nullptr);
  EXPECT_EQ(log.writes(), lines{"ERROR: link_rch_info:#  channel_list NULL !! "});
}

INSTANTIATE_TEST_SUITE_P(Readers, EarlierVersionLog, ::testing::ValuesIn(test_support::old_versions()),
                         name_of_version);
INSTANTIATE_TEST_SUITE_P(Readers, EarlierVersionAndTheList, ::testing::ValuesIn(test_support::old_versions()),
                         name_of_version);

}  // namespace
