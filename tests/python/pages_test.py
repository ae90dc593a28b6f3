"""Programs and bytes on pages that are not the module's: the hosts of the README, the reader and the small file of the
page on file formats.
"""

from __future__ import annotations

import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

from channel_list import Group, GroupKind, Identity
from support import CURRENT, SOURCE, ListTest

README = (SOURCE / "README.md").read_text()
FILE_FORMAT = (SOURCE / "docs/file-format.md").read_text()

DUMP_LINE = re.compile(r"^([0-9a-f]{8}): ((?:[0-9a-f]{4} )+)", re.MULTILINE)


def only_block(page: str, kind: str) -> str:
    """The one program of a kind on a page."""
    (block,) = re.findall(rf"^```{kind}\n(.*?)^```$", page, re.MULTILINE | re.DOTALL)
    return str(block)


def dumped_file() -> bytes:
    """The small file: what is dumped of it, and the counts that the page names in words. Everything else is zero."""
    image = bytearray(460_032 + 416 + 336 + 312)
    for offset, words in DUMP_LINE.findall(FILE_FORMAT):
        piece = bytes.fromhex(words)
        image[int(offset, 16) : int(offset, 16) + len(piece)] = piece
    image[52_012] = 1  # providers
    image[200_116:200_140] = image[80_112:80_136]  # the entry of the TV view is that of the ALL view
    image[296_116] = 1  # entries of the TV view
    image[459_610] = 1  # networks
    return bytes(image)


def build_host(source: str, folder: Path) -> Path:
    """A host in C, as one builds it against the library that the tests use."""
    (folder / "host.c").write_text(source)
    library = Path(os.environ["CHANNEL_LIBRARY"]).parent
    options = ["-std=c11", "-Wall", "-Wextra", "-Wconversion", "-Werror", f"-I{SOURCE}/include", f"-I{SOURCE}"]
    links = [f"-L{library}", f"-Wl,-rpath,{library}", "-lchannel", "-lchannelbase"]
    command = [os.environ["CC"], *options, folder / "host.c", "-o", folder / "host", *links]
    subprocess.run(command, check=True)
    return folder / "host"


class Readme(ListTest):
    def setUp(self) -> None:
        super().setUp()
        self.channels.load(CURRENT)
        self.channels.save(self.folder / "channels.dat")

    def test_the_host_in_c_prints_the_pids_of_a_number(self) -> None:
        entry = self.channels.view("tv")[0]
        assert entry.service is not None
        source = only_block(README, "c")
        self.assertIn("get_channel_index(7)", source)
        host = build_host(source.replace("(7)", f"({entry.number})"), self.folder)
        done = subprocess.run([host], cwd=self.folder, capture_output=True, text=True, check=True)
        expected = f"{entry.name}: video PID {entry.service.video_pid}, audio PID {entry.service.audio_pid}"
        self.assertEqual(done.stdout.splitlines()[1:], [expected])  # behind the line that a load prints

    def test_the_script_prints_numbers_and_names(self) -> None:
        command = [sys.executable, "-c", only_block(README, "python")]
        done = subprocess.run(command, cwd=self.folder, capture_output=True, text=True, check=True)
        expected = [f"{entry.number} {entry.name}" for entry in self.channels.view("tv")]
        self.assertEqual(done.stdout.splitlines(), expected)


class FileFormat(ListTest):
    def setUp(self) -> None:
        super().setUp()
        self.path = self.folder / "small.dat"
        self.path.write_bytes(dumped_file())

    def test_the_small_file_is_what_the_page_says(self) -> None:
        self.channels.load(self.path)
        identity = Identity(1, 0x0102, 0x0405, 11_727_480, 0x1001, 0)
        for view in ("all", "tv"):
            (entry,) = self.channels.view(view)
            self.assertEqual((entry.number, entry.minor_number, entry.name, entry.identity), (7, 0, "News", identity))
        self.assertEqual(self.channels.groups(GroupKind.PROVIDER), (Group(GroupKind.PROVIDER, 1, "Free"),))
        (network,) = self.channels.networks()
        self.assertEqual((network.name, len(network.transponders)), ("Satellite", 1))
        (service,) = self.channels.services()
        self.assertEqual((service.pmt_pid, service.video_pid, service.audio_pid), (0x0100, 0x0101, 0x0102))

    def test_the_small_file_is_saved_as_it_is(self) -> None:
        self.channels.load(self.path)
        self.channels.save(self.folder / "saved.dat")
        self.assertEqual((self.folder / "saved.dat").read_bytes(), dumped_file())

    def printed_by_reader(self, path: Path) -> list[str]:
        command = [sys.executable, "-c", only_block(FILE_FORMAT, "python"), path]
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()

    def test_the_reader_lists_the_service_of_the_small_file(self) -> None:
        self.assertEqual(self.printed_by_reader(self.path), ["0x1001 b'News'"])

    def test_the_reader_lists_every_service_of_a_file(self) -> None:
        self.channels.load(CURRENT)
        ids = [f"{service.identity.service_id:#06x}" for service in self.channels.services()]
        self.assertEqual([line.split()[0] for line in self.printed_by_reader(CURRENT)], ids)


if __name__ == "__main__":
    unittest.main()
