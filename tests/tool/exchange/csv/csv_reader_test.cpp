// CSV that is read: the columns that a line-up comes from, and rows and cells that cannot be read.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

#include "tool/exchange/csv/csv_host.h"

namespace {

using namespace tool_test::csv;

TEST_F(CsvLineUp, TheIdentityIsEnough) {
  const line_up made = read("service_id,frequency,ts_id,network_id\r\n4,11000000,2,1\r\n");

  ASSERT_EQ(made.services.size(), 1U);
  const line_up_service &service = made.services[0];
  EXPECT_EQ(service.line, 2U);
  EXPECT_EQ(service.fields.service_id, 4);
  EXPECT_EQ(service.fields.frequency, 11'000'000);
  EXPECT_EQ(service.fields.ts_id, 2);
  EXPECT_EQ(service.fields.network_id, 1);
  EXPECT_EQ(service.fields.service_type, SERVICE_TYPE_TV);
  EXPECT_EQ(service.fields.source_type, 1);
  EXPECT_EQ(service.fields.video_pid, 0xFFFF);
  EXPECT_FALSE(service.number);
  EXPECT_TRUE(service.is_listed);
}

TEST_F(CsvLineUp, TheIdentityIsNeeded) {
  const std::string why = "; network_id, ts_id, frequency and service_id are what a service is known by";
  EXPECT_EQ(refusal("ts_id,frequency,service_id\n"), "line 1: has no column network_id" + why);
  EXPECT_EQ(refusal("network_id,frequency,service_id\n"), "line 1: has no column ts_id" + why);
  EXPECT_EQ(refusal("network_id,ts_id,service_id\n"), "line 1: has no column frequency" + why);
  EXPECT_EQ(refusal("network_id,ts_id,frequency\n"), "line 1: has no column service_id" + why);
  EXPECT_EQ(refusal("network_id,ts_id,frequency,service_id,name,name\n"), "line 1: has two columns 'name'");
  EXPECT_EQ(read("").services.size(), 0U);
}

TEST_F(CsvLineUp, UnknownColumnsAreCounted) {
  const line_up made = read("network_id,ts_id,frequency,service_id,Remark\n1,2,3,4,x\n1,2,3,5,\n1,2,3,6,y\n");

  EXPECT_EQ(made.services.size(), 3U);
  EXPECT_EQ(losses(lost), (row_list{"cells of the column 'Remark': 2"}));
}

TEST_F(CsvLineUp, UnknownColumnsAreNamedByWholeCharacters) {
  read("network_id,ts_id,frequency,service_id,Größe,\x1B[31mRot\n1,2,3,4,x,y\n");
  EXPECT_EQ(losses(lost), (row_list{"cells of the column 'Größe': 1", "cells of the column '?[31mRot': 1"}));
}

TEST_F(CsvLineUp, ALongNameOfAColumnIsCutBetweenCharacters) {
  std::string name;
  std::string kept;
  for (int count = 0; count < 40; ++count) {
    name += "é";
    kept += count < 31 ? "é" : "";
  }
  read("network_id,ts_id,frequency,service_id," + name + "\n1,2,3,4,x\n");
  EXPECT_EQ(losses(lost), (row_list{"cells of the column '" + kept + "…': 1"}));
}

TEST_F(CsvLineUp, NoneIsNoGroup) {
  const line_up made = read("network_id,ts_id,frequency,service_id,provider,genre,country,name\n"
                            "1,2,3,4,none,None,NONE,none\n"
                            "1,2,3,5,Nonesuch,none at all,\"none \",\n");

  ASSERT_EQ(made.services.size(), 2U);
  EXPECT_EQ(made.services[0].provider, "");
  EXPECT_EQ(made.services[0].genre, "");
  EXPECT_EQ(made.services[0].country, "");
  EXPECT_EQ(made.services[0].name, "none");
  EXPECT_EQ(made.services[1].provider, "Nonesuch");
  EXPECT_EQ(made.services[1].genre, "none at all");
  EXPECT_EQ(made.services[1].country, "none ");
}

TEST_F(CsvLineUp, ARowThatCannotBeReadIsSkipped) {
  const line_up made = read("network_id,ts_id,frequency,service_id\n1,2,3\n1,2,3,4\n1,2,,5\n1,2,3,4,5\n");

  EXPECT_EQ(made.services.size(), 1U);
  ASSERT_EQ(made.skipped.size(), 3U);
  EXPECT_EQ(made.skipped[0].line, 2U);
  EXPECT_EQ(made.skipped[0].reason, "has 3 cells instead of 4");
  EXPECT_EQ(made.skipped[1].line, 4U);
  EXPECT_EQ(made.skipped[1].reason, "has no frequency");
  EXPECT_EQ(made.skipped[2].reason, "has 5 cells instead of 4");
}

TEST_F(CsvLineUp, CellsThatCannotBeReadSayWhy) {
  EXPECT_EQ(skipped("number", "x"), "number=\"x\": VALUE is 1 to 32767");
  EXPECT_EQ(skipped("number", "32768"), "number=\"32768\": VALUE is 1 to 32767");
  EXPECT_EQ(skipped("number", "32767"), "");
  EXPECT_EQ(skipped("number", "1"), "");
  EXPECT_EQ(skipped("number", "0"), "number=\"0\": VALUE is 1 to 32767");
  EXPECT_EQ(skipped("number", "-5"), "number=\"-5\": VALUE is 1 to 32767");
  EXPECT_EQ(skipped("minor", "-1"), "minor=\"-1\": VALUE is 0 to 32767");
  EXPECT_EQ(skipped("minor", "0"), "");
  EXPECT_EQ(skipped("minor", "32767"), "");
  EXPECT_EQ(skipped("minor", "32768"), "minor=\"32768\": VALUE is 0 to 32767");
  EXPECT_EQ(skipped("net_index", "256"), "net_index=\"256\": VALUE is 0 to 255");
  EXPECT_EQ(skipped("net_index", "255"), "");
  EXPECT_EQ(skipped("video_pid", "8192"), "video_pid=\"8192\": VALUE is 0 to 8191, or none");
  EXPECT_EQ(skipped("video_pid", "8191"), "");
  EXPECT_EQ(skipped("video_pid", "none"), "");
  EXPECT_EQ(skipped("polarisation", "X"), "polarisation=\"X\": VALUE is H, V or 0 to 255");
  EXPECT_EQ(skipped("polarisation", "HV"), "polarisation=\"HV\": VALUE is H, V or 0 to 255");
  EXPECT_EQ(skipped("locked", "maybe"), "locked=\"maybe\": VALUE is yes or no");
  EXPECT_EQ(skipped("type", "Televison"), "type=\"Televison\": VALUE is a name as TV, radio or HD TV, or 0 to 255");
  EXPECT_EQ(skipped("name", std::string("a\0b", 3)), "holds a NUL byte");
}

// Which of the two somebody edited cannot be told.
TEST_F(CsvLineUp, ATypeThatItsNumberContradictsIsTold) {
  const line_up made = read("network_id,ts_id,frequency,service_id,type,service_type\n"
                            "1,2,3,4,radio,1\n"
                            "1,2,3,5,radio,2\n"
                            "1,2,3,6,type 200,200\n"
                            "1,2,3,7,radio,\n"
                            "1,2,3,8,,TV\n");

  ASSERT_EQ(made.skipped.size(), 1U);
  EXPECT_EQ(made.skipped[0].line, 2U);
  EXPECT_EQ(made.skipped[0].reason, "type=\"radio\" and service_type=\"1\" are two types");
  ASSERT_EQ(made.services.size(), 4U);
  EXPECT_EQ(made.services[2].fields.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(made.services[3].fields.service_type, SERVICE_TYPE_TV);
}

TEST_F(CsvLineUp, WordsAndLettersAreUnderstood) {
  const line_up made = read("network_id,ts_id,frequency,service_id,polarisation,locked,skipped,type,audio_pid\n"
                            "1,2,3,4,v,yes,0,radio,\n"
                            "1,2,3,5,L,false,1,,7\n"
                            "1,2,3,6,R,no,true,TV,7\n");

  ASSERT_EQ(made.services.size(), 3U) << made.skipped[0].reason;
  EXPECT_EQ(made.services[0].fields.polarisation, 1);
  EXPECT_EQ(made.services[1].fields.polarisation, 0);
  EXPECT_EQ(made.services[2].fields.polarisation, 1);
  EXPECT_EQ(made.services[0].fields.flag, CHANNEL_FLAG_LOCKED);
  EXPECT_EQ(made.services[1].fields.flag, CHANNEL_FLAG_SKIP);
  EXPECT_EQ(made.services[2].fields.flag, CHANNEL_FLAG_SKIP);
  EXPECT_EQ(made.services[0].fields.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(made.services[1].fields.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(made.services[2].fields.service_type, SERVICE_TYPE_TV);
}

TEST_F(CsvLineUp, FavouritesComeFromTheirColumn) {
  const line_up made = read("favourites,network_id,ts_id,frequency,service_id\n"
                            "Films;News,1,2,3,4\n"
                            ",1,2,3,5\n"
                            "bad,1,2,3,x\n"
                            "News,1,2,3,6\n");

  const std::vector<chlist::favourite_group> expected = {{"Films", {{0, {}}}}, {"News", {{0, {}}, {2, {}}}}};
  EXPECT_EQ(made.favourites, expected);
}

TEST_F(CsvLineUp, CircularPolarisationsAreCounted) {
  read("network_id,ts_id,frequency,service_id,polarisation\n1,2,3,4,L\n1,2,3,5,r\n1,2,3,6,H\n1,2,3,7,v\n");

  EXPECT_EQ(losses(lost), (row_list{"circular polarisations (left as horizontal, right as vertical): 2"}));
}

// Each takes a second or more when every column, group or kind of loss is sought among all others.
TEST_F(CsvLineUp, HostileInputsTakeLittleTime) {
  constexpr int many = 50'000;
  std::string services = "network_id,ts_id,frequency,service_id,favourites\n";
  std::string columns = "network_id,ts_id,frequency,service_id";
  std::string row = "1,2,3,4";
  std::string groups = "network_id,ts_id,frequency,service_id,favourites\n";
  for (int n = 0; n < many; ++n) {
    columns += ",column " + std::to_string(n);
    row += ",x";
    services += "1,2,3," + std::to_string(n) + ",group\n";
    groups += "1,2,3," + std::to_string(n) + ",group " + std::to_string(n) + "\n";
  }
  const std::string short_rows = [] {
    std::string text;
    for (int n = 0; n < many; ++n) {
      text += "1\n";
    }
    return text;
  }();
  const std::clock_t begin = std::clock();
  EXPECT_EQ(read(services).services.size(), std::size_t{many});
  const std::clock_t harmless = std::clock() - begin;

  EXPECT_EQ(read(columns + "\n" + row + "\n" + short_rows).skipped.size(), std::size_t{many});
  EXPECT_EQ(read(groups).favourites.size(), std::size_t{many});

  EXPECT_EQ(lost.rows().size(), std::size_t{many});
  EXPECT_LT(std::clock() - begin, 8 * harmless);
}

}  // namespace
