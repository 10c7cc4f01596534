// NestingDepthTest.cpp - a recursive binding nested past the context's depth limit fails cleanly on reading and on
// writing.
#include "core/XmlGeneratedClassTestSupport.h"
#include "recursive.h"

namespace kvenginetest {
namespace {

using kvgen_recursive::CFolder;

// A folder whose link holds a folder, `depth` levels in all.
std::string Nested(size_t depth) {
    std::string text = "<folder xmlns='urn:example:tree' name='n'>";
    text.reserve(depth * 24 + 64);
    for (size_t i = 1; i < depth; ++i) text += "<link name='n'>";
    for (size_t i = 1; i < depth; ++i) text += "</link>";
    return text + "</folder>";
}

// The innermost message of what reading or writing threw ("" when nothing).
template <typename Action>
std::string Innermost(Action action) {
    const std::string chain = FailureOf(action);
    return chain.substr(chain.rfind('\n') + 1);
}

TEST(NestingDepth, ReadingPastTheLimitFailsInsteadOfExhaustingTheStack) {
    CFolder root("folder");
    const std::string limitMessage = "The elements are nested deeper than the limit of 256 levels";
    EXPECT_EQ(Innermost([&] { root.FromXml(Nested(1000000).c_str()); }), limitMessage);
    EXPECT_EQ(Innermost([&] { root.FromXml(Nested(257).c_str()); }), limitMessage);
    EXPECT_EQ(Innermost([&] { root.FromXml(Nested(256).c_str()); }), "");

    CXmlSerializationContext shallow;
    shallow.SetMaxNestingDepth(3);
    EXPECT_EQ(Innermost([&] { root.FromXml(Nested(3).c_str(), shallow); }), "");
    EXPECT_EQ(ReadFailure(root, Nested(4).c_str(), shallow),
              "Failed to process the element [folder]\nFailed to process the element [link]\n"
              "Failed to process the element [link]\nFailed to process the element [link]\n"
              "The elements are nested deeper than the limit of 3 levels");  // the fourth names itself
}

TEST(NestingDepth, WritingPastTheLimitFails) {
    CFolder root("folder");
    root.FromXml(Nested(5).c_str());
    CXmlSerializationContext limit;
    limit.SetMaxNestingDepth(5);
    limit.SetDefaultNamespaceURI("urn:example:tree");
    limit.SetNoOptionalAttributeDefaultOutput(true);
    EXPECT_EQ(WriteCompact(root, limit), "<folder xmlns=\"urn:example:tree\" name=\"n\"><link name=\"n\"><link name=\"n\">"
                                         "<link name=\"n\"><link name=\"n\"/></link></link></link></folder>");
    limit.SetMaxNestingDepth(4);
    EXPECT_EQ(Innermost([&] { WriteCompact(root, limit); }),
              "The elements are nested deeper than the limit of 4 levels");
    limit.SetMaxNestingDepth(0);
    EXPECT_EQ(limit.GetMaxNestingDepth(), 1);
}

}  // namespace
}  // namespace kvenginetest
