// FIEncoder.h - the octets of a Fast Infoset document, item by item.
//
// Everything below the namespace decisions: the bit-packed integers and
// lengths, literal-or-index choices against the vocabulary, and the
// terminators. CFastInfosetWriter drives it with the names it resolved.
// Output is buffered and handed to a sink in blocks, so a document of any
// size passes through bounded memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kvxml/fastinfoset/FastInfosetContext.h"
#include "fastinfoset/detail/FINameCache.h"
#include "kvxml/fastinfoset/FIVocabulary.h"

namespace KvXmlLib10::detail {

struct IntegerForm;
struct LengthForm;

/// Where encoded octets go.
class FIOctetSink {
public:
    virtual ~FIOctetSink() = default;
    virtual void Write(const unsigned char* data, std::size_t length) = 0;
};

/// A qualified name; "" prefix or namespace means none. Views: the
/// caller's strings need not outlive the call.
struct FIQName {
    std::string_view prefix;
    std::string_view namespaceName;
    std::string_view localName;
};

/// A namespace declaration; "" prefix declares the default namespace.
struct FINamespaceDecl {
    std::string prefix;
    std::string namespaceName;
};

using FIEncoding = CFastInfosetContext::EncodedCharacterString;

/// The declaration text of FInfoDecl values 1 to 9; null otherwise.
const char* FInfoDeclarationText(int32_t decl);

class FIEncoder {
public:
    /// Strings handed in are local code page text unless `utf8Input` says
    /// they are UTF-8 already. The vocabulary is grown as the document
    /// defines strings and names.
    FIEncoder(FIOctetSink& sink, CFIVocabulary& vocabulary, const CFastInfosetContext& context,
              bool utf8Input = false);
    ~FIEncoder();
    FIEncoder(const FIEncoder&) = delete;
    FIEncoder& operator=(const FIEncoder&) = delete;

    /// The declaration (FInfoDecl 1..9), E0 00 00 01 and the optional
    /// components: only the external vocabulary URI when `withVocabularyUri`.
    void StartDocument(int32_t decl, bool withVocabularyUri, const std::string& vocabularyUri);
    /// An element header: namespace attributes, then the name. When
    /// `hasAttributes`, Attribute() calls and one EndAttributes() follow.
    void StartElement(const FIQName& name, bool hasAttributes, const FINamespaceDecl* decls, std::size_t declCount);
    void Attribute(const FIQName& name, std::string_view value, FIEncoding encoding);
    void EndAttributes() { Put(0xF0); }
    /// A character chunk; empty text writes nothing.
    void Characters(const char* text, std::size_t length, FIEncoding encoding);
    void EndElement();
    /// The final terminator, then everything is handed to the sink.
    void EndDocument();
    /// Hands buffered octets to the sink.
    [[gnu::noinline]] void Flush();
    /// Octets produced so far (handed over or buffered).
    uint64_t GetOffset() const { return m_flushed + static_cast<uint64_t>(m_pos - m_buffer.get()); }

