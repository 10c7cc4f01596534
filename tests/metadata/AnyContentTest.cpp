// AnyContentTest.cpp - the wildcard wrappers: construction rules, copying, reading and writing element trees, the
// collections' namespace rules, and trees too deep for recursion.
#include "metadata/GeneratedTestClasses.h"

using namespace kvtest;
using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

// A null message: accepted.
struct ConstructionCase { const char *name, *namespaceUri, *restriction, *target, *message; };

TEST(AnyElement, InitChecksEveryStringAndTheNamespace) {
    const ConstructionCase cases[] = {
        {nullptr, "", "##any", "", "Element Name must have a value"},
        {"e", "", nullptr, "", "Namespace Restriction must have a value"},
        {"e", "", "##any", nullptr, "Target Namespace must have a value"},
        {"e", "", "##local ##others", "", "Invalid Namespace [##others]"},
        {"e", "urn:b", "##local ##targetNamespace", "urn:a",
         "Invalid namespace [urn:b]. The namespace must be one of [##local ##targetNamespace] where the target "
         "namespace is [urn:a]"},
        {"e", "urn:a", "##local ##targetNamespace", "urn:a", nullptr}, {"e", "urn:x", "urn:x urn:y", "", nullptr},
    };
    for (const ConstructionCase& c : cases) {
        SCOPED_TRACE(c.message ? c.message : c.restriction);
        if (c.message) {
            EXPECT_KV_THROW(CElement(c.name, c.namespaceUri, c.restriction, c.target), CKvInvalidNamespaceException,
                            c.message);
        } else {
            CElement element(c.name, c.namespaceUri, c.restriction, c.target);
            EXPECT_EQ(element.GetNamespace(), c.namespaceUri);
            EXPECT_EQ(element.GetAttributes()->GetNamespaceRestriction(), "##any");
            EXPECT_EQ(element.GetElements()->GetMaxOccurs(), -1);
        }
    }
    EXPECT_KV_THROW(CElement(nullptr), CKvInvalidNamespaceException, "Element Name must have a value");
    EXPECT_KV_THROW(CAttributeCol("a", "##bad"), CKvInvalidNamespaceException, "Invalid Namespace [##bad]");
    EXPECT_KV_THROW(CElementCol("a", "##any", nullptr, 0, -1), CKvInvalidNamespaceException,
                    "Target Namespace must have a value");
}

TEST(AnyElement, CopiedElementWritesTextAfterChildrenAndClonesAlike) {
    ParsedDocument doc("<r a='1' xmlns:p='urn:p' p:b='2'>t1<c x='&amp;'/>t2<p:d>in</p:d></r>");
    CElement element("x");
    element.CopyXmlElement(doc.Root());
    const std::string expected = "<r a=\"1\" xmlns:AA=\"urn:p\" AA:b=\"2\"><c x=\"&amp;\"/><AA:d>in</AA:d>t1t2</r>";
    EXPECT_EQ(element.ToXml(false, false), expected);
    EXPECT_EQ(element.GetElementName(), "r");
    EXPECT_EQ(element.GetAttributes()->Item(1)->GetNamespace(), "urn:p");
    EXPECT_EQ(element.GetOwnDefaultNamespace(), "");

    CSmartPtr<CElement> copy(element.Clone());
    EXPECT_EQ(copy->ToXml(false, false), expected);
    copy->GetElements()->Item(0)->SetText("changed");
    EXPECT_EQ(element.ToXml(false, false), expected);

    // Every entry point reads the document element itself.
    CElement read("r"), wide("r"), streamed("r");
    read.FromXml("<r a='1'><c/>t</r>");
    wide.FromXml(L"<r a='1'><c/>t</r>");
    unsigned char bytes[] = "<r a='1'><c/>t</r>";
    streamed.FromXmlStream(bytes, sizeof bytes - 1);
    for (const CElement* element : {&read, &wide, &streamed})
        EXPECT_EQ(element->ToXml(false, false), "<r a=\"1\"><c/>t</r>");
    CElement local("e", "", "##local", "");
    EXPECT_KV_THROW(
        local.FromXml("<r xmlns='urn:x'/>"), CKvInvalidNamespaceException,
        "Invalid namespace [urn:x]. The namespace must be one of [##local] where the target namespace is []");
}

