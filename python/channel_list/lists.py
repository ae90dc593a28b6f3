"""The channel list, as a context manager.

The library keeps one list in a process and hands no handle out, so one ChannelList at a time holds it. It is not for
several threads: one call follows another.
"""

from __future__ import annotations

import ctypes
import os
import weakref
from collections.abc import Iterator
from types import TracebackType
from typing import Final

from .codes import EARLIER_VERSIONS, GroupKind, ServiceFlag, SortType, ViewType
from .errors import ClosedError, FileError, InUseError, NotFoundError, RefusedError
from .favourites import Favourites
from .files import input_file, list_beside, path_of, replacement
from .library import load_library
from .loading import list_in_memory, load_open_file, save_and_load, save_open_file
from .operations import channel_file_of
from .records import all_services_of, channel_st, networks_of
from .reports import ImportReport
from .text import encode
from .values import Entry, Group, Identity, Network, Service, entry_value, group_name, network_value, service_value
from .views import (
    SAVED_VIEWS,
    entries_of,
    entry_records,
    is_same_record,
    resolve,
    shows,
    view_code,
    view_name,
)

#: Where a receiver's channel search places a new channel list; the library merges no other.
NEW_LIST_PATH: Final = "/DATA/BACKUP/all_channel.dat"

_LONGEST_SERVICE_NAME: Final = 96
_NUMBERS: Final = range(-0x8000, 0x8000)
_UNSORTED_VIEWS: Final = (ViewType.WORK, ViewType.PROMOTION)

_Path = str | os.PathLike[str]

_holder: weakref.ref[ChannelList] | None = None


