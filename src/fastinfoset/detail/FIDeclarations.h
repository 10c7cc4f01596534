// FIDeclarations.h - the nine XML declarations that may precede Fast Infoset bytes.
#pragma once

#include <cstddef>

#include "kvxml/core/FInfoDecl.h"

namespace KvXmlLib10::detail {

/// The declaration's exact bytes, indexed by FInfoDecl (entry 0, none, is "").
inline constexpr const char* kFInfoDeclTexts[10] = {
    "",
    "<?xml encoding='finf'?>",
    "<?xml encoding='finf' standalone='yes'?>",
    "<?xml encoding='finf' standalone='no'?>",
    "<?xml version='1.0' encoding='finf'?>",
    "<?xml version='1.0' encoding='finf' standalone='yes'?>",
    "<?xml version='1.0' encoding='finf' standalone='no'?>",
    "<?xml version='1.1' encoding='finf'?>",
    "<?xml version='1.1' encoding='finf' standalone='yes'?>",
    "<?xml version='1.1' encoding='finf' standalone='no'?>",
};
constexpr std::size_t kFInfoDeclCount = 9;

/// The two built-in restricted alphabets: a character's 4-bit code is its
/// position; code 15 pads an odd count.
inline constexpr char kNumericAlphabet[] = "0123456789-+.E ";
inline constexpr char kDateTimeAlphabet[] = "0123456789-:TZ ";

/// The four octets that start every Fast Infoset document: identification and version 1.
inline constexpr unsigned char kFIHeader[4] = {0xE0, 0x00, 0x00, 0x01};

}  // namespace KvXmlLib10::detail
