# SPDX-License-Identifier: GPL-3.0-or-later
# Sourced by run and test: installs what .ci/packages.txt lists for them and the system lacks.

say() { printf '== %s\n' "$*"; }
fail() { printf '%s: %s\n' "${0##*/}" "$*" >&2; exit 1; }

# install_missing GROUP... : asks the system first, so that nothing is fetched, and nobody is
# asked for a password, when all is there.
install_missing() {
    local group package missing=() become=()
    while read -r group package; do
        [[ " $* " == *" $group "* ]] || continue
        [[ " ${missing[*]:-} " == *" $package "* ]] && continue
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
            missing+=("$package")
    done < <(grep -v '^#' "$root/.ci/packages.txt")
    ((${#missing[@]})) || return 0

    command -v apt-get >/dev/null ||
        fail "needs these Debian packages, or what your system calls them: ${missing[*]}"
    if ((EUID != 0)); then
        command -v sudo >/dev/null ||
            fail "neither root nor sudo; ask an administrator to run: apt-get install --no-install-recommends ${missing[*]}"
        become=(sudo)
    fi
    say "Installing missing packages: ${missing[*]}"
    "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q ||
        say "The package lists could not be brought up to date; going on with those there are."
    "${become[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}" ||
        fail "the packages could not be installed: ${missing[*]}"
}
