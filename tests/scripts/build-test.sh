#!/usr/bin/env bash
# build-test.sh LIB: when the shared build step of the scripts configures, seen by a cmake that writes down what it is
# called for.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" "$work/scripts"
cp "$1" "$work/scripts/lib.sh"
cat >"$work/bin/cmake" <<'FAKE'
#!/bin/sh
if [ "$1" = --preset ]; then
  echo configure >>calls
  mkdir -p "build/$2" && : >"build/$2/build.ninja"
  exit "$(cat fails 2>/dev/null || echo 0)"
fi
echo build >>calls
FAKE
chmod +x "$work/bin/cmake"
export PATH=$work/bin:$PATH

# expect WHY CALLS: runs a build in a shell of its own and compares what it called.
expect() {
  rm -f "$work/calls"
  bash -c 'source "$1"; build debug' _ "$work/scripts/lib.sh" || true
  local calls
  calls=$(tr '\n' ' ' <"$work/calls")
  [ "$calls" = "$2 " ] || { echo "$1: expected '$2', got '$calls'"; exit 1; }
}

echo '{}' >"$work/CMakePresets.json"
echo 1 >"$work/fails"
expect "the first time, which fails" "configure"
rm "$work/fails"
expect "after a failure that left build.ninja" "configure build"
expect "configured already" "build"
echo '{ }' >"$work/CMakePresets.json"
expect "other presets" "configure build"
expect "configured from these" "build"
echo '{}' >"$work/CMakeUserPresets.json"
expect "presets of the user's own" "configure build"
expect "configured from both" "build"
rm "$work/build/debug/build.ninja"
expect "no build.ninja" "configure build"
