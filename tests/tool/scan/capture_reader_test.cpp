// What comes of the packets of tables: sections in any order, versions, and whatever is wrong with them.
#include "chlist/scan/capture_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/transport_streams.h"

namespace {

using broadcast::transport_stream;
using chlist::read_capture;

read_capture read(const std::string &bytes) {
  chlist::capture_reader reader;
  reader.take({reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size()}, true);
  return reader.finish();
}

// Behind it come some more packets, as behind every moment of a broadcast.
read_capture read(transport_stream stream) { return read(stream.add_pictures(0x1FFE, 4).bytes()); }

const broadcast::sections one_program = broadcast::program_association(7, {{0, 0x10}, {101, 0x100}});
const broadcast::sections its_map = broadcast::program_map(101, 0x101, {{0x02, 0x101, {}}, {0x04, 0x102, {}}});

// So many services that several sections take them.
std::vector<broadcast::service> many_services(int count) {
  std::vector<broadcast::service> all;
  for (int id = 1; id <= count; ++id) {
    all.push_back({static_cast<std::uint16_t>(id), {broadcast::service_name(1, "P", "Service " + std::to_string(id))}});
  }
  return all;
}

std::size_t services_in(const read_capture &capture) {
  std::size_t count = 0;
  for (const chlist::service_description &each : capture.tables.services) {
    count += each.services.size();
  }
  return count;
}

TEST(ScanReading, TablesComeWithTheirRecords) {
  transport_stream stream;
  stream.add(0x00, one_program).add(0x100, its_map).add(0x101, {}).add_pictures(0x101, 20);
  stream.add(0x01, broadcast::conditional_access({broadcast::ca_system(0x500, 0x90)}));
  stream.add(0x14, broadcast::time_and_date(0xEF7B140500));

  const read_capture made = read(stream);

  ASSERT_TRUE(made.tables.programs);
  EXPECT_EQ(made.tables.programs->ts_id, 7);
  ASSERT_EQ(made.tables.maps.count(101), 1U);
  EXPECT_EQ(made.tables.maps.at(101).pcr_pid, 0x101);
  ASSERT_EQ(made.tables.maps.at(101).streams.size(), 2U);
  EXPECT_EQ(made.tables.maps.at(101).streams[1].pid, 0x102);
  EXPECT_EQ(made.tables.conditional_access.size(), 1U);
  EXPECT_EQ(made.tables.time, 0xEF7B140500U);
  EXPECT_FALSE(made.lost.is_any());
  EXPECT_EQ(made.incomplete.size(), 0U);
  EXPECT_EQ(made.missing_maps.size(), 0U);
}

TEST(ScanReading, SectionsComeInAnyOrder) {
  broadcast::sections all = broadcast::services(7, 1, many_services(100));
  ASSERT_GE(all.size(), 3U);
  std::ranges::reverse(all);
  EXPECT_EQ(services_in(read(transport_stream().add(0x11, all))), 100U);
}

TEST(ScanReading, ATableWithoutAllItsSectionsIsTold) {
  broadcast::sections all = broadcast::services(7, 1, many_services(100));
  all.erase(all.begin() + 1);

  const read_capture made = read(transport_stream().add(0x11, all));

  EXPECT_EQ(services_in(made), 0U);
  ASSERT_EQ(made.incomplete.size(), 1U);
  EXPECT_EQ(made.incomplete[0].table_id, 0x42);
  EXPECT_EQ(made.incomplete[0].extension, 7);
}

TEST(ScanReading, TheLastVersionCounts) {
  transport_stream stream;
  stream.add(0x11, broadcast::services(7, 1, many_services(3)));
  stream.add(0x11, broadcast::services(7, 1, many_services(5), true, 1));

  const read_capture made = read(stream);

  EXPECT_EQ(services_in(made), 5U);
  EXPECT_EQ(made.tables.changes, 1U);
}

TEST(ScanReading, AVersionThatOnlyBeganLeavesTheOneBefore) {
  broadcast::sections next = broadcast::services(7, 1, many_services(100), true, 1);
  next.pop_back();

  const read_capture made =
      read(transport_stream().add(0x11, broadcast::services(7, 1, many_services(3))).add(0x11, next));

  EXPECT_EQ(services_in(made), 3U);
}

TEST(ScanReading, ATableThatIsNotInForceYetIsPassedOver) {
  std::string next = broadcast::services(7, 1, many_services(2), true, 1)[0];
  next[5] = static_cast<char>(next[5] & 0xFE);
  EXPECT_EQ(services_in(read(transport_stream().add(0x11, {broadcast::with_crc(next)}))), 0U);
}

TEST(ScanReading, NetworksThatShareATransportStreamIdStayApart) {
  transport_stream stream;
  stream.add(0x11, broadcast::services(7, 1, many_services(2), false));
  stream.add(0x11, broadcast::services(7, 2, many_services(3), false));
  EXPECT_EQ(read(stream).tables.services.size(), 2U);
}

TEST(ScanReading, RepeatedTablesAndPacketsChangeNothing) {
  transport_stream stream;
  for (int i = 0; i < 50; ++i) {
    stream.add(0x00, one_program).add(0x100, its_map);
  }
  std::string bytes;
  for (const std::string &packet : stream.packets()) {
    bytes += packet + packet;
  }

  const read_capture made = read(bytes);

  EXPECT_EQ(made.tables.maps.size(), 1U);
  EXPECT_FALSE(made.lost.is_any());
  EXPECT_EQ(made.tables.changes, 0U);
}

TEST(ScanReading, AMissingPacketIsAGapAndTheTableComesLater) {
  const broadcast::sections table = broadcast::services(7, 1, many_services(20));
  transport_stream stream;
  stream.add(0x11, table).add(0x11, table);
  stream.packets().erase(stream.packets().begin() + 1);

  const read_capture made = read(stream);

  EXPECT_EQ(made.lost.gaps, 1U);
  EXPECT_EQ(services_in(made), 20U);
}

TEST(ScanReading, AWrongCrcIsCountedAndNothingTaken) {
  transport_stream stream;
  stream.add(0x11, broadcast::services(7, 1, many_services(2)));
  stream.packets()[0][40] ^= 1;

  const read_capture made = read(stream);

  EXPECT_EQ(made.lost.wrong_crc, 1U);
  EXPECT_EQ(services_in(made), 0U);
}

TEST(ScanReading, ScrambledPacketsOfTablesAreCounted) {
  transport_stream stream;
  stream.add(0x11, broadcast::services(7, 1, many_services(2)));
  stream.packets()[0][3] = static_cast<char>(stream.packets()[0][3] | '\x80');
  EXPECT_EQ(read(stream).lost.scrambled, 1U);
}

TEST(ScanReading, BrokenPacketsOfTablesAreCounted) {
  transport_stream stream;
  stream.add(0x11, broadcast::services(7, 1, many_services(2)));
  stream.packets()[0][1] = static_cast<char>(stream.packets()[0][1] | '\x80');
  EXPECT_EQ(read(stream).lost.broken_packets, 1U);
}

// Each leads beyond its end somewhere.
TEST(ScanReading, LengthsThatLieAreMalformed) {
  const std::string too_far = "\xFF\xFF";
  const std::vector<std::pair<std::uint16_t, std::string>> lies = {
      {0x00, broadcast::section(0x00, 7, "\x01\x02\x03")},
      {0x01, broadcast::section(0x01, 7, "\x09\x20\x05")},
      {0x100, broadcast::section(0x02, 101, "\xE1\x01" + too_far)},
      {0x100, broadcast::section(0x02, 101, std::string("\xE1\x01\xF0\x00\x02\xE1\x01", 7) + too_far)},
      {0x100, broadcast::section(0x02, 101, "\xE1")},
      {0x10, broadcast::section(0x40, 7, too_far)},
      {0x10, broadcast::section(0x40, 7, std::string("\xF0\x00", 2) + too_far)},
      {0x10, broadcast::section(0x40, 7, std::string("\xF0\x00\xF0\x06\x00\x01\x00\x01", 8) + too_far)},
      {0x11, broadcast::section(0x42, 7, std::string("\x00\x01\xFF\x00\x65\xFC", 6) + too_far)},
      {0x11, broadcast::section(0x42, 7, std::string("\x00\x01\xFF\x00\x65\xFC\x80\x02\x48\x09", 10))},
      {0x11, broadcast::section(0x4A, 7, std::string("\xF0\x00\xF0\x06", 4))},
      {0x11, broadcast::section(0x42, 7, "")},
      {0x11, broadcast::section(0x42, 7, std::string("\x00\x01\xFF", 3), 0, 5, 2)},
  };
  for (const auto &[pid, lie] : lies) {
    const read_capture made = read(transport_stream().add(0x00, one_program).add(pid, {lie}));
    EXPECT_EQ(made.lost.malformed, 1U) << ::testing::PrintToString(lie);
  }
}

TEST(ScanReading, ASectionThatAnotherOneCutsOffIsMalformed) {
  const std::string whole = broadcast::services(7, 1, many_services(2))[0];
  std::string longer = whole;
  longer[2] = '\xFF';
  const read_capture made = read(transport_stream().add(0x11, {longer}).add(0x11, {whole}));
  EXPECT_EQ(made.lost.malformed, 1U);
  EXPECT_EQ(services_in(made), 2U);
}

TEST(ScanReading, ProgramsWhoseMapWouldBeAnotherTableAreMisplaced) {
  transport_stream stream;
  stream.add(0x00, {broadcast::section(0x00, 7,
                                       std::string("\0\0\xE0\0"
                                                   "\0\1\xE0\0"
                                                   "\0\2\xE0\x11"
                                                   "\0\3\xFF\xFF"
                                                   "\0\x65\xE1\0",
                                                   20))});
  stream.add(0x100, its_map);

  const read_capture made = read(stream);

  std::vector<std::uint16_t> numbers;
  for (const chlist::program &each : made.misplaced) {
    numbers.push_back(each.number);
  }
  EXPECT_EQ(numbers, (std::vector<std::uint16_t>{2, 3, 0, 1}));
  EXPECT_EQ(made.tables.maps.size(), 1U);
}

TEST(ScanReading, ATableOnAPidOfAnotherCountsNothing) {
  transport_stream stream;
  stream.add(0x00, one_program).add(0x11, its_map).add(0x100, broadcast::services(7, 1, many_services(2)));

  const read_capture made = read(stream);

  EXPECT_EQ(services_in(made), 0U);
  EXPECT_EQ(made.missing_maps, std::vector<std::uint16_t>{101});
}

TEST(ScanReading, ServicesThatLeftTheProgramsLoseTheirMaps) {
  transport_stream stream;
  stream.add(0x00, one_program).add(0x100, its_map).add(0x00, broadcast::program_association(7, {{102, 0x200}}, 1));

  const read_capture made = read(stream);

  EXPECT_EQ(made.tables.maps.size(), 0U);
  EXPECT_EQ(made.missing_maps, std::vector<std::uint16_t>{102});
}

TEST(ScanReading, SeveralProgramsShareAPid) {
  transport_stream stream;
  stream.add(0x00, broadcast::program_association(7, {{101, 0x100}, {102, 0x100}}));
  stream.add(0x100, its_map).add(0x100, broadcast::program_map(102, 0x201, {{0x1B, 0x201, {}}}));
  EXPECT_EQ(read(stream).tables.maps.size(), 2U);
}

TEST(ScanReading, TheNetworkMayHaveAPidOfItsOwn) {
  transport_stream stream;
  stream.add(0x00, broadcast::program_association(7, {{0, 0x300}, {101, 0x100}}));
  stream.add(0x300, broadcast::network(9, {broadcast::network_name("Net")}, {}));
  EXPECT_EQ(read(stream).tables.networks.size(), 1U);
}

TEST(ScanReading, TablesOfAtscAreTold) {
  EXPECT_TRUE(read(transport_stream().add(0x1FFB, {broadcast::section(0xC8, 1, "\x01")})).has_atsc);
  EXPECT_FALSE(read(transport_stream().add(0x1FFB, {broadcast::section(0xCB, 1, "\x01")})).has_atsc);
}

// Tables that never end would fill the memory otherwise.
TEST(ScanReading, MemoryIsBounded) {
  transport_stream stream;
  const std::string content = std::string("\x00\x01\xFF", 3);
  for (int ts_id = 0; ts_id < 70; ++ts_id) {
    for (int number = 0; number < 250; ++number) {
      stream.add(0x11, {broadcast::section(0x46, static_cast<std::uint16_t>(ts_id), content, 0,
                                           static_cast<std::uint8_t>(number), 250)});
    }
  }
  const read_capture made = read(stream);
  EXPECT_EQ(made.lost.beyond_memory, 70U * 250U - 4096U);
}

}  // namespace
