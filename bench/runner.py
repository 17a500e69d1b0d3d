"""Runs the benchmark programs and prints their tables.

runner.py DIRECTORY [family ...] [--quick] [--all] [--sizes=LEAST-MOST] [--filter=REGEX] [--save=FILE]

Families: arith vec misc fft (without any: these four), and dll, which compares the DLL under Wine with the same
operations here. Sizes are lengths, for transforms and permutations orders. Times are the least of rounds in which
the library, at every level, and all peers take turns on the same buffers. A ratio says how many times as fast the
library is: 2.00 is half the other's time.
"""

import json
import os
import platform
import re
import subprocess
import sys

FAMILIES = ["arith", "vec", "misc", "fft"]
LEVELS = ["avx512", "avx2"]
WIDE = re.compile("512")  # peers that use wider vectors than avx2 has
CALL_OVERHEAD = 6.0  # ns that a checked call on few elements may cost beyond the bare loop


def target(family, size):
    """What the ratio has to reach, and against whom; None where there is no such target."""
    if family in ("arith", "vec"):
        return None if size < 64 else (1.0 if size == 1024 else 0.95, "")
    if family == "fft":
        return None if size < 4 else (0.8, "FFTW measure")
    return None


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
            times = {name[3:]: value for name, value in found.items() if name.startswith("ns ")}
            yield {"operation": found["name"].split("/")[0], "size": int(found["size"]), "work": found["work"],
                   "times": times}
        elif entry:
            entry.append(line)
    if run.wait() != 0:
        sys.exit(f"{program} failed")


def table(family, level, found):
    unit = "GFLOP/s" if family == "fft" else "Gelem/s"
    size_name = "order" if family in ("fft", "misc") else "n"
    print(f"\n{family}, level {level}")
    print(f"{'operation':<18}{size_name:>7}{'time ns':>13}{unit:>10}{'portable':>10}{'best peer':>11}")
    met = judged = 0
    low = []
    most = (0.0, "")
    for case in found:
        times, size = case["times"], case["size"]
        if level not in times:
            return
        own = times[level]
        levels = {"portable", "avx2", "avx512"}
        peers = {name: time for name, time in times.items()
                 if name not in levels and (level == "avx512" or not WIDE.search(name))}
        line = (f"{case['operation']:<18}{size:>7}{own:>13.1f}{case['work'] / own:>10.2f}"
                f"{times['portable'] / own:>10.2f}")
        if peers:
            best = min(peers, key=peers.get)
            ratio = peers[best] / own
            line += f"{ratio:>11.2f}  {best}"
            goal = target(family, size)
            if goal and (goal[1] in peers or not goal[1]):
                against = peers[goal[1]] / own if goal[1] else ratio
                judged += 1
                if round(against, 2) >= goal[0]:
                    met += 1
                else:
                    low.append((against, f"{case['operation']} at {size}"))
                    line += "  <"
            bare = [time for name, time in peers.items() if name.startswith("plain")]
            if size == 8 and bare and family in ("arith", "vec"):
                over = own - min(bare)
                line += f"  (bare loop {over:+.1f} ns)"
                most = max(most, (over, case["operation"]))
        print(line)
    if judged:
        worst = f"; lowest {min(low)[0]:.2f}: {min(low)[1]}" if low else ""
        print(f"target met by {met} of {judged}{worst}")
    if most[1]:
        print(f"a checked call on 8 elements takes at most {most[0]:.1f} ns more than the bare loop ({most[1]}; "
              f"target {CALL_OVERHEAD:.0f})")


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
        print(f"{key[0]:<18}{key[1]:>7}{other:>13.1f}{own:>13.1f}{other / own:>10.2f}{'' if other / own >= 0.6 else '  <'}")
    print(f"target 0.60 met by {met} of {len(native[0])}")


def main():
    directory = sys.argv[1]
    options = [word for word in sys.argv[2:] if word.startswith("--")]
    families = [word for word in sys.argv[2:] if not word.startswith("--")] or FAMILIES
    unknown = [word for word in families if word not in FAMILIES + ["dll"]]
    if unknown:
        sys.exit(f"no family {unknown[0]}; there are {', '.join(FAMILIES)}, dll")
    save = [word.split("=", 1)[1] for word in options if word.startswith("--save=")]
    options = [word.replace("--filter=", "--benchmark_filter=") for word in options if not word.startswith("--save=")]

    core = max(os.sched_getaffinity(0))
    os.sched_setaffinity(0, {core})
    print(f"{processor()}, {os.cpu_count()} processors, on number {core}; {platform.system()} {platform.release()}, "
          f"load {os.getloadavg()[0]:.1f}")
    kept = {}
    for family in families:
        if family == "dll":
            dll(directory)
            continue
        found = kept[family] = []
        for case in cases(os.path.join(directory, "bench_" + family), options):
            found.append(case)
            if sys.stderr.isatty():
                print(f"\r{case['operation']} {case['size']}\033[K", end="", file=sys.stderr, flush=True)
        if sys.stderr.isatty():
            print("\r\033[K", end="", file=sys.stderr)
        for level in LEVELS:
            table(family, level, found)
        sys.stdout.flush()
    if save:
        with open(save[0], "w") as file:
            json.dump(kept, file, indent=1)


if __name__ == "__main__":
    main()
