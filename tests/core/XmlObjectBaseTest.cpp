// Tests for the object base: reference counts, setter checks, choice bookkeeping and the reading and writing entry
// points.
#include <sys/stat.h>

#include <cstdio>
#include <filesystem>
#include <thread>

#include "support/Fixtures.h"

using namespace KvXmlLib10;

namespace {

// A bindable object that writes <note xmlns="urn:notes" lang="en"><body>text</body></note>
// itself and reads the body back, the way generated code drives the writer
// and checks the element it is given.
class Note : public CXmlObjectBase {
public:
    explicit Note(std::string body = "hello", int* deletions = nullptr)
        : text(std::move(body)), m_deletions(deletions) {
        SetElementName("note");
    }
    ~Note() override {
        if (m_deletions) ++*m_deletions;
    }
    CXmlObjectBase* GetBase() override { return standsFor ? standsFor : this; }
    std::string GetTargetNamespace() const override { return "urn:notes"; }
    std::string GetNamespace() const override { return "urn:notes"; }

    std::string text;
    CXmlObjectBase* standsFor = nullptr;  // as a wrapper does
    bool failInside = false;
    int reads = 0;

protected:
    void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace, const CXmlSerializationContext&,
                   bool) const override {
        if (isRoot) writer->SetDefaultNamespace(targetNamespace);
        writer->WriteStartElement(GetElementName(), targetNamespace);
        writer->WriteAttributeString("lang", "", "en", KvXmlLib10::string);
        writer->WriteStartElement("body", targetNamespace);
        writer->WriteString(text, KvXmlLib10::string);
        if (failInside) throw CKvValidationException("cannot write body");
        writer->WriteEndElement();
        writer->WriteEndElement();
    }
    CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* child, const CXmlSerializationContext& context,
                             bool) override {
        ++reads;
        if (!DoesElementNameMatch(context, element, "note", "urn:notes"))
            throw CKvValidationException("Expected element [note]");
        if (!child || !DoesElementNameMatch(context, child, "body", "urn:notes"))
            throw CKvValidationException("Expected element [body]");
        text = child->GetText();
        return child->GetNextSiblingElement();
    }

private:
    int* m_deletions;
};

using KvXmlTest::ReadFile;
using KvXmlTest::TempFile;

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

    // A copy starts unreferenced, with its own name.
    Note original;
    original.AddRef();
    Note copy(original);
    EXPECT_EQ(copy.AddRef(), 1);
    copy.SetElementName("other");
    EXPECT_EQ(original.GetElementName(), "note");
}

TEST(XmlObjectBaseRefCount, ConcurrentAddRefReleaseDeletesExactlyOnce) {
    int deletions = 0;
    Note* note = new Note("x", &deletions);
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
    EXPECT_EQ(deletions, 0);
    EXPECT_EQ(note->Release(), 0);
    EXPECT_EQ(deletions, 1);
}

TEST(SmartPtr, HoldsOneReferenceForItsLifetime) {
    int deletions = 0;
    Note* raw = new Note("x", &deletions);
    {
        CSmartPtr<Note> first(raw);
        CSmartPtr<Note> second = first;
        EXPECT_TRUE(first == second);
        CSmartPtr<Note> moved(std::move(second));
        EXPECT_TRUE(second == nullptr);
        CSmartPtr<CXmlObjectBase> base(moved);
        EXPECT_EQ(base.get(), static_cast<CXmlObjectBase*>(raw));
        moved = nullptr;
        first.reset();
        EXPECT_EQ(deletions, 0);
    }
    EXPECT_EQ(deletions, 1);

    CSmartPtr<Note> a(new Note("a", &deletions));
    CSmartPtr<Note> b(new Note("b", &deletions));
    a = b;  // the first note loses its only reference
    EXPECT_EQ(deletions, 2);
    CSmartPtr<Note>& same = a;
    a = same;  // self-assignment keeps the reference
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
    Note wrapper;
    wrapper.standsFor = &note;
    wrapper.SetElementName("wrapper");
    CXmlObjectBase::Throw_IfElementNameDiffers(&wrapper, "note");
}

TEST(XmlObjectBaseChoice, SelectElementAndCollectionChangedTrackTheSelectedMember) {
    const char* busy = "The Property [a] is already set. Only one element within this class bay be set at a time";
    Note value;
    std::string selected;
    CXmlObjectBase::Choice_SelectElement("a", nullptr, selected);
    EXPECT_EQ(selected, "a");  // even a null value selects an empty choice
    CXmlObjectBase::Choice_SelectElement("a", &value, selected);
    CXmlObjectBase::Choice_SelectElement("b", nullptr, selected);
    EXPECT_EQ(selected, "a");
    EXPECT_KV_THROW(CXmlObjectBase::Choice_SelectElement("b", &value, selected), CKvInvalidStateException, busy);
    EXPECT_EQ(selected, "a");
    CXmlObjectBase::Choice_SelectElement("a", nullptr, selected);
    EXPECT_EQ(selected, "");

    CXmlObjectBase::Choice_CollectionChanged("a", 0, selected);
    EXPECT_EQ(selected, "");
    CXmlObjectBase::Choice_CollectionChanged("a", 2, selected);
    EXPECT_EQ(selected, "a");
    CXmlObjectBase::Choice_CollectionChanged("b", 0, selected);
    EXPECT_EQ(selected, "a");
    EXPECT_KV_THROW(CXmlObjectBase::Choice_CollectionChanged("b", 1, selected), CKvInvalidStateException, busy);
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

    note.failInside = true;  // failures pass through unchanged
    EXPECT_KV_THROW(note.ToXml(), CKvValidationException, "cannot write body");
    EXPECT_KV_THROW(note.ToXmlStream(), CKvValidationException, "cannot write body");
}

