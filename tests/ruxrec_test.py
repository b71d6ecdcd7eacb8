#!/usr/bin/env python3
"""Encodes clips with ruxrec at each level: ruxplay decodes exactly what the encoder has reconstructed, ffmpeg and
mpeg2dec decode without a word; then rates, pictures, and input, options and disks that are wrong.

Usage: ruxrec_test.py RUXREC RUXPLAY CLIPS, the programs being those that take --level
"""
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

ruxrec, ruxplay, clips = sys.argv[1], sys.argv[2], Path(sys.argv[3])
levels = ("px", "m6", "a6", "w7")
failures = []


def check(condition, what):
    if not condition:
        failures.append(what)
        print("FAILED:", what)


def run(*arguments, program=ruxrec, **how):
    how.setdefault("text", True)
    return subprocess.run([program, *map(str, arguments)], capture_output=True, timeout=120, **how)


def ffmpeg(*arguments):
    return run("-nostdin", "-v", "warning", "-y", *arguments, program="ffmpeg")


def pictures_of(clip, folder, *filters):
    """A clip as Y4M, after ffmpeg's filters."""
    path = Path(folder, "-".join([clip, *filters]).replace("=", "_").replace(":", "_") + ".y4m")
    if not path.exists():
        filtering = ("-vf", ",".join(filters)) if filters else ()
        result = ffmpeg("-i", clips / f"{clip}.m2v", *filtering, "-pix_fmt", "yuv420p", "-fps_mode", "passthrough",
                        path)
        assert path.exists(), result.stderr
    return path


def summary(result):
    """Numbers of I, P and B pictures, bytes, kbit/s and the PSNR of the planes, as ruxrec tells."""
    found = re.search(r"\((\d+) I, (\d+) P, (\d+) B\).*\n(\d+) bytes, (\S+) kbit/s, PSNR Y (\S+) Cb (\S+) Cr (\S+) dB",
                      result.stderr)
    if not found:
        check(False, f"no summary: {result.stderr}")
        return (0,) * 8
    return (*map(int, found.groups()[:4]), *map(float, found.groups()[4:]))


def encode(source, folder, *options):
    """The stream and the encoder's reconstruction."""
    stream, reconstruction = Path(folder, "stream.m2v"), Path(folder, "reconstruction.y4m")
    result = run(*options, "-o", stream, "--reconstruction", reconstruction, source)
    check(result.returncode == 0, f"{source} with {options}: {result.stderr}")
    return result, stream, reconstruction


def check_decoders(stream, level, reconstruction, what, lowest):
    """ruxplay exactly, ffmpeg nearly (its arithmetic is another), ffmpeg and mpeg2dec without a word."""
    written = stream.with_name("decoded.y4m")
    result = run("--quiet", "--level", level, "--y4m", written, stream, program=ruxplay)
    check(result.returncode == 0 and not result.stderr, f"ruxplay on {what}: {result.stderr}")
    check(written.read_bytes() == reconstruction.read_bytes(), f"{what}: ruxplay shows other pictures")
    result = ffmpeg("-f", "mpegvideo", "-i", stream, "-fps_mode", "passthrough", "-pix_fmt", "yuv420p", written)
    check(result.returncode == 0 and not result.stderr, f"ffmpeg on {what}: {result.stderr}")
    result = run("--quiet", "--level", level, "--compare", written, stream, program=ruxplay)
    nearest = re.search(r"lowest +(\S+)", result.stdout)
    check(nearest and float(nearest[1]) >= lowest, f"{what}: ffmpeg's pictures differ, {nearest and nearest[1]} dB")
    if shutil.which("mpeg2dec"):
        result = run("-o", "null", stream, program="mpeg2dec")
        told = re.sub(r"libmpeg2-.*\n|\s*\d+ frames decoded in .*\n?|\s", "", result.stdout + result.stderr)
        check(result.returncode == 0 and not told, f"mpeg2dec on {what}: {told}")


