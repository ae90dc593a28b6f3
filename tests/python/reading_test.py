"""What a list shows: views, the networks, groups, and lookups by number, name and identity."""

from __future__ import annotations

import unittest

from channel_list import (
    Entry,
    Group,
    GroupKind,
    Identity,
    NotFoundError,
    Service,
    ServiceFlag,
    ServiceType,
    ViewType,
    load_library,
)
from channel_list.records import MAX_CHANNEL
from support import CURRENT, FREQUENCY, ListTest, file_service, fill, show, write_name


class Views(ListTest):
    def numbers(self, view: int | str) -> list[int]:
        return [entry.number for entry in self.channels.view(view)]

    def test_each_view_has_its_entries_in_order(self) -> None:
        self.channels.load(CURRENT)
        expected = {
            "all": [100, 101, 102, 103, 104, 105, 106, 107], "tv": [204, 203, 202, 200], "radio": [306, 301],
            "user": [407, 400, 405], "work": [], "promotion": [505, 503], 10: [1000, 1002, 1001], 11: [1106],
        }  # fmt: skip
        self.assertEqual({view: self.numbers(view) for view in expected}, expected)

    def test_a_view_goes_by_its_type_and_by_its_name_in_any_case(self) -> None:
        self.channels.load(CURRENT)
        for view in (ViewType.RADIO, 2, "radio", "Radio", "RADIO"):
            with self.subTest(view=view):
                self.assertEqual(self.numbers(view), [306, 301])

    def test_unknown_views_are_refused(self) -> None:
        for view in (-1, 6, 9, 30, 256):
            with self.subTest(view=view), self.assertRaises(ValueError) as refusal:
                self.channels.view(view)
            self.assertEqual(str(refusal.exception), f"no view {view}")
        for name in ("", "television", "10"):
            with self.subTest(view=name), self.assertRaises(ValueError) as refusal:
                self.channels.view(name)
            expected = f"no view {name!r}: there are all, tv, radio, user, work, promotion"
            self.assertEqual(str(refusal.exception), expected)

    def test_every_known_view_of_an_empty_list_is_empty(self) -> None:
        for view in (*ViewType, 10, 29):
            with self.subTest(view=view):
                self.assertEqual(self.channels.view(view), ())

    def test_a_full_view_shows_all_its_entries(self) -> None:
        fill(MAX_CHANNEL)
        entries = self.channels.view("all")
        self.assertEqual([entry.number for entry in entries], list(range(1, MAX_CHANNEL + 1)))
        self.assertEqual(entries[-1].name, f"Service {MAX_CHANNEL}")

    def test_a_count_outside_the_array_is_read_as_the_nearest_inside(self) -> None:
        for count, shown in [(-1, 0), (10, 10), (11, 10)]:
            with self.subTest(count=count):
                load_library().get_virtual_channel_vnumber(ViewType.PROMOTION)[0] = count
                self.assertEqual(len(self.channels.view(ViewType.PROMOTION)), shown)

    def test_an_entry_has_everything_that_its_record_has(self) -> None:
        entry = show(file_service(5, b"News"), -7)
        entry.vch_tag, entry.favorite_id, entry.minor_ch_num = -3, 200, 2
        identity = Identity(1, 2, 3, FREQUENCY, 5, 0)
        expected = Entry(0, 0, -7, 2, -3, 200, identity, self.channels.service(identity))
        self.assertEqual(self.channels.view("all"), (expected,))

    def test_an_entry_that_leads_to_no_service_has_none(self) -> None:
        show(file_service(5), 1).service_id = 6
        (entry,) = self.channels.view("all")
        self.assertEqual((entry.service, entry.name, entry.identity.service_id), (None, "", 6))


