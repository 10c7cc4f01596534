// EmitModel.h - what the emitter writes from: classes, members and enumerations
// already named and resolved, in output order.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kvxsd {

enum class EmitGroup { Sequence, Choice, All };

/// How a member is held and which descriptor family describes it.
enum class EmitKind { Prim, Enum, Cls, AbsCls, PrimCol, ClsCol, AbsClsCol, Untpd, UntpdCol, AnyAttr };

/// Facets the runtime carries; empty strings and -1 mean unset.
struct EmitFacets {
    std::string pattern;
    int32_t minLength = -1, maxLength = -1, length = -1;
    std::string minInclusive, maxInclusive, minExclusive, maxExclusive;
    bool Empty() const {
        return pattern.empty() && minLength < 0 && maxLength < 0 && length < 0 && minInclusive.empty() &&
               maxInclusive.empty() && minExclusive.empty() && maxExclusive.empty();
    }
};

struct EmitEnum {
    std::string cppName;                   ///< e.g. "Status"
    std::string schemaName;                ///< quoted in the unknown-value message
    std::vector<std::string> values;       ///< schema texts in declaration order
    std::vector<std::string> identifiers;  ///< one C++ enumerator per value
};

/// One class an abstract-class member may hold: by xsi:type or by element name.
struct EmitChoice {
    bool byType = false;
    std::string name, namespaceUri;  ///< type or element name
    std::string className;           ///< qualified when foreign
};

struct EmitMember {
    std::string xmlName, namespaceUri;  ///< namespace empty when unqualified
    std::string cppName;                ///< upper camel case, e.g. "LastUpdated"
    int32_t propertyId = 0;
    bool attribute = false;
    bool simpleContent = false;  ///< the class's own text: no descriptor of its own
    EmitKind kind = EmitKind::Prim;
    std::string itemType = "string";  ///< runtime item type name: i4, string, datetime ...
    std::string whitespace = "Preserve";
    EmitFacets facets;
    bool optional = false, nillable = false;
    int32_t minOccurs = 1, maxOccurs = 1;        ///< -1 unbounded
    std::string enumName;                        ///< kind Enum
    std::string className;                       ///< kinds Cls/ClsCol: emitted class name, qualified when foreign
    std::string factory = "CreateClass";         ///< class factory of that class's unit
    int32_t classNumber = 0;                     ///< its number there
    bool pseudo = false;                         ///< an inline model group held as a pseudo element
    bool mandatoryContent = false;               ///< pseudo: reading it must consume something
    bool eager = false;                          ///< a mandatory child created with its parent
    std::vector<EmitChoice> choices;             ///< kinds AbsCls/AbsClsCol
    std::string chooser;                         ///< name of the function picking among choices
    std::string restriction, wildcardNamespace;  ///< wildcards: namespaces admitted, the schema's target
    bool hasDefault = false;
    std::string defaultValue;
};

struct EmitClass {
    std::string cppName;      ///< "CProduct"
    int32_t classNumber = 0;  ///< what CreateClass knows it by
    std::string typeName;     ///< schema type name (or the path of an anonymous one)
    std::string elementName;  ///< element the class is created for by default
    std::string namespaceUri;
    EmitGroup group = EmitGroup::Sequence;
    bool pseudo = false;
    bool abstract = false;
    bool writeType = false;  ///< has a base or derived types: written with xsi:type when substituted
    bool nillable = false;   ///< some element of the type is nillable: the descriptor says so
    bool ownNil = false;     ///< nillable and its base is not: declares INillable itself
    std::string baseClass;   ///< emitted base class for complex content extension; empty: none
    /// Elements then attributes, document order, the base's first: the class
    /// describes them all but declares only those from ownFrom on.
    std::vector<EmitMember> members;
    size_t ownFrom = 0;
    int32_t valuePropertyId = -1;  ///< simple content: the member holding the text
    std::string valueItemType;
};

struct EmitGlobalElement {
    std::string name, namespaceUri, className;
};

struct EmitUnit {
    std::string stem;                   ///< output file stem: po gives po.h and po.cpp
    std::string sourceName;             ///< schema file name quoted in the banner
    std::string cppNamespace;           ///< may contain ::
    std::vector<std::string> includes;  ///< headers of the units holding a base class of this one's
    /// Headers of the other units it refers to, included after its classes (with
    /// their names declared first) so that schemas importing each other compile.
    std::vector<std::string> lateIncludes;
    std::set<std::pair<std::string, std::string>> foreignDeclarations;  ///< {C++ namespace, declaration}
    std::vector<std::string> sourceIncludes;  ///< headers only its source needs (substitutes from other units)
    std::vector<EmitEnum> enums;
    std::vector<EmitClass> classes;  ///< a base before its derived classes
    std::vector<EmitGlobalElement> globals;
};

/// The header and source text of one unit; same unit, same bytes.
struct EmitText {
    std::string header, source;
};
EmitText EmitUnitText(const EmitUnit& unit);

}  // namespace kvxsd
