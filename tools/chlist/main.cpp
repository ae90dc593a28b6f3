// chlist: works on the channel files of a receiver. The subcommands are in commands.cpp; each adds its own options.
#include <base/verbosity.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>

#include "chlist/commands.h"
#include "chlist/exit_codes.h"
#include "chlist/files/descriptor.h"
#include "chlist/report.h"

namespace {

constexpr int channel_list_module = 7;

// A file that got the number of a stream that the caller closed would take in what is meant for the stream. What is
// written to these fails.
void occupy_closed_streams() {
  int fd = -1;
  do {
    fd = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
      chlist::fail("/dev/null");
    }
  } while (fd <= STDERR_FILENO);
  ::close(fd);
}

// The help that was asked for is a report like any other; what is wrong with a command line goes to standard error.
int explain(const CLI::App &app, const CLI::ParseError &error) {
  std::ostringstream help;
  if (app.exit(error, help, std::cerr) != 0) {
    return chlist::exit_failed;
  }
  chlist::print_report([&help] { fmt::print("{}", help.str()); });
  return chlist::exit_done;
}

int run(int argc, char **argv) {
  occupy_closed_streams();
  int &log_level = verbosity_map[channel_list_module];
  log_level = -1;
  int exit_code = chlist::exit_done;
  const auto app = chlist::command_line(exit_code, log_level);
  try {
    app->parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return explain(*app, error);
  }
  return exit_code;
}

// Standard error that cannot be written, too, leaves the exit code.
int complain(const std::string &what) {
  static_cast<void>(std::fputs(("chlist: " + what + '\n').c_str(), stderr));
  return chlist::exit_failed;
}

}  // namespace

int main(int argc, char **argv) {
  try {
    return run(argc, argv);
  } catch (const std::filesystem::filesystem_error &error) {
    return complain(error.path1().string() + ": " + error.code().message());
  } catch (const std::exception &error) {
    return complain(error.what());
  }
}
