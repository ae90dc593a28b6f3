#!/usr/bin/env python3
"""Sets what was measured beside the targets: the best time of each benchmark (JSON of channel_bench), instructions and
calls (bench/instructions.sh --counts and --growth) and memory (bench/memory.sh). What was not measured is left out or
said to be missing; nothing here is a measured figure of its own."""

import argparse
import json
import math
import re
import sys

# Of benchmarks that tell their CPU time themselves.
TOLD = "/manual_time"
N_FIRST = "floor:read_records/first"
N_FRESH = "floor:read_records/fresh"
N_WARM = "floor:read_records/warm"
WALK = "floor:walk_5000_entries/warm"
ENTRIES = 5000
VIEWS = 26
LINES_PER_RUN = 1000


class Measured:
    """Best CPU times in ns by benchmark, and (instructions, allocations, copies) by operation."""

    def __init__(self, timings, counts):
        self.times = {}
        for run in timings["benchmarks"]:
            if run["run_type"] == "iteration":
                assert run["time_unit"] == "ns"
                name = run["run_name"].removesuffix(TOLD)
                own = run["real_time" if run["run_name"].endswith(TOLD) else "cpu_time"]
                self.times[name] = min(self.times.get(name, math.inf), own)
        self.counts = {}
        for line in counts:
            name, *numbers = line.split()
            self.counts[name] = tuple(map(int, numbers))

    def time(self, name):
        return self.times.get(name)

    def instructions(self, name):
        return self.counts.get(name, (None,))[0]

    def allocations(self, name):
        return self.counts.get(name, (None, None))[1]

    def copies(self, name):
        return self.counts.get(name, (None, None, None))[2]


def quotient(a, b):
    return None if a is None or not b else a / b


def in_unit(value):
    """A time in ns, as one reads it."""
    for unit, size in (("ms", 1e6), ("us", 1e3)):
        if value >= size:
            return f"{value / size:.2f} {unit}"
    return f"{value:.1f} ns"


def millions(value):
    return f"{value / 1e6:.2f} M" if value >= 1e5 else f"{value:,.0f}"


class Row:
    """One target: a value and its limit. The value is None when it was not measured."""

    def __init__(self, operation, measure, value, limit, show, at_least=False, note=""):
        self.operation, self.measure, self.value, self.note = operation, measure, value, note
        sign = ">=" if at_least else "<="
        self.target = f"{sign} {show(limit)}"
        self.shown = "not measured" if value is None else show(value) + (f" ({note})" if note else "")
        self.verdict = "-" if value is None else "pass" if (value >= limit if at_least else value <= limit) else "MISS"

    def cells(self):
        return [self.operation, self.measure, self.target, self.shown, self.verdict]


class Table:
    """The targets of one operation after another."""

    def __init__(self, measured):
        self.measured, self.rows = measured, []

    def times_floor(self, operation, name, floor, limit, measure, floor_name):
        own, least = self.measured.time(name), self.measured.time(floor)
        note = "" if own is None or least is None else f"{in_unit(own)} : {in_unit(least)}"
        self.rows.append(Row(operation, measure, quotient(own, least), limit,
                             lambda value: f"{value:.2f} {floor_name}", note=note))

    def faster(self, operation, name, peer, limit, peer_name):
        own, other = self.measured.time(name), self.measured.time(peer)
        note = "" if own is None or other is None else f"{in_unit(other)} : {in_unit(own)}"
        self.rows.append(Row(operation, f"faster than {peer_name}", quotient(other, own), limit,
                             lambda value: f"{value:.1f} x", at_least=True, note=note))

    def instructions(self, operation, name, limit):
        self.rows.append(Row(operation, "instructions", self.measured.instructions(name), limit, millions))

    def number(self, operation, measure, value, limit, at_least=False, show=lambda value: f"{value:,.0f}"):
        self.rows.append(Row(operation, measure, value, limit, show, at_least))


def loading_and_saving(table):
    load = "load_channel (views linked, no sort)"
    table.times_floor(load, "load_channel/first", N_FIRST, 1.25, "time, first of a process", "N")
    table.times_floor(load, "load_channel/fresh", N_FRESH, 1.25, "time, fresh memory", "N")
    table.times_floor(load, "load_channel/warm", N_WARM, 1.35, "time, warm", "N")
    table.instructions(load, "load_channel", 4.2e6)
    table.faster(load, "load_channel/warm", "sqlite:load/warm", 6, "SQLite")
    table.faster(load, "load_channel/warm", "dvbv5:load/warm", 20, "libdvbv5")
    save = "save_channel without the sync"
    table.times_floor(save, "save_channel_without_sync/warm", "floor:write_at_once/warm", 2.0, "time", "write()")
    table.instructions(save, "save_channel_without_sync", 2e6)
    table.faster(save, "save_channel_without_sync/warm", "sqlite:save/warm", 25, "SQLite")


