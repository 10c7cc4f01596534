// FastInfosetWriter.cpp - namespace decisions and element framing over the Fast Infoset encoder.
//
// An element's header is held back until its start tag ends, because a
// later attribute may still need a namespace declaration, and in Fast
// Infoset declarations come before the element's name. Attributes wait in
// reusable slots meanwhile.
#include "kvxml/fastinfoset/FastInfosetWriter.h"

#include <vector>

#include "fastinfoset/detail/FIEncoder.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

namespace {

const std::string& XsiNamespace() {
    static const std::string uri = "http://www.w3.org/2001/XMLSchema-instance";
    return uri;
}

}  // namespace

struct CFastInfosetWriter::State final : detail::FIOctetSink {
    struct Attribute {
        std::string prefix;
        std::string namespaceUri;
        std::string localName;
        std::string value;
        ItemType type = string;
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

    Attribute& NextAttribute() {
        if (attributeCount == attributes.size()) attributes.emplace_back();
        return attributes[attributeCount++];
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

const std::string& CFastInfosetWriter::ResolvePrefix(CXmlWriterContext& context, const std::string& uri) {
    NamespaceMap& scope = context.GetNamespaceMap();
    auto found = scope.find(uri);
    if (found != scope.end()) return found->second;
    context.SetNamespaceMapValue(uri, GetUniquePrefix(scope));
    // The map may be a fresh copy now; its nodes stay put from here on.
    const std::string& prefix = context.GetNamespaceMap().find(uri)->second;
    m_state->AddDeclaration(prefix, uri);
    return prefix;
}

void CFastInfosetWriter::WriteElement() {
    State& state = *m_state;
    CXmlWriterContext& context = *GetCurrentContext();
    const bool hasAttributes = state.attributeCount != 0;
    const detail::FIQName name{state.elementPrefix, context.GetNamespaceUri(), context.GetLocalName()};
    state.encoder.StartElement(name, hasAttributes, state.decls.data(), state.declCount);
    for (std::size_t i = 0; i < state.attributeCount; ++i) {
        const State::Attribute& attribute = state.attributes[i];
        const detail::FIQName attributeName{attribute.prefix, attribute.namespaceUri, attribute.localName};
        state.encoder.Attribute(attributeName, attribute.value, state.context.GetEncoding(attribute.type));
    }
    if (hasAttributes) state.encoder.EndAttributes();
    context.SetStartTagOpen(false);
    context.SetFlag(hasAttributes);
    state.headerPending = false;
    state.declCount = 0;
    state.attributeCount = 0;
}

void CFastInfosetWriter::WriteStartElement(const std::string& localName, const std::string& namespaceUri) {
    State& state = *m_state;
    if (state.headerPending) WriteElement();
    const bool isRoot = GetCurrentContext() == nullptr;
    if (!isRoot) GetCurrentContext()->IncrementChildCount();
    CXmlWriterContext* context = PushContext(localName, namespaceUri);
    if (isRoot) {
        if (!GetDocumentDefaultNamespace().empty()) state.AddDeclaration(std::string(), GetDocumentDefaultNamespace());
        for (const auto& entry : GetPendingNamespaces()) {
            if (entry.first != XML_NAMESPACE) state.AddDeclaration(entry.second, entry.first);
        }
    }
    if (namespaceUri.empty() || namespaceUri == context->GetDefaultNamespace()) {
        state.elementPrefix.clear();
    } else {
        state.elementPrefix = ResolvePrefix(*context, namespaceUri);
    }
    state.headerPending = true;
}

void CFastInfosetWriter::WriteString(const std::string& text, ItemType type) {
    if (m_state->headerPending) WriteElement();
    m_state->encoder.Characters(text.data(), text.size(), m_state->context.GetEncoding(type));
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
    State::Attribute& attribute = m_state->NextAttribute();
    // Attributes never take the default namespace: always a prefix.
    if (namespaceUri.empty()) {
        attribute.prefix.clear();
    } else {
        attribute.prefix = ResolvePrefix(*GetCurrentContext(), namespaceUri);
    }
    attribute.namespaceUri = namespaceUri;
    attribute.localName = localName;
    attribute.value = value;
    attribute.type = type;
}

void CFastInfosetWriter::WriteAttributeType(const std::string& typeNamespaceUri, const std::string& typeLocalName,
                                            ItemType type) {
    CheckStartTagOpen();
    CXmlWriterContext& context = *GetCurrentContext();
    std::string value;
    if (!typeNamespaceUri.empty() && typeNamespaceUri != context.GetDefaultNamespace()) {
        const std::string& prefix = ResolvePrefix(context, typeNamespaceUri);
        value.reserve(prefix.size() + 1 + typeLocalName.size());
        value.append(prefix).append(1, ':').append(typeLocalName);
    } else {
        value = typeLocalName;
    }
    static const std::string name = "type";
    WriteAttributeString(name, XsiNamespace(), value, type);
}

void CFastInfosetWriter::WriteAttributeNil() {
    CheckStartTagOpen();
    static const std::string name = "nil";
    static const std::string value = "true";
    WriteAttributeString(name, XsiNamespace(), value, boolean);
}

}  // namespace KvXmlLib10
