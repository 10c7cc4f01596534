// ExpatStreamer.cpp - XML text to events straight from expat, without a tree.
#include <expat.h>
#include <sched.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>

#include "EventPipe.h"
#include "TreeStreamer.h"

namespace kvxml_cli {

namespace {

constexpr std::size_t kPiece = 1 << 20;

struct ParserFree {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

// Exceptions must not cross expat's frames (the parser could not be freed
// after one): the first is kept, expat is stopped, and the events it still
// delivers are dropped.
class ExpatRecorder {
public:
    ExpatRecorder(XML_Parser parser, EventPipe& pipe) : m_parser(parser), m_pipe(pipe) {}

    static void XMLCALL OnStart(void* self, const XML_Char* name, const XML_Char** attributes) {
        auto* recorder = static_cast<ExpatRecorder*>(self);
        recorder->Guarded([=] {
            recorder->m_rootStarted = true;
            recorder->m_pipe.StartTag(name, attributes);
        });
    }
    static void XMLCALL OnEnd(void* self, const XML_Char* /*name*/) {
        auto* recorder = static_cast<ExpatRecorder*>(self);
        recorder->Guarded([=] { recorder->m_pipe.EndTag(); });
    }
    static void XMLCALL OnNamespace(void* self, const XML_Char* prefix, const XML_Char* uri) {
        auto* recorder = static_cast<ExpatRecorder*>(self);
        // Default declarations and undeclarations are left to the writer.
        if (recorder->m_rootStarted || !prefix || !uri || !*uri) return;
        recorder->Guarded([=] { recorder->m_pipe.Namespace(prefix, uri); });
    }
    static void XMLCALL OnText(void* self, const XML_Char* text, int length) {
        auto* recorder = static_cast<ExpatRecorder*>(self);
        recorder->Guarded([=] { recorder->m_pipe.Text(text, static_cast<std::size_t>(length)); });
    }

    /// After expat stopped: what stopped it, unless expat itself did.
    void RethrowFailure() const {
        if (m_failure) std::rethrow_exception(m_failure);
    }

private:
    template <typename Handle>
    void Guarded(Handle&& handle) {
        if (m_failure) return;
        try {
            handle();
        } catch (...) {
            m_failure = std::current_exception();
            XML_StopParser(m_parser, XML_FALSE);
        }
    }

    XML_Parser m_parser;
    EventPipe& m_pipe;
    bool m_rootStarted = false;
    std::exception_ptr m_failure;
};

void Feed(XML_Parser parser, const ExpatRecorder& recorder, const Input& input, const char* data, std::size_t size,
          bool last) {
    if (XML_Parse(parser, data, static_cast<int>(size), last) == XML_STATUS_OK) return;
    recorder.RethrowFailure();
    throw std::runtime_error(input.Name() + ": " + XML_ErrorString(XML_GetErrorCode(parser)) + " at line " +
                             std::to_string(XML_GetCurrentLineNumber(parser)));
}

void Parse(Input& input, EventPipe& pipe) {
    const std::unique_ptr<XML_ParserStruct, ParserFree> parser(XML_ParserCreateNS(nullptr, kNameSeparator));
    if (!parser) throw std::runtime_error(input.Name() + ": out of memory");
    ExpatRecorder recorder(parser.get(), pipe);
    XML_SetUserData(parser.get(), &recorder);
    XML_SetElementHandler(parser.get(), &ExpatRecorder::OnStart, &ExpatRecorder::OnEnd);
    XML_SetCharacterDataHandler(parser.get(), &ExpatRecorder::OnText);
    XML_SetStartNamespaceDeclHandler(parser.get(), &ExpatRecorder::OnNamespace);
    const unsigned char* data = nullptr;
    std::size_t size = 0;
    while (input.Next(data, size)) {
        for (std::size_t done = 0; done < size;) {
            const std::size_t piece = std::min(size - done, kPiece);
            Feed(parser.get(), recorder, input, reinterpret_cast<const char*>(data) + done, piece, false);
            done += piece;
        }
    }
    Feed(parser.get(), recorder, input, nullptr, 0, true);
}

bool MayUseTwoCpus() {
    cpu_set_t set;
    if (sched_getaffinity(0, sizeof set, &set) != 0) return std::thread::hardware_concurrency() > 1;
    return CPU_COUNT(&set) > 1;
}

// Hands the events on as the visitor's own strings.
class CopyingEvents : public XmlEvents {
public:
    explicit CopyingEvents(TreeVisitor& visitor) : m_visitor(visitor) {}
    void Namespace(std::string_view prefix, std::string_view uri) override {
        m_visitor.Namespace(std::string(prefix), std::string(uri));
    }
    void Start(std::string_view localName, std::string_view namespaceUri) override {
        m_visitor.Start(m_local.assign(localName), m_uri.assign(namespaceUri));
    }
    void Attribute(std::string_view localName, std::string_view namespaceUri, std::string_view value) override {
        m_visitor.Attribute(m_local.assign(localName), m_uri.assign(namespaceUri), m_value.assign(value));
    }
    void Text(std::string_view text) override { m_visitor.Text(m_value.assign(text)); }
    void End() override {
        m_visitor.End();
        m_visitor.Completed();
    }

private:
    TreeVisitor& m_visitor;
    std::string m_uri;
    std::string m_local;
    std::string m_value;
};

}  // namespace

namespace {

// Expat on a thread of its own; the events reach `events` here. False
// when no thread could be started: nothing has been read then.
bool StreamAside(Input& input, XmlEvents& events) {
    EventPipe pipe(events, true);
    std::thread parser;
    try {
        parser = std::thread([&input, &pipe] {
            std::exception_ptr failure;
            try {
                Parse(input, pipe);
            } catch (...) {
                failure = std::current_exception();
            }
            pipe.Close(failure);
        });
    } catch (const std::system_error&) {
        return false;
    }
    try {
        pipe.Replay();
    } catch (...) {
        pipe.Cancel();
        parser.join();
        throw;
    }
    parser.join();
    return true;
}

}  // namespace

void StreamXmlText(Input& input, XmlEvents& events) {
    if (MayUseTwoCpus() && StreamAside(input, events)) return;
    EventPipe pipe(events, false);
    Parse(input, pipe);
    pipe.Close(nullptr);
}

void StreamXmlText(Input& input, TreeVisitor& visitor) {
    CopyingEvents events(visitor);
    StreamXmlText(input, events);
}

}  // namespace kvxml_cli
