# Runs the steps that take several commands of RCS. The property set rcs.toml calls it in the directory for units:
#
#   rcs.sh connect ARCHIVE                    creates the archive directory, or directories RCS beside all files
#   rcs.sh add [-kb] ARCHIVE FILE COMMENT     adds a file to RCS; -kb turns keyword expansion off
#   rcs.sh get OPTION... [ARCHIVE-FILE] FILE  gets a file by "co" with these options
#   rcs.sh list ARCHIVE                       prints rlog of all archives, with the names of the files
#   rcs.sh move ARCHIVE OLD NEW               moves a file, or a directory with its contents, and its archives
#   rcs.sh delete ARCHIVE FILE                removes a file; moves its archive to a directory Attic
#
# ARCHIVE is the archive directory; empty if the archives are in directories RCS beside the files. The
# program that fails reports the error on the error channel.
. "${0%/*}/common.sh"
action=$1
keywords=
if [ "$2" = -kb ]; then keywords=-kb; shift; fi
archive=$2

# The directories of archives, and of deleted ones.
can_hold() { case $1 in RCS | Attic) return 1 ;; esac; }

# check_file FILE: also refuses the name of an archive.
check_file() {
  check_names "$1"
  case $1 in *,v) fail "$1: RCS takes it for an archive" ;; esac
}

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

# has_versions ARCHIVE-FILE: whether a version has been checked in.
has_versions() { rlog -x,v -h "$1" | grep -q '^head: *[0-9]'; }

