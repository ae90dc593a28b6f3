#!/usr/bin/env python3
"""Proves that every function of the interface is documented whole.

Each function that channel/exports.txt names has, in its family's header and inside the family's group: a brief
sentence, every parameter by its name and no other, a result where there is one, and the log lines, which name at least
the levels that the function's own source writes at. The examples in the headers compile.
"""

import argparse
import pathlib
import re
import subprocess
import sys

DOCUMENTED = re.compile(r"/\*\*((?:(?!\*/).)*)\*/\s*([A-Za-z_][^;{}/#@]*?)\(([^;{}]*)\);", re.DOTALL)
LEVELS = {"LOG_ERROR": 0, "LOG_WARNING": 1}


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("--compiler", help="a C compiler, for the examples")
    parser.add_argument("--observed", type=pathlib.Path, help="what observed_levels saw, instead of the sources")
    return parser.parse_args()


def exported_functions(root):
    """The functions of each header, as channel/exports.txt lists them."""
    functions, header = {}, None
    for line in (root / "channel/exports.txt").read_text().splitlines():
        if named := re.fullmatch(r"# (\w+\.h)", line):
            header = named[1]
        elif line and not line.startswith("#") and line != "SID_TYPE":
            functions.setdefault(header, []).append(line.strip())
    return functions


def text_of(comment):
    return "\n".join(re.sub(r"^\s*\* ?", "", line) for line in comment.splitlines())


def names_declared(parameters):
    if parameters.strip() == "void":
        return []
    return [re.search(r"(\w+)\s*$", parameter)[1] for parameter in parameters.split(",")]


def section(text, command):
    """What stands behind each command, up to the next one or an empty line."""
    found = re.findall(rf"^@{command}\b[ \t]*(.*?)(?=^@|^\s*$|\Z)", text, re.MULTILINE | re.DOTALL)
    return [" ".join(each.split()) for each in found]


def complaints_about(name, result, parameters, text, levels):
    brief = " ".join(re.split(r"^@|^\s*$", text.strip(), maxsplit=1, flags=re.MULTILINE)[0].split())
    if len(brief.split()) < 3 or not brief.endswith("."):
        yield "no brief sentence"
    documented = []
    for entry in section(text, "param"):
        names, _, said = entry.partition(" ")
        documented += names.split(",")
        if not said:
            yield f"nothing is said of {names}"
    declared = names_declared(parameters)
    yield from (f"parameter {each} is not documented" for each in declared if each not in documented)
    yield from (f"parameter {each} does not exist" for each in documented if each not in declared)
    returns_something = result.replace("extern", "").strip() != "void"
    if returns_something != bool([said for said in section(text, "return") if said]):
        yield "no result is documented" if returns_something else "a result is documented, and there is none"
    logs = section(text, "logs")
    if len(logs) != 1 or not logs[0]:
        yield "no log lines are documented"
    else:
        missing = levels - levels_told(logs[0])
        yield from (f"level {level} of its log lines is not documented" for level in sorted(missing))


def levels_told(logs):
    told = re.findall(r"(?:^|[.;] |: )((?:\d, )*\d):", logs)
    return {int(level) for levels in told for level in levels.split(", ")}


def levels_written(root):
    """The levels at which the body of each exported function itself writes."""
    levels = {}
    for source in sorted((root / "channel").rglob("*.cpp")):
        for name, body in re.findall(r"^[a-z]\w[\w *]*?(\w+)\([^;{}]*\) \{\n(.*?)^\}", source.read_text(),
                                     re.MULTILINE | re.DOTALL):
            written = {level for macro, level in LEVELS.items() if f"{macro}(" in body}
            written |= {int(level) for level in re.findall(r"LOG_(?:TRACE|PLAIN)\((\d)", body)}
            levels.setdefault(name, set()).update(written)
    return levels


def complaints_about_observed(root, observed):
    """The levels that functions were seen to write at, and which neither they nor those they refer to name."""
    logs = {}
    for header in sorted((root / "include/channel").glob("*.h")):
        for match in DOCUMENTED.finditer(header.read_text()):
            logs[re.search(r"(\w+)$", match[2])[1]] = " ".join(section(text_of(match[1]), "logs"))

    def levels_of(name, seen=()):
        told = levels_told(logs[name])
        for other in re.findall(r"(\w+)\(\)", logs[name]):
            if other in logs and other not in (name, *seen):
                told |= levels_of(other, (name, *seen))
        return told

    for line in observed.read_text().splitlines():
        name, *levels = line.split()
        for level in sorted({int(level) for level in levels} - levels_of(name)):
            yield f"{name}: was seen to write at level {level}, which its log lines do not name"


def complaints_about_header(header, names, levels):
    text = header.read_text()
    family = header.stem
    opening, closing = text.find(" * @{\n"), text.rfind("/** @} */")
    if f"@defgroup {family} " not in text or opening < 0 or closing < 0:
        yield f"{header.name}: no group of the family's name"
    if "@ref rules" not in text[:opening]:
        yield f"{header.name}: the family's page does not lead to the rules of every call"
    found = {}
    for match in DOCUMENTED.finditer(text):
        name = re.search(r"(\w+)$", match[2])[1]
        found[name] = match
        if not opening < match.start() < closing:
            yield f"{header.name}: {name} stands outside the family's group"
    for name in names:
        if name not in found:
            yield f"{header.name}: {name} has no comment"
            continue
        comment, declared, parameters = found[name].groups()
        for complaint in complaints_about(name, declared[: -len(name)].replace("*", "* ").strip(), parameters,
                                          text_of(comment), levels.get(name, set())):
            yield f"{header.name}: {name}: {complaint}"


def examples_of(root):
    for header in sorted((root / "include/channel").glob("*.h")):
        for number, code in enumerate(re.findall(r"@code\{\.c\}\n(.*?)@endcode", header.read_text(), re.DOTALL)):
            yield f"static void {header.stem}_{number}(void) {{\n{text_of(code)}\n}}\n"


def complaints_about_examples(root, compiler):
    program = "".join(f"#include <{name}>\n" for name in ("channel/channel.h", "stdio.h", "stdlib.h", "string.h"))
    program += "\n".join(examples_of(root))
    options = ["-std=c11", "-Wall", "-Wextra", "-Wconversion", "-Werror", "-Wno-unused-function", "-fsyntax-only"]
    done = subprocess.run([compiler, *options, f"-I{root}/include", f"-I{root}", "-x", "c", "-"], input=program,
                          text=True, capture_output=True)
    if done.returncode != 0:
        yield f"an example in a header does not compile:\n{done.stderr}"


def main():
    options = arguments()
    functions = exported_functions(options.root)
    levels = levels_written(options.root)
    complaints = []
    if options.observed:
        complaints += complaints_about_observed(options.root, options.observed)
    else:
        for header, names in functions.items():
            complaints += complaints_about_header(options.root / "include/channel" / header, names, levels)
    if options.compiler:
        complaints += complaints_about_examples(options.root, options.compiler)
    if complaints:
        sys.exit("\n".join(complaints))
    print(f"{sum(map(len, functions.values()))} functions in {len(functions)} families are documented")


if __name__ == "__main__":
    main()
