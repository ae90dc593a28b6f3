// Which columns are compared.
#include "chlist/see/compared_columns.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace chlist {
namespace {

constexpr std::string_view not_compared[] = {"position",      "number",     "minor",        "tag",
                                             "favourite_key", "favourites", "network_name", "service_type"};

struct named_by_id {
  std::string_view name;
  std::string_view id;
};

constexpr named_by_id names_by_id[] = {{"provider", "provider_id"}, {"genre", "genre_id"}, {"country", "country_id"}};

}  // namespace

std::span<const column *const> compared_columns() {
  static const std::vector<const column *> compared = [] {
    std::vector<const column *> chosen;
    for (const column &each : all_columns()) {
      if (std::ranges::find(not_compared, each.name) == std::end(not_compared)) {
        chosen.push_back(&each);
      }
    }
    return chosen;
  }();
  return compared;
}

std::string_view id_behind(std::string_view column_name) {
  const auto *const found = std::ranges::find(names_by_id, column_name, &named_by_id::name);
  return found != std::end(names_by_id) ? found->id : std::string_view{};
}

}  // namespace chlist
