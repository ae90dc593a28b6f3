// `chlist edit` as it is run: the address that it prints, Ctrl-C with and without something to save, a kill, refusals.
#include <signal.h>

#include <filesystem>
#include <string>
#include <thread>
#include <tuple>

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
    const std::size_t address = printed.find("http://");  // behind what is told of the file
    return page_of_editor(printed.substr(address, printed.find('\n', address) - address));
  }

  static void expect_edited(const page_of_editor &open, const std::string &lines) {
    EXPECT_TRUE(open.change("edit", lines));
  }

  // Ends the editor as somebody does who leaves an edit for the next time.
  void keep_unsaved(const std::string &lines) {
    expect_edited(page(), lines);
    shown->type(ctrl_c);
    shown->wait_for(question);
    shown->type("k\n");
    EXPECT_EQ(shown->exit_code(), 1);
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

// Arguments of programs are seen by everybody: the address stands in a file.
TEST_F(Editor, OpensTheBrowserByAFileThatNobodyElseReads) {
  namespace fs = std::filesystem;
  fs::create_directory(path("runtime"));
  fs::create_symlink("/bin/true", path("xdg-open"));
  shown.emplace(std::vector<std::string>{"/usr/bin/env", "PATH=" + dir.path(), "XDG_RUNTIME_DIR=" + path("runtime"),
                                         CHLIST_PROGRAM, "edit", path()});
  const std::string address = lines_of(shown->wait_for("/\n")).front();
  const page_of_editor open(address);
  expect_edited(open, "lock News");
  EXPECT_TRUE(open.change("save"));

  const fs::path opened = fs::directory_iterator(path("runtime"))->path();
  EXPECT_NE(read_file(opened).find("url=" + address), std::string::npos);
  EXPECT_EQ(fs::status(opened).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  shown->type(ctrl_c);
  EXPECT_EQ(shown->exit_code(), 0);
  EXPECT_TRUE(fs::is_empty(path("runtime")));
}

TEST_F(Editor, SaysSoWhenNothingOpensABrowser) {
  shown.emplace(std::vector<std::string>{"/usr/bin/env", "PATH=" + dir.path(), CHLIST_PROGRAM, "edit", path()});

  shown->wait_for("chlist: edit: xdg-open: No such file or directory: open the address in a browser\n");
  shown->type(ctrl_c);

  EXPECT_EQ(shown->exit_code(), 0);
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
  keep_unsaved("rename News Daily");

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

TEST_F(Editor, GivesThePageItsFilesAndTheList) {
  const page_of_editor open = page();

  EXPECT_NE(open.get("").find("text/html; charset=utf-8"), std::string::npos);
  EXPECT_NE(open.get("editor.js").find("text/javascript; charset=utf-8"), std::string::npos);
  EXPECT_NE(open.get("list").find("\"News\""), std::string::npos);
  EXPECT_NE(open.get("nothing").find(" 404 "), std::string::npos);
}

TEST_F(Editor, TellsAPageWhatIsWrongWithItsCalls) {
  const page_of_editor open = page();
  expect_edited(open, "lock News");

  for (const auto &[name, body, status] :
       {std::tuple("nothing", "{}", " 404 "), std::tuple("edit", "{", " 400 "), std::tuple("edit", "{}", " 400 "),
        std::tuple("find", R"({"where": 1})", " 400 "), std::tuple("undo", R"({"revision": 0})", " 412 "),
        std::tuple("find", R"({"where": "colour=red"})", " 409 "),
        std::tuple("form", R"({"edit": "nothing"})", " 409 ")}) {
    EXPECT_NE(open.call(name, body).find(status), std::string::npos) << name << ' ' << body;
  }
  EXPECT_EQ(open.answer("changes")["lines"], "lock News\n");
}

TEST_F(Editor, UndoesAndDoesAgainBeforeItSaves) {
  const page_of_editor open = page();
  EXPECT_TRUE(open.answer("preview", {{"text", "remove Films"}})["is_changed"].as_bool());
  EXPECT_TRUE(open.state()["is_saved"].as_bool());

  expect_edited(open, "rename News Daily");
  const json words = json::array({json::array({"lock", "Films"}), json::array({"skip", "Films"})});
  EXPECT_TRUE(open.answer("edit", {{"edits", words}})["state"]["can_undo"].as_bool());
  EXPECT_TRUE(open.change("undo"));
  EXPECT_FALSE(open.answer("undo")["state"]["can_undo"].as_bool());
  EXPECT_TRUE(open.change("redo"));
  EXPECT_EQ(open.answer("find", {{"where", "name=Daily"}})["services"], json::array({0}));
  EXPECT_TRUE(open.change("save"));

  write_file(path("wanted.dat"), before.data);
  run({"rename", "wanted.dat", "News", "Daily"});
  expect_bytes(read_file(path("wanted.dat")));
}

TEST_F(Editor, TakesUpWhatWasLeftTheLastTime) {
  keep_unsaved("rename News Daily");

  const page_of_editor open = page();
  EXPECT_EQ(open.state()["left"]["steps"], 1);
  EXPECT_TRUE(open.state()["left"]["is_of_this_list"].as_bool());
  EXPECT_FALSE(open.change("edit", "lock News"));
  EXPECT_EQ(open.answer("take-left")["failures"], json::array());
  EXPECT_TRUE(open.change("save"));

  EXPECT_NE(run({"list", "list.dat"}).out.find("Daily"), std::string::npos);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.bak", "list.dat.edits", "list.dat.history"}));
}

TEST_F(Editor, DropsWhatWasLeftTheLastTime) {
  keep_unsaved("rename News Daily");

  EXPECT_TRUE(page().answer("drop-left")["state"]["left"].is_null());
  shown->type(ctrl_c);

  EXPECT_EQ(shown->exit_code(), 0);
  expect_bytes(before.data);
  EXPECT_EQ(files(), std::vector<std::string>{"list.dat"});
}

TEST_F(Editor, GoesOnFromTheFileThatSomebodyElseWrote) {
  const page_of_editor open = page();
  expect_edited(open, "lock News");
  expect_edited(open, "rename Music Jazz");
  channel_file other;
  other.service(news).entry(VIEW_ALL, news, 7).entry(VIEW_TV, news, 7);
  write_file(path(), other.data);

  EXPECT_TRUE(open.state()["is_file_changed"].as_bool());
  EXPECT_FALSE(open.change("save"));
  EXPECT_GT(open.answer("changes-of-file")["changes"].size(), 1U);
  const json failures = open.answer("read-again")["failures"];

  EXPECT_EQ(failures.size(), 1U);
  EXPECT_TRUE(failures[0].as_string().starts_with("rename Music Jazz: ")) << failures.dump();
  EXPECT_EQ(open.answer("changes")["lines"], "lock News\n");
}

TEST_F(Editor, WritesAListOfAnotherFormatBackWithEveryLine) {
  const std::string lines = "# my own list\n"
                            "Das Erste;ARD:11836:HC34M2O35S0:S19.2E:27500:101=2:102=deu@3:104:0:28106:1:1101:0\n"
                            "this line is none\n";
  write_file(path(), lines);

  const page_of_editor open = page();
  EXPECT_NE(open.get("state").find("line 3 stays as it is"), std::string::npos);
  expect_edited(open, "rename \"Das Erste\" One");
  EXPECT_TRUE(open.change("save"));

  std::string wanted = lines;
  EXPECT_EQ(read_file(path()), wanted.replace(wanted.find("Das Erste"), 9, "One"));
  EXPECT_EQ(read_file(path("list.dat.bak")), lines);
}

TEST_F(Editor, TakesAFileOfAPageForTheNextEdit) {
  const page_of_editor open = page();

  EXPECT_EQ(open.answer("form", {{"edit", "order"}})["summary"], "Give a list the order of another one");
  const std::string taken =
      open.answer("take-file", {{"name", "a.txt"}, {"at", 0}, {"bytes", "aGVsbG8="}})["path"].as_string();

  EXPECT_EQ(read_file(taken), "hello");
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
