# SPDX-License-Identifier: GPL-3.0-or-later
# Sourced after packages.sh by what builds with the presets.

# build PRESET TARGET... : configures anew, with tests also where an older configuration had none.
build() {
    local log="build/$1/configure.log" options=(--preset "$1" -DTAMBO_TESTS=ON -DTAMBO_TEST_EACH=OFF -DTAMBO_PYTHON=ON)
    # Clang takes half of GCC's time for tests, and has compiled them for the sanitizers then.
    [[ $1 == asan ]] || options+=(-DTAMBO_TEST_COMPILER=clang++-16)
    mkdir -p "build/$1"
    cmake "${options[@]}" >"$log" 2>&1 || { cat "$log" >&2; fail "configuring failed"; }
    # The preset has another compiler than when the folder was made: half of what it says is forgotten.
    if grep -q 'require your cache to be deleted' "$log"; then
        cmake --fresh "${options[@]}" >"$log" 2>&1 || { cat "$log" >&2; fail "configuring failed"; }
    fi
    ninja -C "build/$1" --quiet -j "$(nproc)" "${@:2}"
}
