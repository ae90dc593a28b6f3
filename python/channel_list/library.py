"""Finds and loads libchannel.so, gives its functions their prototypes, and sets how much it writes to its log.

The library writes its log to standard error itself, past sys.stderr. It is silent here until a script sets a verbosity,
since what goes wrong is raised. A few lines that entries 1, 5 and 106 of verbosity_map gate follow those alone.
"""

from __future__ import annotations

import contextlib
import ctypes
import functools
import os
from collections.abc import Iterator
from pathlib import Path
from typing import Final

from .codes import Verbosity
from .errors import LibraryError
from .prototypes import PROTOTYPES

SONAME: Final = "libchannel.so.1"
ENVIRONMENT_VARIABLE: Final = "CHANNEL_LIBRARY"

_BASE_SONAME: Final = "libchannelbase.so.1"
_VERBOSITY_MODULES: Final = 256
_CHANNEL_LIST_MODULE: Final = 7

#: The C library, whose heap the records lie on and through which the library prints.
LIBC: Final = ctypes.CDLL(None)
LIBC.free.argtypes = [ctypes.c_void_p]
LIBC.free.restype = None
LIBC.fflush.argtypes = [ctypes.c_void_p]


def library_path() -> str:
    """Where the library is loaded from.

    The environment variable CHANNEL_LIBRARY, which names the file; else the release build of the source tree that this
    package stands in; else the folder of libraries that the package is installed below; else the system's search.
    """
    named = os.environ.get(ENVIRONMENT_VARIABLE)
    if named:
        return named
    folders = Path(__file__).resolve().parents
    places = [*(tree / "build/release/lib" for tree in folders[2:3]), *folders[3:4]]
    return next((str(place / SONAME) for place in places if (place / SONAME).is_file()), SONAME)


@functools.cache
def load_library() -> ctypes.CDLL:
    """The library with all its prototypes, loaded once in a process.

    Every exported function may be called on it as the headers say. Pointers that it returns point into its memory, and
    what the headers say of their lifetime holds: prefer ChannelList, which hands out copies.

    Raises:
        LibraryError: it cannot be loaded, or lacks a function.
    """
    path = library_path()
    try:
        _load_base_library(Path(path))
        library = ctypes.CDLL(path)
    except OSError as error:
        raise LibraryError(f"{error}: {ENVIRONMENT_VARIABLE} can name the library's file") from error
    for name, (result, arguments) in PROTOTYPES.items():
        try:
            function = library[name]
        except AttributeError as error:
            raise LibraryError(f"{path}: has no {name}: not the library that this package is for") from error
        function.restype = result
        function.argtypes = arguments
        setattr(library, name, function)
    _verbosity_map_of(library)[_CHANNEL_LIST_MODULE] = Verbosity.SILENT
    return library


def sid_type() -> ctypes.c_int32:
    """The exported variable SID_TYPE, which the library neither reads nor writes."""
    return ctypes.c_int32.in_dll(load_library(), "SID_TYPE")


def get_verbosity() -> int:
    """How much the library writes to its log: a Verbosity, or what else a host set."""
    return int(_verbosity_map()[_CHANNEL_LIST_MODULE])


def set_verbosity(level: int) -> None:
    """Sets how much the library writes to its log, of this module's lines; at start it is Verbosity.SILENT."""
    _verbosity_map()[_CHANNEL_LIST_MODULE] = level


@contextlib.contextmanager
def verbosity(level: Verbosity) -> Iterator[None]:
    """Sets the verbosity for a block of code."""
    before = get_verbosity()
    set_verbosity(level)
    try:
        yield
    finally:
        set_verbosity(before)


# The loader looks for it in the system's folders only, and takes the one that is there already.
def _load_base_library(path: Path) -> None:
    beside = path.parent / _BASE_SONAME
    if len(path.parts) > 1 and beside.is_file():
        ctypes.CDLL(str(beside))


def _verbosity_map() -> ctypes.Array[ctypes.c_int]:
    return _verbosity_map_of(load_library())


# The table lives in libchannelbase, or in the receiver's base library: whichever libchannel is linked with.
def _verbosity_map_of(library: ctypes.CDLL) -> ctypes.Array[ctypes.c_int]:
    return (ctypes.c_int * _VERBOSITY_MODULES).in_dll(library, "verbosity_map")
