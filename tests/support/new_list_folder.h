// The fixed place of a new channel list, made a test's own, and tests of the merge that happens there.
#pragma once

#include <filesystem>

#include "channel_file.h"

namespace test_support {

inline const std::filesystem::path new_list_folder = "/DATA/BACKUP";
inline const std::filesystem::path new_list = new_list_folder / "all_channel.dat";

// The folder of new lists is the test's own as long as this lives: it lies in a mount of this process alone where the
// system grants one; otherwise it is created and restored, which takes root.
class own_new_list_folder {
 public:
  own_new_list_folder();
  ~own_new_list_folder();
  own_new_list_folder(const own_new_list_folder &) = delete;
  own_new_list_folder &operator=(const own_new_list_folder &) = delete;

  [[nodiscard]] bool is_ours() const { return is_ours_; }

 private:
  bool had_data_ = false;
  bool had_folder_ = false;
  bool is_mounted_ = false;
  bool was_set_aside_ = false;
  bool is_ours_ = false;
};

// A test is skipped where the folder cannot be had; a fixture with more to set up asks IsSkipped() first.
class new_list_test : public file_test {
 protected:
  void SetUp() override;

  // Places a new list and merges it.
  static int merge(const channel_file &file);

 private:
  own_new_list_folder place_;
};

}  // namespace test_support
