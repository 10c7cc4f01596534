// HostileInputTest.cpp - documents built to crash, hang or exhaust the loader are refused with a clear message.
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>

#include "support/EntityChain.h"
#include "support/Fixtures.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

namespace {

const char kEntityLimitMessage[] =
    "The document declares more than 1000 internal entities (the limit set by "
    "CXmlDocument::SetMaxEntityDeclarations)";

// Every way a document reaches the parser.
using Loader = std::function<void(CXmlDocument&, const std::string&)>;
const std::pair<const char*, Loader> kLoaders[] = {
    {"LoadXml", [](CXmlDocument& d, const std::string& text) { d.LoadXml(text.c_str()); }},
    {"LoadXmlStream",
     [](CXmlDocument& d, const std::string& text) {
         std::string bytes = text;
         d.LoadXmlStream(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<uint32_t>(bytes.size()));
     }},
    {"Load", [](CXmlDocument& d, const std::string& text) { d.Load(TempFile(text).Path()); }},
};

std::string Gzip(const std::string& text) {
    const Bytes packed = Compressed(ToBytes(text), Compression_GZip);
    return std::string(packed.begin(), packed.end());
}

struct ScopedInflateLimit {
    explicit ScopedInflateLimit(uint64_t limit) { CKvZip::SetMaxDecompressedSize(limit); }
    ~ScopedInflateLimit() { CKvZip::SetMaxDecompressedSize(uint64_t{1} << 30); }
};

struct ScopedEntityLimit {
    explicit ScopedEntityLimit(uint32_t limit) { CXmlDocument::SetMaxEntityDeclarations(limit); }
    ~ScopedEntityLimit() { CXmlDocument::SetMaxEntityDeclarations(1000); }
};

}  // namespace

TEST(HostileInput, EntityDeclarationsPastTheLimitAreRefusedBeforeAnyExpansion) {
    EXPECT_EQ(CXmlDocument::GetMaxEntityDeclarations(), 1000u);
    const std::string deep = EntityChain(100000);
    const std::string atLimit = EntityChain(1000);
    for (const auto& [name, load] : kLoaders) {
        SCOPED_TRACE(name);
        CXmlDocument document;
        EXPECT_KV_THROW(load(document, deep), CKvException, kEntityLimitMessage);
        EXPECT_KV_THROW(load(document, EntityChain(1001)), CKvException, kEntityLimitMessage);
        load(document, atLimit);
        EXPECT_EQ(document.GetDocumentElement()->GetText(), "x");
    }
    ScopedEntityLimit lifted(0);
    CXmlDocument document;
    document.LoadXml(EntityChain(1001).c_str());
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "x");
}

TEST(HostileInput, CompressedInputIsInflatedWholeOrRefusedWithTheReason) {
    EXPECT_EQ(CKvZip::GetMaxDecompressedSize(), uint64_t{1} << 30);
    const std::string bomb = Gzip("<a>" + std::string(2 << 20, ' ') + "</a>");
    const std::string first = Gzip("<a>" + std::string(1000, 'x'));
    const std::string second = Gzip(std::string(1000, 'y') + "</a>");
    const struct {
        const char* name;
        std::string input;
        const char* error;  // null: loads, the root's text holding 2000 bytes
    } cases[] = {
        {"two members", first + second, nullptr},
        {"bomb", bomb,
         "Compressed input inflates past the limit of 1048576 bytes (see CKvZip::SetMaxDecompressedSize)"},
        {"member and garbage", first + second + "junk",
         "Compressed input is followed by 4 bytes that are neither compressed nor a further gzip member"},
        {"truncated second member", first + second.substr(0, 20), "not well-formed (invalid token) at line 1"},
    };
    ScopedInflateLimit limit(1 << 20);
    for (const auto& c : cases) {
        for (const auto& [name, load] : {kLoaders[1], kLoaders[2]}) {
            SCOPED_TRACE(std::string(c.name) + " by " + name);
            CXmlDocument document;
            if (!c.error) {
                load(document, c.input);
                EXPECT_EQ(document.GetDocumentElement()->GetText(), std::string(1000, 'x') + std::string(1000, 'y'));
            } else {
                EXPECT_KV_THROW(load(document, c.input), CKvException, c.error);
            }
        }
    }
    CKvZip::SetMaxDecompressedSize(0);
    CXmlDocument document;
    kLoaders[1].second(document, bomb);
    EXPECT_EQ(document.GetDocumentElement()->GetText().size(), 2u << 20);
}

TEST(HostileInput, NamedPipesAndDevicesAreRefusedWithoutWaiting) {
    const std::string fifo = ::testing::TempDir() + "kvxml_fifo_" + std::to_string(::getpid());
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    // Should the open wait for a writer, a late one frees it: the test then
    // fails instead of hanging.
    std::atomic<bool> done{false};
    std::thread rescue([&] {
        for (int i = 0; i < 500 && !done; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
        if (done) return;
        const int fd = ::open(fifo.c_str(), O_WRONLY | O_NONBLOCK);
        if (fd >= 0) ::close(fd);
    });
    CXmlDocument document;
    for (const std::string& path : {fifo, std::string("/dev/null")})
        EXPECT_KV_THROW(document.Load(path.c_str()), CKvException, "Failed to open the file [" + path + "]");
    done = true;
    rescue.join();
    std::remove(fifo.c_str());
}
