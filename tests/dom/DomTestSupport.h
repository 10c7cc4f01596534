// DomTestSupport.h - tree views shared by the document and reader tests.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "kvxml/dom/XmlDocument.h"
#include "kvxml/output/Encoder.h"
#include "support/ProcessScopes.h"
#include "support/TempFile.h"

namespace KvXmlTest {

/// Local names of the children, joined by commas.
inline std::string ChildNames(const KvXmlLib10::CXmlElement* element) {
    std::string names;
    for (auto* child = element->GetFirstElement(); child; child = child->GetNextSiblingElement())
        names += (names.empty() ? "" : ",") + child->GetLocalName();
    return names;
}

/// The attributes as "{uri}name=value" (no braces without a URI), joined by spaces.
inline std::string AttributeList(const KvXmlLib10::CXmlElement* element) {
    std::string list;
    for (const auto* attribute : element->GetAttributes()) {
        const std::string& uri = attribute->GetNamespaceURI();
        list += (list.empty() ? "" : " ") + (uri.empty() ? "" : "{" + uri + "}") + attribute->GetLocalName() + "=" +
                attribute->GetValue();
    }
    return list;
}

/// Number of elements in a (small) subtree.
inline size_t CountElements(const KvXmlLib10::CXmlElement* root) {
    size_t count = 1;
    for (auto* child = root->GetFirstElement(); child; child = child->GetNextSiblingElement())
        count += CountElements(child);
    return count;
}

}  // namespace KvXmlTest
