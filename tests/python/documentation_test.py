"""The page on the module: its scripts are the examples, and its first look shows what is printed."""

from __future__ import annotations

import contextlib
import doctest
import os
import re
import subprocess
import unittest

from support import SOURCE, ListTest

PAGE = (SOURCE / "docs/python.md").read_text()
BLOCKS = re.findall(r"^```python\n(.*?)^```$", PAGE, re.MULTILINE | re.DOTALL)


class Scripts(unittest.TestCase):
    def test_the_page_shows_the_examples_as_they_are(self) -> None:
        shown = [block for block in BLOCKS if not block.startswith(">>>")]
        examples = [file.read_text() for file in (SOURCE / "examples/python").glob("*.py")]
        self.assertEqual(sorted(shown), sorted(examples))
        self.assertEqual(len(examples), 3)


class FirstLook(ListTest):
    @unittest.skipUnless("CHLIST" in os.environ, "chlist is not built")
    def test_the_first_look_shows_what_is_printed(self) -> None:
        looks = [block for block in BLOCKS if block.startswith(">>>")]
        self.assertEqual(len(looks), 1)
        self.channels.close()
        line_up, file = SOURCE / "samples/channels.conf", self.folder / "channels.dat"
        subprocess.run([os.environ["CHLIST"], "import", line_up, "-o", file], check=True, stdout=subprocess.DEVNULL)
        look = doctest.DocTestParser().get_doctest(looks[0], {}, "docs/python.md", "docs/python.md", 0)
        with contextlib.chdir(self.folder):
            self.assertEqual(doctest.DocTestRunner().run(look).failed, 0)


if __name__ == "__main__":
    unittest.main()
