"""One list in a process: taking it, closing it, and the library behind it."""

from __future__ import annotations

import gc
import os
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

from channel_list import (
    ChannelList,
    ClosedError,
    Identity,
    InUseError,
    NotFoundError,
    ServiceFlag,
    SortType,
    Verbosity,
    get_verbosity,
    library_path,
    load_library,
    set_verbosity,
    verbosity,
)
from support import CURRENT, SOURCE, ListTest, captured, fill


class Lifecycle(unittest.TestCase):
    def test_a_list_is_empty_until_a_file_is_loaded(self) -> None:
        with ChannelList() as channels:
            self.assertEqual((channels.view("all"), channels.networks()), ((), ()))

    def test_a_second_list_is_refused_while_one_is_open(self) -> None:
        with ChannelList():
            with self.assertRaises(InUseError) as refusal:
                ChannelList()
        expected = "the process has one channel list, which another ChannelList holds: close that one first"
        self.assertEqual(str(refusal.exception), expected)

    def test_a_second_list_starts_empty_after_the_first_is_closed(self) -> None:
        with ChannelList(CURRENT):
            pass
        with ChannelList() as channels:
            self.assertEqual(channels.networks(), ())

    def test_a_list_that_nobody_holds_any_more_does_not_stand_in_the_way(self) -> None:
        ChannelList(CURRENT)
        gc.collect()
        with ChannelList() as channels:
            self.assertEqual(channels.networks(), ())

    def test_a_list_whose_file_cannot_be_loaded_does_not_stand_in_the_way(self) -> None:
        with self.assertRaises(FileNotFoundError):
            ChannelList("missing.dat")
        ChannelList().close()

    def test_closing_releases_the_records(self) -> None:
        channels = ChannelList(CURRENT)
        channels.close()
        self.assertEqual(load_library().get_channel_list().contents.network_num, 0)

    def test_closing_twice_leaves_the_next_list_alone(self) -> None:
        first = ChannelList()
        first.close()
        with ChannelList(CURRENT) as channels:
            first.close()
            self.assertEqual(len(channels.view("all")), 8)

    def test_an_exception_in_the_block_closes_the_list(self) -> None:
        with self.assertRaises(KeyError):
            with ChannelList() as channels:
                raise KeyError
        with self.assertRaises(ClosedError):
            channels.view("all")

    def test_every_call_on_a_closed_list_is_refused(self) -> None:
        channels = ChannelList()
        favourites = channels.favourites
        channels.close()
        identity = Identity(1, 2, 3, 4, 5, 0)
        calls = {
            "load": lambda: channels.load(CURRENT),
            "read": lambda: channels.read(CURRENT),
            "convert": lambda: channels.convert(CURRENT),
            "save": lambda: channels.save("x"),
            "merge": channels.merge,
            "view": lambda: channels.view("tv"),
            "networks": channels.networks,
            "services": channels.services,
            "groups": lambda: channels.groups(3),
            "favourites": lambda: channels.favourites,
            "entry": lambda: channels.entry(1),
            "service": lambda: channels.service(identity),
            "named": lambda: channels.named("x"),
            "search": lambda: channels.search("x"),
            "rename": lambda: channels.rename(identity, "x"),
            "set_flags": lambda: channels.set_flags(identity, ServiceFlag.LOCKED),
            "lock": lambda: channels.lock(identity),
            "skip": lambda: channels.skip(identity),
            "remove": lambda: channels.remove(identity),
            "sort": lambda: channels.sort("tv", SortType.NAME),
            "__enter__": channels.__enter__,
        }
        public = {name for name in vars(ChannelList) if not name.startswith("_")}
        self.assertEqual(public - set(calls), {"close"})
        on_favourites = {
            "len": lambda: len(favourites),
            "iter": lambda: list(favourites),
            "contains": lambda: "x" in favourites,
            "getitem": lambda: favourites[0],
            "add_group": lambda: favourites.add_group("x"),
            "rename_group": lambda: favourites.rename_group(0, "x"),
            "remove_group": lambda: favourites.remove_group(0),
        }
        for name, call in {**calls, **on_favourites}.items():
            with self.subTest(name), self.assertRaises(ClosedError) as refusal:
                call()
            self.assertEqual(str(refusal.exception), "the channel list is closed")

    def test_values_outlive_the_list(self) -> None:
        with ChannelList(CURRENT) as channels:
            entry = channels.view("all")[0]
            groups = list(channels.favourites)
        self.assertEqual((entry.name, groups[0].entries[0].name), ("First Television", "First Television"))


class Values(ListTest):
    def test_a_value_stays_what_it_was_when_its_service_is_removed(self) -> None:
        fill(1)
        entry = self.channels.view("all")[0]
        self.channels.remove(entry)
        self.assertEqual(entry.name, "Service 1")
        with self.assertRaises(NotFoundError):
            self.channels.service(entry)


