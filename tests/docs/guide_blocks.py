#!/usr/bin/env python3
"""Compares the programs that a guide shows with the files that they are, and refuses blocks that no test looks at.

A block ```c or ```cpp stands behind a comment <!-- examples/guides/NAME --> and is that file, whole. Blocks ```console
are run by console_blocks.py. Blocks ```sh are commands for a reader's own machine and ```text shows no program: neither
is checked. --update writes the files into the guides.
"""

import argparse
import pathlib
import re
import subprocess
import sys

BLOCK = re.compile(r"^(?:<!-- (?P<file>\S+) -->\n)?```(?P<kind>[^\n]*)\n(?P<text>.*?)^```$", re.MULTILINE | re.DOTALL)
PROGRAMS = ("c", "cpp")
OTHERS = ("console", "sh", "text")


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("guides", nargs="+", type=pathlib.Path)
    parser.add_argument("--root", type=pathlib.Path, required=True, help="the folder that programs are named below")
    parser.add_argument("--update", action="store_true", help="write the guides anew")
    return parser.parse_args()


def complaints_about(guide, text):
    for block in BLOCK.finditer(text):
        line = text.count("\n", 0, block.start()) + 1
        if block["kind"] in PROGRAMS and block["file"] is None:
            yield f"{guide.name}:{line}: no comment names the file that this program is"
        elif block["kind"] not in PROGRAMS + OTHERS:
            yield f"{guide.name}:{line}: blocks of the kind '{block['kind']}' are not checked"


def as_in_files(text, root):
    def with_file(block):
        if block["kind"] not in PROGRAMS or block["file"] is None:
            return block[0]
        program = (root / block["file"]).read_text()
        return f"<!-- {block['file']} -->\n```{block['kind']}\n{program}```"

    return BLOCK.sub(with_file, text)


def main():
    options = arguments()
    complaints = []
    for guide in options.guides:
        text = guide.read_text()
        complaints += complaints_about(guide, text)
        real = as_in_files(text, options.root)
        if options.update:
            guide.write_text(real)
        elif real != text:
            subprocess.run(["diff", "-u", str(guide), "-"], input=real.encode())
            complaints.append(f"{guide.name} does not show its programs as they are; --update mends it")
    if complaints:
        sys.exit("\n".join(complaints))


if __name__ == "__main__":
    main()
