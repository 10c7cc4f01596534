// Ticket.h - generated-style binding: a sequence with enumerations, nillable members and attributes with defaults.
//
//   <xs:element name="Ticket" type="t:TicketType"/>   (targetNamespace urn:kvxml:test:ticket)
//   <xs:complexType name="TicketType">
//     <xs:sequence>
//       <xs:element name="title" type="xs:string"/>
//       <xs:element name="status" type="t:Status"/>
//       <xs:element name="severity" type="t:Severity" minOccurs="0" nillable="true"/>
//       <xs:element name="note" type="xs:string" minOccurs="0" nillable="true"/>
//       <xs:element name="due" type="xs:date" minOccurs="0"/>
//     </xs:sequence>
//     <xs:attribute name="id" type="xs:unsignedInt" use="required"/>
//     <xs:attribute name="priority" type="t:Priority" default="normal"/>
//     <xs:attribute name="retries" type="xs:int" default="3"/>
//     <xs:attribute name="ratio" type="xs:double" default="1.0"/>
//     <xs:attribute name="lang" type="xs:string" default="en"/>
//     <xs:attribute ref="ext:tag"/>    (xs:string, namespace urn:kvxml:test:ext)
//     <xs:attribute ref="ext:level"/>  (t:Priority, namespace urn:kvxml:test:ext)
//   </xs:complexType>
//   Status: open, pending, closed.  Severity: minor, major, critical.  Priority: low, normal, high.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/values/DateTime.h"

namespace kvbind {

enum class TicketStatus : int32_t { Open = 0, Pending = 1, Closed = 2 };
enum class TicketSeverity : int32_t { Minor = 0, Major = 1, Critical = 2 };
enum class TicketPriority : int32_t { Low = 0, Normal = 1, High = 2 };

/// Schema text of each enumeration value and back. An unknown text throws
/// CKvInvalidValueException "The value [%s] is not a member of the enumeration <Name>".
const char* TicketStatusToString(int32_t value);
int32_t TicketStatusFromString(const char* text);
const char* TicketSeverityToString(int32_t value);
int32_t TicketSeverityFromString(const char* text);
const char* TicketPriorityToString(int32_t value);
int32_t TicketPriorityFromString(const char* text);

class CTicket : public KvXmlLib10::CXmlGeneratedClass {
public:
    CTicket();
    ~CTicket() override;

    // Property ids passed to AccessProperty by the descriptors.
    enum Property : int32_t {
        Prop_Title = 1,
        Prop_Status,
        Prop_Severity,
        Prop_Note,
        Prop_Due,
        Prop_Id,
        Prop_Priority,
        Prop_Retries,
        Prop_Ratio,
        Prop_Lang,
        Prop_Tag,
        Prop_Level
    };

    const std::string& GetTitle() const { return m_title; }
    void SetTitle(const std::string& value) {
        m_title = value;
        m_titleSet = true;
    }
    bool IsTitleSet() const { return m_titleSet; }

    TicketStatus GetStatus() const { return m_status; }
    void SetStatus(TicketStatus value) {
        m_status = value;
        m_statusSet = true;
    }
    bool IsStatusSet() const { return m_statusSet; }

    TicketSeverity GetSeverity() const { return m_severity; }
    void SetSeverity(TicketSeverity value) {
        m_severity = value;
        m_severitySet = true;
        m_severityNil = false;
    }
    bool IsSeveritySet() const { return m_severitySet; }
    bool IsSeverityNil() const { return m_severityNil; }
    void SetSeverityNil() {
        m_severitySet = true;
        m_severityNil = true;
    }
    void ClearSeverity() {
        m_severitySet = false;
        m_severityNil = false;
    }

    const std::string& GetNote() const { return m_note; }
    void SetNote(const std::string& value) {
        m_note = value;
        m_noteSet = true;
        m_noteNil = false;
    }
    bool IsNoteSet() const { return m_noteSet; }
    bool IsNoteNil() const { return m_noteNil; }
    void SetNoteNil() {
        m_noteSet = true;
        m_noteNil = true;
    }
    void ClearNote() {
        m_noteSet = false;
        m_noteNil = false;
    }

    const KvXmlLib10::CDateTime& GetDue() const { return m_due; }
    void SetDue(const KvXmlLib10::CDateTime& value) {
        m_due = value;
        m_dueSet = true;
    }
    bool IsDueSet() const { return m_dueSet; }
    void ClearDue() { m_dueSet = false; }

    uint32_t GetId() const { return m_id; }
    void SetId(uint32_t value) {
        m_id = value;
        m_idSet = true;
    }
    bool IsIdSet() const { return m_idSet; }

    TicketPriority GetPriority() const { return m_priority; }
    void SetPriority(TicketPriority value) {
        m_priority = value;
        m_prioritySet = true;
    }
    void ClearPriority() { m_prioritySet = false; }

    int32_t GetRetries() const { return m_retries; }
    void SetRetries(int32_t value) {
        m_retries = value;
        m_retriesSet = true;
    }
    void ClearRetries() { m_retriesSet = false; }

    double GetRatio() const { return m_ratio; }
    void SetRatio(double value) {
        m_ratio = value;
        m_ratioSet = true;
    }
    void ClearRatio() { m_ratioSet = false; }

    const std::string& GetLang() const { return m_lang; }
    void SetLang(const std::string& value) {
        m_lang = value;
        m_langSet = true;
    }
    void ClearLang() { m_langSet = false; }

    const std::string& GetTag() const { return m_tag; }
    void SetTag(const std::string& value) {
        m_tag = value;
        m_tagSet = true;
    }
    bool IsTagSet() const { return m_tagSet; }

    TicketPriority GetLevel() const { return m_level; }
    void SetLevel(TicketPriority value) {
        m_level = value;
        m_levelSet = true;
    }
    bool IsLevelSet() const { return m_levelSet; }

    KvXmlLib10::CXmlObjectBase* GetBase() override { return this; }
    std::string GetNamespace() const override;
    std::string GetTargetNamespace() const override;
    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

    /// Frees the shared descriptors; the next use builds them again. Called
    /// at unload; not while another thread uses the class.
    static void ReleaseMetaData();

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    static void InitMetaData();

    static std::atomic<KvXmlLib10Data::CParentElementInfo*> ms_classInfo;
    static KvXmlLib10Data::CElementInfo** ms_elementInfo;
    static KvXmlLib10Data::CAttributeInfo** ms_attributeInfo;

    std::string m_title;
    bool m_titleSet;
    TicketStatus m_status;
    bool m_statusSet;
    TicketSeverity m_severity;
    bool m_severitySet;
    bool m_severityNil;
    std::string m_note;
    bool m_noteSet;
    bool m_noteNil;
    KvXmlLib10::CDateTime m_due;
    bool m_dueSet;
    uint32_t m_id;
    bool m_idSet;
    TicketPriority m_priority;
    bool m_prioritySet;
    int32_t m_retries;
    bool m_retriesSet;
    double m_ratio;
    bool m_ratioSet;
    std::string m_lang;
    bool m_langSet;
    std::string m_tag;
    bool m_tagSet;
    TicketPriority m_level;
    bool m_levelSet;
};

}  // namespace kvbind
