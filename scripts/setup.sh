#!/usr/bin/env bash
# Installs the Debian packages kvxml needs to build, test, fuzz and benchmark.
# Does nothing when they are all present.
set -euo pipefail

packages=(g++ make cmake pkg-config libexpat1-dev libpcre2-dev zlib1g-dev
          libgtest-dev libbenchmark-dev clang libclang-rt-14-dev python3)
missing=()
for pkg in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$pkg")
done
if ((${#missing[@]} == 0)); then
  exit 0
fi
echo "setup: installing ${missing[*]}"
sudo_cmd=()
[[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
