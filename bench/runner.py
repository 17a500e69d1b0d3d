"""Runs the benchmarks and prints their tables.

runner.py DIRECTORY [family ...] [all] [dll] [--quick] [--all] [--sizes=LEAST-MOST] [--filter=REGEX] [--save=FILE]
          [--against=LIBRARY]

Families: those of the program, each in tables of its own, all of them without any; "all" puts them into one. dll
compares the DLL under Wine with the same operations here. Sizes are lengths, for transforms and permutations orders.
Times are the least of rounds in which the library, at every level, and all peers take turns on the same buffers. A
ratio says how many times as fast the library is: 2.00 is half the other's time. With --against another build of the
shared library races the one of DIRECTORY, both at the level that they choose.
"""

import json
import math
import os
import platform
import re
import subprocess
import sys

WIDE = re.compile("512")  # peers that use wider vectors than avx2 has
CALL_OVERHEAD = 6.0  # ns that a checked call on few elements may cost beyond the bare loop
NOISE = 1.03  # a build that takes longer than that is slower


def processor():
    for line in open("/proc/cpuinfo"):
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.processor()


def cases(program, options):
    """The benchmarks of a program, one by one as they come."""
    run = subprocess.Popen([program, "--benchmark_format=json", *options], stdout=subprocess.PIPE, text=True)
    entry = []
    for line in run.stdout:
        if line.startswith("    {"):
            entry = ["{"]
        elif entry and line.startswith("    }"):
            found = json.loads("".join(entry) + "}")
            entry = []
            found["name"] = found["name"].split("/iterations")[0]
            found["family"], found["operation"] = found["name"].split("/")[:2]
            found["size"] = int(found["size"])
            found["times"] = {name[3:]: value for name, value in found.items() if name.startswith("ns ")}
            if sys.stderr.isatty():
                print(f"\r{found['operation']} {found['size']}\033[K", end="", file=sys.stderr, flush=True)
            yield found
        elif entry:
            entry.append(line)
    if sys.stderr.isatty():
        print("\r\033[K", end="", file=sys.stderr)
    if run.wait() != 0:
        sys.exit(f"{program} failed")


def size_of(case):
    return ("order " if case["order"] else "") + str(case["size"])


def table(families, levels, level, found):
    """The library at one level."""
    measured = {name for case in found for name in case}
    cycles, peak = "clock" in measured, f"peak {level}" in measured
    print(f"\n{', '.join(dict.fromkeys(case['family'] for case in found))}, level {level}")
    print(f"{'operation':<18}{'size':>9}{'time ns':>13}{'rate':>9}{'':<9}" + (f"{'cycles/el':>10}" if cycles else "") +
          (f"{'% of peak':>10}" if peak else "") + f"{'portable':>10}{'best peer':>11}")
    judged = []
    most = (0.0, "")
    for case in found:
        times, size, family = case["times"], case["size"], families[case["family"]]
        own = times[level]
        peers = {name: time for name, time in times.items()
                 if name not in levels and (level == "avx512" or not WIDE.search(name))}
        line = f"{case['operation']:<18}{size_of(case):>9}{own:>13.1f}{case['work'] / own:>9.2f} {family['unit']:<8}"
        if cycles:
            line += f"{own / case['clock'] / case['elements']:>10.3f}" if "clock" in case else f"{'':>10}"
        if peak:
            reached = case.get(f"peak {level}", 0) * case["peakWork"] / own
            line += f"{100 * reached:>10.1f}" if reached else f"{'':>10}"
        line += f"{times['portable'] / own:>10.2f}"
        if peers:
            best = min(peers, key=peers.get)
            line += f"{peers[best] / own:>11.2f}  {best}"
            rival = family["against"] or best
            if case["goal"] and rival in peers:
                against = peers[rival] / own
                missed = round(against, 2) < case["goal"]
                judged.append((missed, against, f"{case['operation']} at {size}"))
                line += "  <" if missed else ""
            bare = [time for name, time in peers.items() if name.startswith("plain")]
            if size == 8 and bare and family["shortCalls"]:
                over = own - min(bare)
                line += f"  (bare loop {over:+.1f} ns)"
                most = max(most, (over, case["operation"]))
        print(line)
    low = sorted(one[1:] for one in judged if one[0])
    if judged:
        print(f"target met by {len(judged) - len(low)} of {len(judged)}" +
              (f"; lowest {low[0][0]:.2f}: {low[0][1]}" if low else ""))
    if most[1]:
        print(f"a checked call on 8 elements takes at most {most[0]:.1f} ns more than the bare loop ({most[1]}; "
              f"target {CALL_OVERHEAD:.0f})")


