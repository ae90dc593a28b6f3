// Files that end inside the last bytes of their header, where its lists stand: every reader refuses them, whatever the
// bytes are, and follows none of them as a pointer.
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>

#include "support/channel_file.h"
#include "support/log_capture.h"
#include "support/new_list_folder.h"
#include "support/old_channel_file.h"
#include "support/rounds.h"

namespace {

using test_support::bytes;
using test_support::file_test;
using test_support::old_version_of;

constexpr std::size_t cut_bytes = 700;

// Every length; under a sanitizer, where a header that is read costs the pages of three blocks of its size, so many
// bytes apart, which comes to each place within a pointer.
constexpr std::size_t step = test_support::is_sanitized ? 7 : 1;

// What the last bytes of a header are filled with: again and again these.
struct filling {
  const char *name;
  bytes pattern;
};

bytes address_of(const void *memory) {
  bytes address(sizeof memory, '\0');
  std::memcpy(address.data(), &memory, sizeof memory);
  return address;
}

// A network of the host's own, in no list. A walk that comes to it would free it.
class hosts_network {
 public:
  hosts_network() {
    network_.list = {&network_.list, &network_.list};
    network_.tp_list = {&network_.tp_list, &network_.tp_list};
  }
  [[nodiscard]] const void *address() const { return &network_; }
  [[nodiscard]] bool is_untouched() const {
    return network_.list.next == &network_.list && network_.tp_list.next == &network_.tp_list;
  }

 private:
  network_ch_st network_ = {};
};

struct reader {
  const char *name;
  std::size_t header_size;
  int refusal;
  std::function<int(const char *path)> read;
};

template <int version>
reader beside_the_list(const char *name) {
  const auto &read = old_version_of(version);
  return {name, read.size_of(test_support::record_kind::list), 0,
          [&read](const char *path) { return read.read(path) == nullptr ? 0 : 1; }};
}

template <int version>
reader repairing(const char *name) {
  const std::size_t size = old_version_of(version).size_of(test_support::record_kind::list);
  return {name, size, -1, [](const char *path) { return repair_channel(version, path); }};
}

std::vector<reader> readers() {
  return {{"Load", test_support::list_size, -1, [](const char *) { return load_channel("list.dat", 255); }},
          beside_the_list<9>("Version9"),
          beside_the_list<8>("Version8"),
          beside_the_list<7>("Version7"),
          repairing<9>("RepairFrom9"),
          repairing<8>("RepairFrom8"),
          repairing<7>("RepairFrom7")};
}

// A header with networks to read, its last bytes filled. An address stands in it where the lists have pointers.
bytes filled_header(std::size_t size, const filling &filled) {
  bytes header = test_support::channel_file().set(459'610, 2, 3).data;
  header.resize(size, '\0');
  for (std::size_t at = (size - cut_bytes) / 8 * 8; at < size; ++at) {
    header[at] = filled.pattern[at % filled.pattern.size()];
  }
  return header;
}

// The length and the bytes that a reader does not refuse; empty when it refuses them all.
std::string taken_header(const std::string &path, const reader &tested) {
  const test_support::fd_capture standard_output(STDOUT_FILENO);
  const auto in_heap = std::make_unique<hosts_network>();
  const hosts_network on_stack;
  const filling fillings[] = {{"0x00", bytes(1, '\0')},
                              {"0xFF", bytes(1, '\xFF')},
                              {"0x41", bytes(1, '\x41')},
                              {"live memory", address_of(in_heap->address())},
                              {"the stack", address_of(on_stack.address())}};
  for (const filling &filled : fillings) {
    test_support::write_file(path, filled_header(tested.header_size, filled));
    for (std::size_t size = tested.header_size - 1; size >= tested.header_size - cut_bytes; size -= step) {
      std::filesystem::resize_file(path, size);
      if (tested.read(path.c_str()) != tested.refusal || !in_heap->is_untouched() || !on_stack.is_untouched()) {
        return std::to_string(size) + " bytes, filled with " + filled.name;
      }
    }
  }
  return {};
}

class CutHeader : public file_test, public ::testing::WithParamInterface<reader> {};

TEST_P(CutHeader, IsRefusedAtEveryLengthWhateverItsBytesAre) { EXPECT_EQ(taken_header(path(), GetParam()), ""); }

INSTANTIATE_TEST_SUITE_P(Readers, CutHeader, ::testing::ValuesIn(readers()),
                         [](const auto &tested) { return std::string(tested.param.name); });

class CutHeaderOfANewList : public test_support::new_list_test {};

TEST_F(CutHeaderOfANewList, IsRefusedAtEveryLengthWhateverItsBytesAre) {
  test_support::fill_view(VIEW_ALL, 3);
  const bytes before = test_support::list_in_memory();

  const reader merge = {"Merge", test_support::list_size, 0, [](const char *) { return check_load_channel(); }};

  EXPECT_EQ(taken_header(test_support::new_list, merge), "");

  EXPECT_EQ(test_support::list_in_memory(), before);
}

// As receivers leave it behind when the power goes: an ordinary list with ten promotion entries, cut in its header.
TEST_F(CutHeaderOfANewList, OfAnOrdinaryListIsRefused) {
  test_support::channel_file file;
  for (std::uint16_t id = 1; id <= MAX_PROMO_CHANNEL; ++id) {
    file.service({.service_id = id}).entry(VIEW_PROMOTION, {.service_id = id}, id);
  }
  test_support::write_file(test_support::new_list, file.data);
  for (std::size_t size = test_support::list_size - 1; size >= test_support::list_size - cut_bytes; size -= step) {
    std::filesystem::resize_file(test_support::new_list, size);
    ASSERT_EQ(check_load_channel(), 0) << size;
  }
}

}  // namespace
