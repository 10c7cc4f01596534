// Measurement.h - generated-style binding: a nillable element with simple content (a decimal) and attributes.
//
//   <xs:element name="Measurement" type="m:Measurement" nillable="true"/>  (targetNamespace urn:kvxml:test:measure)
//   <xs:complexType name="Measurement">
//     <xs:simpleContent>
//       <xs:extension base="xs:decimal">
//         <xs:attribute name="unit" type="m:Unit" use="required"/>   (kg, g, lb)
//         <xs:attribute name="precision" type="xs:int" default="2"/>
//         <xs:attribute name="source" type="xs:string"/>
//         <xs:attribute name="taken" type="xs:dateTime"/>
//       </xs:extension>
//     </xs:simpleContent>
//   </xs:complexType>
// The type may be derived from, so the class may say its type with xsi:type
// when it is written under another element name.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/Decimal.h"

namespace kvbind {

enum class MeasurementUnit : int32_t { Kg = 0, G = 1, Lb = 2 };

/// An unknown text throws CKvInvalidValueException "The value [%s] is not a member of the enumeration Unit".
const char* MeasurementUnitToString(int32_t value);
int32_t MeasurementUnitFromString(const char* text);

class CMeasurement : public KvXmlLib10::CXmlGeneratedClass, public KvXmlLib10::INillable {
public:
    CMeasurement();
    ~CMeasurement() override;

    enum Property : int32_t { Prop_Value = 1, Prop_Unit, Prop_Precision, Prop_Source, Prop_Taken };

    bool IsNil() const override { return m_nil; }
    void SetNil(bool nil) override { m_nil = nil; }

    const KvXmlLib10::CDecimal& GetValue() const { return m_value; }
    void SetValue(const KvXmlLib10::CDecimal& value) {
        m_value = value;
        m_valueSet = true;
    }
    bool IsValueSet() const { return m_valueSet; }

    MeasurementUnit GetUnit() const { return m_unit; }
    void SetUnit(MeasurementUnit value) {
        m_unit = value;
        m_unitSet = true;
    }
    bool IsUnitSet() const { return m_unitSet; }

    int32_t GetPrecision() const { return m_precision; }
    void SetPrecision(int32_t value) { m_precision = value; }

    const std::string& GetSource() const { return m_source; }
    void SetSource(const std::string& value) {
        m_source = value;
        m_sourceSet = true;
    }
    bool IsSourceSet() const { return m_sourceSet; }

    const KvXmlLib10::CDateTime& GetTaken() const { return m_taken; }
    void SetTaken(const KvXmlLib10::CDateTime& value) {
        m_taken = value;
        m_takenSet = true;
    }
    bool IsTakenSet() const { return m_takenSet; }

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

    bool m_nil;
    KvXmlLib10::CDecimal m_value;
    bool m_valueSet;
    MeasurementUnit m_unit;
    bool m_unitSet;
    int32_t m_precision;
    std::string m_source;
    bool m_sourceSet;
    KvXmlLib10::CDateTime m_taken;
    bool m_takenSet;
};

}  // namespace kvbind
