// ExpatParser.h - an expat parser owned by a unique_ptr, freed however the parse ends.
#pragma once

#include <expat.h>

#include <memory>

namespace KvXmlLib10::detail {

struct ExpatParserFree {
    void operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }
};

/// Used by the document reader and by the kvxml converter.
using ExpatParser = std::unique_ptr<XML_ParserStruct, ExpatParserFree>;

}  // namespace KvXmlLib10::detail
