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
/// frees them with delete[].
class KVXML_API CBinaryData {
public:
    /// The buffer shared by all copies of one value; its count and the
    /// copy-on-write decision run under its own lock.
    class KVXML_API CDataHolder {
    public:
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
    CBinaryData(const CBinaryData& other);
    CBinaryData(unsigned char* data, uint32_t length, bool adopt);
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

    void Append(const unsigned char* data, uint32_t length);
    void Append(const CBinaryData& other);
    void Append(const char* text);
    void Append(const std::string& text);
    void Append(char c);
    void Append(unsigned char c);
    void SetBuffer(const unsigned char* data, uint32_t length);
    void SetBuffer(const char* text);
    /// Both leave the value empty; its holder is released.
    void Clear();
    void ReleaseData();

    /// Invalid base64 text leaves the value empty; it is not an error.
    void SetAsBase64(const char* text);
    std::string GetAsBase64() const;
    /// Throws CKvException on odd length or a non-hex character.
    void SetAsHexString(const char* text);
    std::string GetAsHexString() const;
    static std::string GetAsHexString(const unsigned char* data, uint32_t length);
    /// Decodes hex text into a new[] array stored in *out; returns its length.
    static uint32_t ConvertToHexData(const char* text, unsigned char** out);

private:
    CDataHolder* MakeExclusive();

    CDataHolder* m_holder;
};

}  // namespace KvXmlLib10
