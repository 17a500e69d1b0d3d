"""A kernel object defines its level's table and nothing that a linker could merge or that runs at load time.

usage: check_kernel_symbols.py NM OBJDUMP LEVEL OBJECT ...
"""
import pathlib
import re
import subprocess
import sys

nm, objdump, level = sys.argv[1:4]
faults = []
for path in sys.argv[4:]:
    family = pathlib.Path(path).name.split(".")[0]
    symbols = subprocess.run([nm, "-C", "--defined-only", path], check=True, capture_output=True, text=True).stdout
    shared = []
    for line in symbols.splitlines():
        match = re.match(r"\S* *(\w) (.*)", line)
        if match and (match[1].isupper() or match[1] in "uvw") and not match[2].startswith("."):
            shared.append((match[1], match[2]))
    # r: constant data; d: constant data with addresses, in position-independent code
    if [name for kind, name in shared if kind in "RD"] != [f"vek::{level}::{family}"] or len(shared) != 1:
        faults.append(f"{path}: defines {shared}")
    sections = subprocess.run([objdump, "-h", path], check=True, capture_output=True, text=True).stdout
    if re.search(r"\.(init_array|ctors|CRT\$X)", sections):
        faults.append(f"{path}: has code that runs at load time")
if len(sys.argv) == 4:
    faults.append("no objects")
print("\n".join(faults) or f"{len(sys.argv) - 4} objects are clean")
sys.exit(1 if faults else 0)