def test_round_trip(folder):
    """Least luma in dB of each source at quantiser 4, and of ffmpeg's pictures beside ruxplay's."""
    cases = ((pictures_of("ipb_rotate_352x288", folder, "crop=336:272:6:4"), 40.0, ()),
             (pictures_of("ip_pan_352x288", folder, "crop=331:267:6:4"), 39.0, ("--b-pictures", 0)),
             (pictures_of("multigop_closed_176x144", folder), 36.0, ("--gop", 5, "--b-pictures", 3)),
             (pictures_of("size_180x100", folder), 39.0, ("--gop", 1)),
             (pictures_of("highrate_dc11_176x144", folder), 40.0, ("--quantiser", 1, "--search-range", 3)))
    for source, least, options in cases:
        told = []
        for level in levels:
            what = f"{source.name} {options} at {level}"
            result, stream, reconstruction = encode(source, folder, "--level", level, *options)
            values = summary(result)
            check(values[5] >= least, f"{what}: luma at {values[5]} dB")
            check_decoders(stream, level, reconstruction, what, 45.0 if level == "px" else 36.0)
            told.append(f"{values[3]:7d} {values[5]:5.2f}")
        print(f"{source.name:44}", "  ".join(told))


def check_order(stream, what):
    """In each group the temporal references count the pictures in their order of display."""
    content = stream.read_bytes()
    groups = []
    for match in re.finditer(rb"\x00\x00\x01[\x00\xb8]", content):
        if content[match.end() - 1] == 0xB8:
            groups.append([])
            continue
        two = content[match.end()] << 8 | content[match.end() + 1]
        groups[-1].append((two >> 6, "?IPB"[two >> 3 & 7]))
    for group in groups:
        numbers = [number for number, _ in group]
        references = [number for number, kind in group if kind != "B"]
        check(sorted(numbers) == list(range(len(group))) and references == sorted(references) and group[0][1] == "I",
              f"{what}: temporal references {group}")
        # A B picture follows the reference picture that is shown after it.
        for place, (number, kind) in enumerate(group):
            behind = [other for other, earlier in group[:place] if earlier != "B" and other > number]
            check(kind != "B" or len(behind) == 1, f"{what}: {group[place]} in {group}")
    check(groups and groups[0][0][0] == 0, f"{what}: the first picture is {groups[0][0]}")


def test_kinds(folder):
    source = pictures_of("ipb_rotate_352x288", folder)
    for options, kinds in ((("--gop", 1), (24, 0, 0)), (("--b-pictures", 0), (2, 22, 0)), ((), (2, 7, 15)),
                           (("--gop", 7, "--b-pictures", 1, "--frames", 20), (3, 9, 8)),
                           (("--frames", 1), (1, 0, 0)), (("--frames", 3), (1, 1, 1))):
        result, stream, reconstruction = encode(source, folder, "--level", "w7", *options)
        check_order(stream, options)
        check(summary(result)[:3] == kinds, f"{options}: kinds {summary(result)[:3]}, not {kinds}")
        check_decoders(stream, "w7", reconstruction, f"{options}", 36.0)


def test_quantisers(folder):
    """A coarser quantiser takes fewer bits and gives less."""
    source = pictures_of("multigop_closed_176x144", folder)
    results = [summary(encode(source, folder, "--quantiser", quantiser)[0]) for quantiser in (1, 2, 5, 12, 31)]
    for finer, coarser in zip(results, results[1:]):
        check(finer[3] > coarser[3] and finer[5] > coarser[5], f"bytes and luma: {finer} before {coarser}")


def test_bit_rate(folder):
    """The rate is met within a tenth over the clip, and one stream's quantiser changes within its slices."""
    source = pictures_of("multigop_closed_176x144", folder)
    for rate in (300, 600, 1200):
        result, stream, reconstruction = encode(source, folder, "--level", "w7", "--bitrate", f"{rate}k")
        found = summary(result)[4]
        check(abs(found / rate - 1) < 0.1, f"{found} kbit/s, not {rate}")
        check_decoders(stream, "w7", reconstruction, f"{rate}k", 36.0)


