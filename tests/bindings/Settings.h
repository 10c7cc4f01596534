// Settings.h - generated-style binding: a class whose content is an all group.
//
//   <xs:element name="Settings">   (targetNamespace urn:kvxml:test:settings, elementFormDefault qualified)
//     <xs:complexType>
//       <xs:all>
//         <xs:element name="host" type="xs:string"/>
//         <xs:element name="port" type="xs:unsignedShort"/>            (minInclusive 1)
//         <xs:element name="mode" type="s:Mode"/>                       (passive, active)
//         <xs:element name="secure" type="xs:boolean" minOccurs="0"/>
//         <xs:element name="logLevel" type="s:LogLevel" minOccurs="0"/> (error, warn, info, debug)
//         <xs:element name="timeout" type="xs:duration" minOccurs="0" nillable="true"/>
//       </xs:all>
//       <xs:attribute name="version" type="xs:unsignedByte" default="1"/>
//     </xs:complexType>
//   </xs:element>
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/values/DateTimeSpan.h"

namespace kvbind {

enum class SettingsMode : int32_t { Passive = 0, Active = 1 };
enum class SettingsLogLevel : int32_t { Error = 0, Warn = 1, Info = 2, Debug = 3 };

/// Unknown texts throw CKvInvalidValueException "The value [%s] is not a member of the enumeration <Name>".
const char* SettingsModeToString(int32_t value);
int32_t SettingsModeFromString(const char* text);
const char* SettingsLogLevelToString(int32_t value);
int32_t SettingsLogLevelFromString(const char* text);

class CSettings : public KvXmlLib10::CXmlGeneratedClass {
public:
    CSettings();
    ~CSettings() override;

    enum Property : int32_t {
        Prop_Host = 1,
        Prop_Port,
        Prop_Mode,
        Prop_Secure,
        Prop_LogLevel,
        Prop_Timeout,
        Prop_Version
    };

    const std::string& GetHost() const { return m_host; }
    void SetHost(const std::string& value) {
        m_host = value;
        m_hostSet = true;
    }
    bool IsHostSet() const { return m_hostSet; }

    uint16_t GetPort() const { return m_port; }
    void SetPort(uint16_t value) {
        m_port = value;
        m_portSet = true;
    }
    bool IsPortSet() const { return m_portSet; }

    SettingsMode GetMode() const { return m_mode; }
    void SetMode(SettingsMode value) {
        m_mode = value;
        m_modeSet = true;
    }
    bool IsModeSet() const { return m_modeSet; }

    bool GetSecure() const { return m_secure; }
    void SetSecure(bool value) {
        m_secure = value;
        m_secureSet = true;
    }
    bool IsSecureSet() const { return m_secureSet; }

    SettingsLogLevel GetLogLevel() const { return m_logLevel; }
    void SetLogLevel(SettingsLogLevel value) {
        m_logLevel = value;
        m_logLevelSet = true;
    }
    bool IsLogLevelSet() const { return m_logLevelSet; }

    const KvXmlLib10::CDateTimeSpan& GetTimeout() const { return m_timeout; }
    void SetTimeout(const KvXmlLib10::CDateTimeSpan& value) {
        m_timeout = value;
        m_timeoutSet = true;
        m_timeoutNil = false;
    }
    void SetTimeoutNil() {
        m_timeoutSet = true;
        m_timeoutNil = true;
    }
    bool IsTimeoutSet() const { return m_timeoutSet; }
    bool IsTimeoutNil() const { return m_timeoutNil; }

    uint8_t GetVersion() const { return m_version; }
    void SetVersion(uint8_t value) { m_version = value; }

    KvXmlLib10::CXmlObjectBase* GetBase() override { return this; }
    std::string GetNamespace() const override;
    std::string GetTargetNamespace() const override;
    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

    /// Frees the shared descriptors; not while another thread uses the class.
    static void ReleaseMetaData();

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    static void InitMetaData();

    static std::atomic<KvXmlLib10Data::CParentElementInfo*> ms_classInfo;
    static KvXmlLib10Data::CElementInfo** ms_elementInfo;
    static KvXmlLib10Data::CAttributeInfo** ms_attributeInfo;

    std::string m_host;
    bool m_hostSet;
    uint16_t m_port;
    bool m_portSet;
    SettingsMode m_mode;
    bool m_modeSet;
    bool m_secure;
    bool m_secureSet;
    SettingsLogLevel m_logLevel;
    bool m_logLevelSet;
    KvXmlLib10::CDateTimeSpan m_timeout;
    bool m_timeoutSet;
    bool m_timeoutNil;
    uint8_t m_version;
};

}  // namespace kvbind
