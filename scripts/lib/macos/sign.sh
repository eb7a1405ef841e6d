# Sourced. From a whole bundle to a signed one.

# The entitlements of the program, made out for the signer's team.
prepare_entitlements() {
    [[ $identity != - ]] || return 0
    step "Entitlements and provisioning profile"
    do_step "$profile: not a provisioning profile." \
        security cms -D -i "$profile" -o "$work/profile.plist"
    do_step "The profile could not be embedded." \
        cp "$profile" "$app/Contents/embedded.provisionprofile"
    [[ -z $dry_run ]] || return 0
    python signing entitlements packaging/macos/Zorvane.entitlements "$work/profile.plist" \
        "$identifier" >"$entitlements" || fail "The entitlements could not be made out."
    look "The profile does not grant what Zorvane needs." \
        python signing granted "$entitlements" "$work/profile.plist"
}

# How one piece of code is signed, into $options.
options_for() {
    local code=$1
    options=(--force --sign "$identity")
    # Ad hoc signatures have no team, so the hardened runtime would refuse the bundle's libraries.
    [[ $identity == - ]] || options+=(--options runtime --timestamp)
    case $code in
    *.systemextension)
        # Its makers' entitlements; no other program has them.
        options+=(--preserve-metadata=identifier,entitlements)
        ;;
    */Zorvane.app)
        [[ $identity == - ]] || options+=(--entitlements "$entitlements")
        ;;
    */zorvane-update-agent)
        options+=(--identifier "$identifier.update-agent")
        ;;
    esac
}

# Inside out, one piece at a time: what contains another is sealed over it.
sign_code() {
    step "Sign"
    do_step "The bundle cannot be written to." chmod -R u+w "$app"
    # A download's mark, on the profile for example, would go out with the bundle.
    do_step "The bundle's extended attributes could not be cleared." xattr -cr "$app"
    local code options order
    order=$(python signing order "$app") || fail "The bundle's code could not be listed."
    [[ $order == */Zorvane.app ]] || fail "The bundle would not be signed last."
    while IFS= read -r code; do
        options_for "$code"
        do_step "$code could not be signed." codesign "${options[@]}" "$code"
    done <<<"$order"
}

verify_signatures() {
    step "Verify the signatures"
    do_step "The signatures do not hold." codesign --verify --deep --strict --verbose=2 "$app"
    [[ $identity != - && -z $dry_run ]] || return 0
    verify_hardening
    verify_extension
}

# The hardened runtime, which notarisation asks for, on all that runs.
verify_hardening() {
    local code told
    for code in "$app" "$app/Contents/MacOS/zorvane-update-agent" \
        "$app"/Contents/Library/SystemExtensions/*.systemextension; do
        [[ -e $code ]] || continue
        told=$(codesign --display --verbose=2 "$code" 2>&1) || fail "$code: its signature cannot be read."
        [[ $told == *flags=*\(*runtime*\)* ]] ||
            fail "$code is signed without the hardened runtime."
    done
}

# What the extension was entitled to before it was signed again, it has to be afterwards.
verify_extension() {
    local code=$app/Contents/Library/SystemExtensions/$identifier.FilterExtension.systemextension
    [[ -e $code ]] || return 0
    [[ -e $code/Contents/embedded.provisionprofile ]] ||
        fail "$code has no embedded.provisionprofile; its makers have to put it there."
    local entitled
    entitled=$(codesign --display --entitlements - --xml "$code" 2>/dev/null) ||
        fail "$code: its entitlements cannot be read."
    # A development build's filter has another entitlement than a release's.
    local filter
    filter=$(sed -n 's:.*<string>\(content-filter-provider[a-z-]*\)</string>.*:\1:p' "$entitlements")
    [[ $entitled == *"<string>$filter</string>"* ]] || fail "$code is not entitled to filter by $filter."
    [[ $entitled == *"<string>group.$identifier</string>"* ]] || fail "$code is not in the group group.$identifier."
}
