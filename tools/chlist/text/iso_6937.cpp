// A mark stands in front of its letter here, and behind it in Unicode, which has most of the pairs as one character.
#include "chlist/text/iso_6937.h"

#include <algorithm>
#include <iterator>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr char32_t unmapped = U'\uFFFD';

// 0xA0 to 0xFF, without the marks of the third row.
constexpr std::u32string_view upper_half =
    U"\u00A0¡¢£€¥\uFFFD§¤‘“«←↑→↓"
    U"°±²³×µ¶·÷’”»¼½¾¿"
    U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"
    U"―¹®©™♪¬¦\uFFFD\uFFFD\uFFFD\uFFFD⅛⅜⅝⅞"
    U"ΩÆĐªĦ\uFFFDĲĿŁØŒºÞŦŊŉ"
    U"ĸæđðħıĳŀłøœßþŧŋ\u00AD";
constexpr unsigned char first_of_upper_half = 0xA0;

struct mark {
  unsigned char byte;
  char32_t combining;
  char32_t alone;  // over a blank
  std::u32string_view letters;
  std::u32string_view marked;  // the same letters with it
};

constexpr mark marks[] = {
    {0xC1, U'\u0300', U'`', U"AEINOUWYaeinouwyΩ", U"ÀÈÌǸÒÙẀỲàèìǹòùẁỳῺ"},
    {0xC2, U'\u0301', U'´', U"ACEGIKLMNOPRSUWYZacegiklmnoprsuwyzΩÆØæø", U"ÁĆÉǴÍḰĹḾŃÓṔŔŚÚẂÝŹáćéǵíḱĺḿńóṕŕśúẃýźΏǼǾǽǿ"},
    {0xC3, U'\u0302', U'^', U"ACEGHIJOSUWYZaceghijosuwyz", U"ÂĈÊĜĤÎĴÔŜÛŴŶẐâĉêĝĥîĵôŝûŵŷẑ"},
    {0xC4, U'\u0303', U'~', U"AEINOUVYaeinouvy", U"ÃẼĨÑÕŨṼỸãẽĩñõũṽỹ"},
    {0xC5, U'\u0304', U'¯', U"AEGIOUYaegiouyÆæ", U"ĀĒḠĪŌŪȲāēḡīōūȳǢǣ"},
    {0xC6, U'\u0306', U'˘', U"AEGIOUaegiou", U"ĂĔĞĬŎŬăĕğĭŏŭ"},
    {0xC7, U'\u0307', U'˙', U"ABCDEFGHIMNOPRSTWXYZabcdefghmnoprstwxyz", U"ȦḂĊḊĖḞĠḢİṀṄȮṖṘṠṪẆẊẎŻȧḃċḋėḟġḣṁṅȯṗṙṡṫẇẋẏż"},
    {0xC8, U'\u0308', U'¨', U"AEHIOUWXYaehiotuwxy", U"ÄËḦÏÖÜẄẌŸäëḧïöẗüẅẍÿ"},
    {0xCA, U'\u030A', U'˚', U"AUauwy", U"ÅŮåůẘẙ"},
    {0xCB, U'\u0327', U'¸', U"CDEGHKLNRSTcdeghklnrst", U"ÇḐȨĢḨĶĻŅŖŞŢçḑȩģḩķļņŗşţ"},
    {0xCD, U'\u030B', U'˝', U"OUou", U"ŐŰőű"},
    {0xCE, U'\u0328', U'˛', U"AEIOUaeiou", U"ĄĘĮǪŲąęįǫų"},
    {0xCF, U'\u030C', U'ˇ', U"ACDEGHIKLNORSTUZacdeghijklnorstuz", U"ǍČĎĚǦȞǏǨĽŇǑŘŠŤǓŽǎčďěǧȟǐǰǩľňǒřšťǔž"},
};

const mark *mark_of(unsigned char byte) {
  const auto *const found = std::ranges::find(marks, byte, &mark::byte);
  return found != std::end(marks) ? found : nullptr;
}

void append_marked(std::string &text, const mark &over, char32_t letter) {
  const std::size_t at = over.letters.find(letter);
  if (letter == U' ') {
    append_utf8(text, over.alone);
  } else if (at != std::u32string_view::npos) {
    append_utf8(text, over.marked[at]);
  } else {
    append_utf8(text, letter);
    append_utf8(text, over.combining);
  }
}

}  // namespace

decoded_text decode_iso_6937(std::string_view encoded) {
  decoded_text made;
  const mark *over = nullptr;
  for (const char c : encoded) {
    const auto byte = static_cast<unsigned char>(c);
    if (const mark *found = mark_of(byte); found != nullptr && over == nullptr) {
      over = found;
      continue;
    }
    const char32_t letter = byte < first_of_upper_half ? byte : upper_half[byte - first_of_upper_half];
    made.is_whole = made.is_whole && letter != unmapped;
    if (over != nullptr) {
      append_marked(made.text, *over, letter);
      over = nullptr;
    } else {
      append_utf8(made.text, letter);
    }
  }
  if (over != nullptr) {
    append_utf8(made.text, unmapped);
    made.is_whole = false;
  }
  return made;
}

}  // namespace chlist
