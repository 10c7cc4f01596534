// InstanceMonitor.cpp - live-instance counting, paid for only while it is on.
#include "kvxml/foundation/InstanceMonitor.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>

namespace KvXmlLib10 {

namespace {
std::atomic<bool> g_counting{false};

struct Registry {
    std::mutex lock;
    std::map<std::string, std::size_t> live;
};

Registry& GetRegistry() {
    static Registry* registry = new Registry;  // never destroyed: objects may die after exit
    return *registry;
}
}  // namespace

CInstanceMonitor::CInstanceMonitor(const char* className) : m_countedAs(nullptr) {
    if (g_counting.load(std::memory_order_relaxed)) Count(className);
}

CInstanceMonitor::CInstanceMonitor(const CInstanceMonitor& other) : m_countedAs(nullptr) {
    if (g_counting.load(std::memory_order_relaxed) && other.m_countedAs) Count(other.m_countedAs);
}

CInstanceMonitor::~CInstanceMonitor() {
    if (!m_countedAs) return;
    Registry& registry = GetRegistry();
    std::lock_guard<std::mutex> guard(registry.lock);
    --registry.live[m_countedAs];
}

void CInstanceMonitor::Count(const char* className) {
    if (!className) return;
    Registry& registry = GetRegistry();
    std::lock_guard<std::mutex> guard(registry.lock);
    ++registry.live[className];
    m_countedAs = className;
}

void CInstanceMonitor::SetCounting(bool on) { g_counting.store(on, std::memory_order_relaxed); }

bool CInstanceMonitor::IsCounting() { return g_counting.load(std::memory_order_relaxed); }

std::size_t CInstanceMonitor::GetLiveCount(const char* className) {
    Registry& registry = GetRegistry();
    std::lock_guard<std::mutex> guard(registry.lock);
    auto found = registry.live.find(className ? className : "");
    return found == registry.live.end() ? 0 : found->second;
}

}  // namespace KvXmlLib10
