// Tests for the exception family: chains, copies, clones and dynamic types.
#include <type_traits>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

TEST(KvExceptionChain, FullMessageReadsOutermostFirstAndLevelsAreClonesKeepingTheirTypes) {
    CKvInvalidValueException root("The value [x] can not be converted to a i4");
    auto middle = std::make_unique<CKvValidationException>("Failed to read element [b]", root);
    CKvException outer("Failed to read element [a]", *middle);
    EXPECT_NE(outer.GetInnerException(), middle.get());
    middle.reset();  // the caller keeps its own; the chain holds a clone
    EXPECT_EQ(outer.GetMessage(), "Failed to read element [a]");
    EXPECT_EQ(outer.GetFullMessage(),
              "Failed to read element [a]\nFailed to read element [b]\nThe value [x] can not be converted to a i4");
    const CKvException& middleCopy = *outer.GetInnerException();
    const CKvException& rootCopy = *middleCopy.GetInnerException();
    EXPECT_EQ(rootCopy.GetInnerException(), nullptr);
    EXPECT_EQ(typeid(middleCopy), typeid(CKvValidationException));
    EXPECT_EQ(typeid(rootCopy), typeid(CKvInvalidValueException));

    CKvOverFlowException empty;
    EXPECT_EQ(empty.GetFullMessage(), "");
    EXPECT_EQ(empty.GetInnerException(), nullptr);
    // Converting takes the new class; cloning through a base reference keeps the dynamic type.
    const CKvInvalidParamException converted(CKvException("plain", CKvException("cause")));
    CKvInvalidNamespaceException original("Namespace [urn:x] is not allowed", CKvException("why"));
    for (const CKvException* source : std::initializer_list<const CKvException*>{&converted, &original}) {
        const std::unique_ptr<CKvException> clone(source->Clone());
        const CKvException& cloned = *clone;
        EXPECT_EQ(typeid(cloned), typeid(*source));
        EXPECT_EQ(clone->GetFullMessage(), source->GetFullMessage());
    }
    EXPECT_EQ(converted.GetFullMessage(), "plain\ncause");
    EXPECT_EQ(original.GetFullMessage(), "Namespace [urn:x] is not allowed\nwhy");
}

TEST(KvExceptionCopy, CopiesOwnAnIndependentChainAndSelfOrChainAssignmentIsSafe) {
    auto first = std::make_unique<CKvValidationException>("a", CKvException("b", CKvException("c")));
    CKvValidationException copy(*first), assigned;
    assigned = *first;
    EXPECT_NE(copy.GetInnerException(), first->GetInnerException());
    EXPECT_NE(assigned.GetInnerException(), first->GetInnerException());
    first.reset();
    EXPECT_EQ(copy.GetFullMessage(), "a\nb\nc");
    EXPECT_EQ(assigned.GetFullMessage(), "a\nb\nc");
    assigned = CKvValidationException("alone");  // an exception without inner drops the old chain
    EXPECT_EQ(assigned.GetInnerException(), nullptr);
    EXPECT_EQ(assigned.GetFullMessage(), "alone");

    CKvException e("outer", CKvException("inner"));
    CKvException& alias = e;
    e = alias;
    EXPECT_EQ(e.GetFullMessage(), "outer\ninner");
    e = *e.GetInnerException();  // must not read the inner after freeing it
    EXPECT_EQ(e.GetFullMessage(), "inner");
}

// Each class is caught by its bases; siblings do not catch each other.
static_assert(std::is_convertible_v<CKvInvalidValueException*, CKvValidationException*>);
static_assert(std::is_convertible_v<CKvInvalidNamespaceException*, CKvValidationException*>);
static_assert(std::is_convertible_v<CKvValidationException*, CKvException*>);
static_assert(std::is_convertible_v<CKvInvalidParamException*, CKvException*>);
static_assert(std::is_convertible_v<CKvInvalidStateException*, CKvException*>);
static_assert(std::is_convertible_v<CKvOverFlowException*, CKvException*>);
static_assert(!std::is_convertible_v<CKvInvalidParamException*, CKvValidationException*>);
