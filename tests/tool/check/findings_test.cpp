// Findings, one by one: each in a file that has that one fault, with its place, its severity, its text and what it
// leads to.
#include "chlist/check/findings.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "support/channel_file.h"

namespace chlist {

// For messages of failed tests.
static void PrintTo(const finding &found, std::ostream *out) {
  *out << found.offset << ' ' << name_of(found.level) << ' ' << found.kind << ": " << found.what << " -> "
       << found.consequence;
}

static bool operator==(const finding &a, const finding &b) {
  return a.offset == b.offset && a.level == b.level && a.kind == b.kind && a.what == b.what &&
         a.consequence == b.consequence;
}

}  // namespace chlist

namespace {

using chlist::file_findings;
using chlist::finding;
using chlist::findings_in;
using chlist::severity;
using test_support::bytes;
using test_support::channel_file;
using test_support::group_place;
using test_support::record_kind;
using test_support::service_data;
using test_support::view_place;

using findings = std::vector<finding>;

constexpr std::size_t first_network = test_support::list_size;
constexpr std::size_t first_transponder = first_network + test_support::network_size;
constexpr std::size_t first_service = first_transponder + test_support::transponder_size;
constexpr std::size_t second_service = first_service + test_support::service_size;

constexpr std::size_t version_at = 0;
constexpr std::size_t vch_type_at = 80'100;
constexpr std::size_t first_name_at = 9;
constexpr std::size_t first_length_at = 106;

constexpr const char *load_fails =
    "a load fails with -1: the receiver starts with an empty list and the group names of its side files";
constexpr const char *no_length = "none: the name is shown up to its zero byte";

const service_data news = {.service_id = 1, .name = "News"};
const service_data films = {.service_id = 2, .name = "Films"};
constexpr const char *news_text = "\"News\" (net 1, network 1, ts 100, 11000000 H, service 1)";
constexpr const char *films_text = "\"Films\" (net 1, network 1, ts 100, 11000000 H, service 2)";

channel_file sound_file() {
  channel_file file;
  file.service(news).service(films).group(GROUP_FAV, 0, "Best").group(GROUP_PROVIDER, 1, "Free");
  file.entry(VIEW_ALL, news, 1).entry(VIEW_ALL, films, 2).entry(VIEW_TV, news, 1).entry(VIEW_TV, films, 2);
  file.entry(VIEW_FAVOURITE, films, 2, 0).entry(VIEW_FAVOURITE, news, 1, 1);
  return file;
}

file_findings check(const bytes &file) { return findings_in(std::as_bytes(std::span(file))); }

findings found_in(const channel_file &file) { return check(file.data).findings; }

findings found_of_kind(const channel_file &file, std::string_view kind) {
  findings found = found_in(file);
  std::erase_if(found, [=](const finding &each) { return each.kind != kind; });
  return found;
}

std::size_t entry_at(int view, std::size_t position) {
  return view_place(view).array + position * test_support::entry_size;
}

using CheckFrame = test_support::store_test;
using CheckSettings = test_support::store_test;
using CheckEntries = test_support::store_test;
using CheckHierarchy = test_support::store_test;
using CheckTexts = test_support::store_test;

TEST_F(CheckFrame, NothingIsFoundInASoundFile) {
  const file_findings result = check(sound_file().data);

  EXPECT_EQ(result.findings, findings{});
  EXPECT_EQ(result.version, 10);
  EXPECT_EQ(result.networks, 1U);
  EXPECT_EQ(result.transponders, 1U);
  EXPECT_EQ(result.services, 2U);
  EXPECT_TRUE(result.is_sound());
}

TEST_F(CheckFrame, TheListInMemoryIsEmptyAfterwards) {
  check(sound_file().data);

  EXPECT_EQ(get_channel_list()->network_num, 0);
  EXPECT_EQ(get_channel_list_number(), 0);
}

TEST_F(CheckFrame, AFileShorterThanTheListEndsThere) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{2}, test_support::list_size - 1}) {
    const bytes file = sound_file().data.substr(0, size);
    const finding expected = {
        size, severity::error, "short-file",
        "the file ends after " + std::to_string(size) + " of the 460032 bytes of the list's own record", load_fails};

    const findings found = check(file).findings;

    EXPECT_TRUE(std::ranges::find(found, expected) != found.end()) << size;
  }
}