class Log(ListTest):
    def miss(self) -> list[str]:
        """What a lookup that finds nothing writes on standard error, which is one line at the level of errors."""
        with captured(2) as lines, self.assertRaises(NotFoundError):
            self.channels.entry(7)
        return lines

    def test_the_library_is_silent_until_a_script_sets_a_verbosity(self) -> None:
        self.assertEqual((get_verbosity(), self.miss()), (Verbosity.SILENT, []))

    def test_log_lines_go_to_standard_error_at_the_verbosity_that_was_set(self) -> None:
        self.addCleanup(set_verbosity, Verbosity.SILENT)
        set_verbosity(Verbosity.ERRORS)
        line = r"^\x1b\[32mERROR: vtype_get_vindex_by_number:\d+ [^\n]*\n\x1b\[0m$"
        self.assertRegex("\n".join(self.miss()), line)

    def test_a_verbosity_may_hold_for_a_block(self) -> None:
        with verbosity(Verbosity.ERRORS), verbosity(Verbosity.TRACES), captured(2) as lines:
            load_library().print_provider_info()
        self.assertNotEqual(lines, [])
        self.assertEqual(get_verbosity(), Verbosity.SILENT)

    def test_loading_and_saving_print_nothing_on_either_stream(self) -> None:
        with captured(1) as output, captured(2) as log:
            self.channels.load(CURRENT)
            self.channels.save(self.folder / "saved.dat")
        self.assertEqual((output, log), ([], []))


def run(script: str, **environment: str) -> subprocess.CompletedProcess[str]:
    """Runs a script in a process of its own."""
    return subprocess.run(
        [sys.executable, "-B", "-c", script], env={**os.environ, **environment}, capture_output=True, text=True
    )


class FindingTheLibrary(ListTest):
    def test_the_environment_names_it(self) -> None:
        self.assertEqual(library_path(), os.environ["CHANNEL_LIBRARY"])

    def test_a_source_tree_has_it_in_its_release_build(self) -> None:
        package = self.folder / "tree/python/channel_list"
        built = self.folder / "tree/build/release/lib/libchannel.so.1"
        self.assertEqual(self.path_found_by_copy_in(package, built), str(built))

    def test_an_installation_has_it_above_the_package(self) -> None:
        package = self.folder / "lib/python3/dist-packages/channel_list"
        installed = self.folder / "lib/libchannel.so.1"
        self.assertEqual(self.path_found_by_copy_in(package, installed), str(installed))

    def test_otherwise_the_system_searches(self) -> None:
        package = self.folder / "somewhere/else/entirely/channel_list"
        self.assertEqual(self.path_found_by_copy_in(package, self.folder / "elsewhere"), "libchannel.so.1")

    def path_found_by_copy_in(self, package: Path, library: Path) -> str:
        shutil.copytree(SOURCE / "python/channel_list", package)
        library.parent.mkdir(parents=True, exist_ok=True)
        library.touch()
        script = "from channel_list import library_path; print(library_path())"
        return run(script, CHANNEL_LIBRARY="", PYTHONPATH=str(package.parent)).stdout.strip()

    def test_its_base_library_is_the_one_beside_it(self) -> None:
        built = Path(os.environ["CHANNEL_LIBRARY"]).resolve()
        library, base = self.folder / built.name, self.folder / "libchannelbase.so.1"
        shutil.copy(built, library)
        shutil.copy(built.parent / base.name, base)
        script = "import channel_list; channel_list.load_library(); print(open('/proc/self/maps').read())"
        mapped = set(re.findall(r"\S*libchannelbase\S*", run(script, CHANNEL_LIBRARY=str(library)).stdout))
        self.assertEqual(mapped, {str(base)})

    def test_a_library_that_is_not_there_is_told(self) -> None:
        script = "import channel_list\ntry: channel_list.ChannelList()\nexcept channel_list.LibraryError as e: print(e)"
        result = run(script, CHANNEL_LIBRARY="/nowhere/libchannel.so")
        expected = (
            "cannot open shared object file: No such file or directory: CHANNEL_LIBRARY can name the library's file"
        )
        self.assertEqual(result.stdout, f"/nowhere/libchannel.so: {expected}\n")

    def test_another_library_is_told(self) -> None:
        script = "import channel_list\ntry: channel_list.ChannelList()\nexcept channel_list.LibraryError as e: print(e)"
        result = run(script, CHANNEL_LIBRARY="libc.so.6")
        expected = "libc.so.6: has no init_channel_list: not the library that this package is for\n"
        self.assertEqual(result.stdout, expected)

    def test_importing_the_package_loads_no_library(self) -> None:
        result = run("import channel_list; print('imported')", CHANNEL_LIBRARY="/nowhere/libchannel.so")
        self.assertEqual(result.stdout, "imported\n")


if __name__ == "__main__":
    unittest.main()
