// The editor as requests and answers: a page, its files, and calls in JSON. Answers are made of the session alone;
// sockets are the server's.
#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "chlist/json/json.h"
#include "chlist/serve/door.h"
#include "chlist/serve/http.h"
#include "chlist/serve/list_session.h"

namespace chlist {

class editor_site {
 public:
  using clock = std::chrono::steady_clock;

  editor_site(list_session &session, site_door door);
  editor_site(const editor_site &) = delete;
  editor_site &operator=(const editor_site &) = delete;

  std::optional<http_answer> refusal(const http_request &head);
  // For requests that refusal() has nothing against. One is answered at a time: the list in memory is one.
  http_answer answer(const http_request &request);

  [[nodiscard]] std::string address() const { return door_.address(); }

  // What is asked of the session beside requests.
  void with_session(const std::function<void(list_session &session)> &ask);
  // When somebody asked for something last.
  clock::time_point last_asked();

 private:
  http_answer answer_call(std::string_view name, const json &asked);
  json whole_list();
  json state() const;
  json changed_by(const json &asked, const std::function<json()> &change);

  struct call;
  static std::span<const call> calls();
  json edit(const json &asked);
  json preview(const json &asked);
  json undo(const json &asked);
  json redo(const json &asked);
  json find(const json &asked);
  json find_new(const json &asked);
  json changes(const json &asked);
  json take_left(const json &asked);
  json drop_left(const json &asked);
  json changes_of_file(const json &asked);
  json read_again(const json &asked);
  json save(const json &asked);
  json form(const json &asked);
  json take_file(const json &asked);

  std::mutex mutex_;
  list_session &session_;
  site_door door_;
  json shown_;  // the list as pages have it
  clock::time_point last_asked_ = clock::now();
};

}  // namespace chlist
