"""Channel files in and out: whole, missing, damaged, of earlier versions, and the new list that is merged."""

from __future__ import annotations

import ctypes
import os
import resource
import signal
import stat
import subprocess
import sys
import tempfile
import unittest
from contextlib import nullcontext
from pathlib import Path
from unittest import mock

from channel_list import NEW_LIST_PATH, FileError, Verbosity, load_library, verbosity
from channel_list.files import silent_stdout
from channel_list.records import channel_st
from support import CURRENT, GOLDEN, ListTest, captured, fill

HEADER_SIZE = 460_032
LONG_HEADER_SIZE = 460_200


def cut_header(image: bytes, size: int) -> bytes:
    """A file that ends behind the links of its header's lists, which hold what could be taken for addresses."""
    links_begin = 459_592
    return image[:links_begin] + b"\x41" * (size - links_begin)


class Mallinfo2(ctypes.Structure):
    """What mallinfo2() of the C library tells."""

    _names = "arena ordblks smblks hblks hblkhd usmblks fsmblks uordblks fordblks keepcost"
    _fields_ = [(name, ctypes.c_size_t) for name in _names.split()]


def bytes_in_use() -> int:
    """The bytes of the heap that are in use, large blocks included."""
    mallinfo2 = ctypes.CDLL(None).mallinfo2
    mallinfo2.restype = Mallinfo2
    told = mallinfo2()
    return int(told.uordblks) + int(told.hblkhd)


