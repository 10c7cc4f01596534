// KvTestSupport.h - assertions shared by the test suites.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <fstream>
#include <iterator>
#include <string>
#include <typeinfo>

#include "kvxml/foundation/KvException.h"

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

/// Switches to the C.UTF-8 locale (the library keeps text in the local code
/// page) for its lifetime, then back; ok says whether the switch worked.
struct Utf8Locale {
    std::string saved = std::setlocale(LC_ALL, nullptr);
    bool ok = std::setlocale(LC_ALL, "C.UTF-8") != nullptr;
    ~Utf8Locale() { std::setlocale(LC_ALL, saved.c_str()); }
};

/// The whole file as bytes; empty when it cannot be read.
inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
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
