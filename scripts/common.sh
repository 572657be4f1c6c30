# What ./demo, ./check and .ci/run share: packages, configuring, building, testing. Sourced from the repo's root.
# Everything here says nothing, or one line, while all is well, and shows the whole output of a step that fails.
# shellcheck shell=bash

# shellcheck disable=SC2034 # read by those who source this
build_packages=(cmake ninja-build g++ git qt6-base-dev qt6-base-private-dev qt6-svg-dev libgl-dev libgtest-dev libcli11-dev
    rapidjson-dev zlib1g-dev libdeflate-dev libfontconfig-dev librsvg2-bin pkg-config)

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# run NOTE COMMAND...: prints the note, runs the command without a word, and adds how long it took.
run() {
    local note=$1 log started=$SECONDS
    shift
    log=$(mktemp)
    printf '%s ... ' "$note"
    if "$@" >"$log" 2>&1; then
        printf '%d s\n' $((SECONDS - started))
        rm -f "$log"
    else
        printf 'FAILED after %d s\n' $((SECONDS - started))
        cat "$log" >&2
        rm -f "$log"
        fail "$note failed"
    fi
}

is_installed() {
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

as_root() {
    if ((EUID == 0)); then "$@"; else sudo "$@"; fi
}

# install_packages PACKAGE...: installs those that are missing; silent and without network when none is.
install_packages() {
    local package missing=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    if ((EUID != 0)); then
        command -v sudo >/dev/null || fail "not root and no sudo; missing packages: ${missing[*]}"
        sudo -v || fail "sudo refused; missing packages: ${missing[*]}" # ask before output goes to the log
    fi
    run "package lists" as_root apt-get update
    run "installing ${missing[*]}" as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"
}

# build_preset PRESET FOLDER [TARGET...]: configures once, and afresh when the presets changed or the clone was
# moved; then builds what changed, of everything or of the targets.
build_preset() {
    local preset=$1 stamp=$2/.configured targets=()
    (($# < 3)) || targets=(--target "${@:3}")
    if [[ ! $stamp -nt CMakePresets.json || $(<"$stamp") != "$PWD" ]]; then
        run "configure ($preset)" cmake --fresh --preset "$preset"
        printf '%s\n' "$PWD" >"$stamp"
    fi
    run "build ($preset)" cmake --build --preset "$preset" "${targets[@]}" -- --quiet
}

# run_tests PRESET [CTEST-OPTION...]: says only the closing summary when all pass, else everything but the tests that passed.
run_tests() {
    local preset=$1 log passed=true
    log=$(mktemp)
    ctest --preset "$preset" --no-tests=error -j "$(nproc)" "${@:2}" >"$log" 2>&1 || passed=false
    if $passed; then
        sed -n '/tests passed/,$p' "$log" | sed '/^ *$/d'
    else
        grep -vE '^ *(Start +[0-9]+:|[0-9]+/[0-9]+ Test .* Passed )' "$log" >&2 || true
    fi
    rm -f "$log"
    $passed || fail "tests ($preset) failed"
}

# tracked PATTERN...: fills the array `files` with the tracked files; none at all means that git did not answer.
tracked() {
    mapfile -d '' -t files < <(git ls-files -z -- "$@")
    ((${#files[@]})) || { echo "git lists no $*"; return 1; }
}
