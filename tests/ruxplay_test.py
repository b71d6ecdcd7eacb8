#!/usr/bin/env python3
"""Decodes the clips with ruxplay at each level and compares them with ffmpeg's frames; then programs, streams and
options that are wrong or damaged.

Usage: ruxplay_test.py RUXPLAY CLIPS, RUXPLAY being the program that takes --level
"""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from ruxplay_streams import (extensions, start_codes, with_concealment_vectors, with_matrices_behind,
                             with_repeated_fields)

ruxplay, clips = sys.argv[1], Path(sys.argv[2])
levels = ("px", "m6", "a6", "w7")
lowest_luma = {"px": 45.0, "m6": 38.0, "a6": 38.0, "w7": 38.0}
failures = []


def check(condition, what):
    if not condition:
        failures.append(what)
        print("FAILED:", what)


def run(*arguments):
    return subprocess.run([ruxplay, *map(str, arguments)], capture_output=True, text=True, timeout=120)


def ffmpeg(*arguments):
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-flags", "+bitexact", *map(str, arguments)], check=True,
                   stderr=subprocess.DEVNULL)


def reference_of(stream, folder):
    reference = Path(folder, stream.stem + "-reference.y4m")
    ffmpeg("-idct", "simple", "-i", stream, "-fps_mode", "passthrough", reference)
    return reference


def compare(stream, reference, level):
    """The result of ruxplay, and (Y, Cb, Cr) of each picture."""
    result = run("--quiet", "--level", level, "--compare", reference, stream)
    rows = re.findall(r"^ *\d+ +(\S+) +(\S+) +(\S+)$", result.stdout, re.M)
    return result, [tuple(map(float, row)) for row in rows]


def check_equal_enough(stream, folder, pictures=None):
    """Every level against ffmpeg; the lowest luma of each level."""
    reference = reference_of(stream, folder)
    lowest = []
    for level in levels:
        result, rows = compare(stream, reference, level)
        check(result.returncode == 0, f"{stream.name} at {level}: {result.stderr.strip()}")
        check(rows and (pictures is None or len(rows) == pictures), f"{stream.name} at {level}: {len(rows)} pictures")
        lowest.append(tuple(min(row[plane] for row in rows) for plane in range(3)) if rows else (0, 0, 0))
        check(lowest[-1][0] >= lowest_luma[level], f"{stream.name} at {level}: luma at {lowest[-1][0]} dB")
        check(min(lowest[-1]) >= lowest_luma[level] - 3, f"{stream.name} at {level}: {lowest[-1]} dB")
    print(f"{stream.name:30}", "  ".join("%5.2f %5.2f %5.2f" % row for row in lowest))


def clip(name):
    return (clips / f"{name}.m2v").read_bytes()


def made(folder, name, content):
    path = Path(folder, name)
    path.write_bytes(content)
    return path


def test_clips(folder):
    print("lowest PSNR in dB, Y Cb Cr   ", "   ".join(f"{level:17}" for level in levels))
    pictures = dict(re.findall(r"^\| (\w+_\d+x\d+) \| (\d+) \|", (clips / "README.md").read_text(), re.M))
    paths = sorted(clips.glob("*.m2v"))
    check(len(paths) == len(pictures) > 0, "the list of clips is not that of the folder")
    for path in paths:
        check_equal_enough(path, folder, int(pictures[path.stem]))


def test_made_streams(folder):
    ramp = [8 + place for place in range(64)]
    steep = [16 + 2 * place for place in range(64)]
    repeated = with_repeated_fields(clip("interlaced_ipb_352x288"))
    check_equal_enough(made(folder, "repeated_fields.m2v", repeated), folder)
    changed = with_matrices_behind(clip("ipb_rotate_352x288"), 4, ramp, steep, None, None)
    check_equal_enough(made(folder, "matrices_in_midstream.m2v", changed), folder)
    chroma = with_matrices_behind(clip("yuv422_176x144"), 0, ramp, ramp, steep, steep)
    check_equal_enough(made(folder, "chroma_matrices.m2v", chroma), folder)
    concealing = with_concealment_vectors(clip("intra_352x288"))
    check_equal_enough(made(folder, "concealment_vectors.m2v", concealing), folder, 10)
    program = Path(folder, "program.mpg")
    ffmpeg("-i", clips / "ipb_rotate_352x288.m2v", "-f", "lavfi", "-i", "sine=duration=1", "-map", "1", "-map", "0",
           "-c:v", "copy", "-f", "vob", program)
    check_equal_enough(program, folder, 24)
    older = Path(folder, "older.mpg")
    ffmpeg("-i", clips / "size_180x100.m2v", "-c:v", "copy", "-f", "mpeg", older)
    check_equal_enough(older, folder, 18)


def test_open_start(folder):
    """A stream that begins in an open group: the pictures that need the one before are dropped, and it says so."""
    stream = clip("ipb_rotate_352x288")
    groups = start_codes(stream, 0xB8)
    before = stream[:groups[0]]
    result = run("--level", "px", made(folder, "open_start.m2v", before + stream[groups[1]:]))
    check(result.returncode == 3 and "dropped" in result.stderr, "an open group at the start: " + result.stderr)


