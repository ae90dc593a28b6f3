"""The favourite groups of a channel list: up to 20 named lists of up to 40 entries each."""

from __future__ import annotations

from collections.abc import Callable, Iterator
from typing import Final

from .codes import FIRST_FAVOURITE, ViewType
from .errors import NotFoundError, RefusedError
from .library import load_library
from .records import MAX_FAV, MAX_FAV_NUM, channel_st, group_st, virtual_channel_st
from .text import encode
from .values import Entry, FavouriteGroup, Identity, Service, group_name
from .views import SAVED_VIEWS, entries_of, entry_records, resolve, shows

# A rename clears 96 bytes: with one byte less, a name ends where it should whatever stood there before.
_LONGEST_GROUP_NAME: Final = 95


class Favourites:
    """The favourite groups: a collection of FavouriteGroup, by index or by name, and the calls that edit them.

    A group is given as its index, its name (without regard to case), or a FavouriteGroup.
    """

    def __init__(self, must_be_open: Callable[[], None]) -> None:
        self._must_be_open = must_be_open

    def __len__(self) -> int:
        self._must_be_open()
        return int(load_library().get_fav_group_number())

    def __iter__(self) -> Iterator[FavouriteGroup]:
        return iter([self._value(index) for index in range(len(self))])

    def __contains__(self, group: object) -> bool:
        return isinstance(group, int | str | FavouriteGroup) and self._find(group) >= 0

    def __getitem__(self, group: int | str | FavouriteGroup) -> FavouriteGroup:
        """A group as it is now.

        Raises:
            NotFoundError: there is none.
        """
        return self._value(self._index(group))

    def add_group(self, name: str) -> FavouriteGroup:
        """Adds an empty group behind the others.

        Raises:
            RefusedError: there are 20 groups, or there is one with this name.
            ValueError: the name does not have 1 to 95 bytes of UTF-8, or holds control characters.
        """
        encoded = self._new_name(name)
        if len(self) >= MAX_FAV:
            raise RefusedError(f"no favourite group can be added: there are {MAX_FAV}, the most that a list holds")
        new_id = load_library().add_fav_group_info(group_st(name=encoded, name_len=len(encoded)))
        return self._value(load_library().get_fav_index(new_id))

    def rename_group(self, group: int | str | FavouriteGroup, name: str) -> FavouriteGroup:
        """Gives a group another name.

        Raises:
            NotFoundError: there is no such group.
            RefusedError: another group has this name.
            ValueError: as add_group() does.
        """
        index = self._index(group)
        encoded = self._new_name(name, index)
        load_library().rename_favorite_group(self._id(index), encoded, len(encoded))
        return self._value(index)

    def remove_group(self, group: int | str | FavouriteGroup) -> None:
        """Removes a group. Groups behind it move up, and a receiver whose current view is one of them goes on showing
        it; ALL becomes current when it showed the group itself.

        Raises:
            NotFoundError: there is no such group.
        """
        library = load_library()
        index = self._index(group)
        current = library.get_vindex_type() - FIRST_FAVOURITE
        last = len(self) - 1
        library.remove_fav_group(self._id(index))
        if current == index:
            library.change_vindex_type(ViewType.ALL)
        elif index < current <= last:
            library.change_vindex_type(current - 1 + FIRST_FAVOURITE)

    def add(self, group: int | str | FavouriteGroup, which: Service | Entry) -> FavouriteGroup:
        """Adds a service at the end of a group, with the number that it has in ALL, or in the entry's view.

        One that is in the group already stays where it is.

        Raises:
            NotFoundError: there is no such group, no such service, or no view shows the service.
            RefusedError: the group holds 40 entries.
        """
        index = self._index(group)
        entry = _entry_of(which)
        # A full group refuses its own members as well.
        if any(load_library().is_same_vchannel(each, entry) == 1 for each in entry_records(FIRST_FAVOURITE + index)):
            return self._value(index)
        if load_library().add_fav_virtual_channel(self._id(index), entry) != 0:
            raise RefusedError(f"favourite group {self._value(index).name!r} is full: it holds {MAX_FAV_NUM}")
        return self._value(index)

    def remove(self, group: int | str | FavouriteGroup, which: Service | Entry) -> FavouriteGroup:
        """Removes a service from a group. Numbers and keys of the other entries stay.

        An entry whose service is gone can be removed as well.

        Raises:
            NotFoundError: there is no such group, or the service is not in it.
        """
        index = self._index(group)
        records = enumerate(entry_records(FIRST_FAVOURITE + index))
        positions = [position for position, record in records if _is_for(record, which.identity)]
        if not positions:
            raise NotFoundError(f"no service {which.identity} in favourite group {self._value(index).name!r}")
        for position in reversed(positions):
            load_library().remove_fav_virtual_channel(self._id(index), position)
        return self._value(index)

    def _value(self, index: int) -> FavouriteGroup:
        record = load_library().get_fav_group_info(index).contents
        return FavouriteGroup(index, record.id, group_name(record), entries_of(FIRST_FAVOURITE + index))

    def _names(self) -> list[str]:
        get_group = load_library().get_fav_group_info
        return [group_name(get_group(index).contents).casefold() for index in range(len(self))]

    # The index of a group, or -1.
    def _find(self, group: int | str | FavouriteGroup) -> int:
        if isinstance(group, str):
            names = self._names()
            return names.index(group.casefold()) if group.casefold() in names else -1
        indexes = range(len(self))
        if isinstance(group, FavouriteGroup):
            return next((index for index in indexes if self._id_at(index) == group.id), -1)
        return group if group in indexes else -1

    def _index(self, group: int | str | FavouriteGroup) -> int:
        index = self._find(group)
        if index < 0:
            what = group.name if isinstance(group, FavouriteGroup) else group
            raise NotFoundError(f"no favourite group {what!r}: there are {len(self)}")
        return index

    def _id_at(self, index: int) -> int:
        return int(load_library().get_fav_group_info(index).contents.id)

    # The library edits the first group with an id.
    def _id(self, index: int) -> int:
        group_id = self._id_at(index)
        if load_library().get_fav_index(group_id) != index:
            raise RefusedError(f"favourite group {index} cannot be edited: another one has its id {group_id}")
        return group_id

    # The library takes a new group with the name of an old one for the old one.
    def _new_name(self, name: str, own_index: int = -1) -> bytes:
        encoded = encode(name, _LONGEST_GROUP_NAME)
        if any(each == name.casefold() for index, each in enumerate(self._names()) if index != own_index):
            raise RefusedError(f"there is a favourite group {name!r} already")
        return encoded


# The entry that a group takes a copy of.
def _entry_of(which: Service | Entry) -> virtual_channel_st:
    service = resolve(which.identity)
    if service is None:
        raise NotFoundError(f"no service {which.identity}")
    records = [record for code in SAVED_VIEWS for record in entry_records(code)]
    if isinstance(which, Entry):
        of_view = list(entry_records(which.view))
        at_its_place = [record for record in of_view[which.position :][:1] if record.major_ch_num == which.number]
        records = at_its_place + of_view + records
    for record in records:
        if shows(record, service):
            return record
    raise NotFoundError(f"service {which.identity} has no entry in any view")


def _is_for(record: virtual_channel_st, identity: Identity) -> bool:
    if Identity.of(record) == identity:
        return True
    service: channel_st | None = resolve(Identity.of(record))
    return service is not None and Identity.of(service) == identity
