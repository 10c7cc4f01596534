// ExpatReader.cpp - expat handlers building a CXmlDocument, and the chunked feed.
//
// expat is fed in pieces rather than in one call: given the whole input at
// once it would first copy all of it into its own buffer. A token larger than
// a piece (a huge start tag) makes expat rescan it on every call, so the piece
// doubles whenever a call produced no event, keeping that rescanning linear.
#include "dom/detail/ExpatReader.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string_view>

#include "kvxml/core/SerializationContext.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

namespace {

constexpr char kSeparator = '|';
constexpr std::size_t kMaxChunkSize = std::size_t{1} << 30;  // XML_Parse takes an int

constexpr std::string_view kCDataOpen = "<![CDATA[";
constexpr std::string_view kCDataClose = "]]>";

}  // namespace

CExpatReader::CExpatReader(CXmlDocument& document) : m_builder(document), m_names(m_builder.Names()) {}

CExpatReader::~CExpatReader() { Cleanup(); }

void CExpatReader::Cleanup() { m_local.reset(); }

void CExpatReader::CreateParser() {
    m_local = std::make_unique<detail::LocalText>();
    XML_Parser parser = m_builder.GetSchemaType() == SchemaType_NoNamespaces
                            ? XML_ParserCreate(nullptr)
                            : XML_ParserCreateNS(nullptr, kSeparator);
    if (!parser) throw std::bad_alloc();
    m_parser.reset(parser);
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, FnStartElement, FnEndElement);
    XML_SetNamespaceDeclHandler(parser, FnStartNamespace, FnEndNamespace);
    XML_SetCharacterDataHandler(parser, FnText);
    if (!m_builder.Context().GetStripCDATA()) {
        XML_SetCdataSectionHandler(parser, FnStartCDATA, FnEndCDATA);
    }
    // Only the DTD pays for the count: documents without one never call it.
    m_entityLimit = CXmlDocument::GetMaxEntityDeclarations();
    if (m_entityLimit != 0) XML_SetEntityDeclHandler(parser, FnEntityDecl);
}

void CExpatReader::Parse(bool isFinal) {
    if (!m_parser) CreateParser();
    XML_Parser parser = m_parser.get();
    const char* input = reinterpret_cast<const char*>(m_builder.Input());
    const std::size_t length = m_builder.InputLength();
    static const char kNothing = '\0';
    if (!input) input = &kNothing;

    std::size_t done = 0;
    std::size_t chunk = kChunkSize;
    for (;;) {
        const std::size_t piece = std::min(chunk, length - done);
        const bool last = done + piece == length;
        const uint64_t eventsBefore = m_events;
        const XML_Status status =
            XML_Parse(parser, input + done, static_cast<int>(piece), last && isFinal ? XML_TRUE : XML_FALSE);
        if (m_error) {
            // A handler failed and stopped the parser; its exception wins
            // over expat's "parsing aborted".
            std::exception_ptr error = m_error;
            FlushText();
            Cleanup();
            m_parser.reset();
            std::rethrow_exception(error);
        }
        if (status == XML_STATUS_ERROR) {
            const XML_LChar* text = XML_ErrorString(XML_GetErrorCode(parser));
            const XML_Size line = XML_GetCurrentLineNumber(parser);
            const std::string message = FormatString("%s at line %d", text ? text : "",
                                                     static_cast<int>(std::min<XML_Size>(line, INT_MAX)));
            FlushText();
            Cleanup();
            m_parser.reset();
            throw CKvException(message);
        }
        done += piece;
        if (last) break;
        chunk = m_events == eventsBefore ? std::min(chunk * 2, kMaxChunkSize) : kChunkSize;
    }
    FlushText();
    if (isFinal) m_parser.reset();
}

template <class Action>
void CExpatReader::Dispatch(void* userData, Action&& action) noexcept {
    auto* self = static_cast<CExpatReader*>(userData);
    // expat may still deliver a few events after a stop; they are ignored.
    if (self->m_error) return;
    ++self->m_events;
    try {
        action(*self);
    } catch (...) {
        self->m_error = std::current_exception();
        XML_StopParser(self->m_parser.get(), XML_FALSE);
    }
}

void XMLCALL CExpatReader::FnStartElement(void* userData, const char* name, const char** atts) {
    Dispatch(userData, [name, atts](CExpatReader& self) { self.StartElement(name, atts); });
}

void XMLCALL CExpatReader::FnEndElement(void* userData, const char*) {
    Dispatch(userData, [](CExpatReader& self) { self.EndElement(); });
}

void XMLCALL CExpatReader::FnStartNamespace(void* userData, const char* prefix, const char* uri) {
    Dispatch(userData, [prefix, uri](CExpatReader& self) { self.StartNamespace(prefix, uri); });
}

void XMLCALL CExpatReader::FnEndNamespace(void*, const char*) {
    // The prefix map is document-wide and never shrinks.
}

void XMLCALL CExpatReader::FnText(void* userData, const char* text, int length) {
    Dispatch(userData, [text, length](CExpatReader& self) { self.Text(text, length); });
}

void XMLCALL CExpatReader::FnStartCDATA(void* userData) {
    Dispatch(userData, [](CExpatReader& self) { self.AppendLiteral(kCDataOpen.data(), kCDataOpen.size()); });
}

void XMLCALL CExpatReader::FnEndCDATA(void* userData) {
    Dispatch(userData, [](CExpatReader& self) { self.AppendLiteral(kCDataClose.data(), kCDataClose.size()); });
}

