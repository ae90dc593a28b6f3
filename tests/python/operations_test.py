"""What the tool does with files: other formats, edits as text, merges, comparisons and rescue."""

from __future__ import annotations

import contextlib
import os
import unittest
from pathlib import Path

from channel_list import (
    CommandError,
    FileError,
    Identity,
    apply_edits,
    compare,
    export_list,
    import_list,
    merge_lists,
    preview_merge,
    salvage,
)
from channel_list.reports import FieldChange, Loss, NamedService, Place, Records, SkippedLine
from support import CURRENT, GOLDEN, SOURCE, ListTest

LINE_UP = SOURCE / "samples/channels.conf"
LINES = LINE_UP.read_text().splitlines(keepends=True)
NEWS = Identity(1, 158, 2025, 11623000, 3202, 1)
NEWS_NAME = "Meridian News 24"


@unittest.skipUnless("CHLIST" in os.environ, "chlist is not built")
class ToolTest(ListTest):
    """A test with a channel file of the line-up."""

    def setUp(self) -> None:
        super().setUp()
        self.file = self.folder / "channels.dat"
        import_list(LINE_UP, self.file)
        self.made = self.file.read_bytes()

    def names_in(self, path: Path) -> list[str]:
        self.channels.load(path)
        return [entry.name for entry in self.channels.view("all")]

    def written(self, name: str, text: str) -> Path:
        (self.folder / name).write_text(text)
        return self.folder / name

    def files(self) -> set[str]:
        return {file.name for file in self.folder.iterdir()}


class Importing(ToolTest):
    def test_a_line_up_becomes_a_channel_file_with_its_companion(self) -> None:
        report = import_list(LINE_UP, self.folder / "new.dat")
        self.assertEqual((report.format, report.services, report.tv, report.radio), ("vdr", 24, 18, 5))
        self.assertEqual(report.companion, f"{self.folder}/new.dat.more.json")
        self.assertEqual(report.not_carried[0], Loss("symbol rates and modulation", 24))
        self.assertFalse(report.has_findings)
        self.assertEqual(report.document["charset"], "UTF-8")
        self.assertEqual(self.files(), {"channels.dat", "channels.dat.more.json", "new.dat", "new.dat.more.json"})

    def test_a_line_that_cannot_be_read_is_told(self) -> None:
        broken = self.written("broken.conf", LINE_UP.read_text() + "no service:1\n")
        report = import_list(broken, self.folder / "new.dat")
        self.assertTrue(report.has_findings)
        self.assertEqual(report.skipped_lines, (SkippedLine(31, "has 2 fields instead of 9 to 13"),))

    def test_the_file_that_is_replaced_is_kept_unless_that_is_not_wanted(self) -> None:
        self.assertIsNone(import_list(LINE_UP, self.file, backup=False).backup)
        self.assertNotIn("channels.dat.bak", self.files())
        self.assertEqual(import_list(LINE_UP, self.file).backup, f"{self.file}.bak")
        self.assertIn("channels.dat.bak", self.files())

    def test_what_is_of_another_format_is_refused(self) -> None:
        with self.assertRaisesRegex(CommandError, "line 1: "):
            import_list(LINE_UP, self.folder / "new.dat", format="csv")
        self.assertNotIn("new.dat", self.files())

    def test_a_list_that_is_like_another_has_its_network_indexes(self) -> None:
        one = self.written("one.conf", "".join(line for line in LINES if "S31.0E" in line))
        import_list(one, self.folder / "one.dat", like=self.file)
        self.channels.load(self.folder / "one.dat")
        self.assertEqual({service.identity.net_index for service in self.channels.services()}, {2})

    def test_an_export_is_the_line_up_again(self) -> None:
        report = export_list(self.file, self.folder / "again.conf")
        self.assertEqual((report.format, report.services, report.not_carried), ("vdr", 24, ()))
        self.assertEqual((self.folder / "again.conf").read_text(), LINE_UP.read_text())

    def test_an_export_tells_what_the_format_cannot_hold(self) -> None:
        report = export_list(self.file, self.folder / "services", format="csv")
        self.assertEqual((report.format, report.has_findings), ("csv", False))
        report = export_list(self.file, self.folder / "services.m3u")
        self.assertEqual((report.not_carried[0], report.has_findings), (Loss("short_name", 5), True))

    def test_a_name_that_begins_with_a_dash_is_no_option(self) -> None:
        with contextlib.chdir(self.folder):
            import_list(LINE_UP, "-f.dat")
            apply_edits("-f.dat", "lock 7", output="-g.dat")
            self.assertTrue(compare("-f.dat", "-g.dat").is_changed)


