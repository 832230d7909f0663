#!/usr/bin/python3 -B
"""The examples of the pages: what each block is, whether what it quotes is there, and whether its commands run.

A block is one of these, by the comment before it or by how it begins:
  <!-- docs/examples/x.cpp -->   a part of a file that tests build or run
  <!-- file rules.xml -->        a file that the commands after it use
  $ command                      commands, each with what it prints; "..." stands for any lines, at the end of a line for
                                 the rest of it
  <!-- not run: reason -->       what no test can run, and why

  examples.py check              compares each quoted block with its file, and tells which block is none of these
  examples.py run BUILD [--prefix FOLDER] PAGE...
                                 runs the commands of pages with a build, or with an installed tree in FOLDER
"""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# What tests and the demo build and run.
QUOTABLE = ("docs/examples/", "examples/", "rules/")
LONGEST_PROGRAM = 40


class Block:
    def __init__(self, page, line, mark, language, lines):
        self.where = f"{page.relative_to(ROOT)}:{line}"
        self.mark, self.language, self.lines = mark, language, lines

    def kind(self):
        if self.mark.startswith("file "):
            return "file"
        if self.mark.startswith("not run: ") and len(self.mark) > 15:
            return "not run"
        if self.mark.startswith(QUOTABLE):
            return "quote"
        return "commands" if self.lines and self.lines[0].startswith("$ ") else "loose"


def blocks_of(page):
    blocks, mark, fence, start = [], "", None, 0
    for number, line in enumerate(page.read_text().splitlines(), 1):
        opens = re.match(r"( *)```(\w*)$", line)
        if fence is not None:
            if line.strip() == "```":
                blocks.append(Block(page, start, mark, fence[1], lines))
                fence, mark = None, ""
            else:
                lines.append(line.removeprefix(fence[0]))
        elif opens:
            fence, lines, start = (opens[1], opens[2]), [], number
        elif line.strip():
            comment = re.match(r" *<!-- (.*) -->$", line)
            mark = comment[1] if comment else ""
    return blocks


def pages():
    return [ROOT / "README.md", ROOT / "CONTRIBUTING.md", *sorted((ROOT / "docs").glob("*.md"))]


def is_part(lines, program):
    """Whether the lines follow each other in the program, all moved by the same blanks."""
    for at in range(len(program) - len(lines) + 1):
        room = len(program[at]) - len(program[at].lstrip())
        indent = " " * (room - len(lines[0]) + len(lines[0].lstrip()))
        if all(program[at + i] == (indent + line if line else "") for i, line in enumerate(lines)):
            return True
    return False


def check():
    wrong, quoted = [], set()
    for page in pages():
        blocks = blocks_of(page)
        for index, block in enumerate(blocks):
            kind = block.kind()
            if kind == "loose":
                wrong.append(f"{block.where}: the block is neither quoted nor run, and does not say why")
            elif kind == "file" and not any(later.kind() == "commands" for later in blocks[index:]):
                wrong.append(f"{block.where}: no command of the page uses the file")
            elif kind == "quote":
                quoted.add(block.mark)
                file = ROOT / block.mark
                if not file.is_file() or not block.lines or not is_part(block.lines, file.read_text().splitlines()):
                    wrong.append(f"{block.where}: the block is no part of {block.mark}")
    for file in sorted((ROOT / "docs" / "examples").glob("*.cpp")):
        name = file.relative_to(ROOT).as_posix()
        if name not in quoted:
            wrong.append(f"{name}: no page quotes it")
        if len(file.read_text().splitlines()) > LONGEST_PROGRAM:
            wrong.append(f"{name}: more than {LONGEST_PROGRAM} lines")
    return wrong


def commands_of(block):
    """Pairs of a command and the lines that it prints."""
    pairs = []
    for line in block.lines:
        if line.startswith("$ "):
            pairs.append((line[2:], []))
        elif pairs[-1][0].endswith("\\") and not pairs[-1][1]:
            pairs[-1] = (pairs[-1][0][:-1] + line.strip(), [])
        else:
            pairs[-1][1].append(line)
    return pairs


