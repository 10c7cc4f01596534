// XmlObjectBase.h - root of every bindable object and its public entry points.
//
// A bindable object is reference counted (it starts at 0 and deletes itself
// when the count returns to 0) and knows its element name. The entry points
// only build writers and streams; the walk itself is the subclass's
// ToXml_Int / FromXml_Int.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/EventSink.h"
#include "kvxml/core/FInfoDecl.h"
#include "kvxml/core/SerializationContext.h"
#include "kvxml/foundation/CriticalSection.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/output/OutputEnums.h"
#include "kvxml/values/BinaryData.h"

namespace KvXmlLib10Data {
class CElementInfo;
}

namespace KvXmlLib10 {

class CXmlWriter;
class CXmlElement;
class CXmlCollectionBase;
class CTextStream;
class CXmlDocument;
class CElement;

/// When on, ToXmlFile without compression writes into the file while it
/// serialises instead of building the document in memory first. Off at start.
KVXML_API void AsyncToXmlFile(bool on);
/// Read by the document loader. Off at start.
KVXML_API void AsyncFromXmlFile(bool on);

class KVXML_API CXmlObjectBase : public IEventSink {
public:
    CXmlObjectBase();
    /// A copy has its own lock and starts unreferenced.
    CXmlObjectBase(const CXmlObjectBase& other);
    CXmlObjectBase& operator=(const CXmlObjectBase& other);

    /// Collections notify their listeners here; the base ignores it.
    void OnEvent(CXmlObjectBase* source, MsgType type, void* data) override;

    /// The object that represents this one (a wrapper returns what it wraps).
    virtual CXmlObjectBase* GetBase() = 0;
    const CXmlObjectBase* GetBase() const;

    /// Writes the document to a file. Compression_Zlib is refused before any
    /// file is touched; on the in-memory path nothing is created on failure.
    virtual void ToXmlFile(const char* fileName, bool includeDocHeader = true, bool formatted = true,
                           XmlEncoding encoding = Encoding_UTF8, EOLType eol = EOL_LF,
                           const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext,
                           CompressionType compression = Compression_None) const;
    /// Writes the document as Fast Infoset to a file; Compression_Zlib is
    /// refused as for ToXmlFile, and nothing is created on failure.
    virtual void ToFastInfosetFile(const char* fileName, FInfoDecl decl = FInfoDecl_None,
                                   const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext,
                                   CompressionType compression = Compression_None) const;
    /// The document as text in the local code page.
    virtual std::string ToXml(bool includeDocHeader = true, bool formatted = true, EOLType eol = EOL_LF,
                              const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) const;
    /// The document as encoded bytes, optionally gzip- or zlib-compressed.
    virtual CBinaryData ToXmlStream(bool includeDocHeader = true, bool formatted = true,
                                    XmlEncoding encoding = Encoding_UTF8, EOLType eol = EOL_LF,
                                    const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext,
                                    CompressionType compression = Compression_None) const;
    /// The document as Fast Infoset bytes (with the chosen declaration in
    /// front), optionally gzip- or zlib-compressed.
    virtual CBinaryData ToFastInfosetStream(FInfoDecl decl = FInfoDecl_None,
                                            const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext,
                                            CompressionType compression = Compression_None) const;

    /// Writes this object as the document element through any writer (text
    /// or binary), after handing the writer the context's output options.
    /// The caller opens the writer, writes its document header and closes
    /// it; the ToXml and ToFastInfoset entry points do exactly that.
    void ToXmlWriter(CXmlWriter& writer,
                     const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) const;

    /// Loads a document and fills this object from its root element; the
    /// document is destroyed afterwards, on success and on failure.
    virtual void FromXmlFile(const char* fileName,
                             const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext);
    virtual void FromXml(const char* xmlText,
                         const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext);
    virtual void FromXml(const wchar_t* xmlText,
                         const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext);
    /// Plain, gzip- or zlib-compressed bytes; the caller keeps its buffer.
    virtual void FromXmlStream(unsigned char* data, uint32_t length,
                               const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext);
    virtual void FromXmlStream(const CBinaryData& data,
                               const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext);
    /// Fills this object from an element already parsed.
    virtual void FromXmlElement(const CXmlElement* element,
                                const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext);
    /// Fills this object from a wildcard element: the element is written as
    /// text (no declaration, unformatted, LF, default context) and read back
    /// with `context`.
    virtual void FromXmlElement(const CElement* element,
                                const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext);

