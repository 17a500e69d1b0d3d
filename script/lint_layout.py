"""The rules of the folders: stems, order of exports, and places that the documents name."""
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parent.parent
faults = []

# The kernels' objects and, up to an underscore, their families: the list that the build reads.
OBJECTS = re.findall(r"^ +X\((\w+), \w+\)", (root / "kernels/families.h").read_text(), re.M)

# A family has one stem everywhere. Where its modules are several, or their name is another, it says so here.
MODULES = {"memory": ["vekmem"], "fft": ["vekffts", "vekfftd"], "goertz": ["vekgrtzl", "vekgrtzw"],
           "dotp": ["vekdotp", "vekdotpw"], "corr": ["vekcorr", "vekcorrw"],
           "conv": ["vekconvs", "vekconvd", "vekconvw"]}
UNMEASURED = {"frame", "memory", "twd"}   # no benchmark
FAMILIES = re.findall(r'^#include "vekm6/(?!types)(\w+)\.h"', (root / "include/vekm6.h").read_text(), re.M)


def must_exist(path):
    if not (root / path).exists():
        faults.append(f"{path} is missing")


def modules_of(stem):
    return MODULES.get(stem, [f"vek{stem}"])


for stem in FAMILIES:
    must_exist(f"include/vekm6/{stem}.h")
    must_exist(f"tests/rows/rows_{stem}.cpp")
    if not (root / f"tests/oracles/{stem}.cpp").exists():
        must_exist(f"tests/test_{stem}.cpp")
    for module in modules_of(stem):
        must_exist(f"_SRC/{module}.cpp")
    if stem not in UNMEASURED:
        must_exist(f"bench/bench_{stem}.cpp")
for name in OBJECTS:
    must_exist(f"kernels/{name}.cpp")
    must_exist(f"kernels/{name.split('_')[0]}.h")
for path in sorted((root / "kernels").glob("*.cpp")):
    if path.stem not in OBJECTS:
        faults.append(f"{path.name} is not in kernels/families.h")
known = {module for stem in FAMILIES for module in modules_of(stem)}
for path in sorted((root / "_SRC").glob("*.cpp")):
    if path.stem not in known:
        faults.append(f"{path.name} belongs to no family")

# Includes go one way: what each floor may stand on.
INTERFACES = "|".join(["kernels/(?:families|tables).h", *(f"kernels/{name.split('_')[0]}.h" for name in OBJECTS)])
FLOORS = {   # folder: the files that its own may include
    "include/": "include/",
    "_SRC/common/": "nothing",
    "_SRC/core/": "include/|_SRC/common/|_SRC/core/",
    "kernels/level/": f"kernels/level/|{INTERFACES}",
    "kernels/": "_SRC/common/|kernels/(?!level/)",
    "_SRC/": f"include/|_SRC/|kernels/level/levels.h|{INTERFACES}",
}


def includes_of(path):
    """The project's own files that a file includes."""
    for name in re.findall(r'^#include "([^"]+)"', path.read_text(), re.M):
        places = [folder / name for folder in (path.parent, root, root / "include", root / "_SRC")]
        yield next((str(p.resolve().relative_to(root)) for p in places if p.exists()), name)


for path in sorted(path for folder in ("include", "_SRC", "kernels") for path in (root / folder).rglob("*.[hc]*")):
    name = str(path.relative_to(root))
    allowed = next(allowed for folder, allowed in FLOORS.items() if name.startswith(folder))
    for included in includes_of(path):
        if not re.match(allowed, included):
            faults.append(f"{name} must not include {included}")

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