class Loading(ListTest):
    def assert_refused(self, path: Path, reason: str) -> None:
        with self.assertRaises(FileError) as refusal:
            self.channels.load(path)
        self.assertEqual(str(refusal.exception), f"{path}: {reason}")
        self.assertEqual((refusal.exception.path, refusal.exception.reason), (str(path), reason))

    def test_a_file_that_is_loaded_and_saved_is_the_same(self) -> None:
        self.channels.load(CURRENT)
        self.channels.save(self.folder / "saved.dat")
        self.assertEqual((self.folder / "saved.dat").read_bytes(), CURRENT.read_bytes())

    def test_the_countries_settings_and_favourite_keys_of_a_file_stay(self) -> None:
        image = bytearray(CURRENT.read_bytes())
        image[80_100:80_102] = (10).to_bytes(
            2, "little"
        )  # favourite group 0 is the current view, with settings of another
        image[320_125] = image[320_149] = 7  # two entries of favourite group 0 have one key
        service = HEADER_SIZE + 416 + 336
        image[service + 210] = 9  # the country of the first service
        (self.folder / "marked.dat").write_bytes(image)
        self.channels.load(self.folder / "marked.dat")
        self.channels.save(self.folder / "saved.dat")
        self.assertEqual((self.folder / "saved.dat").read_bytes(), image)
        self.assertEqual(next(self.channels.services()).country_id, 9)

    def test_a_path_may_be_long_and_its_name_any(self) -> None:
        folder = self.folder / ("long folder " * 10) / "ö"
        folder.mkdir(parents=True)
        (folder / "liste für später.dat").write_bytes(CURRENT.read_bytes())
        self.channels.load(folder / "liste für später.dat")
        self.channels.save(folder / "zurück.dat")
        self.assertEqual((folder / "zurück.dat").read_bytes(), CURRENT.read_bytes())

    def test_loading_again_replaces_the_list(self) -> None:
        self.channels.load(CURRENT)
        self.channels.load(CURRENT)
        self.assertEqual(len(list(self.channels.services())), 8)

    def test_loading_again_takes_no_more_memory(self) -> None:
        fill(500)
        self.channels.save(self.folder / "list.dat")
        self.channels.load(self.folder / "list.dat")
        before = bytes_in_use()
        for _ in range(10):
            self.channels.load(self.folder / "list.dat")
        self.assertLess(bytes_in_use() - before, 500 * ctypes.sizeof(channel_st))

    def test_what_is_wrong_with_a_file_is_logged_once(self) -> None:
        image = bytearray(CURRENT.read_bytes())
        image[80_126] ^= 0xFF  # the service id of the first entry
        (self.folder / "wrong.dat").write_bytes(image)
        with captured(2) as lines, verbosity(Verbosity.ERRORS):
            self.channels.load(self.folder / "wrong.dat")
        self.assertEqual(sum("ERROR: link" in line for line in lines), 1)

    def test_a_missing_file_raises_and_leaves_the_list(self) -> None:
        fill(1)
        with self.assertRaises(FileNotFoundError):
            self.channels.load(self.folder / "missing.dat")
        self.assertEqual(len(self.channels.view("all")), 1)

    def test_what_is_no_file_is_refused_and_leaves_the_list(self) -> None:
        fill(1)
        os.mkfifo(self.folder / "pipe")
        self.assert_refused(self.folder / "pipe", "not a regular file")
        self.assert_refused(self.folder, "not a regular file")
        self.assertEqual(len(self.channels.view("all")), 1)

    def test_a_file_of_less_than_2_bytes_is_refused(self) -> None:
        for size in (0, 1):
            with self.subTest(size=size):
                (self.folder / "short.dat").write_bytes(bytes(size))
                self.assert_refused(self.folder / "short.dat", "too short for a channel file")

    def test_other_versions_are_refused(self) -> None:
        for version, advice in [(9, ": convert() reads it"), (7, ": convert() reads it"), (6, ""), (11, ""), (-1, "")]:
            with self.subTest(version=version):
                (self.folder / "other.dat").write_bytes(version.to_bytes(2, "little", signed=True))
                self.assert_refused(self.folder / "other.dat", f"is of version {version}, not 10{advice}")

    def test_a_file_that_ends_anywhere_too_early_is_refused_and_leaves_an_empty_list(self) -> None:
        image = CURRENT.read_bytes()
        borders = (HEADER_SIZE, HEADER_SIZE + 416, HEADER_SIZE + 416 + 336, len(image))
        path = self.folder / "cut.dat"
        for size in (2, *(border - 1 for border in borders)):
            with self.subTest(size=size):
                path.write_bytes(image[:size])
                self.assert_refused(path, "ends too early for a channel file of version 10")
                self.assertEqual((self.channels.view("all"), self.channels.networks()), ((), ()))

    def test_a_file_that_ends_in_its_header_is_refused_whatever_its_bytes_are(self) -> None:
        path = self.folder / "cut.dat"
        path.write_bytes(cut_header(CURRENT.read_bytes(), HEADER_SIZE - 1))
        self.assert_refused(path, "ends too early for a channel file of version 10")

    def test_a_file_whose_counts_claim_what_is_not_there_is_refused(self) -> None:
        path = self.folder / "claims.dat"
        for field in (459_610, HEADER_SIZE + 76, HEADER_SIZE + 416 + 18):
            with self.subTest(field=field):
                image = bytearray(CURRENT.read_bytes())
                image[field : field + 2] = b"\xff\xff"
                path.write_bytes(image)
                self.assert_refused(path, "ends too early for a channel file of version 10")

    def test_a_file_that_is_cut_while_it_is_read_is_refused_and_leaves_an_empty_list(self) -> None:
        with mock.patch("channel_list.loading.list_beside", return_value=nullcontext(None)):
            self.assert_refused(CURRENT, "ends too early for a channel file of version 10")
        self.assertEqual((self.channels.view("all"), self.channels.networks()), ((), ()))

    def test_counts_beyond_their_arrays_are_brought_into_them(self) -> None:
        image = bytearray(CURRENT.read_bytes())
        image[459_608:459_610] = (11).to_bytes(2, "little")
        image[320_120:320_122] = (-1).to_bytes(2, "little", signed=True)
        (self.folder / "counts.dat").write_bytes(image)
        self.channels.load(self.folder / "counts.dat")
        self.assertEqual((len(self.channels.view("promotion")), self.channels.view("radio")), (10, ()))

    def test_the_script_keeps_its_standard_output(self) -> None:
        with captured(1) as lines:
            print("before", flush=False)
            self.channels.load(CURRENT)
            print("behind", flush=True)
        self.assertEqual(lines, ["before", "behind"])

    def test_no_file_stays_open(self) -> None:
        before = os.listdir("/proc/self/fd")
        self.channels.load(CURRENT)
        self.channels.save(self.folder / "saved.dat")
        with self.assertRaises(FileError):
            self.channels.convert(CURRENT)
        self.assertEqual(os.listdir("/proc/self/fd"), before)


