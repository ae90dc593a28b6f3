"""Pictures of the page of `chlist report`, to be looked at: wide and on a phone, in light and dark, its plan and its
table; report.png and editor.png, those in docs/images; and the editor on a phone.

usage: screenshots.py CHLIST FOLDER [LIST]
"""

import pathlib
import subprocess
import sys
import tempfile

import browser
import sample_lists

SHOTS = (("desktop", 1280, 1000, "light"), ("dark", 1280, 1000, "dark"), ("phone", 360, 780, "light"),
         ("phone-dark", 360, 780, "dark"))


def write_page(chlist, contents, scratch):
    """Of a list that is called channels.dat."""
    source, page = pathlib.Path(scratch, "channels.dat"), pathlib.Path(scratch, "page.html")
    source.write_bytes(contents)
    subprocess.run([chlist, "report", source, "-o", page], check=False)
    return page


def take(shown, page, folder):
    for name, width, height, scheme in SHOTS:
        shown.resize(width, height, is_mobile=width < 500)
        shown.prefer(scheme)
        shown.open(page)
        shown.screenshot(f"{folder}/{name}.png")
        shown.run("document.getElementById('channels').scrollIntoView()")
        shown.screenshot(f"{folder}/{name}-table.png")
        shown.run("table.open(3)")
        shown.screenshot(f"{folder}/{name}-details.png")


def take_for_docs(shown, page, folder):
    shown.prefer("light")
    shown.resize(1280, 1000)
    shown.open(page)
    shown.screenshot(f"{folder}/report.png")


def take_editor(shown, chlist, scratch, folder):
    """Of the page that write_page() was called for last."""
    command = [chlist, "edit", f"{scratch}/channels.dat", "--no-browser"]
    with subprocess.Popen(command, stdout=subprocess.PIPE, text=True) as program:
        shown.resize(1280, 760)
        shown.visit(program.stdout.readline().strip())
        shown.run_until_done("setTimeout(arguments[0], 500)")
        shown.run("arranged.choose(5); edits.left.selected.add(edits.left.rows[2].key); edits.left.goTo(2);"
                  "const search = document.getElementById('search'); search.value = 'sport';"
                  "search.dispatchEvent(new Event('input'))")
        shown.screenshot(f"{folder}/editor.png")
        shown.resize(360, 780, is_mobile=True)
        shown.prefer("dark")
        shown.screenshot(f"{folder}/editor-phone.png")
        program.terminate()


def main(chlist, folder, given=None):
    with tempfile.TemporaryDirectory(prefix="chlist-page-") as scratch:
        shown = browser.Browser(f"{scratch}/profile")
        contents = pathlib.Path(given).read_bytes() if given else sample_lists.rich_list()
        take(shown, write_page(chlist, contents, scratch), folder)
        contents = sample_lists.rich_list(sources=[sample_lists.SOURCES[0], sample_lists.SOURCES[2]])
        take_for_docs(shown, write_page(chlist, contents, scratch), folder)
        take_editor(shown, chlist, scratch, folder)
        shown.close()


main(*sys.argv[1:])
