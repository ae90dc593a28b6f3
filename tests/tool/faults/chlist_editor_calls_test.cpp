// `chlist edit` with its first call to the file system failing, its second, and so on until none does: what a page was
// told is done is done after a crash, too, and nothing else is.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <optional>

#include "chlist/serve/list_session.h"
#include "tool/faults/commands.h"
#include "tool/faults/failing_call.h"
#include "tool/serve/editor_page.h"

namespace {

using serve_test::page_of_editor;
using tool_test::failing_call;
using tool_test::file_set;

// The editor of list.dat, as long as this lives.
class running_editor {
 public:
  explicit running_editor(const std::string &directory) {
    int ends[2] = {};
    EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    pid_ = ::fork();
    if (pid_ == 0) {
      ::dup2(ends[1], STDOUT_FILENO);
      ::dup2(::open("/dev/null", O_RDWR), STDERR_FILENO);
      static_cast<void>(::chdir(directory.c_str()) == 0);
      ::execl(CHLIST_PROGRAM, CHLIST_PROGRAM, "edit", "list.dat", "--no-browser", nullptr);
      ::_exit(127);
    }
    ::close(ends[1]);
    read_address(ends[0]);
    ::close(ends[0]);
  }
  ~running_editor() {
    if (pid_ > 0) {
      crash();
    }
  }
  running_editor(const running_editor &) = delete;
  running_editor &operator=(const running_editor &) = delete;

  // None of one that does not start.
  [[nodiscard]] std::optional<page_of_editor> page() const {
    return address_.ends_with('\n') ? std::optional(page_of_editor(address_.substr(0, address_.size() - 1)))
                                    : std::nullopt;
  }

  void crash() {
    ::kill(pid_, SIGKILL);
    exit_code();
  }

  int exit_code() {
    int status = 0;
    ::waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  void read_address(int from) {
    char next = 0;
    while (!address_.ends_with('\n') && ::read(from, &next, 1) == 1) {
      address_ += next;
    }
  }

  pid_t pid_ = -1;
  std::string address_;
};

// What a page knows of the list.
struct shown_list {
  std::string name = "News";
  bool is_locked = false;

  friend bool operator==(const shown_list &, const shown_list &) = default;
};

void PrintTo(const shown_list &list, std::ostream *out) { *out << list.name << (list.is_locked ? ", locked" : ""); }

shown_list shown_of(const chlist::line_up_service &service) {
  return {service.name, service.has_flag(CHANNEL_FLAG_LOCKED)};
}

// Somebody who edits, and remembers what was done.
class editing {
 public:
  explicit editing(const page_of_editor &page) : page_(page) {}

  void edit(const std::string &lines, const shown_list &made) {
    if (page_.change("edit", lines) && made != now()) {
      states_.push_back(made);
    }
  }
  void undo() {
    if (states_.size() > 1 && page_.change("undo")) {
      states_.pop_back();
    }
  }
  void save() { static_cast<void>(page_.change("save")); }

  [[nodiscard]] const shown_list &now() const { return states_.back(); }

 private:
  const page_of_editor &page_;
  std::vector<shown_list> states_ = {{}};
};

// Edits, some of them taken back, a save, and edits behind it.
shown_list edited_on(const page_of_editor &page) {
  editing done(page);
  done.edit("rename News Today", {"Today", done.now().is_locked});
  done.edit("lock 1", {done.now().name, true});
  done.undo();
  done.edit("lock 1", {done.now().name, true});
  done.save();
  done.undo();
  done.edit("rename 1 Late", {"Late", done.now().is_locked});
  return done.now();
}

class ChlistEditorFaults : public tool_test::inputs_test {
 protected:
  ChlistEditorFaults() : inputs_test(tool_test::inputs_of({"list.dat"})) {}

  // What somebody finds who opens the list again, and takes what was not saved.
  [[nodiscard]] shown_list found_again() const {
    chlist::list_session session(path("list.dat"));
    if (session.left() != nullptr) {
      session.take_left();
    }
    return shown_of(session.list().services.front());
  }

  // An empty journal may stay behind: nobody but the editor that locks it may take it away.
  void expect_nothing_kept() const {
    file_set found = folder();
    if (const auto journal = found.find("list.dat.edits"); journal != found.end()) {
      EXPECT_EQ(journal->second.first, "");
      found.erase(journal);
    }
    EXPECT_TRUE(found == before);
  }

  // The files are the earlier ones or whole new ones: none is cut, and nothing temporary stays.
  void expect_files_whole() const {
    for (const auto &[name, file] : folder()) {
      EXPECT_EQ(name.find(".chlist-"), std::string::npos) << name;
    }
    EXPECT_EQ(folder().at("list.dat").first.size(), before.at("list.dat").first.size());
  }

  const test_support::temp_dir told;
};

TEST_F(ChlistEditorFaults, LoseNothingThatAPageWasTold) {
  file_set left = folder();
  for (int n = 1;; ++n) {
    put(before, left);
    const failing_call failing(n, told.path() + "call");
    running_editor editor(dir.path());
    shown_list shown;
    if (const std::optional<page_of_editor> page = editor.page()) {
      shown = edited_on(*page);
      editor.crash();
    } else {
      EXPECT_EQ(editor.exit_code(), 2);
      expect_nothing_kept();
    }
    SCOPED_TRACE("call " + std::to_string(n) + ", " + failing.name());
    if (failing.name().empty()) {
      RecordProperty("failed_calls", n - 1);
      return;
    }
    expect_files_whole();
    EXPECT_EQ(found_again(), shown);
    left = folder();
    ASSERT_FALSE(HasFailure());
  }
}

}  // namespace
