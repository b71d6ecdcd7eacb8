#!/usr/bin/env python3
"""Sees that ruxplay writes the same frames on every build: the MD5 of its Y4M stream stands in golden/ruxplay.txt.

Usage: ruxplay_frames_test.py PROGRAM...   (UPDATE_GOLDEN=1 in the environment writes the file)
The level is w7: the one that the load binds on the machines that run this.
"""
import hashlib
import os
import subprocess
import sys
import tempfile
from pathlib import Path

tests = Path(__file__).resolve().parent
golden_file = tests / "golden" / "ruxplay.txt"
clips = sorted((tests.parent / "examples" / "clips").glob("*.m2v"))

digests = {}
with tempfile.TemporaryDirectory() as folder:
    for clip in clips:
        stream = Path(folder, "frames.y4m")
        subprocess.run([*sys.argv[1:], "--quiet", "--y4m", stream, clip], check=True)
        digests[clip.stem] = hashlib.md5(stream.read_bytes()).hexdigest()

if os.environ.get("UPDATE_GOLDEN"):
    golden_file.write_text("".join(f"{clip} {digest}\n" for clip, digest in digests.items()))
golden = dict(line.split() for line in golden_file.read_text().splitlines())
wrong = [clip for clip in golden.keys() | digests.keys() if golden.get(clip) != digests.get(clip)]
if wrong or not digests:
    sys.exit(f"other frames than golden: {sorted(wrong)}")
print(f"{len(digests)} clips give the golden frames")
