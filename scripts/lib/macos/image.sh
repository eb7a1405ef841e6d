# Sourced. From a signed bundle to the disk image that is given away.

# notarize FILE : has it looked at by the notary service and waits for the verdict.
notarize() {
    local file=$1 answer=$work/notary.json
    if [[ -n $dry_run ]]; then
        do_step "" xcrun notarytool submit "$file" --keychain-profile "$notary" --wait
        return
    fi
    xcrun notarytool submit "$file" --keychain-profile "$notary" --wait --output-format json \
        >"$answer" || fail "$file could not be handed in for notarisation: $(<"$answer")"
    grep -q '"status" *: *"Accepted"' "$answer" && return
    local id
    id=$(sed -n 's/.*"id" *: *"\([^"]*\)".*/\1/p' "$answer" | head -n 1)
    xcrun notarytool log "$id" --keychain-profile "$notary" >&2 || true
    fail "$file was not notarised; the reasons stand above."
}

# The bundle has a ticket of its own, so that it also opens where there is no network.
notarize_bundle() {
    [[ -n $notary ]] || return 0
    step "Notarise the bundle"
    do_step "The bundle could not be packed." ditto -c -k --keepParent "$app" "$work/Zorvane.zip"
    notarize "$work/Zorvane.zip"
    do_step "The ticket could not be attached to the bundle." xcrun stapler staple "$app"
}

image_path() {
    local version
    version=$(sed -n 's/^project(Zorvane VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
    [[ -n $version ]] || fail "CMakeLists.txt tells no version."
    echo "$work/Zorvane-$version.dmg"
}

# Zorvane beside a link to the Applications folder: installing it is a single drag.
make_image() {
    step "Disk image"
    image=$(image_path)
    local draft=$work/draft.dmg
    rm -f "$image" "$draft"
    ln -sfn /Applications "$stage/Applications"
    do_step "The disk image could not be made." \
        hdiutil create -quiet -volname Zorvane -srcfolder "$stage" -fs HFS+ -format UDRW "$draft"
    arrange_window "$draft"
    do_step "The disk image could not be packed." \
        hdiutil convert -quiet "$draft" -format UDZO -o "$image"
    rm -f "$draft"
    [[ $identity == - ]] ||
        do_step "The disk image could not be signed." \
            codesign --sign "$identity" --timestamp "$image"
}

# The Finder keeps a window's looks on the volume. It is asked, where somebody is logged in.
arrange_window() {
    [[ ! -e /Volumes/Zorvane ]] || fail "Please eject the volume Zorvane first."
    do_step "The disk image could not be opened." hdiutil attach -quiet -noautoopen "$1"
    printf '    osascript %q\n' scripts/lib/macos/arrange-window.applescript
    [[ -z $dry_run ]] || return 0
    osascript scripts/lib/macos/arrange-window.applescript ||
        note "the Finder did not arrange the window; it shows both icons in its own order"
    hdiutil detach -quiet /Volumes/Zorvane || hdiutil detach -quiet -force /Volumes/Zorvane ||
        fail "The disk image could not be closed."
}

notarize_image() {
    [[ -n $notary ]] || return 0
    step "Notarise the disk image"
    notarize "$image"
    do_step "The ticket could not be attached to the image." xcrun stapler staple "$image"
}

# What another Mac will say.
assess() {
    [[ -n $notary ]] || return 0
    step "Assess"
    do_step "This Mac refuses the bundle." spctl --assess --type execute --verbose=2 "$app"
    do_step "This Mac refuses the image." \
        spctl --assess --type open --context context:primary-signature --verbose=2 "$image"
}

tell_result() {
    if [[ -n $dry_run ]]; then
        step "The dry run found nothing wrong. The commands above were printed, not run."
    else
        step "$image is ready."
    fi
}
