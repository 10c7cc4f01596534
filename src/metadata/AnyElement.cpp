// AnyElement.cpp - the wildcard element and its collection: construction, copying, cloning, reading and writing of
// element trees, each walk with an explicit stack so that input depth never becomes call depth.
#include "kvxml/metadata/AnyElement.h"

#include <memory>
#include <utility>
#include <vector>

#include "kvxml/core/SmartPtr.h"
#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/TextStream.h"
#include "kvxml/output/XmlTextWriter.h"
#include "metadata/detail/Wildcard.h"

namespace KvXmlLib10 {

namespace {
const char* OrEmpty(const char* text) { return text ? text : ""; }
}  // namespace

// The tree walks. Each keeps one frame per open element on a heap stack.
struct CElement::Tree {
    // Most elements of a tree have no attributes or no children, so the two
    // collections come into being when first needed; until then an element
    // behaves as if it held empty ones.
    static CAttributeCol& Attributes(const CElement& element) {
        if (!element.m_attributes) {
            auto* attributes = new CAttributeCol("", "##any", element.m_targetNamespace.c_str());
            attributes->AddRef();
            element.m_attributes = attributes;
        }
        return *element.m_attributes;
    }

    static CElementCol& Elements(const CElement& element) {
        if (!element.m_elements) {
            auto* elements = new CElementCol("", "##any", element.m_targetNamespace.c_str(), 0, -1);
            elements->AddRef();
            element.m_elements = elements;
        }
        return *element.m_elements;
    }

    static int32_t ChildCount(const CElement& element) {
        return element.m_elements ? element.m_elements->GetCount() : 0;
    }

    static void DropCollections(const CElement& element) {
        detail::ReleaseFlat(std::exchange(element.m_attributes, nullptr));
        detail::ReleaseFlat(std::exchange(element.m_elements, nullptr));
    }

    static void TakeFrom(CElement& element, const CXmlElement& source) {
        element.CXmlObjectBase::SetElementName(source.GetLocalName().c_str());
        element.m_namespace = source.GetNamespaceURI();
        element.m_text = source.GetText();
    }

    // CopyXmlElement of one element, without its children.
    static void CopyOne(CElement& element, const CXmlElement& source) {
        TakeFrom(element, source);
        element.m_ownDefaultNamespace.clear();
        if (element.m_attributes) element.m_attributes->Clear();
        if (element.m_elements) element.m_elements->Clear();
        for (const CXmlAttribute* attribute : source.GetAttributes()) {
            Attributes(element).Add(attribute->GetLocalName().c_str(), attribute->GetValue().c_str(),
                                    attribute->GetNamespaceURI().c_str());
            if (attribute->GetLocalName() == "xmlns") element.m_ownDefaultNamespace = attribute->GetValue();
        }
    }

    static void Copy(CElement& root, const CXmlElement& source) {
        struct Frame {
            CElement* element;
            const CXmlElement* next;  // next child of the source to copy
        };
        std::vector<Frame> frames;
        CopyOne(root, source);
        frames.push_back({&root, source.GetFirstElement()});
        while (!frames.empty()) {
            Frame& top = frames.back();
            const CXmlElement* child = top.next;
            if (!child) {
                frames.pop_back();
                continue;
            }
            top.next = child->GetNextSiblingElement();
            CSmartPtr<CElement> copy(new CElement(child->GetLocalName().c_str()));
            Elements(*top.element).Add(copy.get());
            CopyOne(*copy, *child);
            frames.push_back({copy.get(), child->GetFirstElement()});
        }
    }

    // Everything but the collections' items; the copy holds new collections
    // with the same rules.
    static void CloneOne(CElement& copy, const CElement& source) {
        copy.CXmlObjectBase::SetElementName(source.GetElementName().c_str());
        copy.m_text = source.m_text;
        copy.m_namespace = source.m_namespace;
        copy.m_restriction = source.m_restriction;
        copy.m_targetNamespace = source.m_targetNamespace;
        copy.m_ownDefaultNamespace = source.m_ownDefaultNamespace;
        DropCollections(copy);
        if (source.m_attributes && source.m_attributes->GetCount() != 0) {
            copy.m_attributes = source.m_attributes->Clone();
            copy.m_attributes->AddRef();
        }
        if (const CElementCol* children = source.m_elements) {
            const std::string name = children->GetElementName();
            const std::string target = children->GetTargetNamespace();
            copy.m_elements = new CElementCol(name.c_str(), children->GetNamespaceRestriction().c_str(), target.c_str(),
                                              children->GetMinOccurs(), children->GetMaxOccurs());
            copy.m_elements->AddRef();
        }
    }

