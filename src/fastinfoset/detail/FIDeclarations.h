// FIDeclarations.h - the nine XML declarations that may precede Fast Infoset bytes.
#pragma once

#include <cstddef>

#include "kvxml/core/FInfoDecl.h"

namespace KvXmlLib10::detail {

/// The declaration's exact bytes, indexed by FInfoDecl (entry 0, none, is "").
extern const char* const kFInfoDeclTexts[10];
constexpr std::size_t kFInfoDeclCount = 9;

/// The four octets that start every Fast Infoset document: identification and version 1.
constexpr unsigned char kFIHeader[4] = {0xE0, 0x00, 0x00, 0x01};

}  // namespace KvXmlLib10::detail
