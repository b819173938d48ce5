"""Checks that each piece of C++ in the README stands in one of the examples, which are compiled and
run: a whole program, or lines that follow each other, whatever their indentation."""

import pathlib
import re
import sys

HERE = pathlib.Path(__file__).resolve().parent


def lines_of(code):
    return "".join(line.strip() + "\n" for line in code.splitlines())


programs = [lines_of(path.read_text(encoding="utf-8")) for path in sorted(HERE.glob("*.cpp"))]
readme = (HERE.parent / "README.md").read_text(encoding="utf-8")
pieces = re.findall(r"^```cpp\n(.*?)^```$", readme, re.MULTILINE | re.DOTALL)
strangers = [piece for piece in pieces if not any(lines_of(piece) in p for p in programs)]
for piece in strangers:
    print(f"README.md: in no example:\n{piece}")
sys.exit(1 if strangers or not pieces else 0)
