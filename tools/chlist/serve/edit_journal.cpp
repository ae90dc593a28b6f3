// Appended and brought to the disk step by step; a step that is undone is cut off again. What a crash left of a step
// that was being written is no whole one and is left out.
#include "chlist/serve/edit_journal.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "chlist/exchange/text_lines.h"
#include "chlist/files/fingerprint.h"
#include "chlist/files/input_file.h"
#include "chlist/files/replacement.h"
#include "chlist/line_up/selection.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view of_list = "# Not saved yet, of the list ";
constexpr std::string_view of_other_list = "# Not saved yet, of the list in the file beside it, ";
constexpr std::string_view of_made = "# makes the list ";
constexpr std::string_view of_identity = "# another identity ";
constexpr std::string_view end_of_step = "\n\n";
constexpr std::size_t most_of_name = 100;
constexpr int most_files = 100;

// In front of lines that read files: what they made.
std::string text_of(const edit_step &step) {
  std::string text;
  if (!step.image.empty()) {
    text = fmt::format("{}{}\n", of_made, fingerprint_of(step.image));
  }
  for (const changed_identity &each : step.identities) {
    text += fmt::format("{}{} {}\n", of_identity, identity_text(each.before), identity_text(each.after));
  }
  return text.append(step.lines).append(end_of_step);
}

std::optional<changed_identity> identity_in(std::string_view line) {
  if (!line.starts_with(of_identity)) {
    return std::nullopt;
  }
  line.remove_prefix(of_identity.size());
  const std::size_t blank = std::min(line.find(' '), line.size());
  const auto before = read_identity(line.substr(0, blank));
  const auto after = read_identity(line.substr(std::min(blank + 1, line.size())));
  return before && after ? std::optional(changed_identity{*before, *after}) : std::nullopt;
}

std::string list_of(const fs::path &path, std::string_view fingerprint) {
  std::string image = fs::exists(path) ? read_input_file(path) : "";
  return fingerprint_of(image) == fingerprint ? image : "";
}

void lock(const descriptor &file, const fs::path &path) {
  if (::flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
    return;
  }
  if (errno == EWOULDBLOCK) {
    throw std::runtime_error(path.string() + ": another editor has this list open");
  }
  fail(path.string());
}

// Opened and locked. Another editor may have taken it away in between: what is locked then has no name any more.
std::unique_ptr<descriptor> journal_file(const fs::path &path) {
  for (;;) {
    auto file = std::make_unique<descriptor>(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600), path.string());
    lock(*file, path);
    struct stat found = {};
    if (::fstat(file->get(), &found) != 0) {
      fail(path.string());
    }
    if (found.st_nlink > 0) {
      return file;
    }
  }
}

// A text from its front to its end.
class journal_reader {
 public:
  explicit journal_reader(std::string_view text) : text_(text) {}

  [[nodiscard]] std::size_t at() const { return at_; }

  // What follows these words in the first line, if they are there.
  std::optional<std::string> title(std::string_view words) {
    return text_.starts_with(words) ? take("\n", words.size()) : std::nullopt;
  }
  std::optional<std::string> step() { return take(end_of_step, 0); }

