#!/usr/bin/env python3
"""Runs the console blocks of a page, one after another in one folder, and compares what they print with the page.

In a block ```console each line that begins with "$ " is a command, and the lines up to the next one are what it prints on
both streams. Commands run in bash, in a scratch folder, with the built programs on the path. --update writes what they print into the page.
"""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```console\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("page", type=pathlib.Path)
    parser.add_argument("--programs", type=pathlib.Path, required=True, help="the folder of the built programs")
    parser.add_argument("--copy", action="append", default=[], metavar="FILE=NAME",
                        help="a file that the commands find, and its name there; may be given again")
    parser.add_argument("--update", action="store_true", help="write the page anew")
    return parser.parse_args()


def commands_of(block):
    """The commands of a block, each with the lines that a backslash continues it by."""
    commands = []
    for line in block.splitlines():
        if commands and commands[-1].endswith("\\"):
            commands[-1] += "\n" + line
        elif line.startswith("$ "):
            commands.append(line[2:])
    return commands


def run(command, folder, environment):
    """What a command prints. Pages end their lines in LF, whatever a format does."""
    done = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return done.stdout.decode().replace("\r\n", "\n")


def main():
    options = arguments()
    text = options.page.read_text()
    environment = {**os.environ, "PATH": f"{options.programs}:{os.environ['PATH']}", "LC_ALL": "C.UTF-8", "COLUMNS": "120"}
    with tempfile.TemporaryDirectory() as scratch:
        for pair in options.copy:
            file, name = pair.split("=")
            shutil.copy(file, pathlib.Path(scratch) / name)

        def as_run(block):
            printed = "".join(f"$ {command}\n{run(command, scratch, environment)}" for command in commands_of(block[1]))
            return f"```console\n{printed}```"

        real = BLOCK.sub(as_run, text)
    if options.update:
        options.page.write_text(real)
    elif real != text:
        subprocess.run(["diff", "-u", str(options.page), "-"], input=real.encode())
        sys.exit(f"{options.page.name} does not show what its commands print; --update mends it")


if __name__ == "__main__":
    main()
