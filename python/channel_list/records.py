"""The records of include/channel/records.h as ctypes structures, under their C names, and walks along the lists.

Their layout follows from the compiler's rules for native pointers, on 32-bit and 64-bit targets alike; a test compares
every offset and width with the C records. Whoever holds a structure holds the library's memory: it must not outlive the
call after which the record may be gone. values.py makes copies that may be kept.
"""

from __future__ import annotations

import ctypes
from collections.abc import Iterator
from ctypes import POINTER, Structure
from ctypes import c_char as CHAR
from ctypes import c_int8 as I8
from ctypes import c_int16 as I16
from ctypes import c_int64 as I64
from ctypes import c_uint8 as U8
from ctypes import c_uint16 as U16
from ctypes import c_uint32 as U32
from typing import Final, TypeVar

MAX_CHANNEL: Final = 5000
MAX_TV_CHANNEL: Final = 4000
MAX_RADIO_CHANNEL: Final = 1000
MAX_FAV: Final = 20
MAX_FAV_NUM: Final = 40
MAX_PROMO_CHANNEL: Final = 10
MAX_PROVIDER: Final = 500
MAX_GENRE: Final = 50
MAX_COUNTRY: Final = 200
MAX_RETURN_CHANNEL: Final = 20


class list_head(Structure):
    """A link: it stands at the start of each record, and at the head of each list."""


list_head._fields_ = [("next", POINTER(list_head)), ("prev", POINTER(list_head))]


class name_slot_st(Structure):
    """One name of a service."""

    _fields_ = [("reserved_0", U8), ("text", CHAR * 96), ("reserved_97", U8), ("name_len", U16)]


# What services of every version begin with.
_SERVICE_FIELDS = [
    ("list", list_head), ("name", name_slot_st * 2), ("reserved_208", U8 * 2),
    ("country_id", I16), ("genre_id", I16), ("provider_id", I16), ("net_index", U8), ("reserved_217", U8 * 7),
    ("frequency", I64), ("service_type", U8), ("source_type", U8), ("ts_id", U16), ("reserved_236", U8 * 4),
    ("network_id", U16), ("service_id", U16), ("polarisation", U8), ("reserved_245", U8),
    ("pmt_pid", U16), ("pcr_pid", U16), ("video_tag", U8), ("reserved_251", U8),
    ("video_pid", U16), ("video_ecm_pid", U16), ("audio_tag", U8), ("reserved_257", U8),
    ("audio_pid", U16), ("reserved_pid", U16),
]  # fmt: skip


class channel_st(Structure):
    """A service ("real channel")."""

    _fields_ = [
        *_SERVICE_FIELDS, ("reserved_262", U8 * 24), ("reserved_id", U16), ("flag", U8), ("reserved_289", U8 * 9),
        ("user_order_key", I16), ("reserved_300", U8 * 12),
    ]  # fmt: skip


class virtual_channel_st(Structure):
    """A numbered entry of a view."""

    _fields_ = [
        ("vch_tag", I8), ("favorite_id", U8), ("major_ch_num", I16), ("minor_ch_num", I16),
        ("net_index", U8), ("reserved_7", U8), ("frequency", U32), ("polarisation", U8), ("reserved_13", U8),
        ("service_id", U16), ("network_id", U16), ("ts_id", U16), ("rch", POINTER(channel_st)),
    ]  # fmt: skip


class tp_ch_st(Structure):
    """A transponder."""

    _fields_ = [
        ("list", list_head), ("ts_id", U16), ("reserved_10", U8 * 2), ("frequency", U32), ("polarisation", U8),
        ("reserved_17", U8), ("rch_num", U16), ("reserved_20", U8 * 4), ("rch_list", list_head),
        ("reserved_32", U8 * 304),
    ]  # fmt: skip


class network_ch_st(Structure):
    """A network."""

    _fields_ = [
        ("list", list_head), ("net_index", U8), ("reserved_9", U8), ("network_id", U16), ("network_name", CHAR * 64),
        ("tp_num", U16), ("reserved_78", U8 * 2), ("tp_list", list_head), ("reserved_88", U8 * 328),
    ]  # fmt: skip


class group_st(Structure):
    """A provider, genre, country or favourite group."""

    _fields_ = [("reserved_0", U16), ("id", I16), ("name_len", I16), ("name", CHAR * 98)]


