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
. "${0%/*}/common.sh"
# HGPLAIN turns the user's own defaults off.
export HGPLAIN=1 HGENCODING=UTF-8 HGEDITOR=false
action=$1
shift

# Mercurial takes a tenth of a second to start. chg, which comes with it, leaves a server that takes the next commands.
program=hg
if command -v chg >/dev/null; then program=chg; fi

# Waits half a minute for a lock of another command. Directories that become empty remain.
hg() {
  command "$program" --noninteractive --quiet --config ui.timeout=30 --config experimental.removeemptydirs=false "$@"
}

can_hold() { case $1 in .[hH][gG] | [hH][gG]~1) return 1 ;; esac; }

# commit COMMENT PATH...: commits only these paths, even if others are changed.
commit() {
  comment=$1
  shift
  hg commit --message="$comment" -- "$@"
}

# or_one COMMAND...: runs a command of Mercurial for which the status 1 is no failure. Other statuses are kept.
or_one() {
  result=0
  "$@" || result=$?
  if [ "$result" -gt 1 ]; then exit "$result"; fi
}

# A changeset that can't be pushed goes with the next one. Status 1: there is nothing to push, or an archive that does
# not say why has not taken it.
publish() {
  if [ -z "$archive" ]; then return; fi
  pushed=0
  hg push -- "$archive" || pushed=$?
  if [ "$pushed" -eq 1 ] && is_shared; then pushed=0; fi
  if [ "$pushed" -ne 0 ]; then exit "$pushed"; fi
}

# Whether the archive has the newest local changeset.
is_shared() { [ -z "$archive" ] || hg identify --rev "$(hg log --rev . --template '{node}')" -- "$archive" >/dev/null 2>&1; }

by_colleagues() {
  fail "${1##*/} has been changed here, and colleagues have changed it: take their work in with \"hg update\""
}

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
  changed=$(hg status --cwd "$top" --no-status --rev . --rev "$newest")
  others=$(printf '%s\n' "$changed" | while IFS= read -r name; do
    if [ -z "$name" ]; then continue; fi
    if is_unit "$name" && { [ "$top/$name" = "${1:-}" ] || ! is_writable "$top/$name"; }; then continue; fi
    if printf '%s\n' "$modified" | grep -qxF -e "$name"; then by_colleagues "$name"; fi
    echo "$name"
  done)
  hg debugrebuilddirstate --rev "$newest"
  printf '%s' "$others" | while IFS= read -r name || [ -n "$name" ]; do
    if hg files --cwd "$top" -- "$name" >/dev/null 2>&1; then
      hg revert --cwd "$top" --no-backup -- "$name"
    else
      rm -f -- "$top/$name"
    fi
  done
}

is_unchanged() { [ -n "$(hg status --clean -- "$1")" ]; }

# is_archived FILE: whether its bytes are those of a version: the one in its header, or else one of the newest twenty.
is_archived() {
  # shellcheck disable=SC2016 # the keyword
  versions=$(sed -n '/^\$Revision: *\([0-9a-f]\{12\}\) *\$$/{s//\1/p;q;}' "$1")
  if [ -z "$versions" ]; then versions=$(hg log --limit 20 --template '{node}\n' -- "$1"); fi
  for version in $versions; do
    if hg cat --rev "$version" -- "$1" 2>/dev/null | cmp -s -- - "$1"; then return 0; fi
  done
  return 1
}

# A second link or a copy keeps the old file until Mercurial has finished; the file is restored if Mercurial fails or is
# ended.
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
at_end=give_back

