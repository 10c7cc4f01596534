// FastInfosetWriter.h - the writer that produces a Fast Infoset document into a CBinaryStream.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "kvxml/core/FInfoDecl.h"
#include "kvxml/fastinfoset/FastInfosetContext.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/output/BinaryStream.h"
#include "kvxml/output/XmlWriter.h"

namespace KvXmlLib10 {

namespace detail {
class FIEventWriter;
}

/// Receives the same calls as the text writer and writes binary XML
/// (ITU-T X.891): repeated names and short values become table indexes,
/// typed values take the encodings the context chooses for their ItemType.
/// The context and stream are not owned and must outlive the writer. Call
/// WriteStartDocument first and WriteEndDocument after the root's end;
/// the bytes are complete in the stream after Close().
class KVXML_API CFastInfosetWriter : public CXmlWriter {
public:
    CFastInfosetWriter(const CFastInfosetContext& context, CBinaryStream& stream);
    ~CFastInfosetWriter() override;

    /// Hands the remaining bytes to the stream, then throws "An Element has
    /// not been closed." if an element is still open.
    void Close() override;

    /// The chosen declaration (none for FInfoDecl_None), the header and,
    /// with a generated vocabulary, its URI.
    void WriteStartDocument(FInfoDecl decl);
    /// The document's final terminator.
    void WriteEndDocument();

    /// Comments, processing instructions and inline schemas are not kept in
    /// Fast Infoset output.
    void WriteComment(const std::string& text) override;
    void WritePI(const std::string& text) override;
    void WriteInlineSchema(const std::string& text) override;
    void WriteStartElement(const std::string& localName, const std::string& namespaceUri) override;
    /// Empty text writes nothing.
    void WriteString(const std::string& text, ItemType type) override;
    void WriteEndElement() override;
    /// The three attribute operations throw CKvException "Attributes must be
    /// added before elements" once the element has content.
    void WriteAttributeString(const std::string& localName, const std::string& namespaceUri,
                              const std::string& value, ItemType type) override;
    void WriteAttributeType(const std::string& typeNamespaceUri, const std::string& typeLocalName,
                            ItemType type) override;
    void WriteAttributeNil() override;

private:
    friend class detail::FIEventWriter;
    struct State;

    /// Writes the pending element header with its attributes and ends the
    /// start tag.
    void WriteElement();
    void CheckStartTagOpen() const;
    /// Pushes the element's context and takes its namespace decisions; the
    /// header waits for the attributes.
    void OpenElement(std::string_view localName, std::string_view namespaceUri);

    std::unique_ptr<State> m_state;
};

}  // namespace KvXmlLib10
