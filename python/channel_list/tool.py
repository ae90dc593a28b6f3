"""Runs `chlist` and takes its answers: a JSON document for each command, of the one schema that is read here.

The rules of other formats, edits, differences and rescue are the tool's; none of them is written here a second time.
"""

from __future__ import annotations

import json
import os
import shutil
import subprocess
from collections.abc import Mapping
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Final

from .errors import CommandError, ToolError

TOOL: Final = "chlist"
ENVIRONMENT_VARIABLE: Final = "CHLIST"

_SCHEMA: Final = 1
_DONE: Final = 0
_DONE_WITH_FINDINGS: Final = 1

_Path = str | os.PathLike[str]


@dataclass(frozen=True, slots=True)
class Answer:
    """What a command told: its document, and whether it ended with something to report (exit code 1)."""

    document: dict[str, Any]
    has_findings: bool


def tool_path() -> str:
    """Where `chlist` is run from.

    The environment variable CHLIST, which names the file; else the release build of the source tree that this package
    stands in; else what the system finds in PATH.

    Raises:
        ToolError: there is none.
    """
    built = Path(__file__).resolve().parents[2] / "build/release/bin" / TOOL
    found = os.environ.get(ENVIRONMENT_VARIABLE) or (str(built) if built.is_file() else shutil.which(TOOL))
    if not found:
        raise ToolError(f"{TOOL} is not installed: {ENVIRONMENT_VARIABLE} can name the program's file")
    return found


def run_tool(command: str, *words: _Path, text: str = "") -> dict[str, Any]:
    """Runs any command of `chlist` and gives its document, whose keys docs/json.md names.

        run_tool("check", "channels.dat")["error_count"]

    Args:
        command: the words that call it, "info" or "fav list".
        words: its arguments and options, each a word of its own.
        text: what it reads from standard input.

    Raises:
        ToolError: `chlist` cannot be run, or does not answer as the one that this package is for.
        CommandError: it refused the command.
    """
    return ask(command, *words, text=text).document


def ask(command: str, *words: _Path, text: str = "", names: Mapping[str, str] | None = None) -> Answer:
    """Runs a command as run_tool() does, and tells how it ended.

    Args:
        names: what the document calls files that the caller knows under another name.
    """
    path = tool_path()
    try:
        call = [path, *command.split(), "--json", *words]
        done = subprocess.run(call, input=text.encode(), capture_output=True, check=False)
    except OSError as error:
        raise ToolError(f"{path}: {error.strerror}") from error
    document = _document(path, done, names or {})
    if "error" in document:
        raise CommandError(**document["error"])
    return Answer(document, done.returncode == _DONE_WITH_FINDINGS)


def _document(path: str, done: subprocess.CompletedProcess[bytes], names: Mapping[str, str]) -> dict[str, Any]:
    text = done.stdout.decode(errors="replace")
    for name, shown in names.items():
        text = text.replace(_in_json(name), _in_json(shown))
    try:
        document = json.loads(text)
    except json.JSONDecodeError as error:
        told = done.stderr.decode(errors="replace").strip()
        raise ToolError(f"{path}: ended with {done.returncode} and no document{told and ': ' + told}") from error
    if not isinstance(document, dict) or document.get("schema") != _SCHEMA:
        raise ToolError(f"{path}: its documents are not of schema {_SCHEMA}: not the tool that this package is for")
    if "error" not in document and done.returncode not in (_DONE, _DONE_WITH_FINDINGS):
        raise ToolError(f"{path}: ended with {done.returncode} behind its document")
    return document


def _in_json(text: str) -> str:
    return json.dumps(text, ensure_ascii=False)[1:-1]
