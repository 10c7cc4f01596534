// XmlGeneratedClassTestSupport.h - schemas and helpers shared by the tests of the generated-class engine.
#pragma once

#include "metadata/GeneratedTestClasses.h"

namespace kvenginetest {

using namespace kvtest;
using KvXmlLib10::CKvException;
using KvXmlLib10::CKvValidationException;
namespace kv = KvXmlLib10;
namespace kvd = KvXmlLib10Data;

template <typename Action>
std::string FailureOf(Action action) {
    return KvXmlTest::FullMessageOf<CKvValidationException>(action);
}

template <typename T>
std::string ReadFailure(T& object, const char* text,
                        const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) {
    return FailureOf([&] { object.FromXml(text, context); });
}

inline std::string WriteFailure(const CXmlObjectBase& object,
                                const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) {
    return FailureOf([&] { WriteCompact(object, context); });
}

/// <Person id lang shade><name/><age/><color/></Person> of type PersonType.
struct PersonSchema : NoNamespaces {
    static constexpr const char* kElementName = "Person";
    static void Build(Metadata& meta) {
        meta = {Parent(kvd::GroupType_Sequence, "PersonType"),
                MakeArray<CElementInfo>(
                    {new kvd::CElementInfoSeqPrimMnd("name", "", 1, false, kv::string, nullptr, kPreserve, {}),
                     I4<kvd::CElementInfoSeqPrimOpt>("age", 2),
                     new kvd::CElementInfoSeqEnumOpt("color", "", 3, false, ColorToString, ColorFromString)}),
                MakeArray<CAttributeInfo>(
                    {new kvd::CAttributeInfoPrimitive("id", "", 10, false, kv::i4, nullptr, kCollapse, {}, nullptr),
                     new kvd::CAttributeInfoPrimitive("lang", "", 11, true, kv::string, nullptr, kPreserve, {}, "en"),
                     new kvd::CAttributeInfoEnum("shade", "", 12, true, ColorToString, ColorFromString, "red")})};
    }
};
using CPerson = CTestClass<PersonSchema>;

/// A pseudo element: its member g lands directly in the parent's element.
struct GroupSchema : NoNamespaces {
    static constexpr const char* kElementName = "Group";
    static void Build(Metadata& meta) {
        meta = {Parent(kvd::GroupType_Sequence, "Group", kvd::ElementType_PseudoElement),
                MakeArray<CElementInfo>({I4<kvd::CElementInfoSeqPrimOpt>("g", 1)}), MakeArray<CAttributeInfo>({})};
    }
};
using CGroup = CTestClass<GroupSchema>;

inline kv::CSmartPtr<CXmlObjectBase> NewPerson(int32_t, const char*) {
    return new CPerson;
}
inline kv::CSmartPtr<CXmlObjectBase> NewGroup(int32_t, const char*) {
    return new CGroup;
}

/// <Outer><Person/><g/><tail/></Outer>: a nested class, a pseudo element and an i4.
struct OuterSchema : NoNamespaces {
    static constexpr const char* kElementName = "Outer";
    static void Build(Metadata& meta) {
        meta = {Parent(kvd::GroupType_Sequence, "Outer"),
                MakeArray<CElementInfo>(
                    {new kvd::CElementInfoSeqClsOpt("Person", "", 1, kvd::ElementType_Element, NewPerson, 0),
                     new kvd::CElementInfoSeqClsOpt("Group", "", 2, kvd::ElementType_PseudoElement, NewGroup, 0),
                     I4<kvd::CElementInfoSeqPrimOpt>("tail", 3)}),
                MakeArray<CAttributeInfo>({})};
    }
};
using COuter = CTestClass<OuterSchema>;

/// A class whose group type is out of range.
struct BrokenSchema : NoNamespaces {
    static constexpr const char* kElementName = "Broken";
    static void Build(Metadata& meta) {
        meta = {Parent(static_cast<kvd::XmlElementGroupType>(3), "Broken"), MakeArray<CElementInfo>({}),
                MakeArray<CAttributeInfo>({})};
    }
};

}  // namespace kvenginetest
