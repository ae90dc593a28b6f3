"""Where mutants are built and tried: a copy of the tree, built once. A mutant's file goes into a folder that the
compiler searches before the tree; only what includes it is compiled again, and the programs are linked anew beside
those of the copy. The copy itself is never changed, so that several mutants can be tried at a time.

What differs between the library and the tool is a Subject (library.py, tool.py): which sources get faults, how the copy is
configured, which tests are run in which order, and how a program with the fault in it comes about."""

import contextlib
import dataclasses
import os
import pathlib
import re
import resource
import shlex
import shutil
import signal
import subprocess
import tempfile
import threading

# Mutants that differ at -O1 may be one program to the optimiser; those are no faults.
CONFIGURATION = ["-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG",
                 "-DCMAKE_C_FLAGS_RELEASE=-O1 -DNDEBUG", "-DCHANNEL_WERROR=OFF", "-DCHANNEL_BUILD_EXAMPLES=OFF",
                 "-DCHANNEL_BUILD_BENCH=OFF", "-DCHANNEL_BUILD_REPLAYS=OFF", "-DCMAKE_CXX_FLAGS=-w"]
# Every mutant is linked anew: lld takes a fifth of the time.
if shutil.which("ld.lld"):
    CONFIGURATION += [f"-DCMAKE_{kind}_LINKER_FLAGS=-fuse-ld=lld" for kind in ("EXE", "SHARED")]
# Limits are seconds of the processor, so that other work on the machine kills no mutant. One that waits for ever is
# stopped after so many times its limit, one that takes memory for ever when it has this much.
PATIENCE = 10
MEMORY = 4 << 30
FAILED_TEST = re.compile(rb"\[  FAILED  \] ([\w/]+\.[\w/]+)")


@dataclasses.dataclass(frozen=True)
class Suites:
    """Tests that are run together: a program of the copy, and what chooses among its tests."""
    name: str
    program: str
    arguments: tuple = ()


class Subject:
    """What faults are put into."""
    lowest_rate = 95  # of a hundred mutants that are programs of their own, so many have to be killed
    late = ()  # groups that are tried last
    configuration = []
    programs = ()
    fickle = None  # tests that depend on what else the machine does: their failure counts when it happens twice
    bench = None

    def files(self, tree):
        """The names of the sources that get faults."""
        raise NotImplementedError

    def is_fault(self, mutant, source):
        """Whether the tests shall notice the mutant."""
        return True

    def group(self, file):
        """What a source is counted with."""
        raise NotImplementedError

    def suites(self, tree, file):
        """The tests that a fault in the source has to pass to survive, in their order."""
        raise NotImplementedError

    def owns(self, made):
        """Whether an object is the subject's own code, not the tests'."""
        raise NotImplementedError

    def built(self, build):
        """Called when the copy was built."""


def output_of(command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


def processor_seconds():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def without_launcher(words):
    """A compiler's command without the cache in front of it, which would keep every mutant."""
    caches = [at for at, word in enumerate(words) if pathlib.PurePath(word).name == "ccache"]
    return words[caches[0] + 1:] if caches else words


def limits_of_process(seconds):
    resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))


