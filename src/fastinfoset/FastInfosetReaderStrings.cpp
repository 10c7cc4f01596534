// FastInfosetReaderStrings.cpp - names, strings, values and the initial vocabulary.
#include <string_view>

#include "dom/detail/NameTable.h"
#include "fastinfoset/detail/FIDeclarations.h"
#include "fastinfoset/detail/EncodingAlgorithms.h"
#include "fastinfoset/detail/FastInfosetReader.h"
#include "kvxml/fastinfoset/FastInfosetContext.h"
#include "kvxml/fastinfoset/FIVocabulary.h"

namespace KvXmlLib10 {

using detail::ThrowFIError;

namespace {

constexpr uint32_t kKindUtf8 = 0;
constexpr uint32_t kKindUtf16 = 1;
constexpr uint32_t kKindAlphabet = 2;


template <class T>
const T& At(const std::vector<T>& table, uint32_t index, const char* message) {
    if (index == 0 || index > table.size()) ThrowFIError(message);
    return table[index - 1];
}

void AppendUtf8(uint32_t code, std::string& out) {
    if (code < 0x80) {
        out.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code >> 6)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else if (code < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (code >> 12)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (code >> 18)));
        out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
}

// Characters of a UTF-8 alphabet, counting lead bytes only.
std::size_t CountCharacters(const unsigned char* data, std::size_t length) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < length; ++i) count += (data[i] & 0xC0) != 0x80;
    return count;
}

}  // namespace

// ---- names ----

const std::string* CFastInfosetReader::IdentifyingStringOrIndex(std::vector<const std::string*>& table) {
    const uint8_t first = m_input.Next();
    if (first & 0x80) return At(table, m_input.Integer1To2pw20Bit2(first), detail::kFIInteger1Bit2);
    const uint64_t length = m_input.NonEmptyOctetStringBit2Length(first);
    const unsigned char* data = m_input.Move(length);
    const std::string_view text = m_local.Convert(reinterpret_cast<const char*>(data), length);
    const std::string* stored = m_builder.Names().Intern(text);
    AddToTable(table, stored);
    return stored;
}

CFastInfosetReader::Name CFastInfosetReader::ReadQName(bool hasPrefix, bool hasNamespace, std::vector<Name>& table) {
    if (hasPrefix && !hasNamespace) ThrowFIError(detail::kFIPrefixWithoutNamespace);
    // Only the namespace reaches the tree; the prefix is read to keep the tables in step.
    if (hasPrefix) IdentifyingStringOrIndex(m_prefixes);
    const std::string* uri = hasNamespace ? IdentifyingStringOrIndex(m_namespaces) : &detail::EmptyString();
    const Name name{uri, IdentifyingStringOrIndex(m_localNames)};
    AddToTable(table, name);
    return name;
}

CFastInfosetReader::Name CFastInfosetReader::QualifiedNameOrIndexBit3(uint8_t first) {
    if ((first & 0x3C) == 0x3C) return ReadQName(first & 0x02, first & 0x01, m_elementNames);
    return At(m_elementNames, m_input.Integer1To2pw20Bit3(first), detail::kFIInteger1Bit3);
}

CFastInfosetReader::Name CFastInfosetReader::QualifiedNameOrIndexBit2(uint8_t first) {
    if ((first & 0x7C) == 0x78) return ReadQName(first & 0x02, first & 0x01, m_attributeNames);
    return At(m_attributeNames, m_input.Integer1To2pw20Bit2(first), detail::kFIInteger1Bit2);
}

// ---- values ----

void CFastInfosetReader::NonEmptyOctetUTF8String(const unsigned char* data, std::size_t length, std::string& out) {
    const std::string_view text = m_local.Convert(reinterpret_cast<const char*>(data), length);
    out.append(text.data(), text.size());
}