class ChannelList:
    """The one channel list of the process, empty until a file is loaded.

    Everything that it returns is a copy, which stays what it is when the list changes or is closed.

        with ChannelList("channels.dat") as channels:
            for entry in channels.view("tv"):
                print(entry.number, entry.name)
    """

    def __init__(self, path: _Path | None = None) -> None:
        """Takes the list, empties it, and loads a file when one is given.

        Raises:
            InUseError: another ChannelList is open.
            LibraryError: the shared library cannot be loaded.
            OSError, FileError: as load() does.
        """
        global _holder
        if _holder is not None and _holder() is not None:
            raise InUseError("the process has one channel list, which another ChannelList holds: close that one first")
        load_library().reset_channel_list()
        _holder = weakref.ref(self)
        self._is_open = True
        if path is not None:
            try:
                self.load(path)
            except BaseException:
                self.close()
                raise

    def close(self) -> None:
        """Releases the list. Every later call but this one raises ClosedError."""
        global _holder
        if self._is_open:
            self._is_open = False
            _holder = None
            load_library().reset_channel_list()

    def __enter__(self) -> ChannelList:
        self._must_be_open()
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, traceback: TracebackType | None
    ) -> None:
        self.close()

    # Files

    def load(self, path: _Path) -> None:
        """Replaces the list by a channel file of version 10, as it stands.

        What a receiver's load changes on purpose (the countries of services, the settings of the current view, the
        keys of favourites) is put back, so that a save of the list gives the file as it was.

        Raises:
            OSError: the file is missing or may not be read; the list is as it was.
            FileError: it is no channel file of this version; the list is as it was, or empty when the file is short.
        """
        self._must_be_open()
        with input_file(path) as file:
            file.must_be_current()
            if not load_open_file(file.descriptor):
                raise file.ends_too_early()

    def convert(self, path: _Path) -> None:
        """Replaces the list by a channel file of version 7, 8 or 9, converted by the library. Nothing is saved.

        Raises:
            OSError, FileError: as load() does.
        """
        self._must_be_open()
        library = load_library()
        with input_file(path) as file:
            file.must_be_earlier()
            library.reset_channel_list()
            if library.repair_channel(file.version, path_of(file.descriptor)) != 0:
                raise file.ends_too_early()
            save_and_load()

    def read(self, path: _Path, *, format: str | None = None) -> ImportReport | None:
        """Replaces the list by one of any format: a channel file of version 7 to 10, or what `chlist import` reads.

        Args:
            path: the list: a file, or the folder of formats that have several files.
            format: the name of the format; else it is told by the contents.

        Returns:
            What came through and what did not; None of a channel file.

        Raises:
            OSError, FileError: as load() and convert() do.
            ToolError, CommandError: `chlist` cannot be run, or cannot read the list, which is as it was then.
        """
        self._must_be_open()
        with channel_file_of(path, format=format) as file:
            if file.version in EARLIER_VERSIONS:
                self.convert(file.path)
            else:
                self.load(file.path)
            return file.report

    def save(self, path: _Path) -> None:
        """Writes the list to a channel file of version 10, which is replaced as a whole or not at all.

        Raises:
            OSError: the file or its folder cannot be written.
            FileError: the path names something else than a file, a read-only file, or the writing failed.
        """
        self._must_be_open()
        with replacement(path) as descriptor:
            if not save_open_file(descriptor):
                raise FileError(os.fspath(path), "the channel file could not be written")

    def merge(self) -> int:
        """Merges the new channel list at NEW_LIST_PATH, as check_load_channel() of the library does.

        Services that the list lacks are added and numbered at the end of the views; services that the new list lacks
        are deleted with their entries; services in both stay, with a country of 1, the library's mark of presence.

        Returns:
            How many services were added and deleted.

        Raises:
            OSError: there is no new list, or it may not be read.
            FileError: it is no whole channel file of version 10. The list is as it was in every case.
        """
        self._must_be_open()
        library = load_library()
        with input_file(NEW_LIST_PATH) as file:
            file.must_be_current()
            with list_beside(file.descriptor) as new_list:
                if new_list is None:
                    raise file.ends_too_early()
            for service in all_services_of(list_in_memory()):
                service.country_id = 0
            return int(library.check_load_channel())

    # Reading

    def view(self, view: int | str) -> tuple[Entry, ...]:
        """The entries of a view.

        Args:
            view: a ViewType or its name ("all", "tv", "radio", "user", "work", "promotion"), or the code of a
                favourite group; favourites[...] knows those by name.

        Raises:
            ValueError: there is no such view.
        """
        self._must_be_open()
        return entries_of(view_code(view))

    def networks(self) -> tuple[Network, ...]:
        """The networks, with their transponders and services."""
        self._must_be_open()
        return tuple(network_value(each) for each in networks_of(list_in_memory()))

    def services(self) -> Iterator[Service]:
        """All services, network by network and transponder by transponder, whether or not a view shows them."""
        transponders = (each for network in self.networks() for each in network.transponders)
        return (service for each in transponders for service in each.services)

    def groups(self, kind: GroupKind) -> tuple[Group, ...]:
        """The providers, genres or countries, in the order of their table."""
        self._must_be_open()
        count = ctypes.c_uint16()
        table = load_library().get_group_list(kind, ctypes.byref(count))
        return tuple(Group(kind, table[i].id, group_name(table[i])) for i in range(count.value))

    @property
    def favourites(self) -> Favourites:
        """The favourite groups, by index or by name."""
        self._must_be_open()
        return Favourites(self._must_be_open)

    # Lookups

    def entry(self, number: int, minor_number: int = 0, view: int | str = ViewType.ALL) -> Entry:
        """The first entry of a view with a channel number.

        Raises:
            NotFoundError: there is none.
            ValueError: there is no such view.
        """
        self._must_be_open()
        code = view_code(view)
        record = None
        if number in _NUMBERS and minor_number in _NUMBERS:
            position = load_library().vtype_get_vindex_by_number(number, minor_number, code)
            record = next((each for i, each in enumerate(entry_records(code)) if i == position), None)
        if record is None:
            raise NotFoundError(f"no number {number}-{minor_number} in view {view_name(code)}")
        service = resolve(Identity.of(record))
        return entry_value(record, code, position, service_value(service) if service else None)

    def service(self, which: Service | Entry | Identity) -> Service:
        """A service as it is now.

        Raises:
            NotFoundError: it is not in the list.
        """
        return service_value(self._found(which)[1])

    def named(self, name: str) -> tuple[Service, ...]:
        """The services with a name or a short name, without regard to case."""
        wanted = name.casefold()
        return tuple(each for each in self.services() if wanted in (each.name.casefold(), each.short_name.casefold()))

    def search(self, part: str) -> tuple[Service, ...]:
        """The services whose name or short name holds a text, without regard to case."""
        wanted = part.casefold()
        return tuple(
            each for each in self.services() if wanted in each.name.casefold() or wanted in each.short_name.casefold()
        )

    # Editing

    def rename(self, which: Service | Entry | Identity, name: str, *, short: bool = False) -> Service:
        """Gives a service another name, or another short name, of 1 to 96 bytes of UTF-8.

        Returns:
            The service as it is then.

        Raises:
            NotFoundError: it is not in the list.
            ValueError: the name is empty, too long, or holds control characters.
        """
        identity, record = self._found(which)
        encoded = encode(name, _LONGEST_SERVICE_NAME)
        if load_library().rename_channel_info(*identity, int(short), encoded, len(encoded)) != 0:
            raise RefusedError(f"{identity} cannot be renamed")
        return service_value(record)

    def set_flags(self, which: Service | Entry | Identity, flags: ServiceFlag, on: bool = True) -> Service:
        """Sets or clears flags of a service, and returns the service as it is then."""
        if not 0 <= flags <= 0xFF:
            raise ValueError(f"flags are 8 bits: {int(flags):#x}")
        identity, record = self._found(which)
        if load_library().set_channel_flag(*identity, flags, on) != 1:
            raise RefusedError(f"the flags of {identity} cannot be set")
        return service_value(record)

    def lock(self, which: Service | Entry | Identity, on: bool = True) -> Service:
        """Locks a service, so that a receiver asks for its code, or unlocks it."""
        return self.set_flags(which, ServiceFlag.LOCKED, on)

    def skip(self, which: Service | Entry | Identity, on: bool = True) -> Service:
        """Lets zapping pass over a service, or stop at it again."""
        return self.set_flags(which, ServiceFlag.SKIP, on)

    def remove(self, which: Service | Entry | Identity) -> None:
        """Removes a service with its entries in all views. The numbers of the others stay.

        Raises:
            NotFoundError: it is not in the list.
            RefusedError: it has no frequency, so that its identity could lead to another one.
        """
        identity, record = self._found(which)
        if identity.frequency == 0:
            raise RefusedError(f"{identity} cannot be removed: it has no frequency")
        for code in SAVED_VIEWS:
            positions = [i for i, entry in enumerate(entry_records(code)) if shows(entry, record)]
            for position in reversed(positions):
                load_library().vtype_remove_by_vindex(position, code)
        load_library().remove_channel_st(*identity)

    def sort(self, view: int | str, order: SortType) -> None:
        """Sorts a view; numbers stay with their services. The work view and the promotion view cannot be sorted."""
        self._must_be_open()
        code = view_code(view)
        if code in _UNSORTED_VIEWS:
            raise ValueError(f"view {view_name(code)} cannot be sorted")
        load_library().sort_vch_type(SortType(order), code)

    # Inside

    def _must_be_open(self) -> None:
        if not self._is_open:
            raise ClosedError("the channel list is closed")

    # A service in the library's memory, and an identity that leads to it.
    def _found(self, which: Service | Entry | Identity) -> tuple[Identity, channel_st]:
        self._must_be_open()
        identity = which if isinstance(which, Identity) else which.identity
        record = resolve(identity)
        # An entry may be for a frequency that differs a little; a service may be hidden behind another one.
        if record is None or not (isinstance(which, Entry) or Identity.of(record) == identity):
            raise NotFoundError(f"no service {identity}")
        # Its own identity is the exact one, but may lead to a namesake on a transponder in front of its own.
        own = Identity.of(record)
        return (own if is_same_record(resolve(own), record) else identity), record
