// XmlCollection.h - an ordered, reference-counting collection of bindable objects (repeated class children).
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/ClassFactoryBase.h"
#include "kvxml/core/SmartPtr.h"
#include "kvxml/core/XmlCollectionBase.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/metadata/ElementInfo.h"

namespace KvXmlLib10 {

class CXmlElement;

/// Holds one reference on each item, given back on removal and on
/// destruction. Adding fires events 1, 2 and 0 with the item; removing fires
/// 3, 4 and 0 with the index (IEventSink). A listener that throws on event 1
/// vetoes the addition. Sequential access by index walks from the last
/// position used, so a loop over GetItemAt is linear.
///
/// Reading: the collection creates its items with the factory given to the
/// constructor. With element type 0 it consumes consecutive children named
/// like the items (each item reads itself from its element); with element
/// type 1 (items are pseudo elements) each new item reads from the cursor
/// inside the parent and is kept while it consumes something. Without a
/// factory nothing is read.
class KVXML_API CXmlCollection : public CXmlCollectionBase {
public:
    /// Opaque list node, handed out by the node lookups.
    struct CNode;

    CXmlCollection();
    /// Without a factory: the collection can be written but not read.
    CXmlCollection(const char* elementName, const char* targetNamespace, int32_t minOccurs, int32_t maxOccurs);
    /// Items of a concrete class, made by factory(classNumber, elementName).
    CXmlCollection(const char* elementName, const char* targetNamespace, int32_t minOccurs, int32_t maxOccurs,
                   ClassFactoryFunc factory, int32_t classNumber,
                   KvXmlLib10Data::XmlElementType itemElementType = KvXmlLib10Data::ElementType_Element);
    /// Items of an abstract class, chosen by factory(element). A matching
    /// element for which the factory returns null fails the read with
    /// CKvValidationException "Failed to find a suitable substitution element for [%s]".
    CXmlCollection(const char* elementName, const char* targetNamespace, int32_t minOccurs, int32_t maxOccurs,
                   AbstractClassFactoryFunc factory,
                   KvXmlLib10Data::XmlElementType itemElementType = KvXmlLib10Data::ElementType_Element);
    /// Releases every item without firing events.
    ~CXmlCollection() override;

    // Inserting takes a reference on item. A null item throws
    // CKvInvalidParamException "The item may not be NULL" before any event.
    void AppendItem(CXmlObjectBase* item);
    void PrependItem(CXmlObjectBase* item);
    /// index 0..GetCount(); outside it throws CKvInvalidParamException
    /// "Index out of range" before any event.
    void AddItemAt(int32_t index, CXmlObjectBase* item);
    /// existing is found as by GetNodeForItem (which throws before any event).
    void AddBeforeItem(const CXmlObjectBase* existing, CXmlObjectBase* item);
    void AddAfterItem(const CXmlObjectBase* existing, CXmlObjectBase* item);

    /// The item at index, without a reference taken; index as GetNodeAtIndex.
    CXmlObjectBase* GetItemAt(int32_t index) const;
    /// The node at index; outside 0..GetCount()-1 throws
    /// CKvInvalidParamException "Index %d is out of range, use 0 - %d" (index, count).
    CNode* GetNodeAtIndex(int32_t index) const;
    /// The first node whose item's GetBase() is item->GetBase(); none throws
    /// CKvInvalidParamException "The object was not found in the collection".
    CNode* GetNodeForItem(const CXmlObjectBase* item) const;

    int32_t GetCount() const override;
    void Clear() override;
    /// Index checked as by GetNodeAtIndex, before any event.
    void Remove(int32_t index) override;

protected:
    /// A collection has no attributes of its own.
    void AttributesToXml_Int(CXmlWriter* writer, const CXmlSerializationContext& context) const override;
    /// Each item writes itself, in order, with the given namespace and flag.
    void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                   const CXmlSerializationContext& context, bool flag) const override;
    /// Reads items from firstChild on; returns the first child not consumed.
    CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext& context,
                             bool flag) override;

    /// Unlinks the node, gives back the item's reference; events 3, 4, 0.
    void RemoveNode(CNode* node);

private:
    void Insert(CNode* before, CXmlObjectBase* item);
    int32_t IndexOf(const CNode* node) const;
    CSmartPtr<CXmlObjectBase> CreateItem(CXmlElement* element) const;

    CNode* m_head = nullptr;
    CNode* m_tail = nullptr;
    int32_t m_count = 0;
    // Last position looked up by index; reset by every change.
    mutable CNode* m_cursorNode = nullptr;
    mutable int32_t m_cursorIndex = -1;
    ClassFactoryFunc m_classFactory = nullptr;
    AbstractClassFactoryFunc m_abstractFactory = nullptr;
    int32_t m_classNumber = 0;
    KvXmlLib10Data::XmlElementType m_itemElementType = KvXmlLib10Data::ElementType_Element;
};

}  // namespace KvXmlLib10
