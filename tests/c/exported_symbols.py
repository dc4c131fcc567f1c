"""The shared library exports the C interface and the four entry points as C symbols, no others.

usage: exported_symbols.py <nm> <library> <header>...
"""

import re
import subprocess
import sys

# Every toolchain puts a few of its own beside ours.
TOOLCHAIN = re.compile(r"^_(_.*|init|fini|edata|end)$")
DECLARED = re.compile(r"^(?!typedef)\w[\w *]*[ *](\w+)\(", re.MULTILINE)


def declared(headers):
    names = set()
    for header in headers:
        with open(header, encoding="utf-8") as text:
            names.update(DECLARED.findall(text.read()))
    return names


def exported(nm, library):
    listing = subprocess.run(
        [nm, "-D", "--defined-only", library], check=True, capture_output=True, text=True
    ).stdout
    names = {line.split()[-1].split("@")[0] for line in listing.splitlines()}
    return {name for name in names if not name.startswith("_Z") and not TOOLCHAIN.match(name)}


def main(nm, library, *headers):
    expected = declared(headers)
    found = exported(nm, library)
    if len(expected) < 30 or "DllCanUnloadNow" not in expected:
        sys.exit("The headers were not understood: " + ", ".join(sorted(expected)))
    for name in sorted(expected - found):
        print("not exported: " + name)
    for name in sorted(found - expected):
        print("exported, but not declared: " + name)
    sys.exit(expected != found)


if __name__ == "__main__":
    main(*sys.argv[1:])
