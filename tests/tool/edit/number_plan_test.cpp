// `chlist renumber --plan`: what the lines of a plan number, and what they leave alone.
#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;

class NumberPlan : public edit_host {
 protected:
  void write_plan(const std::string &text) const { write_file(path("plan.txt"), text); }

  // The file with other numbers in ALL, by position, which entries with the same number in other views follow.
  [[nodiscard]] bytes with_numbers_of_all(const std::vector<std::uint64_t> &numbers) const {
    struct {
      std::size_t position;
      std::vector<std::pair<int, std::size_t>> followers;
    } const services[] = {{0, {{VIEW_TV, 0}, {VIEW_USER, 1}, {VIEW_PROMOTION, 0}, {best, 1}}},
                          {1, {{VIEW_TV, 1}, {best, 0}}},
                          {2, {{VIEW_RADIO, 0}}},
                          {3, {{VIEW_TV, 2}, {best, 2}}},
                          {4, {}}};
    bytes changed = before.data;
    for (const auto &service : services) {
      put(changed, number_at(VIEW_ALL, service.position), 2, numbers[service.position]);
      for (const auto &[view, position] : service.followers) {
        put(changed, number_at(view, position), 2, numbers[service.position]);
      }
    }
    return changed;
  }

  void expect_plan(const std::string &plan, const std::vector<std::uint64_t> &numbers) const {
    write_plan(plan);
    write_file(path(), before.data);
    expect_edit({"renumber", "list.dat", "--yes", "--plan", "plan.txt"}, with_numbers_of_all(numbers));
  }

  void expect_plan_refused(const std::string &plan, const std::string &error) const {
    write_plan(plan);
    expect_refused({"renumber", "list.dat", "--yes", "--plan", "plan.txt"}, error);
  }
};

TEST_F(NumberPlan, NumbersServicesByFieldsAndGroupsInTheirOrder) {
  expect_plan("type=radio from 900\n", {1, 2, 900, 4, 50});
  expect_plan("# television\n\n  type=TV  name~s  from 100 step 10 # by tens\n", {100, 110, 3, 120, 50});
  expect_plan("fav:Best from 100\n", {101, 100, 3, 102, 50});
  expect_plan("\"fav:Best\" from 7 step 2\n", {9, 7, 3, 11, 50});
  expect_plan("all from 10", {10, 11, 12, 13, 14});
}

TEST_F(NumberPlan, AServiceBelongsToTheFirstLineThatItFits) {
  expect_plan("fav:Kids from 1\ntype=TV from 10\nall from 20\n", {10, 11, 20, 1, 21});
}

TEST_F(NumberPlan, ALineMayHaveAWholeCondition) {
  expect_plan("type=TV (name~\"^ne\" or ts_id>100) from 7\n", {7, 2, 3, 8, 50});
  expect_plan("name='Sport' or name=\"News\" from 7 # two\n", {7, 2, 3, 8, 50});
}

TEST_F(NumberPlan, AConditionNumbersWithoutAPlan) {
  expect_edit({"renumber", "list.dat", "--where", "type=TV", "--from", "10", "--yes"},
              with_numbers_of_all({10, 11, 3, 12, 50}));
  expect_edit({"renumber", "list.dat", "--where", "type=radio", "--from", "9"},
              with_numbers_of_all({10, 11, 9, 12, 50}));
  EXPECT_EQ(run({"renumber", "list.dat", "--where", "type=TV", "Sport", "7"}).exit_code, 2);
}

TEST_F(NumberPlan, SeveralServicesAreShownFirst) {
  write_plan("type=TV from 10\n");

  const auto result = run({"renumber", "list.dat", "--plan", "plan.txt"});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_TRUE(result.out.starts_with("preview: 3 services chosen, changed\n")) << result.out;
  EXPECT_EQ(result.err, "chlist: renumber: list.dat: 3 services are chosen, and none is changed without --yes\n");
  expect_bytes(before.data);
}

TEST_F(NumberPlan, IsALineOfApply) {
  write_plan("type=radio from 900\n");
  const std::string line = run({"renumber", "none.dat", "--plan", "plan.txt", "--print-edits"}).out;
  EXPECT_EQ(line, "renumber --plan plan.txt\n");
  write_file(path("a.edits"), line);

  expect_edit({"apply", "list.dat", "a.edits"}, with_numbers_of_all({1, 2, 900, 4, 50}));
}

