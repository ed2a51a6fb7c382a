# Building by preset; sourced by the scripts that build.
# shellcheck shell=bash

# build PRESET [TARGET...]: configures and builds; everything where no target is named.
build() {
    local preset=$1
    shift
    heading "Building (preset $preset)"
    cmake --preset "$preset" --log-level=NOTICE || fail "the build could not be configured; the reason stands above."
    cmake --build --preset "$preset" ${1:+--target "$@"} || fail "the build failed; the reason stands above."
}
