#!/usr/bin/env python3
"""The signal operations on a real sound, beside numpy: signal_numpy_test.py LIBRARY SOUND.wav

The built library is called as it is loaded, at the level of this machine.
"""
import ctypes
import sys
import unittest
import wave

import numpy

library = ctypes.CDLL(sys.argv[1])
with wave.open(sys.argv[2], "rb") as file:
    frames = numpy.frombuffer(file.readframes(file.getnframes()), "<i2").reshape(-1, file.getnchannels())
channels = [numpy.ascontiguousarray(frames[:, channel]) for channel in range(frames.shape[1])]
parts = [slice(0, None), slice(1, 30001), slice(7, 8), slice(20000, 20003), slice(30011, 62800)]   # of a channel
even_mask = 5   # the warning


def pointer(array):
    assert array.flags.c_contiguous
    return array.ctypes.data_as(ctypes.c_void_p)


def call(name, *arguments):
    """The status; arrays go as pointers."""
    return getattr(library, name)(*(pointer(value) if isinstance(value, numpy.ndarray) else value
                                    for value in arguments))


def pieces():
    return [channel[part] for channel in channels for part in parts]


def floats(samples):
    return samples.astype(numpy.float32) / numpy.float32(32768)


class Signal(unittest.TestCase):
    def test_copy_and_conversion(self):
        for samples in pieces():
            copied, converted = numpy.empty_like(samples), numpy.empty(len(samples), numpy.float32)
            self.assertEqual(call("ruxsCopy_8u", samples, copied, samples.nbytes), 0)
            self.assertEqual(call("ruxsConvert_16s32f", samples, converted, len(samples)), 0)
            numpy.testing.assert_array_equal(copied, samples)
            numpy.testing.assert_array_equal(converted, samples.astype(numpy.float32))

    def test_channels(self):
        for part in parts:
            source = numpy.ascontiguousarray(frames[part])
            length, count = source.shape
            apart = [numpy.empty(length, numpy.int16) for _ in range(count)]
            places = (ctypes.c_void_p * count)(*(channel.ctypes.data for channel in apart))
            self.assertGreaterEqual(call("ruxsDeinterleave_16s", source, count, length, places), 0)
            for channel in range(count):
                numpy.testing.assert_array_equal(apart[channel], source[:, channel])
            joined = numpy.empty_like(source)
            self.assertGreaterEqual(call("ruxsInterleave_16s", places, count, length, joined), 0)
            numpy.testing.assert_array_equal(joined, source)

    def test_threshold(self):
        for samples in pieces():
            for level in -0.01, 0.0, 0.125:
                for operation, right in (4, numpy.minimum), (0, numpy.maximum):
                    values = floats(samples)
                    expected = right(values, numpy.float32(level))
                    self.assertEqual(call("ruxsThreshold_32f_I", values, len(values), ctypes.c_float(level),
                                          operation), 0)
                    numpy.testing.assert_array_equal(values, expected)

    def test_sum_and_mean(self):
        for samples in pieces():
            values = floats(samples)
            wide = values.astype(numpy.float64)
            total, length = wide.sum(), len(wide)
            for name, right, count in ("ruxsSum_32f", total, 1), ("ruxsMean_32f", total / length, length):
                accurate, fast = numpy.empty(1, numpy.float32), numpy.empty(1, numpy.float32)
                self.assertEqual(call(name, values, length, accurate, 2), 0)
                self.assertEqual(call(name, values, length, fast, 1), 0)
                # Whole multiples of 2**-15, of which doubles lose none.
                self.assertEqual(accurate[0], numpy.float32(right))
                # 8192 floats to a lane, each addition right to half a last place of what has come together.
                lost = numpy.abs(wide).sum() / count * 8192 * 2.0 ** -24
                self.assertLessEqual(abs(float(fast[0]) - right), lost + abs(right) * 2.0 ** -24)

    def test_crossings(self):
        for samples in pieces():
            values = samples.astype(numpy.int64)
            right = int((values[1:] * values[:-1] < 0).sum())
            whole, single = numpy.empty(1, numpy.int32), numpy.empty(1, numpy.float32)
            self.assertEqual(call("ruxsSignChangeRate_16s", samples, len(samples), whole), 0)
            self.assertEqual(call("ruxsSignChangeRate_32f", floats(samples), len(samples), single), 0)
            self.assertEqual((int(whole[0]), float(single[0])), (right, right))

    def test_median(self):
        for samples in pieces():
            for mask in 1, 3, 5, 6, 7, 21, 64:
                odd = mask - 1 + mask % 2
                padded = numpy.pad(samples, odd // 2, mode="edge")
                expected = numpy.sort(numpy.lib.stride_tricks.sliding_window_view(padded, odd), axis=1)[:, odd // 2]
                expected[0], expected[-1] = samples[0], samples[-1]
                if len(samples) < 3:
                    expected = samples
                result = numpy.empty_like(samples)
                self.assertEqual(call("ruxsFilterMedian_16s", samples, result, len(samples), mask),
                                 even_mask if mask % 2 == 0 else 0)
                numpy.testing.assert_array_equal(result, expected)

    def test_power(self):
        for samples in pieces():
            values = numpy.abs(floats(samples))
            for exponent in 0.1, 0.5, 0.7, 1.0, 1.5, 2.0, 3.0, 7.25:
                result = numpy.empty_like(values)
                self.assertEqual(call("ruxsPowx_32f_A11", values, ctypes.c_float(exponent), result, len(values)), 0)
                right = values.astype(numpy.float64) ** float(numpy.float32(exponent))
                numpy.testing.assert_array_less(numpy.abs(result - right), right * 2.0 ** -11 + 2.0 ** -149)


unittest.main(argv=sys.argv[:1])
