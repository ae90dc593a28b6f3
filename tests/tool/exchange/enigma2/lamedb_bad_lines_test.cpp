// A lamedb that is none, is cut or damaged: what is skipped, with which line and reason, and what is read still.
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tool/exchange/enigma2/lamedb_samples.h"
#include "tool/exchange/random_line_up.h"

namespace {

using namespace tool_test::enigma2;

std::string error_of(std::string_view text) {
  try {
    parse(text);
  } catch (const std::runtime_error &error) {
    return error.what();
  }
  return "";
}

TEST(LamedbReader, WhatIsNoLamedbIsRefused) {
  EXPECT_EQ(error_of(""), "is no lamedb: the first line is not \"eDVB services /4/\"");
  EXPECT_EQ(error_of("[A]\n"), "is no lamedb: the first line is not \"eDVB services /4/\"");
  EXPECT_EQ(error_of("eDVB services /2/\n"), "lamedb of version '2': only 3, 4 and 5 are known");
  EXPECT_EQ(error_of("eDVB services /6/\n"), "lamedb of version '6': only 3, 4 and 5 are known");
  EXPECT_EQ(error_of("eDVB services /\x1B[2J"), "lamedb of version '?[2J': only 3, 4 and 5 are known");
}

TEST(LamedbReader, ABadTransponderTakesItsServicesWithIt) {
  const struct {
    const char *what;
    const char *by;
    const char *reason;
  } cases[] = {
      {"\ts 11", "\tx 11", "3: transponder '?x 11306000:22000000:0:0:192:2:0' is of no known kind (s, c, t or a)"},
      {"s 11306000", "s 4294967296", "3: frequency '4294967296' is not within 0..4294967295"},
      {"000:0:0:192", "000:4:0:192", "3: polarisation '4' is not within 0..3"},
      {":192:", ":3600:", "3: orbital position '3600' is not within 0..3599"},
      {":0:0:192:2:0", "", "3: a satellite's transponder has fewer than 6 fields"},
      {"\n00c00000:0001:0001\n", "\n1:1\n", "3: transponder '1:1' is not NAMESPACE:TSID:ONID"},
      {"\n00c00000:0001:0001\n", "\n1:10000:1\n", "3: TSID '10000' is not within 0..65535"},
  };

  for (const auto &each : cases) {
    const line_up list = parse(replaced(with_options("p:"), each.what, each.by));

    EXPECT_EQ(skipped_in(list), (texts{each.reason, "8: its transponder 00c00000:0001:0001 is not in the file"}));
    EXPECT_TRUE(list.services.empty());
  }
}

TEST(LamedbReader, ATransponderThatIsThereTwiceIsSkippedButForItsFirst) {
  const line_up sections =
      parse(replaced(version_4, "/\nend\nservices", "/\n00870000:07da:009e\n\ts 1:2:0:9:192:2:0\n/\nend\nservices"));
  const line_up lines = parse(replaced(version_5, "s:0bb9", "t:00870000:07da:009e,s:1:2:0:9:192:2:0\ns:0bb9"));

  EXPECT_EQ(skipped_in(sections), texts{"12: is the same transponder as line 3"});
  EXPECT_EQ(sections.services.at(0).fields.frequency, 11'306'000);
  EXPECT_EQ(skipped_in(lines), texts{"6: is the same transponder as line 3"});
  EXPECT_EQ(lines.services.at(0).fields.frequency, 11'306'000);
}

TEST(LamedbReader, ABadServiceIsSkippedWithItsNameAndOptions) {
  const struct {
    const char *line;
    const char *reason;
  } cases[] = {
      {"10000:00870000:07da:009e:1:0", "14: SID '10000' is not within 0..65535"},
      {"0001:00870000:07da:009e:256:0", "14: service type '256' is not within 0..255"},
      {"0001:00870000:07da:009e:1:x", "14: service number 'x' is not a number"},
      {"0001:00870000:07da:009e:1:0:0:0",
       "14: service '0001:00870000:07da:009e:1:0:0:0' is not SID:NAMESPACE:TSID:ONID:TYPE:NUMBER"},
  };

  for (const auto &each : cases) {
    const line_up list = parse(replaced(version_4, "0bb9:00870000:07da:009e:25:0", each.line));

    EXPECT_EQ(skipped_in(list), texts{each.reason});
    EXPECT_EQ(list.services.size(), 2U);
  }
}

TEST(LamedbReader, GarbageBetweenServicesIsPassedOver) {
  const line_up list = parse(replaced(version_4, "0001:ffff", "garbage\nmore\n0001:ffff"));

  EXPECT_EQ(skipped_in(list), (texts{"17: is no service", "18: is no service"}));
  EXPECT_EQ(list.services.size(), 3U);
}

TEST(LamedbReader, AServiceThatIsThereTwiceIsSkipped) {
  EXPECT_EQ(skipped_in(parse(replaced(version_4, "0bb9:0087", "0bb9:00870000:07da:009e:1:0\nB\np:\n0bb9:0087"))),
            texts{"17: is the same service as line 14"});
}

TEST(LamedbReader, ACutFileGivesWhatItHas) {
  const std::string text(version_4);

  EXPECT_EQ(skipped_in(parse(text.substr(0, text.find("end\nHave")))), texts{"22: the file ends within a section"});
  EXPECT_EQ(parse(text.substr(0, text.find("end\nHave"))).services.size(), 3U);
  EXPECT_EQ(skipped_in(parse(text.substr(0, text.find("services\n0bb9")))),
            texts{"12: the file ends before its services"});
  EXPECT_EQ(skipped_in(parse("eDVB services /4/\nx\n")),
            (texts{"2: stands in no section", "2: the file ends before its services"}));
}

TEST(LamedbReader, LinesOfVersion5ThatCannotBeReadAreSkipped) {
  const struct {
    const char *line;
    const char *reason;
  } cases[] = {
      {"x", "2: is neither a transponder nor a service"},
      {"s:1:2:3:4:5:6:7", "2: a service without a name in quotation marks"},
      {"s:1:2:3:4:5:6:7,\"A", "2: a service's name without the second quotation mark"},
      {"s:1:2:3:4:5:6:7,\"A\",p:", "2: its transponder 00000002:0003:0004 is not in the file"},
      {"t:1:2:3", "2: transponder '' is of no known kind (s, c, t or a)"},
      {"s:", "2: a service without a name in quotation marks"},
  };

  for (const auto &each : cases) {
    EXPECT_EQ(skipped_in(parse("eDVB services /5/\n" + std::string(each.line) + "\n")), texts{each.reason});
  }
}

TEST(LamedbReader, NulBytesAreRefused) {
  EXPECT_EQ(skipped_in(parse(replaced(version_4, "Antenna", std::string_view("A\0B", 3)))),
            texts{"20: holds a NUL byte"});
}

TEST(LamedbReader, RandomBytesDoNoHarm) {
  std::mt19937 random(7);
  for (int run = 0; run < 300; ++run) {
    const auto seed = static_cast<unsigned>(random());
    folder files = written_folder(tool_test::random_line_up(seed).make(3, 2), run % 2 == 0 ? 4 : 5);
    for (auto &[name, text] : files) {
      // A lamedb of another version would be refused.
      const std::size_t kept = name.starts_with("lamedb") ? std::string_view("eDVB services /4/\n").size() : 0;
      for (std::size_t change = 0; change < 5; ++change) {
        text[kept + random() % (text.size() - kept)] = static_cast<char>(random());
      }
      text.resize(kept + random() % (text.size() - kept + 1));
    }

    EXPECT_LE(read_folder(files).services.size(), 10U);
  }
}

}  // namespace
