// XmlObjectBase.cpp - reference counting, naming and the writing entry points.
#include "kvxml/core/XmlObjectBase.h"

#include "core/detail/ProcessSwitches.h"
#include "kvxml/core/XmlCollectionBase.h"
#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AnyElement.h"
#include "kvxml/output/BinaryStream.h"
#include "kvxml/output/FileTextStream.h"
#include "kvxml/output/KvZip.h"
#include "kvxml/output/TextStream.h"
#include "kvxml/output/XmlTextWriter.h"
#include "foundation/detail/OrEmpty.h"

namespace KvXmlLib10 {

namespace detail {
std::atomic<bool> ASYNC_TOXMLFILE{false};
std::atomic<bool> ASYNC_FROMXMLFILE{false};
}  // namespace detail

void AsyncToXmlFile(bool on) { detail::ASYNC_TOXMLFILE.store(on, std::memory_order_relaxed); }

void AsyncFromXmlFile(bool on) { detail::ASYNC_FROMXMLFILE.store(on, std::memory_order_relaxed); }

CXmlObjectBase::CXmlObjectBase() : m_refCount(0) {}

CXmlObjectBase::CXmlObjectBase(const CXmlObjectBase& other)
    : IEventSink(other), m_elementName(other.m_elementName), m_refCount(0) {}

CXmlObjectBase& CXmlObjectBase::operator=(const CXmlObjectBase& other) {
    // The count belongs to this object's owners, never to the source's.
    m_elementName = other.m_elementName;
    return *this;
}

CXmlObjectBase::~CXmlObjectBase() = default;

void CXmlObjectBase::OnEvent(CXmlObjectBase*, MsgType, void*) {}

const CXmlObjectBase* CXmlObjectBase::GetBase() const {
    return const_cast<CXmlObjectBase*>(this)->GetBase();
}

int32_t CXmlObjectBase::AddRef() {
    m_lock.Enter();
    int32_t count = ++m_refCount;
    m_lock.Leave();
    return count;
}

int32_t CXmlObjectBase::Release() {
    m_lock.Enter();
    int32_t count = --m_refCount;
    m_lock.Leave();
    // Deleted outside the lock: the lock is a member of what is deleted.
    if (count == 0) delete this;
    return count;
}

std::string CXmlObjectBase::GetElementName() const { return m_elementName; }

void CXmlObjectBase::SetElementName(const char* name) { m_elementName = detail::OrEmpty(name); }

void CXmlObjectBase::AttributesToXml_Int(CXmlWriter*, const CXmlSerializationContext&) const {}

void CXmlObjectBase::ToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer, bool isRoot,
                               const char* targetNamespace, const CXmlSerializationContext& context,
                               bool flag) {
    object->ToXml_Int(writer, isRoot, targetNamespace, context, flag);
}

CXmlElement* CXmlObjectBase::FromXml_Int(CXmlObjectBase* object, CXmlElement* element, CXmlElement* firstChild,
                                         const CXmlSerializationContext& context) {
    return object->FromXml_Int(element, firstChild, context, false);
}

void CXmlObjectBase::AttributesToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer,
                                         const CXmlSerializationContext& context) {
    object->AttributesToXml_Int(writer, context);
}

void CXmlObjectBase::WriteDocument(CTextStream& stream, bool includeDocHeader, bool formatted, EOLType eol,
                                   const CXmlSerializationContext& context) const {
    CXmlTextWriter writer(stream);
    writer.Open();
    writer.SetFormat(formatted);
    writer.SetEOLType(eol);
    if (includeDocHeader) writer.WriteStartDocument();
    ToXmlWriter(writer, context);
    writer.Close();
}

void CXmlObjectBase::ToXmlWriter(CXmlWriter& writer, const CXmlSerializationContext& context) const {
    writer.SetUndeclareDefaultNamespace(context.GetUndeclareDefaultNamespace());
    const std::string targetNamespace = GetTargetNamespace();
    ToXml_Int(&writer, true, targetNamespace.c_str(), context, false);
}

std::string CXmlObjectBase::ToXml(bool includeDocHeader, bool formatted, EOLType eol,
                                  const CXmlSerializationContext& context) const {
    CTextStream stream(Encoding_None);
    WriteDocument(stream, includeDocHeader, formatted, eol, context);
    return stream.GetText();
}

CBinaryData CXmlObjectBase::ToXmlStream(bool includeDocHeader, bool formatted, XmlEncoding encoding, EOLType eol,
                                        const CXmlSerializationContext& context,
                                        CompressionType compression) const {
    CBinaryData data;
    {
        CTextStream stream(encoding);
        WriteDocument(stream, includeDocHeader, formatted, eol, context);
        data = stream.GetEncodedStream();
    }
    if (compression != Compression_None) CKvZip::CompressData(data, compression);
    return data;
}

void CXmlObjectBase::ToXmlFile(const char* fileName, bool includeDocHeader, bool formatted, XmlEncoding encoding,
                               EOLType eol, const CXmlSerializationContext& context,
                               CompressionType compression) const {
    if (compression == Compression_Zlib)
        throw CKvException("ZLIB Compression only available for To Stream methods.");
    if (detail::ASYNC_TOXMLFILE.load(std::memory_order_relaxed) && compression == Compression_None) {
        CFileTextStream stream(fileName, encoding);
        WriteDocument(stream, includeDocHeader, formatted, eol, context);
        return;
    }
    CBinaryData data = ToXmlStream(includeDocHeader, formatted, encoding, eol, context, compression);
    CFileBinaryStream file(fileName, encoding, data);
    file.ToFile();
}

