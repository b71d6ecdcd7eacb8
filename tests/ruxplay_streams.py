"""Streams for the tests of ruxplay that no encoder at hand makes: clips rewritten bit by bit."""
import itertools
import re
from pathlib import Path

lists = Path(__file__).resolve().parent.parent / "examples" / "mpeg2"


def start_codes(stream, code):
    return [match.start() for match in re.finditer(b"\0\0\1" + re.escape(bytes([code])), stream)]


def extensions(stream, identifier):
    return [at for at in start_codes(stream, 0xB5) if stream[at + 4] >> 4 == identifier]


class Bits:
    """A string of bits to which fields are added."""

    def __init__(self):
        self.text = ""

    def add(self, value, width):
        self.text += format(value, f"0{width}b")
        return self

    def bytes(self):
        text = self.text + "0" * (-len(self.text) % 8)
        return bytes(int(text[at:at + 8], 2) for at in range(0, len(text), 8))


def matrix_extension(*matrices):
    """Intra, non-intra, chroma intra, chroma non-intra: a list of 64 in scan order, or None."""
    bits = Bits().add(3, 4)
    for matrix in matrices:
        bits.add(matrix is not None, 1)
        for weight in matrix or []:
            bits.add(weight, 8)
    return b"\0\0\1\xb5" + bits.bytes()


def with_repeated_fields(stream):
    changed = bytearray(stream)
    for at in extensions(stream, 8):
        changed[at + 7] |= 2   # repeat_first_field
    return bytes(changed)


def with_matrices_behind(stream, picture, *matrices):
    at = extensions(stream, 8)[picture]
    end = stream.index(b"\0\0\1", at + 4)
    return stream[:end] + matrix_extension(*matrices) + stream[end:]


def read_codes(file, name):
    """The bits and values of one of the decoder's lists: right or wrong, the frames tell, for ffmpeg has its own."""
    text = (lists / file).read_text()
    body = re.search(name + r" = \{\n(.*?)\n\};", text, re.S)[1]
    return {row[0].replace(" ", ""): row[1] for row in re.findall(r'\{"([01 ]+)", ([^}]+)\}', body)}


def intra_tables():
    dc = [{bits: int(size) for bits, size in read_codes("code_lists_block.cpp", name).items()}
          for name in ("dctDcSizeLuminance", "dctDcSizeChrominance")]
    # What follows each code of table zero: nothing behind the end of block, 18 bits behind an escape, else the sign.
    ac = {"10": None, "000001": 18, "11": 1}
    for name in ("dctCoefficientsZero", "dctCoefficientsShared"):
        ac.update(dict.fromkeys(read_codes("code_lists_block.cpp", name), 1))
    return dc, ac


class Reader:
    def __init__(self, content):
        self.text = "".join(format(byte, "08b") for byte in content)
        self.at = 0

    def take(self, width):
        self.at += width
        return self.text[self.at - width:self.at]

    def code(self, table):
        for length in range(1, 18):
            bits = self.text[self.at:self.at + length]
            if bits in table:
                return self.take(length)
        raise ValueError("no code at bit %d" % self.at)

    def block(self, dc, ac):
        begin = self.at
        self.take(dc[self.code(dc)])
        while (behind := ac[self.code(ac)]) is not None:
            self.take(behind)
        return self.text[begin:self.at]


def slice_with_vectors(content, tables, vectors):
    """A slice of an I picture of frame DCT in table zero, with a vector in each macroblock."""
    dc, ac = tables
    reader = Reader(content)
    written = Bits()
    written.text += reader.take(6)   # quantiser scale, no extra information
    while "1" in reader.text[reader.at:reader.at + 23]:
        assert reader.take(1) == "1"   # the next macroblock
        kind = reader.code({"1", "01"})
        written.text += "1" + kind + (reader.take(5) if kind == "01" else "") + next(vectors) + next(vectors) + "1"
        for block in range(6):
            written.text += reader.block(dc[block > 3], ac)
    return written.bytes()


def with_concealment_vectors(stream):
    """An I-only stream whose macroblocks carry vectors, which a decoder without losses reads and does not use."""
    tables = intra_tables()
    vectors = itertools.cycle(["1", "0100", "1", "0111", "00101", "1", "00110"])   # f_code 2: a residual of one bit
    pieces = re.split(rb"(?=\x00\x00\x01)", stream)
    for index, piece in enumerate(pieces):
        if piece[3:4] == b"\xb5" and piece[4] >> 4 == 8:
            changed = bytearray(piece)
            changed[4] = 0x82                    # identifier 8, forward horizontal f_code 2
            changed[5] = 0x2F                    # forward vertical f_code 2, no backward ones
            changed[7] |= 0x20                   # concealment_motion_vectors
            pieces[index] = bytes(changed)
        elif len(piece) > 4 and 1 <= piece[3] <= 0xAF:
            pieces[index] = piece[:4] + slice_with_vectors(piece[4:], tables, vectors)
    return b"".join(pieces)
