# Shared by ./mova and ./test: installs missing packages and builds quietly. Source it with the repository's root as
# the working directory. Everything is told on standard error; $name is the script's own name.

say() { printf '%s: %s\n' "$name" "$*" >&2; }

# Runs a command with its output in a log; shows the log's end if it fails.
logged() {
  local log=$1
  shift
  mkdir -p build
  "$@" >"$log" 2>&1 </dev/null && return
  say "this failed: $*"
  tail -n 20 "$log" >&2
  say "the whole output is in $log"
  return 1
}

packages_for() { awk -v purposes="$*" '!/^#/ && index(" " purposes " ", " " $1 " ") { print $2 }' packages.txt; }

missing_packages() {
  local package
  for package in $(packages_for "$@"); do
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || echo "$package"
  done
}

# install_packages PURPOSE...: installs what packages.txt lists for these purposes and is not there yet.
install_packages() {
  if ! command -v dpkg-query apt-get >/dev/null; then
    say "no apt-get here; the packages in packages.txt are taken to be installed in some other way"
    return
  fi
  local missing sudo=
  missing=$(missing_packages "$@" | tr '\n' ' ')
  [[ $missing ]] || return 0
  if ((EUID != 0)); then
    command -v sudo >/dev/null || {
      say "these packages are missing: $missing"
      say "install them as root, then start $name again: apt-get install $missing"
      return 1
    }
    sudo='sudo'
  fi
  say "installing $missing"
  # A list that is missing or too old is the one reason for a second try.
  local install="$sudo env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends"
  $install $missing >/dev/null 2>&1 </dev/null && return
  logged build/apt.log $sudo apt-get update -q && logged build/apt.log $install $missing && return
  say "install these packages by hand, then start $name again: $missing"
  return 1
}

# Passes a line like "[12/80] Building ..." on as a progress line, if a person is watching.
show_progress() {
  if [[ ! -t 2 ]]; then
    cat >/dev/null
    return
  fi
  local line
  while IFS= read -r line; do
    [[ $line == \[*/*\]* ]] && printf '\r%s: building %s\033[K' "$name" "${line%%]*}]" >&2
  done
  printf '\r\033[K' >&2
}

# build PRESET [TARGET...]: configures if need be and builds into build/PRESET.
build() {
  local preset=$1 log=build/$1.log launcher=()
  shift
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  mkdir -p build
  if [[ ! -f build/$preset/build.ninja ]]; then
    logged "$log" cmake --preset "$preset" "${launcher[@]}" || return
  fi
  cmake --build "build/$preset" ${1:+--target "$@"} 2>&1 </dev/null | tee "$log" | show_progress
  ((PIPESTATUS[0] == 0)) && return
  say "the build failed:"
  grep -A 12 -m 1 -E 'FAILED|error' "$log" >&2 || tail -n 20 "$log" >&2
  say "the whole output is in $log; deleting build/$preset and starting again builds from scratch"
  return 1
}
