// hex_fuzzer.cpp - hex parsing against a plain model, and round trips.
//
// The input is taken as hex text (up to its first NUL), which must be accepted
// exactly when the model accepts it and print back upper-cased, and as raw
// bytes, which must come back unchanged from their hex text.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/BinaryData.h"

using KvXmlLib10::CBinaryData;
using KvXmlLib10::CKvException;

namespace {

bool IsHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string raw(reinterpret_cast<const char*>(data), size);
    const std::string text = raw.substr(0, raw.find('\0'));

    bool valid = text.size() % 2 == 0;
    std::string upper;
    for (char c : text) {
        valid = valid && IsHexDigit(c);
        upper += (c >= 'a' && c <= 'f') ? static_cast<char>(c - 'a' + 'A') : c;
    }

    CBinaryData value;
    try {
        value.SetAsHexString(text.c_str());
        if (!valid || value.GetAsHexString() != upper) std::abort();
        CBinaryData again;
        again.SetAsHexString(value.GetAsHexString().c_str());
        if (again != value) std::abort();
    } catch (const CKvException& e) {
        if (valid) std::abort();
        const std::string message = e.GetMessage();
        if (message != "Invalid length in hex string" && message.rfind("Invalid char in hex string [", 0) != 0)
            std::abort();
    }

    const std::string hex = CBinaryData::GetAsHexString(data, static_cast<uint32_t>(size));
    if (hex.size() != 2 * size) std::abort();
    unsigned char* parsed = nullptr;
    const uint32_t length = CBinaryData::ConvertToHexData(hex.c_str(), &parsed);
    std::unique_ptr<unsigned char[]> owned(parsed);
    if (length != size || (size != 0 && std::memcmp(parsed, data, size) != 0)) std::abort();
    return 0;
}
