# What the scripts beside the property sets share. Each reads this file first.
set -eu
# In English, since patterns match the messages. LANGUAGE counts even if the locale is set.
export LC_ALL=C.UTF-8 LANGUAGE=
units=$PWD

warn() { echo "warning: $*" >&2; }
fail() { echo "error: $*" >&2; exit 1; }

# directory_of FILE, name_of FILE: like dirname and basename, but keep line ends at the end of a name.
directory_of() { case $1 in /*/*|[!/]*/*) printf %s "${1%/*}" ;; /*) printf / ;; *) printf . ;; esac; }
name_of() { printf %s "${1##*/}"; }

# place_of PATH: the path in the directory for units.
place_of() {
  case $1 in
    "$units"/*) printf %s "${1#"$units"}" | tr -s / | sed 's,^/,,' ;;
    *) printf %s "${1##*/}" ;;
  esac
}

# Looks at the permission bits, since every file is writable for an administrator. For others the shell's own test, which
# starts no program, is enough for a read-only file.
is_writable() { [ -w "$1" ] && [ -n "$(find "$1" -prune -perm -u+w 2>/dev/null)" ]; }

# check_names PATH: refuses a path below the directory for units with a part that the tool can't hold, which each
# script lists in can_hold NAME.
check_names() {
  rest=$(place_of "$1")
  while [ -n "$rest" ]; do
    part=${rest%%/*}
    can_hold "$part" || fail "\"$part\" in $1 is a name that the tool can't hold"
    case $rest in */*) rest=${rest#*/} ;; *) rest= ;; esac
  done
}

# keep_copy FILE: keeps a copy beside a file that is about to be overwritten. Never overwrites another copy.
keep_copy() {
  number=1
  while [ -e "$1.kept-$number~" ]; do number=$((number + 1)); done
  cp -p -- "$1" "$1.kept-$number~"
  warn "${1##*/} held changes that are not in the archive, though it was read-only; they are in ${1##*/}.kept-$number~"
}

# make_directory DIRECTORY: like mkdir -p; remove_made_directory removes what it made, unless something is in it.
made=
make_directory() {
  above=$1
  while [ ! -e "$above" ]; do
    made=$above
    above=$(directory_of "$above")
  done
  mkdir -p -- "$1"
}
remove_made_directory() {
  if [ -n "$made" ]; then find "$made" -depth -type d -exec rmdir -- '{}' ';' 2>/dev/null; fi
}

# report_differing FILES: after connect has made files read-only that differ from the archive, one a line.
# On the output channel: after a line on the error channel, the address that connect prints would not be read.
report_differing() {
  {
    warn "these files differ from the archive, and may be older. They are read-only now: a check in is refused, and" \
      "a check out replaces them, and keeps a copy of what the archive does not have"
    printf '%s\n' "$1" | sed 's/^/warning: - /'
  } 2>&1
}

# with_lines COMMAND...: runs a command with the lines of its input as further arguments, if there are any.
with_lines() { tr '\n' '\0' | xargs -0 -r "$@"; }

# A script that takes several steps names in at_end a function that finishes them or takes them back; it sets
# status=0 if the work is done. It runs on every way out, undisturbed by further signals.
at_end=
end() {
  status=$?
  trap '' HUP INT QUIT PIPE TERM
  set +e
  if [ -n "$at_end" ]; then "$at_end"; fi
  exit "$status"
}
trap end EXIT
trap 'exit 1' HUP INT QUIT PIPE TERM