class Reading(ToolTest):
    def test_every_format_that_is_written_is_read(self) -> None:
        for format in ("json", "csv", "vdr", "dvbv5", "lamedb3", "lamedb4", "lamedb5"):
            with self.subTest(format):
                export_list(self.file, self.folder / f"as {format}", format=format)
                report = self.channels.read(self.folder / f"as {format}")
                assert report is not None
                # One reader takes every lamedb.
                self.assertEqual(report.format.rstrip("345"), format.rstrip("345"))
                self.assertEqual(report.services, None if format == "json" else 24)
                self.assertEqual(len(list(self.channels.services())), 24)
                self.assertIn("Télé Belvédère", [entry.name for entry in self.channels.view("tv")])

    def test_what_a_channel_file_cannot_hold_is_kept_nowhere(self) -> None:
        report = self.channels.read(LINE_UP)
        assert report is not None
        self.assertEqual((report.output, report.companion), (None, None))
        self.assertTrue(report.has_findings)

    def test_a_channel_file_is_loaded_or_converted(self) -> None:
        self.assertIsNone(self.channels.read(CURRENT))
        self.channels.save(self.folder / "saved.dat")
        self.assertEqual((self.folder / "saved.dat").read_bytes(), CURRENT.read_bytes())
        for version in (7, 8, 9):
            with self.subTest(version):
                earlier = GOLDEN / f"channel_v{version}.dat"
                self.channels.convert(earlier)
                converted = self.channels.networks()
                self.assertIsNone(self.channels.read(earlier))
                self.assertEqual(self.channels.networks(), converted)

    def test_a_list_that_cannot_be_read_leaves_the_list_as_it_was(self) -> None:
        self.channels.load(CURRENT)
        before = self.channels.networks()
        with self.assertRaises(FileNotFoundError):
            self.channels.read(self.folder / "none")
        with self.assertRaisesRegex(CommandError, "is of no known format"):
            self.channels.read(self.written("text", "nothing of a list\n"))
        self.assertEqual(self.channels.networks(), before)

    def test_a_short_channel_file_is_refused_as_load_does(self) -> None:
        (self.folder / "short.dat").write_bytes(self.made[:1000])
        with self.assertRaisesRegex(FileError, "ends too early"):
            self.channels.read(self.folder / "short.dat")


