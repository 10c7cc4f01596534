// GeneratedTestClasses.h - small classes shaped like generated code, for exercising the descriptors and the engine.
//
// A schema struct supplies the element name, the namespaces and a Build
// function that creates the descriptors; CTestClass<Schema> keeps its
// properties in a map by property id and builds its metadata once, under
// the process lock, as generated code does.
#pragma once

#include <map>

#include "support/KvTestSupport.h"

namespace kvtest {

using namespace KvXmlLib10;
using KvXmlLib10Data::CAttributeInfo;
using KvXmlLib10Data::CElementInfo;
using KvXmlLib10Data::CParentElementInfo;

constexpr CWhitespaceUtils::WhitespaceRule kCollapse = CWhitespaceUtils::WhitespaceRule::Collapse;
constexpr CWhitespaceUtils::WhitespaceRule kPreserve = CWhitespaceUtils::WhitespaceRule::Preserve;

/// The three tables of one class.
struct Metadata {
    CParentElementInfo* classInfo = nullptr;
    CElementInfo** elements = nullptr;
    CAttributeInfo** attributes = nullptr;
};

/// A null-terminated array from new[], as generated code builds them.
template <typename T>
T** MakeArray(std::initializer_list<T*> items) {
    T** array = new T*[items.size() + 1];
    size_t i = 0;
    for (T* item : items) array[i++] = item;
    array[i] = nullptr;
    return array;
}

/// A test enumeration: red, green, blue; unknown text gives -1.
inline const char* ColorToString(int32_t value) {
    static const char* const names[] = {"red", "green", "blue"};
    return value >= 0 && value < 3 ? names[value] : nullptr;
}
inline int32_t ColorFromString(const char* text) {
    for (int32_t value = 0; value < 3; ++value)
        if (std::strcmp(text, ColorToString(value)) == 0) return value;
    return -1;
}

/// A repeated i4 member's collection (unbounded unless maxOccurs), in a
/// variant as a generated property holds it.
inline KvVariant I4List(const char* name, int32_t minOccurs, int32_t maxOccurs = -1) {
    KvVariant value;
    value.SetXmlCollection(new KvXmlLib10::Ci4Col(name, "", minOccurs, maxOccurs, nullptr, -1, -1, nullptr, nullptr,
                                                  nullptr, nullptr, -1, kCollapse, nullptr));
    return value;
}

// Schema::Init(object), when the schema has one, gives a new object its
// collections, as generated constructors do.
template <typename Schema, typename T>
auto InitProperties(T& object, int) -> decltype(Schema::Init(object), void()) {
    Schema::Init(object);
}
template <typename Schema, typename T>
void InitProperties(T&, long) {}

/// A generated-style class: properties in a map, metadata from Schema.
template <typename Schema>
class CTestClass : public CXmlGeneratedClass {
public:
    CTestClass() {
        SetElementName(Schema::kElementName);
        InitProperties<Schema>(*this, 0);
    }

    std::string GetTargetNamespace() const override { return Schema::kTargetNamespace; }
    std::string GetNamespace() const override { return Schema::kTypeNamespace; }

    CParentElementInfo* GetClassInfo() const override { return Meta().classInfo; }
    CElementInfo** GetClassElementInfo() const override { return Meta().elements; }
    CAttributeInfo** GetClassAttributeInfo() const override { return Meta().attributes; }

    void Set(int32_t id, const KvVariant& value) { m_values[id] = value; }
    void SetI4(int32_t id, int32_t value) { m_values[id].SetI4(value); }
    void SetString(int32_t id, const std::string& value) { m_values[id].SetString(value); }
    void SetNilValue(int32_t id) { m_values[id].SetNil(); }
    bool Has(int32_t id) const { return m_values.count(id) != 0; }
    KvVariant Get(int32_t id) const {
        auto found = m_values.find(id);
        return found == m_values.end() ? KvVariant() : found->second;
    }

