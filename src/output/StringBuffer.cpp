// StringBuffer.cpp - block list behind CStringBuffer.
#include "kvxml/output/StringBuffer.h"

namespace KvXmlLib10 {

namespace {
constexpr size_t kDefaultBlockCapacity = 4095;
}  // namespace

CStringBuffer::CStringBuffer() : CStringBuffer(kDefaultBlockCapacity + 1) {}

CStringBuffer::CStringBuffer(size_t blockSize)
    : CInstanceMonitor("CStringBuffer"),
      m_blockCapacity(blockSize > 1 ? blockSize - 1 : 1),
      m_fillPos(0),
      m_currentCapacity(0),
      m_current(nullptr),
      m_totalLength(0) {}

CStringBuffer::~CStringBuffer() = default;

void CStringBuffer::Truncate(size_t length) {
    if (length >= m_totalLength) return;
    while (m_totalLength - m_fillPos > length) {  // the cut lies in an earlier block
        m_totalLength -= m_fillPos;
        m_blocks.pop_back();
        m_current = m_blocks.back().get();
        m_fillPos = m_blockLengths.back();
        m_blockLengths.pop_back();
        m_currentCapacity = m_fillPos;  // all a joined block is known to hold
    }
    m_fillPos -= m_totalLength - length;
    m_totalLength = length;
}

void CStringBuffer::AddNewBlock() {
    // One spare byte for the terminator GetText writes after the fill position.
    // Not zero-filled: nothing reads past the fill position.
    std::unique_ptr<char[]> block(new char[m_blockCapacity + 1]);
    if (m_current) m_blockLengths.push_back(m_fillPos);
    m_blocks.push_back(std::move(block));
    m_current = m_blocks.back().get();
    m_currentCapacity = m_blockCapacity;
    m_fillPos = 0;
}

void CStringBuffer::AppendAcrossBlocks(const char* text, size_t length) {
    m_totalLength += length;
    while (length > 0) {
        if (m_fillPos == m_currentCapacity) AddNewBlock();
        size_t room = m_currentCapacity - m_fillPos;
        size_t part = length < room ? length : room;
        std::memcpy(m_current + m_fillPos, text, part);
        m_fillPos += part;
        text += part;
        length -= part;
    }
}

const char* CStringBuffer::GetText() const {
    if (!m_current) return "";
    if (m_blocks.size() > 1) {
        std::unique_ptr<char[]> joined(new char[m_totalLength + 1]);
        size_t at = 0;
        for (size_t i = 0; i + 1 < m_blocks.size(); ++i) {
            std::memcpy(joined.get() + at, m_blocks[i].get(), m_blockLengths[i]);
            at += m_blockLengths[i];
        }
        std::memcpy(joined.get() + at, m_current, m_fillPos);
        m_blocks.clear();
        m_blockLengths.clear();
        m_blocks.push_back(std::move(joined));
        m_current = m_blocks.back().get();
        // The joined block is full: the next append starts a new block.
        m_currentCapacity = m_totalLength;
        m_fillPos = m_totalLength;
    }
    // A reused block may hold old characters past the fill position.
    m_current[m_fillPos] = '\0';
    return m_current;
}

void CStringBuffer::AppendTo(std::string& out) const {
    out.reserve(out.size() + m_totalLength);
    for (size_t i = 0; i + 1 < m_blocks.size(); ++i) out.append(m_blocks[i].get(), m_blockLengths[i]);
    if (m_current) out.append(m_current, m_fillPos);
}

std::vector<std::string_view> CStringBuffer::GetPieces() const {
    std::vector<std::string_view> pieces;
    pieces.reserve(m_blocks.size());
    for (size_t i = 0; i + 1 < m_blocks.size(); ++i) pieces.emplace_back(m_blocks[i].get(), m_blockLengths[i]);
    if (m_current) pieces.emplace_back(m_current, m_fillPos);
    return pieces;
}

void CStringBuffer::Clear() {
    m_blocks.clear();
    m_blockLengths.clear();
    m_current = nullptr;
    m_currentCapacity = 0;
    m_fillPos = 0;
    m_totalLength = 0;
}

void CStringBuffer::Empty() {
    if (!m_current || m_currentCapacity != m_blockCapacity) {
        Clear();
        return;
    }
    // Keep the current block (every block has room for its terminator).
    if (m_blocks.size() > 1) {
        std::unique_ptr<char[]> keep = std::move(m_blocks.back());
        m_blocks.clear();
        m_blocks.push_back(std::move(keep));
    }
    m_blockLengths.clear();
    m_current = m_blocks.back().get();
    m_fillPos = 0;
    m_totalLength = 0;
}

void CStringBuffer::SetText(const char* text) {
    Empty();
    Append(text);
}

void CStringBuffer::SetText(const std::string& text) {
    Empty();
    Append(text);
}

}  // namespace KvXmlLib10
