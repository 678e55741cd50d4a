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
. "${0%/*}/common.sh"
action=$1
shift

svn() { command svn --non-interactive "$@"; }
can_hold() { [ "$1" != .svn ]; }

is_known() { svn info -- "$1@" >/dev/null 2>&1; }
has_lock() { svn info -- "$1@" | grep -q '^Lock Token: '; }

# A file that was changed without a check out may be based on an older version than Subversion thinks.
check_is_checked_out() {
  if ! is_writable "$1" && is_changed "$1"; then
    fail "${1##*/} is not checked out, and differs from the archive; check it out first"
  fi
}

# Without --quiet, which would hide who holds the lock. A file may be read-only in spite of a lock.
lock() {
  if ! has_lock "$1"; then
    check_is_checked_out "$1"
    svn lock -- "$1@"
  fi
  chmod u+w -- "$1"
}
give_up_lock() { ! has_lock "$1" || svn unlock -- "$1@"; }

# is_changed FILE: whether it differs from the version that was got last; yes if Subversion can't say.
is_changed() {
  state=$(svn status -q -- "$1@") || return 0
  case $state in M*) return 0 ;; *) return 1 ;; esac
}

# revert FILE: discards changes, but keeps a copy of those that were made without a check out.
revert() {
  if [ -e "$1" ] && ! is_writable "$1" && is_changed "$1"; then keep_copy "$1"; fi
  svn revert -q -- "$1@"
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

# keep_files: copies what is about to be moved or deleted, as Subversion restores only archived files.
spare=
is_kept=
keep_files() {
  address=$(svn info --show-item url -- "$from@")
  spare=$from.orc~
  rm -rf -- "$spare"
  cp -Rp -- "$from" "$spare"
  is_kept=yes
}

# For at_end, of a move or delete that was refused or interrupted: it is done if the archive has it. Else it is taken
# back.
finish_or_take_back() {
  if [ -n "$is_kept" ]; then
    svn cleanup
    in_archive=$(is_in_archive && echo yes)
    if [ -n "$to" ]; then remove_new; fi
    svn revert -q --recursive -- "$from@" 2>/dev/null
    if [ -n "$in_archive" ]; then
      status=0
      svn update -q -- "$from@" ${to:+"$to@"}
      rm -rf -- "$from"
      # Files that Subversion doesn't know went along.
      if [ -d "$to" ]; then cp -Rpn -- "$spare/." "$to/"; fi
      finish
      return
    fi
    rm -rf -- "$from"
    mv -- "$spare" "$from"
  elif [ -n "$spare" ]; then
    rm -rf -- "$spare"
  fi
  if [ -n "$to" ] && [ "$here" = "$to" ] && [ -e "$from" ]; then mv -- "$from" "$to"; fi
}

# Whether the archive no longer has the address. W170000: the server answers that there is none.
is_in_archive() { svn info -- "$address@HEAD" 2>&1 | grep -q 'W170000:'; }

# Also the directories above that the move has made.
remove_new() {
  svn revert -q --recursive -- "$to@" 2>/dev/null
  rm -rf -- "$to"
  above=$(directory_of "$to")
  while [ "$(svn info --show-item schedule -- "$above@" 2>/dev/null)" = add ]; do
    svn revert -q -- "$above@"
    rmdir -- "$above"
    above=$(directory_of "$above")
  done
}

finish() {
  if [ -n "$spare" ]; then rm -rf -- "$spare"; fi
  if [ -z "$to" ] || [ -z "$open" ]; then return; fi
  printf '%s\n' "$open" | while IFS= read -r file; do
    file=${file#"./${from##*/}"}
    ! is_known "$to$file" || lock "$to$file"
  done
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
    # An existing file is unchanged. One that differs may be older than the archived one: it becomes read-only, so that a
    # check in can't take the work of colleagues back.
    is_new=yes
    if [ -d .svn ]; then is_new=; fi
    svn checkout -q --force -- "$address@" .
    differing=$(svn status -q)
    differing=$(printf '%s\n' "$differing" | sed -n 's/^M.\{7\}//p')
    if [ -n "$is_new" ] && [ -n "$differing" ]; then
      printf '%s' "$differing" | with_lines chmod a-w --
      report_differing "$differing"
    fi
    svn info --show-item url -- .
    ;;
  checkout)
    # A version older than the file would remove it.
    if [ -n "$1" ]; then svn info "$1" -- "$3@" >/dev/null; fi
    # Discards nothing if somebody else holds the lock: Subversion reports who.
    if [ -n "$2" ] && [ -e "$3" ] && ! has_lock "$3"; then
      newest=$(svn info -r HEAD -- "$3@")
      case $newest in
        *'Lock Token: '*)
          svn lock -- "$3@"
          exit 1
          ;;
      esac
    fi
    revert "$3"
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
    has_lock "$3" || check_is_checked_out "$3"
    # --force-log: a comment may be the name of a file.
    svn commit -q --force-log ${1:+"$1"} --message="$2" -- "$3@"
    # A commit without changes does not release the lock.
    if [ -z "$1" ]; then give_up_lock "$3"; fi
    ;;
  lock) lock "$1" ;;
  undo)
    revert "$1"
    give_up_lock "$1"
    ;;
  add)
    keywords=yes
    if [ "$1" = -kb ]; then keywords=; shift; fi
    check_names "$1"
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
    if is_changed "$2"; then
      echo "svn: E155000: '$2' has changes that a fetch would lose; check it in, or undo the check out" >&2
      exit 1
    fi
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
    from=$1 to=$2
    check_names "$to"
    here=$from
    here=$from
    at_end=finish_or_take_back
    # The target may be an empty directory; the host may have moved the file itself.
    if [ -d "$from" ] && [ -d "$to" ]; then rmdir -- "$to"; fi
    if [ ! -e "$from" ] && [ -f "$to" ]; then
      here=$to
      mv -- "$to" "$from"
    fi
    if [ -e "$to" ]; then fail "$to exists already; $from was not moved"; fi
    # Files that are checked out stay so under their new names: they are locked again.
    open=$(cd -- "$(directory_of "$from")" && find "./${from##*/}" -name .svn -prune -o -type f -perm -u+w -print)
    depth=empty
    if [ -d "$from" ]; then
      depth=infinity
      # A directory can be moved only if all of it has one revision.
      svn update -q -- "$from@"
    fi
    keep_files
    svn move -q --parents -- "$from@" "$to"
    commit "Moved $(place_of "$from") to $(place_of "$to")" "$to@" "$from@"
    at_end=finish
    finish
    at_end=
    ;;
  delete)
    from=$1 to=
    if [ -d "$from" ]; then svn update -q -- "$from@"; fi
    at_end=finish_or_take_back
    keep_files
    svn delete -q --force -- "$from@"
    svn commit -q --message="Deleted $(place_of "$from")" -- "$from@"
    at_end=finish
    finish
    at_end=
    ;;
  *)
    echo "svn: E000000: no such action: $action" >&2
    exit 1
    ;;
esac
