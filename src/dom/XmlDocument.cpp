// XmlDocument.cpp - loading input, tree building and the element callback.
#include "kvxml/dom/XmlDocument.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "dom/detail/ExpatReader.h"
#include "dom/detail/NameTable.h"
#include "dom/detail/NodePool.h"
#include "dom/detail/TreeBuilder.h"
#include "fastinfoset/detail/FastInfosetReader.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/KvZip.h"
#include "output/detail/FileOutput.h"
#include "output/detail/Inflate.h"

namespace KvXmlLib10 {

namespace {

using FilePtr = std::unique_ptr<std::FILE, detail::FileCloser>;

// Opens for reading ("rt") without ever blocking: opening a FIFO that has no
// writer waits forever, so the open does not wait and anything that is not a
// file (or a directory, refused later for having no size) is let go of.
FilePtr OpenInputFile(const char* name) {
    const int fd = ::open(name, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return nullptr;
    struct stat status;
    const bool usable = fstat(fd, &status) == 0 && (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode)) &&
                        fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK) == 0;
    std::FILE* file = usable ? fdopen(fd, "r") : nullptr;
    if (!file) ::close(fd);
    return FilePtr(file);
}

// Length of an open file, or -1 when it cannot be told. Only regular files
// have one: a directory would report LONG_MAX, a pipe nothing useful.
long FileLength(std::FILE* file) {
    struct stat status;
    if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) return -1;
    if (std::fseek(file, 0, SEEK_END) != 0) return -1;
    const long length = std::ftell(file);
    if (length < 0 || std::fseek(file, 0, SEEK_SET) != 0) return -1;
    return length;
}

std::atomic<uint32_t> g_maxEntityDeclarations{1000};

std::string_view ViewOf(const char* text) { return text ? std::string_view(text) : std::string_view(); }

}  // namespace

// ---- construction ----

CXmlDocument::CXmlDocument()
    : CInstanceMonitor("CXmlDocument"), m_context(&CXmlSerializationContext::m_defaultContext) {
    Init();
}

CXmlDocument::CXmlDocument(const CXmlSerializationContext& context)
    : CInstanceMonitor("CXmlDocument"), m_context(&context) {
    Init();
}

CXmlDocument::CXmlDocument(bool (*callback)(CXmlElement*))
    : CInstanceMonitor("CXmlDocument"), m_callback(callback),
      m_context(&CXmlSerializationContext::m_defaultContext) {
    Init();
}

CXmlDocument::CXmlDocument(bool (*callback)(CXmlElement*), const CXmlSerializationContext& context)
    : CInstanceMonitor("CXmlDocument"), m_callback(callback), m_context(&context) {
    Init();
}

CXmlDocument::~CXmlDocument() { CXmlDocument::Cleanup(); }

void CXmlDocument::Init() {
    m_documentElement = nullptr;
    ReleaseInput();
    m_schemaType = m_context->GetSchemaType();
    m_names = std::make_unique<detail::NameTable>();
    m_nodes = std::make_unique<detail::NodePool>();
}

void CXmlDocument::Cleanup() {
    m_stack.clear();
    m_nodes->Drain();
    delete m_documentElement;
    m_documentElement = nullptr;
    ReleaseInput();
    // Only after the tree is gone: its nodes point into both.
    m_nodes->Reset();
    m_names->Clear();
}

// ---- loading ----

void CXmlDocument::SetInput(const unsigned char* data, std::size_t length) {
    m_input = data;
    m_inputLength = length;
}

void CXmlDocument::ReleaseInput() {
    m_input = nullptr;
    m_inputLength = 0;
    m_buffer.reset();
}

void CXmlDocument::Load(const char* fileName) {
    Cleanup();
    const char* name = fileName ? fileName : "";
    FilePtr file = OpenInputFile(name);
    if (!file) throw CKvException(FormatString("Failed to open the file [%s]", name));

    const long length = FileLength(file.get());
    if (length < 0) {
        const int error = std::ferror(file.get());
        file.reset();
        throw CKvException(FormatString("Failed to get the size of the file [%s] Error [%n]", name, error));
    }
    std::unique_ptr<unsigned char[]> buffer(new unsigned char[length > 0 ? static_cast<std::size_t>(length) : 1]);
    const std::size_t read = length > 0 ? std::fread(buffer.get(), 1, static_cast<std::size_t>(length), file.get()) : 0;
    if (read == 0 || read != static_cast<std::size_t>(length)) {
        const int error = std::ferror(file.get());
        file.reset();
        throw CKvException(FormatString("Failed to read the contents of the file [%s] Error [%n]", name, error));
    }
    file.reset();
    m_buffer = std::move(buffer);
    SetInput(m_buffer.get(), read);
    Parse();
}

void CXmlDocument::LoadXmlStream(unsigned char* data, uint32_t length) {
    Cleanup();
    if (!data || length == 0) throw CKvException("XML Stream is empty!");
    // Parsed in place: the caller's bytes stay valid for the whole call.
    SetInput(data, length);
    Parse();
}

void CXmlDocument::LoadXml(const char* text) {
    Cleanup();
    const std::size_t length = text ? std::strlen(text) : 0;
    if (length == 0) throw CKvException("XML String is empty!");
    SetInput(reinterpret_cast<const unsigned char*>(text), length);
    ParseText();
}

