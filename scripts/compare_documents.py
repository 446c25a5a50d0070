"""Holds what two builds made of the same generated documents against each other: compare_documents.py NATIVE WINDOWS

Some properties of a document component are not the module's: whether it indents what it writes, whether it keeps the
encoding's name in the declaration, where it writes > as an entity. They are taken out of both answers. Where Wine's component
differs from the documented one in other ways, a document that differs is counted under the reason.
"""
import re
import sys
import xml.parsers.expat
from collections import Counter

SPACES = r"(?:\\u000D|\\u000A|\\u0009| )+"


def read_documents(path):
    """For each document its text and its answers."""
    with open(path, encoding="ascii") as file:
        records = [line.rstrip("\n").split("\t") for line in file]
    return [(text, list(map(neutral, answers))) for text, *answers in records]


def neutral(answer):
    answer = re.sub(f">{SPACES}<", "><", answer)
    answer = re.sub(f"{SPACES}$", "", answer).replace("&gt;", ">")
    return re.sub(r'(<\?xml version="[^"]*") encoding="[^"]*"', r"\1", answer)


def lacks_a_declaration(shown):
    """Whether the text would be well-formed if only its prefixes were declared."""
    text = re.sub(r"\\u([0-9A-F]{4})", lambda match: chr(int(match[1], 16)), shown)
    data = text.encode("utf-16-le", "surrogatepass").decode("utf-16-le", "replace").encode("utf-8")
    parser = xml.parsers.expat.ParserCreate("utf-8", namespace_separator=" ")
    try:
        parser.Parse(data, True)
    except xml.parsers.expat.ExpatError as error:
        return error.code == xml.parsers.expat.errors.codes[xml.parsers.expat.errors.XML_ERROR_UNBOUND_PREFIX]
    return False


KNOWN_REASONS = [
    ("Wine loads a text that uses a namespace prefix without declaring it", lacks_a_declaration),
    ("Wine inserts before an element of another parent (a profile of two MSM sections)",
     lambda text: len(re.findall("<MSM\\b", text)) > 1),
    ("Wine's writer puts no empty namespace declaration, so that the profile's own is the first",
     lambda text: ' xmlns=""' in text),
    ("Wine loads a text that has a name of two colons", lambda text: re.search(r"\w:\w+:", text)),
]


def main(native_path, windows_path):
    native, windows = read_documents(native_path), read_documents(windows_path)
    differences, explained = [], Counter()
    for ours, theirs in zip(native, windows):
        reason = next((reason for reason, holds in KNOWN_REASONS if holds(ours[0])), None)
        if ours != theirs and reason:
            explained[reason] += 1
        elif ours != theirs:
            differences.append((ours[0], [pair for pair in zip(ours[1], theirs[1]) if pair[0] != pair[1]]))
    print(f"documents: {len(native)} documents with {sum(len(answers) for _, answers in native)} answers compared, "
          f"{len(differences)} differ, {explained.total()} more for known reasons")
    for reason, count in explained.most_common():
        print(f"  {count:5}  {reason}")
    for text, answers in differences[:10]:
        print(text)
        print("".join(f"  native:  {one}\n  windows: {other}\n" for one, other in answers), end="")
    return 1 if differences or not native or len(native) != len(windows) else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
