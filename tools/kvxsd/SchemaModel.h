// SchemaModel.h - the resolved schema set that kvxsd's emitter turns into classes.
//
// The front end (loading, resolution, naming) fills a Model; the emitter only
// reads it. Everything is already resolved: references point at indexes, C++
// names are final and unique in their scope, property ids are assigned, and
// every list is in a deterministic order (document order of the schema set,
// files in load order), so the same input always gives the same output.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kvxsd {

/// Where a component was declared: file index into Model::files, 1-based line and column.
struct SourcePos {
    int32_t file = -1;
    uint32_t line = 0;
    uint32_t column = 0;
};

/// maxOccurs="unbounded".
constexpr uint32_t kUnbounded = UINT32_MAX;

/// Codes of KvXmlLib10::ItemType (kept numeric so that the front end does not
/// depend on the runtime headers).
enum class Item : int32_t {
    Invalid = 0, HexBinary = 1, Base64Binary = 2, I1 = 3, I2 = 4, I4 = 5, I8 = 6, UI1 = 7, UI2 = 8, UI4 = 9,
    UI8 = 10, R4 = 11, R8 = 12, Duration = 13, YearMonth = 14, MonthDay = 15, Year = 16, Month = 17, Day = 18,
    Date = 19, DateTime = 20, Time = 21, Char = 22, String = 23, Boolean = 24, Decimal = 25, Integer = 26
};

/// CWhitespaceUtils::WhitespaceRule codes.
enum class Whitespace : int32_t { None = 0, Preserve = 1, Replace = 2, Collapse = 3 };

/// The facets CPrimitiveRestrictions carries, in its constructor's order
/// (unset: empty string, -1). totalDigits/fractionDigits are parsed for
/// completeness only: the runtime cannot check them (a warning was given).
struct Facets {
    std::string pattern;  ///< the most derived pattern step (others dropped with a warning)
    int32_t minLength = -1;
    int32_t maxLength = -1;
    std::string minInclusive;
    std::string maxInclusive;
    std::string minExclusive;
    std::string maxExclusive;
    int32_t length = -1;
    int32_t totalDigits = -1;
    int32_t fractionDigits = -1;

    bool Empty() const {
        return pattern.empty() && minLength < 0 && maxLength < 0 && minInclusive.empty() && maxInclusive.empty() &&
               minExclusive.empty() && maxExclusive.empty() && length < 0;
    }
};

/// One enumeration value: the XML text and its enumerator name (unique in the enum).
struct EnumValue {
    std::string text;
    std::string cppName;
};

/// A simple type with enumeration facets, bound to `enum class cppName : int32_t`
/// with values numbered 0.. in document order.
struct Enumeration {
    std::string cppName;  ///< enum class name, unique among Model's type-level names
    std::string xmlName;  ///< simple type name, or the owner's path for an anonymous type
    std::string ns;
    SourcePos pos;
    std::vector<EnumValue> values;
};

/// The value of a simple-typed member, attribute or simple content, fully resolved
/// down the restriction chain.
struct ValueType {
    Item item = Item::String;
    Whitespace whitespace = Whitespace::Preserve;
    Facets facets;
    int32_t enumeration = -1;  ///< index into Model::enumerations, or -1
    std::string builtin;       ///< the XSD built-in at the root ("int", "string", ...)
    bool degraded = false;     ///< xs:list / xs:union held as a string
};

/// xs:any / xs:anyAttribute namespace rules, in the runtime's notation: the
/// namespace attribute as written ("##any", "##other", "##local",
/// "##targetNamespace" or a list of URIs), and the target namespace of the
/// schema document it was written in (what "##targetNamespace"/"##other" mean).
struct Wildcard {
    std::string namespaces = "##any";
    std::string targetNamespace;
    std::string processContents = "strict";  ///< "strict", "lax" or "skip"
};

enum class Group : int32_t { Sequence = 0, Choice = 1, All = 2 };           ///< XmlElementGroupType
enum class ElementKind : int32_t { Element = 0, Pseudo = 1 };              ///< XmlElementType
enum class MemberKind : int32_t { Prim, Enum, Cls, AbsCls, Untpd };        ///< descriptor kind
enum class Cardinality : int32_t { Mnd, Opt, Col };                        ///< descriptor cardinality

