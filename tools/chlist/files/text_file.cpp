// A text file is a replacement with one text in it.
#include "chlist/files/text_file.h"

#include "chlist/files/replacement.h"

namespace chlist {

void write_text_file(const std::filesystem::path &target, std::string_view text) {
  replacement file(target);
  file.write(text);
  file.take_place();
}

}  // namespace chlist
