// XmlTextWriter.cpp - the exact characters of XML text output: tags, escaping, line ends.
#include "kvxml/output/XmlTextWriter.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

namespace {

const std::string& XsiNamespace() {
    static const std::string uri = "http://www.w3.org/2001/XMLSchema-instance";
    return uri;
}

// Drained-stream threshold: checked after every start, end, text and attribute.
constexpr size_t kFlushThreshold = 4096;

// What the escaper does with a byte. Copy bytes are gathered into runs.
enum ByteAction : uint8_t { kCopy, kEnd, kLineFeed, kDrop, kQuote, kAmp, kLess, kGreater };

constexpr std::array<uint8_t, 256> MakeEscapeTable(bool attribute) {
    std::array<uint8_t, 256> table{};  // all kCopy: TAB, apostrophe and high bytes pass
    table['\0'] = kEnd;
    table['\n'] = kLineFeed;
    table['\r'] = kDrop;  // carriage returns never survive
    table['&'] = kAmp;
    table['<'] = kLess;
    table['>'] = kGreater;
    if (attribute) table['"'] = kQuote;
    return table;
}

constexpr std::array<uint8_t, 256> kTextTable = MakeEscapeTable(false);
constexpr std::array<uint8_t, 256> kAttributeTable = MakeEscapeTable(true);

constexpr char kTabs[] = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";
constexpr size_t kTabCount = sizeof kTabs - 1;

}  // namespace

CXmlTextWriter::CXmlTextWriter(CTextStream& stream)
    : CXmlWriter("CXmlTextWriter"), m_eol("\n"), m_eolType(EOL_LF), m_format(true), m_stream(stream) {}

CXmlTextWriter::~CXmlTextWriter() = default;

void CXmlTextWriter::SetFormat(bool format) { m_format = format; }

bool CXmlTextWriter::GetFormat() const { return m_format; }

void CXmlTextWriter::SetEOLType(EOLType type) {
    switch (type) {
        case EOL_CRLF:
            m_eol = "\r\n";
            break;
        case EOL_LF:
            m_eol = "\n";
            break;
        default:
            throw CKvException("Invalid EOL type.");
    }
    m_eolType = type;
}

EOLType CXmlTextWriter::GetEOLType() const { return m_eolType; }

void CXmlTextWriter::Open() {
    CXmlWriter::Open();
    m_stream.Open();
}

void CXmlTextWriter::Close() {
    m_stream.Close();
    CXmlWriter::Close();
}

void CXmlTextWriter::FlushCheck() {
    if (m_stream.GetLength() >= kFlushThreshold) m_stream.Flush();
}

void CXmlTextWriter::AppendIndent(uint32_t depth) {
    while (depth > 0) {
        const size_t part = depth < kTabCount ? depth : kTabCount;
        m_stream.Append(kTabs, part);
        depth -= static_cast<uint32_t>(part);
    }
}

void CXmlTextWriter::CheckStartTagOpen() const {
    const CXmlWriterContext* context = GetCurrentContext();
    // With no element open there is no start tag to add to either.
    if (!context || !context->IsStartTagOpen()) {
        throw CKvException("Attributes must be added before elements");
    }
}

const std::string& CXmlTextWriter::ResolvePrefix(CXmlWriterContext& context, const std::string& uri,
                                                 bool& invented) {
    NamespaceMap& scope = context.GetNamespaceMap();
    auto found = scope.find(uri);
    if (found != scope.end()) {
        invented = false;
        return found->second;
    }
    invented = true;
    context.SetNamespaceMapValue(uri, GetUniquePrefix(scope));
    // The map may be a fresh copy now; its nodes stay put from here on.
    return context.GetNamespaceMap().find(uri)->second;
}