class Networks(ListTest):
    def test_the_networks_have_their_transponders_and_services(self) -> None:
        self.channels.load(CURRENT)
        shown = [
            (network.net_index, network.network_id, network.name, each.ts_id, each.frequency, each.polarisation,
             [service.name for service in each.services])
            for network in self.channels.networks()
            for each in network.transponders
        ]  # fmt: skip
        expected = [
            (85, 0x0102, "Satellite", 0x0405, 11_727_480, 0, ["First Television", "First Radio"]),
            (85, 0x0102, "Satellite", 0x0999, 11_900_000, 1, []),
            (85, 0x0102, "Satellite", 0x0506, 12_015_000, 1, ["Zweites Programm"]),
            (17, 0x0203, "Cable", 0x0607, 562_000_000, 0, ["Cable One", "Cable Two", "Data Service"]),
            (17, 0x0203, "Cable", 0x0708, 4_294_967_295, 1, ["Last Radio", ""]),
        ]
        self.assertEqual(shown, expected)

    def test_services_come_in_the_order_of_the_networks(self) -> None:
        self.channels.load(CURRENT)
        expected = [0x1001, 0x1002, 0x1003, 0x2001, 0x2002, 0x2003, 0x2004, 0]
        self.assertEqual([service.identity.service_id for service in self.channels.services()], expected)

    def test_a_service_has_everything_that_its_record_has(self) -> None:
        record = file_service(5, b"\x05News")
        record.name[1].text = b"N"
        record.source_type, record.flag, record.service_type = 4, 0x4A, 0x99
        record.provider_id, record.genre_id, record.country_id, record.user_order_key = -1, 2, 3, 4
        record.pmt_pid, record.pcr_pid, record.video_pid, record.video_ecm_pid = 10, 11, 12, 13
        record.video_tag, record.audio_pid, record.audio_tag = 14, 15, 16
        identity = Identity(1, 2, 3, FREQUENCY, 5, 0)
        expected = Service(
            identity, "News", "N", ServiceType(0x99), 4, ServiceFlag(0x4A), -1, 2, 3, 4, 10, 11, 12, 13, 14, 15, 16
        )
        self.assertEqual(self.channels.service(identity), expected)
        self.assertTrue(expected.is_locked and expected.is_skipped and not expected.is_scrambled)

    def test_what_is_not_set_is_none(self) -> None:
        file_service(5)
        (service,) = self.channels.services()
        pids = (service.pmt_pid, service.pcr_pid, service.video_pid, service.video_ecm_pid, service.audio_pid)
        self.assertEqual((*pids, service.video_tag, service.audio_tag), (None,) * 7)

    def test_names_have_0_to_96_bytes(self) -> None:
        record = file_service(5)
        for size in (0, 1, 39, 40, 95, 96):
            with self.subTest(size=size):
                write_name(record, b"x" * size + bytes(96 - size))
                (service,) = self.channels.services()
                self.assertEqual(service.name, "x" * size)

    def test_names_are_read_in_their_character_table(self) -> None:
        record = file_service(5)
        for name, text in [(b"\x05\xd0\xfd", "Ğı"), (b"\x11\0\xe9\x01\0\0\0", "éĀ"), ("é".encode(), "é")]:
            with self.subTest(text):
                write_name(record, name.ljust(96, b"\0"))
                self.assertEqual(next(self.channels.services()).name, text)

    def test_a_frequency_of_64_bits_gives_an_identity_of_32(self) -> None:
        file_service(5, frequency=0x1_0000_2710)
        self.assertEqual(next(self.channels.services()).identity.frequency, 10_000)


class Groups(ListTest):
    def test_each_table_has_its_groups(self) -> None:
        self.channels.load(CURRENT)
        for kind, name, first in [
            (GroupKind.PROVIDER, "Provider", 200),
            (GroupKind.GENRE, "Genre", 300),
            (GroupKind.COUNTRY, "Country", 400),
        ]:
            with self.subTest(name):
                groups = self.channels.groups(kind)
                self.assertEqual(groups[:2], (Group(kind, first, f"{name} 0"), Group(kind, first + 1, f"{name} 1")))

    def test_tables_of_an_empty_list_are_empty(self) -> None:
        for kind in GroupKind:
            with self.subTest(kind):
                self.assertEqual(self.channels.groups(kind), ())


