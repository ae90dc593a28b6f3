"""The page on the module: its scripts are the examples, and its first look shows what is printed."""

from __future__ import annotations

import contextlib
import doctest
import os
import re
import subprocess
import sys
import unittest

from support import SOURCE, ListTest, fill

PAGE = (SOURCE / "docs/python.md").read_text()
BLOCKS = re.findall(r"^```python\n(.*?)^```$", PAGE, re.MULTILINE | re.DOTALL)


class Scripts(unittest.TestCase):
    def test_the_page_shows_the_examples_as_they_are(self) -> None:
        shown = [block for block in BLOCKS if not block.startswith(">>>")]
        examples = [file.read_text() for file in (SOURCE / "examples/python").glob("*.py")]
        self.assertEqual(sorted(shown), sorted(examples))
        self.assertEqual(len(examples), 3)


class EditList(ListTest):
    """The example that edits as a table says, and tables that it refuses."""

    def setUp(self) -> None:
        super().setUp()
        fill(1)

    def assert_refused(self, table: str, reason: str) -> None:
        file, rows = self.folder / "channels.dat", self.folder / "edits.csv"
        self.channels.save(file)
        before = file.read_bytes()
        rows.write_text(table)
        command = [sys.executable, SOURCE / "examples/python/edit_list.py", "channels.dat", "edits.csv"]
        done = subprocess.run(command, cwd=self.folder, capture_output=True, text=True)
        self.assertEqual((done.stderr, done.returncode), (f"channels.dat: not changed: {reason}\n", 1))
        self.assertEqual(file.read_bytes(), before)

    def test_a_lock_is_yes_or_no(self) -> None:
        for answer in ("Yes", "true", "1"):
            with self.subTest(answer):
                self.assert_refused(
                    f"number,name,locked\n1,,{answer}\n", f"number 1: locked is yes or no, not {answer}"
                )

    def test_a_table_has_every_column(self) -> None:
        self.assert_refused("name,locked\nNews,yes\n", "edits.csv has no column number")
        self.assert_refused("number,name\n1,News\n", "edits.csv has no column locked")
        self.assert_refused("", "edits.csv has no column number")


class FirstLook(ListTest):
    @unittest.skipUnless("CHLIST" in os.environ, "chlist is not built")
    def test_the_first_look_shows_what_is_printed(self) -> None:
        looks = [block for block in BLOCKS if block.startswith(">>>")]
        self.assertEqual(len(looks), 1)
        self.channels.close()
        line_up, file = SOURCE / "samples/channels.conf", self.folder / "channels.dat"
        command = [os.environ["CHLIST"], "import", line_up, "-o", file, "--groups", "none"]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        look = doctest.DocTestParser().get_doctest(looks[0], {}, "docs/python.md", "docs/python.md", 0)
        with contextlib.chdir(self.folder):
            self.assertEqual(doctest.DocTestRunner().run(look).failed, 0)


if __name__ == "__main__":
    unittest.main()
