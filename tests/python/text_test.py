"""Texts in the character tables of EN 300 468, annex A, and names on their way into the list."""

from __future__ import annotations

import unittest
from pathlib import Path

from channel_list.text import decode, encode


class Decoding(unittest.TestCase):
    def test_every_case_that_the_tool_is_tested_against_comes_out_as_it_should(self) -> None:
        cases = Path(__file__).parent.parent / "texts" / "broadcast_texts.txt"
        rows = [line.split("\t") for line in cases.read_text(encoding="utf-8").split("\n") if "\t" in line]
        self.assertGreater(len(rows), 90)
        for field, _, text in rows:
            with self.subTest(field=field):
                self.assertEqual(decode(bytes.fromhex(field.removeprefix("-"))), text)

    def test_a_text_ends_with_its_zero_byte_or_its_field(self) -> None:
        for field, text in [(b"", ""), (b"\0", ""), (b"\0rest", ""), (b"A\0rest", "A"), (b"A" * 96, "A" * 96)]:
            with self.subTest(field=field):
                self.assertEqual(decode(field), text)


class Encoding(unittest.TestCase):
    def test_a_name_of_1_byte_to_the_longest_is_utf_8(self) -> None:
        for name in ("A", "A" * 95, "A" * 96, "ö" * 48):
            with self.subTest(name=name):
                self.assertEqual(encode(name, 96), name.encode())

    def test_an_empty_name_is_refused(self) -> None:
        with self.assertRaises(ValueError) as refusal:
            encode("", 96)
        self.assertEqual(str(refusal.exception), "a name has one byte at least")

    def test_a_name_beyond_the_longest_is_refused(self) -> None:
        with self.assertRaises(ValueError) as refusal:
            encode("ö" * 2 + "A", 4)
        self.assertEqual(str(refusal.exception), "a name has at most 4 bytes, not 5: 'ööA'")

    def test_control_characters_are_refused(self) -> None:
        for name in ("\x05News", "Ne\0ws", "News\n", "News\x7f", "News\x8a"):
            with self.subTest(name=name), self.assertRaises(ValueError) as refusal:
                encode(name, 96)
            self.assertEqual(str(refusal.exception), f"a name has no control characters: {name!r}")


if __name__ == "__main__":
    unittest.main()
