// Base64.h - the base64 codec behind CBinaryData's base64 form.
#pragma once

#include <string>

#include "kvxml/foundation/Export.h"

/// Standard alphabet, "=" padding, no line breaks. Decoding skips "=",
/// space, TAB, CR and LF wherever they stand and refuses anything else.
/// An instance keeps coding state: use one per thread.
class KVXML_API CBase64 {
public:
    static const char m_sBase64Alphabet[];
    /// m_nMask[n] keeps the low n bits, n = 0..8.
    static const unsigned int m_nMask[];

    /// An empty input (or a negative length) gives an empty string.
    std::string Encode(const unsigned char* data, int length);
    /// Writes into out (room for strlen(text) bytes is enough); returns the
    /// number of bytes written, 0 for invalid text. Bytes with the high bit
    /// set count as the ASCII character below them. Throws CKvException when
    /// the result could not be counted in an int.
    int Decode(const char* text, unsigned char* out);

private:
    /// Takes the next `bits` (1..8) bits of the input, refilling the bit
    /// buffer from the input byte at `position`. *got receives how many
    /// bits were really left; a short group is padded with zero bits.
    unsigned int Read(int bits, int* got, int& position);
    /// Adds `bits` (1..8) bits of value to the bit buffer and stores each
    /// completed byte at out[position++].
    void Write(unsigned int value, int bits, unsigned char* out, int& position);

    const unsigned char* m_input = nullptr;
    int m_inputLength = 0;
    unsigned int m_bitBuffer = 0;
    int m_bitCount = 0;
};
