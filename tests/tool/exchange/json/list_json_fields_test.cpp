// The records' fields as JSON has them, beside the table of fields that everything else is read from.
#include "chlist/exchange/json/list_json_fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string_view>

#include "chlist/fields/service_fields.h"

namespace {

using chlist::field;
using chlist::field_owner;

// A record's fields keep the record's names; two of them are known by other ones.
std::string_view name_in_record(std::string_view name) {
  static const std::map<std::string_view, std::string_view> others = {{"flags", "flag"},
                                                                      {"order_key", "user_order_key"}};
  const auto other = others.find(name);
  return other == others.end() ? name : other->second;
}

// Words of a single bit and names of a number stand for fields that have a row of their own.
bool is_of_record(const field &each) {
  return each.is_number() && (each.owner == field_owner::service || each.owner == field_owner::identity);
}

TEST(ListJsonFields, EachNumberOfAServiceHasTheNameThatListingsHave) {
  const auto keys = chlist::fields_of_service();
  for (const field &each : chlist::service_fields()) {
    if (is_of_record(each)) {
      EXPECT_NE(std::ranges::find(keys, name_in_record(each.name), &chlist::json_field::name), keys.end()) << each.name;
    }
  }
}

TEST(ListJsonFields, ANumberThatIsLeftOutIsWhatListingsCallNone) {
  for (const field &each : chlist::service_fields()) {
    const auto keys = chlist::fields_of_service();
    const auto key = std::ranges::find(keys, name_in_record(each.name), &chlist::json_field::name);
    if (is_of_record(each) && key != keys.end() && !key->is_needed) {
      EXPECT_EQ(key->absent, each.values.unset.value_or(0)) << each.name;
    }
  }
}

}  // namespace
