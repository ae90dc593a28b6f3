// An import that follows another list: networks and groups have the numbers that they have there.
#include <gtest/gtest.h>

#include <string>

#include "tool/exchange/import_host.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using namespace tool_test;

class ImportLike : public tool_test::import_test {
 protected:
  static std::string service(int id, const std::string &provider, const std::string &source) {
    return service_line{
        .name = "S" + std::to_string(id) + ";" + provider, .source = source, .service_id = std::to_string(id)}
        .text();
  }
  void SetUp() override {
    import_test::SetUp();
    write_file(path("old.conf"), service(1, "Zebra", "S13.0E") + service(2, "Ant", "S19.2E") +
                                     service(3, "Bear", "S19.2E") + service(4, "Unused", "C"));
    write_file(path("scan.conf"), service(2, "Ant", "S19.2E") + service(5, "Cat", "T") + service(3, "Bear", "S19.2E") +
                                      service(1, "Zebra", "S13.0E"));
    ASSERT_EQ(run({"import", "old.conf", "-o", "old.dat"}).exit_code, 0);
  }
  [[nodiscard]] std::string listed(const std::string &file) const {
    return run({"list", file, "--sort", "service_id", "--columns", "service_id,net_index,provider,provider_id",
                "--format", "csv"})
        .out;
  }
};

TEST_F(ImportLike, NetworksAndGroupsHaveTheNumbersOfTheModel) {
  EXPECT_EQ(run({"import", "scan.conf", "-o", "scan.dat", "--like", "old.dat"}).exit_code, 0);

  const std::string old_list = listed("old.dat");
  const std::string scan = listed("scan.dat");
  const std::string same = "service_id,net_index,provider,provider_id\r\n1,1,Zebra,0\r\n2,2,Ant,1\r\n3,2,Bear,2\r\n";
  EXPECT_TRUE(old_list.starts_with(same)) << old_list;
  EXPECT_EQ(scan, same + "5,4,Cat,4\r\n");
}

TEST_F(ImportLike, GroupsThatNoServiceIsInAreNotTaken) {
  run({"import", "scan.conf", "-o", "scan.dat", "--like", "old.dat"});

  load("scan.dat");

  EXPECT_EQ(provider_names(), (std::vector<std::string>{"Ant", "Bear", "Cat", "Zebra"}));
}

TEST_F(ImportLike, FavouriteGroupsComeInTheOrderOfTheModel) {
  write_file(path("old.conf"), ":Films\n" + service(1, "Ant", "C") + ":News\n" + service(2, "Ant", "C"));
  write_file(path("scan.conf"), ":Sport\n" + service(3, "Ant", "C") + ":News\n" + service(2, "Ant", "C") + ":Films\n" +
                                    service(1, "Ant", "C"));
  ASSERT_EQ(run({"import", "old.conf", "-o", "old.dat"}).exit_code, 0);

  EXPECT_EQ(run({"import", "scan.conf", "-o", "scan.dat", "--like", "old.dat"}).exit_code, 0);

  load("scan.dat");
  std::vector<std::string> names;
  for (std::int16_t group = 0; group < get_fav_group_number(); ++group) {
    names.emplace_back(get_fav_group_info(group)->name);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"Sport", "Films", "News"}));
  ASSERT_LE(run({"export", "scan.dat", "-o", "again.conf", "--to", "vdr"}).exit_code, 1);
  EXPECT_EQ(read_file(path("again.conf")), read_file(path("scan.conf")));
}

TEST_F(ImportLike, AMergeKeepsWhatIsTheSame) {
  run({"import", "scan.conf", "-o", "scan.dat", "--like", "old.dat"});

  const program_result merged = run({"merge", "old.dat", "scan.dat", "--dry-run"});

  EXPECT_NE(merged.out.find("1 service added, 1 deleted, 3 kept"), std::string::npos) << merged.out << merged.err;
}

TEST_F(ImportLike, IndexesOfTheInputGiveWayToThoseOfTheModel) {
  write_file(path("list.csv"), "network_name,net_index,network_id,ts_id,frequency,service_id\n"
                               "S19.2E,1,1,1,12000000,2\nS13.0E,9,1,1,12000000,1\nOther,1,1,1,12000000,7\n");

  EXPECT_EQ(run({"import", "list.csv", "-o", "scan.dat", "--like", "old.dat"}).exit_code, 0);

  EXPECT_EQ(
      run({"list", "scan.dat", "--sort", "service_id", "--columns", "network_name,net_index", "--format", "csv"}).out,
      "network_name,net_index\r\nS13.0E,1\r\nS19.2E,2\r\nOther,4\r\n");
}

TEST_F(ImportLike, AModelThatIsNoChannelFileIsRefused) {
  EXPECT_EQ(run({"import", "scan.conf", "-o", "scan.dat", "--like", "missing"}).exit_code, 2);
  EXPECT_EQ(run({"import", "scan.conf", "-o", "scan.dat", "--like", "scan.conf"}).exit_code, 2);
}

}  // namespace