    // The productions of the format; `bits` are the octet's bits already set.
    void Integer1To2pw20Bit2(uint8_t bits, uint32_t value);
    void Integer1To2pw20Bit3(uint8_t bits, uint32_t value);
    void Integer1To2pw20Bit4(uint8_t bits, uint32_t value);
    void Integer0To2pw20Bit2(uint8_t bits, uint32_t value);
    void NonEmptyOctetUTF8StringBit2(uint8_t bits, const unsigned char* data, std::size_t length);
    void NonEmptyOctetStringBit5(uint8_t bits, const unsigned char* data, std::size_t length);
    void NonEmptyOctetStringBit7(uint8_t bits, const unsigned char* data, std::size_t length);
    /// Attribute values: the discriminant sits on the third bit.
    void EncodedCharacterStringBit3(uint8_t bits, const char* text, std::size_t length, FIEncoding encoding);
    /// Character chunks: the discriminant sits on the fifth bit.
    void EncodedCharacterStringBit5(uint8_t bits, const char* text, std::size_t length, FIEncoding encoding);
    /// Packs text into `out` with built-in alphabet 1 (numeric) or 2 (date
    /// and time), four bits a character, an odd count padded with F.
    static void AppendRestrictedAlphabetString(uint32_t alphabet, const char* text, std::size_t length,
                                               std::string& out);
    /// Attribute values (Bit1) and character chunks (Bit3) against their
    /// tables.
    void NonIdentifyingStringOrIndexBit1(const char* text, std::size_t length, FIEncoding encoding);
    void NonIdentifyingStringOrIndexBit3(const char* text, std::size_t length, FIEncoding encoding);
    void QualifiedNameOrIndexBit2(uint8_t bits, const FIQName& name);
    void QualifiedNameOrIndexBit3(uint8_t bits, const FIQName& name);

private:
    /// Packs a restricted-alphabet or algorithm value into m_packed; false
    /// for text that is written as UTF-8.
    bool PackTyped(const char* text, std::size_t length, FIEncoding encoding);
    void Integer1To2pw20(const IntegerForm& form, uint8_t bits, uint32_t value);
    void NonEmptyOctetString(const LengthForm& form, uint8_t bits, const unsigned char* data, std::size_t length);
    static constexpr std::size_t kBufferSize = 64 * 1024;

    // Every octet of the document passes here: kept inline, the flush out.
    [[gnu::always_inline]] void Put(uint8_t octet) {
        if (__builtin_expect(m_pos == m_end, 0)) Flush();
        *m_pos++ = octet;
    }
    void PutBytes(const unsigned char* data, std::size_t length);
    void Put32(uint32_t value);
    /// A pending terminator is written before the next item.
    void BeforeItem() {
        if (m_terminatorPending) {
            Put(0xF0);
            m_terminatorPending = false;
        }
    }
    /// An identifying string (prefix, namespace or local name): index when
    /// the table has it, else literal and added.
    void IdentifyingStringOrIndex(std::string_view text, CFIStringTable& table);
    /// The UTF-8 form of local text: the text itself when that is already
    /// UTF-8, else a conversion held until the next call.
    const unsigned char* ToUtf8(const char* text, std::size_t& length);
    void QualifiedName(uint8_t bits, uint8_t literalBits, const FIQName& name, CFIQNameTable& table,
                       bool elementIndex, FINameCache& cache);
    /// Kept out of QualifiedName, whose cached path is the hot one.
    [[gnu::noinline]] uint32_t UncachedName(uint8_t bits, uint8_t literalBits, const FINameCache::Key& name,
                                            CFIQNameTable& table, bool elementIndex);
    bool FindName(const FINameCache::Key& name, const CFIQNameTable& table, CQNameParts& parts,
                  uint32_t& index) const;
    /// The index of a value already in the table, or 0 for a new one (added
    /// unless the table is full).
    uint32_t ValueIndexOrAdd(std::string_view value, CFIStringTable& table, FIValueCache& cache);
    void WriteNameIndex(uint8_t bits, uint32_t index, bool elementIndex);

    FIOctetSink& m_sink;
    CFIVocabulary& m_vocabulary;
    const CFastInfosetContext& m_context;
    std::unique_ptr<unsigned char[]> m_buffer;
    unsigned char* m_pos;
    unsigned char* m_end;
    uint64_t m_flushed = 0;
    bool m_terminatorPending = false;
    bool m_utf8Identity;
    std::string m_utf8;
    std::string m_packed;
    std::string m_key;
    // One probe per name instead of one lookup per part and one for the
    // triple; short values the same way, cheaper than the table's map.
    FINameCache m_elementIndexes;
    FINameCache m_attributeIndexes;
    FIValueCache m_attributeValueIndexes;
    FIValueCache m_chunkIndexes;
};

}  // namespace KvXmlLib10::detail
