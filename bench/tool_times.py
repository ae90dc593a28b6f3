#!/usr/bin/env python3
"""Times what chlist does to large lists, each beside a floor or a peer that does the nearest thing, as whole processes.

    bench/tool_times.py [--program CHLIST] [--runs N] [--markdown]

Each is run N times (7) in turn with what stands beside it, on files in a temporary folder (in memory where TMPDIR is
there), and the least processor time of either counts, user and system. --markdown puts the table into
docs/performance.md between its marks. What is not installed is left out of the table by name.
"""

import argparse
import os
import pathlib
import random
import shlex
import shutil
import subprocess
import sys
import tempfile
from dataclasses import dataclass

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs" / "performance.md"
BEGIN, END = "<!-- tool -->\n", "<!-- end of tool -->\n"

SERVICES = 10_000
LARGEST = 5_000
EDITS = 5_000
STREAM_BYTES = 256 << 20
PACKET = 188


@dataclass
class Row:
    """One piece of work, and what stands beside it."""

    work: str
    command: str
    beside: str
    beside_name: str


def channels_conf(count: int) -> str:
    """Services on transponders of eight, with groups as people have them."""
    lines = []
    for i in range(count):
        if i % 500 == 0 and i < 20 * 500:
            lines.append(f":Group {i // 500 + 1}")
        transponder, place = divmod(i, 8)
        satellite = ("S19.2E", "S13.0E", "S28.2E")[transponder % 3]
        is_radio = place == 7
        lines.append(
            f"Service {i} {'Radio' if is_radio else 'HD' if place % 2 else 'TV'};Provider {i % 60}:"
            f"{10700 + transponder}:{'HV'[transponder % 2]}S1:{satellite}:27500:"
            f"{0 if is_radio else 100 + place}:{200 + place}:0:{'1702' if place == 3 else 0}:{i + 1}:1:{transponder + 1}:0"
        )
    return "\n".join(lines) + "\n"


