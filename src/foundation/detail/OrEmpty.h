// OrEmpty.h - C string arguments that callers may pass as null.
#pragma once

namespace KvXmlLib10 {
namespace detail {

// The public interface takes const char* and treats null as "": this is the
// one place that says so, for building strings and for quoting in messages.
inline const char* OrEmpty(const char* text) noexcept { return text != nullptr ? text : ""; }

}  // namespace detail
}  // namespace KvXmlLib10
