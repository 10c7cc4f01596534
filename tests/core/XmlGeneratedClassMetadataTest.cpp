// XmlGeneratedClassMetadataTest.cpp - metadata lifetime and queries of generated classes: CleanMetaData, lazy creation under the lock, element lists.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

#include "metadata/GeneratedTestClasses.h"
#include "support/KvTestSupport.h"

using namespace kvtest;
namespace kv = KvXmlLib10;
namespace kvd = KvXmlLib10Data;

namespace {

int g_deleted = 0;
std::string g_order;

class CCountedElement : public CProbeInfo {
public:
    CCountedElement(const char* name) : CProbeInfo(name, "", 0) {}
    ~CCountedElement() override {
        ++g_deleted;
        g_order += GetElementName();
    }
};

class CCountedAttribute : public kvd::CAttributeInfoPrimitive {
public:
    CCountedAttribute(const char* name)
        : CAttributeInfoPrimitive(name, "", 0, true, kv::i4, nullptr, kCollapse, {}, nullptr) {}
    ~CCountedAttribute() override {
        ++g_deleted;
        g_order += GetAttributeName();
    }
};

class CCountedParent : public CParentElementInfo {
public:
    CCountedParent()
        : CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "P", "", false, false, -1,
                             kv::Invalid, nullptr, false) {}
    ~CCountedParent() override {
        ++g_deleted;
        g_order += "P";
    }
};

TEST(XmlGeneratedClassMetadata, CleanMetaDataDeletesEverythingInOrderAndNullsTheTables) {
    g_deleted = 0;
    g_order.clear();
    CParentElementInfo* classInfo = new CCountedParent;
    CElementInfo** elements = MakeArray<CElementInfo>({new CCountedElement("a"), new CCountedElement("b")});
    CAttributeInfo** attributes = MakeArray<CAttributeInfo>({new CCountedAttribute("x")});
    CXmlGeneratedClass::CleanMetaData(classInfo, elements, attributes);
    EXPECT_EQ(g_deleted, 4);
    EXPECT_EQ(g_order, "Pabx");
    EXPECT_EQ(classInfo, nullptr);
    EXPECT_EQ(elements, nullptr);
    EXPECT_EQ(attributes, nullptr);

    // Already clean: nothing happens.
    CXmlGeneratedClass::CleanMetaData(classInfo, elements, attributes);
    EXPECT_EQ(g_deleted, 4);
}

std::atomic<int32_t> g_builders{0};

// Slow to build, so that racing threads overlap inside the first build.
struct SlowSchema {
    static constexpr const char* kElementName = "Slow";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        ++g_builders;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Slow", "", false,
                                                false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>(
            {new kvd::CElementInfoSeqPrimOpt("a", "", 1, false, kv::i4, nullptr, kCollapse, {})});
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};
using CSlow = CTestClass<SlowSchema>;

TEST(XmlGeneratedClassMetadata, MetadataIsBuiltOnceWhenThreadsRace) {
    constexpr int kThreads = 8;
    std::atomic<int> ready{0};
    std::vector<const CParentElementInfo*> seen(kThreads, nullptr);
    std::vector<std::string> written(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            ++ready;
            while (ready.load() < kThreads) std::this_thread::yield();
            CSlow object;
            object.AddRef();
            object.SetI4(1, t);
            seen[t] = object.GetClassInfo();
            written[t] = WriteCompact(object, CXmlSerializationContext());
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(g_builders.load(), 1);
    EXPECT_EQ(CSlow::BuildCount(), 1);
    for (int t = 0; t < kThreads; ++t) {
        EXPECT_EQ(seen[t], seen[0]);
        EXPECT_EQ(written[t], "<Slow><a>" + std::to_string(t) + "</a></Slow>");
    }
}

struct ListSchema {
    static constexpr const char* kElementName = "List";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Choice, kvd::ElementType_Element, "List", "", false,
                                                false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new CRequiredChoiceInfo("a", "urn:a", 1, false, kv::i4, nullptr, kCollapse, {}),
            new kvd::CElementInfoChoiceEnumOpt("b", "", 2, false, ColorToString, ColorFromString),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};

struct RequiredListSchema : ListSchema {
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Choice, kvd::ElementType_Element, "List", "", false,
                                                false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new CRequiredChoiceInfo("a", "", 1, false, kv::i4, nullptr, kCollapse, {}),
            new kvd::CElementInfoSeqPrimOpt("s", "", 2, false, kv::i4, nullptr, kCollapse, {}),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};

TEST(XmlGeneratedClassMetadata, ElementListQueries) {
    CTestClass<ListSchema> list;
    list.AddRef();
    EXPECT_EQ(list.GetClassElementInfoCount(), 2);
    EXPECT_TRUE(list.DoesElementContainOptionalElements());

    ParsedDocument doc("<r xmlns:a='urn:a'><a:a/><a/><b/><c/></r>");
    CXmlElement* qualified = doc.First();
    CXmlElement* plain = qualified->GetNextSiblingElement();
    CXmlElement* b = plain->GetNextSiblingElement();
    const CXmlSerializationContext strict;
    EXPECT_TRUE(list.IsElementInList(strict, qualified));
    EXPECT_FALSE(list.IsElementInList(strict, plain));
    EXPECT_TRUE(list.IsElementInList(strict, b));
    EXPECT_FALSE(list.IsElementInList(strict, b->GetNextSiblingElement()));
    EXPECT_FALSE(list.IsElementInList(strict, nullptr));
    CXmlSerializationContext loose;
    loose.SetIgnoreNamespaces(true);
    EXPECT_TRUE(list.IsElementInList(loose, plain));

    CTestClass<RequiredListSchema> required;
    required.AddRef();
    EXPECT_FALSE(required.DoesElementContainOptionalElements());
    CHolder empty;
    empty.AddRef();
    EXPECT_EQ(empty.GetClassElementInfoCount(), 0);
    EXPECT_FALSE(empty.DoesElementContainOptionalElements());
}

}  // namespace