class Lookups(ListTest):
    def test_an_entry_goes_by_its_number_and_minor_number(self) -> None:
        for service_id, minor in [(1, 0), (2, 0), (3, 5)]:
            show(file_service(service_id), 7).minor_ch_num = minor
        found = [self.channels.entry(7), self.channels.entry(7, 5)]
        self.assertEqual([(entry.position, entry.identity.service_id) for entry in found], [(0, 1), (2, 3)])
        self.assertEqual(found, [self.channels.view("all")[0], self.channels.view("all")[2]])

    def test_a_number_belongs_to_its_view(self) -> None:
        self.channels.load(CURRENT)
        minor_number = self.channels.view("tv")[0].minor_number
        self.assertEqual(self.channels.entry(204, minor_number, "tv"), self.channels.view("tv")[0])
        with self.assertRaises(NotFoundError) as miss:
            self.channels.entry(204, minor_number)
        self.assertEqual(str(miss.exception), f"no number 204-{minor_number} in view all")

    def test_a_number_that_no_entry_can_have_is_not_found(self) -> None:
        show(file_service(1), 1)
        for number, minor in [(0x10001, 0), (1, 0x10000), (-0x8001, 0)]:
            with self.subTest(number=number), self.assertRaises(NotFoundError) as miss:
                self.channels.entry(number, minor)
            self.assertEqual(str(miss.exception), f"no number {number}-{minor} in view all")

    def test_a_number_in_a_view_that_does_not_exist_is_refused(self) -> None:
        with self.assertRaises(ValueError):
            self.channels.entry(1, view="favourites")

    def test_a_service_goes_by_its_identity(self) -> None:
        file_service(5, b"News")
        self.assertEqual(self.channels.service(Identity(1, 2, 3, FREQUENCY, 5, 0)).name, "News")

    def test_an_identity_is_taken_to_the_letter(self) -> None:
        file_service(5)
        for identity in [
            Identity(1, 2, 3, FREQUENCY, 6, 0),
            Identity(1, 2, 3, FREQUENCY + 1, 5, 0),
            Identity(1, 2, 4, FREQUENCY, 5, 0),
            Identity(257, 2, 3, FREQUENCY, 5, 0),
            Identity(1, 2, 3, FREQUENCY, 5 + 0x10000, 0),
        ]:
            with self.subTest(identity), self.assertRaises(NotFoundError) as miss:
                self.channels.service(identity)
            self.assertEqual(str(miss.exception), f"no service {identity}")

    def test_a_service_goes_by_an_entry_whose_frequency_is_within_the_tolerance(self) -> None:
        show(file_service(5, b"News"), 1).frequency += 2_499
        self.assertEqual(self.channels.service(self.channels.view("all")[0]).name, "News")

    def test_names_are_found_whole_or_in_part_without_regard_to_case(self) -> None:
        for service_id, name in enumerate(["Straße", "Straßenbahn", "News"], 1):
            file_service(service_id, name.encode())
        file_service(4).name[1].text = b"NEWS"
        found = {
            "whole": [service.identity.service_id for service in self.channels.named("STRASSE")],
            "part": [service.identity.service_id for service in self.channels.search("strasse")],
            "short": [service.identity.service_id for service in self.channels.named("news")],
            "none": [service.identity.service_id for service in self.channels.named("New")],
        }
        self.assertEqual(found, {"whole": [1], "part": [1, 2], "short": [3, 4], "none": []})


class Codes(unittest.TestCase):
    def test_identities_are_written_as_the_tool_takes_them(self) -> None:
        for polarisation, letter in [(0, "H"), (1, "V"), (2, "V2"), (255, "V255")]:
            with self.subTest(polarisation=polarisation):
                self.assertEqual(str(Identity(1, 158, 2012, 11_345_000, 3101, polarisation)),
                                 f"1:158:2012:11345000{letter}:3101")  # fmt: skip

    def test_every_byte_is_a_service_type(self) -> None:
        self.assertEqual([int(ServiceType(value)) for value in range(256)], list(range(256)))
        self.assertEqual((ServiceType(1).name, ServiceType(0x99).name), ("TV", "TYPE_153"))
        for value in (-1, 256, "TV"):
            with self.subTest(value=value), self.assertRaises(ValueError):
                ServiceType(value)

    def test_flags_of_the_host_are_kept(self) -> None:
        self.assertEqual(int(ServiceFlag(0xFF)), 0xFF)


if __name__ == "__main__":
    unittest.main()