void CXmlObjectBase::ReadDocument(CXmlDocument& document, const CXmlSerializationContext& context) {
    CXmlElement* root = document.GetDocumentElement();
    if (root) FromXml_Int(root, root->GetFirstElement(), context, false);
}

void CXmlObjectBase::FromXmlFile(const char* fileName, const CXmlSerializationContext& context) {
    CXmlDocument document(context);
    document.Load(fileName);
    ReadDocument(document, context);
}

void CXmlObjectBase::FromXml(const char* xmlText, const CXmlSerializationContext& context) {
    CXmlDocument document(context);
    document.LoadXml(xmlText);
    ReadDocument(document, context);
}

void CXmlObjectBase::FromXml(const wchar_t* xmlText, const CXmlSerializationContext& context) {
    CXmlDocument document(context);
    document.LoadXml(xmlText);
    ReadDocument(document, context);
}

void CXmlObjectBase::FromXmlStream(unsigned char* data, uint32_t length, const CXmlSerializationContext& context) {
    CXmlDocument document(context);
    document.LoadXmlStream(data, length);
    ReadDocument(document, context);
}

void CXmlObjectBase::FromXmlStream(const CBinaryData& data, const CXmlSerializationContext& context) {
    FromXmlStream(const_cast<unsigned char*>(data.GetData()), data.GetLength(), context);
}

void CXmlObjectBase::FromXmlElement(const CXmlElement* element, const CXmlSerializationContext& context) {
    CXmlElement* writable = const_cast<CXmlElement*>(element);
    FromXml_Int(writable, writable->GetFirstElement(), context, false);
}

void CXmlObjectBase::FromXmlElement(const CElement* element, const CXmlSerializationContext& context) {
    const std::string text = element->ToXml(false, false, EOL_LF, CXmlSerializationContext::m_defaultContext);
    FromXml(text.c_str(), context);
}

bool CXmlObjectBase::IsNamespaceValid(const char* namespaceUri, const char* restriction,
                                      const char* targetNamespace) const {
    return CXmlObjectHelper::IsNamespaceValid(detail::OrEmpty(namespaceUri), detail::OrEmpty(restriction),
                                              detail::OrEmpty(targetNamespace));
}

bool CXmlObjectBase::TestNamespace(const char* namespaceUri, const char* restriction,
                                   const char* targetNamespace) const {
    return CXmlObjectHelper::TestNamespace(detail::OrEmpty(namespaceUri), detail::OrEmpty(restriction),
                                           detail::OrEmpty(targetNamespace));
}

bool CXmlObjectBase::DoesElementNameMatch(const CXmlSerializationContext& context, const CXmlElement* element,
                                          const char* name, const char* namespaceUri) const {
    return CXmlObjectHelper::DoesElementNameMatch(context, element, detail::OrEmpty(name),
                                                  detail::OrEmpty(namespaceUri));
}

CXmlObjectBase* CXmlObjectBase::Throw_IfPropertyIsNull(CXmlObjectBase* value, const char* propertyName) {
    if (value) return value;
    throw CKvInvalidParamException(
        FormatString("The Property [%s] is mandatory, it may node be NULL", detail::OrEmpty(propertyName)));
}

void CXmlObjectBase::Throw_IfElementNameDiffers(CXmlObjectBase* value, const char* requiredName) {
    if (!value) return;
    std::string actual = value->GetBase()->GetElementName();
    std::string required = detail::OrEmpty(requiredName);
    if (actual != required) {
        throw CKvInvalidParamException(FormatString(
            "This property requrires an element with the name %s the element being set has the element name %s",
            required.c_str(), actual.c_str()));
    }
}

namespace {
[[noreturn]] void ThrowChoiceTaken(const std::string& selected) {
    throw CKvInvalidStateException(FormatString(
        "The Property [%s] is already set. Only one element within this class bay be set at a time",
        selected.c_str()));
}
}  // namespace

void CXmlObjectBase::Choice_SelectElement(const char* name, CXmlObjectBase* value, std::string& selected) {
    const char* member = detail::OrEmpty(name);
    if (selected == member) {
        if (!value) selected.clear();
    } else if (selected.empty()) {
        selected = member;
    } else if (value) {
        ThrowChoiceTaken(selected);
    }
}

void CXmlObjectBase::Choice_CollectionChanged(const char* name, int32_t count, std::string& selected) {
    const char* member = detail::OrEmpty(name);
    if (selected == member) {
        if (count == 0) selected.clear();
    } else if (selected.empty()) {
        if (count > 0) selected = member;
    } else if (count != 0) {
        ThrowChoiceTaken(selected);
    }
}

void CXmlObjectBase::Choice_SetElementValid(bool valid, const char* name, std::string& selected) {
    const char* member = detail::OrEmpty(name);
    if (!valid) {
        selected.clear();
    } else if (selected == member) {
        selected = member;
    } else {
        // Only re-validating the selected member is accepted; a first
        // selection goes through the other two helpers.
        throw CKvInvalidStateException(FormatString(
            "The Property %s is already set. Only one element within this class bay be set at a time",
            selected.c_str()));
    }
}

void CXmlObjectBase::Choice_Read_Collection(CXmlCollectionBase* collection, CXmlElement* parent,
                                            CXmlElement*& current, int32_t& count,
                                            const CXmlSerializationContext& context) {
    if (count > 0) return;  // the choice already has its member
    CXmlElement* next = FromXml_Int(collection, parent, current, context);
    if (next == current) return;
    current = next;
    collection->ValidateCount(context);
    ++count;
}

}  // namespace KvXmlLib10
