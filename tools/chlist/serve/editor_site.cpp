// What changes the list is answered with what differs of it: a page of thousands of services is not sent anew for every
// key. A page that shows another revision is told so, and nothing is done.
#include "chlist/serve/editor_site.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "chlist/edit/edit_line.h"
#include "chlist/fields/where.h"
#include "chlist/messages.h"
#include "chlist/page/browser_files.h"
#include "chlist/page/page.h"
#include "chlist/report.h"
#include "chlist/serve/edit_form.h"
#include "chlist/text/base64.h"

namespace chlist {
namespace {

// The list was changed by another page.
struct outdated_page : std::runtime_error {
  outdated_page() : std::runtime_error("the list was changed in another window: look at it as it is now") {}
};

struct file_type {
  std::string_view ending;
  std::string_view type;
};

constexpr std::array file_types = {file_type{".html", "text/html; charset=utf-8"},
                                   file_type{".css", "text/css; charset=utf-8"},
                                   file_type{".js", "text/javascript; charset=utf-8"}};

constexpr std::string_view first_page = "editor.html";

std::optional<http_answer> answer_with_file(std::string_view asked) {
  const std::string_view name = asked.empty() ? first_page : asked;
  const std::span<const browser_file> files = editor_files();
  const auto file = std::ranges::find(files, name, &browser_file::name);
  if (file == files.end()) {
    return std::nullopt;
  }
  const auto *const type =
      std::ranges::find_if(file_types, [name](const file_type &each) { return name.ends_with(each.ending); });
  return secured({.type = std::string(type->type), .body = std::string(file->contents)});
}

http_answer json_answer(const json &document, int status = 200) {
  return secured({.status = status, .type = "application/json", .body = document.dump()});
}

http_answer failure(int status, std::string_view text) { return json_answer({{"error", text}}, status); }

// The page reads no findings.
json shown_list(const list_session &session) { return page_data(session.file().filename(), session.list(), {}); }

// Those of as many elements that differ, by their places.
json changed_elements(const json &before, const json &after) {
  json changed = json::array();
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (before[i] != after[i]) {
      changed.push_back(json::array({i, after[i]}));
    }
  }
  return {{"elements", std::move(changed)}};
}

json changed_parts(const json &before, const json &after) {
  json parts = json::object();
  for (const json::member &part : after.members()) {
    const json &former = before[part.key];
    if (former != part.value) {
      const bool is_as_long = part.value.is_array() && former.size() == part.value.size();
      parts.put(part.key, is_as_long ? changed_elements(former, part.value) : json{{"all", part.value}});
    }
  }
  return parts;
}

// Each service once: as ALL shows it, or by itself.
std::vector<service_row> rows_of_services(const line_up &list) {
  std::vector<service_row> rows(list.services.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rows[i] = {.list = &list, .service = &list.services[i]};
  }
  const std::vector<line_up_entry> &entries = list.view(view_kind::all).entries;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i].service != nowhere && rows[entries[i].service].entry == nullptr) {
      rows[entries[i].service].entry = &entries[i];
      rows[entries[i].service].index = i;
    }
  }
  return rows;
}

// Lines are edits: a word that goes on in the next line would be another edit.
std::string word_of(const json &word) {
  if (word.as_string().find_first_of("\r\n") != std::string::npos) {
    throw std::runtime_error("a word has a line break in it");
  }
  return word.as_string();
}

// "edits": words, a list for each line, or "text": lines as people write them.
std::string lines_asked(const json &asked) {
  if (const json *text = asked.find("text")) {
    return text->as_string();
  }
  std::string lines;
  for (const json &edit : asked["edits"].elements()) {
    std::vector<std::string> words;
    std::ranges::transform(edit.elements(), std::back_inserter(words), word_of);
    lines.append(line_of_words(words)) += '\n';
  }
  return lines;
}

json json_of_line(const difference_line &line) { return json::array({line.depth, line.text}); }

// A dry run shows them alike.
json shown_changes(const std::vector<change> &changes) { return array_of(lines_of_differences(changes), json_of_line); }

json json_of_outcome(const step_outcome &outcome) {
  return {{"notes", outcome.notes},
          {"tables", outcome.tables},
          {"chosen", outcome.chosen ? json(*outcome.chosen) : json()},
          {"is_changed", !outcome.changes.empty()},
          {"changes", shown_changes(outcome.changes)}};
}

}  // namespace

struct editor_site::call {
  std::string_view name;
  json (editor_site::*answer)(const json &asked);
};

std::span<const editor_site::call> editor_site::calls() {
  static constexpr call all[] = {{"edit", &editor_site::edit},
                                 {"preview", &editor_site::preview},
                                 {"undo", &editor_site::undo},
                                 {"redo", &editor_site::redo},
                                 {"find", &editor_site::find},
                                 {"find-new", &editor_site::find_new},
                                 {"changes", &editor_site::changes},
                                 {"take-left", &editor_site::take_left},
                                 {"drop-left", &editor_site::drop_left},
                                 {"changes-of-file", &editor_site::changes_of_file},
                                 {"read-again", &editor_site::read_again},
                                 {"save", &editor_site::save},
                                 {"form", &editor_site::form},
                                 {"take-file", &editor_site::take_file}};
  return all;
}

editor_site::editor_site(list_session &session, site_door door)
    : session_(session), door_(std::move(door)), shown_(shown_list(session)) {}