 private:
  std::optional<std::string> take(std::string_view end, std::size_t skipped) {
    const std::size_t found = text_.find(end, at_);
    if (found == std::string_view::npos) {
      return std::nullopt;
    }
    const std::size_t from = at_ + skipped;
    at_ = found + end.size();
    return std::string(text_.substr(from, found - from));
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

edit_journal::edit_journal(const fs::path &list)
    : path_(behind_links(list).string() + ".edits"), file_(journal_file(path_)) {
  const std::string text = read_input_file(path_);
  journal_reader reader(text);
  if (const auto of_image = reader.title(of_other_list)) {
    left_ = {*of_image, read_input_file(path_of_image()), {}};
  } else {
    left_.list = reader.title(of_list).value_or("");
  }
  size_ = reader.at();
  while (const std::optional<std::string> step = reader.step()) {
    starts_.push_back(std::exchange(size_, reader.at()));
    left_.steps.push_back(step_in(*step));
  }
}

edit_journal::~edit_journal() {
  if (is_finished_ || starts_.empty()) {
    std::error_code unseen;
    fs::remove_all(folder(), unseen);
    ::unlink(path_of_image().c_str());
    ::unlink(path_.c_str());
  }
}

fs::path edit_journal::path_of_made(std::string_view fingerprint) const {
  return folder() / fmt::format("{}.list", fingerprint);
}

// A list that is not there as it was written is made anew, by doing the lines again.
edit_step edit_journal::step_in(std::string_view text) const {
  edit_step step;
  text_lines lines(text);
  while (const std::optional<std::string_view> line = lines.next()) {
    if (line->starts_with(of_made)) {
      step.image = list_of(path_of_made(line->substr(of_made.size())), line->substr(of_made.size()));
    } else if (const std::optional<changed_identity> changed = identity_in(*line)) {
      step.identities.push_back(*changed);
    } else {
      step.lines.append(step.lines.empty() ? "" : "\n").append(*line);
    }
  }
  return step;
}

// Names are those of other machines and systems.
fs::path edit_journal::new_file(std::string_view name) const {
  std::string plain = in_one_line(name.substr(0, most_of_name), U'_');
  std::ranges::replace_if(
      plain, [](char each) { return each == '/' || each == '\\'; }, '_');
  fs::path path;
  for (int number = 1; path.empty() || fs::exists(path); ++number) {
    if (number > most_files) {
      throw std::runtime_error(fmt::format("more than {} files of that name", most_files));
    }
    path = folder() / fmt::format("{}-{}", number, plain);
  }
  return path;
}

fs::path edit_journal::take_file(std::string_view name, std::size_t at, std::string_view bytes) {
  std::error_code unseen;
  if (at == 0) {
    fs::create_directory(folder());
    last_file_ = new_file(name);
  } else if (last_file_.empty() || fs::file_size(last_file_, unseen) != at) {
    throw std::runtime_error(fmt::format("{}: a part of it is missing", name));
  }
  if (at + bytes.size() > largest_input) {
    fs::remove(std::exchange(last_file_, {}), unseen);
    throw std::runtime_error(fmt::format("{}: has more than {} MiB", name, largest_input >> 20U));
  }
  std::ofstream to(last_file_, std::ios::binary | std::ios::app);
  if (!to.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
    fail(last_file_.string());
  }
  return last_file_;
}

void edit_journal::take_up() {
  cut_to(size_);
  left_ = {};
}

void edit_journal::start(std::string_view image) {
  begin(of_list, image);
  ::unlink(path_of_image().c_str());
}

void edit_journal::start_from(std::string_view image) {
  write_text_file(path_of_image(), image);
  begin(of_other_list, image);
}

void edit_journal::begin(std::string_view title, std::string_view image) {
  cut_to(0);
  left_ = {};
  starts_.clear();
  write_at_end(fmt::format("{}{}\n", title, fingerprint_of(image)));
}

void edit_journal::add(const edit_step &step) {
  if (!step.image.empty()) {
    fs::create_directory(folder());
    write_text_file(path_of_made(fingerprint_of(step.image)), step.image);
  }
  const std::string text = text_of(step);
  const std::size_t before = size_;
  write_at_end(text);
  starts_.push_back(before);
}

void edit_journal::take_back() {
  cut_to(starts_.back());
  starts_.pop_back();
}

// What is not written whole, or does not reach the disk, is cut off again: a step that was refused must not come back.
void edit_journal::write_at_end(std::string_view text) {
  const std::size_t before = size_;
  try {
    write_behind(text);
  } catch (const std::system_error &) {
    cut_to(before);
    throw;
  }
}

void edit_journal::write_behind(std::string_view text) {
  for (const std::size_t end = size_ + text.size(); size_ < end;) {
    const std::string_view rest = text.substr(text.size() - (end - size_));
    const ssize_t written = ::pwrite(file_->get(), rest.data(), rest.size(), static_cast<off_t>(size_));
    if (written < 0 && errno != EINTR) {
      fail(path_.string());
    }
    size_ += written > 0 ? static_cast<std::size_t>(written) : 0;
  }
  if (::fdatasync(file_->get()) != 0) {
    fail(path_.string());
  }
}

// The file is cut then, whether that reaches the disk at once or not.
void edit_journal::cut_to(std::size_t size) {
  if (::ftruncate(file_->get(), static_cast<off_t>(size)) != 0) {
    fail(path_.string());
  }
  size_ = size;
  ::fdatasync(file_->get());
}

}  // namespace chlist
