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
set -eu
# LANGUAGE counts even if the locale is set.
export LC_ALL=C.UTF-8 LANGUAGE= GIT_TERMINAL_PROMPT=0 GIT_EDITOR=:
action=$1
shift

git() { command git --no-pager --literal-pathspecs -c core.quotePath=false -c color.ui=false "$@"; }

# place_of PATH: the path in the directory for units, for comments.
units=$PWD
place_of() {
  case $1 in
    "$units"/*) printf %s "${1#"$units"}" | tr -s / | sed 's,^/,,' ;;
    *) printf %s "${1##*/}" ;;
  esac
}

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
  echo "error: ${1##*/} has been changed here, and colleagues have changed it: take their work in with \"git pull --rebase\"" >&2
  exit 1
}

# Looks at the permission bits, since every file is writable for an administrator.
is_writable() { [ -n "$(find "$1" -prune -perm -u+w 2>/dev/null)" ]; }

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
  others=$(printf '%s\n' "$changed" | while read -r name; do
    if is_unit "$name" && { [ "$top/$name" = "${1:-}" ] || ! is_writable "$top/$name"; }; then continue; fi
    if [ -e "$top/$name" ] && ! git -C "$top" diff --quiet HEAD -- "$name"; then by_colleagues "$name"; fi
    echo "$name"
  done)
  printf '%s' "$others" | tr '\n' '\0' | xargs -0 -r git -C "$top" --literal-pathspecs restore --source="$newest" \
    --staged --worktree --
  git reset --quiet --mixed "$newest"
}

is_unchanged() {
  git ls-files --error-unmatch -- "$1" >/dev/null 2>&1 && git diff --quiet HEAD -- "$1" 2>/dev/null
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
trap give_back EXIT
trap 'exit 1' HUP INT TERM

# get REVISION MODE: writes the file again, with the version in its header. Git skips a file that it takes for
# unchanged, which would keep an old header; a touch with an old time prevents that.
get() {
  if [ -e "$file" ]; then
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
    echo "error: ${file##*/} is not checked out, and differs from what was committed last; check it out first" >&2
    exit 1
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

# A clone without files: existing files are unchanged, missing files are added.
copy_archive() {
  git clone --quiet --no-checkout -- "$archive" "$1/.orchard-link"
  mv -- "$1/.orchard-link/.git" "$1/.git"
  rmdir -- "$1/.orchard-link"
  git reset --quiet
  missing=$(git ls-files --deleted)
  (cd -- "$1" && git checkout-index --quiet --all) || true
  printf '%s' "$missing" | tr '\n' '\0' | xargs -0 -r chmod a-w --
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
      echo "error: ${file##*/} has changes that are not checked in; undo its check out to lose them" >&2
      exit 1
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
    if [ -z "$path" ]; then
      echo "error: ${4##*/} is not in the archive" >&2
      exit 1
    fi
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
    archive=$1
    take_in
    if [ -e "$2" ]; then
      # The target may be an empty directory; Git would move into a directory that is not empty.
      if [ -d "$3" ]; then rmdir -- "$3"; fi
      mkdir -p -- "${3%/*}"
      git mv -- "$2" "$3"
    elif [ -z "$(git ls-files -- "$2")" ] && [ -n "$(git ls-files -- "$3")" ]; then
      # It has moved with its directory.
      exit 0
    else
      # The host has moved it already.
      git rm -r --quiet --force --cached -- "$2"
      git add --force -- "$3"
    fi
    commit "Move $(place_of "$2") to $(place_of "$3")" "$2" "$3"
    publish
    ;;
  delete)
    archive=$1
    take_in
    if [ -d "$2" ]; then
      # Files that Git doesn't know remain.
      git rm -r --quiet --force -- "$2"
    else
      git rm --quiet --force --cached -- "$2"
      rm -f -- "$2"
    fi
    commit "Delete $(place_of "$2")" "$2"
    publish
    ;;
  *)
    echo "error: git.sh knows no \"$action\"" >&2
    exit 1
    ;;
esac
