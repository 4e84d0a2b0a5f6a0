#!/usr/bin/env python3
"""The product's folders form layers, one way down. Reads every quoted
#include of the product and fails (exit 1) on an include that points from a
lower folder into a higher one, or on a cycle between folders; prints the
graph between folders either way.

    scripts/lib/check_layers.py [ROOT]

A folder's layer is its position in LAYERS below (lower first). A folder may
include its own files, any folder of a lower layer and another folder of its
own layer as long as no cycle forms. The one allowed way
up is the application object's header (like a framework's global
application pointer), listed in REACH_UP.
"""
import os
import re
import subprocess
import sys

LAYERS = [
    ["framework"],
    ["controls"],
    ["contract", "hook"],
    ["hostlink", "assist", "project", "comment"],
    ["app"],
    ["res"],  # resource ids and generated art: a header anyone may include
]
# res/ holds ids only; every layer may include it.
ANYONE_MAY_INCLUDE = {"res"}
REACH_UP = {"app/CApp.h"}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')


def layer_of(folder):
    for i, names in enumerate(LAYERS):
        if folder in names:
            return i
    return None


def main():
    root = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else
                           os.path.join(os.path.dirname(__file__), "..", ".."))
    files = subprocess.run(["git", "-C", root, "ls-files"], capture_output=True,
                           text=True, check=True).stdout.split()
    folders = {f.split("/")[0] for f in files if "/" in f and layer_of(f.split("/")[0]) is not None}
    # Where a bare file name lives: folders put each other on the include path.
    where = {}
    for f in files:
        top = f.split("/")[0]
        if top in folders and f.endswith((".h", ".inl")):
            where.setdefault(os.path.basename(f), set()).add(f)

    edges = {}
    up_edges = {}  # the edges that count: no way up that is allowed
    problems = []
    for f in files:
        top = f.split("/")[0]
        if top not in folders or not f.endswith((".cpp", ".h", ".rc")):
            continue
        here = os.path.dirname(f)
        with open(os.path.join(root, f), encoding="utf-8", errors="replace") as src:
            for n, line in enumerate(src, 1):
                m = INCLUDE.match(line)
                if not m:
                    continue
                name = m.group(1)
                local = os.path.normpath(os.path.join(here, name))
                if local in files:
                    target = local
                elif name in files:
                    target = name
                else:
                    found = where.get(os.path.basename(name), set())
                    if len(found) != 1:
                        continue  # generated, or a system header
                    target = next(iter(found))
                dest = target.split("/")[0]
                if dest == top:
                    continue
                edges.setdefault(top, set()).add(dest)
                if dest in ANYONE_MAY_INCLUDE or target in REACH_UP:
                    continue
                up_edges.setdefault(top, set()).add(dest)
                if layer_of(dest) > layer_of(top):
                    problems.append("%s:%d includes %s: %s is not below %s"
                                    % (f, n, target, dest, top))

    # A cycle between folders, ignoring the allowed ways up.
    strict = up_edges
    state = {}

    def visit(node, path):
        state[node] = 1
        for nxt in sorted(strict.get(node, ())):
            if state.get(nxt) == 1:
                cycle = path[path.index(nxt):] + [nxt] if nxt in path else [node, nxt]
                problems.append("cycle: " + " -> ".join(cycle))
            elif nxt not in state:
                visit(nxt, path + [nxt])
        state[node] = 2

    for node in sorted(strict):
        if node not in state:
            visit(node, [node])

    for a in sorted(edges):
        print("== layers: %s -> %s" % (a, ", ".join(sorted(edges[a]))))
    for p in problems:
        print("== layers: " + p)
    if problems:
        print("== layers: %d problem(s)" % len(problems))
        return 1
    print("== layers: one way down, no cycles")
    return 0


if __name__ == "__main__":
    sys.exit(main())