TEST_F(CheckFrame, AFileWithoutRecordsIsSound) {
  const file_findings result = check(channel_file().data);

  EXPECT_EQ(result.findings, (findings{{vch_type_at, severity::note, "empty-list", "the ALL view is empty",
                                        "the receiver shows no service"}}));
  EXPECT_TRUE(result.is_sound());
}

TEST_F(CheckFrame, ARecordThatIsMissingOrCutIsNamed) {
  const bytes file = sound_file().data;
  struct cut {
    std::size_t size;
    std::size_t offset;
    std::string what;
  };
  const cut cuts[] = {
      {first_network, first_network, "network 1 of 1 is not there: the file ends in front of it"},
      {first_network + 1, first_network, "network 1 of 1 is not there: the file ends after 1 of its 416 bytes"},
      {first_transponder, first_transponder, "transponder 1 of 1 is not there: the file ends in front of it"},
      {first_service - 1, first_transponder,
       "transponder 1 of 1 is not there: the file ends after 335 of its 336 bytes"},
      {second_service, second_service, "service 2 of 2 is not there: the file ends in front of it"},
      {second_service + 311, second_service, "service 2 of 2 is not there: the file ends after 311 of its 312 bytes"},
  };
  for (const cut &each : cuts) {
    const finding expected = {each.offset, severity::error, "missing-record", each.what,
                              std::string(load_fails) + "; `chlist salvage` finds what is left"};

    const findings found = check(file.substr(0, each.size)).findings;

    EXPECT_TRUE(std::ranges::find(found, expected) != found.end()) << each.what;
  }
}

TEST_F(CheckFrame, BytesBehindTheLastRecordAreFound) {
  channel_file file = sound_file();
  const std::size_t end = file.data.size();
  file.data += bytes(5, 'x');

  EXPECT_EQ(found_in(file),
            (findings{{end, severity::warning, "bytes-behind-end", "5 bytes behind the last record that is counted",
                       "a load ignores them, the next save drops them; services among them are not on "
                       "the receiver"}}));
}

TEST_F(CheckFrame, EarlierVersionsAreToldToBeConverted) {
  const finding expected = {version_at, severity::error, "earlier-version", "the file is of version 9",
                            "a receiver of today has to convert it first, as `chlist convert` does; read as it stands, "
                            "records of versions 7 and 8 are out of place"};

  EXPECT_EQ(found_in(sound_file().set(version_at, 2, 9)), findings{expected});
}

TEST_F(CheckFrame, OtherVersionsAreUnknown) {
  for (const int version : {-1, 0, 6, 11}) {
    const findings found = found_in(sound_file().set(version_at, 2, static_cast<std::uint64_t>(version)));

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].kind, "unknown-version");
    EXPECT_EQ(found[0].what, "the version is " + std::to_string(version) + ", not 10");
  }
}

TEST_F(CheckSettings, CountsOutsideTheirArraysAreFoundInEveryViewAndTable) {
  std::vector<test_support::array_place> places = test_support::view_places();
  places.insert(places.end(), test_support::group_places().begin(), test_support::group_places().end());
  for (const test_support::array_place &place : places) {
    for (const int count : {-1, place.capacity + 1, 32767}) {
      const findings found =
          found_of_kind(sound_file().set(place.count, 2, static_cast<std::uint64_t>(count)), "count-outside-array");

      ASSERT_EQ(found.size(), 1U) << place.code;
      EXPECT_EQ(found[0].offset, place.count);
      EXPECT_EQ(found[0].level, severity::error);
      EXPECT_EQ(found[0].consequence,
                "a load says so on an ERROR line and takes " + std::to_string(count < 0 ? 0 : place.capacity));
    }
    EXPECT_EQ(found_of_kind(sound_file().set(place.count, 2, static_cast<std::uint64_t>(place.capacity)),
                            "count-outside-array"),
              findings{});
  }
}

TEST_F(CheckSettings, TheTextOfACountNamesTheArray) {
  const findings view = found_of_kind(sound_file().set(view_place(10).count, 2, 41), "count-outside-array");
  const findings table = found_of_kind(sound_file().set(group_place(GROUP_GENRE).count, 2, 51), "count-outside-array");

  ASSERT_EQ(view.size(), 1U);
  EXPECT_EQ(view[0].what, "the favourites 0 \"Best\" view counts 41, its array holds 40");
  ASSERT_EQ(table.size(), 1U);
  EXPECT_EQ(table[0].what, "the table of genre records counts 51, its array holds 50");
}

