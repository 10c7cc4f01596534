// WildcardIterator.h - forward iteration over the items of a wildcard collection (CElementCol, CAttributeCol).
#pragma once

#include <cstdint>

#include "kvxml/core/XmlCollection.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

/// Walks a collection by position; a sequential walk is linear because the
/// collection remembers its last position. Dereferencing or stepping at the
/// end throws CKvException "No More Elements in the Collection". Changing the
/// collection while walking it moves what later positions refer to.
template <typename Item>
class CWildcardIterator {
public:
    CWildcardIterator(const CXmlCollection* collection, int32_t index) : m_collection(collection), m_index(index) {}

    /// The item, no reference taken.
    Item* operator*() const {
        CheckNotAtEnd();
        return static_cast<Item*>(m_collection->GetItemAt(m_index));
    }
    CWildcardIterator& operator++() {
        CheckNotAtEnd();
        ++m_index;
        return *this;
    }
    bool operator==(const CWildcardIterator& other) const { return m_index == other.m_index; }
    bool operator!=(const CWildcardIterator& other) const { return m_index != other.m_index; }

private:
    void CheckNotAtEnd() const {
        if (m_index >= m_collection->GetCount()) throw CKvException("No More Elements in the Collection");
    }

    const CXmlCollection* m_collection;
    int32_t m_index;
};

}  // namespace KvXmlLib10