TEST(AnyElement, OwnDefaultNamespaceIsDeclaredByAnInnerWriterWithoutAttributes) {
    CXmlSerializationContext noNamespaces;
    noNamespaces.SetSchemaType(SchemaType_NoNamespaces);
    ParsedDocument doc("<r xmlns='urn:x' a='1'><c/>t</r>", noNamespaces);
    CElement element("r");
    element.CopyXmlElement(doc.Root());
    EXPECT_EQ(element.GetOwnDefaultNamespace(), "urn:x");
    EXPECT_EQ(element.ToXml(false, false), "<r xmlns=\"urn:x\"><c/>t</r>");

    CElement outer("o");
    outer.GetElements()->Add(CSmartPtr<CElement>(element.Clone()).get());
    EXPECT_EQ(outer.ToXml(false, true), "<o>\n<r xmlns=\"urn:x\">\n\t<c/>\nt</r>\n\n</o>\n");

    // Nested elements with their own default namespace: each declares its own.
    ParsedDocument nested("<a xmlns='urn:a'><b xmlns='urn:b'><c xmlns='urn:c'/>t</b></a>", noNamespaces);
    element.CopyXmlElement(nested.Root());
    EXPECT_EQ(element.ToXml(false, true),
              "<a xmlns=\"urn:a\">\n<b xmlns=\"urn:b\">\n<c xmlns=\"urn:c\"/>\n\nt</b>\n\n</a>\n\n");
}

TEST(AnyElementCol, ReadsWhatTheRestrictionAdmitsAndLeavesTheRest) {
    ParsedDocument doc("<r xmlns:a='urn:a' xmlns:b='urn:b'><b:one/><two/><a:three/><b:four/></r>");
    CSmartPtr<CElementCol> other(new CElementCol("AnyElement", "##other", "urn:a", 0, -1));
    CXmlElement* left =
        CXmlObjectBase::FromXml_Int(other.get(), doc.Root(), doc.First(), CXmlSerializationContext::m_defaultContext);
    ASSERT_NE(left, nullptr);
    EXPECT_EQ(left->GetLocalName(), "three");
    EXPECT_EQ(other->GetCount(), 2);
    EXPECT_EQ(other->Item(1)->GetNamespaceRestriction(), "##other");

    CSmartPtr<CElementCol> locked(new CElementCol("one", "##any", "", 0, -1));
    EXPECT_EQ(locked
                  ->FromXmlLockElementName_Int(doc.Root(), doc.First(), CXmlSerializationContext::m_defaultContext,
                                               "one", "urn:b")
                  ->GetLocalName(),
              "two");
    EXPECT_EQ(locked->GetCount(), 1);

    ParsedDocument attributes("<r xmlns:a='urn:a' x='1' a:y='2'/>");
    CSmartPtr<CAttributeCol> local(new CAttributeCol("", "##local", "urn:a"));
    EXPECT_KV_THROW(CXmlObjectBase::FromXml_Int(local.get(), attributes.Root(), nullptr,
                                                CXmlSerializationContext::m_defaultContext),
                    CKvInvalidNamespaceException, "Invalid Attribute [y]. The attributes namespace is Inappropriate.");
    EXPECT_EQ(local->GetCount(), 1);
}

TEST(AnyElementCol, AddIterateAndRestrictionMessages) {
    CSmartPtr<CElementCol> noNamespace(new CElementCol("e", "##any", "", 0, -1));
    EXPECT_KV_THROW(noNamespace->Add("x"), CKvInvalidParamException,
                    "A Namespace has not been set for this Collection");
    CSmartPtr<CElementCol> col(new CElementCol("e", "##targetNamespace", "urn:t", 0, -1));
    EXPECT_EQ(col->Add("x")->GetNamespace(), "urn:t");
    EXPECT_KV_THROW(col->Add("y", "urn:z"), CKvInvalidNamespaceException,
                    "Invalid namespace [urn:z]. The namespace must be one of [##targetNamespace] where the target "
                    "namespace is [urn:t]");
    std::string names;
    for (CElement* element : *col) names += element->GetElementName();
    EXPECT_EQ(names, "x");
    CElementCol::iterator end = col->end();
    EXPECT_KV_THROW(++end, CKvException, "No More Elements in the Collection");

    CElement element("e", "urn:a");
    EXPECT_KV_THROW(element.SetNamespaceRestrictions("##other", "urn:a"), CKvInvalidNamespaceException,
                    "The namespace urn:a in the class e is invalid against restriction ##other");
    element.SetNamespaceRestrictions("##other", "urn:b");
}