void CFastInfosetReader::NonEmptyOctetUTF16BEString(const unsigned char* data, std::size_t length,
                                                    std::string& out) {
    // An unpaired surrogate becomes U+FFFD; an odd last octet is dropped.
    m_utf8.clear();
    for (std::size_t i = 0; i + 1 < length; i += 2) {
        uint32_t code = (uint32_t{data[i]} << 8) | data[i + 1];
        if (code >= 0xD800 && code < 0xDC00 && i + 3 < length) {
            const uint32_t low = (uint32_t{data[i + 2]} << 8) | data[i + 3];
            if (low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        if (code >= 0xD800 && code < 0xE000) code = 0xFFFD;
        AppendUtf8(code, m_utf8);
    }
    NonEmptyOctetUTF8String(reinterpret_cast<const unsigned char*>(m_utf8.data()), m_utf8.size(), out);
}

void CFastInfosetReader::DecodeOctets(uint32_t kind, uint32_t index, const unsigned char* data, std::size_t length,
                                      std::string& out, const char* badAlphabet) {
    switch (kind) {
    case kKindUtf8:
        NonEmptyOctetUTF8String(data, length, out);
        return;
    case kKindUtf16:
        NonEmptyOctetUTF16BEString(data, length, out);
        return;
    case kKindAlphabet: {
        if (index != 1 && index != 2) ThrowFIError(badAlphabet);
        const char* alphabet = index == 1 ? detail::kNumericAlphabet : detail::kDateTimeAlphabet;
        for (std::size_t i = 0; i < length; ++i) {
            for (const unsigned code : {unsigned{data[i]} >> 4, unsigned{data[i]} & 0x0Fu}) {
                if (code != 0x0F) out.push_back(alphabet[code]);
            }
        }
        return;
    }
    default:  // an encoding algorithm
        detail::DecodeAlgorithm(index, data, length, out);
    }
}

void CFastInfosetReader::EncodedCharacterStringBit5(uint8_t first, std::string& out) {
    const uint32_t kind = (first >> 4) & 0x03;
    if (kind == kKindUtf8 || kind == kKindUtf16) {
        const uint64_t length = m_input.NonEmptyOctetStringBit5Length(first);
        DecodeOctets(kind, 0, m_input.Move(length), length, out, detail::kFIEncodedStringBit5);
        return;
    }
    const uint8_t second = m_input.Next();
    const uint32_t index = (((first & 0x0Fu) << 4) | (second >> 4)) + 1;
    const uint64_t length = m_input.NonEmptyOctetStringBit5Length(second);
    DecodeOctets(kind, index, m_input.Move(length), length, out, detail::kFIEncodedStringBit5);
}

void CFastInfosetReader::EncodedCharacterStringBit3(uint8_t first, std::string& out) {
    const uint32_t kind = (first >> 2) & 0x03;
    if (kind == kKindUtf8 || kind == kKindUtf16) {
        const uint64_t length = m_input.NonEmptyOctetStringBit7Length(first);
        DecodeOctets(kind, 0, m_input.Move(length), length, out, detail::kFIEncodedStringBit3);
        return;
    }
    const uint8_t second = m_input.Next();
    const uint32_t index = (((first & 0x03u) << 6) | (second >> 2)) + 1;
    const uint64_t length = m_input.NonEmptyOctetStringBit7Length(second);
    DecodeOctets(kind, index, m_input.Move(length), length, out, detail::kFIEncodedStringBit3);
}

void CFastInfosetReader::NonIdentifyingStringOrIndexBit1(uint8_t first, std::vector<std::string>& table,
                                                         std::string& out) {
    out.clear();
    if (first & 0x80) {
        const uint32_t index = m_input.Integer0To2pw20Bit2(first);
        if (index != 0) out = At(table, index, detail::kFIInteger0Bit2);
        return;
    }
    EncodedCharacterStringBit5(first, out);
    if (first & 0x40) AddToTable(table, out);
}

void CFastInfosetReader::NonIdentifyingStringOrIndexBit3(uint8_t first, CXmlElement& element) {
    if (first & 0x20) {
        const std::string& chunk = At(m_chunks, m_input.Integer1To2pw20Bit4(first), detail::kFIInteger1Bit4);
        detail::TreeBuilder::AppendText(element, chunk.data(), chunk.size());
        return;
    }
    // Plain UTF-8 that is not indexed goes straight from the input to the tree.
    if ((first & 0x1C) == 0 && m_local.IsIdentity()) {
        const uint64_t length = m_input.NonEmptyOctetStringBit7Length(first);
        const unsigned char* data = m_input.Move(length);
        detail::TreeBuilder::AppendText(element, reinterpret_cast<const char*>(data), length);
        return;
    }
    m_scratch.clear();
    EncodedCharacterStringBit3(first, m_scratch);
    detail::TreeBuilder::AppendText(element, m_scratch.data(), m_scratch.size());
    if (first & 0x10) AddToTable(m_chunks, m_scratch);
}

// ---- items stepped over ----

void CFastInfosetReader::SkipOctetStringBit2() { m_input.Move(m_input.NonEmptyOctetStringBit2Length(m_input.Next())); }

void CFastInfosetReader::SkipIdentifyingStringOrIndex() {
    const uint8_t first = m_input.Next();
    if (first & 0x80) {
        m_input.Integer1To2pw20Bit2(first);
    } else {
        m_input.Move(m_input.NonEmptyOctetStringBit2Length(first));
    }
}

void CFastInfosetReader::SkipNonIdentifyingStringOrIndexBit1() {
    const uint8_t first = m_input.Next();
    if (first & 0x80) {
        m_input.Integer0To2pw20Bit2(first);
    } else if (((first >> 4) & 0x03) < kKindAlphabet) {
        m_input.Move(m_input.NonEmptyOctetStringBit5Length(first));
    } else {
        m_input.Move(m_input.NonEmptyOctetStringBit5Length(m_input.Next()));
    }
}

// ---- initial vocabulary ----

void CFastInfosetReader::UseGeneratedVocabulary(const CFIVocabulary& vocabulary) {
    detail::NameTable& names = m_builder.Names();
    const auto intern = [&names](const CFIStringTable& from, std::vector<const std::string*>& to) {
        to.clear();
        for (const std::string& entry : from) AddToTable(to, names.Intern(entry));
    };
    intern(vocabulary.GetPrefixNamesTable(), m_prefixes);
    intern(vocabulary.GetNamespaceNamesTable(), m_namespaces);
    intern(vocabulary.GetLocalNamesTable(), m_localNames);
    m_attributeValues.assign(vocabulary.GetAttributeValuesTable().begin(), vocabulary.GetAttributeValuesTable().end());
    m_chunks.assign(vocabulary.GetCharacterChunksTable().begin(), vocabulary.GetCharacterChunksTable().end());
    const auto resolve = [this](const CFIQNameTable& from, std::vector<Name>& to) {
        to.clear();
        for (const CQNameParts& parts : from) {
            const std::string* uri =
                parts.namespaceName ? At(m_namespaces, parts.namespaceName, detail::kFIInteger1Bit2) : &detail::EmptyString();
            AddToTable(to, Name{uri, At(m_localNames, parts.localName, detail::kFIInteger1Bit2)});
        }
    };
    resolve(vocabulary.GetElementNamesTable(), m_elementNames);
    resolve(vocabulary.GetAttributeNamesTable(), m_attributeNames);
}

void CFastInfosetReader::ReadNameSurrogates(std::vector<Name>& table) {
    for (uint32_t n = m_input.LengthOfSequence(); n > 0; --n) {
        const uint8_t parts = m_input.Next();
        if (parts & 0xFC) ThrowFIError(detail::kFIElementType);
        if (parts == 0x02) ThrowFIError(detail::kFIPrefixWithoutNamespace);
        if (parts & 0x02) At(m_prefixes, m_input.Integer1To2pw20Bit2(m_input.Next()), detail::kFIInteger1Bit2);
        const std::string* uri = (parts & 0x01)
                                     ? At(m_namespaces, m_input.Integer1To2pw20Bit2(m_input.Next()), detail::kFIInteger1Bit2)
                                     : &detail::EmptyString();
        AddToTable(table, Name{uri, At(m_localNames, m_input.Integer1To2pw20Bit2(m_input.Next()), detail::kFIInteger1Bit2)});
    }
}

void CFastInfosetReader::InitialVocabulary() {
    const uint8_t first = m_input.Next();
    const uint8_t second = m_input.Next();
    if (first & 0x10) {
        // Tables agreed out of band: the context's generated vocabulary, when it
        // is in use and names the same vocabulary (or none in particular).
        const uint64_t length = m_input.NonEmptyOctetStringBit2Length(m_input.Next());
        const std::string uri(reinterpret_cast<const char*>(m_input.Move(length)), length);
        const std::string& expected = m_context.GetExternalVocabularyURI();
        if (m_context.GetUseGeneratedVocabulary() && (expected.empty() || expected == uri)) {
            UseGeneratedVocabulary(m_context.GetVocabulary());
        }
    }
    const auto strings = [this](std::vector<const std::string*>& table) {
        for (uint32_t n = m_input.LengthOfSequence(); n > 0; --n) {
            const uint8_t octet = m_input.Next();
            if (octet & 0x80) ThrowFIError(detail::kFIOctetStringBit2);
            const uint64_t length = m_input.NonEmptyOctetStringBit2Length(octet);
            const unsigned char* data = m_input.Move(length);
            AddToTable(table, m_builder.Names().Intern(m_local.Convert(reinterpret_cast<const char*>(data), length)));
        }
    };
    const auto skipStrings = [this] {
        for (uint32_t n = m_input.LengthOfSequence(); n > 0; --n) SkipOctetStringBit2();
    };
    const auto values = [this](std::vector<std::string>* table) {
        for (uint32_t n = m_input.LengthOfSequence(); n > 0; --n) {
            const uint8_t octet = m_input.Next();
            if (octet & 0xE0) ThrowFIError(detail::kFIEncodedStringBit3);
            m_scratch.clear();
            EncodedCharacterStringBit3(octet, m_scratch);
            if (table) AddToTable(*table, m_scratch);
        }
    };
    if (first & 0x08) {  // restricted alphabets: checked, not used for decoding
        for (uint32_t n = m_input.LengthOfSequence(); n > 0; --n) {
            const uint64_t length = m_input.NonEmptyOctetStringBit2Length(m_input.Next());
            const std::size_t count = CountCharacters(m_input.Move(length), length);
            if (count < 2 || count > detail::kFIMaxIndex) ThrowFIError(detail::kFIRestrictedAlphabet);
        }
    }
    if (first & 0x04) skipStrings();  // encoding algorithm URIs
    if (first & 0x02) strings(m_prefixes);
    if (first & 0x01) strings(m_namespaces);
    if (second & 0x80) strings(m_localNames);
    if (second & 0x40) skipStrings();  // other NCNames
    if (second & 0x20) skipStrings();  // other URIs
    if (second & 0x10) values(&m_attributeValues);
    if (second & 0x08) values(&m_chunks);
    if (second & 0x04) values(nullptr);  // other strings
    if (second & 0x02) ReadNameSurrogates(m_elementNames);
    if (second & 0x01) ReadNameSurrogates(m_attributeNames);
}

}  // namespace KvXmlLib10
