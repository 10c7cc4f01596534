// XmlTextWriter.cpp - the exact characters of XML text output: tags, escaping, line ends.
#include "kvxml/output/XmlTextWriter.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <typeinfo>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "output/detail/NamespaceDecisions.h"
#include "output/detail/XmlNames.h"

namespace KvXmlLib10 {

namespace {

// Drained-stream threshold: checked after every start, end, text and attribute.
constexpr size_t kFlushThreshold = 4096;

// What the escaper does with a byte. Copy bytes are gathered into runs.
enum ByteAction : uint8_t { kCopy, kEnd, kLineFeed, kDrop, kQuote, kAmp, kLess, kGreater, kControl };

constexpr std::array<uint8_t, 256> MakeEscapeTable(bool attribute) {
    std::array<uint8_t, 256> table{};  // all kCopy: TAB, apostrophe and high bytes pass
    // No XML 1.0 document can hold these, escaped or not.
    for (int c = 0x01; c < 0x20; ++c) table[c] = kControl;
    table['\t'] = kCopy;
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

constexpr char kCdataOpen[] = "<![CDATA[";
constexpr size_t kCdataOpenLength = sizeof kCdataOpen - 1;

[[noreturn]] void ThrowControl(unsigned char c, const char* where, const std::string& name) {
    if (name.empty()) throw CKvException(FormatString("Invalid character [0x%02X] in %s", c, where));
    throw CKvException(FormatString("Invalid character [0x%02X] in %s [%s]", c, where, name.c_str()));
}

void Put(std::string& out, const char* text, size_t length) { out.append(text, length); }
void Put(CTextStream& out, const char* text, size_t length) { out.Append(text, length); }
void Put(std::string& out, char c) { out.push_back(c); }
void Put(CTextStream& out, char c) { out.Append(c); }

// Appends the text up to its NUL escaped for element content or, with
// isAttribute, for a double-quoted attribute value. Stops at a byte no XML
// text may hold and returns where it is; null when the whole text was written.
template <typename Out>
const unsigned char* EscapeInto(Out& out, const char* text, bool isAttribute, EOLType eolType) {
    const std::array<uint8_t, 256>& table = isAttribute ? kAttributeTable : kTextTable;
    const auto* at = reinterpret_cast<const unsigned char*>(text);
    for (;;) {
        const unsigned char* run = at;
        while (table[*at] == kCopy) ++at;
        if (at != run) Put(out, reinterpret_cast<const char*>(run), static_cast<size_t>(at - run));
        switch (table[*at]) {
            case kEnd:
                return nullptr;
            case kLineFeed:
                if (isAttribute) {
                    Put(out, "&#xA;", 5);
                } else if (eolType == EOL_CRLF) {
                    Put(out, "\r\n", 2);
                } else if (eolType == EOL_LF) {
                    Put(out, '\n');
                } else {
                    throw CKvException("Invalid EOL type.");
                }
                break;
            case kQuote:
                Put(out, "&quot;", 6);
                break;
            case kAmp:
                Put(out, "&amp;", 5);
                break;
            case kLess:
                Put(out, "&lt;", 4);
                break;
            case kGreater:
                Put(out, "&gt;", 4);
                break;
            case kControl:
                return at;
            default:  // kDrop
                break;
        }
        ++at;
    }
}

constexpr char kTabs[] = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";
constexpr size_t kTabCount = sizeof kTabs - 1;

}  // namespace

CXmlTextWriter::CXmlTextWriter(CTextStream& stream)
    : CXmlWriter("CXmlTextWriter"),
      m_eol("\n"),
      m_eolType(EOL_LF),
      m_format(true),
      m_stream(stream),
      m_streamFlushes(typeid(stream) != typeid(CTextStream)) {}

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
    if (m_streamFlushes && m_stream.GetLength() >= kFlushThreshold) m_stream.Flush();
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

void CXmlTextWriter::AppendEscaped(const char* text, bool isAttribute, size_t mark, const char* where,
                                   const std::string& name) {
    // Escaped straight into the stream in one pass; a byte no XML text may
    // hold takes back everything written since `mark`, so a value that
    // cannot be written leaves no part of it behind.
    if (const unsigned char* bad = EscapeInto(m_stream, text, isAttribute, m_eolType)) {
        m_stream.Truncate(mark);
        ThrowControl(*bad, where, name);
    }
}

void CXmlTextWriter::EscapeWithSections(const std::string& text, const std::string& name) {
    // Complete sections stay as they are (text read with its CDATA kept
    // writes back unchanged); whatever lies outside them, an unterminated
    // section included, is escaped so no value can close the element.
    static const char* const where = "the text of the element";
    const size_t length = std::char_traits<char>::length(text.c_str());
    m_scratch.clear();
    std::string outside;
    size_t at = 0;
    while (at < length) {
        if (text.compare(at, kCdataOpenLength, kCdataOpen) == 0) {
            const size_t close = text.find("]]>", at + kCdataOpenLength);
            if (close != std::string::npos && close < length) {
                const size_t end = close + 3;
                for (size_t i = at; i < end; ++i) {
                    const auto c = static_cast<unsigned char>(text[i]);
                    if (kTextTable[c] == kControl) ThrowControl(c, where, name);
                }
                m_scratch.append(text, at, end - at);
                at = end;
                continue;
            }
        }
        size_t next = text.find(kCdataOpen, at + 1);
        if (next == std::string::npos || next > length) next = length;
        outside.assign(text, at, next - at);
        if (const unsigned char* bad = EscapeInto(m_scratch, outside.c_str(), false, m_eolType)) {
            ThrowControl(*bad, where, name);
        }
        at = next;
    }
}

const std::string& CXmlTextWriter::CurrentElementName() const {
    static const std::string none;
    const CXmlWriterContext* context = GetCurrentContext();
    return context ? context->GetLocalName() : none;
}

void CXmlTextWriter::PadAndAppend(const char* text, bool isAttribute) {
    if (!text) return;
    AppendEscaped(text, isAttribute, m_stream.GetLength(),
                  isAttribute ? "an attribute of the element" : "the text of the element", CurrentElementName());
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
    static const std::string none;
    const size_t mark = m_stream.GetLength();
    m_stream.Append("<!--", 4);
    AppendEscaped(text.c_str(), false, mark, "a comment", none);
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

void CXmlTextWriter::AppendDeclaration(const std::string& prefix, const std::string& uri) {
    if (prefix.empty()) {
        m_stream.Append(" xmlns=\"", 8);
    } else {
        m_stream.Append(" xmlns:", 7);
        m_stream.Append(prefix);
        m_stream.Append("=\"", 2);
    }
    m_stream.Append(uri);  // namespace names are written unescaped
    m_stream.Append('"');
}

void CXmlTextWriter::WriteStartElement(const std::string& localName, const std::string& namespaceUri) {
    detail::CheckXmlName(localName, "element");
    CloseParentElm();
    const bool isRoot = GetCurrentContext() == nullptr;
    CXmlWriterContext* context = PushContext(localName, namespaceUri);
    if (m_format) AppendIndent(context->GetDepth());
    m_stream.Append('<');
    const detail::ElementStart start = detail::NamespaceDecisions::StartElement(*context, GetUndeclareDefaultNamespace());
    if (start.prefix) {
        m_stream.Append(*start.prefix);
        m_stream.Append(':');
    }
    m_stream.Append(localName);
    detail::NamespaceDecisions::Declarations(
        *context, start, isRoot ? &GetDocumentDefaultNamespace() : nullptr, isRoot ? &GetPendingNamespaces() : nullptr,
        [this](const std::string& prefix, const std::string& uri) { AppendDeclaration(prefix, uri); });
    FlushCheck();
}

void CXmlTextWriter::WriteString(const std::string& text, ItemType /*type*/) {
    if (text.empty()) return;
    CXmlWriterContext* context = GetCurrentContext();
    const std::string& name = CurrentElementName();
    const bool sections = text.size() >= kCdataOpenLength && text[0] == '<' &&
                          std::memcmp(text.data(), kCdataOpen, kCdataOpenLength) == 0;
    if (sections) EscapeWithSections(text, name);
    const size_t mark = m_stream.GetLength();
    const bool closesTag = context && context->IsStartTagOpen();
    if (closesTag) m_stream.Append('>');
    if (sections) {
        m_stream.Append(m_scratch);
    } else {
        AppendEscaped(text.c_str(), false, mark, "the text of the element", name);
    }
    if (closesTag) context->SetStartTagOpen(false);
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
        if (const std::string* prefix = detail::NamespaceDecisions::EndElement(*context)) {
            m_stream.Append(*prefix);
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
    detail::CheckXmlName(localName, "attribute");
    const size_t mark = m_stream.GetLength();
    const detail::ResolvedPrefix resolved = detail::NamespaceDecisions::Attribute(*GetCurrentContext(), namespaceUri);
    if (resolved.declare) {
        // The declaration precedes the attribute inside the same tag.
        AppendDeclaration(*resolved.prefix, namespaceUri);
    }
    m_stream.Append(' ');
    if (resolved.prefix) {
        m_stream.Append(*resolved.prefix);
        m_stream.Append(':');
    }
    m_stream.Append(localName);
    m_stream.Append("=\"", 2);
    AppendEscaped(value.c_str(), true, mark, "the attribute", localName);
    m_stream.Append('"');
    FlushCheck();
}

void CXmlTextWriter::WriteAttributeType(const std::string& typeNamespaceUri,
                                        const std::string& typeLocalName, ItemType type) {
    CheckStartTagOpen();
    std::string value;
    const detail::ResolvedPrefix resolved =
        detail::NamespaceDecisions::TypeValue(*GetCurrentContext(), typeNamespaceUri);
    if (resolved.prefix) {
        if (resolved.declare) {
            AppendDeclaration(*resolved.prefix, typeNamespaceUri);
            m_stream.Append(' ');  // the attribute adds its own space, so two
        }
        value.reserve(resolved.prefix->size() + 1 + typeLocalName.size());
        value.append(*resolved.prefix).append(1, ':').append(typeLocalName);
    } else {
        value = typeLocalName;
    }
    static const std::string name = "type";
    WriteAttributeString(name, detail::XsiNamespace(), value, type);
}

void CXmlTextWriter::WriteAttributeNil() {
    CheckStartTagOpen();
    static const std::string name = "nil";
    static const std::string value = "true";
    WriteAttributeString(name, detail::XsiNamespace(), value, boolean);
}

}  // namespace KvXmlLib10
