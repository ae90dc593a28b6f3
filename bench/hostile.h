// Operations on whole views over lists made to be costly for them (tests/support/hostile_lists.h), each checked while
// it is measured. As many services as the scene was built with.
#pragma once

namespace bench {

// Every service on one transponder, the last of them shown in the ALL view, without flags and with one; and the flags
// of the view.
void hang_on_one_transponder();
void flag_view();
void hang_flagged_on_one_transponder();
void clear_flags_of_view();

// One service on each transponder, the last of them shown; and the removal of all that are shown, and the dump of the
// view at level 2, written to nowhere.
void hang_on_a_transponder_each();
void remove_shown();
void dump_view();

// A USER view that the TV view follows, four entries for five services of the scene; and the move of all its entries,
// from the last to the first.
void show_followed_view();
void move_whole_view();

// One service on each of transponders 1 kHz apart, or with identities crafted against tables whose multiplier is known.
void hang_1_khz_apart();
void hang_crafted();
void link_shown();

}  // namespace bench
