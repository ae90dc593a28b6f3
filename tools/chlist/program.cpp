#include "chlist/program.h"

#include <base/verbosity.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/command_line.h"
#include "chlist/command_table.h"
#include "chlist/complete.h"
#include "chlist/exit_codes.h"
#include "chlist/files/descriptor.h"
#include "chlist/messages.h"

namespace chlist {
namespace {

constexpr int channel_list_module = 7;

// A file that got the number of a stream that the caller closed would take in what is meant for the stream. What is
// written to these fails.
void occupy_closed_streams() {
  int fd = -1;
  do {
    fd = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
      fail("/dev/null");
    }
  } while (fd <= STDERR_FILENO);
  ::close(fd);
}

// A write beyond the user's limit fails as on a full disk, and what was begun is removed.
void fail_at_the_size_limit() { ::signal(SIGXFSZ, SIG_IGN); }

int run(int argc, const char *const *argv) {
  occupy_closed_streams();
  fail_at_the_size_limit();
  int &log_level = verbosity_map[channel_list_module];
  log_level = -1;
  const command program = whole_program(log_level);
  // Not a row of the table: shells call it, not people.
  if (argc > 1 && std::string_view(argv[1]) == "complete") {
    return print_completions(program, std::vector<std::string>(argv + 2, argv + argc));
  }
  return run_command_line(program, argc, argv);
}

}  // namespace

int run_program(int argc, const char *const *argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception &error) {
    print_message(error.what());
    return exit_failed;
  }
}

}  // namespace chlist
