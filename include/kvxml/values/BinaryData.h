// BinaryData.h - shared, copy-on-write byte buffer behind hexBinary and base64Binary.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/CriticalSection.h"
#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// A byte value. Copies are O(1): they share one reference-counted holder,
/// and the first change through a copy makes it a private copy first.
/// Arrays handed over with adopt=true must come from new[]; the value
/// frees them with delete[]. Lengths are limited to 32 bits: a change that
/// would pass 4294967295 bytes throws CKvException instead of wrapping.
/// Copies may live on different threads; one object is not for two threads.
class KVXML_API CBinaryData {
public:
    /// The buffer shared by all copies of one value; its count and the
    /// copy-on-write decision run under its own lock.
    class KVXML_API CDataHolder {
    public:
        /// adopt: take the new[] array as it is. Otherwise copy it into a
        /// buffer of max(2 * length, 8192) bytes (data is only read).
        CDataHolder(unsigned char* data, uint32_t length, bool adopt);
        ~CDataHolder();
        CDataHolder(const CDataHolder&) = delete;
        CDataHolder& operator=(const CDataHolder&) = delete;

        void AddRef();
        /// Drops one reference; deletes the holder at zero. With
        /// throwOnError, an inconsistent count throws.
        void Release(bool throwOnError);
        /// This holder when it is not shared, else a new private copy
        /// (and this holder is released once).
        CDataHolder* GetExclusiveCopy();
        /// Requires the holder to be unshared; throws otherwise.
        void Append(const unsigned char* data, uint32_t length);
        unsigned char* GetData() const { return m_data; }
        uint32_t GetLength() const { return m_length; }

    private:
        unsigned char* m_data;
        uint32_t m_length;
        uint32_t m_capacity;
        int32_t m_refCount;
        CKVCriticalSection m_lock;
    };

    CBinaryData();
    /// Shares other's buffer (O(1)).
    CBinaryData(const CBinaryData& other);
    /// With adopt the value owns data (new[]) from now on, even if this throws;
    /// without, the bytes are copied.
    CBinaryData(unsigned char* data, uint32_t length, bool adopt);
    /// The bytes of a NUL-terminated string, without the NUL; null is empty.
    explicit CBinaryData(const char* text);
    virtual ~CBinaryData();

    CBinaryData& operator=(const CBinaryData& other);
    bool operator==(const CBinaryData& other) const;
    bool operator!=(const CBinaryData& other) const;

    /// Null when empty.
    const unsigned char* GetData() const;
    uint32_t GetLength() const;
    /// Both throw CKvException "Index Out of range [%d]" past the end; the
    /// writable form makes the buffer private first.
    unsigned char& operator[](uint32_t index);
    unsigned char operator[](uint32_t index) const;

    /// Appending makes the buffer private first; data may point into it.
    void Append(const unsigned char* data, uint32_t length);
    void Append(const CBinaryData& other);
    void Append(const char* text);
    void Append(const std::string& text);
    void Append(char c);
    void Append(unsigned char c);
    void SetBuffer(const unsigned char* data, uint32_t length);
    void SetBuffer(const char* text);
    /// Both leave the value empty and release the holder; ReleaseData throws
    /// on an inconsistent reference count, Clear ignores it.
    void Clear();
    void ReleaseData();

    /// Invalid base64 text leaves the value empty; it is not an error.
    void SetAsBase64(const char* text);
    std::string GetAsBase64() const;
    /// Throws CKvException on odd length or a non-hex character (whitespace
    /// included) and then leaves the value as it was.
    void SetAsHexString(const char* text);
    std::string GetAsHexString() const;
    static std::string GetAsHexString(const unsigned char* data, uint32_t length);
    /// Decodes hex text into a new[] array stored in *out (null when the
    /// text is empty); returns its length. Throws like SetAsHexString.
    static uint32_t ConvertToHexData(const char* text, unsigned char** out);

private:
    CDataHolder* MakeExclusive();

    CDataHolder* m_holder;
};

}  // namespace KvXmlLib10
