// TreeStreamer.cpp - completion callbacks turned into start, text and end events.
#include "TreeStreamer.h"

#include <cstdint>
#include <stdexcept>

#include "kvxml/foundation/KvException.h"
#include "kvxml/output/XmlWriter.h"

namespace kvxml_cli {

using namespace KvXmlLib10;

namespace {

struct Started {
    const CXmlElement* element;
    std::size_t textWritten;  // how much of its merged text has been passed on
};

class Streamer {
public:
    explicit Streamer(TreeVisitor& visitor) : m_visitor(visitor) {}

    // The document's callback has no user data; one conversion runs at a time.
    static Streamer* s_active;
    static bool OnComplete(CXmlElement* element) { return s_active->Complete(*element); }

private:
    void StartElement(const CXmlElement& element) {
        if (m_started.empty()) {
            // Fast Infoset may bind any prefix to the XML namespace, which
            // XML text never declares: "xml" stays its only prefix.
            for (const auto& [prefix, uri] : element.GetOwnerDocument()->GetNamespaceAliases())
                if (!prefix.empty() && !uri.empty() && uri != CXmlWriter::XML_NAMESPACE)
                    m_visitor.Namespace(prefix, uri);
        }
        m_visitor.Start(element.GetLocalName(), element.GetNamespaceURI());
        for (const CXmlAttribute* attribute : element.GetAttributes())
            m_visitor.Attribute(attribute->GetLocalName(), attribute->GetNamespaceURI(), attribute->GetValue());
    }

    void PassText(Started& started) {
        const std::string& text = started.element->GetText();
        if (text.size() > started.textWritten) {
            m_visitor.Text(text.substr(started.textWritten));
            started.textWritten = text.size();
        }
    }

    bool Complete(const CXmlElement& element) {
        // Earlier siblings were deleted, so the open path is the chain of
        // first children from the root down to this element.
        m_path.clear();
        const CXmlElement* at = element.GetOwnerDocument()->GetDocumentElement();
        while (at && at != &element) {
            m_path.push_back(at);
            at = at->GetFirstElement();
        }
        if (!at) throw std::logic_error("element not on the open path");
        for (std::size_t i = m_started.size(); i < m_path.size(); ++i) {
            if (i > 0) PassText(m_started[i - 1]);
            StartElement(*m_path[i]);
            m_started.push_back({m_path[i], 0});
        }
        if (m_started.size() > m_path.size()) {  // it had children: already started
            PassText(m_started.back());
            m_started.pop_back();
        } else {
            if (!m_started.empty()) PassText(m_started.back());
            StartElement(element);
            if (!element.GetText().empty()) m_visitor.Text(element.GetText());
        }
        m_visitor.End();
        m_visitor.Completed();
        return true;
    }

    TreeVisitor& m_visitor;
    std::vector<Started> m_started;
    std::vector<const CXmlElement*> m_path;
};

Streamer* Streamer::s_active = nullptr;

}  // namespace

void StreamDocument(Input& input, TreeVisitor& visitor) {
    Streamer streamer(visitor);
    Streamer::s_active = &streamer;
    // The Fast Infoset reader works on the whole document.
    const unsigned char* data = nullptr;
    std::size_t size = 0;
    input.ReadAll(data, size);
    if (size > UINT32_MAX) throw std::runtime_error(input.Name() + ": documents over 4 GiB are not supported");
    CXmlDocument document(&Streamer::OnComplete);
    try {
        document.LoadXmlStream(const_cast<unsigned char*>(data), static_cast<uint32_t>(size));
    } catch (const CKvException& error) {
        // XML text errors end with their line; Fast Infoset ones are fixed
        // texts, so the place comes from the document.
        const int64_t offset = document.GetErrorOffset();
        const std::string place = offset < 0 ? std::string() : "byte " + std::to_string(offset) + ": ";
        throw std::runtime_error(input.Name() + ": " + place + error.GetMessage());
    }
}

}  // namespace kvxml_cli
