// BindingBench.cpp - one generated-style object of 20 mixed primitive children: ToXml, FromXml and the round trip.
//
// Objects per second for writing and reading one object through the public
// entry points, and the round trip in MB/s of the XML it produces (the
// document counted once per round trip).
#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfoPrimitive.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "kvxml/values/Decimal.h"
#include "kvxml/values/Variant.h"

using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

const char* const kNamespace = "urn:example:bench:record";

// A flat record as a code generator emits it: typed members, static
// descriptors built once under m_csInit, an AccessProperty switch.
class CRecord : public CXmlGeneratedClass {
public:
    enum Property : int32_t {
        P_Sku = 1,
        P_Name,
        P_Quantity,
        P_Price,
        P_Discount,
        P_Weight,
        P_Active,
        P_Created,
        P_ShipDate,
        P_ShipTime,
        P_Code,
        P_Serial,
        P_Balance,
        P_Level,
        P_Flags,
        P_Delta,
        P_Count,
        P_Digest,
        P_Token,
        P_Warranty,
        P_Id
    };

    CRecord() {
        SetElementName("record");
        ResetProperties();
    }

    void Fill() {
        m_sku = "123-AB";
        m_name = "Nuts & Bolts (assorted)";
        m_quantity = 42;
        m_price = CDecimal("148.95");
        m_discount = 0.125;
        m_weight = 2.5f;
        m_active = true;
        m_created = CDateTime("2024-06-01T12:30:45Z");
        m_shipDate.ParseXSDDate("2024-06-03");
        m_shipTime.ParseXSDTime("08:15:00");
        m_code = 4711;
        m_serial = 9007199254740993ull;
        m_balance = -123456789012ll;
        m_level = -3;
        m_flags = 0xA5;
        m_delta = -7;
        m_count = 1000000;
        unsigned char digest[16] = {0xDE, 0xAD, 0xBE, 0xEF, 0x01, 0x23, 0x45, 0x67,
                                    0x89, 0xAB, 0xCD, 0xEF, 0xFE, 0xDC, 0xBA, 0x98};
        m_digest = CBinaryData(digest, 16, false);
        unsigned char token[24];
        for (int i = 0; i < 24; ++i) token[i] = static_cast<unsigned char>(i * 37);
        m_token = CBinaryData(token, 24, false);
        m_warranty = CDateTimeSpan(2, 0, 0, 0, 0, 0);
        m_id = 100234;
        m_set = ~0u;
    }
    uint32_t GetQuantity() const { return m_quantity; }

