// `chlist diff --as-edits`: the edits that make one list of another.
#include <random>
#include <regex>

#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;

class EditsBetween : public edit_host {
 protected:
  // What `diff --as-edits` prints of two files, edits and comments apart.
  struct printed_edits {
    std::string lines;
    std::string comments;
    int exit_code = 0;
  };

  [[nodiscard]] printed_edits edits(const std::string &from, const std::string &to) const {
    const program_result result = run({"diff", "--as-edits", from, to});
    EXPECT_EQ(result.err, "");
    printed_edits made = {.lines = {}, .comments = {}, .exit_code = result.exit_code};
    std::istringstream text(result.out);
    for (std::string line; std::getline(text, line);) {
      const bool is_comment = line.starts_with("# ");
      (is_comment ? made.comments : made.lines) += (is_comment ? line.substr(2) : line) + '\n';
    }
    return made;
  }

  [[nodiscard]] bool edits_file(const std::string &file, const std::string &lines) const {
    write_file(path("one.edits"), lines);
    return run({"apply", file, "one.edits", "--yes", "--no-backup"}).exit_code != 2;
  }

  // The edits of an evening make list.dat; the same list comes of before.dat by the lines that are printed.
  void expect_edits(const std::string &lines, const std::string &printed) const {
    write_file(path("before.dat"), before.data);
    ASSERT_TRUE(edits_file("list.dat", lines));
    const printed_edits made = edits("before.dat", "list.dat");
    EXPECT_EQ(made.lines, printed);
    EXPECT_EQ(made.comments, "");
    EXPECT_EQ(made.exit_code, 0);
    ASSERT_TRUE(edits_file("before.dat", made.lines));
    EXPECT_EQ(run({"diff", "before.dat", "list.dat"}).out, "no differences\n");
  }
};

TEST_F(EditsBetween, EqualFilesHaveNone) { expect_edits("", ""); }

TEST_F(EditsBetween, NameServicesByTheirIdentities) {
  expect_edits("rename News \"News 24\"\nrename Films F --short\nlock Films\nset Sport type=\"HD TV\" video_pid=none\n"
               "unskip Sport\nset Music provider=Free locked=yes data=yes\n",
               "rename 1:1:100:11000000H:1 \"News 24\"  # News\n"
               "rename --short 1:1:100:11000000H:2 F  # Films\n"
               "lock 1:1:100:11000000H:2  # Films\n"
               "lock 1:1:100:11000000H:5  # Music\n"
               "set 1:1:100:11000000H:5 data=yes provider=3  # Music\n"
               "set 1:1:200:12000000V:3 \"type=HD TV\" video_pid=none  # Sport\n");
}

TEST_F(EditsBetween, NameFlagsUnlessOneHasNoName) {
  expect_edits("set News scrambled=yes\nset Films data=yes\nskip Music\nset Sport flags=131\n",
               "set 1:1:100:11000000H:1 scrambled=yes  # News\n"
               "set 1:1:100:11000000H:2 data=yes  # Films\n"
               "skip 1:1:100:11000000H:5  # Music\n"
               "set 1:1:200:12000000V:3 flags=131  # Sport\n");
}

TEST_F(EditsBetween, RemoveAndMoveServices) {
  expect_edits("remove Films\nset Sport frequency=12345000 service_id=33\n",
               "remove 1:1:100:11000000H:2  # Films\n"
               "set 1:1:200:12000000V:3 frequency=12345000 service_id=33  # Sport\n");
}

TEST_F(EditsBetween, MoveTheFewestEntriesPastThoseWithoutAService) {
  expect_edits("move Sport --to 1\nmove News --view tv --to 3\nmove Music --to 5\n",
               "move 1:1:200:12000000V:3 --view all --to 1\n"
               "move 1:1:100:11000000H:5 --view all --to 5\n"
               "move 1:1:100:11000000H:1 --view tv --after 1:1:200:12000000V:3\n");
}

TEST_F(EditsBetween, NumberEntriesInAllViewsAtOnceOrInOne) {
  expect_edits("renumber News 7\nrenumber Sport 3 --swap\nrenumber Films 30 --view tv\n",
               "renumber 1:1:100:11000000H:1 7\n"
               "renumber 1:1:200:12000000V:3 3 --swap\n"
               "renumber 1:1:100:11000000H:2 30 --view tv\n");
}

