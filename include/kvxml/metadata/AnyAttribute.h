// AnyAttribute.h - an attribute the schema leaves open (xs:anyAttribute) and the collection that gathers them.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/XmlCollection.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"
#include "kvxml/metadata/WildcardIterator.h"

namespace KvXmlLib10 {

/// One arbitrary attribute: local name (the element name of the object),
/// namespace and value. It writes itself with WriteAttributeString onto the
/// element whose start tag is open.
class KVXML_API CAttribute : public CXmlObjectBase, public CInstanceMonitor {
public:
    /// Null strings are taken as empty.
    CAttribute(const char* name, const char* value = "", const char* namespaceUri = "");
    ~CAttribute() override;

    using CXmlObjectBase::GetBase;
    CXmlObjectBase* GetBase() override;
    /// Both the attribute's namespace.
    std::string GetTargetNamespace() const override;
    std::string GetNamespace() const override;

    const std::string& GetValue() const { return m_value; }
    void SetValue(const char* value);
    /// Renames the attribute; FireOnChangeName follows.
    void SetName(const char* name);
    /// FireOnChangeNamespace follows.
    void SetNamespace(const char* namespaceUri);

    /// A new attribute with the same name, namespace and value (count 0).
    CAttribute* Clone() const;

protected:
    // Change hooks for subclasses; nothing of their own.
    virtual void FireOnChangeName();
    virtual void FireOnChangeNamespace();

    void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                   const CXmlSerializationContext& context, bool flag) const override;
    /// Takes the value of element's attribute of the same name and namespace,
    /// when there is one; consumes no child.
    CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext& context,
                             bool flag) override;

private:
    std::string m_namespace;
    std::string m_value;
};

/// An ordered collection of CAttribute with a namespace restriction ("##any",
/// "##other", "##local", "##targetNamespace" or URIs) that reading enforces.
class KVXML_API CAttributeCol : public CXmlCollection, public CInstanceMonitor {
public:
    /// Throws CKvInvalidNamespaceException "Namespace Restriction must have a
    /// value" or "Target Namespace must have a value" for a null string, and
    /// "Invalid Namespace [%s]" for a "##" token that is not a keyword.
    CAttributeCol(const char* name, const char* restriction = "##any", const char* targetNamespace = "");
    ~CAttributeCol() override;

    // Adding takes a reference; each returns the attribute added.
    CAttribute* Add(CAttribute* attribute);
    CAttribute* Add(const char* name);
    CAttribute* Add(const char* name, const char* value);
    CAttribute* Add(const char* name, const char* value, const char* namespaceUri);

    /// The attribute at index, no reference taken; index as GetNodeAtIndex.
    CAttribute* Item(int32_t index) const;

    /// Forward iteration in order (see CWildcardIterator).
    typedef CWildcardIterator<CAttribute> iterator;
    iterator begin() const;
    iterator end() const;

    /// A deep copy with the same restriction (count 0).
    CAttributeCol* Clone() const;

    const std::string& GetNamespaceRestriction() const { return m_restriction; }
    std::string GetTargetNamespace() const override;

protected:
    /// Each attribute writes itself onto the open element.
    void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                   const CXmlSerializationContext& context, bool flag) const override;
    /// Adds every attribute of element; one whose namespace the restriction
    /// refuses throws CKvInvalidNamespaceException
    /// "Invalid Attribute [%s]. The attributes namespace is Inappropriate.".
    /// Returns firstChild.
    CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext& context,
                             bool flag) override;

private:
    std::string m_restriction;
};

}  // namespace KvXmlLib10
