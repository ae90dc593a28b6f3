// Changes inputs as sequences of steps: repeats, removes, moves and swaps whole ones, changes the bytes of one without
// moving the others, and ends a file inside its header. Every other change is left to the fuzzer itself.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <span>
#include <vector>

#include "file_script.h"
#include "harness.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t max_size);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t max_size,
                                               unsigned int seed);

namespace {

using bytes = std::vector<std::uint8_t>;
using random_numbers = std::minstd_rand;

// The start of any step behind the options; of the one behind the last when `size` allows no other.
std::size_t any_step(const bytes &input, random_numbers &random) {
  const std::size_t steps = input.size() / fuzz::step_size;
  return steps < 2 ? input.size() / fuzz::step_size * fuzz::step_size : (1 + random() % (steps - 1)) * fuzz::step_size;
}

bytes step_at(const bytes &input, std::size_t at) {
  bytes step(fuzz::step_size);
  std::copy_n(input.begin() + static_cast<std::ptrdiff_t>(at), std::min(fuzz::step_size, input.size() - at),
              step.begin());
  return step;
}

void insert_step(bytes &input, std::size_t at, const bytes &step) {
  input.insert(input.begin() + static_cast<std::ptrdiff_t>(at), step.begin(), step.end());
}

void remove_step(bytes &input, std::size_t at) {
  const auto first = input.begin() + static_cast<std::ptrdiff_t>(at);
  input.erase(first, first + static_cast<std::ptrdiff_t>(std::min(fuzz::step_size, input.size() - at)));
}

void repeat_step(bytes &input, random_numbers &random) {
  const bytes step = step_at(input, any_step(input, random));
  insert_step(input, any_step(input, random), step);
}

void drop_step(bytes &input, random_numbers &random) { remove_step(input, any_step(input, random)); }

void move_step(bytes &input, random_numbers &random) {
  const std::size_t from = any_step(input, random);
  const bytes step = step_at(input, from);
  remove_step(input, from);
  insert_step(input, any_step(input, random), step);
}

void new_step(bytes &input, random_numbers &random) {
  bytes step(fuzz::step_size);
  std::ranges::generate(step, [&random] { return static_cast<std::uint8_t>(random() >> 8); });
  insert_step(input, any_step(input, random), step);
}

// A file that ends inside its header, most often near its end, where the lists stand. Sequences of calls take the step
// as any other.
void cut_header(bytes &input, random_numbers &random) {
  const std::size_t missing = random() % 4 == 0 ? random() % test_support::list_size : random() % 700;
  bytes step(fuzz::step_size);
  step[0] = static_cast<std::uint8_t>(fuzz::file_step::cut);
  for (std::size_t i = 0; i < 3; ++i) {
    step[1 + i] = static_cast<std::uint8_t>(missing >> 8 * i);
  }
  step[4] = 1;
  insert_step(input, any_step(input, random), step);
}

void change_step(bytes &input, random_numbers &random) {
  const std::size_t at = any_step(input, random);
  bytes step = step_at(input, at);
  LLVMFuzzerMutate(step.data(), step.size(), step.size());
  std::copy_n(step.begin(), std::min(fuzz::step_size, input.size() - at),
              input.begin() + static_cast<std::ptrdiff_t>(at));
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t max_size,
                                               unsigned int seed) {
  random_numbers random(seed);
  constexpr std::array changes = {change_step, change_step, change_step, repeat_step,
                                  drop_step,   move_step,   new_step,    cut_header};
  const std::size_t chosen = random() % (changes.size() + 3);
  if (chosen >= changes.size() || size <= fuzz::step_size) {
    return LLVMFuzzerMutate(data, size, max_size);
  }
  bytes input(data, data + size);
  changes[chosen](input, random);
  input.resize(std::min(input.size(), max_size));
  std::ranges::copy(input, data);
  return input.size();
}
