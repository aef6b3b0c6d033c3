// CArray<TYPE, ARG_TYPE>: a growable array with the framework's interface.
//
// Elements are moved with their C++ move constructors (not memmove), so any element
// type works, including ones that are not bitwise relocatable such as CString.
// An index out of range never touches memory outside the array: it is reported on
// stderr, reads give a default-constructed element and writes go nowhere.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

#include "zel/mfc/object.h"

namespace zel::mfc {
ZEL_API void ReportBadIndex(const char* what, INT_PTR index, INT_PTR size);
}

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
public:
    CArray() = default;
    ~CArray() override { RemoveAll(); }

    INT_PTR GetSize() const { return size_; }
    INT_PTR GetCount() const { return size_; }
    BOOL IsEmpty() const { return size_ == 0; }
    INT_PTR GetUpperBound() const { return size_ - 1; }

    // Grows (new elements value-initialised) or shrinks to newSize. growBy sets how many
    // elements later growth reserves at once; -1 keeps the current setting.
    void SetSize(INT_PTR newSize, INT_PTR growBy = -1) {
        if (growBy >= 0) growBy_ = growBy;
        if (newSize < 0) {
            zel::mfc::ReportBadIndex("CArray::SetSize", newSize, size_);
            return;
        }
        if (newSize == 0) {
            RemoveAll();
            return;
        }
        if (newSize > capacity_) Reserve(GrowTarget(newSize));
        for (INT_PTR i = size_; i < newSize; ++i) new (data_ + i) TYPE();
        for (INT_PTR i = newSize; i < size_; ++i) data_[i].~TYPE();
        size_ = newSize;
    }

    void FreeExtra() {
        if (capacity_ != size_) Reallocate(size_);
    }
    // Frees the storage as well.
    void RemoveAll() {
        for (INT_PTR i = 0; i < size_; ++i) data_[i].~TYPE();
        Deallocate(data_);
        data_ = nullptr;
        size_ = capacity_ = 0;
    }

    const TYPE& GetAt(INT_PTR i) const { return Valid(i, "CArray::GetAt") ? data_[i] : Dummy(); }
    TYPE& GetAt(INT_PTR i) { return Valid(i, "CArray::GetAt") ? data_[i] : Dummy(); }
    void SetAt(INT_PTR i, ARG_TYPE element) {
        if (Valid(i, "CArray::SetAt")) data_[i] = element;
    }
    const TYPE& ElementAt(INT_PTR i) const { return Valid(i, "CArray::ElementAt") ? data_[i] : Dummy(); }
    TYPE& ElementAt(INT_PTR i) { return Valid(i, "CArray::ElementAt") ? data_[i] : Dummy(); }
    const TYPE& operator[](INT_PTR i) const { return ElementAt(i); }
    TYPE& operator[](INT_PTR i) { return ElementAt(i); }
    const TYPE* GetData() const { return data_; }
    TYPE* GetData() { return data_; }

    void SetAtGrow(INT_PTR i, ARG_TYPE element) {
        if (i < 0) {
            zel::mfc::ReportBadIndex("CArray::SetAtGrow", i, size_);
            return;
        }
        TYPE copy(element);  // element may live in this array and move on growth
        if (i >= size_) SetSize(i + 1);
        data_[i] = std::move(copy);
    }
    // Returns the new element's index.
    INT_PTR Add(ARG_TYPE element) {
        INT_PTR index = size_;
        SetAtGrow(index, element);
        return index;
    }
    // Returns the index of the first appended element.
    INT_PTR Append(const CArray& src) {
        INT_PTR old = size_;
        if (&src == this) {
            CArray copy;
            copy.Copy(src);
            return Append(copy);
        }
        SetSize(size_ + src.size_);
        for (INT_PTR i = 0; i < src.size_; ++i) data_[old + i] = src.data_[i];
        return old;
    }
    void Copy(const CArray& src) {
        if (&src == this) return;
        SetSize(src.size_);
        for (INT_PTR i = 0; i < src.size_; ++i) data_[i] = src.data_[i];
    }

    // Inserting at or beyond the end first extends the array to index.
    void InsertAt(INT_PTR index, ARG_TYPE element, INT_PTR count = 1) {
        if (index < 0 || count <= 0) {
            if (index < 0 || count < 0) zel::mfc::ReportBadIndex("CArray::InsertAt", index < 0 ? index : count, size_);
            return;
        }
        TYPE copy(element);
        INT_PTR old = size_;
        if (index >= old) {
            SetSize(index + count);
        } else {
            SetSize(old + count);
            for (INT_PTR i = old - 1; i >= index; --i) data_[i + count] = std::move(data_[i]);
        }
        for (INT_PTR i = index; i < index + count; ++i) data_[i] = copy;
    }
    void InsertAt(INT_PTR start, CArray* array) {
        if (!array || array->size_ == 0) return;
        if (start < 0) {
            zel::mfc::ReportBadIndex("CArray::InsertAt", start, size_);
            return;
        }
        CArray copy;
        copy.Copy(*array);
        InsertAt(start, copy.data_[0], copy.size_);
        for (INT_PTR i = 1; i < copy.size_; ++i) data_[start + i] = copy.data_[i];
    }
    // Removes count elements from index and shifts the rest down.
    void RemoveAt(INT_PTR index, INT_PTR count = 1) {
        if (index < 0 || count < 0 || index + count > size_) {
            zel::mfc::ReportBadIndex("CArray::RemoveAt", index, size_);
            return;
        }
        for (INT_PTR i = index + count; i < size_; ++i) data_[i - count] = std::move(data_[i]);
        for (INT_PTR i = size_ - count; i < size_; ++i) data_[i].~TYPE();
        size_ -= count;
    }

private:
    bool Valid(INT_PTR i, const char* what) const {
        if (i >= 0 && i < size_) return true;
        zel::mfc::ReportBadIndex(what, i, size_);
        return false;
    }
    static TYPE& Dummy() {
        static TYPE dummy;
        dummy = TYPE();
        return dummy;
    }
    // The framework's default growth: an eighth of the size, at least 4, at most 1024.
    INT_PTR GrowTarget(INT_PTR needed) const {
        INT_PTR grow = growBy_;
        if (grow <= 0) {
            grow = size_ / 8;
            grow = grow < 4 ? 4 : (grow > 1024 ? 1024 : grow);
        }
        INT_PTR target = capacity_ + grow;
        return target < needed ? needed : target;
    }
    void Reserve(INT_PTR capacity) {
        if (capacity > capacity_) Reallocate(capacity);
    }
    void Reallocate(INT_PTR capacity) {
        TYPE* fresh = capacity ? Allocate(capacity) : nullptr;
        for (INT_PTR i = 0; i < size_; ++i) {
            new (fresh + i) TYPE(std::move(data_[i]));
            data_[i].~TYPE();
        }
        Deallocate(data_);
        data_ = fresh;
        capacity_ = capacity;
    }
    static TYPE* Allocate(INT_PTR n) {
        return static_cast<TYPE*>(::operator new(sizeof(TYPE) * static_cast<size_t>(n), std::align_val_t(alignof(TYPE))));
    }
    static void Deallocate(TYPE* p) {
        if (p) ::operator delete(p, std::align_val_t(alignof(TYPE)));
    }

    TYPE* data_ = nullptr;
    INT_PTR size_ = 0;
    INT_PTR capacity_ = 0;
    INT_PTR growBy_ = 0;
};
