// FormatString.cpp - vsnprintf into a string that is sized first, never cut.
#include "kvxml/foundation/FormatString.h"

#include <cstdio>
#include <cstring>

namespace KvXmlLib10 {

namespace {

bool IsFlag(char c) { return c == '-' || c == '+' || c == ' ' || c == '#' || c == '0' || c == '\''; }

// Rewrites the two extensions vsnprintf does not share: the "I64" size prefix
// becomes "ll", and "%n" prints its argument ("%d") instead of storing
// through it. Returns false when the format needs no rewriting.
bool RewriteFormat(const char* format, std::string& out) {
    bool changed = false;
    const char* p = format;
    while (*p) {
        if (*p != '%') {
            out += *p++;
            continue;
        }
        out += *p++;
        if (*p == '%') {
            out += *p++;
            continue;
        }
        while (IsFlag(*p)) out += *p++;
        while (*p == '*' || (*p >= '0' && *p <= '9')) out += *p++;
        if (*p == '.') {
            out += *p++;
            while (*p == '*' || (*p >= '0' && *p <= '9')) out += *p++;
        }
        for (;;) {
            if (std::strncmp(p, "I64", 3) == 0) {
                out += "ll";
                p += 3;
                changed = true;
            } else if (std::strncmp(p, "I32", 3) == 0) {
                p += 3;
                changed = true;
            } else if (*p == 'h' || *p == 'l' || *p == 'L' || *p == 'q' || *p == 'j' || *p == 'z' ||
                       *p == 't') {
                out += *p++;
            } else {
                break;
            }
        }
        if (*p == 'n') {
            out += 'd';
            ++p;
            changed = true;
        } else if (*p) {
            out += *p++;
        }
    }
    return changed;
}

}  // namespace

std::string FormatV(const char* format, va_list args) {
    if (!format) return std::string();
    std::string rewritten;
    if (std::strchr(format, '%') && RewriteFormat(format, rewritten)) format = rewritten.c_str();

    char small[256];
    va_list sizing;
    va_copy(sizing, args);
    int needed = std::vsnprintf(small, sizeof small, format, sizing);
    va_end(sizing);
    if (needed < 0) return std::string();
    if (static_cast<size_t>(needed) < sizeof small) return std::string(small, static_cast<size_t>(needed));

    std::string result(static_cast<size_t>(needed) + 1, 'X');
    va_list printing;
    va_copy(printing, args);
    int written = std::vsnprintf(&result[0], result.size(), format, printing);
    va_end(printing);
    result.resize(written < 0 ? 0 : static_cast<size_t>(written));
    return result;
}

std::string FormatString(const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::string result = FormatV(format, args);
    va_end(args);
    return result;
}

}  // namespace KvXmlLib10
