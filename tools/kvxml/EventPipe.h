// EventPipe.h - expat's events as records in blocks, replayed as XmlEvents on the writing thread.
//
// Converting XML text costs about as much in expat as in the writer; with
// a second core the two overlap. The parsing side copies each event into
// a block, a bounded number of blocks in flight, so a document of any size
// passes in bounded memory; the writing side calls the events with views
// into the block. With one CPU each block is replayed on the parsing
// thread as it fills.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "TreeStreamer.h"

namespace kvxml_cli {

class EventPipe {
public:
    /// `threaded`: Replay() runs on another thread than the recording.
    EventPipe(XmlEvents& target, bool threaded);
    ~EventPipe();
    EventPipe(const EventPipe&) = delete;
    EventPipe& operator=(const EventPipe&) = delete;

    /// A name as the parsing side resolved it; an attribute's with its value.
    struct TagName {
        std::string_view uri;  // "" for none
        std::string_view local;
        std::string_view value;
    };

    // The parsing side. Once the writing side has given up, the next block
    // it waits for throws instead.
    void Namespace(std::string_view prefix, std::string_view uri);
    /// The element's name, then its attributes'. While `scope` stays the
    /// same, a namespace string keeps its address and text, so a known one
    /// is recognised by its address.
    void StartTag(const TagName* names, std::size_t count, uint64_t scope);
    /// A piece of text; pieces in a row make one Text event.
    void Text(const char* data, std::size_t length);
    void EndTag();
    /// The parsing side's last call: hands on what is left, and why it
    /// stopped (null when the document ended).
    void Close(std::exception_ptr failure);

    /// The writing side when threaded: every event recorded, in order,
    /// until Close; then rethrows the parser's failure.
    void Replay();
    /// The writing side, after a failure of its own.
    void Cancel();

private:
    class Block;
    char* Reserve(std::size_t size);
    void NextBlock(std::size_t needed);
    std::unique_ptr<Block> TakeFree(std::size_t capacity);
    void Publish(std::unique_ptr<Block> block);
    void ReplayBlock(const Block& block);
    /// 1-based place of `uri` in the table sent last; 0 when not there.
    std::size_t HeldUri(std::string_view uri, bool sameScope) const;
    /// Makes a table of the tag's own namespaces, to send with it.
    void SendNewUris(const TagName* names, std::size_t count);

    XmlEvents& m_target;
    const bool m_threaded;

    // Each side's state on cache lines of its own: the sides touch theirs
    // at every event, and sharing a line would make the cores trade it.
    static constexpr std::size_t kCacheLine = 64;

    // Parsing side only. A start tag names its namespaces once, in a table
    // the writing side keeps until a tag brings another: most bring none.
    alignas(kCacheLine) std::unique_ptr<Block> m_block;
    std::size_t m_openText;  // offset of the text record still growing, or kNoText
    std::vector<std::size_t> m_uriIndexes;  // each name's place in the table
    std::vector<std::string_view> m_tagUris;
    std::vector<std::string> m_sentUris;
    std::vector<const char*> m_sentAddresses;  // where each came from
    uint64_t m_sentScope = 0;

    // Shared when threaded.
    alignas(kCacheLine) std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::unique_ptr<Block>> m_full;
    std::vector<std::unique_ptr<Block>> m_free;
    bool m_closed = false;
    bool m_cancelled = false;
    std::exception_ptr m_failure;

    // Writing side only: the namespace table.
    alignas(kCacheLine) std::vector<std::string> m_heldUris;
};

}  // namespace kvxml_cli
