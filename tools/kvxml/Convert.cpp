// Convert.cpp - the two commands: streaming conversion and the document report.
#include "Convert.h"

#include <unistd.h>

#include <chrono>
#include <cstring>
#include <stdexcept>
#include <unordered_set>

#include "Input.h"
#include "Output.h"
#include "TreeStreamer.h"
#include "ValueTypes.h"
#include "fastinfoset/detail/FIEventWriter.h"
#include "kvxml/kvxml.h"

namespace kvxml_cli {

using namespace KvXmlLib10;

namespace {

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

    void Namespace(const std::string& prefix, const std::string& uri) override { m_writer.AddNamespace(prefix, uri); }
    void Start(const std::string& localName, const std::string& namespaceUri) override {
        // The root's namespace becomes the default one, which saves a prefix
        // on most names; elements without a namespace undeclare it.
        if (m_depth++ == 0 && !namespaceUri.empty()) {
            m_writer.SetDefaultNamespace(namespaceUri);
            m_writer.SetUndeclareDefaultNamespace(true);
        }
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
        --m_depth;
        m_writer.WriteEndElement();
        ++m_elements;
    }
    void Completed() override {
        Drain();
        m_progress.Tick(m_elements, m_written);
    }
    /// Hands what the writer produced so far to the output.
    virtual void Drain() = 0;
    uint64_t Written() const { return m_written; }

protected:
    uint64_t m_written = 0;

private:
    ItemType TypeOf(const std::string& text) const { return m_suggested ? InferItemType(text) : string; }

    CXmlWriter& m_writer;
    bool m_suggested;
    bool m_dropWhitespace;
    Progress& m_progress;
    uint32_t m_depth = 0;
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

// XML text to Fast Infoset: expat's events straight into the writer, which
// takes the names as expat checked them and the start tag whole.
class FastInfosetEvents : public XmlEvents {
public:
    FastInfosetEvents(detail::FIEventWriter& writer, FastInfosetOut& out, bool suggested, Progress& progress)
        : m_writer(writer), m_out(out), m_suggested(suggested), m_progress(progress) {}

    void Namespace(std::string_view prefix, std::string_view uri) override {
        m_writer.AddNamespace(std::string(prefix), std::string(uri));
    }
    void Start(std::string_view localName, std::string_view namespaceUri) override {
        // As WriterVisitor does: the root's namespace becomes the default.
        if (m_depth++ == 0 && !namespaceUri.empty()) {
            m_writer.SetDefaultNamespace(std::string(namespaceUri));
            m_writer.SetUndeclareDefaultNamespace(true);
        }
        m_writer.StartElement(localName, namespaceUri);
    }
    void Attribute(std::string_view localName, std::string_view namespaceUri, std::string_view value) override {
        m_writer.Attribute(localName, namespaceUri, value, TypeOf(value));
    }
    void EndStartTag() override { m_writer.EndStartTag(); }
    void Text(std::string_view text) override { m_writer.Characters(text, TypeOf(text)); }
    void End() override {
        --m_depth;
        m_writer.WriteEndElement();
        m_out.Drain();
        m_progress.Tick(++m_elements, m_out.Written());
    }

private:
    ItemType TypeOf(std::string_view text) const { return m_suggested ? InferItemType(text) : string; }

    detail::FIEventWriter& m_writer;
    FastInfosetOut& m_out;
    bool m_suggested;
    Progress& m_progress;
    uint32_t m_depth = 0;
    uint64_t m_elements = 0;
};

// XML text goes straight through expat; Fast Infoset through the document.
void Stream(Input& input, TreeVisitor& visitor) {
    if (input.GetFormat() == Format::Xml) {
        StreamXmlText(input, visitor);
    } else {
        StreamDocument(input, visitor);
    }
}

}  // namespace

void Convert(const ConvertOptions& options) {
    Input input(options.in);
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
            detail::FIEventWriter writer(context, stream);
            writer.Open();
            writer.WriteStartDocument(FInfoDecl_None);
            FastInfosetOut visitor(writer, stream, output, options.suggested, progress);
            if (input.GetFormat() == Format::Xml) {
                FastInfosetEvents events(writer, visitor, options.suggested, progress);
                StreamXmlText(input, events);
            } else {
                StreamDocument(input, visitor);
            }
            writer.WriteEndDocument();
            writer.Close();
            visitor.DrainAll();
        }
        output.Finish();
    } catch (const CKvException& error) {
        // A writer's refusal, named like every other failure.
        output.Discard();
        throw std::runtime_error(input.Name() + ": " + error.GetMessage());
    } catch (...) {
        output.Discard();
        throw;
    }
}

namespace {

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

}  // namespace

void Info(const std::string& path, std::FILE* out) {
    Input input(path);
    InfoVisitor info;
    Stream(input, info);
    info.namespaces.erase(std::string());
    std::fprintf(out, "file: %s\n", input.Name().c_str());
    std::fprintf(out, "format: %s\n", FormatName(input.GetFormat()));
    std::fprintf(out, "compression: %s\n", CompressionName(input.GetCompression()));
    std::fprintf(out, "size: %llu bytes\n", static_cast<unsigned long long>(input.RawSize()));
    if (input.GetCompression() != Compression::None)
        std::fprintf(out, "uncompressed size: %llu bytes\n", static_cast<unsigned long long>(input.Size()));
    std::fprintf(out, "elements: %llu\n", static_cast<unsigned long long>(info.elements));
    std::fprintf(out, "attributes: %llu\n", static_cast<unsigned long long>(info.attributes));
    std::fprintf(out, "vocabulary: namespace names %zu, local names %zu, element names %zu, attribute names %zu, "
                "attribute values %zu, character chunks %zu\n",
                info.namespaces.size(), info.localNames.size(), info.elementNames.size(), info.attributeNames.size(),
                info.attributeValues.size(), info.chunks.size());
}


}  // namespace kvxml_cli
