// WildcardBindingTest.cpp - a document with extension points read and written through the envelope binding: every
// wildcard kind, open attributes, extra root attributes from the context and reading from a wildcard element.

#include "envelope.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

// The envelope type under its global element's name.
struct CEnvelope : kvgen_envelope::CEnvelope {
    CEnvelope() : kvgen_envelope::CEnvelope("envelope") {}
};

const char kDocument[] =
    "<e:envelope xmlns:e='urn:kvxml:test:envelope' xmlns:h='urn:kvxml:test:h' xmlns:x='urn:kvxml:test:x'"
    " h:trace='1' lang='en'>"
    "<e:id>42</e:id><h:header a='1'><h:to>bob</h:to></h:header><e:note>hi</e:note><local>plain</local>"
    "<x:ext/><e:tail/><h:more>m</h:more></e:envelope>";

const char kWritten[] =
    "<envelope xmlns=\"urn:kvxml:test:envelope\" xmlns:h=\"urn:kvxml:test:h\" xmlns:x=\"urn:kvxml:test:x\""
    " h:trace=\"1\" lang=\"en\"><id>42</id><h:header a=\"1\"><h:to>bob</h:to></h:header><note>hi</note>"
    "<local>plain</local><x:ext/><tail/><h:more>m</h:more></envelope>";

CXmlSerializationContext Aliased() {
    CXmlSerializationContext context;
    context.SetDefaultNamespaceURI("urn:kvxml:test:envelope");
    context.GetNamespaceAliases().Add("h", "urn:kvxml:test:h");
    context.GetNamespaceAliases().Add("x", "urn:kvxml:test:x");
    return context;
}

TEST(BindingEnvelope, ExtensionPointsSurviveARoundTrip) {
    const CXmlSerializationContext context = Aliased();
    CEnvelope envelope;
    envelope.FromXml(kDocument, context);
    EXPECT_EQ(envelope.GetId(), "42");
    EXPECT_EQ(envelope.GetAny()->GetElementName(), "header");
    EXPECT_EQ(envelope.GetNote(), "hi");
    EXPECT_EQ(envelope.GetAny2()->GetText(), "plain");
    EXPECT_EQ(envelope.GetAny3()->GetNamespace(), "urn:kvxml:test:x");
    EXPECT_EQ(envelope.Any4().GetCount(), 2);
    EXPECT_EQ(envelope.AnyAttribute().GetCount(), 2);
    EXPECT_EQ(envelope.AnyAttribute().Item(0)->GetNamespace(), "urn:kvxml:test:h");

    EXPECT_EQ(envelope.ToXml(false, false, EOL_LF, context), kWritten);  // envelope.xml reads back the same

    // The whole document as a wildcard element, read back into the binding.
    CXmlDocument document(context);
    document.LoadXml(kDocument);
    CElement any("AnyElement");
    any.CopyXmlElement(document.GetDocumentElement());
    CEnvelope fromElement;
    fromElement.FromXmlElement(&any, context);
    EXPECT_EQ(fromElement.ToXml(false, false, EOL_LF, context), kWritten);
}

TEST(BindingEnvelope, ContextAddsRootAttributesFromItsOwnCollection) {
    CXmlSerializationContext context;
    CAttributeCol* extra = context.GetAdditionalRootAttributes();
    EXPECT_EQ(context.GetAdditionalRootAttributes(), extra);
    EXPECT_EQ(extra->Release(), 2);  // the context's and the one just taken
    EXPECT_EQ(extra->Release(), 1);
    extra->Add("build", "7");
    extra->Add("src", "s", "urn:kvxml:test:s");

    CEnvelope envelope;
    envelope.SetId("1");
    envelope.GetAny()->SetName("h");
    EXPECT_EQ(
        envelope.ToXml(false, false, EOL_LF, context),
        "<AA:envelope xmlns:AA=\"urn:kvxml:test:envelope\" build=\"7\" xmlns:AB=\"urn:kvxml:test:s\" AB:src=\"s\">"
        "<AA:id>1</AA:id><h/></AA:envelope>");

    const CXmlSerializationContext copy(context);
    CAttributeCol* fresh = copy.GetAdditionalRootAttributes();
    EXPECT_EQ(fresh->GetCount(), 0);
    fresh->Release();
}

TEST(BindingEnvelope, HostileDepthAndAttributeCountsStayLinearAndOffTheStack) {
    // Deep enough to overflow any recursive walk, even under the sanitizers.
    const int count = 50000;
    std::string deep = "<e:envelope xmlns:e='urn:kvxml:test:envelope'><e:id/><h:h xmlns:h='urn:h'/><e:tail>";
    for (int i = 0; i < count; ++i) deep += "<a>";
    for (int i = 0; i < count; ++i) deep += "</a>";
    deep += "</e:tail></e:envelope>";
    std::string wide = "<e:envelope xmlns:e='urn:kvxml:test:envelope'";
    for (int i = 0; i < count; ++i) wide += " a" + std::to_string(i) + "='v'";
    wide += "><e:id/><h:h xmlns:h='urn:h'/></e:envelope>";

    CEnvelope envelope;
    envelope.FromXml(deep.c_str());
    EXPECT_EQ(envelope.Any4().Item(0)->GetElements()->Item(0)->GetElementName(), "a");
    const std::string written = envelope.ToXml(false, false);
    CEnvelope again;
    again.FromXml(written.c_str());
    EXPECT_EQ(again.ToXml(false, false), written);
    envelope.FromXml(wide.c_str());
    EXPECT_EQ(envelope.AnyAttribute().GetCount(), count);
    EXPECT_EQ(envelope.AnyAttribute().Item(count - 1)->GetElementName(), "a49999");
    EXPECT_GT(envelope.ToXml(false, false).size(), wide.size());
}

}  // namespace