std::optional<http_answer> editor_site::refusal(const http_request &head) {
  const std::lock_guard lock(mutex_);
  std::optional<http_answer> refused = door_.refusal(head, clock::now());
  if (!refused) {
    last_asked_ = clock::now();
  }
  return refused;
}

http_answer editor_site::answer(const http_request &request) {
  const std::lock_guard lock(mutex_);
  const std::string_view asked = door_.asked(request);
  if (request.method == "GET") {
    if (asked == "list") {
      return json_answer(whole_list());
    }
    if (asked == "state") {
      return json_answer(state());
    }
    return answer_with_file(asked).value_or(plain_answer(404, "there is nothing here"));
  }
  try {
    return answer_call(asked, json::parse(request.body));
  } catch (const json_error &error) {
    return failure(400, error.what());
  }
}

// What is wrong with a document's members is found when they are read.
http_answer editor_site::answer_call(std::string_view name, const json &asked) {
  const std::span<const call> known = calls();
  const auto found = std::ranges::find(known, name, &call::name);
  if (found == known.end()) {
    return plain_answer(404, "there is nothing here");
  }
  try {
    return json_answer((this->*found->answer)(asked));
  } catch (const outdated_page &error) {
    return failure(412, error.what());
  } catch (const std::runtime_error &error) {
    return failure(409, reason_of(error));
  } catch (const std::bad_variant_access &) {
    return failure(400, "a member is of another kind");
  } catch (const std::out_of_range &) {
    return failure(400, "a member is missing");
  }
}

void editor_site::with_session(const std::function<void(list_session &session)> &ask) {
  const std::lock_guard lock(mutex_);
  ask(session_);
  shown_ = shown_list(session_);
}

editor_site::clock::time_point editor_site::last_asked() {
  const std::lock_guard lock(mutex_);
  return last_asked_;
}

json editor_site::whole_list() { return {{"state", state()}, {"list", shown_}}; }

json editor_site::state() const {
  const unfinished_edits *left = session_.left();
  return {{"revision", session_.revision()},
          {"file", session_.file().string()},
          {"is_saved", session_.is_saved()},
          {"damage", session_.damage().empty() ? json() : json(session_.damage())},
          {"can_undo", session_.can_undo()},
          {"can_redo", session_.can_redo()},
          {"done", session_.done()},
          {"is_file_changed", session_.is_file_changed()},
          {"left", left == nullptr
                       ? json()
                       : json{{"steps", left->steps.size()}, {"is_of_this_list", session_.is_left_of_this_list()}}},
          {"notes", session_.notes()}};
}

// A page that shows another list than there is changes nothing.
json editor_site::changed_by(const json &asked, const std::function<json()> &change) {
  const std::int64_t shown_revision = asked["revision"].as_integer();
  if (std::cmp_not_equal(shown_revision, session_.revision())) {
    throw outdated_page();
  }
  json reply = change();
  json list = std::cmp_equal(shown_revision, session_.revision()) ? shown_ : shown_list(session_);
  reply.put("update", changed_parts(shown_, list));
  reply.put("state", state());
  shown_ = std::move(list);
  return reply;
}

json editor_site::edit(const json &asked) {
  return changed_by(asked, [&] { return json_of_outcome(session_.apply(lines_asked(asked))); });
}

json editor_site::preview(const json &asked) { return json_of_outcome(session_.preview(lines_asked(asked))); }

json editor_site::undo(const json &asked) {
  return changed_by(asked, [&] {
    session_.undo();
    return json::object();
  });
}

json editor_site::redo(const json &asked) {
  return changed_by(asked, [&] {
    session_.redo();
    return json::object();
  });
}

json editor_site::find(const json &asked) {
  const where wanted(asked["where"].as_string());
  json services = json::array();
  for (const service_row &row : rows_of_services(session_.list())) {
    if (wanted.takes(row)) {
      services.push_back(row.service - session_.list().services.data());
    }
  }
  return {{"revision", session_.revision()}, {"services", std::move(services)}};
}

json editor_site::find_new(const json & /*asked*/) {
  return {{"revision", session_.revision()}, {"services", session_.services_since_backup()}};
}

json editor_site::changes(const json & /*asked*/) {
  return {{"changes", shown_changes(session_.changes())}, {"lines", session_.unsaved_lines()}};
}

json editor_site::take_left(const json &asked) {
  return changed_by(asked, [&] { return json{{"failures", session_.take_left()}}; });
}

json editor_site::drop_left(const json &asked) {
  return changed_by(asked, [&] {
    session_.drop_left();
    return json::object();
  });
}

json editor_site::changes_of_file(const json & /*asked*/) {
  return {{"changes", shown_changes(session_.changes_of_file())}};
}

json editor_site::read_again(const json &asked) {
  return changed_by(asked, [&] { return json{{"failures", session_.read_again()}}; });
}

json editor_site::form(const json &asked) { return form_of_edit(asked["edit"].as_string()); }

json editor_site::take_file(const json &asked) {
  const std::optional<std::string> bytes = bytes_of_base64(asked["bytes"].as_string());
  const std::int64_t at = asked["at"].as_integer();
  if (!bytes || at < 0) {
    throw std::runtime_error("these are no bytes of a file");
  }
  return {{"path", session_.take_file(asked["name"].as_string(), static_cast<std::size_t>(at), *bytes).string()}};
}

json editor_site::save(const json &asked) {
  return changed_by(asked, [&] {
    session_.save();
    return json::object();
  });
}

}  // namespace chlist
