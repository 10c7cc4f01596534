#!/usr/bin/env bash
# Installs the Debian packages kvxml needs to build, test, fuzz and benchmark.
# Does nothing when they are all present.
set -euo pipefail

packages=(g++ make cmake pkg-config libexpat1-dev libpcre2-dev zlib1g-dev
          libgtest-dev libbenchmark-dev clang libclang-rt-14-dev python3 locales
          default-jre-headless libfastinfoset-java)  # the Java reference: Fast Infoset interop peer
missing=()
for pkg in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$pkg")
done
sudo_cmd=()
[[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)
if ((${#missing[@]} > 0)); then
  echo "setup: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
# A comma-decimal locale lets the tests prove numbers ignore the process locale.
if ! locale -a 2>/dev/null | grep -qix 'de_DE.utf8'; then
  "${sudo_cmd[@]}" localedef -i de_DE -f UTF-8 de_DE.UTF-8 >/dev/null 2>&1 || true
fi
