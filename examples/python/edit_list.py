#!/usr/bin/env python3
"""Renames and locks services of a channel file as a table of CSV says.

Usage: edit_list.py FILE TABLE

The columns of the table are number, name and locked (yes or no); an empty cell leaves things as they are. The file is
saved when every row could be carried out; otherwise it stays as it was.
"""

import csv
import sys

from channel_list import ChannelList, ChannelListError, Entry


COLUMNS = ("number", "name", "locked")
ANSWERS = {"yes": True, "no": False}


def edit(channels: ChannelList, entry: Entry, row: dict[str, str]) -> None:
    if row["name"]:
        channels.rename(entry, row["name"])
    if row["locked"]:
        if row["locked"] not in ANSWERS:
            raise ValueError(f"number {entry.number}: locked is yes or no, not {row['locked']}")
        channels.lock(entry, ANSWERS[row["locked"]])
    after = channels.service(entry)
    print(f"{entry.number}: {entry.name} -> {after.name}{', locked' if after.is_locked else ''}")


def main(path: str, table: str) -> None:
    with ChannelList(path) as channels, open(table, newline="", encoding="utf-8") as rows:
        reader = csv.DictReader(rows, restval="")
        for column in COLUMNS:
            if column not in (reader.fieldnames or ()):
                raise ValueError(f"{table} has no column {column}")
        for row in reader:
            edit(channels, channels.entry(int(row["number"])), row)
        channels.save(path)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except (ChannelListError, OSError, ValueError) as error:
        sys.exit(f"{sys.argv[1]}: not changed: {error}")
