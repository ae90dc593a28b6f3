#!/usr/bin/env python3
"""Runs every command of chlist with --json and holds the page on JSON against what they print: each key of a document is
named on the page, and each key that the page names occurs in a document. Keys are what the first cells of the page's
tables have in backquotes.
"""

import argparse
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

RADIO = 'Radio {0};Fjord:11306:VC23M5O35S0:S13.5E:22000:0:{0}=deu@4:0:0:{0}:158:2010:0\n'
RADIO_VIEW = 1000
COUNT_OF_PROVIDERS = 52012
COUNT_OF_RADIO = 320120
COUNT_OF_FIRST_TRANSPONDER = 460466


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("--program", type=pathlib.Path, required=True)
    return parser.parse_args()


class Commands:
    """Runs chlist in a folder; keeps every key of every document, and every command that printed one."""

    def __init__(self, program, folder):
        self.program, self.folder = program, folder
        self.keys, self.commands = set(), set()

    def run(self, *words):
        done = subprocess.run([self.program, *words, "--json"], cwd=self.folder, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True)
        if done.stderr:
            sys.exit(f"chlist {' '.join(words)} --json: {done.stderr}")
        document = json.loads(done.stdout)
        if next(iter(document), "") != "schema":
            sys.exit(f"chlist {' '.join(words)} --json: the first key is not \"schema\"")
        self.commands.add(" ".join(words[:2]) if words[0] == "fav" else words[0])
        self.take(document)

    def take(self, value):
        if isinstance(value, dict):
            self.keys.update(value)
            value = value.values()
        if not isinstance(value, str) and hasattr(value, "__iter__"):
            for each in value:
                self.take(each)


def write_inputs(folder, root):
    for name in ("channels.conf", "11306h-today.ts", "11345v-today.ts"):
        shutil.copy(root / "samples" / name, folder)
    for name in ("channel_v8.dat", "channel_v9.dat", "scan_hostile.dat", "channel_v10.dat"):
        shutil.copy(root / "tests/golden" / name, folder)
    conf = (root / "samples/channels.conf").read_text()
    (folder / "bad.conf").write_text(conf + "broken\n")
    # Sources in another order, a service on another transponder, one with another name, and one that two could be.
    moved = "\n".join(reversed([line for line in conf.splitlines() if not line.startswith(":")])) + "\n"
    moved = moved.replace("Weatherglass;Meridian:11662:H", "Weatherglass;Meridian:11700:H").replace("Delta Shop", "Shop")
    moved = moved.replace("Harbour 7;Quayside:11345", "Haven;Quayside:11400")
    arena = next(line for line in moved.splitlines() if line.startswith("Arena Live"))
    moved = moved.replace(arena, arena.replace(":3303:", ":3903:") + "\n" + arena.replace(":3303:", ":3904:"))
    (folder / "moved.conf").write_text(moved)
    (folder / "twice.conf").write_text(conf + conf.splitlines()[-1].replace(":3901:", ":3902:") + "\n")
    for name, count in (("full.conf", RADIO_VIEW), ("fuller.conf", RADIO_VIEW + 1)):
        (folder / name).write_text("".join(RADIO.format(number) for number in range(1, count + 1)))


