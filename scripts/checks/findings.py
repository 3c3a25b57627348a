"""What the checks share: the files of the repository, and findings told as "file:line: what is wrong; what to do"."""

import functools
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def tracked(*suffixes, under=""):
    """The repository's files with one of the suffixes, new ones included, as paths relative to its root."""
    listed = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard", "--", under or "."],
                            cwd=ROOT, check=True, capture_output=True, text=True).stdout.split("\n")
    return sorted({name for name in listed if name and name.endswith(suffixes) and (ROOT / name).is_file()})


@functools.cache
def text(name):
    return (ROOT / name).read_text(encoding="utf-8")


def line_of(content, position):
    return content.count("\n", 0, position) + 1


class Findings:
    def __init__(self):
        self.count = 0

    def add(self, name, line, what):
        print(f"{name}:{line}: {what}")
        self.count += 1

    def end(self):
        sys.exit(1 if self.count else 0)
