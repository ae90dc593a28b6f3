// Lists that are not UTF-8, tables of spreadsheets, and text that a terminal would obey.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chlist/exchange/formats.h"
#include "tool/exchange/import_host.h"
#include "tool/exchange/line_ups.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using namespace tool_test;

class Charset : public tool_test::import_test {
 protected:
  [[nodiscard]] program_result imported(const std::string &name, const std::string &text,
                                        const std::vector<std::string> &options = {}) const {
    write_file(path(name), text);
    return run({"import", name, "-o", "list.dat", "--no-backup"}, options);
  }
  [[nodiscard]] std::string listed(const std::string &columns = "name") const {
    std::string text;
    for (const std::string &line : lines_of(run({"list", "list.dat", "--columns", columns, "--format", "csv"}).out)) {
      text += line.substr(0, line.find('\r')) + "|";
    }
    return text.substr(text.find('|') + 1);
  }
  static std::string service(const std::string &name, int id) {
    return service_line{.name = name, .parameters = "H", .symbol_rate = "0", .service_id = std::to_string(id)}.text();
  }
  static std::string in_utf16(const std::string &ascii, bool is_little) {
    std::string text = is_little ? "\xFF\xFE" : "\xFE\xFF";
    for (const char c : ascii) {
      text += is_little ? std::string{c, '\0'} : std::string{'\0', c};
    }
    return text;
  }
  static constexpr const char *header = "name;network_id;ts_id;frequency;service_id;video_pid\r\n";
};

TEST_F(Charset, LinesThatAreNotUtf8AreReadAsLatin1AndThatIsTold) {
  const program_result result = imported("channels.conf", service("Caf\xE9", 1) + service("Caf\xC3\xA9", 2));

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "channels.conf: 1 line is not UTF-8 and read as Latin-1 (--charset names another)"))
      << result.out;
  EXPECT_EQ(listed(), "Caf\xC3\xA9|Caf\xC3\xA9|");
}

TEST_F(Charset, TheCharsetCanBeNamed) {
  const program_result result =
      imported("channels.conf", service("\xB1\xB6", 1), {"--charset", "ISO-8859-2", "--json"});

  EXPECT_EQ(json::parse(result.out)["charset"], "ISO-8859-2");
  EXPECT_EQ(listed(), "\xC4\x85\xC5\x9B|");
  expect_refused({"import", "channels.conf", "-o", "out.dat", "--charset", "Klingon"},
                 "channels.conf: --charset: no charset is named Klingon");
  expect_refused({"import", "channels.conf", "-o", "out.dat", "--charset", "UTF-8"},
                 "channels.conf: is no text of UTF-8");
}

TEST_F(Charset, Utf16IsKnownByItsMarkInEveryFormat) {
  for (const bool is_little : {true, false}) {
    for (const std::string &text :
         {service("News", 1), std::string("name,network_id,ts_id,frequency,service_id\nNews,1,2,3,4\n"),
          std::string("[News]\nSERVICE_ID = 1\nFREQUENCY = 11362000\nPOLARIZATION = VERTICAL\n")}) {
      const program_result result = imported("list", in_utf16(text, is_little));

      EXPECT_EQ(result.exit_code, 0) << result.err;
      EXPECT_TRUE(has_line(result.out, "list: is read as UTF-16")) << result.out;
      EXPECT_EQ(listed(), "News|");
    }
  }
}

TEST_F(Charset, CsvOfSpreadsheetsHasSemicolonsOrTabsAQuoteOrAMark) {
  const std::string rows = "\"A;1\";1;2;11306000;4;0\r\n";
  EXPECT_EQ(imported("a.txt", header + rows).exit_code, 0);
  EXPECT_EQ(listed("name,frequency"), "\"A;1\",11306000|");
  EXPECT_EQ(imported("a.txt", "\xEF\xBB\xBF" + (header + rows)).exit_code, 0);
  EXPECT_EQ(imported("a.txt", "sep=;\r\n" + (header + rows)).exit_code, 0);
  EXPECT_EQ(imported("a.txt", "name\tnetwork_id\tts_id\tfrequency\tservice_id\nB, \"b\"\t1\t2\t3\t4\n").exit_code, 0);
  EXPECT_EQ(run({"list", "list.dat", "--columns", "name"}).out.find("B, \"b\"") != std::string::npos, true);
}

TEST_F(Charset, NumbersOfSpreadsheetsAreReadWhereTheyMeanOneThing) {
  EXPECT_EQ(imported("a.csv", header + std::string("A;1,0;2.00;11306000.0;4;512,00\n")).exit_code, 0);
  EXPECT_EQ(listed("network_id,ts_id,frequency,service_id,video_pid"), "1,2,11306000,4,512|");

  for (const char *number : {"11,306,000", "11.306.000", "1.1306E+07", "11306000.5", "11.000", "1 000", ".0"}) {
    const program_result result = imported("a.csv", header + ("A;1;2;" + std::string(number)) + ";4;0\n");

    EXPECT_EQ(result.exit_code, 2) << number;
    EXPECT_TRUE(result.err.starts_with("chlist: import: a.csv:2: skipped: frequency=\"" + std::string(number) +
                                       "\": VALUE is 1 to 4294967295\n"))
        << result.err;
  }
}

// What a terminal would obey, line ends, and bytes of no character.
const std::string odd = "A\x1B[31m\nB\r\x7F\xC2\x9B\xFF";

class PlainExports : public line_up_test {};

TEST_F(PlainExports, NoFormatOfTextWritesControls) {
  chlist::line_up given = line_up_of({service_named(odd, 1)});
  given.services.front().provider = odd;
  given.services.front().number = chlist::channel_number{1};
  given.favourites = {{.name = odd, .entries = {{0, {}}}}};

  for (const char *format : {"vdr", "dvbv5", "lamedb3", "lamedb4", "lamedb5", "m3u"}) {
    for (const chlist::made_file &file : chlist::format_to_write(format, "").write(given, {}).files) {
      EXPECT_TRUE(chlist::is_utf8(file.text)) << format << ": " << file.name;
      EXPECT_EQ(file.text.find_first_of("\x1B\r\x7F\x9B"), std::string::npos) << format << ": " << file.name;
      EXPECT_EQ(file.text.find("[31m\n"), std::string::npos) << format << ": " << file.name;
    }
  }
}

TEST_F(PlainExports, NoImportFilesControls) {
  const chlist::line_up given = line_up_of({service_named("A\x1B"
                                                          "B",
                                                          1)});

  fill_list(given, lost);

  EXPECT_STREQ(get_channel(0)->name[0].text, "A B");
  EXPECT_EQ(losses(lost), (row_list{"names with control characters: 1"}));
}

}  // namespace
