"""The channel list of a digital television receiver, for scripts.

    from channel_list import ChannelList

    with ChannelList("channels.dat") as channels:
        for entry in channels.view("tv"):
            print(entry.number, entry.name)

ChannelList goes through libchannel.so for whatever the library does and gives out copies; load_library() gives the
whole C interface to those who need more.
"""

from .codes import GroupKind, ServiceFlag, ServiceType, SortType, Verbosity, ViewType
from .errors import (
    ChannelListError,
    ClosedError,
    FileError,
    InUseError,
    LibraryError,
    NotFoundError,
    RefusedError,
)
from .favourites import Favourites
from .library import get_verbosity, library_path, load_library, set_verbosity, sid_type, verbosity
from .lists import NEW_LIST_PATH, ChannelList
from .values import Entry, FavouriteGroup, Group, Identity, Network, Service, Transponder

__all__ = [
    "NEW_LIST_PATH",
    "ChannelList",
    "ChannelListError",
    "ClosedError",
    "Entry",
    "FavouriteGroup",
    "Favourites",
    "FileError",
    "Group",
    "GroupKind",
    "Identity",
    "InUseError",
    "LibraryError",
    "Network",
    "NotFoundError",
    "RefusedError",
    "Service",
    "ServiceFlag",
    "ServiceType",
    "SortType",
    "Transponder",
    "Verbosity",
    "ViewType",
    "get_verbosity",
    "library_path",
    "load_library",
    "set_verbosity",
    "sid_type",
    "verbosity",
]
