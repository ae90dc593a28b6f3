// A report of many findings shows ten of each kind, unless all are asked for.
#pragma once

#include <cstddef>
#include <map>
#include <string>

namespace chlist {

class first_of_a_kind {
 public:
  explicit first_of_a_kind(bool takes_all) : takes_all_(takes_all) {}

  // Whether one more of a kind is to be shown.
  bool takes(const std::string &kind) { return ++counts_[kind] <= most || takes_all_; }

  // How many of which kinds were not.
  [[nodiscard]] std::map<std::string, std::size_t> left_out() const {
    std::map<std::string, std::size_t> left;
    for (const auto &[kind, count] : counts_) {
      if (count > most && !takes_all_) {
        left[kind] = count - most;
      }
    }
    return left;
  }

 private:
  static constexpr std::size_t most = 10;

  bool takes_all_;
  std::map<std::string, std::size_t> counts_;
};

}  // namespace chlist
