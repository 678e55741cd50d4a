# Runs the steps that take several commands of CVS. The property set cvs.toml calls it in the directory for units:
#
#   cvs.sh connect ROOT MODULE              creates repository and module if missing; makes this their workspace
#   cvs.sh add [-kb] FILE COMMENT           adds a file to CVS; -kb turns keyword expansion off
#   cvs.sh checkout VERSION MODE FILE       gets the archived file over any local one; MODE is "edit" or "unedit"
#   cvs.sh checkin MODE COMMENT FILE TAG    commits an edited file; tags it if TAG is not empty
#   cvs.sh edit FILE                        makes a file writable, if nobody else edits it
#   cvs.sh list                             one record for each file of the module: name, version, editor
#   cvs.sh update VERSION FILE              gets the archived file if the local one has no changes
#   cvs.sh fetch VERSION DIRECTORY FILE     writes an archived file into another directory
#   cvs.sh move OLD NEW                     moves or renames a file, or a directory with its contents
#   cvs.sh delete FILE                      removes a file, also from the newest state of the archive
#
# Commands run in the directory of a file, since a remote repository accepts no full paths. The program
# that fails reports the error on the error channel.
. "${0%/*}/common.sh"
action=$1
shift

# CVS reports success on the error channel; with -q it reports only errors, with -Q not even those.
cvs() { command cvs -f -q "$@"; }
silent_cvs() { command cvs -f -Q "$@"; }

# The names of CVS's own directories, and those it takes for archives and locks.
can_hold() { case $1 in CVS | Attic | *,v | '#cvs.'*) return 1 ;; esac; }

# check_directory PATH: refuses a directory that CVS can't hold, or in which it can't announce edits.
check_directory() {
  case $1 in *[+,\;=\>]*) fail "$1: CVS can't hold a directory with one of the characters + , ; = > in its path" ;; esac
  check_names "$1"
}

# Adds a directory to CVS, after its parents. Directories need no comment and no commit.
add_directory() (
  if [ -d "$1/CVS" ]; then exit 0; fi
  owner=$(directory_of "$1")
  if [ "$owner" = "$1" ] || [ "$owner" = . ]; then
    echo "cvs add: $1: not in a workspace of CVS; connect the project first" >&2
    exit 1
  fi
  add_directory "$owner" && cd -- "$owner" && silent_cvs add -- "$(name_of "$1")"
)

# Reports who already edits a file. For an edit of the user's own, CVS keeps the earlier file in CVS/Base.
edit() {
  if [ -e "CVS/Base/$1" ]; then
    chmod u+w -- "$1"
    return 0
  fi
  cvs edit -c -- "$1" || {
    cvs editors -- "$1" >&2
    return 1
  }
}

# bring NAME OPTION...: updates a file. A file that is fetched again is no longer edited, and is read-only; but CVS keeps
# the copy from before the edit, and would restore it later.
bring() {
  name=$1
  shift
  updated=$(cvs update "$@" -- "$name")
  if [ -n "$updated" ]; then
    printf '%s\n' "$updated"
    rm -f -- "CVS/Base/$name"
  fi
}

# Creates a directory that is in the archive but not in the workspace.
bring_directory() (
  if [ -d "$1" ]; then exit 0; fi
  bring_directory "$(directory_of "$1")"
  cd -- "$(directory_of "$1")"
  cvs update -d -l -- "$(name_of "$1")"
)

# CVS takes an unknown version for one in which the file is deleted, and deletes the local file.
check_version() {
  case $1 in
    -r*)
      if [ -z "$(cvs update -p "$1" -- "$2" | head -c 1)" ] &&
        cvs log -N "$1" -- "$2" | grep -q 'selected revisions: 0$'; then
        echo "cvs update: $2: there is no version ${1#-r}" >&2
        return 1
      fi
      ;;
  esac
}

# add_file KEYWORDS FILE COMMENT: also makes the file read-only for everybody until "cvs edit". A file that an earlier,
# interrupted run has added needs no second add. Callers may test the status, hence each "&&".
add_file() (
  add_directory "$(directory_of "$2")" && cd -- "$(directory_of "$2")" || exit 1
  name=$(name_of "$2")
  cvs status -- "$name" 2>/dev/null | grep -q 'Status: Locally Added' || silent_cvs add $1 -- "$name" || exit 1
  cvs commit -m "$3" -- "$name" && cvs watch on -- "$name" && chmod a-w -- "$name"
)

