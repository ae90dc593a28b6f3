#!/usr/bin/env python3
"""Prints the TV services of a channel file as CSV: their numbers, their names and their transponders.

Usage: tv_services.py FILE
"""

import csv
import sys

from channel_list import ChannelList


def main(path: str) -> None:
    table = csv.writer(sys.stdout, lineterminator="\n")
    table.writerow(["number", "name", "frequency", "polarisation", "ts", "service"])
    with ChannelList(path) as channels:
        for entry in channels.view("tv"):
            place = entry.identity
            transponder = [place.frequency, place.polarisation_letter, place.ts_id]
            table.writerow([entry.number, entry.name, *transponder, place.service_id])


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
