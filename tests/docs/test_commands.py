#!/usr/bin/env python3
"""Runs the commands of README.md, docs/ and the manual as they are written there.

Usage: test_commands.py BUILD_FOLDER

A code block is run whole, by bash, which stops at the first command that fails; a command in the running text by
itself. They find a scratch folder in place of the source tree and of /tmp: the built programs, simulated units at COM1
and COM2, a settings file. Nobody sits at the window: it is closed once it has opened its port. What is not run, or ends
in another way, stands in commands.txt, by its first line; whatever stands there must be found on a page.
"""

import os
import re
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TABLE = Path(__file__).with_name("commands.txt")
LIMIT_S = 120
UNTIL_STOPPED = "runs until it is stopped"
PROGRAM = re.compile(r"((\w+=\S+|sudo|source|cmake|ctest) |(\./|scripts/\w|bench/run|build/bin/)|quorvex-\S+ )")

CLOSED_WINDOW = """#!/usr/bin/env bash
export QUORVEX_TRACE=${QUORVEX_TRACE:-$(mktemp -p "$SCRATCH")}
"$BIN/quorvex-config" "$@" &
until grep -q "open COM" "$QUORVEX_TRACE" 2>/dev/null; do
    kill -0 $! || exit 1
    sleep 0.05
done
kill -TERM $!
wait $!
"""


def pages():
    found = [ROOT / "README.md", ROOT / "docs/manual/texts.txt"]
    return found + sorted((ROOT / "docs").glob("*.md")) + sorted((ROOT / "docs/manual").glob("*.adoc"))


def blocks(path):
    """The code blocks of a page, each a list of lines."""
    found, block, fence = [], [], None
    for line in [*path.read_text().splitlines(), ""]:
        if re.match(r"```|----$", line):
            if fence:
                found.append(block)
            block, fence = [], None if fence else line
        elif fence or (path.suffix == ".md" and re.match(" {4}", line) and (block or before == "")):
            block.append(line)
        elif block and line.strip():
            found.append(block)
            block = []
        before = line.strip()
    return found + ([block] if block else [])


def commands(block):
    """What is typed of a block: without prompts, what they print, and remarks."""
    lines = [line.removeprefix("    ").rstrip() for line in block]
    if any(line.startswith("$ ") for line in lines):
        lines = [line[2:] for line in lines if line.startswith("$ ")]
    lines = [re.sub(r"\s{2,}# .*", "", line) for line in lines]
    return [line for line in lines if line.strip()]


def snippets():
    """Everything that could be run, as (page, [line])."""
    found = []
    for path in pages():
        name = str(path.relative_to(ROOT))
        found += [(name, commands(block)) for block in blocks(path)]
        text = re.sub(r"```.*?```|----\n.*?----\n", "", path.read_text(), flags=re.S)
        found += [(name, [code]) for code in re.findall(r"`([^`\n]+)`", text) if PROGRAM.match(code)]
    return found


def read_table():
    """{first line of a snippet: what becomes of it}"""
    table, how = {}, ""
    for line in TABLE.read_text().splitlines():
        if line.startswith("= "):
            how = line[2:]
        elif line.startswith("    "):
            table[line[4:]] = how
    return table


class Scratch:
    """What the commands find; gone at the end."""

    def __init__(self, build):
        self.folder = tempfile.TemporaryDirectory()
        self.path = Path(self.folder.name)
        binaries = build / "bin"
        own = self.path / "build/bin"
        for folder in (own, self.path / "units", self.path / "home"):
            folder.mkdir(parents=True)
        for program in ("quorvex-tool", "quorvex-simulator"):
            (own / program).symlink_to(binaries / program)
        (own / "quorvex-config").write_text(CLOSED_WINDOW)
        (own / "quorvex-config").chmod(0o755)
        for folder in ("scripts", "tool"):
            (self.path / folder).symlink_to(ROOT / folder)
        home = str(self.path / "home")
        self.environment = os.environ | {
            "PATH": f"{own}:{os.environ['PATH']}", "BIN": str(binaries), "SCRATCH": str(self.path), "HOME": home,
            "XDG_CONFIG_HOME": home, "XDG_RUNTIME_DIR": home, "QT_QPA_PLATFORM": "offscreen",
            "QUORVEX_PORTS": str(self.path / "units"),
        }
        self.units = [self.start(f"quorvex-simulator {kind} --link units/{port}")
                      for port, kind in (("COM1", "beltpack"), ("COM2", "antenna"))]

    def start(self, line):
        """Starts a unit, and waits until it is there."""
        unit = subprocess.Popen(["bash", "-c", f"exec {line}"], cwd=self.path, env=self.environment,
                                stdout=subprocess.PIPE, text=True)
        if " ready on " not in unit.stdout.readline():
            unit.kill()
            raise RuntimeError(f"no unit by: {line}")
        return unit

    def stop(self, unit):
        unit.send_signal(signal.SIGINT)
        unit.stdout.read()
        return unit.wait(LIMIT_S)

    def run(self, lines):
        """Runs the lines of a snippet; returns what went wrong, nothing where all went well."""
        script = "\n".join(lines).replace("/tmp/", f"{self.path}/")
        ended = subprocess.run(["bash", "-e", "-c", script], cwd=self.path, env=self.environment, text=True,
                               stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                               timeout=LIMIT_S)
        return "" if ended.returncode == 0 else f"exit status {ended.returncode}\n{ended.stdout}"

    def run_until_stopped(self, lines):
        for line in lines:
            status = self.stop(self.start(line.replace("/tmp/", f"{self.path}/")))
            if status != 0:
                return f"exit status {status} of {line}"
        return ""

    def __exit__(self, *_):
        for unit in self.units:
            self.stop(unit)
        self.folder.cleanup()

    def __enter__(self):
        problem = self.run(["quorvex-tool --port COM1 read workshop.bpc"])
        if problem:
            raise RuntimeError(problem)
        return self


def main(build):
    table, problems, found = read_table(), [], snippets()
    run = 0
    with Scratch(build) as scratch:
        for page, lines in found:
            how = table.get(lines[0])
            if how not in (None, UNTIL_STOPPED):
                continue
            problem = scratch.run_until_stopped(lines) if how else scratch.run(lines)
            run += 1
            if problem:
                problems.append(f"{page}: {lines[0]}\n{problem}")
    first_lines = {lines[0] for _, lines in found}
    problems += [f'{TABLE.name}: no page has "{line}"' for line in table if line not in first_lines]
    print("\n".join(problems) or f"{run} of {len(found)} snippets were run as written, the others are accounted for.")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]).resolve()) if len(sys.argv) == 2 else __doc__)