def test_outputs(folder):
    stream = clips / "size_180x100.m2v"
    written = Path(folder, "written.y4m")
    check(run("--y4m", written, stream).returncode == 0, "--y4m")
    result, rows = compare(stream, written, "w7")
    check(len(rows) == 18 and all(value == float("inf") for row in rows for value in row), "what --y4m wrote differs")
    head = written.read_bytes()[:60]
    check(head.startswith(b"YUV4MPEG2 W180 H100 F25:1 Ip A") and b"C420mpeg2\n" in head, f"Y4M header {head}")
    result = run("--out", Path(folder, "frames"), "--sheet", Path(folder, "sheet.png"), "--scale", "90x50", "--frames",
                 3, stream)
    check(result.returncode == 0, "outputs: " + result.stderr)
    names = sorted(path.name for path in Path(folder, "frames").glob("*"))
    check(names == ["0001.png", "0002.png", "0003.png"], f"--out wrote {names}")
    for path, size in (("frames/0002.png", (90, 50)), ("sheet.png", (8 + 3 * 98, 8 + 58))):
        image = Path(folder, path).read_bytes()
        found = int.from_bytes(image[16:20], "big"), int.from_bytes(image[20:24], "big")
        check(image[:8] == b"\x89PNG\r\n\x1a\n" and found == size, f"{path} is {found}, not {size}")
    for width, height in ((1, 1), (7, 200), (400, 9), (1000, 1000)):
        scaled = Path(folder, "scaled.y4m")
        result = run("--y4m", scaled, "--scale", f"{width}x{height}", "--frames", 1, stream)
        expected = width * height + 2 * ((width + 1) // 2) * ((height + 1) // 2)
        content = scaled.read_bytes() if result.returncode == 0 else b""
        check(len(content.partition(b"FRAME\n")[2]) == expected, f"--scale {width}x{height}: {result.stderr}")


def one_line(result, status, *words):
    lines = result.stderr.strip().splitlines()
    told = len(lines) == 1 and lines[0].startswith("ruxplay: ") and all(word in lines[0] for word in words)
    check(result.returncode == status and told, f"status {result.returncode}, {lines}, expected {status} {words}")


def test_wrong_usage(folder):
    stream = clips / "size_180x100.m2v"
    one_line(run(), 2, "which video")
    one_line(run("--nonsense", stream), 2, "--nonsense")
    one_line(run("--frames", "0", stream), 2, "--frames")
    one_line(run("--frames", "two", stream), 2, "--frames")
    one_line(run(stream, "--frames"), 2, "--frames wants a value")
    one_line(run("--scale", "0x5", stream), 2, "--scale")
    one_line(run("--scale", "320", stream), 2, "--scale")
    one_line(run("--level", "w8", stream), 2, "--level")
    one_line(run(stream, stream), 2, "one video at a time")
    one_line(run("--y4m", Path(folder, "nowhere", "x.y4m"), stream), 1, "cannot open")
    one_line(run("--out", stream, stream), 1, "folder")
    one_line(run("--quiet", "--compare", stream, stream), 1, "YUV4MPEG2")
    help_text = run("--help")
    check(help_text.returncode == 0 and "--sheet" in help_text.stdout, "--help")


def test_wrong_files(folder):
    one_line(run(Path(folder, "absent.m2v")), 1, "absent.m2v", "No such file")
    one_line(run(made(folder, "empty.m2v", b"")), 1, "no MPEG-2 video")
    one_line(run(made(folder, "text.m2v", b"not a video\n" * 1000)), 1, "no MPEG-2 video")
    stream = clip("intra_352x288")
    older = stream.replace(stream[extensions(stream, 1)[0]:][:10], b"")
    one_line(run(made(folder, "mpeg1.m2v", older)), 1, "MPEG-1")
    field = bytearray(stream)
    at = extensions(stream, 8)[0] + 6
    field[at] = field[at] & ~3 | 1
    one_line(run(made(folder, "field.m2v", field)), 1, "field pictures")
    at = extensions(stream, 1)[0]
    chroma444 = bytearray(stream)
    chroma444[at + 5] |= 6
    one_line(run(made(folder, "chroma444.m2v", chroma444)), 1, "4:4:4")


def test_damage(folder):
    """The damage is told with its place, and what is not damaged stays what it was."""
    stream = clip("intra_352x288")
    slices = [match.start() for match in re.finditer(rb"\x00\x00\x01[\x01-\xaf]", stream)]
    assert stream[slices[4] + 3] == 5
    broken = bytearray(stream)
    for at in range(slices[4] + 30, slices[5]):
        broken[at] = 0
    path = made(folder, "damaged.m2v", broken)
    reference = reference_of(clips / "intra_352x288.m2v", folder)
    for level in levels:
        result, rows = compare(path, reference, level)
        check(result.returncode == 3, f"damaged stream at {level}: status {result.returncode}")
        check("picture 1 (I), slice 5: " in result.stderr, f"damage at {level} told as {result.stderr}")
        check("macroblocks lost and concealed" in result.stderr, f"concealment at {level}: {result.stderr}")
        check(len(rows) == 10 and rows[0][0] < 45 and min(row[0] for row in rows[1:]) >= 45,
              f"damage spread at {level}")
        result = run("--level", level, made(folder, "cut.m2v", stream[:len(stream) // 2 + 7]))
        check(result.returncode == 3 and "concealed" in result.stderr, f"cut stream at {level}: {result.stderr}")


def main():
    with tempfile.TemporaryDirectory() as folder:
        for test in (test_clips, test_made_streams, test_open_start, test_outputs, test_wrong_usage, test_wrong_files,
                     test_damage):
            test(folder)
    sys.exit(f"{len(failures)} failures" if failures else 0)


main()
