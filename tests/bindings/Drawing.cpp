// Drawing.cpp - metadata, factories and property access of the drawing binding, as a code generator emits them.
#include "Drawing.h"

#include "GeneratedSupport.h"
#include "kvxml/core/ClassFactoryBase.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfoClass.h"
#include "kvxml/metadata/ElementInfoCollection.h"
#include "kvxml/metadata/ElementInfoPrimitive.h"
#include "kvxml/metadata/ParentElementInfo.h"

namespace kvbind {

using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

const char* const kDrawing = "urn:kvxml:test:drawing";
const auto kDrawingCollapse = CWhitespaceUtils::WhitespaceRule::Collapse;
const auto kDrawingPreserve = CWhitespaceUtils::WhitespaceRule::Preserve;

enum DrawingClassNumber : int32_t { Class_Layer = 1 };

CSmartPtr<CXmlObjectBase> DrawingCreate(int32_t classNumber, const char* elementName) {
    if (classNumber != Class_Layer) return nullptr;
    CSmartPtr<CXmlObjectBase> layer(new CLayer);
    layer->SetElementName(elementName);
    return layer;
}

// The figures' class descriptors carry their type names so that a figure
// written under <figure> gets its xsi:type.
CParentElementInfo* TypedClass(const char* typeName, bool writeType) {
    return new CParentElementInfo(GroupType_Sequence, ElementType_Element, typeName, kDrawing, false, writeType, -1,
                                  Invalid, nullptr, false);
}

CAttributeInfo** FigureAttributes() {
    return new CAttributeInfo* [2] {
        new CAttributeInfoPrimitive("id", "", CFigure::Prop_Id, false, string, nullptr, kDrawingCollapse,
                                    CPrimitiveRestrictions(), nullptr),
            nullptr
    };
}

ClassTables g_circleTables, g_squareTables, g_layerTables, g_drawingTables;

const ClassTables& CircleTables() {
    return g_circleTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [2] {
            new CElementInfoSeqPrimMnd("radius", kDrawing, CFigure::Prop_Size, false, r8, nullptr, kDrawingCollapse,
                                       CPrimitiveRestrictions()),
                nullptr
        };
        t.attributes = FigureAttributes();
        return TypedClass("Circle", true);
    });
}

const ClassTables& SquareTables() {
    return g_squareTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [2] {
            new CElementInfoSeqPrimMnd("side", kDrawing, CFigure::Prop_Size, false, decimal, nullptr, kDrawingCollapse,
                                       CPrimitiveRestrictions()),
                nullptr
        };
        t.attributes = FigureAttributes();
        return TypedClass("Square", true);
    });
}

const ClassTables& LayerTables() {
    return g_layerTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [3] {
            new CElementInfoSeqPrimMnd("name", kDrawing, CLayer::Prop_Name, false, string, nullptr, kDrawingPreserve,
                                       CPrimitiveRestrictions()),
                new CElementInfoSeqClsCol("layer", kDrawing, CLayer::Prop_Layer, ElementType_Element), nullptr
        };
        t.attributes = new CAttributeInfo* [1] { nullptr };
        return TypedClass("Layer", false);
    });
}

const ClassTables& DrawingTables() {
    return g_drawingTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [3] {
            new CElementInfoSeqAbsClsCol("figure", kDrawing, CDrawing::Prop_Figure, ElementType_Element),
                new CElementInfoSeqClsOpt("layer", kDrawing, CDrawing::Prop_Layer, ElementType_Element, DrawingCreate,
                                          Class_Layer),
                nullptr
        };
        t.attributes = new CAttributeInfo* [1] { nullptr };
        return TypedClass("Drawing", false);
    });
}

}  // namespace

std::string CDrawingClass::GetNamespace() const { return kDrawing; }
std::string CDrawingClass::GetTargetNamespace() const { return kDrawing; }

KVBIND_CLASS_TABLES(CCircle, CircleTables)
KVBIND_CLASS_TABLES(CSquare, SquareTables)
KVBIND_CLASS_TABLES(CLayer, LayerTables)
KVBIND_CLASS_TABLES(CDrawing, DrawingTables)

CSmartPtr<CXmlObjectBase> DrawingCreateFigure(CXmlElement* element) {
    const std::string type = CClassfactoryBase::GetElementType(element);
    if (CClassfactoryBase::GetElementTypeNamespaceUri(element) != kDrawing) return nullptr;
    CSmartPtr<CXmlObjectBase> figure;
    if (type == "Circle") figure = new CCircle;
    else if (type == "Square") figure = new CSquare;
    else return nullptr;
    figure->SetElementName("figure");
    return figure;
}

CFigure::CFigure() { SetElementName("figure"); }

CCircle::CCircle() { ResetProperties(); }

void CCircle::ResetProperties() {
    id.clear();
    radius = 0;
}

void CCircle::AccessProperty(int32_t propertyId, bool read, KvVariant& v) {
    switch (propertyId) {
        case Prop_Id: read ? v.SetString(id) : void(id = v.GetString()); break;
        case Prop_Size: read ? v.SetR8(radius) : void(radius = v.GetR8()); break;
        default: UnknownProperty(propertyId);
    }
}

CSquare::CSquare() { ResetProperties(); }

void CSquare::ResetProperties() {
    id.clear();
    side = CDecimal();
}

void CSquare::AccessProperty(int32_t propertyId, bool read, KvVariant& v) {
    switch (propertyId) {
        case Prop_Id: read ? v.SetString(id) : void(id = v.GetString()); break;
        case Prop_Size: read ? v.SetDecimal(side) : void(side = v.GetDecimal()); break;
        default: UnknownProperty(propertyId);
    }
}

CLayer::CLayer() : m_layer(new CXmlCollection("layer", kDrawing, 0, -1, DrawingCreate, Class_Layer)) {
    SetElementName("layer");
}

void CLayer::ResetProperties() {
    name.clear();
    m_layer->Clear();
}

void CLayer::AccessProperty(int32_t propertyId, bool read, KvVariant& v) {
    switch (propertyId) {
        case Prop_Name: read ? v.SetString(name) : void(name = v.GetString()); break;
        case Prop_Layer:
            if (read) v.SetXmlCollection(m_layer.get());
            break;
        default: UnknownProperty(propertyId);
    }
}

CDrawing::CDrawing() : m_figure(new CXmlCollection("figure", kDrawing, 1, -1, DrawingCreateFigure)) {
    SetElementName("drawing");
}

void CDrawing::ResetProperties() {
    m_figure->Clear();
    m_layer.reset();
}

void CDrawing::AccessProperty(int32_t propertyId, bool read, KvVariant& v) {
    switch (propertyId) {
        case Prop_Figure:
            if (read) v.SetXmlCollection(m_figure.get());
            break;
        case Prop_Layer:
            if (!read) m_layer = AdoptObject<CLayer>(v);
            else if (m_layer) v.SetXmlObject(m_layer.get());
            break;
        default: UnknownProperty(propertyId);
    }
}

}  // namespace kvbind
