# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
"""The build that mutants are compiled beside: its compile and link commands."""

import json
import os
import re
import shlex
import shutil
import subprocess
import threading
from pathlib import Path

from areas import AREAS
from near import NearTests

# The test programs that link the client or the plug-in's class, and where the build puts them.
PROGRAMS = AREAS[0].programs
# What these programs are about; the slow ones look at nothing else that others do not look at.
SPENDING = ("client/response/spending.cpp", "client/response/line.cpp")
CONCERNS = {"client-number-test": ("client/response/number.cpp",),
            "client-spending-model-test": SPENDING, "client-spending-properties-test": SPENDING,
            "test-host-rest": ("host/services/restclient.cpp", *(f"host/http/{name}.cpp" for name in (
                "curlpool", "transporterror", "transportsettings", "connectionprobe"))),
            "test-host-config": ("host/services/config.cpp", *(f"host/config/{name}.cpp" for name in (
                "configreader", "hostkeys", "keysheet", "knownkeys", "secretfile")))}
# Which program is tried first for the mutants of a folder or file, until more is known.
HINTS = {"plugin": "test-plugin", "client/request": "client-request-test",
         "client/response": "client-response-test",
         "client/harmlessxml.cpp": "client-hostile-answers-test",
         "client/xmlencoding.cpp": "client-hostile-answers-test",
         "client/offlinemessage.cpp": "client-exchange-test",
         "client/precheck.cpp": "client-exchange-test",
         "client/transport.cpp": "client-exchange-test"}
# These load the built module or start the programs, whose paths are compiled in.
MODULE = "lib/liborva.so"
MODULE_PROGRAMS = {"test-plugin-module": "tests/unit/plugin/test-plugin-module",
                   "test-e2e": "tests/scenario/e2e/test-e2e"}
FLAGS = "-O0 -DNDEBUG"


