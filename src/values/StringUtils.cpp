// StringUtils.cpp - padding, trimming, upper-casing and search-and-replace helpers.
#include "kvxml/values/StringUtils.h"

#include <cctype>
#include <cstdio>

namespace KvXmlLib10 {

std::string PadZero(int value, unsigned char width) {
    // 255 digits of padding plus a sign and the NUL fit comfortably.
    char buffer[272];
    int length = std::snprintf(buffer, sizeof buffer, "%0*d", static_cast<int>(width), value);
    if (length < 0) return std::string();
    return std::string(buffer, static_cast<size_t>(length));
}

std::string TrimTrainingZeros(std::string text) {
    size_t keep = text.size();
    while (keep > 1 && text[keep - 1] == '0') --keep;
    text.resize(keep);
    return text;
}

char* strupr(char* text) {
    if (!text) return text;
    for (char* p = text; *p; ++p) {
        // toupper takes an unsigned char value; a plain char above 0x7F is negative.
        *p = static_cast<char>(std::toupper(static_cast<unsigned char>(*p)));
    }
    return text;
}

namespace {

template <typename String>
void FindReplaceImpl(String& s, const String& find, const String& with) {
    if (find.empty()) return;  // every search would match at 0 forever
    for (size_t at = s.find(find); at != String::npos; at = s.find(find)) s.replace(at, find.size(), with);
}

}  // namespace

void FindReplace(std::string& s, const std::string& find, const std::string& with) { FindReplaceImpl(s, find, with); }

void FindReplace(std::wstring& s, const std::wstring& find, const std::wstring& with) {
    FindReplaceImpl(s, find, with);
}

}  // namespace KvXmlLib10
