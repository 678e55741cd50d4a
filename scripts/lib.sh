# shellcheck shell=bash disable=SC2034 # the scripts that source it use the lists
# Shared steps of the scripts: installing packages and building. Sourced, not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_packages=(g++ cmake ninja-build pkg-config ccache lld libpcre2-dev libpugixml-dev libtomlplusplus-dev libcli11-dev
                nlohmann-json3-dev libsvn-dev libgtest-dev libgmock-dev libbenchmark-dev)
test_packages=(git sqlite3)
bench_packages=(perl)
fuzz_packages=(clang libclang-rt-14-dev)
tidy_packages=(clang clang-tidy clang-format shellcheck)
tool_packages=(rcs git mercurial cvs subversion locales)

# Installs the named Debian packages that are missing.
install_packages() {
  local missing=() name
  for name in "$@"; do
    dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing: ${missing[*]}" >&2
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Please install these packages: ${missing[*]}" >&2; return 1; }
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET [TARGET...]: configures unless the last configuration succeeded with the same presets, then builds.
build() {
  local preset=$1 directory=build/$1 presets=(CMakePresets.json)
  shift
  [ ! -f CMakeUserPresets.json ] || presets+=(CMakeUserPresets.json)
  local stamp=$directory/configured-from
  if [ ! -f "$directory/build.ninja" ] || ! cat "${presets[@]}" | cmp -s - "$stamp"; then
    rm -f "$stamp"
    cmake --preset "$preset" >/dev/null
    cat "${presets[@]}" >"$stamp"
  fi
  if [ $# -gt 0 ]; then
    cmake --build --preset "$preset" --target "$@"
  else
    cmake --build --preset "$preset"
  fi
}