TEST(AnyElement, TreesDeeperThanAnyStackAreCopiedReadWrittenClonedAndFreed) {
    const int depth = 50000;
    std::string text;
    for (int i = 0; i < depth; ++i) text += "<a>";
    text += "x";
    for (int i = 0; i < depth; ++i) text += "</a>";

    CElement read("a");
    read.FromXml(text.c_str());
    EXPECT_EQ(read.ToXml(false, false), text);
    CSmartPtr<CElement> clone(read.Clone());
    ParsedDocument doc(text.c_str());
    CElement copy("a");
    copy.CopyXmlElement(doc.Root());
    EXPECT_EQ(copy.GetElements()->Item(0)->GetElementName(), "a");
}

// ---- untyped descriptors ----

enum Card { Mnd, Opt };
struct UntypedRow { const char* name; Group group; Card card; CElementInfo* (*make)(const char*, const char*); };
template <typename T>
CElementInfo* MakeUntyped(const char* name, const char* restriction) {
    return new T(name, "urn:d", 1, restriction, "urn:a");
}

CElement* StoredElement(const CHolder& holder) {
    KvVariant value = holder.Get(1);
    CXmlObjectBase* object = value.GetXmlObject();
    if (!object) return nullptr;
    object->Release();  // the holder keeps it alive
    return dynamic_cast<CElement*>(object);
}

