// KvxsdFrontendTest.cpp - the schema compiler's front end: schemas in, model facts and diagnostics out.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Frontend.h"
#include "ModelDump.h"

namespace {

struct Compiled {
    bool ok = false;
    std::string dump;
    std::string messages;
    std::vector<std::string> renames;
};

// Compiles one schema of the data folders; the messages lose its folder's path ("file:line:col").
Compiled CompileIn(const std::string& folder, const std::string& main, kvxsd::Options options = {}) {
    options.schemas.push_back(folder + main);
    kvxsd::Model model;
    std::vector<std::string> messages;
    Compiled run;
    run.ok = kvxsd::BuildModel(options, model, messages);
    for (std::string m : messages) {
        for (size_t at; (at = m.find(folder)) != std::string::npos;) m.erase(at, folder.size());
        run.messages += m + "\n";
    }
    run.dump = kvxsd::DumpModel(model);
    run.renames = model.renames;
    return run;
}

// Each folder under data/model holds a model.xsd whose opening comment names the
// case on its first line and lists, one per line, what the model's dump must
// contain (a "\n" stands for a line end) or the diagnostics mention.
TEST(KvxsdFrontend, ResolvesComponentsIntoTheModel) {
    int cases = 0;
    for (const auto& folder : std::filesystem::directory_iterator(KVXSD_MODEL_CASES)) {
        std::ifstream in(folder.path() / "model.xsd");
        std::string line, what;
        std::getline(in, line);
        std::getline(in, what);
        SCOPED_TRACE(what);
        ++cases;
        const Compiled run = CompileIn(folder.path().string() + "/", "model.xsd");
        EXPECT_TRUE(run.ok) << run.messages;
        const std::string dump = run.dump + run.messages;
        while (std::getline(in, line) && line != "-->") {
            for (size_t at; (at = line.find("\\n")) != std::string::npos;) line.replace(at, 2, "\n");
            EXPECT_NE(dump.find(line), std::string::npos) << "missing [" << line << "] in\n" << dump;
        }
    }
    EXPECT_EQ(cases, 8);
}

// Each schema under data/errors fails with the diagnostics in the processing
// instruction after its root; a.xsd and n.xsd, without one, are what the imports load.
TEST(KvxsdFrontend, ReportsErrorsWithTheirPositions) {
    int cases = 0;
    for (const auto& entry : std::filesystem::directory_iterator(KVXSD_ERROR_CASES)) {
        std::ifstream in(entry.path());
        const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        const size_t expected = text.rfind("<?diagnostics\n");
        if (expected == std::string::npos) continue;
        SCOPED_TRACE(entry.path().filename().string());
        ++cases;
        const Compiled run = CompileIn(std::string(KVXSD_ERROR_CASES) + "/", entry.path().filename().string());
        EXPECT_FALSE(run.ok);
        EXPECT_EQ(run.messages, text.substr(expected + 14, text.rfind("?>") - expected - 14));
    }
    EXPECT_EQ(cases, 18);
}

// The schemas of these two are under data/options.
TEST(KvxsdFrontend, KeepGoingListsEveryProblemAndDegradesWithWarnings) {
    kvxsd::Options options;
    EXPECT_EQ(CompileIn(KVXSD_OPTION_CASES "/", "k.xsd", options).messages,
              "k.xsd:2:1: error: unknown type '{urn:t}X'\nk.xsd:4:25: warning: xs:list is held as a string\n"
              "k.xsd:5:39: note: xs:unique skipped: identity constraints bind to nothing\n");
    options.keepGoing = true;
    const Compiled all = CompileIn(KVXSD_OPTION_CASES "/", "k.xsd", options);
    EXPECT_FALSE(all.ok);
    EXPECT_EQ(all.messages,
              "k.xsd:2:1: error: unknown type '{urn:t}X'\nk.xsd:3:1: error: unknown type '{urn:t}Y'\n"
              "k.xsd:4:25: warning: xs:list is held as a string\n"
              "k.xsd:5:39: note: xs:unique skipped: identity constraints bind to nothing\n");
}

TEST(KvxsdFrontend, RenamesAreExplainedAndOverridable) {
    kvxsd::Options options;
    options.renames = {{"T/a", "Alpha"}, {"T", "Thing"}};
    const Compiled run = CompileIn(KVXSD_OPTION_CASES "/", "r.xsd", options);
    ASSERT_TRUE(run.ok) << run.messages;
    for (const char* fact : {"class Thing T", "  1 Alpha a", "  2 A A", "  3 Min min"})
        EXPECT_NE(run.dump.find(fact), std::string::npos) << fact << " in\n" << run.dump;
    EXPECT_EQ(run.renames, (std::vector<std::string>{"T: CT -> Thing (--rename)", "T/a: A -> Alpha (--rename)"}));
}

}  // namespace