TEST_F(CheckSettings, IdsOfGroupsOccurOnceAndAreNotNegative) {
  const std::size_t second = group_place(GROUP_FAV).array + test_support::group_size + 2;

  EXPECT_EQ(found_in(sound_file().group(GROUP_FAV, 0, "More")),
            (findings{{second, severity::warning, "duplicate-group-id",
                       "favourite group \"More\" has the id 0 of an earlier one",
                       "a search by id stops at the first one: edits of this group go there"}}));
  EXPECT_EQ(found_in(sound_file().group(GROUP_FAV, -1, "More")),
            (findings{{second, severity::warning, "negative-group-id", "favourite group \"More\" has the id -1",
                       "no operation gives such an id; -1 stands for no group"}}));
  EXPECT_EQ(found_in(sound_file().group(GROUP_FAV, 1, "More")), findings{});
}

TEST_F(CheckSettings, EntriesOfUncountedGroupsAreFound) {
  channel_file file = sound_file();
  file.set(group_place(GROUP_FAV).count, 2, 0);

  EXPECT_EQ(found_in(file), (findings{{view_place(10).count, severity::warning, "entries-without-group",
                                       "favourites 0 counts 2 in use, the table of groups only 0",
                                       "no menu shows these entries; they go when a group is created in their "
                                       "place"}}));
}

TEST_F(CheckSettings, TheCurrentViewExistsAndIsNotEmpty) {
  for (const int code : {-1, 4, 6, 9, 30}) {
    const findings found = found_in(sound_file().set(vch_type_at, 2, static_cast<std::uint64_t>(code)));
    EXPECT_EQ(found, (findings{{vch_type_at, severity::warning, "unknown-view",
                                "the current view has the code " + std::to_string(code) + ", which is none in a file",
                                "a load keeps the code and shows the entries of ALL"}}));
  }
  EXPECT_EQ(found_in(sound_file().set(vch_type_at, 2, VIEW_RADIO)),
            (findings{{vch_type_at, severity::warning, "empty-current-view", "the current view, code 2, is empty",
                       "a load makes the ALL view current"}}));
  EXPECT_EQ(found_in(sound_file().set(vch_type_at, 2, VIEW_TV)), findings{});
}

// A load hands the code on in eight bits.
TEST_F(CheckSettings, TheCurrentViewIsTheOneThatALoadTakes) {
  EXPECT_EQ(
      found_in(sound_file().set(vch_type_at, 2, 256 + VIEW_TV)),
      (findings{{vch_type_at, severity::note, "wide-view-code", "the current view has the code 257, wider than a byte",
                 "a load takes its low byte and makes the view of code 1 current"}}));
  EXPECT_EQ(found_in(sound_file().set(vch_type_at, 2, 256 + VIEW_RADIO)),
            (findings{{vch_type_at, severity::warning, "empty-current-view", "the current view, code 2, is empty",
                       "a load makes the ALL view current"}}));
  EXPECT_EQ(found_in(sound_file().set(vch_type_at, 2, 256 + 30)),
            (findings{{vch_type_at, severity::warning, "unknown-view",
                       "the current view has the code 286, which is none in a file",
                       "a load keeps its low byte, 30, and shows the entries of ALL"}}));
}

TEST_F(CheckSettings, AnEmptyAllViewWithServicesIsAnError) {
  const findings found = found_of_kind(sound_file().set(view_place(VIEW_ALL).count, 2, 0), "empty-list");

  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].level, severity::error);
}

TEST_F(CheckEntries, AnEntryWithoutServiceIsAnError) {
  channel_file file = sound_file();
  file.entry(VIEW_ALL, {.service_id = 9}, 3);

  EXPECT_EQ(found_in(file),
            (findings{{entry_at(VIEW_ALL, 2), severity::error, "unresolved-entry",
                       "the ALL view, position 2: number 3 (net 1, network 1, ts 100, 11000000 H, service 9) resolves "
                       "to no service",
                       "a load keeps it without a service, with an ERROR line: it shows up without a name and cannot "
                       "be tuned to"}}));
}

TEST_F(CheckEntries, EntriesResolveWithinTheTolerance) {
  channel_file file = sound_file();
  file.set(entry_at(VIEW_TV, 0) + 8, 4, 11'002'499);
  EXPECT_EQ(found_in(file), findings{});

  file.set(entry_at(VIEW_TV, 0) + 8, 4, 11'002'500);
  EXPECT_EQ(found_of_kind(file, "unresolved-entry").size(), 1U);
}

