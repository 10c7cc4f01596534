// Tests for the object base: reference counts, setter checks, choice
// bookkeeping and the writing entry points.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "kvxml/core/SmartPtr.h"
#include "kvxml/core/XmlObjectBase.h"
#include "kvxml/output/KvZip.h"
#include "kvxml/output/Encoder.h"
#include "kvxml/output/XmlWriter.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

// A bindable object that writes <note xmlns="urn:notes" lang="..">text</note>
// itself, the way generated code drives the writer.
class Note : public CXmlObjectBase {
public:
    explicit Note(std::string text = "hello", int* deletions = nullptr)
        : m_text(std::move(text)), m_deletions(deletions) {
        SetElementName("note");
    }
    ~Note() override {
        if (m_deletions) ++*m_deletions;
    }
    CXmlObjectBase* GetBase() override { return this; }
    std::string GetTargetNamespace() const override { return "urn:notes"; }
    std::string GetNamespace() const override { return "urn:notes"; }

    bool failInside = false;

protected:
    void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                   const CXmlSerializationContext& context, bool) const override {
        if (isRoot) writer->SetDefaultNamespace(targetNamespace);
        writer->WriteStartElement(GetElementName(), targetNamespace);
        writer->WriteAttributeString("lang", "", "en", KvXmlLib10::string);
        writer->WriteStartElement("body", targetNamespace);
        writer->WriteString(m_text, KvXmlLib10::string);
        if (failInside) throw CKvValidationException("cannot write body");
        writer->WriteEndElement();
        writer->WriteEndElement();
    }
    CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* firstChild, const CXmlSerializationContext&,
                             bool) override {
        return firstChild;
    }

private:
    std::string m_text;
    int* m_deletions;
};

class Wrapper : public CXmlObjectBase {
public:
    explicit Wrapper(CXmlObjectBase* inner) : m_inner(inner) {}
    CXmlObjectBase* GetBase() override { return m_inner; }
    std::string GetTargetNamespace() const override { return ""; }
    std::string GetNamespace() const override { return ""; }

protected:
    void ToXml_Int(CXmlWriter*, bool, const char*, const CXmlSerializationContext&, bool) const override {}
    CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* c, const CXmlSerializationContext&, bool) override {
        return c;
    }

private:
    CXmlObjectBase* m_inner;
};

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool FileExists(const std::string& path) {
    std::ifstream in(path);
    return in.good();
}

std::string TempPath(const char* name) { return testing::TempDir() + "kvxml_objectbase_" + name; }

const char kNoteLf[] = "<note xmlns=\"urn:notes\" lang=\"en\">\n\t<body>hello</body>\n</note>\n";

}  // namespace

TEST(XmlObjectBaseRefCount, StartsAtZeroAndDeletesItselfOnLastRelease) {
    int deletions = 0;
    Note* note = new Note("x", &deletions);
    EXPECT_EQ(note->AddRef(), 1);
    EXPECT_EQ(note->AddRef(), 2);
    EXPECT_EQ(note->Release(), 1);
    EXPECT_EQ(deletions, 0);
    EXPECT_EQ(note->Release(), 0);
    EXPECT_EQ(deletions, 1);
}

