# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""Compiles a mutant in a copy of the sources and runs the tests against it."""

import collections
import contextlib
import functools
import os
import shutil
import signal
import subprocess
import threading
import time
from dataclasses import dataclass
from pathlib import Path

from areas import area_of
from build import CONCERNS, HINTS, MODULE, MODULE_PROGRAMS

COMPILE_LIMIT = 120
MEMORY_LIMIT = 4 << 30
WALL_LIMIT = 180
running = set()  # the process groups, to be ended with this program
spent = collections.Counter()  # seconds, by what took them
COMPILE_FAILED, KILLED, SURVIVED = "did not compile", "killed", "survived"
SAME = "made the same object"
TRANSLATIONS = "scripts/translations"  # with it the full build fails where a text has no translation


class BuildError(Exception):
    """The mutant does not compile or link."""


class SameObjects(Exception):
    """The compiler makes of the mutant what it makes of the source as it is."""


@dataclass
class Outcome:
    mutant: object
    verdict: str
    by: str = ""
    seconds: float = 0


class Worker:
    module_lock = threading.Lock()

    def __init__(self, build, folder, cpu_limits, kills):
        """cpu_limits: seconds by program; kills: how often each program killed, by file, shared"""
        self.build, self.folder = build, folder
        self.sources = folder / "sources"
        self.cpu_limits, self.kills = cpu_limits, kills
        self.plain = {}  # what each source compiles to as it is
        shutil.rmtree(folder, ignore_errors=True)
        for name in build.source_folders:
            shutil.copytree(build.root / name, self.sources / name)
        # read from the copy by what the full build asks about texts
        shutil.copytree(build.root / "translations", self.sources / "translations")
        (self.sources / "scripts").mkdir(exist_ok=True)
        shutil.copy2(build.root / TRANSLATIONS, self.sources / TRANSLATIONS)

    def judge(self, mutant):
        started = time.monotonic()
        path = self.sources / mutant.file
        original = path.read_text()
        path.write_text(mutant.applied(original))
        try:
            objects = self._compile(mutant)
            verdict, by = self._test(
                mutant, objects, lambda: self._stop_where_same(mutant, original, objects))
        except BuildError:
            verdict, by = COMPILE_FAILED, ""
        except SameObjects:
            verdict, by = SAME, ""
        finally:
            path.write_text(original)
        return Outcome(mutant, verdict, by, time.monotonic() - started)

    def _compile(self, mutant):
        """Returns the objects made, by the ones they replace."""
        return {self.build.object_of(source): self._compiled(source)
                for source in self._files_to_compile(mutant)}

    def _compiled(self, source, ending=""):
        target = self.folder / (self.build.object_of(source).replace("/", "_") + ending)
        command = map(self._in_copy, self.build.compile_command(source, target))
        if self._run(command, COMPILE_LIMIT, "compiling") != 0:
            raise BuildError
        return str(target)

    def _stop_where_same(self, mutant, original, objects):
        """Asked before a program runs whole, which takes longer than compiling once more."""
        if mutant.applied(original) == original or not mutant.file.endswith(".cpp"):
            return
        (replaced, made), = objects.items()
        if replaced not in self.plain:
            (self.sources / mutant.file).write_text(original)
            compiled = self.build.compiled_of(mutant.file)
            self.plain[replaced] = Path(self._compiled(compiled, ".plain")).read_bytes()
        if Path(made).read_bytes() == self.plain[replaced]:
            raise SameObjects

    def _files_to_compile(self, mutant):
        if mutant.file.endswith(".cpp"):
            return [self.build.compiled_of(mutant.file)]
        users = [user for user in self.build.users.get(mutant.file, ()) if self._is_tested(user)]
        # an inline function concerns those only who name it
        return sorted(user for user in users if not mutant.words or any(
            word in self._text_of(user) for word in mutant.words))

    def _text_of(self, compiled):
        sources = [self.sources / source for source in self.build.sources_in(compiled)
                   if source.startswith(self.build.source_folders)]
        return "".join(source.read_text() for source in sources)

    def _is_tested(self, compiled):
        sources = self.build.sources_in(compiled)
        if not sources[0].startswith(self.build.source_folders):
            return False
        replaced = self.build.object_of(compiled)
        return sources[0].startswith(("client/", "plugin/", "tests/unit/client/")) or any(
            replaced in command for command in self.build.link_commands.values())

    def _in_copy(self, part):
        """Sources and their include folders are taken from the copy, all else from the build."""
        if part.endswith(".cxx") and "/Unity/" in part:
            joint = self.folder / part.replace("/", "_")
            joint.write_text(Path(part).read_text().replace(f'"{self.build.root}/',
                                                            f'"{self.sources}/'))
            return str(joint)
        prefix = "-I" if part.startswith("-I") else ""
        path = part[len(prefix):]
        root = str(self.build.root)
        if path == root or (path.startswith(root + "/") and not path.startswith(root + "/build/")):
            return prefix + str(self.sources) + path[len(root):]
        return part

    def _test(self, mutant, objects, before_whole):
        kills, area = self.kills[mutant.file], area_of(mutant.file)
        concerned = [name for name in area.programs if name not in CONCERNS or any(
            self.build.object_of(source) in objects for source in CONCERNS[name])]
        hint = HINTS.get(mutant.file.rpartition("/")[0]) or HINTS.get(mutant.file)
        commands = self._commands(area, objects)
        ordered = sorted(concerned, key=lambda name: (-kills[name] - (name == hint),
                                                      self.cpu_limits[name]))
        # nearly always the tests nearest to the mistake find it, in a fraction of the time
        near = self.build.near.pattern(mutant.file)
        for stage in [near, ""] if near else [""]:
            if not stage:
                before_whole()
            for name in ordered:
                if self._fails(commands(name), name, stage):
                    kills[name] += 1
                    return KILLED, name
        if self._run([str(self.sources / TRANSLATIONS), "check"], COMPILE_LIMIT) != 0:
            return KILLED, TRANSLATIONS
        if not area.has_module:
            return SURVIVED, ""
        with Worker.module_lock:
            return self._test_module(objects)

    def _commands(self, area, objects):
        """How a program is run with the mutant in it; linked when it is first asked for."""
        if area.shared_library:
            library = self.folder / "library.so"
            self._link(area.shared_library, objects, library)
            return lambda name: ["env", f"LD_PRELOAD={library}",
                                 str(self.build.folder / area.programs[name])]

        @functools.cache
        def linked(name):
            program = self.folder / name
            self._link(name, objects, program)
            return [str(program)]

        return linked

    def _fails(self, command, name, near):
        """Asked twice: some measure times, which a busy machine may keep too long."""
        filters = [f"--gtest_filter={near}"] if near else []
        return all(self._run([*command, *filters], self.cpu_limits[name]) != 0 for _ in range(2))

    def _test_module(self, objects):
        """The programs look for the module where it was built: the mutant stands there meanwhile."""
        module = self.build.folder / MODULE
        original, mutated = self.folder / "original.so", self.folder / "mutated.so"
        self._link("module", objects, mutated)
        shutil.copy2(module, original)
        try:
            os.replace(mutated, module)
            for name, path in MODULE_PROGRAMS.items():
                # twice: they wait for other programs, which a busy machine may keep too long
                if all(self._run([str(self.build.folder / path)], self.cpu_limits[name]) != 0
                       for _ in range(2)):
                    return KILLED, name
        finally:
            os.replace(original, module)
        return SURVIVED, ""

    def _link(self, name, objects, output):
        if self._run(self.build.link_command(name, objects, output), COMPILE_LIMIT, "linking") != 0:
            raise BuildError

    def _run(self, command, cpu_seconds, what="testing"):
        started = time.monotonic()
        try:
            return run_limited(command, cpu_seconds, self.build.folder, self.folder)
        finally:
            spent[what] += time.monotonic() - started


