#!/usr/bin/env bash
# Times kvxsd on a generated schema set of about N lines (default 20,000): two
# namespaces importing each other, named and anonymous types, refs, groups,
# enumerations, extensions. Then builds the generated code and reports seconds
# and object size per 1,000 schema lines.
# usage: bench/kvxsd-scale.sh KVXSD [LINES] [WORK_DIR]   (KVXSD_SCALE_COMPILE=0: time kvxsd only)
set -euo pipefail
kvxsd=$1 lines=${2:-20000} work=${3:-/tmp/kvxsd-scale}
root=$(cd "$(dirname "$0")/.." && pwd)
rm -rf "$work" && mkdir -p "$work/out"
python3 - "$work" "$lines" <<'PY'
import sys
work, target = sys.argv[1], int(sys.argv[2])
head = '<?xml version="1.0"?>\n<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns:a="urn:scale:a" xmlns:b="urn:scale:b"\n  targetNamespace="urn:scale:%s" elementFormDefault="qualified">\n  <xs:import namespace="urn:scale:%s" schemaLocation="%s.xsd"/>\n'
def block(ns, other, i):
    return f'''  <xs:simpleType name="Code{i}"><xs:restriction base="xs:token">
    <xs:enumeration value="c{i}-one"/><xs:enumeration value="c{i}-two"/><xs:enumeration value="c{i}-three"/>
  </xs:restriction></xs:simpleType>
  <xs:group name="Parts{i}"><xs:sequence>
    <xs:element name="part" type="xs:string" maxOccurs="unbounded"/>
    <xs:element name="weight" minOccurs="0"><xs:simpleType><xs:restriction base="xs:decimal"><xs:minInclusive value="0"/></xs:restriction></xs:simpleType></xs:element>
  </xs:sequence></xs:group>
  <xs:complexType name="Base{i}"><xs:sequence>
    <xs:element name="name" type="xs:string"/>
    <xs:element name="code" type="{ns}:Code{i}" minOccurs="0"/>
    <xs:element name="peer" type="{other}:Base{i}" minOccurs="0"/>
  </xs:sequence><xs:attribute name="id" type="xs:int" use="required"/></xs:complexType>
  <xs:complexType name="Item{i}"><xs:complexContent><xs:extension base="{ns}:Base{i}"><xs:sequence>
    <xs:group ref="{ns}:Parts{i}"/>
    <xs:element name="detail" minOccurs="0" maxOccurs="unbounded"><xs:complexType><xs:choice>
      <xs:element name="note" type="xs:string"/><xs:element name="when" type="xs:dateTime"/>
      <xs:element ref="{ns}:item{i}"/>
    </xs:choice></xs:complexType></xs:element>
  </xs:sequence></xs:extension></xs:complexContent></xs:complexType>
  <xs:element name="item{i}" type="{ns}:Item{i}"/>
'''
per = block('a', 'b', 0).count('\n')
n = max(1, target // (2 * per))
for ns, other in (('a', 'b'), ('b', 'a')):
    with open(f'{work}/{ns}.xsd', 'w') as f:
        f.write(head % (ns, other, other))
        for i in range(n): f.write(block(ns, other, i))
        f.write('</xs:schema>\n')
PY
total=$(cat "$work"/a.xsd "$work"/b.xsd | wc -l)
echo "schema lines: $total"
/usr/bin/time -f "kvxsd: %e s, %M KB peak" "$kvxsd" -o "$work/out" --namespace-map urn:scale:a=sa --namespace-map urn:scale:b=sb "$work/a.xsd" "$work/b.xsd"
echo "generated lines: $(cat "$work"/out/* | wc -l)"
[[ "${KVXSD_SCALE_COMPILE:-1}" == 0 ]] && exit 0
start=$(date +%s.%N)
for unit in a b; do
  c++ -std=c++17 -O2 -I"$root/include" -I"$work/out" -c "$work/out/$unit.cpp" -o "$work/out/$unit.o"
done
end=$(date +%s.%N)
bytes=$(size -t "$work"/out/*.o | tail -1 | awk '{print $4}')
awk -v s="$start" -v e="$end" -v l="$total" -v b="$bytes" \
  'BEGIN { printf "c++ -O2: %.1f s, %.0f KB of objects; per 1,000 schema lines %.2f s, %.0f KB\n", e-s, b/1024, (e-s)*1000/l, b/1024*1000/l }'
