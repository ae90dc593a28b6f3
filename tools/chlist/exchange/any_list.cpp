// Numbers, views and network indexes come about in one place, the list builder: whatever is no channel file goes
// through it.
#include "chlist/exchange/any_list.h"

#include <channel/store.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <string_view>

#include "chlist/exchange/beside.h"
#include "chlist/exchange/formats.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/list_source.h"
#include "chlist/files/file_line_up.h"
#include "chlist/files/input_file.h"
#include "chlist/files/kept_in_step.h"
#include "chlist/files/standard_streams.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

channel_file file_of(const fs::path &path, std::string_view text) {
  const byte_span bytes = std::as_bytes(std::span(text));
  return {path, std::vector<std::byte>(bytes.begin(), bytes.end())};
}

any_list filled(const list_source &source, const format &from) {
  loss_counts lost;
  const line_up read = reading(source, [&] { return from.read(source, lost); });
  const filled_list made = fill_list(read, lost);
  any_list result = {line_up_in_memory(), made.left_out};
  put_back(result.list, companion_of_services(read.services, made.filed, result.list));
  reset_channel_list();
  if (!made.skipped.empty()) {
    result.notes.push_back(counted(made.skipped.size(), "line") + " skipped");
  }
  return result;
}

any_list with_companion(const fs::path &path) {
  any_list result = {line_up_in(channel_file(path)), {}};
  try {
    const companion kept = companion_beside(path).value_or(companion());
    put_back(result.list, kept);
    if (kept.is_out_of_step) {
      result.notes.push_back(note_out_of_step(path));
    }
  } catch (const bad_companion &error) {
    result.notes.emplace_back(error.what());
  }
  return result;
}

any_list list_of_format(const list_source &source) {
  const format &from = format_to_read({}, source);
  if (from.to_channel_file != nullptr) {
    return {line_up_in(file_of(source.path, reading(source, [&] { return from.to_channel_file(source.text); }))), {}};
  }
  return filled(source, from);
}

any_list list_at(const fs::path &path) {
  std::error_code unseen;
  if (!is_standard_stream(path) && fs::is_regular_file(path, unseen) && is_channel_file(read_beginning(path, 2))) {
    return with_companion(path);
  }
  return list_of_format(source_at(path));
}

}  // namespace

any_list read_any_list(const fs::path &path) {
  any_list read = list_at(path);
  if (read.list.services.empty()) {
    throw std::runtime_error(path.string() + ": there is no service in it");
  }
  for (std::string &note : read.notes) {
    if (!note.starts_with(path.string())) {
      note.insert(0, path.string() + ": ");
    }
  }
  return read;
}

}  // namespace chlist
