// The new name is one that formats know as a source: a letter, of a satellite with its position.
#include "chlist/exchange/source_names.h"

#include <fmt/format.h>

#include "chlist/command.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/vdr/vdr_fields.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

std::string source_in(std::string_view text) {
  try {
    return read_source(text);
  } catch (const bad_line &bad) {
    throw usage_error("--source: " + bad.reason);
  }
}

}  // namespace

void rename_source(line_up &list, const std::string &option, std::string_view what) {
  const std::size_t sign = option.rfind('=');
  if (sign == std::string::npos) {
    throw usage_error(fmt::format("--source: {} is not NAME=SOURCE", shown(option)));
  }
  const std::string name = option.substr(0, sign);
  const std::string source = source_in(std::string_view(option).substr(sign + 1));
  std::size_t renamed = 0;
  for (line_up_service &service : list.services) {
    if (service.source == name) {
      service.source = source;
      ++renamed;
    }
  }
  if (renamed == 0) {
    throw usage_error(fmt::format("--source: no {} is named {}", what, shown(name)));
  }
  for (line_up_network &each : list.networks) {
    each.name = each.name == name ? source : each.name;
  }
}

}  // namespace chlist
