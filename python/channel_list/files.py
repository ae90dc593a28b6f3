"""Channel files in and out. The library composes short paths only and writes in place; here any path can be read, and a
file that is saved is replaced as a whole or not at all.
"""

from __future__ import annotations

import contextlib
import ctypes
import os
import stat
import sys
import tempfile
from collections.abc import Iterator
from dataclasses import dataclass
from typing import Final

from .codes import EARLIER_VERSIONS, FILE_VERSION, Verbosity
from .errors import FileError
from .library import LIBC, load_library, verbosity
from .records import channel_list_st, networks_of, services_of, transponders_of

_Path = str | os.PathLike[str]

_OPEN_FILES: Final = b"/proc/self/fd/"


@dataclass(frozen=True, slots=True)
class InputFile:
    """An open channel file and the version that it says it has."""

    path: str
    descriptor: int
    version: int

    def must_be_current(self) -> None:
        """Refuses earlier and unknown versions."""
        if self.version != FILE_VERSION:
            advice = ": convert() reads it" if self.version in EARLIER_VERSIONS else ""
            raise FileError(self.path, f"is of version {self.version}, not {FILE_VERSION}{advice}")

    def must_be_earlier(self) -> None:
        """Refuses what cannot be converted."""
        if self.version == FILE_VERSION:
            raise FileError(self.path, f"is of version {self.version} already: load() reads it")
        if self.version not in EARLIER_VERSIONS:
            raise FileError(self.path, f"is of version {self.version}: only 7, 8 and 9 can be converted")

    def ends_too_early(self) -> FileError:
        """What is wrong with a file that the library cannot read to its end."""
        return FileError(self.path, f"ends too early for a channel file of version {self.version}")


@contextlib.contextmanager
def input_file(path: _Path) -> Iterator[InputFile]:
    """Opens a channel file. Raises OSError as open() does, and FileError for what is no channel file."""
    name = os.fspath(path)
    # Without O_NONBLOCK the call would wait for the writer of a pipe.
    descriptor = os.open(name, os.O_RDONLY | os.O_NONBLOCK | os.O_CLOEXEC)
    try:
        if not stat.S_ISREG(os.fstat(descriptor).st_mode):
            raise FileError(name, "not a regular file")
        start = os.pread(descriptor, 2, 0)
        if len(start) < 2:
            raise FileError(name, "too short for a channel file")
        yield InputFile(name, descriptor, int.from_bytes(start, "little", signed=True))
    finally:
        os.close(descriptor)


def path_of(descriptor: int) -> bytes:
    """A short path of an open file."""
    return _OPEN_FILES + str(descriptor).encode()


@contextlib.contextmanager
def in_target_folder(descriptor: int) -> Iterator[bytes]:
    """Makes an open file one of the library's data files, and gives its name there.

    No side file of genres or countries lies there, so that a list does not depend on what lies beside its file.
    """
    library = load_library()
    with verbosity(Verbosity.SILENT):
        before = library.set_target_dir(None)  # is refused, and tells the folder in use
    library.set_target_dir(_OPEN_FILES)
    try:
        yield str(descriptor).encode()
    finally:
        library.set_target_dir(before)


@contextlib.contextmanager
def silent_stdout() -> Iterator[None]:
    """Keeps what C code prints off standard output, which belongs to the script: the library tells every load there."""
    if sys.stdout is not None:
        sys.stdout.flush()
    LIBC.fflush(None)
    saved = os.dup(1)
    nowhere = os.open(os.devnull, os.O_WRONLY | os.O_CLOEXEC)
    try:
        os.dup2(nowhere, 1)
        yield
    finally:
        LIBC.fflush(None)
        os.dup2(saved, 1)
        os.close(saved)
        os.close(nowhere)


@contextlib.contextmanager
def list_beside(descriptor: int) -> Iterator[channel_list_st | None]:
    """Reads a file once more, as it stands, beside the list in memory; None when it ends too early.

    The records of version 9 are those of today, so its reader reads both. What it would log a load has logged.
    """
    with verbosity(Verbosity.SILENT):
        found = load_library().v9_load_channel(path_of(descriptor))
    try:
        yield found.contents if found else None
    finally:
        if found:
            _free_list(found.contents)


def _free_list(channels: channel_list_st) -> None:
    for network in networks_of(channels):
        for transponder in transponders_of(network):
            for service in services_of(transponder):
                LIBC.free(ctypes.addressof(service))
            LIBC.free(ctypes.addressof(transponder))
        LIBC.free(ctypes.addressof(network))
    LIBC.free(ctypes.addressof(channels))


@contextlib.contextmanager
def replacement(path: _Path) -> Iterator[int]:
    """A new file beside a path, as a descriptor. It takes the path's place when the block ends without an exception.

    A symbolic link stays one: the file that it points to is replaced. The file's mode stays; a new file has the usual.
    """
    target = os.path.realpath(os.fspath(path))
    mode = _mode_for(target, os.fspath(path))
    descriptor, name = tempfile.mkstemp(dir=os.path.dirname(target))
    try:
        yield descriptor
        os.fchmod(descriptor, mode)
        os.fsync(descriptor)
        os.replace(name, target)
    except BaseException:
        os.unlink(name)
        raise
    finally:
        os.close(descriptor)


def _mode_for(target: str, name: str) -> int:
    try:
        found = os.stat(target).st_mode
    except FileNotFoundError:
        mask = os.umask(0)
        os.umask(mask)
        return 0o666 & ~mask
    if not stat.S_ISREG(found):
        raise FileError(name, "not a regular file")
    if not found & 0o222:
        raise FileError(name, "is read-only")
    return stat.S_IMODE(found)
