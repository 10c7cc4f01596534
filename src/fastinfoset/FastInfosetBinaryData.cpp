// FastInfosetBinaryData.cpp - the public face of the encoding algorithms.
#include "kvxml/fastinfoset/FastInfosetBinaryData.h"

#include "fastinfoset/detail/EncodingAlgorithms.h"

namespace KvXmlLib10 {

CFastInfosetBinaryData::CFastInfosetBinaryData() = default;
CFastInfosetBinaryData::CFastInfosetBinaryData(const CBinaryData& other) : CBinaryData(other) {}
CFastInfosetBinaryData::CFastInfosetBinaryData(unsigned char* data, uint32_t length, bool adopt)
    : CBinaryData(data, length, adopt) {}
CFastInfosetBinaryData::CFastInfosetBinaryData(const char* text) : CBinaryData(text) {}

void CFastInfosetBinaryData::SetAsEncodedString(uint32_t algorithmIndex, const char* text) {
    Clear();
    std::string octets;
    detail::EncodeAlgorithm(algorithmIndex, text, octets);
    SetBuffer(reinterpret_cast<const unsigned char*>(octets.data()), static_cast<uint32_t>(octets.size()));
}

std::string CFastInfosetBinaryData::GetAsString(uint32_t algorithmIndex) const {
    std::string text;
    detail::DecodeAlgorithm(algorithmIndex, GetData(), GetLength(), text);
    return text;
}

}  // namespace KvXmlLib10