# get REVISION MODE
get() {
  if [ "$1" != . ] || ! is_unchanged "$file"; then
    if [ -e "$file" ]; then
      is_writable "$file" || is_archived "$file" || keep_copy "$file"
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
# that nothing has changed. A check in that is refused leaves the file as it was, and writable: it would
# get the header of a changeset that does not exist.
check_in() {
  if is_writable "$file"; then
    kept=$file.orc~
    cp -p -- "$file" "$kept"
    or_one commit "${2:-Check in ${file##*/}}" "$file"
    rm -f -- "$kept"
    if [ "$result" -eq 1 ]; then tell_unchanged; fi
  elif is_unchanged "$file"; then
    tell_unchanged
  else
    fail "${file##*/} is not checked out, and differs from what was committed last; check it out first"
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

# A clone without files: existing files are unchanged, missing files are added. A unit file that differs may be older
# than the archived one: it becomes read-only, so that a check in can't take the work of colleagues back.
copy_archive() {
  hg clone --noupdate -- "$archive" "$1/.orchard-link"
  mv -- "$1/.orchard-link/.hg" "$1/.hg"
  rmdir -- "$1/.orchard-link"
  cd -- "$1"
  if found 'present(branch(default))'; then hg debugrebuilddirstate --rev default; else hg debugrebuilddirstate --rev tip; fi
  set_keywords
  missing=$(hg status --cwd "$units" --no-status --deleted -- .)
  hg revert --no-backup 'set:missing()'
  cd -- "$units"
  printf '%s' "$missing" | with_lines chmod a-w --
  differing=$(hg status --no-status --modified --added -- .)
  if [ -n "$differing" ]; then
    printf '%s' "$differing" | with_lines chmod a-w --
    report_differing "$differing"
  fi
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

# restore_modes PATH: Mercurial writes the header into the files again, which makes them writable.
restore_modes() {
  printf '%s\n' "$read_only" | while IFS= read -r file; do
    [ ! -e "$1${file#"$here"}" ] || [ -z "$file" ] || chmod a-w -- "$1${file#"$here"}"
  done
}

# For at_end, of a move or delete that was refused or interrupted. It is done if its changeset is in the archive. Else
# the changeset, which nothing must follow, and the steps before it are taken back.
finish=remove_kept_files
finish_or_take_back() {
  if found ". and children($before) and desc(\"literal:$comment\")"; then
    if is_shared; then
      status=0
      "$finish"
      return
    fi
    # Not by the command server: with other extensions it would be another one.
    if ! command hg --noninteractive --quiet --config extensions.strip= strip --keep --no-backup --rev .; then
      echo "error: the changeset could not be taken back; it goes to the shared repository with the next one" >&2
      "$finish"
      return
    fi
  fi
  "$take_back"
}

# moved FILE: where a file was moved to; both are relative to the directory for units.
moved() { printf %s "$(place_of "$to")${1#"$(place_of "$from")"}"; }

# keep_files: copies the files beside the repository, as a commit writes headers even if it is refused then.
keep_files() {
  spare=$(hg root)/.hg/orchard-$$
  printf '%s\n' "$files" | while IFS= read -r file; do
    [ "$here" = "$from" ] || file=$(moved "$file")
    [ ! -f "$file" ] || { mkdir -p -- "$spare/$(directory_of "$file")" && cp -p -- "$file" "$spare/$file"; }
  done
}
spare=
remove_kept_files() { if [ -n "$spare" ]; then rm -rf -- "$spare"; fi; }

# Files first, which takes no command of Mercurial.
take_back_move() {
  printf '%s\n' "$files" | while IFS= read -r file; do
    moved=$(moved "$file")
    if [ "$here" = "$from" ]; then rm -f -- "$moved"; else file=$moved; fi
    if [ -f "$spare/$file" ]; then
      mkdir -p -- "$(directory_of "$file")"
      mv -f -- "$spare/$file" "$file"
    fi
  done
  if [ "$here" = "$from" ]; then
    if [ -d "$to" ]; then find "$to" -depth -type d -exec rmdir -- '{}' ';' 2>/dev/null; fi
    remove_made_directory
  fi
  remove_kept_files
  hg forget -- "$to" 2>/dev/null
  printf '%s' "$files" | with_lines "$program" --quiet add -- 2>/dev/null
}
take_back_delete() { printf '%s' "$files" | with_lines "$program" --quiet add -- 2>/dev/null; }

# Files that Mercurial doesn't know remain.
remove_files() {
  printf '%s' "$files" | with_lines rm -f --
  if [ -d "$from" ]; then find "$from" -depth -type d -exec rmdir -- '{}' ';' 2>/dev/null || true; fi
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
    check_names "$file"
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
      fail "${file##*/} has changes that are not checked in; undo its check out to lose them"
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
    or_one hg files --rev "$revision" --template "{relpath(path)}\\t{$changed}\\n" --include .
    ;;
  move)
    archive=$1 from=$2 to=$3
    check_names "$to"
    take_in
    before=$(hg log --rev . --template '{node}')
    files=$(hg files -- "$from" 2>/dev/null) || files=
    if [ -z "$files" ] && hg files -- "$to" >/dev/null 2>&1; then
      # It has moved with its directory.
      exit 0
    fi
    here=$from
    [ -e "$from" ] || here=$to
    read_only=$(find "$here" -type f ! -perm -u+w)
    comment="Move $(place_of "$from") to $(place_of "$to")"
    keep_files
    at_end=finish_or_take_back take_back=take_back_move
    if [ -d "$from" ]; then
      # The target may be an empty directory; Mercurial would move into a directory that is not empty.
      if [ -d "$to" ]; then rmdir -- "$to"; fi
      make_directory "$(directory_of "$to")"
      hg --config experimental.removeemptydirs=true move -- "$from" "$to"
    elif [ -e "$from" ]; then
      make_directory "$(directory_of "$to")"
      hg move -- "$from" "$to"
    else
      # The host has moved it already.
      hg move --after -- "$from" "$to"
    fi
    commit "$comment" "$from" "$to"
    publish
    at_end=remove_kept_files
    remove_kept_files
    restore_modes "$to"
    ;;
  delete)
    archive=$1 from=$2 to=
    take_in
    before=$(hg log --rev . --template '{node}')
    files=$(hg files -- "$from")
    comment="Delete $(place_of "$from")"
    at_end=finish_or_take_back take_back=take_back_delete finish=remove_files
    hg forget -- "$from"
    commit "$comment" "$from"
    publish
    at_end=remove_files
    remove_files
    at_end=
    ;;
  *)
    fail "mercurial.sh knows no \"$action\""
    ;;
esac