TEST_F(NumberPlan, GapsStayOnWish) { expect_plan("all from 101 gaps\n", {101, 102, 103, 104, 150}); }

TEST_F(NumberPlan, LockedNumbersAreUntouched) {
  expect_plan("all from 1 step 2\nlock number 3\n", {1, 5, 3, 7, 9});
  expect_plan("lock number 2 to 3\nall from 1\n", {1, 2, 3, 4, 5});
  expect_plan("lock name=Sport\nall from 3\n", {3, 5, 6, 4, 7});
}

TEST_F(NumberPlan, TellsCollisionsBeforeAnythingIsWritten) {
  expect_plan_refused("type=radio from 1\nfav:Kids from 50\n",
                      "2 numbers would belong to two services:\n"
                      "  1  \"News\", which has it and \"Music\" by line 1\n"
                      "  50  \"Sport\" by line 2 and an entry without a service, which has it");
  expect_plan_refused("fav:Kids from 900\ntype=radio from 900\n",
                      "1 number would belong to two services:\n  900  \"Music\" by line 2 and \"Sport\" by line 1");
}

TEST_F(NumberPlan, TellsTheFirstTwentyOfManyCollisions) {
  before = channel_file();
  for (std::uint16_t id = 1; id <= 21; ++id) {
    const service_data television = {.service_id = id, .name = "Television"};
    const auto radio_id = static_cast<std::uint16_t>(100 + id);
    const service_data radio = {.service_id = radio_id, .service_type = SERVICE_TYPE_RADIO, .name = "Radio"};
    before.service(television).service(radio).entry(VIEW_ALL, television, id).entry(VIEW_ALL, radio, radio_id);
  }
  write_file(path(), before.data);
  write_plan("type=radio from 1\n");

  const auto lines = lines_of(run({"renumber", "list.dat", "--yes", "--plan", "plan.txt"}).err);

  ASSERT_EQ(lines.size(), 22U);
  EXPECT_EQ(lines[0], "chlist: renumber: 21 numbers would belong to two services:");
  EXPECT_EQ(lines[1], "  1  \"Television\", which has it and \"Radio\" by line 1");
  EXPECT_EQ(lines[20], "  20  \"Television\", which has it and \"Radio\" by line 1");
  EXPECT_EQ(lines[21], "  and 1 more");
}

TEST_F(NumberPlan, ALineThatNumbersNothingIsTold) {
  write_plan("type=radio from 900\nname=nobody from 5\n");

  const auto result = run({"renumber", "list.dat", "--yes", "--plan", "plan.txt"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: renumber: list.dat: line 2 of the plan: no service is left for it\n");
  expect_bytes(with_numbers_of_all({1, 2, 900, 4, 50}));
}

TEST_F(NumberPlan, RefusesLinesThatItDoesNotUnderstand) {
  struct {
    std::string plan;
    std::string error;
  } const plans[] = {
      {"# one\nname from 9\n", "line 2: the condition, character 5: behind name one of = != ~ !~ < > is missing"},
      {"all\n", "line 1: \"from NUMBER\" is missing"},
      {"all from\n", "line 1: the number behind from is missing"},
      {"all from 1 step\n", "line 1: the number behind step is missing"},
      {"all from 1 gaps 2\n", "line 1: \"2\" is not expected here"},
      {"all from 1-2\n", "line 1: \"1-2\": numbers of a plan have no minor number"},
      {"\"all from 1\n", "line 1: a \" is not closed"},
      {"type=TV\n", "line 1: \"from NUMBER\" is missing"},
      {"lock\n", "line 1: which services: all, fav:GROUP or a condition is missing"},
      {"lock number 1 to\n", "line 1: the number behind to is missing"},
      {"all from 0\n",
       "line 1: \"0\" is no channel number: NUMBER is 1 to 32767, or NUMBER-MINOR with a minor number of 0 to 32767"}};
  for (const auto &each : plans) {
    expect_plan_refused(each.plan, "plan.txt: " + each.error);
  }
}

TEST_F(NumberPlan, RefusesWhatTheListDoesNotHave) {
  expect_plan_refused("all from 32766\n", "line 1 of the plan: its numbers would pass 32767");
  expect_refused({"renumber", "list.dat", "--plan", "none.txt"}, "none.txt: No such file or directory");
}

}  // namespace
