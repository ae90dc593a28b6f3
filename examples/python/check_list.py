#!/usr/bin/env python3
"""Prints services that are in a channel file more than once, and favourites that are not what they seem.

Usage: check_list.py FILE

The exit status is 1 when there is something to print.
"""

import sys
from collections import defaultdict
from collections.abc import Iterator

from channel_list import ChannelList, FavouriteGroup, Service


def duplicates(channels: ChannelList) -> Iterator[str]:
    """Services of one name and one type, as they come from two transponders or two satellites."""
    alike: defaultdict[tuple[str, int], list[Service]] = defaultdict(list)
    for service in channels.services():
        alike[service.name.casefold(), service.service_type].append(service)
    for services in alike.values():
        if len(services) > 1:
            yield f"{services[0].name}: {', '.join(str(service.identity) for service in services)}"


def wrong_favourites(group: FavouriteGroup, numbers: dict[Service, int]) -> Iterator[str]:
    """Favourites without a service, and those that go by another number than in the list of all services."""
    for entry in group:
        if entry.service is None:
            yield f"{group.name}, position {entry.position}: leads to no service ({entry.identity})"
        elif numbers.get(entry.service) != entry.number:
            yield f"{group.name}: {entry.name} has number {entry.number}, not {numbers.get(entry.service)}"


def main(path: str) -> int:
    with ChannelList(path) as channels:
        numbers = {entry.service: entry.number for entry in channels.view("all") if entry.service}
        findings = list(duplicates(channels))
        for group in channels.favourites:
            findings += wrong_favourites(group, numbers)
    for finding in findings:
        print(finding)
    return 1 if findings else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1]))