def stream() -> bytes:
    """A captured transponder: its tables, again and again, among packets of other PIDs."""
    tables = (ROOT / "samples" / "11306h-today.ts").read_bytes()
    draw = random.Random(1)
    payload = b"".join(
        bytes([0x47, 0x01 + i % 8, i % 256, 0x10 | i % 16]) + draw.randbytes(PACKET - 4) for i in range(2000)
    )
    block = tables + payload
    return block * (STREAM_BYTES // len(block))


def make_files(folder: pathlib.Path, chlist: str) -> None:
    """The lists and texts that the work is done on."""
    draw = random.Random(2)
    run = lambda *words: subprocess.run(words, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    (folder / "all.conf").write_text(channels_conf(SERVICES))
    (folder / "half.conf").write_text(channels_conf(LARGEST))
    run(chlist, "import", "half.conf", "-o", "list.dat")
    shutil.copy(folder / "list.dat", folder / "other.dat")
    run(chlist, "rename", "other.dat", "--where", "name~HD$", "--replace", "/ HD$/ UHD/", "--yes", "--no-backup")
    run(chlist, "sort", "other.dat", "--by", "name", "--no-backup", "--yes")
    for name in ("list", "other"):
        with open(folder / f"{name}.csv", "w", encoding="utf-8") as out:
            subprocess.run((chlist, "list", f"{name}.dat", "--format", "csv"), cwd=folder, stdout=out, check=True)
        with open(folder / f"{name}.json", "w", encoding="utf-8") as out:
            subprocess.run((chlist, "list", f"{name}.dat", "--json"), cwd=folder, stdout=out, check=True)
    run(chlist, "export", "list.dat", "--to", "dvbv5", "-o", "list.dvbv5")
    places = draw.sample(range(LARGEST), EDITS)
    (folder / "edits.txt").write_text("".join(f'rename {i + 1} "Name {i}"\n' for i in places))
    (folder / "edits.sql").write_text(
        "begin;\n" + "".join(f"update service set name = 'Name {i}' where id = {i + 1};\n" for i in places) + "commit;\n"
    )
    database = "create table service(id integer primary key, name text);\n" + "".join(
        f"insert into service values({i + 1}, 'Service {i}');\n" for i in range(LARGEST)
    )
    if shutil.which("sqlite3"):
        subprocess.run(("sqlite3", "list.db"), cwd=folder, input="begin;\n" + database + "commit;\n", text=True, check=True)
    damaged = bytearray((folder / "list.dat").read_bytes())
    del damaged[600_000:600_013]
    (folder / "damaged.dat").write_bytes(damaged)
    (folder / "air.ts").write_bytes(stream())


ROWS = [
    Row(f"import of {SERVICES:,} services of a channels.conf, of which a list holds {LARGEST:,}",
        "{chlist} import all.conf -o made.dat --no-backup", "sort all.conf", "`sort` of the text"),
    Row(f"import of {LARGEST:,} services of libdvbv5's format",
        "{chlist} import list.dvbv5 -o made.dat --no-backup", "dvb-format-convert -I dvbv5 -O dvbv5 list.dvbv5 made.conf",
        "`dvb-format-convert`, into a text again"),
    Row(f"`list` of {LARGEST:,} services", "{chlist} list list.dat", "sort list.csv", "`sort` of as many lines"),
    Row("`list --json`", "{chlist} list list.dat --json", "jq . list.json", "`jq .` of the same"),
    Row(f"`diff` of two lists of {LARGEST:,}, in another order", "{chlist} diff list.dat other.dat",
        "diff list.csv other.csv", "`diff` of their texts, which pairs nothing"),
    Row(f"`apply` of {EDITS:,} edits", "{chlist} apply list.dat edits.txt -o made.dat --yes --no-backup",
        "sqlite3 list.db '.read edits.sql'", "as many updates by key in one transaction of `sqlite3`"),
    Row("`order` by a reference", "{chlist} order list.dat --like other.dat -o made.dat --yes --no-backup",
        "sort list.csv", "`sort` of as many lines"),
    Row("`salvage` of the list with 13 bytes cut out", "{chlist} salvage damaged.dat -o made.dat",
        "strings damaged.dat", "`strings` of the file"),
    Row(f"`scan` of {STREAM_BYTES >> 20} MiB of a stream", "{chlist} scan air.ts -o made.dat --no-backup",
        "md5sum air.ts", "`md5sum` of it"),
]


def seconds_of(command: str, folder: pathlib.Path) -> float:
    """Processor seconds of one run, user and system. Findings are no failure."""
    with open(os.devnull, "wb") as nothing:
        process = subprocess.Popen(shlex.split(command), cwd=folder, stdin=subprocess.DEVNULL, stdout=nothing, stderr=nothing)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode not in (0, 1):
        sys.exit(f"{command} ended with {process.returncode}")
    return usage.ru_utime + usage.ru_stime


def least_of_both(row: Row, folder: pathlib.Path, chlist: str, runs: int) -> tuple[float, float]:
    """Of the work and of what stands beside it, in turn."""
    pairs = [
        (seconds_of(row.command.format(chlist=chlist), folder), seconds_of(row.beside, folder)) for _ in range(runs)
    ]
    return min(a for a, _ in pairs), min(b for _, b in pairs)


def table(rows: list[tuple[Row, float, float]]) -> str:
    """As the page has it."""
    lines = ["| Work | ms | Beside it | ms | Ratio |", "|---|---:|---|---:|---:|"]
    for row, own, beside in rows:
        ratio = f"{own / beside:.1f}" if beside > 0 else ""
        lines.append(f"| {row.work} | {own * 1e3:.0f} | {row.beside_name} | {beside * 1e3:.0f} | {ratio} |")
    return "\n".join(lines) + "\n"


def main() -> None:
    """Measures, and prints or puts down the table."""
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=str(ROOT / "build" / "release" / "bin" / "chlist"))
    parser.add_argument("--runs", type=int, default=7)
    parser.add_argument("--markdown", action="store_true")
    arguments = parser.parse_args()
    measured = []
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        make_files(folder, arguments.program)
        for row in ROWS:
            if shutil.which(row.beside.split()[0]) is None:
                print(f"left out, {row.beside.split()[0]} is not installed: {row.work}", file=sys.stderr)
                continue
            measured.append((row, *least_of_both(row, folder, arguments.program, arguments.runs)))
    if not arguments.markdown:
        print(table(measured), end="")
        return
    page = PAGE.read_text(encoding="utf-8")
    before, rest = page.split(BEGIN)
    PAGE.write_text(before + BEGIN + "\n" + table(measured) + "\n" + END + rest.split(END)[1], encoding="utf-8")


if __name__ == "__main__":
    main()
