// KvException.cpp - the exception family and its owned inner chains.
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

namespace {
std::unique_ptr<CKvException> CloneOrNull(const CKvException* source) {
    return std::unique_ptr<CKvException>(source ? source->Clone() : nullptr);
}
}  // namespace

CKvException::CKvException() = default;

CKvException::CKvException(const std::string& message) : m_message(message) {}

CKvException::CKvException(const std::string& message, const CKvException& inner)
    : m_message(message), m_inner(inner.Clone()) {}

CKvException::CKvException(const CKvException& other)
    : m_message(other.m_message), m_inner(CloneOrNull(other.m_inner.get())) {}

CKvException& CKvException::operator=(const CKvException& other) {
    if (this != &other) {
        // Clone first: the source's chain may hang below our own.
        std::unique_ptr<CKvException> inner = CloneOrNull(other.m_inner.get());
        m_message = other.m_message;
        m_inner = std::move(inner);
    }
    return *this;
}

CKvException::~CKvException() = default;

CKvException* CKvException::Clone() const { return new CKvException(*this); }

std::string CKvException::GetMessage() const { return m_message; }

CKvException* CKvException::GetInnerException() const { return m_inner.get(); }

std::string CKvException::GetFullMessage() const {
    std::string full = m_message;
    for (const CKvException* level = m_inner.get(); level; level = level->m_inner.get()) {
        full += '\n';
        full += level->m_message;
    }
    return full;
}

#define KVXML_DEFINE_EXCEPTION(Name, Base)                                           \
    Name::Name() = default;                                                          \
    Name::Name(const std::string& message) : Base(message) {}                        \
    Name::Name(const std::string& message, const CKvException& inner)                \
        : Base(message, inner) {}                                                    \
    Name::Name(const CKvException& other) : Base(other) {}                           \
    Name::Name(const Name& other) : Base(static_cast<const CKvException&>(other)) {} \
    Name::~Name() = default;                                                         \
    CKvException* Name::Clone() const { return new Name(*this); }

KVXML_DEFINE_EXCEPTION(CKvValidationException, CKvException)
KVXML_DEFINE_EXCEPTION(CKvInvalidValueException, CKvValidationException)
KVXML_DEFINE_EXCEPTION(CKvInvalidNamespaceException, CKvValidationException)
KVXML_DEFINE_EXCEPTION(CKvInvalidParamException, CKvException)
KVXML_DEFINE_EXCEPTION(CKvInvalidStateException, CKvException)
KVXML_DEFINE_EXCEPTION(CKvOverFlowException, CKvException)

}  // namespace KvXmlLib10
