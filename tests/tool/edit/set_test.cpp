// `chlist set`: every field with its range, and services that change their identity.
#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;
using test_support::group_size;

class Set : public edit_host {
 protected:
  [[nodiscard]] std::size_t news_at(std::size_t field) const { return service_at(before, 0) + field; }

  // Sets a field of the first service.
  void expect_set(const std::string &assignment, std::size_t at, std::size_t width, std::uint64_t value) const {
    SCOPED_TRACE(assignment);
    write_file(path(), before.data);
    expect_edit({"set", "list.dat", "News", assignment}, with(news_at(at), width, value));
  }
};

TEST_F(Set, PutsEveryFieldInItsPlace) {
  struct {
    std::string assignment;
    std::size_t at;
    std::size_t width;
    std::uint64_t value;
  } const fields[] = {{"provider=Free", service_field::provider_id, 2, 3},
                      {"provider=3", service_field::provider_id, 2, 3},
                      {"provider=none", service_field::provider_id, 2, 0xFFFF},
                      {"genre=Docu", service_field::genre_id, 2, 5},
                      {"genre=docu", service_field::genre_id, 2, 5},
                      {"genre=none", service_field::genre_id, 2, 0xFFFF},
                      {"provider=None", service_field::provider_id, 2, 0xFFFF},
                      {"genre=NONE", service_field::genre_id, 2, 0xFFFF},
                      {"country=none", service_field::country_id, 2, 0xFFFF},
                      {"country=77", service_field::country_id, 2, 77},
                      {"service_type=radio", service_field::service_type, 1, 2},
                      {"service_type=255", service_field::service_type, 1, 255},
                      {"source_type=9", service_field::source_type, 1, 9},
                      {"locked=yes", service_field::flag, 1, 0x02},
                      {"scrambled=yes", service_field::flag, 1, 0x04},
                      {"skipped=yes", service_field::flag, 1, 0x08},
                      {"data=yes", service_field::flag, 1, 0x20},
                      {"locked=no", service_field::flag, 1, 0},
                      {"flags=255", service_field::flag, 1, 255},
                      {"order_key=-32768", service_field::user_order_key, 2, 0x8000},
                      {"pmt_pid=8191", service_field::pmt_pid, 2, 8191},
                      {"pcr_pid=none", service_field::pcr_pid, 2, 0xFFFF},
                      {"video_tag=7", service_field::video_tag, 1, 7},
                      {"video_pid=8190", service_field::video_pid, 2, 8190},
                      {"video_ecm_pid=1", service_field::video_ecm_pid, 2, 1},
                      {"audio_tag=none", service_field::audio_tag, 1, 255},
                      {"audio_pid=none", service_field::audio_pid, 2, 0xFFFF}};
  for (const auto &field : fields) {
    expect_set(field.assignment, field.at, field.width, field.value);
  }
}

TEST_F(Set, SeveralFieldsAtOnce) {
  bytes expected = with(news_at(service_field::video_pid), 2, 512);
  put(expected, news_at(service_field::user_order_key), 2, 3);

  expect_edit({"set", "list.dat", "News", "video_pid=512", "order_key=3"}, expected);
}

TEST_F(Set, RefusesValuesOutsideTheirRange) {
  struct {
    std::string field;
    std::vector<std::string> values;
    std::string range;
  } const fields[] = {{"pmt_pid", {"8192", "-1", "", "x", "1x", "no"}, "0 to 8191, or none"},
                      {"video_tag", {"256", "-1"}, "0 to 255, or none"},
                      {"order_key", {"-32769", "32768"}, "-32768 to 32767"},
                      {"flags", {"256"}, "0 to 255"},
                      {"locked", {"2", "-1", "ye", "truee"}, "yes or no"},
                      {"service_type", {"256", "T V"}, "0 to 255, or a name as TV, radio or HD TV"},
                      {"type", {"256", "Television"}, "a name as TV, radio or HD TV, or 0 to 255"},
                      {"frequency", {"0", "4294967296"}, "1 to 4294967295"},
                      {"polarisation", {"256", "HV"}, "H, V or 0 to 255"},
                      {"net_index", {"256"}, "0 to 255"},
                      {"network_id", {"65536"}, "0 to 65535"},
                      {"genre", {""}, "a name or an id of the list's table, or none"},
                      {"provider", {""}, "a name or an id of the list's table, a new name, or none"}};
  for (const auto &field : fields) {
    for (const std::string &value : field.values) {
      expect_refused({"set", "list.dat", "News", field.field + '=' + value},
                     field.field + "=\"" + value + "\": VALUE is " + field.range);
    }
  }
}

