#!/usr/bin/env python3
"""Compiles the public headers, each alone, as a host would: C99 and C++11, every warning an error.

Usage: headers_test.py INCLUDE_DIRECTORY C_COMPILER CXX_COMPILER FLAGS...
"""
import subprocess
import sys
import unittest
from pathlib import Path

LANGUAGES = {"c": ["-x", "c", "-std=c99"], "c++": ["-x", "c++", "-std=c++11"]}
STRICT = ["-Wall", "-Wextra", "-pedantic", "-Werror"]
INCLUDE, COMPILERS, FLAGS = None, {}, []


def compiler(language, source, *options):
    return subprocess.run([COMPILERS[language], *FLAGS, *STRICT, *options, f"-I{INCLUDE}", *LANGUAGES[language], "-"],
                          input=source, text=True, capture_output=True)


def complaints(language, source):
    """What a compiler says of a host's source; empty when it takes it."""
    run = compiler(language, source, "-fsyntax-only")
    return run.stderr if run.returncode else ""


class Headers(unittest.TestCase):
    def setUp(self):
        self.headers = sorted(path.relative_to(INCLUDE).as_posix() for path in INCLUDE.rglob("*.h"))
        self.assertIn("ruxlib.h", self.headers)
        self.assertGreater(len(self.headers), 8)

    def test_each_compiles_alone_and_twice(self):
        for header in self.headers:
            for language in LANGUAGES:
                with self.subTest(header=header, language=language):
                    source = f'#include "{header}"\n' * 2 + "extern int nothing;\n"
                    self.assertEqual(complaints(language, source), "")

    def test_one_includes_all(self):
        read = compiler("c", '#include "ruxlib.h"\n', "-M").stdout.replace("\\\n", " ").split()
        for header in self.headers:
            self.assertIn(str(INCLUDE / header), read)

    def test_offenders_are_refused(self):
        for language, offender in [("c", "int x = 0b1;\n"),
                                   ("c", "int f(int unused) { return 0; }\n"),
                                   ("c", "int f(unsigned a) { return a == -1; }\n"),
                                   ("c++", "struct s { int a[0]; };\n"),
                                   ("c++", '#include "ruxlib/none.h"\n')]:
            self.assertNotEqual(complaints(language, offender), "", offender)


if __name__ == "__main__":
    INCLUDE = Path(sys.argv[1]).resolve()
    COMPILERS = {"c": sys.argv[2], "c++": sys.argv[3]}
    FLAGS = sys.argv[4:]
    unittest.main(argv=sys.argv[:1])
