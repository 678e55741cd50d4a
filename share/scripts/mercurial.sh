# What takes more than one command of Mercurial. The property set mercurial.toml calls it, in the directory for units:
#
#   mercurial.sh connect ARCHIVE PROJECT                   uses the repository that holds the units, or else makes one
#                                                          in the directory PROJECT, as a copy of ARCHIVE
#   mercurial.sh add ARCHIVE MODE FILE COMMENT             puts a file under Mercurial
#   mercurial.sh checkin ARCHIVE LABEL MODE FILE COMMENT   commits a file; with a LABEL that is not empty it tags the
#                                                          changeset
#   mercurial.sh get ARCHIVE LABEL MODE FILE               the committed file, whatever is here
#   mercurial.sh update ARCHIVE LABEL MODE FILE            the committed file, unless a writable one has changes
#   mercurial.sh undo MODE FILE                            the file as it was committed last, as far as is known here
#   mercurial.sh fetch ARCHIVE LABEL DIRECTORY FILE        writes a committed file into another directory
#   mercurial.sh list ARCHIVE LABEL                        the committed files and the changesets that changed them last
#   mercurial.sh move ARCHIVE OLD NEW                      moves a file, or a directory with all in it
#   mercurial.sh delete ARCHIVE PATH                       removes a file, or a directory with all in it
#
# ARCHIVE is the shared repository, whose changesets are taken in first and to which each changeset is pushed; it may be
# empty. LABEL names a changeset; if it is empty, the newest is meant. MODE is what chmod understands. What goes wrong is told on the error channel, by the program that could not do it.
set -eu
# The language is taken from LANGUAGE even where the locale is set. HGPLAIN keeps out the user's own defaults.
export LC_ALL=C.UTF-8 LANGUAGE= HGPLAIN=1 HGENCODING=UTF-8 HGEDITOR=false
action=$1
shift

# A lock that another command holds is waited for half a minute. Directories that get empty stay.
hg() {
  command hg --noninteractive --quiet --config ui.timeout=30 --config experimental.removeemptydirs=false "$@"
}

# place_of PATH: where it is in the directory for units, as comments tell it.
units=$PWD
place_of() {
  case $1 in
    "$units"/*) printf %s "${1#"$units"}" | tr -s / | sed 's,^/,,' ;;
    *) printf %s "${1##*/}" ;;
  esac
}

# commit COMMENT PATH...: these paths alone, whatever else is changed.
commit() {
  comment=$1
  shift
  hg commit --message="$comment" -- "$@"
}

# What could not be pushed goes with the next changeset. Status 1: there was nothing to push.
publish() {
  if [ -n "$archive" ]; then
    hg push -- "$archive" || [ $? -eq 1 ]
  fi
}

by_colleagues() {
  echo "error: ${1##*/} has been changed here, and colleagues have changed it: take their work in with \"hg update\"" >&2
  exit 1
}

# By the permission bits, as everything is writable for an administrator.
is_writable() { [ -n "$(find "$1" -prune -perm -u+w 2>/dev/null)" ]; }

# newest: the newest changeset of the branch if it alone goes on from the one here, and else the one here.
newest() {
  if [ -n "$archive" ]; then hg pull -- "$archive" >&2; fi
  heads=$(hg log --rev 'heads(.:: and branch(.)) - .' --template '{node}\n')
  case $heads in
    '' | *'
'*) echo . ;;
    *) echo "$heads" ;;
  esac
}

# is_unit PATH: a path in the repository, of what the model has files of.
is_unit() {
  case $1 in
    */.* | .*) return 1 ;;
    "$prefix"*) return 0 ;;
  esac
  return 1
}

