"""The sound restorer as its user meets it: ruxtone_test.py RUXTONE SOUNDS_FOLDER"""
import array
import os
import pathlib
import resource
import signal
import struct
import subprocess
import sys
import tempfile
import unittest
import wave

program, sounds = sys.argv[1:3]
sys.path.insert(0, sounds)
sys.dont_write_bytecode = True
import make_plucks  # noqa: E402

folder = tempfile.TemporaryDirectory()
clip = os.path.join(sounds, "plucks.wav")


def place(name):
    return pathlib.Path(folder.name, name)


def run(*arguments, **options):
    return subprocess.run([program, *map(str, arguments)], capture_output=True, text=True, timeout=100, **options)


def write_wav(name, frames, channels=1, width=2, rate=8000):
    with wave.open(str(place(name)), "wb") as file:
        file.setnchannels(channels)
        file.setsampwidth(width)
        file.setframerate(rate)
        file.writeframes(frames)
    return place(name)


def read_wav(path):
    """Rate and channels of a sound of 16-bit samples."""
    with wave.open(str(path), "rb") as file:
        samples = array.array("h", file.readframes(file.getnframes()))
        count = file.getnchannels()
        return file.getframerate(), [samples[channel::count] for channel in range(count)]


class Restoration(unittest.TestCase):
    def restored(self, *options):
        result = run(*options, clip, place("out.wav"), place("out.png"))
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(place("out.png").read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
        return read_wav(place("out.wav"))

    def test_the_clip_is_what_its_maker_makes(self):
        rate, channels = read_wav(clip)
        self.assertEqual(rate, make_plucks.rate)
        self.assertEqual([list(channel) for channel in channels], make_plucks.clicking())

    def test_clicks_are_gone_and_the_rest_is_as_it_was(self):
        clean, clicking = make_plucks.clean(), make_plucks.clicking()
        rate, channels = self.restored("--power", "1")
        self.assertEqual(rate, make_plucks.rate)
        for restored, before, wanted in zip(channels, clicking, clean):
            self.assertEqual(len(restored), len(before))
            clicked = [i for i in range(len(before)) if before[i] != wanted[i]]
            self.assertGreater(len(clicked), 20)
            self.assertLess(max(abs(restored[i] - wanted[i]) for i in clicked), 0.2 * 32768)
            self.assertGreater(min(abs(before[i] - wanted[i]) for i in clicked), 0.4 * 32768)
            self.assertEqual([i for i in range(len(before)) if before[i] == wanted[i] and restored[i] != before[i]], [])

    def test_power_curve(self):
        _, plain = self.restored("--power", "1")
        _, curved = self.restored("--power", "0.5")
        for before, after in zip(plain, curved):
            for x, y in zip(before[::7], after[::7]):
                wanted = (abs(x) / 32768) ** 0.5 * 32768
                self.assertLess(abs(abs(y) - wanted), wanted / 2048 + 1)
                self.assertFalse(x * y < 0)

    def test_one_channel_and_short_sounds(self):
        for frames in (1, 2, 3, 7, 100):
            source = write_wav("short.wav", struct.pack(f"<{frames}h", *range(frames)))
            result = run("--power", "1", source, place("out.wav"), place("out.png"))
            self.assertEqual((result.returncode, result.stderr), (0, ""), frames)
            self.assertEqual(list(read_wav(place("out.wav"))[1][0]), list(range(frames)))


class Refusals(unittest.TestCase):
    def assert_refused(self, code, line, *arguments, **options):
        result = run(*arguments, **options)
        self.assertEqual((result.returncode, result.stdout), (code, ""))
        self.assertRegex(result.stderr, "^ruxtone: .*" + line + ".*\n$")
        self.assertEqual([path.name for path in place(".").glob("wrong*")], [])

    def test_wrong_usage(self):
        names = (clip, place("wrong.wav"), place("wrong.png"))
        self.assert_refused(2, "please")
        self.assert_refused(2, "please", clip, place("wrong.wav"))
        self.assert_refused(2, "not .* too", *names, "more")
        self.assert_refused(2, "there is no option --louder", "--louder", *names)
        self.assert_refused(2, "--mask wants a value", *names, "--mask")
        self.assert_refused(2, "--mask wants an odd number", "--mask", "4", *names)
        self.assert_refused(2, "--power wants", "--power", "nan", *names)
        self.assert_refused(2, "two names", clip, place("wrong.wav"), place("wrong.wav"))

    def test_wrong_input(self):
        out = (place("wrong.wav"), place("wrong.png"))
        self.assert_refused(1, "No such file", place("nowhere.wav"), *out)
        self.assert_refused(1, "8|16 bits", write_wav("bytes.wav", bytes(100), width=1), *out)
        self.assert_refused(1, "3 channels", write_wav("three.wav", bytes(600), channels=3), *out)
        self.assert_refused(1, "no sound", write_wav("empty.wav", b""), *out)
        place("text.wav").write_text("not a sound")
        self.assert_refused(1, "text.wav", place("text.wav"), *out)

    def test_full_disk(self):
        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))

        self.assert_refused(1, "cannot write", clip, place("wrong.wav"), place("wrong.png"), preexec_fn=limit)
        self.assert_refused(1, "No space left", clip, "/dev/full", place("wrong.png"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
