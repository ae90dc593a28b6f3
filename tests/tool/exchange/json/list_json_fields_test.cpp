// The records' fields as JSON has them, beside the table of fields that everything else is read from.
#include "chlist/exchange/json/list_json_fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>
#include <vector>

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

std::vector<field> fields_of_record() {
  std::vector<field> fields;
  std::ranges::copy_if(chlist::service_fields(), std::back_inserter(fields), is_of_record);
  return fields;
}

TEST(ListJsonFields, EachNumberOfAServiceHasTheNameThatListingsHave) {
  const auto keys = chlist::fields_of_service();
  ASSERT_FALSE(fields_of_record().empty());
  for (const field &each : fields_of_record()) {
    EXPECT_NE(std::ranges::find(keys, name_in_record(each.name), &chlist::json_field::name), keys.end()) << each.name;
  }
}

TEST(ListJsonFields, ANumberThatIsLeftOutIsWhatListingsCallNone) {
  const auto keys = chlist::fields_of_service();
  std::size_t left_out = 0;
  for (const field &each : fields_of_record()) {
    const auto key = std::ranges::find(keys, name_in_record(each.name), &chlist::json_field::name);
    if (key != keys.end() && !key->is_needed) {
      EXPECT_EQ(key->absent, each.values.unset.value_or(0)) << each.name;
      ++left_out;
    }
  }
  EXPECT_GT(left_out, 0U);
}

}  // namespace
