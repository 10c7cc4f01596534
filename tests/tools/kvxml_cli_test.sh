#!/usr/bin/env bash
# kvxml_cli_test.sh KVXML WORK: the command-line tool's conversions, report,
# messages and exit statuses.
set -uo pipefail
kvxml=$1 work=$2
rm -rf "$work" && mkdir -p "$work" && cd "$work" || exit 1
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
expect_status() {  # status command...
  local want=$1; shift
  "$@" >out.txt 2>err.txt; local got=$?
  [[ $got == "$want" ]] || fail "'$*' exited $got, expected $want; stderr: $(cat err.txt)"
}
hex() { od -An -tx1 -N"$2" "$1" | tr -d ' \n'; }

cat >doc.xml <<'XML'
<?xml version="1.0"?>
<order xmlns="urn:ex" id="7"><item>ok</item><item n="1">ok</item><note xmlns="">caf&#233;</note></order>
XML

# Both directions, by extension, by --to, and through standard input and output.
expect_status 0 "$kvxml" convert doc.xml doc.fi
[[ $(hex doc.fi 4) == e0000001 ]] || fail "doc.fi does not start with the Fast Infoset header"
expect_status 0 "$kvxml" convert doc.fi back.xml
grep -q 'item n="1">ok<' back.xml || fail "back.xml lost the second item: $(cat back.xml)"
grep -q 'café' back.xml || fail "back.xml lost the UTF-8 text: $(cat back.xml)"
expect_status 0 "$kvxml" convert --to fi - piped.out <doc.xml
cmp -s doc.fi piped.out || fail "stdin conversion differs from the file conversion"
"$kvxml" convert --to xml doc.fi - >stdout.xml 2>err.txt || fail "fi to stdout failed: $(cat err.txt)"
cmp -s back.xml stdout.xml || fail "stdout conversion differs from the file conversion"
expect_status 0 "$kvxml" convert --pretty doc.fi pretty.xml
[[ $(wc -l <pretty.xml) -ge 5 ]] || fail "--pretty did not indent: $(cat pretty.xml)"
expect_status 0 "$kvxml" convert --suggested doc.xml typed.fi
expect_status 0 "$kvxml" convert typed.fi typed.xml
cmp -s back.xml typed.xml || fail "--suggested changed the document: $(cat typed.xml)"

# XML text reaches the writer as parser events, Fast Infoset input through
# its general calls: with the root's own prefixes, an invented one (for a
# namespace declared below the root), namespaced attributes and an
# undeclared default namespace both encode the same bytes. The root's
# prefixes survive both ways, so the QName in xsi:type still resolves.
cat >ns.xml <<'XML'
<r xmlns="urn:d" xmlns:a="urn:a" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" a:one="1" p="x"><a:e a:k="w" xsi:type="a:T"><i xmlns="">t</i></a:e><e xmlns:b="urn:b" b:k="v" a:z="3"/></r>
XML
expect_status 0 "$kvxml" convert ns.xml ns.fi
expect_status 0 "$kvxml" convert --to fi ns.fi again.fi
cmp -s ns.fi again.fi || fail "XML text and Fast Infoset input encode the same document differently"
expect_status 0 "$kvxml" convert ns.fi ns-back.xml
grep -q '<r xmlns="urn:d" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:a="urn:a" a:one="1" p="x"><a:e a:k="w" xsi:type="a:T">' ns-back.xml ||
  fail "the root's prefixes were not kept: $(cat ns-back.xml)"

# The converter resolves prefixes itself: a prefix rebound and restored,
# a default namespace undeclared and redeclared, two prefixes of one
# namespace; namespace errors keep expat's wording and line.
printf '<r xmlns="urn:d" xmlns:p="urn:1"><p:a><p:b xmlns:p="urn:2" p:x="1"><p:c/></p:b><p:d p:y="2"/></p:a><e xmlns=""><f/></e><h xmlns="urn:h"><i/></h><j xml:lang="en"/><k xmlns:q="urn:1" q:z="3" p:w="4"/></r>' >scopes.xml
expect_status 0 "$kvxml" convert scopes.xml scopes.fi
expect_status 0 "$kvxml" convert scopes.fi scopes-back.xml
grep -qxF '<r xmlns="urn:d" xmlns:p="urn:1" xmlns:AA="urn:2"><p:a><AA:b AA:x="1"><AA:c/></AA:b><p:d p:y="2"/></p:a><e xmlns=""><f/></e><AB:h xmlns:AB="urn:h"><AB:i/></AB:h><j xml:lang="en"/><k p:z="3" p:w="4"/></r>' scopes-back.xml ||
  fail "prefix scopes: $(cat scopes-back.xml)"
printf '<r>\n<a:b/></r>' >unbound.xml
printf '<r xmlns:p="u" xmlns:q="u">\n<e p:x="1" q:x="2"/></r>' >twice.xml
printf '<r xmlns:p="u">\n<e xmlns:p=""/></r>' >undeclared.xml
printf '<r>\n<a:b:c/></r>' >colons.xml
for case in "unbound.xml:unbound prefix" "twice.xml:duplicate attribute" \
            "undeclared.xml:must not undeclare prefix" "colons.xml:not well-formed (invalid token)"; do
  expect_status 1 "$kvxml" convert "${case%%:*}" out.fi
  grep -qx "kvxml: ${case%%:*}: ${case#*:} at line 2" err.txt || fail "${case%%:*}: $(cat err.txt)"
done

