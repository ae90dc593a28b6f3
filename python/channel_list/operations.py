"""What `chlist` does with files, as calls with typed answers: other formats, edits as text, merges, comparisons and
rescue.

They work on files, whatever a ChannelList holds. Where a list is only read it may be of any format: of what is no
channel file one is made for the call, in a folder that goes with it.
"""

from __future__ import annotations

import contextlib
import os
import shlex
import tempfile
from collections.abc import Iterable, Iterator, Sequence
from dataclasses import dataclass
from pathlib import Path

from .codes import EARLIER_VERSIONS, FILE_VERSION
from .errors import FileError
from .files import input_file
from .reports import Comparison, EditReport, ExportReport, ImportReport, MergeReport, SalvageReport, report_of
from .tool import Answer, ask

_Path = str | os.PathLike[str]

#: Edits as their text, or one by one: each the text of a line, or its words.
Edits = str | Iterable[str | Sequence[str]]


@dataclass(frozen=True, slots=True)
class ReadableFile:
    """A channel file to read a list from: the list's own, or one that was made of it, with the report of that."""

    path: str
    name: str
    version: int
    report: ImportReport | None = None


def import_list(
    source: _Path, output: _Path, *, format: str | None = None, like: _Path | None = None, backup: bool = True
) -> ImportReport:
    """Makes a channel file of a list of any format that `chlist import` reads.

    Args:
        source: the file, or the folder of formats that have several files.
        output: the channel file. What it cannot hold is kept beside it, in `OUTPUT.more.json`.
        format: the name of the format; else it is told by the contents.
        like: a channel file from which network indexes and the ids and order of groups are taken.
        backup: whether a channel file that is replaced is kept as `OUTPUT.bak`.

    Raises:
        ToolError, CommandError: nothing was written.
    """
    return report_of(ImportReport, _imported(source, output, format, like, backup))


def export_list(file: _Path, output: _Path, *, format: str | None = None) -> ExportReport:
    """Makes a list of another format of a channel file.

    Args:
        file: the channel file. What stands beside it in `FILE.more.json` is put back.
        output: the file to write, or the folder of formats that have several files.
        format: the name of the format; else it is told by the name of the output.

    Raises:
        ToolError, CommandError: nothing was written.
    """
    return report_of(ExportReport, ask("export", *_option("--to", format), *_option("--output", output), "--", file))


def apply_edits(
    file: _Path, edits: Edits, *, output: _Path | None = None, dry_run: bool = False, backup: bool = True
) -> EditReport:
    """Applies edits to a channel file, all or none, in their order.

        apply_edits("channels.dat", [["rename", "Meridian News 24", "News 24"], "renumber --from 1"])

    Args:
        file: the channel file, of version 10.
        edits: lines as `chlist apply` takes them. Words are quoted here; a line is taken as it stands. What --where
            chooses is changed without a question.
        output: the channel file to write instead.
        dry_run: whether to tell what would change, and write nothing.
        backup: whether what the file was is kept, in `FILE.bak` and for `chlist undo`.

    Raises:
        ToolError: nothing was written.
        CommandError: an edit cannot be read or done: the message has its line. Nothing was written.
    """
    options = [*_option("--output", output), *_flag("--dry-run", dry_run), *_flag("--no-backup", not backup)]
    return report_of(EditReport, ask("apply", "--yes", *options, "--", file, "-", text=_text_of(edits)))


def preview_merge(
    file: _Path, scan: _Path, *, keep_missing: bool = False, new_numbers: str | int = "next", force: bool = False
) -> MergeReport:
    """What merge_lists() would do; nothing is written."""
    return _merge(file, scan, keep_missing, new_numbers, force, ["--dry-run"])