# take_in [FILE]: goes on to the newest changeset. Read-only files of units stay as they are: they are brought up to date
# when they are checked out. All other files are brought up to date now. One with changes, but for FILE, must not have
# been changed there as well: checking it in would take that back.
take_in() {
  newest=$(newest)
  if [ "$newest" = . ]; then return; fi
  top=$(hg root)
  prefix=$(pwd -P)/
  prefix=${prefix#"$top/"}
  modified=$(hg status --cwd "$top" --no-status --modified --added --removed --deleted)
  others=$(hg status --cwd "$top" --no-status --rev . --rev "$newest" | while read -r name; do
    if is_unit "$name" && { [ "$top/$name" = "${1:-}" ] || ! is_writable "$top/$name"; }; then continue; fi
    if printf '%s\n' "$modified" | grep -qxF -e "$name"; then by_colleagues "$name"; fi
    echo "$name"
  done)
  hg debugrebuilddirstate --rev "$newest"
  printf '%s' "$others" | while read -r name || [ -n "$name" ]; do
    if hg files --cwd "$top" -- "$name" >/dev/null 2>&1; then
      hg revert --cwd "$top" --no-backup -- "$name"
    else
      rm -f -- "$top/$name"
    fi
  done
}

is_unchanged() { [ -n "$(hg status --clean -- "$1")" ]; }

# Until Mercurial is done, a second name holds on to the old file, which is put back if Mercurial fails or is ended.
kept=
give_back() {
  if [ -n "$kept" ] && [ -e "$kept" ]; then
    if [ "$file" -ef "$kept" ]; then
      rm -f -- "$kept"
    else
      mv -f -- "$kept" "$file"
    fi
  fi
}
trap give_back EXIT
trap 'exit 1' HUP INT TERM

# get REVISION MODE
get() {
  if [ "$1" != . ] || ! is_unchanged "$file"; then
    if [ -e "$file" ]; then
      kept=$file.orc~
      ln -f -- "$file" "$kept"
    fi
    hg revert --no-backup --rev "$1" -- "$file"
  fi
  chmod "$2" -- "$file"
  if [ -n "$kept" ]; then rm -f -- "$kept"; fi
  kept=
}

# check_in MODE COMMENT. Mercurial takes no empty comment, and writes the header into the file by itself. Status 1:
# nothing has changed.
check_in() {
  if is_writable "$file"; then
    commit "${2:-Check in ${file##*/}}" "$file" || { [ $? -eq 1 ] && tell_unchanged; }
  elif is_unchanged "$file"; then
    tell_unchanged
  else
    echo "error: ${file##*/} is not checked out, and differs from what was committed last; check it out first" >&2
    exit 1
  fi
  chmod "$1" -- "$file"
}
tell_unchanged() { echo "${file##*/} is unchanged: nothing to check in"; }

# found REVSET: whether there is such a changeset.
found() { [ -n "$(hg log --limit 1 --rev "$1" --template x)" ]; }

# tag LABEL: a tag is a changeset of its own. The units of one command are one changeset each, and the tag moves on
# with them; but a tag that stands on another than the one before stays there, and Mercurial says so.
tag() {
  tagged="present(tag(\"literal:$1\"))"
  if found "parents(.) and $tagged"; then
    :
  elif found "parents(parents(.)) and $tagged"; then
    hg tag --force -- "$1"
  else
    hg tag -- "$1"
  fi
}

# A copy without files: those that are there already stay as they are; those that are missing are brought.
copy_archive() {
  hg clone --noupdate -- "$archive" "$1/.orchard-link"
  mv -- "$1/.orchard-link/.hg" "$1/.hg"
  rmdir -- "$1/.orchard-link"
  cd -- "$1"
  if found 'present(branch(default))'; then hg debugrebuilddirstate --rev default; else hg debugrebuilddirstate --rev tip; fi
  set_keywords
  missing=$(hg status --no-status --deleted -- "$units")
  hg revert --no-backup 'set:missing()'
  printf '%s' "$missing" | tr '\n' '\0' | xargs -0 -r chmod a-w --
  cd -- "$units"
}

make_repository() {
  if [ -z "$archive" ]; then
    hg init -- "$1"
    return
  fi
  case $archive in
    *:*) ;;
    *) if [ ! -e "$archive" ]; then hg init -- "$archive"; fi ;;
  esac
  copy_archive "$1"
}