TEST(XmlObjectBaseRefCount, ConcurrentAddRefReleaseDeletesExactlyOnce) {
    std::atomic<int> deletions{0};
    int plainDeletions = 0;
    Note* note = new Note("x", &plainDeletions);
    note->AddRef();  // the test's own reference
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([note] {
            for (int i = 0; i < 20000; ++i) {
                note->AddRef();
                note->Release();
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(plainDeletions, 0);
    EXPECT_EQ(note->Release(), 0);
    EXPECT_EQ(plainDeletions, 1);
    (void)deletions;
}

TEST(XmlObjectBaseRefCount, CopiesStartUnreferencedWithTheSameName) {
    Note original;
    original.AddRef();
    Note copy(original);
    EXPECT_EQ(copy.GetElementName(), "note");
    EXPECT_EQ(copy.AddRef(), 1);
    copy.SetElementName("other");
    EXPECT_EQ(original.GetElementName(), "note");
    // Objects on the stack are never released to zero here.
    EXPECT_EQ(original.AddRef(), 2);
}

TEST(SmartPtr, HoldsOneReferenceForItsLifetime) {
    int deletions = 0;
    Note* raw = new Note("x", &deletions);
    {
        CSmartPtr<Note> first(raw);
        EXPECT_TRUE(first);
        EXPECT_EQ(first.get(), raw);
        EXPECT_EQ(first->GetElementName(), "note");
        EXPECT_EQ(&*first, raw);
        CSmartPtr<Note> second = first;
        EXPECT_TRUE(first == second);
        CSmartPtr<Note> moved(std::move(second));
        EXPECT_FALSE(second);
        EXPECT_TRUE(second == nullptr);
        CSmartPtr<CXmlObjectBase> base(moved);
        EXPECT_EQ(base.get(), static_cast<CXmlObjectBase*>(raw));
        moved = nullptr;
        EXPECT_EQ(deletions, 0);
        first.reset();
        EXPECT_EQ(deletions, 0);
    }
    EXPECT_EQ(deletions, 1);

    CSmartPtr<Note> a(new Note("a", &deletions));
    CSmartPtr<Note> b(new Note("b", &deletions));
    a = b;  // the first note loses its only reference
    EXPECT_EQ(deletions, 2);
    a = a;
    EXPECT_EQ(a, b);
}

TEST(XmlObjectBaseChecks, PropertyAndElementNameChecks) {
    Note note;
    EXPECT_EQ(CXmlObjectBase::Throw_IfPropertyIsNull(&note, "Body"), &note);
    EXPECT_KV_THROW(CXmlObjectBase::Throw_IfPropertyIsNull(nullptr, "Name"), CKvInvalidParamException,
                    "The Property [Name] is mandatory, it may node be NULL");

    CXmlObjectBase::Throw_IfElementNameDiffers(nullptr, "x");
    CXmlObjectBase::Throw_IfElementNameDiffers(&note, "note");
    EXPECT_KV_THROW(CXmlObjectBase::Throw_IfElementNameDiffers(&note, "Note"), CKvInvalidParamException,
                    "This property requrires an element with the name Note the element being set has the "
                    "element name note");
    // The name is taken from the object the value stands for.
    Wrapper wrapper(&note);
    wrapper.SetElementName("wrapper");
    CXmlObjectBase::Throw_IfElementNameDiffers(&wrapper, "note");
}

TEST(XmlObjectBaseChoice, SelectElementTracksSingleValuedMembers) {
    Note value;
    std::string selected;
    CXmlObjectBase::Choice_SelectElement("a", nullptr, selected);
    EXPECT_EQ(selected, "a");  // even a null value selects an empty choice
    CXmlObjectBase::Choice_SelectElement("a", &value, selected);
    EXPECT_EQ(selected, "a");
    CXmlObjectBase::Choice_SelectElement("b", nullptr, selected);
    EXPECT_EQ(selected, "a");
    EXPECT_KV_THROW(CXmlObjectBase::Choice_SelectElement("b", &value, selected), CKvInvalidStateException,
                    "The Property [a] is already set. Only one element within this class bay be set at a time");
    EXPECT_EQ(selected, "a");
    CXmlObjectBase::Choice_SelectElement("a", nullptr, selected);
    EXPECT_EQ(selected, "");
}

TEST(XmlObjectBaseChoice, CollectionChangedFollowsTheItemCount) {
    std::string selected;
    CXmlObjectBase::Choice_CollectionChanged("a", 0, selected);
    EXPECT_EQ(selected, "");
    CXmlObjectBase::Choice_CollectionChanged("a", 2, selected);
    EXPECT_EQ(selected, "a");
    CXmlObjectBase::Choice_CollectionChanged("b", 0, selected);
    EXPECT_EQ(selected, "a");
    EXPECT_KV_THROW(CXmlObjectBase::Choice_CollectionChanged("b", 1, selected), CKvInvalidStateException,
                    "The Property [a] is already set. Only one element within this class bay be set at a time");
    CXmlObjectBase::Choice_CollectionChanged("a", 1, selected);
    EXPECT_EQ(selected, "a");
    CXmlObjectBase::Choice_CollectionChanged("a", 0, selected);
    EXPECT_EQ(selected, "");
}

TEST(XmlObjectBaseChoice, SetElementValidOnlyRevalidatesTheSelectedMember) {
    std::string selected;
    EXPECT_KV_THROW(CXmlObjectBase::Choice_SetElementValid(true, "a", selected), CKvInvalidStateException,
                    "The Property  is already set. Only one element within this class bay be set at a time");
    selected = "a";
    CXmlObjectBase::Choice_SetElementValid(true, "a", selected);
    EXPECT_EQ(selected, "a");
    EXPECT_KV_THROW(CXmlObjectBase::Choice_SetElementValid(true, "b", selected), CKvInvalidStateException,
                    "The Property a is already set. Only one element within this class bay be set at a time");
    CXmlObjectBase::Choice_SetElementValid(false, "b", selected);
    EXPECT_EQ(selected, "");
}

TEST(XmlObjectBaseToXml, WritesTheRootWithOrWithoutDeclaration) {
    Note note;
    EXPECT_EQ(note.ToXml(false, true, EOL_LF), kNoteLf);
    EXPECT_EQ(note.ToXml(true, true, EOL_LF), std::string("<?xml version=\"1.0\"?>\n") + kNoteLf);
    EXPECT_EQ(note.ToXml(false, false, EOL_LF), "<note xmlns=\"urn:notes\" lang=\"en\"><body>hello</body></note>");
    EXPECT_EQ(note.ToXml(false, true, EOL_CRLF),
              "<note xmlns=\"urn:notes\" lang=\"en\">\r\n\t<body>hello</body>\r\n</note>\r\n");
    EXPECT_KV_THROW(note.ToXml(false, true, static_cast<EOLType>(2)), CKvException, "Invalid EOL type.");
}

TEST(XmlObjectBaseToXml, FailuresPassThroughUnchanged) {
    Note note;
    note.failInside = true;
    EXPECT_KV_THROW(note.ToXml(), CKvValidationException, "cannot write body");
    EXPECT_KV_THROW(note.ToXmlStream(), CKvValidationException, "cannot write body");
}

TEST(XmlObjectBaseToXmlStream, EncodesInTheRequestedEncoding) {
    Note note("h\xC3\xA9");  // "hé" in UTF-8: run under a UTF-8 locale below
    std::string expectedUtf8 = std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") +
                               "<note xmlns=\"urn:notes\" lang=\"en\">\n\t<body>h\xC3\xA9</body>\n</note>\n";
    ASCIIOnly(true);
    CBinaryData utf8 = note.ToXmlStream(true, true, Encoding_UTF8, EOL_LF);
    ASCIIOnly(false);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(utf8.GetData()), utf8.GetLength()), expectedUtf8);

    Note plain("x");
    CBinaryData wide = plain.ToXmlStream(true, false, Encoding_UTF16, EOL_LF);
    std::string declared = "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n";
    ASSERT_GE(wide.GetLength(), declared.size() * 4);
    EXPECT_EQ(wide.GetLength() % 4, 0u);
    const wchar_t* units = reinterpret_cast<const wchar_t*>(wide.GetData());
    EXPECT_EQ(units[0], L'<');
    EXPECT_EQ(units[1], L'?');
    EXPECT_EQ(std::wstring(units, declared.size()),
              std::wstring(declared.begin(), declared.end()));

    EXPECT_THROW(plain.ToXmlStream(true, false, Encoding_None, EOL_LF), CKvException);
}

TEST(XmlObjectBaseToXmlStream, CompressesWithGzipOrZlib) {
    std::string longText(20000, 'x');
    Note note(longText);
    CBinaryData plain = note.ToXmlStream(true, true, Encoding_UTF8, EOL_LF);

    for (CompressionType type : {Compression_GZip, Compression_Zlib}) {
        CBinaryData packed = note.ToXmlStream(true, true, Encoding_UTF8, EOL_LF,
                                              CXmlSerializationContext::m_defaultContext, type);
        ASSERT_GT(packed.GetLength(), 2u);
        EXPECT_LT(packed.GetLength(), plain.GetLength());
        if (type == Compression_GZip) {
            EXPECT_EQ(packed[0], 0x1F);
            EXPECT_EQ(packed[1], 0x8B);
        } else {
            EXPECT_EQ(packed[0], 0x78);
        }
        uint32_t length = packed.GetLength();
        unsigned char* bytes = new unsigned char[length];
        std::copy(packed.GetData(), packed.GetData() + length, bytes);
        CKvZip::Decompress(&bytes, &length);
        CBinaryData inflated(bytes, length, true);
        EXPECT_EQ(inflated, plain);
    }
    // Unknown compression values leave the bytes as they are.
    CBinaryData same = note.ToXmlStream(true, true, Encoding_UTF8, EOL_LF, CXmlSerializationContext::m_defaultContext,
                                        static_cast<CompressionType>(7));
    EXPECT_EQ(same, plain);
}

TEST(XmlObjectBaseToXmlStream, TooSmallToCompressIsAnError) {
    Note note("x");
    bool thrown = false;
    try {
        note.ToXmlStream(false, false, Encoding_UTF8, EOL_LF, CXmlSerializationContext::m_defaultContext,
                         Compression_GZip);
    } catch (const CKvException& e) {
        thrown = true;
        EXPECT_EQ(e.GetMessage().rfind("Failed to compress data. [Error Code: ", 0), 0u) << e.GetMessage();
    }
    EXPECT_TRUE(thrown);
}

TEST(XmlObjectBaseToXmlFile, RefusesZlibBeforeTouchingTheFile) {
    Note note;
    std::string path = TempPath("zlib.xml");
    std::remove(path.c_str());
    EXPECT_KV_THROW(note.ToXmlFile(path.c_str(), true, true, Encoding_UTF8, EOL_LF,
                                   CXmlSerializationContext::m_defaultContext, Compression_Zlib),
                    CKvException, "ZLIB Compression only available for To Stream methods.");
    EXPECT_FALSE(FileExists(path));
}

TEST(XmlObjectBaseToXmlFile, BothPathsWriteTheStreamBytes) {
    Note note(std::string(9000, 'y'));  // more than one flush of the direct path
    for (XmlEncoding encoding : {Encoding_UTF8, Encoding_UTF16, Encoding_Wide}) {
        CBinaryData expected = note.ToXmlStream(true, true, encoding, EOL_CRLF);
        std::string bom = encoding == Encoding_UTF8 ? "" : "\xFF\xFE";
        std::string expectedFile = bom + std::string(reinterpret_cast<const char*>(expected.GetData()),
                                                     expected.GetLength());
        std::string inMemory = TempPath("memory.xml");
        std::string direct = TempPath("direct.xml");
        note.ToXmlFile(inMemory.c_str(), true, true, encoding, EOL_CRLF);
        AsyncToXmlFile(true);
        note.ToXmlFile(direct.c_str(), true, true, encoding, EOL_CRLF);
        AsyncToXmlFile(false);
        EXPECT_EQ(ReadFile(inMemory), expectedFile) << "encoding " << encoding;
        EXPECT_EQ(ReadFile(direct), expectedFile) << "encoding " << encoding;
        std::remove(inMemory.c_str());
        std::remove(direct.c_str());
    }
}

TEST(XmlObjectBaseToXmlFile, GzipFileInflatesToTheDocument) {
    Note note(std::string(5000, 'z'));
    std::string path = TempPath("gzip.xml.gz");
    note.ToXmlFile(path.c_str(), true, true, Encoding_UTF8, EOL_LF, CXmlSerializationContext::m_defaultContext,
                   Compression_GZip);
    std::string packed = ReadFile(path);
    ASSERT_GT(packed.size(), 2u);
    EXPECT_EQ(static_cast<unsigned char>(packed[0]), 0x1F);
    uint32_t length = static_cast<uint32_t>(packed.size());
    unsigned char* bytes = new unsigned char[length];
    std::copy(packed.begin(), packed.end(), bytes);
    CKvZip::Decompress(&bytes, &length);
    CBinaryData inflated(bytes, length, true);
    EXPECT_EQ(inflated, note.ToXmlStream(true, true, Encoding_UTF8, EOL_LF));
    std::remove(path.c_str());
}

TEST(XmlObjectBaseToXmlFile, InMemoryPathCreatesNoFileOnFailure) {
    Note note;
    note.failInside = true;
    std::string path = TempPath("failed.xml");
    std::remove(path.c_str());
    EXPECT_KV_THROW(note.ToXmlFile(path.c_str()), CKvValidationException, "cannot write body");
    EXPECT_FALSE(FileExists(path));

    // Writing straight into the file has already created it when the failure comes.
    AsyncToXmlFile(true);
    EXPECT_KV_THROW(note.ToXmlFile(path.c_str()), CKvValidationException, "cannot write body");
    AsyncToXmlFile(false);
    EXPECT_TRUE(FileExists(path));
    std::remove(path.c_str());
}

TEST(XmlObjectBaseToXmlFile, UnwritablePathsReportTheFileName) {
    Note note;
    const char* path = "/nonexistent-kvxml-dir/out.xml";
    EXPECT_KV_THROW(note.ToXmlFile(path), CKvException,
                    "Failed to write data to the file [/nonexistent-kvxml-dir/out.xml]");
    AsyncToXmlFile(true);
    EXPECT_KV_THROW(note.ToXmlFile(path), CKvException,
                    "Failed to write data to the file [/nonexistent-kvxml-dir/out.xml]");
    AsyncToXmlFile(false);
}
