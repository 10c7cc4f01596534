// Drawing.h - generated-style binding: an abstract class with two derived types chosen by xsi:type, and a recursive type.
//
//   <xs:element name="drawing" type="d:Drawing"/>          (targetNamespace urn:kvxml:test:drawing)
//   Drawing:  figure d:Figure+ (abstract, the concrete type from xsi:type), layer d:Layer?
//   Figure:   abstract; @id string
//   Circle:   extends Figure with radius double
//   Square:   extends Figure with side decimal
//   Layer:    name string, layer d:Layer* (a tree of layers)
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/SmartPtr.h"
#include "kvxml/core/XmlCollection.h"
#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/values/Decimal.h"

namespace kvbind {

class CDrawingClass : public KvXmlLib10::CXmlGeneratedClass {
public:
    KvXmlLib10::CXmlObjectBase* GetBase() override { return this; }
    std::string GetNamespace() const override;
    std::string GetTargetNamespace() const override;
};

/// Base of the figures; never instantiated on its own.
class CFigure : public CDrawingClass {
public:
    enum Property : int32_t { Prop_Id = 1, Prop_Size };
    std::string id;

protected:
    CFigure();
};

class CCircle : public CFigure {
public:
    CCircle();
    double radius;

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;
};

class CSquare : public CFigure {
public:
    CSquare();
    KvXmlLib10::CDecimal side;

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;
};

/// The figure class an element's xsi:type names (Circle or Square), or null.
KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlObjectBase> DrawingCreateFigure(KvXmlLib10::CXmlElement* element);

class CLayer : public CDrawingClass {
public:
    CLayer();
    enum Property : int32_t { Prop_Name = 1, Prop_Layer };
    std::string name;
    /// Child layers, of class CLayer named "layer".
    KvXmlLib10::CXmlCollection& Layer() { return *m_layer; }

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlCollection> m_layer;
};

class CDrawing : public CDrawingClass {
public:
    CDrawing();
    enum Property : int32_t { Prop_Figure = 1, Prop_Layer };
    /// One or more CCircle or CSquare objects named "figure".
    KvXmlLib10::CXmlCollection& Figure() { return *m_figure; }
    CLayer* GetLayer() const { return m_layer.get(); }
    void SetLayer(CLayer* layer) { m_layer = layer; }

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlCollection> m_figure;
    KvXmlLib10::CSmartPtr<CLayer> m_layer;
};

}  // namespace kvbind
