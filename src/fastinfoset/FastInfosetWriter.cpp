// FastInfosetWriter.cpp - namespace decisions and element framing over the Fast Infoset encoder.
//
// An element's header is held back until its start tag ends, because a
// later attribute may still need a namespace declaration, and in Fast
// Infoset declarations come before the element's name. Attributes wait in
// reusable slots meanwhile.
#include "kvxml/fastinfoset/FastInfosetWriter.h"

#include <string_view>
#include <vector>

#include "fastinfoset/detail/FIEncoder.h"
#include "fastinfoset/detail/FIEventWriter.h"
#include "kvxml/foundation/KvException.h"
#include "output/detail/NamespaceDecisions.h"
#include "output/detail/XmlNames.h"

namespace KvXmlLib10 {

struct CFastInfosetWriter::State final : detail::FIOctetSink {
    // The header is written from the writer's own copies, or from views
    // of the caller's text for the event writer, whose whole start tag
    // arrives before anything else.
    struct Attribute {
        std::string_view prefix;
        std::string_view namespaceUri;
        std::string_view localName;
        std::string_view value;
        ItemType type = string;
        bool owned = false;
        std::string ownPrefix;
        std::string ownNamespaceUri;
        std::string ownLocalName;
        std::string ownValue;

        // Views of the copies are taken late: the slots move as they grow.
        detail::FIQName Name() const {
            if (owned) return {ownPrefix, ownNamespaceUri, ownLocalName};
            return {prefix, namespaceUri, localName};
        }
        std::string_view Value() const { return owned ? std::string_view(ownValue) : value; }
    };

    State(const CFastInfosetContext& fiContext, CBinaryStream& out)
        : stream(out),
          context(fiContext),
          vocabulary(fiContext.GetUseGeneratedVocabulary() ? fiContext.GetVocabulary() : CFIVocabulary()),
          encoder(*this, vocabulary, fiContext) {}

    void Write(const unsigned char* data, std::size_t length) override {
        while (length > 0) {
            const uint32_t part = length > 0x40000000u ? 0x40000000u : static_cast<uint32_t>(length);
            stream.Append(data, part);
            data += part;
            length -= part;
        }
    }

    void AddDeclaration(const std::string& prefix, const std::string& uri) {
        if (declCount == decls.size()) decls.emplace_back();
        decls[declCount].prefix = prefix;
        decls[declCount].namespaceName = uri;
        ++declCount;
    }

    /// The prefix decided for a name ("" for none); an invented one is
    /// queued for declaration on the pending element.
    const std::string& PrefixOf(const detail::ResolvedPrefix& resolved, const std::string& uri) {
        static const std::string none;
        if (!resolved.prefix) return none;
        if (resolved.declare) AddDeclaration(*resolved.prefix, uri);
        return *resolved.prefix;
    }

    /// A slot for the next attribute of the element, its prefix decided
    /// (a view of the binding in scope).
    Attribute& QueueAttribute(CXmlWriter::CXmlWriterContext& element, const std::string& namespaceUri,
                              ItemType type) {
        if (attributeCount == attributes.size()) attributes.emplace_back();
        Attribute& attribute = attributes[attributeCount++];
        attribute.prefix = PrefixOf(detail::NamespaceDecisions::Attribute(element, namespaceUri), namespaceUri);
        attribute.type = type;
        attribute.owned = false;
        return attribute;
    }

    void Characters(std::string_view text, ItemType type) {
        encoder.Characters(text.data(), text.size(), context.GetEncoding(type));
    }