class Saving(ListTest):
    def test_an_empty_list_is_a_header(self) -> None:
        self.channels.save(self.folder / "empty.dat")
        self.assertEqual((self.folder / "empty.dat").stat().st_size, HEADER_SIZE)

    def test_a_new_file_has_the_usual_mode_and_an_old_one_keeps_its_own(self) -> None:
        path = self.folder / "saved.dat"
        before = os.umask(0o027)
        self.addCleanup(os.umask, before)
        self.channels.save(path)
        self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o640)
        path.chmod(0o604)
        self.channels.save(path)
        self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o604)

    @unittest.skipUnless(os.geteuid() == 0, "only root may give a file away")
    def test_an_old_file_keeps_its_owner_and_group(self) -> None:
        path = self.folder / "saved.dat"
        path.write_bytes(b"old")
        os.chown(path, 1234, 4321)
        self.channels.save(path)
        self.assertEqual((path.stat().st_uid, path.stat().st_gid, path.stat().st_size), (1234, 4321, HEADER_SIZE))

    def test_a_symbolic_link_stays_one(self) -> None:
        for target in ("there.dat", "not yet there.dat"):
            with self.subTest(target):
                link = self.folder / f"link to {target}"
                (self.folder / "there.dat").write_bytes(b"old")
                link.symlink_to(target)
                self.channels.save(link)
                self.assertTrue(link.is_symlink())
                self.assertEqual((self.folder / target).stat().st_size, HEADER_SIZE)

    def test_a_missing_folder_raises(self) -> None:
        with self.assertRaises(FileNotFoundError):
            self.channels.save(self.folder / "missing/saved.dat")

    def test_a_folder_and_a_read_only_file_are_refused(self) -> None:
        path = self.folder / "read-only.dat"
        path.write_bytes(b"old")
        path.chmod(0o444)
        for refused, reason in [(self.folder, "not a regular file"), (path, "is read-only")]:
            with self.subTest(reason), self.assertRaises(FileError) as refusal:
                self.channels.save(refused)
            self.assertEqual(str(refusal.exception), f"{refused}: {reason}")
        self.assertEqual(path.read_bytes(), b"old")

    def test_a_file_that_cannot_be_written_stays_as_it_was(self) -> None:
        path = self.folder / "saved.dat"
        path.write_bytes(b"old")
        limits = resource.getrlimit(resource.RLIMIT_FSIZE)
        self.addCleanup(signal.signal, signal.SIGXFSZ, signal.signal(signal.SIGXFSZ, signal.SIG_IGN))
        resource.setrlimit(resource.RLIMIT_FSIZE, (HEADER_SIZE - 1, limits[1]))
        try:
            with self.assertRaises(FileError) as refusal:
                self.channels.save(path)
        finally:
            resource.setrlimit(resource.RLIMIT_FSIZE, limits)
        self.assertEqual(str(refusal.exception), f"{path}: the channel file could not be written")
        self.assertEqual(os.listdir(self.folder), ["saved.dat"])
        self.assertEqual(path.read_bytes(), b"old")

    def test_the_library_is_left_with_the_target_folder_that_it_had(self) -> None:
        self.addCleanup(load_library().set_target_dir, b"/")
        for folder in (b"/", b"/tmp/"):
            with self.subTest(folder=folder):
                load_library().set_target_dir(folder)
                self.channels.save(self.folder / "saved.dat")
                self.channels.load(self.folder / "saved.dat")
                self.assertEqual(load_library().set_target_dir(None), folder)


