// A program outside the source tree whose classes kvxsd compiled from note.xsd at build time.
#include <cstdio>
#include <string>

#include "kvxml/core/SerializationContext.h"
#include "kvxml/foundation/KvException.h"
#include "note.h"

int main() {
    const char* const text =
        "<note xmlns=\"urn:example:note\" priority=\"high\"><to>Ann</to><to>Bo</to><body>Tea at five</body></note>";
    try {
        KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlObjectBase> note = notes::CreateGlobalElement("note", "urn:example:note");
        if (!note || notes::CreateGlobalElement("memo", "urn:example:note")) return 1;
        note->FromXml(text);
        KvXmlLib10::CXmlSerializationContext context;
        context.SetDefaultNamespaceURI("urn:example:note");
        const std::string written = note->ToXml(false, false, KvXmlLib10::EOL_LF, context);
        std::puts(written.c_str());
        return written == text ? 0 : 1;
    } catch (const KvXmlLib10::CKvException& e) {
        std::fprintf(stderr, "%s\n", e.GetFullMessage().c_str());
        return 1;
    }
}
