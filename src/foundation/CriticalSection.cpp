// CriticalSection.cpp - POSIX mutex wrapper.
#include "kvxml/foundation/CriticalSection.h"

namespace KvXmlLib10 {

CKVCriticalSection::CKVCriticalSection() { pthread_mutex_init(&m_mutex, nullptr); }

CKVCriticalSection::~CKVCriticalSection() { pthread_mutex_destroy(&m_mutex); }

void CKVCriticalSection::Enter() { pthread_mutex_lock(&m_mutex); }

void CKVCriticalSection::Leave() { pthread_mutex_unlock(&m_mutex); }

}  // namespace KvXmlLib10
