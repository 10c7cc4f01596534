// EventPipe.cpp - records in blocks: a kind octet, then lengths and bytes.
//
// A start tag is one record: its namespace table (0 for the one held),
// the attribute count, then each name as a table place and a local name,
// an attribute's with its value. So the views its events hand out stay in
// one block until EndStartTag. A text record grows while expat delivers
// pieces.
#include "EventPipe.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace kvxml_cli {

namespace {

enum Kind : char { kNamespace, kStart, kText, kEnd };

constexpr std::size_t kBlockSize = 256 * 1024;
// Blocks recorded but not yet replayed: the parsing side waits beyond this.
constexpr std::size_t kBlocksAhead = 8;
constexpr std::size_t kNoText = SIZE_MAX;
constexpr std::size_t kLength = sizeof(std::size_t);

// Thrown on the parsing side once the writing side has given up; it never
// reaches a caller, as the writer's own failure is the one reported.
struct WriterGaveUp {};

// Text lengths are fixed-size, as a text record grows in place.
char* PutLength(char* at, std::size_t length) {
    std::memcpy(at, &length, kLength);
    return at + kLength;
}

std::size_t TakeLength(const char*& at) {
    std::size_t length;
    std::memcpy(&length, at, kLength);
    at += kLength;
    return length;
}

// Everything else: seven bits an octet, most names and values in one.
std::size_t VarintSize(std::size_t value) {
    std::size_t size = 1;
    for (; value >= 0x80; value >>= 7) ++size;
    return size;
}

char* PutVarint(char* at, std::size_t value) {
    for (; value >= 0x80; value >>= 7) *at++ = static_cast<char>(value | 0x80);
    *at++ = static_cast<char>(value);
    return at;
}

std::size_t TakeVarint(const char*& at) {
    std::size_t value = 0;
    for (unsigned shift = 0;; shift += 7) {
        const auto octet = static_cast<unsigned char>(*at++);
        value |= std::size_t{octet & 0x7Fu} << shift;
        if (octet < 0x80) return value;
    }
}

std::size_t BytesSize(std::size_t length) { return VarintSize(length) + length; }

char* PutBytes(char* at, const char* data, std::size_t length) {
    at = PutVarint(at, length);
    std::memcpy(at, data, length);
    return at + length;
}

std::string_view TakeBytes(const char*& at) {
    const std::size_t length = TakeVarint(at);
    const std::string_view bytes(at, length);
    at += length;
    return bytes;
}

// Namespaces a tag's table is searched for; more are listed again.
constexpr std::size_t kSearchedUris = 8;

}  // namespace

class EventPipe::Block {
public:
    explicit Block(std::size_t capacity) : m_data(new char[capacity]), m_capacity(capacity) {}
    char* Data() { return m_data.get(); }
    const char* Data() const { return m_data.get(); }
    std::size_t Size() const { return m_size; }
    std::size_t Capacity() const { return m_capacity; }
    std::size_t Room() const { return m_capacity - m_size; }
    char* Grow(std::size_t size) {
        char* at = m_data.get() + m_size;
        m_size += size;
        return at;
    }
    void Resize(std::size_t size) { m_size = size; }

private:
    std::unique_ptr<char[]> m_data;
    std::size_t m_capacity;
    std::size_t m_size = 0;
};

EventPipe::EventPipe(XmlEvents& target, bool threaded)
    : m_target(target), m_threaded(threaded), m_block(new Block(kBlockSize)), m_openText(kNoText) {}

EventPipe::~EventPipe() = default;

char* EventPipe::Reserve(std::size_t size) {
    m_openText = kNoText;
    if (m_block->Room() < size) NextBlock(size);
    return m_block->Grow(size);
}

void EventPipe::Namespace(std::string_view prefix, std::string_view uri) {
    char* at = Reserve(1 + BytesSize(prefix.size()) + BytesSize(uri.size()));
    *at++ = kNamespace;
    PutBytes(PutBytes(at, prefix.data(), prefix.size()), uri.data(), uri.size());
}

