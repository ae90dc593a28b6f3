// `chlist edit` as it is run: the address that it prints, Ctrl-C with and without something to save, a kill, refusals.
#include <signal.h>

#include <string>
#include <thread>

#include "tool/edit/edit_host.h"
#include "tool/serve/editor_page.h"

namespace edit_test {

using serve_test::page_of_editor;

class Editor : public edit_host {
 protected:
  // The editor on a terminal, and the address that it prints there.
  std::string start(const std::vector<std::string> &more = {}) {
    std::vector<std::string> command = {CHLIST_PROGRAM, "edit", path(), "--no-browser"};
    command.insert(command.end(), more.begin(), more.end());
    shown.emplace(command);
    return shown->wait_for("/\n");
  }

  page_of_editor page(const std::vector<std::string> &more = {}) {
    const std::string printed = start(more);
    return page_of_editor(printed.substr(0, printed.find('\n')));
  }

  static void expect_edited(const page_of_editor &open, const std::string &lines) {
    EXPECT_TRUE(open.change("edit", lines));
  }

  static constexpr const char *ctrl_c = "\x03";
  const std::string question =
      "Not everything is saved. [s]ave it and end, [k]eep it for the next time, or [c]ontinue? ";

  std::optional<terminal> shown;
};

TEST_F(Editor, PrintsAnAddressWithASecret) {
  const std::string printed = start();

  EXPECT_TRUE(printed.starts_with("http://127.0.0.1:"));
  EXPECT_EQ(printed.substr(printed.find('/', 8)).size(), std::string("/0123456789abcdef0123456789abcdef/\n").size());
  shown->type(ctrl_c);
  EXPECT_EQ(shown->exit_code(), 0);
  EXPECT_EQ(files(), std::vector<std::string>{"list.dat"});
}

TEST_F(Editor, AsksBeforeItEndsAndSaves) {
  expect_edited(page(), "rename News Daily");

  shown->type(ctrl_c);
  shown->wait_for(question);
  shown->type("s\n");

  EXPECT_EQ(shown->exit_code(), 0);
  expect_bytes(before.data, "list.dat.bak");
  EXPECT_NE(read_file(path()), before.data);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.bak", "list.dat.history"}));
}

TEST_F(Editor, KeepsWhatIsNotSavedForTheNextTime) {
  expect_edited(page(), "rename News Daily");

  shown->type(ctrl_c);
  shown->wait_for(question);
  shown->type("k\n");

  EXPECT_EQ(shown->exit_code(), 1);
  EXPECT_NE(shown->unread().find("not everything is saved; `chlist edit` offers it again"), std::string::npos);
  expect_bytes(before.data);
  EXPECT_TRUE(read_file(path("list.dat.edits")).ends_with("\nrename News Daily\n\n"));
}

TEST_F(Editor, GoesOnWhenSomebodySaysSo) {
  const page_of_editor open = page();
  expect_edited(open, "rename News Daily");

  shown->type(ctrl_c);
  shown->wait_for(question);
  shown->type("c\n");
  shown->wait_for("The editor goes on.\n");

  expect_edited(open, "lock Films");
  shown->type(ctrl_c);
  shown->wait_for(question);
  shown->type(ctrl_c);
  EXPECT_EQ(shown->exit_code(), 1);
  EXPECT_TRUE(read_file(path("list.dat.edits")).ends_with("\nrename News Daily\n\nlock Films\n\n"));
}

TEST_F(Editor, RefusesAListThatIsOpenAlready) {
  start();

  expect_refused({"edit", "list.dat", "--no-browser"},
                 dir.path() + "list.dat.edits: another editor has this list open");
}

TEST_F(Editor, RefusesAPortThatSomebodyElseHas) {
  const std::string port = std::to_string(page().port());
  write_file(path("other.dat"), before.data);

  const program_result result = run({"edit", "other.dat", "--no-browser", "--port", port});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, message({"edit"}, "port " + port + " of 127.0.0.1 cannot be had"));
}

TEST_F(Editor, RefusesFilesThatItCannotRead) {
  write_file(path("text.dat"), "no channel file");

  EXPECT_EQ(run({"edit", "text.dat", "--no-browser"}).exit_code, 2);
  EXPECT_EQ(run({"edit", "nothing.dat", "--no-browser"}).exit_code, 2);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "text.dat"}));
}

}  // namespace edit_test
