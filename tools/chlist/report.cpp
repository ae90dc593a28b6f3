// Reports, and what became of them.
#include "chlist/report.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "chlist/pager.h"

namespace chlist {
namespace {

constexpr const char *standard_output = "standard output";
constexpr int schema = 1;

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