class Converting(ListTest):
    def test_earlier_versions_become_the_list_that_the_library_makes_of_them(self) -> None:
        for version in (7, 8, 9):
            with self.subTest(version=version):
                self.channels.convert(GOLDEN / f"channel_v{version}.dat")
                self.channels.save(self.folder / "converted.dat")
                expected = (GOLDEN / f"repaired_v{version}.dat").read_bytes()
                self.assertEqual((self.folder / "converted.dat").read_bytes(), expected)

    def test_a_converted_list_can_be_edited_at_once(self) -> None:
        self.channels.convert(GOLDEN / "channel_v8.dat")
        group = self.channels.favourites.add_group("Converted")
        group = self.channels.favourites.add(group, self.channels.view("all")[0])
        self.assertEqual(group.entries[0].name, self.channels.view("all")[0].name)

    def test_versions_that_cannot_be_converted_are_refused_and_leave_the_list(self) -> None:
        fill(1)
        for version, reason in [
            (10, "is of version 10 already: load() reads it"),
            (6, "is of version 6: only 7, 8 and 9 can be converted"),
            (11, "is of version 11: only 7, 8 and 9 can be converted"),
        ]:
            with self.subTest(version=version):
                path = self.folder / "other.dat"
                path.write_bytes(version.to_bytes(2, "little"))
                with self.assertRaises(FileError) as refusal:
                    self.channels.convert(path)
                self.assertEqual(str(refusal.exception), f"{path}: {reason}")
        self.assertEqual(len(self.channels.view("all")), 1)

    def test_a_file_that_ends_too_early_is_refused_and_leaves_an_empty_list(self) -> None:
        path = self.folder / "cut.dat"
        image = (GOLDEN / "channel_v8.dat").read_bytes()
        for cut in (image[:-1], cut_header(image, LONG_HEADER_SIZE - 1)):
            with self.subTest(size=len(cut)):
                path.write_bytes(cut)
                fill(1)
                with self.assertRaises(FileError) as refusal:
                    self.channels.convert(path)
                self.assertEqual(str(refusal.exception), f"{path}: ends too early for a channel file of version 8")
                self.assertEqual(self.channels.networks(), ())


class OwnNewListFolder:
    """The folder of new lists, in a mount that no other process sees."""

    CLONE_NEWNS = 0x20000
    MS_PRIVATE_ALL = 0x44000

    def __init__(self) -> None:
        self.data = Path(NEW_LIST_PATH).parents[1]
        self.was_made = False
        try:
            self.was_made = not self.data.exists()
            self.data.mkdir(exist_ok=True)
            libc = ctypes.CDLL(None)
            self.is_ours = (
                libc.unshare(self.CLONE_NEWNS) == 0
                and libc.mount(b"none", b"/", b"none", self.MS_PRIVATE_ALL, None) == 0
                and libc.mount(b"tmpfs", bytes(self.data), b"tmpfs", 0, b"size=4m") == 0
            )
        except OSError:
            self.is_ours = False
        if self.is_ours:
            Path(NEW_LIST_PATH).parent.mkdir()

    def close(self) -> None:
        if self.is_ours:
            ctypes.CDLL(None).umount(bytes(self.data))
        if self.was_made and self.data.exists():
            self.data.rmdir()