void XMLCALL CExpatReader::FnEntityDecl(void* userData, const XML_Char*, int, const XML_Char* value, int,
                                        const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*) {
    // External entities are never fetched; only internal ones can nest.
    if (value) Dispatch(userData, [](CExpatReader& self) { self.CountEntity(); });
}

void CExpatReader::CountEntity() {
    if (++m_entities <= m_entityLimit) return;
    throw CKvException(FormatString(
        "The document declares more than %u internal entities (the limit set by "
        "CXmlDocument::SetMaxEntityDeclarations)",
        m_entityLimit));
}

const detail::QualifiedName& CExpatReader::ResolveName(const char* raw) {
    if (const detail::QualifiedName* known = m_names.FindRaw(raw)) return *known;
    const std::string_view spelling(raw);

    // expat spells a namespaced name "uri|local" and refuses URIs holding the
    // separator; without namespace processing a prefix stays in the name.
    // Splitting before converting keeps the split on the UTF-8 bytes, where
    // '|' cannot be part of another character.
    const std::size_t bar = spelling.find(kSeparator);
    const std::string_view uriPart = bar == std::string_view::npos ? std::string_view() : spelling.substr(0, bar);
    const std::string_view localPart = bar == std::string_view::npos ? spelling : spelling.substr(bar + 1);
    detail::QualifiedName name{};
    name.uri = m_names.Intern(m_local->Convert(uriPart.data(), uriPart.size()));
    name.localName = m_names.Intern(m_local->Convert(localPart.data(), localPart.size()));
    return m_names.AddRaw(spelling, name);
}

void CExpatReader::StartElement(const char* name, const char** atts) {
    const detail::QualifiedName& qualified = ResolveName(name);
    // Grown before opening, so that the element and its text start are
    // recorded together or not at all.
    if (m_textStarts.size() == m_textStarts.capacity()) m_textStarts.reserve(2 * m_textStarts.size() + 16);
    CXmlElement* element = m_builder.Open(qualified.uri, qualified.localName);
    m_textStarts.push_back(m_text.size());

    std::size_t count = 0;
    while (atts[count]) count += 2;
    if (count == 0) return;
    detail::TreeBuilder::ReserveAttributes(*element, count / 2);  // exact: no growth slack per element
    for (std::size_t i = 0; i < count; i += 2) {
        const detail::QualifiedName& attributeName = ResolveName(atts[i]);
        const std::string_view value = m_local->Convert(atts[i + 1], std::strlen(atts[i + 1]));
        detail::TreeBuilder::AddAttribute(*element, attributeName.localName, std::string(value), attributeName.uri);
    }
}

void CExpatReader::EndElement() {
    // A callback may look at the open ancestors of what it is given.
    if (m_builder.HasCallback()) FlushText();
    if (!m_textStarts.empty()) {
        const std::size_t start = m_textStarts.back();
        CXmlElement* top = m_builder.Top();
        if (top && m_text.size() > start) {
            const std::string_view text = PendingText(start, m_text.size());
            detail::TreeBuilder::AppendRawText(*top, text.data(), text.size());
        }
        m_textStarts.pop_back();
        m_text.resize(start);
    }
    m_builder.Close();
}

void CExpatReader::FlushText() {
    // Levels below the first with text hold none; starting there keeps a
    // flush per closed element (with a callback) linear in the document.
    if (m_text.empty()) return;
    for (std::size_t level = m_firstTextLevel; level < m_textStarts.size(); ++level) {
        const std::size_t start = m_textStarts[level];
        const std::size_t end = level + 1 < m_textStarts.size() ? m_textStarts[level + 1] : m_text.size();
        CXmlElement* element = m_builder.OpenElement(m_textStarts.size() - 1 - level);
        if (element && end > start) {
            const std::string_view text = PendingText(start, end);
            detail::TreeBuilder::AppendRawText(*element, text.data(), text.size());
        }
        m_textStarts[level] = 0;
    }
    m_text.clear();
}

void CExpatReader::Text(const char* text, int length) {
    if (m_textStarts.empty() || length <= 0) return;
    // Carriage returns go when the element takes its text: one scan per
    // element instead of one per chunk.
    const std::string_view local = m_local->Convert(text, static_cast<std::size_t>(length));
    AppendPending(local.data(), local.size());
}

void CExpatReader::AppendPending(const char* text, std::size_t length) {
    if (m_text.empty()) m_firstTextLevel = m_textStarts.size() - 1;
    m_text.insert(m_text.end(), text, text + length);
}

std::string_view CExpatReader::PendingText(std::size_t start, std::size_t end) {
    // The parser never reports a NUL character, so only CRs need removing;
    // they are squeezed out in place, within the element's own stretch.
    char* const first = m_text.data() + start;
    char* const last = m_text.data() + end;
    char* out = static_cast<char*>(std::memchr(first, '\r', end - start));
    if (!out) return std::string_view(first, end - start);
    for (const char* in = out; in != last; ++in)
        if (*in != '\r') *out++ = *in;
    return std::string_view(first, static_cast<std::size_t>(out - first));
}

void CExpatReader::AppendLiteral(const char* text, std::size_t length) {
    if (!m_textStarts.empty()) AppendPending(text, length);
}

void CExpatReader::StartNamespace(const char* prefix, const char* uri) {
    // A default declaration has no prefix; an undeclaration has no URI.
    std::string prefixText(prefix ? m_local->Convert(prefix, std::strlen(prefix)) : std::string_view());
    const std::string_view uriText = uri ? m_local->Convert(uri, std::strlen(uri)) : std::string_view();
    m_builder.SetAlias(prefixText.data(), prefixText.size(), uriText.data(), uriText.size());
}

}  // namespace KvXmlLib10
