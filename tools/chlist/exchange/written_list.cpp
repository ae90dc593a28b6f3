// Lines tell which of the services that were written one is that was read.
#include "chlist/exchange/written_list.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_map>

namespace chlist {

std::vector<std::size_t> places_among_written(const line_up &read, const written_list &written) {
  std::set<std::size_t> lines(written.lines.begin(), written.lines.end());
  if (lines.empty()) {
    for (const line_up_service &service : read.services) {
      lines.insert(service.line);
    }
    if (lines.size() < written.services.size()) {
      std::ranges::transform(read.skipped, std::inserter(lines, lines.end()), &skipped_line::line);
    }
  }
  std::unordered_map<std::size_t, std::size_t> places;
  for (const std::size_t line : lines) {
    places.emplace(line, places.size());
  }
  std::vector<std::size_t> made;
  std::ranges::transform(read.services, std::back_inserter(made), [&](const line_up_service &service) {
    const auto found = places.find(service.line);
    return found != places.end() ? found->second : nowhere;
  });
  return made;
}

}  // namespace chlist
