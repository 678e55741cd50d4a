# What takes more than one command of Subversion. The property set subversion.toml calls it, in the directory for units:
#
#   subversion.sh connect ARCHIVE NAME              makes what lacks of the repository; makes this a working copy of
#                                                   the directory NAME there, and prints its address
#   subversion.sh checkout REVISION LOCK FILE       the archived file, whatever is here; with a LOCK that is not empty
#                                                   it is locked, else a lock of one's own is given up
#   subversion.sh lock FILE                         locks it, if that was not done before
#   subversion.sh checkin OPTION COMMENT FILE       commits the file; OPTION is --no-unlock, --label=..., or empty
#   subversion.sh undo FILE                         throws changes and the lock away
#   subversion.sh add [-kb] FILE COMMENT            puts a file, and the directories that it stands in, into the
#                                                   archive; -kb leaves keywords in it alone
#   subversion.sh list                              what is archived, and who has it locked
#   subversion.sh update REVISION FILE              the archived file, if the one here has no changes
#   subversion.sh fetch REVISION DIRECTORY FILE     writes an archived file into another directory
#   subversion.sh move OLD NEW                      moves a file, or a directory with all in it
#   subversion.sh delete PATH                       removes a file, or a directory with all in it
#
# REVISION is empty or an option such as -r7. What goes wrong is told on the error channel, by the program that could
# not do it. The "@" behind a name keeps Subversion from looking for a revision in it.
set -eu
# The language is taken from LANGUAGE even where the locale is set.
export LC_ALL=C.UTF-8 LANGUAGE=
action=$1
shift

svn() { command svn --non-interactive "$@"; }
directory_of() { case $1 in /*/*|[!/]*/*) printf %s "${1%/*}" ;; /*) printf / ;; *) printf . ;; esac; }

is_known() { svn info -- "$1@" >/dev/null 2>&1; }
has_lock() { svn info -- "$1@" | grep -q '^Lock Token: '; }

# Not quiet: Subversion would not even say who holds the lock. A file may be read-only in spite of a lock.
lock() {
  has_lock "$1" || svn lock -- "$1@"
  chmod u+w -- "$1"
}
give_up_lock() { ! has_lock "$1" || svn unlock -- "$1@"; }

# place_of PATH: where it is in the directory for units, as comments tell it.
units=$PWD
place_of() {
  case $1 in
    "$units"/*) printf %s "${1#"$units"}" | tr -s / | sed 's,^/,,' ;;
    *) printf %s "${1##*/}" ;;
  esac
}

# commit COMMENT PATH...: with the directories above the first path that are new to the archive. Directories without
# what is in them, as other files may wait there; with depth=infinity the paths are committed with all in them.
commit() {
  comment=$1
  shift
  above=$(directory_of "$1")
  parents=0
  while [ "$(svn info --show-item schedule -- "$above@")" = add ]; do
    set -- "$above@" "$@"
    parents=$((parents + 1))
    above=$(directory_of "$above")
  done
  if [ "$depth" = infinity ]; then
    while [ "$parents" -gt 0 ]; do
      svn commit -q --force-log --message="$comment" --depth=empty -- "$1"
      shift
      parents=$((parents - 1))
    done
  fi
  svn commit -q --force-log --message="$comment" --depth="$depth" -- "$@"
}