# An extension that comes with Mercurial fills in the keyword Revision in unit files. It is told to the repository in
# its own settings, which are not copied with it: each copy is connected once.
set_keywords() {
  if [ -z "$(hg config keywordmaps.Revision)" ]; then
    {
      printf '\n[extensions]\nkeyword =\n\n[keyword]\n'
      printf '**%s =\n' .ory .osb .ocl .ocm .ofl
      printf '\n[keywordmaps]\nRevision = {node|short}\n'
    } >>"$(hg root)/.hg/hgrc"
  fi
}

case $action in
  connect)
    archive=$1 units=$(pwd)
    if ! hg root >/dev/null 2>&1; then make_repository "$2"; fi
    set_keywords
    publish
    echo "Repository: $(hg root)"
    ;;
  add)
    archive=$1 file=$3
    take_in
    hg add -- "$file"
    chmod u+w -- "$file"
    check_in "$2" "$4"
    publish
    ;;
  checkin)
    archive=$1 file=$4
    take_in
    check_in "$3" "$5"
    if [ -n "$2" ]; then tag "$2"; fi
    publish
    ;;
  get | update)
    archive=$1 file=$4
    if [ "$action" = update ] && is_writable "$file" && ! is_unchanged "$file"; then
      echo "error: ${file##*/} has changes that are not checked in; undo its check out to lose them" >&2
      exit 1
    fi
    take_in "$file"
    get "${2:-.}" "$3"
    ;;
  undo)
    file=$2
    get . "$1"
    ;;
  fetch)
    archive=$1
    target=$3/${4##*/}
    revision=${2:-$(newest)}
    hg cat --rev "$revision" -- "$4" >"$target.orc~" || { rm -f -- "$target.orc~"; exit 1; }
    mv -f -- "$target.orc~" "$target"
    ;;
  list)
    archive=$1
    revision=${2:-$(newest)}
    changed='revset("max(filelog(%s) and ::%s)", relpath(path), node) % "{node|short}"'
    # Status 1: there is no file.
    hg files --rev "$revision" --template "{relpath(path)}\\t{$changed}\\n" --include . || [ $? -eq 1 ]
    ;;
  move)
    archive=$1
    take_in
    from=$2
    [ -e "$from" ] || from=$3
    read_only=$(find "$from" -type f ! -perm -u+w)
    if [ -e "$2" ]; then
      # An empty directory may be waiting for what comes; into a full one Mercurial would put it.
      if [ -d "$3" ]; then rmdir -- "$3"; fi
      mkdir -p -- "${3%/*}"
      if [ -d "$2" ]; then
        hg --config experimental.removeemptydirs=true move -- "$2" "$3"
      else
        hg move -- "$2" "$3"
      fi
    elif ! hg files -- "$2" >/dev/null 2>&1 && hg files -- "$3" >/dev/null 2>&1; then
      # It went along with the directory that it stands in.
      exit 0
    else
      # The host has moved it already.
      hg move --after -- "$2" "$3"
    fi
    commit "Move $(place_of "$2") to $(place_of "$3")" "$2" "$3"
    # The header is written anew into the files, which makes them writable.
    printf '%s\n' "$read_only" | while IFS= read -r file; do
      [ -z "$file" ] || chmod a-w -- "$3${file#"$from"}"
    done
    publish
    ;;
  delete)
    archive=$1
    take_in
    if [ -d "$2" ]; then
      # Files in there that Mercurial doesn't know stay.
      hg --config experimental.removeemptydirs=true remove --force -- "$2"
    else
      hg remove --force -- "$2"
    fi
    commit "Delete $(place_of "$2")" "$2"
    publish
    ;;
  *)
    echo "error: mercurial.sh knows no \"$action\"" >&2
    exit 1
    ;;
esac
