// SmartPtr.h - intrusive smart pointer over AddRef/Release.
#pragma once

#include <cstddef>
#include <utility>

namespace KvXmlLib10 {

/// Holds one reference on a reference-counted object (anything with
/// AddRef/Release, such as CXmlObjectBase). Taking a raw pointer adds a
/// reference; the object deletes itself when the last holder lets go.
template <typename T>
class CSmartPtr {
public:
    CSmartPtr() noexcept = default;
    CSmartPtr(std::nullptr_t) noexcept {}
    CSmartPtr(T* object) : m_object(object) {
        if (m_object) m_object->AddRef();
    }
    CSmartPtr(const CSmartPtr& other) : CSmartPtr(other.m_object) {}
    CSmartPtr(CSmartPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    template <typename U>
    CSmartPtr(const CSmartPtr<U>& other) : CSmartPtr(other.get()) {}
    ~CSmartPtr() { reset(); }

    CSmartPtr& operator=(const CSmartPtr& other) {
        CSmartPtr(other).swap(*this);
        return *this;
    }
    CSmartPtr& operator=(CSmartPtr&& other) noexcept {
        CSmartPtr(std::move(other)).swap(*this);
        return *this;
    }
    CSmartPtr& operator=(T* object) {
        CSmartPtr(object).swap(*this);
        return *this;
    }

    T* get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    /// Lets go of the reference held (the object may delete itself).
    void reset() {
        if (T* object = std::exchange(m_object, nullptr)) object->Release();
    }
    void swap(CSmartPtr& other) noexcept { std::swap(m_object, other.m_object); }

private:
    T* m_object = nullptr;
};

template <typename T, typename U>
bool operator==(const CSmartPtr<T>& a, const CSmartPtr<U>& b) { return a.get() == b.get(); }
template <typename T, typename U>
bool operator!=(const CSmartPtr<T>& a, const CSmartPtr<U>& b) { return a.get() != b.get(); }
template <typename T>
bool operator==(const CSmartPtr<T>& a, const T* b) { return a.get() == b; }
template <typename T>
bool operator!=(const CSmartPtr<T>& a, const T* b) { return a.get() != b; }
template <typename T>
bool operator==(const T* a, const CSmartPtr<T>& b) { return a == b.get(); }
template <typename T>
bool operator!=(const T* a, const CSmartPtr<T>& b) { return a != b.get(); }
template <typename T>
bool operator==(const CSmartPtr<T>& a, std::nullptr_t) { return !a; }
template <typename T>
bool operator!=(const CSmartPtr<T>& a, std::nullptr_t) { return static_cast<bool>(a); }
template <typename T>
bool operator<(const CSmartPtr<T>& a, const CSmartPtr<T>& b) { return a.get() < b.get(); }

}  // namespace KvXmlLib10
