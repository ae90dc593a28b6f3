#!/usr/bin/env python3
"""Merges a scan of any format into a channel file, unless that would take favourites away.

Usage: merge_scan.py FILE SCAN

What a merge would do is looked at first. The exit status is 1, and the file as it was, when favourites would go.
"""

import sys
from collections.abc import Iterator

from channel_list import ChannelListError, MergeReport, merge_lists, preview_merge


def favourites_that_go(preview: MergeReport) -> Iterator[str]:
    for service in preview.removed:
        groups = [entry.group_name for entry in service.entries if entry.group_name]
        if groups:
            yield f"{service.name} ({', '.join(groups)})"


def main(path: str, scan: str) -> int:
    preview = preview_merge(path, scan)
    for moved in preview.moved:
        print(f"{moved.name}: {moved.before.identity} -> {moved.identity}, found by its {moved.found_by}")
    print(f"{preview.kept} stay, {len(preview.moved)} move, {len(preview.added)} come, {len(preview.removed)} go")
    going = list(favourites_that_go(preview))
    if going:
        print(f"not merged, favourites would go: {', '.join(going)}")
        return 1
    merge_lists(path, scan, path)
    return 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    try:
        sys.exit(main(*sys.argv[1:]))
    except (ChannelListError, OSError) as error:
        sys.exit(f"{sys.argv[1]}: not merged: {error}")
