// Settings.cpp - metadata and property access of CSettings, as a code generator emits them.
#include "Settings.h"

#include <cstring>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfoEnumeration.h"
#include "kvxml/metadata/ElementInfoPrimitive.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/values/Variant.h"

namespace kvbind {

using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

const char* const kSettingsNamespace = "urn:kvxml:test:settings";
const char* const kSettingsModeNames[] = {"passive", "active"};
const char* const kSettingsLogLevelNames[] = {"error", "warn", "info", "debug"};

int32_t SettingsEnumValue(const char* const* names, int32_t count, const char* text, const char* enumName) {
    for (int32_t i = 0; i < count; ++i)
        if (std::strcmp(names[i], text) == 0) return i;
    throw CKvInvalidValueException(
        FormatString("The value [%s] is not a member of the enumeration %s", text, enumName));
}

struct SettingsCleanup {
    ~SettingsCleanup() { CSettings::ReleaseMetaData(); }
} g_settingsCleanup;

}  // namespace

const char* SettingsModeToString(int32_t value) {
    return value >= 0 && value < 2 ? kSettingsModeNames[value] : nullptr;
}
int32_t SettingsModeFromString(const char* text) { return SettingsEnumValue(kSettingsModeNames, 2, text, "Mode"); }
const char* SettingsLogLevelToString(int32_t value) {
    return value >= 0 && value < 4 ? kSettingsLogLevelNames[value] : nullptr;
}
int32_t SettingsLogLevelFromString(const char* text) {
    return SettingsEnumValue(kSettingsLogLevelNames, 4, text, "LogLevel");
}

std::atomic<CParentElementInfo*> CSettings::ms_classInfo{nullptr};
CElementInfo** CSettings::ms_elementInfo = nullptr;
CAttributeInfo** CSettings::ms_attributeInfo = nullptr;

CSettings::CSettings() {
    SetElementName("Settings");
    ResetProperties();
}

CSettings::~CSettings() = default;

std::string CSettings::GetNamespace() const { return kSettingsNamespace; }
std::string CSettings::GetTargetNamespace() const { return kSettingsNamespace; }

CParentElementInfo* CSettings::GetClassInfo() const {
    InitMetaData();
    return ms_classInfo.load(std::memory_order_acquire);
}

CElementInfo** CSettings::GetClassElementInfo() const {
    InitMetaData();
    return ms_elementInfo;
}

CAttributeInfo** CSettings::GetClassAttributeInfo() const {
    InitMetaData();
    return ms_attributeInfo;
}

void CSettings::InitMetaData() {
    if (ms_classInfo.load(std::memory_order_acquire)) return;
    m_csInit.Enter();
    try {
        if (!ms_classInfo.load(std::memory_order_relaxed)) {
            const CPrimitiveRestrictions none;
            const CPrimitiveRestrictions portFacets(nullptr, -1, -1, "1", nullptr, nullptr, nullptr, -1);
            const auto preserve = CWhitespaceUtils::WhitespaceRule::Preserve;
            const auto collapse = CWhitespaceUtils::WhitespaceRule::Collapse;

            ms_elementInfo = new CElementInfo*[7];
            ms_elementInfo[0] = new CElementInfoAllPrimMnd("host", kSettingsNamespace, Prop_Host, false, string,
                                                           nullptr, preserve, none);
            ms_elementInfo[1] = new CElementInfoAllPrimMnd("port", kSettingsNamespace, Prop_Port, false, ui2, nullptr,
                                                           collapse, portFacets);
            ms_elementInfo[2] = new CElementInfoAllEnumMnd("mode", kSettingsNamespace, Prop_Mode, false,
                                                           SettingsModeToString, SettingsModeFromString);
            ms_elementInfo[3] = new CElementInfoAllPrimOpt("secure", kSettingsNamespace, Prop_Secure, false, boolean,
                                                           nullptr, collapse, none);
            ms_elementInfo[4] = new CElementInfoAllEnumOpt("logLevel", kSettingsNamespace, Prop_LogLevel, false,
                                                           SettingsLogLevelToString, SettingsLogLevelFromString);
            ms_elementInfo[5] = new CElementInfoAllPrimOpt("timeout", kSettingsNamespace, Prop_Timeout, true, duration,
                                                           nullptr, collapse, none);
            ms_elementInfo[6] = nullptr;

            ms_attributeInfo = new CAttributeInfo*[2];
            ms_attributeInfo[0] =
                new CAttributeInfoPrimitive("version", "", Prop_Version, true, ui1, nullptr, collapse, none, "1");
            ms_attributeInfo[1] = nullptr;

            ms_classInfo.store(new CParentElementInfo(GroupType_All, ElementType_Element, "Settings",
                                                      kSettingsNamespace, false, false, -1, Invalid, nullptr, false),
                               std::memory_order_release);
        }
    } catch (...) {
        m_csInit.Leave();
        throw;
    }
    m_csInit.Leave();
}

void CSettings::ReleaseMetaData() {
    m_csInit.Enter();
    CParentElementInfo* classInfo = ms_classInfo.exchange(nullptr);
    CleanMetaData(classInfo, ms_elementInfo, ms_attributeInfo);
    m_csInit.Leave();
}

void CSettings::AccessProperty(int32_t propertyId, bool read, KvVariant& value) {
    switch (propertyId) {
        case Prop_Host:
            if (!read) {
                SetHost(value.GetString());
            } else if (m_hostSet) {
                value.SetString(m_host);
            }
            break;
        case Prop_Port:
            if (!read) {
                SetPort(value.GetUI2());
            } else if (m_portSet) {
                value.SetUI2(m_port);
            }
            break;
        case Prop_Mode:
            if (!read) {
                SetMode(static_cast<SettingsMode>(value.GetI4()));
            } else if (m_modeSet) {
                value.SetI4(static_cast<int32_t>(m_mode));
            }
            break;
        case Prop_Secure:
            if (!read) {
                SetSecure(value.GetBoolean());
            } else if (m_secureSet) {
                value.SetBoolean(m_secure);
            }
            break;
        case Prop_LogLevel:
            if (!read) {
                SetLogLevel(static_cast<SettingsLogLevel>(value.GetI4()));
            } else if (m_logLevelSet) {
                value.SetI4(static_cast<int32_t>(m_logLevel));
            }
            break;
        case Prop_Timeout:
            if (!read) {
                if (value.IsNil())
                    SetTimeoutNil();
                else
                    SetTimeout(value.GetDuration());
            } else if (m_timeoutNil) {
                value.SetNil();
            } else if (m_timeoutSet) {
                value.SetDuration(m_timeout);
            }
            break;
        case Prop_Version:
            if (!read)
                SetVersion(value.GetUI1());
            else
                value.SetUI1(m_version);
            break;
        default:
            throw CKvInvalidParamException(FormatString("Unknown property id %d", propertyId));
    }
}

void CSettings::ResetProperties() {
    m_host.clear();
    m_hostSet = false;
    m_port = 0;
    m_portSet = false;
    m_mode = SettingsMode::Passive;
    m_modeSet = false;
    m_secure = false;
    m_secureSet = false;
    m_logLevel = SettingsLogLevel::Error;
    m_logLevelSet = false;
    m_timeout = CDateTimeSpan();
    m_timeoutSet = false;
    m_timeoutNil = false;
    m_version = 1;  // the schema default
}

}  // namespace kvbind
