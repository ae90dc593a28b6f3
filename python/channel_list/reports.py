"""What `chlist` tells, as values: the keys of its documents as docs/json.md names them, with their types.

A report has what scripts ask for; its document has everything. A document that lacks a key, or has one of another type,
is refused where it is read.
"""

from __future__ import annotations

import functools
import types
import typing
from collections.abc import Mapping
from dataclasses import MISSING, Field, dataclass, field, fields, is_dataclass
from typing import Any, TypeVar

from .errors import ToolError
from .tool import Answer
from .values import Identity


@dataclass(frozen=True, slots=True)
class Loss:
    """What another format or version cannot hold, how often, and what that means, where there is more to say."""

    what: str
    count: int
    note: str | None = None


@dataclass(frozen=True, slots=True)
class SkippedLine:
    """A line that could not be read, from 1; line 0 is the whole file."""

    line: int
    message: str


@dataclass(frozen=True, slots=True)
class GroupLeftOut:
    """A favourite group without room for all of its services, and how many of them are left out."""

    group_name: str
    services: int
    count: int


@dataclass(frozen=True, slots=True)
class NamedService:
    """A service by its name and its identity."""

    name: str
    identity: Identity


@dataclass(frozen=True, slots=True)
class Place:
    """A number in a view; the group, from 1, and its name are those of a favourite group."""

    view: str
    number: int
    group: int | None = None
    group_name: str | None = None


@dataclass(frozen=True, slots=True)
class ListedService(NamedService):
    """A service with its places in the views."""

    service_type: int
    entries: tuple[Place, ...]


@dataclass(frozen=True, slots=True)
class MovedService(NamedService):
    """A service with another identity: as it is now and as it was, and how it was found again."""

    before: NamedService
    found_by: str
    entries: tuple[Place, ...]


@dataclass(frozen=True, slots=True)
class RenamedService(NamedService):
    """A service that the new list calls otherwise."""

    new_name: str
    entries: tuple[Place, ...]


@dataclass(frozen=True, slots=True)
class DoubtfulService(NamedService):
    """A service that may have become one of several: some of those, and how many there are."""

    candidates: tuple[NamedService, ...]
    count: int
    entries: tuple[Place, ...]


@dataclass(frozen=True, slots=True)
class FieldChange:
    """A value before and after; None where there is none. A number changes in a view or a favourite group."""

    field: str
    before: Any
    after: Any
    view: str | None = None
    group: int | None = None
    group_name: str | None = None


@dataclass(frozen=True, slots=True)
class ServiceChange(NamedService):
    """A service that was added or removed, with its places, or changed, with what changed."""

    fields: tuple[FieldChange, ...]


@dataclass(frozen=True, slots=True)
class OtherChange:
    """A difference around the services: of a view, a network, a transponder, a group or a setting."""

    what: str
    change: str
    fields: tuple[FieldChange, ...]


@dataclass(frozen=True, slots=True)
class Differences:
    """What differs between two lists."""

    added: tuple[ServiceChange, ...]
    removed: tuple[ServiceChange, ...]
    changed: tuple[ServiceChange, ...]
    others: tuple[OtherChange, ...]

    def __bool__(self) -> bool:
        return bool(self.added or self.removed or self.changed or self.others)


@dataclass(frozen=True, slots=True)
class LostEntry:
    """An entry of a view, at a position from 1, whose service did not come back."""

    view: str
    position: int
    number: int
    identity: Identity
    group: int | None = None
    group_name: str | None = None


@dataclass(frozen=True, slots=True)
class LostGroup:
    """A group that did not come back: of which table, at which position, how, and how many services are in it."""

    what: str
    loss: str
    position: int | None
    group_id: int
    services: int


@dataclass(frozen=True, slots=True)
class FoundAgain:
    """What did not stand in the damaged list and was found in another copy of it."""

    what: str
    group_id: int
    name: str
    source: str


@dataclass(frozen=True, slots=True)
class Records:
    """How many records of each kind."""

    networks: int
    transponders: int
    services: int


@dataclass(frozen=True, slots=True)
class Lost:
    """What did not come back from a damaged file."""

    has_lost_settings: bool
    groups: tuple[LostGroup, ...]
    lost_entries: tuple[LostEntry, ...]
    blank_entries: int
    counted_but_missing: Records


@dataclass(frozen=True, slots=True, kw_only=True)
class Report:
    """What a command told.

    Attributes:
        has_findings: whether there is something to look at, as exit code 1 of `chlist` says.
        document: everything that it told, by the keys of docs/json.md.
    """

    has_findings: bool
    document: Mapping[str, Any] = field(repr=False, compare=False)


