"""Edits of services and views: names, flags, removal, sorting."""

from __future__ import annotations

import ctypes
import unittest

from channel_list import Identity, NotFoundError, RefusedError, ServiceFlag, SortType, load_library
from channel_list.records import networks_of, transponders_of
from support import CURRENT, FREQUENCY, ListTest, file_service, fill, show

MISSING = Identity(1, 2, 3, FREQUENCY, 9, 0)


class Renaming(ListTest):
    def test_a_service_gets_a_name_and_its_length(self) -> None:
        for size in (1, 39, 40, 95, 96):
            with self.subTest(size=size):
                record = file_service(5, b"A long former name")
                service = self.channels.rename(self.channels.service(Identity.of(record)), "x" * size)
                self.assertEqual((service.name, record.name[0].name_len), ("x" * size, size))
                self.assertEqual(self.channels.service(service), service)
                self.channels.remove(service)

    def test_a_name_is_written_as_utf_8(self) -> None:
        record = file_service(5)
        self.assertEqual(self.channels.rename(Identity.of(record), "Zürich 東京").name, "Zürich 東京")
        self.assertEqual(record.name[0].text, "Zürich 東京".encode())

    def test_the_short_name_is_another(self) -> None:
        record = file_service(5, b"News 24")
        service = self.channels.rename(Identity.of(record), "N24", short=True)
        self.assertEqual((service.name, service.short_name), ("News 24", "N24"))

    def test_a_name_that_cannot_be_filed_leaves_the_one_that_is_there(self) -> None:
        record = file_service(5, b"News")
        for name in ("", "x" * 97, "\x05x"):
            with self.subTest(name=name), self.assertRaises(ValueError):
                self.channels.rename(Identity.of(record), name)
            self.assertEqual(record.name[0].text, b"News")

    def test_a_service_that_is_not_there_is_not_found(self) -> None:
        with self.assertRaises(NotFoundError) as miss:
            self.channels.rename(MISSING, "x")
        self.assertEqual(str(miss.exception), "no service 1:2:3:11727480H:9")

    def test_a_service_goes_by_any_of_its_entries(self) -> None:
        show(file_service(5), 1)
        self.channels.rename(self.channels.view("all")[0], "News")
        self.assertEqual(self.channels.view("all")[0].name, "News")


class Namesakes(ListTest):
    """Two services of one id on transponders that lie close together, and an entry for the second one."""

    def setUp(self) -> None:
        super().setUp()
        self.first = file_service(5, b"First", frequency=100_000)
        self.second = file_service(5, b"Second", frequency=200_000)
        network = next(networks_of(load_library().get_channel_list().contents))
        for transponder in transponders_of(network):
            if transponder.frequency == 200_000:
                transponder.frequency = self.second.frequency = 102_000
        show(self.second, 1).frequency = 103_000

    def test_an_edit_of_an_entry_reaches_the_service_that_it_shows(self) -> None:
        entry = self.channels.entry(1)
        self.assertEqual(entry.name, "Second")
        self.assertEqual(self.channels.rename(entry, "Third").name, "Third")
        self.assertTrue(self.channels.lock(entry).is_locked)
        self.assertEqual((self.first.name[0].text, self.first.flag), (b"First", 0))
        self.assertEqual((self.second.name[0].text, self.second.flag), (b"Third", 0x02))

    def test_a_removal_of_an_entry_removes_the_service_that_it_shows(self) -> None:
        self.channels.remove(self.channels.entry(1))
        self.assertEqual([service.name for service in self.channels.services()], ["First"])
        self.assertEqual(self.channels.view("all"), ())


