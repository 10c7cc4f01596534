// FastInfosetContext.h - the options of Fast Infoset output and input.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/fastinfoset/FIVocabulary.h"
#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// How each primitive type is encoded, how long a string may be and still
/// be indexed, and the vocabulary. Reached through
/// CXmlSerializationContext::GetFIContext(); copies copy the vocabulary.
class KVXML_API CFastInfosetContext {
public:
    enum EncodedCharacterStringKind : uint32_t {
        ECS_Literal = 0,             // a literal character string
        ECS_RestrictedAlphabet = 1,  // index: 1 numeric, 2 date and time
        ECS_Algorithm = 2            // index: built-in encoding algorithm 1..10
    };

    /// Kind and index; (0, 0) writes a literal string.
    struct EncodedCharacterString {
        uint32_t kind = ECS_Literal;
        uint32_t index = 0;

        bool operator==(const EncodedCharacterString& other) const {
            return kind == other.kind && index == other.index;
        }
        bool operator!=(const EncodedCharacterString& other) const { return !(*this == other); }
    };

    /// One entry per ItemType code, 0 to 28.
    static constexpr uint32_t kEncodingCount = 29;

    CFastInfosetContext();

    uint8_t GetDefaultStringEncoding() const { return m_defaultStringEncoding; }
    void SetDefaultStringEncoding(uint8_t value) { m_defaultStringEncoding = value; }

    /// The entry for an ItemType code; codes past the table read as literal.
    EncodedCharacterString GetEncoding(uint32_t type) const {
        return type < kEncodingCount ? m_encodings[type] : EncodedCharacterString{};
    }
    /// Codes past the table are ignored.
    void SetEncoding(uint32_t type, EncodedCharacterString encoding);
    /// The recommended table: binary integers, floats, booleans and bytes,
    /// restricted alphabets for dates, times and decimal numbers.
    void SetSuggestedValues();

    /// Strings shorter than these are added to the value tables (default 6).
    uint32_t GetAttributeMaxAddLength() const { return m_attributeMaxAddLength; }
    void SetAttributeMaxAddLength(uint32_t value) { m_attributeMaxAddLength = value; }
    uint32_t GetElementMaxAddLength() const { return m_elementMaxAddLength; }
    void SetElementMaxAddLength(uint32_t value) { m_elementMaxAddLength = value; }

    /// Whether documents start from GetVocabulary() and name it by
    /// GetExternalVocabularyURI() (default false).
    bool GetUseGeneratedVocabulary() const { return m_useGeneratedVocabulary; }
    void SetUseGeneratedVocabulary(bool value) { m_useGeneratedVocabulary = value; }

    CFIVocabulary& GetVocabulary() { return m_vocabulary; }
    const CFIVocabulary& GetVocabulary() const { return m_vocabulary; }

    const std::string& GetExternalVocabularyURI() const { return m_externalVocabularyURI; }
    /// Null is "".
    void SetExternalVocabularyURI(const char* uri);

private:
    uint8_t m_defaultStringEncoding = 0;
    EncodedCharacterString m_encodings[kEncodingCount];
    uint32_t m_attributeMaxAddLength = 6;
    uint32_t m_elementMaxAddLength = 6;
    bool m_useGeneratedVocabulary = false;
    CFIVocabulary m_vocabulary;
    std::string m_externalVocabularyURI;
};

}  // namespace KvXmlLib10