    CBinaryStream& stream;
    const CFastInfosetContext& context;
    CFIVocabulary vocabulary;
    detail::FIEncoder encoder;
    bool headerPending = false;
    std::string elementPrefix;
    std::vector<detail::FINamespaceDecl> decls;
    std::size_t declCount = 0;
    std::vector<Attribute> attributes;
    std::size_t attributeCount = 0;
};

CFastInfosetWriter::CFastInfosetWriter(const CFastInfosetContext& context, CBinaryStream& stream)
    : CXmlWriter("CFastInfosetWriter"), m_state(std::make_unique<State>(context, stream)) {}

CFastInfosetWriter::~CFastInfosetWriter() = default;

void CFastInfosetWriter::Close() {
    m_state->encoder.Flush();
    CXmlWriter::Close();
}

void CFastInfosetWriter::WriteStartDocument(FInfoDecl decl) {
    const CFastInfosetContext& context = m_state->context;
    static const std::string kProducerUri = "urn:kvxml:fastinfoset:vocabulary";
    const std::string& uri =
        context.GetExternalVocabularyURI().empty() ? kProducerUri : context.GetExternalVocabularyURI();
    m_state->encoder.StartDocument(decl, context.GetUseGeneratedVocabulary(), uri);
}

void CFastInfosetWriter::WriteEndDocument() { m_state->encoder.EndDocument(); }

void CFastInfosetWriter::WriteComment(const std::string& /*text*/) {}

void CFastInfosetWriter::WritePI(const std::string& /*text*/) {
    if (m_state->headerPending) WriteElement();
}

void CFastInfosetWriter::WriteInlineSchema(const std::string& /*text*/) {}

void CFastInfosetWriter::WriteElement() {
    State& state = *m_state;
    CXmlWriterContext& context = *GetCurrentContext();
    const bool hasAttributes = state.attributeCount != 0;
    const detail::FIQName name{state.elementPrefix, context.GetNamespaceUri(), context.GetLocalName()};
    state.encoder.StartElement(name, hasAttributes, state.decls.data(), state.declCount);
    for (std::size_t i = 0; i < state.attributeCount; ++i) {
        const State::Attribute& attribute = state.attributes[i];
        state.encoder.Attribute(attribute.Name(), attribute.Value(), state.context.GetEncoding(attribute.type));
    }
    if (hasAttributes) state.encoder.EndAttributes();
    context.SetStartTagOpen(false);
    context.SetFlag(hasAttributes);
    state.headerPending = false;
    state.declCount = 0;
    state.attributeCount = 0;
}

void CFastInfosetWriter::WriteStartElement(const std::string& localName, const std::string& namespaceUri) {
    // Names are checked as the text writer checks them: both forms of a
    // document hold the same names, and an empty one has no encoding.
    detail::CheckXmlName(localName, "element");
    OpenElement(localName, namespaceUri);
}

void CFastInfosetWriter::OpenElement(std::string_view localName, std::string_view namespaceUri) {
    State& state = *m_state;
    if (state.headerPending) WriteElement();
    const bool isRoot = GetCurrentContext() == nullptr;
    if (!isRoot) GetCurrentContext()->IncrementChildCount();
    CXmlWriterContext* context = PushContext(localName, namespaceUri);
    const detail::ElementStart start =
        detail::NamespaceDecisions::StartElement(*context, GetUndeclareDefaultNamespace());
    if (start.prefix) {
        state.elementPrefix = *start.prefix;
    } else {
        state.elementPrefix.clear();
    }
    detail::NamespaceDecisions::Declarations(
        *context, start, isRoot ? &GetDocumentDefaultNamespace() : nullptr, isRoot ? &GetPendingNamespaces() : nullptr,
        [&state](const std::string& prefix, const std::string& uri) { state.AddDeclaration(prefix, uri); });
    state.headerPending = true;
}

void CFastInfosetWriter::WriteString(const std::string& text, ItemType type) {
    if (m_state->headerPending) WriteElement();
    m_state->Characters(text, type);
}

void CFastInfosetWriter::WriteEndElement() {
    CXmlWriterContext* context = GetCurrentContext();
    if (!context) return;
    if (m_state->headerPending) WriteElement();
    m_state->encoder.EndElement();
    PopContext();
}

void CFastInfosetWriter::CheckStartTagOpen() const {
    const CXmlWriterContext* context = GetCurrentContext();
    if (!context || !context->IsStartTagOpen()) throw CKvException("Attributes must be added before elements");
}

void CFastInfosetWriter::WriteAttributeString(const std::string& localName, const std::string& namespaceUri,
                                              const std::string& value, ItemType type) {
    CheckStartTagOpen();
    detail::CheckXmlName(localName, "attribute");
    State::Attribute& attribute = m_state->QueueAttribute(*GetCurrentContext(), namespaceUri, type);
    // Copies: the caller's strings may be gone when the header is written,
    // and a later AddNamespace may rebind the prefix in place.
    attribute.owned = true;
    attribute.ownPrefix = attribute.prefix;
    attribute.ownNamespaceUri = namespaceUri;
    attribute.ownLocalName = localName;
    attribute.ownValue = value;
}

void CFastInfosetWriter::WriteAttributeType(const std::string& typeNamespaceUri, const std::string& typeLocalName,
                                            ItemType type) {
    CheckStartTagOpen();
    const std::string& prefix = m_state->PrefixOf(
        detail::NamespaceDecisions::TypeValue(*GetCurrentContext(), typeNamespaceUri), typeNamespaceUri);
    std::string value;
    if (!prefix.empty()) {
        value.reserve(prefix.size() + 1 + typeLocalName.size());
        value.append(prefix).append(1, ':');
    }
    value.append(typeLocalName);
    static const std::string name = "type";
    WriteAttributeString(name, detail::XsiNamespace(), value, type);
}

void CFastInfosetWriter::WriteAttributeNil() {
    CheckStartTagOpen();
    static const std::string name = "nil";
    static const std::string value = "true";
    WriteAttributeString(name, detail::XsiNamespace(), value, boolean);
}

// --- the event writer ----------------------------------------------------------

namespace detail {

void FIEventWriter::StartElement(std::string_view localName, std::string_view namespaceUri) {
    OpenElement(localName, namespaceUri);
}

void FIEventWriter::Attribute(std::string_view localName, std::string_view namespaceUri, std::string_view value,
                              ItemType type) {
    // The scope is searched by string; the slot keeps the caller's view.
    m_attributeUri.assign(namespaceUri);
    State::Attribute& attribute = m_state->QueueAttribute(*GetCurrentContext(), m_attributeUri, type);
    attribute.namespaceUri = namespaceUri;
    attribute.localName = localName;
    attribute.value = value;
}

void FIEventWriter::Characters(std::string_view text, ItemType type) {
    if (m_state->headerPending) WriteElement();
    m_state->Characters(text, type);
}

}  // namespace detail

}  // namespace KvXmlLib10
