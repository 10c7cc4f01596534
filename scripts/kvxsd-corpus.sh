#!/usr/bin/env bash
# kvxsd-corpus.sh KVXSD [CORPUS] - runs the schema compiler over public
# real-world schemas taken from Debian packages (downloaded and unpacked, never
# installed), then compiles every generated binding with -Werror.
# Optional tool, not part of CI. Needs apt-get, dpkg-deb, unzip, g++.
#
#   KVXSD        the kvxsd binary (e.g. build/dev/tools/kvxsd/kvxsd)
#   CORPUS       work folder (default /tmp/xsdcorpus); packages are fetched once
#   KVXSD_CORPUS_COMPILE=0  skips the C++ compile step
#   KVXSD_CORPUS_ONLY=SET   runs one set (see the table below)
#   KVXSD_CORPUS_JOBS=N     schemas compiled at once (default 2)
#
# Prints one line per schema that fails and a pass count per set; the log of
# every failure is kept under CORPUS/out/SET/.
set -uo pipefail
kvxsd=$(realpath "$1")
corpus=${2:-/tmp/xsdcorpus}
source_dir=$(cd "$(dirname "$0")/.." && pwd)
jobs=${KVXSD_CORPUS_JOBS:-2}

# Folders whose schemas form one standard: besides each schema alone, they are
# compiled together in one run (one pair per schema, shared types written once),
# and only that run's output goes through the C++ compiler.
together='scap/openscap-common/schemas/oval/5.11.3'

# set | package | folders of the package (unpacked tree; a .jar is opened for its .xsd files)
sets='
saml|opensaml-schemas|usr/share/xml/opensaml
saml|xmltooling-schemas|usr/share/xml/xmltooling
saml|shibboleth-sp-common|usr/share/xml/shibboleth
scap|openscap-common|usr/share/openscap/schemas
jakartaee|libtomcat10-java|usr/share/java/tomcat10-servlet-api.jar usr/share/java/tomcat10-jsp-api.jar
spring|libspring-beans-java|usr/share/java/spring3-beans.jar
xmlschema|python3-xmlschema|usr/lib/python3/dist-packages/xmlschema/schemas
docbook|docbook5-xml|usr/share/xml/docbook/schema/xsd
gdal|gdal-data|usr/share/gdal
xmlcopyeditor|xmlcopyeditor|usr/share/xmlcopyeditor
'

fetch() {
  mkdir -p "$corpus/debs" "$corpus/unpacked" "$corpus/sets" || exit 1
  local line set pkg folders
  while IFS='|' read -r set pkg folders; do
    [[ -n $set ]] || continue
    [[ -d $corpus/sets/$set/$pkg ]] && continue
    (cd "$corpus/debs" && ls "${pkg}"_*.deb >/dev/null 2>&1 || apt-get download "$pkg") || exit 1
    dpkg-deb -x "$corpus/debs/${pkg}"_*.deb "$corpus/unpacked/$pkg" || exit 1
    mkdir -p "$corpus/sets/$set/$pkg"
    for f in $folders; do
      local src=$corpus/unpacked/$pkg/$f dest=$corpus/sets/$set/$pkg/$(basename "$f")
      if [[ $f == *.jar ]]; then
        mkdir -p "$dest" && unzip -qo "$(realpath "$src")" '*.xsd' -d "$dest"
      else
        cp -r "$src" "$dest"
      fi
    done
  done <<<"$sets"
  # Old releases of the same standard add time, not cases: keep the newest OVAL.
  find "$corpus/sets/scap" -path '*/oval/5.*' -prune ! -name 5.11.3 -exec rm -rf {} + 2>/dev/null
}

# A catalog per set: each target namespace that exactly one schema of the set
# declares maps to that schema (imports by namespace alone find it).
make_catalog() {
  local set=$1
  find "$corpus/sets/$set" -name '*.xsd' -print0 |
    xargs -0 grep -o -m1 'targetNamespace="[^"]*"' |
    sed 's/:targetNamespace="\(.*\)"$/ \1/' | sort -k2 |
    awk '{ n[$2]++; f[$2] = $1 } END { for (ns in n) if (n[ns] == 1) print ns, f[ns] }' >"$corpus/out/$set.catalog"
}

# run_one SET OUT SCHEMA...: compiles schemas (with their set's folders searched), then the C++.
run_one() {
  local set=$1 out=$2; shift 2
  local rel=${1#"$corpus/sets/$set/"}
  [[ $# == 1 ]] || rel="${rel%/*}/*.xsd (together)"
  rm -rf "$out" && mkdir -p "$out"
  local includes=() d
  while read -r d; do includes+=(-I "$d"); done < <(find "$corpus/sets/$set" -name '*.xsd' -printf '%h\n' | sort -u)
  timeout 120 "$kvxsd" -o "$out" "${includes[@]}" --catalog "$corpus/out/$set.catalog" "$@" >"$out/kvxsd.log" 2>&1
  local status=$?
  if [[ $status == 1 ]]; then echo "error     $set/$rel: $(grep -m1 error: "$out/kvxsd.log")"; return; fi
  if [[ $status != 0 ]]; then echo "CRASH($status) $set/$rel"; return; fi
  local folder=${1%/*}
  if [[ ${KVXSD_CORPUS_COMPILE:-1} == 1 && ( $# -gt 1 || " $together " != *" ${folder#"$corpus/sets/"} "* ) ]]; then
    local cpp
    for cpp in "$out"/*.cpp; do
      if ! g++ -std=c++17 -Wall -Wextra -Werror -fsyntax-only -I"$source_dir/include" -I"$out" "$cpp" \
        >"$out/compile.log" 2>&1; then
        echo "COMPILE   $set/$rel: $(grep -m1 'error' "$out/compile.log")"
        return
      fi
    done
  fi
  echo "ok        $set/$rel"
}
export -f run_one
export corpus kvxsd source_dir together KVXSD_CORPUS_COMPILE

fetch
rm -rf "$corpus/out" && mkdir -p "$corpus/out"
cut -d'|' -f1 <<<"$sets" | sort -u | while read -r set; do
  [[ -n $set ]] || continue
  [[ -z ${KVXSD_CORPUS_ONLY:-} || $KVXSD_CORPUS_ONLY == "$set" ]] || continue
  make_catalog "$set"
  find "$corpus/sets/$set" -name '*.xsd' | sort |
    xargs -P "$jobs" -I{} bash -c 'f=$1; r=${f#"$corpus/sets/"}; run_one "$0" "$corpus/out/${r%.xsd}" "$f"' "$set" {}
  for folder in $together; do
    [[ $folder == "$set"/* ]] || continue
    run_one "$set" "$corpus/out/$folder.together" "$corpus/sets/$folder"/*.xsd
  done
done | tee "$corpus/results.txt" | grep -v '^ok '
echo "--- passed / schemas per set"
awk '{ split($2, p, "/"); set = p[1]; n[set]++; if ($1 == "ok") ok[set]++ }
     END { for (s in n) { printf "%-14s %4d / %4d\n", s, ok[s], n[s]; t += n[s]; to += ok[s] }
           printf "%-14s %4d / %4d\n", "total", to, t }' "$corpus/results.txt"
