#!/usr/bin/env python3
"""generate_documents.py COUNT SEED: profiles by chance, a line for each: its kind and, in quotes, its text.

Most are well-formed and near to what hosts hold, the rest odd or broken. documents.json has their shapes: an element is its
name and the list of its texts or, when it only holds others, the elements in it, in the order of the document.
"""
import json
import random
import struct
import sys
from pathlib import Path

SHAPES = json.loads(Path(__file__).with_name("documents.json").read_text())


def one_in(choices):
    return random.randrange(choices) == 0


def maybe(choices, texts):
    """One of the texts, or most times none."""
    return random.choice(SHAPES[texts]) if one_in(choices) else ""


def element(name, content):
    name = maybe(40, "wrong-names") or name
    start = f"<{name}{maybe(12, 'attributes')}"
    if isinstance(content, str):
        inner = maybe(8, "text-mixtures") + random.choice(SHAPES[content]) + maybe(8, "text-mixtures")
    else:
        inner = elements(content)
    return f"{start}/>" if not inner and one_in(2) else f"{start}>{inner}</{name}>"


def elements(shapes):
    separator = "\r\n  " if one_in(3) else ""
    text = ""
    for shape in shapes:
        text += separator + maybe(15, "interludes")
        # Alternatives stand beside each other in the shapes, so that a third goes missing.
        again = not one_in(3)
        while again:
            text += element(*shape)
            again = one_in(25)
    return text + maybe(20, "interludes")


def broken(text):
    place = random.randrange(len(text) + 1)
    head, tail = text[:place], text[place:]
    part = tail[:random.randrange(1, 40)]
    return random.choice([head, head + tail[len(part):], head + part + tail, head + maybe(1, "splinters") + tail])


def shown(text):
    """As the questions of agreed/ write a text: what is no printing 7-bit character as \\uXXXX."""
    units = struct.iter_unpack(">H", text.encode("utf-16-be", "surrogatepass"))
    return "".join(chr(unit) if 0x20 <= unit < 0x7F and unit not in b'"\\' else f"\\u{unit:04X}" for unit, in units)


if __name__ == "__main__":
    random.seed(int(sys.argv[2]))
    for _ in range(int(sys.argv[1])):
        kind, shape = random.choice(list(SHAPES["documents"].items()))
        text = maybe(4, "prologues") + element(*shape) + maybe(30, "interludes")
        while one_in(3):
            text = broken(text)
        print(f'{kind} "{shown(text)}"')
