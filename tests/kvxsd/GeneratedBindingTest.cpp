// GeneratedBindingTest.cpp - bindings that kvxsd compiled at build time: metadata, round trips, schema validity.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "DescriptorDump.h"
#include "codes.h"
#include "groups.h"
#include "kvxml/core/SerializationContext.h"
#include "kvxml/foundation/KvException.h"
#include "po.h"
#include "left.h"
#include "polymorphic.h"
#include "product.h"
#include "recursive.h"
#include "shapes.h"
#include "substitution-extra.h"
#include "substitution.h"
#include "support/KvTestSupport.h"
#if __has_include("wildcard.h")
#include "wildcard.h"
#endif

namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The metadata of the class generated from product.xsd equals that of the
// hand-written sample binding it replaced (captured in product.descriptors).
TEST(GeneratedBinding, ProductDescriptorsMatchTheHandWrittenBinding) {
    kvgen_product::CProduct product;
    EXPECT_EQ(kvtest::DumpDescriptors(product), ReadFile(KVXSD_TEST_DATA "/product.descriptors"));
}

struct Instance {
    const char* file;
    const char* schema;
    const char* root;
    const char* ns;
    KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlObjectBase> (*create)(const char*, const char*);
};

const Instance kInstances[] = {
    {KVXSD_EXAMPLES "/product/sample-product.xml", KVXSD_EXAMPLES "/product/product.xsd", "product",
     "urn:example:kvxml:product", kvgen_product::CreateGlobalElement},
    {KVXML_TEST_DATA_DIR "/po-seed8.xml", KVXSD_BINDINGS "/po.xsd", "purchaseOrders", "urn:example:bench:po",
     kvgen_po::CreateGlobalElement},
    {KVXSD_BINDINGS "/recursive.xml", KVXSD_BINDINGS "/recursive.xsd", "folder", "urn:example:tree",
     kvgen_recursive::CreateGlobalElement},
    {KVXSD_BINDINGS "/polymorphic.xml", KVXSD_BINDINGS "/polymorphic.xsd", "drawing", "urn:example:shapes",
     kvgen_polymorphic::CreateGlobalElement},
    {KVXSD_BINDINGS "/groups.xml", KVXSD_BINDINGS "/groups.xsd", "ticket", "urn:example:groups",
     kvgen_groups::CreateGlobalElement},
    {KVXSD_BINDINGS "/substitution.xml", KVXSD_BINDINGS "/substitution-extra.xsd", "fleet", "urn:example:fleet",
     kvgen_fleet::CreateGlobalElement},
    {KVXSD_STRESS "/shapes.xml", KVXSD_STRESS "/shapes.xsd", "root", "urn:stress:shapes",
     kvgen_shapes::CreateGlobalElement},
    {KVXSD_STRESS "/left.xml", KVXSD_STRESS "/left.xsd", "tree", "urn:stress:left", kvgen_left::CreateGlobalElement},
    {KVXSD_STRESS "/extra.xml", KVXSD_STRESS "/extra.xsd", "tree", "urn:stress:left", kvgen_left::CreateGlobalElement},
    {KVXSD_STRESS "/codes.xml", KVXSD_CODES, "codes", "urn:stress:codes", kvgen_codes::CreateGlobalElement},
#if __has_include("wildcard.h")
    {KVXSD_BINDINGS "/wildcard.xml", KVXSD_BINDINGS "/wildcard.xsd", "envelope", "urn:example:envelope",
     kvgen_wildcard::CreateGlobalElement},
#endif
};

