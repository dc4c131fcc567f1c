"""The shared library exports the C interface and the four entry points as C symbols, no others.

usage: exported_symbols.py <nm> <library> <header>...
"""

import re
import subprocess
import sys

# Every toolchain puts a few of its own beside ours, and those of C++ templates.
OTHERS = re.compile(r"_(Z|_.*|init$|fini$|edata$|end$)")
DECLARED = re.compile(r"^(?!typedef)\w[\w *]*[ *](\w+)\(", re.MULTILINE)

nm, library, *headers = sys.argv[1:]
declared = set()
for header in headers:
    with open(header, encoding="utf-8") as text:
        declared.update(DECLARED.findall(text.read()))
if len(declared) < 30 or "DllCanUnloadNow" not in declared:
    sys.exit("The headers were not understood: " + ", ".join(sorted(declared)))
listing = subprocess.run([nm, "-D", "--defined-only", library], check=True, capture_output=True,
                         text=True).stdout
exported = {line.split()[-1].split("@")[0] for line in listing.splitlines()}
exported = {name for name in exported if not OTHERS.match(name)}
for name in sorted(declared ^ exported):
    print(("not exported: " if name in declared else "exported, but not declared: ") + name)
sys.exit(declared != exported)