    /// The descriptors, built on first use under m_csInit.
    static const Metadata& Meta() {
        Holder& holder = Storage();
        if (!holder.built.load(std::memory_order_acquire)) {
            m_csInit.Enter();
            if (!holder.built.load(std::memory_order_relaxed)) {
                Schema::Build(holder.meta);
                holder.built.store(true, std::memory_order_release);
            }
            m_csInit.Leave();
        }
        return holder.meta;
    }

protected:
    void AccessProperty(int32_t id, bool read, KvVariant& value) override {
        if (read) {
            auto found = m_values.find(id);
            if (found != m_values.end()) value = found->second;
        } else {
            m_values[id] = value;
        }
    }
    // Collections stay, emptied; every other property goes.
    void ResetProperties() override {
        for (auto it = m_values.begin(); it != m_values.end();) {
            if (auto* collection = it->second.GetXmlCollection()) {
                collection->Clear();
                collection->Release();
                ++it;
            } else {
                it = m_values.erase(it);
            }
        }
    }

private:
    struct Holder {
        Metadata meta;
        std::atomic<bool> built{false};
        ~Holder() { CXmlGeneratedClass::CleanMetaData(meta.classInfo, meta.elements, meta.attributes); }
    };
    static Holder& Storage() {
        static Holder holder;
        return holder;
    }

    std::map<int32_t, KvVariant> m_values;
};

/// An object on the stack holding a reference of its own, so that the engine's
/// AddRef/Release pairs never delete it.
template <typename T>
struct Pinned : T {
    using T::T;

private:
    int m_pin = (this->AddRef(), 0);
};

/// A generated-style class that may be nil.
template <typename Schema>
class CNillableTestClass : public CTestClass<Schema>, public INillable {
public:
    bool IsNil() const override { return m_nil; }
    void SetNil(bool nil) override { m_nil = nil; }

protected:
    void ResetProperties() override {
        CTestClass<Schema>::ResetProperties();
        m_nil = false;
    }

private:
    bool m_nil = false;
};

/// Makes the engine's protected steps callable from tests.
template <typename Base>
class CExposed : public Base {
public:
    using CXmlGeneratedClass::ProcessElementAllFromXml;
    using CXmlGeneratedClass::ProcessElementChoiceFromXml;
    using CXmlGeneratedClass::ProcessElementSeqFromXml;
};

/// A sequence member with no behaviour, for testing what the base class does.
class CProbeInfo : public KvXmlLib10Data::CElementInfoSeq {
public:
    using CElementInfoSeq::CElementInfoSeq;
    bool ElementToXml(const CXmlSerializationContext&, const CXmlGeneratedClass*, CXmlWriter*) const override {
        return false;
    }
    bool ElementFromXml(const CXmlSerializationContext&, CXmlGeneratedClass*, CXmlElement*, CXmlElement**,
                        const char*, KvXmlLib10Data::XmlElementType) override {
        return true;
    }
};

/// The document an object writes, without declaration or formatting.
inline std::string WriteCompact(const CXmlObjectBase& object,
                                const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) {
    return object.ToXml(false, false, KvXmlLib10::EOL_LF, context);
}

/// A writer that records the calls it gets, one token per call, so tests see
/// item types and call order that the text writer does not show.
class RecordingWriter : public CXmlWriter {
public:
    RecordingWriter() : CXmlWriter("RecordingWriter") {}
    std::string log;

