// XmlCollectionBase.cpp - collection bounds, count checks and change events.
#include "kvxml/core/XmlCollectionBase.h"

#include <algorithm>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

namespace {

// The index payload of the remove events: null stands for -1.
void* IndexPayload(int32_t& index) { return index == -1 ? nullptr : &index; }

// Listeners may add or remove listeners while being told: walk by index
// against the live list so nothing dangles.
template <typename Call>
void TellEach(const std::vector<IEventSink*>& listeners, Call call) {
    for (size_t i = 0; i < listeners.size(); ++i) call(listeners[i]);
}

}  // namespace

void CXmlObjectBase::FireOnCollectionChangeEvent(IEventSink* sink, CXmlCollectionBase* collection) {
    sink->OnEvent(collection->GetBase(), IEventSink::CollectionChanged, nullptr);
}

void CXmlObjectBase::FireOnCollectionAddEvent(IEventSink* sink, CXmlCollectionBase* collection, void* item) {
    sink->OnEvent(collection->GetBase(), IEventSink::ItemAdding, item);
}

void CXmlObjectBase::FireOnCollectionAddCompleteEvent(IEventSink* sink, CXmlCollectionBase* collection,
                                                      void* item) {
    sink->OnEvent(collection->GetBase(), IEventSink::ItemAdded, item);
}

void CXmlObjectBase::FireOnCollectionRemoveEvent(IEventSink* sink, CXmlCollectionBase* collection, int32_t index) {
    sink->OnEvent(collection->GetBase(), IEventSink::ItemRemoving, IndexPayload(index));
}

void CXmlObjectBase::FireOnCollectionRemoveCompleteEvent(IEventSink* sink, CXmlCollectionBase* collection,
                                                         int32_t index) {
    sink->OnEvent(collection->GetBase(), IEventSink::ItemRemoved, IndexPayload(index));
}

CXmlCollectionBase::CXmlCollectionBase() : m_minOccurs(0), m_maxOccurs(-1) {}

CXmlCollectionBase::CXmlCollectionBase(const char* elementName, const char* targetNamespace, int32_t minOccurs,
                                       int32_t maxOccurs)
    : m_targetNamespace(targetNamespace ? targetNamespace : ""), m_minOccurs(minOccurs), m_maxOccurs(maxOccurs) {
    SetElementName(elementName);
}

CXmlCollectionBase::~CXmlCollectionBase() = default;

CXmlObjectBase* CXmlCollectionBase::GetBase() { return this; }

std::string CXmlCollectionBase::GetTargetNamespace() const {
    throw CKvException(
        "CXmlCollectionBase::GetTargetNamespace Should not be used from within a Collection (program logic error)");
}

std::string CXmlCollectionBase::GetNamespace() const { return m_targetNamespace; }

void CXmlCollectionBase::ValidateCount(const CXmlSerializationContext& context) const {
    if (context.GetIgnoreInvalidCollectionCounts()) return;
    const int32_t count = GetCount();
    if (m_maxOccurs != -1 && count > m_maxOccurs)
        throw CKvValidationException(FormatString("The Maximum number of [%s] elements allowed in this collection is %d",
                                                  GetElementName().c_str(), m_maxOccurs));
    if (count < m_minOccurs)
        throw CKvValidationException(FormatString("The Minimum number of [%s] elements allowed in this collection is %d",
                                                  GetElementName().c_str(), m_minOccurs));
}

bool CXmlCollectionBase::IsValidCount(const CXmlSerializationContext& context) const {
    if (context.GetIgnoreInvalidCollectionCounts()) return true;
    const int32_t count = GetCount();
    if (m_maxOccurs != -1 && count > m_maxOccurs) return false;
    return count >= m_minOccurs;
}

void CXmlCollectionBase::AddEventListener(IEventSink* listener) { m_listeners.push_back(listener); }

void CXmlCollectionBase::RemoveEventListener(IEventSink* listener) {
    auto found = std::find(m_listeners.begin(), m_listeners.end(), listener);
    if (found != m_listeners.end()) m_listeners.erase(found);
}

void CXmlCollectionBase::FireOnCollectionChange() {
    TellEach(m_listeners, [this](IEventSink* sink) { FireOnCollectionChangeEvent(sink, this); });
}

void CXmlCollectionBase::FireOnCollectionAdd(void* item) {
    TellEach(m_listeners, [this, item](IEventSink* sink) { FireOnCollectionAddEvent(sink, this, item); });
}

void CXmlCollectionBase::FireOnCollectionAddComplete(void* item) {
    TellEach(m_listeners, [this, item](IEventSink* sink) { FireOnCollectionAddCompleteEvent(sink, this, item); });
}

void CXmlCollectionBase::FireOnCollectionRemove(int32_t index) {
    TellEach(m_listeners, [this, index](IEventSink* sink) { FireOnCollectionRemoveEvent(sink, this, index); });
}

void CXmlCollectionBase::FireOnCollectionRemoveComplete(int32_t index) {
    TellEach(m_listeners,
             [this, index](IEventSink* sink) { FireOnCollectionRemoveCompleteEvent(sink, this, index); });
}

}  // namespace KvXmlLib10
