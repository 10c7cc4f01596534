// ProcessSwitches.h - the process-wide switches set by AsyncToXmlFile/AsyncFromXmlFile.
#pragma once

namespace KvXmlLib10 {
namespace detail {

// Plain flags: set once at start-up, before concurrent use.
extern bool ASYNC_TOXMLFILE;
extern bool ASYNC_FROMXMLFILE;

}  // namespace detail
}  // namespace KvXmlLib10
