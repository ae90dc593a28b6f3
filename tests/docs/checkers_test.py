#!/usr/bin/env python3
"""The checkers of the pages find what they are there to find: each is shown pages with one fault."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
COMPILER = os.environ.get("CC", "cc")
ROOT = pathlib.Path(sys.argv.pop()).resolve() if len(sys.argv) > 1 else HERE.parent.parent


def run(checker, *arguments):
    done = subprocess.run([sys.executable, str(HERE / checker), *map(str, arguments)], capture_output=True, text=True)
    return done.returncode, done.stderr


class InterfaceDocs(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.addCleanup(self.scratch.cleanup)
        self.root = pathlib.Path(self.scratch.name)
        for folder in ("include", "channel", "base"):
            shutil.copytree(ROOT / folder, self.root / folder)

    def complaint(self, header, before, after, *options):
        path = self.root / "include/channel" / header
        text = path.read_text()
        self.assertIn(before, text)
        path.write_text(text.replace(before, after, 1))
        code, printed = run("interface_docs.py", self.root, *options)
        self.assertEqual(code, 1)
        return printed.strip()

    def test_passes_the_headers_as_they_are(self):
        self.assertEqual(run("interface_docs.py", self.root, "--compiler", COMPILER), (0, ""))

    def test_finds_a_parameter_without_a_word(self):
        self.assertEqual(self.complaint("groups.h", " * @param id group id.\n", ""),
                         "groups.h: get_group_st_by_id: parameter id is not documented")

    def test_finds_a_parameter_that_is_named_and_not_described(self):
        self.assertEqual(self.complaint("groups.h", " * @param id group id.\n", " * @param id\n"),
                         "groups.h: get_group_st_by_id: nothing is said of id")

    def test_finds_a_parameter_that_does_not_exist(self):
        self.assertEqual(self.complaint("groups.h", " * @param id group id.\n", " * @param id,name group id.\n"),
                         "groups.h: get_group_st_by_id: parameter name does not exist")

    def test_finds_a_missing_result(self):
        self.assertEqual(self.complaint("groups.h", " * @return the genre, owned by the list, or null.\n", ""),
                         "groups.h: find_genre_id: no result is documented")

    def test_finds_a_result_of_a_function_that_has_none(self):
        self.assertEqual(self.complaint("return_channels.h", " * Empties the history.\n", " * Empties the history.\n"
                                        " * @return 0.\n"),
                         "return_channels.h: init_return_channel: a result is documented, and there is none")

    def test_finds_missing_log_lines(self):
        self.assertEqual(self.complaint("groups.h", " * @logs 2: the id of a genre.\n", ""),
                         "groups.h: set_group_id: no log lines are documented")

    def test_finds_a_level_that_the_source_writes_at(self):
        self.assertEqual(self.complaint("groups.h", " * @logs 2: the id of a genre.\n", " * @logs none.\n"),
                         "groups.h: set_group_id: level 2 of its log lines is not documented")

    def test_finds_a_missing_brief(self):
        self.assertEqual(self.complaint("groups.h", " * The first genre with an id.\n *\n", ""),
                         "groups.h: find_genre_id: no brief sentence")

    def test_finds_a_function_without_a_comment(self):
        self.assertEqual(self.complaint("groups.h", " */\nint save_group_list", " */\nint8_t x;\nint save_group_list"),
                         "groups.h: save_group_list has no comment")

    def test_finds_a_function_outside_its_family(self):
        self.assertEqual(self.complaint("moving.h", "\n/** @} */\n", "") .splitlines()[0],
                         "moving.h: no group of the family's name")

    def test_finds_a_family_that_does_not_lead_to_the_rules(self):
        self.assertEqual(self.complaint("moving.h", '@ref rules "rules of every call"', "rules"),
                         "moving.h: the family's page does not lead to the rules of every call")

    def test_finds_an_example_that_does_not_compile(self):
        printed = self.complaint("moving.h", "move_channel(0, 2, third_and_fifth);", "move_channel(0, 2);",
                                 "--compiler", COMPILER)
        self.assertEqual(printed.splitlines()[0], "an example in a header does not compile:")


class ObservedLevels(unittest.TestCase):
    def complaint(self, observed):
        with tempfile.TemporaryDirectory() as scratch:
            path = pathlib.Path(scratch) / "observed.txt"
            path.write_text(observed)
            return run("interface_docs.py", ROOT, "--observed", path)

    def test_passes_levels_that_a_function_names(self):
        self.assertEqual(self.complaint("save_group_list 0 2\nfind_genre_id\n"), (0, ""))

    def test_passes_levels_that_a_function_refers_to(self):
        self.assertEqual(self.complaint("check_skip_channel_index 0 5\nv7_load_channel 0 2 3\n"), (0, ""))

    def test_finds_a_level_that_nobody_names(self):
        self.assertEqual(self.complaint("find_genre_id 3\n"),
                         (1, "find_genre_id: was seen to write at level 3, which its log lines do not name\n"))


class SitePages(unittest.TestCase):
    """A site of one family with one function, one page, and one guide."""

    FAMILY = '<a href="rules.html">rules</a><a id="a1"></a>'
    SIDEBAR = '["index.html", "md_docs_guides_host.html", "group__moving.html"]'
    TAG = """<tagfile><compound kind="group"><name>moving</name><member kind="function"><name>move_channel</name>
             <anchor>a1</anchor></member></compound></tagfile>"""

    def complaint(self, **changed):
        pages = {"channel/exports.txt": "# moving.h\nmove_channel\n", "docs/README.md": "# Site\n",
                 "docs/guides/host.md": "# Host\n", "site/channel.tag": self.TAG, "site/html/index.html": "",
                 "site/html/rules.html": "", "site/html/md_docs_guides_host.html": "",
                 "site/html/navtreedata.js": self.SIDEBAR, "site/html/group__moving.html": self.FAMILY}
        with tempfile.TemporaryDirectory() as scratch:
            root = pathlib.Path(scratch)
            for name, text in pages.items():
                path = root / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(changed.get(path.stem, text))
            return run("site_pages.py", root, root / "site")

    def test_passes_a_whole_site(self):
        self.assertEqual(self.complaint(), (0, ""))

    def test_finds_a_function_that_its_page_does_not_show(self):
        self.assertEqual(self.complaint(group__moving='<a href="rules.html">rules</a>'),
                         (1, "group__moving.html does not show move_channel\n"))

    def test_finds_a_family_that_does_not_lead_to_the_rules(self):
        self.assertEqual(self.complaint(group__moving='<a id="a1"></a>'),
                         (1, "group__moving.html does not lead to the rules of every call\n"))

    def test_finds_a_guide_that_the_sidebar_forgets(self):
        self.assertEqual(self.complaint(navtreedata='["index.html"]'),
                         (1, "the sidebar does not lead to docs/guides/host.md\n"))

    def test_finds_a_link_in_the_sidebar_that_was_not_resolved(self):
        self.assertEqual(self.complaint(navtreedata=self.SIDEBAR + "@ref x"),
                         (1, "the sidebar holds a link that leads nowhere\n"))

    def test_finds_a_link_to_a_page_that_is_not_there(self):
        self.assertEqual(self.complaint(rules='<a href="gone.html#x">gone</a>'),
                         (1, "rules.html leads to gone.html, which is not there\n"))

    def test_finds_what_is_fetched_from_the_network(self):
        self.assertEqual(self.complaint(rules='<script src="https://example.org/x.js"></script>'),
                         (1, "rules.html fetches something from the network\n"))


class GuideBlocks(unittest.TestCase):
    def complaint(self, page):
        with tempfile.TemporaryDirectory() as scratch:
            root = pathlib.Path(scratch)
            (root / "program.c").write_text("int main(void) { return 0; }\n")
            (root / "guide.md").write_text(page)
            return run("guide_blocks.py", root / "guide.md", "--root", root)

    def test_passes_a_program_as_it_is(self):
        page = "<!-- program.c -->\n```c\nint main(void) { return 0; }\n```\n\n```console\n$ true\n```\n"
        self.assertEqual(self.complaint(page), (0, ""))

    def test_finds_a_program_that_is_another(self):
        self.assertEqual(self.complaint("<!-- program.c -->\n```c\nint main(void) { return 1; }\n```\n"),
                         (1, "guide.md does not show its programs as they are; --update mends it\n"))

    def test_finds_a_program_without_a_file(self):
        self.assertEqual(self.complaint("\n```cpp\nint main() {}\n```\n"),
                         (1, "guide.md:2: no comment names the file that this program is\n"))

    def test_finds_a_kind_of_block_that_nothing_checks(self):
        self.assertEqual(self.complaint("```rust\nfn main() {}\n```\n"),
                         (1, "guide.md:1: blocks of the kind 'rust' are not checked\n"))


if __name__ == "__main__":
    unittest.main()