class Workshop:
    def __init__(self, subject, root, folder):
        self.subject = subject
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.scratch = folder / "mutants"
        shutil.rmtree(self.scratch, ignore_errors=True)
        self._copy(root)
        self._build()
        self._read_commands()
        self.limits = {}
        self.measuring = threading.Lock()

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
        output_of(["cmake", "-S", self.tree, "-B", self.build, *CONFIGURATION, *self.subject.configuration])
        subprocess.run(["ninja", "-C", self.build, "--quiet", *self.subject.programs], check=True)
        self.subject.built(self.build)

    def _read_commands(self):
        ninja = ["ninja", "-C", self.build, "-t"]
        self.compile_command = {}
        self.link_command = {}
        for line in output_of([*ninja, "commands", *self.subject.programs]).splitlines():
            words = shlex.split(line.removeprefix(": && ").removesuffix(" && :"))
            if "-c" in words and "-o" in words:
                self.compile_command[words[words.index("-o") + 1]] = without_launcher(words)
            elif "-o" in words:
                self.link_command[words[words.index("-o") + 1]] = words
        self.dependants = {}
        made = None
        for line in output_of([*ninja, "deps"]).splitlines():
            if line and not line.startswith(" "):
                made = line.split(":")[0]
            elif line and made in self.compile_command:
                self.dependants.setdefault(os.path.realpath(self.build / line.strip()), []).append(made)

    def limit(self, suites, environment):
        """Five times what the suites take on the copy as it is, where all of them must pass; measured when first asked."""
        with self.measuring:
            if suites not in self.limits:
                before = processor_seconds()
                failed = self.failure(suites, self.build / "bin" / suites.program, 600, environment)
                if failed is not None:
                    raise RuntimeError(f"{suites.name} fails without any fault: {failed}")
                self.limits[suites] = int(5 * (processor_seconds() - before)) + 5
            return self.limits[suites]

    def failure(self, suites, program, limit, environment):
        """None when the suites pass; what failed otherwise."""
        failed = self._failure_once(suites, program, limit, environment)
        if failed is not None and self.subject.fickle.search(failed):
            failed = self._failure_once(suites, program, limit, environment)
        return failed

    def _failure_once(self, suites, program, limit, environment):
        with tempfile.TemporaryFile() as told:
            process = subprocess.Popen([program, *suites.arguments, "--gtest_fail_fast", "--gtest_brief=1"], cwd=self.build,
                                       env=environment, stdin=subprocess.DEVNULL, stdout=told, stderr=subprocess.DEVNULL,
                                       start_new_session=True, preexec_fn=lambda: limits_of_process(limit))
            try:
                code = process.wait(PATIENCE * limit)
            except subprocess.TimeoutExpired:
                code = -signal.SIGXCPU
            finally:
                with contextlib.suppress(ProcessLookupError):
                    os.killpg(process.pid, signal.SIGKILL)
                process.wait()
            told.seek(0)
            failed = FAILED_TEST.search(told.read())
        if code in (-signal.SIGXCPU, -signal.SIGKILL):
            return "took too long"
        if code == 0:
            return None
        return failed.group(1).decode() if failed else f"died ({code})"


class Bench:
    """The place of one mutant: its overlay, its objects and its programs."""
    checks = ()  # options that let a mutant die of what the original never does

    def __init__(self, workshop, mutant, number):
        self.shop = workshop
        self.mutant = mutant
        self.place = workshop.scratch / str(number)
        self.original = workshop.tree / mutant.file
        shutil.rmtree(self.place, ignore_errors=True)
        objects = workshop.dependants.get(os.path.realpath(self.original), [])
        self.own_objects = [made for made in objects if workshop.subject.owns(made)]
        self.test_objects = [made for made in objects if not workshop.subject.owns(made)]
        self._write("overlay", self.mutated())

    def is_program(self):
        """Compiles and links what every suite needs; False when the fault leaves no program."""
        raise NotImplementedError

    def program(self, name):
        """The program of that name with the fault in it; None when it cannot be built."""
        raise NotImplementedError

    def surroundings(self):
        """What the programs find in their environment."""
        return {}

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

    def compile(self, objects):
        return all(self._compile(made, "overlay", self.place / made, *self.checks) for made in objects)

    def is_same_code(self):
        """Whether the optimiser makes the same of the fault as of the original, in every object."""
        self._write("untouched", self.original.read_text())
        return not any(self._differs(made) for made in self.own_objects)

    def _differs(self, made):
        pair = [self.place / f"{overlay}.o" for overlay in ("overlay", "untouched")]
        compiled = [self._compile(made, target.stem, target, "-O2") for target in pair]
        return not all(compiled) or pair[0].read_bytes() != pair[1].read_bytes()

    def link(self, name, target):
        """Links what the build calls by that name, with the objects that were compiled here."""
        compiled = [made for made in (*self.own_objects, *self.test_objects) if (self.place / made).exists()]
        words = [str(self.place / word) if word in compiled else word for word in self.shop.link_command[name]]
        words[words.index("-o") + 1] = str(target)
        if not name.startswith("lib/"):
            # In front of the archive, which then supplies no second definition.
            own = [str(self.place / made) for made in compiled if made in self.own_objects]
            words[words.index("-o"):words.index("-o")] = own
        target.parent.mkdir(parents=True, exist_ok=True)
        return subprocess.run(words, cwd=self.shop.build, capture_output=True).returncode == 0

    def first_failure(self, environment):
        """What kills the mutant; None when all its suites pass."""
        surroundings = {**environment, **self.surroundings()}
        for suites in self.shop.subject.suites(self.shop.tree, self.mutant.file):
            limit = self.shop.limit(suites, environment)
            program = self.program(suites.program)
            failed = self.shop.failure(suites, program, limit, surroundings) if program else "cannot be built"
            if failed is not None:
                return f"{suites.name}: {failed}"
        return None
