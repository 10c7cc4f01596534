// VocabularyTest.cpp - vocabulary tables, the context's defaults and suggested encodings.
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {
using Ecs = CFastInfosetContext::EncodedCharacterString;
}

TEST(FIVocabulary, FreshTablesHoldXmlAndIndexFromOneInOrderOfAddition) {
    CFIVocabulary vocabulary;
    uint32_t index = 0;
    EXPECT_TRUE(vocabulary.FindPrefixNameIndex("xml", index));
    EXPECT_EQ(index, 1u);
    EXPECT_TRUE(vocabulary.FindNamespaceNameIndex("http://www.w3.org/XML/1998/namespace", index));
    EXPECT_EQ(index, 1u);
    EXPECT_FALSE(vocabulary.FindLocalNameIndex("xml", index));
    EXPECT_EQ(vocabulary.GetLocalNamesTable().GetCount(), 0u);

    EXPECT_EQ(vocabulary.AddLocalName("a"), 1u);
    EXPECT_EQ(vocabulary.AddLocalName("b"), 2u);
    EXPECT_EQ(vocabulary.AddLocalName("a"), 1u);
    EXPECT_EQ(vocabulary.GetLocalNamesTable().GetCount(), 2u);

    // A qualified name adds its parts first; a repeat gives the same index.
    EXPECT_EQ(vocabulary.AddElement("p", "urn:p", "c"), 1u);
    EXPECT_EQ(vocabulary.AddAttribute("", "", "a"), 1u);
    EXPECT_EQ(vocabulary.AddElement("p", "urn:p", "c"), 1u);
    EXPECT_EQ(vocabulary.AddElement("", "urn:p", "c"), 2u);
    EXPECT_EQ(*vocabulary.GetElementNamesTable().GetAt(1), (CQNameParts{2, 2, 3}));
    EXPECT_EQ(*vocabulary.GetAttributeNamesTable().GetAt(1), (CQNameParts{0, 0, 1}));
    EXPECT_EQ(vocabulary.GetElementNamesTable().GetAt(3), nullptr);
    EXPECT_EQ(vocabulary.GetElementNamesTable().GetAt(0), nullptr);

    const CFIVocabulary copy(vocabulary);
    EXPECT_TRUE(copy.FindLocalNameIndex("c", index));
    EXPECT_EQ(index, 3u);
    EXPECT_EQ(copy.GetElementNamesTable().GetCount(), 2u);
}

TEST(FIVocabulary, TablesStopGrowingAtTwoToTheTwenty) {
    CFIStringTable writerSide;
    CFIStringTable readerSide;
    for (uint32_t i = 0; i < CFIStringTable::kMaxEntries; ++i) {
        ASSERT_EQ(writerSide.AddValueToMap(std::to_string(i)), i + 1);
        ASSERT_TRUE(readerSide.AddValueToVector("x"));
    }
    EXPECT_EQ(writerSide.AddValueToMap("new"), 0u);
    EXPECT_EQ(writerSide.AddValueToMap("7"), 8u);
    EXPECT_FALSE(readerSide.AddValueToVector("x"));
    EXPECT_EQ(writerSide.GetCount(), 1u << 20);
    EXPECT_EQ(readerSide.GetCount(), 1u << 20);
}

TEST(FastInfosetContext, DefaultsAndSuggestedEncodings) {
    CXmlSerializationContext serialization;
    CFastInfosetContext& context = serialization.GetFIContext();
    EXPECT_EQ(context.GetAttributeMaxAddLength(), 6u);
    EXPECT_EQ(context.GetElementMaxAddLength(), 6u);
    EXPECT_FALSE(context.GetUseGeneratedVocabulary());
    EXPECT_EQ(context.GetExternalVocabularyURI(), "");
    EXPECT_EQ(context.GetDefaultStringEncoding(), 0);
    for (uint32_t type = 0; type < 30; ++type) EXPECT_EQ(context.GetEncoding(type), (Ecs{0, 0})) << type;

    context.SetSuggestedValues();
    const Ecs expected[] = {{0, 0}, {2, 1}, {2, 2}, {2, 3}, {2, 3}, {2, 4}, {2, 5}, {2, 3}, {2, 4}, {2, 5},
                            {2, 5}, {2, 7}, {2, 8}, {0, 0}, {1, 2}, {1, 2}, {1, 2}, {1, 2}, {1, 2}, {1, 2},
                            {1, 2}, {1, 2}, {0, 0}, {0, 0}, {2, 6}, {1, 1}, {1, 1}, {0, 0}, {0, 0}};
    for (uint32_t type = 0; type < CFastInfosetContext::kEncodingCount; ++type)
        EXPECT_EQ(context.GetEncoding(type), expected[type]) << type;

    // The serialization context copies the Fast Infoset context, tables included.
    context.GetVocabulary().AddLocalName("kept");
    context.SetExternalVocabularyURI(nullptr);
    const CXmlSerializationContext copy(serialization);
    uint32_t index = 0;
    EXPECT_TRUE(copy.GetFIContext().GetVocabulary().FindLocalNameIndex("kept", index));
    EXPECT_EQ(copy.GetFIContext().GetEncoding(24), (Ecs{2, 6}));
}
