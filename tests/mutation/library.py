"""The library as a subject of faults: the sources and headers of base/ and channel/, tried through the shared library by
unit_tests_shared, then by internal_tests and model_tests."""

import pathlib
import re

import workshop

# Proofs for the compiler, and a table that a host's base library replaces.
NO_CODE = ("channel/store/records.cpp", "base/verbosity.c", "base/verbosity.h")


class LibraryBench(workshop.Bench):
    def is_program(self):
        return self.compile(self.own_objects) and self._link_shared()

    def _link_shared(self):
        commands = self.shop.link_command
        name = next(made for made in commands if made.startswith("lib/libchannel.so"))
        soname = next(word for word in commands[name] if word.startswith("-Wl,-soname,")).split(",")[2]
        return self.link(name, self.place / "lib" / soname)

    def surroundings(self):
        return {"LD_LIBRARY_PATH": str(self.place / "lib")}

    def program(self, name):
        if name != "internal_tests":
            return self.shop.build / "bin" / name
        built = self.compile(self.test_objects) and self.link(f"bin/{name}", self.place / name)
        return self.place / name if built else None


class Library(workshop.Subject):
    late = ("base", "identity", "log")  # their headers go into most of the library
    configuration = ["-DCHANNEL_BUILD_TOOLS=OFF", "-DCHANNEL_UNITY=OFF"]
    programs = ("unit_tests_shared", "internal_tests", "model_tests")
    fickle = re.compile(r"CheckLoad|Cost|FullDisk|NoMemory|Saving")
    bench = LibraryBench

    def files(self, tree):
        names = sorted(str(path.relative_to(tree)) for folder in ("base", "channel") for path in (tree / folder).rglob("*")
                       if path.suffix in (".c", ".cpp", ".h"))
        return [name for name in names if name not in NO_CODE]

    def group(self, file):
        path = pathlib.PurePath(file)
        if path.parts[0] == "base" or len(path.parts) > 2:
            return path.parts[0] if path.parts[0] == "base" else path.parts[1]
        return "log" if path.stem in ("log", "text") else path.stem

    def suites(self, tree, file):
        return [workshop.Suites(program, program) for program in self.programs]

    def owns(self, made):
        return pathlib.PurePath(made).parts[0] in ("channel", "base")