TEST_F(CheckEntries, TheSameEntryTwiceInAViewIsFound) {
  const findings found = found_in(sound_file().entry(VIEW_TV, news, 3));

  EXPECT_EQ(found, (findings{{entry_at(VIEW_TV, 2), severity::warning, "duplicate-entry",
                              "the TV view, position 2: number 3 (net 1, network 1, ts 100, 11000000 H, service 1) is "
                              "the same as position 0",
                              "searches by identity stop at the first one; the service is listed twice"}}));
}

TEST_F(CheckEntries, AnotherTagMakesAnotherEntry) {
  channel_file file = sound_file();
  file.entry(VIEW_TV, news, 3).set(entry_at(VIEW_TV, 2), 1, 7);

  EXPECT_EQ(found_in(file), findings{});
}

TEST_F(CheckEntries, ANumberTwiceInAViewIsFound) {
  channel_file file = sound_file();
  file.set(entry_at(VIEW_ALL, 1) + 2, 2, 1);

  EXPECT_EQ(found_in(file), (findings{{entry_at(VIEW_ALL, 1), severity::warning, "duplicate-number",
                                       "the ALL view, position 1: number 1 (net 1, network 1, ts 100, 11000000 H, "
                                       "service 2) has the number of position 0",
                                       "a number that is keyed in leads to the first one; this one is reached by "
                                       "zapping only"}}));

  file.set(entry_at(VIEW_ALL, 1) + 4, 2, 1);
  EXPECT_EQ(found_in(file), findings{});
}

TEST_F(CheckEntries, APositionKeyTwiceIsANoteOnce) {
  channel_file file = sound_file();
  file.set(entry_at(10, 0) + 1, 1, 4).set(entry_at(10, 1) + 1, 1, 4);

  EXPECT_EQ(found_in(file),
            (findings{{entry_at(10, 1), severity::note, "duplicate-position-key",
                       "the favourites 0 \"Best\" view, position 1: favourite id 4 occurs before",
                       "when the group is selected its entries get the ids 0, 1, 2, ... in their present order"}}));
}

TEST_F(CheckEntries, AServiceInNoViewIsFound) {
  channel_file file = sound_file();
  file.service({.service_id = 3, .name = "Hidden"});

  EXPECT_EQ(found_in(file),
            (findings{{second_service + test_support::service_size, severity::warning, "service-in-no-view",
                       "service \"Hidden\" (net 1, network 1, ts 100, 11000000 H, service 3) is in no view",
                       "nobody can select it; it stays in the file until a channel search does not find it"}}));
}

TEST_F(CheckEntries, AServiceInFavouritesThatNoGroupCountsIsInNoView) {
  const service_data third = {.service_id = 3, .name = "Hidden"};
  channel_file file = sound_file();
  file.service(third).entry(VIEW_FAVOURITE + 1, third, 3, 0);

  EXPECT_EQ(found_of_kind(file, "service-in-no-view").size(), 1U);
  EXPECT_EQ(found_in(file.group(GROUP_FAV, 1, "More")), findings{});
}

TEST_F(CheckHierarchy, TheSameNetworkTwiceIsFound) {
  channel_file file = sound_file();
  const std::size_t at = file.data.size();
  file.network(1, 1, "Again");

  EXPECT_EQ(found_in(file), (findings{{at, severity::warning, "duplicate-network",
                                       "network 2 (net 1, network 1) is network 1 once more",
                                       "searches look into the first one only: services of this one are not found"}}));
}

TEST_F(CheckHierarchy, TranspondersWithinTheToleranceAreFound) {
  const auto near = [](std::uint32_t distance, std::uint8_t polarisation) {
    channel_file file = sound_file();
    return found_of_kind(file.transponder(101, 11'000'000 - distance, polarisation), "near-transponders");
  };
  const std::size_t at = sound_file().data.size();

  EXPECT_EQ(near(2499, 0), (findings{{at, severity::warning, "near-transponders",
                                      "transponder ts 101, 10997501 H is within the tolerance of ts 100, 11000000 H at "
                                      "offset 460448",
                                      "searches take the first one for both: services of this one are not found "
                                      "there"}}));
  EXPECT_EQ(near(0, 0).size(), 1U);
  EXPECT_EQ(near(2500, 0), findings{});
  EXPECT_EQ(near(0, 1), findings{});
}

