// KvxsdFrontendTest.cpp - the schema compiler's front end: schemas in, model facts and diagnostics out.
#include <gtest/gtest.h>

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
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

// Each folder under data/model holds a model.xsd whose opening comment names the
// case on its first line and lists, one per line, what the model's dump must
// contain (a "\n" stands for a line end).
TEST(KvxsdFrontend, ResolvesComponentsIntoTheModel) {
    int cases = 0;
    for (const auto& folder : std::filesystem::directory_iterator(KVXSD_MODEL_CASES)) {
        const std::string path = folder.path().string() + "/model.xsd";
        std::ifstream in(path);
        std::string line, what;
        std::getline(in, line);
        std::getline(in, what);
        SCOPED_TRACE(what);
        ++cases;
        kvxsd::Options options;
        options.schemas.push_back(path);
        kvxsd::Model model;
        std::vector<std::string> messages;
        EXPECT_TRUE(kvxsd::BuildModel(options, model, messages)) << (messages.empty() ? "" : messages.front());
        const std::string dump = kvxsd::DumpModel(model);
        while (std::getline(in, line) && line != "-->") {
            for (size_t at; (at = line.find("\\n")) != std::string::npos;) line.replace(at, 2, "\n");
            EXPECT_NE(dump.find(line), std::string::npos) << "missing [" << line << "] in\n" << dump;
        }
    }
    EXPECT_EQ(cases, 7);
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