TEST_F(Set, RefusesFieldsAndGroupsThatAreNotThere) {
  const std::string names =
      "provider, genre, country, type, net_index, network_id, ts_id, frequency, polarisation, service_id, pmt_pid, "
      "pcr_pid, video_pid, video_tag, video_ecm_pid, audio_pid, audio_tag, locked, skipped, scrambled, data, flags, "
      "service_type, source_type, order_key";
  expect_refused({"set", "list.dat", "News", "colour=red"}, "no field \"colour\": there are " + names);
  expect_refused({"set", "list.dat", "News", "name=Journal"},
                 "name is no field that set changes: `chlist rename` does");
  expect_refused({"set", "list.dat", "News", "short_name=J"},
                 "short_name is no field that set changes: `chlist rename --short` does");
  expect_refused({"set", "list.dat", "News", "pmt_pid"}, "\"pmt_pid\" sets no field: it takes FIELD=VALUE");
  expect_refused({"set", "list.dat", "News", "genre=Opera"},
                 "genre=\"Opera\": the list has no such genre; VALUE is a name or an id of its table, or none");
  expect_refused({"set", "list.dat", "News", "country=6"},
                 "country=\"6\": the list has no such country; VALUE is a name or an id of its table, or none");
}

TEST_F(Set, TheHelpNamesTheFieldsOfTheIdentity) {
  std::string help = run({"help", "set"}).out;
  std::ranges::replace(help, '\n', ' ');
  EXPECT_NE(help.find("The identity is net_index, network_id, ts_id, frequency, polarisation and service_id."),
            std::string::npos)
      << help;
}

TEST_F(Set, AProviderThatTheListLacksIsAdded) {
  const std::size_t providers = test_support::group_place(GROUP_PROVIDER).array;
  bytes expected = with(news_at(service_field::provider_id), 2, 0);
  expected.replace(providers + group_size, group_size, before.data.substr(providers, group_size));
  expected.replace(providers, group_size, group_size, '\0');
  put(expected, providers + group_field::name_len, 2, 3);
  expected.replace(providers + group_field::name, 3, "Abc");
  put(expected, test_support::group_place(GROUP_PROVIDER).count, 2, 2);

  expect_edit({"set", "list.dat", "News", "provider=Abc"}, expected);
}

TEST_F(Set, AProviderIdThatTheListLacksIsRefused) {
  expect_refused({"set", "list.dat", "News", "provider=99"}, "provider=\"99\": the list has no provider with this id");
}

TEST_F(Set, AProviderTableThatIsFullTakesNoMore) {
  for (int id = 100; id < 599; ++id) {
    before.group(GROUP_PROVIDER, id, "P" + std::to_string(id));
  }
  write_file(path(), before.data);
  const std::string why =
      ": the list has no such provider, and takes none anew: a name has at most 97 bytes, the table 500 providers";

  expect_refused({"set", "list.dat", "News", "provider=One more"}, "provider=\"One more\"" + why);
  const std::string longest(98, 'P');
  expect_refused({"set", "list.dat", "News", "provider=" + longest}, "provider=\"" + longest + '"' + why);
}

// The six fields of an entry, or of a service.
void put_entry_service_id(bytes &file, int view, std::size_t position, std::uint64_t service_id) {
  put(file, entry_at(view, position) + entry_field::service_id, 2, service_id);
}

TEST_F(Set, AServiceThatStaysOnItsTransponderKeepsItsPlace) {
  bytes expected = with(news_at(service_field::service_id), 2, 40);
  for (const auto &[view, position] :
       {std::pair{+VIEW_ALL, 0}, {+VIEW_TV, 0}, {+VIEW_USER, 1}, {+VIEW_PROMOTION, 0}, {best, 1}}) {
    put_entry_service_id(expected, view, static_cast<std::size_t>(position), 40);
  }

  expect_edit({"set", "list.dat", "News", "service_id=40"}, expected);
}

// Moves the first service of a file behind another record, as it is.
bytes take_service(bytes &file, const channel_file &before) {
  bytes service = before.data.substr(service_at(before, 0), test_support::service_size);
  file.erase(service_at(before, 0), test_support::service_size);
  put(file, before.records[2].offset + transponder_field::rch_num, 2, 2);
  return service;
}

