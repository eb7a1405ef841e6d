# Sourced. Installs what the scripts need, from scripts/packages.txt.

# missing_packages NEED... : prints the packages of these needs that are not installed.
missing_packages() {
    local installed need package command
    installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' | sed -n 's/^installed //p')
    while read -r need package command; do
        [[ " $* " == *" $need "* ]] || continue
        [[ -n $command ]] && command -v "$command" >/dev/null && continue
        grep -qxF "$package" <<<"$installed" || echo "$package"
    done < <(grep -v '^#' scripts/packages.txt)
}

# install_packages NEED... : installs them by apt, as root or by sudo. Asks for nothing, and does
# not touch the network when nothing is missing.
install_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        echo "No apt here: scripts/packages.txt lists what has to be installed (Debian's names)."
        return 0
    fi
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    echo "Installing by apt: ${missing[*]}"
    if ((EUID != 0)); then
        command -v sudo >/dev/null || {
            echo "Please run this as root, or install sudo." >&2
            return 1
        }
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq || echo "apt-get update failed; trying with the lists at hand."
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}"
}
