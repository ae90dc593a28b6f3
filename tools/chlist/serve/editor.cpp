// `chlist edit`: serves the editor of a list until somebody ends it.
#include "chlist/commands.h"

#include <fmt/format.h>
#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "chlist/exchange/formats.h"
#include "chlist/exit_codes.h"
#include "chlist/files/descriptor.h"
#include "chlist/messages.h"
#include "chlist/report.h"
#include "chlist/serve/editor_site.h"
#include "chlist/serve/http.h"
#include "chlist/serve/page_opener.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct editor_options {
  fs::path file;
  std::optional<int> port;
  int idle_minutes = 30;
  bool is_without_browser = false;
};

constexpr int look_every_ms = 500;

// The signals that end the program are read like a file. Threads that are started later do not get them either.
class ending_signals {
 public:
  ending_signals() : file_(::signalfd(-1, block(), SFD_CLOEXEC | SFD_NONBLOCK), "signals") {}

  // The one that came within the time, or 0. With an answer on standard input, -1.
  int wait(int milliseconds, bool with_input = false) {
    std::array<pollfd, 2> asked = {pollfd{file_.get(), POLLIN, 0}, pollfd{with_input ? STDIN_FILENO : -1, POLLIN, 0}};
    ::poll(asked.data(), asked.size(), milliseconds);
    signalfd_siginfo came = {};
    if (::read(file_.get(), &came, sizeof came) == sizeof came) {
      return static_cast<int>(came.ssi_signo);
    }
    return asked[1].revents != 0 ? -1 : 0;
  }

 private:
  const sigset_t *block() {
    ::sigemptyset(&signals_);
    for (const int each : {SIGINT, SIGTERM, SIGHUP}) {
      ::sigaddset(&signals_, each);
    }
    ::sigprocmask(SIG_BLOCK, &signals_, nullptr);
    return &signals_;
  }

  sigset_t signals_ = {};
  descriptor file_;
};

void try_to_save(editor_site &site) {
  try {
    site.with_session([](list_session &session) { session.save(); });
  } catch (const std::exception &error) {
    print_message(reason_of(error));
  }
}

// Whether everything is saved, so that the program can end at once.
bool is_all_saved(editor_site &site) {
  bool is_saved = false;
  site.with_session([&](const list_session &session) { is_saved = session.is_saved(); });
  return is_saved;
}

// Somebody who is there decides what becomes of what is not saved. A second Ctrl-C ends as well, and keeps it.
bool is_to_end(editor_site &site, ending_signals &signals) {
  if (is_all_saved(site) || ::isatty(STDIN_FILENO) != 1) {
    return true;
  }
  std::cerr << "Not everything is saved. [s]ave it and end, [k]eep it for the next time, or [c]ontinue? " << std::flush;
  std::string answer;
  if (signals.wait(-1, true) > 0 || !std::getline(std::cin, answer) || answer.starts_with('k')) {
    std::cerr << '\n';
    return true;
  }
  if (answer.starts_with('s')) {
    try_to_save(site);
  }
  if (answer.starts_with('s') && is_all_saved(site)) {
    return true;
  }
  std::cerr << "The editor goes on.\n";
  return false;
}

void serve_until_end(editor_site &site, ending_signals &signals, std::chrono::minutes idle) {
  while (editor_site::clock::now() - site.last_asked() < idle) {
    const int signal = signals.wait(look_every_ms);
    if (signal == SIGTERM || signal == SIGHUP || (signal == SIGINT && is_to_end(site, signals))) {
      return;
    }
  }
  print_message(fmt::format("no page was open for {} minutes", idle.count()));
}

// Its threads end before what they answer from does.
class answering_server {
 public:
  answering_server(http_server &server, editor_site &site) : server_(server) {
    server_.start({[&site](const http_request &head) { return site.refusal(head); },
                   [&site](const http_request &request) { return site.answer(request); }});
  }
  ~answering_server() { server_.stop(); }
  answering_server(const answering_server &) = delete;
  answering_server &operator=(const answering_server &) = delete;

 private:
  http_server &server_;
};

// The address alone goes to standard output, for programs.
std::unique_ptr<page_opener> show_page(const editor_options &options, const std::string &address) {
  print_report([&] { fmt::print("{}\n", address); });
  if (options.is_without_browser) {
    return nullptr;
  }
  try {
    return std::make_unique<page_opener>(address);
  } catch (const std::system_error &error) {
    print_message(fmt::format("{}: open the address in a browser", error.what()));
    return nullptr;
  }
}

int report_end(const list_session &session) {
  if (session.is_saved() && session.left() == nullptr) {
    return exit_done;
  }
  print_message(fmt::format("{}: not everything is saved; `chlist edit` offers it again, and {}.edits has it",
                            session.file().string(), session.file().string()));
  return exit_findings;
}

int run_editor(const editor_options &options) {
  list_session session(options.file);
  ending_signals signals;
  http_server server(options.port.value_or(0));
  editor_site site(session, site_door(random_token(), server.port()));
  const answering_server answering(server, site);
  for (const std::string &note : session.notes()) {
    print_message(fmt::format("{}: {}", options.file.string(), note));
  }
  const std::unique_ptr<page_opener> opener = show_page(options, site.address());
  serve_until_end(site, signals, std::chrono::minutes(options.idle_minutes));
  server.stop();
  return report_end(session);
}

}  // namespace

command editor_command() {
  auto options = std::make_shared<editor_options>();
  return {
      .name = "edit",
      .summary = "Edit a list of any format in the browser",
      .details =
          {"A page opens that has the list in its views and favourite groups on the left and every service on the "
           "right. It is served by this program, for this machine alone, until Ctrl-C, or until no page was open for a "
           "while. The address has a secret in it: nobody without it gets in.",
           "What is done there are the edits of `chlist apply`. They are kept in FILE.edits as they are made, so that "
           "a "
           "crash loses nothing: the next `chlist edit` offers them again; FILE.edits.files has what they made of "
           "other "
           "files. A channel file that is damaged opens to be salvaged. FILE is replaced when somebody saves, as a "
           "whole or not at all, and kept as FILE.bak; a FILE that somebody else wrote meanwhile is told, and never "
           "overwritten.",
           "FILE is a channel file, or a list of another format that `chlist import` reads and `chlist export` writes, "
           "of "
           "Enigma2 its folder. It is written back in that format: lines that nobody edited stay as they are."},
      .sections = {{"Formats", formats_to_write()}},
      .exit_codes = {{"0", "everything is saved, or nothing was changed"},
                     {"1", "not everything is saved; FILE.edits has it"},
                     {"2", "nothing was served: bad usage, a FILE that cannot be read or is open in another editor, a "
                           "port that cannot be had"}},
      .examples = {"chlist edit channels.dat", "chlist edit channels.conf",
                   "chlist edit channels.dat --no-browser --port 8080"},
      .options = {{.names = "FILE", .target = &options->file, .about = "the list", .is_required = true},
                  {.names = "--port",
                   .target = &options->port,
                   .about = "the port to serve on (one that is free)",
                   .value = "PORT",
                   .least_and_most = std::pair(1, 65535)},
                  {.names = "--idle",
                   .target = &options->idle_minutes,
                   .about = "end when no page was open for so many minutes (30)",
                   .value = "MINUTES",
                   .least_and_most = std::pair(1, 1440)},
                  {.names = "--no-browser",
                   .target = &options->is_without_browser,
                   .about = "print the address alone, and open no browser"}},
      .run = [options] { return run_editor(*options); }};
}

}  // namespace chlist