# entry_of FILE: its line in CVS/Entries, after the additions and removals in CVS/Entries.Log.
entry_of() {
  entries=$(directory_of "$1")/CVS/Entries
  cat -- "$entries" "$entries.Log" 2>/dev/null | NAME=$(name_of "$1") awk -F / '
    $2 == ENVIRON["NAME"] { if ($1 == "") { line = $0 } if ($1 == "A ") { line = substr($0, 3) } if ($1 == "R ") { line = "" } }
    END { if (line != "") { print line } }'
}

is_known() { [ -n "$(entry_of "$1")" ]; }

# correct_entry A|R FILE ENTRY: adds or removes an entry as CVS itself does; CVS takes it into CVS/Entries.
correct_entry() { printf '%s %s\n' "$1" "$3" >>"$(directory_of "$2")/CVS/Entries.Log"; }

# check_editors PATH: refuses a file, or a directory with a file, that is edited elsewhere.
check_editors() {
  editors=$(cd -- "$(directory_of "$1")" && cvs editors -- "$(name_of "$1")")
  others=$(printf '%s\n' "$editors" | HERE=$(pwd -P) awk -F '\t' '
    NF >= 5 { if ($1 != "") { file = $1 } if (index($5 "/", ENVIRON["HERE"] "/") != 1) { print file " is edited by " $2 } }')
  if [ -n "$others" ]; then fail "$others; nothing was changed"; fi
}

# commit_all COMMENT: commits all files of the list in one command, so that CVS checks all before it changes any.
commit_all() {
  paths=$(printf '%s\n' "$files" | while IFS= read -r file; do
    ! is_uncommitted "$from$file" || { place_of "$from$file" && echo; }
    [ -z "$to" ] || ! is_uncommitted "$to$file" || { place_of "$to$file" && echo; }
  done)
  message=$1
  set --
  while IFS= read -r path; do
    set -- "$@" "$path"
  done <<END
$paths
END
  cvs commit -m "$message" -- "$@"
}
is_uncommitted() { case $(entry_of "$1") in */0/* | /*/-[0-9]*) return 0 ;; *) return 1 ;; esac; }

# A move adds new files, as CVS has no other way; their history begins again. Lists:
# files: the known files below from, each with a slash, or an empty line for a file itself; open: those that are edited.
schedule() {
  printf '%s\n' "$files" | while IFS= read -r file; do
    old=$from$file
    if [ -n "$to" ]; then
      new=$to$file
      keywords=$(entry_of "$old" | cut -d/ -f5)
      mkdir -p -- "$(directory_of "$new")"
      add_directory "$(directory_of "$new")"
    else
      new=$old.orc~
      rm -f -- "$new"
    fi
    # The host may have moved the file itself.
    if [ -e "$old" ]; then mv -- "$old" "$new"; fi
    if [ -n "$to" ]; then (cd -- "$(directory_of "$new")" && silent_cvs add $keywords -- "$(name_of "$new")"); fi
    (cd -- "$(directory_of "$old")" && silent_cvs remove -- "$(name_of "$old")")
  done
}

# For at_end, of a move or delete that was refused or interrupted. If CVS has committed a part, the rest follows; else
# all is taken back, without CVS, whose server may be away.
finish_or_take_back() {
  printf '%s\n' "$files" | {
    is_done=
    while IFS= read -r file; do
      if [ -z "$(entry_of "$from$file")" ]; then is_done=yes; fi
      if [ -n "$to" ]; then case $(entry_of "$to$file") in '' | */0/*) ;; *) is_done=yes ;; esac; fi
    done
    [ -n "$is_done" ]
  } && {
    if commit_all "$comment"; then status=0; fi
    finish
    return
  }
  printf '%s\n' "$files" | while IFS= read -r file; do
    old=$from$file
    if [ -n "$to" ]; then new=$to$file; else new=$old.orc~; fi
    if [ -n "$is_moved_here" ] && [ -e "$new" ] && [ ! -e "$old" ]; then mv -- "$new" "$old"; fi
    entry=$(entry_of "$old")
    case $entry in /*/-*) correct_entry A "$old" "/$(name_of "$old")/${entry#/*/-}" ;; esac
    if [ -n "$to" ]; then
      entry=$(entry_of "$new")
      if [ -n "$entry" ]; then correct_entry R "$new" "$entry"; fi
    fi
  done
  if [ -n "$made" ] && [ -d "$made" ] && is_bare "$made"; then
    rm -rf -- "$made"
    if [ -d "$(directory_of "$made")/CVS" ]; then correct_entry R "$made" "D/$(name_of "$made")////"; fi
  fi
}

