"""The table of prototypes and the structures against the C headers: names, types, offsets and widths."""

from __future__ import annotations

import ctypes
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import Any

from channel_list import load_library, records, sid_type
from channel_list.prototypes import PROTOTYPES
from support import SOURCE

HEADERS = SOURCE / "include/channel"

NUMBERS = {
    "int": ctypes.c_int,
    **{f"int{bits}_t": getattr(ctypes, f"c_int{bits}") for bits in (8, 16, 32)},
    **{f"uint{bits}_t": getattr(ctypes, f"c_uint{bits}") for bits in (8, 16, 32)},
}

STRUCTURES = {
    name: each
    for name, each in vars(records).items()
    if isinstance(each, type) and issubclass(each, ctypes.Structure) and each is not ctypes.Structure
}


def declarations() -> dict[str, tuple[str, str]]:
    """Result and arguments of every function that the public headers declare, as text."""
    found = {}
    for header in HEADERS.glob("*.h"):
        text = re.sub(r"/\*.*?\*/|^#[^\n]*$|\{[^{}]*\}", "", header.read_text(), flags=re.DOTALL | re.MULTILINE)
        for declaration in text.replace("CHANNEL_BEGIN_DECLS", "").split(";"):
            if match := re.fullmatch(r"(.*?[ *])(\w+)\((.*)\)", " ".join(declaration.split())):
                found[match[2]] = (match[1], match[3])
    return found


def type_of(declared: str) -> Any:
    """The ctypes type of a C type."""
    bare = declared.replace("const ", "").replace("*", " *").split()
    base = NUMBERS.get(bare[0]) or STRUCTURES.get(bare[0])
    if bare == ["void"]:
        return None
    if bare == ["char", "*"]:
        return ctypes.c_char_p
    for _ in bare[1:]:
        base = ctypes.POINTER(base)
    return base


def argument_types(declared: str) -> tuple[Any, ...]:
    if declared == "void":
        return ()
    return tuple(type_of(re.sub(r"\w+$", "", each.strip())) for each in declared.split(","))


class Prototypes(unittest.TestCase):
    def test_the_table_names_what_the_headers_declare(self) -> None:
        self.assertEqual(sorted(PROTOTYPES), sorted(declarations()))
        self.assertEqual(len(PROTOTYPES), 158)

    def test_results_and_arguments_are_those_of_the_headers(self) -> None:
        declared = declarations()
        for name, prototype in PROTOTYPES.items():
            with self.subTest(name):
                result, arguments = declared[name]
                self.assertEqual(prototype, (type_of(result), argument_types(arguments)))

    def test_the_loaded_functions_have_their_prototypes(self) -> None:
        for name, (result, arguments) in PROTOTYPES.items():
            with self.subTest(name):
                function = getattr(load_library(), name)
                self.assertEqual((function.restype, tuple(function.argtypes)), (result, arguments))

    def test_the_variable_is_zero(self) -> None:
        self.assertEqual(sid_type().value, 0)


def python_layout(structure: Any) -> list[str]:
    rows = [f"{structure.__name__} {ctypes.sizeof(structure)}"]
    for field, *_ in structure._fields_:
        place = getattr(structure, field)
        rows.append(f"{structure.__name__}.{field} {place.offset} {place.size}")
    return rows


def c_program() -> str:
    lines = []
    for name, structure in STRUCTURES.items():
        lines.append(f'printf("{name} %zu\\n", sizeof({name}));')
        for field, *_ in structure._fields_:
            place = f"offsetof({name}, {field}), sizeof((({name} *)0)->{field})"
            lines.append(f'printf("{name}.{field} %zu %zu\\n", {place});')
    headers = "#include <channel/channel.h>\n#include <stddef.h>\n#include <stdio.h>\n"
    return headers + "int main(void) {\n" + "\n".join(lines) + "\nreturn 0;\n}\n"


def c_layout() -> list[str]:
    with tempfile.TemporaryDirectory() as folder:
        source, program = Path(folder, "layout.c"), Path(folder, "layout")
        source.write_text(c_program())
        compiler = os.environ.get("CC", "cc")
        subprocess.run([compiler, f"-I{SOURCE}/include", f"-I{SOURCE}", source, "-o", program], check=True)
        return subprocess.run([program], check=True, capture_output=True, text=True).stdout.splitlines()


def declared_fields(structure: str) -> list[str]:
    """The names of a record's fields in records.h or list.h."""
    text = (HEADERS / "records.h").read_text() + (SOURCE / "base/list.h").read_text()
    body = re.search(rf"struct {structure} \{{(.*?)^\}}", text, re.DOTALL | re.MULTILINE)
    assert body is not None
    plain = re.sub(r"/\*.*?\*/", "", body[1], flags=re.DOTALL)
    return re.findall(r"(\w+)(?:\[\w+\])*\s*[,;]", plain)


class Layout(unittest.TestCase):
    maxDiff = None

    def test_structures_have_the_fields_of_the_records(self) -> None:
        self.assertEqual(len(STRUCTURES), 13)
        for name, structure in STRUCTURES.items():
            with self.subTest(name):
                self.assertEqual([field for field, *_ in structure._fields_], declared_fields(name))

    def test_offsets_and_widths_are_those_of_the_compiler(self) -> None:
        expected = c_layout()
        self.assertEqual([row for each in STRUCTURES.values() for row in python_layout(each)], expected)

    def test_limits_are_those_of_the_header(self) -> None:
        text = (HEADERS / "records.h").read_text()
        limits = {name: int(value) for name, value in re.findall(r"(MAX_\w+) = (\d+)", text)}
        self.assertEqual({name: value for name, value in vars(records).items() if name.startswith("MAX_")}, limits)

    def test_offsets_and_sizes_are_the_proved_ones_of_both_widths_of_pointers(self) -> None:
        both = [
            {name: with_pointers_as(number, each) for name, each in STRUCTURES.items()}
            for number in (ctypes.c_uint32, ctypes.c_uint64)
        ]
        proved = proved_places()
        self.assertEqual({record for record, *_ in proved}, set(STRUCTURES))
        for record, field, *places in proved:
            with self.subTest(record=record, field=field):
                structures = [each[record] for each in both]
                found = [getattr(each, field).offset if field else ctypes.sizeof(each) for each in structures]
                self.assertEqual(found, places)


def proved_places() -> list[tuple[str, str, int, int]]:
    """Record, field (or none, for the size), and the places with pointers of 32 and of 64 bits, as C proves them."""
    text = (SOURCE / "tests/interface/layout_test.c").read_text()
    rows = re.findall(r"^(?:SIZE|OFFSET|FIELD)\((\w+_st|list_head),(?: (\w+),)? (\d+), (\d+)", text, re.MULTILINE)
    return [(record, field, int(narrow), int(wide)) for record, field, narrow, wide in rows]


def with_pointers_as(number: Any, kind: Any) -> Any:
    """The same type with numbers where it has pointers."""
    if issubclass(kind, ctypes._Pointer):
        return number
    if issubclass(kind, ctypes.Array):
        return with_pointers_as(number, kind._type_) * kind._length_
    if issubclass(kind, ctypes.Structure):
        fields = [(name, with_pointers_as(number, field)) for name, field, *_ in kind._fields_]
        return type(kind.__name__, (ctypes.Structure,), {"_fields_": fields})
    return kind


if __name__ == "__main__":
    unittest.main()
