// FIEventWriter.h - a Fast Infoset writer fed by a parser's events.
//
// The converter's path from XML text: a parser reports names it has
// already checked and a whole start tag at once, so the writer need not
// check names again nor copy attributes while the header waits for them;
// it takes views of the parser's text. Namespaces are decided exactly as
// for CFastInfosetWriter, whose state it shares.
#pragma once

#include <string>
#include <string_view>

#include "kvxml/fastinfoset/FastInfosetWriter.h"

namespace KvXmlLib10::detail {

class KVXML_API FIEventWriter : public CFastInfosetWriter {
public:
    using CFastInfosetWriter::CFastInfosetWriter;

    /// `localName` must be a valid XML name.
    void StartElement(std::string_view localName, std::string_view namespaceUri);
    /// Follows StartElement; the views must stay valid until EndStartTag.
    void Attribute(std::string_view localName, std::string_view namespaceUri, std::string_view value, ItemType type);
    /// Writes the element's header once its attributes are known.
    void EndStartTag() { WriteElement(); }
    /// Empty text writes nothing.
    void Characters(std::string_view text, ItemType type);

private:
    std::string m_attributeUri;
};

}  // namespace KvXmlLib10::detail
