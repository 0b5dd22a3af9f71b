# SPDX-License-Identifier: GPL-3.0-or-later
"""What the build itself knows: the core's sources and headers, the test programs
and how to start them. Nothing here is a list of paths."""

import json
import os
import pathlib
import re
import subprocess

# The libraries without a window; one that does not exist is passed over.
CORE_TARGETS = ("mirelund_core", "mirelund_export")


_INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]+"([^"]+)"', re.MULTILINE)


class Program:
    """A test program: one process runs all of it."""

    def __init__(self, target, command, environment, folder, is_gtest):
        self.target = target
        self.command = command
        self.environment = environment
        self.folder = folder  # of its sources, below the root
        self.is_gtest = is_gtest

    @property
    def name(self):
        return self.target


class BuildTree:
    def __init__(self, root, build):
        self.root = pathlib.Path(root)
        self.build = pathlib.Path(build)
        self.targets = {}

    def configure(self, *arguments):
        """Runs cmake with the arguments and reads what it answers."""
        query = self.build / ".cmake/api/v1/query/codemodel-v2"
        query.parent.mkdir(parents=True, exist_ok=True)
        query.touch()
        done = subprocess.run(
            ["cmake", *arguments], cwd=self.root, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, text=True, check=False)
        if done.returncode != 0:
            raise SystemExit(done.stdout)
        self._read_targets()

    def _read_targets(self):
        reply = self.build / ".cmake/api/v1/reply"
        index = json.loads(max(reply.glob("index-*.json")).read_text())
        model = json.loads((reply / index["reply"]["codemodel-v2"]["jsonFile"]).read_text())
        self.targets = {}
        for entry in model["configurations"][0]["targets"]:
            self.targets[entry["name"]] = json.loads((reply / entry["jsonFile"]).read_text())

    def ninja(self, *targets):
        """Builds targets; the finished process with its output."""
        return subprocess.run(
            ["ninja", "-C", str(self.build), *targets], stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, text=True, errors="replace", check=False)

    def sources(self, target):
        """The target's .cpp files, relative to the root."""
        found = []
        for source in self.targets[target]["sources"]:
            path = pathlib.PurePosixPath(source["path"])
            if path.suffix == ".cpp" and not path.is_absolute() and not source.get("isGenerated"):
                found.append(str(path))
        return found

    def core_targets(self):
        return [name for name in CORE_TARGETS if name in self.targets]

    def core_sources(self):
        return sorted({path for name in self.core_targets() for path in self.sources(name)})

    def core_objects(self):
        """Source file by object file, as ninja names it."""
        return {
            output: source
            for name in self.core_targets()
            for source, output in self._objects(name)
        }

    def _objects(self, name):
        folder = self.targets[name]["paths"]["build"]
        for command in self.compile_commands():
            output = re.search(r" -o (\S+)", command["command"]).group(1)
            if output.startswith(f"{folder}/CMakeFiles/{name}.dir/"):
                yield os.path.relpath(command["file"], self.root), output

    def compile_commands(self):
        return json.loads((self.build / "compile_commands.json").read_text())

    def core_headers(self):
        """Headers below src that the core's sources include, directly or not, sorted."""
        root = self.root.resolve()
        folders = [f for name in self.core_targets() for f in self._include_folders(name)]
        found = set()
        waiting = self.core_sources()
        while waiting:
            path = waiting.pop()
            for name in _INCLUDE.findall((root / path).read_text()):
                for folder in [root / os.path.dirname(path), *folders]:
                    header = os.path.relpath(os.path.realpath(os.path.join(folder, name)), root)
                    if header.startswith("src/") and (root / header).is_file():
                        if header not in found:
                            found.add(header)
                            waiting.append(header)
                        break
        return sorted(found)

    def _include_folders(self, name):
        for group in self.targets[name].get("compileGroups", []):
            for include in group.get("includes", []):
                yield include["path"]

    def executables(self):
        """Target by the path of its program."""
        found = {}
        for name, target in self.targets.items():
            if target["type"] == "EXECUTABLE":
                for artifact in target["artifacts"]:
                    found[os.path.normpath(self.build / artifact["path"])] = name
        return found

    def test_programs(self):
        """The test programs that need no display, as ctest knows them. They must have
        been built."""
        listing = subprocess.run(
            ["ctest", "--test-dir", str(self.build), "--show-only=json-v1"],
            stdout=subprocess.PIPE, text=True, check=True).stdout
        executables = self.executables()
        programs = {}
        for test in json.loads(listing)["tests"]:
            command = test.get("command")
            if not command:
                raise SystemExit(f"ctest does not know the command of {test['name']}: not built?")
            properties = {p["name"]: p["value"] for p in test["properties"]}
            environment = dict(e.split("=", 1) for e in properties.get("ENVIRONMENT", []))
            if environment.get("QT_QPA_PLATFORM") == "xcb":
                continue
            target = executables.get(os.path.normpath(command[0]))
            if target is None or target in programs:
                continue
            is_gtest = any(a.startswith("--gtest_filter=") for a in command)
            programs[target] = Program(
                target, command[:1] if is_gtest else command, environment,
                self.folder_of(target), is_gtest)
        return list(programs.values())

    def test_targets(self):
        """Targets of the programs that ctest runs without a display, before they are
        built: those whose sources lie below tests."""
        with_display = set()
        listing = subprocess.run(
            ["ctest", "--test-dir", str(self.build), "--show-only=json-v1"],
            stdout=subprocess.PIPE, text=True, check=False).stdout
        executables = self.executables()
        for test in json.loads(listing or '{"tests": []}')["tests"]:
            properties = {p["name"]: p["value"] for p in test["properties"]}
            if "QT_QPA_PLATFORM=xcb" in properties.get("ENVIRONMENT", []):
                for part in test.get("command", []):
                    with_display.add(executables.get(os.path.normpath(part)))
        return sorted(
            name for name in executables.values()
            if self.folder_of(name).startswith("tests") and name not in with_display)

    def folder_of(self, target):
        sources = self.sources(target)
        return os.path.commonpath([os.path.dirname(s) for s in sources]) if sources else ""


def tables(document, heading):
    """The rows of the Markdown table under a heading, each a list of its cells. A
    cell in backquotes is taken literally, with "\\|" for "|"."""
    rows = []
    inside = False
    if not document.exists():
        return rows
    for line in document.read_text().splitlines():
        if line.startswith("#"):
            inside = line.lstrip("#").strip() == heading
        elif inside and line.startswith("|"):
            cells = [c.strip().replace("\\|", "|") for c in re.split(r"(?<!\\)\|", line)[1:-1]]
            if not all(re.fullmatch(r":?-+:?", c) for c in cells):
                rows.append([re.sub(r"^(`+) ?(.*?) ?\1$", r"\2", c) for c in cells])
    return rows[1:]  # without the heads of its columns