void put_transport(bytes &file, std::uint64_t ts_id, std::uint64_t frequency, std::uint64_t polarisation) {
  for (const auto &[view, position] :
       {std::pair{+VIEW_ALL, 0}, {+VIEW_TV, 0}, {+VIEW_USER, 1}, {+VIEW_PROMOTION, 0}, {best, 1}}) {
    const std::size_t at = entry_at(view, static_cast<std::size_t>(position));
    put(file, at + entry_field::frequency, 4, frequency);
    put(file, at + entry_field::polarisation, 1, polarisation);
    put(file, at + entry_field::ts_id, 2, ts_id);
  }
}

TEST_F(Set, AServiceMovesToAnotherTransponderWithItsEntries) {
  bytes expected = before.data;
  put_transport(expected, 200, 12'000'000, 1);
  bytes service = take_service(expected, before);
  put(service, service_field::frequency, 8, 12'000'000);
  put(service, service_field::ts_id, 2, 200);
  put(service, service_field::polarisation, 1, 1);
  put(expected, before.records[6].offset - test_support::service_size + transponder_field::rch_num, 2, 2);

  expect_edit({"set", "list.dat", "News", "ts_id=200", "frequency=12000000", "polarisation=V"}, expected + service);
}

TEST_F(Set, ATransponderThatIsNotThereIsMade) {
  bytes expected = before.data;
  put_transport(expected, 100, 13'000'000, 0);
  bytes service = take_service(expected, before);
  put(service, service_field::frequency, 8, 13'000'000);
  put(expected, before.records[1].offset + network_field::tp_num, 2, 3);
  bytes transponder(test_support::transponder_size, '\0');
  put(transponder, transponder_field::ts_id, 2, 100);
  put(transponder, transponder_field::frequency, 4, 13'000'000);
  put(transponder, transponder_field::rch_num, 2, 1);

  expect_edit({"set", "list.dat", "News", "frequency=13000000"}, expected + transponder + service);
}

TEST_F(Set, ANetworkThatIsNotThereIsMadeUnderTheSameName) {
  EXPECT_EQ(run({"set", "list.dat", "News", "network_id=9"}).exit_code, 0);

  const bytes written = read_file(path());
  EXPECT_EQ(get(written, list_field::network_num, 2), 2U);
  const std::size_t network = before.data.size() - test_support::service_size;
  EXPECT_EQ(get(written, network + network_field::network_id, 2), 9U);
  EXPECT_EQ(written.substr(network + network_field::network_name, 8), bytes("Network\0", 8));
  EXPECT_EQ(get(written, entry_at(best, 1) + entry_field::network_id, 2), 9U);
  EXPECT_EQ(written.size(), before.data.size() + test_support::network_size + test_support::transponder_size);
}

TEST_F(Set, ANewNetworkHasTheNameOfTheOneThatItsServiceLeaves) {
  const service_data stays = {.net_index = 3, .network_id = 8, .service_id = 6, .name = "Stays"};
  const service_data leaves = {.net_index = 3, .network_id = 8, .service_id = 7, .name = "Leaves"};
  before.network(3, 8, "Cable").service(stays).service(leaves);
  write_file(path(), before.data);

  EXPECT_EQ(run({"set", "list.dat", "Leaves", "network_id=9"}).exit_code, 0);

  const bytes written = read_file(path());
  const std::size_t network = before.data.size() - test_support::service_size;
  EXPECT_EQ(get(written, network + network_field::network_id, 2), 9U);
  EXPECT_EQ(written.substr(network + network_field::network_name, 6), bytes("Cable\0", 6));
}

TEST_F(Set, AnIdentityThatIsTakenIsRefused) {
  expect_refused({"set", "list.dat", "News", "service_id=2"},
                 "the identity belongs to \"Films\" (net 1, network 1, ts 100, 11000000 H, service 2) already");
  expect_refused({"set", "list.dat", "News", "frequency=12002499", "polarisation=V", "service_id=3"},
                 "the identity belongs to \"Sport\" (net 1, network 1, ts 200, 12000000 V, service 3) already");
}

TEST_F(Set, AServiceThatNeedsOneTransponderTooManyStaysWhereItIs) {
  for (int count = 2; count < 65'535; ++count) {
    before.transponder(300, 20'000'000, 0);
  }
  write_file(path(), before.data);

  expect_refused({"set", "list.dat", "News", "frequency=13000000"},
                 "the list takes no more networks, transponders or services");
}

TEST_F(Set, AFrequencyWithinTheToleranceIsTheSameTransponder) {
  bytes expected = with(news_at(service_field::frequency), 8, 11'002'499);
  put_transport(expected, 100, 11'002'499, 0);

  expect_edit({"set", "list.dat", "News", "frequency=11002499"}, expected);
}

}  // namespace