def whole_list(table):
    measured = table.measured
    link = "link_rch_info, full views"
    table.instructions(link, "link_rch_info", 1.6e6)
    table.number(link, "fewer instructions than nested walks",
                 quotient(measured.instructions("floor:link_by_nested_walks"), measured.instructions("link_rch_info")),
                 8, at_least=True, show=lambda value: f"{value:.1f} x")
    merge = "check_load_channel, 4,500 known, 500 new, 500 gone"
    table.instructions(merge, "check_load_channel:scan", 6e6)
    table.times_floor(merge, "check_load_channel:scan/warm", N_WARM, 2.2, "time, warm", "N")
    table.faster(merge, "check_load_channel:scan/warm", "sqlite:merge_services/warm", 8, "SQLite, service by service")
    table.faster(merge, "check_load_channel:scan/warm", "sqlite:merge_databases/warm", 1, "SQLite, sets")
    prune = "remove_invalid_virtual_channel, 2,500 services gone"
    table.instructions(prune, "remove_invalid_virtual_channel:network", 4e6)
    table.number(prune, "block moves, one for each view",
                 measured.copies("remove_invalid_virtual_channel:network"), VIEWS)
    repair = "repair_channel, full version 8 file"
    table.times_floor(repair, "repair_channel:version_8/fresh", N_FRESH, 3.0, "time, fresh memory", "N")
    table.times_floor(repair, "repair_channel:version_8/warm", N_WARM, 2.5, "time, warm", "N")
    table.instructions(repair, "repair_channel:version_8", 6e6)


def hostile(table):
    """Lists made to be costly, beside one that is not."""
    measured = table.measured
    harmless = measured.instructions("link_rch_info:far_apart")
    for name, operation in (("crafted", "link_rch_info, identities crafted against a table"),
                            ("1_khz_apart", "link_rch_info, transponders 1 kHz apart")):
        table.number(operation, "instructions beside a harmless list's",
                     quotient(measured.instructions(f"link_rch_info:{name}"), harmless), 3,
                     show=lambda value: f"{value:.2f} x")


def requests(table):
    measured = table.measured
    index = "get_channel_index, last of 5,000"
    table.times_floor(index, "get_channel_index:last/warm", WALK, 1.25, "time", "walks")
    table.instructions(index, "get_channel_index:last", 14e3)
    table.faster(index, "get_channel_index:last/warm", "sqlite:service_of_number_in_transaction/warm", 0.8,
                 "SQLite in a transaction")
    table.faster(index, "get_channel_index:last/warm", "sqlite:service_of_number/warm", 1, "SQLite, statement alone")
    zapping = "one zapping request, last channel"
    table.times_floor(zapping, "zapping_request:last/warm", WALK, 3.5, "time", "walks")
    table.instructions(zapping, "zapping_request:last", 27e3)
    table.number(zapping, "allocations", measured.allocations("zapping_request:last"), 0)
    sort = "name sort of 5,000 entries"
    table.instructions(sort, "sort_vch_type:name", 6e6)
    table.number(sort, "allocations (in place)", measured.allocations("sort_vch_type:name"), 0)
    table.number(sort, "copies for each entry", quotient(measured.copies("sort_vch_type:name"), ENTRIES), 2,
                 show=lambda value: f"{value:.2f}")
    line, nothing = measured.instructions("trace_line:level_0"), measured.instructions("floor:call_nothing")
    table.number("trace line at level 0", "instructions",
                 None if line is None or nothing is None else (line - nothing) / LINES_PER_RUN, 3.01,
                 show=lambda value: f"{value:.1f}")


def exponent(points):
    """The slope of the least-squares line through (log size, log cost)."""
    xs = [math.log(size) for size, _ in points]
    ys = [math.log(cost) for _, cost in points]
    x_mean, y_mean = sum(xs) / len(xs), sum(ys) / len(ys)
    return (sum((x - x_mean) * (y - y_mean) for x, y in zip(xs, ys)) / sum((x - x_mean) ** 2 for x in xs))


