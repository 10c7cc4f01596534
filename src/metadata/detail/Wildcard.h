// Wildcard.h - checks and lifetime help shared by the wildcard wrappers (CElement, CAttribute and their collections).
#pragma once

#include <string>

namespace KvXmlLib10 {

class CXmlObjectBase;

namespace detail {

/// The string, or CKvInvalidNamespaceException(message) when it is null.
std::string RequireValue(const char* value, const char* message);

/// The restriction after checking each of its tokens: one that starts with
/// "##" must be a keyword, else CKvInvalidNamespaceException
/// "Invalid Namespace [%s]". Null throws "Namespace Restriction must have a value".
std::string RequireRestriction(const char* restriction);

/// Releases object's reference. Releases that happen while another one is
/// being carried out (a dying element letting go of its children) are queued
/// and run by the outermost call, so a tree of any depth dies in constant
/// stack.
void ReleaseFlat(CXmlObjectBase* object);

}  // namespace detail
}  // namespace KvXmlLib10
