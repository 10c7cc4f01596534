// BinaryDataTest.cpp - sharing, copy-on-write, appends and indexing of CBinaryData.
#include <atomic>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "kvxml/values/BinaryData.h"
#include "support/KvTestSupport.h"

using KvXmlLib10::CBinaryData;
using KvXmlLib10::CKvException;

namespace {

std::string Bytes(const CBinaryData& value) {
    return std::string(reinterpret_cast<const char*>(value.GetData()), value.GetLength());
}

const unsigned char* U(const char* text) { return reinterpret_cast<const unsigned char*>(text); }

}  // namespace

TEST(BinaryDataConstruct, CopiesOrAdoptsBytes) {
    CBinaryData empty;
    EXPECT_EQ(empty.GetData(), nullptr);
    EXPECT_EQ(empty.GetLength(), 0u);
    EXPECT_EQ(CBinaryData(static_cast<const char*>(nullptr)).GetLength(), 0u);
    EXPECT_EQ(CBinaryData("").GetData(), nullptr);

    EXPECT_EQ(Bytes(CBinaryData("abc")), "abc");

    unsigned char source[] = {1, 2, 3};
    CBinaryData copied(source, 3, false);
    source[0] = 9;
    EXPECT_EQ(copied[0], 1);

    auto* adopted = new unsigned char[2]{7, 8};
    CBinaryData owner(adopted, 2, true);
    EXPECT_EQ(owner.GetData(), adopted);
    EXPECT_EQ(owner.GetLength(), 2u);
    // A zero-length adopted array is freed at once (ASan reports a leak otherwise).
    CBinaryData none(new unsigned char[4], 0, true);
    EXPECT_EQ(none.GetData(), nullptr);

    EXPECT_KV_THROW(CBinaryData(nullptr, 3, false), CKvException, "Binary data pointer is NULL");
}

TEST(BinaryDataCompare, EqualMeansSameLengthAndBytes) {
    EXPECT_TRUE(CBinaryData("abc") == CBinaryData("abc"));
    EXPECT_TRUE(CBinaryData("abc") != CBinaryData("abd"));
    EXPECT_TRUE(CBinaryData("abc") != CBinaryData("ab"));
    EXPECT_TRUE(CBinaryData() == CBinaryData(""));
    CBinaryData a("x");
    CBinaryData b(a);
    EXPECT_TRUE(a == b);
}

TEST(BinaryDataCopy, SharesUntilFirstWrite) {
    CBinaryData original("hello");
    CBinaryData copy(original);
    CBinaryData assigned;
    assigned = original;
    EXPECT_EQ(copy.GetData(), original.GetData());
    EXPECT_EQ(assigned.GetData(), original.GetData());

    copy[0] = 'j';
    EXPECT_EQ(Bytes(original), "hello");
    EXPECT_EQ(Bytes(copy), "jello");
    EXPECT_NE(copy.GetData(), original.GetData());

    assigned.Append("!");
    EXPECT_EQ(Bytes(original), "hello");
    EXPECT_EQ(Bytes(assigned), "hello!");

    // A value that is not shared is written in place.
    const unsigned char* before = copy.GetData();
    copy[1] = 'a';
    EXPECT_EQ(copy.GetData(), before);

    // Self-assignment keeps the bytes.
    CBinaryData& alias = copy;
    copy = alias;
    EXPECT_EQ(Bytes(copy), "jallo");
}