class Merging(ListTest):
    place: OwnNewListFolder

    @classmethod
    def setUpClass(cls) -> None:
        cls.place = OwnNewListFolder()
        cls.addClassCleanup(cls.place.close)

    def setUp(self) -> None:
        super().setUp()
        if not self.place.is_ours:
            self.skipTest(f"{NEW_LIST_PATH} cannot be mounted over")
        Path(NEW_LIST_PATH).unlink(missing_ok=True)

    def assert_refused(self, reason: str) -> None:
        with self.assertRaises(FileError) as refusal:
            self.channels.merge()
        self.assertEqual(str(refusal.exception), f"{NEW_LIST_PATH}: {reason}")

    def test_merging_gives_the_list_that_the_library_makes(self) -> None:
        for scan, changes in [("unchanged", 0), ("changed", 14)]:
            with self.subTest(scan):
                Path(NEW_LIST_PATH).write_bytes((GOLDEN / f"scan_{scan}.dat").read_bytes())
                self.channels.load(CURRENT)
                self.assertEqual(self.channels.merge(), changes)
                self.channels.save(self.folder / "merged.dat")
                expected = (GOLDEN / f"merged_{scan}.dat").read_bytes()
                self.assertEqual((self.folder / "merged.dat").read_bytes(), expected)

    def test_merging_twice_deletes_what_only_the_second_list_lacks(self) -> None:
        self.channels.load(CURRENT)
        Path(NEW_LIST_PATH).write_bytes(CURRENT.read_bytes())
        self.assertEqual(self.channels.merge(), 0)
        header = bytearray(CURRENT.read_bytes()[:HEADER_SIZE])
        header[459_610:459_612] = bytes(2)
        Path(NEW_LIST_PATH).write_bytes(header)
        self.assertEqual(self.channels.merge(), 8)
        self.assertEqual(list(self.channels.services()), [])

    def test_a_missing_new_list_raises(self) -> None:
        with self.assertRaises(FileNotFoundError):
            self.channels.merge()

    def test_a_damaged_new_list_is_refused_and_leaves_the_list(self) -> None:
        image = CURRENT.read_bytes()
        for cut in (image[:-1], cut_header(image, HEADER_SIZE - 1)):
            with self.subTest(size=len(cut)):
                self.channels.load(CURRENT)
                Path(NEW_LIST_PATH).write_bytes(cut)
                self.assert_refused("ends too early for a channel file of version 10")
                self.channels.save(self.folder / "saved.dat")
                self.assertEqual((self.folder / "saved.dat").read_bytes(), image)

    def test_a_new_list_of_another_version_is_refused(self) -> None:
        Path(NEW_LIST_PATH).write_bytes((GOLDEN / "channel_v9.dat").read_bytes())
        self.assert_refused("is of version 9, not 10: convert() reads it")


class ClosedOutput(unittest.TestCase):
    def test_files_are_read_converted_and_saved_without_a_standard_output(self) -> None:
        script = """
import sys
from channel_list import ChannelList
with ChannelList(sys.argv[1]) as channels:
    channels.save(sys.argv[3])
    channels.convert(sys.argv[2])
    channels.save(sys.argv[4])
"""
        with tempfile.TemporaryDirectory() as folder:
            saved, converted = Path(folder, "saved.dat"), Path(folder, "converted.dat")
            arguments = [CURRENT, GOLDEN / "channel_v8.dat", saved, converted]
            command = ["sh", "-c", 'exec "$0" "$@" >&-', sys.executable, "-c", script, *arguments]
            done = subprocess.run(command, stderr=subprocess.PIPE, text=True)
            self.assertEqual((done.stderr, done.returncode), ("", 0))
            self.assertEqual(saved.read_bytes(), CURRENT.read_bytes())
            self.assertEqual(converted.read_bytes(), (GOLDEN / "repaired_v8.dat").read_bytes())


class SilentOutput(unittest.TestCase):
    def test_what_c_code_prints_in_the_block_is_dropped_and_nothing_else(self) -> None:
        libc = ctypes.CDLL(None)
        with captured(1) as lines:
            libc.puts(b"before")
            with silent_stdout():
                libc.puts(b"inside")
            libc.puts(b"behind")
        self.assertEqual(lines, ["before", "behind"])


if __name__ == "__main__":
    unittest.main()
