# Shared by the scripts beside this file, which source it: they work in the root of the checkout, keep long output in
# build/logs and install what is missing.
# shellcheck shell=bash

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit
# shellcheck disable=SC2034  # for the scripts that source this file
jobs=$(nproc)

if [[ -t 1 ]]; then bold=$'\e[1m' plain=$'\e[0m'; else bold='' plain=''; fi

# heading TEXT: the title of a stage.
heading() { printf '\n%s== %s%s\n' "$bold" "$*" "$plain"; }

# quietly NAME COMMAND...: runs COMMAND with its output in build/logs/NAME.log, whose end is shown when it fails.
quietly() {
  local log=build/logs/$1.log status=0
  shift
  mkdir -p build/logs
  "$@" >"$log" 2>&1 || status=$?
  if ((status != 0)); then
    tail -n 120 "$log"
    printf 'failed with status %d: %s   (all of its output: %s)\n' "$status" "$*" "$log" >&2
  fi
  return "$status"
}

# install_packages GROUP...: installs the packages of these groups of packages.txt that are missing.
install_packages() {
  local group package missing=() as_root=()
  while read -r group package; do
    [[ " $* " == *" $group "* ]] || continue
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
  done <scripts/packages.txt
  if ((${#missing[@]} == 0)); then
    echo "all there"
    return
  fi
  if ! command -v apt-get >/dev/null; then
    echo "cannot install packages here; the build may miss: ${missing[*]}" >&2
    return
  fi
  ((EUID == 0)) || as_root=(sudo)
  echo "installing ${missing[*]}"
  quietly packages "${as_root[@]}" scripts/apt-install "${missing[@]}"
}

configure() { quietly "configure-$1" cmake --preset "$1"; }
build() { quietly "build-$1" cmake --build --preset "$@"; }
