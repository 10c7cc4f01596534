// Tests for the exception family: chains, copies, clones and dynamic types.
#include <type_traits>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

TEST(KvExceptionChain, FullMessageReadsOutermostFirstOneLinePerLevel) {
    CKvInvalidValueException root("The value [x] can not be converted to a i4");
    CKvValidationException middle("Failed to read element [b]", root);
    CKvException outer("Failed to read element [a]", middle);

    EXPECT_EQ(outer.GetMessage(), "Failed to read element [a]");
    EXPECT_EQ(outer.GetFullMessage(),
              "Failed to read element [a]\nFailed to read element [b]\n"
              "The value [x] can not be converted to a i4");
    ASSERT_NE(outer.GetInnerException(), nullptr);
    ASSERT_NE(outer.GetInnerException()->GetInnerException(), nullptr);
    EXPECT_EQ(outer.GetInnerException()->GetInnerException()->GetInnerException(), nullptr);
    // The inner levels keep their dynamic types through the clones.
    const CKvException& middleCopy = *outer.GetInnerException();
    const CKvException& rootCopy = *middleCopy.GetInnerException();
    EXPECT_EQ(typeid(middleCopy), typeid(CKvValidationException));
    EXPECT_EQ(typeid(rootCopy), typeid(CKvInvalidValueException));
}

TEST(KvExceptionChain, WrappingClonesTheInnerSoTheCallerKeepsItsOwn) {
    auto inner = std::make_unique<CKvException>("inner");
    CKvException outer("outer", *inner);
    EXPECT_NE(outer.GetInnerException(), inner.get());
    inner.reset();
    EXPECT_EQ(outer.GetFullMessage(), "outer\ninner");
}

TEST(KvExceptionConstruction, DefaultIsEmptyAndConvertingTakesTheNewClass) {
    CKvOverFlowException empty;
    EXPECT_EQ(empty.GetFullMessage(), "");
    EXPECT_EQ(empty.GetInnerException(), nullptr);
    const CKvInvalidParamException converted(CKvException("plain", CKvException("cause")));
    EXPECT_EQ(converted.GetFullMessage(), "plain\ncause");
    const std::unique_ptr<CKvException> clone(converted.Clone());
    const CKvException& cloned = *clone;
    EXPECT_EQ(typeid(cloned), typeid(CKvInvalidParamException));
}

TEST(KvExceptionCopy, CopiesOwnAnIndependentInnerChain) {
    auto first = std::make_unique<CKvValidationException>("a", CKvException("b", CKvException("c")));
    CKvValidationException copy(*first);
    EXPECT_NE(copy.GetInnerException(), first->GetInnerException());

    CKvValidationException assigned;
    assigned = *first;
    EXPECT_NE(assigned.GetInnerException(), first->GetInnerException());

    first.reset();
    EXPECT_EQ(copy.GetFullMessage(), "a\nb\nc");
    EXPECT_EQ(assigned.GetFullMessage(), "a\nb\nc");

    // Assigning an exception without inner drops the old chain.
    assigned = CKvValidationException("alone");
    EXPECT_EQ(assigned.GetInnerException(), nullptr);
    EXPECT_EQ(assigned.GetFullMessage(), "alone");
}

TEST(KvExceptionCopy, SelfAndChainAssignmentAreSafe) {
    CKvException e("outer", CKvException("inner"));
    CKvException& alias = e;
    e = alias;
    EXPECT_EQ(e.GetFullMessage(), "outer\ninner");
    // Assigning from one's own inner exception must not read freed memory.
    e = *e.GetInnerException();
    EXPECT_EQ(e.GetFullMessage(), "inner");
}

TEST(KvExceptionClone, KeepsTheDynamicTypeThroughABaseReference) {
    CKvInvalidNamespaceException original("Namespace [urn:x] is not allowed", CKvException("why"));
    const CKvException& asBase = original;
    std::unique_ptr<CKvException> clone(asBase.Clone());
    const CKvException& cloned = *clone;
    EXPECT_EQ(typeid(cloned), typeid(CKvInvalidNamespaceException));
    EXPECT_EQ(clone->GetFullMessage(), "Namespace [urn:x] is not allowed\nwhy");
}

// Each class is caught by its bases; siblings do not catch each other.
static_assert(std::is_convertible_v<CKvInvalidValueException*, CKvValidationException*>);
static_assert(std::is_convertible_v<CKvInvalidNamespaceException*, CKvValidationException*>);
static_assert(std::is_convertible_v<CKvValidationException*, CKvException*>);
static_assert(std::is_convertible_v<CKvInvalidParamException*, CKvException*>);
static_assert(std::is_convertible_v<CKvInvalidStateException*, CKvException*>);
static_assert(std::is_convertible_v<CKvOverFlowException*, CKvException*>);
static_assert(!std::is_convertible_v<CKvInvalidParamException*, CKvValidationException*>);
