// Every step is done on the list in memory, then written to the journal, then told. What fails on the way puts the list
// back as it was.
#include "chlist/serve/list_session.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <stdexcept>
#include <utility>

#include "chlist/edit/edit_line.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/files/backup.h"
#include "chlist/files/faithful_load.h"
#include "chlist/files/fingerprint.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/places.h"
#include "chlist/messages.h"

namespace chlist {
namespace {

constexpr std::string_view source_of_lines = "edit";

// Comments are left out, and empty lines, which would end a step of the journal.
std::string lines_of(std::string_view text) {
  std::string step;
  text_lines lines(text);
  while (const std::optional<std::string_view> line = lines.next()) {
    if (!words_of_edit(*line).empty()) {
      step.append(step.empty() ? "" : "\n").append(*line);
    }
  }
  return step;
}

// The number of a line is told when there are several.
std::string without_source(const std::string &message, const std::string &step) {
  const std::string only_line = fmt::format("{}:1: ", source_of_lines);
  const bool is_only = step.find('\n') == std::string::npos;
  return is_only && message.starts_with(only_line) ? message.substr(only_line.size()) : message;
}

// A folder may be named with a slash behind it.
std::filesystem::path named_path(const std::filesystem::path &file) {
  const std::filesystem::path path = std::filesystem::absolute(file).lexically_normal();
  return path.has_filename() ? path : path.parent_path();
}

std::vector<read_edit> edits_of(const std::string &lines) { return edits_in(lines, std::string(source_of_lines)); }

edit_step step_of(const std::string &lines, const step_outcome &outcome, std::string made) {
  return outcome.reads_files ? edit_step{lines, std::move(made), outcome.identities} : edit_step{lines, {}, {}};
}

void apply_all(const std::vector<read_edit> &edits, edited_list &list) {
  for (const read_edit &edit : edits) {
    try {
      edit.apply(list);
    } catch (const std::runtime_error &error) {
      throw std::runtime_error(fmt::format("{}:{}: {}", source_of_lines, edit.line, reason_of(error)));
    }
  }
}

}  // namespace

list_session::list_session(const std::filesystem::path &file)
    : path_(named_path(file)), file_(open_to_edit(path_)), journal_(path_) {
  file_was_read();
  begin_at(saved_image_);
  if (left() == nullptr) {
    journal_.start(image_);
  }
}

list_session::~list_session() {
  if (left() == nullptr && is_saved()) {
    journal_.finish();
  }
}

const unfinished_edits *list_session::left() const {
  return journal_.left().steps.empty() ? nullptr : &journal_.left();
}

bool list_session::is_left_of_this_list() const {
  return !journal_.left().image.empty() || journal_.left().list == fingerprint_of(saved_image_);
}

void list_session::must_be_answered() const {
  if (left() != nullptr) {
    throw std::runtime_error("there are edits of the last time that were not saved: take them or drop them first");
  }
}

// The journal is not touched unless something of it can no longer be done.
std::vector<std::string> list_session::take_left() {
  const unfinished_edits unfinished = journal_.left();
  if (!unfinished.image.empty()) {
    load_image(unfinished.image);
    begin_at(unfinished.image);
    is_journal_of_file_ = false;
  }
  const bool is_same_list = is_left_of_this_list();
  std::vector<std::string> failures = do_as_many(unfinished.steps, is_same_list);
  if (failures.empty()) {
    journal_.take_up();
    return failures;
  }
  if (is_journal_of_file_) {
    journal_.start(saved_image_);
  } else {
    journal_.start_from(unfinished.image);
  }
  std::ranges::for_each(steps_, [this](const edit_step &step) { journal_.add(step); });
  return failures;
}

void list_session::drop_left() { journal_.start(saved_image_); }

// Reading another list may take the one in memory.
step_outcome list_session::do_lines(const std::string &lines) {
  edited_list edited;
  bool reads_files = false;
  try {
    const std::vector<read_edit> edits = edits_of(lines);
    reads_files = std::ranges::any_of(edits, &read_edit::reads_files);
    if (reads_files) {
      load_image(image_);
    }
    apply_all(edits, edited);
  } catch (const std::runtime_error &error) {
    load_image(image_);
    throw std::runtime_error(without_source(reason_of(error), lines));
  }
  step_outcome outcome = {edited.notes, {}, edited.chosen(), {}, edited.identities(), reads_files};
  std::ranges::transform(edited.tables, std::back_inserter(outcome.tables), &edit_table::text);
  return outcome;
}

step_outcome list_session::apply(std::string_view lines) {
  must_be_answered();
  const std::string text = lines_of(lines);
  step_outcome outcome = do_lines(text);
  std::string made = image_of(*get_channel_list());
  if (made == image_) {
    return outcome;
  }
  const edit_step step = step_of(text, outcome, std::move(made));
  try {
    add_to_journal(step);
  } catch (const std::exception &) {
    load_image(image_);
    throw;
  }
  add_step(step, outcome.identities);
  return outcome;
}

void list_session::add_step(const edit_step &step, const std::vector<changed_identity> &identities) {
  steps_.resize(done_);
  identities_.resize(done_);
  states_.forget_behind(done_);
  steps_.push_back(step);
  identities_.push_back(identities);
  ++done_;
  list_changed();
}

step_outcome list_session::preview(std::string_view lines) {
  must_be_answered();
  step_outcome outcome = do_lines(lines_of(lines));
  outcome.changes = differences(list_, line_up_in_memory());
  load_image(image_);
  return outcome;
}

void list_session::undo() {
  must_be_answered();
  if (!can_undo()) {
    throw std::runtime_error("there is nothing to undo");
  }
  if (done_ == journal_begin_ || !is_journal_whole()) {
    begin_journal_in_front_of(done_);
  }
  journal_.take_back();
  --done_;
  go_to(done_);
}

void list_session::redo() {
  must_be_answered();
  if (!can_redo()) {
    throw std::runtime_error("there is nothing to redo");
  }
  add_to_journal(steps_[done_]);
  ++done_;
  go_to(done_);
}

// What was saved is undone: the journal goes on from a list that is in no file.
void list_session::begin_journal_in_front_of(std::size_t step) {
  const list_states::state from = state_in_front_of(step - 1);
  journal_.start_from(from.image);
  is_journal_of_file_ = false;
  journal_begin_ = from.step;
  for (std::size_t i = journal_begin_; i < step; ++i) {
    journal_.add(steps_[i]);
  }
}

// A journal that could not be written when it was to begin anew has other steps than those since then.
bool list_session::is_journal_whole() const { return journal_.steps() == done_ - journal_begin_; }

void list_session::add_to_journal(const edit_step &step) {
  if (!is_journal_whole() && done_ == journal_begin_) {
    journal_.start(saved_image_);
  } else if (!is_journal_whole()) {
    begin_journal_in_front_of(done_);
  }
  journal_.add(step);
}

void list_session::load_image(const std::string &image) const {
  const auto bytes = std::as_bytes(std::span(image));
  load_faithfully(channel_file(file(), {bytes.begin(), bytes.end()}));
}

// Steps that keep what they made are states as well: the lines behind them read no files.
list_states::state list_session::state_in_front_of(std::size_t step) const {
  list_states::state nearest = states_.nearest(step);
  for (std::size_t i = step; i > nearest.step; --i) {
    if (!steps_[i - 1].image.empty()) {
      return {i, steps_[i - 1].image};
    }
  }
  return nearest;
}

void list_session::go_to(std::size_t step) {
  const list_states::state from = state_in_front_of(step);
  load_image(from.image);
  edited_list edited;
  for (std::size_t i = from.step; i < step; ++i) {
    apply_all(edits_of(steps_[i].lines), edited);
  }
  list_changed();
}

void list_session::list_changed() {
  image_ = image_of(*get_channel_list());
  list_ = line_up_in_memory();
  states_.keep(done_, image_);
  ++revision_;
}

void list_session::begin_at(std::string image) {
  steps_.clear();
  identities_.clear();
  done_ = 0;
  journal_begin_ = 0;
  is_journal_of_file_ = true;
  states_ = list_states(std::move(image));
  list_changed();
}

void list_session::file_was_read() {
  notes_ = file_->load();
  damage_ = file_->damage();
  saved_image_ = image_of(*get_channel_list());
  saved_list_ = line_up_in_memory();
}

// Those that can be done become the steps of this session.
std::vector<std::string> list_session::do_as_many(const std::vector<edit_step> &steps, bool is_same_list) {
  std::vector<std::string> failures;
  for (const edit_step &step : steps) {
    try {
      do_again(step, is_same_list && failures.empty());
    } catch (const std::runtime_error &error) {
      failures.push_back(fmt::format("{}: {}", step.lines, reason_of(error)));
    }
  }
  return failures;
}

// What lines made of the same list is what they make of it, whatever became of the files that they read.
void list_session::do_again(const edit_step &step, bool is_same_list) {
  if (is_same_list && !step.image.empty()) {
    load_image(step.image);
    add_step(step, step.identities);
    return;
  }
  const step_outcome outcome = do_lines(step.lines);
  add_step(step_of(step.lines, outcome, image_of(*get_channel_list())), outcome.identities);
}

std::vector<change> list_session::changes() const { return differences(saved_list_, list_); }

std::string list_session::unsaved_lines() const {
  std::string lines;
  for (std::size_t i = journal_begin_; is_journal_of_file_ && i < done_; ++i) {
    lines.append(steps_[i].lines) += '\n';
  }
  return lines;
}

// What was saved and undone is in no lines.
saved_edits list_session::edits_to_save() const {
  saved_edits edits;
  for (std::size_t i = 0; i < done_; ++i) {
    edits.identities.insert(edits.identities.end(), identities_[i].begin(), identities_[i].end());
  }
  const std::string unsaved = is_journal_of_file_ ? unsaved_lines() : "# undone in the editor";
  text_lines lines(unsaved);
  while (const std::optional<std::string_view> line = lines.next()) {
    edits.lines.emplace_back(*line);
  }
  return edits;
}

void list_session::save() {
  must_be_answered();
  file_->save(edits_to_save());
  saved_image_ = image_;
  saved_list_ = list_;
  journal_begin_ = done_;
  is_journal_of_file_ = true;
  damage_.clear();
  ++revision_;
  journal_.start(saved_image_);
  file_->look_again();
}

// Read by way of the list in memory, which is put back.
line_up list_session::list_in(const std::filesystem::path &path) {
  const std::unique_ptr<edited_file> other = open_to_edit(path);
  try {
    other->load();
  } catch (const std::runtime_error &) {
    load_image(image_);
    throw;
  }
  line_up read = line_up_in_memory();
  load_image(image_);
  if (!other->damage().empty()) {
    throw std::runtime_error(other->damage());
  }
  return read;
}

std::vector<change> list_session::changes_of_file() { return differences(saved_list_, list_in(path_)); }

std::vector<std::size_t> list_session::services_since_backup() {
  const line_up before = list_in(backup_of(path_));
  const places_by_identity known(before);
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < list_.services.size(); ++place) {
    if (known.of(list_.services[place].id()) == nowhere) {
      places.push_back(place);
    }
  }
  return places;
}

std::vector<std::string> list_session::read_again() {
  must_be_answered();
  std::vector<edit_step> unsaved;
  if (is_journal_of_file_) {
    unsaved.assign(steps_.begin() + static_cast<std::ptrdiff_t>(journal_begin_),
                   steps_.begin() + static_cast<std::ptrdiff_t>(done_));
  }
  list_in(path_);  // or nothing is touched
  file_ = open_to_edit(path_);
  file_was_read();
  begin_at(saved_image_);
  std::vector<std::string> failures = do_as_many(unsaved, false);
  journal_.start(saved_image_);
  std::ranges::for_each(steps_, [this](const edit_step &step) { journal_.add(step); });
  return failures;
}

}  // namespace chlist