/// One child-element descriptor of a class (an element particle, a wildcard, or
/// a nested model group bound as a pseudo-element class). The descriptor class
/// is CElementInfo<group of the owning class><kind><cardinality>. A member of
/// a choice is never Mnd (the front end makes it Opt).
struct Member {
    std::string xmlName;   ///< element local name ("" for wildcards and pseudo elements)
    std::string ns;        ///< namespace written for the element ("" when unqualified)
    std::string cppName;   ///< accessor stem: Get<cppName>, Set<cppName>, Prop_<cppName>, m_<lowerFirst>
    int32_t propertyId = 0;
    MemberKind kind = MemberKind::Prim;
    Cardinality cardinality = Cardinality::Mnd;
    uint32_t minOccurs = 1;
    uint32_t maxOccurs = 1;  ///< kUnbounded for "unbounded"
    bool nillable = false;
    ElementKind elementKind = ElementKind::Element;  ///< Pseudo for a nested group's class
    ValueType value;       ///< Prim and Enum
    int32_t classIndex = -1;  ///< Cls/AbsCls: index into Model::classes (declared type or group class)
    /// AbsCls: the classes an element here may hold, chosen by xsi:type (derived
    /// types of the declared one, indexes into Model::classes, declared first
    /// when it is not abstract). Substitution groups are choices of their own.
    std::vector<int32_t> typeChoices;
    Wildcard wildcard;     ///< Untpd
    bool hasDefault = false;
    bool hasFixed = false;
    std::string defaultValue;  ///< default or fixed text
    SourcePos pos;
};

/// One attribute descriptor: CAttributeInfoPrimitive, CAttributeInfoEnum, or
/// CAttributeInfoAny for xs:anyAttribute.
struct Attribute {
    enum class Kind : int32_t { Primitive, Enum, Any };
    std::string xmlName;
    std::string ns;       ///< "" when unqualified
    std::string cppName;  ///< unique among the class's members and attributes
    int32_t propertyId = 0;
    Kind kind = Kind::Primitive;
    bool optional = true;  ///< use != "required"
    ValueType value;
    Wildcard wildcard;     ///< Any
    bool hasDefault = false;
    bool hasFixed = false;
    std::string defaultValue;  ///< default or fixed text (the descriptor's default value)
    SourcePos pos;
};

/// One generated class: a named complex type, an anonymous complex type (named
/// after its element path), or a nested model group (a pseudo element).
struct Class {
    std::string cppName;   ///< class name, unique in the output namespace ("C" prefix included)
    std::string xmlName;   ///< type name; for an anonymous type its element's name (CParentElementInfo name)
    std::string ns;        ///< namespace of the type (CParentElementInfo namespace URI)
    std::string elementName;  ///< element name set by the constructor (SetElementName)
    std::string elementNs;    ///< namespace the element is written in (GetTargetNamespace)
    SourcePos pos;
    Group group = Group::Sequence;
    ElementKind elementKind = ElementKind::Element;
    bool anonymous = false;
    bool abstract = false;
    bool nillable = false;      ///< implements INillable (some element of this type is nillable)
    bool writeType = false;     ///< CParentElementInfo type-attribute flag: has a base or derived types
    bool mixed = false;         ///< degraded: text held in the simple-content value
    int32_t baseClass = -1;     ///< complex content extension/restriction base (index into classes)
    std::vector<int32_t> derived;  ///< direct derived classes, in declaration order
    /// Own descriptors only; a derived class publishes its base's members first
    /// (property ids continue after the base's last one).
    std::vector<Member> members;
    std::vector<Attribute> attributes;
    /// Simple content (or mixed text): the value property; -1 when none.
    int32_t valuePropertyId = -1;
    ValueType value;
    std::string valueCppName;   ///< accessor stem of the value ("Value" unless it clashes)
    int32_t factoryNumber = 0;  ///< number the schema's factory knows this class by (1..)
};

/// A global element declaration, for CreateGlobalElement and substitution groups.
struct GlobalElement {
    std::string xmlName;
    std::string ns;
    SourcePos pos;
    int32_t classIndex = -1;     ///< complex type's class; -1 for simple-typed elements
    ValueType value;             ///< simple-typed element
    bool abstract = false;
    bool nillable = false;
    int32_t substitutionHead = -1;  ///< index into Model::elements, or -1
};

/// One schema given on the command line: its output stem and the C++ namespace.
struct MainSchema {
    std::string path;       ///< as given
    std::string stem;       ///< file name without extension: output <stem>.h / <stem>.cpp
    std::string cppNamespace;
    std::string targetNamespace;
    /// Classes, enumerations and elements declared in this schema or in what it
    /// includes (imports belong to the schema that declares them when it is a
    /// main schema too, otherwise to the first main schema that reaches them).
    std::vector<int32_t> classes;
    std::vector<int32_t> enumerations;
    std::vector<int32_t> elements;
    std::vector<int32_t> dependsOn;  ///< other main schemas whose headers this one includes
};

/// A diagnostic the front end produced (errors stop emission).
struct Diagnostic {
    enum class Level : int32_t { Note, Warning, Error };
    Level level = Level::Error;
    SourcePos pos;
    std::string message;
};

struct Model {
    std::vector<std::string> files;  ///< every schema document loaded, in load order
    std::vector<MainSchema> schemas;
    std::vector<Class> classes;      ///< bases before derived classes
    std::vector<Enumeration> enumerations;
    std::vector<GlobalElement> elements;
    std::vector<std::string> renames;  ///< "path: from -> to" lines for --explain-names
};

/// "file:line:col" (or "file" without a position).
std::string FormatPos(const Model& model, const SourcePos& pos);

}  // namespace kvxsd