def compare(program, options, old, new):
    """Two builds of the library in the same rounds. What seems to differ is measured twice more, in more rounds."""
    options = options + [f"--library=new={new}", f"--library=old={old}"]
    found = {case["name"]: case for case in cases(program, options)}
    ratio = {}
    for more in (True, True, False):
        ratio = {name: case["times"]["old"] / case["times"]["new"] for name, case in found.items()}
        differing = [re.escape(name) for name in ratio if more and not 1 / NOISE < ratio[name] < NOISE]
        if not differing:
            break
        options = [word for word in options if word != "--quick" and not word.startswith("--benchmark_filter=")]
        for case in cases(program, options + [f"--benchmark_filter=^({'|'.join(differing)})/"]):
            times = found[case["name"]]["times"]
            times.update({name: min(time, times[name]) for name, time in case["times"].items()})
    print(f"\n{'operation':<18}{'size':>9}{'old ns':>13}{'new ns':>13}{'old/new':>10}")
    for name, case in found.items():
        print(f"{case['operation']:<18}{size_of(case):>9}{case['times']['old']:>13.1f}{case['times']['new']:>13.1f}"
              f"{ratio[name]:>10.2f}{'  <' if ratio[name] * NOISE < 1 else ''}")
    slower = sorted((one, name) for name, one in ratio.items() if one * NOISE < 1)
    faster = sum(one > NOISE for one in ratio.values())
    if ratio:
        mean = math.exp(sum(map(math.log, ratio.values())) / len(ratio))
        print(f"geometric mean {mean:.3f}; of {len(ratio)}, slower by more than 3%: {len(slower)}, faster: {faster}")
    for one, name in slower:
        print(f"  {one:.2f}  {name}")


def dll(directory):
    """The same operations through the DLL under Wine and natively, both at level avx2, in turns."""
    top = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    here = [os.path.join(directory, "bench_dll")]
    there = [os.path.join(top, "script", "wine"), os.path.join(top, "build", "win32", "bench_dll.exe")]

    def measured(command):
        text = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout
        return {tuple(line.split()[:2]): float(line.split()[2]) for line in text.splitlines()}

    native, windows = [], []
    for _ in range(5):
        native.append(measured(here))
        windows.append(measured(there))
    print("\ndll: native and under Wine, level avx2")
    print(f"{'operation':<18}{'size':>7}{'native ns':>13}{'DLL ns':>13}{'ratio':>10}")
    met = 0
    for key in native[0]:
        own = min(run[key] for run in windows)
        other = min(run[key] for run in native)
        met += other / own >= 0.6
        print(f"{key[0]:<18}{key[1]:>7}{other:>13.1f}{own:>13.1f}{other / own:>10.2f}"
              f"{'' if other / own >= 0.6 else '  <'}")
    print(f"target 0.60 met by {met} of {len(native[0])}")


def main():
    directory, words = sys.argv[1], sys.argv[2:]
    program = os.path.join(directory, "vekm6_bench")
    known = json.loads(subprocess.run([program, "--families"], stdout=subprocess.PIPE, check=True).stdout)
    families, levels = known["families"], known["levels"]

    def take(name):
        nonlocal words
        taken = [word.split("=", 1)[1] for word in words if word.startswith(name)]
        words = [word for word in words if not word.startswith(name)]
        return taken[-1] if taken else None

    save, old = take("--save="), take("--against=")
    options = [word.replace("--filter=", "--benchmark_filter=") for word in words if word.startswith("--")]
    chosen = [word for word in words if not word.startswith("--")] or list(families)
    unknown = [word for word in chosen if word not in families and word not in ("all", "dll")]
    if unknown:
        sys.exit(f"no family {unknown[0]}; there are {', '.join(families)}; all, dll")

    core = max(os.sched_getaffinity(0))
    os.sched_setaffinity(0, {core})
    print(f"{processor()}, {os.cpu_count()} processors, on number {core}; {platform.system()} {platform.release()}, "
          f"load {os.getloadavg()[0]:.1f}")
    kept = {}
    for one in chosen:
        of = options + ([] if one == "all" else [f"--family={one}"])
        if one == "dll":
            dll(directory)
        elif old:
            compare(program, of, old, os.path.join(os.path.dirname(directory), "libvekm6.so"))
        else:
            kept[one] = list(cases(program, of))
            for level in levels:
                if level != "portable" and kept[one]:
                    table(families, levels, level, kept[one])
        sys.stdout.flush()
    if save:
        with open(save, "w") as file:
            json.dump(kept, file, indent=1)


if __name__ == "__main__":
    main()
