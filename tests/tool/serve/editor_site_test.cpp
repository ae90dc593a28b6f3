// The editor as requests and answers, without a socket.
#include "chlist/serve/editor_site.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include "tool/edit/edit_host.h"

namespace edit_test {

using chlist::editor_site;
using chlist::http_answer;
using chlist::http_request;
using chlist::json;
using chlist::list_session;
using chlist::site_door;

class EditorSite : public edit_host {
 protected:
  void SetUp() override {
    edit_host::SetUp();
    session = std::make_unique<list_session>(path());
    site = std::make_unique<editor_site>(*session, site_door("token", 8080));
  }

  http_answer get(const std::string &name) { return site->answer({"GET", "/token/" + name, {}, ""}); }
  http_answer post(const std::string &name, const std::string &body) {
    return site->answer({"POST", "/token/" + name, {}, body});
  }
  json call(const std::string &name, json asked) {
    asked["revision"] = session->revision();
    const http_answer answer = post(name, asked.dump());
    EXPECT_EQ(answer.status, 200) << answer.body;
    return json::parse(answer.body);
  }
  json edit(const std::string &text) { return call("edit", {{"text", text}}); }
  static std::string error_in(const http_answer &answer) { return json::parse(answer.body)["error"].as_string(); }

  std::unique_ptr<list_session> session;
  std::unique_ptr<editor_site> site;
};

TEST_F(EditorSite, ServesThePageAndItsFiles) {
  EXPECT_TRUE(get("").body.starts_with("<!doctype html>\n"));
  EXPECT_EQ(get("").type, "text/html; charset=utf-8");
  EXPECT_EQ(get("editor.css").type, "text/css; charset=utf-8");
  EXPECT_EQ(get("editor.js").type, "text/javascript; charset=utf-8");
}

// What the page names is there.
TEST_F(EditorSite, ServesEveryFileThatThePageNames) {
  const std::string page = get("").body;
  int named = 0;
  for (const std::string &mark : {std::string("src=\""), std::string("rel=\"stylesheet\" href=\"")}) {
    for (std::size_t at = page.find(mark); at != std::string::npos; at = page.find(mark, at + 1)) {
      const std::size_t from = at + mark.size();
      const std::string name = page.substr(from, page.find('"', from) - from);
      EXPECT_EQ(get(name).status, 200) << name;
      ++named;
    }
  }
  EXPECT_GE(named, 10);
}

TEST_F(EditorSite, ServesNothingElse) {
  for (const char *name : {"../editor.js", "..%2feditor.js", "/etc/passwd", "editor.js/", "EDITOR.JS", "edit",
                           "list.dat", "editor.js?x", "%65ditor.js", "page.html"}) {
    EXPECT_EQ(get(name).status, 404) << name;
    EXPECT_EQ(post(name, "{}").status, std::string_view(name) == "edit" ? 400 : 404) << name;
  }
}

TEST_F(EditorSite, GivesTheListAndItsState) {
  const json answer = json::parse(get("list").body);

  EXPECT_EQ(answer["list"]["services"].size(), 4U);
  EXPECT_EQ(answer["list"]["favourite_groups"], 2);
  EXPECT_EQ(answer["state"], json::parse(get("state").body));
  EXPECT_EQ(answer["state"]["file"].as_string(), path());
  EXPECT_TRUE(answer["state"]["is_saved"].as_bool());
  EXPECT_TRUE(answer["state"]["left"].is_null());
}

TEST_F(EditorSite, AnswersAnEditWithWhatChanged) {
  const json answer = call("edit", {{"edits", json::array({json::array({"rename", "News", "it's \"news\""})})}});

  const json &update = answer["update"];
  EXPECT_EQ(update.size(), 1U);
  const json &changed = update["services"]["elements"];
  EXPECT_EQ(changed.size(), 1U);
  EXPECT_EQ(changed[0][0], 0);
  EXPECT_EQ(changed[0][1][0], "it's \"news\"");
  EXPECT_FALSE(answer["state"]["is_saved"].as_bool());
  EXPECT_EQ(session->unsaved_lines(), "rename News \"it's \\\"news\\\"\"\n");
}

TEST_F(EditorSite, GivesAWholePartOfAnotherLength) {
  const json answer = edit("remove Films");

  EXPECT_EQ(answer["update"]["services"]["all"].size(), 3U);
}

// A page that puts every update in its place has the list as it is.
TEST_F(EditorSite, UpdatesBringAPageToTheListAsItIs) {
  json page = json::parse(get("list").body)["list"];
  for (const char *text : {"rename News Daily", "fav new Sports", "fav add Sports Sport", "remove Films",
                           "sort --by name", "fav delete Best", "lock --where 'type=radio'"}) {
    const json answer = edit(text);
    for (const json::member &part : answer["update"].members()) {
      if (const json *all = part.value.find("all")) {
        page[part.key] = *all;
        continue;
      }
      for (const json &element : part.value["elements"].elements()) {
        page[part.key][static_cast<std::size_t>(element[0].as_integer())] = element[1];
      }
    }
    ASSERT_EQ(page, json::parse(get("list").body)["list"]) << text;
  }
}

TEST_F(EditorSite, RefusesWhatCannotBeDone) {
  const std::string asked = R"({"revision": 1, "text": "lock Nobody"})";

  const http_answer answer = post("edit", asked);

  EXPECT_EQ(answer.status, 409);
  EXPECT_EQ(error_in(answer), "no service has the number, the name or the identity \"Nobody\"");
}

TEST_F(EditorSite, RefusesPagesThatShowAnotherList) {
  edit("lock News");

  const http_answer answer = post("edit", R"({"revision": 1, "text": "lock Films"})");

  EXPECT_EQ(answer.status, 412);
  EXPECT_EQ(session->unsaved_lines(), "lock News\n");
}

TEST_F(EditorSite, RefusesBodiesThatItCannotRead) {
  for (const char *body :
       {"", "{", "[]", "null", "{}", R"({"revision": "1", "text": "lock News"})", R"({"revision": 1})",
        R"({"revision": 1, "text": 7})", R"({"revision": 1, "edits": [["lock", 1]]})", "\xff\xfe"}) {
    const http_answer answer = post("edit", body);
    EXPECT_EQ(answer.status, 400) << body << answer.body;
    EXPECT_TRUE(session->is_saved()) << body;
  }
}

TEST_F(EditorSite, AnEditWithoutWordsChangesNothing) {
  const http_answer answer = post("edit", R"({"revision": 1, "edits": [[]]})");

  EXPECT_EQ(answer.status, 200) << answer.body;
  EXPECT_EQ(json::parse(answer.body)["is_changed"], false);
  EXPECT_TRUE(session->is_saved());
}

TEST_F(EditorSite, RefusesNamesThatWouldBreakALineInTwo) {
  const http_answer answer = post("edit", R"({"revision": 1, "edits": [["rename", "News", "a\nremove Films"]]})");

  EXPECT_EQ(answer.status, 409);
  EXPECT_EQ(error_in(answer), "a word has a line break in it");
  EXPECT_TRUE(session->is_saved());
}

TEST_F(EditorSite, KnowsWhenAPageAskedLast) {
  const auto start = site->last_asked();
  std::this_thread::sleep_for(std::chrono::milliseconds(2));

  EXPECT_EQ(site->refusal({"GET", "/other/state", {{"Host", "127.0.0.1:8080"}}, ""})->status, 403);
  EXPECT_EQ(site->last_asked(), start);
  EXPECT_FALSE(site->refusal({"GET", "/token/state", {{"Host", "127.0.0.1:8080"}}, ""}));
  EXPECT_GT(site->last_asked(), start);
}

TEST_F(EditorSite, UndoesAndDoesAgain) {
  edit("rename News Daily");

  call("undo", json::object());
  EXPECT_EQ(session->list().services[0].name, "News");
  call("redo", json::object());
  EXPECT_EQ(session->list().services[0].name, "Daily");
}

TEST_F(EditorSite, FindsServicesByConditions) {
  EXPECT_EQ(call("find", {{"where", "type=radio or name=Sport"}})["services"], json::array({2, 3}));
  EXPECT_EQ(call("find", {{"where", "number>2"}})["services"], json::array({2, 3}));
  EXPECT_EQ(call("find", {{"where", "favourites=Kids"}})["services"], json::array({3}));
  EXPECT_EQ(post("find", R"({"where": "colour=red"})").status, 409);
}

TEST_F(EditorSite, ShowsChangesAsADryRunDoes) {
  edit("rename News Daily");

  const json answer = call("changes", json::object());

  EXPECT_EQ(answer["lines"], "rename News Daily\n");
  EXPECT_EQ(answer["changes"],
            json::parse(R"json([[0, "0 services added, 0 removed, 1 changed; 0 differences around the services"],
                            [0, "Changed:"], [1, "\"Daily\" (1:1:100:11000000H:1)"],
                            [2, "name: \"News\" -> \"Daily\""]])json"));
}

TEST_F(EditorSite, PreviewsLinesAndDoesNothing) {
  const json answer = call("preview", {{"text", "lock --where type=TV"}});

  EXPECT_EQ(answer["chosen"], 3);
  EXPECT_TRUE(session->is_saved());
}

TEST_F(EditorSite, Saves) {
  edit("rename News Daily");

  const json answer = call("save", json::object());

  EXPECT_TRUE(answer["state"]["is_saved"].as_bool());
  EXPECT_EQ(read_file(path("list.dat.bak")), before.data);
}

TEST_F(EditorSite, TellsWhatAnEditTakes) {
  const json form = call("form", {{"edit", "order"}});

  EXPECT_EQ(form["summary"].as_string(), "Give a list the order of another one");
  const json &like = form["options"][0];
  EXPECT_EQ(like["name"].as_string(), "--like");
  EXPECT_EQ(like["kind"].as_string(), "file");
  EXPECT_TRUE(like["is_required"].as_bool());
  const json options = form["options"];
  const auto rest =
      std::ranges::find_if(options.elements(), [](const json &each) { return each["name"].as_string() == "--rest"; });
  ASSERT_NE(rest, options.elements().end());
  EXPECT_EQ((*rest)["kind"].as_string(), "choice");
  EXPECT_EQ((*rest)["value"].as_string(), "append");
  EXPECT_EQ((*rest)["choices"][0][0].as_string(), "keep");
  EXPECT_EQ((*rest)["choices"][0][1].as_string(), "stay at their positions, the others around them");
  EXPECT_EQ(post("form", R"({"edit": "nothing"})").status, 409);
}

TEST_F(EditorSite, TakesFilesThatEditsRead) {
  const std::string first = call("take-file", {{"name", "a.txt"}, {"at", 0}, {"bytes", "aGVs"}})["path"].as_string();
  const std::string second = call("take-file", {{"name", "a.txt"}, {"at", 3}, {"bytes", "bG8="}})["path"].as_string();

  EXPECT_EQ(first, second);
  EXPECT_EQ(read_file(first), "hello");
  for (const char *bytes : {"aGVs!", "aGV", "aGV*", "aGVsbG9="}) {
    EXPECT_EQ(post("take-file", json{{"name", "b"}, {"at", 0}, {"bytes", bytes}}.dump()).status, 409) << bytes;
  }
  EXPECT_EQ(post("take-file", R"({"name": "b", "at": -1, "bytes": ""})").status, 409);
  EXPECT_EQ(post("take-file", R"({"name": "b"})").status, 400);
}

TEST_F(EditorSite, TellsThatTheFileIsDamaged) {
  EXPECT_TRUE(json::parse(get("state").body)["damage"].is_null());
  write_file(path("short.dat"), before.data.substr(0, 500));
  list_session damaged(path("short.dat"));
  editor_site other(damaged, site_door("token", 8080));

  const http_answer answer = other.answer({"GET", "/token/state", {}, ""});

  EXPECT_EQ(json::parse(answer.body)["damage"].as_string(),
            path("short.dat") + ": ends too early for a channel file of version 10");
}

}  // namespace edit_test
