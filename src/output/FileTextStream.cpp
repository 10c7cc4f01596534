// FileTextStream.cpp - flushing buffered text to a file in its final encoding.
//
// Each flush encodes only what is buffered. In a multibyte code page a
// character may be cut in two by the writer's flush points, so a flush
// stops before an incomplete trailing character and keeps those bytes for
// the next one: the file then matches the encoding of the whole text.
#include "kvxml/output/FileTextStream.h"

#include <cstdlib>
#include <cwchar>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "output/detail/FileOutput.h"

namespace KvXmlLib10 {

namespace {

bool IsPlainAscii(unsigned char byte) {
    // ESC, SO and SI may shift a stateful code page.
    return byte < 0x80 && byte != 0x1B && byte != 0x0E && byte != 0x0F;
}

// Length of the longest prefix that ends between whole characters, with
// the conversion state back to initial, walking the text the way the
// encoder decodes it (an invalid byte counts as one character).
size_t CompletePrefix(const char* text, size_t length) {
    if (MB_CUR_MAX == 1) return length;  // every byte is a character
    std::mbstate_t state{};
    bool initial = true;
    size_t lastInitial = 0;
    size_t i = 0;
    while (i < length) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (initial && IsPlainAscii(byte)) {
            lastInitial = ++i;
            continue;
        }
        wchar_t wc = 0;
        const size_t got = std::mbrtowc(&wc, text + i, length - i, &state);
        if (got == static_cast<size_t>(-2)) return lastInitial;  // cut short: wait for the rest
        if (got == 0 || got > length - i) {
            ++i;
            state = std::mbstate_t{};
        } else {
            i += got;
        }
        initial = std::mbsinit(&state) != 0;
        if (initial) lastInitial = i;
    }
    return lastInitial;
}

}  // namespace

CFileTextStream::CFileTextStream(const char* fileName, XmlEncoding encoding)
    : CTextStream("CFileTextStream", encoding), m_fileName(fileName ? fileName : "") {}

CFileTextStream::~CFileTextStream() = default;

void CFileTextStream::Open() {
    CTextStream::Open();
    m_file = std::make_unique<detail::ReplacingFile>(m_fileName.c_str());
    if (m_file->Open() && detail::WriteByteOrderMark(m_file->Get(), m_encoding)) return;
    m_file.reset();
    throw CKvException(FormatString("Failed to write data to the file [%s]", m_fileName.c_str()));
}

void CFileTextStream::Flush() { WriteBuffered(false); }

void CFileTextStream::WriteBuffered(bool all) {
    const size_t length = m_buffer.GetLength();
    if (length == 0) return;
    if (!m_file) throw CKvException("Failed to write data to the file");

    const char* text = m_buffer.GetText();
    const size_t complete = all ? length : CompletePrefix(text, length);
    if (complete == 0) return;
    std::string carry;
    if (complete == length) {
        m_pending = GetEncodedStream();
    } else {
        m_pending = CTextStream(std::string(text, complete), m_encoding).GetEncodedStream();
        carry.assign(text + complete, length - complete);
    }

    const bool written = detail::WriteBytes(m_file->Get(), m_pending.GetData(), m_pending.GetLength());
    m_pending.Clear();
    if (!written) {
        m_file.reset();
        throw CKvException("Failed to write data to the file");
    }
    m_buffer.Empty();
    m_buffer.Append(carry);
}

void CFileTextStream::Close() {
    Flush();
    WriteBuffered(true);  // a character still cut short at the very end
    if (m_file) {
        // stdio writes out its last buffer here; a full disk shows now.
        // Only a complete file takes the place of the old one.
        const bool committed = m_file->Commit();
        m_file.reset();
        if (!committed) throw CKvException("Failed to write data to the file");
    }
    CTextStream::Close();
}

}  // namespace KvXmlLib10
