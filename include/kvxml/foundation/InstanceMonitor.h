// InstanceMonitor.h - optional live-instance counting per library class.
//
// Most library classes derive from CInstanceMonitor with their class name.
// While counting is off (the default) construction and destruction only
// test one relaxed atomic flag: no allocation, no lock.
#pragma once

#include <cstddef>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

class KVXML_API CInstanceMonitor {
public:
    explicit CInstanceMonitor(const char* className);
    CInstanceMonitor(const CInstanceMonitor& other);
    CInstanceMonitor& operator=(const CInstanceMonitor&) { return *this; }
    virtual ~CInstanceMonitor();

    /// Turns counting on or off for instances created from now on.
    static void SetCounting(bool on);
    static bool IsCounting();
    /// Live instances of the named class created while counting was on.
    static std::size_t GetLiveCount(const char* className);

protected:
    /// True when this instance is among the live counts.
    bool IsCounted() const { return m_countedAs != nullptr; }

private:
    void Count(const char* className);

    const char* m_countedAs;  // null unless this instance was counted
};

}  // namespace KvXmlLib10