void CXmlTextWriter::PadAndAppend(const char* text, bool isAttribute) {
    if (!text) return;
    const std::array<uint8_t, 256>& table = isAttribute ? kAttributeTable : kTextTable;
    const auto* at = reinterpret_cast<const unsigned char*>(text);
    for (;;) {
        const unsigned char* run = at;
        while (table[*at] == kCopy) ++at;
        if (at != run) m_stream.Append(reinterpret_cast<const char*>(run), static_cast<size_t>(at - run));
        switch (table[*at]) {
            case kEnd:
                return;
            case kLineFeed:
                if (isAttribute) {
                    m_stream.Append("&#xA;", 5);
                } else if (m_eolType == EOL_CRLF) {
                    m_stream.Append("\r\n", 2);
                } else if (m_eolType == EOL_LF) {
                    m_stream.Append('\n');
                } else {
                    throw CKvException("Invalid EOL type.");
                }
                break;
            case kQuote:
                m_stream.Append("&quot;", 6);
                break;
            case kAmp:
                m_stream.Append("&amp;", 5);
                break;
            case kLess:
                m_stream.Append("&lt;", 4);
                break;
            case kGreater:
                m_stream.Append("&gt;", 4);
                break;
            default:  // kDrop
                break;
        }
        ++at;
    }
}

void CXmlTextWriter::WriteStartDocument() {
    m_stream.Append("<?xml version=\"1.0\"");
    switch (m_stream.GetEncoding()) {
        case Encoding_UTF8:
            m_stream.Append(" encoding=\"UTF-8\"");
            break;
        case Encoding_UTF16:
            m_stream.Append(" encoding=\"UTF-16\"");
            break;
        default:
            break;
    }
    m_stream.Append("?>");
    AppendEol();
    FlushCheck();
}

void CXmlTextWriter::WriteHeaderDirective(const std::string& text) {
    if (GetCurrentContext()) {
        throw CKvException("Headed directives must appear before an Element has been added.");
    }
    m_stream.Append(text);
    AppendEol();
    FlushCheck();
}

void CXmlTextWriter::WriteComment(const std::string& text) {
    m_stream.Append("<!--", 4);
    PadAndAppend(text.c_str(), false);
    m_stream.Append("-->", 3);
    AppendEol();
    FlushCheck();
}

void CXmlTextWriter::WritePI(const std::string& text) {
    m_stream.Append(text);
    AppendEol();
    AppendEol();
    FlushCheck();
}

void CXmlTextWriter::WriteInlineSchema(const std::string& text) {
    m_stream.Append(' ');
    AppendEol();
    m_stream.Append(text);
    AppendEol();
    FlushCheck();
}

void CXmlTextWriter::WriteRawElement(const std::string& text) {
    m_stream.Append(text);
    if (m_format) AppendEol();
}

void CXmlTextWriter::CloseParentElm() {
    CXmlWriterContext* context = GetCurrentContext();
    if (!context) return;
    context->IncrementChildCount();
    if (context->IsStartTagOpen()) {
        context->SetStartTagOpen(false);
        m_stream.Append('>');
        if (m_format) AppendEol();
    }
}

void CXmlTextWriter::WriteStartElement(const std::string& localName, const std::string& namespaceUri) {
    CloseParentElm();
    const bool isRoot = GetCurrentContext() == nullptr;
    CXmlWriterContext* context = PushContext(localName, namespaceUri);
    if (m_format) AppendIndent(context->GetDepth());
    m_stream.Append('<');
    if (namespaceUri.empty() || namespaceUri == context->GetDefaultNamespace()) {
        m_stream.Append(localName);
    } else {
        bool invented = false;
        const std::string& prefix = ResolvePrefix(*context, namespaceUri, invented);
        m_stream.Append(prefix);
        m_stream.Append(':');
        m_stream.Append(localName);
        if (invented) {
            m_stream.Append(" xmlns:", 7);
            m_stream.Append(prefix);
            m_stream.Append("=\"", 2);
            m_stream.Append(namespaceUri);
            m_stream.Append('"');
        }
    }
    if (isRoot) {
        const std::string& defaultNamespace = GetDocumentDefaultNamespace();
        if (!defaultNamespace.empty()) {
            m_stream.Append(" xmlns=\"", 8);
            m_stream.Append(defaultNamespace);
            m_stream.Append('"');
        }
        for (const auto& entry : GetPendingNamespaces()) {
            if (entry.first == XML_NAMESPACE) continue;
            m_stream.Append(" xmlns:", 7);
            m_stream.Append(entry.second);
            m_stream.Append("=\"", 2);
            m_stream.Append(entry.first);
            m_stream.Append('"');
        }
    }
    FlushCheck();
}

