// NestingDepthTest.cpp - a recursive binding nested past the context's depth limit fails cleanly on reading and on
// writing.
#include <gtest/gtest.h>

#include <string>

#include "core/XmlGeneratedClassTestSupport.h"

namespace kvenginetest {
namespace {

kv::CSmartPtr<CXmlObjectBase> NewNode(int32_t, const char*);

/// <node><node>...</node></node>: a tree node holding an optional child of its own type.
struct TreeSchema : NoNamespaces {
    static constexpr const char* kElementName = "node";
    static void Build(Metadata& meta) {
        meta = {Parent(kvd::GroupType_Sequence, "node"),
                MakeArray<CElementInfo>(
                    {new kvd::CElementInfoSeqClsOpt("node", "", 1, kvd::ElementType_Element, NewNode, 0)}),
                MakeArray<CAttributeInfo>({})};
    }
};
using CNode = CTestClass<TreeSchema>;

kv::CSmartPtr<CXmlObjectBase> NewNode(int32_t, const char*) {
    return new CNode;
}

std::string Nested(size_t depth) {
    std::string text;
    text.reserve(depth * 13);
    for (size_t i = 0; i < depth; ++i) text += "<node>";
    for (size_t i = 0; i < depth; ++i) text += "</node>";
    return text;
}

// The innermost message of what reading or writing threw ("" when nothing).
template <typename Action>
std::string Innermost(Action action) {
    const std::string chain = FailureOf(action);
    return chain.substr(chain.rfind('\n') + 1);
}

TEST(NestingDepth, ReadingPastTheLimitFailsInsteadOfExhaustingTheStack) {
    CNode root;
    root.AddRef();
    const std::string limitMessage = "The elements are nested deeper than the limit of 256 levels";
    EXPECT_EQ(Innermost([&] { root.FromXml(Nested(1000000).c_str()); }), limitMessage);
    EXPECT_EQ(Innermost([&] { root.FromXml(Nested(257).c_str()); }), limitMessage);
    EXPECT_EQ(Innermost([&] { root.FromXml(Nested(256).c_str()); }), "");

    CXmlSerializationContext shallow;
    shallow.SetMaxNestingDepth(3);
    EXPECT_EQ(Innermost([&] { root.FromXml(Nested(3).c_str(), shallow); }), "");
    EXPECT_EQ(Innermost([&] { root.FromXml(Nested(4).c_str(), shallow); }),
              "The elements are nested deeper than the limit of 3 levels");
    EXPECT_EQ(ReadFailure(root, "<node><node><node><node/></node></node></node>", shallow),
              "Failed to process the element [node]\nFailed to process the element [node]\n"
              "Failed to process the element [node]\nFailed to process the element [node]\n"
              "The elements are nested deeper than the limit of 3 levels");  // the fourth names itself
}

TEST(NestingDepth, WritingPastTheLimitFails) {
    CNode root;
    root.AddRef();
    root.FromXml(Nested(5).c_str());
    CXmlSerializationContext limit;
    limit.SetMaxNestingDepth(5);
    EXPECT_EQ(WriteCompact(root, limit), "<node><node><node><node><node/></node></node></node></node>");
    limit.SetMaxNestingDepth(4);
    EXPECT_EQ(Innermost([&] { WriteCompact(root, limit); }),
              "The elements are nested deeper than the limit of 4 levels");
    limit.SetMaxNestingDepth(0);
    EXPECT_EQ(limit.GetMaxNestingDepth(), 1);
}

}  // namespace
}  // namespace kvenginetest
