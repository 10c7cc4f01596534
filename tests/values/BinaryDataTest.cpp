// BinaryDataTest.cpp - sharing, copy-on-write, appends and indexing of CBinaryData.
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "kvxml/values/BinaryData.h"
#include "support/KvTestSupport.h"

using KvXmlLib10::CBinaryData;
using KvXmlLib10::CKvException;

namespace {

std::string Bytes(const unsigned char* data, uint32_t length) {
    return std::string(reinterpret_cast<const char*>(data), length);
}

std::string Bytes(const CBinaryData& value) { return Bytes(value.GetData(), value.GetLength()); }

const unsigned char* U(const char* text) { return reinterpret_cast<const unsigned char*>(text); }

}  // namespace

TEST(BinaryDataConstruct, CopiesOrAdoptsBytesAndComparesThem) {
    EXPECT_EQ(CBinaryData().GetData(), nullptr);
    EXPECT_EQ(CBinaryData(static_cast<const char*>(nullptr)).GetLength(), 0u);
    EXPECT_EQ(CBinaryData("").GetData(), nullptr);
    unsigned char source[] = {1, 2, 3};
    CBinaryData copied(source, 3, false);
    source[0] = 9;
    EXPECT_EQ(copied[0], 1);
    auto* adopted = new unsigned char[2]{7, 8};
    CBinaryData owner(adopted, 2, true);
    EXPECT_EQ(owner.GetData(), adopted);
    EXPECT_EQ(owner.GetLength(), 2u);
    // A zero-length adopted array is freed at once (ASan reports a leak otherwise).
    EXPECT_EQ(CBinaryData(new unsigned char[4], 0, true).GetData(), nullptr);
    EXPECT_KV_THROW(CBinaryData(nullptr, 3, false), CKvException, "Binary data pointer is NULL");
    EXPECT_TRUE(CBinaryData("abc") == CBinaryData("abc") && CBinaryData() == CBinaryData(""));
    EXPECT_TRUE(CBinaryData("abc") != CBinaryData("abd") && CBinaryData("abc") != CBinaryData("ab"));
}

TEST(BinaryDataCopy, SharesUntilFirstWriteOrRelease) {
    CBinaryData original("hello"), copy(original), assigned;
    assigned = original;
    EXPECT_EQ(copy.GetData(), original.GetData());
    EXPECT_EQ(assigned.GetData(), original.GetData());
    copy[0] = 'j';
    assigned.Append("!");
    EXPECT_EQ(Bytes(original), "hello");
    EXPECT_EQ(Bytes(copy), "jello");
    EXPECT_EQ(Bytes(assigned), "hello!");
    // A value that is not shared is written in place.
    const unsigned char* before = copy.GetData();
    copy[1] = 'a';
    EXPECT_EQ(copy.GetData(), before);
    CBinaryData& alias = copy;
    copy = alias;
    EXPECT_EQ(Bytes(copy), "jallo");
    // Clear and ReleaseData leave the other copies alone.
    CBinaryData again(original);
    original.Clear();
    EXPECT_EQ(original.GetLength(), 0u);
    CBinaryData third(again);
    again.ReleaseData();
    EXPECT_EQ(again.GetData(), nullptr);
    EXPECT_EQ(Bytes(third), "hello");
    third.SetBuffer("new");
    EXPECT_EQ(Bytes(third), "new");
    third.SetBuffer(nullptr, 0);
    EXPECT_EQ(third.GetLength(), 0u);
}

TEST(BinaryDataIndex, ThrowsPastTheEnd) {
    CBinaryData value("abc");
    const CBinaryData& constValue = value;
    EXPECT_EQ(constValue[2], 'c');
    EXPECT_KV_THROW(value[3], CKvException, "Index Out of range [3]");
    EXPECT_KV_THROW(constValue[100], CKvException, "Index Out of range [100]");
    CBinaryData empty;
    EXPECT_KV_THROW(empty[0], CKvException, "Index Out of range [0]");
}

TEST(BinaryDataAppend, AddsEveryKindOfInput) {
    CBinaryData value;
    value.Append(U("ab"), 2);
    value.Append("cd");
    value.Append(std::string("e\0f", 3));
    value.Append('g');
    value.Append(static_cast<unsigned char>(0xFF));
    value.Append(CBinaryData("hi"));
    value.Append(CBinaryData());
    value.Append(static_cast<const char*>(nullptr));
    value.Append(nullptr, 0);
    EXPECT_EQ(Bytes(value), std::string("abcde\0fg\xFFhi", 11));
    EXPECT_KV_THROW(value.Append(nullptr, 1), CKvException, "Binary data pointer is NULL");
}

TEST(BinaryDataAppend, AcceptsItsOwnBytes) {
    CBinaryData value("abcd");
    value.Append(value);
    CBinaryData shared(value);
    value.Append(value);
    EXPECT_EQ(Bytes(value), "abcdabcdabcdabcd");
    EXPECT_EQ(Bytes(shared), "abcdabcd");
    // An adopted buffer has no spare room, so this append reallocates while
    // reading from the old array.
    CBinaryData tight(new unsigned char[4]{'w', 'x', 'y', 'z'}, 4, true);
    tight.Append(tight.GetData() + 1, 3);
    EXPECT_EQ(Bytes(tight), "wxyzxyz");
    value.SetBuffer(value.GetData() + 12, 4);
    EXPECT_EQ(Bytes(value), "abcd");
}

TEST(BinaryDataAppend, GrowsGeometrically) {
    CBinaryData value("x");
    const unsigned char* last = value.GetData();
    int moves = 0;
    for (int i = 0; i < 200000; ++i) {
        value.Append('y');
        moves += value.GetData() != last;
        last = value.GetData();
    }
    EXPECT_EQ(value.GetLength(), 200001u);
    EXPECT_LE(moves, 6);
}

TEST(BinaryDataAppend, RefusesToPassFourGigabytes) {
    // The holder claims 4 GB - 1 but owns one byte: the refusal must come
    // before anything is read or copied.
    CBinaryData huge(new unsigned char[1]{0}, UINT32_MAX, true);
    EXPECT_KV_THROW(huge.Append('x'), CKvException, "Binary data would exceed 4294967295 bytes");
    EXPECT_EQ(huge.GetLength(), UINT32_MAX);
}

TEST(BinaryDataHolder, AppendNeedsSoleOwnership) {
    auto* holder = new CBinaryData::CDataHolder(const_cast<unsigned char*>(U("ab")), 2, false);
    holder->AddRef();
    EXPECT_KV_THROW(holder->Append(U("c"), 1), CKvException, "Failed to append. [RefCount=2]");
    holder->Release(true);
    holder->Append(U("c"), 1);
    EXPECT_EQ(Bytes(holder->GetData(), holder->GetLength()), "abc");
    holder->Release(true);
}

TEST(BinaryDataThreads, SharedValueSurvivesConcurrentCopies) {
    const CBinaryData shared("the shared bytes");
    std::atomic<int> mismatches{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 6; ++t) {
        threads.emplace_back([&shared, &mismatches, t] {
            for (int i = 0; i < 3000; ++i) {
                CBinaryData copy(shared), other;
                other = copy;
                if ((i + t) % 3 == 0) {
                    other[0] = 'T';  // private copy; nobody else may see it
                    other.Append('!');
                    if (other.GetLength() != 17 || other[0] != 'T') ++mismatches;
                }
                if (copy != shared || copy[4] != 's') ++mismatches;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(mismatches.load(), 0);
    EXPECT_EQ(Bytes(shared), "the shared bytes");
}
