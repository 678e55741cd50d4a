# Runs the steps that take several commands of Mercurial. The property set mercurial.toml calls it in the directory for
# units:
#
#   mercurial.sh connect ARCHIVE PROJECT                   uses the repository that holds the units, or else makes one
#                                                          in the directory PROJECT, as a copy of ARCHIVE
#   mercurial.sh add ARCHIVE MODE FILE COMMENT             adds a file to Mercurial
#   mercurial.sh checkin ARCHIVE LABEL MODE FILE COMMENT   commits a file and tags the changeset if LABEL is not
#                                                          empty
#   mercurial.sh get ARCHIVE LABEL MODE FILE               gets the committed file over any local one
#   mercurial.sh update ARCHIVE LABEL MODE FILE            gets the committed file unless a writable one has changes
#   mercurial.sh undo MODE FILE                            gets the last committed file of the local repository
#   mercurial.sh fetch ARCHIVE LABEL DIRECTORY FILE        writes a committed file into another directory
#   mercurial.sh list ARCHIVE LABEL                        lists the committed files, each with its last changeset
#   mercurial.sh move ARCHIVE OLD NEW                      moves a file, or a directory with its contents
#   mercurial.sh delete ARCHIVE PATH                       removes a file, or a directory with its contents
#
# ARCHIVE is the shared repository, whose changesets are pulled first and to which each changeset is pushed; may be
# empty. LABEL names a changeset; if empty, the newest one. MODE is a mode of chmod. The program that fails reports the
# error on the error channel.
set -eu
# LANGUAGE counts even if the locale is set. HGPLAIN turns the user's own defaults off.
export LC_ALL=C.UTF-8 LANGUAGE= HGPLAIN=1 HGENCODING=UTF-8 HGEDITOR=false
action=$1
shift

# Waits half a minute for a lock of another command. Directories that become empty remain.
hg() {
  command hg --noninteractive --quiet --config ui.timeout=30 --config experimental.removeemptydirs=false "$@"
}

# place_of PATH: the path in the directory for units, for comments.
units=$PWD
place_of() {
  case $1 in
    "$units"/*) printf %s "${1#"$units"}" | tr -s / | sed 's,^/,,' ;;
    *) printf %s "${1##*/}" ;;
  esac
}

# commit COMMENT PATH...: commits only these paths, even if others are changed.
commit() {
  comment=$1
  shift
  hg commit --message="$comment" -- "$@"
}

# A changeset that can't be pushed goes with the next one. Status 1: there is nothing to push.
publish() {
  if [ -n "$archive" ]; then
    hg push -- "$archive" || [ $? -eq 1 ]
  fi
}

by_colleagues() {
  echo "error: ${1##*/} has been changed here, and colleagues have changed it: take their work in with \"hg update\"" >&2
  exit 1
}

# Looks at the permission bits, since every file is writable for an administrator.
is_writable() { [ -n "$(find "$1" -prune -perm -u+w 2>/dev/null)" ]; }

# newest: the newest changeset of the branch if it is the only head that descends from the local one, else
# the local one.
newest() {
  if [ -n "$archive" ]; then hg pull -- "$archive" >&2; fi
  heads=$(hg log --rev 'heads(.:: and branch(.)) - .' --template '{node}\n')
  case $heads in
    '' | *'
'*) echo . ;;
    *) echo "$heads" ;;
  esac
}

# is_unit PATH: whether a path in the repository is that of a unit file.
is_unit() {
  case $1 in
    */.* | .*) return 1 ;;
    "$prefix"*) return 0 ;;
  esac
  return 1
}

# take_in [FILE]: advances to the newest changeset. Read-only unit files stay as they are, since a check out updates
# them; all other files are updated now. A file with local changes, except FILE, must not have been changed there as
# well: checking it in would revert that change.
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

# A second link keeps the old file until Mercurial has finished; the file is restored if Mercurial fails or is ended.
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

# check_in MODE COMMENT: Mercurial accepts no empty comment, and writes the header into the file itself. Status 1 means
# that nothing has changed.
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

# found REVSET: whether the changeset exists.
found() { [ -n "$(hg log --limit 1 --rev "$1" --template x)" ]; }

# tag LABEL: a tag is a changeset of its own. Each unit of a command is a changeset, and the tag moves to the last
# one. A tag on any other changeset than the one before is not moved, and Mercurial reports it.
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

# A clone without files: existing files are unchanged, missing files are added.
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

# An extension of Mercurial expands the keyword Revision in unit files. The settings of the repository turn it on; a
# clone does not copy them, so each clone is connected once.
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
    # Status 1 means that there is no file.
    hg files --rev "$revision" --template "{relpath(path)}\\t{$changed}\\n" --include . || [ $? -eq 1 ]
    ;;
  move)
    archive=$1
    take_in
    from=$2
    [ -e "$from" ] || from=$3
    read_only=$(find "$from" -type f ! -perm -u+w)
    if [ -e "$2" ]; then
      # The target may be an empty directory; Mercurial would move into a directory that is not empty.
      if [ -d "$3" ]; then rmdir -- "$3"; fi
      mkdir -p -- "${3%/*}"
      if [ -d "$2" ]; then
        hg --config experimental.removeemptydirs=true move -- "$2" "$3"
      else
        hg move -- "$2" "$3"
      fi
    elif ! hg files -- "$2" >/dev/null 2>&1 && hg files -- "$3" >/dev/null 2>&1; then
      # It has moved with its directory.
      exit 0
    else
      # The host has moved it already.
      hg move --after -- "$2" "$3"
    fi
    commit "Move $(place_of "$2") to $(place_of "$3")" "$2" "$3"
    # Mercurial writes the header into the files again, which makes them writable: restore read-only files.
    printf '%s\n' "$read_only" | while IFS= read -r file; do
      [ -z "$file" ] || chmod a-w -- "$3${file#"$from"}"
    done
    publish
    ;;
  delete)
    archive=$1
    take_in
    if [ -d "$2" ]; then
      # Files that Mercurial doesn't know remain.
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
