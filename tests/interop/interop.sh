#!/usr/bin/env bash
# interop.sh KVXML CORPUS WORK: converts every corpus document both ways
# between kvxml and the Java Fast Infoset reference and compares the element
# trees. Exits 77 (skipped) when Java or the reference is not installed.
set -uo pipefail
kvxml=$1 corpus=$2 work=$3
here=$(cd "$(dirname "$0")" && pwd)
jar=${KVXML_FASTINFOSET_JAR:-/usr/share/java/FastInfoset.jar}
if ! command -v java >/dev/null 2>&1; then
  echo "SKIPPED: no java on PATH (scripts/setup.sh installs default-jre-headless)"; exit 77
fi
if [[ ! -f $jar ]]; then
  echo "SKIPPED: $jar missing (scripts/setup.sh installs libfastinfoset-java)"; exit 77
fi
tools=com.sun.xml.fastinfoset.tools
rm -rf "$work" && mkdir -p "$work/gen"
python3 "$here/gen_corpus.py" "$work/gen" || exit 1
failures=0 checks=0
check() {  # what, original, converted
  checks=$((checks + 1))
  if ! python3 "$here/compare_trees.py" "$2" "$3"; then
    echo "FAIL: $1"; failures=$((failures + 1))
  fi
}
for doc in "$corpus"/*.xml "$work"/gen/*.xml; do
  name=$(basename "$doc" .xml) w=$work/$name
  # kvxml writes, the reference reads.
  for mode in plain suggested; do
    flags=(); [[ $mode == suggested ]] && flags=(--suggested)
    if "$kvxml" convert "${flags[@]}" "$doc" "$w.$mode.kv.fi" &&
       java -cp "$jar" $tools.FI_SAX_XML "$w.$mode.kv.fi" "$w.$mode.kv.java.xml"; then
      check "$name: kvxml ($mode) -> reference" "$doc" "$w.$mode.kv.java.xml"
    else
      echo "FAIL: $name: kvxml ($mode) -> reference did not run"; failures=$((failures + 1))
    fi
  done
  # The reference writes, kvxml reads.
  if java -cp "$jar" $tools.XML_SAX_FI "$doc" "$w.java.fi" &&
     "$kvxml" convert "$w.java.fi" "$w.java.kv.xml"; then
    check "$name: reference -> kvxml" "$doc" "$w.java.kv.xml"
  else
    echo "FAIL: $name: reference -> kvxml did not run"; failures=$((failures + 1))
  fi
  kv=$(stat -c %s "$w.plain.kv.fi" 2>/dev/null || echo 0) java_size=$(stat -c %s "$w.java.fi" 2>/dev/null || echo 0)
  echo "$name: xml $(stat -c %s "$doc") bytes, kvxml fi $kv, reference fi $java_size"
done
echo "$checks comparisons, $failures failures"
((failures == 0))