# Expat runs on a thread of its own and hands its events over in blocks. A
# text longer than a block, a start tag with more namespaces than a block
# looks up, and more blocks than may wait encode as on one CPU and as from
# Fast Infoset; when the writer fails, the parser stops too.
{
  printf '<r xmlns="urn:d"'
  for i in $(seq 12); do printf ' xmlns:p%d="urn:%d" p%d:a="%d"' "$i" "$i" "$i" "$i"; done
  printf '><big>%0600000d</big>\n' 0
  awk 'BEGIN { for (i = 0; i < 100000; i++) printf "<e n=\"%d\">text %d</e>\n", i, i }'
  printf '</r>\n'
} >big.xml
expect_status 0 "$kvxml" convert big.xml big.fi
expect_status 0 "$kvxml" convert --to fi big.fi big-again.fi
cmp -s big.fi big-again.fi || fail "a document of many blocks encodes differently from Fast Infoset input"
if taskset -c 0 true 2>/dev/null; then
  expect_status 0 taskset -c 0 "$kvxml" convert big.xml big-one-cpu.fi
  cmp -s big.fi big-one-cpu.fi || fail "on one CPU the document encodes differently"
  expect_status 1 taskset -c 0 "$kvxml" convert big.xml /dev/full
fi
echo kept >old.fi
head -c 3000000 big.xml >cut-big.xml
expect_status 1 "$kvxml" convert cut-big.xml old.fi
[[ $(cat old.fi) == kept ]] || fail "a conversion that failed half way overwrote old.fi"
expect_status 1 timeout 60 "$kvxml" convert big.xml /dev/full
grep -qx "kvxml: /dev/full: write failed: No space left on device" err.txt || fail "/dev/full: $(cat err.txt)"
[[ -c /dev/full ]] || fail "a failed conversion removed the device it wrote to"

# Compressed output is read back as it is.
expect_status 0 "$kvxml" convert --gzip doc.xml doc.fi.gz
[[ $(hex doc.fi.gz 2) == 1f8b ]] || fail "--gzip output is not gzip"
expect_status 0 "$kvxml" convert --zlib doc.xml doc.xml.zz --to xml
[[ $(hex doc.xml.zz 1) == 78 ]] || fail "--zlib output is not zlib"
expect_status 0 "$kvxml" convert doc.fi.gz unzipped.xml
cmp -s back.xml unzipped.xml || fail "gzip input did not convert like plain input"

# Compressed XML text streams through the inflater: whole, in two gzip
# members, and from a pipe, it converts like the plain text.
gzip -nc doc.xml >doc.xml.gz
expect_status 0 "$kvxml" convert doc.xml.gz fromgz.fi
cmp -s doc.fi fromgz.fi || fail "gzip XML input did not convert like plain input"
head -c 60 doc.xml | gzip -c >two.xml.gz && tail -c +61 doc.xml | gzip -c >>two.xml.gz
expect_status 0 "$kvxml" convert - frompipe.fi <two.xml.gz
cmp -s doc.fi frompipe.fi || fail "two gzip members from a pipe did not convert like plain input"
head -c 30 doc.xml.gz >cut.xml.gz
expect_status 1 "$kvxml" convert cut.xml.gz cut.fi
grep -qx "kvxml: cut.xml.gz: truncated compressed data at byte 30" err.txt || fail "cut gzip: $(cat err.txt)"
{ head -c 10 doc.xml.gz; printf '\xff'; tail -c +12 doc.xml.gz; } >bad.xml.gz  # a reserved block type
expect_status 1 "$kvxml" convert bad.xml.gz bad.fi
grep -Eq "^kvxml: bad.xml.gz: corrupt compressed data at byte 1[01]$" err.txt || fail "corrupt gzip: $(cat err.txt)"

# The report.
expect_status 0 "$kvxml" info doc.fi.gz
for line in "format: fastinfoset" "compression: gzip" "elements: 4" "attributes: 2" "element names 3"; do
  grep -q "$line" out.txt || fail "info lacks '$line': $(cat out.txt)"
done

# Usage errors exit 2, failures 1, each with a message naming the file.
expect_status 0 "$kvxml" --help
grep -q "Usage: kvxml convert" out.txt || fail "--help prints no usage"
expect_status 0 "$kvxml" --version
grep -Eq "^kvxml [0-9]+\.[0-9]+" out.txt || fail "--version: $(cat out.txt)"
expect_status 2 "$kvxml"
expect_status 2 "$kvxml" convert doc.xml
expect_status 2 "$kvxml" convert --to json doc.xml x
expect_status 2 "$kvxml" frobnicate
expect_status 1 "$kvxml" convert missing.xml x.fi
grep -q "missing.xml" err.txt || fail "no file name in: $(cat err.txt)"
printf '<a>\n<b></a>\n' >bad.xml
expect_status 1 "$kvxml" convert bad.xml bad.fi
grep -q "bad.xml: .*line 2" err.txt || fail "no file and line in: $(cat err.txt)"
[[ ! -e bad.fi ]] || fail "a failed conversion left bad.fi behind"
# Fast Infoset failures name the byte where the reader stopped.
head -c 20 doc.fi >cut.fi
expect_status 1 "$kvxml" convert cut.fi cut.xml
grep -Eqx "kvxml: cut.fi: byte 1?[0-9]: Failed to parse FastInfoset. Unexpected End of File." err.txt ||
  fail "truncated: $(cat err.txt)"
printf '\xe0\x00\x00\x01\x00\x78\x00' >forged.fi
expect_status 1 "$kvxml" convert forged.fi forged.xml
grep -qx "kvxml: forged.fi: byte 7: Failed to parse FastInfoset. Invalid Encoding of Element type." err.txt ||
  fail "forged: $(cat err.txt)"

((failures == 0)) && echo "all checks passed"
((failures == 0))
