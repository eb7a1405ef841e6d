# Sourced. From the sources to a bundle that is whole, but not signed.

check_tools() {
    step "Tools"
    local tool missing=()
    for tool in cmake ninja /usr/bin/python3; do
        command -v "$tool" >/dev/null || missing+=("$tool")
    done
    if [[ -z $dry_run ]]; then
        [[ $(uname) == Darwin ]] || fail "A package is made on a Mac. Elsewhere: --dry-run."
        for tool in codesign ditto hdiutil osascript otool security spctl xcrun; do
            command -v "$tool" >/dev/null || missing+=("$tool")
        done
    fi
    ((!${#missing[@]})) || fail "Please install: ${missing[*]} (Xcode's command line tools, CMake, Ninja)."
}

check_wishes() {
    step "What was asked for"
    if [[ $identity == - ]]; then
        note "no ZORVANE_SIGNING_IDENTITY: signed ad hoc, the filter cannot be activated"
        [[ -z $notary ]] || fail "Only what is signed with an identity can be notarised: set ZORVANE_SIGNING_IDENTITY."
    else
        [[ -n $profile ]] || fail "Signing with an identity takes the provisioning profile: set ZORVANE_PROFILE."
        [[ -f $profile || -n $dry_run ]] || fail "$profile: there is no such provisioning profile."
    fi
    [[ -n $notary ]] || note "no ZORVANE_NOTARY_PROFILE: not notarised, other Macs will refuse it"
    [[ -n $extension ]] || note "no ZORVANE_FILTER_EXTENSION: protection cannot be turned on"
}

check_sources() {
    step "Property lists of the sources"
    look "A property list cannot be read." python bundle lint \
        "packaging/macos/$identifier.update-agent.plist" packaging/macos/Zorvane.entitlements
}

build_programs() {
    [[ -z $build ]] || return 0
    step "Build"
    build=$work/build
    # The bundle's files can be made everywhere; the programs are built for the system that runs.
    local target=all
    [[ -z $dry_run ]] || target=zorvane_macos_files
    look "The build could not be configured." cmake -S . -B "$build" -G Ninja \
        --log-level=WARNING -DCMAKE_BUILD_TYPE=Release -DZORVANE_BUILD_TESTS=OFF \
        -DZORVANE_FILTER_EXTENSION="$extension"
    look "The build failed." cmake --build "$build" --target "$target"
}

# Programs of the same kind as the real ones, which do nothing. Ends with 77 where there is nothing
# to link them with.
add_stand_ins() {
    local status=0
    tests/linked_code/link "$work/stand-ins" || status=$?
    ((status != 77)) || exit 77
    ((status == 0)) || fail "The stand-ins for the programs could not be linked."
    mkdir -p "$app/Contents/MacOS"
    cp "$work/stand-ins/tool" "$app/Contents/MacOS/Zorvane"
    cp "$work/stand-ins/tool" "$app/Contents/MacOS/zorvane-update-agent"
    note "stand-ins for the programs; Qt's part is left out"
}

assemble_bundle() {
    step "Assemble $app"
    rm -rf "$stage"
    look "The bundle could not be assembled." cmake --install "$build" --component macos \
        --prefix "$stage"
    [[ -z $dry_run ]] || add_stand_ins
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
    local file foreign found=
    while IFS= read -r file; do
        [[ -f $file ]] || continue
        foreign=$(foreign_libraries "$file")
        [[ -z $foreign ]] || found+="$file needs $foreign"$'\n'
    done < <(find "$app" -type f \( -perm -u+x -o -name '*.dylib' \))
    [[ -z $found ]] || fail "Libraries that other Macs do not have:"$'\n'"$found"
}

foreign_libraries() {
    "${OTOOL:-otool}" -L "$1" 2>/dev/null | awk '
        /^\t/ && $1 !~ /^(@rpath|@executable_path|@loader_path|\/System|\/usr\/lib)\// { print $1 }'
}
