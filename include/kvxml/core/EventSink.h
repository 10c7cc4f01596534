// EventSink.h - the listener interface collections notify about changes.
#pragma once

#include <cstdint>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

class CXmlObjectBase;

class KVXML_API IEventSink {
public:
    enum MsgType : int32_t {
        CollectionChanged = 0,  ///< after any add or remove; data is null
        ItemAdding = 1,         ///< data is the item
        ItemAdded = 2,          ///< data is the item
        ItemRemoving = 3,       ///< data points to the index, or is null for index -1
        ItemRemoved = 4         ///< data points to the index, or is null for index -1
    };

    virtual void OnEvent(CXmlObjectBase* source, MsgType type, void* data) = 0;

protected:
    ~IEventSink() = default;
};

}  // namespace KvXmlLib10
