// StringBufferTest.cpp - block boundaries, joining and reuse of CStringBuffer.
#include "support/KvTestSupport.h"

using KvXmlLib10::CStringBuffer;

namespace {
std::string Text(const CStringBuffer& buffer) { return std::string(buffer.GetText(), buffer.GetLength()); }

std::string Pattern(size_t length) {
    std::string text(length, ' ');
    for (size_t i = 0; i < length; ++i) text[i] = static_cast<char>('a' + i % 26);
    return text;
}
}  // namespace

TEST(StringBufferAppend, KeepsTextAcrossTheDefaultBlockSize) {
    // Lengths around the 4095-character block, appended in pieces of several
    // sizes (each short-copy width among them); pieces of 1 go through the
    // single-character append.
    for (size_t total : {4094u, 4095u, 4096u, 8190u, 8191u, 12289u}) {
        for (size_t piece : {1u, 2u, 3u, 4u, 7u, 8u, 15u, 16u, 17u, 4095u, 5000u}) {
            const std::string expected = Pattern(total);
            CStringBuffer buffer;
            for (size_t at = 0; at < total; at += piece) {
                if (piece == 1) buffer.Append(expected[at]);
                else buffer.Append(expected.substr(at, piece));
            }
            EXPECT_EQ(buffer.GetLength(), total) << total << "/" << piece;
            EXPECT_EQ(Text(buffer), expected) << total << "/" << piece;
            EXPECT_EQ(buffer.GetText()[total], '\0');
        }
    }
}

TEST(StringBufferAppend, SmallBlocksEmbeddedNulsAndTextThatNeverMoves) {
    CStringBuffer buffer(4);  // three characters per block
    buffer.Append("ab");
    buffer.Append('c');
    buffer.Append("defg");
    buffer.Append(std::string("hij\0k", 5));  // a string keeps its NULs, a char pointer stops at the first
    buffer.Append("lm\0nop");
    buffer.Append(static_cast<const char*>(nullptr));
    EXPECT_EQ(Text(buffer), std::string("abcdefghij\0klm", 14));
    for (size_t size : {0u, 1u, 2u}) {
        CStringBuffer tiny(size);
        tiny.Append("hello");
        tiny.Append('!');
        EXPECT_STREQ(tiny.GetText(), "hello!") << size;
    }
    CStringBuffer large;
    large.Append("first");
    const char* before = large.GetText();
    large.Append(Pattern(4000));  // still inside the first block
    EXPECT_EQ(large.GetText(), before);
    EXPECT_EQ(std::string(before, 5), "first");
}

TEST(StringBufferText, JoinsOnceAndContinuesAfterTheJoinedText) {
    CStringBuffer buffer;
    const std::string first = Pattern(10000);
    buffer.Append(first);
    const char* joined = buffer.GetText();
    EXPECT_EQ(std::string(joined), first);
    EXPECT_EQ(buffer.GetText(), joined);  // no second join
    buffer.Append("tail");
    EXPECT_EQ(buffer.GetLength(), 10004u);
    EXPECT_EQ(Text(buffer), first + "tail");
    buffer.Append(Pattern(5000));
    EXPECT_EQ(Text(buffer), first + "tail" + Pattern(5000));
}

TEST(StringBufferText, EmptyClearAndSetText) {
    CStringBuffer buffer;
    EXPECT_STREQ(buffer.GetText(), "");
    EXPECT_EQ(buffer.GetLength(), 0u);
    buffer.Append(Pattern(9000));
    buffer.Empty();
    EXPECT_EQ(buffer.GetLength(), 0u);
    EXPECT_STREQ(buffer.GetText(), "");
    buffer.Append("xy");
    EXPECT_STREQ(buffer.GetText(), "xy");  // no stale characters from before
    buffer.SetText("new");
    EXPECT_STREQ(buffer.GetText(), "new");
    buffer.SetText(std::string(5000, 'q'));
    EXPECT_EQ(Text(buffer), std::string(5000, 'q'));
    buffer.Clear();
    EXPECT_EQ(buffer.GetLength(), 0u);
    EXPECT_STREQ(buffer.GetText(), "");
    buffer.Append('z');
    EXPECT_STREQ(buffer.GetText(), "z");
    // Emptying a joined buffer starts afresh.
    buffer.Append(Pattern(5000));
    buffer.GetText();
    buffer.Empty();
    buffer.Append("after");
    EXPECT_STREQ(buffer.GetText(), "after");
}

TEST(StringBufferText, AppendToCopiesEveryBlockWithoutJoining) {
    CStringBuffer buffer(4);
    buffer.Append("abcdefghij");
    std::string out = "pre:";
    buffer.AppendTo(out);
    EXPECT_EQ(out, "pre:abcdefghij");
    buffer.GetText();  // joined
    buffer.Append("kl");
    out.clear();
    buffer.AppendTo(out);
    EXPECT_EQ(out, "abcdefghijkl");
    CStringBuffer().AppendTo(out);
    EXPECT_EQ(out, "abcdefghijkl");
}

TEST(StringBufferTruncate, TakesBackTextAcrossBlocks) {
    CStringBuffer buffer(4);  // three characters per block
    buffer.Append("abcdefgh");
    buffer.Truncate(8);  // not shorter: nothing happens
    EXPECT_STREQ(buffer.GetText(), "abcdefgh");
    buffer.Append("ijk");
    buffer.Truncate(2);
    EXPECT_EQ(buffer.GetLength(), 2u);
    buffer.Append("XYZW");
    EXPECT_STREQ(buffer.GetText(), "abXYZW");
    buffer.Truncate(0);
    buffer.Append('q');
    EXPECT_STREQ(buffer.GetText(), "q");
}