void CXmlDocument::LoadXml(const wchar_t* text) {
    Cleanup();
    const std::size_t count = text ? std::wcslen(text) : 0;
    if (count == 0) throw CKvException("XML String is empty!");
    // UTF-16 little endian behind a byte-order mark, which expat detects.
    const std::size_t length = 2 * count + 2;
    std::unique_ptr<unsigned char[]> buffer(new unsigned char[length]);
    unsigned char* out = buffer.get();
    *out++ = 0xFF;
    *out++ = 0xFE;
    for (std::size_t i = 0; i < count; ++i) {
        const uint32_t unit = static_cast<uint32_t>(text[i]) & 0xFFFF;  // beyond the BMP: cut to 16 bits
        *out++ = static_cast<unsigned char>(unit & 0xFF);
        *out++ = static_cast<unsigned char>(unit >> 8);
    }
    m_buffer = std::move(buffer);
    SetInput(m_buffer.get(), length);
    ParseText();
}

void CXmlDocument::InflateIfCompressed() {
    if (m_inputLength > UINT32_MAX || !detail::MayBeCompressed(m_input, m_inputLength)) return;
    if (m_input != m_buffer.get()) {
        std::unique_ptr<unsigned char[]> copy(new unsigned char[m_inputLength]);
        std::memcpy(copy.get(), m_input, m_inputLength);
        m_buffer = std::move(copy);
    }
    unsigned char* data = m_buffer.release();
    uint32_t length = static_cast<uint32_t>(m_inputLength);
    detail::InflateResult result{};
    try {
        result = detail::Inflate(&data, &length);
    } catch (...) {
        m_buffer.reset(data);
        throw;
    }
    m_buffer.reset(data);
    SetInput(m_buffer.get(), length);
    // Neither case may pass for plain text: the parser would blame a byte of
    // the compressed form, and dropping the bytes would lose data silently.
    if (result.outcome == detail::InflateOutcome::OverLimit) {
        throw CKvException(FormatString(
            "Compressed input inflates past the limit of %llu bytes (see CKvZip::SetMaxDecompressedSize)",
            static_cast<unsigned long long>(result.limit)));
    }
    if (result.outcome == detail::InflateOutcome::TrailingBytes) {
        throw CKvException(FormatString(
            "Compressed input is followed by %u bytes that are neither compressed nor a further gzip member",
            result.trailing));
    }
}

void CXmlDocument::Parse() {
    m_errorOffset = -1;
    InflateIfCompressed();
    bool fastInfoset = false;
    CFastInfosetReader reader(m_context->GetFIContext(), *this);
    try {
        fastInfoset = reader.Parse();
    } catch (...) {
        m_errorOffset = static_cast<int64_t>(reader.Offset());
        ReleaseInput();
        throw;
    }
    if (!fastInfoset) return ParseText();
    ReleaseInput();
}

void CXmlDocument::ParseText() {
    m_errorOffset = -1;
    // The input is needed only while expat runs; the tree never points into it.
    struct InputRelease {
        CXmlDocument& document;
        ~InputRelease() { document.ReleaseInput(); }
    } release{*this};
    CExpatReader reader(*this);
    reader.CreateParser();
    reader.Parse(true);
}

void CXmlDocument::SetMaxEntityDeclarations(uint32_t count) {
    g_maxEntityDeclarations.store(count, std::memory_order_relaxed);
}

uint32_t CXmlDocument::GetMaxEntityDeclarations() {
    return g_maxEntityDeclarations.load(std::memory_order_relaxed);
}

// ---- lookups ----

std::string CXmlDocument::LookupNamespaceFromAlias(const char* prefix) const {
    auto found = m_aliases.find(ViewOf(prefix));
    return found == m_aliases.end() ? std::string() : found->second;
}

// ---- tree building ----

CXmlElement* CXmlDocument::AddDocElement(const char* uri, const char* localName) {
    detail::TreeBuilder builder(*this);
    return builder.Open(m_names->Intern(ViewOf(uri)), m_names->Intern(ViewOf(localName)));
}

CXmlElement* CXmlDocument::AddChildElement(const char* uri, const char* localName) {
    return AddDocElement(uri, localName);
}

void CXmlDocument::AddElementAttribute(CXmlElement* element, const std::string& localName, const std::string& value,
                                       const std::string& uri) {
    if (element) element->AddAttribute(localName, value, uri);
}

void CXmlDocument::AppendTextExcludingCR(CXmlElement* element, const char* text) {
    if (element && text) detail::TreeBuilder::AppendText(*element, text, std::strlen(text));
}

void CXmlDocument::AppendTextExcludingCR(CXmlElement* element, const char* text, uint32_t length) {
    if (!element || !text) return;
    const void* nul = std::memchr(text, '\0', length);
    const std::size_t used = nul ? static_cast<std::size_t>(static_cast<const char*>(nul) - text) : length;
    detail::TreeBuilder::AppendText(*element, text, used);
}

void CXmlDocument::EndElement() { detail::TreeBuilder(*this).Close(); }

}  // namespace KvXmlLib10
