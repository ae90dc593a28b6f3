// Histories of files: states that come and go, bounds, and files that are no history.
#include "chlist/files/history.h"

#include <random>

#include "chlist/files/byte_delta.h"
#include "tool/chlist_host.h"

namespace {

namespace fs = std::filesystem;

using chlist::apply_delta;
using chlist::delta_between;
using chlist::file_contents;
using chlist::history;

constexpr std::size_t enough = 1U << 20U;

std::string by_chance(std::mt19937 &chance, std::size_t size) {
  std::string bytes(size, '\0');
  for (char &each : bytes) {
    each = static_cast<char>(std::uniform_int_distribution<int>(0, 255)(chance));
  }
  return bytes;
}

void expect_delta(const std::string &before, const std::string &after, std::size_t most) {
  const std::string delta = delta_between(before, after);
  EXPECT_LE(delta.size(), most);
  EXPECT_TRUE(apply_delta(before, delta, after.size()) == after);
}

TEST(ByteDelta, IsSmallForWhatMovedOrChangedALittle) {
  std::mt19937 chance(1);
  const std::string before = by_chance(chance, 100'000);
  std::string changed = before;
  changed[5000] = static_cast<char>(~changed[5000]);
  expect_delta(before, before, 24);
  expect_delta(before, changed, 100);
  expect_delta(before, before.substr(300), 50);
  expect_delta(before, by_chance(chance, 40) + before, 100);
  expect_delta(before, before.substr(70'000) + before.substr(0, 70'000), 150);
}

TEST(ByteDelta, MakesWhateverIsWanted) {
  std::mt19937 chance(2);
  for (const std::size_t size : {0U, 1U, 31U, 32U, 33U, 63U, 64U, 65U, 1000U}) {
    for (const std::size_t other : {0U, 1U, 31U, 32U, 33U, 1000U}) {
      expect_delta(by_chance(chance, size), by_chance(chance, other), other + 24);
      expect_delta(std::string(size, '\0'), std::string(other, '\0'), other + 24);
    }
  }
}

TEST(ByteDelta, TrustsNothing) {
  std::mt19937 chance(3);
  const std::string before = by_chance(chance, 500);
  const std::string delta = delta_between(before, before.substr(100) + before);
  EXPECT_EQ(apply_delta(before, delta, 899), std::nullopt);
  EXPECT_EQ(apply_delta(before.substr(1), delta, 900), std::nullopt);
  for (std::size_t length = 1; length < delta.size(); ++length) {
    const auto made = apply_delta(before, delta.substr(0, length), enough);
    EXPECT_TRUE(!made || made->size() <= 900);
  }
  for (int round = 0; round < 2000; ++round) {
    std::string damaged = delta;
    damaged[std::uniform_int_distribution<std::size_t>(0, delta.size() - 1)(chance)] = static_cast<char>(round);
    const auto made = apply_delta(before, damaged, enough);
    EXPECT_TRUE(!made || made->size() <= enough);
  }
}

class History : public test_support::file_test {
 protected:
  static file_contents contents(const std::string &bytes) { return {{"", bytes}}; }

  // What an edit does.
  void edit(const std::string &bytes, const std::string &line) const {
    chlist::keep_history(path(), contents(bytes), {line});
    test_support::write_file(path(), bytes);
  }

  // The states that can be put together, and a mark behind the one that the file is in.
  [[nodiscard]] std::string states() const {
    history kept(path());
    std::string text;
    kept.find_place(chlist::contents_on_disk(path()));
    for (std::size_t index = 0; index < kept.size(); ++index) {
      text += kept.contents_of(index).at("") + (index == kept.place() ? "* " : " ");
    }
    return text;
  }

  void go_to(std::size_t index) const {
    history kept(path());
    kept.go_to(index);
    kept.write();
    chlist::write_contents(path(), kept.contents_of(index));
  }

  [[nodiscard]] std::string history_path() const { return path() + ".history"; }
};

TEST_F(History, KeepsWhatTheFileWas) {
  test_support::write_file(path(), "one");
  edit("two", "b");
  edit("three", "c");

  EXPECT_EQ(states(), "one two three* ");
  const history kept(path());
  EXPECT_EQ(kept.at(0).what, std::vector<std::string>());
  EXPECT_EQ(kept.at(2).what, std::vector<std::string>{"c"});
  EXPECT_EQ(kept.at(2).number, 3);
}

TEST_F(History, AFileThatIsNewHasNone) {
  edit("one", "a");

  EXPECT_FALSE(fs::exists(history_path()));
}

TEST_F(History, ANewEditDropsWhatWasUndone) {
  test_support::write_file(path(), "one");
  edit("two", "b");
  edit("three", "c");
  go_to(0);
  EXPECT_EQ(states(), "one* two three ");

  edit("four", "d");

  EXPECT_EQ(states(), "one four* ");
}

TEST_F(History, WhatSomethingElseMadeBecomesAState) {
  test_support::write_file(path(), "one");
  edit("two", "b");
  test_support::write_file(path(), "other");

  history kept(path());
  EXPECT_FALSE(kept.find_place(chlist::contents_on_disk(path())));
  EXPECT_EQ(states(), "one two other* ");
  edit("three", "c");
  EXPECT_EQ(states(), "one two other three* ");
}

TEST_F(History, AFileThatWasPutBackIsInItsState) {
  test_support::write_file(path(), "one");
  edit("two", "b");
  edit("one", "c");
  EXPECT_EQ(states(), "one two one* ");
  test_support::write_file(path(), "two");
  EXPECT_EQ(states(), "one two* one ");
}

// The history is written first: without power in between, the file is in the state before the last.
TEST_F(History, IsWholeWhenTheFileWasNotReplacedAnyMore) {
  test_support::write_file(path(), "one");
  edit("two", "b");
  chlist::keep_history(path(), contents("three"), {"c"});

  EXPECT_EQ(states(), "one two* three ");
  edit("four", "d");
  EXPECT_EQ(states(), "one two four* ");
}

TEST_F(History, IsBounded) {
  test_support::write_file(path(), "0");
  for (int count = 1; count <= 105; ++count) {
    edit(std::to_string(count), "edit");
  }

  const history kept(path());
  EXPECT_EQ(kept.size(), chlist::history_bounds().states);
  EXPECT_EQ(kept.at(0).number, 7);
  EXPECT_EQ(kept.contents_of(0), contents("6"));
}

TEST_F(History, OfLargeFilesKeepsFewerStates) {
  std::mt19937 chance(4);
  history kept(path(), {.bytes = 1000});
  std::vector<file_contents> made;
  for (int count = 0; count < 7; ++count) {
    made.push_back(contents(by_chance(chance, 200)));
    kept.append(made.back(), "", {"edit"});
  }

  EXPECT_EQ(kept.size(), 5U);
  EXPECT_EQ(kept.place(), 4U);
  EXPECT_EQ(kept.bytes(), 1000U);
  for (std::size_t index = 0; index < kept.size(); ++index) {
    EXPECT_EQ(kept.contents_of(index), made[index + 2]);
  }
  kept.append(contents(by_chance(chance, 5000)), "", {"edit"});
  EXPECT_EQ(kept.size(), 1U);
}

TEST_F(History, SeveralFilesAreOneState) {
  test_support::write_file(path(), "one");
  history kept(path());
  kept.find_place({{"", "one"}, {".more.json", "{}"}});
  kept.append({{"", "two"}}, "", {"b"});
  kept.append({{"", "three"}, {".more.json", "{1}"}}, "", {"c"});
  kept.write();

  const history again(path());
  EXPECT_EQ(again.contents_of(0), (file_contents{{"", "one"}, {".more.json", "{}"}}));
  EXPECT_EQ(again.contents_of(1), (file_contents{{"", "two"}}));
  EXPECT_EQ(again.contents_of(2), (file_contents{{"", "three"}, {".more.json", "{1}"}}));
}

TEST_F(History, KeepsTheFirstLinesOfMany) {
  test_support::write_file(path(), "one");
  chlist::keep_history(path(), contents("two"), std::vector<std::string>(500, "lock News"));

  const history kept(path());
  EXPECT_EQ(kept.at(1).what.size(), 101U);
  EXPECT_EQ(kept.at(1).what.back(), "# and 400 more");
  EXPECT_EQ(kept.at(1).lines(), 500U);
  EXPECT_EQ(kept.at(0).lines(), 0U);
}

// Whatever is wrong with it, it is refused, or tells what it was made of.
TEST_F(History, DamageIsFound) {
  test_support::write_file(path(), "one" + std::string(200, 'x'));
  edit("two" + std::string(200, 'x'), "b");
  const std::string whole = test_support::read_file(history_path());
  std::mt19937 chance(5);
  std::size_t refused = 0;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const std::string &damaged :
         {whole.substr(0, at),
          whole.substr(0, at) + static_cast<char>(whole[at] ^ 1 << chance() % 8) + whole.substr(at + 1)}) {
      test_support::write_file(history_path(), damaged);
      try {
        const history kept(path());
        for (std::size_t index = 0; index < kept.size(); ++index) {
          EXPECT_EQ(kept.contents_of(index).at("").size(), 203U);
        }
      } catch (const std::runtime_error &error) {
        EXPECT_TRUE(std::string(error.what()).ends_with("it is left as it is")) << error.what();
        ++refused;
      } catch (const std::out_of_range &) {
        // The name of a file is another one.
      }
    }
  }
  EXPECT_GT(refused, whole.size());
}

}  // namespace