def test_input(folder):
    """The same pictures from a file, from the standard input, and as RGB pictures of several kinds."""
    source = pictures_of("size_180x100", folder)
    stream = encode(source, folder, "--frames", 6)[1].read_bytes()
    for pipe in ("-", "/dev/stdin"):
        result = run("--quiet", "--frames", 6, "-o", "-", pipe, input=source.read_bytes(), text=False)
        check(result.returncode == 0 and result.stdout == stream, f"{pipe} to standard output: {result.stderr}")
    pictures = Path(folder, "pictures")
    pictures.mkdir()
    ffmpeg("-i", source, "-frames:v", 3, pictures / "%02d.png")
    ffmpeg("-i", source, "-frames:v", 3, pictures / "%02d.ppm")
    paths = sorted(pictures.glob("*.png"))
    for level in levels:
        from_png = encode(paths[-1], folder, "--level", level, "--rate", "30000/1001", *paths[:-1])
        values = summary(from_png[0])
        check(sum(values[:3]) == 3 and values[5] > 38, f"PNG pictures at {level}: {values}")
        check_decoders(from_png[1], level, from_png[2], f"PNG at {level}", 36.0)
        check(b" F30000:1001 " in from_png[2].read_bytes()[:80], "--rate is not that of the stream")
        content = from_png[1].read_bytes()
        from_ppm = encode(pictures / "03.ppm", folder, "--level", level, "--rate", "30000/1001",
                          *sorted(pictures.glob("*.ppm"))[:-1])[1].read_bytes()
        check(content == from_ppm, f"PPM pictures give another stream than PNG at {level}")
    for path in paths:
        path.unlink()
    in_folder = encode(pictures, folder, "--level", "w7", "--rate", "30000/1001")[1].read_bytes()
    check(in_folder == content, "a folder of pictures gives another stream than its pictures")
    for width, height in ((1, 1), (16, 16), (17, 33), (3, 50)):
        frame = b"FRAME\n" + bytes(range(256)) * 20
        frame = frame[:6 + width * height + 2 * ((width + 1) // 2) * ((height + 1) // 2)]
        small = Path(folder, "small.y4m")
        small.write_bytes(b"YUV4MPEG2 W%d H%d F24000:1001 A0:0\n" % (width, height) + 5 * frame)
        result, stream, reconstruction = encode(small, folder, "--level", "w7")
        decoded = Path(folder, "decoded.y4m")
        run("--y4m", decoded, "--level", "w7", stream, program=ruxplay)
        check(decoded.read_bytes() == reconstruction.read_bytes(), f"{width}x{height} comes back as another picture")


def y4m(folder, name, width, height, pictures):
    path = Path(folder, name)
    path.write_bytes(b"YUV4MPEG2 W%d H%d F25:1\n" % (width, height) +
                     b"".join(b"FRAME\n" + picture for picture in pictures))
    return path


def test_extremes(folder):
    """Coefficients at the ends of their range, long rows of skipped macroblocks, bright and dark ground."""
    chance = random.Random(1)
    samples = 64 * 48 * 3 // 2
    noise = [bytes(chance.choice((0, 255)) for _ in range(samples)) for _ in range(7)]
    blocks = [bytes(255 * (chance.random() < 0.5) for _ in range(samples // 64)) for _ in range(7)]
    # Flat squares of 8x8, black and white, that change from picture to picture; chroma in squares too.
    squares = []
    for values in blocks:
        planes, at = b"", 0
        for width, height in ((64, 48), (32, 24), (32, 24)):
            for _ in range(height // 8):
                planes += b"".join(bytes([value]) * 8 for value in values[at:at + width // 8]) * 8
                at += width // 8
        squares.append(planes)
    still = bytes([235]) * (1280 * 40) + bytes([16]) * (640 * 20) + bytes([240]) * (640 * 20)
    moved = bytes([200]) * 20 + still[20:-7] + bytes([100]) * 7
    sources = (y4m(folder, "noise.y4m", 64, 48, noise), y4m(folder, "squares.y4m", 64, 48, squares),
               y4m(folder, "still.y4m", 1280, 40, [still, still, moved, still, still, moved, moved, still]))
    for source in sources:
        for level in levels:
            for options in (("--quantiser", 1), ("--quantiser", 20)):
                result, stream, reconstruction = encode(source, folder, "--level", level, *options)
                lowest = summary(result)[5]
                check(options[1] > 1 or lowest > 38, f"{source.name} at {level}: luma at {lowest} dB")
                check_decoders(stream, level, reconstruction, f"{source.name} {options} at {level}", 28.0)


def one_line(result, status, *words):
    lines = result.stderr.strip().splitlines()
    told = len(lines) == 1 and lines[0].startswith("ruxrec: ") and all(word in lines[0] for word in words)
    check(result.returncode == status and told, f"status {result.returncode}, {lines}, expected {status} {words}")


def test_wrong_usage(folder):
    source, stream = pictures_of("size_180x100", folder), Path(folder, "usage.m2v")
    one_line(run("-o", stream), 2, "which pictures")
    one_line(run(source), 2, "-o")
    one_line(run("-o", stream, "--nonsense", source), 2, "--nonsense")
    for option, value in (("--quantiser", 0), ("--quantiser", 32), ("--bitrate", "fast"), ("--bitrate", "0k"),
                          ("--gop", 0), ("--b-pictures", 8), ("--search-range", 128), ("--rate", "25/x"),
                          ("--frames", -1), ("--level", "w8")):
        one_line(run("-o", stream, option, value, source), 2, option)
    one_line(run("-o", stream, source, "--gop"), 2, "--gop wants a value")
    check(not stream.exists(), "wrong usage writes a stream")
    help_text = run("--help")
    check(help_text.returncode == 0 and "--reconstruction" in help_text.stdout, "--help")


def test_wrong_input(folder):
    stream = Path(folder, "wrong.m2v")
    source = pictures_of("size_180x100", folder)
    content = source.read_bytes()
    body = content.partition(b"\n")[2]

    def wrong(name, written, *words, options=()):
        path = Path(folder, name)
        path.write_bytes(written)
        one_line(run("--quiet", *options, "-o", stream, path), 1, *words)

    one_line(run("-o", stream, Path(folder, "absent.y4m")), 1, "absent.y4m", "No such file")
    wrong("empty.y4m", b"", "neither")
    wrong("text.y4m", b"not a video\n" * 1000, "neither")
    wrong("no_picture.y4m", content.partition(b"\n")[0] + b"\n", "no picture")
    wrong("cut.y4m", content[:-100], "picture 18", "cut short")
    wrong("cut_early.y4m", content[:5000], "picture 1", "cut short")
    wrong("no_frame.y4m", content[:-27006] + b"FRAMF\n" + content[-27000:], "picture 18", "FRAME")
    wrong("no_size.y4m", b"YUV4MPEG2 W0 H5 F25:1\n" + body, "size")
    wrong("large.y4m", b"YUV4MPEG2 W4000 H2000 F25:1\n" + body, "1920x1152")
    wrong("deep.y4m", b"YUV4MPEG2 W180 H100 F25:1 C420p10\n" + body, "420p10")
    wrong("yuv422.y4m", b"YUV4MPEG2 W180 H100 F25:1 C422\n" + body, "4:2:0")
    wrong("interlaced.y4m", b"YUV4MPEG2 W180 H100 F25:1 It\n" + body, "interlaced")
    wrong("rate.y4m", b"YUV4MPEG2 W180 H100 F7:3\n" + body, "frame rate 7:3")
    wrong("broken.png", b"\x89PNG\r\n\x1a\nnonsense", "broken.png")
    empty = Path(folder, "no_pictures")
    empty.mkdir()
    one_line(run("-o", stream, empty), 1, "no PNG or PPM")
    for name, size in (("a.ppm", b"4 2"), ("b.ppm", b"2 4")):
        Path(folder, name).write_bytes(b"P6 " + size + b" 255\n" + bytes(24))
    one_line(run("--quiet", "-o", stream, Path(folder, "a.ppm"), Path(folder, "b.ppm")), 1, "b.ppm", "another size")
    check(not list(Path(folder).glob("wrong.m2v*")), "what was not encoded left a file")


def test_full_disk(folder):
    """A disk that fills up leaves no file, and the stream that was there before stays."""
    source = pictures_of("ipb_rotate_352x288", folder)
    stream, reconstruction = Path(folder, "full.m2v"), Path(folder, "full.y4m")

    def limited(*arguments):
        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))
        return run("--quiet", *arguments, source, preexec_fn=limit)

    stream.write_bytes(b"before")
    one_line(limited("-o", stream), 1, "cannot write", stream.name, "File too large")
    check(stream.read_bytes() == b"before", "the file of before is gone")
    one_line(limited("-o", "/dev/null", "--reconstruction", reconstruction), 1, "cannot write", reconstruction.name)
    check(not list(Path(folder).glob("full.y4m*")) and not list(Path(folder).glob("full.m2v.*")), "half a file is left")
    one_line(run("--quiet", "-o", "/dev/full", source), 1, "cannot write /dev/full", "No space left")
    one_line(run("--quiet", "-o", Path(folder, "nowhere", "x.m2v"), source), 1, "cannot open", "x.m2v")
    with open("/dev/full", "wb") as full:
        result = subprocess.run([ruxrec, "--quiet", "-o", "-", source], stdout=full, stderr=subprocess.PIPE, text=True)
    one_line(result, 1, "standard output", "No space left")


def main():
    with tempfile.TemporaryDirectory() as folder:
        for test in (test_round_trip, test_kinds, test_quantisers, test_bit_rate, test_input, test_extremes,
                     test_wrong_usage, test_wrong_input, test_full_disk):
            test(folder)
    sys.exit(f"{len(failures)} failures" if failures else 0)


main()