std::size_t EventPipe::HeldUri(std::string_view uri, bool sameScope) const {
    const std::size_t searched = std::min(m_sentUris.size(), kSearchedUris);
    if (sameScope) {
        for (std::size_t index = 0; index < searched; ++index)
            if (m_sentAddresses[index] == uri.data()) return index + 1;
    }
    for (std::size_t index = 0; index < searched; ++index)
        if (m_sentUris[index] == uri) return index + 1;
    return 0;
}

void EventPipe::SendNewUris(const TagName* names, std::size_t count) {
    m_tagUris.clear();
    for (std::size_t i = 0; i < count; ++i) {
        if (names[i].uri.empty()) continue;
        std::size_t index = 0;
        const std::size_t searched = std::min(m_tagUris.size(), kSearchedUris);
        while (index < searched && m_tagUris[index] != names[i].uri) ++index;
        if (index == searched) {
            index = m_tagUris.size();
            m_tagUris.push_back(names[i].uri);
        }
        m_uriIndexes[i] = index + 1;
    }
}

void EventPipe::StartTag(const TagName* names, std::size_t count, uint64_t scope) {
    const bool sameScope = scope == m_sentScope;
    if (count == 1) {
        // Most tags: no attributes, a namespace the writing side holds.
        const TagName& element = names[0];
        const std::size_t index = element.uri.empty() ? 0 : HeldUri(element.uri, sameScope);
        if (index != 0 || element.uri.empty()) {
            char* at = Reserve(3 + VarintSize(index) + BytesSize(element.local.size()));
            *at++ = kStart;
            *at++ = 0;  // the namespaces held
            *at++ = 0;  // no attributes
            PutBytes(PutVarint(at, index), element.local.data(), element.local.size());
            return;
        }
    }
    m_uriIndexes.clear();
    bool held = true;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t index = names[i].uri.empty() ? 0 : HeldUri(names[i].uri, sameScope);
        held = held && (index != 0 || names[i].uri.empty());
        m_uriIndexes.push_back(index);
    }
    if (!held) SendNewUris(names, count);

    // Sizes first: the whole tag goes into one block.
    std::size_t size = 1 + VarintSize(held ? 0 : m_tagUris.size() + 1) + VarintSize(count - 1);
    if (!held)
        for (const std::string_view uri : m_tagUris) size += BytesSize(uri.size());
    for (std::size_t i = 0; i < count; ++i) {
        size += VarintSize(m_uriIndexes[i]) + BytesSize(names[i].local.size());
        if (i != 0) size += BytesSize(names[i].value.size());
    }

    char* at = Reserve(size);
    *at++ = kStart;
    // 0: the namespaces the writing side holds; else their count + 1 and each.
    at = PutVarint(at, held ? 0 : m_tagUris.size() + 1);
    if (!held) {
        m_sentUris.clear();
        m_sentAddresses.clear();
        for (const std::string_view uri : m_tagUris) {
            at = PutBytes(at, uri.data(), uri.size());
            m_sentUris.emplace_back(uri);
            m_sentAddresses.push_back(uri.data());
        }
        m_sentScope = scope;
    }
    at = PutVarint(at, count - 1);
    for (std::size_t i = 0; i < count; ++i) {
        at = PutVarint(at, m_uriIndexes[i]);
        at = PutBytes(at, names[i].local.data(), names[i].local.size());
        if (i != 0) at = PutBytes(at, names[i].value.data(), names[i].value.size());
    }
}

void EventPipe::Text(const char* data, std::size_t length) {
    if (m_openText == kNoText) {
        char* at = Reserve(1 + kLength + length);
        *at = kText;
        std::memcpy(PutLength(at + 1, length), data, length);
        m_openText = static_cast<std::size_t>(at - m_block->Data());
        return;
    }
    if (m_block->Room() < length) NextBlock(length);
    std::memcpy(m_block->Grow(length), data, length);
    char* size = m_block->Data() + m_openText + 1;
    std::size_t grown;
    std::memcpy(&grown, size, kLength);
    PutLength(size, grown + length);
}

void EventPipe::EndTag() { *Reserve(1) = kEnd; }

