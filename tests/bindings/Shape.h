// Shape.h - generated-style binding: a class whose content is a choice, in no namespace.
//
//   <xs:element name="Shape">
//     <xs:complexType>
//       <xs:choice>
//         <xs:element name="circle" type="xs:double"/>   (radius, minExclusive 0)
//         <xs:element name="square" type="xs:decimal"/>  (side)
//         <xs:element name="label" type="xs:string" nillable="true"/>
//         <xs:element name="color" type="Color"/>        (red, green, blue)
//       </xs:choice>
//       <xs:attribute name="name" type="xs:string"/>
//     </xs:complexType>
//   </xs:element>
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/values/Decimal.h"

namespace kvbind {

enum class ShapeColor : int32_t { Red = 0, Green = 1, Blue = 2 };

/// An unknown text throws CKvInvalidValueException "The value [%s] is not a member of the enumeration Color".
const char* ShapeColorToString(int32_t value);
int32_t ShapeColorFromString(const char* text);

class CShape : public KvXmlLib10::CXmlGeneratedClass {
public:
    CShape();
    ~CShape() override;

    enum Property : int32_t { Prop_Circle = 1, Prop_Square, Prop_Label, Prop_Color, Prop_Name };
    /// Which member of the choice is set; setting one drops the others.
    enum class Choice { None, Circle, Square, Label, Color };

    Choice GetChoice() const { return m_choice; }
    void ClearChoice() { m_choice = Choice::None; }

    double GetCircle() const { return m_circle; }
    void SetCircle(double value) {
        m_circle = value;
        m_choice = Choice::Circle;
    }
    const KvXmlLib10::CDecimal& GetSquare() const { return m_square; }
    void SetSquare(const KvXmlLib10::CDecimal& value) {
        m_square = value;
        m_choice = Choice::Square;
    }
    const std::string& GetLabel() const { return m_label; }
    bool IsLabelNil() const { return m_labelNil; }
    void SetLabel(const std::string& value) {
        m_label = value;
        m_labelNil = false;
        m_choice = Choice::Label;
    }
    void SetLabelNil() {
        m_labelNil = true;
        m_choice = Choice::Label;
    }
    ShapeColor GetColor() const { return m_color; }
    void SetColor(ShapeColor value) {
        m_color = value;
        m_choice = Choice::Color;
    }

    const std::string& GetName() const { return m_name; }
    bool IsNameSet() const { return m_nameSet; }
    void SetName(const std::string& value) {
        m_name = value;
        m_nameSet = true;
    }

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

    Choice m_choice;
    double m_circle;
    KvXmlLib10::CDecimal m_square;
    std::string m_label;
    bool m_labelNil;
    ShapeColor m_color;
    std::string m_name;
    bool m_nameSet;
};

}  // namespace kvbind
