# Runs the steps that take several commands of Git. The property set git.toml calls it in the directory for units:
#
#   git.sh connect ARCHIVE PROJECT                   uses the repository that holds the units, or else makes one in the
#                                                    directory PROJECT: a copy of ARCHIVE, if it is not empty
#   git.sh add ARCHIVE MODE FILE COMMENT             adds a file to Git
#   git.sh checkin ARCHIVE LABEL MODE FILE COMMENT   commits a file and tags the commit if LABEL is not empty
#   git.sh get ARCHIVE LABEL MODE FILE               gets the committed file over any local one
#   git.sh update ARCHIVE LABEL MODE FILE            gets the committed file unless a writable one has changes
#   git.sh undo MODE FILE                            gets the last committed file of the local repository
#   git.sh fetch ARCHIVE LABEL DIRECTORY FILE        writes a committed file into another directory
#   git.sh list ARCHIVE LABEL                        lists the committed files and the names of their contents
#   git.sh move ARCHIVE OLD NEW                      moves a file, or a directory with its contents
#   git.sh delete ARCHIVE PATH                       removes a file, or a directory with its contents
#
# ARCHIVE is the shared repository, whose commits are fetched first and to which each commit is pushed; may be empty.
# LABEL names a commit; if empty, the newest one. MODE is a mode of chmod. The program that fails reports the error on
# the error channel.
. "${0%/*}/common.sh"
export GIT_TERMINAL_PROMPT=0 GIT_EDITOR=:
action=$1
shift

git() { command git --no-pager --literal-pathspecs -c core.quotePath=false -c color.ui=false "$@"; }

# Also names that Git refuses since some file systems take them for its own directory.
can_hold() { case $1 in .[gG][iI][tT] | .[gG][iI][tT][.\ :]* | [gG][iI][tT]~1) return 1 ;; esac; }

# commit COMMENT PATH...: commits only these paths, even if others are changed or staged.
commit() {
  comment=$1
  shift
  git commit --quiet --only --allow-empty-message --cleanup=whitespace --message="$comment" -- "$@"
}

# A commit that can't be pushed goes with the next one.
publish() {
  if [ -n "$archive" ]; then git push --quiet -- "$archive" HEAD; fi
}

by_colleagues() {
  fail "${1##*/} has been changed here, and colleagues have changed it: take their work in with \"git pull --rebase\""
}

# newest: the newest commit of the shared repository if it descends from the local one, else the local one.
newest() {
  if [ -z "$archive" ]; then
    echo HEAD
    return
  fi
  branch=$(git symbolic-ref HEAD)
  if ! message=$(git fetch --quiet -- "$archive" "$branch" 2>&1); then
    case $message in
      *"couldn't find remote ref"*) echo HEAD && return ;;
    esac
    echo "$message" >&2
    exit 1
  fi
  if git merge-base --is-ancestor HEAD FETCH_HEAD; then git rev-parse FETCH_HEAD; else echo HEAD; fi
}

# is_unit PATH: whether a path in the repository is that of a unit file.
is_unit() {
  case $1 in
    */.* | .*) return 1 ;;
    "$prefix"*) return 0 ;;
  esac
  return 1
}

# take_in [FILE]: advances to the newest commit. Read-only unit files stay as they are, since a check out updates them;
# all other files are updated now. A file with local changes, except FILE, must not have been changed there as well:
# checking it in would revert that change.
take_in() {
  newest=$(newest)
  if [ "$newest" = HEAD ] || [ "$newest" = "$(git rev-parse HEAD)" ]; then return; fi
  top=$(git rev-parse --show-toplevel)
  prefix=$(git rev-parse --show-prefix)
  changed=$(git diff --no-renames --name-only HEAD "$newest")
  others=$(printf '%s\n' "$changed" | while IFS= read -r name; do
    if is_unit "$name" && { [ "$top/$name" = "${1:-}" ] || ! is_writable "$top/$name"; }; then continue; fi
    if [ -e "$top/$name" ] && ! git -C "$top" diff --quiet HEAD -- "$name"; then by_colleagues "$name"; fi
    echo "$name"
  done)
  printf '%s' "$others" | with_lines git -C "$top" --literal-pathspecs restore --source="$newest" \
    --staged --worktree --
  git reset --quiet --mixed "$newest"
}

is_unchanged() {
  git ls-files --error-unmatch -- "$1" >/dev/null 2>&1 && git diff --quiet HEAD -- "$1" 2>/dev/null
}

