// KvException.h - the exception family every failure of the library is thrown as.
//
// Exceptions are thrown by value and caught by reference. A layer that adds
// context throws a new exception whose inner exception is a clone of the one
// it caught, so GetFullMessage() reads from the outermost layer down.
#pragma once

#include <memory>
#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// Root of the family; deliberately not derived from std::exception.
class KVXML_API CKvException {
public:
    CKvException();
    explicit CKvException(const std::string& message);
    /// The inner exception is cloned; the caller keeps its own object.
    CKvException(const std::string& message, const CKvException& inner);
    CKvException(const CKvException& other);
    CKvException& operator=(const CKvException& other);
    virtual ~CKvException();

    /// A new heap copy of the most-derived type, inner chain cloned too.
    virtual CKvException* Clone() const;

    std::string GetMessage() const;
    /// The inner exception, or null; ownership stays with this exception.
    CKvException* GetInnerException() const;
    /// The message, then one line per inner level, joined by "\n".
    std::string GetFullMessage() const;

private:
    std::string m_message;
    std::unique_ptr<CKvException> m_inner;
};

// Each subclass has the same four constructors and overrides only Clone.
#define KVXML_DECLARE_EXCEPTION(Name, Base)                                   \
    class KVXML_API Name : public Base {                                      \
    public:                                                                   \
        Name();                                                               \
        explicit Name(const std::string& message);                            \
        Name(const std::string& message, const CKvException& inner);          \
        Name(const CKvException& other);                                      \
        Name(const Name& other);                                              \
        Name& operator=(const Name& other) = default;                         \
        ~Name() override;                                                     \
        CKvException* Clone() const override;                                 \
    };

/// Content that does not fit the schema while reading or writing.
KVXML_DECLARE_EXCEPTION(CKvValidationException, CKvException)
/// A value that cannot be converted or is out of range.
KVXML_DECLARE_EXCEPTION(CKvInvalidValueException, CKvValidationException)
/// A namespace rejected by the namespace rules.
KVXML_DECLARE_EXCEPTION(CKvInvalidNamespaceException, CKvValidationException)
/// A bad argument, such as an index out of range.
KVXML_DECLARE_EXCEPTION(CKvInvalidParamException, CKvException)
/// An operation not allowed in the current state.
KVXML_DECLARE_EXCEPTION(CKvInvalidStateException, CKvException)
/// Arithmetic overflow in the number types.
KVXML_DECLARE_EXCEPTION(CKvOverFlowException, CKvException)

#undef KVXML_DECLARE_EXCEPTION

}  // namespace KvXmlLib10
