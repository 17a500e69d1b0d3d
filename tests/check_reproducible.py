"""A build at another path gives the same files.

The sources are copied and configured elsewhere, and that build's own commands are run, one by one: everything is
compiled, linked and installed there but for kernels. Of these, which take long and share all flags but those of
instruction sets, the smallest object stands for all; the others are copied from here. Then both builds are installed
to the same prefix, and the files compared.

usage: check_reproducible.py SOURCE_DIR BUILD_DIR CMAKE NINJA [configure option ...]
"""
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
    objects = {match[1]: command for command in commands if (match := re.search(r" -o (\S+\.o(?:bj)?) -c ", command))}
    kernels = [name for name in objects if "vekm6_core" not in name]
    copied = sorted(kernels, key=lambda name: (build / name).stat().st_size)[1:]
    for name in [*objects, "CMakeFiles/vekm6.dir/any"]:
        (other / name).parent.mkdir(parents=True, exist_ok=True)
    for name in copied:
        shutil.copyfile(build / name, other / name)
    for command in commands:
        if command not in [objects[name] for name in copied]:
            run("sh", "-c", command, cwd=other)
    compiled = len(objects) - len(copied)
    if compiled < 10:
        sys.exit(f"only {compiled} files were compiled")

    here, there = installed(build, elsewhere / "1"), installed(other, elsewhere / "2")
    faults = [f"{name} is installed by one build only" for name in sorted(set(here) ^ set(there))]
    faults += [f"{name} differs between the builds" for name in here if here[name] != there.get(name, here[name])]
    faults += [f"{name} holds the path {path}" for name in here for path in (source, build)
               if str(path).encode() in here[name]]
print("\n".join(faults) or f"{len(here)} installed files are the same at two paths, {compiled} objects compiled anew")
sys.exit(1 if faults else 0)
