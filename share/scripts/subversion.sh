# Runs the steps that take several commands of Subversion. The property set subversion.toml calls it in the directory
# for units:
#
#   subversion.sh connect ARCHIVE NAME              creates the repository if missing; makes this a working copy of its
#                                                   directory NAME, and prints the address
#   subversion.sh checkout REVISION LOCK FILE       gets the archived file over any local one; locks it if LOCK is not
#                                                   empty, else releases the user's own lock
#   subversion.sh lock FILE                         locks the file if the user has no lock yet
#   subversion.sh checkin OPTION COMMENT FILE       commits the file; OPTION is --no-unlock, --label=..., or empty
#   subversion.sh undo FILE                         discards changes and releases the lock
#   subversion.sh add [-kb] FILE COMMENT            adds a file and its directories to the archive; -kb turns keyword
#                                                   expansion off
#   subversion.sh list                              lists the archive with the holders of locks
#   subversion.sh update REVISION FILE              gets the archived file if the local one has no changes
#   subversion.sh fetch REVISION DIRECTORY FILE     writes an archived file into another directory
#   subversion.sh move OLD NEW                      moves a file, or a directory with its contents
#   subversion.sh delete PATH                       removes a file, or a directory with its contents
#
# REVISION is empty or an option such as -r7. The program that fails reports the error on the error channel. The "@"
# after a name keeps Subversion from looking for a revision in it.
set -eu
# LANGUAGE counts even if the locale is set.
export LC_ALL=C.UTF-8 LANGUAGE=
action=$1
shift

svn() { command svn --non-interactive "$@"; }
directory_of() { case $1 in /*/*|[!/]*/*) printf %s "${1%/*}" ;; /*) printf / ;; *) printf . ;; esac; }

is_known() { svn info -- "$1@" >/dev/null 2>&1; }
has_lock() { svn info -- "$1@" | grep -q '^Lock Token: '; }

# Without --quiet, which would hide who holds the lock. A file may be read-only in spite of a lock.
lock() {
  has_lock "$1" || svn lock -- "$1@"
  chmod u+w -- "$1"
}
give_up_lock() { ! has_lock "$1" || svn unlock -- "$1@"; }

# place_of PATH: the path in the directory for units, for comments.
units=$PWD
place_of() {
  case $1 in
    "$units"/*) printf %s "${1#"$units"}" | tr -s / | sed 's,^/,,' ;;
    *) printf %s "${1##*/}" ;;
  esac
}

# commit COMMENT PATH...: also commits the new directories above the first path. Commits directories without their
# contents, which may hold other new files; with depth=infinity the paths are committed with their contents.
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
    # An existing file is unchanged.
    svn checkout -q --force -- "$address@" .
    svn info --show-item url -- .
    ;;
  checkout)
    # A version older than the file would remove it.
    if [ -n "$1" ]; then svn info "$1" -- "$3@" >/dev/null; fi
    # Discards nothing if somebody else holds the lock: Subversion reports who.
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
    # --force-log: a comment may be the name of a file.
    svn commit -q --force-log ${1:+"$1"} --message="$2" -- "$3@"
    # A commit without changes does not release the lock.
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
    # Makes the file read-only for everybody without the lock.
    svn propset -q svn:needs-lock yes -- "$1@"
    if [ -n "$keywords" ]; then svn propset -q svn:keywords 'Revision Date Author' -- "$1@"; fi
    depth=empty commit "$2" "$1@"
    ;;
  list)
    # Uses the address: for a working copy, Subversion does not list the locks of its files.
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
      # The file is not in the working copy yet. In an address a "%" begins a code.
      from=$(svn info --show-item url -- .)/$(printf %s "${3#"$(pwd)"/}" | sed 's/%/%25/g')
    fi
    svn export -q --force "${1:--rHEAD}" -- "$from@" "$2/${3##*/}@"
    ;;
  move)
    # The host may have moved the file itself; the target may be an empty directory.
    if [ ! -e "$1" ] && [ -f "$2" ]; then mv -- "$2" "$1"; fi
    # Files that are checked out stay so under their new names: they are locked again.
    open=$(cd -- "$(directory_of "$1")" && find "./${1##*/}" -name .svn -prune -o -type f -perm -u+w -print)
    depth=empty
    if [ -d "$1" ]; then
      depth=infinity
      if [ -d "$2" ]; then rmdir -- "$2"; fi
      # A directory can be moved only if all of it has one revision.
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
