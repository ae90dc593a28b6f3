// The single fields of a VDR service line: every form that is read, and every one that makes the line a bad one.
#include "chlist/exchange/vdr/vdr_channels_conf.h"

#include <gtest/gtest.h>

#include <string>

#include "tool/exchange/vdr/read_line.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using chlist::vdr_service;
using tool_test::pid_list;
using tool_test::pids;
using tool_test::read;
using tool_test::refusal;

TEST(VdrName, ShortNameAndProviderMayBeMissing) {
  const vdr_service service = read({.name = "Alone"});

  EXPECT_EQ(service.name, "Alone");
  EXPECT_EQ(service.short_name, "");
  EXPECT_EQ(service.provider, "");
}

TEST(VdrName, TheLastCommaPartsTheShortName) {
  const vdr_service service = read({.name = "Here, There, Everywhere,HTE"});

  EXPECT_EQ(service.name, "Here, There, Everywhere");
  EXPECT_EQ(service.short_name, "HTE");
}

TEST(VdrName, ACommaBehindTheSemicolonBelongsToTheProvider) {
  const vdr_service service = read({.name = "Name;Sons, Daughters;Co"});

  EXPECT_EQ(service.name, "Name");
  EXPECT_EQ(service.short_name, "");
  EXPECT_EQ(service.provider, "Sons, Daughters;Co");
}

TEST(VdrName, ABarStandsForAColon) {
  const vdr_service service = read({.name = "A|B,C|D;E|F"});

  EXPECT_EQ(service.name, "A:B");
  EXPECT_EQ(service.short_name, "C:D");
  EXPECT_EQ(service.provider, "E:F");
}

TEST(VdrName, AnEmptyNameIsTaken) { EXPECT_EQ(read({.name = ";Provider"}).name, ""); }

TEST(VdrName, BytesBeyondAsciiAreKept) { EXPECT_EQ(read({.name = "Citt\xC3\xA0 \xE9"}).name, "Citt\xC3\xA0 \xE9"); }

