// Texts of other formats with all that their readers take, and all that they pass over: comments, blank lines, markers,
// services that are there twice, fields that only the format knows.
#pragma once

#include <fmt/format.h>

#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace tool_test {

class random_source {
 public:
  explicit random_source(unsigned seed) : random_(seed) {}

  // Services are called "Service 1 ..." and so on, each on a line of its own.
  std::string channels_conf(int services) {
    std::string text = now_and_then() ? ":@5 First\n" : "";
    for (int n = 1; n <= services; ++n) {
      text += between_lines() + vdr_line(n);
    }
    return now_and_then() && !text.empty() ? text.substr(0, text.size() - 1) : text;
  }

  std::string sections(int services) {
    std::string text = now_and_then() ? "# made by hand\n\n" : "";
    for (int n = 1; n <= services; ++n) {
      text += section(n);
    }
    return text;
  }

  // A lamedb of version 4 or 5, bouquets and a blacklist, by their names.
  std::map<std::string, std::string> folder(int services, int version) {
    std::map<std::string, std::string> files;
    files[version == 5 ? "lamedb5" : "lamedb"] = version == 5 ? lamedb_lines(services) : lamedb_sections(services);
    files["bouquets.tv"] =
        "#NAME User - Bouquets (TV)\n#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.a.tv\" ORDER BY bouquet\n"
        "#SERVICE: 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.b.tv\" ORDER BY bouquet\n";
    files["userbouquet.a.tv"] = "#NAME Favourites (TV)\n" + references(services);
    files["userbouquet.b.tv"] = "#NAME Others\r\n" + references(services);
    if (now_and_then()) {
      files["blacklist"] = "1:0:1:1:1:1:C00000:0:0:0:\n";
    }
    return files;
  }

  int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }
  bool now_and_then() { return below(4) == 0; }

 private:
  std::string numbers(int n) {
    return fmt::format("{:04x}:{}:{}:0", n, n % 2 == 0 ? "00c00000:0001:0001" : "00c0044c:0002:0001",
                       one_of({"1", "2", "25"}));
  }

  std::string options() {
    return one_of({"p:One", "p:One, Inc,c:000065,c:010066,C:1702,C:1722,f:40", "p:,c:000065,c:040068,c:050001",
                   "p:Pröv,c:020069"});
  }

  std::string lamedb_sections(int services) {
    std::string text =
        "eDVB services /4/\ntransponders\n00c00000:0001:0001\n\ts 11494000:22000000:0:2:192:2:0:1:2:0:2\n/\n"
        "00c0044c:0002:0001\n\ts 11538000:22000000:1:5:192:2:0\n/\nend\nservices\n";
    for (int n = 1; n <= services; ++n) {
      text += numbers(n) + "\n" + name(n) + "\n" + options() + "\n";
    }
    return text + "end\nHave a lot of bugs!\n";
  }

  std::string lamedb_lines(int services) {
    std::string text = "eDVB services /5/\n# Use at your own risk!\n"
                       "t:00c00000:0001:0001,s:11494000:22000000:0:2:192:2:0:1:2:0:2\n"
                       "t:00c0044c:0002:0001,s:11538000:22000000:1:5:192:2:0\n";
    for (int n = 1; n <= services; ++n) {
      text += fmt::format("s:{}:0,\"{}\",{}\n", numbers(n), name(n), options());
    }
    return text;
  }

  std::string references(int services) {
    std::string text;
    for (int n = 1; n <= services; ++n) {
      text +=
          one_of({"", "", "#SERVICE 1:64:0:0:0:0:0:0:0:0::- marker -\n#DESCRIPTION - marker -\n",
                  "#SERVICE 4097:0:1:0:0:0:0:0:0:0:http%3a//host/x:Stream\n", "#SERVICE 1:0:1:99:9:9:C00000:0:0:0:\n"});
      const std::string reference = fmt::format("#SERVICE 1:0:{}:{:X}:{}:0:0:0:", one_of({"1", "19"}), n,
                                                n % 2 == 0 ? "1:1:C00000" : "2:1:C0044C");
      text += now_and_then() ? "" : reference + one_of({"\n", "\r\n", ":Given\n#DESCRIPTION Given\n"});
    }
    return text;
  }

  template <std::size_t Count>
  std::string one_of(const char *const (&all)[Count]) {
    return all[below(static_cast<int>(Count))];
  }

  std::string between_lines() {
    return one_of(
        {"", "", "", "", "", "\n", ":\n", ":Group\n", ":@200\n", ":@300 More\n", "no service line\n", "  \n"});
  }

  std::string name(int n) {
    const std::string long_name(static_cast<std::size_t>(now_and_then() ? 100 : 1), 'x');
    return fmt::format("Service {} {}{}", n, one_of({"", "ä", "Ł|x ", "\"q\" ", "long "}), long_name);
  }

  std::string vdr_line(int n) {
    const std::string line =
        fmt::format("{}{}{}:{}:{}:{}:{}:{}{}{}:{}:{}:{}:{}:{}:{}:{}{}\n", name(n), one_of({"", ",Short", ",S.2"}),
                    one_of({"", ";Provider", ";Pröv,ider"}), 11000 + below(5) * 50,
                    one_of({"H", "VC34M2S0", "hC23M5O35S1", "RC999", "VZ1"}), one_of({"S19.2E", "S13.0E", "S28.2E"}),
                    one_of({"0", "22000", "27500"}), 100 + n, one_of({"", "+99"}), one_of({"", "=2", "=27"}),
                    one_of({"0", "201", "201=deu@3,202=eng@4", "201;203=deu@106", "0;203"}),
                    one_of({"0", "301", "301;302=deu,303"}), one_of({"0", "1", "100", "1702,1722", "B21"}), n, 1,
                    1 + below(3), one_of({"0", "0", "7"}), one_of({"", "", ":more:fields", " "}));
    return now_and_then() && below(4) == 0 ? line + line : line;
  }

  std::string section(int n) {
    const std::string tail = one_of({"\n", "\n", "", "\n\n", "; a remark\n\n", "\n# about the next\n"});
    return fmt::format("[{}]\n{}{}SERVICE_ID = {}\n\tFREQUENCY = {}\n{}{}{}{}\tDELIVERY_SYSTEM = DVBS2\n{}", name(n),
                       one_of({"", "\tVCHANNEL = 7\n", "\tUNKNOWN=x\n"}), one_of({"\t", " ", ""}), n,
                       11000000 + below(5) * 50000, one_of({"\tPOLARIZATION = LEFT\n", "POLARIZATION=VERTICAL\n"}),
                       one_of({"", "\tVIDEO_PID = 100 101\n", "\tvideo_pid=7\n"}),
                       one_of({"", "\tAUDIO_PID = 200\n", "\tPID_06 = 300 301\n"}),
                       one_of({"", "\tSYMBOL_RATE = 22000000\n", "\tLNB = UNIVERSAL\n\tMODULATION = PSK/8\n"}), tail);
  }

  std::mt19937 random_;
};

}  // namespace tool_test
