#!/usr/bin/env python3
"""Draws a session of the example host as a picture of a terminal, for the README.

Without --update it compares what the host prints today with the picture that is checked in.
"""

import argparse
import pathlib
import re
import subprocess
import sys
import tempfile
from xml.sax.saxutils import escape

# The commands shown, in the order in which the host plays them; of long answers the first lines.
SHOWN = ["list 10", "+", "info", "provider", "fav new Evening", "fav add Evening", "sort name", "save"]
LONGEST_ANSWER = 6

PROMPT = re.compile(r"^((?:TV|RADIO|ALL|USER|FAV \d+) \d+>) (.*)$")
CHARACTER, LINE, MARGIN, BAR = 8.0, 19, 18, 34


def play(programs: pathlib.Path, line_up: pathlib.Path) -> list[str]:
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([programs / "chlist", "import", line_up, "-o", "channels.dat", "--groups", "none"], cwd=folder, check=True,
                       stdout=subprocess.DEVNULL)
        played = subprocess.run([programs / "zapper", "./", "channels.dat"], cwd=folder, check=True, text=True,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
    return played.stdout.splitlines()


def excerpt(lines: list[str]) -> list[str]:
    """The prompts of SHOWN, each where it first comes behind the one before, with their answers."""
    wanted = list(SHOWN)
    taken: list[str] = []
    room = 0
    for line in lines:
        prompt = PROMPT.match(line)
        if prompt:
            room = LONGEST_ANSWER + 1 if wanted and prompt[2] == wanted[0] else 0
            if room:
                wanted.pop(0)
        if room:
            taken.append(line)
            room -= 1
    if wanted:
        sys.exit(f"the session no longer holds: {wanted[0]}")
    return taken


def draw_line(line: str, y: int) -> str:
    prompt = PROMPT.match(line)
    if prompt:
        text = f'<tspan class="prompt">{escape(prompt[1])}</tspan> <tspan class="typed">{escape(prompt[2])}</tspan>'
    else:
        text = escape(line)
    return f'<text x="{MARGIN}" y="{y}" xml:space="preserve">{text}</text>'


def draw(lines: list[str]) -> str:
    width = int(max(len(line) for line in lines) * CHARACTER) + 2 * MARGIN
    height = BAR + len(lines) * LINE + MARGIN
    rows = [draw_line(line, BAR + (row + 1) * LINE - 4) for row, line in enumerate(lines)]
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}" '
        'role="img" aria-label="A session of zapper, the example host">',
        "<style>text{font:13.3px ui-monospace,SFMono-Regular,Menlo,'DejaVu Sans Mono',monospace;fill:#c9d1d9}"
        ".prompt{fill:#7ee787}.typed{fill:#fff;font-weight:bold}</style>",
        f'<rect width="{width}" height="{height}" rx="9" fill="#0d1117"/>',
        f'<path d="M0 {BAR - 6}H{width}" stroke="#30363d"/>',
        '<circle cx="20" cy="14" r="5.5" fill="#ff5f57"/><circle cx="38" cy="14" r="5.5" fill="#febc2e"/>'
        '<circle cx="56" cy="14" r="5.5" fill="#28c840"/>',
        *rows,
        "</svg>",
        "",
    ])


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("picture", type=pathlib.Path)
    parser.add_argument("--programs", type=pathlib.Path, required=True, help="folder of chlist and zapper")
    parser.add_argument("--line-up", type=pathlib.Path, required=True, help="a VDR channels.conf")
    parser.add_argument("--update", action="store_true", help="draw the picture anew")
    options = parser.parse_args()
    drawn = draw(excerpt(play(options.programs.resolve(), options.line_up.resolve())))
    if options.update:
        options.picture.write_text(drawn, encoding="utf-8")
    elif options.picture.read_text(encoding="utf-8") != drawn:
        sys.exit(f"{options.picture.name} does not show what zapper prints; draw it anew with --update")


if __name__ == "__main__":
    main()
