"""Channel files in and out. The library composes short paths only and writes in place; here any path can be read, and a
file that is saved is replaced as a whole or not at all.
"""

from __future__ import annotations

import contextlib
import ctypes
import fcntl
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
_FIRST_BEHIND_STANDARD_STREAMS: Final = 3
_STDOUT: Final = 1


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


def behind_standard_streams(descriptor: int) -> int:
    """A descriptor for the same open file that is not one of the standard streams; the given one may be closed.

    A script may be started without a standard output, and the next file that is opened then takes its place.
    """
    if descriptor >= _FIRST_BEHIND_STANDARD_STREAMS:
        return descriptor
    try:
        return fcntl.fcntl(descriptor, fcntl.F_DUPFD_CLOEXEC, _FIRST_BEHIND_STANDARD_STREAMS)
    finally:
        os.close(descriptor)


@contextlib.contextmanager
def input_file(path: _Path) -> Iterator[InputFile]:
    """Opens a channel file. Raises OSError as open() does, and FileError for what is no channel file."""
    name = os.fspath(path)
    # Without O_NONBLOCK the call would wait for the writer of a pipe.
    descriptor = behind_standard_streams(os.open(name, os.O_RDONLY | os.O_NONBLOCK | os.O_CLOEXEC))
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
    saved = _copy_of_stdout()
    nowhere = behind_standard_streams(os.open(os.devnull, os.O_WRONLY | os.O_CLOEXEC))
    try:
        os.dup2(nowhere, _STDOUT)
        yield
    finally:
        LIBC.fflush(None)
        os.close(nowhere)
        if saved is None:
            os.close(_STDOUT)
        else:
            os.dup2(saved, _STDOUT)
            os.close(saved)


# None when the script was started without a standard output.
def _copy_of_stdout() -> int | None:
    try:
        return fcntl.fcntl(_STDOUT, fcntl.F_DUPFD_CLOEXEC, _FIRST_BEHIND_STANDARD_STREAMS)
    except OSError:
        return None


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

    A symbolic link stays one: the file that it points to is replaced. The file's mode stays, and its owner and group
    where the system allows it; a new file has the usual ones.
    """
    target = os.path.realpath(os.fspath(path))
    replaced = _file_to_replace(target, os.fspath(path))
    descriptor, name = tempfile.mkstemp(dir=os.path.dirname(target))
    descriptor = behind_standard_streams(descriptor)
    try:
        yield descriptor
        _take_after(descriptor, replaced)
        os.fsync(descriptor)
        os.replace(name, target)
    except BaseException:
        os.unlink(name)
        raise
    finally:
        os.close(descriptor)


# None when there is no file yet.
def _file_to_replace(target: str, name: str) -> os.stat_result | None:
    try:
        found = os.stat(target)
    except FileNotFoundError:
        return None
    if not stat.S_ISREG(found.st_mode):
        raise FileError(name, "not a regular file")
    if not found.st_mode & 0o222:
        raise FileError(name, "is read-only")
    return found


def _take_after(descriptor: int, replaced: os.stat_result | None) -> None:
    if replaced is None:
        mask = os.umask(0)
        os.umask(mask)
        os.fchmod(descriptor, 0o666 & ~mask)
        return
    # Apart: whoever may not give a file away may still give it to another group.
    for owner, group in ((replaced.st_uid, -1), (-1, replaced.st_gid)):
        with contextlib.suppress(OSError):
            os.fchown(descriptor, owner, group)
    os.fchmod(descriptor, stat.S_IMODE(replaced.st_mode))
