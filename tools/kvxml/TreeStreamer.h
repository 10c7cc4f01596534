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
#include <vector>

#include "Input.h"
#include "kvxml/dom/XmlDocument.h"

namespace kvxml_cli {

class TreeVisitor {
public:
    virtual ~TreeVisitor() = default;
    /// Name and attributes are complete; the text may not be.
    virtual void Start(const KvXmlLib10::CXmlElement& element) = 0;
    virtual void Text(const std::string& text) = 0;
    virtual void End() = 0;
    /// After each completed element: a moment to drain output.
    virtual void Completed() {}
};

/// Loads the input (XML text or Fast Infoset) and visits every element.
/// Throws what the document throws.
void StreamDocument(const Input& input, TreeVisitor& visitor);

}  // namespace kvxml_cli
