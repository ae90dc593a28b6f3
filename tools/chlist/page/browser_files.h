// What browsers get, as it stood in the tool's folders when the program was built.
#pragma once

#include <span>
#include <string_view>

namespace chlist {

struct browser_file {
  std::string_view name;  // "page.css"
  std::string_view contents;
};

// In the order in which a browser reads them.
std::span<const browser_file> report_files();
std::span<const browser_file> editor_files();

}  // namespace chlist