TEST_F(EditsBetween, NumberAWholeViewByOneLine) {
  expect_edits("renumber --from 10\nrenumber --from 20 --view fav:Kids\nrenumber --from 5 --view fav:Best\n",
               "renumber --from 10\n"
               "renumber --from 5 --view fav:Best\n"
               "renumber 1:1:200:12000000V:3 20 --view fav:Kids\n");
}

TEST_F(EditsBetween, FavouriteGroupsComeGoAndAreFilled) {
  expect_edits("fav new Evening\nfav add Evening Sport News\nfav delete Kids\nfav rename Best \"The best\"\n"
               "fav remove 1 Films\nfav move Evening --to 1\n",
               "fav rename Best \"The best\"\n"
               "fav new Evening\n"
               "fav delete Kids\n"
               "fav move Evening --to 1\n"
               "fav add Evening 1:1:200:12000000V:3 1:1:100:11000000H:1\n"
               "fav remove \"The best\" 1:1:100:11000000H:2\n");
}

TEST_F(EditsBetween, WhatNoEditDoesIsToldAndCounted) {
  write_file(path("before.dat"), before.data);
  before.service({.ts_id = 200, .frequency = 12'000'000, .service_id = 77, .polarisation = 1, .name = "Opera"})
      .set(list_field::bouquet_id, 2, 5);
  write_file(path(), before.data);
  ASSERT_TRUE(edits_file("list.dat", "lock News\n"));

  const program_result result = run({"diff", "--as-edits", "before.dat", "list.dat"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.out, "lock 1:1:100:11000000H:1  # News\n"
                        "# No edit does this:\n"
                        "# 1 service added, 0 removed, 0 changed; 1 difference around the services\n"
                        "# Added:\n"
                        "#   \"Opera\" (1:1:200:12000000V:77)\n"
                        "# Around the services:\n"
                        "#   bouquet id: - -> 5\n");
}

// Lists and edits that come by chance.
class EditsByChance : public EditsBetween {
 protected:
  std::size_t below(std::size_t end) { return std::uniform_int_distribution<std::size_t>(0, end - 1)(chance_); }

  template <class Value>
  const Value &one_of(const std::vector<Value> &values) {
    return values[below(values.size())];
  }

  channel_file list() {
    channel_file file;
    services_.clear();
    const std::vector<std::string> names = {"News", "news", "Films", "Sport 1", "#1", "-x", "Música", "7", "A \"B\""};
    for (std::uint16_t id = 1; id <= 12; ++id) {
      const std::uint16_t transponder = static_cast<std::uint16_t>(id / 4);
      const bool is_radio = below(4) == 0;
      services_.push_back({.ts_id = transponder,
                           .frequency = 11'000'000U + 100'000U * transponder,
                           .service_id = id,
                           .polarisation = 1,
                           .service_type = is_radio ? std::uint8_t{SERVICE_TYPE_RADIO} : std::uint8_t{SERVICE_TYPE_TV},
                           .name = one_of(names)});
      file.service(services_.back());
    }
    file.group(GROUP_PROVIDER, 0, "Free").group(GROUP_PROVIDER, 4, "Pay");
    file.group(GROUP_FAV, 0, "Best").group(GROUP_FAV, 1, "Kids").group(GROUP_FAV, 2, "2");
    for (const int view : {int{VIEW_ALL}, int{VIEW_TV}, int{VIEW_RADIO}, int{VIEW_USER}, best, kids}) {
      add_entries(file, view);
    }
    return file;
  }

  void add_entries(channel_file &file, int view) {
    std::vector<service_data> shown = services_;
    std::ranges::shuffle(shown, chance_);
    if (view != VIEW_ALL) {
      shown.resize(below(shown.size()));
    } else if (below(2) == 0) {
      shown.insert(shown.begin() + 4, {.service_id = 999});  // resolves to nothing
    }
    std::uint16_t number = 0;
    for (const service_data &service : shown) {
      file.entry(view, service, number = static_cast<std::uint16_t>(number + 1 + below(3)));
    }
  }

  std::string service() {
    const service_data &data = one_of(services_);
    return fmt::format("1:1:{}:{}V:{}", data.ts_id, data.frequency, data.service_id);
  }

  // Everything is drawn in front of the words: in which order the arguments of a call are, compilers decide.
  std::string edit() {
    const std::vector<std::string> groups = {"Best", "Kids", "1", "2", "3", "Late"};
    const std::size_t kind = below(16);
    const std::string number = std::to_string(1 + below(30));
    const std::size_t place = 1 + below(5);
    const std::string chosen = service();
    const std::string other = service();
    const std::string view = one_of<std::string>({"all", "tv", "radio", "user", "fav:1", "fav:2"});
    const std::string group = one_of(groups);
    switch (kind) {
      case 0:
        return fmt::format("rename {} \"Name {}\"", chosen, number);
      case 1:
        return fmt::format("{} {}", one_of<std::string>({"lock", "unlock", "skip", "unskip"}), chosen);
      case 2:
        return fmt::format("set {} provider={}", chosen, one_of<std::string>({"Free", "Pay", "none"}));
      case 3:
        return fmt::format("set {} pcr_pid={} scrambled=yes", chosen, number);
      case 4:
        return fmt::format("renumber {} {} --swap", chosen, number);
      case 5:
        return fmt::format("renumber {} {} --shift --view {}", chosen, number, view);
      case 6:
        return fmt::format("renumber --from {} --view {}", number, view);
      case 7:
        return fmt::format("sort --by {} --view {}", one_of<std::string>({"name", "number", "transponder"}), view);
      case 8:
      case 9:
        return fmt::format("move {} {} --view {} --to {}", chosen, other, view, place);
      case 10:
        return fmt::format("fav new {}", group);
      case 11:
        return fmt::format("fav add {} {} {}", group, chosen, other);
      case 12:
        return fmt::format("fav remove {} {}", group, chosen);
      case 13:
        return fmt::format("fav move {} --to {}", group, place);
      case 14:
        return fmt::format("fav rename {} {}", group, one_of(groups));
      default:
        return "remove " + chosen;
    }
  }

  // What differs behind the edits is what they told; they are the same whenever they are asked for, and there are no
  // more of them. Returns what differs behind them.
  [[nodiscard]] std::string left_by_edits() const {
    const printed_edits made = edits("before.dat", "list.dat");
    EXPECT_EQ(edits("before.dat", "list.dat").lines, made.lines);
    EXPECT_TRUE(edits_file("before.dat", made.lines)) << made.lines;
    const program_result left = run({"diff", "before.dat", "list.dat"});
    EXPECT_EQ(made.comments, left.exit_code == 0 ? "" : "No edit does this:\n" + left.out);
    EXPECT_EQ(made.exit_code, left.exit_code);
    EXPECT_EQ(edits("before.dat", "list.dat").lines, "") << made.lines;
    return left.exit_code == 0 ? "" : left.out;
  }

  // The lines of a difference that tell another value of anything but what no edit sets: the position key of a service
  // that came to a group before another one left it, the number of an entry that has no service, and the id of a group,
  // which is the first free one when the group is made.
  static std::string what_edits_should_set(const std::string &difference) {
    static const std::regex no_edit_sets(
        "favourite key in .*|.*: entries without a service: .*|favourite group \\d+: id: .*");
    std::string lines;
    std::istringstream text(difference);
    for (std::string line; std::getline(text, line);) {
      const std::string told = line.substr(std::min(line.find_first_not_of(' '), line.size()));
      if (line.find(" -> ") != std::string::npos && !std::regex_match(told, no_edit_sets)) {
        lines += line + '\n';
      }
    }
    return lines;
  }

 private:
  std::mt19937 chance_{20};
  std::vector<service_data> services_;
};

TEST_F(EditsByChance, MakeTheSameListAgain) {
  constexpr int rounds = 20;
  int complete = 0;
  for (int round = 0; round < rounds; ++round) {
    SCOPED_TRACE(round);
    write_file(path(), list().data);
    write_file(path("before.dat"), read_file(path()));
    std::string done;
    for (int count = 0; count < 12; ++count) {
      const std::string line = edit() + '\n';
      done += edits_file("list.dat", line) ? line : "";
    }
    SCOPED_TRACE(done);
    const std::string left = left_by_edits();
    EXPECT_TRUE(left.empty() || left.starts_with("0 services added, 0 removed, ")) << left;
    EXPECT_EQ(what_edits_should_set(left), "");
    complete += left.empty() ? 1 : 0;
  }
  EXPECT_GE(complete, rounds - 3);
}

TEST_F(EditsByChance, TellWhatTheyLeaveOfListsThatHaveNothingInCommon) {
  for (int round = 0; round < 10; ++round) {
    SCOPED_TRACE(round);
    write_file(path("before.dat"), list().data);
    write_file(path(), list().data);
    EXPECT_NE(left_by_edits(), "");
  }
}

}  // namespace