    static void Clone(CElement& root, const CElement& source) {
        struct Frame {
            CElement* copy;
            const CElement* source;
            int32_t next;
        };
        std::vector<Frame> frames;
        CloneOne(root, source);
        frames.push_back({&root, &source, 0});
        while (!frames.empty()) {
            Frame& top = frames.back();
            if (top.next >= ChildCount(*top.source)) {
                frames.pop_back();
                continue;
            }
            CXmlObjectBase* item = top.source->m_elements->GetItemAt(top.next++);
            CElement* copyParent = top.copy;
            const CElement* child = dynamic_cast<const CElement*>(item);
            if (!child) continue;  // only elements are kept in an element collection
            CSmartPtr<CElement> copy(new CElement(""));
            Elements(*copyParent).Add(copy.get());
            CloneOne(*copy, *child);
            frames.push_back({copy.get(), child, 0});
        }
    }

    static void Read(CElement& root, CXmlElement& source, const CXmlSerializationContext& context) {
        struct Frame {
            CElement* element;
            CXmlElement* source;
            CXmlElement* next;  // next child of the source to read
        };
        std::vector<Frame> frames;
        auto open = [&](CElement& element, CXmlElement& from) {
            if (!from.GetAttributes().empty())
                CXmlObjectBase::FromXml_Int(&Attributes(element), &from, nullptr, context);
            frames.push_back({&element, &from, from.GetFirstElement()});
        };
        if (root.m_attributes) root.m_attributes->Clear();
        if (root.m_elements) root.m_elements->Clear();
        open(root, source);
        while (!frames.empty()) {
            Frame& top = frames.back();
            CXmlElement* child = top.next;
            if (!child) {
                TakeFrom(*top.element, *top.source);
                frames.pop_back();
                continue;
            }
            CElementCol& children = Elements(*top.element);
            const std::string& restriction = children.GetNamespaceRestriction();
            const std::string target = children.GetTargetNamespace();
            if (!CXmlObjectHelper::IsNamespaceValid(child->GetNamespaceURI(), restriction, target))
                throw CKvValidationException(FormatString("Invalid Element [%s] found in element [%s]",
                                                          child->GetLocalName().c_str(),
                                                          top.source->GetLocalName().c_str()));
            top.next = child->GetNextSiblingElement();
            // The collection's rules were checked when it was made; its
            // elements take them over as they stand.
            CSmartPtr<CElement> element(new CElement(""));
            element->m_restriction = restriction;
            element->m_targetNamespace = target;
            children.Add(element.get());
            open(*element, *child);
        }
    }

    // The own-default-namespace form writes through a text writer of its own.
    // The outermost such element gets its own text, inserted raw into the
    // caller's writer when done; one nested inside it writes straight into
    // that same text (what raw insertion would give, without copying the text
    // once per level).
    struct InnerText {
        explicit InnerText(CTextStream* shared)
            : own(shared ? nullptr : std::make_unique<CTextStream>(Encoding_None)),
              stream(shared ? *shared : *own),
              writer(stream) {}
        std::unique_ptr<CTextStream> own;
        CTextStream& stream;
        CXmlTextWriter writer;
    };

    struct WriteFrame {
        const CElement* element;
        int32_t next;  // next child to write
        CXmlWriter* writer;
        const CXmlSerializationContext* context;
        std::unique_ptr<InnerText> inner;
        CXmlTextWriter* outer;  // the writer the inner text belongs to
        CTextStream* text;      // the inner text `writer` writes into, if any
    };

