// FastInfosetReader.h - parses a Fast Infoset document into a CXmlDocument's tree.
//
// Created, used once and destroyed inside CXmlDocument::Parse. The tree is
// built through the same builder as the XML text reader's. Nothing of
// notations, unparsed entities, document type declarations, entity
// references, comments and processing instructions is kept; they are read
// only to be stepped over. Nesting is followed with a loop, never recursion,
// so depth is bounded only by the input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "dom/detail/LocalText.h"
#include "dom/detail/TreeBuilder.h"
#include "fastinfoset/detail/FIInput.h"

namespace KvXmlLib10 {

class CFastInfosetContext;
class CFIVocabulary;
class CXmlDocument;
class CXmlElement;

class CFastInfosetReader {
public:
    CFastInfosetReader(const CFastInfosetContext& context, CXmlDocument& document);
    CFastInfosetReader(const CFastInfosetReader&) = delete;
    CFastInfosetReader& operator=(const CFastInfosetReader&) = delete;

    /// False, having read nothing, when the input does not start like a Fast
    /// Infoset document; true once the whole document is in the tree.
    /// Malformed input throws CKvException.
    bool Parse();
    /// How far into the input the reader got: after a throw, where it failed.
    std::size_t Offset() const { return m_input.Consumed(); }

private:
    // A name as the tree stores it: interned URI and local name.
    struct Name {
        const std::string* uri;
        const std::string* localName;
    };

    bool ReadHeader();
    bool CheckHeader(std::size_t at) const;
    void ReadOptionalData();
    void InitialVocabulary();
    void UseGeneratedVocabulary(const CFIVocabulary& vocabulary);
    void ReadNameSurrogates(std::vector<Name>& table);
    void Notations();
    void UnparsedEntities();
    void ReadChildren();
    /// Opens the element; false when its attribute list also ended it.
    bool ElementBit2(uint8_t first);
    void NamespaceAttributeBit7(uint8_t first);
    void AtrributeBit2(CXmlElement& element, uint8_t first);
    Name QualifiedNameOrIndexBit2(uint8_t first);
    Name QualifiedNameOrIndexBit3(uint8_t first);
    Name ReadQName(bool hasPrefix, bool hasNamespace, std::vector<Name>& table);
    const std::string* IdentifyingStringOrIndex(std::vector<const std::string*>& table);
    /// The value into `out` (replacing it); `table` gets it when the add bit says so.
    void NonIdentifyingStringOrIndexBit1(uint8_t first, std::vector<std::string>& table, std::string& out);
    void NonIdentifyingStringOrIndexBit3(uint8_t first, CXmlElement& element);
    /// A literal on the third bit (chunks, initial-vocabulary values) into `out`.
    void EncodedCharacterStringBit3(uint8_t first, std::string& out);
    void EncodedCharacterStringBit5(uint8_t first, std::string& out);
    void DecodeOctets(uint32_t kind, uint32_t index, const unsigned char* data, std::size_t length, std::string& out,
                      const char* badAlphabet);
    void NonEmptyOctetUTF8String(const unsigned char* data, std::size_t length, std::string& out);
    void NonEmptyOctetUTF16BEString(const unsigned char* data, std::size_t length, std::string& out);
    void ProcessingInstruction();
    bool DocumentTypeDeclarationBit7(uint8_t first);
    void UnexpandedEntityReferenceBit7(uint8_t first);
    void SkipIdentifyingStringOrIndex();
    void SkipNonIdentifyingStringOrIndexBit1();
    void SkipOctetStringBit2();

    template <class T>
    static void AddToTable(std::vector<T>& table, T value) {
        if (table.size() < detail::kFIMaxIndex) table.push_back(std::move(value));
    }

    const CFastInfosetContext& m_context;
    detail::TreeBuilder m_builder;
    detail::FIInput m_input;
    detail::LocalText m_local;
    std::string m_scratch;
    std::string m_utf8;

    std::vector<const std::string*> m_prefixes;
    std::vector<const std::string*> m_namespaces;
    std::vector<const std::string*> m_localNames;
    std::vector<Name> m_elementNames;
    std::vector<Name> m_attributeNames;
    std::vector<std::string> m_attributeValues;
    std::vector<std::string> m_chunks;
};

}  // namespace KvXmlLib10
