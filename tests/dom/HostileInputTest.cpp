// HostileInputTest.cpp - documents built to crash, hang or exhaust the loader are refused with a clear message.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "dom/DomTestSupport.h"
#include "kvxml/dom/XmlDocument.h"
#include "support/EntityChain.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using namespace KvXmlTest;

namespace {

const char kEntityLimitMessage[] =
    "The document declares more than 1000 internal entities (the limit set by "
    "CXmlDocument::SetMaxEntityDeclarations)";

// Every way a document reaches the parser.
using Loader = std::function<void(CXmlDocument&, const std::string&)>;
const std::pair<const char*, Loader> kLoaders[] = {
    {"LoadXml", [](CXmlDocument& d, const std::string& text) { d.LoadXml(text.c_str()); }},
    {"LoadXmlStream",
     [](CXmlDocument& d, const std::string& text) {
         std::string bytes = text;
         d.LoadXmlStream(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<uint32_t>(bytes.size()));
     }},
    {"Load", [](CXmlDocument& d, const std::string& text) { d.Load(TempFile(text).Path()); }},
};

struct ScopedEntityLimit {
    explicit ScopedEntityLimit(uint32_t limit) { CXmlDocument::SetMaxEntityDeclarations(limit); }
    ~ScopedEntityLimit() { CXmlDocument::SetMaxEntityDeclarations(1000); }
};

}  // namespace

TEST(HostileInput, EntityDeclarationsPastTheLimitAreRefusedBeforeAnyExpansion) {
    EXPECT_EQ(CXmlDocument::GetMaxEntityDeclarations(), 1000u);
    const std::string deep = EntityChain(100000);
    const std::string atLimit = EntityChain(1000);
    for (const auto& [name, load] : kLoaders) {
        SCOPED_TRACE(name);
        CXmlDocument document;
        EXPECT_KV_THROW(load(document, deep), CKvException, kEntityLimitMessage);
        EXPECT_KV_THROW(load(document, EntityChain(1001)), CKvException, kEntityLimitMessage);
        load(document, atLimit);
        EXPECT_EQ(document.GetDocumentElement()->GetText(), "x");
    }
    ScopedEntityLimit lifted(0);
    CXmlDocument document;
    document.LoadXml(EntityChain(1001).c_str());
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "x");
}
