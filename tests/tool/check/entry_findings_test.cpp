// Findings in the entries of views: those without a service, those that are there twice, and services in no view. Each
// in a file that has that one fault.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include "tool/check/findings_host.h"

namespace {

using namespace findings_test;

std::size_t entry_at(int view, std::size_t position) {
  return view_place(view).array + position * test_support::entry_size;
}

using CheckEntries = test_support::store_test;

TEST_F(CheckEntries, AnEntryWithoutServiceIsAnError) {
  channel_file file = sound_file();
  file.entry(VIEW_ALL, {.service_id = 9}, 3);

  EXPECT_EQ(found_in(file),
            (findings{{entry_at(VIEW_ALL, 2), severity::error, "unresolved-entry",
                       "the ALL view, position 3: number 3 (net 1, network 1, ts 100, 11000000 H, service 9) resolves "
                       "to no service",
                       "a load keeps it without a service, with an ERROR line: it shows up without a name and cannot "
                       "be tuned to"}}));
}

TEST_F(CheckEntries, EntriesResolveWithinTheTolerance) {
  channel_file file = sound_file();
  file.set(entry_at(VIEW_TV, 0) + entry_field::frequency, 4, 11'002'499);
  EXPECT_EQ(found_in(file), findings{});

  file.set(entry_at(VIEW_TV, 0) + entry_field::frequency, 4, 11'002'500);
  EXPECT_EQ(found_of_kind(file, "unresolved-entry").size(), 1U);
}

TEST_F(CheckEntries, TheSameEntryTwiceInAViewIsFound) {
  const findings found = found_in(sound_file().entry(VIEW_TV, news, 3));

  EXPECT_EQ(found, (findings{{entry_at(VIEW_TV, 2), severity::warning, "duplicate-entry",
                              "the TV view, position 3: number 3 (net 1, network 1, ts 100, 11000000 H, service 1) is "
                              "the same as position 1",
                              "searches by identity stop at the first one; the service is listed twice"}}));
}

TEST_F(CheckEntries, AnotherTagMakesAnotherEntry) {
  channel_file file = sound_file();
  file.entry(VIEW_TV, news, 3).set(entry_at(VIEW_TV, 2) + entry_field::vch_tag, 1, 7);

  EXPECT_EQ(found_in(file), findings{});
}

TEST_F(CheckEntries, ANumberTwiceInAViewIsFound) {
  channel_file file = sound_file();
  file.set(entry_at(VIEW_ALL, 1) + entry_field::major_ch_num, 2, 1);

  EXPECT_EQ(found_in(file), (findings{{entry_at(VIEW_ALL, 1), severity::warning, "duplicate-number",
                                       "the ALL view, position 2: number 1 (net 1, network 1, ts 100, 11000000 H, "
                                       "service 2) has the number of position 1",
                                       "a number that is keyed in leads to the first one; this one is reached by "
                                       "zapping only"}}));

  file.set(entry_at(VIEW_ALL, 1) + entry_field::minor_ch_num, 2, 1);
  EXPECT_EQ(found_in(file), findings{});
}

TEST_F(CheckEntries, APositionKeyTwiceIsANoteOnce) {
  channel_file file = sound_file();
  file.set(entry_at(10, 0) + entry_field::favorite_id, 1, 4).set(entry_at(10, 1) + entry_field::favorite_id, 1, 4);

  EXPECT_EQ(found_in(file),
            (findings{{entry_at(10, 1), severity::note, "duplicate-position-key",
                       "the favourites 1 \"Best\" view, position 2: favourite id 4 occurs before",
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

}  // namespace
