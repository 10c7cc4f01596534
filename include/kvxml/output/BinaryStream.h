// BinaryStream.h - in-memory byte accumulator and its write-to-file variant.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"
#include "kvxml/output/OutputEnums.h"
#include "kvxml/values/BinaryData.h"

namespace KvXmlLib10 {

/// Collects output bytes, e.g. of the Fast Infoset writer.
class KVXML_API CBinaryStream : public CInstanceMonitor {
public:
    CBinaryStream();
    /// Starts with a copy of the given bytes.
    explicit CBinaryStream(const CBinaryData& initial);
    /// For derived classes: counts instances under className.
    explicit CBinaryStream(const char* className);
    CBinaryStream(const char* className, const CBinaryData& initial);
    virtual ~CBinaryStream();

    void Append(unsigned char byte);
    void Append(const CBinaryData& bytes);
    void Append(const unsigned char* bytes, uint32_t length);
    /// The bytes accumulated so far.
    CBinaryData& GetBinaryStream();

private:
    CBinaryData m_data;
};

/// Held bytes written to a file in one go by ToFile().
class KVXML_API CFileBinaryStream : public CBinaryStream {
public:
    CFileBinaryStream(const char* fileName, XmlEncoding encoding);
    CFileBinaryStream(const char* fileName, XmlEncoding encoding, const CBinaryData& content);
    ~CFileBinaryStream() override;

    /// Creates or truncates the file, writes FF FE first for encodings 2
    /// and 3, then the bytes. Throws CKvException "Failed to write data to
    /// the file [%s]" with the file name when any step fails.
    void ToFile();

private:
    std::string m_fileName;
    XmlEncoding m_encoding;
};

}  // namespace KvXmlLib10
