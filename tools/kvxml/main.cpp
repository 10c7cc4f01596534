// main.cpp - kvxml: convert between XML text and Fast Infoset, and describe documents.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <vector>

#include "Input.h"
#include "Output.h"
#include "TreeStreamer.h"
#include "ValueTypes.h"
#include "kvxml/kvxml.h"

using namespace KvXmlLib10;
using namespace kvxml_cli;

namespace {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

const char kUsage[] =
    "Usage: kvxml convert [options] IN OUT\n"
    "       kvxml info FILE\n"
    "\n"
    "convert  Converts between XML text and Fast Infoset (ITU-T X.891) in either\n"
    "         direction. The input's format and compression are taken from its\n"
    "         bytes; the output's format from --to, else from OUT's extension\n"
    "         (.fi, .finf, .fis: Fast Infoset; .xml: XML text), else the other\n"
    "         format. '-' is standard input or output.\n"
    "  --to xml|fi   output format\n"
    "  --gzip        gzip-compress the output\n"
    "  --zlib        zlib-compress the output\n"
    "  --pretty      indent XML output (whitespace-only text is dropped)\n"
    "  --suggested   write numbers, booleans, dates and times in binary form\n"
    "  --max-add-length N  index Fast Infoset values shorter than N characters\n"
    "                (default 6)\n"
    "info     Prints format, compression, size, element and attribute counts and\n"
    "         the sizes of the Fast Infoset vocabulary tables of the document.\n"
    "  -h, --help    this text\n"
    "  --version     the version\n"
    "\n"
    "Exit status: 0 success, 1 the conversion failed, 2 usage error.\n";

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

bool IsWhitespace(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

std::string Extension(std::string path) {
    for (const char* wrapper : {".gz", ".zz"}) {
        const std::size_t length = std::strlen(wrapper);
        if (path.size() > length && path.compare(path.size() - length, length, wrapper) == 0)
            path.resize(path.size() - length);
    }
    const std::size_t dot = path.rfind('.');
    return dot == std::string::npos || path.find('/', dot) != std::string::npos ? "" : path.substr(dot + 1);
}

// Progress on a terminal for big inputs: elements done and bytes written.
class Progress {
public:
    Progress(uint64_t inputSize) : m_on(inputSize > 100u * 1024 * 1024 && ::isatty(STDERR_FILENO)) {}
    ~Progress() {
        if (m_shown) std::fputc('\n', stderr);
    }
    void Tick(uint64_t elements, uint64_t written) {
        if (!m_on || (elements & 0x3FFF) != 0) return;
        const auto now = std::chrono::steady_clock::now();
        if (now - m_last < std::chrono::milliseconds(500)) return;
        m_last = now;
        m_shown = true;
        std::fprintf(stderr, "\rkvxml: %llu elements, %llu MB written", static_cast<unsigned long long>(elements),
                     static_cast<unsigned long long>(written >> 20));
    }

private:
    bool m_on;
    bool m_shown = false;
    std::chrono::steady_clock::time_point m_last{};
};

// Replays the elements into a writer of either kind.
class WriterVisitor : public TreeVisitor {
public:
    WriterVisitor(CXmlWriter& writer, bool suggested, bool dropWhitespace, Progress& progress)
        : m_writer(writer), m_suggested(suggested), m_dropWhitespace(dropWhitespace), m_progress(progress) {}

    void Start(const std::string& localName, const std::string& namespaceUri) override {
        // No default namespace is declared: an element without a namespace
        // inside its scope would otherwise change meaning.
        m_writer.WriteStartElement(localName, namespaceUri);
    }
    void Attribute(const std::string& localName, const std::string& namespaceUri, const std::string& value) override {
        m_writer.WriteAttributeString(localName, namespaceUri, value, TypeOf(value));
    }
    void Text(const std::string& text) override {
        if (m_dropWhitespace && IsWhitespace(text)) return;
        m_writer.WriteString(text, TypeOf(text));
    }
    void End() override {
        m_writer.WriteEndElement();
        ++m_elements;
    }
    void Completed() override {
        Drain();
        m_progress.Tick(m_elements, m_written);
    }
    /// Hands what the writer produced so far to the output.
    virtual void Drain() = 0;

protected:
    uint64_t m_written = 0;

private:
    ItemType TypeOf(const std::string& text) const { return m_suggested ? InferItemType(text) : string; }

    CXmlWriter& m_writer;
    bool m_suggested;
    bool m_dropWhitespace;
    Progress& m_progress;
    uint64_t m_elements = 0;
};

// XML text: a stream that hands its text on whenever the writer flushes.
class DrainingTextStream : public CTextStream {
public:
    explicit DrainingTextStream(Output& output) : CTextStream(std::string(), Encoding_UTF8), m_output(output) {}
    void Flush() override {
        const std::size_t length = m_buffer.GetLength();
        if (length == 0) return;
        m_output.Write(m_buffer.GetText(), length);
        m_written += length;
        m_buffer.Empty();
    }
    uint64_t Written() const { return m_written; }

private:
    Output& m_output;
    uint64_t m_written = 0;
};

class TextOut : public WriterVisitor {
public:
    TextOut(CXmlTextWriter& writer, DrainingTextStream& stream, bool suggested, bool pretty, Progress& progress)
        : WriterVisitor(writer, suggested, pretty, progress), m_stream(stream) {}
    void Drain() override { m_written = m_stream.Written(); }

private:
    DrainingTextStream& m_stream;
};

class FastInfosetOut : public WriterVisitor {
public:
    FastInfosetOut(CFastInfosetWriter& writer, CBinaryStream& stream, Output& output, bool suggested,
                   Progress& progress)
        : WriterVisitor(writer, suggested, false, progress), m_stream(stream), m_output(output) {}
    void Drain() override {
        // The writer hands over whole blocks; pass each on at once, so the
        // stream never grows (and copies) beyond one block.
        if (m_stream.GetBinaryStream().GetLength() != 0) DrainAll();
    }
    void DrainAll() {
        CBinaryData& bytes = m_stream.GetBinaryStream();
        m_output.Write(bytes.GetData(), bytes.GetLength());
        m_written += bytes.GetLength();
        bytes.Clear();
    }

private:
    CBinaryStream& m_stream;
    Output& m_output;
};

// XML text goes straight through expat; Fast Infoset through the document.
void Stream(const Input& input, TreeVisitor& visitor) {
    if (input.GetFormat() == Format::Xml) {
        StreamXmlText(input, visitor);
    } else {
        StreamDocument(input, visitor);
    }
}

struct ConvertOptions {
    std::string in;
    std::string out;
    std::string to;
    Compression compression = Compression::None;
    bool pretty = false;
    bool suggested = false;
    uint32_t maxAddLength = 0;  // 0: the context's default
};

void Convert(const ConvertOptions& options) {
    const Input input(options.in);
    Format target = input.GetFormat() == Format::Xml ? Format::FastInfoset : Format::Xml;
    const std::string extension = options.to.empty() ? Extension(options.out) : options.to;
    if (extension == "xml") target = Format::Xml;
    if (extension == "fi" || extension == "finf" || extension == "fis") target = Format::FastInfoset;

    Output output(options.out, options.compression);
    Progress progress(input.RawSize());
    try {
        if (target == Format::Xml) {
            DrainingTextStream stream(output);
            CXmlTextWriter writer(stream);
            writer.Open();
            writer.SetFormat(options.pretty);
            writer.WriteStartDocument();
            TextOut visitor(writer, stream, options.suggested, options.pretty, progress);
            Stream(input, visitor);
            writer.Close();
            stream.Flush();
        } else {
            CFastInfosetContext context;
            if (options.suggested) context.SetSuggestedValues();
            if (options.maxAddLength) {
                context.SetAttributeMaxAddLength(options.maxAddLength);
                context.SetElementMaxAddLength(options.maxAddLength);
            }
            CBinaryStream stream;
            CFastInfosetWriter writer(context, stream);
            writer.Open();
            writer.WriteStartDocument(FInfoDecl_None);
            FastInfosetOut visitor(writer, stream, output, options.suggested, progress);
            Stream(input, visitor);
            writer.WriteEndDocument();
            writer.Close();
            visitor.DrainAll();
        }
        output.Finish();
    } catch (...) {
        output.Discard();
        throw;
    }
}

// Counts what a Fast Infoset encoding of the document would index.
class InfoVisitor : public TreeVisitor {
public:
    void Start(const std::string& localName, const std::string& namespaceUri) override {
        ++elements;
        namespaces.insert(namespaceUri);
        localNames.insert(localName);
        elementNames.insert(namespaceUri + '\n' + localName);
    }
    void Attribute(const std::string& localName, const std::string& namespaceUri, const std::string& value) override {
        ++attributes;
        namespaces.insert(namespaceUri);
        localNames.insert(localName);
        attributeNames.insert(namespaceUri + '\n' + localName);
        if (value.size() < kMaxAddLength) attributeValues.insert(value);
    }
    void Text(const std::string& text) override {
        if (!text.empty() && text.size() < kMaxAddLength) chunks.insert(text);
    }
    void End() override {}

    static constexpr std::size_t kMaxAddLength = 6;  // the writer's default
    uint64_t elements = 0;
    uint64_t attributes = 0;
    std::unordered_set<std::string> namespaces, localNames, elementNames, attributeNames, attributeValues, chunks;
};

void Info(const std::string& path) {
    const Input input(path);
    InfoVisitor info;
    Stream(input, info);
    info.namespaces.erase(std::string());
    std::printf("file: %s\n", input.Name().c_str());
    std::printf("format: %s\n", FormatName(input.GetFormat()));
    std::printf("compression: %s\n", CompressionName(input.GetCompression()));
    std::printf("size: %llu bytes\n", static_cast<unsigned long long>(input.RawSize()));
    if (input.GetCompression() != Compression::None)
        std::printf("uncompressed size: %llu bytes\n", static_cast<unsigned long long>(input.Size()));
    std::printf("elements: %llu\n", static_cast<unsigned long long>(info.elements));
    std::printf("attributes: %llu\n", static_cast<unsigned long long>(info.attributes));
    std::printf("vocabulary: namespace names %zu, local names %zu, element names %zu, attribute names %zu, "
                "attribute values %zu, character chunks %zu\n",
                info.namespaces.size(), info.localNames.size(), info.elementNames.size(), info.attributeNames.size(),
                info.attributeValues.size(), info.chunks.size());
}

int Run(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) throw UsageError("missing command");
    const std::string command = args[0];
    if (command == "-h" || command == "--help" || command == "help") {
        std::fputs(kUsage, stdout);
        return kExitOk;
    }
    if (command == "--version") {
        std::printf("kvxml %s\n", KVXML_VERSION);
        return kExitOk;
    }
    std::vector<std::string> operands;
    ConvertOptions options;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "-h" || arg == "--help") {
            std::fputs(kUsage, stdout);
            return kExitOk;
        } else if (arg == "--to" && command == "convert") {
            if (++i == args.size()) throw UsageError("--to needs xml or fi");
            options.to = args[i];
            if (options.to != "xml" && options.to != "fi") throw UsageError("--to needs xml or fi, not " + options.to);
        } else if (arg == "--max-add-length" && command == "convert") {
            if (++i == args.size()) throw UsageError("--max-add-length needs a number");
            char* end = nullptr;
            const unsigned long value = std::strtoul(args[i].c_str(), &end, 10);
            if (*end || value == 0 || value > (1u << 20)) throw UsageError("--max-add-length needs 1 to 1048576");
            options.maxAddLength = static_cast<uint32_t>(value);
        } else if (arg == "--gzip" && command == "convert") {
            options.compression = Compression::Gzip;
        } else if (arg == "--zlib" && command == "convert") {
            options.compression = Compression::Zlib;
        } else if (arg == "--pretty" && command == "convert") {
            options.pretty = true;
        } else if (arg == "--suggested" && command == "convert") {
            options.suggested = true;
        } else if (arg.size() > 1 && arg[0] == '-') {
            throw UsageError("unknown option " + arg);
        } else {
            operands.push_back(arg);
        }
    }
    if (command == "convert") {
        if (operands.size() != 2) throw UsageError("convert needs IN and OUT");
        options.in = operands[0];
        options.out = operands[1];
        Convert(options);
        return kExitOk;
    }
    if (command == "info") {
        if (operands.size() != 1) throw UsageError("info needs one FILE");
        Info(operands[0]);
        return kExitOk;
    }
    throw UsageError("unknown command " + command);
}

}  // namespace

int main(int argc, char** argv) {
    // Text stays UTF-8 from input to output, whatever the locale.
    ASCIIOnly(true);
    try {
        return Run(argc, argv);
    } catch (const UsageError& error) {
        std::fprintf(stderr, "kvxml: %s\nTry 'kvxml --help'.\n", error.what());
        return kExitUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kvxml: %s\n", error.what());
        return kExitFailed;
    }
}