def run_limited(command, cpu_seconds, folder, temporary):
    """The exit code; not 0 for what does not end, which takes its own children along."""
    limited = ["prlimit", f"--cpu={int(cpu_seconds)}", f"--as={MEMORY_LIMIT}", "--core=0", *command]
    environment = dict(os.environ, LC_ALL="C.UTF-8", GTEST_FAIL_FAST="1", GTEST_BRIEF="1",
                       TMPDIR=str(temporary))
    with subprocess.Popen(limited, cwd=folder, env=environment, start_new_session=True,
                          stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL) as process:
        running.add(process.pid)
        started = time.monotonic()
        try:
            while True:
                with contextlib.suppress(subprocess.TimeoutExpired):
                    return process.wait(WALL_LIMIT)
                # hanging is waiting for something else than a processor
                if seconds_without_processor(process.pid) < (time.monotonic() - started) / 2:
                    return -1
        finally:
            end(process.pid)
            running.discard(process.pid)


def seconds_without_processor(group):
    """How long the processes of the group were ready to run while others ran."""
    nanoseconds = 0
    for stat in Path("/proc").glob("[0-9]*/stat"):
        with contextlib.suppress(OSError):  # one that has just ended
            if int(stat.read_text().rpartition(")")[2].split()[2]) == group:
                nanoseconds += sum(int(task.read_text().split()[1])
                                   for task in stat.parent.glob("task/*/schedstat"))
    return nanoseconds * 1e-9


def end(group):
    with contextlib.suppress(ProcessLookupError):
        os.killpg(group, signal.SIGKILL)
