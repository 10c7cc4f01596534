#!/usr/bin/env bash
# Installs the Debian packages kvxml needs to build, test, fuzz and benchmark,
# and brings the libraries that parse untrusted input up to the current
# security update. Does nothing when all are present and current.
set -euo pipefail

packages=(g++ make cmake pkg-config libexpat1-dev libpcre2-dev zlib1g-dev
          libgtest-dev libbenchmark-dev clang libclang-rt-14-dev python3 locales
          default-jre-headless libfastinfoset-java  # the Java reference: Fast Infoset interop peer
          libxml2-utils)  # xmllint: checks generated bindings write schema-valid documents
missing=()
for pkg in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$pkg")
done
sudo_cmd=()
[[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
# Package lists older than a day (or none, on a fresh machine) would hide both
# missing packages and newer security updates.
if ! find /var/lib/apt/lists -maxdepth 1 -name '*_Packages' -mtime -1 2>/dev/null | grep -q .; then
  "${sudo_cmd[@]}" apt-get update -qq
fi
if ((${#missing[@]} > 0)); then
  echo "setup: installing ${missing[*]}"
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
# Older expat, zlib and PCRE2 builds of Debian 12 have parser crashes fixed
# in later security updates; a present but outdated package is upgraded.
runtime=(libexpat1 libexpat1-dev zlib1g zlib1g-dev libpcre2-8-0 libpcre2-dev)
outdated=$(LC_ALL=C apt-cache policy "${runtime[@]}" 2>/dev/null | awk '
  /^[^ ]/ { pkg = $1; sub(/:$/, "", pkg) }
  $1 == "Installed:" { installed = $2 }
  $1 == "Candidate:" && installed != "(none)" && $2 != "(none)" && installed != $2 { printf "%s ", pkg }')
if [[ -n "$outdated" ]]; then
  echo "setup: updating ${outdated}"
  # shellcheck disable=SC2086  # a list of package names
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends $outdated >/dev/null
fi
# A comma-decimal locale lets the tests prove numbers ignore the process locale.
if ! locale -a 2>/dev/null | grep -qix 'de_DE.utf8'; then
  "${sudo_cmd[@]}" localedef -i de_DE -f UTF-8 de_DE.UTF-8 >/dev/null 2>&1 || true
fi
