# What ./demo and ./check share; sourced by them.
#
# Installs the Debian packages that are missing, and only these; says nothing when all are there.

packages=(g++ cmake ninja-build libsqlite3-dev libpq-dev libgtest-dev libbenchmark-dev python3
          postgresql)

step() {
  printf '\n== %s\n' "$*"
}

is_installed() {
  [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

install_missing() {
  if ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian: the counterparts of these packages are expected: ${packages[*]}"
    return
  fi
  local missing=() package
  for package in "${packages[@]}"; do
    is_installed "$package" || missing+=("$package")
  done
  ((${#missing[@]})) || return 0

  step "Installing what is missing: ${missing[*]}"
  local root=()
  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
      echo "Neither root nor sudo. As root: apt-get install ${missing[*]}" >&2
      return 1
    fi
    root=(sudo)
  fi
  "${root[@]}" apt-get update -qq
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# configure PRESET: quiet unless it fails.
configure() {
  local launcher="" log
  if command -v ccache >/dev/null; then launcher=ccache; fi
  if ! log=$(cmake --preset "$1" "-DCMAKE_CXX_COMPILER_LAUNCHER=$launcher" 2>&1); then
    echo "$log" >&2
    return 1
  fi
}
