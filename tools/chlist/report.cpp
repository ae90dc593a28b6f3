// Texts and JSON of the tool's reports.
#include "chlist/report.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "chlist/pager.h"
#include "chlist/position.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr const char *standard_output = "standard output";
constexpr int schema = 1;

std::string text_of(const channel::identity &id) {
  return fmt::format("net {}, network {}, ts {}, {} {}, service {}", id.net_index, id.network_id, id.ts_id,
                     id.frequency, polarisation_letter(id), id.service_id);
}

void append(json &object, const channel::identity &id) {
  object["net_index"] = id.net_index;
  object["network_id"] = id.network_id;
  object["ts_id"] = id.ts_id;
  object["frequency"] = id.frequency;
  object["polarisation"] = std::string(1, polarisation_letter(id));
  object["service_id"] = id.service_id;
}

// Goes with the printing, also when that throws.
class memory_stream {
 public:
  memory_stream() : file_(::open_memstream(&text_, &size_)) {
    if (file_ == nullptr) {
      throw std::bad_alloc();
    }
  }
  ~memory_stream() {
    static_cast<void>(std::fclose(file_));
    std::free(text_);
  }
  memory_stream(const memory_stream &) = delete;
  memory_stream &operator=(const memory_stream &) = delete;

  [[nodiscard]] std::FILE *file() const { return file_; }
  [[nodiscard]] std::string text() const {
    if (std::fflush(file_) != 0) {
      throw std::system_error(errno, std::generic_category(), "the report");
    }
    return {text_, size_};
  }

 private:
  char *text_ = nullptr;
  std::size_t size_ = 0;
  std::FILE *file_;
};

}  // namespace

char polarisation_letter(const channel::identity &id) { return id.polarisation == 0 ? 'H' : 'V'; }

std::string label_of(const view_name &view) {
  if (!view.is_favourites()) {
    return std::string(view.kind);
  }
  return fmt::format("{} {}{}", view.kind, position_of(view.group),
                     view.group_name.empty() ? "" : ' ' + shown(view.group_name));
}

std::string describe(const known_service &service) {
  return fmt::format("{} ({})", shown(service.name), text_of(service.id));
}

std::string describe(const placed_entry &entry) {
  return fmt::format("the {} view, position {}: number {} ({})", label_of(entry.view), position_of(entry.index),
                     entry.number, text_of(entry.id));
}

json json_of(const view_name &view) {
  json object = {{"view", view.kind}};
  if (view.is_favourites()) {
    object["group"] = position_of(view.group);
    object["group_name"] = view.group_name;
  }
  return object;
}

json json_of(const known_service &service) {
  json object = {{"name", service.name}};
  append(object, service.id);
  return object;
}

json json_of(const placed_entry &entry) {
  json object = json_of(entry.view);
  object["position"] = position_of(entry.index);
  object["number"] = entry.number;
  append(object, entry.id);
  return object;
}

json json_of_views() {
  json views = json::array();
  for (const list_view &view : views_of(*get_channel_list())) {
    json object = json_of(view.name);
    object["count"] = view.size();
    views.push_back(object);
  }
  return views;
}

void print_json(const json &report) {
  json document = {{"schema", schema}};
  document.put(report);
  fmt::print("{}\n", document.dump(2));
}

std::string text_of_report(const std::function<void(std::FILE *to)> &print) {
  const memory_stream printed;
  print(printed.file());
  return printed.text();
}

void print_report(const std::function<void()> &print) {
  try {
    paged_output output;
    print();
    output.show();
  } catch (const std::system_error &error) {
    throw report_lost(error.code(), standard_output);
  }
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    throw report_lost(errno, std::generic_category(), standard_output);
  }
}

}  // namespace chlist
