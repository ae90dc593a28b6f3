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

 private:
  [[nodiscard]] std::string ask(const std::string &method, const std::string &name, const std::string &more) const {
    const client connection(port());
    connection.send(method + " " + path_ + name + " HTTP/1.1\r\nHost: " + host_ + "\r\n" + more);
    return connection.read();
  }

  [[nodiscard]] std::int64_t revision() const {
    const std::string answer = ask("GET", "state", "\r\n");
    const std::size_t head = answer.find("\r\n\r\n");
    return head != std::string::npos ? chlist::json::parse(answer.substr(head + 4))["revision"].as_integer() : -1;
  }

  std::string host_;
  std::string path_;
};

}  // namespace serve_test
