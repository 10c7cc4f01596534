// TextStream.h - in-memory text sink of the XML text writer.
#pragma once

#include <cstddef>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"
#include "kvxml/output/OutputEnums.h"
#include "kvxml/output/StringBuffer.h"
#include "kvxml/values/BinaryData.h"

namespace KvXmlLib10 {

/// Accumulates text in the local code page; the encoding only decides
/// what GetEncodedStream delivers. Subclasses that drain to a file
/// override Open, Close and Flush.
class KVXML_API CTextStream : public CInstanceMonitor {
public:
    CTextStream();
    explicit CTextStream(XmlEncoding encoding);
    CTextStream(const std::string& text, XmlEncoding encoding);
    ~CTextStream() override;
    CTextStream(const CTextStream&) = delete;
    CTextStream& operator=(const CTextStream&) = delete;

    /// Empties the text.
    virtual void Open();
    /// Does nothing here.
    virtual void Close();
    /// Does nothing here: a memory stream keeps everything.
    virtual void Flush();

    void Append(char c) { m_buffer.Append(c); }
    /// Appends up to the first NUL.
    void Append(const char* text) { m_buffer.Append(text); }
    void Append(const std::string& text) { m_buffer.Append(text); }
    void Append(const char* text, size_t length) { m_buffer.Append(text, length); }

    /// Takes back text appended since GetLength() was `length`, as long
    /// as no Flush came in between.
    void Truncate(size_t length) { m_buffer.Truncate(length); }

    std::string GetText() const;
    size_t GetLength() const { return m_buffer.GetLength(); }
    XmlEncoding GetEncoding() const { return m_encoding; }
    /// The text as UTF-8 (encoding 1) or as 32-bit wide characters
    /// (encodings 2 and 3). Throws CKvException for any other encoding.
    CBinaryData GetEncodedStream() const;

protected:
    /// For subclasses, counted under their own name. A string literal and
    /// an encoding select this one inside a subclass: pass initial text as
    /// a std::string.
    CTextStream(const char* className, XmlEncoding encoding);

    CStringBuffer m_buffer;
    XmlEncoding m_encoding;
};

}  // namespace KvXmlLib10
