// Which services of a list an import takes: those that are asked for, and of these the ones that a list has room for.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

struct service_options {
  std::vector<std::string> where;    // conditions: all of them
  std::vector<std::string> only;     // sources, providers and types by name: one of those that are named of each
  std::vector<std::string> without;  // none of them
};

// Leaves out the services that are not asked for, and their places in groups. Returns how many. Throws usage_error, or
// as where, for what names nothing.
std::size_t choose_services(line_up &list, const service_options &options);

// Which services come first when there is no room for all.
enum class preference { favourites, numbered, free };
inline constexpr std::size_t preferences = 3;
using preference_order = std::array<preference, preferences>;
inline constexpr preference_order usual_preferences = {preference::favourites, preference::numbered, preference::free};

// "free,numbered": what is not named follows in the usual order. Throws usage_error.
preference_order preferences_named(const std::string &names);
std::string text_of(const preference_order &order);

// The places of all services, the first to be taken in front; as the list has them when nothing tells them apart.
std::vector<std::size_t> preferred_first(const line_up &list, const preference_order &order);

// Whether each service has its place among those that ALL has room for. Services that are there twice take one place.
std::vector<bool> that_fit(const line_up &list, const std::vector<std::size_t> &preferred);

}  // namespace chlist
