// ExpatStreamer.cpp - XML text to events straight from expat, without a tree.
#include <expat.h>
#include <sched.h>

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "EventPipe.h"
#include "dom/detail/ExpatParser.h"
#include "NamespaceScope.h"
#include "TreeStreamer.h"

namespace kvxml_cli {

namespace {

constexpr std::size_t kPiece = 1 << 20;

std::runtime_error ParseFailure(const Input& input, XML_Error code, XML_Size line) {
    return std::runtime_error(input.Name() + ": " + XML_ErrorString(code) + " at line " + std::to_string(line));
}

// Expat runs without namespace processing, which would build a
// "uri<separator>local" copy of every name; the scope resolves prefixes
// against the few bindings a document makes, with expat's checks and
// messages. Exceptions must not cross expat's frames (the parser could not
// be freed after one): the first is kept, expat is stopped, and the events
// it still delivers are dropped.
class ExpatRecorder {
public:
    ExpatRecorder(XML_Parser parser, const Input& input, EventPipe& pipe)
        : m_parser(parser), m_input(input), m_pipe(pipe) {}

    static void XMLCALL OnStart(void* self, const XML_Char* name, const XML_Char** attributes) {
        auto* recorder = static_cast<ExpatRecorder*>(self);
        recorder->Guarded([=] { recorder->Start(name, attributes); });
    }
    static void XMLCALL OnEnd(void* self, const XML_Char* /*name*/) {
        auto* recorder = static_cast<ExpatRecorder*>(self);
        recorder->Guarded([=] {
            recorder->m_pipe.EndTag();
            recorder->m_scope.CloseElement();
        });
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

    [[noreturn]] void Refuse(XML_Error code) const {
        throw ParseFailure(m_input, code, XML_GetCurrentLineNumber(m_parser));
    }

    void Declare(std::string_view prefix, std::string_view uri) {
        if (const XML_Error error = m_scope.Declare(prefix, uri); error != XML_ERROR_NONE) Refuse(error);
        // The root's prefixes are kept; default declarations are left to the writer.
        if (!m_rootStarted && !prefix.empty()) m_pipe.Namespace(prefix, uri);
    }

    std::string_view Resolve(std::string_view prefix) {
        const std::string* uri = m_scope.Find(prefix);
        if (!uri) Refuse(XML_ERROR_UNBOUND_PREFIX);
        return *uri;
    }

    void Start(const char* name, const char** attributes) {
        // Declarations first: they bind the element's own name too. Until
        // resolved, a name's uri holds its prefix.
        m_scope.OpenElement();
        m_names.resize(1);
        for (; *attributes; attributes += 2) {
            EventPipe::TagName attribute{{}, {}, attributes[1]};
            if (!SplitQName(attributes[0], attribute.uri, attribute.local)) Refuse(XML_ERROR_INVALID_TOKEN);
            if (attribute.uri == "xmlns") {
                Declare(attribute.local, attribute.value);
            } else if (attribute.uri.empty() && attribute.local == "xmlns") {
                Declare(std::string_view(), attribute.value);
            } else {
                m_names.push_back(attribute);
            }
        }
        if (!SplitQName(name, m_names[0].uri, m_names[0].local)) Refuse(XML_ERROR_INVALID_TOKEN);
        m_names[0].uri = Resolve(m_names[0].uri);
        std::size_t prefixed = 0;
        for (auto attribute = m_names.begin() + 1; attribute != m_names.end(); ++attribute) {
            if (attribute->uri.empty()) continue;
            attribute->uri = Resolve(attribute->uri);
            ++prefixed;
        }
        if (prefixed > 1) RefuseSameExpandedNames();
        m_rootStarted = true;
        m_pipe.StartTag(m_names.data(), m_names.size(), m_scope.Generation());
    }

    // Expat saw distinct names; two prefixes of one namespace still make
    // the same attribute.
    void RefuseSameExpandedNames() {
        m_expanded.clear();
        for (auto attribute = m_names.begin() + 1; attribute != m_names.end(); ++attribute)
            if (!attribute->uri.empty()) m_expanded.emplace_back(attribute->uri, attribute->local);
        std::sort(m_expanded.begin(), m_expanded.end());
        if (std::adjacent_find(m_expanded.begin(), m_expanded.end()) != m_expanded.end())
            Refuse(XML_ERROR_DUPLICATE_ATTRIBUTE);
    }

    XML_Parser m_parser;
    const Input& m_input;
    EventPipe& m_pipe;
    NamespaceScope m_scope;
    std::vector<EventPipe::TagName> m_names;
    std::vector<std::pair<std::string_view, std::string_view>> m_expanded;
    bool m_rootStarted = false;
    std::exception_ptr m_failure;
};

void Feed(XML_Parser parser, const ExpatRecorder& recorder, const Input& input, const char* data, std::size_t size,
          bool last) {
    if (XML_Parse(parser, data, static_cast<int>(size), last) == XML_STATUS_OK) return;
    recorder.RethrowFailure();
    throw ParseFailure(input, XML_GetErrorCode(parser), XML_GetCurrentLineNumber(parser));
}

void Parse(Input& input, EventPipe& pipe) {
    const KvXmlLib10::detail::ExpatParser parser(XML_ParserCreate(nullptr));
    if (!parser) throw std::runtime_error(input.Name() + ": out of memory");
    ExpatRecorder recorder(parser.get(), input, pipe);
    XML_SetUserData(parser.get(), &recorder);
    XML_SetElementHandler(parser.get(), &ExpatRecorder::OnStart, &ExpatRecorder::OnEnd);
    XML_SetCharacterDataHandler(parser.get(), &ExpatRecorder::OnText);
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
