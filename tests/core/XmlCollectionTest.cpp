// Tests for the object collection: insert forms, events, reference counts, count checks and reading.
#include "kvxml/core/XmlCollection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kvxml/metadata/ElementInfoPrimitive.h"
#include "metadata/GeneratedTestClasses.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

// An item that counts its deletions.
class Leaf : public CXmlObjectBase {
public:
    explicit Leaf(int* deletions = nullptr) : m_deletions(deletions) { SetElementName("leaf"); }
    ~Leaf() override {
        if (m_deletions) ++*m_deletions;
    }
    CXmlObjectBase* GetBase() override { return this; }
    std::string GetTargetNamespace() const override { return ""; }
    std::string GetNamespace() const override { return ""; }

protected:
    void ToXml_Int(CXmlWriter*, bool, const char*, const CXmlSerializationContext&, bool) const override {}
    CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* c, const CXmlSerializationContext&, bool) override {
        return c;
    }

private:
    int* m_deletions;
};

int32_t RefCount(CXmlObjectBase* object) {
    const int32_t count = object->AddRef() - 1;
    object->Release();
    return count;
}

// Records "type:payload" per event; payload is the item, the index or "null".
struct Recorder : IEventSink {
    std::vector<std::string> events;
    CXmlObjectBase* lastSource = nullptr;
    bool vetoAdds = false;
    void OnEvent(CXmlObjectBase* source, MsgType type, void* data) override {
        lastSource = source;
        std::string payload = "null";
        if (data && (type == ItemAdding || type == ItemAdded)) payload = "item";
        if (data && (type == ItemRemoving || type == ItemRemoved)) payload = std::to_string(*static_cast<int32_t*>(data));
        events.push_back(std::to_string(type) + ":" + payload);
        if (vetoAdds && type == ItemAdding) throw CKvInvalidStateException("vetoed");
    }
};

std::vector<CXmlObjectBase*> Items(const CXmlCollection& collection) {
    std::vector<CXmlObjectBase*> items;
    for (int32_t i = 0; i < collection.GetCount(); ++i) items.push_back(collection.GetItemAt(i));
    return items;
}

TEST(XmlCollection, InsertFormsPlaceItemsAndHoldOneReferenceEach) {
    int deletions = 0;
    Leaf *a = new Leaf(&deletions), *b = new Leaf(&deletions), *c = new Leaf(&deletions), *d = new Leaf(&deletions),
         *e = new Leaf(&deletions), *f = new Leaf(&deletions);
    {
        CXmlCollection collection("leaf", "urn:x", 0, -1);
        collection.AppendItem(c);
        collection.PrependItem(a);
        collection.AddItemAt(2, e);  // index == count appends
        collection.AddItemAt(1, b);
        collection.AddBeforeItem(e, d);
        collection.AddAfterItem(e, f);
        EXPECT_EQ(Items(collection), (std::vector<CXmlObjectBase*>{a, b, c, d, e, f}));
        EXPECT_EQ(collection.GetItemAt(4), e);  // backwards from the last lookup
        EXPECT_EQ(RefCount(a), 1);
        collection.Remove(0);
        EXPECT_EQ(deletions, 1);
        EXPECT_EQ(collection.GetItemAt(0), b);
    }
    EXPECT_EQ(deletions, 6);
}

TEST(XmlCollection, EventsCarryPayloadsInOrderFromTheBase) {
    CXmlCollection collection("leaf", "", 0, -1);
    Recorder recorder, second;
    collection.AddEventListener(&recorder);
    collection.AddEventListener(&second);
    collection.AppendItem(new Leaf);
    collection.AppendItem(new Leaf);
    collection.Remove(1);
    EXPECT_EQ(recorder.events, (std::vector<std::string>{"1:item", "2:item", "0:null", "1:item", "2:item", "0:null",
                                                         "3:1", "4:1", "0:null"}));
    EXPECT_EQ(recorder.lastSource, collection.GetBase());
    EXPECT_EQ(second.events, recorder.events);

    collection.RemoveEventListener(&second);
    recorder.events.clear();
    collection.AppendItem(new Leaf);
    collection.AppendItem(new Leaf);
    collection.Clear();
    EXPECT_EQ(collection.GetCount(), 0);
    EXPECT_EQ(std::vector<std::string>(recorder.events.begin() + 6, recorder.events.end()),
              (std::vector<std::string>{"3:0", "4:0", "0:null", "3:0", "4:0", "0:null", "3:0", "4:0", "0:null"}));
    EXPECT_EQ(second.events.size(), 9u);
}

