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

# missing_packages GROUP...: the packages of these groups of packages.txt that are not installed.
missing_packages() {
  local group package
  while read -r group package; do
    [[ " $* " == *" $group "* ]] || continue
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || echo "$package"
  done <scripts/packages.txt
}

# install_packages GROUP...: installs the packages of these groups that are missing.
install_packages() {
  local missing as_root=()
  mapfile -t missing < <(missing_packages "$@")
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

# install_while_building PRESET GROUP...: installs "build", then the other groups, which keeps one processor busy for a
# minute or two. Where nothing was built yet another one meanwhile builds what needs none of them: the plug-in and the
# tests of the libraries.
install_while_building() (
  preset=$1
  shift
  install_packages build
  if [[ -e build/$preset || -z $(missing_packages "$@") ]]; then
    install_packages "$@"
    return
  fi
  # What it does not find now it would not look for again.
  trap 'rm -f "build/$preset/CMakeCache.txt"' EXIT
  quietly configure-meanwhile cmake --preset "$preset"
  ninja -C "build/$preset" -j1 userd-fld test_{support,format,dataset,reader,reader_internals,host,inspect} \
    >build/logs/build-meanwhile.log 2>&1 &
  builder=$!
  status=0
  install_packages "$@" || status=$?
  kill "$builder" 2>/dev/null || true
  wait "$builder" || true
  return "$status"
)

# The virtual environment with packages of PyPI, and where wheels of the checkout go.
pypi=build/pypi
wheels=build/wheels

# install_from_pypi: what the Python package is built, tested and compared with, in its newest versions, in the environment,
# which is made if it is missing. Says why and fails when the registry does not give it.
install_from_pypi() {
  local log=build/logs/pypi.log
  mkdir -p build/logs
  [[ -x $pypi/bin/pip ]] || python3 -m venv "$pypi" || return
  if ! timeout 90 "$pypi/bin/pip" install --upgrade --upgrade-strategy eager --disable-pip-version-check --retries 1 \
    auditwheel meshio pybind11 pytest pyvista scikit-build-core vtk >"$log" 2>&1 </dev/null; then
    echo "PyPI does not give what it takes (all of it: $log): $(grep -v '^\s*$' "$log" | tail -n 1)"
    return 1
  fi
}

# install_wheel: builds a wheel of the checkout, as pip does, and installs it in the environment.
install_wheel() {
  rm -rf "$wheels"
  quietly wheel "$pypi/bin/pip" wheel --no-deps --no-build-isolation --disable-pip-version-check -w "$wheels" . &&
    quietly wheel-install "$pypi/bin/pip" install --no-deps --force-reinstall --disable-pip-version-check "$wheels"/*.whl
}

# configure PRESET [OPTION...]
configure() { quietly "configure-$1" cmake --preset "$@"; }
build() { quietly "build-$1" cmake --build --preset "$@"; }
