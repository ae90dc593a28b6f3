// Words count behind a blank alone: "TV5" and "Ahd" are names.
#include "chlist/compare/quality.h"

#include <algorithm>
#include <array>
#include <optional>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

struct picture_word {
  std::string_view text;
  picture value;
};

constexpr std::array<picture_word, 6> picture_words = {{{"sd", picture::standard},
                                                        {"hd", picture::high},
                                                        {"fhd", picture::high},
                                                        {"uhd", picture::ultra_high},
                                                        {"4k", picture::ultra_high},
                                                        {"8k", picture::ultra_high}}};

// Takes the last word off a folded name when it is one of them, and more than it is there.
std::optional<picture> take_word(std::string &folded_name) {
  const std::size_t blank = folded_name.find_last_of(' ');
  if (blank == std::string::npos || folded_name.find_first_not_of(' ') > blank) {
    return std::nullopt;
  }
  const auto *const word =
      std::ranges::find(picture_words, std::string_view(folded_name).substr(blank + 1), &picture_word::text);
  if (word == picture_words.end()) {
    return std::nullopt;
  }
  folded_name.resize(folded_name.find_last_not_of(' ', blank) + 1);
  return word->value;
}

struct rated_name {
  std::string plain;
  std::optional<picture> value;  // the best that it tells
};

rated_name rated(std::string_view name) {
  rated_name made = {folded(name), {}};
  made.plain.resize(made.plain.find_last_not_of(' ') + 1);
  for (std::optional<picture> word = take_word(made.plain); word; word = take_word(made.plain)) {
    made.value = std::max(made.value, word);
  }
  return made;
}

picture picture_of_type(std::uint8_t service_type) {
  switch (service_type) {
    case 0x11:  // MPEG-2 HD
    case 0x19:  // AVC HD
    case 0x1C:  // AVC HD, plano-stereoscopic
      return picture::high;
    case 0x1F:  // HEVC
    case 0x20:  // HEVC with a high dynamic range
      return picture::ultra_high;
    default:
      return picture::standard;
  }
}

}  // namespace

picture picture_of(const line_up_service &service) {
  return rated(service.name).value.value_or(picture_of_type(service.fields.service_type));
}

std::string plain_name(std::string_view name) { return rated(name).plain; }

bool is_radio(const line_up_service &service) {
  constexpr std::uint8_t advanced_codec_radio = 0x0A;
  return service.fields.service_type == SERVICE_TYPE_RADIO || service.fields.service_type == advanced_codec_radio;
}

}  // namespace chlist
