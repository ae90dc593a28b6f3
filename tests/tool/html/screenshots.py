"""Pictures of the page of `chlist report`: wide in light and dark, and on a phone.

usage: screenshots.py CHLIST FOLDER [LIST.dat]
"""

import pathlib
import subprocess
import sys
import tempfile

import browser
import sample_lists

chlist, folder, *given = sys.argv[1:]
shots = (("desktop", 1280, 1000, "light"), ("dark", 1280, 1000, "dark"), ("phone", 360, 780, "light"),
         ("phone-dark", 360, 780, "dark"))

with tempfile.TemporaryDirectory(prefix="chlist-page-") as scratch:
    source, page = pathlib.Path(given[0] if given else f"{scratch}/channels.dat"), pathlib.Path(scratch, "page.html")
    if not given:
        source.write_bytes(sample_lists.rich_list())
    subprocess.run([chlist, "report", source, "-o", page], check=False)
    shown = browser.Browser(f"{scratch}/profile")
    for name, width, height, scheme in shots:
        shown.resize(width, height, is_mobile=width < 500)
        shown.prefer(scheme)
        shown.open(page)
        shown.screenshot(f"{folder}/{name}.png")
        shown.run("document.getElementById('channels').scrollIntoView()")
        shown.screenshot(f"{folder}/{name}-table.png")
        if name == "desktop":
            shown.run("scrollTo(0, 0)")
            shown.point(".mark:nth-of-type(5)")
            shown.screenshot(f"{folder}/{name}-tip.png")
            shown.run("table.open(3)")
            shown.screenshot(f"{folder}/{name}-details.png")
    shown.close()
