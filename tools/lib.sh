# What the scripts at the top share. Sourced, with the working directory at the top of the project.

# locked NAME COMMAND...: runs the command while no other one holds the lock of this name in this checkout. The command's children
# do not inherit the lock, so that a server which outlives them does not keep it.
locked() {
    local name=$1
    shift
    mkdir -p build
    {
        if ! flock -n 9; then
            echo "Another build is running in this checkout; waiting for it." >&2
            flock 9
        fi
        "$@" 9>&-
    } 9>"build/$name.lock"
}

# ensure_packages GROUP...: installs what is missing of these groups of packages.txt.
ensure_packages() {
    locked packages install_missing "$@"
}

install_missing() {
    local group package missing=()
    while read -r group package; do
        case " $* " in
            *" $group "*) dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q ' installed$' || missing+=("$package") ;;
        esac
    done < <(grep -v '^#' tools/packages.txt)
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! sudo -n true 2>/dev/null && ! { [ -t 0 ] && command -v sudo >/dev/null; }; then
            echo "These Debian packages are missing; install them first:" >&2
            echo "  apt-get install ${missing[*]}" >&2
            exit 1
        fi
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}" >&2
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -q && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y -o DPkg::Lock::Timeout=600 --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        exit 1
    fi
    rm -f "$log"
}

# build PRESET: configures and builds it, silently unless that fails. Needs the preset's lock.
build() {
    local log=build/$1.log
    [ -d "build/$1" ] || echo "Building ($1); the first time takes a minute or two." >&2
    if ! { cmake --preset "$1" && cmake --build --preset "$1" -- --quiet; } >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        exit 1
    fi
}
