"""The channel list of a digital television receiver, for scripts.

    from channel_list import ChannelList

    with ChannelList("channels.dat") as channels:
        for entry in channels.view("tv"):
            print(entry.number, entry.name)

ChannelList goes through libchannel.so for whatever the library does and gives out copies; load_library() gives the
whole C interface to those who need more. Other formats, edits as text, merges of any file, comparisons and rescue are
done by the tool `chlist`, which run_tool() runs for everything else that it does.
"""

from .codes import GroupKind, ServiceFlag, ServiceType, SortType, Verbosity, ViewType
from .errors import (
    ChannelListError,
    ClosedError,
    CommandError,
    FileError,
    InUseError,
    LibraryError,
    NotFoundError,
    RefusedError,
    ToolError,
)
from .favourites import Favourites
from .library import get_verbosity, library_path, load_library, set_verbosity, sid_type, verbosity
from .lists import NEW_LIST_PATH, ChannelList
from .operations import apply_edits, compare, export_list, import_list, merge_lists, preview_merge, salvage
from .reports import Comparison, Differences, EditReport, ExportReport, ImportReport, MergeReport, SalvageReport
from .tool import run_tool, tool_path
from .values import Entry, FavouriteGroup, Group, Identity, Network, Service, Transponder

__all__ = [
    "NEW_LIST_PATH",
    "ChannelList",
    "ChannelListError",
    "ClosedError",
    "CommandError",
    "Comparison",
    "Differences",
    "EditReport",
    "Entry",
    "ExportReport",
    "FavouriteGroup",
    "Favourites",
    "FileError",
    "Group",
    "GroupKind",
    "Identity",
    "ImportReport",
    "InUseError",
    "LibraryError",
    "MergeReport",
    "Network",
    "NotFoundError",
    "RefusedError",
    "SalvageReport",
    "Service",
    "ServiceFlag",
    "ServiceType",
    "SortType",
    "ToolError",
    "Transponder",
    "Verbosity",
    "ViewType",
    "apply_edits",
    "compare",
    "export_list",
    "get_verbosity",
    "import_list",
    "library_path",
    "load_library",
    "merge_lists",
    "preview_merge",
    "run_tool",
    "salvage",
    "set_verbosity",
    "sid_type",
    "tool_path",
    "verbosity",
]
