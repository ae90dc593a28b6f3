// A history is replaced as a whole like any file, before the file itself is: when the program ends in between, the file
// is in the state before the last. It is one line that says what it is, one of JSON that tells of the states, and the
// bytes of the states' files behind them. The last state is whole, each other one a delta from the next.
#include "chlist/files/history.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <stdexcept>
#include <utility>
#include <variant>

#include "chlist/files/byte_delta.h"
#include "chlist/files/companion.h"
#include "chlist/files/file_bytes.h"
#include "chlist/files/fingerprint.h"
#include "chlist/files/list_file.h"
#include "chlist/files/replacement.h"
#include "chlist/json/json.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view first_line = "chlist history 1\n";
constexpr std::size_t most_kept_lines = 100;

// What stands beside a list and is written with it.
constexpr const char *names_of_files[] = {"", companion_ending};

fs::path real_path(const fs::path &file) { return fs::weakly_canonical(fs::absolute(file)); }

std::string text_of_file(const fs::path &path) {
  const std::vector<std::byte> bytes = bytes_of_file(path);
  return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

std::string utc_text(std::time_t seconds) {
  std::tm utc = {};
  gmtime_r(&seconds, &utc);
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday,
                     utc.tm_hour, utc.tm_min, utc.tm_sec);
}

// No later than SOURCE_DATE_EPOCH where that is set, so that the same edits make the same bytes.
std::string text_of_time(std::int64_t seconds) {
  if (const char *set = std::getenv("SOURCE_DATE_EPOCH")) {
    const std::string_view text = set;
    std::int64_t latest = seconds;
    std::from_chars(text.data(), text.data() + text.size(), latest);
    seconds = std::min(seconds, latest);
  }
  return utc_text(seconds);
}

struct stat look_at_file(const fs::path &file) {
  struct stat found = {};
  if (::stat(file.c_str(), &found) != 0) {
    fail(file.string());
  }
  return found;
}

constexpr std::string_view before_more = "# and ";

std::vector<std::string> first_lines(std::vector<std::string> lines) {
  if (lines.size() > most_kept_lines) {
    const std::size_t more = lines.size() - most_kept_lines;
    lines.resize(most_kept_lines);
    lines.push_back(fmt::format("{}{} more", before_more, more));
  }
  return lines;
}

// How many lines the last one says are left out; 0 when all are kept.
std::size_t lines_left_out(const std::vector<std::string> &lines) {
  if (lines.size() <= most_kept_lines || !lines.back().starts_with(before_more)) {
    return 0;
  }
  const std::string_view count = std::string_view(lines.back()).substr(before_more.size());
  std::size_t more = 0;
  std::from_chars(count.data(), count.data() + count.size(), more);
  return more;
}

std::size_t count_in(const json &object, std::string_view key) {
  const std::int64_t value = object[key].as_integer();
  return value >= 0 ? static_cast<std::size_t>(value) : throw std::out_of_range("a count is negative");
}

std::vector<std::string> texts_in(const json &array) {
  std::vector<std::string> texts;
  for (const json &each : array.elements()) {
    texts.push_back(each.as_string());
  }
  return texts;
}

}  // namespace

fs::path history_of(const fs::path &file) { return real_path(file).string() + ".history"; }

std::string time_now() {
  return text_of_time(
      std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()).count());
}

file_contents contents_on_disk(const fs::path &file) {
  file_contents contents;
  for (const std::string name : names_of_files) {
    const fs::path path = real_path(file).string() + name;
    if (fs::exists(path)) {
      contents.emplace(name, text_of_file(path));
    }
  }
  return contents;
}

void write_contents(const fs::path &file, const file_contents &contents) {
  const auto beside = contents.find(companion_ending);
  write_both_files(real_path(file), contents.at(""), beside != contents.end() ? beside->second : std::string());
}

std::size_t history::state::lines() const {
  const std::size_t left_out = lines_left_out(what);
  return left_out == 0 ? what.size() : most_kept_lines + left_out;
}

history::history(const fs::path &file, const history_bounds &bounds) : file_(real_path(file)), bounds_(bounds) {
  if (!fs::exists(history_of(file_))) {
    return;
  }
  try {
    read(text_of_file(history_of(file_)));
  } catch (const std::bad_variant_access &) {
    refuse();
  } catch (const std::out_of_range &) {
    refuse();
  } catch (const json_error &) {
    refuse();
  }
}

void history::refuse() const {
  throw std::runtime_error(history_of(file_).string() +
                           ": is damaged, or no history of a channel file; it is left as it is");
}

