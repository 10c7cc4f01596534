// FastInfosetReader.cpp - header, optional components and the element loop.
#include "fastinfoset/detail/FastInfosetReader.h"

#include <cstring>

#include "dom/detail/NameTable.h"
#include "fastinfoset/detail/FIDeclarations.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/fastinfoset/FastInfosetContext.h"

namespace KvXmlLib10 {

using detail::ThrowFIError;

CFastInfosetReader::CFastInfosetReader(const CFastInfosetContext& context, CXmlDocument& document)
    : m_context(context), m_builder(document),
      m_input(m_builder.Input(), m_builder.Input() + m_builder.InputLength()) {}

// ---- document ----

bool CFastInfosetReader::CheckHeader(std::size_t at) const {
    const std::size_t length = m_builder.InputLength();
    return length > at + sizeof detail::kFIHeader &&
           std::memcmp(m_builder.Input() + at, detail::kFIHeader, sizeof detail::kFIHeader) == 0;
}

bool CFastInfosetReader::ReadHeader() {
    if (!m_builder.Input()) return false;
    std::size_t start = 0;
    if (!CheckHeader(0)) {
        const std::size_t length = m_builder.InputLength();
        for (std::size_t decl = 1; decl <= detail::kFInfoDeclCount && start == 0; ++decl) {
            const char* text = detail::kFInfoDeclTexts[decl];
            const std::size_t size = std::strlen(text);
            if (size < length && std::memcmp(m_builder.Input(), text, size) == 0) start = size;
        }
        if (start == 0 || !CheckHeader(start)) return false;
    }
    m_input.Move(start + sizeof detail::kFIHeader);
    return true;
}

bool CFastInfosetReader::Parse() {
    if (!ReadHeader()) return false;
    // Index 1 of these two tables is fixed by the format.
    detail::NameTable& names = m_builder.Names();
    m_prefixes.push_back(names.Intern("xml"));
    m_namespaces.push_back(names.Intern(FI_DEFAULT_NAMESPACE));
    ReadOptionalData();
    ReadChildren();
    return true;
}

void CFastInfosetReader::ReadOptionalData() {
    const uint8_t components = m_input.Next();
    if (components & 0x40) {  // additional data: (identifier, data) pairs
        for (uint32_t n = m_input.LengthOfSequence(); n > 0; --n) {
            SkipOctetStringBit2();
            SkipOctetStringBit2();
        }
    }
    if (components & 0x20) InitialVocabulary();
    if (components & 0x10) Notations();
    if (components & 0x08) UnparsedEntities();
    if (components & 0x04) SkipOctetStringBit2();  // character encoding scheme
    if (components & 0x02) m_input.Next();         // standalone
    if (components & 0x01) SkipNonIdentifyingStringOrIndexBit1();  // version
}

void CFastInfosetReader::Notations() {
    for (uint8_t item = m_input.Next(); item != 0xF0; item = m_input.Next()) {
        if ((item & 0xFC) != 0xC0) ThrowFIError(detail::kFIElementType);
        SkipIdentifyingStringOrIndex();                       // name
        if (item & 0x02) SkipIdentifyingStringOrIndex();      // system identifier
        if (item & 0x01) SkipIdentifyingStringOrIndex();      // public identifier
    }
}

void CFastInfosetReader::UnparsedEntities() {
    for (uint8_t item = m_input.Next(); item != 0xF0; item = m_input.Next()) {
        if ((item & 0xFE) != 0xD0) ThrowFIError(detail::kFIElementType);
        SkipIdentifyingStringOrIndex();                       // name
        SkipIdentifyingStringOrIndex();                       // system identifier
        if (item & 0x01) SkipIdentifyingStringOrIndex();      // public identifier
        SkipIdentifyingStringOrIndex();                       // notation name
    }
}

// Children of the document and of every element, in one loop: the open
// elements are the builder's stack, so depth costs no stack frames.
void CFastInfosetReader::ReadChildren() {
    std::size_t depth = 0;
    for (;;) {
        const uint8_t item = m_input.Next();
        if (item < 0x80) {
            if (ElementBit2(item)) ++depth;
        } else if (item == 0xE1) {
            ProcessingInstruction();
        } else if (item == 0xE2) {
            SkipNonIdentifyingStringOrIndexBit1();  // comment
        } else if (depth == 0) {
            if (item == 0xF0 || item == 0xFF) return;
            if ((item & 0xFC) != 0xC4) ThrowFIError(detail::kFIElementType);
            if (!DocumentTypeDeclarationBit7(item)) return;
        } else if (item < 0xC0) {
            NonIdentifyingStringOrIndexBit3(item, *m_builder.Top());
        } else if ((item & 0xFC) == 0xC8) {
            UnexpandedEntityReferenceBit7(item);
        } else if (item == 0xF0 || item == 0xFF) {
            // FF ends this element's children and its parent's (or the document's).
            for (int ends = item == 0xFF ? 2 : 1; ends > 0; --ends) {
                if (depth == 0) return;
                m_builder.Close();
                --depth;
            }
        } else {
            ThrowFIError(detail::kFIElementType);
        }
    }
}

bool CFastInfosetReader::ElementBit2(uint8_t first) {
    uint8_t nameOctet = first;
    if ((first & 0x3F) == 0x38) {
        for (uint8_t item = m_input.Next(); item != 0xF0; item = m_input.Next()) {
            if ((item & 0xFC) != 0xCC) ThrowFIError(detail::kFIElementType);
            NamespaceAttributeBit7(item);
        }
        nameOctet = m_input.Next();
        if (nameOctet & 0xC0) ThrowFIError(detail::kFIElementType);
    }
    const Name name = QualifiedNameOrIndexBit3(nameOctet);
    CXmlElement* element = m_builder.Open(name.uri, name.localName);
    if (first & 0x40) {
        for (;;) {
            const uint8_t item = m_input.Next();
            if (item == 0xF0) break;
            if (item == 0xFF) {  // no children either
                m_builder.Close();
                return false;
            }
            if (item & 0x80) ThrowFIError(detail::kFIElementType);
            AtrributeBit2(*element, item);
        }
    }
    return true;
}

void CFastInfosetReader::NamespaceAttributeBit7(uint8_t first) {
    const std::string* prefix = (first & 0x02) ? IdentifyingStringOrIndex(m_prefixes) : &detail::EmptyString();
    const std::string* uri = (first & 0x01) ? IdentifyingStringOrIndex(m_namespaces) : &detail::EmptyString();
    m_builder.SetAlias(prefix->data(), prefix->size(), uri->data(), uri->size());
}

void CFastInfosetReader::AtrributeBit2(CXmlElement& element, uint8_t first) {
    const Name name = QualifiedNameOrIndexBit2(first);
    std::string value;
    NonIdentifyingStringOrIndexBit1(m_input.Next(), m_attributeValues, value);
    detail::TreeBuilder::AddAttribute(element, name.localName, std::move(value), name.uri);
}

// ---- items read only to be stepped over ----

void CFastInfosetReader::ProcessingInstruction() {
    SkipIdentifyingStringOrIndex();          // target
    SkipNonIdentifyingStringOrIndexBit1();   // content
}

bool CFastInfosetReader::DocumentTypeDeclarationBit7(uint8_t first) {
    if (first & 0x02) SkipIdentifyingStringOrIndex();  // system identifier
    if (first & 0x01) SkipIdentifyingStringOrIndex();  // public identifier
    for (;;) {
        const uint8_t item = m_input.Next();
        if (item == 0xE1) {
            ProcessingInstruction();
        } else if (item == 0xF0 || item == 0xFF) {
            return item == 0xF0;  // FF also ends the document's children
        } else {
            ThrowFIError(detail::kFIElementType);
        }
    }
}

void CFastInfosetReader::UnexpandedEntityReferenceBit7(uint8_t first) {
    SkipIdentifyingStringOrIndex();                    // name
    if (first & 0x02) SkipIdentifyingStringOrIndex();  // system identifier
    if (first & 0x01) SkipIdentifyingStringOrIndex();  // public identifier
}

}  // namespace KvXmlLib10
