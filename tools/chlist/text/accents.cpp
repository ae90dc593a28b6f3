// The tables are taken from Unicode's data, version 14.0.0; accents_test.py compares them with it.
#include "chlist/text/accents.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace chlist {
namespace {

struct code_range {
  char32_t first;
  char32_t last;
};

// The ranges ascend, so that a search can halve them.
constexpr code_range combining_marks[] = {
    {0x300, 0x36F},     {0x483, 0x489},     {0x591, 0x5BD},     {0x5BF, 0x5BF},     {0x5C1, 0x5C2},
    {0x5C4, 0x5C5},     {0x5C7, 0x5C7},     {0x610, 0x61A},     {0x64B, 0x65F},     {0x670, 0x670},
    {0x6D6, 0x6DC},     {0x6DF, 0x6E4},     {0x6E7, 0x6E8},     {0x6EA, 0x6ED},     {0x711, 0x711},
    {0x730, 0x74A},     {0x7A6, 0x7B0},     {0x7EB, 0x7F3},     {0x7FD, 0x7FD},     {0x816, 0x819},
    {0x81B, 0x823},     {0x825, 0x827},     {0x829, 0x82D},     {0x859, 0x85B},     {0x898, 0x89F},
    {0x8CA, 0x8E1},     {0x8E3, 0x903},     {0x93A, 0x93C},     {0x93E, 0x94F},     {0x951, 0x957},
    {0x962, 0x963},     {0x981, 0x983},     {0x9BC, 0x9BC},     {0x9BE, 0x9C4},     {0x9C7, 0x9C8},
    {0x9CB, 0x9CD},     {0x9D7, 0x9D7},     {0x9E2, 0x9E3},     {0x9FE, 0x9FE},     {0xA01, 0xA03},
    {0xA3C, 0xA3C},     {0xA3E, 0xA42},     {0xA47, 0xA48},     {0xA4B, 0xA4D},     {0xA51, 0xA51},
    {0xA70, 0xA71},     {0xA75, 0xA75},     {0xA81, 0xA83},     {0xABC, 0xABC},     {0xABE, 0xAC5},
    {0xAC7, 0xAC9},     {0xACB, 0xACD},     {0xAE2, 0xAE3},     {0xAFA, 0xAFF},     {0xB01, 0xB03},
    {0xB3C, 0xB3C},     {0xB3E, 0xB44},     {0xB47, 0xB48},     {0xB4B, 0xB4D},     {0xB55, 0xB57},
    {0xB62, 0xB63},     {0xB82, 0xB82},     {0xBBE, 0xBC2},     {0xBC6, 0xBC8},     {0xBCA, 0xBCD},
    {0xBD7, 0xBD7},     {0xC00, 0xC04},     {0xC3C, 0xC3C},     {0xC3E, 0xC44},     {0xC46, 0xC48},
    {0xC4A, 0xC4D},     {0xC55, 0xC56},     {0xC62, 0xC63},     {0xC81, 0xC83},     {0xCBC, 0xCBC},
    {0xCBE, 0xCC4},     {0xCC6, 0xCC8},     {0xCCA, 0xCCD},     {0xCD5, 0xCD6},     {0xCE2, 0xCE3},
    {0xD00, 0xD03},     {0xD3B, 0xD3C},     {0xD3E, 0xD44},     {0xD46, 0xD48},     {0xD4A, 0xD4D},
    {0xD57, 0xD57},     {0xD62, 0xD63},     {0xD81, 0xD83},     {0xDCA, 0xDCA},     {0xDCF, 0xDD4},
    {0xDD6, 0xDD6},     {0xDD8, 0xDDF},     {0xDF2, 0xDF3},     {0xE31, 0xE31},     {0xE34, 0xE3A},
    {0xE47, 0xE4E},     {0xEB1, 0xEB1},     {0xEB4, 0xEBC},     {0xEC8, 0xECD},     {0xF18, 0xF19},
    {0xF35, 0xF35},     {0xF37, 0xF37},     {0xF39, 0xF39},     {0xF3E, 0xF3F},     {0xF71, 0xF84},
    {0xF86, 0xF87},     {0xF8D, 0xF97},     {0xF99, 0xFBC},     {0xFC6, 0xFC6},     {0x102B, 0x103E},
    {0x1056, 0x1059},   {0x105E, 0x1060},   {0x1062, 0x1064},   {0x1067, 0x106D},   {0x1071, 0x1074},
    {0x1082, 0x108D},   {0x108F, 0x108F},   {0x109A, 0x109D},   {0x135D, 0x135F},   {0x1712, 0x1715},
    {0x1732, 0x1734},   {0x1752, 0x1753},   {0x1772, 0x1773},   {0x17B4, 0x17D3},   {0x17DD, 0x17DD},
    {0x180B, 0x180D},   {0x180F, 0x180F},   {0x1885, 0x1886},   {0x18A9, 0x18A9},   {0x1920, 0x192B},
    {0x1930, 0x193B},   {0x1A17, 0x1A1B},   {0x1A55, 0x1A5E},   {0x1A60, 0x1A7C},   {0x1A7F, 0x1A7F},
    {0x1AB0, 0x1ACE},   {0x1B00, 0x1B04},   {0x1B34, 0x1B44},   {0x1B6B, 0x1B73},   {0x1B80, 0x1B82},
    {0x1BA1, 0x1BAD},   {0x1BE6, 0x1BF3},   {0x1C24, 0x1C37},   {0x1CD0, 0x1CD2},   {0x1CD4, 0x1CE8},
    {0x1CED, 0x1CED},   {0x1CF4, 0x1CF4},   {0x1CF7, 0x1CF9},   {0x1DC0, 0x1DFF},   {0x20D0, 0x20F0},
    {0x2CEF, 0x2CF1},   {0x2D7F, 0x2D7F},   {0x2DE0, 0x2DFF},   {0x302A, 0x302F},   {0x3099, 0x309A},
    {0xA66F, 0xA672},   {0xA674, 0xA67D},   {0xA69E, 0xA69F},   {0xA6F0, 0xA6F1},   {0xA802, 0xA802},
    {0xA806, 0xA806},   {0xA80B, 0xA80B},   {0xA823, 0xA827},   {0xA82C, 0xA82C},   {0xA880, 0xA881},
    {0xA8B4, 0xA8C5},   {0xA8E0, 0xA8F1},   {0xA8FF, 0xA8FF},   {0xA926, 0xA92D},   {0xA947, 0xA953},
    {0xA980, 0xA983},   {0xA9B3, 0xA9C0},   {0xA9E5, 0xA9E5},   {0xAA29, 0xAA36},   {0xAA43, 0xAA43},
    {0xAA4C, 0xAA4D},   {0xAA7B, 0xAA7D},   {0xAAB0, 0xAAB0},   {0xAAB2, 0xAAB4},   {0xAAB7, 0xAAB8},
    {0xAABE, 0xAABF},   {0xAAC1, 0xAAC1},   {0xAAEB, 0xAAEF},   {0xAAF5, 0xAAF6},   {0xABE3, 0xABEA},
    {0xABEC, 0xABED},   {0xFB1E, 0xFB1E},   {0xFE00, 0xFE0F},   {0xFE20, 0xFE2F},   {0x101FD, 0x101FD},
    {0x102E0, 0x102E0}, {0x10376, 0x1037A}, {0x10A01, 0x10A03}, {0x10A05, 0x10A06}, {0x10A0C, 0x10A0F},
    {0x10A38, 0x10A3A}, {0x10A3F, 0x10A3F}, {0x10AE5, 0x10AE6}, {0x10D24, 0x10D27}, {0x10EAB, 0x10EAC},
    {0x10F46, 0x10F50}, {0x10F82, 0x10F85}, {0x11000, 0x11002}, {0x11038, 0x11046}, {0x11070, 0x11070},
    {0x11073, 0x11074}, {0x1107F, 0x11082}, {0x110B0, 0x110BA}, {0x110C2, 0x110C2}, {0x11100, 0x11102},
    {0x11127, 0x11134}, {0x11145, 0x11146}, {0x11173, 0x11173}, {0x11180, 0x11182}, {0x111B3, 0x111C0},
    {0x111C9, 0x111CC}, {0x111CE, 0x111CF}, {0x1122C, 0x11237}, {0x1123E, 0x1123E}, {0x112DF, 0x112EA},
    {0x11300, 0x11303}, {0x1133B, 0x1133C}, {0x1133E, 0x11344}, {0x11347, 0x11348}, {0x1134B, 0x1134D},
    {0x11357, 0x11357}, {0x11362, 0x11363}, {0x11366, 0x1136C}, {0x11370, 0x11374}, {0x11435, 0x11446},
    {0x1145E, 0x1145E}, {0x114B0, 0x114C3}, {0x115AF, 0x115B5}, {0x115B8, 0x115C0}, {0x115DC, 0x115DD},
    {0x11630, 0x11640}, {0x116AB, 0x116B7}, {0x1171D, 0x1172B}, {0x1182C, 0x1183A}, {0x11930, 0x11935},
    {0x11937, 0x11938}, {0x1193B, 0x1193E}, {0x11940, 0x11940}, {0x11942, 0x11943}, {0x119D1, 0x119D7},
    {0x119DA, 0x119E0}, {0x119E4, 0x119E4}, {0x11A01, 0x11A0A}, {0x11A33, 0x11A39}, {0x11A3B, 0x11A3E},
    {0x11A47, 0x11A47}, {0x11A51, 0x11A5B}, {0x11A8A, 0x11A99}, {0x11C2F, 0x11C36}, {0x11C38, 0x11C3F},
    {0x11C92, 0x11CA7}, {0x11CA9, 0x11CB6}, {0x11D31, 0x11D36}, {0x11D3A, 0x11D3A}, {0x11D3C, 0x11D3D},
    {0x11D3F, 0x11D45}, {0x11D47, 0x11D47}, {0x11D8A, 0x11D8E}, {0x11D90, 0x11D91}, {0x11D93, 0x11D97},
    {0x11EF3, 0x11EF6}, {0x16AF0, 0x16AF4}, {0x16B30, 0x16B36}, {0x16F4F, 0x16F4F}, {0x16F51, 0x16F87},
    {0x16F8F, 0x16F92}, {0x16FE4, 0x16FE4}, {0x16FF0, 0x16FF1}, {0x1BC9D, 0x1BC9E}, {0x1CF00, 0x1CF2D},
    {0x1CF30, 0x1CF46}, {0x1D165, 0x1D169}, {0x1D16D, 0x1D172}, {0x1D17B, 0x1D182}, {0x1D185, 0x1D18B},
    {0x1D1AA, 0x1D1AD}, {0x1D242, 0x1D244}, {0x1DA00, 0x1DA36}, {0x1DA3B, 0x1DA6C}, {0x1DA75, 0x1DA75},
    {0x1DA84, 0x1DA84}, {0x1DA9B, 0x1DA9F}, {0x1DAA1, 0x1DAAF}, {0x1E000, 0x1E006}, {0x1E008, 0x1E018},
    {0x1E01B, 0x1E021}, {0x1E023, 0x1E024}, {0x1E026, 0x1E02A}, {0x1E130, 0x1E136}, {0x1E2AE, 0x1E2AE},
    {0x1E2EC, 0x1E2EF}, {0x1E8D0, 0x1E8D6}, {0x1E944, 0x1E94A}, {0xE0100, 0xE01EF},
};

struct accented {
  char32_t first;
  std::u32string_view letters;  // what each letter from the first on is without its accents
};

// In order. A letter of a run that has no accents stands for itself.
constexpr accented runs[] = {
    {0xC0, U"AAAAAA\u00C6CEEEEIIII\u00D0NOOOOO\u00D7\u00D8UUUUY\u00DE\u00DFaaaaaa\u00E6ceeeeiiii\u00F0nooooo"
           U"\u00F7\u00F8uuuuy\u00FEyAaAaAaCcCcCcCcDd\u0110\u0111EeEeEeEeEeGgGgGgGgHh\u0126\u0127IiIiIiIiI"
           U"\u0131\u0132\u0133JjKk\u0138LlLlLl\u013F\u0140\u0141\u0142NnNnNn\u0149\u014A\u014BOoOoOo\u0152"
           U"\u0153RrRrRrSsSsSsSsTtTt\u0166\u0167UuUuUuUuUuUuWwYyYZzZzZz"},
    {0x1A0, U"Oo"},
    {0x1AF, U"Uu"},
    {0x1CD, U"AaIiOoUuUuUuUuUu\u01DDAaAa\u00C6\u00E6\u01E4\u01E5GgKkOoOo\u01B7\u0292j\u01F1\u01F2\u01F3Gg"
            U"\u01F6\u01F7NnAa\u00C6\u00E6\u00D8\u00F8AaAaEeEeIiIiOoOoRrRrUuUuSsTt\u021C\u021DHh"},
    {0x226, U"AaEeOoOoOoOoYy"},
    {0x374, U"\u02B9"},
    {0x37E, U";"},
    {0x385, U"\u00A8\u0391\u00B7\u0395\u0397\u0399\u038B\u039F\u038D\u03A5\u03A9\u03B9"},
    {0x3AA, U"\u0399\u03A5\u03B1\u03B5\u03B7\u03B9\u03C5"},
    {0x3CA, U"\u03B9\u03C5\u03BF\u03C5\u03C9\u03CF\u03D0\u03D1\u03D2\u03D2\u03D2"},
    {0x400, U"\u0415\u0415\u0402\u0413\u0404\u0405\u0406\u0406\u0408\u0409\u040A\u040B\u041A\u0418\u0423"},
    {0x419, U"\u0418"},
    {0x439, U"\u0438"},
    {0x450, U"\u0435\u0435\u0452\u0433\u0454\u0455\u0456\u0456\u0458\u0459\u045A\u045B\u043A\u0438\u0443"},
    {0x476, U"\u0474\u0475"},
    {0x4C1, U"\u0416\u0436"},
    {0x4D0, U"\u0410\u0430\u0410\u0430\u04D4\u04D5\u0415\u0435\u04D8\u04D9\u04D8\u04D9\u0416\u0436\u0417\u0437"
            U"\u04E0\u04E1\u0418\u0438\u0418\u0438\u041E\u043E\u04E8\u04E9\u04E8\u04E9\u042D\u044D\u0423\u0443"
            U"\u0423\u0443\u0423\u0443\u0427\u0447\u04F6\u04F7\u042B\u044B"},
    {0x622, U"\u0627\u0627\u0648\u0627\u064A"},
    {0x6C0, U"\u06D5\u06C1\u06C1"},
    {0x6D3, U"\u06D2"},
    {0x929, U"\u0928"},
    {0x931, U"\u0930\u0932\u0933\u0933"},
    {0x958, U"\u0915\u0916\u0917\u091C\u0921\u0922\u092B\u092F"},
    {0x9DC, U"\u09A1\u09A2\u09DE\u09AF"},
    {0xA33, U"\u0A32\u0A34\u0A35\u0A38"},
    {0xA59, U"\u0A16\u0A17\u0A1C\u0A5C\u0A5D\u0A2B"},
    {0xB5C, U"\u0B21\u0B22"},
    {0xB94, U"\u0B92"},
    {0xF43, U"\u0F42"},
    {0xF4D, U"\u0F4C\u0F4E\u0F4F\u0F50\u0F51\u0F51\u0F53\u0F54\u0F55\u0F56\u0F56\u0F58\u0F59\u0F5A\u0F5B\u0F5B"},
    {0xF69, U"\u0F40"},
    {0x1026, U"\u1025"},
    {0x1B06, U"\u1B05\u1B07\u1B07\u1B09\u1B09\u1B0B\u1B0B\u1B0D\u1B0D\u1B0F\u1B10\u1B11\u1B11"},
    {0x1E00, U"AaBbBbBbCcDdDdDdDdDdEeEeEeEeEeFfGgHhHhHhHhHhIiIiKkKkKkLlLlLlLlMmMmMmNnNnNnNnOoOoOoOoPpPpRrRrRrRr"
             U"SsSsSsSsSsTtTtTtTtUuUuUuUuUuVvVvWwWwWwWwWwXxXxYyZzZzZzhtwy\u1E9A\u017F\u1E9C\u1E9D\u1E9E\u1E9FAa"
             U"AaAaAaAaAaAaAaAaAaAaAaEeEeEeEeEeEeEeEeIiIiOoOoOoOoOoOoOoOoOoOoOoOoUuUuUuUuUuUuUuYyYyYyYy"},
    {0x1F00, U"\u03B1\u03B1\u03B1\u03B1\u03B1\u03B1\u03B1\u03B1\u0391\u0391\u0391\u0391\u0391\u0391\u0391\u0391"
             U"\u03B5\u03B5\u03B5\u03B5\u03B5\u03B5\u1F16\u1F17\u0395\u0395\u0395\u0395\u0395\u0395\u1F1E\u1F1F"
             U"\u03B7\u03B7\u03B7\u03B7\u03B7\u03B7\u03B7\u03B7\u0397\u0397\u0397\u0397\u0397\u0397\u0397\u0397"
             U"\u03B9\u03B9\u03B9\u03B9\u03B9\u03B9\u03B9\u03B9\u0399\u0399\u0399\u0399\u0399\u0399\u0399\u0399"
             U"\u03BF\u03BF\u03BF\u03BF\u03BF\u03BF\u1F46\u1F47\u039F\u039F\u039F\u039F\u039F\u039F\u1F4E\u1F4F"
             U"\u03C5\u03C5\u03C5\u03C5\u03C5\u03C5\u03C5\u03C5\u1F58\u03A5\u1F5A\u03A5\u1F5C\u03A5\u1F5E\u03A5"
             U"\u03C9\u03C9\u03C9\u03C9\u03C9\u03C9\u03C9\u03C9\u03A9\u03A9\u03A9\u03A9\u03A9\u03A9\u03A9\u03A9"
             U"\u03B1\u03B1\u03B5\u03B5\u03B7\u03B7\u03B9\u03B9\u03BF\u03BF\u03C5\u03C5\u03C9\u03C9\u1F7E\u1F7F"
             U"\u03B1\u03B1\u03B1\u03B1\u03B1\u03B1\u03B1\u03B1\u0391\u0391\u0391\u0391\u0391\u0391\u0391\u0391"
             U"\u03B7\u03B7\u03B7\u03B7\u03B7\u03B7\u03B7\u03B7\u0397\u0397\u0397\u0397\u0397\u0397\u0397\u0397"
             U"\u03C9\u03C9\u03C9\u03C9\u03C9\u03C9\u03C9\u03C9\u03A9\u03A9\u03A9\u03A9\u03A9\u03A9\u03A9\u03A9"
             U"\u03B1\u03B1\u03B1\u03B1\u03B1\u1FB5\u03B1\u03B1\u0391\u0391\u0391\u0391\u0391\u1FBD\u03B9\u1FBF"
             U"\u1FC0\u00A8\u03B7\u03B7\u03B7\u1FC5\u03B7\u03B7\u0395\u0395\u0397\u0397\u0397\u1FBF\u1FBF\u1FBF"
             U"\u03B9\u03B9\u03B9\u03B9\u1FD4\u1FD5\u03B9\u03B9\u0399\u0399\u0399\u0399\u1FDC\u1FFE\u1FFE\u1FFE"
             U"\u03C5\u03C5\u03C5\u03C5\u03C1\u03C1\u03C5\u03C5\u03A5\u03A5\u03A5\u03A5\u03A1\u00A8\u00A8`"
             U"\u1FF0\u1FF1\u03C9\u03C9\u03C9\u1FF5\u03C9\u03C9\u039F\u039F\u03A9\u03A9\u03A9\u00B4\u1FFE\u1FFF"
             U"\u2002\u2003"},
    {0x2126, U"\u03A9\u2127\u2128\u2129KA"},
    {0x219A, U"\u2190\u2192"},
    {0x21AE, U"\u2194"},
    {0x21CD, U"\u21D0\u21D4\u21D2"},
    {0x2204, U"\u2203\u2205\u2206\u2207\u2208\u2208\u220A\u220B\u220B"},
    {0x2224, U"\u2223\u2225\u2225"},
    {0x2241, U"\u223C\u2242\u2243\u2243\u2245\u2246\u2245\u2248\u2248"},
    {0x2260, U"=\u2261\u2261"},
    {0x226D, U"\u224D<>\u2264\u2265\u2272\u2273\u2272\u2273\u2276\u2277\u2276\u2277"},
    {0x2280, U"\u227A\u227B\u2282\u2283\u2282\u2283\u2286\u2287\u2286\u2287"},
    {0x22AC, U"\u22A2\u22A8\u22A9\u22AB"},
    {0x22E0, U"\u227C\u227D\u2291\u2292"},
    {0x22EA, U"\u22B2\u22B3\u22B4\u22B5"},
    {0x2329, U"\u3008\u3009"},
    {0x2ADC, U"\u2ADD"},
    {0x304C, U"\u304B\u304D\u304D\u304F\u304F\u3051\u3051\u3053\u3053\u3055\u3055\u3057\u3057\u3059\u3059\u305B"
             U"\u305B\u305D\u305D\u305F\u305F\u3061\u3061\u3063\u3064\u3064\u3066\u3066\u3068\u3068"},
    {0x3070, U"\u306F\u306F\u3072\u3072\u3072\u3075\u3075\u3075\u3078\u3078\u3078\u307B\u307B\u307B"},
    {0x3094, U"\u3046"},
    {0x309E, U"\u309D"},
    {0x30AC, U"\u30AB\u30AD\u30AD\u30AF\u30AF\u30B1\u30B1\u30B3\u30B3\u30B5\u30B5\u30B7\u30B7\u30B9\u30B9\u30BB"
             U"\u30BB\u30BD\u30BD\u30BF\u30BF\u30C1\u30C1\u30C3\u30C4\u30C4\u30C6\u30C6\u30C8\u30C8"},
    {0x30D0, U"\u30CF\u30CF\u30D2\u30D2\u30D2\u30D5\u30D5\u30D5\u30D8\u30D8\u30D8\u30DB\u30DB\u30DB"},
    {0x30F4, U"\u30A6\u30F5\u30F6\u30EF\u30F0\u30F1\u30F2\u30FB\u30FC\u30FD\u30FD"},
    {0xFB1D, U"\u05D9\uFB1E\u05F2"},
    {0xFB2A, U"\u05E9\u05E9\u05E9\u05E9\u05D0\u05D0\u05D0\u05D1\u05D2\u05D3\u05D4\u05D5\u05D6\uFB37\u05D8\u05D9"
             U"\u05DA\u05DB\u05DC\uFB3D\u05DE\uFB3F\u05E0\u05E1\uFB42\u05E3\u05E4\uFB45\u05E6\u05E7\u05E8\u05E9"
             U"\u05EA\u05D5\u05D1\u05DB\u05E4"},
};

}  // namespace

bool is_mark(char32_t character) {
  const auto *const range = std::ranges::lower_bound(combining_marks, character, {}, &code_range::last);
  return range != std::end(combining_marks) && character >= range->first;
}

char32_t without_accents(char32_t letter) {
  const auto *const behind = std::ranges::upper_bound(runs, letter, {}, &accented::first);
  if (behind == std::begin(runs)) {
    return letter;
  }
  const accented &run = *std::prev(behind);
  return letter - run.first < run.letters.size() ? run.letters[letter - run.first] : letter;
}

}  // namespace chlist
