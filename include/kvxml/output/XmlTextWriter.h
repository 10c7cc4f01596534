// XmlTextWriter.h - the writer that produces XML text into a CTextStream.
#pragma once

#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/output/OutputEnums.h"
#include "kvxml/output/TextStream.h"
#include "kvxml/output/XmlWriter.h"

namespace KvXmlLib10 {

/// Writes indented (by default) XML text with LF line ends (by default).
/// The stream is not owned and must outlive the writer. A stream that
/// drains to a file is flushed whenever 4096 or more characters are held.
class KVXML_API CXmlTextWriter : public CXmlWriter {
public:
    explicit CXmlTextWriter(CTextStream& stream);
    ~CXmlTextWriter() override;

    /// Indentation and line ends between elements.
    void SetFormat(bool format);
    bool GetFormat() const;
    /// Throws CKvException "Invalid EOL type." for anything but EOL_CRLF or
    /// EOL_LF, keeping the previous setting.
    void SetEOLType(EOLType type);
    EOLType GetEOLType() const;

    /// Empties the stream.
    void Open() override;
    /// Closes the stream (so text written so far is flushed), then throws
    /// "An Element has not been closed." if an element is still open.
    void Close() override;

    /// The XML declaration with the stream's encoding, then a line end.
    void WriteStartDocument();
    /// Text written as it is, then a line end. Throws CKvException once an
    /// element has been started.
    void WriteHeaderDirective(const std::string& text);
    /// Text written as it is (markup made elsewhere), then a line end if
    /// formatting.
    void WriteRawElement(const std::string& text);
    /// Counts a child of the open element and ends its start tag if needed.
    void CloseParentElm();
    /// Appends text (up to its first NUL) escaped for element content or,
    /// with isAttribute, for a double-quoted attribute value.
    void PadAndAppend(const char* text, bool isAttribute);

    void WriteComment(const std::string& text) override;
    /// `text` is the whole instruction, "<?" to "?>".
    void WritePI(const std::string& text) override;
    void WriteInlineSchema(const std::string& text) override;
    void WriteStartElement(const std::string& localName, const std::string& namespaceUri) override;
    /// Empty text writes nothing. In text starting with "<![CDATA[" the
    /// complete CDATA sections are written as they are and the rest is
    /// escaped. Control characters other than TAB, LF and CR throw
    /// CKvException before any of the text is written (here, in attribute
    /// values and in comments); so do names that are not XML names.
    void WriteString(const std::string& text, ItemType type) override;
    void WriteEndElement() override;
    /// The three attribute operations throw CKvException "Attributes must be
    /// added before elements" once the start tag has been ended.
    void WriteAttributeString(const std::string& localName, const std::string& namespaceUri,
                              const std::string& value, ItemType type) override;
    void WriteAttributeType(const std::string& typeNamespaceUri, const std::string& typeLocalName,
                            ItemType type) override;
    void WriteAttributeNil() override;

private:
    /// Appends the text (up to its NUL) escaped; on failure takes the
    /// stream back to `mark`.
    void AppendEscaped(const char* text, bool isAttribute, size_t mark, const char* where,
                       const std::string& name);
    /// Escapes the text into the scratch text, keeping its complete CDATA
    /// sections.
    void EscapeWithSections(const std::string& text, const std::string& name);
    const std::string& CurrentElementName() const;
    void FlushCheck();
    void AppendEol() { m_stream.Append(m_eol); }
    void AppendIndent(uint32_t depth);
    void CheckStartTagOpen() const;
    /// " xmlns:prefix=\"uri\"", or " xmlns=\"uri\"" for prefix "".
    void AppendDeclaration(const std::string& prefix, const std::string& uri);

    std::string m_eol;
    EOLType m_eolType;
    bool m_format;
    CTextStream& m_stream;
    // False for a plain memory stream, whose Flush does nothing: then the
    // flush check need not call it.
    bool m_streamFlushes;
    std::string m_scratch;  // reused for texts with CDATA sections
};

}  // namespace KvXmlLib10
