#!/usr/bin/env bash
# kvxsd_cli_test.sh KVXSD WORK: the schema compiler's command line, search
# folders, catalog, exit statuses, and no output after an error.
set -uo pipefail
kvxsd=$1 work=$2
rm -rf "$work" && mkdir -p "$work/out" "$work/lib" "$work/cat" && cd "$work" || exit 1
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
expect_status() {  # status command...
  local want=$1; shift
  "$@" >out.txt 2>err.txt; local got=$?
  [[ $got == "$want" ]] || fail "'$*' exited $got, expected $want; stderr: $(cat err.txt)"
}
xs='xmlns:xs="http://www.w3.org/2001/XMLSchema"'
echo "<xs:schema $xs targetNamespace=\"urn:l\"><xs:element name=\"l\" type=\"xs:int\"/></xs:schema>" >lib/l.xsd
echo "<xs:schema $xs targetNamespace=\"urn:c\"><xs:element name=\"c\" type=\"xs:int\"/></xs:schema>" >cat/c.xsd
echo "<xs:schema $xs targetNamespace=\"urn:k\"><xs:element name=\"k\" type=\"xs:int\"/></xs:schema>" >lib/k.xsd
echo "urn:c cat/c.xsd" >catalog.txt
cat >main.xsd <<XSD
<xs:schema $xs targetNamespace="urn:m">
  <xs:import namespace="urn:l" schemaLocation="http://example.org/schemas/l.xsd"/>
  <xs:import namespace="urn:c"/>
  <xs:import namespace="urn:k" schemaLocation="classpath:/schemas/k.xsd"/>
  <xs:import namespace="http://www.w3.org/XML/1998/namespace" schemaLocation="http://www.w3.org/2001/xml.xsd"/>
  <xs:element name="e"><xs:complexType><xs:sequence><xs:element name="min" type="xs:int"/><xs:element name="Min" type="xs:int"/></xs:sequence></xs:complexType></xs:element>
</xs:schema>
XSD

expect_status 0 "$kvxsd" --help
grep -q -- '--catalog FILE' out.txt || fail "--help does not list --catalog"
expect_status 0 "$kvxsd" --version
grep -q '^kvxsd [0-9]' out.txt || fail "--version printed: $(cat out.txt)"
expect_status 1 "$kvxsd"
expect_status 1 "$kvxsd" --bogus main.xsd
expect_status 1 "$kvxsd" --rename novalue main.xsd

# A remote or classpath: location is found in a -I folder by its file name; a namespace through the catalog.
expect_status 1 "$kvxsd" --dump-model main.xsd
grep -q 'main.xsd:2:3: error: remote schema locations are not supported' err.txt || fail "remote: $(cat err.txt)"
expect_status 0 "$kvxsd" --dump-model -I lib --catalog catalog.txt --explain-names main.xsd
grep -q '^element l {urn:l}' out.txt || fail "l.xsd not loaded through -I: $(cat out.txt)"
grep -q '^element k {urn:k}' out.txt || fail "k.xsd not loaded through -I: $(cat out.txt)"
grep -q '^element c {urn:c}' out.txt || fail "c.xsd not loaded through the catalog: $(cat out.txt)"
grep -q '^e/Min: Min -> Min2 (clashes with Min)$' out.txt || fail "--explain-names: $(cat out.txt)"

# Two main schemas of one file name would overwrite each other's output.
expect_status 1 "$kvxsd" -o out lib/l.xsd cat/../lib/l.xsd
grep -q '^kvxsd: error: lib/l.xsd and cat/../lib/l.xsd would both be written to l.h and l.cpp' err.txt ||
  fail "same stem: $(cat err.txt)"

# An error leaves the output folder untouched.
expect_status 1 "$kvxsd" -o out main.xsd
[[ -z $(ls -A out) ]] || fail "output left after an error: $(ls -A out)"
expect_status 0 "$kvxsd" -o out -I lib --catalog catalog.txt main.xsd
[[ -z $(ls -A out | grep kvxsd-) ]] || fail "temporary files left: $(ls -A out)"

[[ $failures == 0 ]] && echo "all kvxsd command-line checks passed"
exit $((failures != 0))
