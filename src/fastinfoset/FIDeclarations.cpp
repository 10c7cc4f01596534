// FIDeclarations.cpp - declaration texts in FInfoDecl order.
#include "fastinfoset/detail/FIDeclarations.h"

namespace KvXmlLib10::detail {

const char* const kFInfoDeclTexts[10] = {
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

}  // namespace KvXmlLib10::detail