    virtual ~CXmlObjectBase();

    /// The namespace in which this object's element is written.
    virtual std::string GetTargetNamespace() const = 0;
    /// The namespace of the object's type.
    virtual std::string GetNamespace() const = 0;

    int32_t AddRef();
    /// Deletes the object when the count reaches 0; returns the new count.
    int32_t Release();

    // The namespace rules of CXmlObjectHelper, for callers holding C strings.
    bool IsNamespaceValid(const char* namespaceUri, const char* restriction, const char* targetNamespace) const;
    bool TestNamespace(const char* namespaceUri, const char* restriction, const char* targetNamespace) const;
    bool DoesElementNameMatch(const CXmlSerializationContext& context, const CXmlElement* element, const char* name,
                              const char* namespaceUri) const;

    std::string GetElementName() const;
    void SetElementName(const char* name);

    // Let one object call the protected walk of another.
    static void ToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer, bool isRoot,
                          const char* targetNamespace, const CXmlSerializationContext& context, bool flag);
    static CXmlElement* FromXml_Int(CXmlObjectBase* object, CXmlElement* element, CXmlElement* firstChild,
                                    const CXmlSerializationContext& context);
    static void AttributesToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer,
                                    const CXmlSerializationContext& context);

    /// Returns value; throws CKvInvalidParamException when it is null.
    static CXmlObjectBase* Throw_IfPropertyIsNull(CXmlObjectBase* value, const char* propertyName);
    /// Throws CKvInvalidParamException when value's element name is not requiredName.
    static void Throw_IfElementNameDiffers(CXmlObjectBase* value, const char* requiredName);

    // Choice bookkeeping: `selected` names the member currently set ("" for
    // none). Each throws CKvInvalidStateException when another member is set.
    static void Choice_SelectElement(const char* name, CXmlObjectBase* value, std::string& selected);
    static void Choice_CollectionChanged(const char* name, int32_t count, std::string& selected);
    static void Choice_SetElementValid(bool valid, const char* name, std::string& selected);
    /// Reads a collection member of a choice: nothing when count is already
    /// above 0 or the collection consumed nothing; otherwise moves current
    /// past what it read, checks the count (ValidateCount throws) and
    /// increments count.
    static void Choice_Read_Collection(CXmlCollectionBase* collection, CXmlElement* parent, CXmlElement*& current,
                                       int32_t& count, const CXmlSerializationContext& context);

    // Collection events: each calls sink->OnEvent(collection->GetBase(), type, data)
    // with type 0 (changed, data null), 1 and 2 (adding, added: the item),
    // 3 and 4 (removing, removed: a pointer to the index, null for -1).
    static void FireOnCollectionChangeEvent(IEventSink* sink, CXmlCollectionBase* collection);
    static void FireOnCollectionAddEvent(IEventSink* sink, CXmlCollectionBase* collection, void* item);
    static void FireOnCollectionAddCompleteEvent(IEventSink* sink, CXmlCollectionBase* collection, void* item);
    static void FireOnCollectionRemoveEvent(IEventSink* sink, CXmlCollectionBase* collection, int32_t index);
    static void FireOnCollectionRemoveCompleteEvent(IEventSink* sink, CXmlCollectionBase* collection,
                                                    int32_t index);

protected:
    /// Writes the object's attributes; the base writes none.
    virtual void AttributesToXml_Int(CXmlWriter* writer, const CXmlSerializationContext& context) const;
    virtual void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                           const CXmlSerializationContext& context, bool flag) const = 0;
    /// Fills the object from `element`; returns the first child it did not consume.
    virtual CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* firstChild,
                                     const CXmlSerializationContext& context, bool flag) = 0;

private:
    // Descriptors read child objects with the caller's flag, which the
    // public trampoline does not pass on.
    friend class KvXmlLib10Data::CElementInfo;

    void ReadDocument(CXmlDocument& document, const CXmlSerializationContext& context);
    void WriteDocument(CTextStream& stream, bool includeDocHeader, bool formatted, EOLType eol,
                       const CXmlSerializationContext& context) const;

    std::string m_elementName;
    CKVCriticalSection m_lock;
    int32_t m_refCount;
};

}  // namespace KvXmlLib10