// Every instance reads, writes back a document the schema accepts, and that
// document reads back to the same bytes. Unindented, because a wildcard element
// keeps the indentation it is read with as text of its own.
TEST(GeneratedBinding, InstancesRoundTripThroughValidDocuments) {
    const KvXmlLib10::CXmlSerializationContext context;
    for (const Instance& instance : kInstances) {
        SCOPED_TRACE(instance.file);
        try {
            KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlObjectBase> object = instance.create(instance.root, instance.ns);
            ASSERT_TRUE(object);
            object->FromXmlFile(instance.file);
            const std::string written = object->ToXml(true, false, KvXmlLib10::EOL_LF, context);
            const std::string copy = std::string(KVXSD_WORK_DIR "/") + instance.root + ".out.xml";
            std::ofstream(copy, std::ios::binary) << written;
            const std::string lint =
                std::string("xmllint --noout --schema ") + instance.schema + " " + copy + " 2>" + copy + ".lint";
            EXPECT_EQ(std::system(lint.c_str()), 0) << ReadFile(copy + ".lint");
            KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlObjectBase> back = instance.create(instance.root, instance.ns);
            back->FromXml(written.c_str());
            EXPECT_EQ(back->ToXml(true, false, KvXmlLib10::EOL_LF, context), written);
        } catch (const KvXmlLib10::CKvException& e) {
            ADD_FAILURE() << e.GetFullMessage();
        }
    }
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
    kvgen_fleet::CFleet fleet;
    fleet.FromXmlFile(KVXSD_BINDINGS "/substitution.xml");
    ASSERT_TRUE(fleet.GetFlagship()->GetTruck()->IsVanSet());
    EXPECT_EQ(fleet.GetFlagship()->GetTruck()->GetVan()->GetAxles(), 3);
    ASSERT_EQ(fleet.GetVehicleCount(), 5);
    EXPECT_EQ(fleet.GetVehicle(0)->GetCar()->GetPlate(), "A-1");
    EXPECT_TRUE(fleet.GetVehicle(2)->IsVanSet());
    EXPECT_FALSE(fleet.GetVehicle(2)->IsTruckSet());
    EXPECT_EQ(fleet.GetVehicle(4)->GetBus()->GetSeats(), 40);  // declared in a schema that imports this one

    // A child set by hand takes the name of the member it is set for.
    kvgen_fleet::CTruck* truck = new kvgen_fleet::CTruck;
    truck->SetPlate("Z-9");
    truck->SetAxles(6);
    fleet.GetFlagship()->GetTruck()->ClearVan();
    fleet.GetFlagship()->GetTruck()->SetTruck(truck);
    KvXmlLib10::CXmlSerializationContext plain;
    plain.SetWriteTypeAttribute(false);
    plain.SetDefaultNamespaceURI("urn:example:fleet");
    const std::string written = fleet.ToXml(false, false, KvXmlLib10::EOL_LF, plain);
    EXPECT_NE(written.find("<flagship><truck><plate>Z-9</plate><axles>6</axles></truck></flagship><car>"),
              std::string::npos)
        << written;
}

// A choice holds one member: a single one once set, a collection while it has items; by hand and on reading.
TEST(GeneratedBinding, ChoiceMembersExcludeEachOther) {
    const auto busy = [](const std::string& name) {
        return "The Property [" + name + "] is already set. Only one element within this class bay be set at a time";
    };
    const KvXmlLib10::CDateTime day;
    kvgen_fleet::CLog log;
    log.Note().Add("a");
    EXPECT_KV_THROW(log.SetSealed(day), KvXmlLib10::CKvInvalidStateException, busy("note"));
    log.ClearNote();
    log.SetSealed(day);
    EXPECT_KV_THROW(log.Note().Add("b"), KvXmlLib10::CKvInvalidStateException, busy("sealed"));
    EXPECT_EQ(log.GetNoteCount(), 0);  // refused before it was added
    log.FromXml("<log xmlns='urn:example:fleet'><note>a</note><note>b</note></log>");
    log.Note().Remove(0);
    EXPECT_KV_THROW(log.SetSealed(day), KvXmlLib10::CKvInvalidStateException, busy("note"));
    log.Note().Remove(0);
    log.SetSealed(day);
    log.ClearSealed();
    log.Note().Add("c");
    EXPECT_EQ(log.GetNoteCount(), 1);
}

// Broken instances fail with the chain of elements leading to the fault.
TEST(GeneratedBinding, InvalidInstancesNameThePathToTheFault) {
    const std::string chain =
        "Failed to process the element [purchaseOrders]\nFailed to process the element [purchaseOrder]\n";
    const struct {
        const char* find;
        const char* replace;
        std::string message;
    } cases[] = {
        {"</productName>", "</productName><bogus/>",
         chain + "Failed to process the element [items]\nFailed to process the element [item]\n"
                 "Failed to find a required element [quantity]"},
        {"<street>", "<street>1</street><street>2</street><street>",
         chain + "Failed to process the element [shipTo]\n"
                 "The Maximum number of [street] elements allowed in this collection is 2"},
        {" orderId=\"10000007\"", "", chain + "Failed to find the required Attribute [orderId]"},
    };
    const std::string original = ReadFile(KVXML_TEST_DATA_DIR "/po-seed8.xml");
    for (const auto& c : cases) {
        std::string text = original;
        const size_t at = text.find(c.find);
        text.replace(at, std::strlen(c.find), c.replace);
        kvgen_po::CPurchaseOrderBatch batch;
        try {
            batch.FromXml(text.c_str());
            ADD_FAILURE() << "no exception for " << c.replace;
        } catch (const KvXmlLib10::CKvValidationException& e) {
            EXPECT_EQ(e.GetFullMessage(), c.message);
        }
    }
}

}  // namespace
