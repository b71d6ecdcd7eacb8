#!/usr/bin/env python3
"""Sees that ruxrec writes the same streams on every build: their MD5s stand in golden/ruxrec.txt.

Usage: ruxrec_streams_test.py RUXPLAY RUXREC [EMULATOR...]   (UPDATE_GOLDEN=1 in the environment writes the file)
The level is w7: the one that the load binds on the machines that run this.
"""
import hashlib
import os
import subprocess
import sys
import tempfile
from pathlib import Path

ruxplay, ruxrec, *emulator = sys.argv[1:]
tests = Path(__file__).resolve().parent
golden_file = tests / "golden" / "ruxrec.txt"
examples = tests.parent / "examples"
settings = {"ip_pan_352x288": ("--quantiser", "6"), "multigop_closed_176x144": ("--quantiser", "2", "--gop", "7"),
            "size_180x100": ("--b-pictures", "0", "--search-range", "9"), "highrate_dc11_176x144": ("--quantiser", "1")}


def run(program, *arguments):
    subprocess.run([*emulator, program, "--quiet", *map(str, arguments)], check=True)


digests = {}
with tempfile.TemporaryDirectory() as folder:
    pictures, stream = Path(folder, "pictures.y4m"), Path(folder, "stream.m2v")
    for clip, options in settings.items():
        run(ruxplay, "--y4m", pictures, examples / f"clips/{clip}.m2v")
        run(ruxrec, *options, "-o", stream, pictures)
        digests[clip] = hashlib.md5(stream.read_bytes()).hexdigest()
    run(ruxrec, "-o", stream, *[examples / "pictures/coffee.png"] * 3)
    digests["coffee"] = hashlib.md5(stream.read_bytes()).hexdigest()

if os.environ.get("UPDATE_GOLDEN"):
    golden_file.write_text("".join(f"{name} {digest}\n" for name, digest in digests.items()))
golden = dict(line.split() for line in golden_file.read_text().splitlines())
wrong = [name for name in golden.keys() | digests.keys() if golden.get(name) != digests.get(name)]
if wrong:
    sys.exit(f"other streams than golden: {sorted(wrong)}")
print(f"{len(digests)} sources give the golden streams")
