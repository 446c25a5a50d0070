#!/usr/bin/env python3
"""compare_profiles.py FOLDER SAMPLE...: FOLDER holds native-NAME and windows-NAME for each sample.

Both must be the same tree, and both must hold every line of the sample outside its IHV element, byte for byte.
"""
import os
import re
import sys
import xml.etree.ElementTree as tree


def text_of(data):
    """The file's text, and its byte-order mark's encoding; the declaration's name is for others."""
    for mark, encoding in ((b"\xff\xfe", "utf-16-le"), (b"\xfe\xff", "utf-16-be"), (b"\xef\xbb\xbf", "utf-8")):
        if data.startswith(mark):
            return data[len(mark):].decode(encoding)
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return data.decode("cp1252")


def shape(element):
    """A tree without the white space that only separates elements."""
    children = [shape(child) for child in element]
    text = element.text or ""
    if children:
        text = text.strip()
    return element.tag, sorted(element.attrib.items()), text, children


def outside_ihv(data):
    """The bytes before and behind the vendor's element."""
    wide = data[:2] in (b"\xff\xfe", b"\xfe\xff")
    text = data.decode("utf-16" if wide else "latin-1")
    pieces = re.split(r"\s*<(?:\w+:)?IHV\b.*?</(?:\w+:)?IHV>", text, maxsplit=1, flags=re.S)
    return "".join(pieces)


def main(folder, samples):
    problems = []
    for sample in samples:
        name = os.path.basename(sample)
        original = open(sample, "rb").read()
        results = {}
        for build in ("native", "windows"):
            data = open(os.path.join(folder, f"{build}-{name}"), "rb").read()
            text = re.sub(r"^\s*<\?xml[^>]*\?>", "", text_of(data))
            results[build] = shape(tree.fromstring(text))
            if outside_ihv(data) != outside_ihv(original):
                problems.append(f"{name}: the {build} build changed bytes outside the vendor's element")
        if results["native"] != results["windows"]:
            problems.append(f"{name}: the builds give different profiles")
    for problem in problems:
        print(problem)
    return bool(problems) or not samples


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
