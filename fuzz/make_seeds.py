#!/usr/bin/env python3
"""Makes the seeds of the fuzzers, a folder for each: make_seeds.py FOLDER

They come of the example documents and of the documents in the tests' tables: every string literal of
a test that has a "<" is taken for one. Equal inputs give equal seeds.
"""

import hashlib
import pathlib
import random
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SEPARATOR = b"\xff#\xff#"
LARGEST = 4096
LITERALS = re.compile(r'R"(~?)\((.*?)\)\1"|((?:"(?:[^"\\\n]|\\.)*"\s*)+)', re.DOTALL)
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
ESCAPE = re.compile(r"\\(x[0-9A-Fa-f]+|[0-7]{1,3}|.)", re.DOTALL)
NAMED = {"n": "\n", "r": "\r", "t": "\t", "s": " "}


def unescape(text):
    def character(match):
        code = match.group(1)
        if code[0] == "x":
            return chr(int(code[1:], 16) & 0xFF)
        if code[0] in "01234567":
            return chr(int(code, 8) & 0xFF)
        return NAMED.get(code, code)

    return ESCAPE.sub(character, text)


def to_bytes(text):
    return b"".join(bytes([ord(c)]) if ord(c) < 256 else c.encode() for c in text)


def documents_of(source):
    """The documents in a test: whole literals, and the columns of tables."""
    for _, raw, quoted in LITERALS.findall(source.read_text(encoding="utf-8")):
        rows = re.sub(r"\n +", " ", raw).split("\n") if raw else []
        cases = [unescape(column.strip()) for row in rows for column in row.split("=>")]
        for case in cases or ["".join(unescape(part) for part in LITERAL.findall(quoted))]:
            if "<" in case:
                yield to_bytes(case)


def documents():
    for path in sorted((ROOT / "examples/data").iterdir()):
        if path.suffix in (".xml", ".dtd", ".ent"):
            yield path.read_bytes()
    for path in sorted((ROOT / "tests").rglob("*_test.cpp")):
        yield from documents_of(path)


# With external pieces: general and parameter entities, the subset, and a piece that names itself.
WITH_FILES = [
    (b"<!DOCTYPE a [<!ENTITY e SYSTEM '/dev/fd/91'>]><a>&e;</a>", b"x<b/>y"),
    (b"<!DOCTYPE a SYSTEM '/dev/fd/91'><a>&e;</a>", b"<!ENTITY e 'x'><!ATTLIST a b CDATA 'v'>"),
    (b"<!DOCTYPE a [<!ENTITY % p SYSTEM '/dev/fd/91'>%p;]><a/>", b"<!ELEMENT a ANY>"),
    (b"<!DOCTYPE a [<!ENTITY % p SYSTEM '/dev/fd/91'><!ELEMENT a %p;>]><a/>", b"(b|c)*"),
    (b"<!DOCTYPE a [<!ENTITY e SYSTEM '/dev/fd/91'>]><a>&e;</a>",
     b"<?xml encoding='EUC-JP'?>\xa4\xa2", b""),
    (b"<!DOCTYPE a [<!ENTITY e SYSTEM '/dev/fd/91'><!ENTITY f SYSTEM '/dev/fd/92'>]><a>&e;</a>",
     b"&f;&f;", b"\xfe\xff\x30\x42"),
    (b"<!DOCTYPE a [<!ENTITY e SYSTEM '/dev/fd/91'>]><a>&e;</a>", b"&e;"),
]


def write(folder, seeds):
    folder.mkdir(parents=True)
    for seed in seeds:
        (folder / hashlib.sha1(seed).hexdigest()).write_bytes(seed)


def main():
    target = pathlib.Path(sys.argv[1])
    all_documents = [d for d in documents() if len(d) < LARGEST]
    for folder in ("tree", "reading"):
        seeds = [b"\0" + d for d in all_documents]
        seeds += [b"\x03" + d for d in all_documents[::7]]
        seeds += [b"\x0f" + d for d in all_documents[3::7]]
        seeds += [b"\0" + SEPARATOR.join(pieces) for pieces in WITH_FILES]
        write(target / folder, seeds)
    dice = random.Random(1)
    write(target / "calls", [dice.randbytes(size) for size in (16, 64, 256, 1024) for _ in range(50)])


main()