// The one at 11,001,000 lies between two of which the second in the list is hidden by the first.
TEST_F(CheckHierarchy, TranspondersWithinTheToleranceAreFoundAcrossOthers) {
  channel_file file = sound_file();
  const std::size_t second = file.data.size();
  file.transponder(101, 11'002'000, 0).transponder(102, 11'001'000, 0).transponder(103, 11'004'000, 0);
  const std::size_t third = second + test_support::transponder_size;
  const std::size_t fourth = third + test_support::transponder_size;

  const findings found = found_of_kind(file, "near-transponders");

  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0].offset, second);
  EXPECT_EQ(found[0].what, "transponder ts 101, 11002000 H is within the tolerance of ts 100, 11000000 H at offset "
                           "460448");
  EXPECT_EQ(found[1].offset, third);
  EXPECT_EQ(found[1].what, "transponder ts 102, 11001000 H is within the tolerance of ts 100, 11000000 H at offset "
                           "460448");
  EXPECT_EQ(found[2].offset, fourth);
  EXPECT_EQ(found[2].what, "transponder ts 103, 11004000 H is within the tolerance of ts 101, 11002000 H at offset " +
                               std::to_string(second));
}

TEST_F(CheckHierarchy, ServicesBehindAnEarlierTransponderAreShadowed) {
  const service_data third = {.ts_id = 101, .frequency = 11'002'000, .service_id = 3, .name = "Hidden"};
  channel_file file = sound_file();
  file.service(third).entry(VIEW_ALL, third, 3);
  const finding expected = {second_service + test_support::service_size + test_support::transponder_size,
                            severity::error, "shadowed-service",
                            "service \"Hidden\" (net 1, network 1, ts 101, 11002000 H, service 3) stands below a "
                            "transponder or network that an earlier one hides",
                            "searches end at the earlier one: none finds it, and a channel search adds it a second "
                            "time"};

  EXPECT_EQ(found_of_kind(file, "shadowed-service"), findings{expected});
  EXPECT_EQ(found_of_kind(file, "misplaced-service"), findings{});
}

TEST_F(CheckHierarchy, ServicesOfANetworkThatIsThereTwiceAreShadowed) {
  const service_data third = {.service_id = 3, .name = "Hidden"};
  channel_file file = sound_file();
  file.network(1, 1, "Again").service(third);

  EXPECT_EQ(found_of_kind(file, "shadowed-service").size(), 1U);
  EXPECT_EQ(found_of_kind(file, "misplaced-service"), findings{});
}

TEST_F(CheckHierarchy, AServiceBelowAnotherNetworkIsMisplaced) {
  channel_file file = sound_file();
  file.set(first_network + 10, 2, 9);

  EXPECT_EQ(found_of_kind(file, "misplaced-service").size(), 2U);
}

TEST_F(CheckHierarchy, AServiceBelowAnotherTransponderIsMisplaced) {
  channel_file file = sound_file();
  file.set(first_transponder + 12, 4, 12'000'000);

  const findings found = found_of_kind(file, "misplaced-service");

  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0],
            (finding{first_service, severity::error, "misplaced-service",
                     "service " + std::string(news_text) + " does not stand below a transponder of its identity",
                     "no search finds it by that identity, and a channel search adds it a second time; when many "
                     "services are concerned, the file is out of frame"}));
}

TEST_F(CheckHierarchy, TheSecondOfTwoEqualServicesIsHidden) {
  channel_file file = sound_file();
  const std::size_t at = file.data.size();
  file.service({.service_id = 1, .name = "News"});

  EXPECT_EQ(found_of_kind(file, "hidden-service"),
            (findings{{at, severity::warning, "hidden-service",
                       "service " + std::string(news_text) + " has the identity of the one at offset 460784",
                       "every search stops at the first one: this one is never shown"}}));
}

TEST_F(CheckHierarchy, GroupIdsOfServicesHaveARecord) {
  channel_file file = sound_file();
  file.set_last(record_kind::service, 210, 2, 5)
      .set_last(record_kind::service, 212, 2, 6)
      .set_last(record_kind::service, 214, 2, 7);

  const std::string who = "service " + std::string(films_text);
  EXPECT_EQ(
      found_in(file),
      (findings{{second_service + 214, severity::warning, "unknown-group-id",
                 who + " has the provider id 7, which no provider has",
                 "it is shown without a provider, and no provider's list holds it"},
                {second_service + 210, severity::note, "unknown-group-id",
                 who + " has the country id 5, which no country has", "none: every load sets the country id to 0"},
                {second_service + 212, severity::note, "unknown-group-id",
                 who + " has the genre id 6, which no genre has",
                 "no genre's list holds it, unless the receiver has the genres in a file of their own"}}));
}

