"""Loads and saves the list in memory through open files."""

from __future__ import annotations

import os
from typing import Final

from .codes import FILE_VERSION, KEEP_FILE_ORDER
from .files import behind_standard_streams, in_target_folder, list_beside, silent_stdout
from .library import load_library
from .records import all_services_of, channel_list_st

# What the selection of a view changes in the settings.
_VIEW_SETTINGS: Final = ("ch_type", "use_group_list", "service_type", "net_index", "sub_group_id", "vch_type")


def list_in_memory() -> channel_list_st:
    """The library's one list."""
    found: channel_list_st = load_library().get_channel_list().contents
    return found


def load_open_file(descriptor: int) -> bool:
    """Replaces the list by a file of version 10, as it stands; False, and an empty list, when the file is short."""
    library = load_library()
    library.reset_channel_list()
    with in_target_folder(descriptor) as name, silent_stdout():
        if library.load_channel(name, KEEP_FILE_ORDER) != FILE_VERSION:
            return False
    with list_beside(descriptor) as as_it_stands:
        if as_it_stands is None:  # cut off since it was loaded
            library.reset_channel_list()
            return False
        _restore(list_in_memory(), as_it_stands)
    return True


def save_open_file(descriptor: int) -> bool:
    """Writes the list into a file; False when not every byte could be written."""
    with in_target_folder(descriptor) as name:
        return bool(load_library().save_channel(name) == 1)


def save_and_load() -> None:
    """Brings a converted list, whose views lead to no services yet, into the state of a loaded one."""
    descriptor = behind_standard_streams(os.memfd_create("channel list"))
    try:
        if not (save_open_file(descriptor) and load_open_file(descriptor)):
            raise OSError("the converted list could not be kept in memory")
    finally:
        os.close(descriptor)


# A load changes a few bytes on purpose, for a receiver's sake. Both lists have the services of one file, in its order.
def _restore(channels: channel_list_st, as_it_stands: channel_list_st) -> None:
    for service, original in zip(all_services_of(channels), all_services_of(as_it_stands)):
        service.country_id = original.country_id
    for group, original_group in zip(channels.favorite_vch, as_it_stands.favorite_vch):
        for entry, original_entry in zip(group, original_group):
            entry.favorite_id = original_entry.favorite_id
    for setting in _VIEW_SETTINGS:
        setattr(channels, setting, getattr(as_it_stands, setting))