TEST(XmlObjectBaseToXmlStream, EncodesInTheRequestedEncodingWithItsDeclaration) {
    Note note("h\xC3\xA9");  // "hé" as UTF-8 bytes, passed through unchanged under ASCIIOnly
    ASCIIOnly(true);
    CBinaryData utf8 = note.ToXmlStream(true, true, Encoding_UTF8, EOL_LF);
    ASCIIOnly(false);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(utf8.GetData()), utf8.GetLength()),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<note xmlns=\"urn:notes\" lang=\"en\">\n\t<body>h\xC3\xA9</body>\n</note>\n");
    const CBinaryData wide = Note("x").ToXmlStream(true, false, Encoding_UTF16, EOL_LF);
    const std::string declared = "<?xml version=\"1.0\" encoding=\"UTF-16\"?>";
    ASSERT_GE(wide.GetLength(), declared.size() * sizeof(wchar_t));
    EXPECT_EQ(std::wstring(reinterpret_cast<const wchar_t*>(wide.GetData()), declared.size()),
              std::wstring(declared.begin(), declared.end()));
}

TEST(XmlObjectBaseToXmlStream, CompressesWithGzipOrZlib) {
    Note note(std::string(20000, 'x'));
    CBinaryData plain = note.ToXmlStream(true, true, Encoding_UTF8, EOL_LF);
    for (CompressionType type : {Compression_GZip, Compression_Zlib}) {
        CBinaryData packed = note.ToXmlStream(true, true, Encoding_UTF8, EOL_LF,
                                              CXmlSerializationContext::m_defaultContext, type);
        ASSERT_GT(packed.GetLength(), 2u);
        EXPECT_LT(packed.GetLength(), plain.GetLength());
        EXPECT_EQ(packed[0], type == Compression_GZip ? 0x1F : 0x78);
        EXPECT_EQ(packed[1], type == Compression_GZip ? 0x8B : 0x01);  // zlib header of the fastest level
        uint32_t length = packed.GetLength();
        unsigned char* bytes = new unsigned char[length];
        std::copy(packed.GetData(), packed.GetData() + length, bytes);
        CKvZip::Decompress(&bytes, &length);
        EXPECT_EQ(CBinaryData(bytes, length, true), plain);
    }
    // Unknown compression values leave the bytes as they are.
    EXPECT_EQ(note.ToXmlStream(true, true, Encoding_UTF8, EOL_LF, CXmlSerializationContext::m_defaultContext,
                               static_cast<CompressionType>(7)),
              plain);
}

TEST(XmlObjectBaseToXmlFile, RefusesZlibBeforeTouchingTheFile) {
    const TempFile file;
    EXPECT_KV_THROW(Note().ToXmlFile(file.Path(), true, true, Encoding_UTF8, EOL_LF,
                                     CXmlSerializationContext::m_defaultContext, Compression_Zlib),
                    CKvException, "ZLIB Compression only available for To Stream methods.");
    EXPECT_FALSE(file.Exists());
}

TEST(XmlObjectBaseToXmlFile, BothPathsWriteTheStreamBytes) {
    Note note(std::string(9000, 'y'));  // more than one flush of the direct path
    for (XmlEncoding encoding : {Encoding_UTF8, Encoding_UTF16, Encoding_Wide}) {
        CBinaryData expected = note.ToXmlStream(true, true, encoding, EOL_CRLF);
        std::string bom = encoding == Encoding_UTF8 ? "" : "\xFF\xFE";
        std::string expectedFile =
            bom + std::string(reinterpret_cast<const char*>(expected.GetData()), expected.GetLength());
        const TempFile inMemory, direct;
        note.ToXmlFile(inMemory.Path(), true, true, encoding, EOL_CRLF);
        AsyncToXmlFile(true);
        note.ToXmlFile(direct.Path(), true, true, encoding, EOL_CRLF);
        AsyncToXmlFile(false);
        EXPECT_EQ(ReadFile(inMemory.Path()), expectedFile) << "encoding " << encoding;
        EXPECT_EQ(ReadFile(direct.Path()), expectedFile) << "encoding " << encoding;
    }
}