# is_archived FILE: whether its bytes are those of a version, which need not be the newest one.
is_archived() {
  is_unchanged "$1" ||
    [ -n "$(git log --all HEAD -1 --format=%h --find-object="$(git hash-object -- "$1")" -- "$1" 2>/dev/null)" ]
}

# A second link keeps the old file until Git has finished; the file is restored if Git fails or is ended.
kept=
give_back() {
  if [ -n "$kept" ] && [ -e "$kept" ]; then
    touch -- "$kept"
    if [ "$file" -ef "$kept" ]; then
      rm -f -- "$kept"
    else
      mv -f -- "$kept" "$file"
    fi
  fi
}
at_end=give_back

# get REVISION MODE: writes the file again, with the version in its header. Git skips a file that it takes for
# unchanged, which would keep an old header; a touch with an old time prevents that.
get() {
  if [ -e "$file" ]; then
    is_writable "$file" || is_archived "$file" || keep_copy "$file"
    kept=$file.orc~
    ln -f -- "$file" "$kept"
    touch -t 200001010000 -- "$file"
  fi
  git restore --source="$1" --staged --worktree -- "$file"
  chmod "$2" -- "$file"
  if [ -n "$kept" ]; then rm -f -- "$kept"; fi
  kept=
}

# check_in MODE COMMENT
check_in() {
  if is_unchanged "$file"; then
    echo "${file##*/} is unchanged: nothing to check in"
  elif is_writable "$file"; then
    commit "$2" "$file"
  else
    fail "${file##*/} is not checked out, and differs from what was committed last; check it out first"
  fi
  get HEAD "$1"
}

# tag LABEL: each unit of a command is a commit, and the tag moves to the last one. A tag on any other commit than the
# one before is not moved, and Git reports it.
tag() {
  if [ -n "$(git tag --list --points-at HEAD --points-at HEAD~1 -- "$1" 2>/dev/null)" ]; then
    git tag --force -- "$1" >/dev/null
    force=--force
  else
    git tag -- "$1"
    force=--no-force
  fi
  if [ -n "$archive" ]; then git push --quiet "$force" -- "$archive" "refs/tags/$1"; fi
}

# A clone without files: existing files are unchanged, missing files are added. A unit file that differs may be older
# than the archived one: it becomes read-only, so that a check in can't take the work of colleagues back.
copy_archive() {
  git clone --quiet --no-checkout -- "$archive" "$1/.orchard-link"
  mv -- "$1/.orchard-link/.git" "$1/.git"
  rmdir -- "$1/.orchard-link"
  git reset --quiet
  missing=$(git ls-files --deleted)
  (cd -- "$1" && everywhere=$(git ls-files --deleted) && printf '%s' "$everywhere" | with_lines git checkout-index --quiet --)
  printf '%s' "$missing" | with_lines chmod a-w --
  differing=$(git diff --relative --name-only HEAD)
  if [ -n "$differing" ]; then
    printf '%s' "$differing" | with_lines chmod a-w --
    report_differing "$differing"
  fi
}

make_repository() {
  if [ -n "$archive" ]; then
    case $archive in
      *:*) ;;
      *) if [ ! -e "$archive" ]; then git init --quiet --bare -- "$archive"; fi ;;
    esac
    # Ends here if the address doesn't answer.
    newest=$(git ls-remote -- "$archive" HEAD)
    if [ -n "$newest" ]; then
      copy_archive "$1"
      return
    fi
  fi
  git init --quiet -- "$1"
  if [ -n "$archive" ]; then git -C "$1" remote add -- origin "$archive"; fi
}

# "ident" makes Git expand the keyword Id in unit files; colleagues get it with the repository.
set_attributes() {
  case $(git check-attr ident -- unit.ory) in
    *': set') ;;
    *)
      printf '%s ident\n' '*.ory' '*.osb' '*.ocl' '*.ocm' '*.ofl' >>.gitattributes
      git add --force -- .gitattributes
      commit 'Versions in unit files' .gitattributes
      ;;
  esac
}

# is_in_head PATH: whether the newest local commit holds the path.
is_in_head() { [ -n "$(git ls-tree HEAD -- "$1")" ]; }

# For at_end, of a move or delete that was refused or interrupted. It is done if its commit is in the archive. Else the
# commit, which nothing must follow, and the steps before it are taken back.
is_moved_here=
finish=:
finish_or_take_back() {
  if [ "$(git rev-parse HEAD)" != "$before" ] && ! is_in_head "$from" && { [ -z "$to" ] || is_in_head "$to"; }; then
    if is_shared; then
      status=0
      "$finish"
      return
    fi
    if [ "$(git rev-parse HEAD~1)" != "$before" ] || ! git reset --quiet --soft "$before"; then
      echo "error: the commit could not be taken back; it goes to the shared repository with the next one" >&2
      "$finish"
      return
    fi
  fi
  "$take_back"
}

