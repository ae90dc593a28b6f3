#!/usr/bin/env python3
"""Holds the page on damaged files against the rules of chlist check: it names every kind of finding, and no other, each
with the severities that the sources give it.
"""

import argparse
import pathlib
import re
import sys

PUSHED = re.compile(r'((?:severity::\w+|\w+(?:\.\w+)?|[^,;{}]*\?[^,;{}]*)),\s*"([a-z]+(?:-[a-z]+)+)"')
ROW = re.compile(r"^\| (`[^|]*) \| ([a-z, ]+) \|", re.MULTILINE)


def kinds_of_sources(folder):
    """Each kind with the severities that stand beside it; none where a variable does."""
    found = {}
    for source in sorted(folder.glob("*_findings.cpp")):
        for severity, kind in PUSHED.findall(source.read_text()):
            found.setdefault(kind, set()).update(re.findall(r"severity::(\w+)", severity))
    return found


def kinds_of_page(text):
    return {kind: set(severities.split(", ")) for cell, severities in ROW.findall(text)
            for kind in re.findall(r"`([a-z-]+)`", cell)}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", type=pathlib.Path)
    root = parser.parse_args().root
    page = root / "docs/damaged-files.md"
    given, named = kinds_of_sources(root / "tools/chlist/check"), kinds_of_page(page.read_text())
    if not given:
        sys.exit("no rule was found")
    faults = [f"{page.name} does not name `{kind}`" for kind in sorted(given.keys() - named.keys())]
    faults += [f"{page.name} names `{kind}`, which is no finding" for kind in sorted(named.keys() - given.keys())]
    faults += [f"`{kind}` is of severity {', '.join(sorted(severities))}" for kind, severities in sorted(given.items())
               if severities and kind in named and severities != named[kind]]
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
