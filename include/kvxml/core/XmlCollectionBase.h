// XmlCollectionBase.h - what every collection shares: item element name, namespace, occurrence bounds and change listeners.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kvxml/core/EventSink.h"
#include "kvxml/core/XmlObjectBase.h"
#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// Base of the object collections and the primitive-value collections.
/// The element name (the inherited one) is that of the items; listeners are
/// told about every change, in the order they were added, on the calling
/// thread. Listeners are not owned: one must remove itself before it dies.
class KVXML_API CXmlCollectionBase : public CXmlObjectBase {
public:
    /// Both strings empty, minimum 0, unbounded.
    CXmlCollectionBase();
    /// maxOccurs -1 means unbounded.
    CXmlCollectionBase(const char* elementName, const char* targetNamespace, int32_t minOccurs, int32_t maxOccurs);
    ~CXmlCollectionBase() override;
    // Listeners and held references belong to one collection.
    CXmlCollectionBase(const CXmlCollectionBase&) = delete;
    CXmlCollectionBase& operator=(const CXmlCollectionBase&) = delete;

    using CXmlObjectBase::GetBase;
    /// A collection stands for itself: it is the source of its events.
    CXmlObjectBase* GetBase() override;

    /// Never to be called on a collection: throws CKvException
    /// "CXmlCollectionBase::GetTargetNamespace Should not be used from within a Collection (program logic error)".
    std::string GetTargetNamespace() const override;
    /// The namespace of the items' elements.
    std::string GetNamespace() const override;

    virtual int32_t GetCount() const = 0;
    /// Removes every item through Remove, front first, so each removal fires its events.
    virtual void Clear() = 0;
    virtual void Remove(int32_t index) = 0;
    /// Nothing when the context ignores invalid collection counts; otherwise
    /// throws CKvValidationException when the count is above the maximum
    /// ("The Maximum number of [%s] elements allowed in this collection is %d")
    /// or below the minimum ("The Minimum number of [%s] ... is %d").
    virtual void ValidateCount(const CXmlSerializationContext& context) const;
    /// The same test as ValidateCount, answered instead of thrown.
    virtual bool IsValidCount(const CXmlSerializationContext& context) const;

    void AddEventListener(IEventSink* listener);
    /// Removes the first registration of listener; unknown listeners are ignored.
    void RemoveEventListener(IEventSink* listener);

    int32_t GetMinOccurs() const { return m_minOccurs; }
    /// -1 when unbounded.
    int32_t GetMaxOccurs() const { return m_maxOccurs; }

protected:
    /// Each tells every listener in list order, with the collection's GetBase() as source.
    void FireOnCollectionChange();
    void FireOnCollectionAdd(void* item);
    void FireOnCollectionAddComplete(void* item);
    /// The listeners get a pointer to index, or null when index is -1.
    void FireOnCollectionRemove(int32_t index);
    void FireOnCollectionRemoveComplete(int32_t index);

    /// Whether anyone is told about changes: without listeners, events are
    /// unobservable and bulk operations may skip them.
    bool HasEventListeners() const { return !m_listeners.empty(); }
    /// The stored namespace, for the collection's own reading and writing.
    const std::string& GetItemNamespace() const { return m_targetNamespace; }

private:
    std::string m_targetNamespace;
    std::vector<IEventSink*> m_listeners;
    int32_t m_minOccurs;
    int32_t m_maxOccurs;
};

}  // namespace KvXmlLib10
