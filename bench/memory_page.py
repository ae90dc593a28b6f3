#!/usr/bin/env python3
"""Holds the table of memory in docs/guides/porting.md to what a build takes: text, data and bss of libchannel.so, and
the heap with the largest list loaded. Fails when a figure of the page is wrong by more than a twentieth and half a KiB;
--update writes the row of the build's target instead. Ends with 77 when the page has no row of that target."""

import argparse
import pathlib
import re
import subprocess
import sys

sys.dont_write_bytecode = True
import report  # noqa: E402

HERE = pathlib.Path(__file__).resolve().parent
PAGE = HERE.parent / "docs" / "guides" / "porting.md"
NO_ROW = 77


def figures_of(arguments):
    """Text, data, bss, heap, and what of them is memory that nothing else can have: all but the text."""
    text = subprocess.run([HERE / "memory.sh", *arguments], stdout=subprocess.PIPE, text=True, check=True).stdout
    memory = report.memory_of(text)
    return [memory[part] for part in ("text", "data", "bss", "heap")] + [memory["static"] + memory["heap"]]


def figures_in(row):
    return [int(cell.replace(",", "")) for cell in re.findall(r"[\d,]+(?= \|)", row)]


def wrong(told, measured):
    return len(told) != len(measured) or any(abs(a - b) > max(b / 20, 512) for a, b in zip(told, measured))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("target", help="the first word of its row")
    parser.add_argument("--update", action="store_true", help="write the row")
    parser.add_argument("arguments", nargs="*", metavar="ARGUMENT", help="as bench/memory.sh takes them")
    options = parser.parse_args()

    page = PAGE.read_text(encoding="utf-8")
    row = re.search(rf"^\| {re.escape(options.target)}\b[^|]*\|.*$", page, re.M)
    if row is None:
        print(f"{PAGE.name} has no row of {options.target}")
        return NO_ROW
    label = row[0].split("|")[1].strip()
    measured = figures_of(options.arguments)
    measured_row = "| " + " | ".join([label, *(f"{figure:,}" for figure in measured)]) + " |"
    print(f"the page: {row[0]}\nmeasured: {measured_row}")
    if options.update:
        PAGE.write_text(page[:row.start()] + measured_row + page[row.end():], encoding="utf-8")
        return 0
    return int(wrong(figures_in(row[0][len(label) + 2:]), measured))


if __name__ == "__main__":
    sys.exit(main())
