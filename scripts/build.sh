# Building by preset; sourced by the scripts that build.
# shellcheck shell=bash

# condense: passes on what Ninja prints, but of its status lines only one for every tenth of the way.
condense() {
    local line tenth told=0
    while IFS= read -r line || [[ -n $line ]]; do
        if [[ $line =~ ^\[([0-9]+)/([0-9]+)\]\  ]]; then
            tenth=$((BASH_REMATCH[1] * 10 / BASH_REMATCH[2]))
            ((tenth > told)) || continue
            told=$tenth
            line="${BASH_REMATCH[1]} of ${BASH_REMATCH[2]} steps done"
        fi
        printf '%s\n' "$line"
    done
}

# compile PRESET [TARGET...]: on a terminal with Ninja's own single line, which counts.
compile() {
    local preset=$1
    shift
    local command=(cmake --build --preset "$preset" ${1:+--target "$@"})
    if [[ -t 1 && ${TERM:-dumb} != dumb ]]; then
        "${command[@]}"
    else
        NINJA_STATUS='[%f/%t] ' "${command[@]}" | condense
    fi
}

# build PRESET [TARGET...]: configures and builds; everything where no target is named.
build() {
    local preset=$1
    shift
    local folder=build
    [[ $preset == dev ]] || folder=build/$preset
    heading "Building (preset $preset)"
    [[ -e $folder/.ninja_log ]] || echo "The first build takes a few minutes."
    # Warnings and errors are not among what is left out.
    cmake --preset "$preset" >/dev/null || fail "the build could not be configured; the reason stands above."
    compile "$preset" "$@" || fail "the build failed; the reason stands above."
}