TEST(ElementInfoUntyped, ReadsAdmittedElementsAndAnswersMissesByGroupAndCardinality) {
    const UntypedRow rows[] = {
        {"SeqUntpdMnd", Seq, Mnd, MakeUntyped<CElementInfoSeqUntpdMnd>},
        {"SeqUntpdOpt", Seq, Opt, MakeUntyped<CElementInfoSeqUntpdOpt>},
        {"AllUntpdMnd", All, Mnd, MakeUntyped<CElementInfoAllUntpdMnd>},
        {"AllUntpdOpt", All, Opt, MakeUntyped<CElementInfoAllUntpdOpt>},
        {"ChoiceUntpdOpt", Choice, Opt, MakeUntyped<CElementInfoChoiceUntpdOpt>},
    };
    const CXmlSerializationContext context;
    ParsedDocument doc("<r xmlns:a='urn:a'><n k='v'>t<c/></n><a:m/></r>");
    for (const UntypedRow& row : rows) {
        SCOPED_TRACE(row.name);
        for (const char* name : {"n", "AnyElement"}) {
            std::unique_ptr<CElementInfo> info(row.make(name, "##other"));
            CHolder holder;
            if (row.card == Mnd)
                holder.Set(1, [] {
                    KvVariant v;
                    v.SetXmlObject(new CElement("AnyElement"));
                    return v;
                }());
            CXmlElement* cursor = doc.First();
            EXPECT_TRUE(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", ElementType_Element));
            ASSERT_NE(StoredElement(holder), nullptr);
            EXPECT_EQ(StoredElement(holder)->ToXml(false, false), "<n k=\"v\"><c/>t</n>");
            EXPECT_EQ(cursor->GetLocalName(), "m");

            // a:m is in the wildcard's own namespace, which ##other refuses; then the end of the parent.
            for (CXmlElement* miss : {cursor, static_cast<CXmlElement*>(nullptr)}) {
                CXmlElement* at = miss;
                if (row.group == Seq && row.card == Mnd) {
                    EXPECT_KV_THROW(info->ElementFromXml(context, &holder, doc.Root(), &at, "", ElementType_Element),
                                    CKvValidationException,
                                    miss ? "Failed to find the required element from namespace [urn:d]"
                                         : (std::string("Failed to find a required element [") + name + "]").c_str());
                    EXPECT_FALSE(
                        info->ElementFromXml(context, &holder, doc.Root(), &at, "", ElementType_PseudoElement));
                } else {
                    EXPECT_EQ(info->ElementFromXml(context, &holder, doc.Root(), &at, "", ElementType_Element),
                              row.group == Seq);
                }
                EXPECT_EQ(at, miss);
            }
            if (row.group == All) {
                EXPECT_TRUE(info->Validate(context, &holder, row.card == Mnd, true));
            }
        }
        if (row.card == Opt) {  // a name of its own refuses other names
            std::unique_ptr<CElementInfo> named(row.make("other", "##any"));
            CHolder holder;
            CXmlElement* cursor = doc.First();
            EXPECT_EQ(named->ElementFromXml(context, &holder, doc.Root(), &cursor, "", ElementType_Element),
                      row.group == Seq);
            EXPECT_EQ(cursor, doc.First());
            EXPECT_FALSE(holder.Has(1));
        }
    }
    EXPECT_KV_THROW(CElementInfoAllUntpdMnd("n", "", 1, "##any", "").Validate(context, nullptr, false, true),
                    CKvValidationException, "Failed to find the mandatory element [n]");
}

TEST(ElementInfoUntyped, CollectionsTakeARunAndCheckTheirCountsByGroup) {
    const CXmlSerializationContext context;
    ParsedDocument doc("<r xmlns:a='urn:a' xmlns:b='urn:b'><b:x/><y/><a:z/></r>");
    std::unique_ptr<CElementInfo> infos[] = {
        std::make_unique<CElementInfoSeqUntpdCol>("AnyElement", "", 1),
        std::make_unique<CElementInfoChoiceUntpdCol>("AnyElement", "", 1),
        std::make_unique<CElementInfoAllUntpdCol>("AnyElement", "", 1),
        std::make_unique<CElementInfoSeqUntpdCol>("y", "", 1),
    };
    const int32_t taken[] = {2, 2, 2, 0};
    for (int i = 0; i < 4; ++i) {
        for (int32_t minimum : {1, 3}) {
            CHolder holder;
            KvVariant value;
            CElementCol* col = new CElementCol(infos[i]->GetElementName().c_str(), "##other", "urn:a", minimum, -1);
            value.SetXmlCollection(col);
            holder.Set(1, value);
            CXmlElement* cursor = doc.First();
            const bool checked = i != 2 && minimum > taken[i];
            if (checked) {
                EXPECT_KV_THROW(
                    infos[i]->ElementFromXml(context, &holder, doc.Root(), &cursor, "", ElementType_Element),
                    CKvValidationException,
                    "The Minimum number of [" + infos[i]->GetElementName() +
                        "] elements allowed in this collection is " + std::to_string(minimum));
            } else {
                EXPECT_TRUE(infos[i]->ElementFromXml(context, &holder, doc.Root(), &cursor, "", ElementType_Element));
            }
            EXPECT_EQ(col->GetCount(), taken[i]) << i;
            if (taken[i]) {
                EXPECT_EQ(cursor->GetLocalName(), "z");
            }
        }
    }
}

TEST(AttributeInfoAny, GathersAdmittedAttributesIntoItsCollectionOnly) {
    const CXmlSerializationContext context;
    ParsedDocument doc("<r xmlns:a='urn:a' xmlns:b='urn:b' a:x='1' b:y='2' z='3'/>");
    CAttributeInfoAny info("AnyAttribute", "", 1, true, nullptr, "##other", "urn:a");
    CHolder holder;
    KvVariant value;
    CAttributeCol* gathered = new CAttributeCol("AnyAttribute", "##any", "");
    value.SetXmlCollection(gathered);
    holder.Set(1, value);
    std::string answers;
    for (CXmlAttribute* attribute : doc.Root()->GetAttributes())
        answers += info.AttributeFromXml(context, &holder, attribute) ? '1' : '0';
    EXPECT_EQ(answers, "011");
    EXPECT_EQ(gathered->Item(0)->GetElementName() + gathered->Item(0)->GetValue() + gathered->Item(0)->GetNamespace(),
              "y2urn:b");
    EXPECT_TRUE(info.Validate(context, false));
    RecordingWriter writer;
    info.AttributeToXml(context, &holder, &writer);
    EXPECT_EQ(writer.log, "@{urn:b}y=2,23;@z=3,23;");

    KvVariant wrong;
    wrong.SetXmlCollection(new CElementCol("e", "##any", "", 0, -1));
    holder.Set(1, wrong);
    EXPECT_KV_THROW(info.AttributeFromXml(context, &holder, doc.Root()->GetAttributes()[2]), CKvException,
                    "Serialization Data Error : The collection should be a CAttributeCol, it was not!");
}

}  // namespace
