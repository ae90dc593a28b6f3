"""The tool as a subject of faults: the sources of the folders that decide what chlist says and changes, tried by the
suites of the test of the same name, then by the others of their own folder of tests/tool/, then by those of the commands
that show what they do. Headers are left out: they hold little but declarations, and a fault in one would have half of the tool
compiled again."""

import functools
import itertools
import pathlib
import re

import workshop

# A folder of tools/chlist/, and what of tests/tool/ holds it: its own folder, then the commands that show what it does.
HELD_BY = {
    "fields": ("fields", "listing", "edit/set_test.cpp"),
    "line_up": ("line_up", "listing", "merge"),
    "edit": ("edit", "help_test.cpp"),
    "compare": ("compare", "listing", "merge"),
    "merge": ("merge", "help_test.cpp"),
}
TEST = re.compile(r"^(?:TYPED_)?TEST(?:_F|_P)?\((\w+),", re.MULTILINE)

# The tests start chlist by a fixed path. This stands there, and starts the one that is tried.
LAUNCHER = """#!/bin/sh
exec "${CHLIST_TRIED:-$0.built}" "$@"
"""

# The prose of the help, which people read; its words are held by no test. In front of it stands the name of its part,
# or, in a function that gives terms, the word that it explains.
PROSE = re.compile(r"""(?x)
    \.(?:about|summary|details|exit_codes)\s*=\s*(?:"(?:\\.|[^"\\])*"|[\s,{}])*$
  | std::vector<term>\s\w+\(\)\s\{(?:.|\n(?!\}))*\{"(?:\\.|[^"\\])*",\s*(?:"(?:\\.|[^"\\])*"\s*)*$""")

# Lists made at random and costs take longer than everything else of a folder together, and come last.
LONG = re.compile(r"ByChance|Cost")


@functools.cache
def suites_of(tests, is_long=False):
    """The suites of a folder of tests, or of one of its files; the long ones, or all others."""
    paths = sorted(tests.rglob("*_test.cpp")) if tests.is_dir() else [tests]
    found = sorted({suite for path in paths for suite in TEST.findall(path.read_text())})
    patterns = ":".join(f"{suite}.*:*/{suite}.*" for suite in found if bool(LONG.search(suite)) == is_long)
    name = f"{tests.stem}{', long' if is_long else ''}"
    return [workshop.Suites(name, "tool_tests", (f"--gtest_filter={patterns}",))] if patterns else []


class ToolBench(workshop.Bench):
    checks = ("-D_GLIBCXX_ASSERTIONS",)  # as dev has them: one element behind the end of a vector ends the program

    def is_program(self):
        return self.compile(self.own_objects) and all(
            self.link(f"bin/{name}", self.place / name) for name in self.shop.subject.programs)

    def surroundings(self):
        return {"CHLIST_TRIED": str(self.place / "chlist")}

    def program(self, name):
        return self.place / name


class Tool(workshop.Subject):
    lowest_rate = 90
    # Only what gets faults is compiled file by file.
    configuration = ["-DCHANNEL_BUILD_TOOLS=ON", "-DCHANNEL_UNITY=ON",
                     f"-DCHANNEL_UNITY_EXCEPT=/chlist/({'|'.join(HELD_BY)})/"]
    programs = ("tool_tests", "chlist")
    fickle = re.compile(r"Cost|Terminal|FullDisk")
    bench = ToolBench

    def files(self, tree):
        return sorted(str(path.relative_to(tree)) for folder in HELD_BY
                      for path in (tree / "tools/chlist" / folder).rglob("*.cpp"))

    def is_fault(self, mutant, source):
        if mutant.text == "capacity":  # what a string or vector sets aside is often its size, and promised by nobody
            return False
        return mutant.operator != "changed text" or not PROSE.search(source, 0, mutant.begin)

    def group(self, file):
        return pathlib.PurePath(file).parts[2]

    def suites(self, tree, file):
        tests = tree / "tests/tool"
        of_same_name = sorted(tests.glob(f"*/{pathlib.PurePath(file).stem}_test.cpp"))
        held_by = [tests / name for name in HELD_BY[self.group(file)]]
        tried = [*itertools.product(of_same_name + held_by, (False,)), *itertools.product(held_by, (True,))]
        return [suites for place, is_long in tried for suites in suites_of(place, is_long)]

    def owns(self, made):
        return pathlib.PurePath(made).parts[0] == "tools"

    def built(self, build):
        program = build / "bin/chlist"
        if not program.read_bytes().startswith(b"#!"):
            program.replace(program.with_name("chlist.built"))
            program.write_text(LAUNCHER)
            program.chmod(0o755)
