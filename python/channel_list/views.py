"""Views by name and by code, and their entries as they stand in the library's memory."""

from __future__ import annotations

import ctypes
from collections.abc import Iterator
from typing import Final

from .codes import FIRST_FAVOURITE, LAST_FAVOURITE, ViewType
from .library import load_library
from .records import (
    MAX_CHANNEL,
    MAX_FAV_NUM,
    MAX_PROMO_CHANNEL,
    MAX_RADIO_CHANNEL,
    MAX_TV_CHANNEL,
    channel_st,
    virtual_channel_st,
)
from .values import Entry, Identity, Service, entry_value, service_value

_CAPACITIES: Final = {
    ViewType.ALL: MAX_CHANNEL,
    ViewType.TV: MAX_TV_CHANNEL,
    ViewType.RADIO: MAX_RADIO_CHANNEL,
    ViewType.USER: MAX_CHANNEL,
    ViewType.WORK: MAX_CHANNEL,
    ViewType.PROMOTION: MAX_PROMO_CHANNEL,
}
_FAVOURITES: Final = range(FIRST_FAVOURITE, LAST_FAVOURITE + 1)

#: The views that a channel file holds.
SAVED_VIEWS: Final = (
    ViewType.ALL,
    ViewType.TV,
    ViewType.RADIO,
    ViewType.USER,
    ViewType.PROMOTION,
    *_FAVOURITES,
)


def view_code(view: int | str) -> int:
    """The code of a view.

    Args:
        view: a ViewType or its name, in any case; or the code of a favourite group.

    Raises:
        ValueError: there is no such view.
    """
    if isinstance(view, str):
        if view.upper() not in ViewType.__members__:
            raise ValueError(f"no view {view!r}: there are {', '.join(each.name.lower() for each in ViewType)}")
        return ViewType[view.upper()]
    if view not in _CAPACITIES and view not in _FAVOURITES:
        raise ValueError(f"no view {view}")
    return ViewType(view) if view in _CAPACITIES else view


def view_name(code: int) -> str:
    """A view as messages name it."""
    return f"favourite group {code - FIRST_FAVOURITE}" if code in _FAVOURITES else ViewType(code).name.lower()


def capacity_of(code: int) -> int:
    """How many entries a view can hold."""
    return MAX_FAV_NUM if code in _FAVOURITES else _CAPACITIES[ViewType(code)]


def entry_records(code: int) -> Iterator[virtual_channel_st]:
    """The entries of a view in the library's memory. A count outside the array is read as the nearest one inside."""
    library = load_library()
    count = library.get_virtual_channel_vnumber(code)[0]
    entries = library.get_virtual_channel_st(code)
    for position in range(min(count, capacity_of(code))):
        yield entries[position]


def resolve(identity: Identity) -> channel_st | None:
    """The service that an identity leads to, in the library's memory."""
    found = load_library().get_channel_st(*identity)
    return found.contents if found else None


def entries_of(code: int) -> tuple[Entry, ...]:
    """Copies of a view's entries with their services."""
    return tuple(
        entry_value(record, code, position, _service_of(record)) for position, record in enumerate(entry_records(code))
    )


def shows(record: virtual_channel_st, service: channel_st) -> bool:
    """Whether an entry's cached pointer is the one of a service."""
    return bool(record.rch) and is_same_record(record.rch.contents, service)


def is_same_record(one: channel_st | None, other: channel_st) -> bool:
    """Whether two services are one place in memory."""
    return one is not None and ctypes.addressof(one) == ctypes.addressof(other)


def _service_of(record: virtual_channel_st) -> Service | None:
    service = resolve(Identity.of(record))
    return service_value(service) if service else None
