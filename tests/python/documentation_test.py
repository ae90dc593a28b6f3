"""The page on the module: its scripts are the examples, and its first looks show what is printed."""

from __future__ import annotations

import contextlib
import dataclasses
import doctest
import os
import re
import shutil
import subprocess
import sys
import unittest

from channel_list import reports
from support import SOURCE, ListTest, fill

PAGE = (SOURCE / "docs/python.md").read_text()
BLOCKS = re.findall(r"^```python\n(.*?)^```$", PAGE, re.MULTILINE | re.DOTALL)


class Scripts(unittest.TestCase):
    def test_the_page_shows_the_examples_as_they_are(self) -> None:
        shown = [block for block in BLOCKS if not block.startswith(">>>")]
        examples = [file.read_text() for file in (SOURCE / "examples/python").glob("*.py")]
        self.assertEqual(sorted(shown), sorted(examples))
        self.assertEqual(len(examples), 6)


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
    def test_the_first_looks_show_what_is_printed(self) -> None:
        looks = [block for block in BLOCKS if block.startswith(">>>")]
        self.assertEqual(len(looks), 2)
        self.channels.close()
        shutil.copy(SOURCE / "samples/channels.conf", self.folder)
        with contextlib.chdir(self.folder):
            import_list = [os.environ["CHLIST"], "import", "channels.conf", "-o", "channels.dat", "--groups", "none"]
            subprocess.run(import_list, check=True, stdout=subprocess.DEVNULL)
            for number, text in enumerate(looks):
                with self.subTest(number):
                    look = doctest.DocTestParser().get_doctest(text, {}, "docs/python.md", "docs/python.md", 0)
                    self.assertEqual(doctest.DocTestRunner().run(look).failed, 0)


class Reports(unittest.TestCase):
    def test_the_names_of_reports_are_keys_of_the_page_on_json(self) -> None:
        cells = re.findall(r"^\| (`.*?`) \|", (SOURCE / "docs/json.md").read_text(), re.MULTILINE)
        keys = set(re.findall(r"`(\w+)`", " ".join(cells)))
        kinds = [each for each in vars(reports).values() if dataclasses.is_dataclass(each)]
        names = {field.name for kind in kinds for field in dataclasses.fields(kind)}
        self.assertGreater(len(names), 50)
        self.assertEqual(names - keys, {"has_findings", "document"})


if __name__ == "__main__":
    unittest.main()
