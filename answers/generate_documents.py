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


class Generator:
    def __init__(self, seed):
        self.random = random.Random(seed)

    def one_in(self, choices):
        return self.random.randrange(choices) == 0

    def maybe(self, choices, texts):
        """One of the texts, or most times none."""
        return self.random.choice(SHAPES[texts]) if self.one_in(choices) else ""

    def element(self, name, content):
        name = self.maybe(40, "wrong-names") or name
        start = f"<{name}{self.maybe(12, 'attributes')}"
        if isinstance(content, str):
            inner = self.maybe(8, "text-mixtures") + self.random.choice(SHAPES[content]) + self.maybe(8, "text-mixtures")
        else:
            inner = self.children(content)
        return f"{start}/>" if not inner and self.one_in(2) else f"{start}>{inner}</{name}>"

    def children(self, shapes):
        separator = "\r\n  " if self.one_in(3) else ""
        text = ""
        for shape in shapes:
            text += separator + self.maybe(15, "interludes")
            # Alternatives stand beside each other in the shapes, so that a third goes missing.
            again = not self.one_in(3)
            while again:
                text += self.element(*shape)
                again = self.one_in(25)
        return text + self.maybe(20, "interludes")

    def broken(self, text):
        place = self.random.randrange(len(text) + 1)
        head, tail = text[:place], text[place:]
        part = tail[:self.random.randrange(1, 40)]
        return self.random.choice([head, head + tail[len(part):], head + part + tail, head + self.maybe(1, "splinters") + tail])

    def document(self):
        kind, shape = self.random.choice(list(SHAPES["documents"].items()))
        text = self.maybe(4, "prologues") + self.element(*shape) + self.maybe(30, "interludes")
        while self.one_in(3):
            text = self.broken(text)
        return kind, text


def shown(text):
    """As the questions of agreed/ write a text: what is no printing 7-bit character as \\uXXXX."""
    units = struct.iter_unpack(">H", text.encode("utf-16-be", "surrogatepass"))
    return "".join(chr(unit) if 0x20 <= unit < 0x7F and unit not in b'"\\' else f"\\u{unit:04X}" for unit, in units)


if __name__ == "__main__":
    generator = Generator(int(sys.argv[2]))
    for _ in range(int(sys.argv[1])):
        kind, text = generator.document()
        print(f'{kind} "{shown(text)}"')
