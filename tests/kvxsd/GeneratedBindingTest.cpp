// GeneratedBindingTest.cpp - every schema kvxsd compiled from tests/bindings, driven by the instances beside it:
// <stem>.xml and <stem>-*.xml are valid, <stem>.bad-*.xml are not and open with a comment holding the message chain
// they must fail with.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "DescriptorDump.h"
#include "alltypes.h"
#include "envelope.h"
#include "groups.h"
#include "kvxml/dom/XmlDocument.h"
#include "measurement.h"
#include "po.h"
#include "polymorphic.h"
#include "product.h"
#include "recursive.h"
#include "settings.h"
#include "shape.h"
#include "support/KvTestSupport.h"
#include "support/TempFile.h"
#include "ticket.h"
#include "wildcard.h"

using namespace KvXmlLib10;

namespace {

using Factory = CSmartPtr<CXmlObjectBase> (*)(const char*, const char*);

const std::map<std::string, Factory> kFactories = {
    {"alltypes", kvgen_alltypes::CreateGlobalElement},       {"envelope", kvgen_envelope::CreateGlobalElement},
    {"groups", kvgen_groups::CreateGlobalElement},           {"measurement", kvgen_measurement::CreateGlobalElement},
    {"po", kvgen_po::CreateGlobalElement},                   {"polymorphic", kvgen_polymorphic::CreateGlobalElement},
    {"recursive", kvgen_recursive::CreateGlobalElement},     {"settings", kvgen_settings::CreateGlobalElement},
    {"shape", kvgen_shape::CreateGlobalElement},             {"ticket", kvgen_ticket::CreateGlobalElement},
    {"wildcard", kvgen_wildcard::CreateGlobalElement},
};

using KvXmlTest::ReadFile;

struct Instance {
    std::string path, stem, expected;  // expected: the failure's chain, empty for a valid instance
};

std::vector<Instance> Instances() {
    std::vector<Instance> found;
    for (const auto& entry : std::filesystem::directory_iterator(KVXML_BINDINGS_DIR)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() != ".xml") continue;
        Instance instance{entry.path().string(), name.substr(0, name.find_first_of("-.")), ""};
        if (name.find(".bad-") != std::string::npos) {
            const std::string text = ReadFile(instance.path);
            const size_t open = text.find("<!--\n") + 5;
            instance.expected = text.substr(open, text.find("\n-->") - open);
        }
        found.push_back(instance);
    }
    return found;
}

// The root's object from its schema's factory, by the instance's document element.
CSmartPtr<CXmlObjectBase> RootOf(const Instance& instance) {
    CXmlDocument document;
    document.Load(instance.path.c_str());
    const CXmlElement* root = document.GetDocumentElement();
    return kFactories.at(instance.stem)(root->GetLocalName().c_str(), root->GetNamespaceURI().c_str());
}

bool SchemaAccepts(const std::string& schema, const std::string& document, std::string& log) {
    const KvXmlTest::TempFile copy(document), errors;
    const int status =
        std::system(("xmllint --noout --schema " + schema + " " + copy.Path() + " 2>" + errors.Path()).c_str());
    log = ReadFile(errors.Path());
    return status == 0;
}

// Unindented, because a wildcard element keeps the indentation it is read with as text of its own.
std::string Written(const CXmlObjectBase& object) { return object.ToXml(true, false, EOL_LF); }

TEST(GeneratedBinding, ValidInstancesRoundTripThroughDocumentsTheSchemaAccepts) {
    int valid = 0;
    for (const Instance& instance : Instances()) {
        if (!instance.expected.empty()) continue;
        SCOPED_TRACE(instance.path);
        ++valid;
        try {
            CSmartPtr<CXmlObjectBase> object = RootOf(instance);
            ASSERT_TRUE(object);
            object->FromXmlFile(instance.path.c_str());
            const std::string written = Written(*object);
            std::string log;
            EXPECT_TRUE(SchemaAccepts(KVXML_BINDINGS_DIR "/" + instance.stem + ".xsd", written, log)) << log;
            CSmartPtr<CXmlObjectBase> back = RootOf(instance);
            back->FromXml(written.c_str());
            EXPECT_EQ(Written(*back), written);
        } catch (const CKvException& e) {
            ADD_FAILURE() << e.GetFullMessage();
        }
    }
    EXPECT_GE(valid, 13);
}

// Each broken instance is refused by the schema too, and fails reading or, for a
// facet (checked on writing only), writing back.
TEST(GeneratedBinding, InvalidInstancesFailWithTheChainThatLeadsToTheElement) {
    int invalid = 0;
    for (const Instance& instance : Instances()) {
        if (instance.expected.empty()) continue;
        SCOPED_TRACE(instance.path);
        ++invalid;
        std::string log;
        EXPECT_FALSE(SchemaAccepts(KVXML_BINDINGS_DIR "/" + instance.stem + ".xsd", ReadFile(instance.path), log));
        CSmartPtr<CXmlObjectBase> object = RootOf(instance);
        EXPECT_EQ(KvXmlTest::FullMessageOf<CKvValidationException>([&] {
                      object->FromXmlFile(instance.path.c_str());
                      Written(*object);
                  }),
                  instance.expected);
    }
    EXPECT_GE(invalid, 15);
}

// The metadata of the class generated from product.xsd equals that of the
// hand-written sample binding it replaced (captured in product.descriptors).
TEST(GeneratedBinding, ProductDescriptorsMatchTheHandWrittenBinding) {
    kvgen_product::CProduct product;
    EXPECT_EQ(kvtest::DumpDescriptors(product), ReadFile(KVXSD_TEST_DATA "/product.descriptors"));
}

TEST(GeneratedBinding, GlobalElementsAreCreatedByNameAndNamespaceOnly) {
    EXPECT_TRUE(kvgen_po::CreateGlobalElement("purchaseOrders", "urn:example:bench:po"));
    EXPECT_FALSE(kvgen_po::CreateGlobalElement("purchaseOrders", ""));
    EXPECT_FALSE(kvgen_po::CreateGlobalElement("purchaseOrder", "urn:example:bench:po"));
    EXPECT_FALSE(kvgen_po::CreateGlobalElement(nullptr, nullptr));
    EXPECT_FALSE(kvgen_product::CreateGlobalElement("purchaseOrders", "urn:example:bench:po"));
}

// A choice holds one member: setting another throws until the first is cleared.
TEST(GeneratedBinding, ChoiceMembersExcludeEachOther) {
    kvgen_groups::CContact contact;
    contact.SetEmail("a@example.org");
    EXPECT_KV_THROW(contact.SetPhone("555"), CKvInvalidStateException,
                    "The Property [email] is already set. Only one element within this class bay be set at a time");
    contact.ClearEmail();
    contact.SetPhone("555");
    EXPECT_TRUE(contact.IsPhoneSet());
    EXPECT_FALSE(contact.IsEmailSet());
}

}  // namespace
