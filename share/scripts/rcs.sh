# Runs the steps that take several commands of RCS. The property set rcs.toml calls it in the directory for units:
#
#   rcs.sh connect ARCHIVE                    creates the archive directory, or directories RCS beside all files
#   rcs.sh add [-kb] ARCHIVE FILE COMMENT     adds a file to RCS; -kb turns keyword expansion off
#   rcs.sh list ARCHIVE                       prints rlog of all archives, with the names of the files
#   rcs.sh move ARCHIVE OLD NEW               moves a file, or a directory with its contents, and its archives
#   rcs.sh delete ARCHIVE FILE                removes a file; moves its archive to a directory Attic
#
# ARCHIVE is the archive directory; empty if the archives are in directories RCS beside the files. The
# program that fails reports the error on the error channel.
set -eu
export LC_ALL=C.UTF-8 LANGUAGE=
action=$1
keywords=
if [ "$2" = -kb ]; then keywords=-kb; shift; fi
archive=$2
units=$(pwd)

# directory_of FILE, name_of FILE: like dirname and basename, but keep line ends at the end of a name.
directory_of() { case $1 in /*/*|[!/]*/*) printf %s "${1%/*}" ;; /*) printf / ;; *) printf . ;; esac; }
name_of() { printf %s "${1##*/}"; }

# The place in the archive directory of a file or directory of the workspace.
in_archive() {
  case $1 in
    "$units"/*) printf %s "$archive${1#"$units"}" ;;
    *) echo "rcs: $1: not in $units, so it has no place in the archive directory" >&2; return 1 ;;
  esac
}

archive_of() {
  if [ -n "$archive" ]; then
    place=$(in_archive "$1") && printf %s "$place,v"
  else
    printf %s "$(directory_of "$1")/RCS/$(name_of "$1"),v"
  fi
}

# move_to FROM TO: never overwrites.
move_to() {
  if [ -e "$2" ]; then
    echo "rcs: $2: exists already; $1 was not moved" >&2
    return 1
  fi
  mkdir -p -- "$(directory_of "$2")"
  mv -- "$1" "$2"
}

move_file() {
  old_archive=$(archive_of "$1")
  new_archive=$(archive_of "$2")
  if [ ! -e "$old_archive" ]; then
    echo "rcs: $old_archive: No such file or directory" >&2
    return 1
  fi
  move_to "$old_archive" "$new_archive"
  # The host may have moved the file itself.
  if [ -e "$1" ]; then
    move_to "$1" "$2" || { mv -- "$new_archive" "$old_archive"; return 1; }
  fi
}

# The target may be an empty directory.
move_directory() {
  if [ -d "$2" ]; then rmdir -- "$2"; fi
  move_to "$1" "$2"
  if [ -n "$archive" ] && [ -d "$(in_archive "$1")" ]; then
    new=$(in_archive "$2")
    if [ -d "$new" ]; then rmdir -- "$new"; fi
    move_to "$(in_archive "$1")" "$new" || { mv -- "$2" "$1"; return 1; }
  fi
}

case $action in
  connect)
    if [ -n "$archive" ]; then
      mkdir -p -- "$archive"
    else
      find . -name RCS -prune -o -type d ! -path '*/.*' -exec mkdir -p -- '{}/RCS' ';'
    fi
    ;;
  add)
    file=$3
    archived=$(archive_of "$file")
    mkdir -p -- "$(directory_of "$archived")"
    if [ -e "$archived" ]; then
      echo "rcs: $archived: already exists" >&2
      exit 1
    fi
    if [ -n "$keywords" ]; then rcs -q -i -kb -t-'A file of an Orchard model' "$archived" "$file"; fi
    ci -q -u -t-'A file of an Orchard model' -m"$4" "$archived" "$file"
    ;;
  list)
    cd -- "${archive:-.}"
    find . -name Attic -prune -o -name '*,v' -type f -exec rlog -h -N '{}' + |
      sed 's|^\(RCS file: .*/\)RCS/\([^/]*,v\)$|\1\2|'
    ;;
  move)
    if [ -d "$3" ]; then move_directory "$3" "$4"; else move_file "$3" "$4"; fi
    ;;
  delete)
    archived=$(archive_of "$3")
    if [ ! -e "$archived" ]; then
      echo "rcs: $archived: No such file or directory" >&2
      exit 1
    fi
    attic=$(directory_of "$archived")/Attic
    mkdir -p -- "$attic"
    mv --backup=numbered -- "$archived" "$attic/"
    rm -f -- "$3"
    ;;
  *)
    echo "rcs: no such action: $action" >&2
    exit 1
    ;;
esac
