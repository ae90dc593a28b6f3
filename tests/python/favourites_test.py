"""Favourite groups: the collection, the groups, and what is in them."""

from __future__ import annotations

import unittest

from channel_list import FavouriteGroup, Identity, NotFoundError, RefusedError, ViewType, load_library
from channel_list.records import MAX_FAV, MAX_FAV_NUM
from support import CURRENT, FREQUENCY, ListTest, file_service, fill, show


class Groups(ListTest):
    def names(self) -> list[str]:
        return [group.name for group in self.channels.favourites]

    def test_a_list_begins_without_groups(self) -> None:
        self.assertEqual((len(self.channels.favourites), self.names()), (0, []))

    def test_groups_come_behind_one_another(self) -> None:
        added = [self.channels.favourites.add_group(name) for name in ("Sport", "Films")]
        self.assertEqual(added, [FavouriteGroup(0, 0, "Sport", ()), FavouriteGroup(1, 1, "Films", ())])
        self.assertEqual(list(self.channels.favourites), added)

    def test_a_group_goes_by_index_name_and_value(self) -> None:
        self.channels.favourites.add_group("Sport")
        films = self.channels.favourites.add_group("Films")
        for which in (1, "Films", "films", films):
            with self.subTest(which=which):
                self.assertEqual(self.channels.favourites[which], films)

    def test_the_collection_tells_whether_a_group_is_there(self) -> None:
        sport = self.channels.favourites.add_group("Sport")
        for which, is_there in [
            (0, True),
            ("sport", True),
            (sport, True),
            (1, False),
            (-1, False),
            ("Films", False),
            (FavouriteGroup(0, 7, "Sport", ()), False),
            (None, False),
        ]:
            with self.subTest(which=which):
                self.assertIs(which in self.channels.favourites, is_there)

    def test_groups_that_are_not_there_are_not_found(self) -> None:
        sport = self.channels.favourites.add_group("Sport")
        other = FavouriteGroup(0, 7, "Other", ())
        for which, shown in [(-1, "-1"), (1, "1"), ("Films", "'Films'"), ("", "''"), (other, "'Other'")]:
            with self.subTest(which=which), self.assertRaises(NotFoundError) as miss:
                self.channels.favourites[which]
            self.assertEqual(str(miss.exception), f"no favourite group {shown}: there are 1")
        self.assertEqual(list(self.channels.favourites), [sport])

    def test_names_have_1_to_95_bytes(self) -> None:
        for size in (1, 39, 40, 94, 95):
            with self.subTest(size=size):
                self.assertEqual(self.channels.favourites.add_group("x" * size).name, "x" * size)
        for name in ("", "x" * 96, "Sp\0ort"):
            with self.subTest(name=name), self.assertRaises(ValueError):
                self.channels.favourites.add_group(name)

    def test_two_groups_of_one_name_are_refused(self) -> None:
        self.channels.favourites.add_group("Sport")
        self.channels.favourites.add_group("Films")
        for edit in (lambda: self.channels.favourites.add_group("SPORT"),
                     lambda: self.channels.favourites.rename_group("Films", "SPORT")):  # fmt: skip
            with self.assertRaises(RefusedError) as refusal:
                edit()
            self.assertEqual(str(refusal.exception), "there is a favourite group 'SPORT' already")

    def test_the_21st_group_is_refused(self) -> None:
        for i in range(MAX_FAV):
            self.channels.favourites.add_group(f"Group {i}")
        with self.assertRaises(RefusedError) as refusal:
            self.channels.favourites.add_group("One more")
        expected = "no favourite group can be added: there are 20, the most that a list holds"
        self.assertEqual(str(refusal.exception), expected)

    def test_a_group_is_renamed_also_to_another_case_of_its_name(self) -> None:
        self.channels.favourites.add_group("A former and longer name")
        for name in ("Sport", "SPORT"):
            with self.subTest(name):
                self.assertEqual(self.channels.favourites.rename_group(0, name).name, name)

    def test_groups_move_up_when_one_is_removed_and_keep_their_ids(self) -> None:
        groups = [self.channels.favourites.add_group(name) for name in ("A", "B", "C")]
        self.channels.favourites.remove_group("B")
        self.assertEqual([(group.index, group.id) for group in self.channels.favourites], [(0, 0), (1, 2)])
        self.assertEqual(self.channels.favourites[groups[2]].index, 1)
        with self.assertRaises(NotFoundError):
            self.channels.favourites.remove_group(groups[1])

    def test_the_current_view_follows_its_group(self) -> None:
        for current, removed, expected in [(11, 0, 10), (10, 1, 10), (11, 1, 0), (1, 0, 1), (13, 0, 13)]:
            with self.subTest(current=current, removed=removed):
                for name in ("A", "B"):
                    self.channels.favourites.add_group(name)
                load_library().get_channel_list().contents.vch_type = current
                self.channels.favourites.remove_group(removed)
                self.assertEqual(load_library().get_vindex_type(), expected)
                self.channels.favourites.remove_group(0)

    def test_a_group_that_shares_its_id_is_read_and_not_edited(self) -> None:
        for name in ("A", "B"):
            self.channels.favourites.add_group(name)
        load_library().get_fav_group_info(1).contents.id = 0
        self.assertEqual(self.channels.favourites["B"].name, "B")
        with self.assertRaises(RefusedError) as refusal:
            self.channels.favourites.rename_group("B", "C")
        expected = "favourite group 1 cannot be edited: another one has its id 0"
        self.assertEqual(str(refusal.exception), expected)