# check_locks PATH: refuses an archive, or a directory with one, that somebody else has locked. RCS takes the user's name
# from the same variables.
check_locks() {
  headers=$(find "$1" -name Attic -prune -o -name '*,v' -type f -exec rlog -x,v -h -L '{}' +)
  locks=$(printf '%s\n' "$headers" | ME=${LOGNAME:-${USER:-$(id -un)}} awk '
    /^Working file: / { file = substr($0, 15) }
    /^locks:/ { locks = 1; next }
    !/^\t/ { locks = 0 }
    locks { name = substr($1, 1, length($1) - 1); if (name != ENVIRON["ME"]) { print file " is locked by " name } }')
  if [ -n "$locks" ]; then fail "$locks; nothing was changed"; fi
}

# read_version FILE: sets versions to the version in the header, which is in the first lines. Starts no program.
read_version() {
  versions=
  lines=0
  while [ "$lines" -lt 9 ] && IFS= read -r line; do
    # shellcheck disable=SC2016 # the keyword
    case $line in
      '$Revision: '*' $')
        versions=${line#*: }
        versions=${versions% *}
        return
        ;;
    esac
    lines=$((lines + 1))
  done <"$1"
}

# is_archived FILE: whether its bytes are those of a version: the one in its header, or else one of the newest twenty.
is_archived() {
  read_version "$1"
  if [ -z "$versions" ]; then
    versions=$(rlog -x,v -N ${archived:+"$archived"} "$1" 2>/dev/null | sed -n 's/^revision \([0-9.]*\).*/\1/p' | head -n 20)
  fi
  for version in $versions; do
    if co -x,v -q -p -r"$version" ${archived:+"$archived"} "$1" 2>/dev/null | cmp -s -- - "$1"; then return 0; fi
  done
  return 1
}

# move_to FROM TO: never overwrites.
move_to() {
  if [ -e "$2" ]; then
    echo "rcs: $2: exists already; $1 was not moved" >&2
    return 1
  fi
  make_directory "$(directory_of "$2")"
  mv -- "$1" "$2"
}

# move OLD NEW: a file, which the host may have moved itself, or a directory; then the archives, if they are elsewhere.
move() {
  from=$1 to=$2
  from_archive= to_archive=
  if [ -d "$from" ]; then
    check_names "$to"
    if [ -d "$to" ]; then rmdir -- "$to"; fi
    if [ -n "$archive" ]; then from_archive=$(in_archive "$from") to_archive=$(in_archive "$to"); fi
    if [ -d "$to_archive" ]; then rmdir -- "$to_archive"; fi
    check_locks "${from_archive:-$from}"
  else
    check_file "$to"
    from_archive=$(archive_of "$from") to_archive=$(archive_of "$to")
    if [ ! -e "$from_archive" ]; then
      echo "rcs: $from_archive: No such file or directory" >&2
      exit 1
    fi
    check_locks "$from_archive"
  fi
  is_here= is_archive_here=
  if [ -e "$from" ]; then is_here=yes; fi
  if [ -n "$from_archive" ] && [ -e "$from_archive" ]; then is_archive_here=yes; fi
  for new in ${is_here:+"$to"} ${is_archive_here:+"$to_archive"}; do
    if [ -e "$new" ]; then
      echo "rcs: $new: exists already; $from was not moved" >&2
      exit 1
    fi
  done
  at_end=finish_or_take_back
  if [ -n "$is_archive_here" ]; then move_to "$from_archive" "$to_archive"; fi
  if [ -n "$is_here" ]; then move_to "$from" "$to"; fi
  at_end=
}

# For at_end, of a move that failed or was interrupted. Each step has happened or not; half of them are taken back.
finish_or_take_back() {
  if { [ -z "$is_here" ] || [ ! -e "$from" ]; } && { [ -z "$is_archive_here" ] || [ ! -e "$from_archive" ]; }; then
    status=0
    return
  fi
  if [ -n "$is_here" ] && [ ! -e "$from" ]; then mv -- "$to" "$from"; fi
  if [ -n "$is_archive_here" ] && [ ! -e "$from_archive" ]; then mv -- "$to_archive" "$from_archive"; fi
  remove_made_directory
}

# For at_end, of an add: an archive without a version would keep the file from being added again.
remove_empty_archive() {
  if [ -e "$archived" ] && ! has_versions "$archived"; then rm -f -- "$archived"; fi
}

# For at_end, of a delete.
finish_delete() {
  if [ -e "$archived" ] || [ ! -e "$attic/$(name_of "$archived")" ]; then return; fi
  if rm -f -- "$file"; then
    status=0
  else
    mv -- "$attic/$(name_of "$archived")" "$archived"
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
    check_file "$file"
    mkdir -p -- "$(directory_of "$archived")"
    # An interrupted add may have left an archive without a version.
    if [ -e "$archived" ] && has_versions "$archived"; then
      echo "rcs: $archived: already exists" >&2
      exit 1
    fi
    at_end=remove_empty_archive
    if [ -n "$keywords" ]; then
      new=-i
      if [ -e "$archived" ]; then new=; fi
      rcs -x,v -q $new -kb -t-'A file of an Orchard model' "$archived" "$file"
    fi
    ci -x,v -q -u -t-'A file of an Orchard model' -m"$4" "$archived" "$file"
    at_end=
    ;;
  get)
    shift
    archived= file=
    for word; do
      case $word in -*) ;; *) archived=$file file=$word ;; esac
    done
    if [ -e "$file" ] && ! is_writable "$file" && ! is_archived "$file"; then keep_copy "$file"; fi
    exec co -x,v -q "$@"
    ;;
  list)
    cd -- "${archive:-.}"
    archives=$(find . -name Attic -prune -o -name '*,v' -type f -exec rlog -x,v -h -N '{}' +)
    printf '%s\n' "$archives" | sed 's|^\(RCS file: .*/\)RCS/\([^/]*,v\)$|\1\2|'
    ;;
  move) move "$3" "$4" ;;
  delete)
    file=$3
    archived=$(archive_of "$file")
    if [ ! -e "$archived" ]; then
      echo "rcs: $archived: No such file or directory" >&2
      exit 1
    fi
    check_locks "$archived"
    attic=$(directory_of "$archived")/Attic
    mkdir -p -- "$attic"
    at_end=finish_delete
    mv --backup=numbered -- "$archived" "$attic/"
    rm -f -- "$file"
    at_end=
    ;;
  *)
    echo "rcs: no such action: $action" >&2
    exit 1
    ;;
esac
