#!/usr/bin/env python3
"""Proves that the documentation site is whole: each family's page shows all of the family's functions and leads to the
rules of every call, the sidebar leads to every guide and page, links lead to pages, and nothing is fetched from the
network.
"""

import argparse
import pathlib
import re
import sys
import xml.etree.ElementTree

from interface_docs import exported_functions

FETCHED = re.compile(r"""<(?:link|script|img|iframe)[^>]*(?:src|href)=["'](?:https?:)?//|url\(["']?(?:https?:)?//""")


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("site", type=pathlib.Path, help="the folder that the target `site` writes")
    return parser.parse_args()


def anchors_by_family(site):
    """The functions of each family as the site's index of links knows them, with their anchors."""
    families = {}
    for compound in xml.etree.ElementTree.parse(site / "channel.tag").iterfind("compound[@kind='group']"):
        families[compound.findtext("name")] = {member.findtext("name"): member.findtext("anchor")
                                               for member in compound.iterfind("member[@kind='function']")}
    return families


def complaints_about_families(root, site):
    families = anchors_by_family(site)
    for header, names in exported_functions(root).items():
        family = header.removesuffix(".h")
        page = site / "html" / f"group__{family.replace('_', '__')}.html"
        text = page.read_text() if page.exists() else ""
        if 'href="rules.html"' not in text:
            yield f"{page.name} does not lead to the rules of every call"
        for name in names:
            anchor = families.get(family, {}).get(name)
            if anchor is None or f'id="{anchor}"' not in text:
                yield f"{page.name} does not show {name}"


def complaints_about_sidebar(root, site):
    sidebar = (site / "html/navtreedata.js").read_text()
    if "@ref" in sidebar:
        yield "the sidebar holds a link that leads nowhere"
    docs = root / "docs"
    for page in sorted([*docs.glob("*.md"), *docs.glob("guides/*.md")]):
        label = "md_" + re.sub(r"[/-]", "_", str(page.relative_to(root).with_suffix("")))
        if page == docs / "README.md":
            label = "index"
        if f'"{label}.html"' not in sidebar:
            yield f"the sidebar does not lead to {page.relative_to(root)}"
        if not (site / "html" / f"{label}.html").exists():
            yield f"{page.relative_to(root)} has no page"


def complaints_about_network(site):
    for page in sorted((site / "html").rglob("*.*")):
        if page.suffix in (".html", ".css", ".js") and FETCHED.search(page.read_text(errors="replace")):
            yield f"{page.name} fetches something from the network"


def complaints_about_links(site):
    folder = site / "html"
    for page in sorted(folder.glob("*.html")):
        for target in set(re.findall(r'<a [^>]*href="([^"#:]+)(?:#[^"]*)?"', page.read_text())):
            if not (folder / target).exists():
                yield f"{page.name} leads to {target}, which is not there"


def main():
    options = arguments()
    complaints = [*complaints_about_families(options.root, options.site),
                  *complaints_about_sidebar(options.root, options.site), *complaints_about_links(options.site),
                  *complaints_about_network(options.site)]
    if complaints:
        sys.exit("\n".join(complaints))


if __name__ == "__main__":
    main()
