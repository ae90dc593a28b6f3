// The two group tables that have a file of their own, and a scratch directory to keep the files in.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/groups.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/temp_dir.h"

namespace test_support {

// One of the two tables that have a file, and the words of its log lines.
struct filed_table {
  const char *name;
  std::int8_t kind;
  group_st *groups;
  std::int16_t *count;
  std::int16_t capacity;
  std::string saved_as;
  std::string loaded_from;
  std::string saving;
  std::string empty;
  [[nodiscard]] std::size_t table_size() const { return 104U * static_cast<std::size_t>(capacity); }
  [[nodiscard]] std::size_t file_size() const { return 2 + table_size(); }
};

inline filed_table genres() {
  channel_list_st &list = *get_channel_list();
  return {"genre",
          GROUP_GENRE,
          list.genre,
          &list.genre_num,
          MAX_GENRE,
          "genre.dat\n",
          "genre.dat",
          "ChannelAPI save_group_list:#           SAVE GENRE       \n",
          "ERROR: save_group_list:#  group number 0  !!\n"};
}

inline filed_table countries() {
  channel_list_st &list = *get_channel_list();
  return {"country",
          GROUP_COUNTRY,
          list.country,
          &list.country_num,
          MAX_COUNTRY,
          "country.dat",
          "country.dat",
          "ChannelAPI save_group_list:#           SAVE COUNTRY       \n",
          "ERROR: save_group_list:#  country number 0 !!\n"};
}

inline group_st group(int id, const std::string &name) {
  group_st made = named_group(name, id);
  made.reserved_0 = static_cast<std::uint16_t>(0xA000 + id);
  return made;
}

inline std::vector<group_st> table_image(const filed_table &table) {
  std::vector<group_st> image;
  for (int i = 0; i < table.capacity; ++i) {
    image.push_back(group(1000 + i, "Group " + std::to_string(i)));
  }
  return image;
}

inline bytes as_bytes(const group_st *groups, std::size_t size) {
  return {reinterpret_cast<const char *>(groups), size};
}

inline bytes file_of(std::int16_t count, const std::vector<group_st> &image) {
  return bytes(reinterpret_cast<const char *>(&count), sizeof count) + as_bytes(image.data(), 104 * image.size());
}

class group_file_test : public store_test, public ::testing::WithParamInterface<filed_table> {
 protected:
  void SetUp() override {
    store_test::SetUp();
    set_target_dir(dir().c_str());
  }
  [[nodiscard]] const std::string &dir() const { return dir_.path(); }
  [[nodiscard]] std::string saved_path() const { return dir() + GetParam().saved_as; }
  [[nodiscard]] std::string loaded_path() const { return dir() + GetParam().loaded_from; }
  static std::vector<group_st> image() { return table_image(GetParam()); }
  static int load() { return load_group_list(GetParam().kind); }
  static int save() { return save_group_list(GetParam().kind); }
  // A table of three groups in memory.
  static void fill() {
    const auto groups = image();
    std::copy(groups.begin(), groups.end(), GetParam().groups);
    *GetParam().count = 3;
  }
  static bytes table_in_memory() { return as_bytes(GetParam().groups, GetParam().table_size()); }
  static void expect_empty_table() {
    EXPECT_EQ(*GetParam().count, 0);
    EXPECT_EQ(table_in_memory(), bytes(GetParam().table_size(), '\0'));
  }
  [[nodiscard]] std::string short_read(std::size_t size) const {
    return std::string("ERROR: load_group_list:# Fail to read the ") + GetParam().name + " to '" + loaded_path() +
           "' size " + std::to_string(size) + " \n";
  }
  [[nodiscard]] std::string failed_write() const {
    return "ERROR: save_group_list:# Fail to write the genre list to '" + saved_path() + "'\n";
  }

 private:
  temp_dir dir_;
};

constexpr auto name_of_table = [](const auto &tested) { return std::string(tested.param.name); };

}  // namespace test_support
