// EntityChain.h - a document whose DTD chains internal entities, each naming the one before.
#pragma once

#include <string>

namespace KvXmlTest {

/// `count` entities e0..e<count-1>, e0 being "x"; the root element refers to
/// the last one, so expanding it nests `count` levels deep. Under 30 bytes a
/// level: a chain deep enough to overflow a recursive expander stays small.
inline std::string EntityChain(int count) {
    std::string text = "<?xml version='1.0'?>\n<!DOCTYPE r [\n<!ENTITY e0 \"x\">\n";
    text.reserve(static_cast<std::size_t>(count) * 30 + 64);
    for (int i = 1; i < count; ++i)
        text += "<!ENTITY e" + std::to_string(i) + " \"&e" + std::to_string(i - 1) + ";\">\n";
    return text + "]>\n<r>&e" + std::to_string(count - 1) + ";</r>";
}

}  // namespace KvXmlTest
