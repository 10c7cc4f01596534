// StandardNamespaces.h - the W3C namespace URIs the library uses literally.
//
// The XML namespace itself is public (CXmlWriter::XML_NAMESPACE); these two
// are internal and live here once.
#pragma once

namespace KvXmlLib10 {
namespace detail {

// xsi:type and xsi:nil.
inline constexpr char kXsiNamespace[] = "http://www.w3.org/2001/XMLSchema-instance";
// Namespace declarations (xmlns, xmlns:p) as attributes.
inline constexpr char kXmlnsNamespace[] = "http://www.w3.org/2000/xmlns/";

}  // namespace detail
}  // namespace KvXmlLib10
