#!/usr/bin/env python3
"""same_numbers.py ONE.json OTHER.json: whether two reports say the same. Texts, lists and keys in their order byte for
byte, numbers within 1e-12 of their size: sines differ in the last digit from one system's library to another's."""

import json
import math
import re
import sys


def parts(path):
    """The text without its numbers, and the numbers."""
    with open(path, encoding="utf-8", newline="") as file:
        text = file.read()
    json.loads(text)
    token = re.compile(r'"(?:[^"\\]|\\.)*"|-?\d+(?:\.\d+)?(?:[eE][-+]?\d+)?')
    numbers = []

    def without(match):
        if match[0].startswith('"'):
            return match[0]
        numbers.append(float(match[0]))
        return "#"

    return token.sub(without, text), numbers


def main():
    (text, numbers), (other_text, other_numbers) = map(parts, sys.argv[1:3])
    near = len(numbers) == len(other_numbers) and all(
        math.isclose(a, b, rel_tol=1e-12, abs_tol=1e-12) for a, b in zip(numbers, other_numbers)
    )
    sys.exit(0 if text == other_text and near else "the reports differ")


if __name__ == "__main__":
    main()
