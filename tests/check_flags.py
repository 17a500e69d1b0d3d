"""Each kernel file is compiled with its level's instruction sets and no others; nothing else names any.

usage: check_flags.py COMPILE_COMMANDS
"""
import json
import re
import sys

LEVELS = {
    "portable": set(),
    "sse2": {"-msse2"},
    "avx2": {"-mavx2", "-mfma"},
    "avx512": {"-mavx512f", "-mavx512bw", "-mavx512dq", "-mavx512vl", "-mavx2", "-mfma"},
}
INSTRUCTIONS = re.compile(r"-m(?:sse|avx|fma|bmi|f16c|arch)\S*")
faults = []
counted = 0
for entry in json.load(open(sys.argv[1])):
    command = entry["command"]
    if "-ffast-math" in command:
        faults.append(f"{entry['file']}: -ffast-math")
    level = re.search(r"-DVEK_LEVEL=(\w+)", command)
    if "/googletest/" in entry["file"] or "/bench/" in entry["file"]:
        continue
    allowed = LEVELS[level[1]] if level else set()
    flags = set(INSTRUCTIONS.findall(command))
    if "i686" in command.split()[0]:
        flags -= {"-msse2"} - allowed   # the whole DLL's baseline
    if flags != allowed:
        faults.append(f"{entry['file']}: {sorted(flags)} instead of {sorted(allowed)}")
    counted += level is not None
if not counted:
    faults.append("no kernel files")
print("\n".join(faults) or f"{counted} kernel files carry their level's flags")
sys.exit(1 if faults else 0)
