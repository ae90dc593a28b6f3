"""Where mutants are built and tried: a copy of the tree, built once. A mutant's file goes into a folder that the
compiler searches before the tree; only what includes it is compiled again, and the programs are linked anew beside
those of the copy. The copy itself is never changed, so that several mutants can be tried at a time."""

import os
import pathlib
import re
import resource
import shlex
import shutil
import signal
import subprocess

PROGRAMS = ("unit_tests_shared", "internal_tests", "model_tests")
SHARED_LIBRARY = "lib/libchannel.so.1.0.0"
# Mutants that differ at -O1 may be one program to the optimiser; those are no faults.
CONFIGURATION = ["-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG",
                 "-DCMAKE_C_FLAGS_RELEASE=-O1 -DNDEBUG", "-DCHANNEL_WERROR=OFF", "-DCHANNEL_BUILD_TOOLS=OFF",
                 "-DCHANNEL_BUILD_EXAMPLES=OFF", "-DCHANNEL_BUILD_BENCH=OFF", "-DCHANNEL_UNITY=OFF",
                 "-DCMAKE_CXX_FLAGS=-w"]
# Suites that depend on what else the machine does: their failure counts when it happens twice.
FICKLE = re.compile(r"CheckLoad|FullDisk|NoMemory|Saving")
# Limits are seconds of the processor, so that other work on the machine kills no mutant. One that waits for ever is
# stopped after so many times its limit.
PATIENCE = 60
FAILED_TEST = re.compile(rb"\[  FAILED  \] ([\w/]+\.[\w/]+)")


def output_of(command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


def processor_seconds():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


class Workshop:
    def __init__(self, root, folder):
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.scratch = folder / "mutants"
        shutil.rmtree(self.scratch, ignore_errors=True)
        self._copy(root)
        self._build()
        self._read_commands()
        self.limits = {}

    def _copy(self, root):
        """Copies what git knows or would know, leaving unchanged files alone so that they are not built again."""
        names = output_of(["git", "-C", root, "ls-files", "-co", "--exclude-standard"]).splitlines()
        wanted = {name for name in names if (root / name).is_file()}
        for name in wanted:
            source, copy = root / name, self.tree / name
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)
        for copy in self.tree.rglob("*"):
            if copy.is_file() and str(copy.relative_to(self.tree)) not in wanted:
                copy.unlink()

    def _build(self):
        output_of(["cmake", "-S", self.tree, "-B", self.build, *CONFIGURATION])
        subprocess.run(["ninja", "-C", self.build, "--quiet", *PROGRAMS], check=True)

    def _read_commands(self):
        ninja = ["ninja", "-C", self.build, "-t"]
        self.compile_command = {}
        self.link_command = {}
        for line in output_of([*ninja, "commands", *PROGRAMS]).splitlines():
            words = shlex.split(line.removeprefix(": && ").removesuffix(" && :"))
            if "-c" in words and "-o" in words:
                self.compile_command[words[words.index("-o") + 1]] = words
            elif "-o" in words:
                self.link_command[words[words.index("-o") + 1]] = words
        self.dependants = {}
        made = None
        for line in output_of([*ninja, "deps"]).splitlines():
            if line and not line.startswith(" "):
                made = line.split(":")[0]
            elif line and made in self.compile_command:
                self.dependants.setdefault(os.path.realpath(self.build / line.strip()), []).append(made)

    def measure(self, environment):
        """Runs every program on the copy as it is: all must pass, and a mutant gets five times as long."""
        for program in PROGRAMS:
            before = processor_seconds()
            failed = self._run([self.build / "bin" / program], 600, environment)
            if failed is not None:
                raise SystemExit(f"{program} fails without any fault: {failed}")
            self.limits[program] = int(5 * (processor_seconds() - before)) + 5

    def _run(self, command, limit, environment):
        """None when the program passes; what failed otherwise."""
        try:
            done = subprocess.run([*command, "--gtest_fail_fast", "--gtest_brief=1"], timeout=PATIENCE * limit,
                                  env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                  stdin=subprocess.DEVNULL, cwd=self.build,
                                  preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_CPU, (limit, limit + 1)))
        except subprocess.TimeoutExpired:
            return "took too long"
        if done.returncode in (-signal.SIGXCPU, -signal.SIGKILL):
            return "took too long"
        if done.returncode == 0:
            return None
        failed = FAILED_TEST.search(done.stdout)
        return failed.group(1).decode() if failed else f"died ({done.returncode})"


