// DomTestSupport.h - helpers shared by the document and reader tests.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

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
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;
    bool Active() const { return m_active; }

private:
    std::string m_saved;
    bool m_active = false;
};

/// Turns the process-wide ASCIIOnly switch on for one test.
class ScopedAsciiOnly {
public:
    ScopedAsciiOnly() { KvXmlLib10::ASCIIOnly(true); }
    ~ScopedAsciiOnly() { KvXmlLib10::ASCIIOnly(false); }
    ScopedAsciiOnly(const ScopedAsciiOnly&) = delete;
    ScopedAsciiOnly& operator=(const ScopedAsciiOnly&) = delete;
};

/// The children of an element, in order.
inline std::vector<KvXmlLib10::CXmlElement*> Children(const KvXmlLib10::CXmlElement* element) {
    std::vector<KvXmlLib10::CXmlElement*> children;
    for (auto* child = element->GetFirstElement(); child; child = child->GetNextSiblingElement())
        children.push_back(child);
    return children;
}

/// Local names of the children, joined by commas.
inline std::string ChildNames(const KvXmlLib10::CXmlElement* element) {
    std::string names;
    for (auto* child : Children(element)) {
        if (!names.empty()) names += ',';
        names += child->GetLocalName();
    }
    return names;
}

/// Number of elements in the subtree, counted without recursion.
inline size_t CountElements(const KvXmlLib10::CXmlElement* root) {
    size_t count = 0;
    std::vector<const KvXmlLib10::CXmlElement*> pending;
    if (root) pending.push_back(root);
    while (!pending.empty()) {
        const auto* element = pending.back();
        pending.pop_back();
        ++count;
        for (auto* child = element->GetFirstElement(); child; child = child->GetNextSiblingElement())
            pending.push_back(child);
    }
    return count;
}

/// A file under the test temp dir with the given bytes, removed afterwards.
class TempFile {
public:
    explicit TempFile(const std::string& contents) {
        static std::atomic<int> counter{0};
        m_path = ::testing::TempDir() + "kvxml_dom_" + std::to_string(::getpid()) + "_" +
                 std::to_string(counter++) + ".xml";
        std::FILE* file = std::fopen(m_path.c_str(), "wb");
        if (file) {
            if (!contents.empty()) std::fwrite(contents.data(), 1, contents.size(), file);
            std::fclose(file);
        }
    }
    ~TempFile() { std::remove(m_path.c_str()); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const char* Path() const { return m_path.c_str(); }

private:
    std::string m_path;
};

}  // namespace KvXmlTest
