# Shared by the scripts beside this file, which source it: they work in the root of the checkout, keep long output in
# build/logs and install what is missing.
# shellcheck shell=bash

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit
# shellcheck disable=SC2034  # for the scripts that source this file
jobs=$(nproc)

if [[ -t 1 ]]; then bold=$'\e[1m' plain=$'\e[0m'; else bold='' plain=''; fi

# heading TEXT: the title of a stage.
heading() { printf '\n%s== %s%s\n' "$bold" "$*" "$plain"; }

# show_progress LOG: says now and then how far the command is that writes LOG, until it is stopped: on a terminal in one
# line that is written again, elsewhere in a line of its own every 30 s.
show_progress() {
  local log=$1 start=$SECONDS last
  trap 'kill $! 2>/dev/null; exit 0' TERM
  while true; do
    sleep "$([[ -t 1 ]] && echo 1 || echo 30)" >/dev/null &
    wait $!
    last=$(tail -c 300 "$log" | tr '\r' '\n' | awk 'NF { last = $0 } END { print substr(last, 1, 90) }')
    if [[ -t 1 ]]; then printf '\r\e[K%4d s  %s' $((SECONDS - start)) "$last"; else
      printf '%4d s  %s\n' $((SECONDS - start)) "$last"
    fi
  done
}

# quietly NAME COMMAND...: runs COMMAND with its output in build/logs/NAME.log, whose end is shown when it fails.
quietly() {
  local log=build/logs/$1.log status=0 watcher
  shift
  mkdir -p build/logs
  : >"$log"
  show_progress "$log" &
  watcher=$!
  "$@" >"$log" 2>&1 || status=$?
  kill "$watcher"
  wait "$watcher" 2>/dev/null || true
  if [[ -t 1 ]]; then printf '\r\e[K'; fi
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
