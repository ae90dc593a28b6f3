"""What the tests of both pages stand on: the program, a browser, and what keeps people out of a page."""

import functools
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

import browser

NO_BROWSER = 77
PATIENCE = 10  # seconds
CHLIST = sys.argv[1] if len(sys.argv) > 1 else ""
AXE = "axe-core@4.10.2"
RULES = ["wcag2a", "wcag2aa", "wcag21a", "wcag21aa", "wcag22aa", "best-practice"]

TEXT = "return document.querySelector(arguments[0]).textContent"
OVERFLOW = "return document.documentElement.scrollWidth - document.documentElement.clientWidth"


def open_browser():
    """A folder for a module's files and a browser, until its tests are done."""
    folder = tempfile.TemporaryDirectory(prefix="chlist-page-")
    unittest.addModuleCleanup(folder.cleanup)
    shown = browser.Browser(f"{folder.name}/profile")
    unittest.addModuleCleanup(shown.close)
    shown.visit("about:blank")
    shown.requests()  # what the browser asks for by itself
    return folder.name, shown


def run_tests():
    missing = browser.missing_programs()
    if missing:
        print(f"skipped, not installed: {', '.join(missing)}")
        sys.exit(NO_BROWSER)
    unittest.main(argv=sys.argv[:1] + sys.argv[2:])


@functools.cache
def axe_core():
    """The source of axe-core: a file that AXE_CORE names, or npm's, kept beside the build. None when neither is there."""
    folder = pathlib.Path(CHLIST).resolve().parent.parent / "npm"
    file = pathlib.Path(os.environ.get("AXE_CORE", folder / "node_modules/axe-core/axe.min.js"))
    if not file.exists():
        folder.mkdir(exist_ok=True)
        try:
            subprocess.run(["npm", "install", "--prefix", folder, "--no-save", "--ignore-scripts", "--no-audit",
                            "--no-fund", "--fetch-retries=0", AXE], check=True, capture_output=True, timeout=60)
        except (OSError, subprocess.SubprocessError) as error:
            print(f"skipped, {AXE} cannot be had from npm: {error}", file=sys.stderr)
            return None
    return file.read_text(encoding="utf-8")


class PageTest(unittest.TestCase):
    """shown: the browser, of the module that the test stands in."""

    @property
    def shown(self):
        return sys.modules[type(self).__module__].shown

    def wait_for(self, condition, *arguments):
        end = time.monotonic() + PATIENCE
        while not self.shown.run(condition, *arguments):
            self.assertLess(time.monotonic(), end, condition)
            time.sleep(0.02)

    def expect_open_to_everybody(self, situation):
        """Nothing in the page, as it is shown now, keeps anybody out."""
        source = axe_core()
        if source is None:
            self.skipTest(f"there is no {AXE}")
        if not self.shown.run("return 'axe' in window"):
            self.shown.run(f"{source}; window.axe = axe")
        found = self.shown.run_until_done(f"""const done = arguments[0];
          axe.run(document, {{ runOnly: {RULES}, resultTypes: ['violations'] }})
            .then(({{ violations }}) => done(violations.map(({{ id, nodes }}) =>
              `${{id}}: ${{nodes.map(({{ html }}) => html).slice(0, 3).join(' | ')}}`)))""")
        self.assertEqual(found, [], situation)