TEST(XmlCollection, BadIndexesAndUnknownItemsThrowBeforeAnyEvent) {
    CXmlCollection collection("leaf", "", 0, -1);
    Recorder recorder;
    Leaf* held[3] = {new Leaf, new Leaf, new Leaf};
    for (Leaf* leaf : held) collection.AppendItem(leaf);
    collection.AddEventListener(&recorder);
    int deletions = 0;
    Leaf* stranger = new Leaf(&deletions);
    CSmartPtr<Leaf> keep(stranger);

    EXPECT_KV_THROW(collection.AddItemAt(4, stranger), CKvInvalidParamException, "Index out of range");
    EXPECT_KV_THROW(collection.AddItemAt(-1, stranger), CKvInvalidParamException, "Index out of range");
    EXPECT_KV_THROW(collection.GetNodeAtIndex(5), CKvInvalidParamException, "Index 5 is out of range, use 0 - 3");
    EXPECT_KV_THROW(collection.GetItemAt(3), CKvInvalidParamException, "Index 3 is out of range, use 0 - 3");
    EXPECT_KV_THROW(collection.Remove(-1), CKvInvalidParamException, "Index -1 is out of range, use 0 - 3");
    EXPECT_KV_THROW(collection.AddBeforeItem(stranger, stranger), CKvInvalidParamException,
                    "The object was not found in the collection");
    EXPECT_KV_THROW(collection.GetNodeForItem(stranger), CKvInvalidParamException,
                    "The object was not found in the collection");
    EXPECT_KV_THROW(collection.AppendItem(nullptr), CKvInvalidParamException, "The item may not be NULL");
    EXPECT_TRUE(recorder.events.empty());
    EXPECT_EQ(RefCount(stranger), 1);
    collection.RemoveEventListener(&recorder);
}

TEST(XmlCollection, AListenerThrowingOnAddVetoesIt) {
    CXmlCollection collection("leaf", "", 0, -1);
    Recorder recorder;
    recorder.vetoAdds = true;
    collection.AddEventListener(&recorder);
    int deletions = 0;
    Leaf* leaf = new Leaf(&deletions);
    CSmartPtr<Leaf> keep(leaf);
    EXPECT_KV_THROW(collection.AppendItem(leaf), CKvInvalidStateException, "vetoed");
    EXPECT_EQ(collection.GetCount(), 0);
    EXPECT_EQ(RefCount(leaf), 1);
    EXPECT_EQ(recorder.events, (std::vector<std::string>{"1:item"}));
}

TEST(XmlCollection, CountChecksFollowTheBoundsUnlessIgnored) {
    struct Row {
        int32_t min, max, count;
        const char* message;  // null when valid
    };
    const Row rows[] = {
        {1, -1, 0, "The Minimum number of [leaf] elements allowed in this collection is 1"},
        {1, -1, 5, nullptr},
        {0, 2, 2, nullptr},
        {0, 2, 3, "The Maximum number of [leaf] elements allowed in this collection is 2"},
        {4, 2, 3, "The Maximum number of [leaf] elements allowed in this collection is 2"},  // maximum tested first
        {2, 3, 1, "The Minimum number of [leaf] elements allowed in this collection is 2"},
    };
    CXmlSerializationContext ignoring;
    ignoring.SetIgnoreInvalidCollectionCounts(true);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.count);
        CXmlCollection collection("leaf", "", row.min, row.max);
        for (int32_t i = 0; i < row.count; ++i) collection.AppendItem(new Leaf);
        EXPECT_EQ(collection.IsValidCount(CXmlSerializationContext::m_defaultContext), row.message == nullptr);
        if (row.message)
            EXPECT_KV_THROW(collection.ValidateCount(CXmlSerializationContext::m_defaultContext),
                            CKvValidationException, row.message);
        EXPECT_TRUE(collection.IsValidCount(ignoring));
        collection.ValidateCount(ignoring);
    }
    CXmlCollection collection("leaf", "urn:x", 0, -1);
    EXPECT_KV_THROW(collection.GetTargetNamespace(), CKvException,
                    "CXmlCollectionBase::GetTargetNamespace Should not be used from within a Collection (program "
                    "logic error)");
    EXPECT_EQ(collection.GetNamespace(), "urn:x");
}