class Editing(ToolTest):
    def test_edits_are_a_text_or_lines_or_words(self) -> None:
        for edits in (
            f"# evening\nrename '{NEWS_NAME}' 'News 24'\nlock 7\n",
            [f"rename '{NEWS_NAME}' 'News 24'", "lock 7"],
            (["rename", NEWS_NAME, "News 24"], ("lock", "7")),
        ):
            with self.subTest(edits=edits):
                self.file.write_bytes(self.made)
                report = apply_edits(self.file, edits)
                (change,) = report.differences.changed
                self.assertEqual((change.name, change.identity), ("News 24", NEWS))
                self.assertEqual(change.fields[0], FieldChange("name", NEWS_NAME, "News 24"))
                self.assertEqual(change.fields[1], FieldChange("locked", False, True))
                self.assertEqual(self.names_in(self.file)[6], "News 24")

    def test_words_may_hold_anything_that_a_name_may(self) -> None:
        name = "it's # \"News\" \\ 24 $HOME"
        apply_edits(self.file, [["rename", "7", name]])
        self.assertEqual(self.names_in(self.file)[6], name)

    def test_a_line_that_cannot_be_done_undoes_all(self) -> None:
        with self.assertRaises(CommandError) as refusal:
            apply_edits(self.file, ["lock 7", "lock Nobody"])
        self.assertEqual((refusal.exception.command, refusal.exception.kind), ("apply", "failure"))
        self.assertRegex(refusal.exception.message, ':2: no service has .* "Nobody"$')
        self.assertEqual(self.file.read_bytes(), self.made)

    def test_a_dry_run_tells_and_changes_nothing(self) -> None:
        report = apply_edits(self.file, "lock --where 'provider=Meridian'", dry_run=True)
        self.assertEqual((report.output, report.is_changed, len(report.differences.changed)), (None, True, 3))
        self.assertEqual(self.file.read_bytes(), self.made)

    def test_without_a_backup_nothing_stands_beside_the_file(self) -> None:
        before = self.files()
        apply_edits(self.file, "lock 7", backup=False)
        self.assertEqual(self.files(), before)
        apply_edits(self.file, "unlock 7")
        kept = {f"channels.dat{end}" for end in (".bak", ".history", ".more.json.bak")}
        self.assertEqual(self.files() - before, kept)

    def test_an_output_leaves_the_file_as_it_was(self) -> None:
        report = apply_edits(self.file, "lock 7", output=self.folder / "new.dat")
        self.assertEqual(report.output, f"{self.folder}/new.dat")
        self.assertEqual(self.file.read_bytes(), self.made)
        self.assertTrue(compare(self.file, self.folder / "new.dat").is_changed)

    def test_edits_that_change_nothing_have_no_differences(self) -> None:
        report = apply_edits(self.file, "unlock 7")
        self.assertFalse(report.is_changed or report.differences)


class Merging(ToolTest):
    """The scan has another service, lacks one, and has one on another transponder."""

    def setUp(self) -> None:
        super().setUp()
        lines = [line for line in LINES if not line.startswith("Delta Shop")]
        moved = [line.replace(":11662:", ":11690:").replace(":2027:", ":2028:") for line in lines]
        added = next(line for line in lines if NEWS_NAME in line).replace(NEWS_NAME, "Meridian Extra")
        self.scan = self.written("scan.conf", "".join([*moved, added.replace(":3202:", ":3299:")]))

    def test_a_preview_tells_what_a_merge_does_and_writes_nothing(self) -> None:
        report = preview_merge(self.file, self.scan)
        self.assertEqual(self.file.read_bytes(), self.made)
        self.assertEqual((report.output, report.scan), (None, str(self.scan)))
        self.assertEqual([service.name for service in report.added], ["Meridian Extra"])
        (removed,) = report.removed
        self.assertEqual((removed.name, removed.service_type), ("Delta Shop", 1))
        self.assertIn(Place("favourites", 58, 4, "The other dish"), removed.entries)
        self.assertEqual(
            [each.name for each in report.moved], ["Weatherglass", "Radio Lantern", "Classics at Dusk", "Jazz & Tides"]
        )
        self.assertEqual(report.moved[0].before.identity, Identity(1, 158, 2027, 11662000, 3204, 0))
        self.assertEqual(report.moved[0].identity, Identity(1, 158, 2028, 11690000, 3204, 0))

        merged = merge_lists(self.file, self.scan, self.file)
        self.assertEqual((merged.output, merged.added, merged.moved), (str(self.file), report.added, report.moved))
        names = self.names_in(self.file)
        self.assertIn("Meridian Extra", names)
        self.assertNotIn("Delta Shop", names)
        self.assertEqual((self.folder / "channels.dat.bak").read_bytes(), self.made)

    def test_what_the_scan_lacks_may_stay(self) -> None:
        report = merge_lists(self.file, self.scan, self.file, keep_missing=True, new_numbers=800, backup=False)
        self.assertEqual((report.removed, [each.name for each in report.missing]), ((), ["Delta Shop"]))
        self.assertNotIn("channels.dat.bak", self.files())
        self.channels.load(self.file)
        self.assertEqual(self.channels.entry(800).name, "Meridian Extra")
        self.assertEqual(self.channels.entry(58).name, "Delta Shop")

    def test_a_scan_of_something_else_is_merged_by_force_alone(self) -> None:
        other = self.written("other.conf", "Other;P:12000:HC34M2S0:S1.0W:27500:110:120:0:0:1:1:1:0\n")
        with self.assertRaisesRegex(CommandError, "has none of 24 services"):
            preview_merge(self.file, other)
        self.assertEqual(len(preview_merge(self.file, other, force=True).removed), 24)

    def test_a_scan_that_is_not_there_is_told_as_python_does(self) -> None:
        with self.assertRaises(FileNotFoundError):
            preview_merge(self.file, self.folder / "none")


