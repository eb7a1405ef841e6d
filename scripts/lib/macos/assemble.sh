# Sourced. From the sources to a bundle that is whole, but not signed.

check_tools() {
    [[ -z $dry_run ]] || return 0
    step "Tools"
    [[ $(uname) == Darwin ]] || fail "A package is made on a Mac. Elsewhere: --dry-run."
    local tool missing=()
    for tool in cmake ninja /usr/bin/python3 \
        codesign ditto hdiutil osascript otool security spctl xattr xcrun; do
        command -v "$tool" >/dev/null || missing+=("$tool")
    done
    ((!${#missing[@]})) || fail "Please install: ${missing[*]} (Xcode's command line tools, CMake, Ninja)."
}

check_wishes() {
    step "What was asked for"
    [[ -z $build_number || $build_number =~ ^[0-9]+$ ]] ||
        fail "ZORVANE_BUILD is \"$build_number\", which is not a whole number."
    if [[ $identity == - ]]; then
        note "no ZORVANE_SIGNING_IDENTITY: signed ad hoc, the filter cannot be activated"
        [[ -z $notary ]] || fail "Only what is signed with an identity can be notarised: set ZORVANE_SIGNING_IDENTITY."
    else
        [[ -n $profile ]] || fail "Signing with an identity takes the provisioning profile: set ZORVANE_PROFILE."
        [[ -n $build_number ]] || fail "Every release has a build number of its own: set ZORVANE_BUILD."
        [[ -f $profile || -n $dry_run ]] || fail "$profile: there is no such provisioning profile."
    fi
    [[ -n $notary ]] || note "no ZORVANE_NOTARY_PROFILE: not notarised, other Macs will refuse it"
    [[ -n $build_number ]] || note "no ZORVANE_BUILD: build 1, which is not for releases"
    [[ -n $extension ]] || note "no ZORVANE_FILTER_EXTENSION: protection cannot be turned on"
}

check_sources() {
    step "Property lists of the sources"
    look "A property list cannot be read." python bundle lint \
        "packaging/macos/$identifier.update-agent.plist" packaging/macos/Zorvane.entitlements
}

build_programs() {
    step "Build"
    if [[ -n $dry_run ]]; then
        build_stand_ins
    else
        built=$work/build
        configure "$built" . -DCMAKE_BUILD_TYPE=Release -DZORVANE_BUILD_TESTS=OFF
        look "The build failed." cmake --build "$built"
    fi
}

# configure BUILD SOURCES OPTION...
configure() {
    look "The build could not be configured." cmake -S "$2" -B "$1" -G Ninja \
        --log-level=WARNING -DZORVANE_BUILD="${build_number:-1}" \
        -DZORVANE_FILTER_EXTENSION="$extension" "${@:3}"
}

# A bundle by the same rules, with programs that do nothing. Ends with 77 where there is nothing to
# link them with.
build_stand_ins() {
    local make_icon=$build/tools/icon_family/zorvane-make-icon toolchain=()
    if [[ -z $build ]]; then
        look "Packages are missing." install_packages run test
        make_icon=$work/build/tools/icon_family/zorvane-make-icon
        configure "$work/build" . -DCMAKE_BUILD_TYPE=Release -DZORVANE_BUILD_TESTS=OFF
        look "The build failed." cmake --build "$work/build" --target zorvane-make-icon
    fi
    if [[ $(uname) != Darwin ]]; then
        find_linker
        toolchain=(--toolchain "$PWD/tests/packaging/stand_ins/toolchain.cmake")
    fi
    built=$work/stand-ins
    configure "$built" tests/packaging/stand_ins ${toolchain[@]+"${toolchain[@]}"} \
        -DZORVANE_MAKE_ICON="$(cd "$(dirname "$make_icon")" && pwd)/zorvane-make-icon"
    look "The stand-ins for the programs could not be built." cmake --build "$built"
    note "programs that do nothing stand in; Qt's part is left out"
}

find_linker() {
    local tool
    for tool in clang++ lld; do
        command -v "$tool" >/dev/null && continue
        echo "SKIPPED: $tool is not installed; programs for macOS cannot be linked."
        exit 77
    done
}

assemble_bundle() {
    step "Assemble $app"
    rm -rf "$stage"
    look "The bundle could not be assembled." cmake --install "$built" --prefix "$stage"
}

check_bundle() {
    step "Check the bundle"
    local parts=(--qt)
    [[ -z $dry_run ]] || parts=()
    look "The bundle is not whole." python bundle check "$app" \
        packaging/macos/Zorvane.entitlements ${parts[@]+"${parts[@]}"}
    echo "   layout, property lists, identifiers and entitlements agree"
    [[ -z $dry_run ]] || return 0
    check_libraries
}

# Each library is in the bundle or part of the system: other Macs have no others.
check_libraries() {
    local file files needed foreign=
    files=$(python signing code "$app") || fail "The bundle's code could not be listed."
    while IFS= read -r file; do
        needed=$(foreign_libraries "$file") || fail "$file: otool cannot read it."
        [[ -z $needed ]] || foreign+="$file needs $needed"$'\n'
    done <<<"$files"
    [[ -z $foreign ]] || fail "Libraries that other Macs do not have:"$'\n'"$foreign"
}

foreign_libraries() {
    "${OTOOL:-otool}" -L "$1" | awk '
        /^\t/ && $1 !~ /^(@rpath|@executable_path|@loader_path|\/System|\/usr\/lib)\// { print $1 }'
}
