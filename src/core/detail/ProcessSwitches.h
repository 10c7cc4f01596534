// ProcessSwitches.h - the process-wide switches set by AsyncToXmlFile/AsyncFromXmlFile.
#pragma once

#include <atomic>

namespace KvXmlLib10 {
namespace detail {

// Meant to be set once at start-up, but atomic so that a late change while
// another thread serialises is a race on the setting, not undefined behaviour.
// Relaxed order: nothing else is published through them.
extern std::atomic<bool> ASYNC_TOXMLFILE;
extern std::atomic<bool> ASYNC_FROMXMLFILE;

}  // namespace detail
}  // namespace KvXmlLib10
