// ExpatReader.h - turns expat's callbacks over a document's input into tree-building calls.
//
// Created, used once and destroyed inside CXmlDocument::ParseText. No C++
// exception may unwind through expat's C frames: every handler catches what
// it raises, stops the parser and lets Parse rethrow once expat has returned.
#pragma once

#include <expat.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dom/detail/ExpatParser.h"
#include "dom/detail/LocalText.h"
#include "dom/detail/NameTable.h"
#include "dom/detail/TreeBuilder.h"

namespace KvXmlLib10 {

class CXmlDocument;
class CXmlElement;

class CExpatReader {
public:
    explicit CExpatReader(CXmlDocument& document);
    ~CExpatReader();
    CExpatReader(const CExpatReader&) = delete;
    CExpatReader& operator=(const CExpatReader&) = delete;

    /// Creates the parser (namespace aware unless the document's schema type
    /// is 2) and registers the handlers.
    void CreateParser();
    /// Parses the document's whole input; throws CKvException
    /// "%s at line %d" on malformed input and rethrows what a handler raised.
    void Parse(bool isFinal);

    static void XMLCALL FnStartElement(void* userData, const char* name, const char** atts);
    static void XMLCALL FnEndElement(void* userData, const char* name);
    static void XMLCALL FnStartNamespace(void* userData, const char* prefix, const char* uri);
    static void XMLCALL FnEndNamespace(void* userData, const char* prefix);
    static void XMLCALL FnText(void* userData, const char* text, int length);
    static void XMLCALL FnStartCDATA(void* userData);
    static void XMLCALL FnEndCDATA(void* userData);
    static void XMLCALL FnEntityDecl(void* userData, const XML_Char* name, int isParameterEntity,
                                     const XML_Char* value, int valueLength, const XML_Char* base,
                                     const XML_Char* systemId, const XML_Char* publicId,
                                     const XML_Char* notationName);

    /// Bytes handed to expat per call while it keeps making progress.
    static constexpr std::size_t kChunkSize = 64 * 1024;

private:
    template <class Action>
    static void Dispatch(void* userData, Action&& action) noexcept;

    void Cleanup();
    void StartElement(const char* name, const char** atts);
    void EndElement();
    void Text(const char* text, int length);
    void StartNamespace(const char* prefix, const char* uri);
    void AppendLiteral(const char* text, std::size_t length);
    void CountEntity();
    const detail::QualifiedName& ResolveName(const char* raw);
    void FlushText();
    std::string_view PendingText(std::size_t start, std::size_t end);
    void AppendPending(const char* text, std::size_t length);

    detail::TreeBuilder m_builder;
    detail::NameTable& m_names;
    std::unique_ptr<detail::LocalText> m_local;
    detail::ExpatParser m_parser;
    // Text of the open elements, outermost first, each from its start offset
    // on: a child's text is taken off the end when it closes, so its
    // parent's stays contiguous. An element gets its text in one piece when
    // it closes, instead of growing it chunk by chunk (indentation between
    // children comes in many small chunks).
    std::vector<char> m_text;
    std::vector<std::size_t> m_textStarts;
    std::size_t m_firstTextLevel = 0;  // the top level when m_text last stopped being empty
    std::exception_ptr m_error;
    uint64_t m_events = 0;
    uint32_t m_entityLimit = 0;  // 0: not counted
    uint32_t m_entities = 0;
};

}  // namespace KvXmlLib10