TEST(VdrFrequency, SatelliteMegahertzBecomeKilohertz) {
  EXPECT_EQ(read({.frequency = "1"}).frequency_khz, 1'000U);
  EXPECT_EQ(read({.frequency = "12187"}).frequency_khz, 12'187'000U);
  EXPECT_EQ(read({.frequency = "20000"}).frequency_khz, 20'000'000U);
}

TEST(VdrFrequency, SatelliteFrequenciesOutsideTheRangeAreRefused) {
  EXPECT_EQ(refusal({.frequency = "0"}), "frequency '0' is not within 1..20000");
  EXPECT_EQ(refusal({.frequency = "20001"}), "frequency '20001' is not within 1..20000");
  EXPECT_EQ(refusal({.frequency = "99999999999"}), "frequency '99999999999' is not within 1..20000");
}

TEST(VdrFrequency, OtherSourcesGiveMegahertzKilohertzOrHertz) {
  EXPECT_EQ(read({.frequency = "474", .source = "T"}).frequency_khz, 474'000U);
  EXPECT_EQ(read({.frequency = "474000", .source = "T"}).frequency_khz, 474'000U);
  EXPECT_EQ(read({.frequency = "474000000", .source = "T"}).frequency_khz, 474'000U);
  EXPECT_EQ(read({.frequency = "198500", .source = "C"}).frequency_khz, 198'500U);
  EXPECT_EQ(read({.frequency = "1", .source = "C"}).frequency_khz, 1'000U);
  EXPECT_EQ(read({.frequency = "4294967295", .source = "C"}).frequency_khz, 4'294'967U);
}

TEST(VdrFrequency, OtherSourcesOutsideTheRangeAreRefused) {
  EXPECT_EQ(refusal({.frequency = "0", .source = "T"}), "frequency '0' is not within 1..4294967295");
  EXPECT_EQ(refusal({.frequency = "4294967296", .source = "T"}), "frequency '4294967296' is not within 1..4294967295");
}

TEST(VdrParameters, HorizontalAndLeftAreOneSideVerticalAndRightTheOther) {
  EXPECT_FALSE(read({.parameters = "HC34"}).is_vertical);
  EXPECT_FALSE(read({.parameters = "LC34"}).is_vertical);
  EXPECT_TRUE(read({.parameters = "VC34"}).is_vertical);
  EXPECT_TRUE(read({.parameters = "RC34"}).is_vertical);
  EXPECT_TRUE(read({.parameters = "c34v"}).is_vertical);
}

TEST(VdrParameters, LeftAndRightAreCircular) {
  EXPECT_FALSE(read({.parameters = "HC34"}).is_circular);
  EXPECT_FALSE(read({.parameters = "VC34"}).is_circular);
  EXPECT_TRUE(read({.parameters = "LC34"}).is_circular);
  EXPECT_TRUE(read({.parameters = "RC34"}).is_circular);
}

TEST(VdrParameters, ASatelliteNeedsExactlyOnePolarisation) {
  EXPECT_EQ(refusal({.parameters = "C34"}), "parameters 'C34' do not give one polarisation (H, V, L or R)");
  EXPECT_EQ(refusal({.parameters = ""}), "parameters '' do not give one polarisation (H, V, L or R)");
  EXPECT_EQ(refusal({.parameters = "HVC34"}), "parameters 'HVC34' do not give one polarisation (H, V, L or R)");
}

TEST(VdrParameters, CableAndTerrestrialHaveNone) {
  const vdr_service service = read({.frequency = "474", .parameters = "B8C23D0G4M64T8Y0", .source = "T"});

  EXPECT_FALSE(service.is_vertical);
  EXPECT_EQ(service.modulation, "B8C23D0G4M64T8Y0");
  EXPECT_EQ(read({.frequency = "474", .parameters = "", .source = "C"}).modulation, "");
}

TEST(VdrParameters, AnythingButLettersWithNumbersIsRefused) {
  EXPECT_EQ(refusal({.parameters = "HC3/4"}), "parameters 'HC3/4' are not letters with numbers");
  EXPECT_EQ(refusal({.parameters = "34H"}), "parameters '34H' are not letters with numbers");
  EXPECT_EQ(refusal({.parameters = "H C34"}), "parameters 'H C34' are not letters with numbers");
}

TEST(VdrSource, SatellitesHaveAPosition) {
  EXPECT_EQ(read({.source = "S19.2E"}).source, "S19.2E");
  EXPECT_EQ(read({.source = "s5w"}).source, "S5W");
  EXPECT_EQ(read({.source = "S180.0W"}).source, "S180.0W");
}

TEST(VdrSource, OthersAreALetterWithAPositionOrWithout) {
  EXPECT_EQ(read({.frequency = "474", .source = "T"}).source, "T");
  EXPECT_EQ(read({.frequency = "474", .source = "c"}).source, "C");
  EXPECT_EQ(read({.frequency = "474", .source = "T52.0E"}).source, "T52.0E");
}

TEST(VdrSource, UnknownFormsAreRefused) {
  for (const char *source :
       {"", "19.2E", "S19.2", "S19.2N", "S.2E", "S19.E", "S19.25E", "S1234E", "S180.1E", "S181W", "TX", "SxE", "?"}) {
    EXPECT_EQ(refusal({.source = source}), "source '" + std::string(source) + "' is unknown");
  }
}

TEST(VdrSymbolRate, MustBeANumber) {
  EXPECT_EQ(read({.symbol_rate = "0"}).symbol_rate, 0U);
  EXPECT_EQ(refusal({.symbol_rate = ""}), "symbol rate '' is not a number");
  EXPECT_EQ(refusal({.symbol_rate = "27500x"}), "symbol rate '27500x' is not a number");
}

TEST(VdrVideo, PidWithPcrAndType) {
  EXPECT_EQ(read({.video = "163"}).video_pid, 163);
  EXPECT_EQ(read({.video = "163"}).pcr_pid, 0);
  EXPECT_EQ(read({.video = "163=2"}).video_type, 2);
  EXPECT_EQ(read({.video = "163+17"}).pcr_pid, 17);
  EXPECT_EQ(read({.video = "163+17=27"}).pcr_pid, 17);
  EXPECT_EQ(read({.video = "163+17=27"}).video_type, 27);
}

TEST(VdrVideo, NoneAndTheMarkOfEncryptedRadioAreNoVideo) {
  EXPECT_FALSE(read({.video = "0"}).has_video());
  EXPECT_FALSE(read({.video = "1"}).has_video());
  EXPECT_EQ(read({.video = "0+820"}).pcr_pid, 820);
  EXPECT_TRUE(read({.video = "2"}).has_video());
}

TEST(VdrVideo, PidsHave13Bits) {
  EXPECT_EQ(read({.video = "8191+8191=255"}).video_pid, 8191);
  EXPECT_EQ(refusal({.video = "8192"}), "video PID '8192' is not within 0..8191");
  EXPECT_EQ(refusal({.video = "163+8192"}), "PCR PID '8192' is not within 0..8191");
  EXPECT_EQ(refusal({.video = "163=256"}), "video type '256' is not within 0..255");
}

TEST(VdrVideo, MustBeNumbers) {
  EXPECT_EQ(refusal({.video = ""}), "video PID '' is not a number");
  EXPECT_EQ(refusal({.video = "-1"}), "video PID '-1' is not a number");
  EXPECT_EQ(refusal({.video = "+17"}), "video PID '' is not a number");
  EXPECT_EQ(refusal({.video = "163+"}), "PCR PID '' is not a number");
  EXPECT_EQ(refusal({.video = "163="}), "video type '' is not a number");
}

TEST(VdrAudio, ZeroIsNone) {
  EXPECT_FALSE(read({.audio = "0"}).has_audio());
  EXPECT_EQ(pids(read({.audio = "0,7"}).audio), (pid_list{7}));
  EXPECT_EQ(pids(read({.audio = "0;8=eng@106"}).dolby), (pid_list{8}));
  EXPECT_TRUE(read({.audio = "0;8"}).has_audio());
}

TEST(VdrAudio, LanguageAndTypeMayEachBeMissing) {
  const vdr_service service = read({.audio = "1=deu,2@3,3=@4,4=deu+eng@3"});

  ASSERT_EQ(pids(service.audio), (pid_list{1, 2, 3, 4}));
  EXPECT_EQ(service.audio[0].language, "deu");
  EXPECT_EQ(service.audio[0].type, 0);
  EXPECT_EQ(service.audio[1].language, "");
  EXPECT_EQ(service.audio[1].type, 3);
  EXPECT_EQ(service.audio[2].language, "");
  EXPECT_EQ(service.audio[2].type, 4);
  EXPECT_EQ(service.audio[3].language, "deu+eng");
}

TEST(VdrAudio, BadListsAreRefused) {
  EXPECT_EQ(refusal({.audio = ""}), "audio PID '' is not a number");
  EXPECT_EQ(refusal({.audio = "102,"}), "audio PID '' is not a number");
  EXPECT_EQ(refusal({.audio = "8192"}), "audio PID '8192' is not within 0..8191");
  EXPECT_EQ(refusal({.audio = "102@256"}), "stream type '256' is not within 0..255");
  EXPECT_EQ(refusal({.audio = "102;"}), "Dolby PID '' is not a number");
  EXPECT_EQ(refusal({.audio = "102;x"}), "Dolby PID 'x' is not a number");
}

TEST(VdrTeletext, SubtitlesFollowASemicolon) {
  const vdr_service service = read({.teletext = "105;110=deu,111=eng"});

  EXPECT_EQ(service.teletext_pid, 105);
  EXPECT_EQ(pids(service.subtitles), (pid_list{110, 111}));
}

TEST(VdrTeletext, BadPidsAreRefused) {
  EXPECT_EQ(refusal({.teletext = "x"}), "teletext PID 'x' is not a number");
  EXPECT_EQ(refusal({.teletext = "8192"}), "teletext PID '8192' is not within 0..8191");
  EXPECT_EQ(refusal({.teletext = "105;8192"}), "subtitle PID '8192' is not within 0..8191");
}

TEST(VdrCaIds, ZeroIsFreeToAir) {
  EXPECT_FALSE(read({.ca_ids = "0"}).is_scrambled());
  EXPECT_FALSE(read({.ca_ids = "0000"}).is_scrambled());
  EXPECT_FALSE(read({.ca_ids = "0"}).has_devices());
}

TEST(VdrCaIds, ThoseBelow100ChooseADeviceAndScrambleNothing) {
  for (const char *device : {"1", "F", "10", "FF"}) {
    EXPECT_TRUE(read({.ca_ids = device}).has_devices()) << device;
    EXPECT_FALSE(read({.ca_ids = device}).is_scrambled()) << device;
  }
  EXPECT_TRUE(read({.ca_ids = "100"}).is_scrambled());
  EXPECT_FALSE(read({.ca_ids = "100"}).has_devices());
  EXPECT_TRUE(read({.ca_ids = "1,B21"}).is_scrambled());
}

TEST(VdrCaIds, AreHexadecimal) { EXPECT_EQ(read({.ca_ids = "98C,9c4,FFFF"}).ca_ids, (pid_list{0x98C, 0x9C4, 0xFFFF})); }

TEST(VdrCaIds, BadIdsAreRefused) {
  EXPECT_EQ(refusal({.ca_ids = ""}), "CA id '' is not a number");
  EXPECT_EQ(refusal({.ca_ids = "98G"}), "CA id '98G' is not a number");
  EXPECT_EQ(refusal({.ca_ids = "98C,"}), "CA id '' is not a number");
  EXPECT_EQ(refusal({.ca_ids = "10000"}), "CA id '10000' is not within 0..65535");
}

TEST(VdrIds, Have16Bits) {
  const vdr_service largest =
      read({.service_id = "65535", .network_id = "65535", .transport_id = "65535", .radio_id = "65535"});

  EXPECT_EQ(largest.service_id, 65535);
  EXPECT_EQ(largest.network_id, 65535);
  EXPECT_EQ(largest.transport_id, 65535);
  EXPECT_EQ(largest.radio_id, 65535);
  EXPECT_EQ(read({.service_id = "1", .network_id = "0", .transport_id = "0"}).service_id, 1);
}

TEST(VdrIds, LargerOnesAndTextAreRefused) {
  EXPECT_EQ(refusal({.service_id = "65536"}), "SID '65536' is not within 1..65535");
  EXPECT_EQ(refusal({.service_id = "0"}), "SID '0' is not within 1..65535");
  EXPECT_EQ(refusal({.network_id = "65536"}), "NID '65536' is not within 0..65535");
  EXPECT_EQ(refusal({.transport_id = "65536"}), "TID '65536' is not within 0..65535");
  EXPECT_EQ(refusal({.radio_id = "65536"}), "RID '65536' is not within 0..65535");
  EXPECT_EQ(refusal({.service_id = "1 "}), "SID '1 ' is not a number");
  EXPECT_EQ(refusal({.network_id = "0x1"}), "NID '0x1' is not a number");
}

}  // namespace