def merge_lists(
    file: _Path,
    scan: _Path,
    output: _Path,
    *,
    keep_missing: bool = False,
    new_numbers: str | int = "next",
    force: bool = False,
    backup: bool = True,
) -> MergeReport:
    """Merges a new channel list of any format into a channel file.

    Args:
        file: the channel file to start from.
        scan: the new list.
        output: the channel file to write; it may be the first one.
        keep_missing: whether services stay that the new list lacks.
        new_numbers: of added services: "next", "service-id", or the number from which free ones are taken.
        force: whether to merge a list that has no service of the first one, and to delete what is in doubt.
        backup: whether the channel file that is replaced is kept, as `OUTPUT.bak` and for `chlist undo`.

    Raises:
        OSError: the new list is missing or may not be read.
        ToolError, CommandError: nothing was written.
    """
    options = [*_option("--output", output), *_flag("--no-backup", not backup)]
    return _merge(file, scan, keep_missing, new_numbers, force, options)


def compare(before: _Path, after: _Path) -> Comparison:
    """What differs between two lists of any format, version 10 of the channel file included.

    Raises:
        OSError: one of them is missing or may not be read.
        ToolError, CommandError: one of them cannot be read.
    """
    with channel_file_of(before) as first, channel_file_of(after, like=first.path) as second:
        names = {first.path: first.name, second.path: second.name}
        return report_of(Comparison, ask("diff", "--", first.path, second.path, names=names))


def salvage(damaged: _Path, output: _Path | None = None, *, like: _Path | None = None) -> SalvageReport:
    """What comes back from a damaged channel file, and what does not.

    Args:
        damaged: the file, which is only read.
        output: the channel file to write; without it there is only the report.
        like: another copy of the list, or one that is like it, with which the result is compared.

    Raises:
        ToolError, CommandError: nothing came back, and nothing was written.
    """
    with tempfile.TemporaryDirectory() as folder:
        rescued = output or Path(folder) / "rescued"
        answer = ask("salvage", *_option("--like", like), *_option("--output", rescued), "--", damaged)
    return report_of(SalvageReport, answer if output else _nothing_written(answer))


@contextlib.contextmanager
def channel_file_of(path: _Path, *, format: str | None = None, like: _Path | None = None) -> Iterator[ReadableFile]:
    """A channel file of a list of any format, for as long as the block lasts; it may be of an earlier version.

    Raises:
        OSError: the list is missing or may not be read.
        ToolError, CommandError: it cannot be read.
    """
    name = os.fspath(path)
    version = _version_of(path) if format is None else None
    if version is not None:
        yield ReadableFile(name, name, version)
        return
    with tempfile.TemporaryDirectory() as folder:
        made = os.path.join(folder, "channels.dat")
        answer = _imported(path, made, format, like)
        yield ReadableFile(made, name, FILE_VERSION, report_of(ImportReport, _nothing_written(answer)))


# None of what is no channel file.
def _version_of(path: _Path) -> int | None:
    try:
        with input_file(path) as file:
            return file.version if file.version in (FILE_VERSION, *EARLIER_VERSIONS) else None
    except FileError:
        return None


def _imported(source: _Path, output: _Path, format: str | None, like: _Path | None, backup: bool = True) -> Answer:
    options = [*_option("--from", format), *_option("--like", like), *_flag("--no-backup", not backup)]
    return ask("import", *options, *_option("--output", output), "--", source)


def _merge(
    file: _Path, scan: _Path, keep_missing: bool, new_numbers: str | int, force: bool, options: list[str]
) -> MergeReport:
    options += _option("--new-numbers", str(new_numbers))
    options += _flag("--keep-missing", keep_missing) + _flag("--force", force)
    with channel_file_of(scan, like=file) as new:
        answer = ask("merge", *options, "--", file, new.path, names={new.path: new.name})
    return report_of(MergeReport, answer)


# The answer of a command whose output went with its folder: nothing is kept anywhere.
def _nothing_written(answer: Answer) -> Answer:
    document = answer.document | {"output": None}
    if "companion" in document:
        document["companion"] = None
    return Answer(document, answer.has_findings or bool(document.get("not_carried")))


def _text_of(edits: Edits) -> str:
    if isinstance(edits, str):
        return edits
    return "".join(f"{each if isinstance(each, str) else shlex.join(each)}\n" for each in edits)


# In one word, so that a value that begins with "-" is one.
def _option(name: str, value: _Path | None) -> list[str]:
    return [] if value is None else [f"{name}={os.fspath(value)}"]


def _flag(name: str, is_set: bool) -> list[str]:
    return [name] if is_set else []
