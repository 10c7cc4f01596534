// ExpatStreamer.cpp - XML text to visitor events straight from expat, without a tree.
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

class ExpatStreamer {
public:
    explicit ExpatStreamer(TreeVisitor& visitor) : m_visitor(visitor) {}

    static void XMLCALL OnStart(void* self, const XML_Char* name, const XML_Char** attributes) {
        static_cast<ExpatStreamer*>(self)->Start(name, attributes);
    }
    static void XMLCALL OnEnd(void* self, const XML_Char* /*name*/) { static_cast<ExpatStreamer*>(self)->End(); }
    static void XMLCALL OnText(void* self, const XML_Char* text, int length) {
        static_cast<ExpatStreamer*>(self)->m_text.append(text, static_cast<std::size_t>(length));
    }

private:
    // "uri<separator>local" or "local".
    static void Split(const char* name, std::string& uri, std::string& local) {
        if (const char* cut = std::strchr(name, kSeparator)) {
            uri.assign(name, cut);
            local.assign(cut + 1);
        } else {
            uri.clear();
            local.assign(name);
        }
    }

    void PassText() {
        if (m_text.empty()) return;
        m_visitor.Text(m_text);
        m_text.clear();
    }

    void Start(const char* name, const char** attributes) {
        PassText();
        Split(name, m_uri, m_local);
        m_visitor.Start(m_local, m_uri);
        for (; *attributes; attributes += 2) {
            Split(attributes[0], m_uri, m_local);
            m_value.assign(attributes[1]);
            m_visitor.Attribute(m_local, m_uri, m_value);
        }
    }

    void End() {
        PassText();
        m_visitor.End();
        m_visitor.Completed();
    }

    TreeVisitor& m_visitor;
    std::string m_text;
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

void StreamXmlText(Input& input, TreeVisitor& visitor) {
    XML_Parser parser = XML_ParserCreateNS(nullptr, kSeparator);
    if (!parser) throw std::runtime_error(input.Name() + ": out of memory");
    ExpatStreamer streamer(visitor);
    XML_SetUserData(parser, &streamer);
    XML_SetElementHandler(parser, &ExpatStreamer::OnStart, &ExpatStreamer::OnEnd);
    XML_SetCharacterDataHandler(parser, &ExpatStreamer::OnText);
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

}  // namespace kvxml_cli
