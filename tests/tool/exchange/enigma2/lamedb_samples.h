// The same three services in every version of the lamedb, and a reader that tells what it makes of a text.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tool/exchange/enigma2/lamedb_folder.h"

namespace tool_test::enigma2 {

inline constexpr std::string_view sample_services = "services\n"
                                                    "0bb9:00870000:07da:009e:25:0\n"
                                                    "Northlight One\n"
                                                    "p:Northlight,c:000191,c:010192,c:030190,C:0b00,f:40\n"
                                                    "0001:ffff0000:0001:0002:2:0\n"
                                                    "Radio\n"
                                                    "p:,c:040022\n"
                                                    "0002:eeee0000:0003:0004:1:0\n"
                                                    "Antenna\n"
                                                    "p:Free\n"
                                                    "end\n";

inline const std::string version_4 = std::string("eDVB services /4/\n"
                                                 "transponders\n"
                                                 "00870000:07da:009e\n"
                                                 "\ts 11306000:22000000:1:9:135:2:0:1:2:0:2\n"
                                                 "/\n"
                                                 "ffff0000:0001:0002\n"
                                                 "\tc 394000:6900000:2:3:0:0:0\n"
                                                 "/\n"
                                                 "eeee0000:0003:0004\n"
                                                 "\tt 514000000:0:5:5:3:2:4:4:2:0:0:0\n"
                                                 "/\n"
                                                 "end\n")
                                         .append(sample_services)
                                         .append("Have a lot of bugs!\n");

// Version 3 knows neither DVB-S2 nor flags: the parameters of transponders end before them.
inline const std::string version_3 = std::string("eDVB services /3/\n"
                                                 "transponders\n"
                                                 "00870000:07da:009e\n"
                                                 "\ts 11306000:22000000:1:9:135:2\n"
                                                 "/\n"
                                                 "ffff0000:0001:0002\n"
                                                 "\tc 394000:6900000:2:3:0\n"
                                                 "/\n"
                                                 "eeee0000:0003:0004\n"
                                                 "\tt 514000000:0:5:5:3:2:4:4:2\n"
                                                 "/\n"
                                                 "end\n")
                                         .append(sample_services);

inline constexpr std::string_view version_5 =
    "eDVB services /5/\n"
    "# Transponders: t:dvb_namespace:transport_stream_id:original_network_id,FEPARMS\n"
    "t:00870000:07da:009e,s:11306000:22000000:1:9:135:2:0:1:2:0:2\n"
    "t:ffff0000:0001:0002,c:394000:6900000:2:3:0:0:0\n"
    "t:eeee0000:0003:0004,t:514000000:0:5:5:3:2:4:4:2:0:0:0\n"
    "s:0bb9:00870000:07da:009e:25:0:0,\"Northlight One\",p:Northlight,c:000191,c:010192,c:030190,C:0b00,f:40\n"
    "s:0001:ffff0000:0001:0002:2:0:0,\"Radio\",p:,c:040022\n"
    "s:0002:eeee0000:0003:0004:1:0:0,\"Antenna\",p:Free\n";

inline line_up parse(std::string_view text) {
  loss_counts lost;
  return chlist::parse_lamedb(text, lost).list;
}

inline std::string replaced(std::string_view text, std::string_view what, std::string_view by) {
  std::string made(text);
  for (std::size_t at = 0; (at = made.find(what, at)) != std::string::npos; at += by.size()) {
    made.replace(at, what.size(), by);
  }
  return made;
}

// A version 4 with one satellite service of these options.
inline std::string with_options(const std::string &options) {
  return "eDVB services /4/\ntransponders\n00c00000:0001:0001\n\ts 11306000:22000000:0:0:192:2:0\n/\nend\nservices\n"
         "0001:00c00000:0001:0001:1:0\nA\n" +
         options + "\nend\n";
}

}  // namespace tool_test::enigma2
