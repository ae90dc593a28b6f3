"""The tables of accents.cpp are Unicode's own: marks, and the letters that accented ones are made of.

Usage: accents_test.py ACCENTS_CPP
"""

import ast
import re
import sys
import unicodedata


def is_mark(code: int) -> bool:
    return unicodedata.category(chr(code)).startswith("M")


def base_of(code: int) -> int:
    """The one letter that is left of a character without its marks, or the character itself."""
    letters = [c for c in unicodedata.normalize("NFD", chr(code)) if not is_mark(ord(c))]
    return ord(letters[0]) if len(letters) == 1 else code


def ranges_in(text: str) -> set[int]:
    pairs = re.findall(r"\{0x([0-9A-F]+), 0x([0-9A-F]+)\}", text)
    return {code for first, last in pairs for code in range(int(first, 16), int(last, 16) + 1)}


def runs_in(text: str) -> dict[int, int]:
    letters = {}
    for first, literals in re.findall(r"\{0x([0-9A-F]+),\s+((?:U\"[^\"]*\"\s*)+)\}", text):
        run = "".join(ast.literal_eval(f'"{literal}"') for literal in re.findall(r'U"([^"]*)"', literals))
        letters |= {int(first, 16) + at: ord(letter) for at, letter in enumerate(run)}
    return letters


def main() -> int:
    with open(sys.argv[1], encoding="utf-8") as source:
        text = source.read()
    marks, letters = ranges_in(text), runs_in(text)
    faults = [f"U+{code:04X} is {'no' if code in marks else 'a'} mark" for code in range(0x300, 0x20000)
              if unicodedata.category(chr(code)) != "Cn" and is_mark(code) != (code in marks)]
    blocks = (*range(0x80, 0x3100), *range(0xFB00, 0xFE00))
    faults += [f"U+{code:04X} is made of U+{base_of(code):04X}" for code in blocks
               if not is_mark(code) and base_of(code) != letters.get(code, code)]
    print("\n".join(faults) or f"{len(marks)} marks and {len(letters)} letters are Unicode's")
    return 1 if faults or not marks or not letters else 0


if __name__ == "__main__":
    sys.exit(main())
