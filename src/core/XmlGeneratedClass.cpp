// XmlGeneratedClass.cpp - the generated-class base: metadata lifetime, property access and the writing half of the engine.
#include "kvxml/core/XmlGeneratedClass.h"

#include "core/detail/NestingGuard.h"
#include "core/detail/NillableOf.h"

#include "kvxml/core/SerializationContext.h"
#include "kvxml/core/XmlCollectionBase.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AnyAttribute.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfo.h"
#include "kvxml/metadata/ElementInfoCollection.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/output/XmlWriter.h"
#include "kvxml/values/Variant.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10 {

using KvXmlLib10Data::CAttributeInfo;
using KvXmlLib10Data::CElementInfo;
using KvXmlLib10Data::CParentElementInfo;

namespace {

// The context's additional root attributes go onto the root element right
// after its start tag.
void WriteAdditionalRootAttributes(CXmlWriter* writer, const char* targetNamespace,
                                   const CXmlSerializationContext& context, bool flag) {
    CAttributeCol* attributes = context.GetAdditionalRootAttributes();
    if (!attributes) return;
    try {
        CXmlObjectBase::ToXml_Int(attributes, writer, false, targetNamespace, context, flag);
    } catch (...) {
        attributes->Release();
        throw;
    }
    attributes->Release();
}

}  // namespace

CKVCriticalSection CXmlGeneratedClass::m_csInit;

CXmlGeneratedClass::CXmlGeneratedClass() = default;
CXmlGeneratedClass::CXmlGeneratedClass(const CXmlGeneratedClass& other) = default;
CXmlGeneratedClass& CXmlGeneratedClass::operator=(const CXmlGeneratedClass& other) = default;
CXmlGeneratedClass::~CXmlGeneratedClass() = default;

CXmlObjectBase* CXmlGeneratedClass::GetBase() { return this; }

void CXmlGeneratedClass::CleanMetaData(CParentElementInfo*& classInfo, CElementInfo**& elementInfo,
                                       CAttributeInfo**& attributeInfo) {
    delete classInfo;
    classInfo = nullptr;
    if (elementInfo) {
        for (CElementInfo** item = elementInfo; *item; ++item) delete *item;
        delete[] elementInfo;
        elementInfo = nullptr;
    }
    if (attributeInfo) {
        for (CAttributeInfo** item = attributeInfo; *item; ++item) delete *item;
        delete[] attributeInfo;
        attributeInfo = nullptr;
    }
}

void CXmlGeneratedClass::ReadProperty(int32_t propertyId, KvVariant& value) const {
    // Reading through the accessor leaves the object as it was.
    const_cast<CXmlGeneratedClass*>(this)->AccessProperty(propertyId, true, value);
}

int32_t CXmlGeneratedClass::GetClassElementInfoCount() const {
    CElementInfo** elements = GetClassElementInfo();
    int32_t count = 0;
    if (elements)
        while (elements[count]) ++count;
    return count;
}

bool CXmlGeneratedClass::IsElementInList(const CXmlSerializationContext& context, CXmlElement* element) const {
    CElementInfo** elements = GetClassElementInfo();
    if (!elements) return false;
    for (; *elements; ++elements)
        if ((*elements)->IsThisElement(context, element)) return true;
    return false;
}

bool CXmlGeneratedClass::DoesElementContainOptionalElements() const {
    CElementInfo** elements = GetClassElementInfo();
    if (!elements) return false;
    for (; *elements; ++elements) {
        // A choice collection may be absent when it may be empty; any other
        // choice member is optional by nature.
        if (const auto* list = dynamic_cast<const KvXmlLib10Data::CElementInfoChoiceCol*>(*elements)) {
            KvVariant value;
            list->ReadProperty(this, value);
            detail::HeldObject collection(value.GetXmlCollection());
            if (collection.get() && static_cast<CXmlCollectionBase*>(collection.get())->GetMinOccurs() == 0)
                return true;
        } else if (dynamic_cast<const KvXmlLib10Data::CElementInfoChoice*>(*elements)) {
            return true;
        }
    }
    return false;
}

// ---- writing ----

void CXmlGeneratedClass::ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                                   const CXmlSerializationContext& context, bool flag) const {
    try {
        detail::NestingGuard level(context);
        WriteContent(writer, *GetClassInfo(), isRoot, targetNamespace, context, flag);
    } catch (const CKvException& error) {
        throw CKvValidationException(
            FormatString("Failed to convert the element [%s] to XML", GetElementName().c_str()), error);
    }
}

