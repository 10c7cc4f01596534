// StringBuffer.h - growable text kept in fixed-size blocks.
//
// Appending never moves text already written: a full block stays where it
// is and the next one is started. The blocks are joined into one array only
// when the whole text is asked for.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"

namespace KvXmlLib10 {

class KVXML_API CStringBuffer : public CInstanceMonitor {
public:
    /// Blocks of 4095 characters.
    CStringBuffer();
    /// Blocks of blockSize - 1 characters (at least one).
    explicit CStringBuffer(size_t blockSize);
    ~CStringBuffer() override;
    CStringBuffer(const CStringBuffer&) = delete;
    CStringBuffer& operator=(const CStringBuffer&) = delete;

    void Append(char c) {
        if (m_fillPos == m_currentCapacity) AddNewBlock();
        m_current[m_fillPos++] = c;
        ++m_totalLength;
    }
    /// Appends up to the first NUL; a null pointer appends nothing.
    void Append(const char* text) {
        if (text) Append(text, std::strlen(text));
    }
    /// Appends all characters of the string, NULs included.
    void Append(const std::string& text) { Append(text.data(), text.size()); }
    void Append(const char* text, size_t length) {
        if (length <= m_currentCapacity - m_fillPos) {
            if (length == 0) return;
            CopyBytes(m_current + m_fillPos, text, length);
            m_fillPos += length;
            m_totalLength += length;
        } else {
            AppendAcrossBlocks(text, length);
        }
    }

    /// The whole text, NUL-terminated (it may hold NULs: see GetLength).
    /// Joins the blocks once; the pointer stays valid until the next change.
    const char* GetText() const;
    size_t GetLength() const { return m_totalLength; }
    /// Appends the whole text to `out` straight from the blocks (one copy,
    /// no join).
    void AppendTo(std::string& out) const;
    /// The whole text as its blocks, in order (no join); valid until the
    /// next change.
    std::vector<std::string_view> GetPieces() const;

    /// Drops the text after the first `length` characters (nothing if the
    /// text is not longer).
    void Truncate(size_t length);
    /// Frees every block.
    void Clear();
    /// Empties the text, keeping one standard block for reuse.
    void Empty();
    void SetText(const char* text);
    void SetText(const std::string& text);

private:
    /// memcpy, with the short copies most appends make (names, prefixes,
    /// indentation) done inline in at most two overlapping moves.
    static void CopyBytes(char* to, const char* from, size_t length) {
        if (length > 16) {
            std::memcpy(to, from, length);
        } else if (length >= 8) {
            std::memcpy(to, from, 8);
            std::memcpy(to + length - 8, from + length - 8, 8);
        } else if (length >= 4) {
            std::memcpy(to, from, 4);
            std::memcpy(to + length - 4, from + length - 4, 4);
        } else {
            to[0] = from[0];
            to[length / 2] = from[length / 2];
            to[length - 1] = from[length - 1];
        }
    }

    void AddNewBlock();
    void AppendAcrossBlocks(const char* text, size_t length);

    // Mutable because GetText joins the blocks, which changes no content.
    mutable std::vector<std::unique_ptr<char[]>> m_blocks;
    mutable std::vector<size_t> m_blockLengths;  // lengths of all blocks before the current one
    size_t m_blockCapacity;                      // characters per new block
    mutable size_t m_fillPos;                    // characters used in the current block
    mutable size_t m_currentCapacity;            // characters the current block holds
    mutable char* m_current;                     // the last block, or null
    size_t m_totalLength;
};

}  // namespace KvXmlLib10
