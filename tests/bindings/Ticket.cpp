// Ticket.cpp - metadata and property access of CTicket, as a code generator emits them.
#include "Ticket.h"

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

const char* const kTicketNamespace = "urn:kvxml:test:ticket";
const char* const kExtNamespace = "urn:kvxml:test:ext";

const char* const kTicketStatusNames[] = {"open", "pending", "closed"};
const char* const kTicketSeverityNames[] = {"minor", "major", "critical"};
const char* const kTicketPriorityNames[] = {"low", "normal", "high"};

const char* TicketEnumText(const char* const* names, int32_t count, int32_t value) {
    return value >= 0 && value < count ? names[value] : nullptr;
}

int32_t TicketEnumValue(const char* const* names, int32_t count, const char* text, const char* enumName) {
    for (int32_t i = 0; i < count; ++i)
        if (std::strcmp(names[i], text) == 0) return i;
    throw CKvInvalidValueException(
        FormatString("The value [%s] is not a member of the enumeration %s", text, enumName));
}

// Frees the descriptors when the program unloads.
struct TicketCleanup {
    ~TicketCleanup() { CTicket::ReleaseMetaData(); }
} g_ticketCleanup;

}  // namespace

const char* TicketStatusToString(int32_t value) { return TicketEnumText(kTicketStatusNames, 3, value); }
int32_t TicketStatusFromString(const char* text) { return TicketEnumValue(kTicketStatusNames, 3, text, "Status"); }
const char* TicketSeverityToString(int32_t value) { return TicketEnumText(kTicketSeverityNames, 3, value); }
int32_t TicketSeverityFromString(const char* text) {
    return TicketEnumValue(kTicketSeverityNames, 3, text, "Severity");
}
const char* TicketPriorityToString(int32_t value) { return TicketEnumText(kTicketPriorityNames, 3, value); }
int32_t TicketPriorityFromString(const char* text) {
    return TicketEnumValue(kTicketPriorityNames, 3, text, "Priority");
}

std::atomic<CParentElementInfo*> CTicket::ms_classInfo{nullptr};
CElementInfo** CTicket::ms_elementInfo = nullptr;
CAttributeInfo** CTicket::ms_attributeInfo = nullptr;

CTicket::CTicket() {
    SetElementName("Ticket");
    ResetProperties();
}

CTicket::~CTicket() = default;

std::string CTicket::GetNamespace() const { return kTicketNamespace; }
std::string CTicket::GetTargetNamespace() const { return kTicketNamespace; }

CParentElementInfo* CTicket::GetClassInfo() const {
    InitMetaData();
    return ms_classInfo.load(std::memory_order_acquire);
}

CElementInfo** CTicket::GetClassElementInfo() const {
    InitMetaData();
    return ms_elementInfo;
}

CAttributeInfo** CTicket::GetClassAttributeInfo() const {
    InitMetaData();
    return ms_attributeInfo;
}

void CTicket::InitMetaData() {
    if (ms_classInfo.load(std::memory_order_acquire)) return;
    m_csInit.Enter();
    try {
        if (!ms_classInfo.load(std::memory_order_relaxed)) {
            const CPrimitiveRestrictions none;
            const auto preserve = CWhitespaceUtils::WhitespaceRule::Preserve;
            const auto collapse = CWhitespaceUtils::WhitespaceRule::Collapse;

            ms_elementInfo = new CElementInfo*[6];
            ms_elementInfo[0] = new CElementInfoSeqPrimMnd("title", kTicketNamespace, Prop_Title, false, string,
                                                           nullptr, preserve, none);
            ms_elementInfo[1] = new CElementInfoSeqEnumMnd("status", kTicketNamespace, Prop_Status, false,
                                                           TicketStatusToString, TicketStatusFromString);
            ms_elementInfo[2] = new CElementInfoSeqEnumOpt("severity", kTicketNamespace, Prop_Severity, true,
                                                           TicketSeverityToString, TicketSeverityFromString);
            ms_elementInfo[3] =
                new CElementInfoSeqPrimOpt("note", kTicketNamespace, Prop_Note, true, string, nullptr, preserve, none);
            ms_elementInfo[4] =
                new CElementInfoSeqPrimOpt("due", kTicketNamespace, Prop_Due, false, date, nullptr, collapse, none);
            ms_elementInfo[5] = nullptr;

            ms_attributeInfo = new CAttributeInfo*[8];
            ms_attributeInfo[0] =
                new CAttributeInfoPrimitive("id", "", Prop_Id, false, ui4, nullptr, collapse, none, nullptr);
            ms_attributeInfo[1] = new CAttributeInfoEnum("priority", "", Prop_Priority, true, TicketPriorityToString,
                                                         TicketPriorityFromString, "normal");
            ms_attributeInfo[2] =
                new CAttributeInfoPrimitive("retries", "", Prop_Retries, true, i4, nullptr, collapse, none, "3");
            ms_attributeInfo[3] =
                new CAttributeInfoPrimitive("ratio", "", Prop_Ratio, true, r8, nullptr, collapse, none, "1.0");
            ms_attributeInfo[4] =
                new CAttributeInfoPrimitive("lang", "", Prop_Lang, true, string, nullptr, preserve, none, "en");
            ms_attributeInfo[5] = new CAttributeInfoPrimitive("tag", kExtNamespace, Prop_Tag, true, string, nullptr,
                                                              preserve, none, nullptr);
            ms_attributeInfo[6] = new CAttributeInfoEnum("level", kExtNamespace, Prop_Level, true,
                                                         TicketPriorityToString, TicketPriorityFromString, nullptr);
            ms_attributeInfo[7] = nullptr;

            ms_classInfo.store(new CParentElementInfo(GroupType_Sequence, ElementType_Element, "TicketType",
                                                      kTicketNamespace, false, false, -1, Invalid, nullptr, false),
                               std::memory_order_release);
        }
    } catch (...) {
        m_csInit.Leave();
        throw;
    }
    m_csInit.Leave();
}

