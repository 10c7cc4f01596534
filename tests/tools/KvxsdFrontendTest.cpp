// KvxsdFrontendTest.cpp - the schema compiler's front end: schemas in, model facts and diagnostics out.
#include <gtest/gtest.h>

#include <stdlib.h>
#include <unistd.h>

#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "Frontend.h"
#include "ModelDump.h"

namespace {

const char* const kHead =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns:t='urn:t' targetNamespace='urn:t'";

// Writes the files into a fresh folder and compiles the first one.
struct Compiled {
    bool ok = false;
    std::string dump;
    std::string messages;
    std::vector<std::string> renames;
};

Compiled Compile(const std::map<std::string, std::string>& files, const std::string& main, kvxsd::Options options = {}) {
    char dir[] = "/tmp/kvxsd-test-XXXXXX";
    EXPECT_NE(mkdtemp(dir), nullptr);
    for (const auto& f : files) std::ofstream(std::string(dir) + "/" + f.first) << f.second;
    options.schemas.push_back(std::string(dir) + "/" + main);
    kvxsd::Model model;
    std::vector<std::string> messages;
    Compiled run;
    run.ok = kvxsd::BuildModel(options, model, messages);
    for (std::string m : messages) {
        for (size_t at; (at = m.find(dir)) != std::string::npos;) m.erase(at, sizeof(dir));  // "file:line:col"
        run.messages += m + "\n";
    }
    run.dump = kvxsd::DumpModel(model);
    run.renames = model.renames;
    for (const auto& f : files) unlink((std::string(dir) + "/" + f.first).c_str());
    rmdir(dir);
    return run;
}

std::string Schema(const std::string& body, const std::string& attributes = " elementFormDefault='qualified'") {
    return std::string(kHead) + attributes + ">" + body + "</xs:schema>";
}

struct ModelCase {
    const char* what;
    std::string body;
    std::vector<std::string> facts;  // lines (or line prefixes) the dump must contain
};

TEST(KvxsdFrontend, ResolvesComponentsIntoTheModel) {
    const std::vector<ModelCase> cases = {
        {"values, facets, enumerations, attributes",
         "<xs:complexType name='P'><xs:sequence>"
         "<xs:element name='sku'><xs:simpleType><xs:restriction base='xs:string'><xs:pattern value='[A-Z]+'/>"
         "<xs:maxLength value='8'/></xs:restriction></xs:simpleType></xs:element>"
         "<xs:element name='n' type='xs:nonNegativeInteger' minOccurs='0' nillable='true'/>"
         "<xs:element name='tag' type='xs:token' maxOccurs='unbounded'/>"
         "<xs:element name='s' type='t:St' default='on'/>"
         "<xs:element name='toks'><xs:simpleType><xs:restriction base='xs:NMTOKENS'><xs:maxLength value='3'/>"
         "</xs:restriction></xs:simpleType></xs:element></xs:sequence>"
         "<xs:attribute name='id' type='xs:unsignedLong' use='required'/>"
         "<xs:attribute name='c' type='t:St' fixed='off'/></xs:complexType>"
         "<xs:simpleType name='St'><xs:restriction base='xs:string'><xs:enumeration value='on'/>"
         "<xs:enumeration value='off'/></xs:restriction></xs:simpleType>",
         {"class CP P {urn:t} element=P seq base=-", "  1 Sku sku {urn:t} PrimMnd 1..1 item=23 ws=1 pattern=[A-Z]+ maxLength=8",
          "  2 N n {urn:t} PrimOpt 0..1 nillable item=26 ws=3 minInclusive=0",
          "  3 Tag tag {urn:t} PrimCol 1..* item=23 ws=3", "  4 S s {urn:t} EnumMnd 1..1 item=23 ws=1 enum=ModelSt default=on",
          "  5 Toks toks {urn:t} PrimMnd 1..1 item=23 ws=3\n", "  6 @Id id {} Primitive required item=10 ws=3",
          "  7 @C c {} Enum optional item=23 ws=1 enum=ModelSt fixed=off",
          "enum ModelSt: On=on Off=off"}},
        {"derivation, abstract types and substitution groups",
         "<xs:complexType name='Shape' abstract='true'><xs:sequence><xs:element name='id' type='xs:int'/>"
         "</xs:sequence></xs:complexType>"
         "<xs:complexType name='Sq'><xs:complexContent><xs:extension base='t:Shape'><xs:sequence>"
         "<xs:element name='side' type='xs:double'/></xs:sequence></xs:extension></xs:complexContent></xs:complexType>"
         "<xs:element name='shape' type='t:Shape' abstract='true'/>"
         "<xs:element name='sq' substitutionGroup='t:shape'/>"
         "<xs:element name='d'><xs:complexType><xs:sequence><xs:element ref='t:shape' maxOccurs='9'/>"
         "</xs:sequence></xs:complexType></xs:element>"
         "<xs:element name='e'><xs:complexType><xs:choice><xs:element ref='t:shape'/>"
         "<xs:element name='none' type='xs:int'/></xs:choice></xs:complexType></xs:element>",
         {"class CShape Shape {urn:t} element=Shape seq abstract xsitype base=-",
          "class CSq Sq {urn:t} element=Sq seq xsitype base=CShape", "  2 Side side",
          "  1 Shape shape {urn:t} ClsCol 1..9 class=CShapeSubstitution",
          "class CShapeSubstitution shape-substitution {urn:t} element=shape-substitution choice pseudo base=-\n"
          "  1 Sq sq {urn:t} AbsClsOpt 1..1 class=CShape |CSq\nelement",
          "class CE e {urn:t} element=e choice base=-\n  1 Sq sq {urn:t} AbsClsOpt 1..1 class=CShape |CSq\n  2 None",
          "element sq {urn:t} class=CShape head=shape"}},
        {"nested and recursive groups become pseudo elements and terminate",
         "<xs:group name='G'><xs:sequence><xs:element name='x' type='xs:int'/>"
         "<xs:element name='n' type='t:N' minOccurs='0'/></xs:sequence></xs:group>"
         "<xs:complexType name='N'><xs:sequence><xs:group ref='t:G'/><xs:group ref='t:G' maxOccurs='2'/>"
         "<xs:choice><xs:element name='a' type='xs:int'/><xs:element name='b' type='xs:int'/></xs:choice>"
         "</xs:sequence></xs:complexType>",
         {"class CN N {urn:t} element=N seq base=-", "  1 X x", "  2 N n {urn:t} ClsOpt 0..1 class=CN",
          "  3 G G {urn:t} ClsCol 1..2 class=CG", "  4 ChoiceGroup choice-group {urn:t} ClsMnd 1..1 class=CNChoice",
          "class CG G {urn:t} element=G seq pseudo", "class CNChoice N-choice {urn:t} element=N-choice choice pseudo",
          "  1 A a {urn:t} PrimOpt 1..1"}},
        {"wildcards, simple content and mixed content",
         "<xs:complexType name='W'><xs:sequence><xs:any namespace='##other' maxOccurs='unbounded'/>"
         "</xs:sequence><xs:anyAttribute namespace='urn:x urn:y'/></xs:complexType>"
         "<xs:complexType name='Money'><xs:simpleContent><xs:extension base='xs:decimal'>"
         "<xs:attribute name='value' type='xs:string'/></xs:extension></xs:simpleContent></xs:complexType>"
         "<xs:complexType name='Eur'><xs:simpleContent><xs:restriction base='t:Money'>"
         "<xs:minInclusive value='0'/></xs:restriction></xs:simpleContent></xs:complexType>"
         "<xs:complexType name='M' mixed='true'><xs:sequence><xs:element name='b' type='xs:string'/>"
         "</xs:sequence></xs:complexType>",
         {"  1 Any any {} UntpdCol 1..* ns=##other", "  2 @AnyAttribute anyAttribute {} Any optional ns=urn:x urn:y",
          "  1 @Value2 value {} Primitive optional", "  2 #Value item=25 ws=3\n",
          "class CEur Eur {urn:t} element=Eur seq xsitype base=CMoney\n  2 #Value item=25 ws=3 minInclusive=0",
          "class CM M {urn:t} element=M seq mixed base=-"}},
        {"names: words, keywords, macros, case clashes, element and attribute of one name",
         "<xs:element name='purchase-order.v2'><xs:complexType><xs:sequence>"
         "<xs:element name='USPrice' type='xs:int'/><xs:element name='foo' type='xs:int'/>"
         "<xs:element name='Foo' type='xs:int'/><xs:element name='k'><xs:simpleType>"
         "<xs:restriction base='xs:string'><xs:enumeration value='2d'/><xs:enumeration value=''/>"
         "<xs:enumeration value='a b'/><xs:enumeration value='NULL'/><xs:enumeration value='a-b'/>"
         "<xs:enumeration value='max'/></xs:restriction></xs:simpleType></xs:element>"
         "</xs:sequence><xs:attribute name='foo'/></xs:complexType></xs:element>",
         {"class CPurchaseOrderV2 purchase-order.v2", "  1 USPrice USPrice", "  2 Foo foo", "  3 Foo2 Foo",
          "  5 @Foo3 foo {}", "enum ModelPurchaseOrderV2K: Value2d=2d Empty= AB=a b NULL_=NULL AB2=a-b Max=max"}},
        {"non-ASCII names: Latin letters lose their diacritics, other characters become their code points",
         "<xs:complexType name='Größe'><xs:sequence><xs:element name='straße' type='xs:int'/>"
         "<xs:element name='Strasse' type='xs:int'/><xs:element name='名前' type='xs:int'/>"
         "<xs:element name='café-Œuvre' type='xs:int'/><xs:element name='Ωmega' type='xs:int'/>"
         "</xs:sequence></xs:complexType>",
         {"class CGrosse Größe", "  1 Strasse straße", "  2 Strasse2 Strasse", "  3 U540dU524d 名前",
          "  4 CafeOEuvre café-Œuvre", "  5 U03a9Mega Ωmega"}},
        {"anonymous types nested deep are named after their element path",
         "<xs:element name='a'><xs:complexType><xs:sequence><xs:element name='b'><xs:complexType><xs:sequence>"
         "<xs:element name='a'><xs:complexType><xs:sequence><xs:element name='b'><xs:complexType><xs:sequence>"
         "<xs:element name='c' type='xs:int'/></xs:sequence></xs:complexType></xs:element></xs:sequence>"
         "</xs:complexType></xs:element></xs:sequence></xs:complexType></xs:element></xs:sequence>"
         "</xs:complexType></xs:element>",
         {"class CA a", "class CB b", "class CBA a", "class CAB b", "  1 C c {urn:t} PrimMnd"}},
    };
    for (const ModelCase& c : cases) {
        const Compiled run = Compile({{"model.xsd", Schema(c.body)}}, "model.xsd");
        EXPECT_TRUE(run.ok) << c.what << "\n" << run.messages;
        for (const std::string& fact : c.facts)
            EXPECT_NE(run.dump.find(fact), std::string::npos) << c.what << ": missing [" << fact << "] in\n" << run.dump;
    }
}

TEST(KvxsdFrontend, FollowsIncludesImportsAndForms) {
    const std::map<std::string, std::string> files = {
        {"main.xsd", Schema("<xs:import namespace='urn:o' schemaLocation='other.xsd'/>"
                            "<xs:import namespace='urn:o' schemaLocation='copy.xsd'/>"
                            "<xs:include schemaLocation='cham.xsd'/><xs:include schemaLocation='cham.xsd'/>"
                            "<xs:element name='r'><xs:complexType><xs:sequence><xs:element name='l' type='xs:int'/>"
                            "<xs:element ref='o:g' xmlns:o='urn:o'/><xs:element name='c' type='t:Ch'/>"
                            "</xs:sequence><xs:attribute name='q' type='xs:int'/><xs:attribute ref='xml:lang'/>"
                            "</xs:complexType></xs:element>",
                            "")},
        {"other.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='urn:o' "
                      "attributeFormDefault='qualified'><xs:import namespace='urn:t' schemaLocation='main.xsd'/>"
                      "<xs:element name='g'><xs:complexType><xs:attribute name='z' type='xs:int'/>"
                      "</xs:complexType></xs:element></xs:schema>"},
        {"cham.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:include schemaLocation='cham.xsd'/>"
                     "<xs:complexType name='Ch'><xs:sequence><xs:element name='v' type='Ch' minOccurs='0'/>"
                     "</xs:sequence></xs:complexType></xs:schema>"},
    };
    std::map<std::string, std::string> withCopy = files;  // a copy of a loaded namespace is not loaded again
    withCopy["copy.xsd"] = files.at("other.xsd");
    const Compiled run = Compile(withCopy, "main.xsd");
    ASSERT_TRUE(run.ok) << run.messages;
    EXPECT_NE(run.messages.find("skipped: the namespace urn:o is already loaded from"), std::string::npos);
    for (const char* fact : {"  1 L l {} PrimMnd", "  2 G g {urn:o} ClsMnd 1..1 class=CG", "  3 C c {} ClsMnd 1..1 class=CCh",
                             "  4 @Q q {} Primitive", "  5 @Lang lang {http://www.w3.org/XML/1998/namespace}",
                             "class CCh Ch {urn:t}", "  1 V v {} ClsOpt 0..1 class=CCh", "  1 @Z z {urn:o} Primitive",
                             "schema main ns=main tns={urn:t}"})
        EXPECT_NE(run.dump.find(fact), std::string::npos) << fact << " in\n" << run.dump;
}

struct ErrorCase {
    const char* body;
    const char* expected;  // the diagnostics, file:line:col first
};

TEST(KvxsdFrontend, ReportsErrorsWithTheirPositions) {
    const std::vector<ErrorCase> cases = {
        {"\n<xs:redefine schemaLocation='x.xsd'/>", "e.xsd:2:1: error: xs:redefine is not supported\n"},
        {"\n  <xs:override schemaLocation='x.xsd'/>", "e.xsd:2:3: error: xs:override is not supported\n"},
        {"<xs:include schemaLocation='missing.xsd'/>", "e.xsd:1:96: error: cannot find the schema missing.xsd\n"},
        {"<xs:import namespace='urn:r' schemaLocation='https://example.org/r.xsd'/>",
         "e.xsd:1:96: error: remote schema locations are not supported: https://example.org/r.xsd\n"},
        {"\n<xs:element name='a'>", "e.xsd:2:24: error: malformed XML: mismatched tag\n"},
        {"<xs:complexType name='A'/>\n<xs:complexType name='A'/>",
         "e.xsd:2:1: error: duplicate type 'A' (first defined at e.xsd:1:96)\n"},
        {"<xs:element name='a' type='t:Nope'/>", "e.xsd:1:96: error: unknown type '{urn:t}Nope'\n"},
        {"<xs:import namespace='urn:x'/><xs:element name='a' xmlns:x='urn:x' type='x:T'/>",
         "e.xsd:1:126: error: unknown type '{urn:x}T' (no schema of namespace urn:x is loaded: map it with --catalog)\n"},
        {"<xs:element name='a' type='u:T'/>", "e.xsd:1:96: error: the prefix 'u' is not bound to a namespace\n"},
        {"<xs:complexType name='S'><xs:complexContent><xs:extension base='t:S'/></xs:complexContent></xs:complexType>",
         "e.xsd:1:140: error: type 'S' derives from itself\n"},
        {"<xs:simpleType name='S'><xs:restriction base='t:S'/></xs:simpleType><xs:element name='e' type='t:S'/>",
         "e.xsd:1:96: error: type 'S' derives from itself\n"},
        {"<xs:group name='G'><xs:sequence><xs:group ref='t:G'/></xs:sequence></xs:group>"
         "<xs:complexType name='C'><xs:group ref='t:G'/></xs:complexType>",
         "e.xsd:1:128: error: group '{urn:t}G' contains itself\n"},
        {"<xs:complexType name='C'><xs:sequence/><xs:assert test='true()'/></xs:complexType>",
         "e.xsd:1:135: error: xs:assert is not supported (XML Schema 1.1)\n"},
        {"<xs:import namespace='urn:b' schemaLocation='a.xsd'/>",
         "e.xsd:1:96: error: xs:import of namespace urn:b loads a.xsd, a schema of namespace urn:a\n"},
        {"<xs:import schemaLocation='a.xsd'/>",
         "e.xsd:1:96: error: xs:import of no namespace loads a.xsd, a schema of namespace urn:a\n"},
        {"<xs:import namespace='urn:a' schemaLocation='n.xsd'/>",
         "e.xsd:1:96: error: xs:import of namespace urn:a loads n.xsd, a schema of no namespace\n"},
        {"<xs:import namespace='urn:a' schemaLocation='a.xsd'/><xs:import namespace='urn:c' schemaLocation='a.xsd'/>",
         "e.xsd:1:149: error: xs:import of namespace urn:c loads a.xsd, a schema of namespace urn:a\n"},
    };
    for (const ErrorCase& c : cases) {
        const Compiled run = Compile({{"e.xsd", std::string(kHead) + ">" + c.body + "</xs:schema>"},
                                      {"a.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' "
                                                "targetNamespace='urn:a'/>"},
                                      {"n.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'/>"}},
                                     "e.xsd");
        EXPECT_FALSE(run.ok) << c.body;
        EXPECT_EQ(run.messages, c.expected) << c.body;
    }
    const Compiled notSchema = Compile({{"n.xsd", "<root/>"}}, "n.xsd");
    EXPECT_EQ(notSchema.messages, "n.xsd:1:1: error: not an XML Schema document: the root element is <root>, not xs:schema\n");
}

TEST(KvxsdFrontend, KeepGoingListsEveryProblemAndDegradesWithWarnings) {
    const std::string body =
        "\n<xs:element name='a' type='t:X'/>\n<xs:element name='b' type='t:Y'/>"
        "\n<xs:simpleType name='L'><xs:list itemType='xs:int'/></xs:simpleType>"
        "\n<xs:element name='k'><xs:complexType/><xs:unique name='u'><xs:selector xpath='.'/>"
        "<xs:field xpath='@a'/></xs:unique></xs:element>";
    kvxsd::Options options;
    const Compiled first = Compile({{"k.xsd", Schema(body, "")}}, "k.xsd", options);
    EXPECT_EQ(first.messages, "k.xsd:2:1: error: unknown type '{urn:t}X'\nk.xsd:4:25: warning: xs:list is held as a string\n"
                              "k.xsd:5:39: note: xs:unique skipped: identity constraints bind to nothing\n");
    options.keepGoing = true;
    const Compiled all = Compile({{"k.xsd", Schema(body, "")}}, "k.xsd", options);
    EXPECT_FALSE(all.ok);
    EXPECT_EQ(all.messages,
              "k.xsd:2:1: error: unknown type '{urn:t}X'\nk.xsd:3:1: error: unknown type '{urn:t}Y'\n"
              "k.xsd:4:25: warning: xs:list is held as a string\n"
              "k.xsd:5:39: note: xs:unique skipped: identity constraints bind to nothing\n");
}

TEST(KvxsdFrontend, RenamesAreExplainedAndOverridable) {
    kvxsd::Options options;
    options.renames = {{"T/a", "Alpha"}, {"T", "Thing"}};
    const Compiled run = Compile({{"r.xsd", Schema("<xs:complexType name='T'><xs:sequence><xs:element name='a' type='xs:int'/>"
                                              "<xs:element name='A' type='xs:int'/><xs:element name='min' type='xs:int'/>"
                                              "</xs:sequence></xs:complexType>")}},
                            "r.xsd", options);
    ASSERT_TRUE(run.ok) << run.messages;
    EXPECT_NE(run.dump.find("class Thing T"), std::string::npos) << run.dump;
    EXPECT_NE(run.dump.find("  1 Alpha a"), std::string::npos) << run.dump;
    EXPECT_NE(run.dump.find("  2 A A"), std::string::npos) << run.dump;
    EXPECT_NE(run.dump.find("  3 Min min"), std::string::npos) << run.dump;
    EXPECT_EQ(run.renames, (std::vector<std::string>{"T: CT -> Thing (--rename)", "T/a: A -> Alpha (--rename)"}));
}

}  // namespace
