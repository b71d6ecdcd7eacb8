#!/usr/bin/env python3
"""Sees each check of tools/check-library fail on a deliberate offender, and pass on an honest object.

Usage: check_library_test.py COMPILER FLAGS...   (32-bit flags: the offenders hold instructions above their level)
"""
import importlib.machinery
import importlib.util
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

loader = importlib.machinery.SourceFileLoader(
    "check_library", str(Path(__file__).resolve().parent.parent / "tools" / "check-library"))
check_library = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_library", loader))
sys.dont_write_bytecode = True
loader.exec_module(check_library)
COMPILE = []


class Offenders(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def build(self, source, *flags, name="offender.o"):
        target = Path(self.folder.name, name)
        subprocess.run([*COMPILE, *flags, "-x", "c++", "-", "-o", target], input=source, text=True, check=True)
        return str(target)

    def object(self, source, *flags, name="offender.o"):
        return self.build(source, "-c", *flags, name=name)

    def refused(self, check, *arguments):
        with self.assertRaises(check_library.Failure):
            check(*arguments)

    def test_instructions(self):
        # instruction, the lowest column that may hold it
        for instruction, column in (("addl %eax, %eax", 0), ("pxor %mm0, %mm0", 1), ("emms", 1),
                                    ("pavgb %mm0, %mm0", 2), ("xorps %xmm0, %xmm0", 2), ("sfence", 2),
                                    ("xorpd %xmm0, %xmm0", 3), ("paddq %mm0, %mm0", 3), ("movnti %eax, (%eax)", 3),
                                    ("pshufb %xmm0, %xmm0", 4), ("vzeroupper", 4), ("popcnt %eax, %eax", 4), ("pabsb %mm0, %mm0", 4), ("haddps %xmm0, %xmm0", 4),
                                    ("cmovl %eax, %eax", 2)):
            built = self.object(f'void f() {{ asm("{instruction}"); }}')
            for index, level in enumerate(check_library.LEVELS):
                with self.subTest(instruction=instruction, level=level):
                    if index < column:
                        self.refused(check_library.check_instructions, "", [built], level, 32)
                    else:
                        check_library.check_instructions("", [built], level, 32)

    def test_weak_symbols(self):
        weak = self.object("inline int f() { return 1; } int (*g)() = f;")
        self.refused(check_library.check_symbols, "", [weak], "px")
        check_library.check_symbols("", [self.object("static int f() { return 1; } int (*g)() = f;")], "px")

    def test_static_initialiser(self):
        source = "int make(); const int made = make(); int f() { return made; }"
        self.refused(check_library.check_sections, "", [self.object(source)], "px")

    def test_writable_data(self):
        for source in ("int counter;", "int counter = 1;", "thread_local int counter;"):
            with self.subTest(source=source):
                self.refused(check_library.check_sections, "", [self.object(source)], "px")
        check_library.check_sections("", [self.object('extern const char text[] = "x";')], "px")

    def library(self, source, *flags):
        return self.build(source, "-shared", "-Wl,-soname,libruxlib.so.3", *flags, name="libruxlib.so")

    def test_exports_and_needs(self):
        wanted = [(1, "f", 0, "plain")]
        honest = 'extern "C" void f() {}'
        self.assertEqual(check_library.check_elf("", self.library(honest, "-nodefaultlibs", "-lc"), wanted)[1], 1)
        self.refused(check_library.check_elf, "", self.library(honest + ' extern "C" void g() {}'), wanted)
        self.refused(check_library.check_elf, "", self.library("", "-nodefaultlibs", "-lc"), wanted)
        self.refused(check_library.check_elf, "",
                     self.library(honest + " void* made() { return new int; }", "-lm", "-Wl,--no-as-needed"), wanted)

    def test_stubs(self):
        wanted = [(1, "f", 0, "plain")]
        self.refused(check_library.check_stubs, "", self.library('extern "C" int f(int x) { return x ? 1 : 2; }'), wanted)


if __name__ == "__main__":
    COMPILE = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])