class Entries(ListTest):
    def setUp(self) -> None:
        super().setUp()
        self.channels.favourites.add_group("Sport")

    def numbers(self) -> list[int]:
        return [entry.number for entry in self.channels.favourites["Sport"]]

    def test_services_come_to_the_end_with_their_numbers_and_positions(self) -> None:
        fill(3)
        for position in (2, 0):
            group = self.channels.favourites.add("Sport", self.channels.view("all")[position])
        shown = [(entry.position, entry.number, entry.favourite_key, entry.name) for entry in group]
        self.assertEqual(shown, [(0, 3, 0, "Service 3"), (1, 1, 1, "Service 1")])
        self.assertEqual(len(group), 2)

    def test_a_service_comes_with_its_number_in_all_and_an_entry_with_its_own(self) -> None:
        self.channels.load(CURRENT)
        self.channels.favourites.add_group("Sport")
        entry = self.channels.view("tv")[0]
        service = self.channels.named("First Radio")[0]
        self.channels.favourites.add("Sport", entry)
        self.channels.favourites.add("Sport", service)
        self.assertEqual(self.numbers(), [204, 101])

    def test_a_service_that_is_there_stays_where_it_is(self) -> None:
        fill(2)
        for position in (0, 1, 0):
            self.channels.favourites.add("Sport", self.channels.view("all")[position])
        self.assertEqual(self.numbers(), [1, 2])

    def test_the_41st_entry_is_refused(self) -> None:
        fill(MAX_FAV_NUM + 1)
        *entries, last = self.channels.view("all")
        for entry in entries:
            self.channels.favourites.add("Sport", entry)
        with self.assertRaises(RefusedError) as refusal:
            self.channels.favourites.add("Sport", last)
        self.assertEqual(str(refusal.exception), "favourite group 'Sport' is full: it holds 40")
        self.assertEqual(self.numbers(), list(range(1, MAX_FAV_NUM + 1)))

    def test_a_member_of_a_full_group_stays_where_it_is(self) -> None:
        fill(MAX_FAV_NUM)
        entries = self.channels.view("all")
        for entry in entries:
            self.channels.favourites.add("Sport", entry)
        self.channels.favourites.add("Sport", entries[7])
        self.assertEqual(self.numbers(), list(range(1, MAX_FAV_NUM + 1)))

    def test_of_two_entries_for_one_service_the_given_one_is_added(self) -> None:
        service = file_service(5)
        show(service, 1)
        show(service, 4)
        self.channels.favourites.add("Sport", self.channels.view("all")[1])
        self.assertEqual(self.numbers(), [4])

    def test_an_entry_that_has_moved_is_found_again(self) -> None:
        fill(2)
        second = self.channels.view("all")[1]
        load_library().vtype_remove_by_vindex(0, ViewType.ALL)
        self.channels.favourites.add("Sport", second)
        self.assertEqual(self.numbers(), [2])

    def test_what_cannot_be_added_is_not_found(self) -> None:
        unshown = self.channels.service(Identity.of(file_service(5)))
        with self.assertRaises(NotFoundError) as miss:
            self.channels.favourites.add("Sport", unshown)
        self.assertEqual(str(miss.exception), "service 1:2:3:11727480H:5 has no entry in any view")
        self.channels.remove(unshown)
        for group, reason in [("Sport", "no service 1:2:3:11727480H:5"), ("X", "no favourite group 'X': there are 1")]:
            with self.subTest(group), self.assertRaises(NotFoundError) as miss:
                self.channels.favourites.add(group, unshown)
            self.assertEqual(str(miss.exception), reason)

    def test_a_service_is_removed_and_the_others_keep_their_numbers_and_keys(self) -> None:
        fill(3)
        for entry in self.channels.view("all"):
            self.channels.favourites.add("Sport", entry)
        group = self.channels.favourites.remove("Sport", next(self.channels.services()))
        self.assertEqual([(entry.number, entry.favourite_key) for entry in group], [(2, 1), (3, 2)])

    def test_an_entry_of_the_group_is_removed_also_when_it_leads_to_no_service(self) -> None:
        fill(2)
        for entry in self.channels.view("all"):
            self.channels.favourites.add("Sport", entry)
        load_library().get_fav_vch(0, 0).contents.service_id = 99
        group = self.channels.favourites.remove("Sport", self.channels.favourites["Sport"].entries[0])
        self.assertEqual([entry.number for entry in group], [2])

    def test_a_service_is_removed_by_an_entry_that_is_a_little_off_its_frequency(self) -> None:
        show(file_service(5), 1).frequency = FREQUENCY + 2_499
        self.channels.favourites.add("Sport", self.channels.view("all")[0])
        self.assertEqual(len(self.channels.favourites.remove("Sport", next(self.channels.services()))), 0)

    def test_a_service_is_removed_from_all_its_positions(self) -> None:
        services = [file_service(service_id) for service_id in (1, 2)]
        for number, service in enumerate([services[0], services[0], services[1], services[0]], 1):
            show(service, number).vch_tag = number
        for entry in list(load_library().get_channel_list().contents.vch)[:4]:
            load_library().add_fav_virtual_channel(0, entry)
        group = self.channels.favourites.remove("Sport", self.channels.service(Identity.of(services[0])))
        self.assertEqual([entry.number for entry in group], [3])

    def test_what_is_not_in_the_group_is_not_found(self) -> None:
        fill(1)
        with self.assertRaises(NotFoundError) as miss:
            self.channels.favourites.remove("Sport", self.channels.view("all")[0])
        self.assertEqual(str(miss.exception), "no service 1:2:3:11727480H:1 in favourite group 'Sport'")


if __name__ == "__main__":
    unittest.main()