TEST_F(CheckHierarchy, ServicesWithoutGroupsAreSound) {
  for (const std::uint64_t id : {std::uint64_t{0}, std::uint64_t{0xFFFF}, std::uint64_t{1}}) {
    channel_file file = sound_file();
    EXPECT_EQ(found_in(file.set_last(record_kind::service, 214, 2, id)), findings{});
  }
}

// The first text of the second service, with a length of its own.
findings found_in_name(const bytes &name, std::size_t length) {
  channel_file file = sound_file();
  file.data.replace(second_service + first_name_at, 6, bytes(6, '\0'));
  file.data.replace(second_service + first_name_at, name.size(), name);
  file.set_last(record_kind::service, first_length_at, 2, length);
  findings found = found_in(file);
  for (finding &each : found) {
    EXPECT_EQ(each.offset, second_service + first_name_at);
  }
  return found;
}

std::vector<std::string_view> kinds_of(const findings &found) {
  std::vector<std::string_view> kinds;
  for (const finding &each : found) {
    kinds.push_back(each.kind);
  }
  return kinds;
}

using kind_list = std::vector<std::string_view>;

TEST_F(CheckTexts, TextsOfKnownTablesAreSound) {
  const bytes sound[] = {"Films", "K\xC3\xB6ln", "\x05\xE0\xFF", "\x10\x01\x02\xE4", "\x15\xC3\xB6", "\x1F\x01\xFF"};
  for (const bytes &text : sound) {
    EXPECT_EQ(found_in_name(text, text.size()), findings{}) << text;
  }
}

TEST_F(CheckTexts, TextsOfNoKnownTableAreFound) {
  EXPECT_EQ(kinds_of(found_in_name("K\xF6ln", 4)), kind_list{"invalid-text"});
  EXPECT_EQ(kinds_of(found_in_name("\x15K\xF6ln", 5)), kind_list{"invalid-text"});
  EXPECT_EQ(kinds_of(found_in_name("\x0CK", 2)), kind_list{"unknown-character-table"});
  EXPECT_EQ(kinds_of(found_in_name("\x16K", 2)), kind_list{"unknown-character-table"});
}

TEST_F(CheckTexts, ANameThatFillsItsFieldIsANote) {
  const bytes full(96, 'x');

  const findings meant = found_in_name(full, 96);
  const findings cut = found_in_name(full, 95);

  ASSERT_EQ(kinds_of(meant), kind_list{"unterminated-text"});
  EXPECT_EQ(meant[0].level, severity::note);
  EXPECT_EQ(kinds_of(cut), (kind_list{"unterminated-text", "wrong-text-length"}));
  EXPECT_EQ(cut[0].level, severity::warning);
  EXPECT_EQ(found_in_name(bytes(95, 'x'), 95), findings{});
}

TEST_F(CheckTexts, ALengthThatDiffersIsANote) {
  EXPECT_EQ(
      found_in_name("Films", 6),
      (findings{{second_service + first_name_at, severity::note, "wrong-text-length",
                 "the name of service " + std::string(films_text) + " has 5 bytes, its length says 6", no_length}}));
}

TEST_F(CheckTexts, AServiceWithoutANameIsANote) { EXPECT_EQ(kinds_of(found_in_name("", 0)), kind_list{"no-name"}); }

TEST_F(CheckTexts, AProviderWithAWrongLengthIsNotFoundByItsName) {
  const std::size_t provider = group_place(GROUP_PROVIDER).array;
  channel_file file = sound_file();

  EXPECT_EQ(found_in(file.set(provider + 4, 2, 3)),
            (findings{{provider + 6, severity::warning, "wrong-text-length",
                       "the name of provider \"Free\" (id 1) has 4 bytes, its length says 3",
                       "searches for a provider by its name compare the length: this one is not found, and a channel "
                       "search adds it a second time"}}));
}

TEST_F(CheckTexts, ANetworksNameMayFillItsField) {
  channel_file file = sound_file();
  file.data.replace(first_network + 12, 64, bytes(64, 'n'));

  const findings found = found_in(file);

  ASSERT_EQ(kinds_of(found), kind_list{"unterminated-text"});
  EXPECT_EQ(found[0].offset, first_network + 12);
}

}  // namespace
