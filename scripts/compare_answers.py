#!/usr/bin/env python3
"""Holds the answers of two builds against each other: compare_answers.py SUBJECT NATIVE WINDOWS EXPLAINED

EXPLAINED gives reasons for differences, a line each: subject ("SUBJECT root" for what only root meets), a pattern for
whole lines of "question -> answer" of either build, and the reason, set apart by tabs. A reason that explains no
difference any more is an error.
"""
import difflib
import os
import re
import sys

SHOWN = 20


def read_lines(path):
    with open(path, encoding="ascii") as file:
        return file.read().splitlines()


def read_explanations(path, subject):
    explanations = []
    for line in read_lines(path):
        if not line or line.startswith("#"):
            continue
        about, pattern, reason = line.split("\t")
        if about == subject or (about == f"{subject} root" and os.geteuid() == 0):
            explanations.append({"pattern": re.compile(pattern), "reason": reason, "used": 0})
    return explanations


def question_of(line):
    return line.split(" -> ")[0]


def pair_up(native, windows):
    """Pairs of lines that answer the same question; one that was asked on one build alone has an empty partner."""
    questions = [question_of(line) for line in native], [question_of(line) for line in windows]
    if questions[0] == questions[1]:
        return list(zip(native, windows))
    pairs = []
    for _, i1, i2, j1, j2 in difflib.SequenceMatcher(None, *questions, autojunk=False).get_opcodes():
        if questions[0][i1:i2] == questions[1][j1:j2]:
            pairs += zip(native[i1:i2], windows[j1:j2])
        else:
            pairs += [(line, "") for line in native[i1:i2]] + [("", line) for line in windows[j1:j2]]
    return pairs


def is_explained(pair, explanations):
    for explanation in explanations:
        if any(explanation["pattern"].fullmatch(line) for line in pair):
            explanation["used"] += 1
            return True
    return False


def main(subject, native_path, windows_path, explained_path):
    native, windows = read_lines(native_path), read_lines(windows_path)
    explanations = read_explanations(explained_path, subject)
    differences, explained = [], 0
    for ours, theirs in pair_up(native, windows):
        if ours == theirs:
            continue
        if is_explained((ours, theirs), explanations):
            explained += 1
        else:
            differences.append((ours, theirs))
    print(f"{subject}: {min(len(native), len(windows))} answers compared, {len(differences)} differ, "
          f"{explained} more for a known reason")
    for ours, theirs in differences[:SHOWN]:
        print(f"native:  {ours}\nwindows: {theirs}")
    unused = [explanation for explanation in explanations if not explanation["used"]]
    for explanation in unused:
        print(f"explains nothing any more: {explanation['pattern'].pattern} ({explanation['reason']})")
    return 1 if differences or unused or not native else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
