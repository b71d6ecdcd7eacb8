#!/usr/bin/env python3
"""Compiles the public headers, each alone, as a host would: C99 and C++11, every warning an error.

Usage: headers_test.py INCLUDE_DIRECTORY C_COMPILER CXX_COMPILER FLAGS...
"""
import subprocess
import sys
import unittest
from pathlib import Path

INCLUDE, COMPILERS, FLAGS = None, {}, []
STRICT = ["-Wall", "-Wextra", "-pedantic", "-Werror", "-fsyntax-only"]


def compiles(language, source):
    """What the compiler says of a source that a host might write; empty when it takes it."""
    options = {"c": ["-x", "c", "-std=c99"], "c++": ["-x", "c++", "-std=c++11"]}[language]
    run = subprocess.run([COMPILERS[language], *FLAGS, *STRICT, f"-I{INCLUDE}", *options, "-"],
                         input=source, text=True, capture_output=True)
    return run.stderr if run.returncode else ""


class Headers(unittest.TestCase):
    def headers(self):
        found = sorted(str(path.relative_to(INCLUDE)) for path in INCLUDE.rglob("*.h"))
        self.assertIn("ruxlib.h", found)
        self.assertGreater(len(found), 8)
        return found

    def test_each_compiles_alone_and_twice(self):
        for header in self.headers():
            for language in COMPILERS:
                with self.subTest(header=header, language=language):
                    include = f'#include "{header}"\n'
                    self.assertEqual(compiles(language, 2 * include + "extern int nothing;\n"), "")

    def test_one_includes_all(self):
        text = (INCLUDE / "ruxlib.h").read_text()
        for header in self.headers():
            if header == "ruxlib.h":
                continue
            nested = any(f'#include "{header}"' in (INCLUDE / other).read_text() for other in self.headers())
            self.assertTrue(f'#include "{header}"' in text or nested, header)

    def test_offenders_are_refused(self):
        for language, offender in [("c", "// a comment of C++ in pedantic C90 is fine, a binary number is not\nint x = 0b1;\n"),
                                   ("c", "enum { a = 1, b = 2 } e; int f(void) { switch (e) { case a: return 1; } return 0; }\n"),
                                   ("c", "int f(int unused) { return 0; }\n"),
                                   ("c++", "struct s { int a[0]; };\n"),
                                   ("c++", '#include "ruxlib/none.h"\n')]:
            self.assertNotEqual(compiles(language, offender), "", offender)


if __name__ == "__main__":
    INCLUDE = Path(sys.argv[1]).resolve()
    COMPILERS = {"c": sys.argv[2], "c++": sys.argv[3]}
    FLAGS = sys.argv[4:]
    unittest.main(argv=sys.argv[:1], verbosity=1)