# is_bare DIRECTORY: whether all that is in it is CVS's own.
is_bare() { [ -z "$(find "$1" ! -type d ! -path '*/CVS/*' | head -n 1)" ]; }

# A file that is edited stays so under its new name.
finish() {
  printf '%s\n' "$files" | while IFS= read -r file; do
    rm -f -- "$(directory_of "$from$file")/CVS/Base/$(name_of "$from$file")"
    if [ -z "$to" ]; then
      rm -f -- "$from$file.orc~"
      continue
    fi
    cd -- "$(directory_of "$to$file")"
    name=$(name_of "$to$file")
    cvs watch on -- "$name"
    chmod a-w -- "$name"
    if printf '%s\n' "$open" | grep -qxF -e "x$file"; then edit "$name"; fi
  done
  if [ -d "$from" ]; then move_unknown; fi
}

# Unknown files go along with a directory. CVS keeps directories for ever; the workspace loses its empty ones.
move_unknown() {
  unknown=$(cd -- "$from" && find . -name CVS -prune -o -type f -print)
  printf '%s' "$unknown" | sed 's,^\.,,' | while IFS= read -r file || [ -n "$file" ]; do
    mkdir -p -- "$(directory_of "$to$file")"
    mv -- "$from$file" "$to$file"
  done
  find "$from" -depth -type d ! -name CVS ! -path '*/CVS/*' -exec sh -c '
    [ -z "$(find "$1" ! -type d ! -path "*/CVS/*" | head -n 1)" ] && rm -rf -- "$1"' sh '{}' ';' || true
}

# change FROM [TO]: moves a file or directory, or deletes a file.
change() {
  from=$1 to=${2:-}
  files= open=
  if [ -d "$from" ]; then
    files=$(cd -- "$from" && find . -name CVS -prune -o -type f -print)
    files=$(printf '%s\n' "$files" | sed 's,^\.,,' | while IFS= read -r file; do
      if is_known "$from$file"; then printf '%s\n' "$file"; fi
    done)
  elif ! is_known "$from"; then
    echo "cvs remove: $from: not under CVS" >&2
    exit 1
  fi
  if [ -n "$files" ] || [ ! -d "$from" ]; then check_editors "$from"; fi
  is_moved_here=
  if [ -e "$from" ]; then
    is_moved_here=yes
    if [ -d "$from" ] && [ -d "$to" ] && is_bare "$to"; then
      rmdir -- "$to" 2>/dev/null || true
    elif [ -n "$to" ] && [ -e "$to" ]; then
      echo "cvs add: $to: exists already; $from was not moved" >&2
      exit 1
    fi
  fi
  if [ -d "$from" ] && [ -z "$files" ]; then
    move_unknown
    return
  fi
  open=$(printf '%s\n' "$files" | while IFS= read -r file; do
    if [ -e "$(directory_of "$from$file")/CVS/Base/$(name_of "$from$file")" ]; then printf 'x%s\n' "$file"; fi
  done)
  if [ -n "$to" ]; then
    comment="Moved $(place_of "$from") to $(place_of "$to")"
    if [ -d "$from" ]; then make_directory "$to"; else make_directory "$(directory_of "$to")"; fi
  else
    comment="Deleted $(place_of "$from")"
  fi
  at_end=finish_or_take_back
  schedule
  commit_all "$comment"
  at_end=finish
  finish
  at_end=
}

case $action in
  connect)
    root=$1
    module=$2
    check_directory "$units"
    if [ -z "$root" ]; then
      echo 'cvs: no archive is set: give the property CMArchive the root of the repository' >&2
      exit 1
    fi
    case $root in
      /*) [ -d "$root/CVSROOT" ] || cvs -d "$root" init ;;
    esac
    if ! silent_cvs -d "$root" rls -- "$module" >/dev/null 2>&1; then
      empty=$(mktemp -d)
      (cd -- "$empty" && silent_cvs -d "$root" import -m 'A project of Orchard' -- "$module" orchard start) || {
        rmdir -- "$empty"
        exit 1
      }
      rmdir -- "$empty"
    fi
    # An existing file is unchanged.
    silent_cvs -d "$root" checkout -d . -- "$module"
    printf '%s/%s\n' "$root" "$module"
    ;;
  add)
    keywords=
    if [ "$1" = -kb ]; then keywords=-kb; shift; fi
    check_directory "$(directory_of "$1")"
    add_file "$keywords" "$1" "$2"
    ;;
  checkout)
    bring_directory "$(directory_of "$3")"
    cd -- "$(directory_of "$3")"
    name=$(name_of "$3")
    check_version "$1" "$name"
    # First, so that nothing is discarded if somebody else edits the file.
    if [ "$2" != unedit ]; then edit "$name"; fi
    bring "$name" -C "$1"
    if [ "$2" = unedit ]; then cvs unedit -- "$name"; else edit "$name"; fi
    ;;
  checkin)
    cd -- "$(directory_of "$3")"
    name=$(name_of "$3")
    # -c: refuses a commit without an announced edit.
    cvs commit -c -m "$2" -- "$name"
    if [ "$1" = unedit ]; then cvs unedit -- "$name"; else edit "$name"; fi
    if [ -n "$4" ]; then cvs tag -c -- "$4" "$name"; fi
    ;;
  edit)
    cd -- "$(directory_of "$1")"
    edit "$(name_of "$1")"
    ;;
  list)
    # The editors of the files, then the headers of the archive files: their path below the repository is the name.
    # Files in an Attic are deleted.
    editors=$(silent_cvs editors)
    archives=$(silent_cvs rlog -h -N -- "$(cat CVS/Repository)")
    printf '%s\n' "$editors" "$archives" | awk -F '\t' '
      BEGIN {
        getline root < "CVS/Root"; getline module < "CVS/Repository"
        sub(/^.*:/, "", root); sub(/^[^\/]*/, "", root)
        prefix = "RCS file: " root "/" module "/"
      }
      NF >= 5 { if ($1 != "") { file = $1; editor[file] = $2 } next }
      index($0, prefix) == 1 {
        name = substr($0, length(prefix) + 1); sub(/,v$/, "", name)
        if (name ~ /(^|\/)Attic\/[^\/]*$/) { name = "" }
      }
      /^head: / { if (name != "") { print "Working file: " name; print $0; if (name in editor) { print "Editor: " editor[name] } print "" } name = "" }
    '
    ;;
  update)
    bring_directory "$(directory_of "$2")"
    cd -- "$(directory_of "$2")"
    name=$(name_of "$2")
    check_version "$1" "$name"
    state=$(cvs status -- "$name")
    case $state in
      *'Status: Locally Modified'* | *'Status: Needs Merge'* | *'Status: File had conflicts'*)
        echo "cvs update: '$2' has changes that a fetch would lose; check it in, or undo the check out" >&2
        exit 1
        ;;
    esac
    # An edit of the file continues.
    open=
    if [ -e "CVS/Base/$name" ]; then open=yes; fi
    bring "$name" "$1"
    if [ -n "$open" ]; then edit "$name"; fi
    ;;
  fetch)
    cd -- "$(directory_of "$3")"
    name=$(name_of "$3")
    check_version "$1" "$name"
    new=$(mktemp -- "$2/.fetch.XXXXXX")
    if cvs update -p "$1" -- "$name" >"$new"; then
      chmod +rw -- "$new"
      mv -f -- "$new" "$2/$name"
    else
      rm -f -- "$new"
      exit 1
    fi
    ;;
  move)
    if [ -d "$1" ]; then check_directory "$2"; else check_directory "$(directory_of "$2")"; fi
    change "$1" "$2"
    ;;
  delete)
    change "$1"
    ;;
  *)
    echo "cvs: no such action: $action" >&2
    exit 1
    ;;
esac
