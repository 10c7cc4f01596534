// ElementInfoCollectionTest.cpp - the collection element descriptors as one table of (group, kind): where the
// occurrence bounds are checked on writing and reading.
#include "metadata/GeneratedTestClasses.h"

using namespace kvtest;
using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

using CItem = CLeaf;  // the item class of the class collections

CSmartPtr<CXmlObjectBase> MakeItem(int32_t, const char* name) {
    CItem* item = new CItem;
    item->SetElementName(name);
    return item;
}
CSmartPtr<CXmlObjectBase> MakeAnyItem(CXmlElement*) {
    return new CItem;
}

// `objects`: a CXmlCollection of CItem, else a Ci4Col.
struct Row { const char* name; Group group; bool objects; std::function<CElementInfo*()> make; };

template <typename T>
Row ValueRow(const char* name, Group g) {
    return {name, g, false, [] { return new T("n", "", 1); }};
}
template <typename T>
Row ObjectRow(const char* name, Group g) {
    return {name, g, true, [] { return new T("n", "", 1, ElementType_Element); }};
}

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = {
        ValueRow<CElementInfoSeqPrimCol>("SeqPrimCol", Seq),
        ValueRow<CElementInfoChoicePrimCol>("ChoicePrimCol", Choice),
        ValueRow<CElementInfoAllPrimCol>("AllPrimCol", All), ValueRow<CElementInfoSeqEnumCol>("SeqEnumCol", Seq),
        ValueRow<CElementInfoChoiceEnumCol>("ChoiceEnumCol", Choice),
        ObjectRow<CElementInfoSeqClsCol>("SeqClsCol", Seq), ObjectRow<CElementInfoChoiceClsCol>("ChoiceClsCol", Choice),
        ObjectRow<CElementInfoAllClsCol>("AllClsCol", All), ObjectRow<CElementInfoSeqAbsClsCol>("SeqAbsClsCol", Seq),
        ObjectRow<CElementInfoChoiceAbsClsCol>("ChoiceAbsClsCol", Choice),
        ObjectRow<CElementInfoAllAbsClsCol>("AllAbsClsCol", All),
    };
    return rows;
}

// The row's collection with bounds 1..2, held by property 1 of holder.
CXmlCollectionBase* Attach(const Row& row, CHolder& holder) {
    KvVariant value;
    if (!row.objects) {
        value = I4List("n", 1, 2);
    } else {
        const bool abstract = std::string(row.name).find("Abs") != std::string::npos;
        CXmlCollection* list =
            abstract ? new CXmlCollection("n", "", 1, 2, MakeAnyItem) : new CXmlCollection("n", "", 1, 2, MakeItem, 0);
        value.SetXmlCollection(list);
    }
    holder.Set(1, value);
    CXmlCollectionBase* collection = value.GetXmlCollection();
    collection->Release();  // the holder keeps it alive
    return collection;
}

void Add(const Row& row, CXmlCollectionBase* collection, int32_t v) {
    if (!row.objects) return static_cast<Ci4Col*>(collection)->Add(v);
    CItem* item = new CItem;
    item->SetI4(1, v);
    static_cast<CXmlCollection*>(collection)->AppendItem(item);
}

const char kTooFew[] = "The Minimum number of [n] elements allowed in this collection is 1";
const char kTooMany[] = "The Maximum number of [n] elements allowed in this collection is 2";

TEST(ElementInfoCollectionWrite, SequenceAndAllCheckTheCountChoiceDoesNot) {
    const CXmlSerializationContext context;
    CXmlSerializationContext lenient;
    lenient.SetIgnoreInvalidCollectionCounts(true);
    for (const Row& row : Rows()) {
        std::unique_ptr<CElementInfo> info(row.make());
        CHolder holder;
        RecordingWriter none, empty, lenientEmpty, two;
        EXPECT_FALSE(info->ElementToXml(context, &holder, &none)) << row.name;  // no collection at all
        CXmlCollectionBase* collection = Attach(row, holder);
        if (row.group == Choice)
            EXPECT_FALSE(info->ElementToXml(context, &holder, &empty)) << row.name;
        else
            EXPECT_KV_THROW(info->ElementToXml(context, &holder, &empty), CKvValidationException, kTooFew);
        EXPECT_FALSE(info->ElementToXml(lenient, &holder, &lenientEmpty)) << row.name;
        Add(row, collection, 7);
        Add(row, collection, 8);
        EXPECT_TRUE(info->ElementToXml(context, &holder, &two)) << row.name;
        EXPECT_EQ(none.log + empty.log + lenientEmpty.log + "|" + two.log,
                  row.objects ? "|<n><v>text(7,5)</></><n><v>text(8,5)</></>" : "|<n>text(7,5)</><n>text(8,5)</>")
            << row.name;
        if (row.group != Choice) {
            Add(row, collection, 9);
            RecordingWriter three;
            EXPECT_KV_THROW(info->ElementToXml(context, &holder, &three), CKvValidationException, kTooMany);
            EXPECT_EQ(three.log, "") << row.name;
        }
    }
}

