// TreeStreamer.h - a document's elements in document order while it loads, in bounded memory.
//
// The document reports each element once it is complete and deletes it when
// told to, so at any moment the tree holds only the path from the root to
// the element being read (earlier siblings are gone). The streamer turns
// those completions back into start, text and end events: when an element
// completes, its ancestors that have not been started yet are started
// first, and text that arrived between children is passed on in place.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Input.h"
#include "kvxml/dom/XmlDocument.h"

namespace kvxml_cli {

/// The events of a document in order, whichever reader produced them.
class TreeVisitor {
public:
    virtual ~TreeVisitor() = default;
    /// A prefix the document binds, before the root's Start: from XML text
    /// those of the root element, from Fast Infoset those read by the time
    /// the root is passed on. Keeping them keeps QName values (xsi:type)
    /// valid.
    virtual void Namespace(const std::string& /*prefix*/, const std::string& /*uri*/) {}
    virtual void Start(const std::string& localName, const std::string& namespaceUri) = 0;
    /// Follows Start, before any text or child.
    virtual void Attribute(const std::string& localName, const std::string& namespaceUri, const std::string& value) = 0;
    /// A piece of character data; pieces may follow each other.
    virtual void Text(const std::string& text) = 0;
    virtual void End() = 0;
    /// After each completed element: a moment to drain output.
    virtual void Completed() {}
};

/// Loads the input (XML text or Fast Infoset) into a document that keeps
/// only the open path and visits every element. Throws std::runtime_error
/// naming the input.
void StreamDocument(Input& input, TreeVisitor& visitor);

/// The events of XML text as the parser reports them: views of its own
/// text, valid during the call only (attributes' until EndStartTag). Text
/// between two tags comes whole.
class XmlEvents {
public:
    virtual ~XmlEvents() = default;
    /// A prefix the root element declares, before its Start.
    virtual void Namespace(std::string_view /*prefix*/, std::string_view /*uri*/) {}
    virtual void Start(std::string_view localName, std::string_view namespaceUri) = 0;
    /// Follows Start; EndStartTag follows the last one.
    virtual void Attribute(std::string_view localName, std::string_view namespaceUri, std::string_view value) = 0;
    virtual void EndStartTag() {}
    virtual void Text(std::string_view text) = 0;
    virtual void End() = 0;
};

/// XML text straight through expat, in pieces, on a thread of its own when
/// the process may use two CPUs; the events arrive on the calling thread.
/// Throws std::runtime_error naming the input and the line.
void StreamXmlText(Input& input, XmlEvents& events);
/// The same, with strings of the visitor's own.
void StreamXmlText(Input& input, TreeVisitor& visitor);

}  // namespace kvxml_cli
