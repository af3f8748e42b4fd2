#!/usr/bin/env python3
"""Fails when the includes under src/ make a circle between folders.

A folder is a top-level folder of src/ (src/tools/NAME counts as tools/NAME,
each tool being its own program). An include of "a/b.h" from a file in folder
f is an edge f -> a. Any cycle in that graph is printed and the exit status
is 1, so CI refuses the change that closed it."""
import os
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)


def folder_of(rel):
    parts = rel.split("/")
    if parts[0] == "tools" and len(parts) > 2:
        return "/".join(parts[:2])
    return parts[0] if len(parts) > 1 else ""


def edges(src):
    graph = {}
    for root, _, files in os.walk(src):
        for name in files:
            if not name.endswith((".cpp", ".h", ".c")):
                continue
            path = os.path.join(root, name)
            rel = os.path.relpath(path, src).replace(os.sep, "/")
            mine = folder_of(rel)
            with open(path, encoding="utf-8", errors="replace") as f:
                text = f.read()
            for inc in INCLUDE.findall(text):
                theirs = folder_of(inc)
                if theirs and theirs != mine and os.path.exists(os.path.join(src, inc)):
                    graph.setdefault(mine, {}).setdefault(theirs, []).append(rel)
    return graph


def find_cycle(graph):
    state = {}
    stack = []

    def visit(node):
        state[node] = 1
        stack.append(node)
        for nxt in sorted(graph.get(node, {})):
            if state.get(nxt) == 1:
                return stack[stack.index(nxt):] + [nxt]
            if nxt not in state:
                found = visit(nxt)
                if found:
                    return found
        stack.pop()
        state[node] = 2
        return None

    for node in sorted(graph):
        if node not in state:
            found = visit(node)
            if found:
                return found
    return None


def main():
    src = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "src")
    graph = edges(src)
    cycle = find_cycle(graph)
    if cycle:
        print("layers: the includes make a circle: " + " -> ".join(cycle))
        for a, b in zip(cycle, cycle[1:]):
            print("  %s -> %s by %s" % (a, b, ", ".join(sorted(set(graph[a][b]))[:4])))
        return 1
    print("layers: no circle between the folders of src/ (%d folders)" % len(graph))
    return 0


if __name__ == "__main__":
    sys.exit(main())
