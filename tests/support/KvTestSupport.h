// KvTestSupport.h - what every suite includes: GoogleTest, the library, and the shared assertions.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "kvxml/kvxml.h"

// Runs stmt, expects it to throw exactly Type (dynamic type) whose text, read
// with the given accessor, is expectedMessage. Messages are spelled out in
// tests, never taken from the library.
#define KV_EXPECT_THROW_TEXT(stmt, Type, Accessor, expectedMessage)                           \
    do {                                                                                      \
        bool kvThrown = false;                                                                \
        try {                                                                                 \
            static_cast<void>(stmt);                                                          \
        } catch (const KvXmlLib10::CKvException& kvError) {                                   \
            kvThrown = true;                                                                  \
            EXPECT_EQ(typeid(kvError), typeid(Type)) << "message: " << kvError.Accessor();    \
            EXPECT_EQ(kvError.Accessor(), std::string(expectedMessage));                      \
        }                                                                                     \
        EXPECT_TRUE(kvThrown) << #stmt " did not throw";                                      \
    } while (0)

// The failure's own message.
#define EXPECT_KV_THROW(stmt, Type, expectedMessage) KV_EXPECT_THROW_TEXT(stmt, Type, GetMessage, expectedMessage)
// The whole chain, outermost level first (GetFullMessage).
#define EXPECT_KV_CHAIN(stmt, Type, fullMessage) KV_EXPECT_THROW_TEXT(stmt, Type, GetFullMessage, fullMessage)

namespace KvXmlTest {

/// The whole file as bytes; empty when it cannot be read.
inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

/// The reference count as AddRef reports it, without changing it.
inline int32_t RefCount(KvXmlLib10::CXmlObjectBase* object) {
    const int32_t count = object->AddRef() - 1;
    object->Release();
    return count;
}

/// The full message chain of the Type that action throws ("" when it throws
/// nothing), for tables that list expected chains.
template <typename Type, typename Action>
std::string FullMessageOf(Action action) {
    try {
        action();
    } catch (const KvXmlLib10::CKvException& error) {
        EXPECT_EQ(typeid(error), typeid(Type)) << error.GetMessage();
        return error.GetFullMessage();
    }
    return "";
}

}  // namespace KvXmlTest