void CXmlGeneratedClass::WriteContent(CXmlWriter* writer, const CParentElementInfo& info, bool isRoot,
                                      const char* targetNamespace, const CXmlSerializationContext& context,
                                      bool flag) const {
    const bool ownElement = info.GetElementType() == KvXmlLib10Data::ElementType_Element;
    if (ownElement) {
        if (isRoot) {
            for (const std::string& instruction : context.GetProcessingInstructions()) writer->WritePI(instruction);
            const CNamespaceAliasMap& aliases = context.GetNamespaceAliases();
            const int count = aliases.GetNamespaceCount();
            for (int i = 0; i < count; ++i) {
                const std::string namespaceUri = aliases.GetNamespaceAt(i);
                writer->AddNamespace(aliases.GetAliasFromNamespace(namespaceUri.c_str()), namespaceUri);
            }
            if (!context.GetDefaultNamespaceURI().empty())
                writer->SetDefaultNamespace(context.GetDefaultNamespaceURI());
        }
        writer->WriteStartElement(GetElementName(), targetNamespace ? targetNamespace : "");
        if (isRoot) WriteAdditionalRootAttributes(writer, targetNamespace, context, flag);
        AttributesToXml_Int(writer, context);
        if (isRoot && !context.GetInLineSchema().empty()) writer->WriteInlineSchema(context.GetInLineSchema());
    }

    const INillable* nillable = detail::NillableOf(*this);
    if (nillable && nillable->IsNil()) {
        writer->WriteAttributeNil();
    } else {
        CElementInfo** elements = GetClassElementInfo();
        switch (info.GetGroupType()) {
            case KvXmlLib10Data::GroupType_Sequence:
                ProcessElementSeqToXml(context, elements, writer);
                break;
            case KvXmlLib10Data::GroupType_All:
                ProcessElementAllToXml(context, elements, writer);
                break;
            case KvXmlLib10Data::GroupType_Choice:
                ProcessElementChoiceToXml(context, elements, writer, flag);
                break;
            default:
                throw CKvException("Unknown XML Group Type");
        }
        if (info.HasSimpleContent()) {
            KvVariant value;
            ReadProperty(info.GetValuePropertyId(), value);
            if (value.IsNil())
                writer->WriteAttributeNil();
            else
                writer->WriteString(value.ToString(info.GetValueFormat().c_str()), info.GetValueItemType());
        }
    }

    if (ownElement) writer->WriteEndElement();
}

void CXmlGeneratedClass::AttributesToXml_Int(CXmlWriter* writer, const CXmlSerializationContext& context) const {
    try {
        const CParentElementInfo* info = GetClassInfo();
        // Under an element name other than its type's own, the object is a
        // derived or substituted type: say which.
        if (context.GetWriteTypeAttribute() && info->GetWriteTypeAttribute() &&
            GetElementName() != info->GetElementName())
            writer->WriteAttributeType(info->GetNamespaceURI(), info->GetElementName(), KvXmlLib10::string);
        ProcessAttributesToXml(context, GetClassElementInfo(), GetClassAttributeInfo(), writer);
    } catch (const CKvException& error) {
        throw CKvException("Failed to convert attributes to XML", error);
    }
}

void CXmlGeneratedClass::ProcessAttributesToXml(const CXmlSerializationContext& context, CElementInfo** elements,
                                                CAttributeInfo** attributes, CXmlWriter* writer) const {
    if (attributes)
        for (; *attributes; ++attributes) (*attributes)->AttributeToXml(context, this, writer);
    if (elements)
        for (; *elements; ++elements) (*elements)->PseudoChildAttributeToXml(context, this, writer);
}

void CXmlGeneratedClass::ProcessElementSeqToXml(const CXmlSerializationContext& context, CElementInfo** elements,
                                                CXmlWriter* writer) const {
    if (!elements) return;
    for (; *elements; ++elements) (*elements)->ElementToXml(context, this, writer);
}

void CXmlGeneratedClass::ProcessElementAllToXml(const CXmlSerializationContext& context, CElementInfo** elements,
                                                CXmlWriter* writer) const {
    if (!elements) return;
    for (; *elements; ++elements) (*elements)->ElementToXml(context, this, writer);
}

void CXmlGeneratedClass::ProcessElementChoiceToXml(const CXmlSerializationContext& context, CElementInfo** elements,
                                                   CXmlWriter* writer, bool allowEmpty) const {
    if (elements)
        for (; *elements; ++elements)
            if ((*elements)->ElementToXml(context, this, writer)) return;
    if (DoesElementContainOptionalElements() || allowEmpty || context.GetIgnoreMissingChoice()) return;
    throw CKvValidationException(
        "This element is a choice, and as such must have at one (and only one) valid item, currently there are "
        "none set");
}

}  // namespace KvXmlLib10
