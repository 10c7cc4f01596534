#!/usr/bin/env python3
"""compare_trees.py A B: exit 0 when the two XML files have the same element
tree (namespace-qualified names, attributes, and each element's text with
whitespace-only pieces ignored), else print the first difference."""
import sys
import xml.etree.ElementTree as ET


def text_of(element):
    pieces = [element.text or ""] + [child.tail or "" for child in element]
    return "".join(p for p in pieces if p.strip())


def describe(path, a, b, what):
    print(f"{path}: {what} differ:\n  {a!r}\n  {b!r}")
    return False


def same(a, b, path):
    if a.tag != b.tag:
        return describe(path, a.tag, b.tag, "names")
    path = f"{path}/{a.tag}"
    if a.attrib != b.attrib:
        return describe(path, a.attrib, b.attrib, "attributes")
    if text_of(a) != text_of(b):
        return describe(path, text_of(a), text_of(b), "texts")
    if len(a) != len(b):
        return describe(path, len(a), len(b), "child counts")
    return all(same(x, y, path) for x, y in zip(a, b))


sys.setrecursionlimit(10000)
sys.exit(0 if same(ET.parse(sys.argv[1]).getroot(), ET.parse(sys.argv[2]).getroot(), "") else 1)
