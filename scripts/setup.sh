#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the programs need; skips what is present.
set -euo pipefail
packages=(cmake ninja-build g++ clang libgtest-dev libgmock-dev libbenchmark-dev libsqlite3-dev
          sqlite3 libedit-dev libcli11-dev libfmt-dev libpq-dev postgresql ccache
          qt6-base-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools libgl-dev fonts-wqy-microhei
          doxygen graphviz tmux pkg-config dpkg-dev clang-15)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