// Items of a generated class with one mandatory i4 child "n".
template <KvXmlLib10Data::XmlElementType Type>
struct ItemSchema {
    static constexpr const char* kElementName = "item";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(kvtest::Metadata& meta) {
        meta.classInfo = new KvXmlLib10Data::CParentElementInfo(KvXmlLib10Data::GroupType_Sequence, Type, "item", "",
                                                               false, false, -1, Invalid, nullptr, false);
        meta.elements = kvtest::MakeArray<KvXmlLib10Data::CElementInfo>({new KvXmlLib10Data::CElementInfoSeqPrimMnd(
            "n", "", 1, false, i4, nullptr, kvtest::kCollapse, CPrimitiveRestrictions())});
        meta.attributes = kvtest::MakeArray<KvXmlLib10Data::CAttributeInfo>({});
    }
};
using CItem = kvtest::CTestClass<ItemSchema<KvXmlLib10Data::ElementType_Element>>;
using CPseudoItem = kvtest::CTestClass<ItemSchema<KvXmlLib10Data::ElementType_PseudoElement>>;

template <typename T>
CSmartPtr<CXmlObjectBase> MakeItem(int32_t, const char*) {
    return new T;
}
CSmartPtr<CXmlObjectBase> NoItem(CXmlElement*) { return nullptr; }

std::string NumbersOf(const CXmlCollection& collection) {
    std::string numbers;
    for (int32_t i = 0; i < collection.GetCount(); ++i)
        numbers += std::to_string(static_cast<CItem*>(collection.GetItemAt(i))->Get(1).GetI4()) + ";";
    return numbers;
}

TEST(XmlCollectionRead, ConsumesItsRunAndStopsAtTheFirstForeignElement) {
    kvtest::ParsedDocument doc("<r><item><n>1</n></item><item><n>2</n></item><other/><item><n>3</n></item></r>");
    CXmlCollection collection("item", "", 0, -1, &MakeItem<CItem>, 7);
    CXmlElement* rest = CXmlObjectBase::FromXml_Int(&collection, doc.Root(), doc.First(),
                                                    CXmlSerializationContext::m_defaultContext);
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->GetLocalName(), "other");
    EXPECT_EQ(NumbersOf(collection), "1;2;");

    kvtest::ParsedDocument pseudo("<r><n>4</n><n>5</n><other/></r>");
    CXmlCollection pseudoItems("item", "", 0, -1, &MakeItem<CPseudoItem>, 7, KvXmlLib10Data::ElementType_PseudoElement);
    rest = CXmlObjectBase::FromXml_Int(&pseudoItems, pseudo.Root(), pseudo.First(),
                                       CXmlSerializationContext::m_defaultContext);
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->GetLocalName(), "other");
    EXPECT_EQ(NumbersOf(pseudoItems), "4;5;");

    CXmlCollection unreadable("item", "", 0, -1);
    EXPECT_EQ(CXmlObjectBase::FromXml_Int(&unreadable, doc.Root(), doc.First(),
                                          CXmlSerializationContext::m_defaultContext),
              doc.First());
}

TEST(XmlCollectionRead, FailuresKeepWhatWasReadAndLeakNothing) {
    kvtest::ParsedDocument doc("<r><item><n>1</n></item><item><n>x</n></item></r>");
    CXmlCollection collection("item", "", 0, -1, &MakeItem<CItem>, 7);
    EXPECT_THROW(CXmlObjectBase::FromXml_Int(&collection, doc.Root(), doc.First(),
                                             CXmlSerializationContext::m_defaultContext),
                 CKvValidationException);
    EXPECT_EQ(NumbersOf(collection), "1;");

    CXmlCollection abstract("item", "", 0, -1, &NoItem);
    EXPECT_KV_THROW(CXmlObjectBase::FromXml_Int(&abstract, doc.Root(), doc.First(),
                                                CXmlSerializationContext::m_defaultContext),
                    CKvValidationException, "Failed to find a suitable substitution element for [item]");
}

TEST(XmlCollectionWrite, ItemsWriteThemselvesInOrder) {
    CXmlCollection collection("item", "", 0, -1);
    for (int32_t n : {3, 1}) {
        CItem* item = new CItem;
        item->SetI4(1, n);
        collection.AppendItem(item);
    }
    kvtest::RecordingWriter writer;
    CXmlObjectBase::ToXml_Int(&collection, &writer, false, "", CXmlSerializationContext::m_defaultContext, false);
    EXPECT_EQ(writer.log, "<item><n>text(3,5)</></><item><n>text(1,5)</></>");
}

}  // namespace
