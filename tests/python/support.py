"""What the tests share: files, a scratch folder, lists made through the C interface, and what C code prints."""

from __future__ import annotations

import contextlib
import ctypes
import os
import tempfile
import unittest
from collections.abc import Iterator
from pathlib import Path

from channel_list import ChannelList, load_library
from channel_list.records import channel_st, virtual_channel_st

SOURCE = Path(__file__).resolve().parents[2]
GOLDEN = SOURCE / "tests/golden"
CURRENT = GOLDEN / "channel_v10.dat"

FREQUENCY = 11_727_480


class ListTest(unittest.TestCase):
    """A test with an empty channel list and a scratch folder."""

    def setUp(self) -> None:
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.channels = self.enterContext(ChannelList())


def file_service(service_id: int, name: bytes = b"", frequency: int = FREQUENCY, polarisation: int = 0) -> channel_st:
    """Files a TV service through the library; no view shows it."""
    service: channel_st = load_library().alloc_channel_info().contents
    service.net_index, service.network_id, service.ts_id = 1, 2, 3
    service.frequency, service.polarisation, service.service_id = frequency, polarisation, service_id
    service.service_type = 1
    write_name(service, name)
    load_library().add_rch_info(service, bytes(64))
    return service


def write_name(service: channel_st, name: bytes) -> None:
    """Writes bytes into the name, zero bytes and a missing terminator included."""
    ctypes.memmove(ctypes.addressof(service.name[0]) + 1, name, len(name))


def show(service: channel_st, number: int) -> virtual_channel_st:
    """Appends an entry for a service to the ALL view."""
    channels = load_library().get_channel_list().contents
    entry: virtual_channel_st = channels.vch[channels.vnumber]
    for field in ("net_index", "network_id", "ts_id", "frequency", "service_id", "polarisation"):
        setattr(entry, field, getattr(service, field))
    entry.major_ch_num = number
    entry.rch = ctypes.pointer(service)
    channels.vnumber += 1
    return entry


def fill(count: int) -> None:
    """Files services 1 to count, and shows each under its service id as its number."""
    for service_id in range(1, count + 1):
        show(file_service(service_id, f"Service {service_id}".encode()), service_id)


@contextlib.contextmanager
def captured(descriptor: int) -> Iterator[list[str]]:
    """Collects the lines that anybody writes on standard output or standard error, C code included."""
    lines: list[str] = []
    saved = os.dup(descriptor)
    with tempfile.TemporaryFile() as file:
        os.dup2(file.fileno(), descriptor)
        try:
            yield lines
        finally:
            ctypes.CDLL(None).fflush(None)
            os.dup2(saved, descriptor)
            os.close(saved)
            file.seek(0)
            lines += file.read().decode().splitlines()