    // `text` is the inner text that `writer` writes into, if any.
    static WriteFrame Open(const CElement& element, CXmlWriter* writer, CTextStream* text,
                           const CXmlSerializationContext& context, bool flag) {
        const std::string name = element.GetElementName();
        if (element.m_ownDefaultNamespace.empty()) {
            writer->WriteStartElement(name, element.m_namespace);
            if (element.m_attributes)
                CXmlObjectBase::ToXml_Int(element.m_attributes, writer, false, element.m_namespace.c_str(), context,
                                          flag);
            return {&element, 0, writer, &context, nullptr, nullptr, text};
        }
        auto* outer = dynamic_cast<CXmlTextWriter*>(writer);
        if (!outer)
            throw CKvException(
                FormatString("The element [%s] declares its own default namespace and can only be written as XML text",
                             name.c_str()));
        auto inner = std::make_unique<InnerText>(text);
        if (text)
            outer->CloseParentElm();
        else
            inner->writer.Open();
        inner->writer.SetFormat(outer->GetFormat());
        inner->writer.SetEOLType(outer->GetEOLType());
        inner->writer.SetDefaultNamespace(element.m_ownDefaultNamespace);
        inner->writer.WriteStartElement(name, element.m_namespace);
        CXmlWriter* innerWriter = &inner->writer;
        CTextStream* innerText = &inner->stream;
        // Its children are written with a default context.
        const CXmlSerializationContext* innerContext = &CXmlSerializationContext::m_defaultContext;
        WriteFrame frame{&element, 0, innerWriter, innerContext, nullptr, outer, innerText};
        frame.inner = std::move(inner);
        return frame;
    }

    static void Close(WriteFrame& frame) {
        frame.writer->WriteString(frame.element->m_text, KvXmlLib10::string);
        frame.writer->WriteEndElement();
        if (!frame.inner) return;
        if (!frame.inner->own) {  // written in place
            frame.outer->WriteRawElement("");
            return;
        }
        frame.inner->writer.Close();
        frame.outer->CloseParentElm();
        frame.outer->WriteRawElement(frame.inner->stream.GetText());
    }

