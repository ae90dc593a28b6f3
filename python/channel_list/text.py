"""Texts of broadcasters: bytes in one of the character tables of ETSI EN 300 468, annex A.

A first byte below 0x20 names the table. Without one a text is UTF-8 when its bytes are valid UTF-8, because that is
what the command-line tool and line-ups in text formats have, and otherwise in the standard's default table, which is
that of ISO/IEC 6937 with the euro sign.
"""

from __future__ import annotations

import unicodedata
from typing import Final

_FIRST_PRINTABLE: Final = 0x20

_SINGLE_BYTE_TABLES: Final = {
    0x01: "iso8859_5", 0x02: "iso8859_6", 0x03: "iso8859_7", 0x04: "iso8859_8", 0x05: "iso8859_9",
    0x06: "iso8859_10", 0x07: "iso8859_11", 0x09: "iso8859_13", 0x0A: "iso8859_14", 0x0B: "iso8859_15",
    0x12: "cp949", 0x13: "gb2312", 0x15: "utf_8",
}  # fmt: skip
_NUMBERED_TABLE: Final = 0x10  # two bytes follow: the number of a part of ISO/IEC 8859
_TWO_BYTE_TABLES: Final = (0x11, 0x14)  # ISO/IEC 10646, whole and in part
_PRIVATE_TABLE: Final = 0x1F  # one byte follows: a table that its owner knows

# A name is one line of plain text: a line break and the controls of ASCII become blanks, emphasis on and off and the
# other controls go. Those of the tables of two bytes stand at U+E080 to U+E09F.
_CONTROLS: Final = (
    {control: " " for control in range(0x20)}
    | {control: None for control in (*range(0x7F, 0xA0), *range(0xE080, 0xE0A0))}
    | {0x8A: " ", 0xE08A: " "}
)

# 0xA0 to 0xFF of ISO/IEC 6937, and the marks that stand in front of their letter.
_NO = "\N{REPLACEMENT CHARACTER}"
_ISO_6937: Final = (
    f"\xa0¡¢£€¥{_NO}§¤‘“«←↑→↓"
    f"°±²³×µ¶·÷’”»¼½¾¿"
    f"{_NO * 16}"
    f"―¹®©™♪¬¦{_NO * 4}⅛⅜⅝⅞"
    f"ΩÆĐªĦ{_NO}ĲĿŁØŒºÞŦŊŉ"
    f"ĸæđðħıĳŀłøœßþŧŋ\xad"
)
_MARKS: Final = {
    0xC1: "\u0300", 0xC2: "\u0301", 0xC3: "\u0302", 0xC4: "\u0303", 0xC5: "\u0304", 0xC6: "\u0306", 0xC7: "\u0307",
    0xC8: "\u0308", 0xCA: "\u030a", 0xCB: "\u0327", 0xCD: "\u030b", 0xCE: "\u0328", 0xCF: "\u030c",
}  # fmt: skip
_MARKS_ALONE: Final = dict(zip(_MARKS, "`´^~¯˘˙¨˚¸˝˛ˇ", strict=True))  # over a blank


def decode(field: bytes) -> str:
    """The text of a field: up to its zero byte, or the whole field. Bytes that mean nothing become U+FFFD."""
    return _plain(field).translate(_CONTROLS)


def encode(text: str, longest: int) -> bytes:
    """A text as the library files it: UTF-8 without a selector.

    Raises:
        ValueError: it is empty, longer than longest bytes, or holds control characters, of which the first would
            select a character table and a zero would end the text.
    """
    encoded = text.encode()
    if not encoded:
        raise ValueError("a name has one byte at least")
    if len(encoded) > longest:
        raise ValueError(f"a name has at most {longest} bytes, not {len(encoded)}: {text!r}")
    if any(unicodedata.category(character) == "Cc" for character in text):
        raise ValueError(f"a name has no control characters: {text!r}")
    return encoded


def _plain(field: bytes) -> str:
    selector = field[0] if field else _FIRST_PRINTABLE
    if selector in _TWO_BYTE_TABLES:
        return _two_byte(field[1:])
    if selector == _NUMBERED_TABLE:
        return _numbered(field)
    if selector == _PRIVATE_TABLE:
        return _default(_terminated(field[2:]))
    text = _terminated(field)
    if selector in _SINGLE_BYTE_TABLES:
        return text[1:].decode(_SINGLE_BYTE_TABLES[selector], "replace")
    return _default(text[1:] if selector < _FIRST_PRINTABLE else text)


def _terminated(field: bytes) -> bytes:
    return field.partition(b"\0")[0]


# In a table of two bytes a single zero byte is half of a character.
def _two_byte(field: bytes) -> str:
    pairs = [field[i : i + 2] for i in range(0, len(field) - 1, 2)]
    end = pairs.index(b"\0\0") if b"\0\0" in pairs else len(pairs)
    return b"".join(pairs[:end]).decode("utf_16_be", "replace")


# The first byte of the number is zero and ends nothing.
def _numbered(field: bytes) -> str:
    part = int.from_bytes(field[1:3], "big")
    text = _terminated(field[3:])
    return text.decode(f"iso8859_{part}", "replace") if part in range(1, 16) and part != 12 else _default(text)


def _default(text: bytes) -> str:
    try:
        return text.decode()
    except UnicodeDecodeError as error:
        # A name that was cut to its field may end within a character; without others it could be of another table.
        is_cut = error.reason == "unexpected end of data" and not text[: error.start].isascii()
        return text.decode(errors="replace") if is_cut else _iso_6937(text)


def _iso_6937(text: bytes) -> str:
    characters = []
    mark = None
    for byte in text:
        if byte in _MARKS and mark is None:
            mark = byte
            continue
        letter = chr(byte) if byte < 0xA0 else _ISO_6937[byte - 0xA0]
        characters.append(letter if mark is None else _marked(letter, mark))
        mark = None
    return "".join(characters) + ("" if mark is None else _NO)


def _marked(letter: str, mark: int) -> str:
    return _MARKS_ALONE[mark] if letter == " " else unicodedata.normalize("NFC", letter + _MARKS[mark])