def pattern_of(shown):
    parts = []
    for line in shown:
        if line == "...":
            parts.append(r"(?:.*\n)*?")
        else:
            parts.append(re.escape(line.removesuffix("...")) + (r".*" if line.endswith("...") else "") + r"\n")
    return "".join(parts)


class Shell:
    """Runs the commands of one page, each in the folder that the one before ended in."""

    def __init__(self, build, prefix, home):
        self.folder, self.tree = home / "work", prefix or build
        self.folder.mkdir(parents=True)
        self.last = home / "folder"
        (self.folder / "examples").symlink_to(prefix / "examples" if prefix else ROOT / "examples")
        # What compiles here is built like the tree that it links.
        compiler = home / "bin" / "c++"
        compiler.parent.mkdir()
        compiler.write_text(f'#!/bin/sh\nexec {os.environ.get("CXX", "/usr/bin/c++")} {os.environ.get("CXXFLAGS", "")} "$@"\n')
        compiler.chmod(0o755)
        # A shell takes a blank in what pkg-config prints for the end of a word, so the path of the tree has none here.
        (home / "tree").symlink_to(self.tree)
        programs = sorted((build / "docs" / "examples").glob("*/"))
        path = [compiler.parent, self.tree / "bin", *programs, "/usr/bin", "/bin"]
        self.environment = {
            "PATH": ":".join(map(str, path)), "HOME": str(home),
            "CMAKE_GENERATOR": "Ninja", "CMAKE_PREFIX_PATH": str(self.tree),
            "PKG_CONFIG_PATH": str(home / "tree" / "lib" / "pkgconfig"),
            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}}
        if not prefix:
            self.environment |= {"CORVANE_DATA_DIR": str(build / "examples" / "data"),
                                 "CORVANE_REGISTRY_DIR": str(build / "examples" / "registry")}

    def run(self, command):
        script = f'{{ {command}\n}}; status=$?; pwd >"{self.last}"; exit $status'
        done = subprocess.run(["/bin/sh", "-c", script], cwd=self.folder, env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        if self.last.exists():
            self.folder = Path(self.last.read_text().rstrip("\n"))
        return done.returncode, done.stdout.replace(str(self.tree), "/opt/corvane")

    def write(self, name, lines):
        file = self.folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text("\n".join(lines) + "\n")


def run_page(page, shell):
    """What is wrong, and how many commands were run."""
    wrong, count = [], 0
    for block in blocks_of(page):
        if block.kind() == "file":
            shell.write(block.mark.removeprefix("file "), block.lines)
        if block.kind() != "commands":
            continue
        for command, shown in commands_of(block):
            count += 1
            status, printed = shell.run(command)
            # Where the page shows nothing of what is printed, nothing but the status tells.
            told = [line for line in shown if line != "..."]
            trimmed = re.sub(r"[ \t]+$", "", printed.rstrip("\n") + "\n", flags=re.M) if printed.strip() else ""
            if not told and status != 0:
                wrong.append(f"{block.where}: {command}\nended with {status}:\n{printed}")
            elif not re.fullmatch(pattern_of(shown), trimmed):
                wrong.append(f"{block.where}: {command}\nprinted:\n{printed}")
    return wrong, count


def run(arguments):
    build, prefix = Path(arguments.pop(0)).resolve(), None
    if arguments[0] == "--prefix":
        prefix = Path(arguments[1]).resolve()
        arguments = arguments[2:]
    wrong = []
    for name in arguments:
        page = Path(name).resolve()
        with tempfile.TemporaryDirectory() as home:
            problems, count = run_page(page, Shell(build, prefix, Path(home)))
        print(f"{page.name}: {count} commands")
        wrong += problems
    return wrong


if __name__ == "__main__":
    if sys.argv[1:] == ["check"]:
        sys.exit("\n".join(check()) or 0)
    if len(sys.argv) > 3 and sys.argv[1] == "run":
        sys.exit("\n".join(run(sys.argv[2:])) or 0)
    sys.exit(__doc__)
