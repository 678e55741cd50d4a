# What takes more than one command of Mercurial. The property set mercurial.toml calls it, in the directory for units:
#
#   mercurial.sh connect ARCHIVE PROJECT                   uses the repository that holds the units, or else makes one
#                                                          in the directory PROJECT, as a copy of ARCHIVE
#   mercurial.sh add ARCHIVE MODE FILE COMMENT             puts a file under Mercurial
#   mercurial.sh checkin ARCHIVE LABEL MODE FILE COMMENT   commits a file; with a LABEL that is not empty it tags the
#                                                          changeset
#   mercurial.sh get REVISION MODE FILE                    the committed file, whatever is here
#   mercurial.sh update REVISION MODE FILE                 the committed file, unless a writable one has changes
#   mercurial.sh fetch REVISION DIRECTORY FILE             writes a committed file into another directory
#   mercurial.sh move ARCHIVE OLD NEW                      moves a file, or a directory with all in it
#   mercurial.sh delete ARCHIVE PATH                       removes a file, or a directory with all in it
#
# ARCHIVE is the shared repository, to which each changeset is pushed; if it is empty, nothing is. MODE is what chmod
# understands. What goes wrong is told on the error channel, by the program that could not do it.
set -eu
# The language is taken from LANGUAGE even where the locale is set. HGPLAIN keeps out the user's own defaults.
export LC_ALL=C.UTF-8 LANGUAGE= HGPLAIN=1 HGENCODING=UTF-8 HGEDITOR=false
action=$1
shift

# A lock that another command holds is waited for half a minute. Directories that get empty stay.
hg() {
  command hg --noninteractive --quiet --config ui.timeout=30 --config experimental.removeemptydirs=false "$@"
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

# check_in MODE COMMENT. Mercurial takes no empty comment, and writes the header into the file by itself.
check_in() {
  if is_unchanged "$file"; then
    echo "${file##*/} is unchanged: nothing to check in"
  else
    commit "${2:-Check in ${file##*/}}" "$file"
  fi
  chmod "$1" -- "$file"
}

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
  hg revert --no-backup 'set:missing()'
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
    hg add -- "$file"
    check_in "$2" "$4"
    publish
    ;;
  checkin)
    archive=$1 file=$4
    check_in "$3" "$5"
    if [ -n "$2" ]; then tag "$2"; fi
    publish
    ;;
  get)
    file=$3
    get "$1" "$2"
    ;;
  update)
    file=$3
    # By the permission bits, as everything is writable for an administrator.
    if [ -e "$file" ] && [ -n "$(find "$file" -prune -perm -u+w)" ] && ! is_unchanged "$file"; then
      echo "error: ${file##*/} has changes that are not checked in; undo its check out to lose them" >&2
      exit 1
    fi
    get "$1" "$2"
    ;;
  fetch)
    target=$2/${3##*/}
    hg cat --rev "$1" -- "$3" >"$target.orc~" || { rm -f -- "$target.orc~"; exit 1; }
    mv -f -- "$target.orc~" "$target"
    ;;
  move)
    archive=$1
    if [ -e "$2" ]; then
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
    commit "Move ${2##*/} to ${3##*/}" "$2" "$3"
    publish
    ;;
  delete)
    archive=$1
    if [ -d "$2" ]; then
      # Files in there that Mercurial doesn't know stay.
      hg --config experimental.removeemptydirs=true remove --force -- "$2"
    else
      hg remove --force -- "$2"
    fi
    commit "Delete ${2##*/}" "$2"
    publish
    ;;
  *)
    echo "error: mercurial.sh knows no \"$action\"" >&2
    exit 1
    ;;
esac