void EventPipe::NextBlock(std::size_t needed) {
    // A text record still growing moves along to the new block, which
    // doubles it: a huge text is copied a logarithmic number of times.
    const std::size_t carried = m_openText == kNoText ? 0 : m_block->Size() - m_openText;
    std::unique_ptr<Block> next = TakeFree(std::max(kBlockSize, 2 * carried + needed));
    if (carried != 0) {
        std::memcpy(next->Grow(carried), m_block->Data() + m_openText, carried);
        m_block->Resize(m_openText);
        m_openText = 0;
    }
    std::unique_ptr<Block> full = std::exchange(m_block, std::move(next));
    if (full->Size() != 0) Publish(std::move(full));
}

std::unique_ptr<EventPipe::Block> EventPipe::TakeFree(std::size_t capacity) {
    std::unique_ptr<Block> block;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_cancelled || m_full.size() < kBlocksAhead; });
        if (m_cancelled) throw WriterGaveUp();
        if (!m_free.empty()) {
            block = std::move(m_free.back());
            m_free.pop_back();
        }
    }
    if (!block || block->Capacity() < capacity) return std::make_unique<Block>(capacity);
    block->Resize(0);
    return block;
}

void EventPipe::Publish(std::unique_ptr<Block> block) {
    if (!m_threaded) {
        ReplayBlock(*block);
        if (block->Capacity() == kBlockSize) m_free.push_back(std::move(block));
        return;
    }
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_full.push_back(std::move(block));
    }
    m_changed.notify_all();
}

void EventPipe::Close(std::exception_ptr failure) {
    if (!m_threaded) {
        if (failure) std::rethrow_exception(failure);
        if (m_block->Size() != 0) ReplayBlock(*m_block);
        return;
    }
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (!failure && m_block->Size() != 0) m_full.push_back(std::move(m_block));
        m_closed = true;
        m_failure = failure;
    }
    m_changed.notify_all();
}

void EventPipe::Cancel() {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_cancelled = true;
    }
    m_changed.notify_all();
}

void EventPipe::Replay() {
    for (;;) {
        std::unique_ptr<Block> block;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_changed.wait(lock, [this] { return m_closed || !m_full.empty(); });
            if (m_full.empty()) {
                if (m_failure) std::rethrow_exception(m_failure);
                return;
            }
            block = std::move(m_full.front());
            m_full.pop_front();
        }
        m_changed.notify_all();
        ReplayBlock(*block);
        // Blocks grown for one huge text are not kept.
        if (block->Capacity() == kBlockSize) {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_free.push_back(std::move(block));
        }
    }
}

void EventPipe::ReplayBlock(const Block& block) {
    std::string_view local;
    std::string_view uri;
    const auto takeName = [this, &local, &uri](const char*& at) {
        const std::size_t index = TakeVarint(at);
        uri = index == 0 ? std::string_view() : std::string_view(m_heldUris[index - 1]);
        local = TakeBytes(at);
    };
    for (const char* at = block.Data(); at != block.Data() + block.Size();) {
        switch (*at++) {
            case kNamespace: {
                const std::string_view prefix = TakeBytes(at);
                m_target.Namespace(prefix, TakeBytes(at));
                break;
            }
            case kStart: {
                // The tag's views of the held namespaces last past
                // EndStartTag: only the next tag changes them.
                if (const std::size_t uris = TakeVarint(at); uris != 0) {
                    m_heldUris.resize(uris - 1);
                    for (std::string& held : m_heldUris) held.assign(TakeBytes(at));
                }
                std::size_t attributes = TakeVarint(at);
                takeName(at);
                m_target.Start(local, uri);
                for (; attributes != 0; --attributes) {
                    takeName(at);
                    m_target.Attribute(local, uri, TakeBytes(at));
                }
                m_target.EndStartTag();
                break;
            }
            case kText: {
                const std::size_t length = TakeLength(at);
                m_target.Text(std::string_view(at, length));
                at += length;
                break;
            }
            default:
                m_target.End();
                break;
        }
    }
}

}  // namespace kvxml_cli