class Build:
    def __init__(self, root, jobs, areas=AREAS[:1], taken=None):
        """taken: the folder of a build that is there and is used instead of one of its own"""
        self.root, self.jobs, self.areas = root, jobs, areas
        self.scratch = root / "build/mutants"
        self.folder = taken or self.scratch
        self.is_taken = taken is not None
        self.precompiling = threading.Lock()
        self.near = NearTests(root)
        tracked = subprocess.run(["git", "ls-files", "*.cpp", "*.h"], cwd=root, check=True,
                                 text=True, capture_output=True).stdout.split()
        self.source_folders = tuple(sorted({f"{Path(name).parts[0]}/" for name in tracked}))

    def programs(self):
        """All that judge, and where they are."""
        found = {name: path for area in self.areas for name, path in area.programs.items()}
        return {**found, **(MODULE_PROGRAMS if self._has_module() else {})}

    def _has_module(self):
        return any(area.has_module for area in self.areas)

    def library(self, area):
        """The file that an area's shared library is, and not a link to it."""
        return os.path.relpath((self.folder / area.shared_library).resolve(), self.folder)

    def prepare(self):
        """Configures and builds what the tests need; nothing that a mutant has left counts."""
        self.scratch.mkdir(parents=True, exist_ok=True)
        if not self.is_taken:
            (self.folder / MODULE).unlink(missing_ok=True)
            self._logged("configure.log", "cmake", "-S", self.root, "-B", self.folder, "-G",
                         "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                         f"-DCMAKE_CXX_FLAGS_RELEASE={FLAGS}", "-DORVA_BUILD_TESTS=ON",
                         "-DORVA_UNITY=OFF")
        self._logged("build.log", "ninja", "-C", self.folder, f"-j{self.jobs}",
                     *self.programs())
        entries = json.loads((self.folder / "compile_commands.json").read_text())
        self.compile_commands = {os.path.relpath(entry["file"], self.root):
                                 shlex.split(entry["command"]) for entry in entries}
        self.joined = self._joined_sources()
        shutil.rmtree(self.scratch / "precompiled", ignore_errors=True)
        linked = {name: path for name, path in self.programs().items()
                  if name not in MODULE_PROGRAMS}
        if self._has_module():
            linked["module"] = MODULE
        linked.update((area.shared_library, self.library(area)) for area in self.areas
                      if area.shared_library)
        self.link_commands = {name: self._link_command(path) for name, path in linked.items()}
        self.users = self._users_of_headers()

    def compiled_of(self, source):
        """The file that is compiled for a source: one that includes it where several are joined."""
        return source if source in self.compile_commands else self.joined[source]

    def object_of(self, source):
        command = self.compile_commands[self.compiled_of(source)]
        return command[command.index("-o") + 1]

    def compile_command(self, source, output, *more):
        """Without warnings: they stop no mutant, but a function that may end without its value does."""
        command = _without_warnings(self.compile_commands[source])
        command[command.index("-o") + 1] = str(output)
        if self.is_taken:  # its optimisation would take longer than the tests
            if "-include" in command:
                at = command.index("-include") + 1
                command[at] = str(self._precompiled(command[at]))
            command.append("-O0")
        return [*command, "-Werror=return-type", *more]

    def _joined_sources(self):
        """For each source that is compiled with others: the file that includes them."""
        joined = {}
        for source in self.compile_commands:
            if "/Unity/" in source:
                for path in re.findall(r'#include "(.+)"', (self.root / source).read_text()):
                    joined[os.path.relpath(path, self.root)] = source
        return joined

    def sources_in(self, compiled):
        """What such a file includes; a source itself."""
        return [source for source, joint in self.joined.items() if joint == compiled] or [compiled]

    def _precompiled(self, header):
        """The same header compiled without optimisation; the compiler takes no other."""
        name = Path(os.path.relpath(header, self.folder)).parts[1]
        made = self.scratch / "precompiled" / name / Path(header).name
        with self.precompiling:
            if not made.exists():
                made.parent.mkdir(parents=True)
                command = _without_warnings(
                    self.compile_commands[os.path.relpath(f"{header}.cxx", self.root)])
                command[command.index("-o") + 1] = f"{made}.gch"
                subprocess.run([*command, "-O0"], cwd=self.folder, check=True)
                shutil.copy(header, made)
        return made

    def link_command(self, name, objects, output):
        """Links what the objects replace; before an archive they are taken instead of its own."""
        original = self.link_commands[name]
        command = [objects.get(part, part) for part in original]
        archived = [path for replaced, path in objects.items() if archive_of(replaced) in original]
        at = command.index("-o")
        command[at + 1] = str(output)
        return [*command[:at], *archived, "-fuse-ld=lld", *command[at:]]

    def _logged(self, log, *command):
        with open(self.scratch / log, "w", encoding="utf-8") as out:
            failed = subprocess.run(command, stdout=out, stderr=subprocess.STDOUT, check=False)
        if failed.returncode:
            print((self.scratch / log).read_text())
            raise SystemExit(f"mutants: {command[0]} failed, see above")

    def _ninja(self, *arguments):
        return subprocess.run(["ninja", "-C", self.folder, *arguments], check=True, text=True,
                              capture_output=True).stdout

    def _link_command(self, target):
        line = self._ninja("-t", "commands", "-s", target).strip().splitlines()[-1]
        return shlex.split(re.sub(r"^: && | && :$", "", line))

    def _users_of_headers(self):
        """For each header of the project: the sources that include it."""
        sources = {self.object_of(source): source for source in self.compile_commands}
        users, current = {}, None
        for line in self._ninja("-t", "deps").splitlines():
            if line and not line[0].isspace():
                current = sources.get(line.split(":")[0])
            elif line.strip() and current:
                path = os.path.normpath(self.folder / line.strip())
                if path.endswith(".h") and Path(path).is_relative_to(self.root):
                    users.setdefault(os.path.relpath(path, self.root), set()).add(current)
        return users


def _without_warnings(command):
    return [part for part in command if not part.startswith("-W")]


def archive_of(replaced):
    """a/CMakeFiles/b.dir/c.o is in a/libb.a, if in any."""
    folder, _, rest = replaced.partition("CMakeFiles/")
    return f"{folder}lib{rest.partition('.dir/')[0]}.a"
