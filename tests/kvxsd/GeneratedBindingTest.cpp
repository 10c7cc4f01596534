// GeneratedBindingTest.cpp - every schema kvxsd compiled from tests/bindings, driven by the instances beside it:
// <stem>.xml and <stem>-*.xml are valid, <stem>.bad-*.xml are not and open with a comment holding the message chain
// they must fail with.

#include <cstdlib>
#include <filesystem>
#include <map>

#include "DescriptorDump.h"
#include "alltypes.h"
#include "codes.h"
#include "envelope.h"
#include "groups.h"
#include "left.h"
#include "measurement.h"
#include "po.h"
#include "polymorphic.h"
#include "product.h"
#include "recursive.h"
#include "settings.h"
#include "shape.h"
#include "shapes.h"
#include "substitution-extra.h"
#include "substitution.h"
#include "support/Fixtures.h"
#include "ticket.h"
#include "wildcard.h"

using namespace KvXmlLib10;

namespace {

using Factory = CSmartPtr<CXmlObjectBase> (*)(const char*, const char*);

// The binding of each instance stem, and the schema that validates its documents
// when it is not <stem>.xsd beside the instance.
struct Binding {
    Factory create;
    std::string schema;
};

const std::map<std::string, Binding> kBindings = {
    {"alltypes", {kvgen_alltypes::CreateGlobalElement, ""}},
    {"envelope", {kvgen_envelope::CreateGlobalElement, ""}},
    {"groups", {kvgen_groups::CreateGlobalElement, ""}},
    {"measurement", {kvgen_measurement::CreateGlobalElement, ""}},
    {"po", {kvgen_po::CreateGlobalElement, ""}},
    {"polymorphic", {kvgen_polymorphic::CreateGlobalElement, ""}},
    {"recursive", {kvgen_recursive::CreateGlobalElement, ""}},
    {"settings", {kvgen_settings::CreateGlobalElement, ""}},
    {"shape", {kvgen_shape::CreateGlobalElement, ""}},
    {"ticket", {kvgen_ticket::CreateGlobalElement, ""}},
    {"wildcard", {kvgen_wildcard::CreateGlobalElement, ""}},
    // A member of the group is declared in a schema that imports the head's.
    {"substitution", {kvgen_substitution::CreateGlobalElement, KVXML_BINDINGS_DIR "/substitution-extra.xsd"}},
    {"shapes", {kvgen_shapes::CreateGlobalElement, ""}},
    {"left", {kvgen_left::CreateGlobalElement, ""}},
    {"extra", {kvgen_left::CreateGlobalElement, ""}},
    {"codes", {kvgen_codes::CreateGlobalElement, KVXSD_CODES}},
};

using KvXmlTest::ReadFile;

struct Instance {
    std::string path, stem, expected;  // expected: the failure's chain, empty for a valid instance
    std::string Schema() const {
        const std::string& own = kBindings.at(stem).schema;
        return own.empty() ? std::filesystem::path(path).replace_filename(stem + ".xsd").string() : own;
    }
};

std::vector<Instance> Instances() {
    std::vector<Instance> found;
    for (const char* folder : {KVXML_BINDINGS_DIR, KVXSD_STRESS}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
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
    }
    return found;
}

// The root's object from its schema's factory, by the instance's document element.
CSmartPtr<CXmlObjectBase> RootOf(const Instance& instance) {
    CXmlDocument document;
    document.Load(instance.path.c_str());
    const CXmlElement* root = document.GetDocumentElement();
    return kBindings.at(instance.stem).create(root->GetLocalName().c_str(), root->GetNamespaceURI().c_str());
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
            EXPECT_TRUE(SchemaAccepts(instance.Schema(), written, log)) << log;
            CSmartPtr<CXmlObjectBase> back = RootOf(instance);
            back->FromXml(written.c_str());
            EXPECT_EQ(Written(*back), written);
        } catch (const CKvException& e) {
            ADD_FAILURE() << e.GetFullMessage();
        }
    }
    EXPECT_GE(valid, 18);
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
        EXPECT_FALSE(SchemaAccepts(instance.Schema(), ReadFile(instance.path), log));
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

// Members of a substitution group are read into the class of their own element and written under their own name.
TEST(GeneratedBinding, SubstitutionGroupMembersKeepTheirOwnElements) {
    kvgen_substitution::CFleet fleet;
    fleet.FromXmlFile(KVXML_BINDINGS_DIR "/substitution.xml");
    ASSERT_TRUE(fleet.GetFlagship()->GetTruck()->IsVanSet());
    EXPECT_EQ(fleet.GetFlagship()->GetTruck()->GetVan()->GetAxles(), 3);
    ASSERT_EQ(fleet.GetVehicleCount(), 5);
    EXPECT_EQ(fleet.GetVehicle(0)->GetCar()->GetPlate(), "A-1");
    EXPECT_TRUE(fleet.GetVehicle(2)->IsVanSet());
    EXPECT_FALSE(fleet.GetVehicle(2)->IsTruckSet());
    EXPECT_EQ(fleet.GetVehicle(4)->GetBus()->GetSeats(), 40);  // declared in a schema that imports this one

    // A child set by hand takes the name of the member it is set for.
    kvgen_substitution::CTruck* truck = new kvgen_substitution::CTruck;
    truck->SetPlate("Z-9");
    truck->SetAxles(6);
    fleet.GetFlagship()->GetTruck()->ClearVan();
    fleet.GetFlagship()->GetTruck()->SetTruck(truck);
    CXmlSerializationContext plain;
    plain.SetWriteTypeAttribute(false);
    plain.SetDefaultNamespaceURI("urn:example:fleet");
    const std::string written = fleet.ToXml(false, false, EOL_LF, plain);
    EXPECT_NE(written.find("<flagship><truck><plate>Z-9</plate><axles>6</axles></truck></flagship><car>"),
              std::string::npos)
        << written;
}

// A choice holds one member: a single one once set, a collection while it has items; by hand and on reading.
TEST(GeneratedBinding, ChoiceMembersExcludeEachOther) {
    const auto busy = [](const std::string& name) {
        return "The Property [" + name + "] is already set. Only one element within this class bay be set at a time";
    };
    const CDateTime day;
    kvgen_substitution::CLog log;
    log.Note().Add("a");
    EXPECT_KV_THROW(log.SetSealed(day), CKvInvalidStateException, busy("note"));
    log.ClearNote();
    log.SetSealed(day);
    EXPECT_KV_THROW(log.Note().Add("b"), CKvInvalidStateException, busy("sealed"));
    EXPECT_EQ(log.GetNoteCount(), 0);  // refused before it was added
    log.FromXml("<log xmlns='urn:example:fleet'><note>a</note><note>b</note></log>");
    log.Note().Remove(0);
    EXPECT_KV_THROW(log.SetSealed(day), CKvInvalidStateException, busy("note"));
    log.Note().Remove(0);
    log.SetSealed(day);
    log.ClearSealed();
    log.Note().Add("c");
    EXPECT_EQ(log.GetNoteCount(), 1);
}

}  // namespace
