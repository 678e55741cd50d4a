# What takes more than one command of Git. The property set git.toml calls it, in the directory for units:
#
#   git.sh connect ARCHIVE PROJECT                   uses the repository that holds the units, or else makes one in the
#                                                    directory PROJECT: a copy of ARCHIVE, if something is in there
#   git.sh add ARCHIVE MODE FILE COMMENT             puts a file under Git
#   git.sh checkin ARCHIVE LABEL MODE FILE COMMENT   commits a file; with a LABEL that is not empty it tags the commit
#   git.sh get REVISION MODE FILE                    the committed file, whatever is here
#   git.sh update REVISION MODE FILE                 the committed file, unless a writable one has changes
#   git.sh fetch REVISION DIRECTORY FILE             writes a committed file into another directory
#   git.sh move ARCHIVE OLD NEW                      moves a file, or a directory with all in it
#   git.sh delete ARCHIVE PATH                       removes a file, or a directory with all in it
#
# ARCHIVE is the shared repository, to which each commit is pushed; if it is empty, nothing is. MODE is what chmod
# understands. What goes wrong is told on the error channel, by the program that could not do it.
set -eu
# The language is taken from LANGUAGE even where the locale is set.
export LC_ALL=C.UTF-8 LANGUAGE= GIT_TERMINAL_PROMPT=0 GIT_EDITOR=:
action=$1
shift

git() { command git --no-pager --literal-pathspecs -c core.quotePath=false -c color.ui=false "$@"; }

# commit COMMENT PATH...: these paths alone, whatever else is changed or staged.
commit() {
  comment=$1
  shift
  git commit --quiet --only --allow-empty-message --cleanup=whitespace --message="$comment" -- "$@"
}

# What could not be pushed goes with the next commit.
publish() {
  if [ -n "$archive" ]; then git push --quiet -- "$archive" HEAD; fi
}

is_unchanged() {
  git ls-files --error-unmatch -- "$1" >/dev/null 2>&1 && git diff --quiet HEAD -- "$1" 2>/dev/null
}

# Until Git is done, a second name holds on to the old file, which is put back if Git fails or is ended.
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

# get REVISION MODE: writes the file anew, with the version in its header. Git leaves alone what it takes for
# unchanged, which would keep an old header: hence the touch with a time of long ago.
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
  else
    commit "$2" "$file"
  fi
  get HEAD "$1"
}

# tag LABEL: the units of one command are one commit each, and the tag moves on with them; but a tag that stands on
# another commit than the one before stays there, and Git says so.
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

# A copy without files: those that are there already stay as they are; those that are missing are brought.
copy_archive() {
  git clone --quiet --no-checkout -- "$archive" "$1/.orchard-link"
  mv -- "$1/.orchard-link/.git" "$1/.git"
  rmdir -- "$1/.orchard-link"
  git reset --quiet
  (cd -- "$1" && git checkout-index --quiet --all) || true
}

make_repository() {
  if [ -n "$archive" ]; then
    case $archive in
      *:*) ;;
      *) if [ ! -e "$archive" ]; then git init --quiet --bare -- "$archive"; fi ;;
    esac
    # An address that doesn't answer ends it here.
    newest=$(git ls-remote -- "$archive" HEAD)
    if [ -n "$newest" ]; then
      copy_archive "$1"
      return
    fi
  fi
  git init --quiet -- "$1"
  if [ -n "$archive" ]; then git -C "$1" remote add -- origin "$archive"; fi
}

# "ident" makes Git fill in the keyword Id in unit files; colleagues get it with the repository.
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
    git add --force -- "$file"
    check_in "$2" "$4"
    publish
    ;;
  checkin)
    archive=$1 file=$4
    check_in "$3" "$5"
    publish
    if [ -n "$2" ]; then tag "$2"; fi
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
    # By the path in the repository, as that of a version holds none of the file system.
    path=$(git ls-tree -r --full-name --name-only "$1" -- "$3")
    if [ -z "$path" ]; then
      echo "error: ${3##*/} is not in $1" >&2
      exit 1
    fi
    target=$2/${3##*/}
    git cat-file --filters "$1:$path" >"$target.orc~" || { rm -f -- "$target.orc~"; exit 1; }
    mv -f -- "$target.orc~" "$target"
    ;;
  move)
    archive=$1
    if [ -e "$2" ]; then
      mkdir -p -- "${3%/*}"
      git mv -- "$2" "$3"
    elif [ -z "$(git ls-files -- "$2")" ] && [ -n "$(git ls-files -- "$3")" ]; then
      # It went along with the directory that it stands in.
      exit 0
    else
      # The host has moved it already.
      git rm -r --quiet --force --cached -- "$2"
      git add --force -- "$3"
    fi
    commit "Move ${2##*/} to ${3##*/}" "$2" "$3"
    publish
    ;;
  delete)
    archive=$1
    if [ -d "$2" ]; then
      # Files in there that Git doesn't know stay.
      git rm -r --quiet --force -- "$2"
    else
      git rm --quiet --force --cached -- "$2"
      rm -f -- "$2"
    fi
    commit "Delete ${2##*/}" "$2"
    publish
    ;;
  *)
    echo "error: git.sh knows no \"$action\"" >&2
    exit 1
    ;;
esac
