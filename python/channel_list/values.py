"""What the list holds, as values: copied out of its records at once, so that none of them points into its memory.

A value shows the list as it was when it was made. Editing calls take a service by the identity in its value and give
the new value back.
"""

from __future__ import annotations

from collections.abc import Iterator
from dataclasses import dataclass
from typing import NamedTuple

from .codes import UNSET_8, UNSET_16, GroupKind, ServiceFlag, ServiceType
from .records import (
    channel_st,
    field_bytes,
    group_st,
    name_slot_st,
    network_ch_st,
    services_of,
    tp_ch_st,
    transponders_of,
    virtual_channel_st,
)
from .text import decode


class Identity(NamedTuple):
    """The six values that name a service, in the order in which the library's functions take them.

    The text is the one that `chlist` takes for a service: "1:158:2012:11345000V:3101".
    """

    net_index: int
    network_id: int
    ts_id: int
    frequency: int
    service_id: int
    polarisation: int

    @property
    def polarisation_letter(self) -> str:
        """H or V: every polarisation but 0 is vertical."""
        return "V" if self.polarisation else "H"

    def __str__(self) -> str:
        polarisation = self.polarisation_letter + (str(self.polarisation) if self.polarisation > 1 else "")
        return f"{self.net_index}:{self.network_id}:{self.ts_id}:{self.frequency}{polarisation}:{self.service_id}"

    @classmethod
    def of(cls, record: channel_st | virtual_channel_st) -> Identity:
        """The identity of a record: of a service's 64-bit frequency the 32 bits that identities have."""
        return cls(
            record.net_index,
            record.network_id,
            record.ts_id,
            record.frequency & 0xFFFFFFFF,
            record.service_id,
            record.polarisation,
        )


@dataclass(frozen=True, slots=True)
class Service:
    """A service. PIDs and component tags that are not set are None."""

    identity: Identity
    name: str
    short_name: str
    service_type: ServiceType
    source_type: int
    flags: ServiceFlag
    provider_id: int
    genre_id: int
    country_id: int
    user_order_key: int
    pmt_pid: int | None
    pcr_pid: int | None
    video_pid: int | None
    video_ecm_pid: int | None
    video_tag: int | None
    audio_pid: int | None
    audio_tag: int | None

    @property
    def is_locked(self) -> bool:
        """Whether a receiver asks for its code."""
        return ServiceFlag.LOCKED in self.flags

    @property
    def is_skipped(self) -> bool:
        """Whether zapping passes over it."""
        return ServiceFlag.SKIP in self.flags

    @property
    def is_scrambled(self) -> bool:
        """Whether it carries the marking of scrambled services."""
        return ServiceFlag.SCRAMBLED in self.flags


@dataclass(frozen=True, slots=True)
class Entry:
    """An entry of a view. Its service is None when its identity leads to none."""

    view: int
    position: int
    number: int
    minor_number: int
    tag: int
    favourite_key: int
    identity: Identity
    service: Service | None

    @property
    def name(self) -> str:
        """The name of its service; empty when there is none."""
        return self.service.name if self.service else ""


@dataclass(frozen=True, slots=True)
class Transponder:
    """A transponder and its services."""

    ts_id: int
    frequency: int
    polarisation: int
    services: tuple[Service, ...]


@dataclass(frozen=True, slots=True)
class Network:
    """A network and its transponders."""

    net_index: int
    network_id: int
    name: str
    transponders: tuple[Transponder, ...]


@dataclass(frozen=True, slots=True)
class Group:
    """A provider, genre or country."""

    kind: GroupKind
    id: int
    name: str


@dataclass(frozen=True, slots=True)
class FavouriteGroup:
    """A favourite group and its entries. Its index changes when groups in front of it go; its id does not."""

    index: int
    id: int
    name: str
    entries: tuple[Entry, ...]

    def __iter__(self) -> Iterator[Entry]:
        return iter(self.entries)

    def __len__(self) -> int:
        return len(self.entries)


def service_value(record: channel_st) -> Service:
    """A copy of a service."""
    return Service(
        identity=Identity.of(record),
        name=_name(record.name[0]),
        short_name=_name(record.name[1]),
        service_type=ServiceType(record.service_type),
        source_type=record.source_type,
        flags=ServiceFlag(record.flag),
        provider_id=record.provider_id,
        genre_id=record.genre_id,
        country_id=record.country_id,
        user_order_key=record.user_order_key,
        pmt_pid=_unless(UNSET_16, record.pmt_pid),
        pcr_pid=_unless(UNSET_16, record.pcr_pid),
        video_pid=_unless(UNSET_16, record.video_pid),
        video_ecm_pid=_unless(UNSET_16, record.video_ecm_pid),
        video_tag=_unless(UNSET_8, record.video_tag),
        audio_pid=_unless(UNSET_16, record.audio_pid),
        audio_tag=_unless(UNSET_8, record.audio_tag),
    )


def entry_value(record: virtual_channel_st, view: int, position: int, service: Service | None) -> Entry:
    """A copy of an entry."""
    return Entry(
        view=view,
        position=position,
        number=record.major_ch_num,
        minor_number=record.minor_ch_num,
        tag=record.vch_tag,
        favourite_key=record.favorite_id,
        identity=Identity.of(record),
        service=service,
    )


def network_value(record: network_ch_st) -> Network:
    """A copy of a network with all that hangs from it."""
    transponders = tuple(_transponder_value(each) for each in transponders_of(record))
    return Network(record.net_index, record.network_id, decode(field_bytes(record, "network_name")), transponders)


def group_name(record: group_st) -> str:
    """The name of a group."""
    return decode(field_bytes(record, "name"))


def _transponder_value(record: tp_ch_st) -> Transponder:
    services = tuple(service_value(each) for each in services_of(record))
    return Transponder(record.ts_id, record.frequency, record.polarisation, services)


def _name(slot: name_slot_st) -> str:
    return decode(field_bytes(slot, "text"))


def _unless(unset: int, value: int) -> int | None:
    return None if value == unset else value