TEST(BinaryDataIndex, ThrowsPastTheEnd) {
    CBinaryData value("abc");
    const CBinaryData& constValue = value;
    EXPECT_EQ(constValue[2], 'c');
    EXPECT_KV_THROW(value[3], CKvException, "Index Out of range [3]");
    EXPECT_KV_THROW(constValue[3], CKvException, "Index Out of range [3]");
    EXPECT_KV_THROW(value[100], CKvException, "Index Out of range [100]");
    CBinaryData empty;
    EXPECT_KV_THROW(empty[0], CKvException, "Index Out of range [0]");
    const CBinaryData& constEmpty = empty;
    EXPECT_KV_THROW(constEmpty[0], CKvException, "Index Out of range [0]");
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
    EXPECT_EQ(Bytes(value), "abcdabcd");

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

TEST(BinaryDataAppend, GrowsToTwiceTheNeededSize) {
    // A copied buffer starts at max(2 * length, 8192) bytes; appends that fit
    // stay in place, the first that does not moves to twice the new total.
    std::vector<unsigned char> fill(40000, 'q');
    CBinaryData small(fill.data(), 10, false);
    const unsigned char* start = small.GetData();
    small.Append(fill.data(), 8182);
    EXPECT_EQ(small.GetData(), start);
    small.Append('x');
    EXPECT_NE(small.GetData(), start);
    EXPECT_EQ(small.GetLength(), 8193u);

    CBinaryData large(fill.data(), 10000, false);
    start = large.GetData();
    large.Append(fill.data(), 10000);
    EXPECT_EQ(large.GetData(), start);
    large.Append('x');
    const unsigned char* grown = large.GetData();
    EXPECT_NE(grown, start);
    large.Append(fill.data(), 40002 - 20001);
    EXPECT_EQ(large.GetData(), grown);
    EXPECT_EQ(large[20000], 'x');
}

TEST(BinaryDataAppend, RefusesToPassFourGigabytes) {
    // The holder claims 4 GB - 1 but owns one byte: the refusal must come
    // before anything is read or copied.
    CBinaryData huge(new unsigned char[1]{0}, UINT32_MAX, true);
    EXPECT_KV_THROW(huge.Append('x'), CKvException, "Binary data would exceed 4294967295 bytes");
    EXPECT_EQ(huge.GetLength(), UINT32_MAX);
}

TEST(BinaryDataRelease, ClearAndReleaseLeaveCopiesAlone) {
    CBinaryData a("data");
    CBinaryData b(a);
    a.Clear();
    EXPECT_EQ(a.GetLength(), 0u);
    EXPECT_EQ(Bytes(b), "data");
    CBinaryData c(b);
    b.ReleaseData();
    EXPECT_EQ(b.GetData(), nullptr);
    EXPECT_EQ(Bytes(c), "data");
    c.SetBuffer("new");
    EXPECT_EQ(Bytes(c), "new");
    c.SetBuffer(nullptr, 0);
    EXPECT_EQ(c.GetLength(), 0u);
}

TEST(BinaryDataHolder, AppendNeedsSoleOwnership) {
    using Holder = CBinaryData::CDataHolder;
    Holder* holder = new Holder(const_cast<unsigned char*>(U("ab")), 2, false);
    holder->AddRef();
    EXPECT_KV_THROW(holder->Append(U("c"), 1), CKvException, "Failed to append. [RefCount=2]");

    Holder* copy = holder->GetExclusiveCopy();
    ASSERT_NE(copy, holder);
    // The copy released the shared holder once; both are now sole owners.
    EXPECT_EQ(copy->GetExclusiveCopy(), copy);
    EXPECT_EQ(holder->GetExclusiveCopy(), holder);
    copy->Append(U("c"), 1);
    holder->Append(U("d"), 1);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(copy->GetData()), copy->GetLength()), "abc");
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(holder->GetData()), holder->GetLength()), "abd");
    copy->Release(true);
    holder->Release(true);
}

TEST(BinaryDataThreads, SharedValueSurvivesConcurrentCopies) {
    const CBinaryData shared("the shared bytes");
    std::atomic<int> mismatches{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 6; ++t) {
        threads.emplace_back([&shared, &mismatches, t] {
            for (int i = 0; i < 3000; ++i) {
                CBinaryData copy(shared);
                CBinaryData other;
                other = copy;
                if ((i + t) % 3 == 0) {
                    other[0] = 'T';  // private copy; nobody else may see it
                    other.Append('!');
                    if (other.GetLength() != 17 || other[0] != 'T') ++mismatches;
                }
                if (copy != shared || copy[4] != 's') ++mismatches;
                copy.Clear();
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(mismatches.load(), 0);
    EXPECT_EQ(Bytes(shared), "the shared bytes");
}