void history::read(std::string_view text) {
  const std::size_t end_of_line = text.find('\n', first_line.size());
  if (!text.starts_with(first_line) || end_of_line == std::string_view::npos) {
    refuse();
  }
  const json about = json::parse(text.substr(first_line.size(), end_of_line - first_line.size()));
  text.remove_prefix(end_of_line + 1);
  if (about["sum"].as_string() != fingerprint_of(text)) {
    refuse();
  }
  for (const json &each : about["states"].elements()) {
    kept_state &made = states_.emplace_back();
    made.about = {static_cast<int>(count_in(each, "number")), each["when"].as_string(), texts_in(each["what"])};
    for (const json &file : each["files"].elements()) {
      const std::size_t length = count_in(file, "length");
      if (length > text.size()) {
        refuse();
      }
      made.files[file["name"].as_string()] = {std::string(text.substr(0, length)), file["is_whole"].as_bool(),
                                              count_in(file, "size"), file["sum"].as_string()};
      text.remove_prefix(length);
    }
  }
  place_ = count_in(about, "place");
  if (place_ >= states_.size()) {
    refuse();
  }
}

void history::write() const {
  json states = json::array();
  std::string contents;
  for (const kept_state &each : states_) {
    json files = json::array();
    for (const auto &[name, file] : each.files) {
      files.push_back({{"name", name},
                       {"is_whole", file.is_whole},
                       {"size", file.size},
                       {"sum", file.sum},
                       {"length", file.bytes.size()}});
      contents += file.bytes;
    }
    states.push_back({{"number", each.about.number},
                      {"when", each.about.when},
                      {"what", each.about.what},
                      {"files", std::move(files)}});
  }
  const json about = {{"place", place_}, {"sum", fingerprint_of(contents)}, {"states", std::move(states)}};
  replacement file(history_of(file_));
  file.take_after(look_at_file(file_));
  file.write(first_line);
  file.write(about.dump() + '\n');
  file.write(contents);
  file.take_place();
}

bool history::is_in(std::size_t index, const file_contents &now) const {
  const auto &files = states_[index].files;
  return files.size() == now.size() && std::ranges::all_of(files, [&now](const auto &kept) {
           const auto found = now.find(kept.first);
           return found != now.end() && found->second.size() == kept.second.size &&
                  fingerprint_of(found->second) == kept.second.sum;
         });
}

// The nearest one to where it was: an edit and its opposite make the same file twice.
bool history::find_place(const file_contents &now) {
  for (std::size_t distance = 0; distance < states_.size(); ++distance) {
    for (const std::size_t index : {place_ - distance, place_ + distance}) {
      if (index < states_.size() && is_in(index, now)) {
        place_ = index;
        return true;
      }
    }
  }
  append(now, text_of_time(look_at_file(file_).st_mtime), {});
  return false;
}

history::kept_state history::whole(state about, const file_contents &contents) {
  kept_state made = {std::move(about), {}};
  for (const auto &[name, content] : contents) {
    made.files[name] = {content, true, content.size(), fingerprint_of(content)};
  }
  return made;
}

history::kept_file history::delta_from(const file_contents &next, const std::string &name, const std::string &bytes) {
  const auto found = next.find(name);
  std::string delta = found != next.end() ? delta_between(found->second, bytes) : bytes;
  const bool is_whole = found == next.end() || delta.size() >= bytes.size();
  return {is_whole ? bytes : std::move(delta), is_whole, bytes.size(), fingerprint_of(bytes)};
}

void history::append(const file_contents &contents, std::string when, std::vector<std::string> what) {
  int number = 1;
  if (!states_.empty()) {
    const file_contents former = contents_of(place_);
    states_.resize(place_ + 1);
    kept_state &last = states_.back();
    for (const auto &[name, content] : former) {
      last.files[name] = delta_from(contents, name, content);
    }
    number = last.about.number + 1;
  }
  states_.push_back(whole({number, std::move(when), first_lines(std::move(what))}, contents));
  place_ = states_.size() - 1;
  keep_bounds();
}

void history::keep_bounds() {
  while (states_.size() > bounds_.states || (states_.size() > 1 && bytes() > bounds_.bytes)) {
    states_.erase(states_.begin());
    --place_;
  }
}

std::size_t history::bytes() const {
  std::size_t count = 0;
  for (const kept_state &each : states_) {
    for (const auto &[name, file] : each.files) {
      count += file.bytes.size();
    }
  }
  return count;
}

file_contents history::contents_of(std::size_t index) const {
  file_contents next;
  for (std::size_t i = states_.size(); i-- > index;) {
    file_contents made;
    for (const auto &[name, file] : states_[i].files) {
      std::optional<std::string> content = file.bytes;
      if (!file.is_whole) {
        content = file.size <= bounds_.bytes ? apply_delta(next[name], file.bytes, file.size) : std::nullopt;
      }
      if (!content || content->size() != file.size || fingerprint_of(*content) != file.sum) {
        refuse();
      }
      made[name] = std::move(*content);
    }
    next = std::move(made);
  }
  return next;
}

void keep_history(const fs::path &file, const file_contents &next, const std::vector<std::string> &what) {
  if (!fs::exists(file)) {
    return;
  }
  history kept(file);
  const file_contents now = contents_on_disk(file);
  if (now == next) {
    return;
  }
  kept.find_place(now);
  kept.append(next, time_now(), what);
  kept.write();
}

}  // namespace chlist