    static void Write(const CElement& root, CXmlWriter* writer, const CXmlSerializationContext& context, bool flag) {
        std::vector<WriteFrame> frames;
        frames.push_back(Open(root, writer, nullptr, context, flag));
        while (!frames.empty()) {
            WriteFrame& top = frames.back();
            if (top.next >= ChildCount(*top.element)) {
                Close(top);
                frames.pop_back();
                continue;
            }
            CXmlObjectBase* item = top.element->m_elements->GetItemAt(top.next++);
            CXmlWriter* target = top.writer;
            CTextStream* text = top.text;
            const CXmlSerializationContext& itemContext = *top.context;
            if (const CElement* child = dynamic_cast<const CElement*>(item))
                frames.push_back(Open(*child, target, text, itemContext, flag));
            else
                CXmlObjectBase::ToXml_Int(item, target, false, "", itemContext, flag);
        }
    }
};

// ---- element ----

CElement::CElement(const char* name) : CElement(name, "", "##any", "") {}

CElement::CElement(const char* name, const char* namespaceUri) : CElement(name, namespaceUri, "##any", "") {}

CElement::CElement(const char* name, const char* namespaceUri, const char* restriction, const char* targetNamespace)
    : CInstanceMonitor("CElement") {
    Init(name, namespaceUri, restriction, targetNamespace);
}

CElement::CElement(const CXmlObjectBase* object, const char* name) : CElement(name, "", "##any", "") {
    if (!object) return;
    const std::string text = object->ToXml(false, false, EOL_LF);
    CXmlDocument document(CXmlSerializationContext::m_defaultContext);
    document.LoadXml(text.c_str());
    if (const CXmlElement* root = document.GetDocumentElement()) CopyXmlElement(root);
    CXmlObjectBase::SetElementName(name);
}

CElement::~CElement() {
    detail::ReleaseFlat(m_attributes);
    detail::ReleaseFlat(m_elements);
}

CXmlObjectBase* CElement::GetBase() { return this; }
CAttributeCol* CElement::GetAttributes() const { return &Tree::Attributes(*this); }
CElementCol* CElement::GetElements() const { return &Tree::Elements(*this); }
std::string CElement::GetTargetNamespace() const { return m_targetNamespace; }
std::string CElement::GetNamespace() const { return m_namespace; }

void CElement::Init(const char* name, const char* namespaceUri, const char* restriction, const char* targetNamespace) {
    std::string elementName = detail::RequireValue(name, "Element Name must have a value");
    std::string rule = detail::RequireRestriction(restriction);
    std::string target = detail::RequireValue(targetNamespace, "Target Namespace must have a value");
    std::string namespaceText = OrEmpty(namespaceUri);
    CXmlObjectHelper::TestNamespace(namespaceText, rule, target);
    Tree::DropCollections(*this);
    CXmlObjectBase::SetElementName(elementName.c_str());
    m_namespace = std::move(namespaceText);
    m_restriction = std::move(rule);
    m_targetNamespace = std::move(target);
    m_text.clear();
    m_ownDefaultNamespace.clear();
}

void CElement::SetNamespaceRestrictions(const char* restriction, const char* targetNamespace) {
    std::string rule = detail::RequireRestriction(restriction);
    std::string target = detail::RequireValue(targetNamespace, "Target Namespace must have a value");
    if (!CXmlObjectHelper::IsNamespaceValid(m_namespace, rule, target))
        throw CKvInvalidNamespaceException(
            FormatString("The namespace %s in the class %s is invalid against restriction %s", m_namespace.c_str(),
                         GetElementName().c_str(), rule.c_str()));
    m_restriction = std::move(rule);
    m_targetNamespace = std::move(target);
}

void CElement::CopyXmlElement(const CXmlElement* element) {
    if (element) Tree::Copy(*this, *element);
}

CElement* CElement::Clone() const {
    CElement* copy = new CElement("");
    try {
        Tree::Clone(*copy, *this);
    } catch (...) {
        delete copy;  // still unreferenced
        throw;
    }
    return copy;
}

void CElement::SetText(const char* text) {
    m_text = OrEmpty(text);
    FireOnChangeText();
}

void CElement::SetName(const char* name) {
    CXmlObjectBase::SetElementName(name);
    FireOnChangeName();
}

void CElement::SetNamespace(const char* namespaceUri) {
    std::string namespaceText = OrEmpty(namespaceUri);
    CXmlObjectHelper::TestNamespace(namespaceText, m_restriction, m_targetNamespace);
    m_namespace = std::move(namespaceText);
    FireOnChangeNamespace();
}

void CElement::FireOnChangeName() {}
void CElement::FireOnChangeText() {}
void CElement::FireOnChangeNamespace() {}

void CElement::FromXmlElement(const CXmlElement* element, const CXmlSerializationContext& context) {
    if (!element) return;
    CXmlElement* root = const_cast<CXmlElement*>(element);
    // A document element the restriction refuses is reported, not ignored.
    if (FromXml_Int(nullptr, root, context, false) == root)
        CXmlObjectHelper::TestNamespace(root->GetNamespaceURI(), m_restriction, m_targetNamespace);
}

void CElement::FromXmlFile(const char* fileName, const CXmlSerializationContext& context) {
    CXmlDocument document(context);
    document.Load(fileName);
    FromXmlElement(document.GetDocumentElement(), context);
}

void CElement::FromXml(const char* xmlText, const CXmlSerializationContext& context) {
    CXmlDocument document(context);
    document.LoadXml(xmlText);
    FromXmlElement(document.GetDocumentElement(), context);
}

void CElement::FromXml(const wchar_t* xmlText, const CXmlSerializationContext& context) {
    CXmlDocument document(context);
    document.LoadXml(xmlText);
    FromXmlElement(document.GetDocumentElement(), context);
}

void CElement::FromXmlStream(unsigned char* data, uint32_t length, const CXmlSerializationContext& context) {
    CXmlDocument document(context);
    document.LoadXmlStream(data, length);
    FromXmlElement(document.GetDocumentElement(), context);
}

void CElement::ToXml_Int(CXmlWriter* writer, bool, const char*, const CXmlSerializationContext& context,
                         bool flag) const {
    Tree::Write(*this, writer, context, flag);
}

CXmlElement* CElement::FromXml_Int(CXmlElement*, CXmlElement* current, const CXmlSerializationContext& context, bool) {
    if (!current || !CXmlObjectHelper::IsNamespaceValid(current->GetNamespaceURI(), m_restriction, m_targetNamespace))
        return current;
    Tree::Read(*this, *current, context);
    return current->GetNextSiblingElement();
}

// ---- collection ----

CElementCol::CElementCol(const char* name, const char* restriction, const char* targetNamespace, int32_t minOccurs,
                         int32_t maxOccurs)
    : CXmlCollection(name, detail::RequireValue(targetNamespace, "Target Namespace must have a value").c_str(),
                     minOccurs, maxOccurs),
      CInstanceMonitor("CElementCol"),
      m_restriction(detail::RequireRestriction(restriction)) {}

CElementCol::~CElementCol() = default;

CElement* CElementCol::Add(CElement* element) {
    AppendItem(element);
    return element;
}

CElement* CElementCol::Add(const char* name) {
    const std::string& target = GetItemNamespace();
    if (target.empty()) throw CKvInvalidParamException("A Namespace has not been set for this Collection");
    return Add(name, target.c_str());
}

CElement* CElementCol::Add(const char* name, const char* namespaceUri) {
    const std::string target = GetItemNamespace();
    // Held while adding: a listener that vetoes the addition must not leak it.
    CSmartPtr<CElement> element(new CElement(name, namespaceUri, m_restriction.c_str(), target.c_str()));
    return Add(element.get());
}

CElement* CElementCol::Item(int32_t index) const { return static_cast<CElement*>(GetItemAt(index)); }

CElementCol::iterator CElementCol::begin() const { return iterator(this, 0); }
CElementCol::iterator CElementCol::end() const { return iterator(this, GetCount()); }

CElementCol* CElementCol::Clone() const {
    const std::string name = GetElementName();
    const std::string target = GetItemNamespace();
    CElementCol* copy =
        new CElementCol(name.c_str(), m_restriction.c_str(), target.c_str(), GetMinOccurs(), GetMaxOccurs());
    try {
        for (CElement* element : *this) copy->Add(CSmartPtr<CElement>(element->Clone()).get());
    } catch (...) {
        delete copy;  // still unreferenced
        throw;
    }
    return copy;
}

std::string CElementCol::GetTargetNamespace() const { return GetItemNamespace(); }

CXmlElement* CElementCol::ReadRun(CXmlElement* current, const CXmlSerializationContext& context,
                                  const std::string* name, const std::string* namespaceUri) {
    const std::string target = GetItemNamespace();
    while (current && CXmlObjectHelper::IsNamespaceValid(current->GetNamespaceURI(), m_restriction, target)) {
        if (name && current->GetLocalName() != *name) break;
        if (namespaceUri && current->GetNamespaceURI() != *namespaceUri) break;
        CSmartPtr<CElement> element(new CElement(current->GetLocalName().c_str(), current->GetNamespaceURI().c_str(),
                                                 m_restriction.c_str(), target.c_str()));
        CXmlElement* next = CXmlObjectBase::FromXml_Int(element.get(), nullptr, current, context);
        if (next == current) break;
        Add(element.get());
        current = next;
    }
    return current;
}

CXmlElement* CElementCol::FromXml_Int(CXmlElement*, CXmlElement* current, const CXmlSerializationContext& context,
                                      bool) {
    return ReadRun(current, context, nullptr, nullptr);
}

CXmlElement* CElementCol::FromXmlLockElementName_Int(CXmlElement*, CXmlElement* current,
                                                     const CXmlSerializationContext& context, const char* elementName,
                                                     const char* namespaceUri) {
    const std::string name = OrEmpty(elementName);
    const std::string namespaceText = OrEmpty(namespaceUri);
    if (name == "AnyElement") return ReadRun(current, context, nullptr, nullptr);
    return ReadRun(current, context, &name, &namespaceText);
}

}  // namespace KvXmlLib10
