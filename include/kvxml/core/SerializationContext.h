// SerializationContext.h - the options every serialisation call carries.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "kvxml/core/NamespaceAliasMap.h"
#include "kvxml/fastinfoset/FastInfosetContext.h"
#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

class CAttributeCol;

/// How documents are parsed: 0 (the default) and 1 are namespace aware;
/// 2 parses without namespace processing and matches names without them.
enum SchemaType : int32_t {
    SchemaType_Default = 0,
    SchemaType_Namespaces = 1,
    SchemaType_NoNamespaces = 2
};

/// A plain value: build one, set options, pass it by const reference.
/// Not locked; the global default is meant to be configured once, before
/// concurrent use.
class KVXML_API CXmlSerializationContext {
public:
    CXmlSerializationContext();
    /// Copies every option; the copy starts without additional root attributes.
    CXmlSerializationContext(const CXmlSerializationContext& other);
    /// Copies every option; each context keeps its own additional root attributes.
    CXmlSerializationContext& operator=(const CXmlSerializationContext& other);
    virtual ~CXmlSerializationContext();

    /// The context every entry point uses when none is passed.
    static CXmlSerializationContext m_defaultContext;

    bool GetWriteTypeAttribute() const { return m_writeTypeAttribute; }
    void SetWriteTypeAttribute(bool value) { m_writeTypeAttribute = value; }
    bool GetIgnoreUnknownAttributes() const { return m_ignoreUnknownAttributes; }
    void SetIgnoreUnknownAttributes(bool value) { m_ignoreUnknownAttributes = value; }
    bool GetIgnoreUnknownElements() const { return m_ignoreUnknownElements; }
    /// Throws CKvInvalidStateException when turning it on while
    /// IgnoreMissingMandatoryElements is on; the flag is then unchanged.
    void SetIgnoreUnknownElements(bool value);
    bool GetIgnoreMissingMandatoryElements() const { return m_ignoreMissingMandatoryElements; }
    /// Throws CKvInvalidStateException when turning it on while
    /// IgnoreUnknownElements is on; the flag is then unchanged.
    void SetIgnoreMissingMandatoryElements(bool value);
    bool GetIgnoreMissingChoice() const { return m_ignoreMissingChoice; }
    void SetIgnoreMissingChoice(bool value) { m_ignoreMissingChoice = value; }
    bool GetIgnoreInvalidCollectionCounts() const { return m_ignoreInvalidCollectionCounts; }
    void SetIgnoreInvalidCollectionCounts(bool value) { m_ignoreInvalidCollectionCounts = value; }
    /// Also true whenever the schema type is SchemaType_NoNamespaces.
    bool GetIgnoreNamespaces() const;
    void SetIgnoreNamespaces(bool value) { m_ignoreNamespaces = value; }
    bool GetNoOptionalAttributeDefaultOutput() const { return m_noOptionalAttributeDefaultOutput; }
    void SetNoOptionalAttributeDefaultOutput(bool value) { m_noOptionalAttributeDefaultOutput = value; }
    bool GetStripCDATA() const { return m_stripCDATA; }
    void SetStripCDATA(bool value) { m_stripCDATA = value; }
    /// Off (the default): an element without a namespace written inside a
    /// non-empty default namespace gets neither a prefix nor xmlns="", so a
    /// reader takes it to be in the default namespace and the document does
    /// not read back into the same objects. On: such an element carries
    /// xmlns="" (and elements of the default namespace inside it a prefix).
    bool GetUndeclareDefaultNamespace() const { return m_undeclareDefaultNamespace; }
    void SetUndeclareDefaultNamespace(bool value) { m_undeclareDefaultNamespace = value; }
    SchemaType GetSchemaType() const { return m_schemaType; }
    void SetSchemaType(SchemaType value) { m_schemaType = value; }

    /// Schema text written inside the root element.
    std::string GetInLineSchema() const { return m_inLineSchema; }
    void SetInLineSchema(const char* schema);
    /// Declared as the root element's default namespace when not empty.
    std::string GetDefaultNamespaceURI() const { return m_defaultNamespaceURI; }
    void SetDefaultNamespaceURI(const char* uri);

    /// How deeply generated classes may nest while one document is read or
    /// one object tree is written (a pseudo element counts as a level). One
    /// level deeper fails with CKvValidationException "The elements are nested
    /// deeper than the limit of %d levels", so a hostile document cannot
    /// exhaust the stack. Values below 1 are taken as 1.
    int32_t GetMaxNestingDepth() const { return m_maxNestingDepth; }
    void SetMaxNestingDepth(int32_t depth) { m_maxNestingDepth = depth < 1 ? 1 : depth; }
    /// Deep enough for real documents, shallow enough for a 1 MiB thread stack.
    static constexpr int32_t kDefaultMaxNestingDepth = 256;

    /// Prefixes declared on the root element, in namespace order.
    CNamespaceAliasMap& GetNamespaceAliases() { return m_namespaceAliases; }
    const CNamespaceAliasMap& GetNamespaceAliases() const { return m_namespaceAliases; }
    /// Processing instructions ("<?...?>" each) written before the root.
    std::vector<std::string>& GetProcessingInstructions() { return m_processingInstructions; }
    const std::vector<std::string>& GetProcessingInstructions() const { return m_processingInstructions; }

    /// Options and vocabulary of Fast Infoset output and input.
    CFastInfosetContext& GetFIContext() { return m_fiContext; }
    const CFastInfosetContext& GetFIContext() const { return m_fiContext; }

    /// Attributes written on the document root, in a collection ("##any")
    /// created on the first call, also through a const context (racing first
    /// calls agree on one collection). Each call
    /// returns it with one more reference, which the caller gives back with
    /// Release.
    CAttributeCol* GetAdditionalRootAttributes() const;

private:
    bool m_writeTypeAttribute = true;
    bool m_ignoreUnknownAttributes = false;
    bool m_ignoreUnknownElements = false;
    bool m_ignoreMissingMandatoryElements = false;
    bool m_ignoreMissingChoice = false;
    bool m_ignoreInvalidCollectionCounts = false;
    bool m_ignoreNamespaces = false;
    bool m_noOptionalAttributeDefaultOutput = false;
    bool m_stripCDATA = true;
    bool m_undeclareDefaultNamespace = false;
    SchemaType m_schemaType = SchemaType_Default;
    int32_t m_maxNestingDepth = kDefaultMaxNestingDepth;
    std::string m_inLineSchema;
    std::string m_defaultNamespaceURI;
    CNamespaceAliasMap m_namespaceAliases;
    std::vector<std::string> m_processingInstructions;
    CFastInfosetContext m_fiContext;
    // Holds one reference on the additional root attributes. Copying the
    // context copies nothing of it, so every other member keeps its default copy.
    class RootAttributes {
    public:
        RootAttributes() = default;
        RootAttributes(const RootAttributes&) {}
        RootAttributes& operator=(const RootAttributes&) { return *this; }
        ~RootAttributes();
        std::atomic<CAttributeCol*> collection{nullptr};
    };
    mutable RootAttributes m_additionalRootAttributes;
};

}  // namespace KvXmlLib10
