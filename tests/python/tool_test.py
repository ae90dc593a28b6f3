"""How `chlist` is found and run, and what is made of answers that it should not give."""

from __future__ import annotations

import json
import os
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

from channel_list import CommandError, ToolError, compare, preview_merge, run_tool, tool, tool_path
from support import CURRENT, ListTest


class Finding(unittest.TestCase):
    def setUp(self) -> None:
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.enterContext(mock.patch.dict(os.environ, {"PATH": str(self.folder / "bin")}))
        self.enterContext(mock.patch.object(tool, "__file__", str(self.folder / "tree/python/channel_list/tool.py")))
        os.environ.pop("CHLIST", None)

    def make_tool(self, path: str) -> str:
        file = self.folder / path
        file.parent.mkdir(parents=True)
        file.touch(mode=0o755)
        return str(file)

    def test_the_environment_comes_first_then_the_source_tree_then_the_path(self) -> None:
        in_path = self.make_tool("bin/chlist")
        self.assertEqual(tool_path(), in_path)
        built = self.make_tool("tree/build/release/bin/chlist")
        self.assertEqual(tool_path(), built)
        with mock.patch.dict(os.environ, {"CHLIST": "/named/chlist"}):
            self.assertEqual(tool_path(), "/named/chlist")

    def test_without_a_tool_the_variable_that_names_it_is_told(self) -> None:
        with self.assertRaisesRegex(ToolError, "^chlist is not installed: CHLIST can name the program's file$"):
            run_tool("info", CURRENT)

    def test_a_tool_that_is_not_there_cannot_be_run(self) -> None:
        with mock.patch.dict(os.environ, {"CHLIST": "/named/chlist"}):
            with self.assertRaisesRegex(ToolError, "^/named/chlist: No such file or directory$"):
                run_tool("info", CURRENT)


class Answers(unittest.TestCase):
    """Programs in the tool's place."""

    def setUp(self) -> None:
        folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.program = folder / "chlist"
        self.enterContext(mock.patch.dict(os.environ, {"CHLIST": str(self.program)}))

    def answer_with(self, text: str, ending: str = "sys.exit(0)") -> None:
        self.program.write_text(f"#!{sys.executable}\nimport os, sys\nprint({text!r}, flush=True)\n{ending}\n")
        self.program.chmod(0o755)

    def assert_refused(self, reason: str) -> None:
        with self.assertRaises(ToolError) as refusal:
            preview_merge(CURRENT, CURRENT)
        self.assertEqual(str(refusal.exception).removeprefix(f"{self.program}: "), reason)

    def test_a_program_without_a_document_is_told_with_its_message(self) -> None:
        self.answer_with("usage", "print('no such option', file=sys.stderr); sys.exit(64)")
        self.assert_refused("ended with 64 and no document: no such option")

    def test_a_program_that_is_killed_has_not_answered(self) -> None:
        self.answer_with("", "os.kill(os.getpid(), 9)")
        self.assert_refused("ended with -9 and no document")
        self.answer_with('{"schema": 1}', "os.kill(os.getpid(), 9)")
        self.assert_refused("ended with -9 behind its document")

    def test_another_schema_is_not_read(self) -> None:
        for document in ('{"schema": 2}', '{"kept": 1}', "[1]"):
            with self.subTest(document):
                self.answer_with(document)
                self.assert_refused("its documents are not of schema 1: not the tool that this package is for")

    def test_a_document_without_a_key_is_refused(self) -> None:
        self.answer_with('{"schema": 1, "file": "a"}')
        self.assert_refused("chlist tells no 'scan'")

    def test_a_value_of_another_type_is_refused(self) -> None:
        moved = {"name": "News", "net_index": "1", "polarisation": "H"}
        for key, value, reason in (
            ("file", 1, "'file' as 1, which is no str"),
            ("kept", True, "'kept' as True, which is no int"),
            ("added", {}, "'added' as {}, which is no list"),
            ("moved", [1], "'moved' as 1, which is no dict"),
            ("moved", [moved], "'net_index' as '1', which is no int"),
        ):
            told = {"schema": 1, "file": "a", "scan": "b", "output": None, "kept": 1, "added": [], "removed": []}
            told |= {"missing": [], "moved": [], "renamed": [], "doubtful": [], "notes": []}
            with self.subTest(reason):
                self.answer_with(json.dumps(told | {key: value}))
                self.assert_refused(f"chlist tells {reason}")

    def test_more_keys_than_are_known_are_no_fault(self) -> None:
        nothing = '{"added": [], "removed": [], "changed": [], "others": [], "more": 1}'
        told = f'{{"schema": 1, "before_file": "a", "after_file": "b", "is_changed": false, "differences": {nothing}'
        self.answer_with(told + ', "notes": [], "more": 1}')
        self.assertEqual(compare(CURRENT, CURRENT).document["more"], 1)


@unittest.skipUnless("CHLIST" in os.environ, "chlist is not built")
class AnyCommand(ListTest):
    def test_any_command_gives_its_document(self) -> None:
        self.assertEqual(run_tool("info", CURRENT)["services"], 8)
        self.assertEqual(run_tool("fav list", CURRENT)["schema"], 1)
        (self.folder / "a.dat").write_bytes(CURRENT.read_bytes())
        self.assertTrue(run_tool("apply", self.folder / "a.dat", "-", text="fav new Evening\n")["is_changed"])

    def test_a_command_that_is_refused_says_which_and_why(self) -> None:
        with self.assertRaises(CommandError) as refusal:
            run_tool("fav new", CURRENT)
        error = refusal.exception
        self.assertEqual((error.command, error.kind), ("fav new", "usage"))
        self.assertEqual(str(error), error.message)
        with self.assertRaises(CommandError) as refusal:
            run_tool("info", self.folder / "none")
        error = refusal.exception
        self.assertEqual((error.command, error.kind), ("info", "failure"))
        self.assertEqual(error.message, f"{self.folder}/none: No such file or directory")


if __name__ == "__main__":
    unittest.main()
