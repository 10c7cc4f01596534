// TextStream.cpp - the in-memory text stream and its encoded form.
#include "kvxml/output/TextStream.h"

#include "kvxml/foundation/KvException.h"
#include "kvxml/output/Encoder.h"
#include "output/detail/PieceEncoder.h"

namespace KvXmlLib10 {

CTextStream::CTextStream() : CTextStream("CTextStream", Encoding_None) {}

CTextStream::CTextStream(XmlEncoding encoding) : CTextStream("CTextStream", encoding) {}

CTextStream::CTextStream(const std::string& text, XmlEncoding encoding)
    : CTextStream("CTextStream", encoding) {
    m_buffer.Append(text);
}

CTextStream::CTextStream(const char* className, XmlEncoding encoding)
    : CInstanceMonitor(className), m_encoding(encoding) {}

CTextStream::~CTextStream() = default;

void CTextStream::Open() { m_buffer.Empty(); }

void CTextStream::Close() {}

void CTextStream::Flush() {}

std::string CTextStream::GetText() const {
    std::string text;
    m_buffer.AppendTo(text);
    return text;
}

CBinaryData CTextStream::GetEncodedStream() const {
    switch (m_encoding) {
        case Encoding_UTF8:
            return detail::LocalPiecesToUtf8Binary(m_buffer.GetPieces(), m_buffer.GetLength());
        case Encoding_UTF16:
        case Encoding_Wide:
            return CEncoder::LocalCodePageToUnicodeBinary(m_buffer.GetText(), m_buffer.GetLength());
        default:
            throw CKvException(
                "Unknown Encoding, select UTF-8 (for other encodings contact your kvxml support "
                "provider)");
    }
}

}  // namespace KvXmlLib10