def growth_rows(lines):
    """Header and rows: exponent over all sizes and of the last step, which would show what small sizes hide."""
    points = {}
    for line in lines:
        name, kind, size, cost = line.split()
        points.setdefault((name, kind), []).append((int(size), int(cost)))
    rows = []
    for (name, kind), measured in points.items():
        limit = 1.2 if kind == "sorts" else 1.1
        measured.sort()
        slope = exponent(measured)
        rows.append([name, f"{measured[0][0]:,} to {measured[-1][0]:,} {'services' if kind == 'walks' else 'entries'}",
                     " ".join(millions(cost) for _, cost in measured), f"<= {limit}", f"{slope:.2f}",
                     f"{exponent(measured[-2:]):.2f}", "pass" if slope <= limit else "MISS"])
    return ["operation", "list", "instructions", "target", "exponent", "last step", ""], rows


def peer_rows(measured):
    """The peers as they stand."""
    rows = [[name.removesuffix("/warm"), in_unit(value)] for name, value in measured.times.items()
            if name.startswith(("sqlite:", "dvbv5:")) and name.endswith("/warm")]
    return ["peer", "best time"], rows


def memory_of(text):
    """The figures in the output of bench/memory.sh, in bytes."""
    records = re.search(r"^after load_channel +(?P<records>\d+) +(?P<own>\d+) +(?P<heap>\d+)", text, re.M)
    sizes = re.search(r"^ *text.*\n *(?P<text>\d+)\s+(?P<data>\d+)\s+(?P<bss>\d+)", text, re.M)
    peak = re.search(r"^most held while loading: (?P<peak>\d+)", text, re.M)
    memory = {name: int(value) for found in (records, sizes, peak) for name, value in found.groupdict().items()}
    memory["static"] = memory["data"] + memory["bss"]
    return memory


def memory_row(text, target):
    memory = memory_of(text)
    memory["together"] = memory["heap"] + memory["static"]
    return [target, *(f"{memory[name]:,}" for name in ("records", "own", "heap", "static", "together", "peak"))]


MEMORY_HEADER = ["target", "records", "their bytes", "on the heap", "static data", "together", "most while loading"]


def emulated_rows(measured, emulated):
    """Instructions of another processor beside those of this one."""
    rows = []
    for line in emulated:
        name, count, *_ = line.split()
        own = measured.instructions(name)
        if own and not name.startswith("floor:"):
            rows.append([name, millions(own), millions(int(count)), f"{int(count) / own:.2f}"])
    return rows


def print_plain(header, rows):
    widths = [max(len(row[i]) for row in [header, *rows]) for i in range(len(header))]
    for row in [header, *rows]:
        print("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip())


def print_markdown(header, rows):
    print("| " + " | ".join(header) + " |")
    print("|" + "---|" * len(header))
    for row in rows:
        print("| " + " | ".join(row) + " |")


def read_lines(path):
    if path is None:
        return []
    with open(path, encoding="utf-8") as file:
        return file.read().splitlines()


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("timings", help="JSON of channel_bench")
    parser.add_argument("--counts", help="output of bench/instructions.sh --counts")
    parser.add_argument("--growth", help="output of bench/instructions.sh --growth")
    parser.add_argument("--memory", nargs=2, action="append", default=[], metavar=("TARGET", "FILE"),
                        help="output of bench/memory.sh")
    parser.add_argument("--emulated", nargs=2, action="append", default=[], metavar=("TARGET", "FILE"),
                        help="output of bench/instructions.sh --counts for another processor")
    parser.add_argument("--markdown", action="store_true")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    with open(arguments.timings, encoding="utf-8") as file:
        timings = json.load(file)
    measured = Measured(timings, read_lines(arguments.counts))
    print_table = print_markdown if arguments.markdown else print_plain

    def section(title, header, rows):
        if rows:
            print(f"\n### {title}\n" if arguments.markdown else f"\n{title}")
            print_table(header, rows)

    table = Table(measured)
    loading_and_saving(table)
    whole_list(table)
    hostile(table)
    requests(table)
    growth = growth_rows(read_lines(arguments.growth))
    section("Targets", ["operation", "measure", "target", "measured", ""], [row.cells() for row in table.rows])
    section("Growth of instructions", *growth)
    section("Peers", *peer_rows(measured))
    section("Memory after loading the full list, in bytes", MEMORY_HEADER,
            [memory_row("\n".join(read_lines(path)), target) for target, path in arguments.memory])
    for target, path in arguments.emulated:
        section(f"Instructions on {target}", ["operation", "here", target, "ratio"],
                emulated_rows(measured, read_lines(path)))
    verdicts = [row.verdict for row in table.rows] + [row[-1] for row in growth[1]]
    print(f"\n{verdicts.count('pass')} of {len(verdicts)} targets met, {verdicts.count('MISS')} missed, "
          f"{verdicts.count('-')} not measured.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