case $action in
  connect)
    if [ -z "$1" ]; then
      echo 'svn: no archive is set: give the property CMArchive the address of a directory in the repository' >&2
      exit 1
    fi
    archive=${1%/}
    case $archive in
      *://*) ;;
      *)
        if [ ! -e "$archive" ]; then
          mkdir -p -- "$(directory_of "$archive")"
          svnadmin create -- "$archive"
        fi
        archive=file://$archive
        ;;
    esac
    address=$archive/$2
    if ! is_known "$address"; then
      svn mkdir -q --parents --message='A project of Orchard' -- "$address@"
    fi
    # A file that is here already stays as it is.
    svn checkout -q --force -- "$address@" .
    svn info --show-item url -- .
    ;;
  checkout)
    # A version from before the file was there would take it away.
    if [ -n "$1" ]; then svn info "$1" -- "$3@" >/dev/null; fi
    # Nothing is thrown away for a lock that somebody else holds: Subversion says who.
    if [ -n "$2" ] && [ -e "$3" ] && ! has_lock "$3" &&
      svn info -r HEAD -- "$3@" | grep -q '^Lock Token: '; then
      svn lock -- "$3@"
      exit 1
    fi
    svn revert -q -- "$3@"
    svn update -q --parents ${1:+"$1"} -- "$3@"
    if [ -n "$2" ]; then lock "$3"; else give_up_lock "$3"; fi
    ;;
  checkin)
    case $1 in
      --label=*)
        echo "svn: no label '${1#--label=}' can be given: Subversion has none for versions of a file" >&2
        exit 1
        ;;
    esac
    # A comment may be the name of a file: --force-log.
    svn commit -q --force-log ${1:+"$1"} --message="$2" -- "$3@"
    # A commit without changes leaves the lock.
    if [ -z "$1" ]; then give_up_lock "$3"; fi
    ;;
  lock) lock "$1" ;;
  undo)
    svn revert -q -- "$1@"
    give_up_lock "$1"
    ;;
  add)
    keywords=yes
    if [ "$1" = -kb ]; then keywords=; shift; fi
    svn add -q --force --parents -- "$1@"
    # Read-only for everybody who holds no lock.
    svn propset -q svn:needs-lock yes -- "$1@"
    if [ -n "$keywords" ]; then svn propset -q svn:keywords 'Revision Date Author' -- "$1@"; fi
    depth=empty commit "$2" "$1@"
    ;;
  list)
    # By its address: asked for a working copy, Subversion tells no locks of the files in it.
    svn info --recursive -- "$(svn info --show-item url -- .)@"
    ;;
  update)
    if [ -n "$1" ]; then svn info "$1" -- "$2@" >/dev/null; fi
    case $(svn status -q -- "$2@") in
      M*)
        echo "svn: E155000: '$2' has changes that a fetch would lose; check it in, or undo the check out" >&2
        exit 1
        ;;
    esac
    svn update -q --parents ${1:+"$1"} -- "$2@"
    ;;
  fetch)
    from=$3
    if ! is_known "$3"; then
      # Nobody has brought it here yet. In an address a "%" begins a code.
      from=$(svn info --show-item url -- .)/$(printf %s "${3#"$(pwd)"/}" | sed 's/%/%25/g')
    fi
    svn export -q --force "${1:--rHEAD}" -- "$from@" "$2/${3##*/}@"
    ;;
  move)
    # The host may have moved the file itself; an empty directory may be waiting for what comes.
    if [ ! -e "$1" ] && [ -f "$2" ]; then mv -- "$2" "$1"; fi
    # What is being worked on stays so under its new name: its lock is taken anew.
    open=$(cd -- "$(directory_of "$1")" && find "./${1##*/}" -name .svn -prune -o -type f -perm -u+w -print)
    depth=empty
    if [ -d "$1" ]; then
      depth=infinity
      if [ -d "$2" ]; then rmdir -- "$2"; fi
      # A directory can be moved only as a whole of one revision.
      svn update -q -- "$1@"
    fi
    svn move -q --parents -- "$1@" "$2"
    commit "Moved $(place_of "$1") to $(place_of "$2")" "$2@" "$1@"
    if [ -n "$open" ]; then
      printf '%s\n' "$open" | while IFS= read -r file; do
        file=${file#"./${1##*/}"}
        ! is_known "$2$file" || lock "$2$file"
      done
    fi
    ;;
  delete)
    if [ -d "$1" ]; then svn update -q -- "$1@"; fi
    svn delete -q --force -- "$1@"
    svn commit -q --message="Deleted $(place_of "$1")" -- "$1@"
    ;;
  *)
    echo "svn: E000000: no such action: $action" >&2
    exit 1
    ;;
esac
