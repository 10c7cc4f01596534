// FastInfosetContext.cpp - encoding table and the suggested encodings.
#include "kvxml/fastinfoset/FastInfosetContext.h"

#include "kvxml/values/ItemType.h"

namespace KvXmlLib10 {

CFastInfosetContext::CFastInfosetContext() = default;

void CFastInfosetContext::SetEncoding(uint32_t type, EncodedCharacterString encoding) {
    if (type < kEncodingCount) m_encodings[type] = encoding;
}

void CFastInfosetContext::SetSuggestedValues() {
    const auto algorithm = [](uint32_t index) { return EncodedCharacterString{ECS_Algorithm, index}; };
    const auto alphabet = [](uint32_t index) { return EncodedCharacterString{ECS_RestrictedAlphabet, index}; };
    for (EncodedCharacterString& entry : m_encodings) entry = EncodedCharacterString{};

    m_encodings[hexBinary] = algorithm(1);
    m_encodings[base64Binary] = algorithm(2);
    // Each unsigned type takes the next wider signed algorithm, so every value fits.
    m_encodings[i1] = m_encodings[i2] = m_encodings[ui1] = algorithm(3);
    m_encodings[i4] = m_encodings[ui2] = algorithm(4);
    m_encodings[i8] = m_encodings[ui4] = m_encodings[ui8] = algorithm(5);
    m_encodings[r4] = algorithm(7);
    m_encodings[r8] = algorithm(8);
    for (int type = yearMonth; type <= time; ++type) m_encodings[type] = alphabet(2);
    m_encodings[boolean] = algorithm(6);
    m_encodings[decimal] = m_encodings[integer] = alphabet(1);
}

void CFastInfosetContext::SetExternalVocabularyURI(const char* uri) { m_externalVocabularyURI = uri ? uri : ""; }

}  // namespace KvXmlLib10