    void SetDefaultNamespace(const std::string& uri) override { log += "default(" + uri + ")"; }
    void AddNamespace(const std::string& prefix, const std::string& uri) override {
        log += "ns(" + prefix + "=" + uri + ")";
    }
    void WriteComment(const std::string& text) override { log += "comment(" + text + ")"; }
    void WritePI(const std::string& text) override { log += "pi(" + text + ")"; }
    void WriteInlineSchema(const std::string& text) override { log += "schema(" + text + ")"; }
    void WriteStartElement(const std::string& name, const std::string& uri) override {
        log += "<" + Qualified(name, uri) + ">";
    }
    void WriteString(const std::string& text, ItemType type) override {
        log += "text(" + text + "," + std::to_string(type) + ")";
    }
    void WriteEndElement() override { log += "</>"; }
    void WriteAttributeString(const std::string& name, const std::string& uri, const std::string& value,
                              ItemType type) override {
        log += "@" + Qualified(name, uri) + "=" + value + "," + std::to_string(type) + ";";
    }
    void WriteAttributeType(const std::string& uri, const std::string& name, ItemType type) override {
        log += "@type=" + Qualified(name, uri) + "," + std::to_string(type) + ";";
    }
    void WriteAttributeNil() override { log += "@nil;"; }

private:
    static std::string Qualified(const std::string& name, const std::string& uri) {
        return uri.empty() ? name : "{" + uri + "}" + name;
    }
};

/// A parsed document whose root's children the descriptors read.
class ParsedDocument {
public:
    explicit ParsedDocument(const char* text,
                            const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext)
        : m_document(context) {
        m_document.LoadXml(text);
    }
    CXmlElement* Root() const { return m_document.GetDocumentElement(); }
    CXmlElement* First() const { return Root()->GetFirstElement(); }

private:
    KvXmlLib10::CXmlDocument m_document;
};

struct NoNamespaces {
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
};

/// A class descriptor without simple content, allowed to write its type attribute.
inline CParentElementInfo* Parent(KvXmlLib10Data::XmlElementGroupType group, const char* name,
                                  KvXmlLib10Data::XmlElementType kind = KvXmlLib10Data::ElementType_Element) {
    return new CParentElementInfo(group, kind, name, "", false, true, -1, KvXmlLib10::Invalid, nullptr, false);
}

/// An i4 member of descriptor kind T.
template <typename T>
CElementInfo* I4(const char* name, int32_t id) {
    return new T(name, "", id, false, KvXmlLib10::i4, nullptr, kCollapse, {});
}

/// A choice of the i4 members a and b: optional, or lists of at least one.
template <bool Optional, KvXmlLib10Data::XmlElementType Kind = KvXmlLib10Data::ElementType_Element>
struct ChoiceSchema : NoNamespaces {
    static constexpr const char* kElementName = "Pick";
    static void Build(Metadata& meta) {
        meta = {Parent(KvXmlLib10Data::GroupType_Choice, "Pick", Kind),
                MakeArray<CElementInfo>({Optional ? I4<KvXmlLib10Data::CElementInfoChoicePrimOpt>("a", 1)
                                                  : new KvXmlLib10Data::CElementInfoChoicePrimCol("a", "", 1),
                                         Optional ? I4<KvXmlLib10Data::CElementInfoChoicePrimOpt>("b", 2)
                                                  : new KvXmlLib10Data::CElementInfoChoicePrimCol("b", "", 2)}),
                MakeArray<CAttributeInfo>({})};
    }
    /// Required members are lists of at least one.
    template <typename T>
    static void Init(T& object) {
        if (Optional) return;
        object.Set(1, I4List("a", 1));
        object.Set(2, I4List("b", 1));
    }
};

/// A class with no members of its own: the object descriptors are called with.
struct EmptySchema : NoNamespaces {
    static constexpr const char* kElementName = "Holder";
    static void Build(Metadata& meta) {
        meta = {new CParentElementInfo(KvXmlLib10Data::GroupType_Sequence, KvXmlLib10Data::ElementType_Element,
                                       "Holder", "", false, false, -1, KvXmlLib10::Invalid, nullptr, false),
                MakeArray<CElementInfo>({}), MakeArray<CAttributeInfo>({})};
    }
};
using CHolder = CTestClass<EmptySchema>;

/// The descriptor tables' groups, for tables of descriptor rows.
enum Group { Seq, All, Choice };

/// A small child class: an optional i4 "v" (property 1) and an optional attribute "x" (property 2).
template <KvXmlLib10Data::XmlElementType Type>
struct LeafSchemaOf : NoNamespaces {
    static constexpr const char* kElementName = "n";
    static void Build(Metadata& meta) {
        using namespace KvXmlLib10Data;
        meta = {new CParentElementInfo(GroupType_Sequence, Type, "Leaf", "", false, false, -1, KvXmlLib10::Invalid,
                                       nullptr, false),
                MakeArray<CElementInfo>({I4<CElementInfoSeqPrimOpt>("v", 1)}),
                MakeArray<CAttributeInfo>(
                    {new CAttributeInfoPrimitive("x", "", 2, true, KvXmlLib10::i4, nullptr, kCollapse, {}, nullptr)})};
    }
};
using CLeaf = CTestClass<LeafSchemaOf<KvXmlLib10Data::ElementType_Element>>;
/// The same content as a pseudo element: "v" and "x" land on the parent's element.
using CPseudoLeaf = CTestClass<LeafSchemaOf<KvXmlLib10Data::ElementType_PseudoElement>>;

}  // namespace kvtest
