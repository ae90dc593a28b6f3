// A list of three services, as an import makes it of a channels.conf: the smallest one that edits and what stands
// beside a channel file find something in.
#pragma once

#include <string_view>

namespace fuzz {

inline constexpr std::string_view small_channels_conf =
    ":Group\n"
    "News;Free:11836:HC34M2O35S0:S19.2E:27500:101=2:102=deu@3:104:0:28106:1:1101:0\n"
    "Films;Pay:11836:HC34M2O35S0:S19.2E:27500:201=2:202=deu@3:204:1702:28107:1:1101:0\n"
    "Music;Free:11953:HC34M2O35S0:S19.2E:27500:0:120=deu@3:130:0:28006:1:1079:0\n";

}  // namespace fuzz
