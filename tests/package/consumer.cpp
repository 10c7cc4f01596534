// A program outside the source tree that uses the installed library.
#include <kvxml/kvxml.h>

#include <cstdio>
#include <cstring>

int main() {
    using namespace KvXmlLib10;
    std::string text = FormatString("Index %d is out of range, use 0 - %d", 5, 3);
    try {
        throw CKvInvalidValueException("inner");
    } catch (const CKvValidationException& e) {
        if (e.GetMessage() != "inner") return 1;
    }
    std::puts(text.c_str());
    return text == "Index 5 is out of range, use 0 - 3" ? 0 : 1;
}
