// Base64.h - the base64 codec behind CBinaryData's base64 form.
#pragma once

#include <string>

#include "kvxml/foundation/Export.h"

/// Standard alphabet, "=" padding, no line breaks. Decoding skips "=",
/// space, TAB, CR and LF wherever they stand and refuses anything else.
class KVXML_API CBase64 {
public:
    static const char m_sBase64Alphabet[];
    static const unsigned int m_nMask[];

    /// An empty input gives an empty string.
    std::string Encode(const unsigned char* data, int length);
    /// Writes into out (room for strlen(text) bytes is enough); returns the
    /// number of bytes written, 0 for invalid text.
    int Decode(const char* text, unsigned char* out);

private:
    unsigned int Read(int bits, int* got, int& position);
    void Write(unsigned int value, int bits, unsigned char* out, int& position);

    const unsigned char* m_input = nullptr;
    int m_inputLength = 0;
    unsigned int m_bitBuffer = 0;
    int m_bitCount = 0;
};
