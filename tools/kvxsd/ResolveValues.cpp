// ResolveValues.cpp - values of simple types: built-ins, derivation chains, facets and enumerations.
#include "Resolver.h"

#include <cstdlib>

namespace kvxsd {

// A non-negative count; values beyond 32 bits are clamped (they mean "many").
int32_t Resolver::ParseCount(const std::string& raw, bool& ok) {
    const size_t first = raw.find_first_not_of(" \t\r\n");
    const size_t last = raw.find_last_not_of(" \t\r\n");
    const std::string text = first == std::string::npos ? std::string() : raw.substr(first, last - first + 1);
    ok = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    if (!ok) return -1;
    const unsigned long long v = std::strtoull(text.c_str(), nullptr, 10);
    return v > INT32_MAX ? INT32_MAX : static_cast<int32_t>(v);
}

ValueType Resolver::FromBuiltIn(const std::string& key) {
    ValueType value;
    const BuiltIn& b = BuiltIns().at(QLocal(key));
    value.item = b.item;
    value.whitespace = b.whitespace;
    value.builtin = QLocal(key);
    if (b.minInclusive) value.facets.minInclusive = b.minInclusive;
    if (b.maxInclusive) value.facets.maxInclusive = b.maxInclusive;
    return value;
}

bool Resolver::IsListType(const ValueType& value) {
    return value.builtin == "list" || value.builtin == "NMTOKENS" || value.builtin == "IDREFS" ||
           value.builtin == "ENTITIES";
}

// The value of a simple type given by name; from is where it was referenced.
ValueType Resolver::ValueOfKey(const std::string& key, const Node* from) {
    if (IsBuiltInSimple(key)) return FromBuiltIn(key);
    const Node* type = Lookup(m_types, key, "type", from);
    if (!type) return ValueType{};
    if (type->local != "simpleType") {
        m_diags.Error(from->pos, "'" + QDisplay(key) + "' is a complex type where a simple type is expected");
        return ValueType{};
    }
    return ValueOfNode(type, QLocal(key));
}

// Walks the derivation chain down to a built-in or a resolved type, then
// applies the steps from the base up, memoizing each.
ValueType Resolver::ValueOfNode(const Node* start, const std::string& ownerPath) {
    auto memo = m_values.find(start);
    if (memo != m_values.end()) return memo->second;
    std::vector<const Node*> steps;  // simpleType nodes, derived first
    std::unordered_set<const Node*> seen;
    ValueType value;
    const Node* node = start;
    while (true) {
        if (!seen.insert(node).second) {
            m_diags.Error(node->pos, "type '" + node->AttrOr("name", ownerPath) + "' derives from itself");
            for (const Node* step : steps) m_values.emplace(step, ValueType{});  // reported once
            return ValueType{};
        }
        auto known = m_values.find(node);
        if (known != m_values.end()) {
            value = known->second;
            break;
        }
        steps.push_back(node);
        const Node* derivation = nullptr;
        for (const Node* child : node->children)
            if (child->local == "restriction" || child->local == "list" || child->local == "union")
                derivation = child;
        if (!derivation) {
            m_diags.Error(node->pos, "xs:simpleType without xs:restriction, xs:list or xs:union");
            return ValueType{};
        }
        if (derivation->local != "restriction") {
            m_diags.Warning(derivation->pos, "xs:" + derivation->local + " is held as a string");
            value = ValueType{};
            value.whitespace = derivation->local == "list" ? Whitespace::Collapse : Whitespace::Preserve;
            value.builtin = derivation->local;
            value.degraded = true;
            steps.back() = nullptr;  // nothing of its own to apply
            break;
        }
        const std::string* base = derivation->Attr("base");
        const Node* next = nullptr;
        if (base) {
            if (IsBuiltInSimple(*base)) {
                value = FromBuiltIn(*base);
                break;
            }
            next = Lookup(m_types, *base, "type", derivation);
            if (!next) return ValueType{};
            if (next->local != "simpleType") {
                m_diags.Error(derivation->pos, "simple type restricts the complex type '" + QDisplay(*base) + "'");
                return ValueType{};
            }
        } else {
            for (const Node* child : derivation->children)
                if (child->local == "simpleType") next = child;
            if (!next) {
                m_diags.Error(derivation->pos, "xs:restriction needs a base or an xs:simpleType");
                return ValueType{};
            }
        }
        node = next;
    }
    for (auto it = steps.rbegin(); it != steps.rend(); ++it) {
        if (*it) ApplyFacets(**it, value, ownerPath);
        if (*it) m_values.emplace(*it, value);
    }
    if (!steps.empty() && !steps.front()) m_values.emplace(start, value);
    return value;
}

void Resolver::ApplyFacets(const Node& simpleType, ValueType& value, const std::string& ownerPath) {
    const Node* restriction = nullptr;
    for (const Node* child : simpleType.children)
        if (child->local == "restriction") restriction = child;
    if (restriction) ApplyRestriction(*restriction, value, simpleType.AttrOr("name", ownerPath), simpleType);
}

void Resolver::ApplyRestriction(const Node& restriction, ValueType& value, const std::string& typeName,
                                const Node& owner) {
    std::string pattern;
    std::vector<const Node*> enumValues;
    for (const Node* facet : restriction.children) {
        const std::string& what = facet->local;
        const std::string text = facet->AttrOr("value", "");
        bool ok = true;
        if (what == "pattern") pattern = pattern.empty() ? text : "(" + pattern + ")|(" + text + ")";
        else if (what == "enumeration") enumValues.push_back(facet);
        else if (what == "length" || what == "minLength" || what == "maxLength") {
            int32_t& facet = what == "length"      ? value.facets.length
                             : what == "minLength" ? value.facets.minLength
                                                   : value.facets.maxLength;
            facet = ParseCount(text, ok);
            // On a list the lengths count items, which a string check cannot do.
            if (IsListType(value)) facet = -1;
        }
        else if (what == "minInclusive") value.facets.minInclusive = text;
        else if (what == "maxInclusive") value.facets.maxInclusive = text;
        else if (what == "minExclusive") value.facets.minExclusive = text;
        else if (what == "maxExclusive") value.facets.maxExclusive = text;
        else if (what == "whiteSpace") {
            if (text == "preserve") value.whitespace = Whitespace::Preserve;
            else if (text == "replace") value.whitespace = Whitespace::Replace;
            else if (text == "collapse") value.whitespace = Whitespace::Collapse;
            else ok = false;
        } else if (what == "totalDigits" || what == "fractionDigits") {
            (what == "totalDigits" ? value.facets.totalDigits : value.facets.fractionDigits) =
                ParseCount(text, ok);
            m_diags.Warning(facet->pos, "xs:" + what + " is not checked at run time");
        }
        if (!ok) m_diags.Error(facet->pos, "invalid value '" + text + "' for xs:" + what);
    }
    if (!pattern.empty()) {
        if (!value.facets.pattern.empty())
            m_diags.Warning(restriction.pos, "several pattern steps: only the most derived pattern is checked");
        value.facets.pattern = pattern;
    }
    if (!enumValues.empty()) {
        Enumeration e;
        e.xmlName = typeName;
        e.ns = m_set.docs[owner.doc].targetNamespace;
        e.pos = owner.pos;
        std::unordered_set<std::string> seen;
        for (const Node* v : enumValues) {
            const std::string text = v->AttrOr("value", "");
            if (seen.insert(text).second) e.values.push_back(EnumValue{text, std::string()});
        }
        value.enumeration = static_cast<int32_t>(m_model.enumerations.size());
        m_model.enumerations.push_back(std::move(e));
    }
}

}  // namespace kvxsd