def run_all(commands):
    run, folder = commands.run, commands.folder
    run("import", "bad.conf", "-o", "list.dat")
    run("import", "full.conf", "-o", "full.dat")
    run("import", "fuller.conf", "-o", "fuller.dat")
    shutil.copy(folder / "list.dat", folder / "before.dat")
    run("info", "list.dat")
    run("list", "list.dat")
    run("show", "list.dat", "1")
    run("fav", "new", "list.dat", "Family")
    run("fav", "add", "list.dat", "Family", "1", "2")
    run("fav", "list", "list.dat")
    run("fav", "list", "list.dat", "Family")
    run("fav", "move", "list.dat", "Family", "1", "--to", "2")
    run("fav", "remove", "list.dat", "Family", "1")
    run("fav", "rename", "list.dat", "Family", "Films")
    run("rename", "list.dat", "1", "News")
    run("renumber", "list.dat", "1", "77")
    run("lock", "list.dat", "2")
    run("unlock", "list.dat", "2")
    run("skip", "list.dat", "2")
    run("unskip", "list.dat", "2")
    run("move", "list.dat", "3", "--before", "2")
    run("sort", "list.dat", "--by", "name")
    run("set", "list.dat", "3", "pcr_pid=77")
    run("remove", "list.dat", "3")
    run("keep", "list.dat", "--where", "type=radio", "--dry-run")
    (folder / "list.edits").write_text("lock 4\n")
    run("apply", "list.dat", "list.edits")
    run("undo", "list.dat")
    run("redo", "list.dat")
    run("restore", "list.dat", "1", "--dry-run")
    run("history", "list.dat")
    run("diff", "before.dat", "list.dat")
    run("fav", "delete", "list.dat", "Films")
    run("report", "list.dat", "-o", "page.html")
    run("order", "before.dat", "--like", "moved.conf", "--dry-run")
    run("import", "twice.conf", "-o", "twice.dat")
    run("duplicates", "twice.dat", "--by", "name")
    run("export", "list.dat", "-o", "list.csv", "--columns", "number,name")
    run("export", "list.dat", "-o", "list.conf")
    run("convert", "channel_v8.dat", "new.dat")
    run("merge", "channel_v10.dat", "scan_hostile.dat", "--dry-run")
    run("merge", "full.dat", "fuller.dat", "--dry-run")
    run("import", "moved.conf", "-o", "moved.dat")
    run("merge", "before.dat", "moved.dat", "--keep-missing", "--dry-run")
    run("diff", "--scan", "before.dat", "moved.dat")
    run_damaged(commands)
    run("scan", "11306h-today.ts", "11345v-today.ts", "-o", "air.dat")
    run("info", "none.dat")


def run_damaged(commands):
    run, folder = commands.run, commands.folder
    whole = (folder / "before.dat").read_bytes()
    (folder / "cut.dat").write_bytes(whole[:COUNT_OF_FIRST_TRANSPONDER + 5000] + b"\xff" * 900)
    count = bytearray(whole)
    count[COUNT_OF_FIRST_TRANSPONDER] = 0xFF
    count[COUNT_OF_PROVIDERS:COUNT_OF_PROVIDERS + 2] = (600).to_bytes(2, "little")
    (folder / "count.dat").write_bytes(count)
    earlier = bytearray((folder / "channel_v9.dat").read_bytes())
    earlier[COUNT_OF_RADIO:COUNT_OF_RADIO + 2] = (1001).to_bytes(2, "little")
    (folder / "earlier.dat").write_bytes(earlier)
    run("convert", "earlier.dat", "new.dat")
    run("check", "cut.dat")
    run("salvage", "cut.dat", "-o", "rescued.dat")
    run("salvage", "count.dat", "-o", "rescued.dat")
    run("salvage", "channel_v8.dat", "-o", "rescued.dat")
    (folder / "zeroed.dat").write_bytes(bytes(512) + whole[512:])
    run("salvage", "zeroed.dat", "-o", "rescued.dat", "--like", "before.dat")
    (folder / "twice.dat").write_bytes(whole + whole)
    run("salvage", "twice.dat", "-o", "rescued.dat")


def keys_of_page(text):
    keys = set()
    for cell in re.findall(r"^\| (`[^|]*) \|", text, re.MULTILINE):
        keys.update(re.findall(r"`([a-z_]+)`", cell))
    return keys


def commands_of(program):
    """Every command that takes --json, by its help."""
    found = set()
    for line in (["fav"], []):
        text = subprocess.run([program, "help", *line], capture_output=True, text=True, check=True).stdout
        for name in re.findall(r"^  ([a-z]+)  +[A-Z]", text, re.MULTILINE):
            words = [*line, name]
            text_of_command = subprocess.run([program, "help", *words], capture_output=True, text=True, check=True).stdout
            if "--json" in text_of_command:
                found.add(" ".join(words))
    return found


def main():
    options = arguments()
    page = options.root / "docs/json.md"
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        write_inputs(folder, options.root)
        commands = Commands(options.program, folder)
        run_all(commands)
    named = keys_of_page(page.read_text())
    faults = [f"{page.name} does not name `{key}`, which chlist prints" for key in sorted(commands.keys - named)]
    faults += [f"{page.name} names `{key}`, which no command prints" for key in sorted(named - commands.keys)]
    faults += [f"chlist {name} --json is not run" for name in sorted(commands_of(options.program) - commands.commands)]
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