@dataclass(frozen=True, slots=True, kw_only=True)
class ImportReport(Report):
    """A list of another format that became a channel file: what came through and what did not.

    JSON holds a channel file whole: of that nothing is counted, and nothing can be left out.
    """

    file: str
    format: str
    output: str | None
    backup: str | None
    charset: str | None = None
    companion: str | None = None
    services: int | None = None
    tv: int | None = None
    radio: int | None = None
    favourite_groups: int | None = None
    skipped_lines: tuple[SkippedLine, ...] = ()
    groups_left_out: tuple[GroupLeftOut, ...] = ()
    left_out: tuple[Loss, ...] = ()
    not_carried: tuple[Loss, ...] = ()
    notes: tuple[str, ...] = ()


@dataclass(frozen=True, slots=True, kw_only=True)
class ExportReport(Report):
    """A channel file that became a list of another format: what does not come back from there."""

    file: str
    output: str
    format: str
    services: int
    favourite_groups: int
    left_out: tuple[Loss, ...]
    not_carried: tuple[Loss, ...]


@dataclass(frozen=True, slots=True, kw_only=True)
class EditReport(Report):
    """What edits change; output is None when nothing was written."""

    file: str
    output: str | None
    is_changed: bool
    differences: Differences
    notes: tuple[str, ...]


@dataclass(frozen=True, slots=True, kw_only=True)
class MergeReport(Report):
    """What a merge does, or would do when output is None."""

    file: str
    scan: str
    output: str | None
    kept: int
    added: tuple[ListedService, ...]
    removed: tuple[ListedService, ...]
    missing: tuple[ListedService, ...]
    moved: tuple[MovedService, ...]
    renamed: tuple[RenamedService, ...]
    doubtful: tuple[DoubtfulService, ...]
    notes: tuple[str, ...]


@dataclass(frozen=True, slots=True, kw_only=True)
class Comparison(Report):
    """What differs between two lists."""

    before_file: str
    after_file: str
    is_changed: bool
    differences: Differences
    notes: tuple[str, ...]


@dataclass(frozen=True, slots=True, kw_only=True)
class SalvageReport(Report):
    """What came back from a damaged file, what did not, and, compared with another copy, what differs from that."""

    file: str
    bytes: int
    version: int
    output: str | None
    recovered: Records
    lost: Lost
    all_view: str
    found_again: tuple[FoundAgain, ...]
    doubtful_services: tuple[NamedService, ...]
    contradicted_services: tuple[NamedService, ...]
    differences: Differences | None


_Report = TypeVar("_Report", bound=Report)


def report_of(kind: type[_Report], answer: Answer) -> _Report:
    """The report that an answer is.

    Raises:
        ToolError: it lacks a key, or has one of another type.
    """
    told = {**answer.document, "has_findings": answer.has_findings, "document": answer.document}
    report: _Report = _value(kind, told, kind.__name__)
    return report


# A value of a type as JSON tells it; key is where it stands.
def _value(kind: Any, told: Any, key: str) -> Any:
    if kind is Any:
        return told
    if is_dataclass(kind):
        _must_be(dict, told, key)
        return kind(**{each.name: _member(kind, each, told) for each in fields(kind)})
    origin, of = typing.get_origin(kind), typing.get_args(kind)
    if origin is tuple:
        _must_be(list, told, key)
        return tuple(_value(of[0], each, key) for each in told)
    if origin is types.UnionType:
        return None if told is None else _value(of[0], told, key)
    return _must_be(origin or kind, told, key)


def _member(kind: Any, each: Field[Any], told: dict[str, Any]) -> Any:
    hint = _types_of(kind)[each.name]
    if hint is Identity:
        return _identity(told)
    if each.name in told:
        return _value(hint, told[each.name], each.name)
    if each.default is MISSING:
        raise ToolError(f"chlist tells no {each.name!r}")
    return each.default


# Documents have the polarisation as its letter.
def _identity(told: dict[str, Any]) -> Identity:
    letter = _must_be(str, told.get("polarisation"), "polarisation")
    numbers = [_must_be(int, told.get(key), key) for key in Identity._fields[:-1]]
    return Identity._make([*numbers, int(letter != "H")])


def _must_be(kind: type, told: Any, key: str) -> Any:
    if not isinstance(told, kind) or (kind is int and isinstance(told, bool)):
        raise ToolError(f"chlist tells {key!r} as {told!r}, which is no {kind.__name__}")
    return told


@functools.cache
def _types_of(kind: Any) -> dict[str, Any]:
    return typing.get_type_hints(kind)
