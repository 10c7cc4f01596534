// KvTestSupport.h - assertions shared by the test suites.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>

#include "kvxml/foundation/KvException.h"

// Runs stmt, expects it to throw exactly Type (dynamic type) with the given
// message. Messages are spelled out in tests, never taken from the library.
#define EXPECT_KV_THROW(stmt, Type, expectedMessage)                                       \
    do {                                                                                   \
        bool kvThrown = false;                                                             \
        try {                                                                              \
            static_cast<void>(stmt);                                                       \
        } catch (const KvXmlLib10::CKvException& kvError) {                                \
            kvThrown = true;                                                               \
            EXPECT_EQ(typeid(kvError), typeid(Type)) << "message: " << kvError.GetMessage(); \
            EXPECT_EQ(kvError.GetMessage(), std::string(expectedMessage));                 \
        }                                                                                  \
        EXPECT_TRUE(kvThrown) << #stmt " did not throw";                                   \
    } while (0)