    CXmlObjectBase* GetBase() override { return this; }
    std::string GetNamespace() const override { return kNamespace; }
    std::string GetTargetNamespace() const override { return kNamespace; }
    CParentElementInfo* GetClassInfo() const override {
        Init();
        return ms_classInfo.load(std::memory_order_acquire);
    }
    CElementInfo** GetClassElementInfo() const override {
        Init();
        return ms_elements;
    }
    CAttributeInfo** GetClassAttributeInfo() const override {
        Init();
        return ms_attributes;
    }

protected:
    void AccessProperty(int32_t id, bool read, KvVariant& v) override {
        if (read && !((m_set >> id) & 1u)) return;
        if (!read) m_set |= 1u << id;
        switch (id) {
            case P_Sku:
                read ? v.SetString(m_sku) : void(m_sku = v.GetString());
                break;
            case P_Name:
                read ? v.SetString(m_name) : void(m_name = v.GetString());
                break;
            case P_Quantity:
                read ? v.SetUI4(m_quantity) : void(m_quantity = v.GetUI4());
                break;
            case P_Price:
                read ? v.SetDecimal(m_price) : void(m_price = v.GetDecimal());
                break;
            case P_Discount:
                read ? v.SetR8(m_discount) : void(m_discount = v.GetR8());
                break;
            case P_Weight:
                read ? v.SetR4(m_weight) : void(m_weight = v.GetR4());
                break;
            case P_Active:
                read ? v.SetBoolean(m_active) : void(m_active = v.GetBoolean());
                break;
            case P_Created:
                read ? v.SetDateTime(m_created) : void(m_created = v.GetDateTime());
                break;
            case P_ShipDate:
                read ? v.SetDate(m_shipDate) : void(m_shipDate = v.GetDate());
                break;
            case P_ShipTime:
                read ? v.SetTime(m_shipTime) : void(m_shipTime = v.GetTime());
                break;
            case P_Code:
                read ? v.SetUI2(m_code) : void(m_code = v.GetUI2());
                break;
            case P_Serial:
                read ? v.SetUI8(m_serial) : void(m_serial = v.GetUI8());
                break;
            case P_Balance:
                read ? v.SetI8(m_balance) : void(m_balance = v.GetI8());
                break;
            case P_Level:
                read ? v.SetI2(m_level) : void(m_level = v.GetI2());
                break;
            case P_Flags:
                read ? v.SetUI1(m_flags) : void(m_flags = v.GetUI1());
                break;
            case P_Delta:
                read ? v.SetI1(m_delta) : void(m_delta = v.GetI1());
                break;
            case P_Count:
                read ? v.SetI4(m_count) : void(m_count = v.GetI4());
                break;
            case P_Digest:
                read ? v.SetHexBinary(m_digest) : void(m_digest = v.GetHexBinary());
                break;
            case P_Token:
                read ? v.SetBase64Binary(m_token) : void(m_token = v.GetBase64Binary());
                break;
            case P_Warranty:
                read ? v.SetDuration(m_warranty) : void(m_warranty = v.GetDuration());
                break;
            case P_Id:
                read ? v.SetUI8(m_id) : void(m_id = v.GetUI8());
                break;
            default:
                throw CKvInvalidParamException(FormatString("Unknown property id %d", id));
        }
    }
    void ResetProperties() override { m_set = 0; }

public:
    static void ReleaseMetaData() {
        CParentElementInfo* classInfo = ms_classInfo.exchange(nullptr);
        CleanMetaData(classInfo, ms_elements, ms_attributes);
    }

private:
    static void Init() {
        if (ms_classInfo.load(std::memory_order_acquire)) return;
        m_csInit.Enter();
        if (!ms_classInfo.load(std::memory_order_relaxed)) {
            const CPrimitiveRestrictions none;
            const CPrimitiveRestrictions sku("[0-9]{3}-[A-Z]{2}", -1, -1, nullptr, nullptr, nullptr, nullptr, -1);
            const CPrimitiveRestrictions quantity(nullptr, -1, -1, "1", nullptr, nullptr, "1000", -1);
            const auto keep = CWhitespaceUtils::WhitespaceRule::Preserve;
            const auto trim = CWhitespaceUtils::WhitespaceRule::Collapse;
            struct Row {
                const char* name;
                Property id;
                ItemType type;
                const CPrimitiveRestrictions* facets;
            };
            const Row rows[] = {
                {"sku", P_Sku, KvXmlLib10::string, &sku},
                {"name", P_Name, KvXmlLib10::string, &none},
                {"quantity", P_Quantity, ui4, &quantity},
                {"price", P_Price, decimal, &none},
                {"discount", P_Discount, r8, &none},
                {"weight", P_Weight, r4, &none},
                {"active", P_Active, boolean, &none},
                {"created", P_Created, datetime, &none},
                {"shipDate", P_ShipDate, date, &none},
                {"shipTime", P_ShipTime, KvXmlLib10::time, &none},
                {"code", P_Code, ui2, &none},
                {"serial", P_Serial, ui8, &none},
                {"balance", P_Balance, i8, &none},
                {"level", P_Level, i2, &none},
                {"flags", P_Flags, ui1, &none},
                {"delta", P_Delta, i1, &none},
                {"count", P_Count, i4, &none},
                {"digest", P_Digest, hexBinary, &none},
                {"token", P_Token, base64Binary, &none},
                {"warranty", P_Warranty, duration, &none},
            };
            ms_elements = new CElementInfo*[21];
            for (int i = 0; i < 20; ++i)
                ms_elements[i] =
                    new CElementInfoSeqPrimMnd(rows[i].name, kNamespace, rows[i].id, false, rows[i].type, nullptr,
                                               rows[i].type == KvXmlLib10::string ? keep : trim, *rows[i].facets);
            ms_elements[20] = nullptr;
            ms_attributes = new CAttributeInfo*[2];
            ms_attributes[0] = new CAttributeInfoPrimitive("id", "", P_Id, false, ui8, nullptr, trim, none, nullptr);
            ms_attributes[1] = nullptr;
            ms_classInfo.store(new CParentElementInfo(GroupType_Sequence, ElementType_Element, "record", kNamespace,
                                                      false, false, -1, Invalid, nullptr, false),
                               std::memory_order_release);
        }
        m_csInit.Leave();
    }

