#!/usr/bin/env python3
"""Rebuilds a channel list from a damaged file, and says what is lost and what differs from an older copy.

Usage: rescue_list.py DAMAGED OUT COPY

The copy may be of any format. The exit status is 1 when something is lost, or in doubt.
"""

import sys

from channel_list import ChannelListError, compare, salvage


def main(damaged: str, output: str, copy: str) -> int:
    report = salvage(damaged, output)
    print(f"{output}: {report.recovered.services} services came back")
    for entry in report.lost.lost_entries:
        if entry.view == "ALL":
            print(f"number {entry.number} has no service any more")
    found = compare(copy, output)
    for service in (*found.differences.removed, *found.differences.added):
        where = copy if service in found.differences.removed else output
        print(f"only in {where}: {service.name}")
    return int(report.has_findings)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    try:
        sys.exit(main(*sys.argv[1:]))
    except (ChannelListError, OSError) as error:
        sys.exit(f"{sys.argv[1]}: nothing rescued: {error}")