class channel_list_st(Structure):
    """The channel list: settings, group tables, views, and the head of the networks."""

    _fields_ = [
        ("version", I16), ("use_tuner", I8), ("ch_type", I8), ("bouquet_id", U16), ("use_group_list", I8),
        ("service_type", I8), ("net_index", I8), ("reserved_9", U8), ("sub_group_id", I16),
        ("provider", group_st * MAX_PROVIDER), ("provider_num", I16),
        ("genre", group_st * MAX_GENRE), ("genre_num", I16),
        ("country", group_st * MAX_COUNTRY), ("country_num", I16),
        ("favorite_group", group_st * MAX_FAV), ("favorite_group_num", I16),
        ("vch_type", I16), ("reserved_80102", U8 * 2),
        ("cur_vch", POINTER(virtual_channel_st)), ("cur_vnumber", POINTER(I16)),
        ("vch", virtual_channel_st * MAX_CHANNEL), ("vnumber", I16), ("reserved_200114", U8 * 2),
        ("tv_vch", virtual_channel_st * MAX_TV_CHANNEL), ("tv_vnumber", I16), ("reserved_296118", U8 * 2),
        ("radio_vch", virtual_channel_st * MAX_RADIO_CHANNEL), ("radio_vnumber", I16), ("reserved_320122", U8 * 2),
        ("favorite_vch", virtual_channel_st * MAX_FAV_NUM * MAX_FAV), ("favorite_vnumber", I16 * MAX_FAV),
        ("user_vch", virtual_channel_st * MAX_CHANNEL), ("user_vnumber", I16), ("reserved_459366", U8 * 2),
        ("promo_vch", virtual_channel_st * MAX_PROMO_CHANNEL), ("promo_vnumber", I16),
        ("network_num", U16), ("reserved_459612", U8 * 4), ("network_list", list_head), ("reserved_459624", U8 * 72),
        ("spare_list_a", list_head), ("reserved_459704", U8 * 16), ("spare_list_b", list_head),
        ("reserved_459728", U8 * 304),
    ]  # fmt: skip


class return_channel_st(Structure):
    """An entry of the history of watched channels."""

    _fields_ = [
        ("group", I8), ("service_type", I8), ("sub_group", I16), ("vindex", I16), ("tag", U8), ("net_index", U8),
        ("vch", virtual_channel_st),
    ]  # fmt: skip


class v8_channel_st(Structure):
    """A service of a file of version 7 or 8."""

    _fields_ = [
        *_SERVICE_FIELDS, ("reserved_262", U8 * 198), ("reserved_id", U16), ("flag", U8), ("reserved_463", U8),
        ("reserved_464", U8 * 16),
    ]  # fmt: skip


class v8_tp_ch_st(Structure):
    """A transponder of a file of version 7 or 8."""

    _fields_ = [("base", tp_ch_st), ("extra", U8 * 168)]


class v8_network_ch_st(Structure):
    """A network of a file of version 7 or 8."""

    _fields_ = [("base", network_ch_st), ("extra", U8 * 168)]


class v8_channel_list_st(Structure):
    """The list of a file of version 7 or 8."""

    _fields_ = [("base", channel_list_st), ("extra", U8 * 168)]


_Record = TypeVar("_Record", bound=Structure)


def records_of(owner: Structure, head: str, record: type[_Record]) -> Iterator[_Record]:
    """Walks the list whose head is a field of a record. What is handed out may be freed before the next one is asked."""
    end = ctypes.addressof(owner) + getattr(type(owner), head).offset
    node = ctypes.addressof(getattr(owner, head).next.contents)
    while node != end:
        current = record.from_address(node)
        node = ctypes.addressof(list_head.from_address(node).next.contents)
        yield current


def networks_of(channels: channel_list_st) -> Iterator[network_ch_st]:
    """The networks of a list."""
    return records_of(channels, "network_list", network_ch_st)


def transponders_of(network: network_ch_st) -> Iterator[tp_ch_st]:
    """The transponders of a network."""
    return records_of(network, "tp_list", tp_ch_st)


def services_of(transponder: tp_ch_st) -> Iterator[channel_st]:
    """The services of a transponder."""
    return records_of(transponder, "rch_list", channel_st)


def all_services_of(channels: channel_list_st) -> Iterator[channel_st]:
    """The services of a list, in its order."""
    for network in networks_of(channels):
        for transponder in transponders_of(network):
            yield from services_of(transponder)


def field_bytes(record: Structure, field: str) -> bytes:
    """All bytes of a field, those behind a zero byte as well."""
    place = getattr(type(record), field)
    return ctypes.string_at(ctypes.addressof(record) + place.offset, place.size)