void CTicket::ReleaseMetaData() {
    m_csInit.Enter();
    CParentElementInfo* classInfo = ms_classInfo.exchange(nullptr);
    CleanMetaData(classInfo, ms_elementInfo, ms_attributeInfo);
    m_csInit.Leave();
}

void CTicket::AccessProperty(int32_t propertyId, bool read, KvVariant& value) {
    switch (propertyId) {
        case Prop_Title:
            if (read) {
                if (m_titleSet) value.SetString(m_title);
            } else {
                m_title = value.GetString();
                m_titleSet = true;
            }
            break;
        case Prop_Status:
            if (read) {
                if (m_statusSet) value.SetI4(static_cast<int32_t>(m_status));
            } else {
                m_status = static_cast<TicketStatus>(value.GetI4());
                m_statusSet = true;
            }
            break;
        case Prop_Severity:
            if (read) {
                if (m_severityNil)
                    value.SetNil();
                else if (m_severitySet)
                    value.SetI4(static_cast<int32_t>(m_severity));
            } else {
                m_severitySet = value.IsValid();
                m_severityNil = value.IsNil();
                if (m_severitySet && !m_severityNil) m_severity = static_cast<TicketSeverity>(value.GetI4());
            }
            break;
        case Prop_Note:
            if (read) {
                if (m_noteNil)
                    value.SetNil();
                else if (m_noteSet)
                    value.SetString(m_note);
            } else {
                m_noteSet = value.IsValid();
                m_noteNil = value.IsNil();
                if (m_noteSet && !m_noteNil) m_note = value.GetString();
            }
            break;
        case Prop_Due:
            if (read) {
                if (m_dueSet) value.SetDate(m_due);
            } else {
                m_dueSet = value.IsValid() && !value.IsNil();
                if (m_dueSet) m_due = value.GetDate();
            }
            break;
        case Prop_Id:
            if (read) {
                if (m_idSet) value.SetUI4(m_id);
            } else {
                m_id = value.GetUI4();
                m_idSet = true;
            }
            break;
        case Prop_Priority:
            if (read) {
                if (m_prioritySet) value.SetI4(static_cast<int32_t>(m_priority));
            } else {
                m_priority = static_cast<TicketPriority>(value.GetI4());
                m_prioritySet = true;
            }
            break;
        case Prop_Retries:
            if (read) {
                if (m_retriesSet) value.SetI4(m_retries);
            } else {
                m_retries = value.GetI4();
                m_retriesSet = true;
            }
            break;
        case Prop_Ratio:
            if (read) {
                if (m_ratioSet) value.SetR8(m_ratio);
            } else {
                m_ratio = value.GetR8();
                m_ratioSet = true;
            }
            break;
        case Prop_Lang:
            if (read) {
                if (m_langSet) value.SetString(m_lang);
            } else {
                m_lang = value.GetString();
                m_langSet = true;
            }
            break;
        case Prop_Tag:
            if (read) {
                if (m_tagSet) value.SetString(m_tag);
            } else {
                m_tag = value.GetString();
                m_tagSet = true;
            }
            break;
        case Prop_Level:
            if (read) {
                if (m_levelSet) value.SetI4(static_cast<int32_t>(m_level));
            } else {
                m_level = static_cast<TicketPriority>(value.GetI4());
                m_levelSet = true;
            }
            break;
        default:
            throw CKvInvalidParamException(FormatString("Unknown property id %d", propertyId));
    }
}

void CTicket::ResetProperties() {
    m_title.clear();
    m_titleSet = false;
    m_status = TicketStatus::Open;
    m_statusSet = false;
    m_severity = TicketSeverity::Minor;
    m_severitySet = false;
    m_severityNil = false;
    m_note.clear();
    m_noteSet = false;
    m_noteNil = false;
    m_due = CDateTime();
    m_dueSet = false;
    m_id = 0;
    m_idSet = false;
    // Optional attributes with a schema default start out holding it.
    m_priority = TicketPriority::Normal;
    m_prioritySet = true;
    m_retries = 3;
    m_retriesSet = true;
    m_ratio = 1.0;
    m_ratioSet = true;
    m_lang = "en";
    m_langSet = true;
    m_tag.clear();
    m_tagSet = false;
    m_level = TicketPriority::Normal;
    m_levelSet = false;
}

}  // namespace kvbind