// In an element of its own a count out of bounds throws; inside a pseudo
// element it is the answer; an all group does not check. A choice member
// that read nothing declines.
TEST(ElementInfoCollectionRead, CountCheckedByGroupAndElementType) {
    ParsedDocument doc("<r><n><v>1</v></n><n><v>2</v></n><n><v>3</v></n><z/></r>");
    const CXmlSerializationContext context;
    for (const Row& row : Rows()) {
        if (!row.objects) continue;  // the value collections read text items: below
        for (XmlElementType type : {ElementType_Element, ElementType_PseudoElement}) {
            std::unique_ptr<CElementInfo> info(row.make());
            CHolder holder;
            CXmlCollectionBase* collection = Attach(row, holder);
            CXmlElement* cursor = doc.First();
            if (row.group == All) {
                EXPECT_TRUE(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", type)) << row.name;
            } else if (type == ElementType_Element) {
                EXPECT_KV_THROW(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", type),
                                CKvValidationException, kTooMany);
            } else {
                EXPECT_FALSE(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", type)) << row.name;
            }
            EXPECT_EQ(collection->GetCount(), 3) << row.name;
            EXPECT_EQ(cursor->GetLocalName(), "z") << row.name;

            collection->Clear();
            CXmlElement* z = cursor;
            if (row.group == Seq && type == ElementType_Element)
                EXPECT_KV_THROW(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", type),
                                CKvValidationException, kTooFew);
            else
                EXPECT_EQ(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", type), false) << row.name;
            EXPECT_EQ(cursor, z) << row.name;
        }
    }
}

TEST(ElementInfoCollectionRead, ValueCollectionsReadTheirRunAndAllGroupsAccept) {
    ParsedDocument doc("<r><n>4</n><n>5</n><z/></r>");
    const CXmlSerializationContext context;
    for (const Row& row : Rows()) {
        if (row.objects) continue;
        std::unique_ptr<CElementInfo> info(row.make());
        CHolder holder;
        auto* collection = static_cast<Ci4Col*>(Attach(row, holder));
        CXmlElement* cursor = doc.First();
        EXPECT_TRUE(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", ElementType_Element)) << row.name;
        EXPECT_EQ(cursor->GetLocalName(), "z");
        ASSERT_EQ(collection->GetCount(), 2) << row.name;
        EXPECT_EQ(collection->Item(0) * 10 + collection->Item(1), 45);
        if (row.group == All) {
            EXPECT_TRUE(info->Validate(context, &holder, false, true));
        }
    }
}

TEST(ElementInfoCollectionRead, ChoiceReadCollectionReadsOnceAndChecksTheCount) {
    ParsedDocument doc("<r><n>4</n><n>5</n><n>6</n><z/></r>");
    CHolder holder;
    CXmlCollectionBase* list = Attach(Rows()[0], holder);
    const CXmlSerializationContext context;
    CXmlElement* cursor = doc.First();
    int32_t count = 1;  // a member was already read: nothing happens
    CXmlObjectBase::Choice_Read_Collection(list, doc.Root(), cursor, count, context);
    EXPECT_EQ(cursor, doc.First());
    count = 0;
    cursor = doc.First()->GetNextSiblingElement();
    CXmlObjectBase::Choice_Read_Collection(list, doc.Root(), cursor, count, context);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(cursor->GetLocalName(), "z");
    CXmlElement* z = cursor;
    count = 0;
    CXmlObjectBase::Choice_Read_Collection(list, doc.Root(), cursor, count, context);  // consumed nothing
    EXPECT_EQ(count, 0);
    EXPECT_EQ(cursor, z);
    list->Clear();
    cursor = doc.First();
    EXPECT_KV_THROW(CXmlObjectBase::Choice_Read_Collection(list, doc.Root(), cursor, count, context),
                    CKvValidationException, kTooMany);
}

}  // namespace
