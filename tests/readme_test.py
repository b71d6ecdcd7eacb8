#!/usr/bin/env python3
"""Cuts the program out of the README, builds it against the library, runs it and compares its output; and sees that
every file that the README and the documents link to exists.

Usage: readme_test.py LIBRARY_DIR COMPILER FLAGS...
"""
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

root = Path(__file__).resolve().parent.parent
library_dir, *compiler = sys.argv[1:]
readme = (root / "README.md").read_text()

program = re.search(r"```c\n(.*?)```", readme, re.S)[1]
output = re.search(r"```text\n(.*?)```", readme, re.S)[1]
with tempfile.TemporaryDirectory() as folder:
    binary = Path(folder, "program")
    subprocess.run([*compiler, "-x", "c", "-", "-o", binary, "-I", root / "include", "-L", library_dir, "-lruxlib"],
                   input=program, text=True, check=True)
    told = subprocess.run([binary], env={**os.environ, "LD_LIBRARY_PATH": library_dir}, capture_output=True,
                          text=True, check=True).stdout
if told != output:
    sys.exit(f"the README's program printed {told!r} and the README says {output!r}")

links = 0
for document in [root / "README.md", *sorted((root / "docs").glob("*.md"))]:
    for link in re.findall(r"\]\(([^)#:]+)\)", document.read_text()):
        links += 1
        if not (document.parent / link).exists():
            sys.exit(f"{document.name} links to {link}, which is not there")
if links == 0:
    sys.exit("found no links")
for command in re.findall(r"^    make (\w+)", readme, re.M):
    if not re.search(rf"^{command}:", (root / "Makefile").read_text(), re.M):
        sys.exit(f"the README's command make {command} is not in the Makefile")
print(f"program, output and {links} links are right")
