// A list while it is edited: steps, undo and redo, the journal beside it, saving, and files that others write
// meanwhile.
#include "chlist/serve/list_session.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "chlist/files/faithful_load.h"
#include "tool/edit/edit_host.h"

namespace edit_test {

namespace fs = std::filesystem;

using chlist::list_session;

std::string image_in_memory() { return chlist::image_of(*get_channel_list()); }

class ListSession : public edit_host {
 protected:
  void SetUp() override {
    edit_host::SetUp();
    session = std::make_unique<list_session>(path());
  }

  // As after a crash: nothing is ended, everything is read again.
  void crash() {
    const std::string journal = fs::exists(journal_path()) ? read_file(journal_path()) : "";
    const std::string image = fs::exists(image_path()) ? read_file(image_path()) : "";
    session.reset();
    write_file(journal_path(), journal);
    if (!image.empty()) {
      write_file(image_path(), image);
    }
    session = std::make_unique<list_session>(path());
  }

  [[nodiscard]] std::vector<std::string> names_in_all() const {
    std::vector<std::string> names;
    for (const chlist::line_up_entry &entry : session->list().view(chlist::view_kind::all).entries) {
      if (entry.service != chlist::nowhere) {
        names.push_back(session->list().services[entry.service].name);
      }
    }
    return names;
  }

