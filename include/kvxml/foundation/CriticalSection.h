// CriticalSection.h - the library's one lock primitive.
#pragma once

#include <pthread.h>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// A plain, non-recursive POSIX mutex: Enter twice on one thread deadlocks.
class KVXML_API CKVCriticalSection {
public:
    CKVCriticalSection();
    virtual ~CKVCriticalSection();
    CKVCriticalSection(const CKVCriticalSection&) = delete;
    CKVCriticalSection& operator=(const CKVCriticalSection&) = delete;

    void Enter();
    void Leave();

private:
    pthread_mutex_t m_mutex;
};

}  // namespace KvXmlLib10