TEST(XmlObjectBaseToXmlFile, FailuresOnBothPathsLeaveTheOldFile) {
    Note note;
    const TempFile file;
    const std::string path = file.Path();
    const mode_t mask = ::umask(027);
    for (bool direct : {false, true}) {
        AsyncToXmlFile(direct);
        EXPECT_KV_THROW(note.ToXmlFile("/nonexistent-kvxml-dir/out.xml"), CKvException,
                        "Failed to write data to the file [/nonexistent-kvxml-dir/out.xml]");
        std::ofstream(path) << "old";
        note.failInside = true;
        EXPECT_KV_THROW(note.ToXmlFile(path.c_str()), CKvValidationException, "cannot write body");
        note.failInside = false;
        EXPECT_EQ(ReadFile(path), "old") << direct;
        std::remove(path.c_str());
        note.ToXmlFile(path.c_str(), false);
        EXPECT_EQ(ReadFile(path), kNoteLf) << direct;
        struct stat info {};
        ASSERT_EQ(::stat(path.c_str(), &info), 0);
        EXPECT_EQ(info.st_mode & 0777, 0640u) << direct;  // as a new file under the umask
    }
    ::umask(mask);
    AsyncToXmlFile(false);
    // No partial file is left beside the target.
    const std::string partial = std::filesystem::path(path).filename().string() + ".";
    for (const auto& entry : std::filesystem::directory_iterator(testing::TempDir()))
        EXPECT_EQ(entry.path().filename().string().find(partial), std::string::npos);
}

TEST(XmlObjectBaseFromXml, ReadsNarrowAndWideText) {
    Note note("");
    note.FromXml("<?xml version=\"1.0\"?><note xmlns=\"urn:notes\"><body>hi &amp; bye</body></note>");
    EXPECT_EQ(note.text, "hi & bye");
    note.FromXml(L"<note xmlns=\"urn:notes\"><body>wide</body></note>");
    EXPECT_EQ(note.text, "wide");
}

TEST(XmlObjectBaseFromXml, ReportsEmptyInputAndParseErrors) {
    Note note;
    EXPECT_KV_THROW(note.FromXml(""), CKvException, "XML String is empty!");
    EXPECT_KV_THROW(note.FromXml(static_cast<const char*>(nullptr)), CKvException, "XML String is empty!");
    EXPECT_KV_THROW(note.FromXml("<note"), CKvException, "unclosed token at line 1");
    EXPECT_KV_THROW(note.FromXmlStream(CBinaryData()), CKvException, "XML Stream is empty!");
    EXPECT_KV_THROW(note.FromXmlFile("/nonexistent-kvxml-dir/in.xml"), CKvException,
                    "Failed to open the file [/nonexistent-kvxml-dir/in.xml]");
    EXPECT_EQ(note.reads, 0);  // the object is not reached before the document is whole
    // The object decides whether the root is its element.
    EXPECT_KV_THROW(note.FromXml("<other/>"), CKvValidationException, "Expected element [note]");
    EXPECT_KV_THROW(note.FromXmlStream(CBinaryData("<other/>")), CKvValidationException, "Expected element [note]");
}

TEST(XmlObjectBaseFromXmlStream, ReadsPlainAndCompressedBytes) {
    Note source(std::string(3000, 'q'));
    for (CompressionType type : {Compression_None, Compression_GZip, Compression_Zlib}) {
        const CBinaryData bytes =
            source.ToXmlStream(true, false, Encoding_UTF8, EOL_LF, CXmlSerializationContext::m_defaultContext, type);
        const CBinaryData before = bytes;
        Note note("");
        note.FromXmlStream(bytes);
        EXPECT_EQ(note.text, source.text);
        EXPECT_EQ(bytes, before);  // inflating leaves the caller's bytes alone
    }
}

TEST(XmlObjectBaseFromXmlFile, ReadsWhatToXmlFileWrotePlainAndGzip) {
    Note source(std::string(2000, 'f'));
    const TempFile file;
    AsyncToXmlFile(true);  // gzip still goes through the in-memory path
    for (CompressionType type : {Compression_None, Compression_GZip}) {
        source.ToXmlFile(file.Path(), true, true, Encoding_UTF8, EOL_LF, CXmlSerializationContext::m_defaultContext,
                         type);
        EXPECT_EQ(ReadFile(file.Path()).substr(0, 2), type == Compression_GZip ? "\x1F\x8B" : "<?");
        Note note("");
        note.FromXmlFile(file.Path());
        EXPECT_EQ(note.text, source.text);
    }
    AsyncToXmlFile(false);
}

TEST(XmlObjectBaseFromXmlElement, ReadsAnElementOfALoadedDocument) {
    CXmlDocument document;
    document.LoadXml("<list><note xmlns=\"urn:notes\"><body>inner</body></note></list>");
    Note note("");
    note.FromXmlElement(document.GetDocumentElement()->GetFirstElement());
    EXPECT_EQ(note.text, "inner");
    EXPECT_EQ(note.reads, 1);
}