  static std::string error_of(const std::function<void()> &call) {
    try {
      call();
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "";
  }

  [[nodiscard]] std::string journal_path() const { return path() + ".edits"; }
  [[nodiscard]] std::string image_path() const { return journal_path() + ".list"; }
  [[nodiscard]] std::string journal() const {
    const std::string text = read_file(journal_path());
    return text.substr(text.find('\n') + 1);
  }

  [[nodiscard]] std::vector<std::string> lines_left() const {
    std::vector<std::string> lines;
    for (const chlist::edit_step &step : session->left()->steps) {
      lines.push_back(step.lines);
    }
    return lines;
  }

  // What a search found: Films is gone, a new service is there.
  static bytes scanned_list() {
    channel_file file;
    file.service(news).service({.service_id = 7, .name = "Nature"}).service(music).service(sport);
    return file.data;
  }

  std::unique_ptr<list_session> session;
};

TEST_F(ListSession, BeginsWithTheListOfTheFile) {
  EXPECT_EQ(image_in_memory(), before.data);
  EXPECT_TRUE(session->is_saved());
  EXPECT_FALSE(session->can_undo());
  EXPECT_FALSE(session->can_redo());
  EXPECT_EQ(session->changes().size(), 0U);
  EXPECT_EQ(journal(), "");
}

TEST_F(ListSession, DoesEditLinesAndTellsWhatChanged) {
  const std::size_t revision = session->revision();

  session->apply("rename News \"News 24\"\n# a comment\n\nlock Films\n");

  EXPECT_EQ(session->list().services[0].name, "News 24");
  EXPECT_FALSE(session->is_saved());
  EXPECT_NE(session->revision(), revision);
  EXPECT_EQ(session->changes().size(), 2U);
  EXPECT_EQ(session->unsaved_lines(), "rename News \"News 24\"\nlock Films\n");
  expect_bytes(before.data);
}

TEST_F(ListSession, DoesAllLinesOrNone) {
  EXPECT_EQ(error_of([&] { session->apply("rename News \"News 24\"\nlock Nobody"); }),
            "edit:2: no service has the number, the name or the identity \"Nobody\"");

  EXPECT_EQ(image_in_memory(), before.data);
  EXPECT_TRUE(session->is_saved());
  EXPECT_FALSE(session->can_undo());
  EXPECT_EQ(journal(), "");
}

TEST_F(ListSession, NamesNoLineWhenThereIsOne) {
  EXPECT_EQ(error_of([&] { session->apply("lock Nobody"); }),
            "no service has the number, the name or the identity \"Nobody\"");
}

TEST_F(ListSession, MakesNoStepOfWhatChangesNothing) {
  session->apply("rename News News");
  session->apply("# nothing");

  EXPECT_FALSE(session->can_undo());
}

TEST_F(ListSession, ShowsWhatWouldChangeAndChangesNothing) {
  const chlist::step_outcome outcome = session->preview("lock --where 'type=TV'");

  EXPECT_EQ(outcome.chosen, 3U);
  EXPECT_EQ(outcome.changes.size(), 3U);
  EXPECT_EQ(image_in_memory(), before.data);
  EXPECT_FALSE(session->can_undo());
}

TEST_F(ListSession, UndoesAndDoesAgainWithoutEnd) {
  std::vector<std::string> states = {image_in_memory()};
  for (int i = 0; i < 100; ++i) {
    session->apply(fmt::format("rename 1 \"News {}\"", i));
    states.push_back(image_in_memory());
  }

  for (std::size_t i = states.size() - 1; i > 0; --i) {
    ASSERT_EQ(image_in_memory(), states[i]) << i;
    session->undo();
  }
  EXPECT_EQ(image_in_memory(), before.data);
  EXPECT_EQ(journal(), "");
  EXPECT_TRUE(session->is_saved());
  for (std::size_t i = 1; i < states.size(); ++i) {
    session->redo();
    ASSERT_EQ(image_in_memory(), states[i]) << i;
  }
  EXPECT_EQ(error_of([&] { session->redo(); }), "there is nothing to redo");
}

TEST_F(ListSession, ForgetsWhatWasUndoneWithANewStep) {
  session->apply("lock News");
  session->apply("lock Films");
  session->undo();

  session->apply("skip Music");

  EXPECT_FALSE(session->can_redo());
  EXPECT_EQ(journal(), "lock News\n\nskip Music\n\n");
}

TEST_F(ListSession, SavesTheFileAndKeepsWhatItWas) {
  session->apply("rename News \"News 24\"");

  session->save();

  EXPECT_TRUE(session->is_saved());
  EXPECT_EQ(read_file(path()), image_in_memory());
  EXPECT_EQ(read_file(path("list.dat.bak")), before.data);
  EXPECT_EQ(journal(), "");
  EXPECT_EQ(session->changes().size(), 0U);
}

TEST_F(ListSession, LeavesNothingBehindWhenEverythingIsSaved) {
  session->apply("lock News");
  session->save();
  session->undo();
  session->redo();

  session.reset();

  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.bak", "list.dat.history"}));
}

TEST_F(ListSession, LeavesTheJournalWhenSomethingIsNotSaved) {
  session->apply("lock News");

  session.reset();

  EXPECT_EQ(journal(), "lock News\n\n");
  expect_bytes(before.data);
}

TEST_F(ListSession, OffersWhatWasNotSavedAgain) {
  session->apply("lock News\nskip Films");
  session->apply("rename Music Jazz");
  const std::string image = image_in_memory();

  crash();

  ASSERT_NE(session->left(), nullptr);
  EXPECT_EQ(lines_left(), (std::vector<std::string>{"lock News\nskip Films", "rename Music Jazz"}));
  EXPECT_TRUE(session->is_left_of_this_list());
  EXPECT_EQ(image_in_memory(), before.data);
  EXPECT_EQ(session->take_left(), std::vector<std::string>());
  EXPECT_EQ(image_in_memory(), image);
  EXPECT_EQ(session->left(), nullptr);
  session->undo();
  session->undo();
  EXPECT_EQ(image_in_memory(), before.data);
}

TEST_F(ListSession, KeepsWhatWasLeftUntilSomebodyAnswers) {
  session->apply("lock News");
  crash();

  EXPECT_NE(error_of([&] { session->apply("lock Films"); }), "");
  crash();

  ASSERT_NE(session->left(), nullptr);
  session->drop_left();
  EXPECT_EQ(session->left(), nullptr);
  session->apply("lock Films");
  EXPECT_EQ(journal(), "lock Films\n\n");
}

TEST_F(ListSession, LeavesAStepOutThatWasCutOffInTheMiddle) {
  session->apply("lock News");
  session->apply("rename Music Jazz");
  const std::string whole = read_file(journal_path());

  for (std::size_t length = whole.size() - std::string("rename Music Jazz\n\n").size(); length < whole.size();
       ++length) {
    session.reset();
    write_file(journal_path(), whole.substr(0, length));
    session = std::make_unique<list_session>(path());
    ASSERT_NE(session->left(), nullptr) << length;
    ASSERT_EQ(lines_left(), std::vector<std::string>{"lock News"}) << length;
  }
  session->take_left();
  session->apply("skip Films");
  EXPECT_EQ(journal(), "lock News\n\nskip Films\n\n");
}

TEST_F(ListSession, TakesAsManyOfTheOldStepsAsCanBeDone) {
  session->apply("rename News \"News 24\"");
  session->apply("lock Films");
  session.reset();
  channel_file other;
  other.service(films).entry(VIEW_ALL, films, 1).entry(VIEW_TV, films, 1);
  write_file(path(), other.data);
  session = std::make_unique<list_session>(path());

  EXPECT_FALSE(session->is_left_of_this_list());
  EXPECT_EQ(session->take_left(),
            std::vector<std::string>{"rename News \"News 24\": no service has the number, the name or the identity "
                                     "\"News\""});

  EXPECT_EQ(journal(), "lock Films\n\n");
  EXPECT_TRUE(session->list().services[0].has_flag(0x02));
}

TEST_F(ListSession, UndoesWhatWasSavedAndKeepsThatAcrossACrash) {
  session->apply("lock News");
  session->apply("lock Films");
  session->save();
  session->undo();
  session->undo();
  EXPECT_EQ(image_in_memory(), before.data);
  session->apply("rename Music Jazz");
  const std::string image = image_in_memory();

  crash();

  ASSERT_NE(session->left(), nullptr);
  EXPECT_TRUE(session->is_left_of_this_list());
  session->take_left();
  EXPECT_EQ(image_in_memory(), image);
  session->save();
  EXPECT_EQ(read_file(path()), image);
  session.reset();
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.bak", "list.dat.history"}));
}

TEST_F(ListSession, NeverOverwritesWhatSomebodyElseWrote) {
  session->apply("lock News");
  const bytes other = with(entry_at(VIEW_ALL, 0) + entry_field::major_ch_num, 2, 77);
  write_file(path(), other);

  EXPECT_TRUE(session->is_file_changed());
  EXPECT_EQ(error_of([&] { session->save(); }), path() + ": somebody else wrote it meanwhile: nothing was changed");

  expect_bytes(other);
  EXPECT_EQ(session->changes_of_file().size(), 1U);
}

TEST_F(ListSession, GoesOnFromTheFileThatSomebodyElseWrote) {
  session->apply("lock News");
  session->apply("rename Music Jazz");
  channel_file other;
  other.service(news).entry(VIEW_ALL, news, 7).entry(VIEW_TV, news, 7);
  write_file(path(), other.data);

  const std::vector<std::string> failures = session->read_again();

  EXPECT_EQ(failures, std::vector<std::string>{
                          "rename Music Jazz: no service has the number, the name or the identity \"Music\""});
  EXPECT_FALSE(session->is_file_changed());
  EXPECT_TRUE(session->list().services[0].has_flag(0x02));
  EXPECT_EQ(journal(), "lock News\n\n");
  session->save();
  EXPECT_EQ(read_file(path()), image_in_memory());
}

const std::string vdr_lines = "# my own list\n:@10 Family\n"
                              "Das Erste;ARD:11836:HC34M2O35S0:S19.2E:27500:101=2:102=deu@3:104:0:28106:1:1101:0\n"
                              "ZDF;ZDFvision:11953:HC34M2O35S0:S19.2E:27500:110=2:120=deu@3:130:0:28006:1:1079:0\n"
                              "this line is none\n";

TEST_F(ListSession, WritesAListOfAnotherFormatBackWithEveryLine) {
  write_file(path("channels.conf"), vdr_lines);
  list_session other(path("channels.conf"));

  other.apply("rename ZDF Zweites");
  other.save();

  std::string wanted = vdr_lines;
  EXPECT_EQ(read_file(path("channels.conf")), wanted.replace(wanted.find("ZDF;"), 3, "Zweites"));
  EXPECT_EQ(read_file(path("channels.conf.bak")), vdr_lines);
  EXPECT_TRUE(other.is_saved());
  other.undo();
  other.save();
  EXPECT_EQ(read_file(path("channels.conf")), vdr_lines);
}

TEST_F(ListSession, WritesOnlyTheFilesOfAFolderThatDiffer) {
  write_file(path("channels.conf"), vdr_lines);
  run({"import", "channels.conf", "-o", "all.dat"});
  run({"export", "all.dat", "-o", "enigma2", "--to", "lamedb4"});
  const std::string bouquets = read_file(path("enigma2/bouquets.tv"));
  list_session other(path("enigma2/"));

  other.apply("rename ZDF Zweites");
  other.save();

  EXPECT_EQ(other.file(), path("enigma2"));
  EXPECT_NE(read_file(path("enigma2/lamedb")).find("\nZweites\n"), std::string::npos);
  EXPECT_NE(read_file(path("enigma2/lamedb.bak")).find("\nZDF\n"), std::string::npos);
  EXPECT_EQ(read_file(path("enigma2/bouquets.tv")), bouquets);
  EXPECT_FALSE(fs::exists(path("enigma2/bouquets.tv.bak")));
  EXPECT_FALSE(other.is_file_changed());
}

TEST_F(ListSession, WritesJsonBackByteForByte) {
  run({"export", "list.dat", "-o", "list.json"});
  const std::string text = read_file(path("list.json"));
  list_session other(path("list.json"));

  other.apply("rename News Daily");
  other.save();
  EXPECT_NE(read_file(path("list.json")), text);
  other.undo();
  other.save();

  EXPECT_EQ(read_file(path("list.json")), text);
}

TEST_F(ListSession, KeepsWhatStandsBesideAChannelFileInStep) {
  write_file(path("channels.conf"), vdr_lines);
  run({"import", "channels.conf", "-o", "all.dat"});
  const std::string beside = read_file(path("all.dat.more.json"));
  list_session other(path("all.dat"));

  other.apply("remove ZDF");
  other.save();
  EXPECT_EQ(read_file(path("all.dat.more.json")).find("ZDFvision"), std::string::npos);
  other.undo();
  other.save();

  EXPECT_EQ(read_file(path("all.dat.more.json")), beside);
}

TEST_F(ListSession, KnowsWhatIsNewSinceTheBackup) {
  channel_file older;
  older.service(news).service(music);
  write_file(path("list.dat.bak"), older.data);
  session->apply("rename News Daily");
  const std::string image = image_in_memory();

  EXPECT_EQ(session->services_since_backup(), (std::vector<std::size_t>{1, 3}));

  EXPECT_EQ(image_in_memory(), image);
  fs::remove(path("list.dat.bak"));
  EXPECT_EQ(error_of([&] { static_cast<void>(session->services_since_backup()); }),
            path("list.dat.bak") + ": No such file or directory");
  EXPECT_EQ(image_in_memory(), image);
}

TEST_F(ListSession, TakesTheOrderOfAListOfAnyFormat) {
  channel_file mine;
  for (const service_data &service : {music, news}) {
    mine.service(service).entry(VIEW_ALL, service, 1);
  }
  write_file(path("mine.dat"), mine.data);
  run({"export", "mine.dat", "-o", "mine.csv"});

  session->apply("order --like " + path("mine.csv"));

  EXPECT_EQ(names_in_all(), (std::vector<std::string>{"Music", "News", "Films", "Sport"}));
  fs::remove(path("mine.csv"));
  session->apply("lock News");
  session->undo();
  session->undo();
  EXPECT_EQ(image_in_memory(), before.data);
  session->redo();
  EXPECT_EQ(names_in_all().front(), "Music");
}

TEST_F(ListSession, LeavesTheListAloneWhenAReferenceCannotBeRead) {
  run({"export", "list.dat", "-o", "mine.csv"});

  EXPECT_NE(error_of([&] { session->apply("order --like " + path("mine.csv") + "\norder --like nothing.csv"); }), "");

  EXPECT_EQ(image_in_memory(), before.data);
}

TEST_F(ListSession, MergesAScanAsOneStep) {
  write_file(path("scan.dat"), scanned_list());
  const std::string line = "merge " + path("scan.dat");

  const chlist::step_outcome shown = session->preview(line);
  EXPECT_EQ(image_in_memory(), before.data);
  ASSERT_EQ(shown.tables.size(), 1U);
  EXPECT_NE(shown.tables[0].find("1 service added, 1 deleted, 3 kept"), std::string::npos) << shown.tables[0];

  session->apply(line);
  EXPECT_EQ(names_in_all(), (std::vector<std::string>{"News", "Music", "Sport", "Nature"}));
  EXPECT_EQ(session->unsaved_lines(), line + '\n');
  session->undo();
  EXPECT_EQ(image_in_memory(), before.data);
}

TEST_F(ListSession, KeepsWhatAScanMadeAcrossACrashWithoutTheScan) {
  write_file(path("scan.dat"), scanned_list());
  session->apply("lock Sport");
  session->apply("merge " + path("scan.dat"));
  session->apply("rename Nature Wild");
  const std::string image = image_in_memory();
  fs::remove(path("scan.dat"));

  crash();

  EXPECT_EQ(session->take_left(), std::vector<std::string>());
  EXPECT_EQ(image_in_memory(), image);
  session->save();
  session.reset();
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.bak", "list.dat.history"}));
}

TEST_F(ListSession, MergesAgainWhenTheFileIsAnotherOne) {
  write_file(path("scan.dat"), scanned_list());
  session->apply("merge " + path("scan.dat"));
  channel_file other;
  other.service(news).entry(VIEW_ALL, news, 7).entry(VIEW_TV, news, 7);
  write_file(path(), other.data);

  EXPECT_EQ(session->read_again(), std::vector<std::string>());

  EXPECT_EQ(names_in_all(), (std::vector<std::string>{"News", "Nature", "Music", "Sport"}));
}

TEST_F(ListSession, KeepsWhatStandsBesideServicesThatAScanMoved) {
  write_file(path("channels.conf"), vdr_lines);
  run({"import", "channels.conf", "-o", "all.dat"});
  const std::string moved = std::string(vdr_lines).replace(vdr_lines.find("11953"), 5, "12110");
  write_file(path("moved.conf"), moved);
  run({"import", "moved.conf", "-o", "moved.dat"});
  fs::remove(path("moved.dat.more.json"));
  auto other = std::make_unique<list_session>(path("all.dat"));
  other->apply("merge " + path("moved.dat"));
  other.reset();
  EXPECT_TRUE(fs::exists(path("all.dat.edits")));

  other = std::make_unique<list_session>(path("all.dat"));
  other->take_left();
  other->save();

  EXPECT_NE(read_file(path("all.dat.more.json")).find("ZDFvision"), std::string::npos);
}

TEST_F(ListSession, OpensADamagedFileToBeSalvaged) {
  const bytes damaged = before.data.substr(0, before.data.size() - 100);
  session.reset();
  write_file(path(), damaged);

  session = std::make_unique<list_session>(path());

  EXPECT_EQ(session->damage(), path() + ": ends too early for a channel file of version 10");
  EXPECT_EQ(session->list().services.size(), 0U);
  EXPECT_TRUE(session->is_saved());
  session->apply("salvage " + path());
  EXPECT_EQ(session->list().services.size(), 3U);
  session->undo();
  EXPECT_EQ(session->list().services.size(), 0U);
  session->redo();
  session->save();
  EXPECT_EQ(session->damage(), "");
  EXPECT_EQ(read_file(path("list.dat.bak")), damaged);
  EXPECT_EQ(read_file(path()), image_in_memory());
}

TEST_F(ListSession, LeavesADamagedFileAloneThatNobodySalvages) {
  const bytes damaged = before.data.substr(0, 1000);
  session.reset();
  write_file(path(), damaged);

  session = std::make_unique<list_session>(path());
  session.reset();

  expect_bytes(damaged);
  EXPECT_EQ(files(), std::vector<std::string>{"list.dat"});
}

TEST_F(ListSession, KeepsItsEditsWhenTheFileIsDamagedMeanwhile) {
  session->apply("lock News");
  const std::string image = image_in_memory();
  write_file(path(), before.data.substr(0, 1000));

  EXPECT_EQ(error_of([&] { session->read_again(); }), path() + ": ends too early for a channel file of version 10");

  EXPECT_EQ(image_in_memory(), image);
  EXPECT_EQ(journal(), "lock News\n\n");
}

TEST_F(ListSession, TakesFilesPartByPartUntilItEnds) {
  const fs::path first = session->take_file("../scan.dat", 0, "ab");
  EXPECT_EQ(session->take_file("../scan.dat", 2, "cd"), first);
  const fs::path second = session->take_file("../scan.dat", 0, "ef");

  EXPECT_EQ(first, path("list.dat.edits.files/1-.._scan.dat"));
  EXPECT_EQ(second, path("list.dat.edits.files/2-.._scan.dat"));
  EXPECT_EQ(read_file(first.string()), "abcd");
  EXPECT_EQ(error_of([&] { session->take_file("scan.dat", 7, "gh"); }), "scan.dat: a part of it is missing");
  EXPECT_EQ(error_of([&] { session->take_file("scan.dat", 2, std::string(16U << 20U, 'x')); }),
            "scan.dat: has more than 16 MiB");
  session.reset();
  EXPECT_EQ(files(), std::vector<std::string>{"list.dat"});
}

TEST_F(ListSession, IsOpenInOneEditorAlone) {
  EXPECT_EQ(error_of([&] { const list_session second(path()); }),
            journal_path() + ": another editor has this list open");
}

TEST_F(ListSession, RefusesFilesThatNoEditTakes) {
  write_file(path("other.dat"), bytes("\x09\x00 of an earlier version", 24));

  EXPECT_EQ(error_of([&] { const list_session other(path("other.dat")); }),
            path("other.dat") + ": is of version 9, not 10: `chlist convert` makes one of it");
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.edits", "other.dat"}));
}

}  // namespace edit_test
