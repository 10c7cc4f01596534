// Tests for the object collection: insert forms, events, reference counts, count checks, reading and writing.

#include "metadata/GeneratedTestClasses.h"

using namespace KvXmlLib10;
using KvXmlTest::RefCount;

namespace {

// Items are generated-style objects with one mandatory i4 child "n".
template <KvXmlLib10Data::XmlElementType Type>
struct ItemSchema : kvtest::NoNamespaces {
    static constexpr const char* kElementName = "item";
    static void Build(kvtest::Metadata& meta) {
        meta = {new KvXmlLib10Data::CParentElementInfo(KvXmlLib10Data::GroupType_Sequence, Type, "item", "", false,
                                                       false, -1, Invalid, nullptr, false),
                kvtest::MakeArray<KvXmlLib10Data::CElementInfo>({new KvXmlLib10Data::CElementInfoSeqPrimMnd(
                    "n", "", 1, false, i4, nullptr, kvtest::kCollapse, CPrimitiveRestrictions())}),
                kvtest::MakeArray<KvXmlLib10Data::CAttributeInfo>({})};
    }
};
using CItem = kvtest::CTestClass<ItemSchema<KvXmlLib10Data::ElementType_Element>>;
using CPseudoItem = kvtest::CTestClass<ItemSchema<KvXmlLib10Data::ElementType_PseudoElement>>;

template <typename T>
CSmartPtr<CXmlObjectBase> MakeItem(int32_t, const char*) {
    return new T;
}
CSmartPtr<CXmlObjectBase> NoItem(CXmlElement*) { return nullptr; }

CItem* NewItem(int32_t n) {
    CItem* item = new CItem;
    item->SetI4(1, n);
    return item;
}

std::string Numbers(const CXmlCollection& collection) {
    std::string numbers;
    for (int32_t i = 0; i < collection.GetCount(); ++i) {
        KvVariant n;
        static_cast<CXmlGeneratedClass*>(collection.GetItemAt(i))->ReadProperty(1, n);
        numbers += std::to_string(n.GetI4()) + ";";
    }
    return numbers;
}

// Records "type:payload" per event (payload "item", the index or "null"); may veto adds.
struct Recorder : IEventSink {
    std::vector<std::string> events;
    CXmlObjectBase* source = nullptr;
    bool veto = false;
    void OnEvent(CXmlObjectBase* from, MsgType type, void* data) override {
        source = from;
        std::string payload = data ? "item" : "null";
        if (data && (type == ItemRemoving || type == ItemRemoved)) payload = std::to_string(*static_cast<int32_t*>(data));
        events.push_back(std::to_string(type) + ":" + payload);
        if (veto && type == ItemAdding) throw CKvInvalidStateException("vetoed");
    }
};

TEST(XmlCollection, InsertFormsPlaceItemsAndHoldOneReferenceEach) {
    CItem* items[6];
    for (int32_t i = 0; i < 6; ++i) items[i] = NewItem(i);
    CSmartPtr<CItem> watch(items[0]);
    {
        CXmlCollection collection("item", "", 0, -1);
        collection.AppendItem(items[2]);
        collection.PrependItem(items[0]);
        collection.AddItemAt(2, items[4]);  // index == count appends
        collection.AddItemAt(1, items[1]);
        collection.AddBeforeItem(items[4], items[3]);
        collection.AddAfterItem(items[4], items[5]);
        EXPECT_EQ(Numbers(collection), "0;1;2;3;4;5;");
        EXPECT_EQ(collection.GetItemAt(4), items[4]);  // walks back from the last lookup
        EXPECT_EQ(RefCount(items[0]), 2);
        collection.Remove(0);
        EXPECT_EQ(RefCount(items[0]), 1);
    }
}

TEST(XmlCollection, EventsCarryPayloadsInOrderAndAVetoStopsTheAdd) {
    CXmlCollection collection("item", "", 0, -1);
    Recorder recorder, second;
    collection.AddEventListener(&recorder);
    collection.AddEventListener(&second);
    collection.AppendItem(NewItem(1));
    collection.AppendItem(NewItem(2));
    collection.Remove(1);
    collection.RemoveEventListener(&second);
    collection.AppendItem(NewItem(3));
    collection.Clear();
    EXPECT_EQ(recorder.events,
              (std::vector<std::string>{"1:item", "2:item", "0:null", "1:item", "2:item", "0:null", "3:1", "4:1",
                                        "0:null", "1:item", "2:item", "0:null", "3:0", "4:0", "0:null", "3:0", "4:0",
                                        "0:null"}));
    EXPECT_EQ(second.events.size(), 9u);
    EXPECT_EQ(recorder.source, collection.GetBase());

    recorder.veto = true;
    recorder.events.clear();
    CSmartPtr<CItem> item(NewItem(4));
    EXPECT_KV_THROW(collection.AppendItem(item.get()), CKvInvalidStateException, "vetoed");
    EXPECT_EQ(collection.GetCount(), 0);
    EXPECT_EQ(RefCount(item.get()), 1);
    EXPECT_EQ(recorder.events, (std::vector<std::string>{"1:item"}));
    collection.RemoveEventListener(&recorder);
}

TEST(XmlCollection, BadIndexesAndUnknownItemsThrowBeforeAnyEvent) {
    CXmlCollection collection("item", "", 0, -1);
    for (int32_t i = 0; i < 3; ++i) collection.AppendItem(NewItem(i));
    Recorder recorder;
    collection.AddEventListener(&recorder);
    CSmartPtr<CItem> stranger(NewItem(9));
    EXPECT_KV_THROW(collection.AddItemAt(4, stranger.get()), CKvInvalidParamException, "Index out of range");
    EXPECT_KV_THROW(collection.AddItemAt(-1, stranger.get()), CKvInvalidParamException, "Index out of range");
    EXPECT_KV_THROW(collection.GetNodeAtIndex(5), CKvInvalidParamException, "Index 5 is out of range, use 0 - 3");
    EXPECT_KV_THROW(collection.Remove(-1), CKvInvalidParamException, "Index -1 is out of range, use 0 - 3");
    EXPECT_KV_THROW(collection.AddAfterItem(stranger.get(), stranger.get()), CKvInvalidParamException,
                    "The object was not found in the collection");
    EXPECT_KV_THROW(collection.AppendItem(nullptr), CKvInvalidParamException, "The item may not be NULL");
    EXPECT_TRUE(recorder.events.empty());
    EXPECT_EQ(RefCount(stranger.get()), 1);
    collection.RemoveEventListener(&recorder);
}

TEST(XmlCollection, CountChecksFollowTheBoundsUnlessIgnored) {
    const struct {
        int32_t min, max, count;
        const char* message;  // null when valid
    } rows[] = {
        {1, -1, 0, "The Minimum number of [item] elements allowed in this collection is 1"},
        {1, -1, 5, nullptr},
        {0, 2, 3, "The Maximum number of [item] elements allowed in this collection is 2"},
        {4, 2, 3, "The Maximum number of [item] elements allowed in this collection is 2"},  // maximum first
    };
    CXmlSerializationContext ignoring;
    ignoring.SetIgnoreInvalidCollectionCounts(true);
    for (const auto& row : rows) {
        CXmlCollection collection("item", "urn:x", row.min, row.max);
        for (int32_t i = 0; i < row.count; ++i) collection.AppendItem(NewItem(i));
        EXPECT_EQ(collection.IsValidCount(CXmlSerializationContext::m_defaultContext), row.message == nullptr);
        if (row.message)
            EXPECT_KV_THROW(collection.ValidateCount(CXmlSerializationContext::m_defaultContext),
                            CKvValidationException, row.message);
        EXPECT_TRUE(collection.IsValidCount(ignoring));
        collection.ValidateCount(ignoring);
        EXPECT_KV_THROW(collection.GetTargetNamespace(), CKvException,
                        "CXmlCollectionBase::GetTargetNamespace Should not be used from within a Collection "
                        "(program logic error)");
    }
}

TEST(XmlCollection, ReadsItsRunWritesItAndKeepsWhatWasReadOnFailure) {
    const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext;
    kvtest::ParsedDocument doc("<r><item><n>1</n></item><item><n>2</n></item><other/><item><n>x</n></item></r>");
    CXmlCollection items("item", "", 0, -1, &MakeItem<CItem>, 7);
    CXmlElement* rest = CXmlObjectBase::FromXml_Int(&items, doc.Root(), doc.First(), context);
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->GetLocalName(), "other");
    EXPECT_EQ(Numbers(items), "1;2;");
    kvtest::RecordingWriter writer;
    CXmlObjectBase::ToXml_Int(&items, &writer, false, "", context, false);
    EXPECT_EQ(writer.log, "<item><n>text(1,5)</></><item><n>text(2,5)</></>");

    EXPECT_THROW(CXmlObjectBase::FromXml_Int(&items, doc.Root(), rest->GetNextSiblingElement(), context),
                 CKvValidationException);
    EXPECT_EQ(items.GetCount(), 2);

    kvtest::ParsedDocument pseudo("<r><n>4</n><n>5</n><other/></r>");
    CXmlCollection inline_("item", "", 0, -1, &MakeItem<CPseudoItem>, 7, KvXmlLib10Data::ElementType_PseudoElement);
    rest = CXmlObjectBase::FromXml_Int(&inline_, pseudo.Root(), pseudo.First(), context);
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->GetLocalName(), "other");
    EXPECT_EQ(Numbers(inline_), "4;5;");

    CXmlCollection abstract("item", "", 0, -1, &NoItem);
    EXPECT_KV_THROW(CXmlObjectBase::FromXml_Int(&abstract, doc.Root(), doc.First(), context), CKvValidationException,
                    "Failed to find a suitable substitution element for [item]");
    CXmlCollection noFactory("item", "", 0, -1);
    EXPECT_EQ(CXmlObjectBase::FromXml_Int(&noFactory, doc.Root(), doc.First(), context), doc.First());
}

}  // namespace