void CXmlTextWriter::WriteString(const std::string& text, ItemType /*type*/) {
    if (text.empty()) return;
    CXmlWriterContext* context = GetCurrentContext();
    if (context && context->IsStartTagOpen()) {
        m_stream.Append('>');
        context->SetStartTagOpen(false);
    }
    if (text.compare(0, 9, "<![CDATA[") == 0) {
        m_stream.Append(text);
    } else {
        PadAndAppend(text.c_str(), false);
    }
    FlushCheck();
}

void CXmlTextWriter::WriteEndElement() {
    CXmlWriterContext* context = GetCurrentContext();
    if (!context) return;
    if (context->IsStartTagOpen()) {
        m_stream.Append("/>", 2);
    } else {
        if (m_format && context->GetChildCount() != 0) AppendIndent(context->GetDepth());
        m_stream.Append("</", 2);
        const std::string& uri = context->GetNamespaceUri();
        if (!uri.empty() && uri != context->GetDefaultNamespace()) {
            m_stream.Append(context->GetNamespaceMapValue(uri));
            m_stream.Append(':');
        }
        m_stream.Append(context->GetLocalName());
        m_stream.Append('>');
    }
    if (m_format) AppendEol();
    FlushCheck();
    PopContext();
}

void CXmlTextWriter::WriteAttributeString(const std::string& localName, const std::string& namespaceUri,
                                          const std::string& value, ItemType /*type*/) {
    CheckStartTagOpen();
    CXmlWriterContext& context = *GetCurrentContext();
    m_stream.Append(' ');
    if (!namespaceUri.empty()) {
        // Attributes never take the default namespace: always a prefix.
        bool invented = false;
        const std::string& prefix = ResolvePrefix(context, namespaceUri, invented);
        if (invented) {
            m_stream.Append("xmlns:", 6);
            m_stream.Append(prefix);
            m_stream.Append("=\"", 2);
            m_stream.Append(namespaceUri);
            m_stream.Append("\" ", 2);
        }
        m_stream.Append(prefix);
        m_stream.Append(':');
    }
    m_stream.Append(localName);
    m_stream.Append("=\"", 2);
    PadAndAppend(value.c_str(), true);
    m_stream.Append('"');
    FlushCheck();
}

void CXmlTextWriter::WriteAttributeType(const std::string& typeNamespaceUri,
                                        const std::string& typeLocalName, ItemType type) {
    CheckStartTagOpen();
    CXmlWriterContext& context = *GetCurrentContext();
    std::string value;
    if (!typeNamespaceUri.empty() && typeNamespaceUri != context.GetDefaultNamespace()) {
        bool invented = false;
        const std::string& prefix = ResolvePrefix(context, typeNamespaceUri, invented);
        if (invented) {
            // Leading and trailing space: the attribute adds its own, so two.
            m_stream.Append(" xmlns:", 7);
            m_stream.Append(prefix);
            m_stream.Append("=\"", 2);
            m_stream.Append(typeNamespaceUri);
            m_stream.Append("\" ", 2);
        }
        value.reserve(prefix.size() + 1 + typeLocalName.size());
        value.append(prefix).append(1, ':').append(typeLocalName);
    } else {
        value = typeLocalName;
    }
    static const std::string name = "type";
    WriteAttributeString(name, XsiNamespace(), value, type);
}

void CXmlTextWriter::WriteAttributeNil() {
    CheckStartTagOpen();
    static const std::string name = "nil";
    static const std::string value = "true";
    WriteAttributeString(name, XsiNamespace(), value, boolean);
}

}  // namespace KvXmlLib10
