#!/usr/bin/env python3
"""Counts code lines the way cloc does (no blank lines, no comment-only lines)
for the groups the test gate reports: the shipped product, the tests and the
stand-in host. Prints one line per ratio; exits 0 always (it only reports).

    scripts/lib/count_lines.py [ROOT]
"""
import os
import subprocess
import sys

# What is not the shipped product: fixtures, tests, benchmarks, prose.
NOT_PRODUCT = ("tests/", "hostide/", "bench/", "docs/", ".ci/")
# The demo's tour drives the product for screenshots; it proves nothing.
NOT_TESTS = ("tests/tour/",)

C_LIKE = (".cpp", ".h", ".c", ".rc", ".in")
HASH_LIKE = (".cmake", ".py", ".sh")


def kind_of(path, root):
    name = os.path.basename(path)
    if name == "CMakeLists.txt":
        return "#"
    ext = os.path.splitext(name)[1].lower()
    if ext in C_LIKE:
        return "c"
    if ext in HASH_LIKE:
        return "#"
    if ext == ".def":
        return ";"
    if ext == "":
        try:
            with open(os.path.join(root, path), "rb") as f:
                if f.read(2) == b"#!":
                    return "#"
        except OSError:
            pass
    return None


def code_lines(text, kind):
    count = 0
    in_block = False
    for line in text.splitlines():
        s = line.strip()
        if kind == "c":
            # Strip block comments and a trailing line comment; what is left
            # is code. Strings holding comment markers are rare enough here.
            code = ""
            i = 0
            while i < len(s):
                if in_block:
                    end = s.find("*/", i)
                    if end < 0:
                        i = len(s)
                    else:
                        in_block = False
                        i = end + 2
                elif s.startswith("/*", i):
                    in_block = True
                    i += 2
                elif s.startswith("//", i):
                    break
                else:
                    code += s[i]
                    i += 1
            if code.strip():
                count += 1
        else:
            if s and not s.startswith(kind):
                count += 1
    return count


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "..")
    root = os.path.abspath(root)
    files = subprocess.run(["git", "-C", root, "ls-files"], capture_output=True,
                           text=True, check=True).stdout.split("\n")
    groups = {"product": 0, "tests": 0, "hostide": 0}
    for path in filter(None, files):
        kind = kind_of(path, root)
        if kind is None or not os.path.isfile(os.path.join(root, path)):
            continue
        with open(os.path.join(root, path), encoding="utf-8", errors="replace") as f:
            n = code_lines(f.read(), kind)
        if path.startswith("hostide/"):
            groups["hostide"] += n
        elif path.startswith("tests/"):
            if not path.startswith(NOT_TESTS):
                groups["tests"] += n
        elif not path.startswith(NOT_PRODUCT):
            groups["product"] += n
    product = max(groups["product"], 1)
    print("== lines: product %d, tests %d (%d%% of product), stand-in host %d"
          % (groups["product"], groups["tests"], round(100 * groups["tests"] / product),
             groups["hostide"]))


if __name__ == "__main__":
    main()