class Comparing(ToolTest):
    def test_lists_of_two_formats_may_be_the_same(self) -> None:
        found = compare(LINE_UP, self.file)
        self.assertFalse(found.is_changed or found.differences)
        self.assertEqual((found.before_file, found.after_file), (str(LINE_UP), str(self.file)))

    def test_services_that_came_went_and_changed_are_told(self) -> None:
        lines = [line.replace(NEWS_NAME, "News 24") for line in LINES if not line.startswith("Delta Shop")]
        after = self.written("after.conf", "".join(lines).replace(":@50 Films and sport", ":@50 Films"))
        found = compare(self.file, after)
        self.assertEqual([service.name for service in found.differences.removed], ["Delta Shop"])
        (changed,) = found.differences.changed
        self.assertEqual(changed.fields, (FieldChange("name", NEWS_NAME, "News 24"),))
        group = next(each for each in found.differences.others if each.what == "group")
        self.assertEqual((group.change, group.fields), ("changed", (FieldChange("name", "Films and sport", "Films"),)))
        self.assertEqual([each.name for each in compare(after, self.file).differences.added], ["Delta Shop"])

    def test_a_file_is_called_what_it_was_named(self) -> None:
        (self.folder / "short.dat").write_bytes(self.made[:1000])
        with self.assertRaisesRegex(CommandError, f"^{self.folder}/short.dat: "):
            compare(LINE_UP, self.folder / "short.dat")


class Rescuing(ToolTest):
    def setUp(self) -> None:
        super().setUp()
        self.damaged = self.folder / "damaged.dat"
        self.damaged.write_bytes(self.made[:465_000])

    def test_a_report_alone_writes_nothing(self) -> None:
        before = self.files()
        report = salvage(self.damaged)
        self.assertEqual(self.files(), before)
        self.assertEqual((report.output, report.bytes, report.version), (None, 465_000, 10))
        self.assertEqual(report.recovered, Records(1, 4, 10))
        self.assertEqual(report.lost.counted_but_missing, Records(1, 2, 2))
        lost = report.lost.lost_entries[0]
        self.assertEqual((lost.view, lost.position, lost.number), ("ALL", 10, 50))
        self.assertEqual(lost.identity, Identity(1, 158, 2041, 12111000, 3301, 1))
        self.assertIsNone(report.differences)
        self.assertTrue(report.has_findings)

    def test_what_came_back_is_compared_with_another_copy(self) -> None:
        report = salvage(self.damaged, self.folder / "rescued.dat", like=self.file)
        assert report.differences is not None
        self.assertEqual(len(report.differences.removed), 14)
        self.assertEqual(len(self.names_in(self.folder / "rescued.dat")), 10)

    def test_nothing_is_lost_of_a_whole_file(self) -> None:
        report = salvage(self.file)
        self.assertFalse(report.has_findings)
        self.assertEqual((report.recovered, report.lost.lost_entries), (Records(2, 8, 24), ()))

    def test_a_service_with_a_damaged_name_is_doubtful(self) -> None:
        damaged = bytearray(self.made)
        damaged[damaged.rindex(NEWS_NAME.encode()) + 97] += 3  # its length
        self.damaged.write_bytes(damaged)
        (doubtful,) = salvage(self.damaged).doubtful_services
        self.assertIsInstance(doubtful, NamedService)
        self.assertEqual(doubtful.identity, NEWS)

    def test_what_is_nothing_of_a_list_is_refused(self) -> None:
        self.damaged.write_bytes(b"nothing")
        with self.assertRaises(CommandError):
            salvage(self.damaged, self.folder / "rescued.dat")
        self.assertNotIn("rescued.dat", self.files())


if __name__ == "__main__":
    unittest.main()
