"""A build at another path gives the same files.

The sources are copied and configured elsewhere, and that build's own commands are run, one by one: everything is
compiled, linked and installed there but for kernels. Of these, which take long and share all flags but those of
instruction sets, the smallest object stands for all; the others are copied from here. Then both builds are installed
to the same prefix, and the files compared.

usage: check_reproducible.py SOURCE_DIR BUILD_DIR CMAKE NINJA [configure option ...]
"""
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

source, build, cmake, ninja = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3], sys.argv[4]


def run(*command, **options):
    done = subprocess.run(command, capture_output=True, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"{command}\n{done.stdout}{done.stderr}")
    return done.stdout


def installed(directory, root):
    run(cmake, "--install", str(directory), "--prefix", "/prefix", env={**os.environ, "DESTDIR": str(root)})
    files = {path.relative_to(root): path for path in sorted(root.rglob("*")) if path.is_file()}
    return {str(name): path.read_bytes() for name, path in files.items()}


with tempfile.TemporaryDirectory() as scratch:
    elsewhere = pathlib.Path(scratch, "a-place-of-another-length")
    copy, other = elsewhere / "copy", elsewhere / "other"
    shutil.copytree(source, copy, ignore=shutil.ignore_patterns("build", "out", ".git", "tests", "bench", "examples"))
    run(cmake, "-S", str(copy), "-B", str(other), "-G", "Ninja", *sys.argv[5:])
    commands = run(ninja, "-C", str(other), "-t", "commands", "vekm6").splitlines()
    outputs = [re.search(r" -o (\S+\.o(?:bj)?) -c ", command) for command in commands]
    kernels = [output[1] for output in outputs if output and "vekm6_core" not in output[1]]
    copied = sorted(kernels, key=lambda name: (build / name).stat().st_size)[1:]
    (other / "CMakeFiles/vekm6.dir").mkdir(parents=True, exist_ok=True)
    for command, output in zip(commands, outputs):
        if output:
            (other / output[1]).parent.mkdir(parents=True, exist_ok=True)
        if output and output[1] in copied:
            shutil.copyfile(build / output[1], other / output[1])
        else:
            run("sh", "-c", command, cwd=other)
    compiled = sum(1 for output in outputs if output) - len(copied)
    if compiled < 10:
        sys.exit(f"only {compiled} files were compiled")

    here, there = installed(build, elsewhere / "1"), installed(other, elsewhere / "2")
    faults = [f"{name} is installed by one build only" for name in sorted(set(here) ^ set(there))]
    for name in sorted(set(here) & set(there)):
        if here[name] != there[name]:
            faults.append(f"{name}: {hashlib.sha256(here[name]).hexdigest()} here, "
                          f"{hashlib.sha256(there[name]).hexdigest()} elsewhere")
        for path in (source, build):
            if str(path).encode() in here[name]:
                faults.append(f"{name} holds the path {path}")
print("\n".join(faults) or f"{len(here)} installed files are the same at two paths, {compiled} objects compiled anew")
sys.exit(1 if faults else 0)
