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

}  // namespace

void print_json(const json &report) {
  json document = {{"schema", schema}};
  document.put(report);
  fmt::print("{}\n", document.dump(2));
}

std::string text_of_report(const std::function<void(std::FILE *to)> &print) {
  char *text = nullptr;
  std::size_t size = 0;
  std::FILE *to = ::open_memstream(&text, &size);
  if (to == nullptr) {
    throw std::bad_alloc();
  }
  print(to);
  std::fclose(to);
  std::string printed(text, size);
  std::free(text);
  return printed;
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
