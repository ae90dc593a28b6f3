// What a list was after each step: some states as images, the others by doing the steps between them again.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace chlist {

class list_states {
 public:
  struct state {
    std::size_t step = 0;
    std::string image;
  };

  explicit list_states(std::string first) : kept_{{0, std::move(first)}} {}

  // Keeps one now and then. When there are many, every second goes: a list is a few megabytes, and steps are cheap.
  void keep(std::size_t step, const std::string &image);
  // Those behind a step are no longer true.
  void forget_behind(std::size_t step);
  // The nearest at a step or in front of it.
  [[nodiscard]] const state &nearest(std::size_t step) const;

 private:
  std::vector<state> kept_;
  std::size_t distance_ = 8;
};

}  // namespace chlist
