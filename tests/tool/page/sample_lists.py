"""The lists that the browser sees: one with everything in it, one with hostile names, and the largest one."""

import random

from channel_list import DATA, LOCKED, SCRAMBLED, SKIPPED, ChannelList

PROVIDERS = ["Northlight Media", "Fjordkast", "Lanterna TV", "Quayside", "Belvédère", "Meridian", "Silverscreen",
             "Polarstern", "Harbour Radio", "Kitewire"]
GENRES = ["Films", "News", "Sport", "Music", "Children", "Documentary"]
FIRST = ["Northlight", "Harbour", "Meridian", "Silverscreen", "Polarstern", "Città", "Télé", "Arena", "Lanterna",
         "Quayside", "Kanal", "Atlas", "Aurora", "Bergblick", "Cascade", "Delta", "Ember", "Fjord", "Granit", "Halo",
         "Insel", "Juniper", "Kite", "Lumen", "Mosaik", "Nordwind", "Orchard", "Prisma", "Quarz", "Riviera"]
SECOND = ["One", "Two", "Plus", "24", "HD", "Classics", "Première", "Extra", "Junior", "Doc", "Live", "Sport", "Viva",
          "Morgenrøde", "Światło", "Ελλάδα", "Плюс", "Gold", "Regional", "Europe"]
RADIO = ["FM", "Klassik", "Jazz", "Rock", "Culture", "Info", "Pop", "Soul"]
SOURCES = [(1, 158, "S13.5E", 10_720_000, 12_740_000, 46, (0, 1)), (2, 43, "S31.0E", 10_850_000, 12_500_000, 27, (0, 1)),
           (3, 9018, "Cable City", 306_000, 858_000, 30, (0,))]


class Numbers:
    """Counts the numbers of every view."""

    def __init__(self):
        self.next = {}

    def __call__(self, view):
        self.next[view] = self.next.get(view, 0) + 1
        return self.next[view]


def pids(chance, is_radio, is_scrambled):
    base = 0x100 + chance.randrange(200) * 32
    return (base, base + 1, 0xFFFF if is_radio else base + 1, base + 8 if is_scrambled else 0xFFFF, base + 2)


def flags(chance):
    return sum(bit for bit, odds in ((SCRAMBLED, .38), (LOCKED, .05), (SKIPPED, .07), (DATA, .06))
               if chance.random() < odds)


def add_groups(made):
    for kind, names in (("provider", PROVIDERS), ("genre", GENRES)):
        for i, name in enumerate(names):
            made.group(kind, i + 1, name)
    for i, name in enumerate(["Family", "Films", "Sport & live", "Kitchen radio"]):
        made.group("favourites", i, name)


def add_source(made, chance, number, source):
    net_index, network_id, name, low, high, transponders, polarisations = source
    made.network(net_index, network_id, name)
    step = (high - low) // transponders
    for i in range(transponders):
        made.transponder(1000 + i, low + i * step, polarisations[i % len(polarisations)])
        for k in range(int(chance.triangular(1, 17, 5))):
            is_radio = chance.random() < .2
            flag = flags(chance)
            title = f"{chance.choice(FIRST)} {chance.choice(RADIO if is_radio else SECOND)}"
            identity = made.service(net_index * 10_000 + i * 40 + k, title, type=2 if is_radio else 1,
                                    provider=1 + chance.randrange(len(PROVIDERS)),
                                    genre=chance.randrange(len(GENRES) + 1), flag=flag, short=title[:8].strip(),
                                    pids=pids(chance, is_radio, flag & SCRAMBLED))
            all_number = number("all")
            made.entry("all", identity, all_number)
            made.entry("radio" if is_radio else "tv", identity, all_number)
            if chance.random() < .09:
                group = 3 if is_radio else chance.randrange(3)
                if number.next.get(group, 0) < 40:
                    made.entry(group, identity, number(group))
            if chance.random() < .04:
                made.entry("user", identity, number("user"))


def rich_list(has_faults=True, sources=SOURCES):
    """Several sources, every view in use, and with faults a few things that are wrong."""
    chance = random.Random(7)
    made, number = ChannelList(), Numbers()
    add_groups(made)
    for source in sources:
        add_source(made, chance, number, source)
    if has_faults:
        identity = made.service(60_000, "In no view at all", provider=99)
        made.entry("tv", identity[:3] + (60_001,) + identity[4:], 900)
        made.entry("promotion", identity[:3] + (60_002,) + identity[4:], 1)
        made.entry("promotion", identity[:3] + (60_003,) + identity[4:], 1)
    return made.bytes()


HOSTILE = ["</script><script>document.title='owned'</script>", "<img src=x onerror=\"document.title='owned'\">",
           "a\u2028b\u2029c", "\\u003c/script>", "{{page.js}}", "\u202egnihton", "'\"`${1}", "<!--<script>"]


def hostile_list():
    """Every text of the list is hostile; one is not UTF-8."""
    made = ChannelList()
    for kind in ("provider", "genre", "favourites"):
        for i, text in enumerate(HOSTILE):
            made.group(kind, i + 1 if kind != "favourites" else i, text)
    made.network(1, 1, HOSTILE[0])
    made.transponder(1, 11_000_000, 0)
    for i, text in enumerate(HOSTILE):
        identity = made.service(i + 1, text, provider=i + 1, genre=i + 1, short=text)
        made.entry("all", identity, i + 1)
        made.entry(i, identity, i + 1)
    made.entry("all", made.service(100, b"\x15\xe9\xff\x80 raw", provider=1), 100)
    return made.bytes()


def full_list():
    """5,000 services on 500 transponders, all views full that can be."""
    made = ChannelList()
    for i in range(500):
        made.group("provider", i + 1, f"Provider {i + 1}")
    made.network(1, 1, "Network")
    for i in range(500):
        made.transponder(i + 1, 10_700_000 + (i // 2) * 8_000, i % 2)
        for k in range(10):
            index = 10 * i + k
            is_radio = index >= 4000
            identity = made.service(index + 1, f"Service {index + 1} {FIRST[index % 30]}", type=2 if is_radio else 1,
                                    provider=index % 500 + 1)
            made.entry("all", identity, index + 1)
            made.entry("radio" if is_radio else "tv", identity, index + 1)
            made.entry("user", identity, 5000 - index)
    return made.bytes()


def small_list():
    """Six services in the views, one in none, two groups of which one is empty."""
    made = ChannelList()
    for kind, names in (("provider", ["Quayside", "Fjordkast"]), ("favourites", ["Family", "Films"])):
        for i, name in enumerate(names):
            made.group(kind, i + 1 if kind == "provider" else i, name)
    made.network(1, 1, "Harbour")
    made.transponder(1, 11_000_000, 0)
    for i, name in enumerate(["One", "Two", "Three", "Four", "Five", "Six"]):
        identity = made.service(i + 1, name, type=2 if name == "Six" else 1, provider=[1, 2, 2, 1, 0, 2][i],
                                flag=SCRAMBLED if i % 2 else 0)
        made.entry("all", identity, i + 1)
        made.entry("radio" if name == "Six" else "tv", identity, i + 1)
        if name in ("One", "Three"):
            made.entry(0, identity, i + 1)
    made.service(7, "Hidden")
    return made.bytes()


LISTS = {"small": small_list, "rich": rich_list, "clean": lambda: rich_list(has_faults=False), "hostile": hostile_list, "full": full_list,
         "empty": lambda: ChannelList().bytes()}
