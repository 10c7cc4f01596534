// WhitespaceUtils.cpp - the preserve, replace and collapse whitespace rules.
//
// Each rule is one pass over the text into an output reserved up front, so
// cost is linear and there is no allocation per character.
#include "kvxml/values/WhitespaceUtils.h"

#include <cstring>

#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

namespace {

std::string PreserveBytes(const char* text, size_t size) {
    if (size == 0 || std::memchr(text, '\r', size) == nullptr) return std::string(text, size);

    // The normalised copy ends at the first NUL, as a C string would.
    const void* nul = std::memchr(text, '\0', size);
    const size_t end = nul ? static_cast<size_t>(static_cast<const char*>(nul) - text) : size;
    std::string out;
    out.reserve(end);
    for (size_t i = 0; i < end; ++i) {
        if (text[i] != '\r') {
            out.push_back(text[i]);
            continue;
        }
        out.push_back('\n');
        if (i + 1 < end && text[i + 1] == '\n') ++i;
    }
    return out;
}

}  // namespace

std::string CWhitespaceUtils::Preserve(const std::string& text) { return PreserveBytes(text.data(), text.size()); }

std::string CWhitespaceUtils::Preserve(const char* text, int length) {
    if (text == nullptr || length <= 0) return std::string();
    return PreserveBytes(text, static_cast<size_t>(length));
}

std::string CWhitespaceUtils::Replace(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    const size_t size = text.size();
    for (size_t i = 0; i < size; ++i) {
        const char c = text[i];
        if (!IsWhiteSpace(c)) {
            out.push_back(c);
            continue;
        }
        out.push_back(' ');
        // A CR LF pair is one line end, so one space.
        if (c == '\r' && i + 1 < size && text[i + 1] == '\n') ++i;
    }
    return out;
}

std::string CWhitespaceUtils::Collapse(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    // Starting as if a space had just been written drops leading whitespace.
    bool afterSpace = true;
    for (const char c : text) {
        if (!IsWhiteSpace(c)) {
            out.push_back(c);
            afterSpace = false;
        } else if (!afterSpace) {
            out.push_back(' ');
            afterSpace = true;
        }
    }
    if (!out.empty() && out.back() == ' ') out.pop_back();
    return out;
}

std::string CWhitespaceUtils::ApplyRule(WhitespaceRule rule, const std::string& text) {
    switch (rule) {
        case WhitespaceRule::None:
            return text;
        case WhitespaceRule::Preserve:
            return Preserve(text);
        case WhitespaceRule::Replace:
            return Replace(text);
        case WhitespaceRule::Collapse:
            return Collapse(text);
    }
    throw CKvException("Unknown WhitespaceRule");
}

}  // namespace KvXmlLib10
