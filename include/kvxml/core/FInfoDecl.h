// FInfoDecl.h - which XML declaration, if any, precedes Fast Infoset bytes.
#pragma once

#include <cstdint>

namespace KvXmlLib10 {

enum FInfoDecl : int32_t {
    FInfoDecl_None = 0,
    FInfoDecl_Finf = 1,                   // <?xml encoding='finf'?>
    FInfoDecl_Finf_StandaloneYes = 2,     // <?xml encoding='finf' standalone='yes'?>
    FInfoDecl_Finf_StandaloneNo = 3,      // <?xml encoding='finf' standalone='no'?>
    FInfoDecl_V10_Finf = 4,               // <?xml version='1.0' encoding='finf'?>
    FInfoDecl_V10_Finf_StandaloneYes = 5, // <?xml version='1.0' encoding='finf' standalone='yes'?>
    FInfoDecl_V10_Finf_StandaloneNo = 6,  // <?xml version='1.0' encoding='finf' standalone='no'?>
    FInfoDecl_V11_Finf = 7,               // <?xml version='1.1' encoding='finf'?>
    FInfoDecl_V11_Finf_StandaloneYes = 8, // <?xml version='1.1' encoding='finf' standalone='yes'?>
    FInfoDecl_V11_Finf_StandaloneNo = 9   // <?xml version='1.1' encoding='finf' standalone='no'?>
};

}  // namespace KvXmlLib10
