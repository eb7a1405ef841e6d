# Sourced. How a step is told, done and failed.

# step TEXT : what comes next, for a person.
step() {
    echo "== $*"
}

# fail TEXT : says what is wrong and ends.
fail() {
    echo "package-macos: $*" >&2
    exit 1
}

note() {
    echo "   note: $*"
}

# from_here PATH : what the caller calls so, from where he stands; nothing for nothing.
from_here() {
    if [[ -z $1 || $1 == /* ]]; then echo "$1"; else echo "$here/$1"; fi
}

# do_step WHAT_FAILED COMMAND... : needs a Mac, so a dry run only prints it.
do_step() {
    local failure=$1
    shift
    printf '   '
    printf ' %q' "$@"
    printf '\n'
    [[ -z $dry_run ]] || return 0
    "$@" || fail "$failure"
}

# look WHAT_FAILED COMMAND... : works on every system, so a dry run does it too.
look() {
    local failure=$1
    shift
    "$@" || fail "$failure"
}

python() {
    /usr/bin/python3 -B "scripts/lib/macos/$1.py" "${@:2}"
}
