# Sourced.

# build PRESET [TARGET...] : configures and builds into build/PRESET.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" --log-level=WARNING
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
