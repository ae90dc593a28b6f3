// The files of the page, as they stood beside this one when the program was built.
#pragma once

#include <string_view>

namespace chlist {

std::string_view page_html();
std::string_view page_css();
std::string_view page_js();

}  // namespace chlist
