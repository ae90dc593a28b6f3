// A reference as bouquets have it, with '_' for ':'.
#include "chlist/exchange/enigma2/picons.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "chlist/exchange/csv/csv.h"
#include "chlist/exchange/enigma2/lamedb.h"

namespace chlist {
namespace {

std::string picon_name(const service_reference &reference, std::uint8_t service_type) {
  std::string name = bouquet_line(reference, service_type);
  name.pop_back();
  std::ranges::replace(name, ':', '_');
  return name + ".png";
}

}  // namespace

made_file picons_of(std::string_view lamedb) {
  loss_counts unsaid;
  const lamedb_services read = parse_lamedb(lamedb, unsaid);
  std::vector<const service_reference *> references(read.list.services.size());
  for (const auto &[reference, place] : read.places) {
    references[place] = &reference;
  }
  std::string text = csv_line({"picon", "name"});
  for (std::size_t place = 0; place < references.size(); ++place) {
    const line_up_service &service = read.list.services[place];
    if (references[place] != nullptr) {
      text += csv_line({picon_name(*references[place], service.fields.service_type), service.name});
    }
  }
  return {std::string(name_of_picons), std::move(text)};
}

}  // namespace chlist
