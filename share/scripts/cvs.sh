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
set -eu
export LC_ALL=C.UTF-8 LANGUAGE=
action=$1
shift

# CVS reports success on the error channel; with -q it reports only errors, with -Q not even those.
cvs() { command cvs -f -q "$@"; }
silent_cvs() { command cvs -f -Q "$@"; }
directory_of() { case $1 in /*/*|[!/]*/*) printf %s "${1%/*}" ;; /*) printf / ;; *) printf . ;; esac; }
name_of() { printf %s "${1##*/}"; }

# place_of PATH: the path in the directory for units, for comments.
units=$PWD
place_of() {
  case $1 in
    "$units"/*) printf %s "${1#"$units"}" | tr -s / | sed 's,^/,,' ;;
    *) printf %s "${1##*/}" ;;
  esac
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

remove_file() (
  cd -- "$(directory_of "$1")"
  name=$(name_of "$1")
  rm -f -- "$name"
  silent_cvs remove -- "$name"
  cvs commit -m "$2" -- "$name"
  rm -f -- "CVS/Base/$name"
)

is_known() (
  cd -- "$(directory_of "$1")"
  # The names of the entries, each with a slash before it as files have.
  [ -e CVS/Entries ] && cut -d/ -f1,2 CVS/Entries | grep -qxF -e "/$(name_of "$1")"
)

# move_file OLD NEW: adds a new file, as CVS has no other way; its history begins again.
move_file() {
  if ! is_known "$1"; then
    echo "cvs remove: $1: not under CVS" >&2
    return 1
  fi
  if [ -e "$1" ] && [ -e "$2" ]; then
    echo "cvs add: $2: exists already; $1 was not moved" >&2
    return 1
  fi
  keywords=$(cd -- "$(directory_of "$1")" && cvs status -- "$(name_of "$1")" |
    sed -n 's/.*Sticky Options:[[:space:]]*\(-k[a-z]*\).*/\1/p')
  mkdir -p -- "$(directory_of "$2")"
  # A file that is edited stays so under its new name.
  open=
  if [ -e "$(directory_of "$1")/CVS/Base/$(name_of "$1")" ]; then open=yes; fi
  # The host may have moved the file itself.
  if [ -e "$1" ]; then mv -- "$1" "$2"; fi
  add_file "$keywords" "$2" "Moved from $(place_of "$1")" || {
    mv -- "$2" "$1"
    return 1
  }
  remove_file "$1" "Moved to $(place_of "$2")"
  if [ -n "$open" ]; then (cd -- "$(directory_of "$2")" && edit "$(name_of "$2")"); fi
}

move_directory() {
  if [ -d "$2" ]; then rmdir -- "$2"; fi
  if [ -e "$2" ]; then
    echo "cvs add: $2: exists already; $1 was not moved" >&2
    return 1
  fi
  # File names hold no line ends. The list is complete before the loop, which adds and removes files.
  files=$(cd -- "$1" && find . -name CVS -prune -o -type f -print)
  if [ -n "$files" ]; then
    printf '%s\n' "$files" | while IFS= read -r file; do
      file=${file#./}
      if is_known "$1/$file"; then
        move_file "$1/$file" "$2/$file"
      else
        mkdir -p -- "$(directory_of "$2/$file")"
        mv -- "$1/$file" "$2/$file"
      fi
    done
  fi
  # CVS keeps directories for ever; the workspace loses its empty ones.
  find "$1" -depth -type d ! -name CVS ! -path '*/CVS/*' -exec sh -c '
    [ -z "$(find "$1" ! -type d ! -path "*/CVS/*" | head -n 1)" ] && rm -rf -- "$1"' sh '{}' ';' || true
}

case $action in
  connect)
    root=$1
    module=$2
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
    { command cvs -f -Q editors; command cvs -f -Q rlog -h -N -- "$(cat CVS/Repository)"; } | awk -F '\t' '
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
    if cvs status -- "$name" | grep -q 'Status: \(Locally Modified\|Needs Merge\|File had conflicts\)'; then
      echo "cvs update: '$2' has changes that a fetch would lose; check it in, or undo the check out" >&2
      exit 1
    fi
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
    if [ -d "$1" ]; then move_directory "$1" "$2"; else move_file "$1" "$2"; fi
    ;;
  delete)
    remove_file "$1" "Deleted $(place_of "$1")"
    ;;
  *)
    echo "cvs: no such action: $action" >&2
    exit 1
    ;;
esac
