#include "chlist/files/file_line_up.h"

#include <fmt/format.h>

#include "chlist/line_up/list_contents.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/text/shown.h"

namespace chlist {

void must_be_whole(const channel_file &input, const file_records &records) {
  if (!records.is_whole()) {
    input.refuse_as_short();
  }
}

line_up line_up_in(const channel_file &input) {
  input.must_be_current();
  const file_records records(input.bytes());
  must_be_whole(input, records);
  return line_up_of(records.list());
}

std::vector<std::string> not_saved_again(const file_records &records) {
  std::vector<std::string> notes = cut_counts(records.list());
  if (const std::size_t behind = records.file().size() - records.end(); behind > 0) {
    notes.push_back(fmt::format("{} behind the last record: not saved", counted(behind, "byte")));
  }
  return notes;
}

}  // namespace chlist
