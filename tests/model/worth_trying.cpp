#include "worth_trying.h"

namespace model_tests {

const std::map<argument, numbers> &worth_trying() {
  static const std::map<argument, numbers> values = {
      {argument::net_index, {1, 1, 1, 1, 1, 1, 2}},
      {argument::network_id, {1, 1, 1, 1, 1, 1, 1, 1, 1, 2}},
      {argument::ts_id, {100, 100, 100, 100, 100, 100, 101}},
      {argument::frequency,
       {11'000'000, 11'000'000, 11'000'000, 11'000'000, 11'000'000, 11'000'000, 11'000'000, 11'002'499, 11'002'500, 0}},
      {argument::service_id, {1, 2, 3, 4, 5, 6}},
      {argument::polarisation, {0, 0, 0, 0, 0, 0, 1}},
      {argument::tag, {0, 0, 0, 0, 0, 0, 0, 0, -1, 3}},
      {argument::service_type, {1, 1, 2, 25}},
      {argument::view, {0, 0, 1, 1, 2, 3, 3, 4, 5, 10, 10, 11, 12, 29, 6, -1, 30}},
      {argument::plain_view, {0, 0, 0, 1, 1, 2, 3, 4, 5}},
      {argument::position, {0, 0, 1, 1, 2, 3, 4, 5, 7, 9, 38, 39, 40, 41, -1}},
      {argument::number, {1, 2, 3, 4, 256, 0, -1}},
      {argument::bits, {0x02, 0x04, 0x06, 0x08, 0x20, 0x40}},
      {argument::truth, {0, 1}},
      {argument::name, {0, 1, 2, 3, 4, 5, 6, 7, 8}},
      {argument::name_slot, {0, 0, 1, 2}},
      {argument::length, {3, 2, 8, 1, 0, -1}},
      {argument::key, {0, 1, 2, -1}},
      {argument::group_kind, {1, 2, 3, 3, 4, 5, 6, 0}},
      {argument::group_id, {0, 1, 2, 3, -2, 300}},
      {argument::favourite_id, {0, 0, 0, 1, 2, 3, -1}},
      {argument::favourite_index, {0, 0, 1, 2, 3, 19, 20, -1}},
      {argument::sort_type, {2, 3, 6, 8, 10, 11, 4, 7, 0}},
      {argument::flag_sort_type, {4, 4, 4, 5, 5, 5, 6}},
  };
  return values;
}

}  // namespace model_tests
