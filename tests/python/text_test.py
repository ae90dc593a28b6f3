"""Texts in the character tables of EN 300 468, annex A, and names on their way into the list."""

from __future__ import annotations

import unittest

from channel_list.text import decode, encode


class Decoding(unittest.TestCase):
    def test_a_text_ends_with_its_zero_byte_or_its_field(self) -> None:
        for field, text in [(b"", ""), (b"\0", ""), (b"\0rest", ""), (b"A\0rest", "A"), (b"A" * 96, "A" * 96)]:
            with self.subTest(field=field):
                self.assertEqual(decode(field), text)

    def test_without_a_selector_valid_utf_8_is_utf_8(self) -> None:
        self.assertEqual(decode("Polarstern Hörspiel".encode()), "Polarstern Hörspiel")

    def test_without_a_selector_anything_else_is_the_default_table(self) -> None:
        for field, text in [
            (b"H\xc8orspiel", "Hörspiel"),
            (b"Kanal Morgenr\xf9de", "Kanal Morgenrøde"),
            (b"\xa4 5", "€ 5"),
            (b"\xcfS\xcbc", "Šç"),
            (b"\xe1\xd4\xff", "Æ™\xad"),
            (b"\xc1\xc1a", "\N{REPLACEMENT CHARACTER}\N{COMBINING GRAVE ACCENT}a"),
            (b"\xa6", "\N{REPLACEMENT CHARACTER}"),
            (b"a\xc2", "a\N{REPLACEMENT CHARACTER}"),
        ]:
            with self.subTest(field=field):
                self.assertEqual(decode(field), text)

    def test_a_selector_names_a_table_of_one_byte(self) -> None:
        for selector, letter, text in [
            (0x01, 0xB0, "А"), (0x02, 0xC7, "ا"), (0x03, 0xC1, "Α"), (0x04, 0xE0, "א"), (0x05, 0xFD, "ı"),
            (0x06, 0xBD, "―"), (0x07, 0xA1, "ก"), (0x09, 0xA8, "Ø"), (0x0A, 0xA1, "Ḃ"), (0x0B, 0xA4, "€"),
        ]:  # fmt: skip
            with self.subTest(selector=selector):
                self.assertEqual(decode(bytes([selector, letter, 0, letter])), text)

    def test_a_selector_names_a_table_of_several_bytes(self) -> None:
        for field, text in [
            (b"\x12\xb0\xa1", "가"),
            (b"\x13\xd6\xd0", "中"),
            (b"\x15" + "Zürich".encode(), "Zürich"),
            (b"\x15\xff", "\N{REPLACEMENT CHARACTER}"),
        ]:
            with self.subTest(field=field):
                self.assertEqual(decode(field + b"\0" * 3), text)

    def test_a_table_of_two_bytes_ends_with_two_zero_bytes(self) -> None:
        for selector in (b"\x11", b"\x14"):
            for field, text in [
                (b"", ""),
                (b"\0", ""),
                (b"\0A", "A"),
                (b"\0A\x01\0\0B\0\0\0C", "AĀB"),
                (b"\x4e\x2d\0\0", "中"),
                (b"\0A\0", "A"),
            ]:
                with self.subTest(field=selector + field):
                    self.assertEqual(decode(selector + field), text)

    def test_a_numbered_table_is_a_part_of_iso_8859(self) -> None:
        replaced = "\N{REPLACEMENT CHARACTER}"
        for field, text in [
            (b"\x10\0\x02\xb1", "ą"),
            (b"\x10\0\x0f\xa4\0x", "€"),
            (b"\x10\0\x01\xe9", "é"),
            (b"\x10\0\x0cA", "A"),
            (b"\x10\0\x10A", "A"),
            (b"\x10\0\0A", "A"),
            (b"\x10\0\x03\xd0", replaced),
            (b"\x10", ""),
        ]:
            with self.subTest(field=field):
                self.assertEqual(decode(field), text)

    def test_other_selectors_are_not_shown(self) -> None:
        for field in (b"\x08Text", b"\x0cText", b"\x16Text", b"\x1eText", b"\x1f\x07Text"):
            with self.subTest(field=field):
                self.assertEqual(decode(field), "Text")

    def test_emphasis_is_dropped_and_a_line_break_is_a_space(self) -> None:
        self.assertEqual(decode(b"\x05\x86News\x87\x8aHD"), "News HD")
        self.assertEqual(decode(b"\x86News\x87\x8aHD"), "News HD")
        self.assertEqual(decode(b"\x11" + "\ue086News\ue087\ue08aHD".encode("utf_16_be")), "News HD")


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
