#!/usr/bin/env python3
"""Edits a list of any format, and writes it in its own format or another one.

Usage: edit_line_up.py LIST OUT EDITS

EDITS is a text of edits as `chlist apply` takes them. OUT is written when all of them could be done; its name tells the
format. What the other format cannot hold is printed, and the exit status is 1 then.
"""

import sys
import tempfile
from pathlib import Path

from channel_list import ChannelListError, apply_edits, export_list, import_list


def main(line_up: str, output: str, edits: str) -> int:
    with tempfile.TemporaryDirectory() as folder:
        file = Path(folder) / "channels.dat"
        for line in import_list(line_up, file).skipped_lines:
            print(f"{line_up}:{line.line}: {line.message}")
        done = apply_edits(file, Path(edits).read_text(encoding="utf-8"))
        export = export_list(file, output)
    print(f"{output}: {export.services} services, {len(done.differences.changed)} of them edited")
    for loss in export.not_carried:
        print(f"not carried by {export.format}: {loss.what} of {loss.count}")
    return int(export.has_findings)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    try:
        sys.exit(main(*sys.argv[1:]))
    except (ChannelListError, OSError, ValueError) as error:
        sys.exit(f"{sys.argv[1]}: nothing written: {error}")