    static std::atomic<CParentElementInfo*> ms_classInfo;
    static CElementInfo** ms_elements;
    static CAttributeInfo** ms_attributes;

    uint32_t m_set;
    std::string m_sku, m_name;
    uint32_t m_quantity = 0;
    CDecimal m_price;
    double m_discount = 0;
    float m_weight = 0;
    bool m_active = false;
    CDateTime m_created, m_shipDate, m_shipTime;
    uint16_t m_code = 0;
    uint64_t m_serial = 0;
    int64_t m_balance = 0;
    int16_t m_level = 0;
    uint8_t m_flags = 0;
    int8_t m_delta = 0;
    int32_t m_count = 0;
    CBinaryData m_digest, m_token;
    CDateTimeSpan m_warranty;
    uint64_t m_id = 0;
};

std::atomic<CParentElementInfo*> CRecord::ms_classInfo{nullptr};
CElementInfo** CRecord::ms_elements = nullptr;
CAttributeInfo** CRecord::ms_attributes = nullptr;

struct RecordCleanup {
    ~RecordCleanup() { CRecord::ReleaseMetaData(); }
} g_recordCleanup;

void ToXmlOneObject(benchmark::State& state) {
    CRecord record;
    record.Fill();
    size_t bytes = 0;
    for (auto _ : state) {
        std::string text = record.ToXml();
        bytes = text.size();
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
    state.counters["xml_bytes"] = static_cast<double>(bytes);
}
BENCHMARK(ToXmlOneObject);

void FromXmlOneObject(benchmark::State& state) {
    CRecord source;
    source.Fill();
    const std::string text = source.ToXml();
    CRecord record;
    for (auto _ : state) {
        record.FromXml(text.c_str());
        benchmark::DoNotOptimize(record.GetQuantity());
    }
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(FromXmlOneObject);

void RoundTripOneObject(benchmark::State& state) {
    CRecord record;
    record.Fill();
    CRecord copy;
    size_t bytes = 0;
    for (auto _ : state) {
        const std::string text = record.ToXml();
        copy.FromXml(text.c_str());
        bytes = text.size();
        benchmark::DoNotOptimize(copy.GetQuantity());
    }
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}
BENCHMARK(RoundTripOneObject);

// The same round trip through UTF-8 bytes (ToXmlStream / FromXmlStream).
void RoundTripOneObjectBytes(benchmark::State& state) {
    CRecord record;
    record.Fill();
    CRecord copy;
    size_t bytes = 0;
    for (auto _ : state) {
        const CBinaryData data = record.ToXmlStream();
        copy.FromXmlStream(data);
        bytes = data.GetLength();
        benchmark::DoNotOptimize(copy.GetQuantity());
    }
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}
BENCHMARK(RoundTripOneObjectBytes);

}  // namespace
