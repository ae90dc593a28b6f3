// Random sequences of calls, each made on the library and on the model. A sequence that fails is shrunk and printed as
// lines of C that can be pasted into a test of the fixture sequence_test.
//
// The sequences are the same in every run, with sanitizers a quarter of them. RC_PARAMS="seed=42 max_success=5000"
// explores others.
#include <base/verbosity.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <ostream>
#include <sstream>

#include "commands.h"
#include "host.h"
#include "model.h"
#include "support/rounds.h"
#include "support/store_builder.h"
#include "support/temp_dir.h"
#include "worth_trying.h"

namespace model_tests {
namespace {

struct sequence {
  std::vector<command> calls;
};

// What RapidCheck prints of a sequence.
void showValue(const sequence &shown, std::ostream &out) {
  for (const command &call : shown.calls) {
    out << '\n' << call;
  }
}

rc::Gen<command> calls_of(const operation &called) {
  return rc::gen::map(rc::gen::exec([&called] {
                        numbers given;
                        for (const argument each : called.arguments) {
                          given.push_back(*rc::gen::elementOf(worth_trying().at(each)));
                        }
                        return given;
                      }),
                      [&called](const numbers &given) {
                        return command{&called, given};
                      });
}

rc::Gen<command> calls_of(const std::vector<family> &families) {
  std::vector<const operation *> chosen;
  for (const operation &each : operations()) {
    const bool belongs = std::find(families.begin(), families.end(), each.belongs_to) != families.end();
    chosen.insert(chosen.end(), static_cast<std::size_t>(belongs ? each.weight : 0), &each);
  }
  return rc::gen::mapcat(rc::gen::elementOf(chosen), [](const operation *called) { return calls_of(*called); });
}

rc::Gen<sequence> sequences_of(const std::vector<family> &families) {
  return rc::gen::map(rc::gen::container<std::vector<command>>(calls_of(families)),
                      [](const std::vector<command> &calls) { return sequence{calls}; });
}

const operation &named(const std::string &name) {
  return *std::find_if(operations().begin(), operations().end(),
                       [&name](const operation &each) { return each.name == name; });
}

using calls = std::vector<command>;

void add_call(calls &made, const std::string &name, const numbers &given) { made.push_back({&named(name), given}); }

// Services 1..n on one transponder, each with an entry in the ALL and the TV view.
calls lineup(int n) {
  calls made;
  for (int id = 1; id <= n; ++id) {
    add_call(made, "host::file_service", {1, 1, 100, 11'000'000, id, 0, 1});
    add_call(made, "host::append", {0, 1, 1, 100, 11'000'000, id, 0, id, 0});
    add_call(made, "host::append", {1, 1, 1, 100, 11'000'000, id, 0, id, 0});
  }
  return made;
}

// One or two short of every table but the large views.
calls nearly_full() {
  calls made = lineup(45);
  for (int name = 9; name < 9 + MAX_PROVIDER - 10; ++name) {
    add_call(made, "host::add_provider", {name});
  }
  for (int name = 1; name <= 8; ++name) {
    add_call(made, "host::add_provider", {name});
  }
  for (int name = 9; name < 9 + MAX_FAV - 2; ++name) {
    add_call(made, "host::add_fav_group", {name});
  }
  for (int position = 0; position < MAX_FAV_NUM - 2; ++position) {
    add_call(made, "host::add_favourite", {0, 0, position});
  }
  for (int id = 7; id < 7 + MAX_RETURN_CHANNEL - 2; ++id) {
    add_call(made, "add_return_channel", {0, 1, 1, 100, 11'000'000, id, 0});
  }
  for (int id = 1; id < MAX_PROMO_CHANNEL; ++id) {
    add_call(made, "host::append", {5, 1, 1, 100, 11'000'000, id, 0, id, 0});
  }
  return made;
}

class sequence_test : public test_support::store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    const std::string tried = "seed=10 max_size=120 max_success=" + std::to_string(test_support::rounds(200));
    ::setenv("RC_PARAMS", tried.c_str(), 0);
  }

  // Every sequence starts from an initialised list, as a test does, and from the prelude.
  void check(const std::vector<family> &families, const calls &prelude = {}) {
    rc::detail::checkGTest([&] {
      const sequence tried = *sequences_of(families);
      store_test::SetUp();
      std::fill(std::begin(verbosity_map), std::end(verbosity_map), -1);
      host::start(dir_.path().c_str());
      model expected;
      for (const command &call : prelude) {
        RC_ASSERT(apply(call, expected));
      }
      for (const command &call : tried.calls) {
        if (const std::string complaint = run(call, expected); !complaint.empty()) {
          std::ostringstream out;
          out << "at " << call << '\n' << complaint;
          RC_FAIL(out.str());
        }
      }
    });
  }

 private:
  test_support::temp_dir dir_;
};

TEST_F(sequence_test, EveryOperationFromAnEmptyList) {
  check({family::store, family::views, family::order, family::groups, family::favourites, family::history});
}

TEST_F(sequence_test, EveryOperationOnALineUp) {
  check({family::store, family::views, family::order, family::groups, family::favourites, family::history}, lineup(6));
}

TEST_F(sequence_test, TheStoreAndItsViews) { check({family::store, family::views}, lineup(3)); }

TEST_F(sequence_test, SortingAndMoving) { check({family::views, family::order}, lineup(6)); }

TEST_F(sequence_test, GroupsAndServiceLists) { check({family::store, family::groups}, lineup(6)); }

TEST_F(sequence_test, Favourites) { check({family::favourites}, lineup(6)); }

TEST_F(sequence_test, FavouritesOfAListThatChanges) { check({family::store, family::favourites}, lineup(6)); }

TEST_F(sequence_test, TheHistory) { check({family::views, family::history}, lineup(6)); }

TEST_F(sequence_test, NearTheLimits) {
  check({family::views, family::groups, family::favourites, family::history}, nearly_full());
}

}  // namespace
}  // namespace model_tests
