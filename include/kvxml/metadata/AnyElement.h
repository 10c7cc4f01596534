// AnyElement.h - an element the schema leaves open (xs:any) with its attributes, text and children, and the
// collection that holds such elements.
//
// Wildcard content is foreign input: trees of any depth are copied, read,
// written, cloned and destroyed without recursion.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/XmlCollection.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"
#include "kvxml/metadata/AnyAttribute.h"
#include "kvxml/metadata/WildcardIterator.h"

namespace KvXmlLib10 {

class CElementCol;

/// One arbitrary element. Its namespace must satisfy its namespace
/// restriction (in the wildcard notation: "##any", "##other", "##local",
/// "##targetNamespace" or URIs) against its target namespace. Mixed content
/// does not keep its order: the text is written after the children.
class KVXML_API CElement : public CXmlObjectBase, public CInstanceMonitor {
public:
    /// Restriction "##any", empty target namespace.
    explicit CElement(const char* name);
    CElement(const char* name, const char* namespaceUri);
    /// Throws CKvInvalidNamespaceException: "Element Name must have a value",
    /// "Namespace Restriction must have a value", "Target Namespace must have
    /// a value" for a null string, "Invalid Namespace [%s]" for a "##" token
    /// that is not a keyword, and the message of TestNamespace when the
    /// namespace does not satisfy the restriction.
    CElement(const char* name, const char* namespaceUri, const char* restriction, const char* targetNamespace);
    /// An element named `name` holding the XML of object (restriction "##any").
    CElement(const CXmlObjectBase* object, const char* name);
    /// Gives up the attribute and child collections; subtrees of any depth go
    /// without recursion.
    ~CElement() override;

    using CXmlObjectBase::GetBase;
    /// The element stands for itself.
    CXmlObjectBase* GetBase() override;
    std::string GetTargetNamespace() const override;
    std::string GetNamespace() const override;

    // Every reading entry point reads the element from the document element
    // itself (not from its first child, as a generated class would); a
    // document element the restriction refuses throws as TestNamespace.
    void FromXmlFile(const char* fileName,
                     const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) override;
    void FromXml(const char* xmlText,
                 const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) override;
    void FromXml(const wchar_t* xmlText,
                 const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) override;
    using CXmlObjectBase::FromXmlStream;
    void FromXmlStream(unsigned char* data, uint32_t length,
                       const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) override;
    using CXmlObjectBase::FromXmlElement;
    void FromXmlElement(const CXmlElement* element,
                        const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) override;

    /// Restarts the element: the strings as given, empty text, new empty
    /// attribute ("##any") and child ("##any", 0 to unbounded) collections.
    /// Throws as the four-string constructor.
    void Init(const char* name, const char* namespaceUri, const char* restriction, const char* targetNamespace);
    /// Takes a new restriction after testing the element's own namespace
    /// against it: CKvInvalidNamespaceException "The namespace %s in the class
    /// %s is invalid against restriction %s" (namespace, element name,
    /// restriction), leaving the old one. Children keep theirs.
    void SetNamespaceRestrictions(const char* restriction, const char* targetNamespace);
    /// Replaces name, namespace, text, attributes and children with those of
    /// the document element; an "xmlns" attribute also becomes the element's
    /// own default namespace.
    void CopyXmlElement(const CXmlElement* element);
    /// A deep copy (count 0).
    CElement* Clone() const;

    const std::string& GetText() const { return m_text; }
    void SetText(const char* text);
    /// Renames the element; FireOnChangeName follows.
    void SetName(const char* name);
    void SetNamespace(const char* namespaceUri);
    const std::string& GetNamespaceRestriction() const { return m_restriction; }
    /// The "xmlns" value seen when copied from a document, else "".
    const std::string& GetOwnDefaultNamespace() const { return m_ownDefaultNamespace; }
    /// The collections ("##any", the element's target namespace; children 0
    /// to unbounded), no reference taken.
    CAttributeCol* GetAttributes() const;
    CElementCol* GetElements() const;

protected:
    // Change hooks for subclasses; nothing of their own.
    virtual void FireOnChangeName();
    virtual void FireOnChangeText();
    virtual void FireOnChangeNamespace();

    /// Start tag, attributes, children, text, end tag. An element with its own
    /// default namespace is written by a separate text writer and inserted raw
    /// (no attributes); that form needs a CXmlTextWriter and otherwise throws
    /// CKvException.
    void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                   const CXmlSerializationContext& context, bool flag) const override;
    /// Reads firstChild itself (the cursor): a namespace the restriction
    /// refuses reads nothing and returns firstChild; otherwise attributes,
    /// children, text, name and namespace are taken and the next sibling is
    /// returned. A child the child collection refuses throws
    /// CKvValidationException "Invalid Element [%s] found in element [%s]".
    CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext& context,
                             bool flag) override;

private:
    struct Tree;

    std::string m_text;
    std::string m_namespace;
    std::string m_restriction;
    std::string m_targetNamespace;
    // One reference held on each; made when first needed.
    mutable CAttributeCol* m_attributes = nullptr;
    mutable CElementCol* m_elements = nullptr;
    std::string m_ownDefaultNamespace;
};

/// An ordered collection of CElement with a namespace restriction.
class KVXML_API CElementCol : public CXmlCollection, public CInstanceMonitor {
public:
    /// Throws as CAttributeCol's constructor.
    CElementCol(const char* name, const char* restriction, const char* targetNamespace, int32_t minOccurs,
                int32_t maxOccurs);
    ~CElementCol() override;

    // Adding takes a reference; each returns the element added.
    CElement* Add(CElement* element);
    /// A new element in the collection's target namespace; throws
    /// CKvInvalidParamException "A Namespace has not been set for this
    /// Collection" when that is empty.
    CElement* Add(const char* name);
    CElement* Add(const char* name, const char* namespaceUri);

    /// The element at index, no reference taken; index as GetNodeAtIndex.
    CElement* Item(int32_t index) const;

    /// Forward iteration in order (see CWildcardIterator).
    typedef CWildcardIterator<CElement> iterator;
    iterator begin() const;
    iterator end() const;

    /// A deep copy with the same restriction and bounds (count 0).
    CElementCol* Clone() const;

    const std::string& GetNamespaceRestriction() const { return m_restriction; }
    std::string GetTargetNamespace() const override;

    /// As FromXml_Int, but only elements with this local name in this
    /// namespace are taken; the name "AnyElement" takes what FromXml_Int takes.
    virtual CXmlElement* FromXmlLockElementName_Int(CXmlElement* element, CXmlElement* firstChild,
                                                    const CXmlSerializationContext& context, const char* elementName,
                                                    const char* namespaceUri);

protected:
    /// Reads consecutive elements from firstChild on while their namespace
    /// satisfies the restriction; returns the first element not taken.
    CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext& context,
                             bool flag) override;

private:
    CXmlElement* ReadRun(CXmlElement* current, const CXmlSerializationContext& context, const std::string* name,
                         const std::string* namespaceUri);

    std::string m_restriction;
};

}  // namespace KvXmlLib10