# Whether the archive has the newest local commit.
is_shared() {
  [ -z "$archive" ] || git ls-remote -- "$archive" "$(git symbolic-ref HEAD)" | grep -q "^$(git rev-parse HEAD)"
}

take_back_move() {
  if [ -n "$is_moved_here" ] && [ -e "$to" ] && [ ! -e "$from" ]; then mv -- "$to" "$from"; fi
  remove_made_directory
  git reset --quiet -- "$from" "$to"
}
take_back_delete() { rm -f -- "$spare_index"; }

# commit_without PATH: by an index of its own, so that files and index are unchanged until all is done.
spare_index=
commit_without() {
  spare_index=$(git rev-parse --absolute-git-dir)/orchard-index-$$
  (
    export GIT_INDEX_FILE="$spare_index"
    git read-tree HEAD
    git rm -r --quiet --force --cached -- "$1"
    git commit --quiet --message="Delete $(place_of "$1")"
  )
  rm -f -- "$spare_index"
}

# Files that Git doesn't know remain.
remove_files() {
  rm -f -- "$spare_index"
  git rm -r --quiet --force --cached --ignore-unmatch -- "$from"
  printf '%s' "$files" | with_lines rm -f --
  if [ -d "$from" ]; then find "$from" -depth -type d -exec rmdir -- '{}' ';' 2>/dev/null || true; fi
}

case $action in
  connect)
    archive=$1
    if ! git rev-parse --git-dir >/dev/null 2>&1; then make_repository "$2"; fi
    set_attributes
    publish
    echo "Repository: $(git rev-parse --show-toplevel)"
    ;;
  add)
    archive=$1 file=$3
    check_names "$file"
    take_in
    git add --force -- "$file"
    chmod u+w -- "$file"
    check_in "$2" "$4"
    publish
    ;;
  checkin)
    archive=$1 file=$4
    take_in
    check_in "$3" "$5"
    publish
    if [ -n "$2" ]; then tag "$2"; fi
    ;;
  get | update)
    archive=$1 file=$4
    if [ "$action" = update ] && is_writable "$file" && ! is_unchanged "$file"; then
      fail "${file##*/} has changes that are not checked in; undo its check out to lose them"
    fi
    take_in "$file"
    get "${2:-HEAD}" "$3"
    ;;
  undo)
    file=$2
    get HEAD "$1"
    ;;
  fetch)
    archive=$1
    commit=${2:-$(newest)}
    # Uses the path in the repository, since a version has no path in the file system.
    path=$(git ls-tree -r --full-name --name-only "$commit" -- "$4")
    if [ -z "$path" ]; then fail "${4##*/} is not in the archive"; fi
    target=$3/${4##*/}
    git cat-file --filters "$commit:$path" >"$target.orc~" || { rm -f -- "$target.orc~"; exit 1; }
    mv -f -- "$target.orc~" "$target"
    ;;
  list)
    archive=$1
    commit=${2:-$(newest)}
    git ls-tree -r "$commit"
    ;;
  move)
    archive=$1 from=$2 to=$3
    check_names "$to"
    take_in
    before=$(git rev-parse HEAD)
    if [ -e "$from" ]; then
      # The target may be an empty directory; Git would move into a directory that is not empty.
      if [ -d "$to" ]; then rmdir -- "$to"; fi
      at_end=finish_or_take_back take_back=take_back_move
      make_directory "$(directory_of "$to")"
      is_moved_here=yes
      git mv -- "$from" "$to"
    elif [ -z "$(git ls-files -- "$from")" ] && [ -n "$(git ls-files -- "$to")" ]; then
      # It has moved with its directory.
      exit 0
    else
      # The host has moved it already.
      at_end=finish_or_take_back take_back=take_back_move
      git rm -r --quiet --force --cached -- "$from"
      git add --force -- "$to"
    fi
    commit "Move $(place_of "$from") to $(place_of "$to")" "$from" "$to"
    publish
    at_end=
    ;;
  delete)
    archive=$1 from=$2 to=
    take_in
    before=$(git rev-parse HEAD)
    files=$(git ls-files -- "$from")
    at_end=finish_or_take_back take_back=take_back_delete finish=remove_files
    commit_without "$from"
    publish
    at_end=remove_files
    remove_files
    at_end=
    ;;
  *)
    fail "git.sh knows no \"$action\""
    ;;
esac
