// BinaryStream.cpp - byte accumulator and its one-shot file writer.
#include "kvxml/output/BinaryStream.h"

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "output/detail/FileOutput.h"

namespace KvXmlLib10 {

CBinaryStream::CBinaryStream() : CInstanceMonitor("CBinaryStream") {}

CBinaryStream::CBinaryStream(const CBinaryData& initial)
    : CInstanceMonitor("CBinaryStream"), m_data(initial) {}

CBinaryStream::CBinaryStream(const char* className) : CInstanceMonitor(className) {}

CBinaryStream::CBinaryStream(const char* className, const CBinaryData& initial)
    : CInstanceMonitor(className), m_data(initial) {}

CBinaryStream::~CBinaryStream() = default;

void CBinaryStream::Append(unsigned char byte) { m_data.Append(byte); }

void CBinaryStream::Append(const CBinaryData& bytes) { m_data.Append(bytes); }

void CBinaryStream::Append(const unsigned char* bytes, uint32_t length) {
    if (length) m_data.Append(bytes, length);
}

CBinaryData& CBinaryStream::GetBinaryStream() { return m_data; }

CFileBinaryStream::CFileBinaryStream(const char* fileName, XmlEncoding encoding)
    : CBinaryStream("CFileBinaryStream"), m_fileName(fileName ? fileName : ""), m_encoding(encoding) {}

CFileBinaryStream::CFileBinaryStream(const char* fileName, XmlEncoding encoding,
                                     const CBinaryData& content)
    : CBinaryStream("CFileBinaryStream", content),
      m_fileName(fileName ? fileName : ""),
      m_encoding(encoding) {}

CFileBinaryStream::~CFileBinaryStream() = default;

void CFileBinaryStream::ToFile() {
    detail::ReplacingFile file(m_fileName.c_str());
    const CBinaryData& bytes = GetBinaryStream();
    // A full disk may only show when stdio writes out its buffer at close.
    const bool written = file.Open() && detail::WriteByteOrderMark(file.Get(), m_encoding) &&
                         detail::WriteBytes(file.Get(), bytes.GetData(), bytes.GetLength()) && file.Commit();
    if (!written)
        throw CKvException(FormatString("Failed to write data to the file [%s]", m_fileName.c_str()));
}

}  // namespace KvXmlLib10
