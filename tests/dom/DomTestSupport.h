// DomTestSupport.h - helpers shared by the document and reader tests (the locale scopes also by the pattern tests).
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <clocale>
#include <cstdio>
#include <string>

#include "kvxml/dom/XmlDocument.h"
#include "kvxml/output/Encoder.h"

namespace KvXmlTest {

/// Switches the C locale for one test and restores the previous one.
class ScopedLocale {
public:
    explicit ScopedLocale(const char* name) : m_saved(std::setlocale(LC_ALL, nullptr)) {
        m_active = std::setlocale(LC_ALL, name) != nullptr;
    }
    ~ScopedLocale() { std::setlocale(LC_ALL, m_saved.c_str()); }
    bool Active() const { return m_active; }

private:
    std::string m_saved;
    bool m_active = false;
};

/// Turns the process-wide ASCIIOnly switch on for one test.
struct ScopedAsciiOnly {
    ScopedAsciiOnly() { KvXmlLib10::ASCIIOnly(true); }
    ~ScopedAsciiOnly() { KvXmlLib10::ASCIIOnly(false); }
};

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

/// A file under the test temp dir with the given bytes, removed afterwards.
class TempFile {
public:
    explicit TempFile(const std::string& contents) {
        static std::atomic<int> counter{0};
        m_path = ::testing::TempDir() + "kvxml_dom_" + std::to_string(::getpid()) + "_" +
                 std::to_string(counter++) + ".xml";
        if (std::FILE* file = std::fopen(m_path.c_str(), "wb")) {
            std::fwrite(contents.data(), 1, contents.size(), file);
            std::fclose(file);
        }
    }
    ~TempFile() { std::remove(m_path.c_str()); }
    const char* Path() const { return m_path.c_str(); }

private:
    std::string m_path;
};

}  // namespace KvXmlTest
