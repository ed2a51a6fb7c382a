# How the scripts at the root speak; sourced by them.
# shellcheck shell=bash

heading() {
    printf '\n=== %s ===\n' "$*"
}

# fail SENTENCE: says what stands in the way, and ends the script.
fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}
