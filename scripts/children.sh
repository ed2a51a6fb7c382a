# Programs that run beside a script and end with it; sourced by the scripts that start some.
# shellcheck shell=bash disable=SC2034  # first_line is for the sourcing script

children=()
scratch=$(mktemp -d)
trap end_children EXIT

# start COMMAND...: starts the command beside the script, waits until it has printed its first line, and
# leaves that line in $first_line.
start() {
    local pipe=$scratch/first-line ready
    mkfifo "$pipe"
    "$@" >"$pipe" &
    children+=($!)
    # Stays open, so that what the command prints later does not hit a closed pipe.
    exec {ready}<"$pipe"
    rm "$pipe"
    IFS= read -r -t 30 first_line <&"$ready" || fail "$(basename "$1") did not start."
}

end_children() {
    local child
    for child in "${children[@]}"; do
        kill -TERM "$child" 2>/dev/null || true  # it may have ended by itself
    done
    for child in "${children[@]}"; do
        wait "$child" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
