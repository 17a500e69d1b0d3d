# Sourced by the scripts: the project's folder, and bootstrap when a tool is missing.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)
cd "$top"

need() {
    for tool in "$@"; do
        command -v "$tool" >/dev/null 2>&1 && continue
        "$top/script/bootstrap"
        return
    done
}

# build_preset NAME [TARGET ...]
build_preset() {
    preset=$1
    shift
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" ${1+--target "$@"}
}
