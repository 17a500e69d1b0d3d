"""The list of exports against declarations, definitions and the built library.

usage: check_exports.py SOURCE_DIR LIBRARY NM OBJDUMP
"""
import pathlib
import re
import subprocess
import sys

source, library, nm, objdump = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3], sys.argv[4]
faults = []


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def text(pattern):
    return "\n".join(path.read_text() for path in sorted(source.glob(pattern)))


def compare(what, found, wanted):
    for name in sorted(set(found) - set(wanted)):
        faults.append(f"{what}: {name} is not in the list")
    for name in sorted(set(wanted) - set(found)):
        faults.append(f"{what}: {name} is missing")
    for name in sorted({name for name in found if found.count(name) > 1}):
        faults.append(f"{what}: {name} stands more than once")


listed = [line for line in (source / "exports/vekm6.txt").read_text().split("\n") if line.startswith("vek")]
compare("list", listed, sorted(set(listed)))
literal = re.compile(r"\bVEKAPI (vek\w+)\(")
compare("declarations", literal.findall(text("include/vekm6/*.h")), listed)
compare("definitions", literal.findall(text("_SRC/*.cpp")), listed)

if library.endswith(".dll"):
    dump = run(objdump, "-p", library)
    table = dump[dump.index("[Ordinal/Name Pointer] Table"):].split("\n\n")[0]
    compare("DLL", re.findall(r"\[ *\d+\] (\S+)", table), listed)
    imports = {name.upper() for name in re.findall(r"DLL Name: (\S+)", dump)}
    if not imports <= {"KERNEL32.DLL", "USER32.DLL", "MSVCRT.DLL"}:
        faults.append(f"DLL imports {sorted(imports)}")
    for flag in ("DYNAMIC_BASE", "NX_COMPAT"):
        if flag not in dump:
            faults.append(f"DLL is not marked {flag}")
    if "relocations stripped" in dump or not re.search(r"\.reloc\b", run(objdump, "-h", library)):
        faults.append("DLL has no relocations")
    if not re.search(r"Time/Date stamp\s+0\b", dump):
        faults.append("DLL carries a date")
    if "4.1.51".encode("utf-16-le") not in pathlib.Path(library).read_bytes():
        faults.append("DLL has no version resource")
else:
    symbols = run(nm, "-D", "--defined-only", library)
    names = [line.split()[-1] for line in symbols.split("\n") if line]
    compare("shared object", [name for name in names if name != "VEKM6_4"], [f"{name}@@VEKM6_4" for name in listed])
    for name in re.findall(r" U (\w+)", run(nm, "-D", library)):
        if name in ("getenv", "secure_getenv", "fopen"):
            faults.append(f"shared object calls {name}: nothing outside may steer it")
    if "libvekm6.so.4" not in run(objdump, "-p", library):
        faults.append("shared object has no soname libvekm6.so.4")

print("\n".join(faults) or f"{len(listed)} exports agree")
sys.exit(1 if faults else 0)