class Flags(ListTest):
    def test_flags_are_set_and_cleared_and_the_others_stay(self) -> None:
        record = file_service(5)
        record.flag = 0x80
        identity = Identity.of(record)
        both = ServiceFlag.LOCKED | ServiceFlag.SKIP
        steps = [
            (lambda: self.channels.lock(identity), 0x82),
            (lambda: self.channels.lock(identity), 0x82),
            (lambda: self.channels.skip(identity), 0x8A),
            (lambda: self.channels.lock(identity, False), 0x88),
            (lambda: self.channels.skip(identity, False), 0x80),
            (lambda: self.channels.set_flags(identity, both), 0x8A),
            (lambda: self.channels.set_flags(identity, ServiceFlag(0xFF), False), 0),
            (lambda: self.channels.set_flags(identity, ServiceFlag(0)), 0),
        ]
        for i, (step, flags) in enumerate(steps):
            with self.subTest(step=i):
                self.assertEqual((int(step().flags), record.flag), (flags, flags))

    def test_flags_beyond_a_byte_are_refused(self) -> None:
        record = file_service(5)
        with self.assertRaises(ValueError) as refusal:
            self.channels.set_flags(Identity.of(record), ServiceFlag(0x102))
        self.assertEqual((str(refusal.exception), record.flag), ("flags are 8 bits: 0x102", 0))

    def test_a_service_that_is_not_there_is_not_found(self) -> None:
        for call in (self.channels.lock, self.channels.skip):
            with self.assertRaises(NotFoundError):
                call(MISSING)

    def test_services_without_a_frequency_are_told_apart_or_not_found(self) -> None:
        first, second = file_service(5, frequency=0), file_service(5, frequency=0, polarisation=1)
        load_library().add_rch_info(second, bytes(64))
        self.channels.lock(Identity.of(first))
        with self.assertRaises(NotFoundError):
            self.channels.lock(Identity.of(second))
        self.assertEqual((first.flag, second.flag), (0x02, 0))
        ctypes.CDLL(None).free(ctypes.byref(second))


class Removing(ListTest):
    def test_a_service_goes_with_its_entries_in_all_views(self) -> None:
        self.channels.load(CURRENT)
        service = self.channels.named("First Television")[0]
        before = {view: self.channels.view(view) for view in (0, 1, 3, 10)}
        self.channels.remove(service)
        for view, entries in before.items():
            with self.subTest(view=view):
                left = [entry.number for entry in entries if entry.service != service]
                self.assertEqual([entry.number for entry in self.channels.view(view)], left)
                self.assertLess(len(left), len(entries))
        self.assertEqual(self.channels.named("First Television"), ())

    def test_a_service_goes_with_all_its_entries_in_a_view(self) -> None:
        services = [file_service(service_id) for service_id in (1, 2)]
        for number, service in enumerate([services[0], services[0], services[1], services[0]], 1):
            show(service, number)
        self.channels.remove(Identity.of(services[0]))
        self.assertEqual([entry.number for entry in self.channels.view("all")], [3])

    def test_entries_that_lead_to_no_service_stay(self) -> None:
        fill(3)
        load_library().get_channel_list().contents.vch[0].service_id = 99
        self.channels.remove(self.channels.view("all")[1])
        self.assertEqual([entry.number for entry in self.channels.view("all")], [1, 3])

    def test_a_service_without_a_frequency_is_refused(self) -> None:
        record = file_service(5, frequency=0)
        with self.assertRaises(RefusedError) as refusal:
            self.channels.remove(Identity.of(record))
        self.assertEqual(str(refusal.exception), "1:2:3:0H:5 cannot be removed: it has no frequency")
        self.assertEqual(len(list(self.channels.services())), 1)

    def test_a_service_that_was_removed_is_not_found(self) -> None:
        record = file_service(5)
        service = self.channels.service(Identity.of(record))
        self.channels.remove(service)
        with self.assertRaises(NotFoundError):
            self.channels.remove(service)


class Sorting(ListTest):
    def test_a_view_is_sorted_and_numbers_stay_with_their_services(self) -> None:
        for service_id, name, number in [(3, b"beta", 2), (1, b"Alpha", 3), (2, b"gamma", 1)]:
            show(file_service(service_id, name), number)
        for order, numbers in [
            (SortType.NAME, [3, 2, 1]),
            (SortType.NUMBER, [1, 2, 3]),
            (SortType.SERVICE_ID, [3, 1, 2]),
        ]:
            with self.subTest(order.name):
                self.channels.sort("all", order)
                self.assertEqual([entry.number for entry in self.channels.view("all")], numbers)

    def test_views_and_orders_that_do_not_sort_are_refused(self) -> None:
        for view in ("work", "promotion"):
            with self.subTest(view), self.assertRaises(ValueError) as refusal:
                self.channels.sort(view, SortType.NAME)
            self.assertEqual(str(refusal.exception), f"view {view} cannot be sorted")
        with self.assertRaises(ValueError):
            self.channels.sort("all", 7)  # type: ignore[arg-type]


if __name__ == "__main__":
    unittest.main()
