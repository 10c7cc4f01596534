#!/usr/bin/env python3
"""Writes the generated interop documents into a directory: wide vocabularies
that push every table index past its one-octet forms, long texts that take
the long length forms, and deep nesting."""
import os
import sys

out = sys.argv[1]
os.makedirs(out, exist_ok=True)

with open(os.path.join(out, "tables.xml"), "w", encoding="utf-8") as f:
    f.write('<tables xmlns="urn:kvxml:tables">\n')
    for i in range(3000):
        # 3000 element and attribute names, 3000 short values, repeats of each
        f.write(f'<e{i} a{i % 700}="v{i % 1200}" b="{i % 90}">{i % 1500}</e{i}>\n')
    for i in range(0, 3000, 7):
        f.write(f'<e{i} a{i % 700}="v{i % 1200}">{i % 1500}</e{i}>\n')
    f.write("</tables>\n")

with open(os.path.join(out, "long.xml"), "w", encoding="utf-8") as f:
    f.write("<long>")
    for n in (7, 8, 9, 63, 64, 65, 257, 258, 259, 264, 265, 320, 321, 70000):
        f.write(f'<t n="{"a" * n}">{"x" * n}</t><l{"n" * min(n, 400)}/>')
    f.write("</long>\n")

with open(os.path.join(out, "deep.xml"), "w", encoding="utf-8") as f:
    depth = 500
    f.write("".join(f'<d{i % 3} i="{i}">' for i in range(depth)))
    f.write("bottom")
    f.write("".join(f"</d{i % 3}>" for i in reversed(range(depth))))
    f.write("\n")
