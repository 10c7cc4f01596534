// FileTextStream.h - a text stream that drains its buffered text into a file.
#pragma once

#include <memory>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/output/OutputEnums.h"
#include "kvxml/output/TextStream.h"
#include "kvxml/values/BinaryData.h"

namespace KvXmlLib10 {

namespace detail {
class ReplacingFile;
}

/// Writes the text in the stream's encoding as it is flushed, so that a
/// document is never held whole in memory. The file holds exactly the bytes
/// a memory stream of the same encoding would deliver, after FF FE for
/// encodings 2 and 3.
class KVXML_API CFileTextStream : public CTextStream {
public:
    CFileTextStream(const char* fileName, XmlEncoding encoding);
    /// Without a successful Close, removes what was written and leaves any
    /// earlier file of that name as it was.
    ~CFileTextStream() override;

    /// Empties the text, creates or truncates the file and writes the
    /// byte-order mark. Throws CKvException "Failed to write data to the
    /// file [%s]" with the file name on failure.
    void Open() override;
    /// Flushes, closes the file and puts it in place of the target. Throws
    /// as Flush does.
    void Close() override;
    /// Encodes the buffered text, writes it and empties the buffer; nothing
    /// when the buffer is empty. Throws CKvException "Failed to write data
    /// to the file" (after closing the file) when the write fails, and the
    /// GetEncodedStream error for an unknown encoding.
    void Flush() override;

private:

    /// Writes the buffered text; unless `all`, an incomplete trailing
    /// multibyte character stays buffered for the next call.
    void WriteBuffered(bool all);

    std::string m_fileName;
    CBinaryData m_pending;  // encoded bytes on their way to the file
    // Written beside the target and renamed over it at Close, so a failed
    // document never replaces an existing file.
    std::unique_ptr<detail::ReplacingFile> m_file;
};

}  // namespace KvXmlLib10
