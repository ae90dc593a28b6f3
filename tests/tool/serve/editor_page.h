// What a page of `chlist edit` would say to it.
#pragma once

#include <cstdint>
#include <string>

#include "chlist/json/json.h"
#include "tool/serve/http_client.h"

namespace serve_test {

class page_of_editor {
 public:
  // Of the address that the editor prints.
  explicit page_of_editor(const std::string &address)
      : host_(address.substr(7, address.find('/', 7) - 7)), path_(address.substr(7 + host_.size())) {}

  [[nodiscard]] int port() const { return std::stoi(host_.substr(host_.find(':') + 1)); }

  // The whole answer, with its head.
  [[nodiscard]] std::string call(const std::string &name, const std::string &body) const {
    return ask("POST", name,
               "Origin: http://" + host_ + "\r\nContent-Type: application/json\r\nContent-Length: " +
                   std::to_string(body.size()) + "\r\n\r\n" + body);
  }

  // Of the list as it is now; whether it was done.
  [[nodiscard]] bool change(const std::string &name, const std::string &lines = "") const {
    const std::string body = chlist::json{{"revision", revision()}, {"text", lines}}.dump();
    return call(name, body).find(" 200 OK") != std::string::npos;
  }

  // The answer to a call of the list as it is now.
  [[nodiscard]] chlist::json answer(const std::string &name, chlist::json asked = chlist::json::object()) const {
    asked.put("revision", revision());
    return document_in(call(name, asked.dump()));
  }

  // A file of the page, or the list, with its head.
  [[nodiscard]] std::string get(const std::string &name) const { return ask("GET", name, "\r\n"); }
  [[nodiscard]] chlist::json state() const { return document_in(get("state")); }

 private:
  [[nodiscard]] std::string ask(const std::string &method, const std::string &name, const std::string &more) const {
    const client connection(port());
    connection.send(method + " " + path_ + name + " HTTP/1.1\r\nHost: " + host_ + "\r\n" + more);
    return connection.read();
  }

  // What stands behind the head; null when nothing came.
  static chlist::json document_in(const std::string &answer) {
    const std::size_t head = answer.find("\r\n\r\n");
    return head != std::string::npos ? chlist::json::parse(answer.substr(head + 4)) : chlist::json();
  }

  [[nodiscard]] std::int64_t revision() const {
    const chlist::json now = state();
    return now.is_object() ? now["revision"].as_integer() : -1;
  }

  std::string host_;
  std::string path_;
};

}  // namespace serve_test
