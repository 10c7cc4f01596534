// FIEncoder.cpp - bit-packed integers, lengths, strings and names of Fast Infoset output.
#include "fastinfoset/detail/FIEncoder.h"

#include <cstring>

#include "dom/detail/LocalText.h"
#include "fastinfoset/detail/EncodingAlgorithms.h"
#include "fastinfoset/detail/FIDeclarations.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/Encoder.h"

namespace KvXmlLib10::detail {

namespace {


constexpr uint32_t kMaxAlgorithm = 10;
constexpr uint32_t kMaxAlphabet = 256;

[[noreturn]] void ThrowWrite(const char* message) { throw CKvException(message); }

}  // namespace

const char* FInfoDeclarationText(int32_t decl) {
    return decl >= 1 && decl <= 9 ? kFInfoDeclTexts[decl] : nullptr;
}

FIEncoder::FIEncoder(FIOctetSink& sink, CFIVocabulary& vocabulary, const CFastInfosetContext& context,
                     bool utf8Input)
    : m_sink(sink),
      m_vocabulary(vocabulary),
      m_context(context),
      m_buffer(new unsigned char[kBufferSize]),
      m_pos(m_buffer.get()),
      m_end(m_buffer.get() + kBufferSize),
      m_utf8Identity(utf8Input || LocalText().IsIdentity()) {}

FIEncoder::~FIEncoder() = default;

void FIEncoder::Flush() {
    const std::size_t used = static_cast<std::size_t>(m_pos - m_buffer.get());
    if (used == 0) return;
    m_pos = m_buffer.get();
    m_flushed += used;
    m_sink.Write(m_buffer.get(), used);
}

void FIEncoder::PutBytes(const unsigned char* data, std::size_t length) {
    if (length <= static_cast<std::size_t>(m_end - m_pos)) {
        std::memcpy(m_pos, data, length);
        m_pos += length;
        return;
    }
    Flush();
    if (length < kBufferSize) {
        std::memcpy(m_pos, data, length);
        m_pos += length;
        return;
    }
    m_flushed += length;
    m_sink.Write(data, length);
}

void FIEncoder::Put32(uint32_t value) {
    Put(static_cast<uint8_t>(value >> 24));
    Put(static_cast<uint8_t>(value >> 16));
    Put(static_cast<uint8_t>(value >> 8));
    Put(static_cast<uint8_t>(value));
}

// --- integers ---------------------------------------------------------------

void FIEncoder::Integer1To2pw20Bit2(uint8_t bits, uint32_t value) {
    if (value <= 64) {
        Put(static_cast<uint8_t>(bits | (value - 1)));
    } else if (value <= 8256) {
        const uint32_t x = value - 65;
        Put(static_cast<uint8_t>(bits | 0x40 | (x >> 8)));
        Put(static_cast<uint8_t>(x));
    } else {
        const uint32_t x = value - 8257;
        Put(static_cast<uint8_t>(bits | 0x60 | (x >> 16)));
        Put(static_cast<uint8_t>(x >> 8));
        Put(static_cast<uint8_t>(x));
    }
}

// Integers from 1 to 2^20 starting on the third or the fourth bit: the same
// four ranges, shifted by one bit.
struct IntegerForm {
    uint32_t smallMax;
    uint8_t mediumFlag;   // one more octet
    uint32_t mediumMax;
    uint8_t largeFlag;    // two more octets
    uint32_t largeMax;
    uint8_t hugeFlag;     // '110', zero bits, then twenty bits in three octets
};

namespace {

constexpr IntegerForm kIntegerBit3{32, 0x20, 2080, 0x28, 526368, 0x30};
constexpr IntegerForm kIntegerBit4{16, 0x10, 1040, 0x14, 263184, 0x18};

}  // namespace

void FIEncoder::Integer1To2pw20(const IntegerForm& form, uint8_t bits, uint32_t value) {
    if (value <= form.smallMax) {
        Put(static_cast<uint8_t>(bits | (value - 1)));
    } else if (value <= form.mediumMax) {
        const uint32_t x = value - form.smallMax - 1;
        Put(static_cast<uint8_t>(bits | form.mediumFlag | (x >> 8)));
        Put(static_cast<uint8_t>(x));
    } else if (value <= form.largeMax) {
        const uint32_t x = value - form.mediumMax - 1;
        Put(static_cast<uint8_t>(bits | form.largeFlag | (x >> 16)));
        Put(static_cast<uint8_t>(x >> 8));
        Put(static_cast<uint8_t>(x));
    } else {
        const uint32_t x = value - form.largeMax - 1;
        Put(static_cast<uint8_t>(bits | form.hugeFlag));
        Put(static_cast<uint8_t>(x >> 16));
        Put(static_cast<uint8_t>(x >> 8));
        Put(static_cast<uint8_t>(x));
    }
}

void FIEncoder::Integer1To2pw20Bit3(uint8_t bits, uint32_t value) { Integer1To2pw20(kIntegerBit3, bits, value); }

void FIEncoder::Integer1To2pw20Bit4(uint8_t bits, uint32_t value) { Integer1To2pw20(kIntegerBit4, bits, value); }

void FIEncoder::Integer0To2pw20Bit2(uint8_t bits, uint32_t value) {
    if (value == 0) {
        Put(static_cast<uint8_t>(bits | 0x7F));
    } else {
        Integer1To2pw20Bit2(bits, value);
    }
}

// --- lengths and octet strings ------------------------------------------------

// The three length forms of a non-empty octet string differ only in where the
// small, medium and large ranges end and in the flag bits that announce them.
struct LengthForm {
    std::size_t smallMax;
    uint8_t mediumFlag;
    std::size_t mediumMax;
    uint8_t largeFlag;
};

namespace {

constexpr LengthForm kLengthBit2{64, 0x40, 320, 0x60};
constexpr LengthForm kLengthBit5{8, 0x08, 264, 0x0C};
constexpr LengthForm kLengthBit7{2, 0x02, 258, 0x03};

}  // namespace

void FIEncoder::NonEmptyOctetString(const LengthForm& form, uint8_t bits, const unsigned char* data,
                                    std::size_t length) {
    if (length <= form.smallMax) {
        Put(static_cast<uint8_t>(bits | (length - 1)));
    } else if (length <= form.mediumMax) {
        Put(static_cast<uint8_t>(bits | form.mediumFlag));
        Put(static_cast<uint8_t>(length - form.smallMax - 1));
    } else {
        Put(static_cast<uint8_t>(bits | form.largeFlag));
        Put32(static_cast<uint32_t>(length - form.mediumMax - 1));
    }
    PutBytes(data, length);
}

void FIEncoder::NonEmptyOctetUTF8StringBit2(uint8_t bits, const unsigned char* data, std::size_t length) {
    NonEmptyOctetString(kLengthBit2, bits, data, length);
}

void FIEncoder::NonEmptyOctetStringBit5(uint8_t bits, const unsigned char* data, std::size_t length) {
    NonEmptyOctetString(kLengthBit5, bits, data, length);
}

void FIEncoder::NonEmptyOctetStringBit7(uint8_t bits, const unsigned char* data, std::size_t length) {
    NonEmptyOctetString(kLengthBit7, bits, data, length);
}

const unsigned char* FIEncoder::ToUtf8(const char* text, std::size_t& length) {
    if (m_utf8Identity || !HasHighByte(text, length)) return reinterpret_cast<const unsigned char*>(text);
    const CBinaryData utf8 = CEncoder::LocalCodePageToUtf8Binary(text, length);
    m_utf8.assign(reinterpret_cast<const char*>(utf8.GetData()), utf8.GetLength());
    length = m_utf8.size();
    return reinterpret_cast<const unsigned char*>(m_utf8.data());
}

// --- encoded character strings ------------------------------------------------

void FIEncoder::AppendRestrictedAlphabetString(uint32_t alphabet, const char* text, std::size_t length,
                                               std::string& out) {
    if (alphabet == 0 || alphabet > kMaxAlphabet) {
        throw CKvException(FormatString("Failed to write FastInfoset. Invalid Restricted Alphabet value [%d]",
                                        static_cast<int>(alphabet)));
    }
    if (alphabet > 2) ThrowWrite("Failed to write FastInfoset. Unsupported Feature in AppendRestrictedAlphabetString.");
    const char* characters = alphabet == 1 ? kNumericAlphabet : kDateTimeAlphabet;
    const std::size_t size = std::strlen(characters);
    if (size < 2 || size > (std::size_t{1} << 20)) {
        ThrowWrite("Failed to write FastInfoset. Invalid Restricted Alphabet. Alphabet must contain between 2 and "
                   "2^20 characters.");
    }
    out.clear();
    unsigned high = 0;
    bool half = false;
    for (std::size_t i = 0; i < length; ++i) {
        const void* found = text[i] ? std::memchr(characters, text[i], size) : nullptr;
        if (!found)
            ThrowWrite("Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.");
        const unsigned code = static_cast<unsigned>(static_cast<const char*>(found) - characters);
        if (half) {
            out.push_back(static_cast<char>((high << 4) | code));
        } else {
            high = code;
        }
        half = !half;
    }
    if (half) out.push_back(static_cast<char>((high << 4) | 0x0F));
}

bool FIEncoder::PackTyped(const char* text, std::size_t length, FIEncoding encoding) {
    if (encoding.kind == CFastInfosetContext::ECS_RestrictedAlphabet) {
        AppendRestrictedAlphabetString(encoding.index, text, length, m_packed);
    } else if (encoding.kind == CFastInfosetContext::ECS_Algorithm) {
        if (encoding.index == 0 || encoding.index > kMaxAlgorithm) {
            throw CKvException(FormatString("Failed to write FastInfoset. Invalid Encoding Algorithm value [%d]",
                                            static_cast<int>(encoding.index)));
        }
        m_packed.clear();
        m_key.assign(text, length);
        EncodeAlgorithm(encoding.index, m_key.c_str(), m_packed);
    } else {
        return false;
    }
    if (m_packed.empty()) m_packed.push_back('\0');  // never happens for real values
    return true;
}

void FIEncoder::EncodedCharacterStringBit3(uint8_t bits, const char* text, std::size_t length,
                                           FIEncoding encoding) {
    if (PackTyped(text, length, encoding)) {
        const bool alphabet = encoding.kind == CFastInfosetContext::ECS_RestrictedAlphabet;
        const uint32_t index = encoding.index - 1;  // eight bits: four here, four in the next octet
        Put(static_cast<uint8_t>(bits | (alphabet ? 0x20 : 0x30) | (index >> 4)));
        NonEmptyOctetStringBit5(static_cast<uint8_t>((index & 0x0F) << 4),
                                reinterpret_cast<const unsigned char*>(m_packed.data()), m_packed.size());
        return;
    }
    if (m_context.GetDefaultStringEncoding() != 0)
        ThrowWrite("Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit7.");
    const unsigned char* utf8 = ToUtf8(text, length);
    NonEmptyOctetStringBit5(bits, utf8, length);
}

void FIEncoder::EncodedCharacterStringBit5(uint8_t bits, const char* text, std::size_t length,
                                           FIEncoding encoding) {
    if (PackTyped(text, length, encoding)) {
        const bool alphabet = encoding.kind == CFastInfosetContext::ECS_RestrictedAlphabet;
        const uint32_t index = encoding.index - 1;  // eight bits: two here, six in the next octet
        Put(static_cast<uint8_t>(bits | (alphabet ? 0x08 : 0x0C) | (index >> 6)));
        NonEmptyOctetStringBit7(static_cast<uint8_t>((index & 0x3F) << 2),
                                reinterpret_cast<const unsigned char*>(m_packed.data()), m_packed.size());
        return;
    }
    switch (m_context.GetDefaultStringEncoding()) {
        case 0:
            break;
        case 1:
            ThrowWrite("Failed to write FastInfoset. Unsupported Feature UTF16BE in EncodedCharacterStringBit5.");
        default:
            ThrowWrite("Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit5.");
    }
    const unsigned char* utf8 = ToUtf8(text, length);
    NonEmptyOctetStringBit7(bits, utf8, length);
}

// --- strings and names against the tables -----------------------------------

uint32_t FIEncoder::ValueIndexOrAdd(std::string_view value, CFIStringTable& table, FIValueCache& cache) {
    const FIValueCache::Key key = {value};
    const uint64_t hash = FIValueCache::Hash(key);
    if (const uint32_t cached = cache.Find(hash, key)) return cached;
    // One lookup either way: a value already there keeps an index within
    // the old count, a new one takes the next (or 0 in a full table).
    const uint32_t count = table.GetCount();
    const uint32_t index = table.AddValueToMap(value);
    if (const std::string* stored = table.GetAt(index)) cache.Add(hash, index, {*stored});
    return index <= count ? index : 0;
}

void FIEncoder::NonIdentifyingStringOrIndexBit1(const char* text, std::size_t length, FIEncoding encoding) {
    if (length == 0) {
        Integer0To2pw20Bit2(0x80, 0);  // index 0: the empty string
        return;
    }
    if (length >= m_context.GetAttributeMaxAddLength()) {
        EncodedCharacterStringBit3(0x00, text, length, encoding);
    } else if (const uint32_t index = ValueIndexOrAdd({text, length}, m_vocabulary.GetAttributeValuesTable(),
                                                              m_attributeValueIndexes)) {
        Integer1To2pw20Bit2(0x80, index);
    } else {
        EncodedCharacterStringBit3(0x40, text, length, encoding);
    }
}

void FIEncoder::NonIdentifyingStringOrIndexBit3(const char* text, std::size_t length, FIEncoding encoding) {
    if (length >= m_context.GetElementMaxAddLength()) {
        EncodedCharacterStringBit5(0x80, text, length, encoding);
    } else if (const uint32_t index = ValueIndexOrAdd({text, length}, m_vocabulary.GetCharacterChunksTable(),
                                                              m_chunkIndexes)) {
        Integer1To2pw20Bit4(0xA0, index);
    } else {
        EncodedCharacterStringBit5(0x90, text, length, encoding);
    }
}

void FIEncoder::IdentifyingStringOrIndex(std::string_view text, CFIStringTable& table) {
    uint32_t index = 0;
    if (table.FindIndex(text, index)) {
        Integer1To2pw20Bit2(0x80, index);
        return;
    }
    std::size_t length = text.size();
    const unsigned char* utf8 = ToUtf8(text.data(), length);
    NonEmptyOctetUTF8StringBit2(0x00, utf8, length);
    table.AddValueToMap(text);
}

void FIEncoder::WriteNameIndex(uint8_t bits, uint32_t index, bool elementIndex) {
    if (elementIndex) {
        Integer1To2pw20Bit3(bits, index);
    } else {
        Integer1To2pw20Bit2(bits, index);
    }
}

namespace {

std::string_view Stored(const CFIStringTable& table, uint32_t index) {
    const std::string* entry = table.GetAt(index);
    return entry ? std::string_view(*entry) : std::string_view();
}

}  // namespace

void FIEncoder::QualifiedName(uint8_t bits, uint8_t literalBits, const FIQName& name, CFIQNameTable& table,
                              bool elementIndex, FINameCache& cache) {
    const bool hasPrefix = !name.namespaceName.empty() && !name.prefix.empty();  // a prefix needs a namespace
    const FINameCache::Key key = {hasPrefix ? name.prefix : std::string_view(), name.namespaceName, name.localName};
    if (const uint32_t cached = cache.FindFollower(key)) {
        WriteNameIndex(bits, cached, elementIndex);
        return;
    }
    const uint64_t hash = FINameCache::Hash(key);
    if (const uint32_t cached = cache.Find(hash, key)) {
        WriteNameIndex(bits, cached, elementIndex);
        return;
    }
    // The cache views the vocabulary's copies of the parts.
    const uint32_t index = UncachedName(bits, literalBits, key, table, elementIndex);
    if (const CQNameParts* stored = index != 0 ? table.GetAt(index) : nullptr) {
        cache.Add(hash, index,
                  {Stored(m_vocabulary.GetPrefixNamesTable(), stored->prefix),
                   Stored(m_vocabulary.GetNamespaceNamesTable(), stored->namespaceName),
                   Stored(m_vocabulary.GetLocalNamesTable(), stored->localName)});
    }
}

bool FIEncoder::FindName(const FINameCache::Key& name, const CFIQNameTable& table, CQNameParts& parts,
                         uint32_t& index) const {
    return (name[0].empty() || m_vocabulary.GetPrefixNamesTable().FindIndex(name[0], parts.prefix)) &&
           (name[1].empty() || m_vocabulary.GetNamespaceNamesTable().FindIndex(name[1], parts.namespaceName)) &&
           m_vocabulary.GetLocalNamesTable().FindIndex(name[2], parts.localName) && table.FindIndex(parts, index);
}

// A name's first use (or any use once the cache or the table is full): the
// parts by their tables, else literally, adding it. Returns its index (0
// in a full table).
uint32_t FIEncoder::UncachedName(uint8_t bits, uint8_t literalBits, const FINameCache::Key& name,
                                 CFIQNameTable& table, bool elementIndex) {
    const std::string_view prefix = name[0];
    const std::string_view namespaceName = name[1];
    const std::string_view localName = name[2];
    uint32_t index = 0;
    CQNameParts parts;
    if (FindName(name, table, parts, index)) {
        WriteNameIndex(bits, index, elementIndex);
        return index;
    }
    Put(static_cast<uint8_t>(bits | literalBits | (prefix.empty() ? 0 : 0x02) | (namespaceName.empty() ? 0 : 0x01)));
    if (!prefix.empty()) IdentifyingStringOrIndex(prefix, m_vocabulary.GetPrefixNamesTable());
    if (!namespaceName.empty()) IdentifyingStringOrIndex(namespaceName, m_vocabulary.GetNamespaceNamesTable());
    IdentifyingStringOrIndex(localName, m_vocabulary.GetLocalNamesTable());
    const std::string prefixText(prefix);
    const std::string namespaceText(namespaceName);
    const std::string localText(localName);
    return elementIndex ? m_vocabulary.AddElement(prefixText, namespaceText, localText)
                        : m_vocabulary.AddAttribute(prefixText, namespaceText, localText);
}

void FIEncoder::QualifiedNameOrIndexBit2(uint8_t bits, const FIQName& name) {
    QualifiedName(bits, 0x78, name, m_vocabulary.GetAttributeNamesTable(), false, m_attributeIndexes);
}

void FIEncoder::QualifiedNameOrIndexBit3(uint8_t bits, const FIQName& name) {
    QualifiedName(bits, 0x3C, name, m_vocabulary.GetElementNamesTable(), true, m_elementIndexes);
}

// --- document structure -------------------------------------------------------

void FIEncoder::StartDocument(int32_t decl, bool withVocabularyUri, const std::string& vocabularyUri) {
    if (const char* text = FInfoDeclarationText(decl))
        PutBytes(reinterpret_cast<const unsigned char*>(text), std::strlen(text));
    static const unsigned char kHeader[] = {0xE0, 0x00, 0x00, 0x01};
    PutBytes(kHeader, sizeof kHeader);
    if (!withVocabularyUri) {
        Put(0x00);
        return;
    }
    Put(0x20);  // initial vocabulary
    Put(0x10);  // of it only the external vocabulary URI
    Put(0x00);
    std::size_t length = vocabularyUri.size();
    const unsigned char* utf8 = ToUtf8(vocabularyUri.data(), length);
    NonEmptyOctetUTF8StringBit2(0x00, utf8, length);
}

void FIEncoder::StartElement(const FIQName& name, bool hasAttributes, const FINamespaceDecl* decls,
                             std::size_t declCount) {
    BeforeItem();
    const uint8_t bits = hasAttributes ? 0x40 : 0x00;
    if (declCount == 0) {
        QualifiedNameOrIndexBit3(bits, name);
        return;
    }
    Put(static_cast<uint8_t>(bits | 0x38));
    for (std::size_t i = 0; i < declCount; ++i) {
        const FINamespaceDecl& decl = decls[i];
        const bool hasPrefix = !decl.prefix.empty();
        const bool hasNamespace = !decl.namespaceName.empty();
        Put(static_cast<uint8_t>(0xCC | (hasPrefix ? 0x02 : 0) | (hasNamespace ? 0x01 : 0)));
        if (hasPrefix) IdentifyingStringOrIndex(decl.prefix, m_vocabulary.GetPrefixNamesTable());
        if (hasNamespace) IdentifyingStringOrIndex(decl.namespaceName, m_vocabulary.GetNamespaceNamesTable());
    }
    Put(0xF0);
    QualifiedNameOrIndexBit3(0x00, name);
}

void FIEncoder::Attribute(const FIQName& name, std::string_view value, FIEncoding encoding) {
    QualifiedNameOrIndexBit2(0x00, name);
    NonIdentifyingStringOrIndexBit1(value.data(), value.size(), encoding);
}

void FIEncoder::Characters(const char* text, std::size_t length, FIEncoding encoding) {
    if (length == 0) return;
    BeforeItem();
    NonIdentifyingStringOrIndexBit3(text, length, encoding);
}

void FIEncoder::EndElement() {
    // Two ends in a row share one octet.
    if (m_terminatorPending) {
        Put(0xFF);
        m_terminatorPending = false;
    } else {
        m_terminatorPending = true;
    }
}

void FIEncoder::EndDocument() {
    Put(m_terminatorPending ? 0xFF : 0xF0);
    m_terminatorPending = false;
    Flush();
}

}  // namespace KvXmlLib10::detail
