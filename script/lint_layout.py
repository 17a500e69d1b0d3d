"""The rules of the folders: stems, order of exports, and places that the documents name."""
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parent.parent
faults = []

# A family has one stem everywhere. Where the two precisions are two modules, or a part does not apply, it says so here.
FAMILIES = {
    "frame": {"modules": ["vekframe"], "kernels": False, "bench": False},
    "memory": {"modules": ["vekmem"], "kernels": False, "bench": False},
    "arith": {"modules": ["vekarith"], "kernels": True, "bench": True},
    "vec": {"modules": ["vekvec"], "kernels": True, "bench": True},
    "misc": {"modules": ["vekmisc"], "kernels": True, "bench": True},
    "twd": {"modules": ["vektwd"], "kernels": False, "bench": False},
    "fft": {"modules": ["vekffts", "vekfftd"], "kernels": True, "bench": True},
}


def must_exist(path):
    if not (root / path).exists():
        faults.append(f"{path} is missing")


for stem, family in FAMILIES.items():
    must_exist(f"include/vekm6/{stem}.h")
    must_exist(f"tests/test_{stem}.cpp")
    for module in family["modules"]:
        must_exist(f"_SRC/{module}.cpp")
    if family["kernels"]:
        must_exist(f"kernels/{stem}.h")
        must_exist(f"kernels/{stem}.cpp")
    if family["bench"]:
        must_exist(f"bench/bench_{stem}.cpp")
known = {module for family in FAMILIES.values() for module in family["modules"]}
for path in sorted((root / "_SRC").glob("*.cpp")):
    if path.stem not in known:
        faults.append(f"{path.name} belongs to no family")

# Modules define, and headers declare, in the order of the list.
order = {name: i for i, name in enumerate(re.findall(r"^vek\w+", (root / "exports/vekm6.txt").read_text(), re.M))}
for folder, pattern in (("_SRC", "*.cpp"), ("include/vekm6", "*.h")):
    for path in sorted((root / folder).glob(pattern)):
        found = [name for name in re.findall(r"\bVEKAPI (vek\w+)\(", path.read_text()) if name in order]
        for before, after in zip(found, found[1:]):
            if order[before] > order[after]:
                faults.append(f"{path.name}: {after} stands after {before}")
                break

# Paths in the documents exist.
for document in [root / "README.md", *sorted((root / "docs").glob("*.md"))]:
    for path in re.findall(r"`((?:_SRC|include|kernels|tests|bench|script|cmake|examples|exports|docs)/[\w./-]+)`",
                           document.read_text()):
        if not (root / path).exists():
            faults.append(f"{document.name} names {path}")

print("\n".join(faults) or "layout: clean")
sys.exit(1 if faults else 0)