class Bench:
    """The place of one mutant: its overlay, its objects and its programs."""

    def __init__(self, workshop, mutant, number):
        self.shop = workshop
        self.mutant = mutant
        self.place = workshop.scratch / str(number)
        self.original = workshop.tree / mutant.file
        shutil.rmtree(self.place, ignore_errors=True)
        self.objects = workshop.dependants.get(os.path.realpath(self.original), [])
        self._write("overlay", self.mutated())

    def mutated(self):
        source = self.original.read_text()
        return source[:self.mutant.begin] + self.mutant.text + source[self.mutant.end:]

    def _write(self, overlay, text):
        path = self.place / overlay / self.mutant.file
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def clear(self):
        shutil.rmtree(self.place, ignore_errors=True)

    def _compile(self, made, overlay, target, *more):
        words = list(self.shop.compile_command[made])
        if words[-1] == str(self.original):
            words[-1] = str(self.place / overlay / self.mutant.file)
        words[words.index("-o") + 1] = str(target)
        for option in ("-MF", "-MT"):
            at = words.index(option)
            del words[at:at + 2]
        words.remove("-MD")
        words[1:1] = ["-I", str(self.place / overlay)]
        target.parent.mkdir(parents=True, exist_ok=True)
        return subprocess.run([*words, *more], cwd=self.shop.build, capture_output=True).returncode == 0

    def compile(self, of_library):
        """Compiles the library's objects, or the tests', that the fault is in; False when it is no program."""
        chosen = [made for made in self.objects if is_of_library(made) == of_library]
        return all(self._compile(made, "overlay", self.place / made) for made in chosen)

    def is_same_code(self):
        """Whether the optimiser makes the same of the fault as of the original, all over the library."""
        self._write("untouched", self.original.read_text())
        return not any(self._differs(made) for made in self.objects if is_of_library(made))

    def _differs(self, made):
        pair = [self.place / f"{overlay}.o" for overlay in ("overlay", "untouched")]
        compiled = [self._compile(made, target.stem, target, "-O2") for target in pair]
        return not all(compiled) or pair[0].read_bytes() != pair[1].read_bytes()

    def _link(self, name, target):
        mutated = [made for made in self.objects if (self.place / made).exists()]
        words = [str(self.place / word) if word in mutated else word for word in self.shop.link_command[name]]
        words[words.index("-o") + 1] = str(target)
        if not name.startswith("lib/"):
            # In front of the archive, which then supplies no second definition.
            own = [str(self.place / made) for made in mutated if is_of_library(made)]
            words[words.index("-o"):words.index("-o")] = own
        target.parent.mkdir(parents=True, exist_ok=True)
        return subprocess.run(words, cwd=self.shop.build, capture_output=True).returncode == 0

    def _try(self, program, command, environment):
        failed = self.shop._run(command, self.shop.limits[program], environment)
        if failed is not None and FICKLE.search(failed):
            failed = self.shop._run(command, self.shop.limits[program], environment)
        return failed and f"{program}: {failed}"

    def link_library(self):
        return self._link(SHARED_LIBRARY, self.place / "lib" / "libchannel.so.1")

    def first_failure(self, environment):
        """What kills the mutant; None when every program passes."""
        beside = {**environment, "LD_LIBRARY_PATH": str(self.place / "lib")}
        failed = self._try("unit_tests_shared", [self.shop.build / "bin/unit_tests_shared"], beside)
        if failed is None:
            program = self.place / "internal_tests"
            if not self.compile(of_library=False) or not self._link("bin/internal_tests", program):
                return "internal_tests: cannot be built"
            failed = self._try("internal_tests", [program], environment)
        return failed or self._try("model_tests", [self.shop.build / "bin/model_tests"], beside)


def is_of_library(made):
    return pathlib.PurePath(made).parts[0] in ("channel", "base")
