// Every operation that allocates, with its first request for memory refused, its second, and so on: one line, and the
// process stops. Never is a record missing, and never is a file lost to it.
#include <base/verbosity.h>
#include <channel/channel.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>

#include "faults/operations.h"
#include "faults/scarce_memory.h"
#include "faults/stand_in_door.h"
#include "support/log_capture.h"
#include "support/old_channel_file.h"
#include "support/rounds.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;
using sizes = std::vector<std::size_t>;

// A list that is read beside the one in memory: without room for its block it is a file that cannot be opened.
bool reads_beside(const operation &tested) {
  return tested.name.starts_with('v') || tested.name.starts_with("repair") || tested.name == "check_load_channel";
}

bool allocates(const operation &tested) { return tested.name.find("group_list") == std::string::npos; }

// Operations that allocate without touching a file. Each gives back what it got.
std::vector<operation> operations_in_memory() {
  const auto freed = [](void *record) {
    std::free(record);
    return record != nullptr ? 1 : 0;
  };
  return {
      {"alloc_channel_info", [=](const receiver & /*own*/) { return freed(alloc_channel_info()); }, {}},
      {"alloc_tp_ch_info", [=](const receiver & /*own*/) { return freed(alloc_tp_ch_info(1, 2, 0)); }, {}},
      {"add_rch_info",
       [](const receiver & /*own*/) { return file_service({.net_index = 9, .service_id = 9}) != nullptr ? 1 : 0; },
       {}},
      {"move_channel",
       [](const receiver & /*own*/) {
         const std::int16_t sources[] = {0, 1};
         return move_channel(2, 2, sources);
       },
       {}},
      {"remove_invalid_virtual_channel",
       [](const receiver & /*own*/) {
         // Without a frequency a service is found by its transport stream, which takes one more table.
         get_virtual_channel_st(VIEW_ALL)[0].frequency = 0;
         remove_invalid_virtual_channel();
         return 0;
       },
       {}},
  };
}

std::vector<operation> allocating_operations() {
  std::vector<operation> allocating = operations_in_memory();
  std::ranges::copy_if(operations(), std::back_inserter(allocating), allocates);
  return allocating;
}

// Where a new list is looked for.
void send_new_list_to(stand_in_door &door, const receiver &own) {
  door.redirect(receiver::place_of_new_lists, own.path(receiver::new_name));
}

// What a run without want asks for.
sizes requests_of(const operation &tested, const receiver &own) {
  stand_in_door door;
  send_new_list_to(door, own);
  const scarce_memory plenty;
  tested.run(own);
  return plenty.requests();
}

class NoMemory : public file_test, public ::testing::WithParamInterface<operation> {
 protected:
  void SetUp() override {
    file_test::SetUp();
    own.start();
  }

  int run(stand_in_door &door) const {
    send_new_list_to(door, own);
    return GetParam().run(own);
  }

  // In a child, which has to die.
  void run_out_at(std::size_t request) const {
    verbosity_map[7] = 0;
    stand_in_door door;
    const scarce_memory scarce(request);
    run(door);
  }

  const receiver own;
};

using NoMemoryDeathTest = NoMemory;

TEST_P(NoMemoryDeathTest, AtAnyRequestEndsTheProcessWithOneLine) {
  const sizes asked = requests_of(GetParam(), own);
  ASSERT_FALSE(asked.empty());
  // Under a sanitizer, where a process takes long to end, at every fourth.
  constexpr std::size_t step = test_support::is_sanitized ? 4 : 1;
  for (std::size_t request = reads_beside(GetParam()) ? 2 : 1; request <= asked.size(); request += step) {
    own.start();
    // An emulator tells of the signal behind the line.
    const std::string line = "^\033\\[32mERROR: [a-z_0-9]+:[0-9]+ no memory for " + std::to_string(asked[request - 1]) +
                             " bytes\n\033\\[0m(qemu: [^\n]*\n)?$";
    EXPECT_EXIT(run_out_at(request), ::testing::KilledBySignal(SIGABRT), line) << request;
  }
}

INSTANTIATE_TEST_SUITE_P(Of, NoMemoryDeathTest, ::testing::ValuesIn(allocating_operations()), name_of_operation);

using SavingDeathTest = file_test;

// A file is truncated only when there is memory for what replaces it.
TEST_F(SavingDeathTest, WithoutMemoryLeavesTheEarlierFileAsItWas) {
  const receiver own;
  own.start();
  const std::string saved = own.path(receiver::own_name);
  const auto run_out = [] {
    const scarce_memory scarce(1);
    save_channel(receiver::own_name.c_str());
  };

  EXPECT_EXIT(run_out(), ::testing::KilledBySignal(SIGABRT), "");

  EXPECT_TRUE(read_file(saved) == own.own_list().data);
}

class NoBlock : public NoMemory {};

// The one want that a caller survives: as when the file cannot be opened, only that nothing tries to open it.
TEST_P(NoBlock, ForAListBesideTheOneInMemoryIsAFileThatCannotBeOpened) {
  const store_state before = state_of_store();
  documented_run documented({.nth = 1}, before, before, {});
  const int result = GetParam().document(documented, own);
  {
    const log_capture log(1);
    stand_in_door door;
    const scarce_memory scarce(1);

    EXPECT_EQ(run(door), result);

    EXPECT_EQ(log.writes(), documented.log);
    EXPECT_EQ(door.events(), lines{});
  }
  EXPECT_TRUE(state_of_store() == documented.store);
}

std::vector<operation> operations_beside() {
  std::vector<operation> beside;
  std::ranges::copy_if(operations(), std::back_inserter(beside), reads_beside);
  return beside;
}

INSTANTIATE_TEST_SUITE_P(Of, NoBlock, ::testing::ValuesIn(operations_beside()), name_of_operation);

// What a reader asks for: a block for a list beside the one in memory, and the records. A header is read in place.
struct memory_of_reader {
  std::string name;
  std::size_t block;
  sizes records;  // of networks, transponders and services
};

std::vector<memory_of_reader> readers() {
  const sizes today = {sizeof(network_ch_st), sizeof(tp_ch_st), sizeof(channel_st)};
  const sizes longer = {sizeof(v8_network_ch_st), sizeof(v8_tp_ch_st), sizeof(v8_channel_st)};
  return {{"load_channel_sorted", 0, today},
          {"v9_load_channel", sizeof(channel_list_st), today},
          {"v8_load_channel", sizeof(v8_channel_list_st), longer},
          {"v7_load_channel", sizeof(v8_channel_list_st), longer}};
}

using MemoryOfReaders = file_test;

TEST_F(MemoryOfReaders, IsAskedForRecordByRecordInTheOrderOfTheFile) {
  const receiver own;
  for (const memory_of_reader &reader : readers()) {
    own.start();
    sizes expected(reader.block == 0 ? 0 : 1, reader.block);
    for (const record_place &record : own.own_list().records) {
      if (record.kind != record_kind::list) {
        expected.push_back(reader.records[static_cast<std::size_t>(record.kind) - 1]);
      }
    }

    sizes asked = requests_of(*std::ranges::find(operations(), reader.name, &operation::name), own);

    ASSERT_GE(asked.size(), expected.size());
    asked.resize(expected.size());
    EXPECT_EQ(asked, expected) << reader.name;
  }
}

}  // namespace
