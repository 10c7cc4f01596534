// FastInfosetBinaryData.h - typed values as the octets of Fast Infoset encoding algorithms.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/values/BinaryData.h"

namespace KvXmlLib10 {

/// Bytes holding one value under a built-in encoding algorithm: 1 hex,
/// 2 base64, 3 short, 4 int, 5 long, 6 boolean, 7 float, 8 double, 9 uuid,
/// 10 cdata. Numbers are big-endian; several items decode to texts joined
/// by single spaces (booleans one "true"/"false" per bit, uuids one
/// 32-digit hexadecimal text per 16 octets).
class KVXML_API CFastInfosetBinaryData : public CBinaryData {
public:
    CFastInfosetBinaryData();
    CFastInfosetBinaryData(const CBinaryData& other);  // NOLINT: converts like its base
    CFastInfosetBinaryData(unsigned char* data, uint32_t length, bool adopt);
    explicit CFastInfosetBinaryData(const char* text);

    /// Replaces the bytes with the octets of one value given as text. Throws
    /// "Unknown byte encoding." for an index outside 1..10; conversion
    /// errors pass through.
    void SetAsEncodedString(uint32_t algorithmIndex, const char* text);
    /// The text of the bytes. Throws "Unknown byte encoding." and, for data
    /// that is not a whole number of items, "Invalid value for SHORT byte
    /// encoding." and its INT, LONG, FLOAT, DOUBLE, UUID and BOOLEAN forms.
    std::string GetAsString(uint32_t algorithmIndex) const;
};

}  // namespace KvXmlLib10
