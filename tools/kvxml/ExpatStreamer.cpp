// ExpatStreamer.cpp - XML text to events straight from expat, without a tree.
#include <expat.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

#include "TreeStreamer.h"

namespace kvxml_cli {

namespace {

constexpr char kSeparator = '\x01';
constexpr std::size_t kPiece = 1 << 20;

// "uri<separator>local" or "local".
void Split(const char* name, std::string_view& uri, std::string_view& local) {
    if (const char* cut = std::strchr(name, kSeparator)) {
        uri = std::string_view(name, static_cast<std::size_t>(cut - name));
        local = std::string_view(cut + 1);
    } else {
        uri = std::string_view();
        local = std::string_view(name);
    }
}

class ExpatStreamer {
public:
    explicit ExpatStreamer(XmlEvents& events) : m_events(events) {}

    static void XMLCALL OnStart(void* self, const XML_Char* name, const XML_Char** attributes) {
        static_cast<ExpatStreamer*>(self)->Start(name, attributes);
    }
    static void XMLCALL OnEnd(void* self, const XML_Char* /*name*/) {
        auto* streamer = static_cast<ExpatStreamer*>(self);
        streamer->PassText();
        streamer->m_events.End();
    }
    static void XMLCALL OnNamespace(void* self, const XML_Char* prefix, const XML_Char* uri) {
        auto* streamer = static_cast<ExpatStreamer*>(self);
        // Default declarations and undeclarations are left to the writer.
        if (!streamer->m_rootStarted && prefix && uri && *uri) streamer->m_events.Namespace(prefix, uri);
    }
    static void XMLCALL OnText(void* self, const XML_Char* text, int length) {
        static_cast<ExpatStreamer*>(self)->m_text.append(text, static_cast<std::size_t>(length));
    }

private:
    void PassText() {
        if (m_text.empty()) return;
        m_events.Text(m_text);
        m_text.clear();
    }

    void Start(const char* name, const char** attributes) {
        PassText();
        m_rootStarted = true;
        std::string_view uri;
        std::string_view local;
        Split(name, uri, local);
        m_events.Start(local, uri);
        for (; *attributes; attributes += 2) {
            Split(attributes[0], uri, local);
            m_events.Attribute(local, uri, attributes[1]);
        }
        m_events.EndStartTag();
    }

    XmlEvents& m_events;
    std::string m_text;
    bool m_rootStarted = false;
};

// Hands the events on as the visitor's own strings.
class CopyingEvents : public XmlEvents {
public:
    explicit CopyingEvents(TreeVisitor& visitor) : m_visitor(visitor) {}
    void Namespace(std::string_view prefix, std::string_view uri) override {
        m_visitor.Namespace(std::string(prefix), std::string(uri));
    }
    void Start(std::string_view localName, std::string_view namespaceUri) override {
        m_visitor.Start(m_local.assign(localName), m_uri.assign(namespaceUri));
    }
    void Attribute(std::string_view localName, std::string_view namespaceUri, std::string_view value) override {
        m_visitor.Attribute(m_local.assign(localName), m_uri.assign(namespaceUri), m_value.assign(value));
    }
    void Text(const std::string& text) override { m_visitor.Text(text); }
    void End() override {
        m_visitor.End();
        m_visitor.Completed();
    }

private:
    TreeVisitor& m_visitor;
    std::string m_uri;
    std::string m_local;
    std::string m_value;
};

void Feed(XML_Parser parser, const Input& input, const char* data, std::size_t size, bool last) {
    if (XML_Parse(parser, data, static_cast<int>(size), last) != XML_STATUS_OK) {
        throw std::runtime_error(input.Name() + ": " + XML_ErrorString(XML_GetErrorCode(parser)) + " at line " +
                                 std::to_string(XML_GetCurrentLineNumber(parser)));
    }
}

}  // namespace

void StreamXmlText(Input& input, XmlEvents& events) {
    XML_Parser parser = XML_ParserCreateNS(nullptr, kSeparator);
    if (!parser) throw std::runtime_error(input.Name() + ": out of memory");
    ExpatStreamer streamer(events);
    XML_SetUserData(parser, &streamer);
    XML_SetElementHandler(parser, &ExpatStreamer::OnStart, &ExpatStreamer::OnEnd);
    XML_SetCharacterDataHandler(parser, &ExpatStreamer::OnText);
    XML_SetStartNamespaceDeclHandler(parser, &ExpatStreamer::OnNamespace);
    try {
        const unsigned char* data = nullptr;
        std::size_t size = 0;
        while (input.Next(data, size)) {
            for (std::size_t done = 0; done < size;) {
                const std::size_t piece = std::min(size - done, kPiece);
                Feed(parser, input, reinterpret_cast<const char*>(data) + done, piece, false);
                done += piece;
            }
        }
        Feed(parser, input, nullptr, 0, true);
    } catch (...) {
        XML_ParserFree(parser);
        throw;
    }
    XML_ParserFree(parser);
}

void StreamXmlText(Input& input, TreeVisitor& visitor) {
    CopyingEvents events(visitor);
    StreamXmlText(input, events);
}

}  // namespace kvxml_cli
