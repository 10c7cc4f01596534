// XmlCollection.cpp - the doubly linked, reference-counting object collection and its reading and writing.
#include "kvxml/core/XmlCollection.h"

#include <cstdlib>

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

struct CXmlCollection::CNode {
    CXmlObjectBase* item;  // one reference held
    CNode* prev;
    CNode* next;
};

CXmlCollection::CXmlCollection() = default;

CXmlCollection::CXmlCollection(const char* elementName, const char* targetNamespace, int32_t minOccurs,
                               int32_t maxOccurs)
    : CXmlCollectionBase(elementName, targetNamespace, minOccurs, maxOccurs) {}

CXmlCollection::CXmlCollection(const char* elementName, const char* targetNamespace, int32_t minOccurs,
                               int32_t maxOccurs, ClassFactoryFunc factory, int32_t classNumber,
                               KvXmlLib10Data::XmlElementType itemElementType)
    : CXmlCollectionBase(elementName, targetNamespace, minOccurs, maxOccurs),
      m_classFactory(factory),
      m_classNumber(classNumber),
      m_itemElementType(itemElementType) {}

CXmlCollection::CXmlCollection(const char* elementName, const char* targetNamespace, int32_t minOccurs,
                               int32_t maxOccurs, AbstractClassFactoryFunc factory,
                               KvXmlLib10Data::XmlElementType itemElementType)
    : CXmlCollectionBase(elementName, targetNamespace, minOccurs, maxOccurs),
      m_abstractFactory(factory),
      m_itemElementType(itemElementType) {}

CXmlCollection::~CXmlCollection() {
    for (CNode* node = m_head; node;) {
        CNode* next = node->next;
        node->item->Release();
        delete node;
        node = next;
    }
}

void CXmlCollection::AppendItem(CXmlObjectBase* item) { Insert(nullptr, item); }

void CXmlCollection::PrependItem(CXmlObjectBase* item) { Insert(m_head, item); }

void CXmlCollection::AddItemAt(int32_t index, CXmlObjectBase* item) {
    if (index < 0 || index > m_count) throw CKvInvalidParamException("Index out of range");
    Insert(index == m_count ? nullptr : GetNodeAtIndex(index), item);
}

void CXmlCollection::AddBeforeItem(const CXmlObjectBase* existing, CXmlObjectBase* item) {
    Insert(GetNodeForItem(existing), item);
}

void CXmlCollection::AddAfterItem(const CXmlObjectBase* existing, CXmlObjectBase* item) {
    Insert(GetNodeForItem(existing)->next, item);
}

void CXmlCollection::Insert(CNode* before, CXmlObjectBase* item) {
    if (!item) throw CKvInvalidParamException("The item may not be NULL");
    FireOnCollectionAdd(item);
    CNode* node = new CNode{item, before ? before->prev : m_tail, before};
    item->AddRef();
    (node->prev ? node->prev->next : m_head) = node;
    (before ? before->prev : m_tail) = node;
    ++m_count;
    m_cursorNode = nullptr;
    FireOnCollectionAddComplete(item);
    FireOnCollectionChange();
}

CXmlObjectBase* CXmlCollection::GetItemAt(int32_t index) const { return GetNodeAtIndex(index)->item; }

CXmlCollection::CNode* CXmlCollection::GetNodeAtIndex(int32_t index) const {
    if (index < 0 || index > m_count - 1)
        throw CKvInvalidParamException(FormatString("Index %d is out of range, use 0 - %d", index, m_count));
    // Walk from whichever known position is nearest: head, tail or the last lookup.
    CNode* node = m_head;
    int32_t at = 0;
    if (m_count - 1 - index < index) {
        node = m_tail;
        at = m_count - 1;
    }
    if (m_cursorNode && std::abs(m_cursorIndex - index) < std::abs(at - index)) {
        node = m_cursorNode;
        at = m_cursorIndex;
    }
    for (; at < index; ++at) node = node->next;
    for (; at > index; --at) node = node->prev;
    m_cursorNode = node;
    m_cursorIndex = index;
    return node;
}

CXmlCollection::CNode* CXmlCollection::GetNodeForItem(const CXmlObjectBase* item) const {
    const CXmlObjectBase* wanted = item ? item->GetBase() : nullptr;
    for (CNode* node = m_head; node; node = node->next)
        if (wanted && static_cast<const CXmlObjectBase*>(node->item)->GetBase() == wanted) return node;
    throw CKvInvalidParamException("The object was not found in the collection");
}

int32_t CXmlCollection::GetCount() const { return m_count; }

void CXmlCollection::Clear() {
    while (m_count != 0) Remove(0);
}

void CXmlCollection::Remove(int32_t index) { RemoveNode(GetNodeAtIndex(index)); }

int32_t CXmlCollection::IndexOf(const CNode* node) const {
    int32_t index = 0;
    for (const CNode* at = m_head; at && at != node; at = at->next) ++index;
    return index;
}

void CXmlCollection::RemoveNode(CNode* node) {
    const int32_t index = m_cursorNode == node ? m_cursorIndex : IndexOf(node);
    FireOnCollectionRemove(index);
    (node->prev ? node->prev->next : m_head) = node->next;
    (node->next ? node->next->prev : m_tail) = node->prev;
    --m_count;
    m_cursorNode = nullptr;
    CXmlObjectBase* item = node->item;
    delete node;
    item->Release();
    FireOnCollectionRemoveComplete(index);
    FireOnCollectionChange();
}

void CXmlCollection::AttributesToXml_Int(CXmlWriter*, const CXmlSerializationContext&) const {}

void CXmlCollection::ToXml_Int(CXmlWriter* writer, bool, const char* targetNamespace,
                               const CXmlSerializationContext& context, bool flag) const {
    for (const CNode* node = m_head; node; node = node->next)
        CXmlObjectBase::ToXml_Int(node->item, writer, false, targetNamespace, context, flag);
}

CSmartPtr<CXmlObjectBase> CXmlCollection::CreateItem(CXmlElement* element) const {
    if (m_classFactory) return m_classFactory(m_classNumber, GetElementName().c_str());
    return m_abstractFactory(element);
}

CXmlElement* CXmlCollection::FromXml_Int(CXmlElement* parent, CXmlElement* current,
                                         const CXmlSerializationContext& context, bool) {
    if (!m_classFactory && !m_abstractFactory) return current;
    const std::string name = GetElementName();
    if (m_itemElementType != KvXmlLib10Data::ElementType_Element) {
        // Items without an element of their own read from the cursor; one
        // that consumes nothing ends the run and is dropped.
        while (current) {
            CSmartPtr<CXmlObjectBase> item = CreateItem(current);
            if (!item) break;
            CXmlElement* next = CXmlObjectBase::FromXml_Int(item.get(), parent, current, context);
            if (next == current) break;
            AppendItem(item.get());
            current = next;
        }
        return current;
    }
    while (CXmlObjectHelper::DoesElementNameMatch(context, current, name, GetItemNamespace())) {
        CSmartPtr<CXmlObjectBase> item = CreateItem(current);
        if (!item)
            throw CKvValidationException(
                FormatString("Failed to find a suitable substitution element for [%s]", name.c_str()));
        CXmlObjectBase::FromXml_Int(item.get(), current, current->GetFirstElement(), context);
        AppendItem(item.get());
        current = current->GetNextSiblingElement();
    }
    return current;
}

}  // namespace KvXmlLib10
